#include "tools/Regresion.h"

#include <cmath>

#include "image/Estadisticas.h"

namespace orvela {

namespace {

constexpr long kFilasBloque = 32;

// Sum of f(x, y) over the counted pixels: a running sum within each block of
// rows, the blocks' sums added in block order. `suma` may give several sums
// at once (Sumas<K>).
template <int K> struct Sumas {
    double v[K] = {};
};

template <int K, class F>
std::optional<Sumas<K>> SumarPares(const Muestras& x, const Muestras& y, const uint8_t* mascara, long filas,
                                   Progreso& progreso, F f) {
    if (x.Codigo() != y.Codigo() || x.Cantidad() != y.Cantidad() || filas <= 0) return std::nullopt;
    const long columnas = static_cast<long>(x.Cantidad() / static_cast<std::size_t>(filas));
    std::optional<std::vector<Sumas<K>>> partes;
    const bool conocido = ConTipo(x.Codigo(), [&]<class T>(Muestra<T>) {
        const T* px = x.Como<T>().data();
        const T* py = y.Como<T>().data();
        partes = PorBloques<Sumas<K>>(progreso, filas, kFilasBloque, [&](long desde, long hasta) {
            Sumas<K> s;
            const std::size_t i1 = static_cast<std::size_t>(hasta * columnas);
            for (std::size_t i = static_cast<std::size_t>(desde * columnas); i < i1; ++i) {
                if (mascara && !mascara[i]) continue;
                f(static_cast<double>(px[i]), static_cast<double>(py[i]), s.v);
            }
            return s;
        });
    });
    if (!conocido || !partes) return std::nullopt;
    Sumas<K> total;
    for (const auto& p : *partes)
        for (int k = 0; k < K; ++k) total.v[k] += p.v[k];
    return total;
}

}  // namespace

std::optional<double> Covariance(const Muestras& x, const Muestras& y, double mediaX, double mediaY,
                                 const uint8_t* mascara, long filas, Progreso& progreso) {
    auto s = SumarPares<1>(x, y, mascara, filas, progreso,
                           [=](double vx, double vy, double* v) { v[0] += (vx - mediaX) * (vy - mediaY); });
    if (!s) return std::nullopt;
    return s->v[0] / static_cast<double>(x.Cantidad());
}

std::optional<double> PearsonCorrelation(const Muestras& x, const Muestras& y, double mediaX, double mediaY,
                                         double desvX, double desvY, const uint8_t* mascara, long filas,
                                         Progreso& progreso) {
    // (y - ȳ)(x - x̄) is the same product as (x - x̄)(y - ȳ).
    auto cov = Covariance(x, y, mediaX, mediaY, mascara, filas, progreso);
    if (!cov) return std::nullopt;
    return *cov / (desvX * desvY);
}

std::optional<double> DeterminationCoefficient(const Muestras& x, const Muestras& y, double mediaY, double a,
                                               double b, const uint8_t* mascara, long filas, Progreso& progreso) {
    auto s = SumarPares<2>(x, y, mascara, filas, progreso, [=](double vx, double vy, double* v) {
        const double estimado = a * vx + b;
        v[0] += std::pow(estimado - mediaY, 2.0);
        v[1] += std::pow(vy - estimado, 2.0);
    });
    if (!s) return std::nullopt;
    return s->v[0] / (s->v[1] + s->v[0]);
}

namespace {

// Byte pairs: the counts of each (x, y) pair of values give every sum as
// 65,536 terms of count x figure, added in value order; a more exact sum
// than the running one over the pixels, the same on any number of cores.
std::optional<FigurasRegresion> RegresionByte(const Muestras& x, const Muestras& y, const uint8_t* mascara,
                                              Progreso& progreso) {
    const uint8_t* px = x.Como<uint8_t>().data();
    const uint8_t* py = y.Como<uint8_t>().data();
    const std::size_t n = x.Cantidad();
    std::vector<uint64_t> pares(65536, 0);
    constexpr std::size_t kTramo = 1 << 22;
    for (std::size_t i0 = 0; i0 < n; i0 += kTramo) {
        const std::size_t i1 = std::min(n, i0 + kTramo);
        if (mascara) {
            for (std::size_t i = i0; i < i1; ++i)
                if (mascara[i]) ++pares[(std::size_t{py[i]} << 8) | px[i]];
        } else {
            for (std::size_t i = i0; i < i1; ++i) ++pares[(std::size_t{py[i]} << 8) | px[i]];
        }
        progreso.Informar(static_cast<double>(i1) / static_cast<double>(n));
        if (progreso.Cancelado()) return std::nullopt;
    }
    uint64_t cuentaX[256] = {}, cuentaY[256] = {}, muestra = 0, sumaX = 0, sumaY = 0;
    for (std::size_t vy = 0; vy < 256; ++vy)
        for (std::size_t vx = 0; vx < 256; ++vx) {
            const uint64_t c = pares[(vy << 8) | vx];
            cuentaX[vx] += c;
            cuentaY[vy] += c;
            muestra += c;
            sumaX += c * vx;
            sumaY += c * vy;
        }
    const double total = static_cast<double>(n);
    FigurasRegresion f;
    f.muestra = muestra;
    f.mediaX = static_cast<double>(sumaX) / total;
    f.mediaY = static_cast<double>(sumaY) / total;
    double cuadX = 0, cuadY = 0;
    for (int v = 0; v < 256; ++v) {
        cuadX += static_cast<double>(cuentaX[v]) * std::pow(v - f.mediaX, 2.0);
        cuadY += static_cast<double>(cuentaY[v]) * std::pow(v - f.mediaY, 2.0);
    }
    f.desvX = std::sqrt(cuadX / total);
    f.desvY = std::sqrt(cuadY / total);
    double cruzada = 0;
    for (std::size_t vy = 0; vy < 256; ++vy)
        for (std::size_t vx = 0; vx < 256; ++vx)
            if (const uint64_t c = pares[(vy << 8) | vx])
                cruzada += static_cast<double>(c) * ((static_cast<double>(vx) - f.mediaX) * (static_cast<double>(vy) - f.mediaY));
    f.covarianza = cruzada / total;
    f.r = f.covarianza / (f.desvX * f.desvY);
    f.a = f.covarianza / (f.desvX * f.desvX);
    f.b = f.mediaY - f.a * f.mediaX;
    double ssr = 0, sse = 0;
    for (std::size_t vy = 0; vy < 256; ++vy)
        for (std::size_t vx = 0; vx < 256; ++vx)
            if (const uint64_t c = pares[(vy << 8) | vx]) {
                const double estimado = f.a * static_cast<double>(vx) + f.b;
                ssr += static_cast<double>(c) * std::pow(estimado - f.mediaY, 2.0);
                sse += static_cast<double>(c) * std::pow(static_cast<double>(vy) - estimado, 2.0);
            }
    f.r2 = static_cast<float>(ssr / (sse + ssr));
    return f;
}

}  // namespace

std::optional<FigurasRegresion> CalcularRegresion(const Muestras& x, const Muestras& y, const uint8_t* mascara,
                                                  long filas, Progreso& progreso) {
    if (!CodigoValido(x.Codigo()) || x.Codigo() != y.Codigo() || x.Cantidad() != y.Cantidad() || x.Cantidad() == 0)
        return std::nullopt;
    if (x.Codigo() == kByte) return RegresionByte(x, y, mascara, progreso);
    FigurasRegresion f;
    f.mediaX = ImageMean(x, mascara);
    f.mediaY = ImageMean(y, mascara);
    f.desvX = ImageStdDev(x, f.mediaX, mascara);
    f.desvY = ImageStdDev(y, f.mediaY, mascara);
    auto cov = Covariance(x, y, f.mediaX, f.mediaY, mascara, filas, progreso);
    if (!cov) return std::nullopt;
    f.covarianza = *cov;
    f.r = f.covarianza / (f.desvX * f.desvY);
    f.a = f.covarianza / (f.desvX * f.desvX);
    f.b = f.mediaY - f.a * f.mediaX;
    auto r2 = DeterminationCoefficient(x, y, f.mediaY, f.a, f.b, mascara, filas, progreso);
    if (!r2) return std::nullopt;
    f.r2 = static_cast<float>(*r2);
    if (mascara) {
        for (std::size_t i = 0; i < x.Cantidad(); ++i) f.muestra += mascara[i] != 0;
    } else {
        f.muestra = x.Cantidad();
    }
    return f;
}

namespace {
constexpr uint32_t kColorNube = 0x640000;   // RGB(100, 0, 0)
constexpr uint32_t kColorRecta = 0x00A000;
}  // namespace

// The chart of the regression: one point per occupied cell at the cell's
// lower value, with its count, and the line across the X range.
Grafico DiagramaRegresion(const std::vector<uint64_t>& rejilla, double minX, double maxX, double minY, double maxY,
                          double a, double b, const std::string& tituloX, const std::string& tituloY) {
    Grafico g;
    g.titulo = "Diagrama de dispersión";
    g.ejeX = tituloX;
    g.ejeY = tituloY;
    g.xMinimo = minX;
    g.xMaximo = maxX > minX ? maxX : minX + 1;
    g.yMinimo = minY;
    g.yMaximo = maxY > minY ? maxY : minY + 1;
    SerieGrafico nube;
    nube.nombre = "Píxeles";
    nube.color = kColorNube;
    const double pasoX = (g.xMaximo - g.xMinimo) / 255.0, pasoY = (g.yMaximo - g.yMinimo) / 255.0;
    for (int fy = 0; fy < 256; ++fy)
        for (int cx = 0; cx < 256; ++cx) {
            const uint64_t n = rejilla[static_cast<std::size_t>(fy) * 256 + static_cast<std::size_t>(cx)];
            if (n) nube.puntos.push_back({minX + cx * pasoX, minY + fy * pasoY, n});
        }
    SerieGrafico recta;
    recta.clase = SerieGrafico::Clase::Linea;
    recta.nombre = "Recta de regresión";
    recta.color = kColorRecta;
    recta.puntos = {{g.xMinimo, a * g.xMinimo + b, 1}, {g.xMaximo, a * g.xMaximo + b, 1}};
    g.series = {std::move(nube), std::move(recta)};
    g.final = "_Diagrama.png";
    return g;
}

int CeldaDiagrama(double v, double minimo, double maximo) {
    if (!(maximo > minimo)) return 0;
    const double t = (v - minimo) / (maximo - minimo) * 255.0;
    if (!(t >= 0)) return 0;
    if (t >= 255) return 255;
    return static_cast<int>(t);
}

std::optional<std::vector<uint64_t>> RejillaDispersion(const Muestras& x, const Muestras& y, const uint8_t* mascara,
                                                       double minX, double maxX, double minY, double maxY,
                                                       Progreso& progreso) {
    if (x.Codigo() != y.Codigo() || x.Cantidad() != y.Cantidad()) return std::nullopt;
    std::vector<uint64_t> rejilla(256 * 256, 0);
    bool cancelado = false;
    const bool conocido = ConTipo(x.Codigo(), [&]<class T>(Muestra<T>) {
        const T* px = x.Como<T>().data();
        const T* py = y.Como<T>().data();
        const std::size_t n = x.Cantidad();
        constexpr std::size_t kTramo = 1 << 20;
        if constexpr (sizeof(T) <= 2 && !kEsReal<T>) {
            // Whole samples: the cell of each possible value, once.
            constexpr std::size_t kValores = std::size_t{1} << (8 * sizeof(T));
            std::vector<uint16_t> celdaX(kValores), celdaY(kValores);
            for (std::size_t v = 0; v < kValores; ++v) {
                celdaX[v] = static_cast<uint16_t>(CeldaDiagrama(static_cast<double>(v), minX, maxX));
                celdaY[v] = static_cast<uint16_t>(CeldaDiagrama(static_cast<double>(v), minY, maxY) * 256);
            }
            for (std::size_t i0 = 0; i0 < n && !cancelado; i0 += kTramo) {
                const std::size_t i1 = std::min(n, i0 + kTramo);
                if (mascara) {
                    for (std::size_t i = i0; i < i1; ++i)
                        if (mascara[i]) ++rejilla[celdaY[py[i]] + celdaX[px[i]]];
                } else {
                    for (std::size_t i = i0; i < i1; ++i) ++rejilla[celdaY[py[i]] + celdaX[px[i]]];
                }
                cancelado = progreso.Cancelado();
            }
        } else {
            for (std::size_t i0 = 0; i0 < n && !cancelado; i0 += kTramo) {
                const std::size_t i1 = std::min(n, i0 + kTramo);
                for (std::size_t i = i0; i < i1; ++i) {
                    if (mascara && !mascara[i]) continue;
                    ++rejilla[static_cast<std::size_t>(CeldaDiagrama(static_cast<double>(py[i]), minY, maxY)) * 256 +
                              static_cast<std::size_t>(CeldaDiagrama(static_cast<double>(px[i]), minX, maxX))];
                }
                cancelado = progreso.Cancelado();
            }
        }
    });
    if (!conocido || cancelado) return std::nullopt;
    return rejilla;
}

}  // namespace orvela
