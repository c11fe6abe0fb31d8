// Palette files, "Crear paleta" and the legend file of a classified image.
#include <gtest/gtest.h>

#include <set>

#include "image/Leyenda.h"
#include "image/Paleta.h"
#include "tests/CarpetaPrueba.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

std::array<uint8_t, 3> Entrada(const Paleta& p, int i) { return {p.rojo[i], p.verde[i], p.azul[i]}; }

std::array<int, 16> Niveles(std::initializer_list<std::pair<int, int>> dados) {
    std::array<int, 16> n;
    n.fill(-1);
    for (auto [color, nivel] : dados) n[color] = nivel;
    return n;
}

}  // namespace

// ---------------------------------------------------------------------------
// Palette files

TEST(Paleta, LecturaEntradaAEntrada) {
    CarpetaPrueba dir;
    // The first number is ignored, colours keep their low 8 bits, and the
    // four numbers of an entry may spread over lines.
    EscribirFichero(dir / "a.pal", "7 300 -1 2\n0 1 2 3\n5 10\n20\r\n30\n9 9 9 x\n1 1 1 1\n");
    Paleta p;
    p.rojo.fill(77);
    ASSERT_EQ(CargarPaletaFichero(dir / "a.pal", p), kPaletaPersonalizada);
    EXPECT_EQ(Entrada(p, 0), (std::array<uint8_t, 3>{44, 255, 2}));
    EXPECT_EQ(Entrada(p, 1), (std::array<uint8_t, 3>{1, 2, 3}));
    EXPECT_EQ(Entrada(p, 2), (std::array<uint8_t, 3>{10, 20, 30}));
    // Reading stops at the first entry that does not read whole.
    EXPECT_EQ(Entrada(p, 3), (std::array<uint8_t, 3>{0, 0, 0}));
    EXPECT_EQ(Entrada(p, 4), (std::array<uint8_t, 3>{0, 0, 0}));

    // More than 256 entries: the first 256 are taken.
    std::string largo;
    for (int i = 0; i < 1000; ++i) largo += "0 " + std::to_string(i) + " 0 0\n";
    EscribirFichero(dir / "b.pal", largo);
    ASSERT_EQ(CargarPaletaFichero(dir / "b.pal", p), kPaletaPersonalizada);
    EXPECT_EQ(p.rojo[255], 255);
    EXPECT_EQ(p.rojo[1], 1);
}

TEST(Paleta, FicherosQueNoSonPaletas) {
    CarpetaPrueba dir;
    Paleta p;
    p.verde.fill(5);
    EscribirFichero(dir / "vacia.pal", "");
    EscribirFichero(dir / "texto.pal", "Paleta de colores\n1 2 3 4\n");
    EscribirFichero(dir / "binaria.pal", std::string("\x89PNG\r\n\x1a\n\0\0\0", 11));
    EXPECT_EQ(CargarPaletaFichero(dir / "vacia.pal", p), -1);
    EXPECT_EQ(CargarPaletaFichero(dir / "texto.pal", p), -1);
    EXPECT_EQ(CargarPaletaFichero(dir / "binaria.pal", p), -1);
    EXPECT_EQ(CargarPaletaFichero(dir / "no_existe.pal", p), -1);
    EXPECT_EQ(p.verde[0], 5);  // left as it was

    EXPECT_EQ(CargarPaleta(2, dir.Ruta(), "", p), -1);  // no "Paletas" folder
    EXPECT_EQ(CargarPaleta(7, ORVELA_BIN, "", p), -1);
    EXPECT_EQ(CargarPaleta(-1, ORVELA_BIN, "", p), -1);
    EscribirFichero(dir / "mia.pal", "0 1 2 3\n");
    EXPECT_EQ(CargarPaleta(kPaletaPersonalizada, "", dir / "mia.pal", p), kPaletaPersonalizada);
    EXPECT_EQ(Entrada(p, 0), (std::array<uint8_t, 3>{1, 2, 3}));
}

