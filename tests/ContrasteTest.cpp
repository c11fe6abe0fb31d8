// Contrast expansion: the three methods per data type with values worked by
// hand, the store rule's wrap, the equalisation table and its tie rule, the
// chosen answers for a constant image and for samples at no level, the
// checks of the dialog in their order, the command line, and the shortcuts
// (level counts, lookup table) against a straightforward computation.
#include "tests/Prueba.h"
#include "tools/Contraste.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

enum { kLineal, kEcualizacion, kRango };

Resultado Contraste(const CImagen& a, int metodo, double nvMin = 0, double nvMax = 255, double ndMin = 0,
                    double ndMax = 255) {
    return Operar("contraste", {&a},
                  Con("contraste", {{"metodo", metodo}, {"nv_minimo", nvMin}, {"nv_maximo", nvMax},
                                   {"nd_minimo", ndMin}, {"nd_maximo", ndMax}}));
}

template <class... A> std::vector<double> Expandir(const CImagen& a, int metodo, A... rangos) {
    const Resultado r = Contraste(a, metodo, rangos...);
    EXPECT_EQ(r.imagenes.empty() ? 0 : r.imagenes[0].tipoDato, a.tipoDato);
    return Resultante(r);
}

}  // namespace

TEST(Contraste, LinealYRangoInteractivo) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        // Mean 5, population deviation 2: lo = 1, hi = 9, gain 255 / 8.
        const CImagen a = Imagen(codigo, 2, 4, {2, 4, 4, 4, 5, 5, 7, 9}, "tm1");
        EXPECT_EQ(Expandir(a, kLineal), Guardados(codigo, {31.875, 95.625, 95.625, 95.625, 127.5, 127.5, 191.25, 255}));
        EXPECT_EQ(Contraste(a, kLineal).imagenes.at(0).titulo, "tm1_Expansión_del_Contraste");
        // Below m - 2s the value is negative and wraps (-1.197 -> 255 in a
        // byte); above m + 2s it passes 255 and wraps too (270.05 -> 14).
        const double bajo = -1.1972093641241517, alto = 270.0493335656116;
        const auto vb = Expandir(Imagen(codigo, 2, 3, {0, 13, 13, 13, 13, 20}), kLineal);
        const auto va = Expandir(Imagen(codigo, 2, 3, {10, 10, 10, 10, 10, 20}), kLineal);
        if (codigo == kByte || codigo == kInteger) {
            EXPECT_EQ(vb, Guardados(codigo, {bajo, 138, 138, 138, 138, 213}));
            EXPECT_EQ(va, Guardados(codigo, {98, 98, 98, 98, 98, alto}));
        } else {
            ASSERT_EQ(vb.size() + va.size(), 12u);
            EXPECT_NEAR(vb[0], bajo, 1e-5);
            EXPECT_NEAR(va[5], alto, 1e-4);
        }
        // A constant image goes to NVmin.
        EXPECT_EQ(Expandir(Imagen(codigo, 2, 2, {42, 42, 42, 42}), kLineal, 10, 200), (std::vector<double>{10, 10, 10, 10}));

        // NDmin 10, NDmax 20 onto 0..255: gain 25.5, offset -255; onto
        // 50..100: gain 5, offset 0.
        const CImagen r = Imagen(codigo, 1, 5, {10, 15, 20, 9, 21});
        EXPECT_EQ(Expandir(r, kRango, 0, 255, 10, 20), Guardados(codigo, {0, 127.5, 255, -25.5, 280.5}));
        EXPECT_EQ(Expandir(r, kRango, 50, 100, 10, 20), Guardados(codigo, {50, 75, 100, 45, 105}));
    }
    EXPECT_EQ(Expandir(Imagen(kDouble, 1, 2, {10, 15}), kRango, 0, 255, 10, 20), (std::vector<double>{0, 127.5}));
    // The ND range applies only to its own method.
    const CImagen b = Imagen(kByte, 1, 2, {0, 255});
    EXPECT_EQ(Expandir(b, kLineal, 0, 255, 7, 7), Expandir(b, kLineal));
}

