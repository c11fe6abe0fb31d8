// The filters (mean, median, mode, maximum, minimum, high-pass, low-pass,
// directional, user-defined): values worked by hand over the four data
// types, every filter against a straightforward computation of each window
// written here (random images of every type and many shapes, special real
// values, the Landsat band), the declaration and the "filtro" order.
#include "tests/Prueba.h"
#include "tools/FiltroDireccional.h"
#include "tools/FiltroMedia.h"
#include "tools/FiltroPasoAlto.h"
#include "tools/FiltroPasoBajo.h"
#include "tools/FiltroPersonalizado.h"
#include "tools/FiltrosRango.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

// Any of the filters, as a call on an input that fills the output.
using Filtro = std::function<bool(const Muestras&, long, long, Muestras&)>;

Filtro Bajo(int k, PasoBajo v) {
    return [k, v](const Muestras& e, long f, long c, Muestras& s) { return FiltroPasoBajo(e, f, c, k, v, s); };
}
Filtro Alto(int k, PasoAlto v) {
    return [k, v](const Muestras& e, long f, long c, Muestras& s) { return FiltroPasoAlto(e, f, c, k, v, s); };
}
Filtro Dir(Direccion d) {
    return [d](const Muestras& e, long f, long c, Muestras& s) { return FiltroDireccional(e, f, c, d, s); };
}
Filtro Propio(int k, std::vector<double> w) {
    return [k, w](const Muestras& e, long f, long c, Muestras& s) { return FiltroPersonalizado(e, f, c, k, w, s); };
}
// The mean and the rank filters take the window size alone.
using Ventana = bool (*)(const Muestras&, long, long, int, Muestras&, Progreso&);
Filtro DeVentana(Ventana v, int k) {
    return [v, k](const Muestras& e, long f, long c, Muestras& s) { return v(e, f, c, k, s, SinProgreso()); };
}
Filtro Media(int k) { return DeVentana(FiltroMedia, k); }
enum class Rango { kMediana, kMaximo, kMinimo, kModa };
constexpr Rango kRangos[] = {Rango::kMediana, Rango::kMaximo, Rango::kMinimo, Rango::kModa};
Filtro DeRango(Rango t, int k) {
    const Ventana f[] = {FiltroMediana, FiltroMaximo, FiltroMinimo, FiltroModa};
    return DeVentana(f[static_cast<int>(t)], k);
}

std::vector<double> Aplicar(const Filtro& f, const Muestras& e, long filas, long columnas) {
    Muestras s = MuestrasDe(e.Codigo(), std::vector<double>(e.Cantidad(), 77.0));
    EXPECT_TRUE(f(e, filas, columnas, s));
    return Muestrario(s);
}

// A filas x columnas image whose interior under a k x k window is v and
// whose border is 0.
std::vector<double> Interior(long filas, long columnas, int k, double v) {
    std::vector<double> r(filas * columnas, 0.0);
    for (long y = k / 2; y + k / 2 < filas; ++y)
        for (long x = k / 2; x + k / 2 < columnas; ++x) r[y * columnas + x] = v;
    return r;
}
std::vector<double> Centro(double v) { return Interior(3, 3, 3, v); }
std::vector<double> Plana(long n, double v) { return std::vector<double>(n, v); }
std::vector<double> Rampa(long n, double desde) {
    std::vector<double> v(n);
    for (long i = 0; i < n; ++i) v[i] = desde + i;
    return v;
}
const std::vector<double> kUnoANueve = Rampa(9, 1);
const double kDecimo = static_cast<double>(0.1f);  // the directional scale

}  // namespace

