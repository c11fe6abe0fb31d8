// "Clasificador de máxima probabilidad".
#include <cmath>

#include "classification/Supervisada.h"
#include "image/Conversion.h"

namespace orvela {

double DeterminanteEliminacion(std::vector<std::vector<double>> a) {
    const std::size_t n = a.size();
    if (n == 0) return 1.0;
    double previo = 1.0;
    for (std::size_t k = 0; k + 1 < n; ++k) {
        for (std::size_t i = k + 1; i < n; ++i)
            for (std::size_t j = k + 1; j < n; ++j) a[i][j] = (a[k][k] * a[i][j] - a[i][k] * a[k][j]) / previo;
        previo = a[k][k];
    }
    return a[n - 1][n - 1];
}

std::vector<std::vector<double>> InversaCofactores(const std::vector<std::vector<double>>& a, double determinante) {
    const std::size_t n = a.size();
    std::vector<std::vector<double>> inversa(n, std::vector<double>(n, 0.0));
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j) {
            std::vector<std::vector<double>> menor;
            for (std::size_t r = 0; r < n; ++r) {
                if (r == i) continue;
                std::vector<double> fila;
                for (std::size_t c = 0; c < n; ++c)
                    if (c != j) fila.push_back(a[r][c]);
                menor.push_back(std::move(fila));
            }
            const double signo = (i + j) % 2 == 0 ? 1.0 : -1.0;
            inversa[j][i] = signo * DeterminanteEliminacion(std::move(menor)) / determinante;
        }
    return inversa;
}

ModeloGaussiano PrepararModelo(const ClaseLeida& c) {
    ModeloGaussiano m;
    m.media = c.media;
    m.determinante = DeterminanteEliminacion(c.covarianza);
    m.lnDeterminante = std::log(m.determinante);
    const auto inv = InversaCofactores(c.covarianza, m.determinante);
    for (const auto& fila : inv) m.inversa.insert(m.inversa.end(), fila.begin(), fila.end());
    return m;
}

double LogVerosimilitud(const ModeloGaussiano& m, const double* x) {
    const std::size_t n = m.media.size();
    double d[64];
    std::vector<double> grande;
    double* dd = d;
    if (n > 64) {
        grande.resize(n);
        dd = grande.data();
    }
    for (std::size_t i = 0; i < n; ++i) dd[i] = x[i] - m.media[i];
    double q = 0;
    for (std::size_t i = 0; i < n; ++i) {
        double t = 0;
        for (std::size_t j = 0; j < n; ++j) t += m.inversa[i * n + j] * dd[j];
        q += dd[i] * t;
    }
    return -m.lnDeterminante - q;
}

namespace {

// q[j] = sum over a of d_a * (sum over e of inv[a][e] * d_e) for the c
// pixels of a row, with d = x - mean. The same operations in the same order
// on every processor; where AVX2 is there the loops run four pixels at a
// time instead of two (no fused multiply-add in either).
__attribute__((target_clones("avx2", "default"))) void FormaCuadratica(const double* const* x, std::size_t c,
                                                                       std::size_t n, const ModeloGaussiano& m,
                                                                       double* dif, double* t, double* q) {
    for (std::size_t a = 0; a < n; ++a) {
        const double me = m.media[a];
        const double* xa = x[a];
        double* da = dif + a * c;
        for (std::size_t j = 0; j < c; ++j) da[j] = xa[j] - me;
    }
    for (std::size_t j = 0; j < c; ++j) q[j] = 0;
    for (std::size_t a = 0; a < n; ++a) {
        for (std::size_t j = 0; j < c; ++j) t[j] = 0;
        for (std::size_t e = 0; e < n; ++e) {
            const double w = m.inversa[a * n + e];
            const double* de = dif + e * c;
            for (std::size_t j = 0; j < c; ++j) t[j] += w * de[j];
        }
        const double* da = dif + a * c;
        for (std::size_t j = 0; j < c; ++j) q[j] += da[j] * t[j];
    }
}

}  // namespace

bool ClasificarMaximaProbabilidad(const BandasClasificar& b, const std::vector<ClaseLeida>& clases,
                                  std::span<uint8_t> salida, Progreso& p) {
    const std::size_t k = clases.size();
    std::vector<uint8_t> nd(k);
    std::vector<ModeloGaussiano> modelos;
    for (std::size_t i = 0; i < k; ++i) {
        nd[i] = AlmacenarEntero<uint8_t>(NdClase(clases[i]));
        modelos.push_back(PrepararModelo(clases[i]));
    }
    if (k == 0) return true;
    const std::size_t n = b.bandas.size();
    return RecorrerFilas(b, salida, p, [&](const double* const* x, std::size_t c, uint8_t* r) {
        thread_local std::vector<double> dif, t, q, mejor;
        dif.resize(n * c);
        t.resize(c);
        q.resize(c);
        mejor.resize(c);
        double* gm = mejor.data();
        for (std::size_t i = 0; i < k; ++i) {
            const ModeloGaussiano& m = modelos[i];
            FormaCuadratica(x, c, n, m, dif.data(), t.data(), q.data());
            const uint8_t v = nd[i];
            if (i == 0) {
                for (std::size_t j = 0; j < c; ++j) {
                    gm[j] = -m.lnDeterminante - q[j];
                    r[j] = v;
                }
            } else {
                for (std::size_t j = 0; j < c; ++j) {
                    const double g = -m.lnDeterminante - q[j];
                    const bool gana = g > gm[j];
                    gm[j] = gana ? g : gm[j];
                    r[j] = gana ? v : r[j];
                }
            }
        }
    });
}

}  // namespace orvela
