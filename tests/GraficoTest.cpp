// Charts drawn into a picture: where points and lines land, how counts
// shade, the ranges and ticks, the font, the cloud of counts of two bands,
// and the PNG file read back through libpng.
#include "tests/LeerPng.h"
#include "tests/Prueba.h"
#include "tools/DibujarGrafico.h"
#include "tools/Fuente.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

using Color = std::array<uint8_t, 3>;

// A 10 x 10 frame with nothing in it but what the test adds.
Grafico Vacio() {
    Grafico g;
    g.xMaximo = g.yMaximo = 10;
    return g;
}

Color En(const GraficoDibujado& d, std::array<double, 2> px) {
    return d.imagen.Color(static_cast<uint32_t>(std::lround(px[0])), static_cast<uint32_t>(std::lround(px[1])));
}

long Contar(const RasterRgb& r, Color c) {
    long n = 0;
    for (uint32_t y = 0; y < r.alto; ++y)
        for (uint32_t x = 0; x < r.ancho; ++x) n += r.Color(x, y) == c;
    return n;
}

}  // namespace

TEST(Grafico, MarcasYRangosRedondos) {
    struct Caso {
        double mn, mx;
        RangoEje rango;
        std::vector<double> marcas;  // of the rounded range
    };
    const Caso casos[] = {
        {0, 255, {0, 300}, {0, 50, 100, 150, 200, 250, 300}},
        {-0.3, 0.7, {-0.4, 0.8}, {-0.4, -0.2, 0, 0.2, 0.4, 0.6, 0.8}},
        {3, 47, {0, 50}, {0, 10, 20, 30, 40, 50}},
        {1000, 1000, {900, 1100}, {900, 950, 1000, 1050, 1100}},
        {0, 0, {-1, 1}, {-1, -0.5, 0, 0.5, 1}},
    };
    for (const Caso& c : casos) {
        const RangoEje r = RangoRedondo(c.mn, c.mx);
        EXPECT_NEAR(r.minimo, c.rango.minimo, 1e-12) << c.mn;
        EXPECT_NEAR(r.maximo, c.rango.maximo, 1e-12) << c.mx;
        const std::vector<double> m = MarcasEje(r.minimo, r.maximo);
        ASSERT_EQ(m.size(), c.marcas.size()) << c.mn;
        for (std::size_t i = 0; i < m.size(); ++i) EXPECT_NEAR(m[i], c.marcas[i], 1e-12);
    }
    EXPECT_TRUE(MarcasEje(1, 0).empty());
}

TEST(Grafico, UnPuntoCaeEnSuCeldaYLosExtremosEnLasEsquinas) {
    Grafico g = Vacio();
    SerieGrafico s;
    s.lado = 1;
    s.color = 0x0000FF;
    s.puntos = {{5, 5}, {0, 0}, {10, 10}, {2.5, 7.5}, {11, 5}};  // the last is outside the range
    g.series.push_back(s);
    const GraficoDibujado d = DibujarGrafico(g);
    const MarcoGrafico& m = d.marco;
    ASSERT_EQ(std::make_pair(d.imagen.ancho, d.imagen.alto), std::make_pair(640u, 480u));
    const Color azul{0, 0, 255};
    EXPECT_EQ(d.imagen.Color(m.x0, m.y0 + m.alto - 1), azul);  // (0, 0): bottom left
    EXPECT_EQ(d.imagen.Color(m.x0 + m.ancho - 1, m.y0), azul);  // (10, 10): top right
    const auto c = m.APixel(5, 5);
    EXPECT_DOUBLE_EQ(c[0], m.x0 + (m.ancho - 1) / 2.0);
    EXPECT_DOUBLE_EQ(c[1], m.y0 + (m.alto - 1) / 2.0);
    EXPECT_EQ(En(d, c), azul);
    EXPECT_EQ(En(d, m.APixel(2.5, 7.5)), azul);
    EXPECT_EQ(Contar(d.imagen, azul), 4);
    // And back: the data under a pixel, nothing outside the plot area.
    const auto v = m.ADatos(c[0], c[1]);
    ASSERT_TRUE(v);
    EXPECT_NEAR((*v)[0], 5, 1e-12);
    EXPECT_NEAR((*v)[1], 5, 1e-12);
    EXPECT_FALSE(m.ADatos(m.x0 - 2, c[1]));
    EXPECT_FALSE(m.ADatos(c[0], m.y0 + m.alto + 1));
    // Points of side 3 fill the 3 x 3 square around their pixel.
    g.series[0].lado = 3;
    g.series[0].puntos = {{5, 5}};
    EXPECT_EQ(Contar(DibujarGrafico(g).imagen, azul), 9);
}