TEST(Contraste, EcualizacionDelHistograma) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        // Every level present equally often: the identity.
        std::vector<double> todos(512);
        for (int i = 0; i < 512; ++i) todos[i] = i % 256;
        EXPECT_EQ(Expandir(Imagen(codigo, 2, 256, todos), kEcualizacion), todos);
        // Only 100 and 101, as many of each: 100 -> 127, 101 -> 255.
        EXPECT_EQ(Expandir(Imagen(codigo, 2, 2, {100, 101, 101, 100}), kEcualizacion),
                  (std::vector<double>{127, 255, 255, 127}));
        // Three samples, the last one counted too: 33.3 % is nearest to
        // level 84 (33.203125), 100 % to level 255.
        EXPECT_EQ(Expandir(Imagen(codigo, 1, 3, {100, 101, 101}), kEcualizacion), (std::vector<double>{84, 255, 255}));
    }
    // The table of the second case.
    std::array<uint64_t, 256> c{};
    c[100] = c[101] = 2;
    const TablaEcualizacion t = CalcularTablaEcualizacion(c, 4);
    EXPECT_EQ(std::make_tuple(t[99].acumulado, t[100].porcentaje, t[100].acumulado, t[101].acumulado),
              std::make_tuple(0.0, 50.0, 50.0, 100.0));
    EXPECT_EQ(std::make_tuple(t[0].ideal, t[127].ideal, t[255].ideal), std::make_tuple(0.390625, 50.0, 100.0));
    EXPECT_EQ(std::make_pair(t[0].nuevo, t[200].nuevo), std::make_pair(0, 255));

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
    EXPECT_EQ(Expandir(Imagen(kReal, 2, 3, {100.75, -0.5, 300.25, -5.5, 101.5, 255.9}), kEcualizacion),
              (std::vector<double>{84, 42, 300.25, -5.5, 127, 170}));
    EXPECT_EQ(Expandir(Imagen(kInteger, 1, 4, {100, 1000, 101, 65535}), kEcualizacion),
              (std::vector<double>{63, 1000, 127, 65535}));
    // The output range is checked but not used.
    EXPECT_EQ(Expandir(Imagen(kByte, 2, 2, {100, 101, 101, 100}), kEcualizacion, 20, 30),
              (std::vector<double>{127, 255, 255, 127}));
}

