// The three supervised classifiers: minimum distance, parallelepipeds and
// maximum likelihood. Each classifies N bands of one size pixel by pixel
// into classes read from class files and gives a byte image whose value is
// the ND of the chosen class (its integer ND reduced to 8 bits).
//
// A class's ND is the mean over the bands of its band means (sum in band
// order, divided by N), truncated toward zero; two classes may share one.
#pragma once

#include <atomic>
#include <cstdint>
#include <span>
#include <vector>

#include "base/Progreso.h"
#include "classification/FicheroClase.h"
#include "image/Muestras.h"

namespace orvela {

int32_t NdClase(const ClaseLeida& c);

// Bands of one size (rows x columns samples each, any type).
struct BandasClasificar {
    std::vector<const Muestras*> bandas;
    long filas = 0, columnas = 0;
};

// Runs `fila(x, c, salida)` on every row, row by row on every core: x[b]
// points to the C values of band b in that row, read as doubles (integer
// samples unsigned), and `salida` to the row of the result. The rules work
// along the row (one class at a time over all its pixels), which keeps each
// pixel's figures in the order of the per-pixel definition. False when
// cancelled or a band is shorter than the size.
template <class Fila>
bool RecorrerFilas(const BandasClasificar& b, std::span<uint8_t> salida, Progreso& p, const Fila& fila) {
    const std::size_t n = b.bandas.size();
    const auto c = static_cast<std::size_t>(b.columnas);
    std::atomic<bool> bien{true};
    const bool hecho = PorFilas(p, b.filas, [&](long desde, long hasta) {
        std::vector<double> filas(n * c);
        std::vector<const double*> x(n);
        for (std::size_t k = 0; k < n; ++k) x[k] = filas.data() + k * c;
        for (long f = desde; f < hasta; ++f) {
            const std::size_t inicio = static_cast<std::size_t>(f) * c;
            for (std::size_t k = 0; k < n; ++k)
                if (!LeerComoDouble(*b.bandas[k], inicio, c, filas.data() + k * c)) bien = false;
            if (!bien) return;
            fila(x.data(), c, salida.data() + inicio);
        }
    });
    return hecho && bien;
}

// Nearest class mean: d_k = sqrt(sum over bands, in band order, of
// (x - mean)^2); the smallest wins, the earlier class on equal distances.
bool ClasificarMinimaDistancia(const BandasClasificar& b, const std::vector<ClaseLeida>& clases,
                               std::span<uint8_t> salida, Progreso& p = SinProgreso());

// Boxes mean - m*std <= x <= mean + m*std in every band (inclusive): the
// pixel takes the ND of the LAST class in list order whose box holds it,
// 0 when none does.
// Byte and integer bands with at most 64 classes go through a table of the
// boxes holding each sample value of each band.
bool ClasificarParalelepipedos(const BandasClasificar& b, const std::vector<ClaseLeida>& clases, int multiplicador,
                               std::span<uint8_t> salida, Progreso& p = SinProgreso());
// The same rule trying every class in order on each pixel (any type), with
// the bounds of class i in band b at [i * N + b] and the NDs as bytes.
bool ParalelepipedosDirecto(const BandasClasificar& b, const std::vector<double>& bajo, const std::vector<double>& alto,
                            const std::vector<uint8_t>& nd, std::span<uint8_t> salida, Progreso& p = SinProgreso());

// Determinant by elimination without row exchange: each step replaces the
// entries below and right of the pivot by (pivot*a[i][j] - a[i][k]*a[k][j])
// divided by the previous pivot (1 at the start); the last pivot is the
// determinant. A zero pivot gives a non-finite result; the empty matrix 1.
double DeterminanteEliminacion(std::vector<std::vector<double>> a);
// Inverse by cofactors: cofactor (i, j) is (-1)^(i+j) times the determinant
// of the minor without row i and column j (by elimination), and the inverse
// is the transposed cofactor matrix divided by `determinante`.
std::vector<std::vector<double>> InversaCofactores(const std::vector<std::vector<double>>& a, double determinante);

// Largest g_k = -ln(det_k) - d' C_k^-1 d with d = x - mean_k, the quadratic
// form as sum over i (in order) of d_i * (sum over j, in order, of
// inv[i][j] * d_j); strict comparison (the earlier class on equal values).
// A singular matrix leaves g_k non-finite: a NaN never wins a comparison,
// so such a class is chosen only as the first class against classes that
// are all NaN too.
bool ClasificarMaximaProbabilidad(const BandasClasificar& b, const std::vector<ClaseLeida>& clases,
                                  std::span<uint8_t> salida, Progreso& p = SinProgreso());

// g_k of one pixel for every class (the decision inspector and the tests).
struct ModeloGaussiano {
    std::vector<double> media;
    std::vector<double> inversa;  // N x N, row after row
    double determinante = 0;
    double lnDeterminante = 0;
};
ModeloGaussiano PrepararModelo(const ClaseLeida& c);
double LogVerosimilitud(const ModeloGaussiano& m, const double* x);

}  // namespace orvela