TEST(Grafico, LasCuentasSombreanDeClaroAlColorEntero) {
    Grafico g = Vacio();
    SerieGrafico s;
    s.lado = 1;
    s.color = 0x0000A0;
    s.puntos = {{2, 2, 1}, {5, 5, 100}, {8, 8, 10}};
    g.series.push_back(s);
    const GraficoDibujado d = DibujarGrafico(g);
    // White to the colour: a quarter of the way for one sample, all of it
    // for the fullest point, log(10) / log(100) = half of the rest between.
    EXPECT_EQ(En(d, d.marco.APixel(2, 2)), (Color{191, 191, 231}));
    EXPECT_EQ(En(d, d.marco.APixel(5, 5)), (Color{0, 0, 160}));
    EXPECT_EQ(En(d, d.marco.APixel(8, 8)), (Color{96, 96, 196}));  // f = 0.625
    // Counts all alike: every point has the colour.
    for (auto& p : g.series[0].puntos) p.cuenta = 4;
    EXPECT_EQ(Contar(DibujarGrafico(g).imagen, Color{0, 0, 160}), 3);
}

TEST(Grafico, RectasYPolilineasRecortadasAlMarco) {
    Grafico g = Vacio();
    g.series.push_back(SerieGrafico::Recta(2, 0.5, 0xC80000));  // from (0, 2) to (10, 7)
    SerieGrafico h;
    h.clase = SerieGrafico::Clase::Linea;
    h.color = 0x009600;
    h.puntos = {{-5, 9}, {20, 9}};  // beyond both sides
    g.series.push_back(h);
    h.color = 0x000063;
    h.puntos = {{0, 12}, {10, 30}};  // wholly above
    g.series.push_back(h);
    const GraficoDibujado d = DibujarGrafico(g);
    const MarcoGrafico& m = d.marco;
    EXPECT_EQ(En(d, m.APixel(0, 2)), (Color{200, 0, 0}));
    EXPECT_EQ(En(d, m.APixel(10, 7)), (Color{200, 0, 0}));
    EXPECT_EQ(En(d, m.APixel(5, 4.5)), (Color{200, 0, 0}));
    // One pixel per column for a line less steep than the diagonal.
    EXPECT_EQ(Contar(d.imagen, Color{200, 0, 0}), m.ancho);
    const long fila = std::lround(m.APixel(0, 9)[1]);
    for (int x = m.x0; x < m.x0 + m.ancho; ++x)
        EXPECT_EQ(d.imagen.Color(x, static_cast<uint32_t>(fila)), (Color{0, 150, 0})) << x;
    EXPECT_EQ(Contar(d.imagen, Color{0, 150, 0}), m.ancho);
    EXPECT_EQ(Contar(d.imagen, Color{0, 0, 99}), 0);
}

TEST(Grafico, SinRangoTomaElDeLosDatosRedondeado) {
    Grafico g;
    g.rangoDeLosDatos = true;
    g.series.push_back(SerieGrafico{.puntos = {{3, -2}, {47, 18}}});
    // The straight line counts at both ends of the x range: 0 + 1 * 50.
    g.series.push_back(SerieGrafico::Recta(0, 1));
    const MarcoGrafico m = DibujarGrafico(g).marco;
    EXPECT_EQ((std::pair(m.x.minimo, m.x.maximo)), std::pair(0.0, 50.0));
    EXPECT_EQ((std::pair(m.y.minimo, m.y.maximo)), std::pair(-10.0, 50.0));
    // Nothing to show: the unit square.
    Grafico nada;
    nada.rangoDeLosDatos = true;
    const MarcoGrafico v = DibujarGrafico(nada).marco;
    EXPECT_EQ((std::array{v.x.minimo, v.x.maximo, v.y.minimo, v.y.maximo}), (std::array{0.0, 1.0, 0.0, 1.0}));
    // A range that is not one falls back on the data.
    g.rangoDeLosDatos = false;
    g.xMinimo = g.xMaximo = 5;
    g.yMinimo = -10;
    g.yMaximo = 60;
    const MarcoGrafico w = DibujarGrafico(g).marco;
    EXPECT_EQ((std::array{w.x.minimo, w.x.maximo, w.y.minimo, w.y.maximo}), (std::array{0.0, 50.0, -10.0, 60.0}));
}

