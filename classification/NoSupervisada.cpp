#include "classification/NoSupervisada.h"

#include <cmath>
#include <cstdio>
#include <string>

#include "image/Conversion.h"
#include "image/Estadisticas.h"

namespace orvela {

std::vector<std::vector<double>> SemillasNoSupervisada(const std::vector<double>& minimos,
                                                        const std::vector<double>& maximos, int k) {
    const std::size_t n = minimos.size();
    std::vector<std::vector<double>> c(static_cast<std::size_t>(k < 0 ? 0 : k), std::vector<double>(n));
    for (std::size_t i = 0; i < c.size(); ++i)
        for (std::size_t b = 0; b < n; ++b)
            c[i][b] = i == 0 ? minimos[b] : c[i - 1][b] + (maximos[b] - minimos[b]) / (k - 1);
    return c;
}

namespace {

constexpr long kBloque = 64;  // rows per block of the member sums

struct Sumas {
    std::vector<double> suma;     // K x N
    std::vector<double> cuenta;   // K
};

// Index of the nearest centre for each of the c pixels of a row (x[b]: the
// row of band b), one centre at a time along the row; per pixel the same
// figures as sqrt(sum over bands of pow(x - centre, 2.0)), compared strictly.
// Where AVX2 is there the loops run four pixels at a time instead of two,
// with the same operations in the same order (no fused multiply-add).
__attribute__((target_clones("avx2", "default"))) void Cercanos(const double* const* x, std::size_t c, const std::vector<double>& centros, std::size_t k, std::size_t n,
              uint32_t* indice) {
    thread_local std::vector<double> suma, mejor, sumaMejor;
    suma.resize(c);
    mejor.resize(c);
    sumaMejor.resize(c);
    double* sb = sumaMejor.data();
    double* s = suma.data();
    double* dm = mejor.data();
    for (std::size_t i = 0; i < k; ++i) {
        for (std::size_t j = 0; j < c; ++j) s[j] = 0;
        for (std::size_t b = 0; b < n; ++b) {
            const double ce = centros[i * n + b];
            const double* xb = x[b];
            for (std::size_t j = 0; j < c; ++j) s[j] += std::pow(xb[j] - ce, 2.0);
        }
        if (i == 0) {
            for (std::size_t j = 0; j < c; ++j) {
                dm[j] = std::sqrt(s[j]);
                sb[j] = s[j];
                indice[j] = 0;
            }
        } else {
            const auto ii = static_cast<uint32_t>(i);
            for (std::size_t j = 0; j < c; ++j) {
                // sqrt is monotone: a sum not below the best one's cannot give
                // a smaller distance, so only smaller sums take the root.
                if (s[j] < sb[j]) {
                    const double d = std::sqrt(s[j]);
                    if (d < dm[j]) {
                        dm[j] = d;
                        sb[j] = s[j];
                        indice[j] = ii;
                    }
                }
            }
        }
    }
}

}  // namespace

ResultadoNoSupervisada ClasificarNoSupervisada(const BandasClasificar& b, int kk, std::span<uint8_t> salida,
                                               int maxPasadas, Progreso& p) {
    ResultadoNoSupervisada r;
    const std::size_t n = b.bandas.size(), k = static_cast<std::size_t>(kk < 1 ? 1 : kk);
    const auto c = static_cast<std::size_t>(b.columnas);
    std::vector<double> minimos(n), maximos(n);
    for (std::size_t i = 0; i < n; ++i) MinimoMaximo(*b.bandas[i], minimos[i], maximos[i]);
    const auto semillas = SemillasNoSupervisada(minimos, maximos, kk);
    std::vector<double> centros(k * n), nuevos(k * n);
    for (std::size_t i = 0; i < k; ++i)
        for (std::size_t j = 0; j < n; ++j) centros[i * n + j] = semillas[i][j];

    auto leerFila = [&](long f, std::vector<double>& filas, std::vector<const double*>& x) {
        const std::size_t inicio = static_cast<std::size_t>(f) * c;
        x.resize(n);
        for (std::size_t j = 0; j < n; ++j) {
            LeerComoDouble(*b.bandas[j], inicio, c, filas.data() + j * c);
            x[j] = filas.data() + j * c;
        }
    };
    std::vector<double> anteriores = centros;
    // Up to 256 clusters, each pass keeps every pixel's cluster in the
    // output itself (the label array of the memberships), so the labels
    // need no further assignment.
    const bool indicesEnSalida = k <= 256 && salida.size() >= static_cast<std::size_t>(b.filas) * c;
    for (;;) {
        auto partes = PorBloques<Sumas>(SinProgreso(), b.filas, kBloque, [&](long desde, long hasta) {
            Sumas s;
            s.suma.assign(k * n, 0.0);
            s.cuenta.assign(k, 0.0);
            std::vector<double> filas(n * c);
            std::vector<const double*> x;
            std::vector<uint32_t> indice(c);
            for (long f = desde; f < hasta; ++f) {
                if (p.Cancelado()) return s;
                leerFila(f, filas, x);
                Cercanos(x.data(), c, centros, k, n, indice.data());
                uint8_t* guardado = indicesEnSalida ? salida.data() + static_cast<std::size_t>(f) * c : nullptr;
                for (std::size_t col = 0; col < c; ++col) {
                    const std::size_t i = indice[col];
                    s.cuenta[i] += 1;
                    for (std::size_t j = 0; j < n; ++j) s.suma[i * n + j] += x[j][col];
                    if (guardado) guardado[col] = static_cast<uint8_t>(i);
                }
            }
            return s;
        });
        if (!partes || p.Cancelado()) {
            r.cancelado = true;
            return r;
        }
        ++r.pasadas;
        std::vector<double> suma(k * n, 0.0), cuenta(k, 0.0);
        for (const auto& s : *partes) {
            for (std::size_t i = 0; i < k * n; ++i) suma[i] += s.suma[i];
            for (std::size_t i = 0; i < k; ++i) cuenta[i] += s.cuenta[i];
        }
        double movimiento = 0;
        bool convergido = true;
        for (std::size_t i = 0; i < k; ++i)
            for (std::size_t j = 0; j < n; ++j) {
                nuevos[i * n + j] = cuenta[i] > 0 ? suma[i * n + j] / cuenta[i] : 0.0;
                const double dif = std::fabs(nuevos[i * n + j] - centros[i * n + j]);
                if (dif > 0.5) convergido = false;
                if (dif > movimiento) movimiento = dif;
            }
        char linea[96];
        std::snprintf(linea, sizeof linea, "Pasada %d: desplazamiento máximo %.4g", r.pasadas, movimiento);
        p.Informar(0.0, linea);
        anteriores = centros;
        centros = nuevos;
        if (convergido) {
            r.convergido = true;
            break;
        }
        if (maxPasadas > 0 && r.pasadas >= maxPasadas) break;
    }
    // Labels: the membership of the last pass (made with the centres before
    // its update) with the values of the final centres.
    std::vector<uint8_t> valor(k);
    r.centros.assign(k, std::vector<double>(n));
    for (std::size_t i = 0; i < k; ++i) {
        double s = 0;
        for (std::size_t j = 0; j < n; ++j) {
            s += centros[i * n + j];
            r.centros[i][j] = centros[i * n + j];
        }
        valor[i] = Almacenar<uint8_t>(s / static_cast<double>(n));
    }
    if (indicesEnSalida && r.pasadas > 0) {
        const bool hecho = PorFilas(p, b.filas, [&](long desde, long hasta) {
            uint8_t* fila = salida.data() + static_cast<std::size_t>(desde) * c;
            const std::size_t cuantas = static_cast<std::size_t>(hasta - desde) * c;
            for (std::size_t j = 0; j < cuantas; ++j) fila[j] = valor[fila[j]];
        });
        if (!hecho) r.cancelado = true;
        return r;
    }
    const bool hecho = PorFilas(p, b.filas, [&](long desde, long hasta) {
        std::vector<double> filas(n * c);
        std::vector<const double*> x;
        std::vector<uint32_t> indice(c);
        for (long f = desde; f < hasta; ++f) {
            leerFila(f, filas, x);
            Cercanos(x.data(), c, anteriores, k, n, indice.data());
            const std::size_t inicio = static_cast<std::size_t>(f) * c;
            for (std::size_t col = 0; col < c; ++col) salida[inicio + col] = valor[indice[col]];
        }
    });
    if (!hecho) r.cancelado = true;
    return r;
}

}  // namespace orvela
