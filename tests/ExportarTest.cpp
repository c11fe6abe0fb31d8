// Export of an image as text, BMP and PNG.
#include <gtest/gtest.h>

#include <cstring>

#include "tests/CarpetaPrueba.h"
#include "tools/Exportar.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

CImagen Imagen(const char* tipo, uint32_t filas, uint32_t columnas) {
    CImagen im;
    EXPECT_FALSE(im.Iniciar("/e.ozm", "", "e", filas, columnas, tipo, 0, 0, "unknown", "m", {}));
    return im;
}

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
    std::string zlib;
    std::size_t i = 8;
    bool fin = false;
    while (i + 12 <= f.size() && !fin) {
        const uint32_t n = Be(f, i);
        const std::string tipo = f.substr(i + 4, 4);
        EXPECT_EQ(Be(f, i + 8 + n), CrcLento(f.substr(i + 4, 4 + n))) << tipo;
        if (tipo == "IHDR") {
            r.ancho = Be(f, i + 8);
            r.alto = Be(f, i + 12);
            EXPECT_EQ(f.substr(i + 16, 5), std::string("\x08\x02\0\0\0", 5));
        } else if (tipo == "IDAT") {
            zlib += f.substr(i + 8, n);
            ++r.trozosIdat;
        } else if (tipo == "IEND") {
            fin = true;
        }
        i += 12 + n;
    }
    EXPECT_TRUE(fin);
    EXPECT_EQ(i, f.size());
    EXPECT_EQ(((static_cast<uint8_t>(zlib[0]) << 8) | static_cast<uint8_t>(zlib[1])) % 31, 0);
    EXPECT_EQ(static_cast<uint8_t>(zlib[0]) & 0x0F, 8);  // deflate
    std::string datos;
    std::size_t k = 2;
    for (bool ultimo = false; !ultimo && k + 5 <= zlib.size();) {
        const auto cab = static_cast<uint8_t>(zlib[k]);
        ultimo = cab & 1;
        EXPECT_EQ(cab >> 1, 0);  // stored block
        const uint32_t len = Le(zlib, k + 1, 2), nlen = Le(zlib, k + 3, 2);
        EXPECT_EQ(len ^ nlen, 0xFFFFu);
        datos += zlib.substr(k + 5, len);
        k += 5 + len;
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

TEST(ExportarAscii, UnaLineaPorFila) {
    CarpetaPrueba dir;
    CImagen b = Imagen("byte", 2, 3);
    for (int i = 0; i < 6; ++i) b.pixeles.Como<uint8_t>()[i] = static_cast<uint8_t>(i * 50);
    ASSERT_FALSE(ExportarAscii(b, dir / "b.txt"));
    EXPECT_EQ(LeerFichero(dir / "b.txt"), "0 50 100\n150 200 250\n");

    CImagen i = Imagen("integer", 1, 2);
    i.pixeles.Como<uint16_t>()[0] = 65535;
    ASSERT_FALSE(ExportarAscii(i, dir / "i.txt"));
    EXPECT_EQ(LeerFichero(dir / "i.txt"), "65535 0\n");

    CImagen r = Imagen("real", 1, 3);
    r.pixeles.Como<float>()[0] = 0.1f;
    r.pixeles.Como<float>()[1] = -2.5f;
    r.pixeles.Como<float>()[2] = 1e30f;
    ASSERT_FALSE(ExportarAscii(r, dir / "r.txt"));
    EXPECT_EQ(LeerFichero(dir / "r.txt"), "0.1000000015 -2.5 1.000000015e+30\n");

    CImagen d = Imagen("double", 2, 1);
    d.pixeles.Como<double>()[0] = 1234567890123.0;
    d.pixeles.Como<double>()[1] = 1e-20;
    ASSERT_FALSE(ExportarAscii(d, dir / "d.txt"));
    EXPECT_EQ(LeerFichero(dir / "d.txt"), "1.23456789e+12\n1e-20\n");
}

TEST(ExportarBmp, FilasDeAbajoArribaRellenas) {
    CarpetaPrueba dir;
    CImagen im = Imagen("byte", 2, 3);
    const uint8_t v[6] = {1, 2, 3, 4, 5, 6};
    std::memcpy(im.pixeles.Datos(), v, 6);
    const Paleta p = PaletaDePrueba();
    ASSERT_FALSE(ExportarImagen(im, p, dir / "a.bmp", FormatoImagen::Bmp));
    const std::string f = LeerFichero(dir / "a.bmp");
    ASSERT_EQ(f.size(), 54u + 2 * 12);  // rows of 9 bytes padded to 12
    EXPECT_EQ(f.substr(0, 2), "BM");
    EXPECT_EQ(Le(f, 2, 4), f.size());
    EXPECT_EQ(Le(f, 10, 4), 54u);
    EXPECT_EQ(Le(f, 14, 4), 40u);
    EXPECT_EQ(Le(f, 18, 4), 3u);
    EXPECT_EQ(Le(f, 22, 4), 2u);
    EXPECT_EQ(Le(f, 28, 2), 24u);
    // The first row stored is the image's last, blue-green-red.
    for (int x = 0; x < 3; ++x) {
        const int e = v[3 + x];
        EXPECT_EQ(static_cast<uint8_t>(f[54 + 3 * x]), p.azul[e]);
        EXPECT_EQ(static_cast<uint8_t>(f[55 + 3 * x]), p.verde[e]);
        EXPECT_EQ(static_cast<uint8_t>(f[56 + 3 * x]), p.rojo[e]);
    }
    EXPECT_EQ(f.substr(63, 3), std::string(3, '\0'));
    EXPECT_EQ(static_cast<uint8_t>(f[66 + 3 * 2 + 2]), p.rojo[v[2]]);
}

TEST(ExportarPng, BloquesAlmacenadosYSumas) {
    CarpetaPrueba dir;
    // Large enough for many deflate blocks and more than one IDAT chunk.
    CImagen im = Imagen("byte", 600, 700);
    auto d = im.pixeles.Como<uint8_t>();
    for (std::size_t i = 0; i < d.size(); ++i) d[i] = static_cast<uint8_t>((i * 7) ^ (i >> 9));
    const Paleta p = PaletaDePrueba();
    ASSERT_FALSE(ExportarImagen(im, p, dir / "a.png", FormatoImagen::Png));
    const Png png = LeerPng(LeerFichero(dir / "a.png"));
    EXPECT_EQ(png.ancho, 700u);
    EXPECT_EQ(png.alto, 600u);
    EXPECT_GT(png.trozosIdat, 1);
    ASSERT_EQ(png.rgb.size(), d.size() * 3);
    for (std::size_t i = 0; i < d.size(); i += 997) {
        EXPECT_EQ(static_cast<uint8_t>(png.rgb[3 * i]), p.rojo[d[i]]);
        EXPECT_EQ(static_cast<uint8_t>(png.rgb[3 * i + 1]), p.verde[d[i]]);
        EXPECT_EQ(static_cast<uint8_t>(png.rgb[3 * i + 2]), p.azul[d[i]]);
    }

    // Other types go through the display conversion.
    CImagen e = Imagen("integer", 1, 2);
    e.pixeles.Como<uint16_t>()[1] = 65535;
    ASSERT_FALSE(ExportarImagen(e, p, dir / "e.png", FormatoImagen::Png));
    const Png pe = LeerPng(LeerFichero(dir / "e.png"));
    ASSERT_EQ(pe.rgb.size(), 6u);
    EXPECT_EQ(static_cast<uint8_t>(pe.rgb[0]), p.rojo[0]);
    EXPECT_EQ(static_cast<uint8_t>(pe.rgb[3]), p.rojo[255]);
}

TEST(Exportar, FicheroQueNoSePuedeCrear) {
    CarpetaPrueba dir;
    CImagen im = Imagen("byte", 2, 2);
    const std::string ruta = dir / "no/existe";
    auto e = ExportarImagen(im, Paleta{}, ruta + ".bmp", FormatoImagen::Bmp);
    ASSERT_TRUE(e);
    EXPECT_EQ(e->id, msg::kNoCreadoBmp);
    e = ExportarImagen(im, Paleta{}, ruta + ".png", FormatoImagen::Png);
    ASSERT_TRUE(e);
    EXPECT_EQ(*e, Mensaje::Tabla(msg::kNoCreadoFichero, ruta + ".png"));
    e = ExportarAscii(im, ruta + ".txt");
    ASSERT_TRUE(e);
    EXPECT_EQ(*e, Mensaje::Tabla(msg::kNoCreadoFichero, ruta + ".txt"));

    // An existing picture is not touched when the export is refused.
    EscribirFichero(dir / "antigua.png", "antigua");
    CImagen vacia;
    vacia.tipoDato = kByte;
    EXPECT_TRUE(ExportarImagen(vacia, Paleta{}, dir / "antigua.png", FormatoImagen::Png));
    EXPECT_EQ(LeerFichero(dir / "antigua.png"), "antigua");
}
