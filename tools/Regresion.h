// Regression of band Y on band X: Pearson's r, the least-squares line
// y = a x + b and its R², over every pixel or over the pixels of a byte mask
// (whose divisor stays the full pixel count), and the scatter diagram's
// 256 x 256 count grid.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Grafico.h"
#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// Sums of products over the counted pixels, in blocks of rows combined in
// block order (the same figure on any number of cores). x and y share one
// type; nullopt for an unknown type or a cancel.
//   Σ (y - ȳ)(x - x̄) / N / (σx σy)
std::optional<double> PearsonCorrelation(const Muestras& x, const Muestras& y, double mediaX, double mediaY,
                                         double desvX, double desvY, const uint8_t* mascara, long filas,
                                         Progreso& progreso = SinProgreso());
//   Σ (x - x̄)(y - ȳ) / N
std::optional<double> Covariance(const Muestras& x, const Muestras& y, double mediaX, double mediaY,
                                 const uint8_t* mascara, long filas, Progreso& progreso = SinProgreso());
//   ŷ = a x + b; SSR = Σ (ŷ - ȳ)², SSE = Σ (y - ŷ)²; SSR / (SSE + SSR)
std::optional<double> DeterminationCoefficient(const Muestras& x, const Muestras& y, double mediaY, double a,
                                               double b, const uint8_t* mascara, long filas,
                                               Progreso& progreso = SinProgreso());

struct FigurasRegresion {
    double mediaX = 0, mediaY = 0, desvX = 0, desvY = 0;
    double r = 0, covarianza = 0, a = 0, b = 0;
    float r2 = 0;          // kept in single precision
    uint64_t muestra = 0;  // pixels taken: all, or those of the mask
};
// The whole computation. Byte pairs sum over the counts of each pair of
// values (a more exact sum, far fewer terms); the other types sum over the
// pixels as the functions above do.
std::optional<FigurasRegresion> CalcularRegresion(const Muestras& x, const Muestras& y, const uint8_t* mascara,
                                                  long filas, Progreso& progreso = SinProgreso());

// Cell of a value in the 256 cells between a band's minimum and maximum:
// truncate((v - min) / (max - min) x 255); 0 when max equals min.
int CeldaDiagrama(double v, double minimo, double maximo);

// Counts of the 256 x 256 cells (index fila-Y * 256 + columna-X, Y cell 0 at
// the bottom), over every pixel or those of the mask.
std::optional<std::vector<uint64_t>> RejillaDispersion(const Muestras& x, const Muestras& y, const uint8_t* mascara,
                                                       double minX, double maxX, double minY, double maxY,
                                                       Progreso& progreso = SinProgreso());

// The chart: one point per occupied cell at the cell's lower value, with its
// count (the cloud in RGB(100, 0, 0)), and the line y = a x + b across the X
// range in green. A band with one value gets a range of 1.
Grafico DiagramaRegresion(const std::vector<uint64_t>& rejilla, double minX, double maxX, double minY, double maxY,
                          double a, double b, const std::string& tituloX, const std::string& tituloY);

}  // namespace orvela
