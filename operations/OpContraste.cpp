// "Expansión del contraste": linear expansion over the mean +/- 2 standard
// deviations, histogram equalisation, or linear expansion of a range of ND
// typed by the user; the result keeps the input's type.
#include "operations/Operacion.h"
#include "tools/Contraste.h"

namespace orvela {

namespace {

const Clave kMetodo{"metodo"};
const Clave kNdMaximo{"nd_maximo"};
const Clave kNdMinimo{"nd_minimo"};
const Clave kNvMaximo{"nv_maximo"};
const Clave kNvMinimo{"nv_minimo"};

bool ConRango(const Valores& v) { return v.Entero(kMetodo) == static_cast<int>(MetodoContraste::RangoInteractivo); }

const Declaracion kContraste = [] {
    Declaracion d;
    d.idComando = 32824;
    d.orden = "contraste";
    d.titulo = "Expansión del contraste";
    d.resumen = "Expande el contraste: lineal (media ± 2 desviaciones), ecualización del histograma o rango de ND.";
    d.paginaAyuda = "contraste";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    d.campos = {{.clave = &kMetodo,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Método",
                 .opcionCli = "--metodo",
                 .opciones = {{"Expansión Lineal", "lineal"},
                              {"Ecualización Del Histograma", "ecualizacion"},
                              {"Expansión Lineal Con Rango Interactivo", "rango"}},
                 .porDefecto = 0,
                 .obligatorio = true,
                 .ayudaCli = "método de expansión"},
                {.clave = &kNdMaximo,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Definición del Rango",
                 .etiqueta = "Máximo",
                 .opcionCli = "--nd-max",
                 .porDefecto = 255,
                 .obligatorio = true,
                 .aplica = ConRango,
                 .ayudaCli = "ND máximo del rango (con 'rango')"},
                {.clave = &kNdMinimo,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Definición del Rango",
                 .etiqueta = "Mínimo",
                 .opcionCli = "--nd-min",
                 .porDefecto = 0,
                 .obligatorio = true,
                 .aplica = ConRango,
                 .ayudaCli = "ND mínimo del rango (con 'rango')"},
                {.clave = &kNvMaximo,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Rango de NV para las Expansiones Lineales",
                 .etiqueta = "Máximo",
                 .opcionCli = "--nv-max",
                 .porDefecto = 255,
                 .ayudaCli = "NV máximo de salida (por defecto 255)"},
                {.clave = &kNvMinimo,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Rango de NV para las Expansiones Lineales",
                 .etiqueta = "Mínimo",
                 .opcionCli = "--nv-min",
                 .porDefecto = 0,
                 .ayudaCli = "NV mínimo de salida (por defecto 0)"}};
    d.alAceptar = SoloValores([](const Valores& v) -> std::optional<Mensaje> {
        // The output range is checked for every method, equalisation included.
        const double nvMin = v.Numero(kNvMinimo), nvMax = v.Numero(kNvMaximo);
        if (!(nvMin >= 0 && nvMin < nvMax && nvMax < 256)) return Mensaje::Tabla(msg::kRangoNv);
        if (ConRango(v)) {
            const double ndMin = v.Numero(kNdMinimo), ndMax = v.Numero(kNdMaximo);
            if (!(ndMin >= 0 && ndMin < ndMax)) return Mensaje::Tabla(msg::kRangoNd);
        }
        return std::nullopt;
    });
    d.calcular = [](const Contexto& c) {
        ParametrosContraste p;
        p.metodo = static_cast<MetodoContraste>(c.valores.Entero(kMetodo));
        if (p.metodo == MetodoContraste::RangoInteractivo) {
            p.ndMaximo = c.valores.Numero(kNdMaximo);
            p.ndMinimo = c.valores.Numero(kNdMinimo);
        }
        p.nvMaximo = c.valores.Numero(kNvMaximo);
        p.nvMinimo = c.valores.Numero(kNvMinimo);
        return UnaSalida(c, 0,
                         [&](CImagen& salida) { return ExpandirContraste(c.entradas[0]->pixeles, salida.pixeles, p, c.progreso); });
    };
    d.sufijo = SufijoFijo("_Expansión_del_Contraste");
    return d;
}();

const Registro registro(kContraste);

}  // namespace

}  // namespace orvela