TEST(Contraste, ComprobacionesEnSuOrdenYLineaDeOrdenes) {
    const Declaracion& d = *BuscarPorOrden("contraste");
    auto comprobar = [&](int metodo, double nvMin, double nvMax, double ndMin, double ndMax) {
        return d.alAceptar(Con("contraste", {{"metodo", metodo}, {"nv_minimo", nvMin}, {"nv_maximo", nvMax},
                                             {"nd_minimo", ndMin}, {"nd_maximo", ndMax}}), {})
            .value_or(Mensaje{})
            .id;
    };
    for (int metodo : {kLineal, kEcualizacion, kRango}) {
        for (auto [nvMin, nvMax] : {std::pair{0, 256}, {-1, 255}, {100, 100}, {200, 100}})
            EXPECT_EQ(comprobar(metodo, nvMin, nvMax, 0, 10), msg::kRangoNv) << metodo << " " << nvMin;
        EXPECT_EQ(comprobar(metodo, 0, 255, 0, 10), 0);
        EXPECT_EQ(comprobar(metodo, 254, 255, 0, 10), 0);
        EXPECT_EQ(comprobar(metodo, 0, 256, 5, 5), msg::kRangoNv);  // both wrong: NV is told first
        EXPECT_EQ(comprobar(metodo, 0, 255, 5, 5), metodo == kRango ? msg::kRangoNd : 0);
        EXPECT_EQ(comprobar(metodo, 0, 255, -1, 5), metodo == kRango ? msg::kRangoNd : 0);
    }
    EXPECT_EQ(comprobar(kRango, 0, 255, 9, 5), msg::kRangoNd);
    EXPECT_EQ(comprobar(kRango, 0, 255, 0, 1), 0);

    CarpetaPrueba dir;
    CImagen a = Imagen(kByte, 2, 2, {100, 101, 101, 100}, "eco");
    const std::string pa = Escribir(a, dir / "eco");
    Espera({"contraste", "--metodo", "lineal", "--nv-max", "256", pa, dir / "x"}, 2,
           "61246: El rango de NV introducido es incorrecto.\n\nSeleccione valores comprendidos entre 0 y 255.\n");
    Espera({"contraste", "--metodo", "rango", "--nd-min", "-1", "--nd-max", "5", pa, dir / "x"}, 2,
           Rechazo(Mensaje::Tabla(msg::kRangoNd)));
    Espera({"contraste", "--metodo", "rango", pa, dir / "x"}, 64, "Uso: orvela-cli contraste");
    Espera({"contraste", "--metodo", "gamma", pa, dir / "x"}, 64, "Uso: orvela-cli contraste");
    EXPECT_FALSE(Existe(dir / "x.ozm"));
    Espera({"contraste", "--metodo", "ecualizacion", pa, dir / "e.ozm"}, 0);
    CImagen e;
    ASSERT_FALSE(e.Cargar(dir / "e.ozm"));
    EXPECT_EQ(Muestrario(e), (std::vector<double>{127, 255, 255, 127}));
    // --nd-min and --nd-max are ignored outside the range method.
    Espera({"contraste", "--metodo", "lineal", "--nd-min", "9", "--nd-max", "9", pa, dir / "l"}, 0);
}

TEST(Contraste, TablaDeValoresIgualAlCalculoPorMuestra) {
    // Images that can hold every value are mapped through a table; their
    // two halves, each too small for it, sample by sample.
    for (int codigo : {kByte, kInteger}) {
        const long n = codigo == kByte ? 256 : 65536;
        std::vector<double> v(n);
        for (long i = 0; i < n; ++i) v[i] = (i * 37) % n;
        auto partes = Expandir(Imagen(codigo, 1, n / 2, {v.begin(), v.begin() + n / 2}), kRango, 3, 250, 17, 90);
        const auto resto = Expandir(Imagen(codigo, 1, n / 2, {v.begin() + n / 2, v.end()}), kRango, 3, 250, 17, 90);
        partes.insert(partes.end(), resto.begin(), resto.end());
        EXPECT_EQ(Expandir(Imagen(codigo, 1, n, v), kRango, 3, 250, 17, 90), partes) << codigo;
    }
}

TEST(Contraste, EcualizacionDeLaBandaLandsatIgualAlCalculoDirecto) {
    if (Landsat().empty()) GTEST_SKIP() << "sin datos Landsat";
    CImagen b;
    ASSERT_FALSE(b.Cargar(Landsat() + "/tm4.ozm"));
    const auto x = b.pixeles.Como<uint8_t>();
    const double n = static_cast<double>(x.size());
    // One pass over the image per level, then the nearest ideal level.
    double acumulado = 0, nuevo[256];
    for (int k = 0; k < 256; ++k) {
        acumulado += static_cast<double>(std::count(x.begin(), x.end(), k)) / n * 100;
        double ideal = 0, mejor = 1e300;
        for (int j = 0; j < 256; ++j) {
            ideal += n / (n * 256) * 100;
            if (std::fabs(acumulado - ideal) < mejor) mejor = std::fabs(acumulado - ideal), nuevo[k] = j;
        }
    }
    const auto ve = Expandir(b, kEcualizacion);
    ASSERT_EQ(ve.size(), x.size());
    std::size_t distintos = 0;
    for (std::size_t i = 0; i < x.size(); ++i) distintos += ve[i] != nuevo[x[i]];
    EXPECT_EQ(distintos, 0u);
}
