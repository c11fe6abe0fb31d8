// "Estadísticas": the mean, extremes, population variance and deviation and
// range of a continuous image; or, for a classified byte image with its
// legend and the source image it was made from, the same figures of the
// source over each class's pixels, shown as text and saved as a report.
#include <cstdio>

#include "image/Leyenda.h"
#include "operations/CampoInforme.h"
#include "operations/Operacion.h"
#include "tools/EstadisticasImagen.h"

namespace orvela {

namespace {

const Clave kInforme{"informe"};

enum Entrada { kContinua, kClasificada, kOriginal };

std::string Linea(const char* etiqueta, double v) {
    char b[64];
    std::snprintf(b, sizeof b, "%.10g", v);
    return std::string(etiqueta) + ": " + b + "\n";
}

std::size_t Cuantas(const Elegidas& e, int i) {
    return static_cast<std::size_t>(i) < e.cabeceras.size() ? e.cabeceras[static_cast<std::size_t>(i)].size() : 0;
}

std::optional<Mensaje> ComprobarElegidas(const Valores&, const Elegidas& e) {
    const bool continua = Cuantas(e, kContinua) > 0;
    const bool clasificada = Cuantas(e, kClasificada) > 0, original = Cuantas(e, kOriginal) > 0;
    if (continua && (clasificada || original)) return Mensaje::Libre(texto::kEstadisticasUnCaso);
    if (continua) return std::nullopt;
    if (!clasificada && !original)
        return Mensaje::Tabla(msg::kNoSeleccionadaEntrada, relleno::kNingunaImagen, relleno::kUnaImagen);
    if (!clasificada) return Mensaje::Tabla(msg::kSeleccionarAntes, relleno::kLaImagenClasificada);
    const Cabecera& k = e.cabeceras[kClasificada][0];
    if (CodigoDeNombre(k.nombreTipo) != kByte) return Mensaje::Tabla(msg::kClasificadaNoByte);
    if (!original) return Mensaje::Tabla(msg::kNoSeleccionadaEntrada, relleno::kLaImagenOriginal, relleno::kUnaImagen);
    const Cabecera& o = e.cabeceras[kOriginal][0];
    if (k.filas != o.filas || k.columnas != o.columnas)
        return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kClasificadaYOriginal);
    return std::nullopt;
}

Resultado Continua(const Contexto& c) {
    Resultado r;
    const auto e = CalcularEstadisticas(c.porEntrada[kContinua][0]->pixeles);
    if (!e) {
        r.Rechazar(Mensaje::Tabla(msg::kTipoNoReconocido));
        return r;
    }
    r.consola = Linea("Media", e->media) + Linea("Máximo", e->maximo) + Linea("Mínimo", e->minimo) +
                Linea("Varianza", e->varianza) + Linea("Desviación típica", e->desviacion) + Linea("Rango", e->rango);
    if (c.destino == Destino::Ventana) {
        auto numero = [](double v) {
            char b[64];
            std::snprintf(b, sizeof b, "%.10g", v);
            return std::string(b);
        };
        r.cuadro = CuadroValores{"Mostrar Estadísticas",
                                 "Valores estadísticos",
                                 "",
                                 {{"Media", numero(e->media)},
                                  {"Máximo", numero(e->maximo)},
                                  {"Mínimo", numero(e->minimo)},
                                  {"Varianza", numero(e->varianza)},
                                  {"Desviación típica", numero(e->desviacion)},
                                  {"Rango", numero(e->rango)}}};
    }
    return r;
}

Resultado PorClase(const Contexto& c) {
    Resultado r;
    const CImagen& k = *c.porEntrada[kClasificada][0];
    const CImagen& o = *c.porEntrada[kOriginal][0];
    if (k.tipoDato != kByte) {
        r.Rechazar(Mensaje::Tabla(msg::kClasificadaNoByte));
        return r;
    }
    if (k.filas != o.filas || k.columnas != o.columnas) {
        r.Rechazar(Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kClasificadaYOriginal));
        return r;
    }
    const auto clases = LeerLeyendaVentana(k.rutaRaster);
    if (!clases) {
        r.Rechazar(Mensaje::Tabla(msg::kLeyendaNoAbierta));
        return r;
    }
    if (!CodigoValido(o.tipoDato)) {
        r.Rechazar(Mensaje::Tabla(msg::kTipoNoReconocido));
        return r;
    }
    const auto e = EstadisticasPorClase(k.pixeles, o.pixeles, *clases, c.progreso);
    if (!e) {
        if (!c.progreso.Cancelado()) r.Rechazar(Mensaje::Tabla(msg::kTipoNoReconocido));
        return r;
    }
    r.consola = TextoEstadisticasClases(*e, k.titulo, o.titulo, "\n") + "\n";
    const std::string informe = c.valores.Tiene(kInforme) ? c.valores.Texto(kInforme) : std::string();
    // The window shows the on-screen text; its "Guardar como" writes the
    // report, whose tabs and decimals differ.
    if (c.destino == Destino::Ventana)
        r.informes.push_back(InformeTexto{.final = "_Estadisticas.txt",
                                          .contenido = TextoEstadisticasClases(*e, k.titulo, o.titulo),
                                          .titulo = "Información de las estadísticas",
                                          .guardado = InformeEstadisticasClases(*e, k.titulo, o.titulo)});
    else if (!informe.empty())
        r.informes.push_back(InformeTexto{.contenido = InformeEstadisticasClases(*e, k.titulo, o.titulo),
                                          .titulo = "Información de las estadísticas",
                                          .ruta = informe});
    return r;
}

const Declaracion kEstadisticas = [] {
    Declaracion d;
    d.idComando = 32789;
    d.orden = "estadisticas";
    d.titulo = "Estadísticas";
    d.resumen = "Media, máximo, mínimo, varianza, desviación típica y rango de una imagen, o de la imagen original "
                "en cada clase de una imagen clasificada.";
    d.paginaAyuda = "estadisticas";
    d.grupoEntrada = "Nombre de la imagen de entrada";
    d.entradas = {{.boton = "&Seleccionar",
                   .nombre = relleno::kNingunaImagen,
                   .admiteVentanaActiva = true,
                   .clase = ClaseEntrada::Bandas,
                   .minimo = 0,
                   .maximo = 1,
                   .etiquetaCli = "ENTRADA",
                   .ayudaCli = "imagen continua"},
                  {.boton = "Seleccionar imagen clasificada",
                   .nombre = relleno::kLaImagenClasificada,
                   .minimo = 0,
                   .opcionCli = "--clasificada",
                   .etiquetaCli = "K",
                   .ayudaCli = "imagen clasificada (byte) con su leyenda"},
                  {.boton = "Seleccionar imagen original",
                   .nombre = relleno::kLaImagenOriginal,
                   .minimo = 0,
                   .opcionCli = "--original",
                   .etiquetaCli = "S",
                   .ayudaCli = "imagen original de la que se hizo la clasificación"}};
    d.campos = {CampoInforme(kInforme, "Imágenes clasificadas", "escribe también el informe por clases en este fichero (.txt)")};
    d.conSalida = false;
    d.alAceptar = ComprobarElegidas;
    d.calcular = [](const Contexto& c) {
        if (!c.porEntrada[kContinua].empty()) return Continua(c);
        return PorClase(c);
    };
    return d;
}();

const Registro registro(kEstadisticas);

}  // namespace

}  // namespace orvela
