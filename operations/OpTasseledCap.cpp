// "Tasseled cap": the six TM bands, each picked with its own button and
// compared with band 1, into brightness, greenness and wetness.
#include "operations/Operacion.h"
#include "operations/Transformaciones.h"
#include "transforms/TasseledCap.h"

namespace orvela {

namespace {

const std::vector<ParBandas> kPares = {{0, 1, relleno::kBandasUnoDos},
                                       {0, 2, relleno::kBandasUnoTres},
                                       {0, 3, relleno::kBandasUnoCuatro},
                                       {0, 4, relleno::kBandasUnoCinco},
                                       {0, 5, relleno::kBandasUnoSiete}};

const Declaracion kTasseledCap = [] {
    Declaracion d;
    d.idComando = 32826;
    d.orden = "tasseled-cap";
    d.titulo = "Tasseled cap";
    d.resumen = "Brillo, verdor y humedad de las seis bandas reflectivas de Landsat TM.";
    d.paginaAyuda = "tasseled-cap";
    d.grupoEntrada = "Nombre de las Bandas TM";
    d.entradas = {{.boton = "Banda&1", .nombre = relleno::kBandaUno, .etiquetaCli = "TM1"},
                  {.boton = "Banda&2", .nombre = relleno::kBandaDos, .etiquetaCli = "TM2"},
                  {.boton = "Banda&3", .nombre = relleno::kBandaTres, .etiquetaCli = "TM3"},
                  {.boton = "Banda&4", .nombre = relleno::kBandaCuatro, .etiquetaCli = "TM4"},
                  {.boton = "Banda&5", .nombre = relleno::kBandaCinco, .etiquetaCli = "TM5"},
                  {.boton = "Banda&7", .nombre = relleno::kBandaSiete, .etiquetaCli = "TM7"}};
    d.grupoSalida = "Nombre de las Transformadas TTC";
    d.salidaPrefijo = true;
    d.alElegir = [](int indice, const Cabecera& elegida, const std::vector<std::optional<Cabecera>>& previas) {
        return ComprobarPares(kPares, indice, elegida, previas);
    };
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores&) {
        return ComprobarParesCargados(kPares, e);
    };
    d.calcular = [](const Contexto& c) {
        const Muestras* tm[6];
        for (int b = 0; b < 6; ++b) tm[b] = &c.entradas[static_cast<std::size_t>(b)]->pixeles;
        const CImagen& uno = *c.entradas[0];
        const std::string base = uno.titulo + "_Transformada_Con_TTC";
        return VariasSalidas(c, uno, 0,
                             {{"_Brillo", base + "_brillo"}, {"_Verdor", base + "_verdor"}, {"_Humedad", base + "_humedad"}},
                             [&](std::vector<Muestras*>& s) {
                                 return TasseledCap(tm, uno.Filas(), uno.Columnas(), *s[0], *s[1], *s[2], c.progreso);
                             });
    };
    d.sufijo = SufijoFijo("_Transformada_Con_TTC");
    return d;
}();

const Registro registro(kTasseledCap);

}  // namespace

}  // namespace orvela
