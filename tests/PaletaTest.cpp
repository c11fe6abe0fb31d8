// Palette files, "Crear paleta" and the legend file of a classified image.
#include "tests/Prueba.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

using Rgb = std::array<uint8_t, 3>;
Rgb Entrada(const Paleta& p, int i) { return {p.rojo[i], p.verde[i], p.azul[i]}; }

std::array<int, 16> Niveles(std::initializer_list<std::pair<int, int>> dados) {
    std::array<int, 16> n;
    n.fill(-1);
    for (auto [color, nivel] : dados) n[color] = nivel;
    return n;
}

}  // namespace

TEST(Paleta, LecturaEntradaAEntrada) {
    CarpetaPrueba dir;
    // The first number is ignored, colours keep their low 8 bits, the four
    // numbers of an entry may spread over lines, and reading stops at the
    // first entry that does not read whole.
    EscribirFichero(dir / "a.pal", "7 300 -1 2\n0 1 2 3\n5 10\n20\r\n30\n9 9 9 x\n1 1 1 1\n");
    Paleta p;
    p.rojo.fill(77);
    ASSERT_EQ(CargarPaletaFichero(dir / "a.pal", p), kPaletaPersonalizada);
    const Rgb esperadas[] = {{44, 255, 2}, {1, 2, 3}, {10, 20, 30}, {0, 0, 0}, {0, 0, 0}};
    for (int i = 0; i < 5; ++i) EXPECT_EQ(Entrada(p, i), esperadas[i]) << i;

    // More than 256 entries: the first 256 are taken.
    std::string largo;
    for (int i = 0; i < 1000; ++i) largo += "0 " + std::to_string(i) + " 0 0\n";
    EscribirFichero(dir / "b.pal", largo);
    ASSERT_EQ(CargarPaletaFichero(dir / "b.pal", p), kPaletaPersonalizada);
    EXPECT_EQ(std::make_pair(p.rojo[1], p.rojo[255]), (std::pair<uint8_t, uint8_t>(1, 255)));

    // Files that are no palette leave it as it was.
    EscribirFichero(dir / "vacia.pal", "");
    EscribirFichero(dir / "texto.pal", "Paleta de colores\n1 2 3 4\n");
    EscribirFichero(dir / "binaria.pal", std::string("\x89PNG\r\n\x1a\n\0\0\0", 11));
    p.verde.fill(5);
    for (const char* f : {"vacia.pal", "texto.pal", "binaria.pal", "no_existe.pal"})
        EXPECT_EQ(CargarPaletaFichero(dir / f, p), -1) << f;
    EXPECT_EQ(p.verde[0], 5);
    EXPECT_EQ(CargarPaleta(2, dir.Ruta(), "", p), -1);  // no "Paletas" folder
    EXPECT_EQ(CargarPaleta(7, ORVELA_BIN, "", p), -1);
    EXPECT_EQ(CargarPaleta(-1, ORVELA_BIN, "", p), -1);
    EXPECT_EQ(CargarPaleta(kPaletaPersonalizada, "", dir / "b.pal", p), kPaletaPersonalizada);
}

TEST(Paleta, LasSeisPaletasDelPrograma) {
    const char* esperados[] = {"Color256.PAL", "Qualital256.PAL", "Gris256.PAL",
                               "Color16.PAL",  "Qualital16.PAL",  "Gris16.PAL"};
    Paleta p[6];
    for (int codigo = 0; codigo < 6; ++codigo) {
        EXPECT_STREQ(FicheroPaleta(codigo), esperados[codigo]);
        const std::string texto = LeerFichero(std::string(ORVELA_BIN) + "/Paletas/" + esperados[codigo]);
        EXPECT_EQ(std::count(texto.begin(), texto.end(), '\n'), 256) << esperados[codigo];
        EXPECT_EQ(texto.find('\r'), std::string::npos);
        ASSERT_EQ(CargarPaleta(codigo, ORVELA_BIN, "", p[codigo]), codigo);
    }
    EXPECT_EQ(FicheroPaleta(6), nullptr);

    std::set<Rgb> color256, color16, cualitativa;
    for (int i = 0; i < 256; ++i) {
        const auto g = static_cast<uint8_t>(i), g16 = static_cast<uint8_t>(i / 16 * 17);
        EXPECT_EQ(Entrada(p[2], i), (Rgb{g, g, g}));
        EXPECT_EQ(Entrada(p[5], i), (Rgb{g16, g16, g16}));
        // The 16-level palettes change only every 16 levels.
        for (int codigo : {3, 4, 5})
            EXPECT_TRUE(i % 16 == 0 || Entrada(p[codigo], i) == Entrada(p[codigo], i - 1)) << codigo << " " << i;
        color256.insert(Entrada(p[0], i));
        if (i % 16 == 0) color16.insert(Entrada(p[3], i));
    }
    for (int i = 1; i <= 16; ++i) cualitativa.insert(Entrada(p[1], i));
    EXPECT_GT(color256.size(), 200u);  // a ramp, not a few steps
    EXPECT_EQ(color16.size(), 16u);
    EXPECT_EQ(cualitativa.size(), 16u);  // the first classes are told apart
}

