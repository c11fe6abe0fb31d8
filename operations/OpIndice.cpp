// "Índices de vegetación": ratio or NDVI of a red and a near-infrared band,
// into a real image.
#include <new>

#include "operations/Operacion.h"
#include "operations/Transformaciones.h"
#include "transforms/IndiceVegetacion.h"

namespace orvela {

namespace {

const Clave kTipo{"tipo"};
const std::vector<ParBandas> kPares = {{0, 1, relleno::kBandasRIR}};

const Declaracion kIndice = [] {
    Declaracion d;
    d.idComando = 32825;
    d.orden = "indice";
    d.titulo = "Índices de vegetación";
    d.resumen = "Cociente IR / R o NDVI de una banda roja y una del infrarrojo cercano.";
    d.paginaAyuda = "indice-vegetacion";
    d.grupoEntrada = "Nombre de la Banda Roja (R)";
    d.entradas = {{.boton = "&Seleccionar", .nombre = relleno::kBandaRojo, .etiquetaCli = "ROJO"},
                  {.boton = "S&eleccionar",
                    .nombre = relleno::kBandaInfrarrojo,
                    .etiquetaCli = "INFRARROJO",
                    .grupo = "Nombre de la Banda del Infrarrojo Cercano (IR)"}};
    d.campos = {{.clave = &kTipo,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Tipo de Índice de Vegetación",
                 .opcionCli = "--tipo",
                 .opciones = {{"Cociente", "cociente"}, {"NDVI", "ndvi"}},
                 .obligatorio = true,
                 .ayudaCli = "índice: cociente IR / R o NDVI"}};
    d.alElegir = [](int indice, const Cabecera& elegida, const std::vector<std::optional<Cabecera>>& previas) {
        return ComprobarPares(kPares, indice, elegida, previas);
    };
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores&) {
        return ComprobarParesCargados(kPares, e);
    };
    d.calcular = [](const Contexto& c) {
        const CImagen& rojo = *c.entradas[0];
        const CImagen& ir = *c.entradas[1];
        const auto tipo = static_cast<TipoIndice>(c.valores.Entero(kTipo));
        return UnaSalida(c, kReal, [&](CImagen& salida) {
            if (tipo == TipoIndice::Ndvi)
                return Ndvi(rojo.pixeles, ir.pixeles, rojo.Filas(), rojo.Columnas(), salida.pixeles, c.progreso);
            // The ratio writes 1 over the red zeros: it works on a copy, so
            // the red band's window keeps showing its own pixels.
            Muestras copia = rojo.pixeles.Copia();
            if (!copia.Valido()) throw std::bad_alloc();
            return CocienteVegetacion(copia, ir.pixeles, rojo.Filas(), rojo.Columnas(), salida.pixeles, c.progreso);
        });
    };
    d.sufijo = SufijoSegun(kTipo, {"_Indice_De_Vegetación_Cociente", "_Indice_De_Vegetación_NDVI"});
    return d;
}();

const Registro registro(kIndice);

}  // namespace

}  // namespace orvela
