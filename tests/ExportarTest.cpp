// Export of an image as text, BMP and PNG.
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

// Little-endian number of n bytes, or big-endian 32-bit number, at i.
uint32_t Le(const std::string& s, std::size_t i, int n) {
    uint32_t v = 0;
    for (int k = n - 1; k >= 0; --k) v = (v << 8) | static_cast<uint8_t>(s[i + k]);
    return v;
}
uint32_t Be(const std::string& s, std::size_t i) {
    uint32_t v = 0;
    for (int k = 0; k < 4; ++k) v = (v << 8) | static_cast<uint8_t>(s[i + k]);
    return v;
}

// Bit by bit, to check the writer's table-driven one.
uint32_t CrcLento(const std::string& s) {
    uint32_t c = 0xFFFFFFFFu;
    for (unsigned char b : s) {
        c ^= b;
        for (int k = 0; k < 8; ++k) c = (c >> 1) ^ (0xEDB88320u & (0u - (c & 1u)));
    }
    return ~c;
}

struct Png {
    uint32_t ancho = 0, alto = 0;
    std::string rgb;  // rows without their filter byte
    int trozosIdat = 0;
};

// Reads back a PNG of stored deflate blocks, checking every sum on the way.
Png LeerPng(const std::string& f) {
    Png r;
    EXPECT_EQ(f.substr(0, 8), std::string("\x89PNG\r\n\x1a\n", 8));
    std::string zlib, tipo;
    std::size_t i = 8;
    for (; i + 12 <= f.size() && tipo != "IEND"; i += 12 + Be(f, i)) {
        const uint32_t n = Be(f, i);
        tipo = f.substr(i + 4, 4);
        EXPECT_EQ(Be(f, i + 8 + n), CrcLento(f.substr(i + 4, 4 + n))) << tipo;
        if (tipo == "IHDR") {
            r.ancho = Be(f, i + 8);
            r.alto = Be(f, i + 12);
            EXPECT_EQ(f.substr(i + 16, 5), std::string("\x08\x02\0\0\0", 5));  // 8-bit RGB
        } else if (tipo == "IDAT") {
            zlib += f.substr(i + 8, n);
            ++r.trozosIdat;
        }
    }
    EXPECT_EQ(tipo, "IEND");
    EXPECT_EQ(i, f.size());
    const uint32_t cabecera = zlib.size() > 6 ? Be(zlib, 0) >> 16 : 0;
    EXPECT_EQ(cabecera % 31, 0u);
    EXPECT_EQ(cabecera >> 8 & 0x0F, 8u);  // deflate
    std::string datos;
    std::size_t k = 2;
    for (bool ultimo = false; !ultimo && k + 5 <= zlib.size(); k += 5 + Le(zlib, k + 1, 2)) {
        ultimo = zlib[k] & 1;
        EXPECT_EQ(static_cast<uint8_t>(zlib[k]) >> 1, 0);  // stored block
        EXPECT_EQ(Le(zlib, k + 1, 2) ^ Le(zlib, k + 3, 2), 0xFFFFu);
        datos += zlib.substr(k + 5, Le(zlib, k + 1, 2));
    }
    uint32_t a = 1, b = 0;
    for (unsigned char c : datos) {
        a = (a + c) % 65521;
        b = (b + a) % 65521;
    }
    EXPECT_EQ(k + 4, zlib.size());
    EXPECT_EQ(Be(zlib, k), (b << 16) | a);
    const std::size_t fila = 1 + 3 * static_cast<std::size_t>(r.ancho);
    EXPECT_EQ(datos.size(), fila * r.alto);
    for (std::size_t y = 0; y < r.alto && (y + 1) * fila <= datos.size(); ++y) {
        EXPECT_EQ(datos[y * fila], 0);
        r.rgb += datos.substr(y * fila + 1, fila - 1);
    }
    return r;
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

TEST(Exportar, PngBloquesAlmacenadosYSumas) {
    CarpetaPrueba dir;
    // Large enough for many deflate blocks and more than one IDAT chunk.
    std::vector<double> v(600 * 700);
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = static_cast<uint8_t>((i * 7) ^ (i >> 9));
    const Paleta p = PaletaDePrueba();
    ASSERT_FALSE(ExportarImagen(Imagen(kByte, 600, 700, v), p, dir / "a.png", FormatoImagen::Png));
    const Png png = LeerPng(LeerFichero(dir / "a.png"));
    EXPECT_EQ(std::make_pair(png.ancho, png.alto), std::make_pair(700u, 600u));
    EXPECT_GT(png.trozosIdat, 1);
    ASSERT_EQ(png.rgb.size(), v.size() * 3);
    for (std::size_t i = 0; i < v.size(); i += 997) {
        const auto e = static_cast<uint8_t>(v[i]);
        EXPECT_EQ(png.rgb.substr(3 * i, 3), (std::string{char(p.rojo[e]), char(p.verde[e]), char(p.azul[e])}));
    }
    // Other types go through the display conversion.
    ASSERT_FALSE(ExportarImagen(Imagen(kInteger, 1, 2, {0, 65535}), p, dir / "e.png", FormatoImagen::Png));
    const Png pe = LeerPng(LeerFichero(dir / "e.png"));
    ASSERT_EQ(pe.rgb.size(), 6u);
    EXPECT_EQ((std::pair<uint8_t, uint8_t>(pe.rgb[0], pe.rgb[3])), std::make_pair(p.rojo[0], p.rojo[255]));
}

TEST(Exportar, FicheroQueNoSePuedeCrear) {
    CarpetaPrueba dir;
    const CImagen im = Imagen(kByte, 2, 2, {0, 0, 0, 0});
    const std::string ruta = dir / "no/existe";
    EXPECT_EQ(ExportarImagen(im, Paleta{}, ruta + ".bmp", FormatoImagen::Bmp).value_or(Mensaje{}).id, msg::kNoCreadoBmp);
    EXPECT_EQ(ExportarImagen(im, Paleta{}, ruta + ".png", FormatoImagen::Png),
              Mensaje::Tabla(msg::kNoCreadoFichero, ruta + ".png"));
    EXPECT_EQ(ExportarAscii(im, ruta + ".txt"), Mensaje::Tabla(msg::kNoCreadoFichero, ruta + ".txt"));
    // An existing picture is not touched when the export is refused.
    EscribirFichero(dir / "antigua.png", "antigua");
    CImagen vacia;
    vacia.tipoDato = kByte;
    EXPECT_TRUE(ExportarImagen(vacia, Paleta{}, dir / "antigua.png", FormatoImagen::Png));
    EXPECT_EQ(LeerFichero(dir / "antigua.png"), "antigua");
}