TEST(Filtro, ValoresResueltosAManoEnCadaTipo) {
    struct Caso {
        const char* que;
        Filtro filtro;
        long filas, columnas;
        std::vector<double> entrada, esperado;  // before the store rule
    };
    const std::vector<Caso> casos = {
        // Mean: the centre weighs the image mean m, the divisor is m + 8.
        {"media plana", Media(3), 5, 5, Plana(25, 10), Interior(5, 5, 3, 10)},
        {"media m=4", Media(3), 3, 3, {0, 0, 0, 0, 20, 0, 0, 0, 16}, Centro(8)},  // (16 + 4 x 20) / 12
        // Three rows: a single interior row.
        {"media rampa", Media(3), 3, 5, Rampa(15, 10), {0, 0, 0, 0, 0, 0, 16, 17, 18, 0, 0, 0, 0, 0, 0}},
        // Low-pass: the scales are single-precision reciprocals; float(1/25)
        // lies below 1/25: a flat 100 gives 99 in byte and integer.
        {"promedio", Bajo(3, PasoBajo::Promedio), 3, 3, kUnoANueve, Centro(5.000000037252903)},  // 45 x float(1/9)
        {"promedio 5x5", Bajo(5, PasoBajo::Promedio), 5, 5, Plana(25, 100), Interior(5, 5, 5, 99.99999776482582)},
        // High-pass: 1/17 in 3 x 3 but -1/15 in 5 x 5.
        {"laplaciano 9", Alto(3, PasoAlto::Laplaciano9), 3, 3, Plana(9, 170), Centro(10.000000037252903)},
        {"laplaciano 9 5x5", Alto(5, PasoAlto::Laplaciano9), 5, 5, Plana(25, 170), Interior(5, 5, 5, 170.0000088661909)},
        {"centro oscuro", Alto(3, PasoAlto::Laplaciano9), 3, 3, {170, 170, 170, 170, 0, 170, 170, 170, 170},
         Centro(-80.00000029802322)},  // wraps to 176 and 65456
        // Directional: brighter at the top gives a positive north response.
        {"norte", Dir(Direccion::N), 3, 3, {100, 100, 100, 50, 50, 50, 0, 0, 0}, Centro(300 * kDecimo)},
        // User-defined: 0.5 adds 0 to the divisor; all 0.5 divides by 0.
        {"divisor 0", Propio(3, std::vector<double>(9, 0.5)), 5, 5, Plana(25, 7), Plana(25, 0)},
        // A window larger than the image leaves it all 0.
        {"grande 5", Bajo(5, PasoBajo::Promedio), 3, 3, kUnoANueve, Plana(9, 0)},
        {"grande 7", Media(7), 6, 6, Plana(36, 5), Plana(36, 0)},
    };
    for (int codigo : kTipos)
        for (const auto& c : casos)
            EXPECT_EQ(Aplicar(c.filtro, MuestrasDe(codigo, c.entrada), c.filas, c.columnas), Guardados(codigo, c.esperado))
                << c.que << ", " << NombreDeCodigo(codigo);
    // (2 x 3e38 + 0.5 x 3e38) / 2 lies beyond the float range.
    std::vector<double> w(9, 0.0);
    w[4] = 2;
    w[0] = 0.5;
    EXPECT_EQ(Aplicar(Propio(3, w), MuestrasDe(kReal, Plana(9, 3e38)), 3, 3)[4], std::numeric_limits<double>::infinity());
}

TEST(Filtro, ModaResueltaAMano) {
    const std::pair<std::vector<double>, double> casos[] = {
        {{9, 1, 8, 2, 7, 3, 6, 4, 5}, 7},  // nothing repeats: the centre stays
        {{5, 7, 7, 5, 1, 2, 3, 4, 6}, 5},  // two pairs: the one met first wins
        {{1, 1, 2, 3, 2, 4, 5, 2, 6}, 2},  // a later higher count beats an earlier pair
    };
    for (int codigo : kTipos)
        for (const auto& [e, v] : casos)
            EXPECT_EQ(Aplicar(DeRango(Rango::kModa, 3), MuestrasDe(codigo, e), 3, 3), Centro(v)) << NombreDeCodigo(codigo);
    // Real image of range 256 (bins of width 1): 10.7 and 10.2 share a bin
    // and the first of them in row order is written.
    EXPECT_EQ(Aplicar(DeRango(Rango::kModa, 3), MuestrasDe(kReal, {0, 10.7, 3, 4, 10.2, 5.5, 6, 7, 256}), 3, 3),
              Centro(static_cast<double>(10.7f)));
}

