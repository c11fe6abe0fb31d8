// "Enventanar": a rectangular window cut out of an image. The bottom-right
// row and column are not part of the window, so (0, 0) to (10, 10) gives
// 10 x 10 pixels and (0, 0) to (filas, columnas) the whole image. The
// window is typed, or dragged with the mouse on the active window's image
// (the dragged pixels, both ends included, become the typed corners); the
// mouse needs the active window as input (61245).
#include "operations/Operacion.h"
#include "operations/Reformado.h"
#include "tools/Reformar.h"

namespace orvela {

namespace {

const Clave kSeleccion{"seleccion"};
const Clave kColumnaSup{"columna_sup"};
const Clave kFilaSup{"fila_sup"};
const Clave kColumnaInf{"columna_inf"};
const Clave kFilaInf{"fila_inf"};

struct Ventana {
    long r1, c1, r2, c2;
};
enum Seleccion { kPosicion = 0, kRaton = 1 };
bool ConRaton(const Valores& v) { return v.Tiene(kSeleccion) && v.Entero(kSeleccion) == kRaton; }
// With the mouse the corners exist once a rectangle was dragged.
bool TieneVentana(const Valores& v) { return v.Tiene(kFilaSup); }

Ventana Leer(const Valores& v) {
    return {v.Entero(kFilaSup), v.Entero(kColumnaSup), v.Entero(kFilaInf), v.Entero(kColumnaInf)};
}

std::optional<Mensaje> ComprobarValores(const Ventana& w) {
    if (w.r1 < 0 || w.c1 < 0 || w.r2 < 0 || w.c2 < 0) return Mensaje::Tabla(msg::kPosicionesNegativas);
    if (w.r1 >= w.r2) return Mensaje::Tabla(msg::kExtremoSuperior, relleno::kFila);
    if (w.c1 >= w.c2) return Mensaje::Tabla(msg::kExtremoSuperior, relleno::kColumna);
    return std::nullopt;
}

bool Dentro(const Ventana& w, long filas, long columnas) { return w.r2 <= filas && w.c2 <= columnas; }

Campo Posicion(const Clave& clave, const char* etiqueta, const char* opcion, const char* ayuda) {
    return {.clave = &clave,
            .tipo = TipoCampo::Entero,
            .grupo = "Selección de la Ventana",
            .etiqueta = etiqueta,
            .opcionCli = opcion,
            .obligatorio = true,
            .aplica = [](const Valores& v) { return !ConRaton(v); },
            .ayudaCli = ayuda};
}

const Declaracion kEnventanar = [] {
    Declaracion d;
    d.idComando = 32852;
    d.orden = "enventanar";
    d.titulo = "Enventanar";
    d.resumen = "Recorta una ventana rectangular de la imagen (la fila y la columna inferiores derechas no se incluyen).";
    d.paginaAyuda = "enventanar";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    d.campos = {
        {.clave = &kSeleccion,
         .tipo = TipoCampo::Eleccion,
         .grupo = "Selección de la Ventana",
         .opcionCli = "--seleccion",
         .opciones = {{"Posición Fila/Columna", "posicion"}, {"Mediante el ratón", "raton"}},
         .ayudaCli = "posicion (por defecto): las filas y columnas escritas; raton: solo en el escritorio"},
        Posicion(kColumnaSup, "columna superior izquierda", "--columna-sup", "columna del extremo superior izquierdo"),
        Posicion(kFilaSup, "fila superior izquierda", "--fila-sup", "fila del extremo superior izquierdo"),
        Posicion(kColumnaInf, "columna inferior derecha", "--columna-inf",
                 "columna del extremo inferior derecho (no incluida)"),
        Posicion(kFilaInf, "fila inferior derecha", "--fila-inf", "fila del extremo inferior derecho (no incluida)"),
    };
    d.alAceptar = [](const Valores& v, const Elegidas& e) -> std::optional<Mensaje> {
        if (ConRaton(v)) {
            if (!e.DeVentana(0)) return Mensaje::Tabla(msg::kEnventanarRaton);
            if (!TieneVentana(v)) return std::nullopt;  // the rectangle is still to be dragged
        }
        const Ventana w = Leer(v);
        if (auto m = ComprobarValores(w)) return m;
        if (!e.cabeceras.empty() && !e.cabeceras[0].empty() &&
            !Dentro(w, e.cabeceras[0][0].filas, e.cabeceras[0][0].columnas))
            return Mensaje::Tabla(msg::kEnventanarFuera);
        return std::nullopt;
    };
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores& v) -> std::optional<Mensaje> {
        if (!TieneVentana(v)) return Mensaje::Tabla(msg::kEnventanarRaton);
        const Ventana w = Leer(v);
        if (ComprobarValores(w) || !Dentro(w, e[0]->Filas(), e[0]->Columnas()))
            return Mensaje::Tabla(msg::kPosicionesFuera);
        return std::nullopt;
    };
    d.calcular = [](const Contexto& c) {
        Resultado r;
        if (!TieneVentana(c.valores)) {
            r.Rechazar(Mensaje::Tabla(msg::kEnventanarRaton));
            return r;
        }
        const CImagen& e = *c.entradas[0];
        const Ventana w = Leer(c.valores);
        CImagen salida;
        if (auto m = SalidaDeTamano(e, w.r2 - w.r1, w.c2 - w.c1, salida)) {
            r.FallarSistema(*m);
            return r;
        }
        if (!Enventanar(e.pixeles, e.Filas(), e.Columnas(), w.r1, w.c1, w.r2, w.c2, salida.pixeles, c.progreso)) {
            if (!c.progreso.Cancelado()) r.Rechazar(Mensaje::Tabla(msg::kTipoNoReconocido));
            return r;
        }
        r.imagenes.push_back(std::move(salida));
        return r;
    };
    d.sufijo = SufijoFijo("_Enventanada");
    d.conRectangulo = ConRaton;
    d.ponerRectangulo = [](Valores& v, long f1, long c1, long f2, long c2) {
        v.Poner(kFilaSup, static_cast<double>(f1));
        v.Poner(kColumnaSup, static_cast<double>(c1));
        v.Poner(kFilaInf, static_cast<double>(f2 + 1));
        v.Poner(kColumnaInf, static_cast<double>(c2 + 1));
    };
    return d;
}();

const Registro registro(kEnventanar);

}  // namespace

}  // namespace orvela
