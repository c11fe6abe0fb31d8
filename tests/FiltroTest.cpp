// The convolution filters (mean, low-pass, high-pass, directional,
// user-defined) and the "filtro" command.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>
#include <unistd.h>

#include "cli/Cli.h"
#include "image/CImagen.h"
#include "image/Conversion.h"
#include "operations/Curso.h"
#include "operations/Operacion.h"
#include "tools/FiltroDireccional.h"
#include "tools/FiltroMedia.h"
#include "tools/FiltroPasoAlto.h"
#include "tools/FiltroPasoBajo.h"
#include "tools/FiltroPersonalizado.h"

using namespace orvela;

namespace {

template <class T>
Muestras Imagen(const std::vector<double>& v) {
    Muestras m = Muestras::Crear(CodigoDe<T>::valor, v.size());
    for (std::size_t i = 0; i < v.size(); ++i) m.Como<T>()[i] = static_cast<T>(v[i]);
    return m;
}

std::vector<double> Leer(const Muestras& m) {
    std::vector<double> v(m.Cantidad());
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = m.Valor(i);
    return v;
}

// Any of the filters, as a call on an input that returns the output.
using Filtro = std::function<bool(const Muestras&, long, long, Muestras&)>;

std::vector<double> Aplicar(const Filtro& f, const Muestras& in, long filas, long columnas) {
    Muestras out = Muestras::Crear(in.Codigo(), in.Cantidad());
    EXPECT_TRUE(f(in, filas, columnas, out));
    return Leer(out);
}

Filtro Media(int k) {
    return [k](const Muestras& in, long f, long c, Muestras& out) { return FiltroMedia(in, f, c, k, out); };
}
Filtro Bajo(int k, PasoBajo v) {
    return [k, v](const Muestras& in, long f, long c, Muestras& out) { return FiltroPasoBajo(in, f, c, k, v, out); };
}
Filtro Alto(int k, PasoAlto v) {
    return [k, v](const Muestras& in, long f, long c, Muestras& out) { return FiltroPasoAlto(in, f, c, k, v, out); };
}
Filtro Dir(Direccion d) {
    return [d](const Muestras& in, long f, long c, Muestras& out) { return FiltroDireccional(in, f, c, d, out); };
}
Filtro Propio(int k, std::vector<double> w) {
    return [k, w](const Muestras& in, long f, long c, Muestras& out) {
        return FiltroPersonalizado(in, f, c, k, w, out);
    };
}

// Expected values of a 3 x 3 image: only the centre is interior.
std::vector<double> Centro(double v) { return {0, 0, 0, 0, v, 0, 0, 0, 0}; }

// The value a computed double takes in a sample of type T.
template <class T>
double Guardado(double v) {
    return static_cast<double>(Almacenar<T>(v));
}

const std::vector<double> kUnoANueve = {1, 2, 3, 4, 5, 6, 7, 8, 9};

template <class T>
class FiltroTipos : public ::testing::Test {};
using TiposMuestra = ::testing::Types<uint8_t, uint16_t, float, double>;
TYPED_TEST_SUITE(FiltroTipos, TiposMuestra);

TYPED_TEST(FiltroTipos, MediaPesaElCentroConLaMediaDeLaImagen) {
    using T = TypeParam;
    // Flat 10: m = 10, (8 x 10 + 10 x 10) / 18 = 10; the border is 0.
    const std::vector<double> plana(25, 10.0);
    EXPECT_EQ(Aplicar(Media(3), Imagen<T>(plana), 5, 5),
              (std::vector<double>{0, 0, 0, 0, 0, 0, 10, 10, 10, 0, 0, 10, 10, 10, 0, 0, 10, 10, 10, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Aplicar(Media(5), Imagen<T>(plana), 5, 5)[12], 10.0);
    // m = 36 / 9 = 4: (16 + 4 x 20) / (4 + 8) = 8.
    EXPECT_EQ(Aplicar(Media(3), Imagen<T>({0, 0, 0, 0, 20, 0, 0, 0, 16}), 3, 3), Centro(8));
    // m = 10 / 9: (10 / 9 x 10) / (10 / 9 + 8) = 100 / 82, truncated in byte
    // and integer images.
    const double v = Aplicar(Media(3), Imagen<T>({0, 0, 0, 0, 10, 0, 0, 0, 0}), 3, 3)[4];
    if constexpr (std::is_integral_v<T>)
        EXPECT_EQ(v, 1.0);
    else
        EXPECT_NEAR(v, 100.0 / 82.0, 1e-6);
}

TYPED_TEST(FiltroTipos, PasoBajoConSusEscalasDeSimplePrecision) {
    using T = TypeParam;
    const Muestras nueve = Imagen<T>(kUnoANueve);
    // 45 x float(1/9) = 5.000000037...
    EXPECT_EQ(Aplicar(Bajo(3, PasoBajo::Promedio), nueve, 3, 3), Centro(Guardado<T>(5.000000037252903)));
    // (0.25 x 20 + 0.5 x 20 + 5) x 0.25 = 5 exactly.
    EXPECT_EQ(Aplicar(Bajo(3, PasoBajo::Ponderado1), nueve, 3, 3), Centro(5));
    // (45 + 5) x float(0.1).
    EXPECT_EQ(Aplicar(Bajo(3, PasoBajo::Ponderado2), nueve, 3, 3), Centro(Guardado<T>(5.000000074505806)));
    // float(1/25) lies below 1/25: a flat 100 gives 99.99999776..., so 99 in
    // byte and integer images.
    const auto cien = Aplicar(Bajo(5, PasoBajo::Promedio), Imagen<T>(std::vector<double>(25, 100.0)), 5, 5);
    EXPECT_EQ(cien[12], Guardado<T>(99.99999776482582));
    if constexpr (std::is_integral_v<T>) {
        EXPECT_EQ(cien[12], 99.0);
    }
    // 5 x 5 "Ponderado a 1" sums its weights to 10, 7 x 7 to 19: a flat
    // region keeps its value (both float scales lie above).
    EXPECT_EQ(Aplicar(Bajo(5, PasoBajo::Ponderado1), Imagen<T>(std::vector<double>(25, 100.0)), 5, 5)[12],
              Guardado<T>(1000.0 * static_cast<double>(0.1f)));
    EXPECT_EQ(Aplicar(Bajo(7, PasoBajo::Ponderado1), Imagen<T>(std::vector<double>(49, 100.0)), 7, 7)[24],
              Guardado<T>(1900.0 * static_cast<double>(1.0f / 19.0f)));
}

TYPED_TEST(FiltroTipos, PasoAltoConLaAsimetriaDeEscalas) {
    using T = TypeParam;
    // Laplaciano 9 on a flat 170: (9 - 8) x 170 / 17 = 10 in 3 x 3, and
    // (9 - 24) x 170 x (-1/15) = 170 in 5 x 5.
    EXPECT_EQ(Aplicar(Alto(3, PasoAlto::Laplaciano9), Imagen<T>(std::vector<double>(9, 170.0)), 3, 3),
              Centro(Guardado<T>(10.000000037252903)));
    EXPECT_EQ(Aplicar(Alto(5, PasoAlto::Laplaciano9), Imagen<T>(std::vector<double>(25, 170.0)), 5, 5)[12],
              Guardado<T>(170.0000088661909));
    EXPECT_EQ(Aplicar(Alto(7, PasoAlto::Laplaciano9), Imagen<T>(std::vector<double>(49, 170.0)), 7, 7)[24],
              Guardado<T>(170.00000221654773));
    // A dark centre among 170s: -1360 / 17 = -80, which wraps in byte and
    // integer images.
    const auto oscuro = Aplicar(Alto(3, PasoAlto::Laplaciano9), Imagen<T>({170, 170, 170, 170, 0, 170, 170, 170, 170}), 3, 3);
    if constexpr (std::is_same_v<T, uint8_t>) {
        EXPECT_EQ(oscuro[4], 176.0);
    }
    if constexpr (std::is_same_v<T, uint16_t>) {
        EXPECT_EQ(oscuro[4], 65456.0);
    }
    if constexpr (!std::is_integral_v<T>) {
        EXPECT_NEAR(oscuro[4], -80.0, 1e-5);
    }
    // Laplaciano 5: (5 x 100 - 4 x 10) x float(1/9) = 51.11...
    EXPECT_EQ(Aplicar(Alto(3, PasoAlto::Laplaciano5), Imagen<T>({10, 10, 10, 10, 100, 10, 10, 10, 10}), 3, 3),
              Centro(Guardado<T>(51.111111491918564)));
    // 5 x 5: only the twelve odd positions weigh -1, so a flat 170 gives
    // (5 - 12) x 170 x (-1/7).
    EXPECT_EQ(Aplicar(Alto(5, PasoAlto::Laplaciano5), Imagen<T>(std::vector<double>(25, 170.0)), 5, 5)[12],
              Guardado<T>(170.0000075995922));
}

TYPED_TEST(FiltroTipos, DireccionalResponde) {
    using T = TypeParam;
    // N on a region brighter at the top: 300 x 0.1 = 30.
    const auto arriba = Aplicar(Dir(Direccion::N), Imagen<T>({100, 100, 100, 50, 50, 50, 0, 0, 0}), 3, 3);
    EXPECT_GT(arriba[4], 0.0);
    EXPECT_EQ(arriba[4], Guardado<T>(300.0 * static_cast<double>(0.1f)));
    // Every mask on 10 20 30 / 40 50 60 / 70 80 90, sums worked by hand.
    const Muestras im = Imagen<T>({10, 20, 30, 40, 50, 60, 70, 80, 90});
    const std::pair<Direccion, double> casos[] = {
        {Direccion::N, -180}, {Direccion::S, 180},   {Direccion::E, 60},   {Direccion::W, -60},
        {Direccion::NE, -80}, {Direccion::NW, -160}, {Direccion::SE, 160}, {Direccion::SW, 80},
    };
    for (const auto& [d, suma] : casos)
        EXPECT_EQ(Aplicar(Dir(d), im, 3, 3), Centro(Guardado<T>(suma * static_cast<double>(0.1f))))
            << "dirección " << static_cast<int>(d);
    if constexpr (std::is_same_v<T, uint8_t>) {
        EXPECT_EQ(Aplicar(Dir(Direccion::N), im, 3, 3)[4], 238.0);
    }
}

TYPED_TEST(FiltroTipos, PersonalizadoDivideEntreLosPesosTruncados) {
    using T = TypeParam;
    const Muestras nueve = Imagen<T>(kUnoANueve);
    // 0.5 adds 0 to the divisor and -2.7 adds 2: (0.5 x 40 - 2.7 x 5) / 2.
    std::vector<double> w(9, 0.5);
    w[4] = -2.7;
    EXPECT_EQ(Aplicar(Propio(3, w), nueve, 3, 3), Centro(Guardado<T>(3.25)));
    // All 0.5: the divisor is 0 and every pixel is 0.
    EXPECT_EQ(Aplicar(Propio(3, std::vector<double>(9, 0.5)), Imagen<T>(std::vector<double>(25, 7.0)), 5, 5),
              std::vector<double>(25, 0.0));
    // A negative response wraps in byte and integer images.
    const double menos = Aplicar(Propio(3, {0, 0, 0, 0, -1, 0, 0, 0, 0}), nueve, 3, 3)[4];
    EXPECT_EQ(menos, Guardado<T>(-5.0));
    // On a flat 255, eight weights of -16 sum to -32640, the most that fits
    // in 16 bits; one more -1 in the centre does not: both must give -255.
    std::vector<double> menos16(9, -16.0);
    menos16[4] = 0;
    const Muestras blanca = Imagen<T>(std::vector<double>(9, 255.0));
    EXPECT_EQ(Aplicar(Propio(3, menos16), blanca, 3, 3), Centro(Guardado<T>(-255.0)));
    menos16[4] = -1;
    EXPECT_EQ(Aplicar(Propio(3, menos16), blanca, 3, 3), Centro(Guardado<T>(-255.0)));
    if constexpr (std::is_same_v<T, float>) {
        // (2 x 3e38 + 0.5 x 3e38) / 2 lies beyond the float range.
        std::vector<double> w2(9, 0.0);
        w2[4] = 2;
        w2[0] = 0.5;
        const auto inf = Aplicar(Propio(3, w2), Imagen<float>(std::vector<double>(9, 3e38)), 3, 3);
        EXPECT_EQ(inf[4], std::numeric_limits<double>::infinity());
    }
    // 5 x 5 and 7 x 7 kernels that pick one neighbour.
    std::vector<double> lejos5(25, 0.0), lejos7(49, 0.0);
    lejos5[0] = 3;     // top left corner of the window, divisor 3
    lejos7[48] = 1;    // bottom right corner
    std::vector<double> v49(49);
    for (int i = 0; i < 49; ++i) v49[i] = i;
    EXPECT_EQ(Aplicar(Propio(5, lejos5), Imagen<T>(std::vector<double>(v49.begin(), v49.begin() + 25)), 5, 5)[12], 0.0);
    EXPECT_EQ(Aplicar(Propio(7, lejos7), Imagen<T>(v49), 7, 7)[24], 48.0);
}

// The common rules: border 0, a single interior row or column, images
// smaller than the window, and the output's type and size checked.
TEST(Filtro, BordesEImagenesPequenas) {
    const std::vector<Filtro> filtros = {
        Media(3), Bajo(3, PasoBajo::Ponderado2), Alto(3, PasoAlto::Laplaciano5), Dir(Direccion::E),
        Propio(3, {1, 1, 1, 1, 1, 1, 1, 1, 1}),
    };
    // 3 x 5 and 5 x 3 images: everything outside the single interior row
    // or column is 0 (the interior values are checked against the plain
    // computation further down).
    std::vector<double> rampa(15);
    for (int i = 0; i < 15; ++i) rampa[i] = 10 + i;
    for (const auto& f : filtros) {
        const auto tres = Aplicar(f, Imagen<double>(rampa), 3, 5);
        for (int i = 0; i < 15; ++i) {
            const bool interior = i >= 6 && i <= 8;
            if (!interior) {
                EXPECT_EQ(tres[i], 0.0) << i;
            }
        }
        const auto traspuesta = Aplicar(f, Imagen<double>(rampa), 5, 3);
        for (int i = 0; i < 15; ++i) {
            const bool interior = i % 3 == 1 && i / 3 >= 1 && i / 3 <= 3;
            if (!interior) {
                EXPECT_EQ(traspuesta[i], 0.0) << i;
            }
        }
    }
    // The mean of that ramp keeps the interior as it was.
    EXPECT_EQ(Aplicar(Media(3), Imagen<uint8_t>(rampa), 3, 5),
              (std::vector<double>{0, 0, 0, 0, 0, 0, 16, 17, 18, 0, 0, 0, 0, 0, 0}));
    // A window larger than the image leaves it all 0.
    EXPECT_EQ(Aplicar(Bajo(5, PasoBajo::Promedio), Imagen<uint8_t>(kUnoANueve), 3, 3), std::vector<double>(9, 0.0));
    EXPECT_EQ(Aplicar(Media(7), Imagen<float>(std::vector<double>(36, 5.0)), 6, 6), std::vector<double>(36, 0.0));
    EXPECT_EQ(Aplicar(Alto(3, PasoAlto::Laplaciano9), Imagen<uint16_t>({7}), 1, 1), std::vector<double>{0.0});

    // Refused calls: a window of 4, a short output, an output of another type,
    // a wrong number of coefficients.
    const Muestras in = Imagen<uint8_t>(kUnoANueve);
    Muestras corta = Muestras::Crear(kByte, 8), otra = Muestras::Crear(kReal, 9), bien = Muestras::Crear(kByte, 9);
    EXPECT_FALSE(FiltroMedia(in, 3, 3, 4, bien));
    EXPECT_FALSE(FiltroPasoBajo(in, 3, 3, 3, PasoBajo::Promedio, corta));
    EXPECT_FALSE(FiltroPasoAlto(in, 3, 3, 3, PasoAlto::Laplaciano9, otra));
    EXPECT_FALSE(FiltroPersonalizado(in, 3, 3, 5, std::vector<double>(9, 1.0), bien));
}

// ---------------------------------------------------------------------------
// The straightforward computation, written here without any of the filters'
// code: for each interior pixel, sum = 0, then sum += weight * sample over the
// window in row order, then the scale; the mean adds its neighbours in row
// order and then m * centre.

std::vector<double> PesosBajo(int k, int variante) {
    std::vector<double> w(k * k, 1.0);
    for (int i = 0; i < k * k; ++i) {
        if (variante == 1) w[i] = (i % 2 == 0) ? 0.25 : 0.5;
    }
    if (variante == 1) w[k * k / 2] = 1.0;
    if (variante == 2) w[k * k / 2] = 2.0;
    return w;
}
double EscalaBajo(int k, int variante) {
    const float t[3][3] = {{1 / 9.f, 1 / 25.f, 1 / 49.f}, {1 / 4.f, 1 / 10.f, 1 / 19.f}, {1 / 10.f, 1 / 26.f, 1 / 50.f}};
    return t[variante][(k - 3) / 2];
}
std::vector<double> PesosAlto(int k, int variante) {
    std::vector<double> w(k * k);
    for (int i = 0; i < k * k; ++i) w[i] = variante == 0 ? -1.0 : (i % 2 == 1 ? -1.0 : 0.0);
    w[k * k / 2] = variante == 0 ? 9.0 : 5.0;
    return w;
}
double EscalaAlto(int k, int variante) {
    const float t[2][3] = {{1 / 17.f, -1 / 15.f, -1 / 39.f}, {1 / 9.f, -1 / 7.f, -1 / 19.f}};
    return t[variante][(k - 3) / 2];
}
// Masks built from their rule: -2 in the centre, +1 on the cells that face
// the direction (dy up, dx right) or lie across it, -1 on the cells behind.
std::vector<double> Mascara(int dy, int dx) {
    std::vector<double> w(9);
    for (int f = 0; f < 3; ++f)
        for (int c = 0; c < 3; ++c) {
            const int y = 1 - f, x = c - 1;
            w[f * 3 + c] = (f == 1 && c == 1) ? -2.0 : (y * dy + x * dx >= 0 ? 1.0 : -1.0);
        }
    return w;
}

template <class T>
std::vector<T> Directo(const std::vector<T>& in, long filas, long columnas, int k, const std::vector<double>& w,
                       const std::function<double(double, double)>& fin, bool sinCentro = false) {
    std::vector<T> out(in.size(), T{});
    const long h = k / 2;
    for (long y = h; y < filas - h; ++y)
        for (long x = h; x < columnas - h; ++x) {
            double suma = 0.0;
            for (int f = 0; f < k; ++f)
                for (int c = 0; c < k; ++c) {
                    if (sinCentro && f == h && c == h) continue;
                    suma += w[f * k + c] * static_cast<double>(in[(y - h + f) * columnas + (x - h + c)]);
                }
            out[y * columnas + x] = Almacenar<T>(fin(suma, static_cast<double>(in[y * columnas + x])));
        }
    return out;
}

struct Caso {
    std::string nombre;
    Filtro filtro;
    int k;
    std::vector<double> w;
    std::function<double(double, double)> fin;
    bool media = false;
};

std::vector<Caso> Casos(std::mt19937& azar) {
    std::vector<Caso> casos;
    for (int k : {3, 5, 7}) {
        const std::string t = std::to_string(k) + "x" + std::to_string(k);
        casos.push_back({"media " + t, Media(k), k, std::vector<double>(k * k, 1.0), nullptr, true});
        for (int v = 0; v < 3; ++v) {
            const double e = EscalaBajo(k, v);
            casos.push_back({"paso bajo " + std::to_string(v) + " " + t, Bajo(k, static_cast<PasoBajo>(v)), k,
                             PesosBajo(k, v), [e](double s, double) { return e * s; }});
        }
        for (int v = 0; v < 2; ++v) {
            const double e = EscalaAlto(k, v);
            casos.push_back({"paso alto " + std::to_string(v) + " " + t, Alto(k, static_cast<PasoAlto>(v)), k,
                             PesosAlto(k, v), [e](double s, double) { return e * s; }});
        }
        // User kernels: small integers, decimals, and integers too large for
        // 32-bit sums of integer samples.
        std::vector<double> enteros(k * k), decimales(k * k), grandes(k * k);
        std::uniform_int_distribution<int> d(-3, 3), g(-60000, 60000);
        for (int i = 0; i < k * k; ++i) {
            enteros[i] = d(azar);
            decimales[i] = d(azar) * 0.7 + 0.1;
            grandes[i] = g(azar);
        }
        for (const auto& w : {enteros, decimales, grandes}) {
            double div = 0;
            for (double x : w) div += std::fabs(std::trunc(x));
            casos.push_back({"personalizado " + t, Propio(k, w), k, w,
                             [div](double s, double) { return div == 0 ? 0.0 : s / div; }});
        }
    }
    const std::pair<Direccion, std::pair<int, int>> dirs[] = {
        {Direccion::N, {1, 0}},  {Direccion::S, {-1, 0}},  {Direccion::E, {0, 1}},  {Direccion::W, {0, -1}},
        {Direccion::NE, {1, 1}}, {Direccion::NW, {1, -1}}, {Direccion::SE, {-1, 1}}, {Direccion::SW, {-1, -1}},
    };
    const double e = static_cast<double>(0.1f);
    for (const auto& [d, v] : dirs)
        casos.push_back({"direccional " + std::to_string(static_cast<int>(d)), Dir(d), 3, Mascara(v.first, v.second),
                         [e](double s, double) { return e * s; }});
    return casos;
}

// Compares every filter with the straightforward computation, sample for
// sample (bit for bit in real and double images).
template <class T>
void CompararConDirecto(const std::vector<T>& datos, long filas, long columnas, std::mt19937& azar,
                        const std::string& donde) {
    Muestras in = Muestras::Crear(CodigoDe<T>::valor, datos.size());
    std::memcpy(in.Datos(), datos.data(), datos.size() * sizeof(T));
    double total = 0;
    for (T v : datos) total += static_cast<double>(v);
    const double m = total / static_cast<double>(datos.size());
    for (auto& caso : Casos(azar)) {
        std::vector<T> esperado;
        if (caso.media) {
            const double div = m + (caso.k * caso.k - 1);
            esperado = Directo<T>(datos, filas, columnas, caso.k, caso.w,
                                  [m, div](double s, double c) { return (s + m * c) / div; }, true);
        } else {
            esperado = Directo<T>(datos, filas, columnas, caso.k, caso.w, caso.fin);
        }
        Muestras out = Muestras::Crear(in.Codigo(), in.Cantidad());
        ASSERT_TRUE(caso.filtro(in, filas, columnas, out)) << caso.nombre;
        const auto obtenido = out.Como<T>();
        if (std::memcmp(obtenido.data(), esperado.data(), datos.size() * sizeof(T)) != 0) {
            std::size_t i = 0;
            while (std::memcmp(&obtenido[i], &esperado[i], sizeof(T)) == 0) ++i;
            ADD_FAILURE() << donde << ", " << caso.nombre << ": muestra " << i << " (fila " << i / columnas
                          << ", columna " << i % columnas << ") da " << static_cast<double>(obtenido[i])
                          << " y debía dar " << static_cast<double>(esperado[i]);
        }
    }
}

// Samples of each type drawn from bytes: byte as is, integer spread over the
// whole 16 bits, real and double with fractions and negative values.
template <class T>
std::vector<T> DeBytes(const std::vector<uint8_t>& b) {
    std::vector<T> v(b.size());
    for (std::size_t i = 0; i < b.size(); ++i) {
        if constexpr (std::is_same_v<T, uint8_t>) v[i] = b[i];
        else if constexpr (std::is_same_v<T, uint16_t>) v[i] = static_cast<uint16_t>(b[i] * 257u);
        else if constexpr (std::is_same_v<T, float>) v[i] = static_cast<float>(b[i] - 100.0 + 0.3 * (i % 7));
        else v[i] = b[i] / 3.0 - 41.17;
    }
    return v;
}

TYPED_TEST(FiltroTipos, IgualAlCalculoDirectoEnTodasLasFormas) {
    using T = TypeParam;
    std::mt19937 azar(20240611);
    std::uniform_int_distribution<int> byte(0, 255);
    // Widths that leave every possible remainder after the blocks of columns.
    const std::pair<long, long> formas[] = {{3, 3}, {3, 11}, {11, 3}, {4, 4}, {6, 6}, {9, 17}, {8, 23}, {13, 40}, {7, 7}};
    for (const auto& [filas, columnas] : formas) {
        std::vector<uint8_t> b(filas * columnas);
        for (auto& x : b) x = static_cast<uint8_t>(byte(azar));
        std::vector<T> datos = DeBytes<T>(b);
        if constexpr (!std::is_integral_v<T>) {
            // An infinite sample under a weight of 0 gives NaN, as the plain
            // loop does.
            if (filas == 9) datos[2 * columnas + 3] = std::numeric_limits<T>::infinity();
        }
        CompararConDirecto(datos, filas, columnas, azar, std::to_string(filas) + "x" + std::to_string(columnas));
    }
}

TYPED_TEST(FiltroTipos, IgualAlCalculoDirectoEnLaBandaLandsat) {
    using T = TypeParam;
    const std::string ruta = std::string(ORVELA_DATOS_COMPARTIDOS) + "/landsat-tm/tm4.ozm";
    if (!std::filesystem::exists(ruta)) GTEST_SKIP() << "sin datos compartidos";
    CImagen im;
    ASSERT_FALSE(im.Cargar(ruta));
    ASSERT_EQ(im.tipoDato, kByte);
    const auto b = im.pixeles.Como<uint8_t>();
    std::mt19937 azar(4);
    CompararConDirecto(DeBytes<T>(std::vector<uint8_t>(b.begin(), b.end())), im.Filas(), im.Columnas(), azar, "tm4");
}

// ---------------------------------------------------------------------------
// The declaration and the "filtro" order.

const Declaracion& Decl() {
    const Declaracion* d = BuscarPorOrden("filtro");
    EXPECT_NE(d, nullptr);
    return *d;
}

TEST(Filtro, DeclaracionTitulosYTamanoDireccional) {
    const Declaracion& d = Decl();
    EXPECT_EQ(d.idComando, 32849);
    EXPECT_STREQ(d.titulo, "Filtrado de la imagen");
    EXPECT_EQ(BuscarPorComando(32849), &d);
    CImagen im;
    ASSERT_FALSE(im.Iniciar("", "", "banda", 3, 3, "byte", 5, 0, "", "m", {}));
    const char* sufijos[] = {"_Filtrado_de_Media", "_Filtrado_Mediana", "_Filtrado_de_Moda",
                             "_Filtrado_Máximo", "_Filtrado_Mínimo", "_Filtrado_Paso_alto",
                             "_Filtrado_Paso_bajo", "_Filtrado_Direccional", "_Filtrado_Personalizado"};
    for (int t = 0; t < 9; ++t) {
        Valores v = ValoresPorDefecto(d);
        v.Poner(Clave::TipoFiltro, t);
        v.Poner(Clave::Coeficientes, std::vector<double>(9, 1.0));
        Resultado r = Calcular(d, {&im}, v, Destino::Fichero);
        ASSERT_FALSE(r.error) << t;
        ASSERT_EQ(r.imagenes.size(), 1u);
        EXPECT_EQ(r.imagenes[0].titulo, std::string("banda") + sufijos[t]);
        EXPECT_EQ(r.imagenes[0].tipoDato, kByte);
    }
    // The directional filter exists only for 3 x 3.
    for (int tamano : {1, 2}) {
        Valores v = ValoresPorDefecto(d);
        v.Poner(Clave::TipoFiltro, 7);
        v.Poner(Clave::Tamano, tamano);
        ASSERT_TRUE(d.alAceptar(v));
        EXPECT_EQ(d.alAceptar(v)->id, msg::kDireccionalTamano);
        EXPECT_EQ(Calcular(d, {&im}, v, Destino::Fichero).error->id, msg::kDireccionalTamano);
    }
    // The sub-dialog fields take part only for their filter and size.
    Valores v = ValoresPorDefecto(d);
    v.Poner(Clave::TipoFiltro, 8);
    v.Poner(Clave::Tamano, 1);
    int coeficientes = 0;
    for (const auto& c : d.campos) {
        if (c.clave == Clave::Coeficientes && c.Aplica(v)) {
            ++coeficientes;
            EXPECT_STREQ(c.subdialogo, "Filtro Personalizado 5 x 5");
            EXPECT_EQ(c.cantidad(v), 25);
        }
        const bool variante = c.clave == Clave::VariantePasoAlto || c.clave == Clave::VariantePasoBajo ||
                              c.clave == Clave::VarianteDireccional;
        if (variante) {
            EXPECT_FALSE(c.Aplica(v));
        }
    }
    EXPECT_EQ(coeficientes, 1);
}

class FiltroCli : public ::testing::Test {
protected:
    void SetUp() override {
        dir_ = std::filesystem::path(::testing::TempDir()) /
               ("orvela_filtro_" + std::to_string(::getpid()) + "_" +
                ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::remove_all(dir_);
        std::filesystem::create_directories(dir_);
    }
    void TearDown() override { std::filesystem::remove_all(dir_); }

    // A 4 x 5 byte image "prueba" whose samples are given.
    std::string Entrada(const std::vector<double>& v) {
        CImagen im;
        EXPECT_FALSE(im.Iniciar("", "", "prueba", 4, 5, "byte", 0, 0, "", "m", {}));
        for (std::size_t i = 0; i < v.size(); ++i) im.pixeles.Como<uint8_t>()[i] = static_cast<uint8_t>(v[i]);
        EXPECT_FALSE(im.Guardar((dir_ / "entrada").string(), 1));
        return (dir_ / "entrada.ozm").string();
    }
    int Orden(std::vector<std::string> args) {
        out_.str("");
        err_.str("");
        args.insert(args.begin(), "filtro");
        return cli::Ejecutar(args, out_, err_);
    }
    std::string Salida() const { return (dir_ / "salida").string(); }
    bool HaySalida() const { return std::filesystem::exists(dir_ / "salida.ozm") || std::filesystem::exists(dir_ / "salida.inf"); }

    std::filesystem::path dir_;
    std::ostringstream out_, err_;
};

TEST_F(FiltroCli, EscribeElResultadoConSuTitulo) {
    const std::string in = Entrada(std::vector<double>(20, 170));
    ASSERT_EQ(Orden({"--tipo", "paso-alto", "--variante", "laplaciano9", in, Salida() + ".ozm"}), 0) << err_.str();
    CImagen r;
    ASSERT_FALSE(r.Cargar(Salida() + ".ozm"));
    EXPECT_EQ(r.titulo, "prueba_Filtrado_Paso_alto");
    EXPECT_EQ(r.tipoDato, kByte);
    EXPECT_EQ(Leer(r.pixeles), (std::vector<double>{0, 0, 0, 0, 0, 0, 10, 10, 10, 0, 0, 10, 10, 10, 0, 0, 0, 0, 0, 0}));

    // Defaults: size 3, "Promedio", direction N; the variant of another
    // filter is not looked at.
    ASSERT_EQ(Orden({"--tipo", "paso-bajo", in, Salida()}), 0) << err_.str();
    ASSERT_FALSE(r.Cargar(Salida() + ".ozm"));
    EXPECT_EQ(r.pixeles.Valor(6), 170.0);  // 1530 x float(1/9) = 170.0000011...
    std::vector<double> rampa(20);
    for (int i = 0; i < 20; ++i) rampa[i] = 100 - 5 * (i / 5);
    const std::string in2 = Entrada(rampa);
    ASSERT_EQ(Orden({"--tipo", "direccional", in2, Salida()}), 0) << err_.str();
    ASSERT_FALSE(r.Cargar(Salida() + ".ozm"));
    EXPECT_EQ(r.pixeles.Valor(6), 3.0);  // (3 x 100 - 3 x 90) x 0.1
    EXPECT_EQ(r.titulo, "prueba_Filtrado_Direccional");

    ASSERT_EQ(Orden({"--tipo", "personalizado", "--coeficientes", "0,0,0,0,-1,0,0,0,0", in2, Salida()}), 0);
    ASSERT_FALSE(r.Cargar(Salida() + ".ozm"));
    EXPECT_EQ(r.pixeles.Valor(6), 161.0);  // -95 wraps to 161
    ASSERT_EQ(Orden({"--tipo", "media", "--tamano", "5", "--variante", "sw", in, Salida()}), 0) << err_.str();
    ASSERT_EQ(Orden({"--tipo", "maximo", "--tamano", "7", in, Salida()}), 0) << err_.str();
    ASSERT_FALSE(r.Cargar(Salida() + ".ozm"));
    EXPECT_EQ(r.titulo, "prueba_Filtrado_Máximo");
}

TEST_F(FiltroCli, RechazosYUso) {
    const std::string in = Entrada(std::vector<double>(20, 9));
    EXPECT_EQ(Orden({"--tamano", "5", "--tipo", "direccional", "--variante", "ne", in, Salida()}), 2);
    EXPECT_EQ(err_.str(),
              "61255: El tamaño del filtrado direccional elegido es incorrecto.\n\n"
              "Se requiere un tamaño de la ventana de 3 x 3.\n");
    EXPECT_FALSE(HaySalida());

    const std::vector<std::vector<std::string>> mal = {
        {"--tipo", "personalizado", "--coeficientes", "1,2,3", in, Salida()},
        {"--tipo", "personalizado", "--tamano", "5", "--coeficientes", "1,1,1,1,1,1,1,1,1", in, Salida()},
        {"--tipo", "personalizado", "--coeficientes", "1,1,1,1,x,1,1,1,1", in, Salida()},
        {"--tipo", "personalizado", in, Salida()},
        {"--tipo", "paso-bajo", "--variante", "laplaciano9", in, Salida()},
        {"--tipo", "direccional", "--variante", "norte", in, Salida()},
        {"--tipo", "media", "--tamano", "4", in, Salida()},
        {"--tipo", "gauss", in, Salida()},
        {"--tamano", "3", in, Salida()},
        {"--tipo", "media", in},
    };
    for (const auto& args : mal) {
        EXPECT_EQ(Orden(args), 64) << args[1] << " " << args[2];
        EXPECT_NE(err_.str().find("Uso: orvela-cli filtro"), std::string::npos);
        EXPECT_FALSE(HaySalida());
    }
    // 25 coefficients for 5 x 5 are right.
    std::string c25 = "1";
    for (int i = 1; i < 25; ++i) c25 += ",1";
    EXPECT_EQ(Orden({"--tipo", "personalizado", "--tamano", "5", "--coeficientes", c25, in, Salida()}), 0) << err_.str();

    EXPECT_EQ(Orden({"--help"}), 0);
    EXPECT_NE(out_.str().find("--variante"), std::string::npos);
    EXPECT_NE(out_.str().find("paso-alto"), std::string::npos);
}

}  // namespace
