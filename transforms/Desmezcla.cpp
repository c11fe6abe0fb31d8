#include "transforms/Desmezcla.h"

#include <cmath>

#include "image/Conversion.h"

namespace orvela {

namespace {

// Fraction coded as the normalization reads it: 0 % is 100, 100 % is 200.
inline float Codificar(double f) { return Almacenar<float>(100.0 + 100.0 * f); }

}  // namespace

std::optional<Desmezclador> Desmezclador::Crear(const Extremos& e) {
    const std::size_t nb = e.espectro[0].size();
    if (nb < 2 || e.espectro[1].size() != nb || e.espectro[2].size() != nb) return std::nullopt;
    std::vector<double> a0(nb), a1(nb);
    for (std::size_t b = 0; b < nb; ++b) {
        a0[b] = e.espectro[0][b] - e.espectro[2][b];
        a1[b] = e.espectro[1][b] - e.espectro[2][b];
    }
    double g00 = 0, g01 = 0, g11 = 0;
    for (std::size_t b = 0; b < nb; ++b) {
        g00 += a0[b] * a0[b];
        g01 += a0[b] * a1[b];
        g11 += a1[b] * a1[b];
    }
    const double det = g00 * g11 - g01 * g01;
    // Differences that are (nearly) parallel leave the fractions undetermined.
    if (!(det > 1e-12 * g00 * g11)) return std::nullopt;
    Desmezclador d;
    d.nb_ = static_cast<int>(nb);
    d.e_ = e;
    d.m_[0].resize(nb);
    d.m_[1].resize(nb);
    for (std::size_t b = 0; b < nb; ++b) {
        d.m_[0][b] = (g11 * a0[b] - g01 * a1[b]) / det;
        d.m_[1][b] = (g00 * a1[b] - g01 * a0[b]) / det;
    }
    return d;
}

double Desmezclador::Residuo(const double* x, const double f[3]) const {
    double r = 0;
    for (int b = 0; b < nb_; ++b) {
        const double d = x[b] - ((f[0] * e_.espectro[0][b] + f[1] * e_.espectro[1][b]) + f[2] * e_.espectro[2][b]);
        r += d * d;
    }
    return std::sqrt(r / nb_);
}

double Desmezclador::Pixel(const double* x, bool restringida, double f[3]) const {
    double f0 = 0, f1 = 0;
    for (int b = 0; b < nb_; ++b) {
        const double d = x[b] - e_.espectro[2][b];
        f0 += m_[0][b] * d;
        f1 += m_[1][b] * d;
    }
    f[0] = f0;
    f[1] = f1;
    f[2] = (1.0 - f0) - f1;
    if (!restringida || (f[0] >= 0 && f[1] >= 0 && f[2] >= 0)) return Residuo(x, f);
    // The best point of the triangle lies on one of its edges.
    static constexpr int kLados[3][2] = {{0, 1}, {0, 2}, {1, 2}};
    double mejor = 0;
    for (int l = 0; l < 3; ++l) {
        const int p = kLados[l][0], q = kLados[l][1];
        double num = 0, den = 0;
        for (int b = 0; b < nb_; ++b) {
            const double d = e_.espectro[p][b] - e_.espectro[q][b];
            num += (x[b] - e_.espectro[q][b]) * d;
            den += d * d;
        }
        double t = num / den;
        if (t < 0) t = 0;
        if (t > 1) t = 1;
        double g[3] = {0, 0, 0};
        g[p] = t;
        g[q] = 1.0 - t;
        const double r = Residuo(x, g);
        if (l == 0 || r < mejor) {
            mejor = r;
            f[0] = g[0];
            f[1] = g[1];
            f[2] = g[2];
        }
    }
    return mejor;
}

void Desmezclador::Fila(const double* const* x, std::size_t n, bool restringida, float* const out[4]) const {
    Memoria m;
    Fila(x, n, restringida, out, m);
}

void Desmezclador::Fila(const double* const* x, std::size_t n, bool restringida, float* const out[4],
                        Memoria& mem) const {
    mem.f0.assign(n, 0.0);
    mem.f1.assign(n, 0.0);
    mem.r.assign(n, 0.0);
    double* f0 = mem.f0.data();
    double* f1 = mem.f1.data();
    double* r = mem.r.data();
    for (int b = 0; b < nb_; ++b) {
        const double* xb = x[b];
        const double e2 = e_.espectro[2][b], m0 = m_[0][b], m1 = m_[1][b];
        for (std::size_t c = 0; c < n; ++c) {
            const double d = xb[c] - e2;
            f0[c] += m0 * d;
            f1[c] += m1 * d;
        }
    }
    for (int b = 0; b < nb_; ++b) {
        const double* xb = x[b];
        const double e0 = e_.espectro[0][b], e1 = e_.espectro[1][b], e2 = e_.espectro[2][b];
        for (std::size_t c = 0; c < n; ++c) {
            const double f2 = (1.0 - f0[c]) - f1[c];
            const double d = xb[c] - ((f0[c] * e0 + f1[c] * e1) + f2 * e2);
            r[c] += d * d;
        }
    }
    // Pixels outside the triangle under the constraint are gathered and
    // their three edges solved band after band below.
    std::vector<std::size_t>& fuera = mem.fuera;
    fuera.clear();
    for (std::size_t c = 0; c < n; ++c) {
        const double f[3] = {f0[c], f1[c], (1.0 - f0[c]) - f1[c]};
        if (restringida && !(f[0] >= 0 && f[1] >= 0 && f[2] >= 0)) {
            fuera.push_back(c);
            continue;
        }
        out[0][c] = Codificar(f[0]);
        out[1][c] = Codificar(f[1]);
        out[2][c] = Codificar(f[2]);
        out[3][c] = Almacenar<float>(std::sqrt(r[c] / nb_));
    }
    if (!fuera.empty()) Lados(x, mem, out);
}

// The constrained answer of Pixel for the pixels `fuera` of a row: each
// edge's projection and residual with Pixel's arithmetic, in its order,
// computed for all of them at once.
void Desmezclador::Lados(const double* const* x, Memoria& mem, float* const out[4]) const {
    static constexpr int kLados[3][2] = {{0, 1}, {0, 2}, {1, 2}};
    const std::vector<std::size_t>& fuera = mem.fuera;
    const std::size_t m = fuera.size();
    std::vector<double>& px = mem.px;
    px.resize(m);
    auto& num = mem.num;
    auto& t = mem.t;
    auto& res = mem.res;
    std::array<double, 3> den{};
    for (int l = 0; l < 3; ++l) {
        num[l].assign(m, 0.0);
        res[l].assign(m, 0.0);
    }
    for (int b = 0; b < nb_; ++b) {
        for (std::size_t j = 0; j < m; ++j) px[j] = x[b][fuera[j]];
        for (int l = 0; l < 3; ++l) {
            const double ep = e_.espectro[kLados[l][0]][b], eq = e_.espectro[kLados[l][1]][b];
            const double d = ep - eq;
            den[l] += d * d;
            double* nl = num[l].data();
            for (std::size_t j = 0; j < m; ++j) nl[j] += (px[j] - eq) * d;
        }
    }
    for (int l = 0; l < 3; ++l) {
        t[l].resize(m);
        for (std::size_t j = 0; j < m; ++j) {
            double v = num[l][j] / den[l];
            if (v < 0) v = 0;
            if (v > 1) v = 1;
            t[l][j] = v;
        }
    }
    for (int b = 0; b < nb_; ++b) {
        for (std::size_t j = 0; j < m; ++j) px[j] = x[b][fuera[j]];
        const double e0 = e_.espectro[0][b], e1 = e_.espectro[1][b], e2 = e_.espectro[2][b];
        // The fractions of each edge written out, the third one 0, so that
        // the loops run over plain arrays.
        const double* t0 = t[0].data();
        const double* t1 = t[1].data();
        const double* t2 = t[2].data();
        double* r0 = res[0].data();
        double* r1 = res[1].data();
        double* r2 = res[2].data();
        const double* p = px.data();
        for (std::size_t j = 0; j < m; ++j) {
            const double d = p[j] - ((t0[j] * e0 + (1.0 - t0[j]) * e1) + 0.0 * e2);
            r0[j] += d * d;
        }
        for (std::size_t j = 0; j < m; ++j) {
            const double d = p[j] - ((t1[j] * e0 + 0.0 * e1) + (1.0 - t1[j]) * e2);
            r1[j] += d * d;
        }
        for (std::size_t j = 0; j < m; ++j) {
            const double d = p[j] - ((0.0 * e0 + t2[j] * e1) + (1.0 - t2[j]) * e2);
            r2[j] += d * d;
        }
    }
    for (std::size_t j = 0; j < m; ++j) {
        double mejor = 0, f[3] = {0, 0, 0};
        for (int l = 0; l < 3; ++l) {
            const double r = std::sqrt(res[l][j] / nb_);
            if (l == 0 || r < mejor) {
                mejor = r;
                f[0] = f[1] = f[2] = 0;
                f[kLados[l][0]] = t[l][j];
                f[kLados[l][1]] = 1.0 - t[l][j];
            }
        }
        const std::size_t c = fuera[j];
        out[0][c] = Codificar(f[0]);
        out[1][c] = Codificar(f[1]);
        out[2][c] = Codificar(f[2]);
        out[3][c] = Almacenar<float>(mejor);
    }
}

bool Desmezclar(const Desmezclador& d, const std::vector<const Muestras*>& bandas, long filas, long columnas,
                bool restringida, Muestras& vegetacion, Muestras& sombra, Muestras& suelo, Muestras& error,
                Progreso& progreso) {
    const std::size_t nb = bandas.size();
    if (static_cast<int>(nb) != d.Bandas()) return false;
    for (const auto* b : bandas)
        if (!CodigoValido(b->Codigo())) return false;
    const auto cols = static_cast<std::size_t>(columnas);
    float* ov = vegetacion.Como<float>().data();
    float* os = sombra.Como<float>().data();
    float* ou = suelo.Como<float>().data();
    float* oe = error.Como<float>().data();
    return PorFilas(progreso, filas, [&](long desde, long hasta) {
        std::vector<double> fila(nb * cols);
        std::vector<const double*> x(nb);
        for (std::size_t b = 0; b < nb; ++b) x[b] = fila.data() + b * cols;
        Desmezclador::Memoria memoria;
        for (long r = desde; r < hasta; ++r) {
            const std::size_t base = static_cast<std::size_t>(r) * cols;
            for (std::size_t b = 0; b < nb; ++b) LeerComoDouble(*bandas[b], base, cols, fila.data() + b * cols);
            float* const out[4] = {ov + base, os + base, ou + base, oe + base};
            d.Fila(x.data(), cols, restringida, out, memoria);
        }
    });
}

}  // namespace orvela
