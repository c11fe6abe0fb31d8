// "Clasificación no supervisada": k-means of the bands into K clusters,
// labelled by the brightness of their centres. No legend is written.
#include "classification/NoSupervisada.h"
#include "operations/Clasificacion.h"

namespace orvela {

namespace {

const Clave kClases{"clases"};
const Clave kMaxPasadas{"max_pasadas"};

const Declaracion kNoSupervisada = [] {
    Declaracion d;
    d.idComando = 32827;
    d.orden = "no-supervisada";
    d.titulo = "Clasificación no supervisada";
    d.resumen = "Agrupa los píxeles de las bandas en K clases por medias móviles (k-medias).";
    d.paginaAyuda = "no-supervisada";
    d.grupoEntrada = "Elección del número de bandas";
    d.grupoSalida = "Nombre de la imagen clasificada";
    d.entradas = {EntradaBandas()};
    d.campos = {{.clave = &kClases,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Selección del número de clases",
                 .etiqueta = "Establecer",
                 .opcionCli = "--clases",
                 .porDefecto = 2,
                 .obligatorio = true,
                 .ayudaCli = "número de clases K (2 o más)"},
                {.clave = &kMaxPasadas,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Selección del número de clases",
                 .etiqueta = "Máximo de pasadas (0: sin límite)",
                 .opcionCli = "--max-pasadas",
                 .porDefecto = 1000,
                 .ayudaCli = "pasadas como mucho (por defecto 1000; 0 sin límite): al llegar se escribe la "
                             "clasificación de la última pasada con un aviso, para que un guion nunca se quede colgado"}};
    d.alElegir = BandaIgualPrimera;
    d.alAceptar = SoloValores([](const Valores& v) -> std::optional<Mensaje> {
        if (v.Numero(kClases) < 2) return Mensaje::Tabla(msg::kNumeroClases);
        return std::nullopt;
    });
    d.calcular = [](const Contexto& c) {
        const auto& bandas = c.porEntrada[0];
        BandasClasificar b;
        for (const auto* im : bandas) b.bandas.push_back(&im->pixeles);
        b.filas = bandas[0]->Filas();
        b.columnas = bandas[0]->Columnas();
        ResultadoNoSupervisada rn;
        Resultado r = UnaSalida(c, kByte, [&](CImagen& salida) {
            rn = ClasificarNoSupervisada(b, c.valores.Entero(kClases), salida.pixeles.Como<uint8_t>(),
                                         c.valores.Entero(kMaxPasadas), c.progreso);
            return true;
        });
        if (r.fallo) return r;
        if (!rn.convergido) r.avisos.push_back(Mensaje::Libre(texto::kSinConvergencia + std::to_string(rn.pasadas)));
        r.imagenes[0].titulo = "Clasificación_No_Supervisada";
        if (GeorreferenciasDistintas(bandas)) r.imagenes[0].sistemaReferencia = "unknown";
        r.titulosPropios = true;
        r.consola = "Pasadas: " + std::to_string(rn.pasadas) + "\n";
        return r;
    };
    d.sufijo = SufijoFijo("");
    return d;
}();

const Registro registro(kNoSupervisada);

}  // namespace

}  // namespace orvela
