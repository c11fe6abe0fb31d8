// Linear spectral unmixing into three endmembers (vegetation, shade, soil):
// per pixel, least squares with the fractions summing to one, optionally
// also non-negative (fully constrained).
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// Spectra of the endmembers: espectro[k][b] is the mean of band b in
// endmember k (0 vegetation, 1 shade, 2 soil).
struct Extremos {
    std::array<std::vector<double>, 3> espectro;
};

// Fractions of one pixel `x` (one value per band) and the RMS residual
// sqrt(sum_b (x_b - sum_k f_k e_k[b])^2 / nb). nullopt when the endmembers
// do not give a unique solution (their differences are linearly dependent).
//
// Sum to one, with the soil as reference:
// x - e_2 = f_0 (e_0 - e_2) + f_1 (e_1 - e_2), normal equations of the 2 x 2
// system by Cramer's rule, f_2 = 1 - f_0 - f_1. Constrained: when a
// fraction is negative, the best point of each edge of the triangle
// (endmember pairs vegetation-shade, vegetation-soil, shade-soil, the other
// fraction 0, the pair's fraction clamped to 0..1) and the smallest residual
// wins (the first edge on a tie).
class Desmezclador {
public:
    static std::optional<Desmezclador> Crear(const Extremos& e);
    // Writes the three fractions and returns the residual.
    double Pixel(const double* x, bool restringida, double f[3]) const;
    int Bandas() const { return nb_; }
    // A row of `n` pixels, band b at x[b]: the same figures as Pixel, pixel
    // by pixel, computed band after band over the whole row; coded fractions
    // and residual written to out[0..3].
    void Fila(const double* const* x, std::size_t n, bool restringida, float* const out[4]) const;
    // Buffers of a row, kept from one row to the next.
    struct Memoria {
        std::vector<double> f0, f1, r, px;
        std::vector<std::size_t> fuera;
        std::array<std::vector<double>, 3> num, t, res;
    };
    void Fila(const double* const* x, std::size_t n, bool restringida, float* const out[4], Memoria& m) const;

private:
    int nb_ = 0;
    Extremos e_;
    // Row k of the least-squares solver: f_k = sum_b m_[k][b] * (x_b - e_2[b]).
    std::array<std::vector<double>, 2> m_;
    double Residuo(const double* x, const double f[3]) const;
    void Lados(const double* const* x, Memoria& mem, float* const out[4]) const;
};

// The whole image: fraction images coded 100 + 100 x fraction and the RMS
// residual, as floats. `bandas` of one type and size, in the order of the
// spectra. False when cancelled or for an unknown type code.
bool Desmezclar(const Desmezclador& d, const std::vector<const Muestras*>& bandas, long filas, long columnas,
                bool restringida, Muestras& vegetacion, Muestras& sombra, Muestras& suelo, Muestras& error,
                Progreso& progreso = SinProgreso());

}  // namespace orvela
