// The supervised classifiers: minimum distance, parallelepipeds and maximum
// likelihood over the bands of the training, with one class file per class.
// The result is a byte image of class NDs and its legend (stem +
// "Leyenda.txt"), written from the class files before the pixel loop.
#include "classification/Supervisada.h"
#include "image/FicheroTexto.h"
#include "image/Leyenda.h"
#include "operations/ClasificacionesHechas.h"
#include "operations/Clasificacion.h"
#include "operations/Curso.h"

namespace orvela {

namespace {

const Clave kRegla{"regla"};
const Clave kMultiplicador{"multiplicador"};

enum Regla { kDistancia = 0, kParalelepipedos = 1, kProbabilidad = 2 };

bool ConMultiplicador(const Valores& v) { return v.Entero(kRegla) == kParalelepipedos; }

const char* const kTitulos[] = {"Clasificación_Supervisada_Dist_Mínima", "Clasificación_Supervisada_Paralelepípedos",
                                "Clasificación_Supervisada_Máxima_Probabilidad"};

const Declaracion kSupervisada = [] {
    Declaracion d;
    d.idComando = 32821;
    d.orden = "supervisada";
    d.titulo = "Clasificación supervisada";
    d.resumen = "Clasifica las bandas con ficheros de clase: mínima distancia, paralelepípedos o máxima probabilidad.";
    d.paginaAyuda = "supervisada";
    d.grupoEntrada = "Bandas a clasificar";
    d.grupoSalida = "Nombre de la imagen clasificada";
    DeclEntrada clases = EntradaClases("fichero de clase (uno por clase, al menos dos, en el orden de la leyenda)");
    clases.leer = [](const std::string& ruta) -> std::optional<Mensaje> {
        // Read as the classifiers read it: a FIFO or a device in its place
        // is refused at once, never waited on.
        FalloTexto fallo{};
        if (!LeerTextoAcotado(ruta, kMaxTexto, &fallo)) {
            if (fallo == FalloTexto::NoExiste || fallo == FalloTexto::Lectura)
                return Mensaje::Libre(texto::kFicheroClaseIlegible + ruta);
            return MensajeFalloTexto(fallo, ruta);
        }
        return std::nullopt;
    };
    d.entradas = {EntradaBandas(), clases};
    d.campos = {{.clave = &kRegla,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Clasificador",
                 .opcionCli = "--regla",
                 .opciones = {{"Mínima distancia", "distancia"},
                              {"Paralelepípedos", "paralelepipedos"},
                              {"Máxima probabilidad", "probabilidad"}},
                 .obligatorio = true,
                 .ayudaCli = "regla de decisión"},
                {.clave = &kMultiplicador,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Definir el rango de dispersión",
                 .etiqueta = "Multiplicador",
                 .opcionCli = "--multiplicador",
                 .porDefecto = 1,
                 .obligatorio = true,
                 .aplica = ConMultiplicador,
                 .ayudaCli = "número entero de desviaciones típicas de cada caja (con 'paralelepipedos')"}};
    d.alElegir = BandaIgualPrimera;
    d.alAceptar = [](const Valores& v, const Elegidas& e) -> std::optional<Mensaje> {
        if (e.ficheros.size() < 2 || e.ficheros[1].size() < 2) return Mensaje::Tabla(msg::kNumeroClases);
        if (ConMultiplicador(v) && v.Numero(kMultiplicador) < 1) return Mensaje::Tabla(msg::kMultiplicador);
        return std::nullopt;
    };
    d.calcular = [](const Contexto& c) {
        Resultado r;
        const int regla = c.valores.Entero(kRegla);
        const auto& bandas = c.porEntrada[0];
        std::vector<ClaseLeida> clases;
        std::vector<ClaseLeyenda> leyenda;
        for (const auto& ruta : c.ficheros[1]) {
            auto cl = LeerFicheroClase(ruta, static_cast<int>(bandas.size()), regla == kParalelepipedos,
                                       regla == kProbabilidad);
            if (!cl) {
                r.Rechazar(Mensaje::Libre(texto::kFicheroClaseIlegible + ruta));
                return r;
            }
            leyenda.push_back({cl->nombre, static_cast<double>(NdClase(*cl))});
            clases.push_back(std::move(*cl));
        }
        BandasClasificar b;
        for (const auto* im : bandas) b.bandas.push_back(&im->pixeles);
        b.filas = bandas[0]->Filas();
        b.columnas = bandas[0]->Columnas();
        r = UnaSalida(c, kByte, [&](CImagen& salida) {
            auto s = salida.pixeles.Como<uint8_t>();
            bool hecho = false;
            switch (regla) {
                case kDistancia: hecho = ClasificarMinimaDistancia(b, clases, s, c.progreso); break;
                case kParalelepipedos:
                    hecho = ClasificarParalelepipedos(b, clases, c.valores.Entero(kMultiplicador), s, c.progreso);
                    break;
                default: hecho = ClasificarMaximaProbabilidad(b, clases, s, c.progreso); break;
            }
            return hecho || c.progreso.Cancelado();
        });
        if (r.fallo) return r;
        CImagen& im = r.imagenes[0];
        im.titulo = kTitulos[regla < 0 || regla > 2 ? 0 : regla];
        if (GeorreferenciasDistintas(bandas)) im.sistemaReferencia = "unknown";
        r.titulosPropios = true;
        r.informes.push_back({"Leyenda.txt", TextoLeyenda(leyenda), "Leyenda", ""});
        if (RegistroClasificacionesActivo()) {
            // Kept for the decision inspector of the desktop.
            ClasificacionHecha h;
            h.regla = static_cast<ReglaSupervisada>(regla);
            h.multiplicador = ConMultiplicador(c.valores) ? c.valores.Entero(kMultiplicador) : 1;
            for (const auto* im : bandas)
                h.bandas.push_back({im->rutaRaster, TituloFichero(im->rutaRaster), im->tipoDato, im->Filas(),
                                    im->Columnas()});
            h.clases = std::move(clases);
            h.ficherosClase = c.ficheros[1];
            RecordarClasificacion(im, std::move(h));
        }
        return r;
    };
    d.sufijo = SufijoFijo("");
    return d;
}();

const Registro registro(kSupervisada);

}  // namespace

}  // namespace orvela
