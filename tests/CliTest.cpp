// orvela-cli: exit statuses, messages on standard error, usage hints, and
// the orders of the image store (info, iniciar, paleta, exportar, escena).
#include "tests/Prueba.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

// A usage hint: one line on standard error, nothing on standard output.
void EsUso(const std::vector<std::string>& args) {
    const SalidaCli s = Cli(args);
    const std::string orden = args.empty() ? "" : args[0];
    EXPECT_EQ(s.rc, cli::kUso) << orden;
    EXPECT_TRUE(s.out.empty());
    EXPECT_EQ(s.err.rfind("Uso: orvela-cli", 0), 0u) << s.err;
    EXPECT_EQ(std::count(s.err.begin(), s.err.end(), '\n'), 1) << s.err;
}

std::vector<std::string> Iniciar(const std::string& salida, const std::string& tipo, const std::string& valor,
                                 const std::string& filas = "2") {
    return {"iniciar", "--filas", filas, "--columnas", "3", "--tipo", tipo, "--valor", valor, salida};
}

std::vector<std::string> Niveles(const std::string& nd, const std::string& fichero) {
    return {"paleta", "--nd", nd, fichero};
}

}  // namespace

TEST(Cli, CodigosDeSalidaYMensajes) {
    CarpetaPrueba dir;
    EXPECT_TRUE(Espera(Iniciar(dir / "a", "byte", "7"), cli::kExito).err.empty());
    EXPECT_TRUE(Existe(dir / "a.ozm") && Existe(dir / "a.inf"));
    // A refusal of the table: "ID: TEXT" with its line breaks, nothing
    // written; a zero or negative size is such a refusal, not a usage error.
    Espera(Iniciar(dir / "b", "byte", "256"), cli::kRechazo,
           "61248: El ND introducido es incorrecto para datos 'byte'.\n\nEl ND debe pertenecer al rango [0,255].\n");
    Espera(Iniciar(dir / "b", "integer", "65535.5"), cli::kRechazo, "61249: ");
    for (const char* filas : {"0", "-3"})
        Espera(Iniciar(dir / "b", "real", "1", filas), cli::kRechazo,
               "61234: Los valores de filas y columnas introducidos son incorrectos.\n\n"
               "Seleccione valores superiores a cero para el correcto funcionamiento.\n");
    // A file that cannot be created, or memory that cannot be had: status
    // 1, a sentence naming what failed, nothing left.
    const SalidaCli s = Espera(Iniciar(dir / "no/existe", "byte", "1"), cli::kFallo);
    EXPECT_NE(s.err.find(dir / "no/existe.ozm"), std::string::npos) << s.err;
    EXPECT_NE(Espera({"iniciar", "--filas", "3000000", "--columnas", "3000000", "--tipo", "double", "--valor", "1",
                      dir / "d"}, cli::kFallo).err.find("memoria"), std::string::npos);
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"a.inf", "a.ozm"}));
}

TEST(Cli, LineasDeOrdenIncorrectasYAyuda) {
    CarpetaPrueba dir;
    const std::string x = dir / "x";
    auto iniciar = [&](std::vector<std::string> resto) {
        std::vector<std::string> a = {"iniciar", "--filas", "2", "--columnas", "3", "--tipo", "byte"};
        a.insert(a.end(), resto.begin(), resto.end());
        return a;
    };
    const std::vector<std::vector<std::string>> mal = {
        {}, {"girar", "a.ozm"}, {"info"}, {"info", "--modo", "x", "a.ozm"}, {"escena"},
        iniciar({"--valor", "1", "--rapido", "1", x}), iniciar({"--valor"}), iniciar({x}),
        iniciar({"--valor", "1,5", x}), iniciar({"--valor", "1", x, dir / "y"}),
        {"iniciar", "--filas", "dos", "--columnas", "3", "--tipo", "byte", "--valor", "1", x},
        {"iniciar", "--filas", "2.5", "--columnas", "3", "--tipo", "byte", "--valor", "1", x},
        {"iniciar", "--filas", "2", "--columnas", "3", "--tipo", "entero", "--valor", "1", x},
    };
    for (const auto& args : mal) EsUso(args);
    EXPECT_TRUE(Contenido(dir.Ruta()).empty());

    const std::string ayuda = Espera({"--help"}, cli::kExito).out;
    for (const char* orden : {"info", "iniciar", "paleta", "exportar", "escena"})
        EXPECT_NE(ayuda.find(std::string("  ") + orden + "\t"), std::string::npos) << orden;
    EXPECT_NE(Espera({"exportar", "--help"}, cli::kExito).out.find("--paleta-fichero"), std::string::npos);
}