TEST(Grafico, TitulosYNumerosConTinta) {
    Grafico g = Vacio();
    g.titulo = "Regresión";
    const GraficoDibujado d = DibujarGrafico(g);
    // The title is drawn at twice the size, 4 pixels per glyph pixel, in
    // the band above the plot area.
    long tinta = 0, pintados = 0;
    for (char32_t c : fuente::Caracteres("Regresión"))
        for (uint8_t fila : fuente::GlifoDe(c)) tinta += std::popcount(fila);
    for (uint32_t y = 0; y < static_cast<uint32_t>(d.marco.y0 - 5); ++y)
        for (uint32_t x = 0; x < d.imagen.ancho; ++x) pintados += d.imagen.Color(x, y) == Color{0, 0, 0};
    EXPECT_EQ(pintados, 4 * tinta);
    // Axis titles take room: the plot area shrinks.
    g.ejeX = "Banda 3";
    g.ejeY = "Banda 4";
    const MarcoGrafico a = DibujarGrafico(g).marco, b = DibujarGrafico(Vacio()).marco;
    EXPECT_GT(a.x0, b.x0);
    EXPECT_LT(a.alto, b.alto - fuente::kLinea);
}

TEST(Grafico, LeyendaDeLasSeriesConNombre) {
    Grafico g = Vacio();
    SerieGrafico perfil;
    perfil.clase = SerieGrafico::Clase::Linea;
    perfil.color = 0x00AA00;
    perfil.puntos = {{0, 1}, {10, 1}};
    g.series.push_back(perfil);
    const long sinNombre = Contar(DibujarGrafico(g).imagen, Color{0, 170, 0});
    // Named, it has a 12-pixel sample in the key, in the top right corner.
    g.series[0].nombre = "Banda 4";
    const GraficoDibujado d = DibujarGrafico(g);
    EXPECT_EQ(Contar(d.imagen, Color{0, 170, 0}), sinNombre + 12);
    const MarcoGrafico& m = d.marco;
    long tintaArriba = 0;
    for (int y = m.y0; y < m.y0 + m.alto / 4; ++y)
        for (int x = m.x0 + m.ancho / 2; x < m.x0 + m.ancho; ++x) tintaArriba += d.imagen.Color(x, y) == Color{0, 0, 0};
    EXPECT_GT(tintaArriba, 0);
}

TEST(Grafico, FuenteConLetrasEspanolas) {
    EXPECT_EQ(fuente::Caracteres("añ¿Ü"), U"añ¿Ü");
    EXPECT_EQ(fuente::Caracteres("a\xFF" "b\xC3"), U"a\uFFFDb\uFFFD");
    EXPECT_EQ(fuente::AnchoTexto("ñu"), 11);
    EXPECT_EQ(fuente::AnchoTexto("ñu", 2), 22);
    EXPECT_EQ(fuente::AnchoTexto(""), 0);
    // Every character of the font has a glyph of its own: a copy left by
    // mistake, or a character that falls back to '?', shows here.
    std::u32string todos = U"áéíóúñüÁÉÍÓÚÑÜ¿¡°";
    for (char32_t c = 0x21; c < 0x7F; ++c) todos += c;
    std::set<fuente::Glifo> vistos;
    for (char32_t c : todos) {
        const auto& glifo = fuente::GlifoDe(c);
        EXPECT_TRUE(vistos.insert(glifo).second) << static_cast<uint32_t>(c);
        EXPECT_NE(glifo, fuente::Glifo{}) << static_cast<uint32_t>(c);
    }
    EXPECT_EQ(fuente::GlifoDe(U'€'), fuente::GlifoDe(U'?'));
    // A vertical text reads upwards: the foot of "l" is on its right.
    RasterRgb r(20, 20, {0, 0, 0});
    fuente::DibujarTexto(r, 0, 19, "l", {255, 255, 255}, 1, true);
    EXPECT_EQ(r.Color(7, 19 - 1), (Color{255, 255, 255}));  // row 7 of the cell, column 1
    EXPECT_EQ(r.Color(1, 19 - 1), (Color{255, 255, 255}));  // row 1, column 1
    EXPECT_EQ(r.Color(7, 19 - 4), (Color{0, 0, 0}));
}

