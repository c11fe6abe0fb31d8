// "Clasificación no supervisada": k-means of the pixels of N bands into K
// clusters.
//
// Seeds evenly spaced from the band minima to the band maxima; each pass
// assigns every pixel (row by row) to the nearest centre (Euclidean
// distance, each term (x - c)^2 formed as a power of 2.0, the lower centre on
// equal distances), then moves every centre to the mean of its members (an
// empty cluster to the origin). It converges when no centre moved by more
// than 0.5 in any band (exactly 0.5 counts as converged). The label of a
// pixel is the mean over the bands of its cluster's final centre, truncated
// and reduced to 8 bits.
//
// The member sums of whole samples are exact, so the centres do not depend
// on the order of the sums; those of real samples are added by fixed blocks
// of rows combined in block order, the same on any number of cores.
// Instead of member lists the labels come from one more assignment with the
// centres of the last pass: the same membership without a node per pixel.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/Progreso.h"
#include "classification/Supervisada.h"

namespace orvela {

struct ResultadoNoSupervisada {
    int pasadas = 0;
    bool convergido = false;  // false: stopped by the guard on passes
    bool cancelado = false;
    std::vector<std::vector<double>> centros;  // final, K x N
};

// Seeds of K centres from the band minima and maxima.
std::vector<std::vector<double>> SemillasNoSupervisada(const std::vector<double>& minimos,
                                                        const std::vector<double>& maximos, int k);

// Every pass reports "Pasada P: desplazamiento máximo D". `maxPasadas` <= 0
// means no limit (the loop ends only by convergence or cancel); otherwise
// the labels of the last pass are written when the limit is reached.
ResultadoNoSupervisada ClasificarNoSupervisada(const BandasClasificar& b, int k, std::span<uint8_t> salida,
                                               int maxPasadas = 0, Progreso& p = SinProgreso());

}  // namespace orvela
