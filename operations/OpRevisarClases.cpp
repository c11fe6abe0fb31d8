// "Revisar clases" (command 32890, in the "Supervisada" menu after the
// three classifiers): checks a set of class files against the bands they
// will classify and reports, with the reason each matters, too few samples,
// singular or nearly singular covariances, shared NDs and the
// Jeffries-Matusita separability of every pair. It informs and never
// refuses: a class file that cannot be read is listed and left out.
#include "classification/RevisarClases.h"
#include "operations/CampoInforme.h"
#include "operations/Clasificacion.h"

namespace orvela {

namespace {

const Clave kInforme{"informe"};

const Declaracion kRevisar = [] {
    Declaracion d;
    d.idComando = 32890;
    d.orden = "revisar-clases";
    d.titulo = "Revisar clases";
    d.resumen = "Revisa los ficheros de clase antes de clasificar: muestras, covarianzas, NDs repetidos y "
                "separabilidad (Jeffries-Matusita) de cada par.";
    d.paginaAyuda = "revisar-clases";
    d.grupoEntrada = "Bandas a clasificar";
    const DeclEntrada clases =
        EntradaClases("fichero de clase que se revisa (uno por clase, en el orden de la leyenda)");
    d.entradas = {EntradaBandas(), clases};
    d.campos = {CampoInforme(kInforme, "Informe", "escribe también el informe en este fichero (.txt)")};
    d.conSalida = false;
    d.alElegir = BandaIgualPrimera;
    d.calcular = [](const Contexto& c) {
        Resultado r;
        const auto& bandas = c.porEntrada[0];
        const int n = static_cast<int>(bandas.size());
        std::vector<ClaseLeida> clases;
        std::string ilegibles;
        for (const auto& ruta : c.ficheros[1]) {
            if (auto cl = LeerFicheroClase(ruta, n, true, true)) clases.push_back(std::move(*cl));
            else ilegibles += "  " + ruta + "\n";
        }
        std::vector<std::string> nombres;
        for (const auto* b : bandas) nombres.push_back(b->titulo);
        std::string texto = InformeRevisarClases(RevisarClases(clases, n), nombres);
        if (!ilegibles.empty())
            texto += std::string("\n") + texto::kFicherosClaseSinRevisar + "\n" + ilegibles;
        r.consola = texto;
        const std::string ruta = c.valores.Tiene(kInforme) ? c.valores.Texto(kInforme) : std::string();
        if (c.destino == Destino::Ventana || !ruta.empty())
            r.informes.push_back(InformeTexto{.contenido = texto, .titulo = "Revisión de las clases", .ruta = ruta});
        return r;
    };
    d.sufijo = SufijoFijo("");
    return d;
}();

const Registro registro(kRevisar);

}  // namespace

}  // namespace orvela
