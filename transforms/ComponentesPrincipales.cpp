#include "transforms/ComponentesPrincipales.h"

#include <cmath>
#include <cstdint>
#include <cstdio>

#include "image/Estadisticas.h"
#include "image/TipoDato.h"

namespace orvela {

namespace {

// Rows per block of the sums: fixed, so the combination never depends on the
// number of cores.
constexpr long kFilasBloque = 32;

std::size_t Pares(std::size_t nb) { return nb * (nb + 1) / 2; }

// Exact sums of the samples and of the products of each pair of bands
// (packed lower triangle), for byte and integer bands.
struct SumasEnteras {
    std::vector<uint64_t> s, p;
};

template <class T>
SumasEnteras SumarEnteros(const std::vector<const T*>& x, long columnas, long desde, long hasta) {
    const std::size_t nb = x.size();
    SumasEnteras r{std::vector<uint64_t>(nb, 0), std::vector<uint64_t>(Pares(nb), 0)};
    // Byte products summed over 4096 samples fit 32 bits; 16-bit ones do not.
    using Acumulador = std::conditional_t<sizeof(T) == 1, uint32_t, uint64_t>;
    constexpr long kTramo = 4096;
    for (long f = desde; f < hasta; ++f) {
        const std::size_t base = static_cast<std::size_t>(f) * static_cast<std::size_t>(columnas);
        for (long c0 = 0; c0 < columnas; c0 += kTramo) {
            const long c1 = c0 + kTramo < columnas ? c0 + kTramo : columnas;
            for (std::size_t j = 0; j < nb; ++j) {
                const T* b = x[j] + base;
                Acumulador s = 0;
                for (long c = c0; c < c1; ++c) s += b[c];
                r.s[j] += s;
                for (std::size_t i = 0; i <= j; ++i) {
                    const T* a = x[i] + base;
                    Acumulador q = 0;
                    for (long c = c0; c < c1; ++c) q += static_cast<Acumulador>(a[c]) * static_cast<Acumulador>(b[c]);
                    r.p[IndiceEmpaquetado(i, j)] += q;
                }
            }
        }
    }
    return r;
}

template <class T>
bool EstadisticasEnteras(const std::vector<const Muestras*>& bandas, long filas, long columnas,
                         AnalisisComponentes& a, Progreso& progreso) {
    const std::size_t nb = bandas.size();
    std::vector<const T*> x;
    for (const auto* m : bandas) x.push_back(m->Como<T>().data());
    const auto partes = PorBloques<SumasEnteras>(progreso, filas, kFilasBloque, [&](long d, long h) {
        return SumarEnteros<T>(x, columnas, d, h);
    });
    if (!partes) return false;
    SumasEnteras t{std::vector<uint64_t>(nb, 0), std::vector<uint64_t>(Pares(nb), 0)};
    for (const auto& p : *partes) {
        for (std::size_t i = 0; i < nb; ++i) t.s[i] += p.s[i];
        for (std::size_t k = 0; k < t.p.size(); ++k) t.p[k] += p.p[k];
    }
    const double n = static_cast<double>(filas) * static_cast<double>(columnas);
    const __int128 ni = static_cast<__int128>(filas) * columnas;
    for (std::size_t i = 0; i < nb; ++i) a.medias[i] = static_cast<double>(t.s[i]) / n;
    // sum (x_i - m_i)(x_j - m_j) = (N * Sij - Si * Sj) / N, exact in integers.
    for (std::size_t j = 0; j < nb; ++j)
        for (std::size_t i = 0; i <= j; ++i) {
            const __int128 num = ni * static_cast<__int128>(t.p[IndiceEmpaquetado(i, j)]) -
                                 static_cast<__int128>(t.s[i]) * static_cast<__int128>(t.s[j]);
            const double c = static_cast<double>(num) / n / n;
            a.covarianza[i][j] = a.covarianza[j][i] = c;
        }
    return true;
}

bool EstadisticasReales(const std::vector<const Muestras*>& bandas, long filas, long columnas,
                        AnalisisComponentes& a, Progreso& progreso) {
    const std::size_t nb = bandas.size();
    for (std::size_t i = 0; i < nb; ++i) a.medias[i] = ImageMean(*bandas[i]);
    const auto cols = static_cast<std::size_t>(columnas);
    const auto partes = PorBloques<std::vector<double>>(progreso, filas, kFilasBloque, [&](long d, long h) {
        std::vector<double> p(Pares(nb), 0.0);
        std::vector<double> fila(nb * cols);
        for (long f = d; f < h; ++f) {
            for (std::size_t b = 0; b < nb; ++b) {
                double* x = fila.data() + b * cols;
                LeerComoDouble(*bandas[b], static_cast<std::size_t>(f) * cols, cols, x);
                for (std::size_t c = 0; c < cols; ++c) x[c] -= a.medias[b];
            }
            for (std::size_t j = 0; j < nb; ++j)
                for (std::size_t i = 0; i <= j; ++i) {
                    const double* xi = fila.data() + i * cols;
                    const double* xj = fila.data() + j * cols;
                    double s = p[IndiceEmpaquetado(i, j)];
                    for (std::size_t c = 0; c < cols; ++c) s += xi[c] * xj[c];
                    p[IndiceEmpaquetado(i, j)] = s;
                }
        }
        return p;
    });
    if (!partes) return false;
    std::vector<double> t(Pares(nb), 0.0);
    for (const auto& p : *partes)
        for (std::size_t k = 0; k < t.size(); ++k) t[k] += p[k];
    const double n = static_cast<double>(filas) * static_cast<double>(columnas);
    for (std::size_t j = 0; j < nb; ++j)
        for (std::size_t i = 0; i <= j; ++i) a.covarianza[i][j] = a.covarianza[j][i] = t[IndiceEmpaquetado(i, j)] / n;
    return true;
}

void Anadir(std::string& s, const char* formato, double v) {
    char buf[64];
    std::snprintf(buf, sizeof buf, formato, v);
    s += buf;
}

}  // namespace

void JacobiUmbral(std::vector<double>& a, int n, std::vector<std::vector<double>>& v) {
    v.assign(static_cast<std::size_t>(n), std::vector<double>(static_cast<std::size_t>(n), 0.0));
    for (int i = 0; i < n; ++i) v[i][i] = 1.0;
    auto A = [&](int i, int j) -> double& { return a[IndiceEmpaquetado(i, j)]; };
    double suma = 0;
    for (int i = 0; i < n; ++i)
        for (int j = i + 1; j < n; ++j) suma += A(i, j) * A(i, j);
    if (suma <= 0) return;
    const double anorm = std::sqrt(2.0 * suma);
    const double anrmx = 1e-10 * anorm / n;
    double thr = anorm;
    do {
        thr = thr / n;
        bool giro;
        do {
            giro = false;
            for (int l = 0; l < n - 1; ++l)
                for (int m = l + 1; m < n; ++m) {
                    if (std::fabs(A(l, m)) < thr) continue;
                    giro = true;
                    const double all = A(l, l), amm = A(m, m), alm = A(l, m);
                    const double x = 0.5 * (all - amm);
                    double y = -alm / std::sqrt(alm * alm + x * x);
                    if (x < 0) y = -y;
                    const double sen = y / std::sqrt(2.0 * (1.0 + std::sqrt(1.0 - y * y)));
                    const double sen2 = sen * sen;
                    const double cos = std::sqrt(1.0 - sen2);
                    const double cos2 = cos * cos;
                    const double sencos = sen * cos;
                    for (int i = 0; i < n; ++i) {
                        if (i != l && i != m) {
                            double& il = A(i, l);
                            double& im = A(i, m);
                            const double t = il * cos - im * sen;
                            im = il * sen + im * cos;
                            il = t;
                        }
                        const double t = v[l][i] * cos - v[m][i] * sen;
                        v[m][i] = v[l][i] * sen + v[m][i] * cos;
                        v[l][i] = t;
                    }
                    const double xx = 2.0 * alm * sencos;
                    const double nuevoL = all * cos2 + amm * sen2 - xx;
                    const double nuevoM = all * sen2 + amm * cos2 + xx;
                    A(l, m) = (all - amm) * sencos + alm * (cos2 - sen2);
                    A(l, l) = nuevoL;
                    A(m, m) = nuevoM;
                }
        } while (giro);
    } while (thr > anrmx);
}

void OrdenarAutovalores(std::vector<double>& valores, std::vector<std::vector<double>>& vectores) {
    const std::size_t n = valores.size();
    for (std::size_t i = 0; i + 1 < n; ++i) {
        std::size_t mayor = i;
        for (std::size_t j = i + 1; j < n; ++j)
            if (valores[j] > valores[mayor]) mayor = j;
        if (mayor != i) {
            std::swap(valores[i], valores[mayor]);
            std::swap(vectores[i], vectores[mayor]);
        }
    }
}

std::optional<AnalisisComponentes> AnalizarComponentes(const std::vector<const Muestras*>& bandas, long filas,
                                                       long columnas, Progreso& progreso) {
    const std::size_t nb = bandas.size();
    if (nb == 0) return std::nullopt;
    AnalisisComponentes a;
    a.medias.assign(nb, 0.0);
    a.covarianza.assign(nb, std::vector<double>(nb, 0.0));
    const auto hecho = ConTipo(bandas[0]->Codigo(), [&]<class T>(Muestra<T>) {
        if constexpr (kEsReal<T>)
            return EstadisticasReales(bandas, filas, columnas, a, progreso);
        else
            return EstadisticasEnteras<T>(bandas, filas, columnas, a, progreso);
    });
    if (!hecho || !*hecho) return std::nullopt;
    std::vector<double> empaquetada(Pares(nb));
    for (std::size_t j = 0; j < nb; ++j)
        for (std::size_t i = 0; i <= j; ++i) empaquetada[IndiceEmpaquetado(i, j)] = a.covarianza[i][j];
    JacobiUmbral(empaquetada, static_cast<int>(nb), a.autovectores);
    a.autovalores.resize(nb);
    for (std::size_t k = 0; k < nb; ++k) a.autovalores[k] = empaquetada[IndiceEmpaquetado(k, k)];
    OrdenarAutovalores(a.autovalores, a.autovectores);
    double total = 0;
    for (double l : a.autovalores) total += l;
    for (double l : a.autovalores) a.porcentajes.push_back(l * 100 / total);
    return a;
}

bool ProyectarComponentes(const std::vector<const Muestras*>& bandas, long filas, long columnas,
                          const AnalisisComponentes& a, std::vector<Muestras*>& salidas, Progreso& progreso) {
    const std::size_t nb = bandas.size();
    const auto cols = static_cast<std::size_t>(columnas);
    for (const auto* b : bandas)
        if (!CodigoValido(b->Codigo())) return false;
    return PorFilas(progreso, filas, [&](long d, long h) {
        std::vector<double> fila(nb * cols);
        for (long f = d; f < h; ++f) {
            const std::size_t base = static_cast<std::size_t>(f) * cols;
            for (std::size_t b = 0; b < nb; ++b) LeerComoDouble(*bandas[b], base, cols, fila.data() + b * cols);
            for (std::size_t k = 0; k < salidas.size(); ++k) {
                double* out = salidas[k]->Como<double>().data() + base;
                for (std::size_t c = 0; c < cols; ++c) out[c] = 0.0;
                for (std::size_t b = 0; b < nb; ++b) {
                    const double w = a.autovectores[k][b];
                    const double* x = fila.data() + b * cols;
                    for (std::size_t c = 0; c < cols; ++c) out[c] += x[c] * w;
                }
            }
        }
    });
}

std::string InformeComponentes(const AnalisisComponentes& a, const std::vector<std::string>& entradas,
                               const std::vector<std::string>& componentes) {
    const std::size_t nb = a.medias.size();
    std::string s = "\n\nAnálisis de las componentes principales para las siguientes imágenes de entrada:\n\n";
    for (const auto& e : entradas) s += "\t" + e + "\n";
    s += "\nComo resultado obtenemos los siguientes componentes:\n\n";
    for (const auto& c : componentes) s += "\t" + c + "\n";
    s += "\n\nMatriz de varianza-covarianza.\n";
    for (std::size_t i = 0; i < nb; ++i) {
        for (std::size_t j = 0; j < nb; ++j) Anadir(s, "\t%8.2f", a.covarianza[i][j]);
        s += "\n";
    }
    s += "\n\nMatriz de correlación.\n";
    for (std::size_t i = 0; i < nb; ++i) {
        for (std::size_t j = 0; j < nb; ++j)
            Anadir(s, "\t%8.6f", a.covarianza[i][j] / std::sqrt(a.covarianza[i][i] * a.covarianza[j][j]));
        s += "\n";
    }
    s += "\n\nCOMPONENTES PRINCIPALES.";
    s += "\n\n% varianza";
    for (double p : a.porcentajes) Anadir(s, "\t%8.2f", p);
    s += "\n\nautovalores";
    for (double l : a.autovalores) Anadir(s, "\t%8.3f", l);
    s += "\n\nautovectores";
    for (const auto& fila : a.autovectores) {
        s += "\n\t";
        for (double x : fila) Anadir(s, "\t%8.5f", x);
    }
    s += "\n\t*Nota:\tLos autovectores están en filas.\n\t\tLa fila n corresponde al autovalor n.";
    return s;
}

}  // namespace orvela