TEST(Paleta, LasSeisPaletasDelPrograma) {
    const char* esperados[] = {"Color256.PAL", "Qualital256.PAL", "Gris256.PAL",
                               "Color16.PAL",  "Qualital16.PAL",  "Gris16.PAL"};
    for (int codigo = 0; codigo < 6; ++codigo) {
        EXPECT_STREQ(FicheroPaleta(codigo), esperados[codigo]);
        const std::string texto = LeerFichero(std::string(ORVELA_BIN) + "/Paletas/" + esperados[codigo]);
        EXPECT_EQ(std::count(texto.begin(), texto.end(), '\n'), 256) << esperados[codigo];
        EXPECT_EQ(texto.find('\r'), std::string::npos);
    }
    EXPECT_EQ(FicheroPaleta(6), nullptr);
    EXPECT_STREQ(NombreOpcionPaleta(0), "Cuantitativa 256");
    EXPECT_STREQ(NombreOpcionPaleta(4), "Cualitativa 16");
    EXPECT_STREQ(NombreOpcionPaleta(6), "Paleta personalizada");

    Paleta p[6];
    for (int codigo = 0; codigo < 6; ++codigo) ASSERT_EQ(CargarPaleta(codigo, ORVELA_BIN, "", p[codigo]), codigo);
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(Entrada(p[2], i), (std::array<uint8_t, 3>{uint8_t(i), uint8_t(i), uint8_t(i)}));
        const auto g = static_cast<uint8_t>(i / 16 * 17);
        EXPECT_EQ(Entrada(p[5], i), (std::array<uint8_t, 3>{g, g, g}));
        // The 16-level palettes change only every 16 levels.
        for (int codigo : {3, 4, 5}) {
            if (i % 16 != 0) {
                EXPECT_EQ(Entrada(p[codigo], i), Entrada(p[codigo], i - 1)) << codigo << " " << i;
            }
        }
    }
    std::set<std::array<uint8_t, 3>> color256, color16, cualitativa;
    for (int i = 0; i < 256; ++i) color256.insert(Entrada(p[0], i));
    for (int i = 0; i < 256; i += 16) color16.insert(Entrada(p[3], i));
    for (int i = 1; i <= 16; ++i) cualitativa.insert(Entrada(p[1], i));
    EXPECT_GT(color256.size(), 200u);  // a ramp, not a few steps
    EXPECT_EQ(color16.size(), 16u);
    EXPECT_EQ(cualitativa.size(), 16u);  // the first classes are told apart
    // Neighbouring classes of the qualitative palette differ clearly.
    for (int i = 1; i < 16; ++i) {
        const auto a = Entrada(p[1], i), b = Entrada(p[1], i + 1);
        EXPECT_GT(std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]), 100) << i;
    }
}

// ---------------------------------------------------------------------------
// "Crear paleta"

TEST(CrearPaleta, ComprobacionesEnSuOrden) {
    auto id = [](const std::array<int, 16>& n) { return ComprobarNivelesPaleta(n).value_or(Mensaje{}).id; };
    EXPECT_EQ(id(Niveles({{4, 256}})), msg::kColoresSinNd);
    EXPECT_EQ(id(Niveles({{4, 256}, {9, 256}})), msg::kMismoNdColores);  // before "all unused"
    EXPECT_EQ(id(Niveles({{0, 5}, {1, 5}, {2, 256}})), msg::kMismoNdColores);
    EXPECT_EQ(id(Niveles({{0, 5}, {1, 6}})), msg::kSinColorDefecto);
    EXPECT_EQ(id(Niveles({})), msg::kColoresSinNd);
    EXPECT_FALSE(ComprobarNivelesPaleta(Niveles({{3, 10}, {7, 256}})));
    EXPECT_FALSE(ComprobarNivelesPaleta(Niveles({{0, 0}, {15, 255}, {8, 256}})));
}

TEST(CrearPaleta, FicheroCreado) {
    EXPECT_EQ(kColoresCrearPaleta[9], (std::array<uint8_t, 3>{0, 0, 0}));
    EXPECT_EQ(kColoresCrearPaleta[12], (std::array<uint8_t, 3>{0, 0, 0}));
    EXPECT_EQ(kColoresCrearPaleta[15], (std::array<uint8_t, 3>{192, 192, 192}));

    // Level 10 gets the first of the two colours, every other level the default.
    const std::string t = TextoPaletaCreada(Niveles({{3, 10}, {7, 256}}));
    std::string esperado;
    for (int i = 0; i < 256; ++i) esperado += std::to_string(i) + (i == 10 ? " 255 255 0\n" : " 0 255 255\n");
    EXPECT_EQ(t, esperado);

    CarpetaPrueba dir;
    EscribirFichero(dir / "c.pal", TextoPaletaCreada(Niveles({{0, 0}, {1, 1}, {13, 255}, {2, 256}})));
    Paleta p;
    ASSERT_EQ(CargarPaletaFichero(dir / "c.pal", p), kPaletaPersonalizada);
    EXPECT_EQ(Entrada(p, 0), kColoresCrearPaleta[0]);
    EXPECT_EQ(Entrada(p, 1), kColoresCrearPaleta[1]);
    EXPECT_EQ(Entrada(p, 2), kColoresCrearPaleta[2]);
    EXPECT_EQ(Entrada(p, 254), kColoresCrearPaleta[2]);
    EXPECT_EQ(Entrada(p, 255), kColoresCrearPaleta[13]);
}

