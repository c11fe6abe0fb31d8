// The rank and mode filters against a direct computation of every window
// (sort it, scan it, count each position), sample for sample and bit for bit.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "tools/FiltrosRango.h"

using namespace orvela;

namespace {

enum class Tipo { kMediana, kMaximo, kMinimo, kModa };
constexpr Tipo kTipos[] = {Tipo::kMediana, Tipo::kMaximo, Tipo::kMinimo, Tipo::kModa};
const char* Nombre(Tipo t) {
    switch (t) {
        case Tipo::kMediana: return "mediana";
        case Tipo::kMaximo: return "maximo";
        case Tipo::kMinimo: return "minimo";
        default: return "moda";
    }
}

bool Filtrar(Tipo t, const Muestras& e, long filas, long columnas, int k, Muestras& s) {
    switch (t) {
        case Tipo::kMediana: return FiltroMediana(e, filas, columnas, k, s);
        case Tipo::kMaximo: return FiltroMaximo(e, filas, columnas, k, s);
        case Tipo::kMinimo: return FiltroMinimo(e, filas, columnas, k, s);
        default: return FiltroModa(e, filas, columnas, k, s);
    }
}

// Order of the median: numbers by value with -0 before +0, NaN with the
// sign bit below everything and NaN without it above everything.
template <class T> bool MenorTotal(T a, T b) {
    if constexpr (std::is_integral_v<T>) {
        return a < b;
    } else {
        auto clase = [](T x) { return x != x ? (std::signbit(x) ? 0 : 2) : 1; };
        if (clase(a) != clase(b)) return clase(a) < clase(b);
        if (clase(a) != 1) return false;
        if (a == b) return std::signbit(a) && !std::signbit(b);
        return a < b;
    }
}

// What the mode compares: the value itself, or for real samples its bin of
// one 256th of the image's range (NaN in a bin of its own).
template <class T> long Etiqueta(T x, double mn, double mx) {
    if constexpr (std::is_integral_v<T>) {
        return x;
    } else {
        if (x != x) return 256;
        const double q = (static_cast<double>(x) - mn) / ((mx - mn) * 0.00390625);
        if (q >= 255.0) return 255;
        return q > 0.0 ? static_cast<long>(q) : 0;
    }
}

template <class T>
std::vector<T> Directo(Tipo t, const std::vector<T>& e, long filas, long columnas, int k) {
    std::vector<T> s(e.size(), T{});
    const int h = (k - 1) / 2;
    T mn = e.empty() ? T{} : e[0], mx = mn;
    for (const T x : e) {
        if (x < mn) mn = x;
        if (x > mx) mx = x;
    }
    for (long f = h; f + h < filas; ++f) {
        for (long c = h; c + h < columnas; ++c) {
            std::vector<T> w;
            for (long j = f - h; j <= f + h; ++j)
                for (long i = c - h; i <= c + h; ++i) w.push_back(e[j * columnas + i]);
            T r = w[0];
            if (t == Tipo::kMinimo) {
                for (const T x : w) if (x < r) r = x;
            } else if (t == Tipo::kMaximo) {
                for (const T x : w) if (x > r) r = x;
            } else if (t == Tipo::kMediana) {
                std::sort(w.begin(), w.end(), MenorTotal<T>);
                r = w[w.size() / 2];
            } else {
                std::vector<long> et;
                for (const T x : w) et.push_back(Etiqueta(x, mn, mx));
                std::size_t mejor = 0;
                int cuentaMejor = 0;
                for (std::size_t p = 0; p < w.size(); ++p) {
                    const int n = static_cast<int>(std::count(et.begin(), et.end(), et[p]));
                    if (n > cuentaMejor) cuentaMejor = n, mejor = p;
                }
                r = cuentaMejor == 1 ? w[w.size() / 2] : w[mejor];
            }
            s[f * columnas + c] = r;
        }
    }
    return s;
}

template <class T> Muestras Empaquetar(const std::vector<T>& v) {
    Muestras m = Muestras::Crear(CodigoDe<T>::valor, v.size());
    if (!v.empty()) std::memcpy(m.Datos(), v.data(), v.size() * sizeof(T));
    return m;
}

// Runs the filter on an output filled with garbage and compares bit for bit.
template <class T>
::testing::AssertionResult Coincide(Tipo t, const std::vector<T>& e, long filas, long columnas, int k) {
    const Muestras entrada = Empaquetar(e);
    Muestras salida = Empaquetar(std::vector<T>(e.size(), static_cast<T>(77)));
    if (!Filtrar(t, entrada, filas, columnas, k, salida))
        return ::testing::AssertionFailure() << Nombre(t) << " rechazado";
    const std::vector<T> esperado = Directo(t, e, filas, columnas, k);
    const T* s = salida.Como<T>().data();
    for (std::size_t i = 0; i < e.size(); ++i) {
        if (std::memcmp(&s[i], &esperado[i], sizeof(T)) != 0)
            return ::testing::AssertionFailure()
                   << Nombre(t) << " " << k << "x" << k << " tipo " << CodigoDe<T>::valor << " en " << filas
                   << "x" << columnas << ", fila " << i / columnas << " columna " << i % columnas << ": "
                   << +s[i] << " en vez de " << +esperado[i];
    }
    return ::testing::AssertionSuccess();
}

// Random samples: `distintos` values spread over the type's range (0 for
// the full range).
template <class T> std::vector<T> Aleatoria(std::mt19937& g, std::size_t n, int distintos) {
    std::vector<T> v(n);
    for (auto& x : v) {
        if (distintos > 0) {
            const int d = static_cast<int>(g() % static_cast<unsigned>(distintos));
            if constexpr (std::is_integral_v<T>) x = static_cast<T>(d * (std::numeric_limits<T>::max() / distintos));
            else x = static_cast<T>(d * 1.5 - 2.0);
        } else if constexpr (std::is_integral_v<T>) {
            x = static_cast<T>(g());
        } else {
            x = static_cast<T>(std::uniform_real_distribution<double>(-1e4, 1e4)(g));
        }
    }
    return v;
}

template <class T>
void PruebaAleatoria(std::mt19937& g, long filas, long columnas, int distintos,
                     std::initializer_list<int> tamanos = {3, 5, 7}) {
    const auto e = Aleatoria<T>(g, static_cast<std::size_t>(filas * columnas), distintos);
    for (const Tipo t : kTipos)
        for (const int k : tamanos) ASSERT_TRUE(Coincide(t, e, filas, columnas, k));
}

template <class T> void PruebaTipo() {
    std::mt19937 g(1234 + CodigoDe<T>::valor);
    for (long filas = 1; filas <= 9; ++filas)
        for (long columnas = 1; columnas <= 9; ++columnas)
            for (const int distintos : {0, 3}) PruebaAleatoria<T>(g, filas, columnas, distintos);
    // Long rows, many ties, and (for real medians) more than one tile.
    for (const int distintos : {0, 2, 5, 40}) PruebaAleatoria<T>(g, 61, 75, distintos);
    PruebaAleatoria<T>(g, 270, 260, 0, {3, 7});
    PruebaAleatoria<T>(g, 9500, 8, 0, {7});
}

}  // namespace