TEST(CrearPaleta, ComprobacionesEnSuOrdenYFichero) {
    auto id = [](const std::array<int, 16>& n) { return ComprobarNivelesPaleta(n).value_or(Mensaje{}).id; };
    EXPECT_EQ(id(Niveles({{4, 256}})), msg::kColoresSinNd);
    EXPECT_EQ(id(Niveles({{4, 256}, {9, 256}})), msg::kMismoNdColores);  // before "all unused"
    EXPECT_EQ(id(Niveles({{0, 5}, {1, 5}, {2, 256}})), msg::kMismoNdColores);
    EXPECT_EQ(id(Niveles({{0, 5}, {1, 6}})), msg::kSinColorDefecto);
    EXPECT_EQ(id(Niveles({{0, 5}, {1, 5}})), msg::kMismoNdColores);  // before "no default"
    EXPECT_EQ(id(Niveles({})), msg::kColoresSinNd);
    EXPECT_EQ(id(Niveles({{3, 10}, {7, 256}})), 0);
    EXPECT_EQ(id(Niveles({{0, 0}, {15, 255}, {8, 256}})), 0);

    // Level 10 gets the first of the two colours, every other level the default.
    std::string esperado;
    for (int i = 0; i < 256; ++i) esperado += std::to_string(i) + (i == 10 ? " 255 255 0\n" : " 0 255 255\n");
    EXPECT_EQ(TextoPaletaCreada(Niveles({{3, 10}, {7, 256}})), esperado);
    CarpetaPrueba dir;
    EscribirFichero(dir / "c.pal", TextoPaletaCreada(Niveles({{0, 0}, {1, 1}, {13, 255}, {2, 256}})));
    Paleta p;
    ASSERT_EQ(CargarPaletaFichero(dir / "c.pal", p), kPaletaPersonalizada);
    for (auto [nivel, color] : {std::pair{0, 0}, {1, 1}, {2, 2}, {254, 2}, {255, 13}})
        EXPECT_EQ(Entrada(p, nivel), kColoresCrearPaleta[color]) << nivel;
}