TEST(Filtro, LlamadasIncorrectasSeRechazan) {
    const Muestras e = Muestras::Crear(kByte, 25);
    Muestras s = Muestras::Crear(kByte, 25), corta = Muestras::Crear(kByte, 24), real = Muestras::Crear(kReal, 25);
    EXPECT_FALSE(FiltroMedia(e, 5, 5, 4, s));
    EXPECT_FALSE(FiltroPasoBajo(e, 5, 5, 3, PasoBajo::Promedio, corta));
    EXPECT_FALSE(FiltroPasoAlto(e, 5, 5, 3, PasoAlto::Laplaciano9, real));
    EXPECT_FALSE(FiltroPersonalizado(e, 5, 5, 5, std::vector<double>(9, 1.0), s));
    for (const Rango t : kRangos) {
        EXPECT_FALSE(DeRango(t, 4)(e, 5, 5, s));
        EXPECT_FALSE(DeRango(t, 9)(e, 5, 5, s));
        EXPECT_FALSE(DeRango(t, 3)(e, 5, 5, real));
        EXPECT_FALSE(DeRango(t, 3)(e, 6, 5, s));
        EXPECT_FALSE(DeRango(t, 3)(Muestras(), 5, 5, s));
        EXPECT_TRUE(DeRango(t, 3)(e, 5, 5, s));
    }
}

// ---------------------------------------------------------------------------
// The straightforward computation, written here without any of the filters'
// code: every interior pixel takes what the case makes of its window, read
// in row order (convolutions: sum = 0, sum += weight x sample, then the
// scale; the mean adds the neighbours and then m x centre); the border is 0.