TEST(FiltrosRango, CoincidenConElCalculoDirectoByte) { PruebaTipo<uint8_t>(); }
TEST(FiltrosRango, CoincidenConElCalculoDirectoInteger) { PruebaTipo<uint16_t>(); }
TEST(FiltrosRango, CoincidenConElCalculoDirectoReal) { PruebaTipo<float>(); }
TEST(FiltrosRango, CoincidenConElCalculoDirectoDouble) { PruebaTipo<double>(); }

TEST(FiltrosRango, RealesConCerosConSignoInfinitosYNaN) {
    std::mt19937 g(99);
    const float especiales[] = {0.0f, -0.0f, std::numeric_limits<float>::infinity(),
                                -std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN(),
                                -std::numeric_limits<float>::quiet_NaN(), 1.0f, -1.0f};
    for (const int variantes : {2, 6, 8}) {
        std::vector<float> e(23 * 31);
        for (auto& x : e) x = especiales[g() % static_cast<unsigned>(variantes)];
        std::vector<double> d(e.begin(), e.end());
        for (const Tipo t : kTipos) {
            for (const int k : {3, 5, 7}) {
                EXPECT_TRUE(Coincide(t, e, 23, 31, k));
                EXPECT_TRUE(Coincide(t, d, 23, 31, k));
            }
        }
    }
}

