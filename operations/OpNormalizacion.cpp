// "Normalización": the vegetation and soil fractions of an unmixing without
// the shade.
#include "operations/Operacion.h"
#include "operations/Transformaciones.h"
#include "transforms/Normalizacion.h"

namespace orvela {

namespace {

// Inputs in dialog order: soil 0, shade 1, vegetation 2.
const std::vector<ParBandas> kPares = {{1, 0, relleno::kBandasSombraSuelo}, {1, 2, relleno::kBandasSombraVegetacion}};

const Declaracion kNormalizacion = [] {
    Declaracion d;
    d.idComando = 32795;
    d.orden = "normalizacion";
    d.titulo = "Normalización";
    d.resumen = "Quita la sombra de las fracciones de vegetación y suelo de una descomposición espectral.";
    d.paginaAyuda = "normalizacion";
    d.grupoEntrada = "Bandas de Entrada";
    d.entradas = {{.boton = "Banda de Suelo",
                   .nombre = relleno::kBandaSuelo,
                   .opcionCli = "--suelo",
                   .etiquetaCli = "S",
                   .ayudaCli = "fracción de suelo"},
                  {.boton = "Banda de Sombra",
                   .nombre = relleno::kBandaSombra,
                   .opcionCli = "--sombra",
                   .etiquetaCli = "SH",
                   .ayudaCli = "fracción de sombra"},
                  {.boton = "Banda de Vegetación",
                   .nombre = relleno::kBandaVegetacion,
                   .opcionCli = "--vegetacion",
                   .etiquetaCli = "V",
                   .ayudaCli = "fracción de vegetación"}};
    d.grupoSalida = "Nombre de las Imágenes de Salida";
    d.salidaPrefijo = true;
    d.alElegir = [](int indice, const Cabecera& elegida, const std::vector<std::optional<Cabecera>>& previas) {
        return ComprobarPares(kPares, indice, elegida, previas);
    };
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores&) {
        return ComprobarParesCargados(kPares, e);
    };
    d.calcular = [](const Contexto& c) {
        const CImagen& suelo = *c.entradas[0];
        const CImagen& sombra = *c.entradas[1];
        const CImagen& vegetacion = *c.entradas[2];
        const std::string base = suelo.titulo + "_Normalizada";
        return VariasSalidas(c, suelo, 0,
                             {{"_VG_NORMAL", base + "_(VEGETACIÓN_NORMALIZADA)"},
                              {"_SL_NORMAL", base + "_(SUELO_NORMALIZADO)"}},
                             [&](std::vector<Muestras*>& s) {
                                 return Normalizar(vegetacion.pixeles, sombra.pixeles, suelo.pixeles, suelo.Filas(),
                                                   suelo.Columnas(), *s[1], *s[0], c.progreso);
                             });
    };
    d.sufijo = SufijoFijo("_Normalizada");
    return d;
}();

const Registro registro(kNormalizacion);

}  // namespace

}  // namespace orvela