TEST(Grafico, NubeDeCuentasDeDosBandasEnCadaTipo) {
    struct Caso {
        int codigo;
        std::vector<double> x, y;
        std::vector<PuntoGrafico> puntos;  // rows of the grid from the bottom
    };
    const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
    const Caso casos[] = {
        // One cell per value.
        {kByte, {0, 0, 1, 255, 7}, {10, 10, 10, 20, 12}, {{0, 10, 2}, {1, 10, 1}, {7, 12, 1}, {255, 20, 1}}},
        // 65536 values: cells of 256, centred between their values.
        {kInteger, {0, 255, 256, 65535}, {3, 3, 3, 5}, {{127.5, 3, 2}, {383.5, 3, 1}, {65407.5, 5, 1}}},
        // Reals: 256 cells over the span; the maximum in the last one; not
        // a number and infinity left out, even first.
        {kReal, {nan, 0, 0.5, 1, 256, inf}, {1, 0, 0, 0, 2, 1}, {{0.5, 0.00390625, 2}, {1.5, 0.00390625, 1}, {255.5, 1.99609375, 1}}},
        {kDouble, {-1, -1, -1}, {4, 4, 4}, {{-1, 4, 3}}},
    };
    for (const Caso& c : casos) {
        const CImagen x = Imagen(c.codigo, 1, static_cast<long>(c.x.size()), c.x);
        const CImagen y = Imagen(c.codigo, 1, static_cast<long>(c.y.size()), c.y);
        const auto s = NubeDeDispersion(x.pixeles, y.pixeles);
        ASSERT_TRUE(s) << c.codigo;
        ASSERT_EQ(s->puntos.size(), c.puntos.size()) << c.codigo;
        for (std::size_t i = 0; i < c.puntos.size(); ++i) {
            EXPECT_DOUBLE_EQ(s->puntos[i].x, c.puntos[i].x) << c.codigo << " " << i;
            EXPECT_DOUBLE_EQ(s->puntos[i].y, c.puntos[i].y) << c.codigo << " " << i;
            EXPECT_EQ(s->puntos[i].cuenta, c.puntos[i].cuenta) << c.codigo << " " << i;
        }
    }
    const CImagen a = Imagen(kByte, 1, 3, {1, 2, 3}), b = Imagen(kByte, 1, 2, {1, 2});
    EXPECT_FALSE(NubeDeDispersion(a.pixeles, b.pixeles));
}

TEST(Grafico, NubeIgualEnUnNucleoYEnTodos) {
    // Enough samples for many blocks; every sample counted once.
    std::vector<double> vx(3000 * 700), vy(vx.size());
    std::mt19937 azar(7);
    for (std::size_t i = 0; i < vx.size(); ++i) {
        vx[i] = azar() % 1000 * 0.37;
        vy[i] = vx[i] * 0.5 + azar() % 50;
    }
    const CImagen x = Imagen(kReal, 3000, 700, vx), y = Imagen(kInteger, 3000, 700, vy);
    FijarNucleos(1);
    const auto uno = NubeDeDispersion(x.pixeles, y.pixeles);
    FijarNucleos(0);
    const auto todos = NubeDeDispersion(x.pixeles, y.pixeles);
    ASSERT_TRUE(uno && todos);
    uint64_t total = 0;
    for (const auto& p : todos->puntos) total += p.cuenta;
    EXPECT_EQ(total, vx.size());
    ASSERT_EQ(uno->puntos.size(), todos->puntos.size());
    for (std::size_t i = 0; i < uno->puntos.size(); ++i) {
        EXPECT_EQ(uno->puntos[i].cuenta, todos->puntos[i].cuenta);
        EXPECT_EQ(uno->puntos[i].x, todos->puntos[i].x);
    }
    // A cancelled count gives nothing.
    struct Cancelado : Progreso {
        Cancelado() { Cancelar(); }
    } cancelado;
    EXPECT_FALSE(NubeDeDispersion(x.pixeles, y.pixeles, cancelado));
}

TEST(Grafico, PngLeidoPorLibpngIgualAlDibujo) {
    CarpetaPrueba dir;
    Grafico g = Vacio();
    g.titulo = "Perfil ¿año?";
    g.series.push_back(SerieGrafico::Recta(1, 0.8));
    ASSERT_TRUE(EscribirGraficoPng(g, dir / "g.png", 300, 200));
    const PngLeido png = LeerPngLibpng(dir / "g.png");
    ASSERT_TRUE(png.ok);
    EXPECT_FALSE(png.indexado);
    const GraficoDibujado d = DibujarGrafico(g, 300, 200);
    EXPECT_EQ(std::make_pair(png.ancho, png.alto), std::make_pair(300u, 200u));
    EXPECT_TRUE(png.rgb == d.imagen.rgb);
    EXPECT_FALSE(EscribirGraficoPng(g, dir / "no/g.png"));
}

TEST(Grafico, ElResultadoDeUnaOperacionEscribeSuGraficoComoPng) {
    CarpetaPrueba dir;
    Resultado r;
    Grafico g = Vacio();
    g.final = "_Diagrama.png";
    g.series.push_back(SerieGrafico::Recta(1, 0.5));
    r.graficos.push_back(g);
    std::vector<std::string> escritos;
    const auto e = EscribirResultado(r, dir / "tm4", &escritos);
    ASSERT_FALSE(e) << e->Texto();
    EXPECT_EQ(escritos, std::vector<std::string>{dir / "tm4_Diagrama.png"});
    const PngLeido png = LeerPngLibpng(dir / "tm4_Diagrama.png");
    ASSERT_TRUE(png.ok);
    EXPECT_TRUE(png.rgb == DibujarGrafico(g).imagen.rgb);
}
