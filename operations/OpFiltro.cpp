// "Filtrado de la imagen": one single-band image filtered with a 3 x 3, 5 x 5
// or 7 x 7 moving window. The parameters of the high-pass, low-pass,
// directional and user-defined filters are asked for in their own dialogs
// after the main one is accepted.
#include "operations/Operacion.h"
#include "tools/FiltroDireccional.h"
#include "tools/FiltroMedia.h"
#include "tools/FiltroPasoAlto.h"
#include "tools/FiltroPasoBajo.h"
#include "tools/FiltroPersonalizado.h"
#include "tools/FiltrosRango.h"

namespace orvela {

namespace {

const Clave kCoeficientes{"coeficientes"};
const Clave kTamano{"tamano"};
const Clave kTipoFiltro{"tipo_filtro"};
const Clave kVarianteDireccional{"variante_direccional"};
const Clave kVariantePasoAlto{"variante_paso_alto"};
const Clave kVariantePasoBajo{"variante_paso_bajo"};

// Filter indices, in the order of the dialog.
enum TipoFiltro { kMedia, kMediana, kModa, kMaximo, kMinimo, kPasoAlto, kPasoBajo, kDireccional, kPersonalizado };

const std::vector<Opcion> kTamanos = {{"3 x 3", "3"}, {"5 x 5", "5"}, {"7 x 7", "7"}};

const std::vector<Opcion> kTipos = {
    {"Media", "media"},         {"Mediana", "mediana"},     {"Moda", "moda"},
    {"Máximo", "maximo"},       {"Mínimo", "minimo"},       {"Paso alto", "paso-alto"},
    {"Paso bajo", "paso-bajo"}, {"Direccional", "direccional"}, {"Personalizado", "personalizado"},
};

const std::vector<Opcion> kVariantesPasoAlto = {{"Laplaciano 9", "laplaciano9"}, {"Laplaciano 5", "laplaciano5"}};
const std::vector<Opcion> kVariantesPasoBajo = {
    {"Promedio", "promedio"}, {"Ponderado a 1", "ponderado1"}, {"Ponderado a 2", "ponderado2"}};
const std::vector<Opcion> kDirecciones = {
    {"N (norte)", "n"},     {"S (sur)", "s"},         {"E (este)", "e"},       {"W (oeste)", "w"},
    {"NE (noreste)", "ne"}, {"NW (noroeste)", "nw"}, {"SE (sureste)", "se"}, {"SW (suroeste)", "sw"}};

int Tipo(const Valores& v) { return v.Entero(kTipoFiltro); }
// Side of the window: 3, 5 or 7.
int Lado(const Valores& v) { return 3 + 2 * v.Entero(kTamano); }

Campo Coeficientes(int tamano, const char* subdialogo) {
    const int lado = 3 + 2 * tamano;
    return {.clave = &kCoeficientes,
            .tipo = TipoCampo::ListaReales,
            .etiqueta = "Introduzca los coeficientes del filtro:",
            .opcionCli = "--coeficientes",
            .obligatorio = true,
            .subdialogo = subdialogo,
            .aplica = [tamano](const Valores& v) {
                return Tipo(v) == kPersonalizado && v.Entero(kTamano) == tamano;
            },
            .cantidad = [lado](const Valores&) { return lado * lado; },
            .ayudaCli = "coeficientes en orden de filas, 9, 25 o 49 según el tamaño; obligatorios con --tipo personalizado"};
}

const Declaracion kFiltro = [] {
    Declaracion d;
    d.idComando = 32849;
    d.orden = "filtro";
    d.titulo = "Filtrado de la imagen";
    d.resumen = "Filtra la imagen con una ventana móvil de 3 x 3, 5 x 5 o 7 x 7 píxeles.";
    d.paginaAyuda = "filtro";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    d.campos = {
        {.clave = &kTamano,
         .tipo = TipoCampo::Eleccion,
         .grupo = "Tamaño del filtro",
         .opcionCli = "--tamano",
         .opciones = kTamanos,
         .porDefecto = 0,
         .ayudaCli = "tamaño de la ventana (por defecto 3)"},
        {.clave = &kTipoFiltro,
         .tipo = TipoCampo::Eleccion,
         .grupo = "Tipo de filtro",
         .opcionCli = "--tipo",
         .opciones = kTipos,
         .obligatorio = true,
         .ayudaCli = "tipo de filtro"},
        {.clave = &kVariantePasoAlto,
         .tipo = TipoCampo::Eleccion,
         .opcionCli = "--variante",
         .opciones = kVariantesPasoAlto,
         .porDefecto = 0,
         .subdialogo = "Filtro Paso Alto",
         .aplica = [](const Valores& v) { return Tipo(v) == kPasoAlto; },
         .ayudaCli = "variante: laplaciano9 o laplaciano5 (paso-alto), promedio, ponderado1 o ponderado2 "
                     "(paso-bajo), n, s, e, w, ne, nw, se o sw (direccional)"},
        {.clave = &kVariantePasoBajo,
         .tipo = TipoCampo::Eleccion,
         .opcionCli = "--variante",
         .opciones = kVariantesPasoBajo,
         .porDefecto = 0,
         .subdialogo = "Filtro Paso Bajo",
         .aplica = [](const Valores& v) { return Tipo(v) == kPasoBajo; }},
        {.clave = &kVarianteDireccional,
         .tipo = TipoCampo::Eleccion,
         .opcionCli = "--variante",
         .opciones = kDirecciones,
         .porDefecto = 0,
         .subdialogo = "Filtro Direccional",
         .aplica = [](const Valores& v) { return Tipo(v) == kDireccional; }},
        Coeficientes(0, "Filtro Personalizado 3 x 3"),
        Coeficientes(1, "Filtro Personalizado 5 x 5"),
        Coeficientes(2, "Filtro Personalizado 7 x 7"),
    };
    d.alAceptar = SoloValores([](const Valores& v) -> std::optional<Mensaje> {
        if (Tipo(v) == kDireccional && Lado(v) != 3) return Mensaje::Tabla(msg::kDireccionalTamano);
        return std::nullopt;
    });
    d.calcular = [](const Contexto& c) {
        Resultado r;
        const CImagen& e = *c.entradas[0];
        const Valores& v = c.valores;
        if (!CodigoValido(e.tipoDato)) {
            r.Rechazar(Mensaje::Tabla(msg::kTipoNoReconocido));
            return r;
        }
        const int k = Lado(v);
        if (Tipo(v) == kDireccional && k != 3) {
            r.Rechazar(Mensaje::Tabla(msg::kDireccionalTamano));
            return r;
        }
        if (Tipo(v) == kPersonalizado && v.Lista(kCoeficientes).size() != static_cast<std::size_t>(k * k)) {
            r.Rechazar(Mensaje::Libre(texto::kCoeficientesFiltro));
            return r;
        }
        CImagen salida;
        if (auto error = salida.CopiarCabecera(e)) {
            r.FallarSistema(*error);
            return r;
        }
        const Muestras& in = e.pixeles;
        Muestras& out = salida.pixeles;
        const long filas = e.Filas(), columnas = e.Columnas();
        bool hecho = false;
        switch (Tipo(v)) {
            case kMedia: hecho = FiltroMedia(in, filas, columnas, k, out, c.progreso); break;
            case kMediana: hecho = FiltroMediana(in, filas, columnas, k, out, c.progreso); break;
            case kModa: hecho = FiltroModa(in, filas, columnas, k, out, c.progreso); break;
            case kMaximo: hecho = FiltroMaximo(in, filas, columnas, k, out, c.progreso); break;
            case kMinimo: hecho = FiltroMinimo(in, filas, columnas, k, out, c.progreso); break;
            case kPasoAlto:
                hecho = FiltroPasoAlto(in, filas, columnas, k, static_cast<PasoAlto>(v.Entero(kVariantePasoAlto)), out, c.progreso);
                break;
            case kPasoBajo:
                hecho = FiltroPasoBajo(in, filas, columnas, k, static_cast<PasoBajo>(v.Entero(kVariantePasoBajo)), out, c.progreso);
                break;
            case kDireccional:
                hecho = FiltroDireccional(in, filas, columnas, static_cast<Direccion>(v.Entero(kVarianteDireccional)), out, c.progreso);
                break;
            case kPersonalizado:
                hecho = FiltroPersonalizado(in, filas, columnas, k, v.Lista(kCoeficientes), out, c.progreso);
                break;
            default: break;
        }
        if (!hecho) {
            r.Rechazar(Mensaje::Tabla(msg::kTipoNoReconocido));
            return r;
        }
        r.imagenes.push_back(std::move(salida));
        return r;
    };
    d.sufijo = SufijoSegun(kTipoFiltro,
                           {"_Filtrado_de_Media", "_Filtrado_Mediana", "_Filtrado_de_Moda", "_Filtrado_Máximo",
                            "_Filtrado_Mínimo", "_Filtrado_Paso_alto", "_Filtrado_Paso_bajo", "_Filtrado_Direccional",
                            "_Filtrado_Personalizado"});
    return d;
}();

const Registro registro(kFiltro);

}  // namespace

}  // namespace orvela