namespace {

template <class T>
struct Caso {
    std::string nombre;
    Filtro filtro;
    int k;
    std::function<T(const std::vector<T>&)> valor;
    // Rank filters output one of the window's samples: compared bit for
    // bit, NaN signs included. Arithmetic gives NaN of either sign (the
    // order of two NaN operands is the compiler's), so any NaN matches NaN.
    bool copia = false;
};

// Order of the median: numbers by value with -0 before +0, NaN with the
// sign bit below everything and NaN without it above everything.
template <class T>
bool MenorTotal(T a, T b) {
    if constexpr (std::is_integral_v<T>) {
        return a < b;
    } else {
        auto clase = [](T x) { return x != x ? (std::signbit(x) ? 0 : 2) : 1; };
        if (clase(a) != clase(b)) return clase(a) < clase(b);
        if (clase(a) != 1) return false;
        return a == b ? std::signbit(a) && !std::signbit(b) : a < b;
    }
}

// Kernels built from their rules.
std::vector<double> PesosBajo(int k, int v) {
    std::vector<double> w(k * k, 1.0);
    for (int i = 0; i < k * k && v == 1; ++i) w[i] = i % 2 == 0 ? 0.25 : 0.5;
    w[k * k / 2] = v == 2 ? 2.0 : 1.0;
    return w;
}
std::vector<double> PesosAlto(int k, int v) {
    std::vector<double> w(k * k);
    for (int i = 0; i < k * k; ++i) w[i] = v == 0 ? -1.0 : (i % 2 == 1 ? -1.0 : 0.0);
    w[k * k / 2] = v == 0 ? 9.0 : 5.0;
    return w;
}
// -2 in the centre, +1 on the cells that face the direction (dy up, dx
// right) or lie across it, -1 on the cells behind.
std::vector<double> Mascara(int dy, int dx) {
    std::vector<double> w(9);
    for (int i = 0; i < 9; ++i) w[i] = i == 4 ? -2.0 : ((1 - i / 3) * dy + (i % 3 - 1) * dx >= 0 ? 1.0 : -1.0);
    return w;
}

template <class T>
std::vector<Caso<T>> Casos(const std::vector<T>& e, std::mt19937& azar) {
    double total = 0;
    T mn = e[0], mx = e[0];
    for (const T x : e) {
        total += static_cast<double>(x);
        mn = x < mn ? x : mn;
        mx = x > mx ? x : mx;
    }
    const double m = total / static_cast<double>(e.size()), ancho = (double(mx) - double(mn)) * 0.00390625;
    auto lineal = [](std::vector<double> w, std::function<double(double)> fin) {
        return [w, fin](const std::vector<T>& v) {
            double s = 0.0;
            for (std::size_t i = 0; i < v.size(); ++i) s += w[i] * static_cast<double>(v[i]);
            return Almacenar<T>(fin(s));
        };
    };
    auto escala = [](float f) { return [f](double s) { return static_cast<double>(f) * s; }; };
    auto media = [m](const std::vector<T>& v) {
        double s = 0.0;
        for (std::size_t i = 0; i < v.size(); ++i) s += i == v.size() / 2 ? 0.0 : static_cast<double>(v[i]);
        return Almacenar<T>((s + m * static_cast<double>(v[v.size() / 2])) / (m + static_cast<double>(v.size() - 1)));
    };
    // The mode compares the value itself, or for real samples its bin of
    // one 256th of the image's range (NaN in a bin of its own); the first
    // position of the highest count wins; no repeat keeps the centre.
    auto moda = [mn = double(mn), ancho](const std::vector<T>& v) {
        std::vector<long> b;
        for (const T x : v) {
            const double q = (static_cast<double>(x) - mn) / ancho;
            b.push_back(std::is_integral_v<T> ? long(x) : x != x ? 256 : q >= 255.0 ? 255 : q > 0.0 ? long(q) : 0);
        }
        std::size_t mejor = 0;
        long cuenta = 0;
        for (std::size_t p = 0; p < v.size(); ++p)
            if (std::count(b.begin(), b.end(), b[p]) > cuenta) cuenta = std::count(b.begin(), b.end(), b[p]), mejor = p;
        return cuenta == 1 ? v[v.size() / 2] : v[mejor];
    };
    const std::pair<Rango, std::function<T(std::vector<T>)>> rangos[] = {
        {Rango::kMaximo, [](std::vector<T> v) { return *std::max_element(v.begin(), v.end()); }},
        {Rango::kMinimo, [](std::vector<T> v) { return *std::min_element(v.begin(), v.end()); }},
        {Rango::kMediana, [](std::vector<T> v) {
             std::sort(v.begin(), v.end(), MenorTotal<T>);
             return v[v.size() / 2];
         }},
        {Rango::kModa, moda}};
    std::vector<Caso<T>> casos;
    for (int k : {3, 5, 7}) {
        const std::string t = " " + std::to_string(k) + "x" + std::to_string(k);
        const int c = (k - 3) / 2;
        casos.push_back({"media" + t, Media(k), k, media});
        const float bajo[3][3] = {{1 / 9.f, 1 / 25.f, 1 / 49.f}, {1 / 4.f, 1 / 10.f, 1 / 19.f}, {1 / 10.f, 1 / 26.f, 1 / 50.f}};
        const float alto[2][3] = {{1 / 17.f, -1 / 15.f, -1 / 39.f}, {1 / 9.f, -1 / 7.f, -1 / 19.f}};
        for (int v = 0; v < 3; ++v)
            casos.push_back({"paso bajo " + std::to_string(v) + t, Bajo(k, static_cast<PasoBajo>(v)), k,
                             lineal(PesosBajo(k, v), escala(bajo[v][c]))});
        for (int v = 0; v < 2; ++v)
            casos.push_back({"paso alto " + std::to_string(v) + t, Alto(k, static_cast<PasoAlto>(v)), k,
                             lineal(PesosAlto(k, v), escala(alto[v][c]))});
        // User kernels: small integers, decimals, and integers too large for
        // 32-bit sums of integer samples.
        std::vector<std::vector<double>> propios(3, std::vector<double>(k * k));
        std::uniform_int_distribution<int> d(-3, 3), g(-60000, 60000);
        for (int i = 0; i < k * k; ++i)
            propios[0][i] = d(azar), propios[1][i] = d(azar) * 0.7 + 0.1, propios[2][i] = g(azar);
        for (const auto& w : propios) {
            double div = 0;
            for (double x : w) div += std::fabs(std::trunc(x));
            casos.push_back({"personalizado" + t, Propio(k, w), k,
                             lineal(w, [div](double s) { return div == 0 ? 0.0 : s / div; })});
        }
        for (const auto& [r, valor] : rangos)
            casos.push_back({"rango " + std::to_string(static_cast<int>(r)) + t, DeRango(r, k), k, valor, true});
    }
    const std::pair<Direccion, std::pair<int, int>> dirs[] = {
        {Direccion::N, {1, 0}},  {Direccion::S, {-1, 0}},  {Direccion::E, {0, 1}},   {Direccion::W, {0, -1}},
        {Direccion::NE, {1, 1}}, {Direccion::NW, {1, -1}}, {Direccion::SE, {-1, 1}}, {Direccion::SW, {-1, -1}}};
    for (const auto& [d, v] : dirs)
        casos.push_back({"direccional " + std::to_string(static_cast<int>(d)), Dir(d), 3,
                         lineal(Mascara(v.first, v.second), escala(0.1f))});
    return casos;
}

// Every filter whose window size is among `tamanos`, on an output full of
// garbage, against the straightforward computation, bit for bit.
template <class T>
void CompararConDirecto(const std::vector<T>& e, long filas, long columnas, std::mt19937& azar,
                        std::initializer_list<int> tamanos = {3, 5, 7}) {
    Muestras entrada = Muestras::Crear(CodigoDe<T>::valor, e.size());
    std::memcpy(entrada.Datos(), e.data(), e.size() * sizeof(T));
    for (const auto& caso : Casos(e, azar)) {
        if (std::find(tamanos.begin(), tamanos.end(), caso.k) == tamanos.end()) continue;
        std::vector<T> esperado(e.size(), T{}), ventana;
        const long h = caso.k / 2;
        for (long y = h; y + h < filas; ++y)
            for (long x = h; x + h < columnas; ++x) {
                ventana.clear();
                for (long f = y - h; f <= y + h; ++f)
                    for (long c = x - h; c <= x + h; ++c) ventana.push_back(e[f * columnas + c]);
                esperado[y * columnas + x] = caso.valor(ventana);
            }
        Muestras salida = MuestrasDe(CodigoDe<T>::valor, std::vector<double>(e.size(), 77.0));
        ASSERT_TRUE(caso.filtro(entrada, filas, columnas, salida)) << caso.nombre;
        const T* s = salida.Como<T>().data();
        for (std::size_t i = 0; i < e.size(); ++i)
            if (std::memcmp(&s[i], &esperado[i], sizeof(T)) != 0 &&
                (caso.copia || s[i] == s[i] || esperado[i] == esperado[i])) {
                ADD_FAILURE() << caso.nombre << " en " << filas << "x" << columnas << ", fila " << i / columnas
                              << " columna " << i % columnas << ": " << +s[i] << " en vez de " << +esperado[i];
                break;
            }
    }
}

// Random samples: `distintos` values spread over the type's range, or any
// value when 0 (reals with fractions and negative values).
template <class T>
std::vector<T> Aleatoria(std::mt19937& g, std::size_t n, int distintos) {
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
class FiltroTipos : public ::testing::Test {};
using TiposMuestra = ::testing::Types<uint8_t, uint16_t, float, double>;
TYPED_TEST_SUITE(FiltroTipos, TiposMuestra);
template <class T>
class FiltroReales : public ::testing::Test {};
using TiposReales = ::testing::Types<float, double>;
TYPED_TEST_SUITE(FiltroReales, TiposReales);

}  // namespace

TYPED_TEST(FiltroTipos, IgualAlCalculoDirectoEnTodasLasFormas) {
    using T = TypeParam;
    std::mt19937 g(1234 + CodigoDe<T>::valor);
    for (long filas = 1; filas <= 9; ++filas)
        for (long columnas = 1; columnas <= 9; ++columnas)
            for (const int distintos : {0, 3}) CompararConDirecto(Aleatoria<T>(g, filas * columnas, distintos), filas, columnas, g);
    // Widths that leave every remainder after the blocks of columns, long
    // rows with many ties, and (for real medians) more than one tile.
    for (const auto& [filas, columnas] : {std::pair{9L, 17L}, {8L, 23L}, {13L, 40L}, {3L, 11L}, {11L, 3L}})
        CompararConDirecto(Aleatoria<T>(g, filas * columnas, 0), filas, columnas, g);
    for (const int distintos : {0, 2, 5, 40}) CompararConDirecto(Aleatoria<T>(g, 61 * 75, distintos), 61, 75, g);
    CompararConDirecto(Aleatoria<T>(g, 270 * 260, 0), 270, 260, g, {3, 7});
    CompararConDirecto(Aleatoria<T>(g, 9500 * 8, 0), 9500, 8, g, {7});
}

TYPED_TEST(FiltroReales, IgualAlCalculoDirectoConCerosConSignoInfinitosYNaN) {
    using T = TypeParam;
    {
        const T inf = std::numeric_limits<T>::infinity(), nan = std::numeric_limits<T>::quiet_NaN();
        const T especiales[] = {0, -T(0), inf, -inf, nan, -nan, 1, -1};
        std::mt19937 g(99);
        for (const unsigned variantes : {2u, 6u, 8u}) {
            std::vector<T> e(23 * 31);
            for (auto& x : e) x = especiales[g() % variantes];
            CompararConDirecto(e, 23, 31, g);
        }
    }
}

TYPED_TEST(FiltroTipos, IgualAlCalculoDirectoEnLaBandaLandsat) {
    using T = TypeParam;
    if (Landsat().empty()) GTEST_SKIP() << "sin datos compartidos";
    CImagen im;
    ASSERT_FALSE(im.Cargar(Landsat() + "/tm4.ozm"));
    ASSERT_EQ(im.tipoDato, kByte);
    // Byte as is, integer spread over the 16 bits, reals with fractions and
    // negative values.
    const auto b = im.pixeles.Como<uint8_t>();
    std::vector<T> v(b.size());
    for (std::size_t i = 0; i < b.size(); ++i) {
        if constexpr (std::is_same_v<T, uint8_t>) v[i] = b[i];
        else if constexpr (std::is_same_v<T, uint16_t>) v[i] = static_cast<uint16_t>(b[i] * 257u);
        else if constexpr (std::is_same_v<T, float>) v[i] = static_cast<float>(b[i] - 100.0 + 0.3 * (i % 7));
        else v[i] = b[i] / 3.0 - 41.17;
    }
    std::mt19937 g(4);
    CompararConDirecto(v, im.Filas(), im.Columnas(), g);
}

// ---------------------------------------------------------------------------
// The declaration and the "filtro" order.

TEST(Filtro, DeclaracionTitulosYTamanoDireccional) {
    const Declaracion& d = *BuscarPorOrden("filtro");
    const CImagen im = Imagen(kByte, 3, 3, Plana(9, 5), "banda");
    const char* sufijos[] = {"_Filtrado_de_Media",  "_Filtrado_Mediana",   "_Filtrado_de_Moda",
                             "_Filtrado_Máximo",    "_Filtrado_Mínimo",    "_Filtrado_Paso_alto",
                             "_Filtrado_Paso_bajo", "_Filtrado_Direccional", "_Filtrado_Personalizado"};
    const Clave& tipo = ClaveDe(d, "tipo_filtro");
    const Clave& tamano = ClaveDe(d, "tamano");
    const Clave& coeficientes = ClaveDe(d, "coeficientes");
    for (int t = 0; t < 9; ++t) {
        Valores v;
        v.Poner(tipo, t);
        v.Poner(coeficientes, std::vector<double>(9, 1.0));
        v = Completar(d, v);
        const Resultado r = Calcular(d, {&im}, v, Destino::Fichero);
        ASSERT_EQ(r.imagenes.size(), 1u) << t;
        EXPECT_EQ(r.imagenes[0].titulo, std::string("banda") + sufijos[t]);
        EXPECT_EQ(r.imagenes[0].tipoDato, kByte);
    }
    // The directional filter exists only for 3 x 3.
    for (int lado : {1, 2}) {
        Valores v = ValoresPorDefecto(d);
        v.Poner(tipo, 7);
        v.Poner(tamano, lado);
        EXPECT_EQ(d.alAceptar(v, {}).value_or(Mensaje{}).id, msg::kDireccionalTamano);
        EXPECT_EQ(Calcular(d, {&im}, v, Destino::Fichero).Motivo().value_or(Mensaje{}).id, msg::kDireccionalTamano);
    }
    // The sub-dialog fields take part only for their filter and size.
    Valores v = ValoresPorDefecto(d);
    v.Poner(tipo, 8);
    v.Poner(tamano, 1);
    int personalizados = 0;
    for (const auto& c : d.campos) {
        if (c.clave == &coeficientes && c.Aplica(v)) {
            ++personalizados;
            EXPECT_STREQ(c.subdialogo, "Filtro Personalizado 5 x 5");
            EXPECT_EQ(c.cantidad(v), 25);
        }
        const bool variante = std::string_view(c.clave->nombre).starts_with("variante");
        EXPECT_FALSE(variante && c.Aplica(v));
    }
    EXPECT_EQ(personalizados, 1);
}

TEST(Filtro, OrdenFiltro) {
    CarpetaPrueba dir;
    CImagen plana = Imagen(kByte, 4, 5, Plana(20, 170), "prueba");
    std::vector<double> rampa(20);
    for (int i = 0; i < 20; ++i) rampa[i] = 100 - 5 * (i / 5);
    CImagen bajando = Imagen(kByte, 4, 5, rampa, "prueba");
    const std::string in = Escribir(plana, dir / "plana"), in2 = Escribir(bajando, dir / "rampa");
    const std::string sal = dir / "salida";
    auto orden = [&](std::vector<std::string> args) {
        args.insert(args.begin(), "filtro");
        Espera(args, 0);
        CImagen r;
        EXPECT_FALSE(r.Cargar(sal + ".ozm"));
        return r;
    };
    CImagen r = orden({"--tipo", "paso-alto", "--variante", "laplaciano9", in, sal + ".ozm"});
    EXPECT_EQ(r.titulo, "prueba_Filtrado_Paso_alto");
    EXPECT_EQ(r.tipoDato, kByte);
    EXPECT_EQ(Muestrario(r), Interior(4, 5, 3, 10));
    // Defaults: size 3, "Promedio", direction N.
    EXPECT_EQ(orden({"--tipo", "paso-bajo", in, sal}).pixeles.Valor(6), 170.0);  // 1530 x float(1/9)
    EXPECT_EQ(orden({"--tipo", "direccional", in2, sal}).pixeles.Valor(6), 3.0);  // (3 x 100 - 3 x 90) x 0.1
    EXPECT_EQ(orden({"--tipo", "personalizado", "--coeficientes", "0,0,0,0,-1,0,0,0,0", in2, sal}).pixeles.Valor(6),
              161.0);  // -95 wraps to 161
    orden({"--tipo", "media", "--tamano", "5", "--variante", "sw", in, sal});  // a variant of no use is ignored
    orden({"--tipo", "maximo", "--tamano", "7", in, sal});
    std::string c25 = "1";  // 25 coefficients for 5 x 5 are right
    for (int i = 1; i < 25; ++i) c25 += ",1";
    orden({"--tipo", "personalizado", "--tamano", "5", "--coeficientes", c25, in, sal});

    std::filesystem::remove(sal + ".ozm");
    std::filesystem::remove(sal + ".inf");
    Espera({"filtro", "--tamano", "5", "--tipo", "direccional", "--variante", "ne", in, sal}, 2,
           "61255: El tamaño del filtrado direccional elegido es incorrecto.\n\n"
           "Se requiere un tamaño de la ventana de 3 x 3.\n");
    const std::vector<std::vector<std::string>> mal = {
        {"--tipo", "personalizado", "--coeficientes", "1,2,3", in, sal},
        {"--tipo", "personalizado", "--tamano", "5", "--coeficientes", "1,1,1,1,1,1,1,1,1", in, sal},
        {"--tipo", "personalizado", "--coeficientes", "1,1,1,1,x,1,1,1,1", in, sal},
        {"--tipo", "personalizado", in, sal},
        {"--tipo", "paso-bajo", "--variante", "laplaciano9", in, sal},
        {"--tipo", "direccional", "--variante", "norte", in, sal},
        {"--tipo", "media", "--tamano", "4", in, sal},
        {"--tipo", "gauss", in, sal},
        {"--tamano", "3", in, sal},
        {"--tipo", "media", in},
    };
    for (auto args : mal) {
        args.insert(args.begin(), "filtro");
        Espera(args, 64, "Uso: orvela-cli filtro");
    }
    EXPECT_FALSE(Existe(sal + ".ozm") || Existe(sal + ".inf"));
    const std::string ayuda = Espera({"filtro", "--help"}, 0).out;
    EXPECT_TRUE(ayuda.find("--variante") != std::string::npos && ayuda.find("paso-alto") != std::string::npos);
}
