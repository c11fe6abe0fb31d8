// Contrast expansion: the three methods per data type with values worked by
// hand, the store rule's wrap, the equalisation table, the chosen answers
// for a constant image and for samples at no level, the checks of the
// dialog in their order, the command line, and the Landsat bands against a
// straightforward computation.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <filesystem>

#include "AritmeticaPrueba.h"
#include "image/Conversion.h"
#include "tools/Contraste.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

enum { kLineal, kEcualizacion, kRango };

Resultado Contraste(const CImagen& a, int metodo, double nvMin = 0, double nvMax = 255, double ndMin = 0,
                    double ndMax = 255) {
    return Operar("contraste", {&a},
                  Con({{Clave::Metodo, metodo},
                       {Clave::NvMinimo, nvMin},
                       {Clave::NvMaximo, nvMax},
                       {Clave::NdMinimo, ndMin},
                       {Clave::NdMaximo, ndMax}}));
}

std::vector<double> Expandir(const CImagen& a, int metodo, double nvMin = 0, double nvMax = 255, double ndMin = 0,
                             double ndMax = 255) {
    Resultado r = Contraste(a, metodo, nvMin, nvMax, ndMin, ndMax);
    EXPECT_FALSE(r.error);
    if (r.imagenes.empty()) return {};
    EXPECT_EQ(r.imagenes[0].tipoDato, a.tipoDato);
    return Muestrario(r.imagenes[0]);
}

// What each type keeps of a computed value.
double Guardado(int codigo, double v) {
    double r = 0;
    ConTipo(codigo, [&]<class T>(Muestra<T>) { r = static_cast<double>(Almacenar<T>(v)); });
    return r;
}

std::vector<double> Guardados(int codigo, const std::vector<double>& v) {
    std::vector<double> r;
    for (double x : v) r.push_back(Guardado(codigo, x));
    return r;
}

}  // namespace

TEST(Contraste, LinealSobreMediaYDosDesviaciones) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        // Mean 5, population deviation 2: lo = 1, hi = 9, gain 255 / 8.
        CImagen a = Imagen(codigo, 2, 4, {2, 4, 4, 4, 5, 5, 7, 9}, "tm1");
        EXPECT_EQ(Expandir(a, kLineal),
                  Guardados(codigo, {31.875, 95.625, 95.625, 95.625, 127.5, 127.5, 191.25, 255}));
        Resultado r = Contraste(a, kLineal);
        EXPECT_EQ(r.imagenes.at(0).titulo, "tm1_Expansión_del_Contraste");

        // Below m - 2s the value is negative and wraps (-1.197 -> 255 in a
        // byte); above m + 2s it passes 255 and wraps too (270.05 -> 14).
        CImagen bajo = Imagen(codigo, 2, 3, {0, 13, 13, 13, 13, 20});
        const auto vb = Expandir(bajo, kLineal);
        CImagen alto = Imagen(codigo, 2, 3, {10, 10, 10, 10, 10, 20});
        const auto va = Expandir(alto, kLineal);
        if (codigo == kByte) {
            EXPECT_EQ(vb, (std::vector<double>{255, 138, 138, 138, 138, 213}));
            EXPECT_EQ(va, (std::vector<double>{98, 98, 98, 98, 98, 14}));
        } else if (codigo == kInteger) {
            EXPECT_EQ(vb, (std::vector<double>{65535, 138, 138, 138, 138, 213}));
            EXPECT_EQ(va, (std::vector<double>{98, 98, 98, 98, 98, 270}));
        } else {
            EXPECT_NEAR(vb[0], -1.1972093641241517, 1e-5);
            EXPECT_NEAR(va[5], 270.0493335656116, 1e-4);
        }

        // A constant image goes to NVmin.
        CImagen plana = Imagen(codigo, 2, 2, {42, 42, 42, 42});
        EXPECT_EQ(Expandir(plana, kLineal, 10, 200), (std::vector<double>{10, 10, 10, 10}));
    }
}

TEST(Contraste, RangoInteractivo) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        // NDmin 10, NDmax 20 onto 0..255: gain 25.5, offset -255.
        CImagen a = Imagen(codigo, 1, 5, {10, 15, 20, 9, 21});
        EXPECT_EQ(Expandir(a, kRango, 0, 255, 10, 20), Guardados(codigo, {0, 127.5, 255, -25.5, 280.5}));
        // Onto 50..100: gain 5, offset 0.
        EXPECT_EQ(Expandir(a, kRango, 50, 100, 10, 20), Guardados(codigo, {50, 75, 100, 45, 105}));
    }
    CImagen d = Imagen(kDouble, 1, 2, {10, 15});
    EXPECT_EQ(Expandir(d, kRango, 0, 255, 10, 20), (std::vector<double>{0, 127.5}));  // unrounded
    // The ND range applies only to its own method.
    CImagen b = Imagen(kByte, 1, 2, {0, 255});
    EXPECT_EQ(Expandir(b, kLineal, 0, 255, 7, 7), Expandir(b, kLineal));
}

