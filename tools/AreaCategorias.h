// Area per category of a byte or integer image: the distinct values sorted
// ascending, the pixels of each, and its area when the image is metric with
// a known resolution.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

struct AreaCategorias {
    int codigo = 0;                   // kByte or kInteger: the form of the share
    std::vector<uint32_t> categorias;  // ascending
    std::vector<uint32_t> cuentas;
    bool conArea = false;
    std::vector<float> areas;          // square metres, single precision
};

// nullopt for a type other than byte and integer, or a cancel. Areas only
// when the reference system is not "unknown", the units are exactly "m"
// and the resolution is not -1: count x resolution x resolution in float.
std::optional<AreaCategorias> CalcularAreaCategorias(const Muestras& m, const std::string& sistema,
                                                     const std::string& unidades, double resolucion,
                                                     Progreso& progreso = SinProgreso());

// The report: the image name, the table header (with "Hectáreas" only with
// areas) and one line per category. The share of a byte image is
// count / total x 100 in floating point; that of an integer image is the
// whole quotient count / total times 100.
std::string InformeArea(const AreaCategorias& a, const std::string& nombre);

}  // namespace orvela
