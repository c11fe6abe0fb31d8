// Statistics of an image: the whole image (mean, extremes, population
// variance and deviation, range) and, for a classified image with its
// legend, the same figures of a source image over each class's pixels.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Progreso.h"
#include "image/Leyenda.h"
#include "image/Muestras.h"

namespace orvela {

struct EstadisticasContinuas {
    double media = 0, maximo = 0, minimo = 0, varianza = 0, desviacion = 0, rango = 0;
};
// nullopt for an unknown type code or an empty image.
std::optional<EstadisticasContinuas> CalcularEstadisticas(const Muestras& m);

struct EstadisticaClase {
    int nd = 0;
    std::string nombre;
    double minimo = 0, maximo = 0, total = 0, media = 0, rango = 0, desviacion = 0;
};

// One record per legend class, in legend order. A pixel belongs to the first
// class whose ND equals the classified sample; every class's minimum and
// maximum start at the source's first sample, whatever its class. A class
// without pixels has total 0 and, instead of the undefined 0 / 0, mean and
// deviation 0. nullopt for a classified image that is not byte, sizes that
// differ, an unknown source type or a cancel.
std::optional<std::vector<EstadisticaClase>> EstadisticasPorClase(const Muestras& clasificada, const Muestras& fuente,
                                                                  const std::vector<ClaseLeyenda>& clases,
                                                                  Progreso& progreso = SinProgreso());

// The text of the statistics window: lines joined by `salto` ("\r\n" in the
// window's edit box).
std::string TextoEstadisticasClases(const std::vector<EstadisticaClase>& e, const std::string& tituloClasificada,
                                    const std::string& tituloOriginal, const std::string& salto = "\r\n");
// The saved report: one tab before the class name and six decimals.
std::string InformeEstadisticasClases(const std::vector<EstadisticaClase>& e, const std::string& tituloClasificada,
                                      const std::string& tituloOriginal);

}  // namespace orvela
