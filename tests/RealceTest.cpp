// Display stretch: the limits of each choice and the palette entries they
// give, the same in the four sample types; the colours of a composite.
#include "Prueba.h"
#include "image/Visualizacion.h"

namespace orvela::prueba {
namespace {

struct CasoRealce {
    Realce realce;
    std::vector<double> muestras;
    double bajo, alto;
    std::vector<uint8_t> entradas;
};

// Hand-worked: step = (alto - bajo) / 256, entry = (sample - bajo) / step
// truncated, 255 from the high limit on.
const CasoRealce kCasos[] = {
    // 10..110 over 256 entries: step 0.390625; 20 -> 25.6, 30 -> 51.2.
    {Realce::MinimoMaximo, {10, 20, 30, 110}, 10, 110, {0, 25, 51, 255}},
    // Mean 25, population deviation sqrt(125) = 11.1803: limits 2.6393 and
    // 47.3607, step 0.174693; 10 -> 42.13, 20 -> 99.38, 30 -> 156.62, 40 -> 213.86.
    {Realce::Desviaciones, {10, 20, 30, 40}, 25 - 2 * std::sqrt(125.0), 25 + 2 * std::sqrt(125.0), {42, 99, 156, 213}},
};

TEST(Realce, LimitesYEntradasEnLosCuatroTipos) {
    for (const CasoRealce& c : kCasos)
        for (int tipo : kTipos) {
            SCOPED_TRACE(std::string(NombreRealce(c.realce)) + NombreDeCodigo(tipo));
            const Muestras m = MuestrasDe(tipo, c.muestras);
            const LimitesRealce l = CalcularRealce(m, c.realce);
            ASSERT_TRUE(l.valido);
            EXPECT_NEAR(l.bajo, c.bajo, 1e-9);
            EXPECT_NEAR(l.alto, c.alto, 1e-9);
            EXPECT_EQ(IndicesRealce(m, c.realce), c.entradas);
        }
}

// 2 % linear over 0..99 in a shuffled order: k = 2, the limits are the
// samples of rank 2 and 97; with fewer than 50 samples k is 0 and the
// limits are the minimum and maximum. NaN samples are not counted.
TEST(Realce, LinealDosPorCiento) {
    std::vector<double> v(100);
    for (int i = 0; i < 100; ++i) v[i] = (i * 37) % 100;
    for (int tipo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(tipo));
        const LimitesRealce l = CalcularRealce(MuestrasDe(tipo, v), Realce::Lineal2);
        EXPECT_EQ(l.bajo, 2);
        EXPECT_EQ(l.alto, 97);
        const std::vector<uint8_t> e = IndicesRealce(MuestrasDe(tipo, {0, 2, 50, 97, 99}), Realce::Lineal2);
        // 5 samples: k = 0, limits 0 and 99, step 0.38672.
        EXPECT_EQ(e, (std::vector<uint8_t>{0, 5, 129, 250, 255}));
    }
    const std::vector<double> conNan{std::nan(""), 4, 8, std::nan("")};
    const LimitesRealce l = CalcularRealce(MuestrasDe(kReal, conNan), Realce::Lineal2);
    EXPECT_EQ(l.bajo, 4);
    EXPECT_EQ(l.alto, 8);
}

// None is the window's own conversion: a byte sample is its entry, the
// other types spread between their minimum and maximum. A constant band
// under any stretch is entry 0 (but for a byte band shown as it is); the
// samples are never touched.
TEST(Realce, NingunoYBandaConstante) {
    const Muestras b = MuestrasDe(kByte, {3, 200, 7});
    EXPECT_EQ(IndicesRealce(b, Realce::Ninguno), (std::vector<uint8_t>{3, 200, 7}));
    const LimitesRealce lb = CalcularRealce(b, Realce::Ninguno);
    EXPECT_EQ(lb.bajo, 0);
    EXPECT_EQ(lb.alto, 255);
    EXPECT_EQ(IndicesRealce(b, Realce::MinimoMaximo), (std::vector<uint8_t>{0, 255, 5}));  // step 0.7695
    for (int tipo : kTipos)
        for (Realce r : kRealces) {
            const Muestras m = MuestrasDe(tipo, {9, 9, 9});
            const uint8_t e = tipo == kByte && r == Realce::Ninguno ? 9 : 0;  // a byte is its own entry
            EXPECT_EQ(IndicesRealce(m, r), (std::vector<uint8_t>{e, e, e})) << NombreRealce(r);
            EXPECT_EQ(Muestrario(m), (std::vector<double>{9, 9, 9}));
        }
    EXPECT_FALSE(CalcularRealce(Muestras(), Realce::MinimoMaximo).valido);
}

TEST(Realce, ColoresDeUnaComposicion) {
    ComposicionColor c{1, 2, {255, 1}, {0, 2}, {16, 3}};
    EXPECT_EQ(ColoresComposicion(c), (std::vector<uint32_t>{0xFFFF0010u, 0xFF010203u}));
    c.azul.pop_back();
    EXPECT_FALSE(c.Valida());
    EXPECT_TRUE(ColoresComposicion(c).empty());
}

}  // namespace
}  // namespace orvela::prueba