// ---------------------------------------------------------------------------
// Legend file

TEST(Leyenda, EscrituraYLasDosLecturas) {
    CarpetaPrueba dir;
    EXPECT_EQ(RutaLeyenda("/datos/cultivos.ozm"), "/datos/cultivosLeyenda.txt");
    const std::string ruta = dir / "cultivos.ozm";
    ASSERT_TRUE(EscribirLeyenda(ruta, {{"Agua", 1}, {"Olivar_Añejo", 200}, {"Agua2", 1}}));
    EXPECT_EQ(LeerFichero(dir / "cultivosLeyenda.txt"),
              "3\nAgua\nND Clase:1\n\nOlivar_A\xF1" "ejo\nND Clase:200\n\nAgua2\nND Clase:1\n\n");

    for (const auto& leida : {LeerLeyendaVentana(ruta), LeerLeyendaConfusion(ruta)}) {
        ASSERT_TRUE(leida);
        ASSERT_EQ(leida->size(), 3u);
        EXPECT_EQ((*leida)[1].nombre, "Olivar_Añejo");
        EXPECT_EQ((*leida)[1].nd, 200.0);
        EXPECT_EQ((*leida)[2].nd, 1.0);  // two classes may share an ND
    }
    EXPECT_FALSE(LeerLeyendaVentana(dir / "otra.ozm"));
    EXPECT_FALSE(LeerLeyendaConfusion(dir / "otra.ozm"));
}

TEST(Leyenda, NombreConBlancoDesincroniza) {
    CarpetaPrueba dir;
    const std::string ruta = dir / "c.ozm";
    ASSERT_TRUE(EscribirLeyenda(ruta, {{"agua limpia", 1}, {"Suelo", 2}, {"Urbano", 3}}));
    // The confusion reader takes "limpia" for the next class and runs one
    // class behind from there on.
    const auto c = LeerLeyendaConfusion(ruta);
    ASSERT_TRUE(c);
    ASSERT_EQ(c->size(), 3u);
    EXPECT_EQ((*c)[0].nombre, "agua");
    EXPECT_EQ((*c)[1].nombre, "limpia");
    EXPECT_EQ((*c)[1].nd, 1.0);
    EXPECT_EQ((*c)[2].nombre, "Suelo");
    EXPECT_EQ((*c)[2].nd, 2.0);
    // The legend window skips to the colon, so only the name is cut.
    const auto v = LeerLeyendaVentana(ruta);
    ASSERT_TRUE(v);
    ASSERT_EQ(v->size(), 3u);
    EXPECT_EQ((*v)[0].nombre, "agua");
    EXPECT_EQ((*v)[2].nombre, "Urbano");
    EXPECT_EQ((*v)[2].nd, 3.0);
}

TEST(Leyenda, TextosDeMano) {
    CarpetaPrueba dir;
    EscribirFichero(dir / "aLeyenda.txt", "1\nAgua\nND Clase:3");
    const auto a = LeerLeyendaConfusion(dir / "a.ozm");
    ASSERT_TRUE(a);
    ASSERT_EQ(a->size(), 1u);
    EXPECT_EQ((*a)[0].nd, 3.0);

    EscribirFichero(dir / "bLeyenda.txt", "0\n");
    EXPECT_TRUE(LeerLeyendaVentana(dir / "b.ozm")->empty());
    // A count far beyond what the file holds reads what there is.
    EscribirFichero(dir / "cLeyenda.txt", "2000000000\nAgua\nND Clase:1\n\n");
    EXPECT_EQ(LeerLeyendaVentana(dir / "c.ozm")->size(), 1u);
    EXPECT_LE(LeerLeyendaConfusion(dir / "c.ozm")->size(), 2u);
    EscribirFichero(dir / "dLeyenda.txt", std::string("\0\xff\x01 basura ::: -", 16));
    EXPECT_TRUE(LeerLeyendaVentana(dir / "d.ozm")->empty());
    EXPECT_TRUE(LeerLeyendaConfusion(dir / "d.ozm")->empty());
}