TEST(Cli, IniciarEInfo) {
    CarpetaPrueba dir;
    Espera({"iniciar", "--valor", "-1.5", "--tipo", "real", "--filas", "2", "--columnas", "3", "--titulo", "Mi imagen",
            dir / "n.ozm"}, cli::kExito);
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"n.inf", "n.ozm"}));  // ".ozm" taken off the stem
    CImagen im;
    ASSERT_FALSE(im.Cargar(dir / "n.ozm"));
    EXPECT_EQ(im.ValorPixel(1, 2), -1.5);
    EXPECT_EQ(LeerFichero(dir / "n.inf").substr(0, 27), "file title    : Mi imagen\nd");
    Espera(Iniciar(dir / "p", "integer", "300.7"), cli::kExito);
    ASSERT_FALSE(im.Cargar(dir / "p.ozm"));
    EXPECT_EQ(std::make_pair(im.titulo, im.ValorPixel(0, 0)), std::make_pair(std::string("Iniciada"), 300.0));

    Espera({"iniciar", "--filas", "1", "--columnas", "1", "--tipo", "double", "--valor", "0.1", dir / "g"}, cli::kExito);
    const std::string info = Espera({"info", dir / "g.ozm"}, cli::kExito).out;
    EXPECT_NE(info.find("Unidades: unknown\nX mínima: unknown\n"), std::string::npos) << info;
    EXPECT_NE(info.find("Resolución: unknown\nValor mínimo: 0.1\nValor máximo: 0.1\n"), std::string::npos);
    Espera({"info", dir / "g.OzM"}, cli::kRechazo,
           "61217: El archivo seleccionado no posee una extensión adecuada.\n\n"
           "Elija uno con extensión \"*.ozm\" o \"*.OZM\".\n");
    EscribirFichero(dir / "h.ozm", "abc");
    Espera({"info", dir / "h.ozm"}, cli::kRechazo, "61218: ");
    EscribirFichero(dir / "g.ozm", "corto");
    Espera({"info", dir / "g.ozm"}, cli::kRechazo, "61284: El archivo seleccionado no existe o no se puede abrir.\n");

    if (Landsat().empty()) GTEST_SKIP() << "sin datos Landsat compartidos";
    EXPECT_EQ(Espera({"info", Landsat() + "/tm1.ozm"}, cli::kExito).out,
              "Título: tm1\nTipo de dato: byte\nFilas: 310\nColumnas: 287\nSistema de referencia: UTM-22N\n"
              "Unidades: m\nX mínima: 619395\nX máxima: 628005\nY mínima: -419505\nY máxima: -410205\n"
              "Resolución: 30\nValor mínimo: 54\nValor máximo: 185\n");
}

