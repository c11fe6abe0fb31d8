// "Revisar clases": the figures.
#include "classification/RevisarClases.h"

#include <Eigen/Cholesky>
#include <Eigen/Dense>
#include <cmath>
#include <limits>
#include <map>

#include "classification/Supervisada.h"
#include "image/Conversion.h"

namespace orvela {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

Eigen::MatrixXd Matriz(const std::vector<std::vector<double>>& a) {
    const auto n = static_cast<Eigen::Index>(a.size());
    Eigen::MatrixXd m(n, n);
    for (Eigen::Index i = 0; i < n; ++i)
        for (Eigen::Index j = 0; j < n; ++j)
            m(i, j) = static_cast<std::size_t>(j) < a[static_cast<std::size_t>(i)].size()
                          ? a[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)]
                          : kNaN;
    return m;
}

bool Finita(const Eigen::MatrixXd& m) { return m.allFinite(); }

// ln det of a symmetric positive definite matrix by Cholesky; nullopt when
// it is not positive definite.
std::optional<double> LnDetDefinida(const Eigen::MatrixXd& m, Eigen::LLT<Eigen::MatrixXd>& llt) {
    if (!Finita(m)) return std::nullopt;
    if (m.rows() == 0) return 0.0;
    llt.compute(m);
    if (llt.info() != Eigen::Success) return std::nullopt;
    // A pivot lost in the rounding of the others is a zero one: the matrix
    // is singular as far as its figures tell.
    const double escala = m.diagonal().cwiseAbs().maxCoeff();
    double s = 0;
    const Eigen::MatrixXd l = llt.matrixL();
    for (Eigen::Index i = 0; i < m.rows(); ++i) {
        if (!(l(i, i) * l(i, i) > 1e-12 * escala)) return std::nullopt;
        s += std::log(l(i, i));
    }
    return 2.0 * s;
}

// Samples from the two divisors of the file: var = S / (n - 1) and
// std^2 = S / n give n = var / (var - std^2). The mean over the bands that
// tell, rounded.
std::optional<long> MuestrasDeLaClase(const ClaseLeida& c) {
    double suma = 0;
    int cuantas = 0;
    for (std::size_t b = 0; b < c.media.size(); ++b) {
        const double var = b < c.covarianza.size() ? c.covarianza[b][b] : kNaN;
        const double sd = b < c.desviacion.size() ? c.desviacion[b] : kNaN;
        if (!std::isfinite(var) || !std::isfinite(sd) || !(var > 0)) continue;
        const double resto = var - sd * sd;
        if (!(resto > 0)) continue;
        const double n = var / resto;
        if (!std::isfinite(n) || n > 1e9) continue;
        suma += n;
        ++cuantas;
    }
    if (cuantas == 0) return std::nullopt;
    return std::lround(suma / cuantas);
}

}  // namespace

double DistanciaJeffriesMatusita(const std::vector<double>& media1, const std::vector<std::vector<double>>& cov1,
                                 const std::vector<double>& media2, const std::vector<std::vector<double>>& cov2) {
    const std::size_t n = media1.size();
    if (media2.size() != n || cov1.size() != n || cov2.size() != n) return kNaN;
    const Eigen::MatrixXd c1 = Matriz(cov1), c2 = Matriz(cov2);
    const Eigen::MatrixXd c = (c1 + c2) / 2.0;
    Eigen::LLT<Eigen::MatrixXd> l1, l2, l;
    const auto ln1 = LnDetDefinida(c1, l1), ln2 = LnDetDefinida(c2, l2), ln = LnDetDefinida(c, l);
    if (!ln1 || !ln2 || !ln) return kNaN;
    Eigen::VectorXd d(static_cast<Eigen::Index>(n));
    for (std::size_t i = 0; i < n; ++i) d(static_cast<Eigen::Index>(i)) = media1[i] - media2[i];
    if (!d.allFinite()) return kNaN;
    const double q = d.dot(l.solve(d));
    const double b = q / 8.0 + 0.5 * (*ln - 0.5 * (*ln1 + *ln2));
    return 2.0 * (1.0 - std::exp(-b));
}

RevisionClases RevisarClases(const std::vector<ClaseLeida>& clases, int bandas) {
    RevisionClases r;
    r.bandas = bandas;
    for (const auto& c : clases) {
        RevisionClase v;
        v.nombre = c.nombre;
        v.nd = NdClase(c);
        v.ndByte = AlmacenarEntero<uint8_t>(v.nd);
        bool mediasFinitas = true;
        for (double m : c.media) mediasFinitas = mediasFinitas && std::isfinite(m);
        v.sinMuestras = !mediasFinitas;
        const Eigen::MatrixXd m = Matriz(c.covarianza);
        v.menosDeDos = !Finita(m);
        v.muestras = MuestrasDeLaClase(c);
        v.determinante = DeterminanteEliminacion(c.covarianza);
        v.condicion = kNaN;
        if (v.menosDeDos) {
            v.estado = EstadoCovarianza::NoFinita;
        } else {
            const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> e(m, Eigen::EigenvaluesOnly);
            if (e.info() == Eigen::Success && m.rows() > 0) {
                const double mayor = e.eigenvalues().maxCoeff(), menor = e.eigenvalues().minCoeff();
                v.condicion = mayor > 0 ? menor / mayor : 0.0;
            }
            if (!std::isfinite(v.determinante) || !(v.determinante > 0) || !(v.condicion > 0))
                v.estado = EstadoCovarianza::Singular;
            else if (v.condicion < kCondicionCasiSingular)
                v.estado = EstadoCovarianza::CasiSingular;
        }
        r.clases.push_back(std::move(v));
    }
    // Classes grouped by the byte their pixels will hold, in list order.
    std::map<int, std::vector<int>> porNd;
    std::vector<int> orden;
    for (std::size_t i = 0; i < r.clases.size(); ++i) {
        auto& g = porNd[r.clases[i].ndByte];
        if (g.empty()) orden.push_back(r.clases[i].ndByte);
        g.push_back(static_cast<int>(i));
    }
    for (int nd : orden)
        if (porNd[nd].size() > 1) r.ndCompartidos.push_back(porNd[nd]);
    const std::size_t k = clases.size();
    r.jm.assign(k * k, 0.0);
    for (std::size_t i = 0; i < k; ++i)
        for (std::size_t j = i + 1; j < k; ++j) {
            // Pairs with a class that maximum likelihood cannot use get no figure.
            const bool usables = r.clases[i].estado != EstadoCovarianza::Singular &&
                                 r.clases[i].estado != EstadoCovarianza::NoFinita &&
                                 r.clases[j].estado != EstadoCovarianza::Singular &&
                                 r.clases[j].estado != EstadoCovarianza::NoFinita;
            const double d = usables ? DistanciaJeffriesMatusita(clases[i].media, clases[i].covarianza,
                                                                 clases[j].media, clases[j].covarianza)
                                     : kNaN;
            r.jm[i * k + j] = r.jm[j * k + i] = d;
        }
    return r;
}

}  // namespace orvela
