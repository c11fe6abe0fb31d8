// Principal components of a set of bands: means, population covariance, the
// threshold Jacobi method on the packed lower triangle, eigenvalues sorted in
// decreasing order, and the component images of raw (not centred) values.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

struct AnalisisComponentes {
    std::vector<double> medias;                     // one per band
    std::vector<std::vector<double>> covarianza;    // nb x nb, both halves
    std::vector<double> autovalores;                // decreasing
    std::vector<std::vector<double>> autovectores;  // eigenvector k is row k
    std::vector<double> porcentajes;                // autovalor * 100 / sum
};

// Symmetric matrix held as its lower triangle: element (i, j), i <= j, at
// j * (j + 1) / 2 + i.
inline std::size_t IndiceEmpaquetado(std::size_t i, std::size_t j) {
    return i <= j ? j * (j + 1) / 2 + i : i * (i + 1) / 2 + j;
}

// Threshold Jacobi on the packed matrix `a` of order n: the cyclic sweeps
// with a threshold lowered by n each time until it reaches 1e-10 * norm / n.
// On return the diagonal of `a` holds the eigenvalues (unsorted) and row k
// of `v` the eigenvector of the k-th diagonal element.
void JacobiUmbral(std::vector<double>& a, int n, std::vector<std::vector<double>>& v);

// Selection sort in decreasing order (a later value replaces the candidate
// only when strictly larger); eigenvector rows move with their values.
void OrdenarAutovalores(std::vector<double>& valores, std::vector<std::vector<double>>& vectores);

// Means, covariance, eigen decomposition and percentages of `bandas` (same
// type and size). Byte and integer bands are summed exactly in integers;
// real and double bands in fixed blocks of rows combined in block order.
// nullopt for an unknown type code or when cancelled.
std::optional<AnalisisComponentes> AnalizarComponentes(const std::vector<const Muestras*>& bandas, long filas,
                                                       long columnas, Progreso& progreso = SinProgreso());

// Component k (k < salidas.size()): out_k[i] = sum over bands b, in band
// order, of x_b[i] * V[k][b], in double. `salidas` must hold filas*columnas
// doubles each. False when cancelled or for an unknown type code.
bool ProyectarComponentes(const std::vector<const Muestras*>& bandas, long filas, long columnas,
                          const AnalisisComponentes& a, std::vector<Muestras*>& salidas,
                          Progreso& progreso = SinProgreso());

// The report "_Texto_CP.txt" (UTF-8).
std::string InformeComponentes(const AnalisisComponentes& a, const std::vector<std::string>& entradas,
                               const std::vector<std::string>& componentes);

}  // namespace orvela