TEST(Cli, Paleta) {
    CarpetaPrueba dir;
    const std::string sinUso = "-1,-1,-1,-1,-1,-1,-1,-1,-1,-1,-1,-1,-1";
    Espera(Niveles("10,256,-1," + sinUso, dir / "p"), cli::kExito);
    const std::array<int, 16> n = {10, 256, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
    EXPECT_EQ(LeerFichero(dir / "p.pal"), TextoPaletaCreada(n));  // ".pal" added to a bare name
    Espera(Niveles("0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,256", dir / "q.PAL"), cli::kExito);
    EXPECT_TRUE(Existe(dir / "q.PAL"));

    Espera(Niveles("5,5,256," + sinUso, dir / "r.pal"), cli::kRechazo,
           "61235: No puede asociarse el mismo ND a distintos colores.\n\nAsigne nuevos valores para realizar la operación.\n");
    Espera(Niveles("-1,-1,256," + sinUso, dir / "r.pal"), cli::kRechazo, "61236: ");
    Espera(Niveles("1,2,3," + sinUso, dir / "r.pal"), cli::kRechazo, "61237: ");
    for (const char* nd : {"1,2,3,4,5,6,7,8,9,10,11,12,13,14,256", "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,256",
                           "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,x", "1,2,3,4,5,6,7,8,9,10,11,12,13,14,300,256"})
        EsUso(Niveles(nd, dir / "r.pal"));
    EsUso({"paleta", dir / "r.pal"});
    EXPECT_FALSE(Existe(dir / "r.pal"));
    const SalidaCli s = Espera(Niveles("10,256,-1," + sinUso, dir / "no/r.pal"), cli::kFallo);
    EXPECT_NE(s.err.find(dir / "no/r.pal"), std::string::npos);
}

TEST(Cli, Exportar) {
    CarpetaPrueba dir;
    Espera(Iniciar(dir / "e", "byte", "200"), cli::kExito);
    const std::string e = dir / "e.ozm";
    Espera({"exportar", "--formato", "ascii", e, dir / "e.txt"}, cli::kExito);
    EXPECT_EQ(LeerFichero(dir / "e.txt"), "200 200 200\n200 200 200\n");
    // Grey palette unless another is named: entry 200 is (200, 200, 200).
    Espera({"exportar", "--formato", "bmp", e, dir / "g.bmp"}, cli::kExito);
    const std::string fila = std::string(9, '\xC8') + std::string(3, '\0');
    EXPECT_EQ(LeerFichero(dir / "g.bmp").substr(54), fila + fila);
    Paleta p;
    ASSERT_EQ(CargarPaleta(0, ORVELA_BIN, "", p), 0);
    Espera({"exportar", "--formato", "bmp", "--paleta", "0", e, dir / "c.bmp"}, cli::kExito);
    const std::string bmp = LeerFichero(dir / "c.bmp");
    EXPECT_EQ((std::pair<uint8_t, uint8_t>(bmp[54], bmp[56])), std::make_pair(p.azul[200], p.rojo[200]));
    EscribirFichero(dir / "mia.pal", "0 1 2 3\n");
    Espera({"exportar", "--formato", "png", "--paleta-fichero", dir / "mia.pal", e, dir / "m.png"}, cli::kExito);
    EXPECT_EQ(LeerFichero(dir / "m.png").substr(1, 3), "PNG");

    const std::string x = dir / "x.png";
    Espera({"exportar", "--formato", "png", "--paleta-fichero", dir / "falta.pal", e, x}, cli::kRechazo,
           Rechazo(Mensaje::Tabla(msg::kPaletaNoEncontrada)));
    Espera({"exportar", "--formato", "png", dir / "e.inf", x}, cli::kRechazo);
    EsUso({"exportar", "--formato", "jpg", e, x});
    EsUso({"exportar", e, x});
    EsUso({"exportar", "--formato", "png", "--paleta", "6", e, x});
    EsUso({"exportar", "--formato", "png", "--paleta", "-1", e, x});
    EsUso({"exportar", "--formato", "png", "--paleta", "1", "--paleta-fichero", dir / "mia.pal", e, x});
    EXPECT_FALSE(Existe(x));
    EXPECT_NE(Espera({"exportar", "--formato", "bmp", e, dir / "no/x.bmp"}, cli::kFallo, "61262: ").err.find(dir / "no/x.bmp"),
              std::string::npos);
    Espera({"exportar", "--formato", "ascii", e, dir / "no/x.txt"}, cli::kFallo, "61260: ");
}

TEST(Cli, Escena) {
    CarpetaPrueba dir;
    Espera({"escena", dir / "nueva/escena"}, cli::kExito);
    EXPECT_EQ(Contenido(dir / "nueva/escena").size(), 25u);
    EscribirFichero(dir / "fichero", "no es una carpeta");
    Espera({"escena", dir / "fichero/escena"}, cli::kFallo);
}
