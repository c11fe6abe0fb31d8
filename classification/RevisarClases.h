// "Revisar clases": what a student should know about a set of class files
// before classifying with them. It informs and never refuses: every figure
// is what the classifiers would meet.
//
// - Samples: the class file keeps no count, but it keeps the standard
//   deviation with divisor n and the covariance with divisor n - 1, so
//   n = var / (var - std^2) in any band whose samples differ. Fewer samples
//   than bands plus one make the covariance singular.
// - Covariance: the determinant by elimination that maximum likelihood uses
//   (not finite or not positive: singular) and the reciprocal condition, the
//   smallest over the largest eigenvalue of the symmetric matrix (small:
//   nearly singular, the inverse magnifies the rounding of the file).
// - NDs: two classes whose NDs are the same byte cannot be told apart in the
//   classified image.
// - Separability: the Jeffries-Matusita distance of every pair, from 0
//   (the same distribution) to 2 (completely apart):
//       B  = 1/8 d' C^-1 d + 1/2 ln(det C / sqrt(det C1 det C2)),
//       C  = (C1 + C2) / 2, d = m1 - m2,
//       JM = 2 (1 - e^-B).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "classification/FicheroClase.h"

namespace orvela {

enum class EstadoCovarianza {
    Buena,
    CasiSingular,  // reciprocal condition below kCondicionCasiSingular
    Singular,      // determinant by elimination zero, negative or not finite
    NoFinita,      // the file holds non-finite numbers (fewer than two samples)
};

inline constexpr double kCondicionCasiSingular = 1e-5;
// Below this JM distance a pair will be confused; up to kJmBuena it is
// separated only in part.
inline constexpr double kJmConfusion = 1.0;
inline constexpr double kJmBuena = 1.9;

struct RevisionClase {
    std::string nombre;
    int32_t nd = 0;       // integer ND (the mean of the band means, truncated)
    uint8_t ndByte = 0;   // what the classified image holds
    // Samples worked out from the file; nullopt when no band tells (every
    // sample equal, or figures that do not allow it).
    std::optional<long> muestras;
    bool menosDeDos = false;  // covariance not finite: zero or one sample
    bool sinMuestras = false; // means not finite: no sample at all
    double determinante = 0;  // by elimination, as maximum likelihood
    double condicion = 0;     // reciprocal condition; NaN when not finite
    EstadoCovarianza estado = EstadoCovarianza::Buena;
};

struct RevisionClases {
    int bandas = 0;
    std::vector<RevisionClase> clases;
    // Groups (two or more, in list order) of classes sharing one byte ND.
    std::vector<std::vector<int>> ndCompartidos;
    // K x K, row after row; NaN where a covariance does not allow it (0 on
    // the diagonal).
    std::vector<double> jm;
    double Jm(int i, int j) const { return jm[static_cast<std::size_t>(i) * clases.size() + static_cast<std::size_t>(j)]; }
};

// Jeffries-Matusita distance of two Gaussian classes (media, N x N
// covariance); NaN when a covariance or their mean is singular.
double DistanciaJeffriesMatusita(const std::vector<double>& media1, const std::vector<std::vector<double>>& cov1,
                                 const std::vector<double>& media2, const std::vector<std::vector<double>>& cov2);

// The figures of a set of classes read with their deviations and covariance
// for `bandas` bands.
RevisionClases RevisarClases(const std::vector<ClaseLeida>& clases, int bandas);

// The report, in Spanish, with the reason each warning matters. `nombresBandas`
// names the bands (may be empty).
std::string InformeRevisarClases(const RevisionClases& r, const std::vector<std::string>& nombresBandas);

}  // namespace orvela
