// "Concatenar": a second image joined to the main image to its right, below
// it, or at a typed row and column inside it; the second image wins where
// they overlap and what neither covers is 0. The second image must have the
// main image's data type.
#include "operations/Operacion.h"
#include "operations/Reformado.h"
#include "tools/Reformar.h"

namespace orvela {

namespace {

const Clave kDerecha{"derecha"};
const Clave kDebajo{"debajo"};
const Clave kFila{"fila"};
const Clave kColumna{"columna"};

bool Derecha(const Valores& v) { return v.Marcada(kDerecha); }
bool Debajo(const Valores& v) { return v.Marcada(kDebajo); }
bool Posicion(const Valores& v) { return !Derecha(v) && !Debajo(v); }

std::optional<Mensaje> ComprobarPosicion(const Valores& v, double filasM, double columnasM) {
    if (Derecha(v) && Debajo(v)) return Mensaje::Libre(texto::kConcatenarUnaPosicion);
    if (!Posicion(v)) return std::nullopt;
    const double f = v.Numero(kFila), c = v.Numero(kColumna);
    if (f < 0 || c < 0 || f >= filasM || c >= columnasM) return Mensaje::Tabla(msg::kConcatenarFuera);
    return std::nullopt;
}

// The main image's georeference stretched to the result's size: the pixel
// size stays, so the maximum X and the minimum Y move. Nothing changes when
// the system is unknown or a corner coordinate is -1.
void ReescalarGeorreferencia(const CImagen& m, CImagen& r) {
    const Georreferencia& g = m.geo;
    if (m.sistemaReferencia == "unknown" || g.minX == SinDato || g.maxX == SinDato || g.minY == SinDato ||
        g.maxY == SinDato)
        return;
    const double anchoPixel = (static_cast<double>(g.maxX) - g.minX) / m.columnas;
    const double altoPixel = (static_cast<double>(g.maxY) - g.minY) / m.filas;
    r.geo.maxX = static_cast<float>(g.minX + anchoPixel * r.columnas);
    r.geo.minY = static_cast<float>(g.maxY - altoPixel * r.filas);
}

const Declaracion kConcatenar = [] {
    Declaracion d;
    d.idComando = 32851;
    d.orden = "concatenar";
    d.titulo = "Concatenar";
    d.resumen = "Une una segunda imagen a la principal: a su derecha, debajo o en una fila y columna dadas.";
    d.paginaAyuda = "concatenar";
    d.grupoEntrada = "Imagen principal:";
    d.entradas = {{.boton = "&Seleccionar principal",
                   .nombre = relleno::kLaPrimeraImagen,
                   .admiteVentanaActiva = true,
                   .etiquetaCli = "PRINCIPAL"},
                  {.boton = "&Seleccionar",
                   .nombre = relleno::kLaSegundaImagen,
                   .etiquetaCli = "SEGUNDA"}};
    d.campos = {
        {.clave = &kDerecha,
         .tipo = TipoCampo::Casilla,
         .grupo = "Opciones de Concatenar",
         .etiqueta = "Situar a la derecha de la imagen principal",
         .opcionCli = "--derecha",
         .ayudaCli = "sitúa la segunda imagen a la derecha de la principal"},
        {.clave = &kDebajo,
         .tipo = TipoCampo::Casilla,
         .grupo = "Opciones de Concatenar",
         .etiqueta = "Situar debajo de la imagen principal",
         .opcionCli = "--debajo",
         .ayudaCli = "sitúa la segunda imagen debajo de la principal"},
        {.clave = &kFila,
         .tipo = TipoCampo::Entero,
         .grupo = "Indicar la posición sobre la imagen principal",
         .etiqueta = "Filas",
         .opcionCli = "--fila",
         .obligatorio = true,
         .aplica = Posicion,
         .ayudaCli = "fila de la principal donde empieza la segunda (sin --derecha ni --debajo)"},
        {.clave = &kColumna,
         .tipo = TipoCampo::Entero,
         .grupo = "Indicar la posición sobre la imagen principal",
         .etiqueta = "Columnas",
         .opcionCli = "--columna",
         .obligatorio = true,
         .aplica = Posicion,
         .ayudaCli = "columna de la principal donde empieza la segunda"},
    };
    d.alElegir = [](int indice, const Cabecera& elegida,
                    const std::vector<std::optional<Cabecera>>& previas) -> std::optional<Mensaje> {
        if (indice == 1) {
            if (previas.empty() || !previas[0]) return Mensaje::Tabla(msg::kSeleccionarAntes, relleno::kLaPrimeraImagen);
            if (CodigoDeNombre(previas[0]->nombreTipo) != CodigoDeNombre(elegida.nombreTipo))
                return Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, relleno::kImagenes);
        }
        return std::nullopt;
    };
    d.alAceptar = [](const Valores& v, const Elegidas& e) -> std::optional<Mensaje> {
        if (Derecha(v) && Debajo(v)) return Mensaje::Libre(texto::kConcatenarUnaPosicion);
        if (!e.cabeceras.empty() && !e.cabeceras[0].empty())
            return ComprobarPosicion(v, e.cabeceras[0][0].filas, e.cabeceras[0][0].columnas);
        return std::nullopt;
    };
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores& v) -> std::optional<Mensaje> {
        if (e[0]->tipoDato != e[1]->tipoDato)
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, relleno::kImagenes);
        return ComprobarPosicion(v, e[0]->filas, e[0]->columnas);
    };
    d.calcular = [](const Contexto& c) {
        Resultado r;
        const CImagen& m = *c.entradas[0];
        const CImagen& s = *c.entradas[1];
        const Valores& v = c.valores;
        const long r0 = Derecha(v) ? 0 : Debajo(v) ? m.Filas() : v.Entero(kFila);
        const long c0 = Derecha(v) ? m.Columnas() : Debajo(v) ? 0 : v.Entero(kColumna);
        const auto t = TamanoConcatenar(m.Filas(), m.Columnas(), s.Filas(), s.Columnas(), r0, c0);
        CImagen salida;
        if (auto e = SalidaDeTamano(m, t.filas, t.columnas, salida)) {
            r.FallarSistema(*e);
            return r;
        }
        if (c.destino == Destino::Ventana) {
            ReescalarGeorreferencia(m, salida);
        } else {
            const Georreferencia& g = m.geo;
            if (m.sistemaReferencia == "unknown" || g.minX == SinDato || g.maxX == SinDato || g.minY == SinDato ||
                g.maxY == SinDato)
                salida.sistemaReferencia = "unknown";
        }
        if (!Concatenar(m.pixeles, m.Filas(), m.Columnas(), s.pixeles, s.Filas(), s.Columnas(), r0, c0,
                        salida.pixeles, c.progreso)) {
            if (!c.progreso.Cancelado()) r.Rechazar(Mensaje::Tabla(msg::kTipoNoReconocido));
            return r;
        }
        r.imagenes.push_back(std::move(salida));
        return r;
    };
    d.sufijo = SufijoFijo("_Concatenada_a_");
    d.tituloConSegunda = true;
    return d;
}();

const Registro registro(kConcatenar);

}  // namespace

}  // namespace orvela