TEST(Contraste, EcualizacionDelHistograma) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        // Every level present equally often: the identity.
        std::vector<double> todos(512);
        for (int i = 0; i < 512; ++i) todos[i] = i % 256;
        CImagen a = Imagen(codigo, 2, 256, todos);
        EXPECT_EQ(Expandir(a, kEcualizacion), todos);

        // Only 100 and 101, as many of each: 100 -> 127, 101 -> 255.
        CImagen b = Imagen(codigo, 2, 2, {100, 101, 101, 100});
        EXPECT_EQ(Expandir(b, kEcualizacion), (std::vector<double>{127, 255, 255, 127}));
    }
    // The table of the second case.
    std::array<uint64_t, 256> c{};
    c[100] = 2;
    c[101] = 2;
    const TablaEcualizacion t = CalcularTablaEcualizacion(c, 4);
    EXPECT_EQ(t[99].acumulado, 0);
    EXPECT_EQ(t[100].porcentaje, 50);
    EXPECT_EQ(t[100].acumulado, 50);
    EXPECT_EQ(t[101].acumulado, 100);
    EXPECT_EQ(t[0].ideal, 0.390625);
    EXPECT_EQ(t[127].ideal, 50);
    EXPECT_EQ(t[255].ideal, 100);
    EXPECT_EQ(t[0].nuevo, 0);
    EXPECT_EQ(t[200].nuevo, 255);

    // A cumulative percentage halfway between two ideal ones goes to the
    // lower level: 3 samples of 512 at level 0 give 0.5859375, halfway
    // between 0.390625 and 0.78125.
    std::array<uint64_t, 256> empate{};
    empate[0] = 3;
    empate[255] = 509;
    EXPECT_EQ(CalcularTablaEcualizacion(empate, 512)[0].acumulado, 0.5859375);
    EXPECT_EQ(CalcularTablaEcualizacion(empate, 512)[0].nuevo, 0);

    // Real samples take the level of their value truncated toward zero; a
    // sample at no level is kept as it is, and is still counted in N.
    CImagen r = Imagen(kReal, 2, 3, {100.75, -0.5, 300.25, -5.5, 101.5, 255.9});
    EXPECT_EQ(Expandir(r, kEcualizacion),
              (std::vector<double>{84, 42, 300.25, -5.5, 127, 170}));
    CImagen i = Imagen(kInteger, 1, 4, {100, 1000, 101, 65535});
    EXPECT_EQ(Expandir(i, kEcualizacion), (std::vector<double>{63, 1000, 127, 65535}));
    // The output range is checked but not used.
    EXPECT_EQ(Expandir(Imagen(kByte, 2, 2, {100, 101, 101, 100}), kEcualizacion, 20, 30),
              (std::vector<double>{127, 255, 255, 127}));
}