TEST(FiltrosRango, CasosResueltosAMano) {
    auto filtro3 = [](Tipo t, std::vector<uint8_t> v) {
        Muestras e = Empaquetar(v), s = Empaquetar(std::vector<uint8_t>(9, 200));
        EXPECT_TRUE(Filtrar(t, e, 3, 3, 3, s));
        const auto d = s.Como<uint8_t>();
        for (int i = 0; i < 9; ++i) {
            if (i != 4) {
                EXPECT_EQ(d[i], 0) << "borde " << i;
            }
        }
        return d[4];
    };
    const std::vector<uint8_t> distintos = {9, 1, 8, 2, 7, 3, 6, 4, 5};
    EXPECT_EQ(filtro3(Tipo::kMediana, distintos), 5);
    EXPECT_EQ(filtro3(Tipo::kMaximo, distintos), 9);
    EXPECT_EQ(filtro3(Tipo::kMinimo, distintos), 1);
    EXPECT_EQ(filtro3(Tipo::kModa, distintos), 7);  // nothing repeats: the centre stays
    // Two values twice each: the one met first in row order wins.
    EXPECT_EQ(filtro3(Tipo::kModa, {5, 7, 7, 5, 1, 2, 3, 4, 6}), 5);
    EXPECT_EQ(filtro3(Tipo::kModa, {1, 7, 7, 5, 5, 2, 3, 4, 6}), 7);
    // A later value with a higher count beats an earlier pair.
    EXPECT_EQ(filtro3(Tipo::kModa, {1, 1, 2, 3, 2, 4, 5, 2, 6}), 2);

    // Real image of range 256 (bins of width 1): 10.7 and 10.2 share a bin
    // and the first of them in row order is written.
    std::vector<float> r = {0.0f, 10.7f, 3.0f, 4.0f, 10.2f, 5.5f, 6.0f, 7.0f, 256.0f};
    Muestras e = Empaquetar(r), s = Empaquetar(std::vector<float>(9, 1.0f));
    ASSERT_TRUE(FiltroModa(e, 3, 3, 3, s));
    EXPECT_EQ(s.Como<float>()[4], 10.7f);
    EXPECT_EQ(s.Como<float>()[0], 0.0f);
}

TEST(FiltrosRango, ArgumentosIncorrectosSeRechazan) {
    Muestras e = Muestras::Crear(kByte, 25), s = Muestras::Crear(kByte, 25), r = Muestras::Crear(kReal, 25);
    for (const Tipo t : kTipos) {
        EXPECT_FALSE(Filtrar(t, e, 5, 5, 4, s)) << Nombre(t);
        EXPECT_FALSE(Filtrar(t, e, 5, 5, 9, s)) << Nombre(t);
        EXPECT_FALSE(Filtrar(t, e, 5, 5, 3, r)) << Nombre(t);
        EXPECT_FALSE(Filtrar(t, e, 6, 5, 3, s)) << Nombre(t);
        EXPECT_FALSE(Filtrar(t, Muestras(), 5, 5, 3, s)) << Nombre(t);
        EXPECT_TRUE(Filtrar(t, e, 5, 5, 3, s)) << Nombre(t);
    }
}

TEST(FiltrosRango, BandaLandsat) {
    const std::string ruta = std::string(ORVELA_DATOS_COMPARTIDOS) + "/landsat-tm/tm4.ozm";
    std::ifstream in(ruta, std::ios::binary);
    if (!in) GTEST_SKIP() << "sin datos compartidos";
    const long filas = 310, columnas = 287;
    std::vector<uint8_t> b(static_cast<std::size_t>(filas * columnas));
    ASSERT_TRUE(in.read(reinterpret_cast<char*>(b.data()), static_cast<std::streamsize>(b.size())));
    std::vector<uint16_t> i(b.begin(), b.end());
    std::vector<float> r(b.size());
    for (std::size_t p = 0; p < b.size(); ++p) r[p] = b[p] + 0.25f * static_cast<float>(p % 4);
    for (const Tipo t : kTipos) {
        EXPECT_TRUE(Coincide(t, b, filas, columnas, 3));
        EXPECT_TRUE(Coincide(t, b, filas, columnas, 7));
        EXPECT_TRUE(Coincide(t, i, filas, columnas, 7));
        EXPECT_TRUE(Coincide(t, r, filas, columnas, 7));
    }
}
