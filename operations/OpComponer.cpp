// "Componer sin referencia" and "Componer con referencia": one image made of
// several co-registered images of one type and size, pixel by pixel, by the
// largest or smallest value, or by the image whose reference is largest or
// smallest there. orvela-cli runs both as `componer` (with `--referencia`,
// one per image, for the second).
#include "operations/DosImagenes.h"
#include "operations/Operacion.h"
#include "tools/Componer.h"

namespace orvela {

namespace {

const Clave kCriterio{"criterio"};

constexpr int kMaximoImagenes = 256;

// Every picked image (references too) has the first one's type and size.
std::optional<Mensaje> ComoLaPrimera(int indice, const Cabecera& elegida,
                                     const std::vector<std::optional<Cabecera>>& previas) {
    if (indice == 0 || previas.empty() || !previas[0]) return std::nullopt;
    const Cabecera& p = *previas[0];
    if (CodigoDeNombre(p.nombreTipo) != CodigoDeNombre(elegida.nombreTipo))
        return Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, relleno::kImagenes);
    if (p.filas != elegida.filas || p.columnas != elegida.columnas)
        return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kImagenes);
    return std::nullopt;
}

std::optional<Mensaje> ComprobarCargadas(const std::vector<const CImagen*>& e) {
    for (std::size_t k = 1; k < e.size(); ++k)
        if (auto m = ComprobarParCargado(*e[0], *e[k])) return m;
    return std::nullopt;
}

Resultado Componer(const Contexto& c, bool conReferencia) {
    Resultado r;
    const auto& imagenes = c.porEntrada[0];
    const std::vector<const CImagen*> referencias =
        c.porEntrada.size() > 1 ? c.porEntrada[1] : std::vector<const CImagen*>{};
    if (imagenes.size() < 2) {
        r.Rechazar(Mensaje::Tabla(msg::kNumeroImagenesComponer));
        return r;
    }
    conReferencia = conReferencia || !referencias.empty();
    if (conReferencia && referencias.size() != imagenes.size()) {
        r.Rechazar(Mensaje::Tabla(msg::kNoSeleccionadaEntrada, relleno::kLasReferencias, relleno::kUnaImagen));
        return r;
    }
    const auto criterio = static_cast<CriterioComponer>(c.valores.Entero(kCriterio));
    r = UnaSalida(c, 0, [&](CImagen& salida) {
        for (std::size_t k = 1; k < imagenes.size(); ++k) GeorreferenciaDelPar(*imagenes[0], *imagenes[k], salida);
        std::vector<const Muestras*> im, ref;
        for (const auto* i : imagenes) im.push_back(&i->pixeles);
        for (const auto* i : referencias) ref.push_back(&i->pixeles);
        const long filas = imagenes[0]->Filas(), columnas = imagenes[0]->Columnas();
        if (conReferencia)
            return ComponerConReferencia(im, ref, criterio, filas, columnas, salida.pixeles, c.progreso) ||
                   c.progreso.Cancelado();
        return ComponerSinReferencia(im, criterio, filas, columnas, salida.pixeles, c.progreso) ||
               c.progreso.Cancelado();
    });
    if (!r.fallo) {
        r.imagenes[0].titulo = conReferencia ? "Compuesta_Con_Referencia" : "Compuesta_Sin_Referencia";
        r.titulosPropios = true;
    }
    return r;
}

std::vector<Opcion> Criterios(bool conReferencia) {
    if (conReferencia)
        return {{"C&omponer de acuerdo al máximo valor", "maximo"}, {"Co&mponer de acuerdo al mínimo valor", "minimo"}};
    return {{"C&omponer De Acuerdo Al Máximo Valor", "maximo"}, {"Co&mponer De Acuerdo Al Mínimo Valor", "minimo"}};
}

Declaracion Base(bool conReferencia) {
    Declaracion d;
    d.paginaAyuda = "componer";
    d.grupoEntrada = "Número de imágenes a componer";
    DeclEntrada imagenes{.boton = conReferencia ? "&Seleccionar imágenes" : "&Seleccionar",
                         .nombre = relleno::kNingunaImagen,
                         .clase = ClaseEntrada::Bandas,
                         .minimo = 1,
                         .maximo = kMaximoImagenes,
                         .etiquetaCli = "IMAGEN",
                         .ayudaCli = "imágenes a componer, dos o más, del mismo tipo de dato y tamaño"};
    DeclEntrada referencias{.boton = "S&eleccionar referencias",
                            .nombre = relleno::kLasReferencias,
                            .clase = ClaseEntrada::Bandas,
                            .minimo = conReferencia ? 1 : 0,
                            .maximo = kMaximoImagenes,
                            .opcionCli = "--referencia",
                            .etiquetaCli = "R",
                            .ayudaCli = "imagen de referencia de cada imagen, en el mismo orden"};
    d.entradas = {imagenes, referencias};
    d.campos = {{.clave = &kCriterio,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Criterio",
                 .opcionCli = "--criterio",
                 .opciones = Criterios(conReferencia),
                 .obligatorio = true,
                 .ayudaCli = "máximo o mínimo valor (de la referencia, si la hay)"}};
    d.alElegir = ComoLaPrimera;
    d.alAceptar = [](const Valores&, const Elegidas& e) -> std::optional<Mensaje> {
        const std::size_t n = e.cabeceras.empty() ? 0 : e.cabeceras[0].size();
        if (n < 2) return Mensaje::Tabla(msg::kNumeroImagenesComponer);
        const std::size_t refs = e.cabeceras.size() > 1 ? e.cabeceras[1].size() : 0;
        if (refs != 0 && refs != n)
            return Mensaje::Tabla(msg::kNoSeleccionadaEntrada, relleno::kLasReferencias, relleno::kUnaImagen);
        return std::nullopt;
    };
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores&) { return ComprobarCargadas(e); };
    d.calcular = [conReferencia](const Contexto& c) { return Componer(c, conReferencia); };
    return d;
}

const Declaracion kSinReferencia = [] {
    Declaracion d = Base(false);
    d.idComando = 32791;
    d.orden = "componer";
    d.titulo = "Componer sin referencia";
    d.resumen = "Compone varias imágenes tomando en cada píxel el valor máximo o mínimo (o el de la imagen cuya "
                "referencia es máxima o mínima, con --referencia).";
    return d;
}();

const Declaracion kConReferencia = [] {
    Declaracion d = Base(true);
    d.idComando = 32790;
    d.orden = "componer-con-referencia";
    d.titulo = "Componer con referencia";
    d.resumen = "Compone varias imágenes tomando en cada píxel el valor de la imagen cuya referencia es máxima o mínima.";
    return d;
}();

const Registro registro(kSinReferencia);
const Registro registroReferencia(kConReferencia);

}  // namespace

}  // namespace orvela