TEST(Contraste, ComprobacionesDeAceptarEnSuOrden) {
    const Declaracion& d = *BuscarPorOrden("contraste");
    auto comprobar = [&](int metodo, double nvMin, double nvMax, double ndMin, double ndMax) {
        return d.alAceptar(Con({{Clave::Metodo, metodo},
                                {Clave::NvMinimo, nvMin},
                                {Clave::NvMaximo, nvMax},
                                {Clave::NdMinimo, ndMin},
                                {Clave::NdMaximo, ndMax}}));
    };
    const Mensaje nv = Mensaje::Tabla(msg::kRangoNv), nd = Mensaje::Tabla(msg::kRangoNd);
    for (int metodo : {kLineal, kEcualizacion, kRango}) {
        EXPECT_EQ(comprobar(metodo, 0, 256, 0, 10), nv);
        EXPECT_EQ(comprobar(metodo, -1, 255, 0, 10), nv);
        EXPECT_EQ(comprobar(metodo, 100, 100, 0, 10), nv);
        EXPECT_EQ(comprobar(metodo, 200, 100, 0, 10), nv);
        EXPECT_EQ(comprobar(metodo, 0, 255, 0, 10), std::nullopt);
        EXPECT_EQ(comprobar(metodo, 254, 255, 0, 10), std::nullopt);
        // Both ranges wrong: the NV range is told first.
        EXPECT_EQ(comprobar(metodo, 0, 256, 5, 5), nv);
    }
    EXPECT_EQ(comprobar(kRango, 0, 255, 5, 5), nd);
    EXPECT_EQ(comprobar(kRango, 0, 255, -1, 5), nd);
    EXPECT_EQ(comprobar(kRango, 0, 255, 9, 5), nd);
    EXPECT_EQ(comprobar(kRango, 0, 255, 0, 1), std::nullopt);
    EXPECT_EQ(comprobar(kLineal, 0, 255, 5, 5), std::nullopt);
    EXPECT_EQ(comprobar(kEcualizacion, 0, 255, -1, -3), std::nullopt);

    // The same through the command line.
    const std::string dir = Carpeta("contraste_cli");
    CImagen a = Imagen(kByte, 2, 2, {100, 101, 101, 100}, "eco");
    const std::string pa = Escribir(a, dir + "/eco");
    auto s = Cli({"contraste", "--metodo", "lineal", "--nv-max", "256", pa, dir + "/x"});
    EXPECT_EQ(s.rc, 2);
    EXPECT_EQ(s.err, "61246: El rango de NV introducido es incorrecto.\n\nSeleccione valores comprendidos entre 0 y 255.\n");
    s = Cli({"contraste", "--metodo", "rango", "--nd-min", "-1", "--nd-max", "5", pa, dir + "/x"});
    EXPECT_EQ(s.rc, 2);
    EXPECT_EQ(s.err, Rechazo(nd));
    EXPECT_EQ(Cli({"contraste", "--metodo", "rango", pa, dir + "/x"}).rc, 64);
    EXPECT_EQ(Cli({"contraste", "--metodo", "gamma", pa, dir + "/x"}).rc, 64);
    EXPECT_FALSE(std::filesystem::exists(dir + "/x.ozm"));

    s = Cli({"contraste", "--metodo", "ecualizacion", pa, dir + "/e.ozm"});
    ASSERT_EQ(s.rc, 0) << s.err;
    CImagen e;
    ASSERT_FALSE(e.Cargar(dir + "/e.ozm"));
    EXPECT_EQ(e.titulo, "eco_Expansión_del_Contraste");
    EXPECT_EQ(Muestrario(e), (std::vector<double>{127, 255, 255, 127}));
    // --nd-min and --nd-max are ignored outside the range method.
    s = Cli({"contraste", "--metodo", "lineal", "--nd-min", "9", "--nd-max", "9", pa, dir + "/l"});
    EXPECT_EQ(s.rc, 0) << s.err;
}

TEST(ContrasteLandsat, CoincideConElCalculoDirecto) {
    if (!std::filesystem::exists(Datos("tm4"))) GTEST_SKIP() << "sin datos Landsat";
    CImagen b;
    ASSERT_FALSE(b.Cargar(Datos("tm4")));
    const auto x = b.pixeles.Como<uint8_t>();
    const double n = static_cast<double>(x.size());

    // Equalisation: one pass per level, then the nearest ideal level.
    double acumulado = 0, nuevo[256];
    for (int k = 0; k < 256; ++k) {
        std::size_t cuenta = 0;
        for (uint8_t v : x) cuenta += v == k;
        acumulado += cuenta / n * 100;
        double ideal = 0, mejor = 1e300;
        for (int j = 0; j < 256; ++j) {
            ideal += n / (n * 256) * 100;
            if (std::fabs(acumulado - ideal) < mejor) {
                mejor = std::fabs(acumulado - ideal);
                nuevo[k] = j;
            }
        }
    }
    Resultado e = Contraste(b, kEcualizacion);
    const auto ve = e.imagenes.at(0).pixeles.Como<uint8_t>();
    std::size_t distintos = 0;
    for (std::size_t i = 0; i < x.size(); ++i) distintos += ve[i] != nuevo[x[i]];
    EXPECT_EQ(distintos, 0u);

    // Linear expansion, stored with the wrap of a byte.
    double suma = 0;
    for (uint8_t v : x) suma += v;
    const double m = suma / n;
    double cuadrados = 0;
    for (uint8_t v : x) cuadrados += std::pow(v - m, 2.0);
    const double s = std::sqrt(cuadrados / n);
    const double lo = m - 2 * s, hi = m + 2 * s;
    const double gain = (255.0 - 0.0) / (hi - lo), offset = 0.0 - gain * lo;
    Resultado l = Contraste(b, kLineal);
    const auto vl = l.imagenes.at(0).pixeles.Como<uint8_t>();
    distintos = 0;
    std::size_t fuera = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double y = x[i] * gain + offset;
        fuera += y < 0 || y >= 256;
        distintos += vl[i] != static_cast<uint8_t>(static_cast<uint32_t>(static_cast<int32_t>(y)));
    }
    EXPECT_EQ(distintos, 0u);
    EXPECT_GT(fuera, 0u);  // the band has samples past m +/- 2s that wrap
}
