// Export of an image as text, BMP and PNG.
#include "image/FicheroSeguro.h"
#include "image/Png.h"
#include "tests/LeerPng.h"
#include "tests/Prueba.h"
#include "tools/Exportar.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

// A palette whose red, green and blue tell the entry apart and differ.
Paleta PaletaDePrueba() {
    Paleta p;
    for (int i = 0; i < 256; ++i) {
        p.rojo[i] = static_cast<uint8_t>(i);
        p.verde[i] = static_cast<uint8_t>(255 - i);
        p.azul[i] = static_cast<uint8_t>(i ^ 0x5A);
    }
    return p;
}

// Little-endian number of n bytes at i.
uint32_t Le(const std::string& s, std::size_t i, int n) {
    uint32_t v = 0;
    for (int k = n - 1; k >= 0; --k) v = (v << 8) | static_cast<uint8_t>(s[i + k]);
    return v;
}

}  // namespace

TEST(Exportar, AsciiUnaLineaPorFila) {
    CarpetaPrueba dir;
    const std::tuple<int, long, long, std::vector<double>, const char*> casos[] = {
        {kByte, 2, 3, {0, 50, 100, 150, 200, 250}, "0 50 100\n150 200 250\n"},
        {kInteger, 1, 2, {65535, 0}, "65535 0\n"},
        {kReal, 1, 3, {0.1f, -2.5, 1e30f}, "0.1000000015 -2.5 1.000000015e+30\n"},
        {kDouble, 2, 1, {1234567890123.0, 1e-20}, "1.23456789e+12\n1e-20\n"},
    };
    for (const auto& [codigo, filas, columnas, v, texto] : casos) {
        ASSERT_FALSE(ExportarAscii(Imagen(codigo, filas, columnas, v), dir / "x.txt"));
        EXPECT_EQ(LeerFichero(dir / "x.txt"), texto);
    }
}

TEST(Exportar, BmpFilasDeAbajoArribaRellenas) {
    CarpetaPrueba dir;
    const Paleta p = PaletaDePrueba();
    ASSERT_FALSE(ExportarImagen(Imagen(kByte, 2, 3, {1, 2, 3, 4, 5, 6}), p, dir / "a.bmp", FormatoImagen::Bmp));
    const std::string f = LeerFichero(dir / "a.bmp");
    ASSERT_EQ(f.size(), 54u + 2 * 12);  // rows of 9 bytes padded to 12
    EXPECT_EQ(f.substr(0, 2), "BM");
    const std::pair<int, uint32_t> campos[] = {{2, static_cast<uint32_t>(f.size())}, {10, 54}, {14, 40}, {18, 3}, {22, 2}};
    for (const auto& [en, valor] : campos) EXPECT_EQ(Le(f, en, 4), valor) << en;
    EXPECT_EQ(Le(f, 28, 2), 24u);
    // The first row stored is the image's last, blue-green-red, then padding.
    std::string filas;
    for (int e : {4, 5, 6, -1, 1, 2, 3, -1})
        filas += e < 0 ? std::string(3, '\0') : std::string{char(p.azul[e]), char(p.verde[e]), char(p.rojo[e])};
    EXPECT_EQ(f.substr(54), filas);
}

TEST(Exportar, PngIndexadoComprimidoLeidoPorLibpng) {
    CarpetaPrueba dir;
    // A smooth picture, so that deflate has something to gain.
    std::vector<double> v(600 * 700);
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = static_cast<uint8_t>((i % 700) / 3 + (i / 700) / 5);
    const Paleta p = PaletaDePrueba();
    ASSERT_FALSE(ExportarImagen(Imagen(kByte, 600, 700, v), p, dir / "a.png", FormatoImagen::Png));
    const PngLeido png = LeerPngLibpng(dir / "a.png");
    ASSERT_TRUE(png.ok);
    EXPECT_EQ(std::make_pair(png.ancho, png.alto), std::make_pair(700u, 600u));
    EXPECT_TRUE(png.indexado);
    EXPECT_LT(LeerFichero(dir / "a.png").size(), v.size() / 4);  // compressed
    ASSERT_EQ(png.rgb.size(), v.size() * 3);
    for (std::size_t i = 0; i < v.size(); i += 997) {
        const auto e = static_cast<uint8_t>(v[i]);
        EXPECT_EQ(png.Color(static_cast<uint32_t>(i % 700), static_cast<uint32_t>(i / 700)),
                  (std::array<uint8_t, 3>{p.rojo[e], p.verde[e], p.azul[e]}))
            << i;
    }
    // Other types go through the display conversion.
    ASSERT_FALSE(ExportarImagen(Imagen(kInteger, 1, 2, {0, 65535}), p, dir / "e.png", FormatoImagen::Png));
    const PngLeido pe = LeerPngLibpng(dir / "e.png");
    ASSERT_TRUE(pe.ok);
    ASSERT_EQ(pe.rgb.size(), 6u);
    EXPECT_EQ((std::pair<uint8_t, uint8_t>(pe.rgb[0], pe.rgb[3])), std::make_pair(p.rojo[0], p.rojo[255]));
}

TEST(Exportar, PngQueNoSePuedeEscribirDejaElFicheroComoEstaba) {
    CarpetaPrueba dir;
    const std::string ruta = dir / "a.png";
    ASSERT_TRUE(EscribirFicheroSeguro(ruta, "anterior"));
    // A row that cannot be given stops the writing half way.
    RasterRgb r(4, 3);
    uint32_t filas = 0;
    EXPECT_FALSE(EscribirPngRgb(ruta, 4, 3, [&](uint32_t y) -> const uint8_t* {
        ++filas;
        return y < 2 ? r.Pixel(0, y) : nullptr;
    }));
    EXPECT_EQ(filas, 3u);
    EXPECT_EQ(LeerFichero(ruta), "anterior");
    EXPECT_FALSE(EscribirPng(dir / "no/a.png", r));
    EXPECT_FALSE(EscribirPng(dir / "vacio.png", RasterRgb()));
    EXPECT_FALSE(std::filesystem::exists(dir / "vacio.png"));
}