TEST(Leyenda, EscrituraYLasDosLecturas) {
    CarpetaPrueba dir;
    EXPECT_EQ(RutaLeyenda("/datos/cultivos.ozm"), "/datos/cultivosLeyenda.txt");
    const std::string ruta = dir / "cultivos.ozm";
    ASSERT_TRUE(EscribirLeyenda(ruta, {{"Agua", 1}, {"Olivar_Añejo", 200}, {"Agua2", 1}}));
    EXPECT_EQ(LeerFichero(dir / "cultivosLeyenda.txt"),
              "3\nAgua\nND Clase:1\n\nOlivar_A\xF1" "ejo\nND Clase:200\n\nAgua2\nND Clase:1\n\n");
    const Clases escrita = {{"Agua", 1}, {"Olivar_Añejo", 200}, {"Agua2", 1}};
    EXPECT_EQ(Pares(LeerLeyendaVentana(ruta)), escrita);  // two classes may share an ND
    EXPECT_EQ(Pares(LeerLeyendaConfusion(ruta)), escrita);
    EXPECT_FALSE(LeerLeyendaVentana(dir / "otra.ozm"));
    EXPECT_FALSE(LeerLeyendaConfusion(dir / "otra.ozm"));

    // A name with a blank: the confusion reader takes "limpia" for the next
    // class and runs one class behind; the legend window skips to the
    // colon, so only the name is cut.
    ASSERT_TRUE(EscribirLeyenda(dir / "c.ozm", {{"agua limpia", 1}, {"Suelo", 2}, {"Urbano", 3}}));
    EXPECT_EQ(Pares(LeerLeyendaConfusion(dir / "c.ozm")), (Clases{{"agua", 0}, {"limpia", 1}, {"Suelo", 2}}));
    EXPECT_EQ(Pares(LeerLeyendaVentana(dir / "c.ozm")), (Clases{{"agua", 1}, {"Suelo", 2}, {"Urbano", 3}}));

    // Texts written by hand.
    EscribirFichero(dir / "aLeyenda.txt", "1\nAgua\nND Clase:3");
    EXPECT_EQ(Pares(LeerLeyendaConfusion(dir / "a.ozm")), (Clases{{"Agua", 3}}));
    EscribirFichero(dir / "bLeyenda.txt", "0\n");
    EXPECT_TRUE(Pares(LeerLeyendaVentana(dir / "b.ozm")).empty());
    // A count far beyond what the file holds reads what there is.
    EscribirFichero(dir / "cLeyenda.txt", "2000000000\nAgua\nND Clase:1\n\n");
    EXPECT_EQ(LeerLeyendaVentana(dir / "c.ozm")->size(), 1u);
    EXPECT_LE(LeerLeyendaConfusion(dir / "c.ozm")->size(), 2u);
    EscribirFichero(dir / "dLeyenda.txt", std::string("\0\xff\x01 basura ::: -", 16));
    EXPECT_TRUE(Pares(LeerLeyendaVentana(dir / "d.ozm")).empty());
    EXPECT_TRUE(Pares(LeerLeyendaConfusion(dir / "d.ozm")).empty());
}

// Classes of a classified image: a palette that tells them apart is kept;
// one that gives two classes nearly the same colour gives way, for every
// class entry, to the set of distinct colours in legend order (an entry
// listed twice keeps its first colour; entries of no class are left
// alone). The set stays distinct well past the sixteen qualitative colours.
TEST(Leyenda, ClasesEnColoresDistintos) {
    Paleta gris;
    for (int i = 0; i < 256; ++i) gris.rojo[i] = gris.verde[i] = gris.azul[i] = static_cast<uint8_t>(i);
    Paleta p = gris;
    DistinguirClases(p, {0, 60, 120, 180});
    EXPECT_EQ(p.rojo, gris.rojo);
    EXPECT_EQ(p.azul, gris.azul);

    p = gris;
    DistinguirClases(p, {1, 2, 60, 2});  // 1 and 2: black and black
    const std::array<std::array<uint8_t, 3>, 3> esperados = {{{0, 0, 255}, {0, 170, 0}, {205, 133, 63}}};
    const int entradas[3] = {1, 2, 60};
    for (int k = 0; k < 3; ++k) {
        const int e = entradas[k];
        EXPECT_EQ((std::array<uint8_t, 3>{p.rojo[e], p.verde[e], p.azul[e]}), esperados[k]) << e;
    }
    EXPECT_EQ(p.rojo[3], 3);
    EXPECT_EQ(p.verde[200], 200);

    // A byte band: the ND is the entry; others: spread between the extremes.
    Muestras bytes = Muestras::Crear(kByte, 3);
    bytes.Como<uint8_t>()[2] = 200;
    EXPECT_EQ(EntradaDeValor(bytes, 4), 4);
    Muestras enteros = Muestras::Crear(kInteger, 2);
    enteros.Como<uint16_t>()[0] = 0;
    enteros.Como<uint16_t>()[1] = 512;
    EXPECT_EQ(EntradaDeValor(enteros, 256), 128);
    EXPECT_EQ(EntradaDeValor(enteros, 512), 255);

    const auto lejos = [](const std::array<uint8_t, 3>& a, const std::array<uint8_t, 3>& b) {
        for (int c = 0; c < 3; ++c)
            if (std::abs(int{a[c]} - int{b[c]}) >= 48) return true;
        return false;
    };
    for (std::size_t i = 0; i < 100; ++i)
        for (std::size_t j = i + 1; j < 100; ++j)
            EXPECT_TRUE(lejos(ColorClaseDistinto(i), ColorClaseDistinto(j))) << i << " " << j;
}
