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
    SalidaCli s = Cli(Iniciar(dir / "a", "byte", "7"));
    EXPECT_EQ(s.rc, cli::kExito) << s.err;
    EXPECT_TRUE(s.err.empty());
    EXPECT_TRUE(Existe(dir / "a.ozm") && Existe(dir / "a.inf"));

    // A refusal of the table: "ID: TEXT" with its line breaks, nothing written.
    s = Cli(Iniciar(dir / "b", "byte", "256"));
    EXPECT_EQ(s.rc, cli::kRechazo);
    EXPECT_EQ(s.err, "61248: El ND introducido es incorrecto para datos 'byte'.\n\nEl ND debe pertenecer al rango [0,255].\n");
    s = Cli(Iniciar(dir / "b", "integer", "65535.5"));
    EXPECT_EQ(s.rc, cli::kRechazo);
    EXPECT_EQ(s.err.substr(0, 7), "61249: ");
    // A zero or negative size is a refusal of the table, not a usage error.
    for (const char* filas : {"0", "-3"}) {
        s = Cli(Iniciar(dir / "b", "real", "1", filas));
        EXPECT_EQ(s.rc, cli::kRechazo);
        EXPECT_EQ(s.err, "61234: Los valores de filas y columnas introducidos son incorrectos.\n\n"
                         "Seleccione valores superiores a cero para el correcto funcionamiento.\n");
    }
    EXPECT_EQ(Contenido(dir.Ruta()).size(), 2u);

    // A file that cannot be created: status 1, a sentence naming it, nothing left.
    s = Cli(Iniciar(dir / "no/existe", "byte", "1"));
    EXPECT_EQ(s.rc, cli::kFallo);
    EXPECT_NE(s.err.find(dir / "no/existe.ozm"), std::string::npos) << s.err;
    std::filesystem::create_directory(dir / "c.inf");  // the header's place is taken
    EXPECT_EQ(Cli(Iniciar(dir / "c", "byte", "1")).rc, cli::kFallo);
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"a.inf", "a.ozm", "c.inf"}));

    // Memory that cannot be had is a failure, not a refusal.
    s = Cli({"iniciar", "--filas", "3000000", "--columnas", "3000000", "--tipo", "double", "--valor", "1", dir / "d"});
    EXPECT_EQ(s.rc, cli::kFallo);
    EXPECT_NE(s.err.find("memoria"), std::string::npos);
    EXPECT_FALSE(Existe(dir / "d.ozm"));
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

    SalidaCli s = Cli({"--help"});
    EXPECT_EQ(s.rc, cli::kExito);
    for (const char* orden : {"info", "iniciar", "paleta", "exportar", "escena"})
        EXPECT_NE(s.out.find(std::string("  ") + orden + "\t"), std::string::npos) << orden;
    s = Cli({"exportar", "--help"});
    EXPECT_EQ(s.rc, cli::kExito);
    EXPECT_NE(s.out.find("--paleta-fichero"), std::string::npos);
}

TEST(Cli, IniciarEInfo) {
    CarpetaPrueba dir;
    SalidaCli s = Cli({"iniciar", "--valor", "-1.5", "--tipo", "real", "--filas", "2", "--columnas", "3",
                       "--titulo", "Mi imagen", dir / "n.ozm"});
    ASSERT_EQ(s.rc, cli::kExito) << s.err;
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"n.inf", "n.ozm"}));  // ".ozm" taken off the stem
    CImagen im;
    ASSERT_FALSE(im.Cargar(dir / "n.ozm"));
    EXPECT_EQ(im.ValorPixel(1, 2), -1.5);
    EXPECT_EQ(LeerFichero(dir / "n.inf").substr(0, 27), "file title    : Mi imagen\nd");
    ASSERT_EQ(Cli(Iniciar(dir / "p", "integer", "300.7")).rc, cli::kExito);
    ASSERT_FALSE(im.Cargar(dir / "p.ozm"));
    EXPECT_EQ(im.titulo, "Iniciada");
    EXPECT_EQ(im.ValorPixel(0, 0), 300);

    ASSERT_EQ(Cli({"iniciar", "--filas", "1", "--columnas", "1", "--tipo", "double", "--valor", "0.1", dir / "g"}).rc,
              cli::kExito);
    s = Cli({"info", dir / "g.ozm"});
    ASSERT_EQ(s.rc, cli::kExito) << s.err;
    EXPECT_NE(s.out.find("Unidades: unknown\nX mínima: unknown\n"), std::string::npos) << s.out;
    EXPECT_NE(s.out.find("Resolución: unknown\nValor mínimo: 0.1\nValor máximo: 0.1\n"), std::string::npos);
    s = Cli({"info", dir / "g.OzM"});
    EXPECT_EQ(s.rc, cli::kRechazo);
    EXPECT_EQ(s.err, "61217: El archivo seleccionado no posee una extensión adecuada.\n\n"
                     "Elija uno con extensión \"*.ozm\" o \"*.OZM\".\n");
    EscribirFichero(dir / "h.ozm", "abc");
    EXPECT_EQ(Cli({"info", dir / "h.ozm"}).err.substr(0, 7), "61218: ");
    EscribirFichero(dir / "g.ozm", "corto");
    EXPECT_EQ(Cli({"info", dir / "g.ozm"}).err, "61284: El archivo seleccionado no existe o no se puede abrir.\n");

    if (Landsat().empty()) GTEST_SKIP() << "sin datos Landsat compartidos";
    s = Cli({"info", Landsat() + "/tm1.ozm"});
    ASSERT_EQ(s.rc, cli::kExito) << s.err;
    EXPECT_EQ(s.out,
              "Título: tm1\nTipo de dato: byte\nFilas: 310\nColumnas: 287\nSistema de referencia: UTM-22N\n"
              "Unidades: m\nX mínima: 619395\nX máxima: 628005\nY mínima: -419505\nY máxima: -410205\n"
              "Resolución: 30\nValor mínimo: 54\nValor máximo: 185\n");
}

TEST(Cli, Paleta) {
    CarpetaPrueba dir;
    const std::string sinUso = "-1,-1,-1,-1,-1,-1,-1,-1,-1,-1,-1,-1,-1";
    SalidaCli s = Cli(Niveles("10,256,-1," + sinUso, dir / "p"));
    ASSERT_EQ(s.rc, cli::kExito) << s.err;
    std::array<int, 16> n;
    n.fill(-1);
    n[0] = 10;
    n[1] = 256;
    EXPECT_EQ(LeerFichero(dir / "p.pal"), TextoPaletaCreada(n));  // ".pal" added to a bare name
    ASSERT_EQ(Cli(Niveles("0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,256", dir / "q.PAL")).rc, cli::kExito);
    EXPECT_TRUE(Existe(dir / "q.PAL"));

    s = Cli(Niveles("5,5,256," + sinUso, dir / "r.pal"));
    EXPECT_EQ(s.rc, cli::kRechazo);
    EXPECT_EQ(s.err, "61235: No puede asociarse el mismo ND a distintos colores.\n\n"
                     "Asigne nuevos valores para realizar la operación.\n");
    EXPECT_EQ(Cli(Niveles("-1,-1,256," + sinUso, dir / "r.pal")).err.substr(0, 7), "61236: ");
    EXPECT_EQ(Cli(Niveles("1,2,3," + sinUso, dir / "r.pal")).err.substr(0, 7), "61237: ");
    EXPECT_FALSE(Existe(dir / "r.pal"));

    for (const char* nd : {"1,2,3,4,5,6,7,8,9,10,11,12,13,14,256", "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,256",
                           "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,x", "1,2,3,4,5,6,7,8,9,10,11,12,13,14,300,256"})
        EsUso(Niveles(nd, dir / "r.pal"));
    EsUso({"paleta", dir / "r.pal"});

    s = Cli(Niveles("10,256,-1," + sinUso, dir / "no/r.pal"));
    EXPECT_EQ(s.rc, cli::kFallo);
    EXPECT_NE(s.err.find(dir / "no/r.pal"), std::string::npos);
}

TEST(Cli, Exportar) {
    CarpetaPrueba dir;
    ASSERT_EQ(Cli(Iniciar(dir / "e", "byte", "200")).rc, cli::kExito);
    const std::string e = dir / "e.ozm";
    ASSERT_EQ(Cli({"exportar", "--formato", "ascii", e, dir / "e.txt"}).rc, cli::kExito);
    EXPECT_EQ(LeerFichero(dir / "e.txt"), "200 200 200\n200 200 200\n");

    // Grey palette unless another is named: entry 200 is (200, 200, 200).
    ASSERT_EQ(Cli({"exportar", "--formato", "bmp", e, dir / "g.bmp"}).rc, cli::kExito);
    std::string bmp = LeerFichero(dir / "g.bmp");
    ASSERT_EQ(bmp.size(), 54u + 2 * 12);
    EXPECT_EQ(bmp.substr(54, 3), "\xC8\xC8\xC8");
    Paleta p;
    ASSERT_EQ(CargarPaleta(0, ORVELA_BIN, "", p), 0);
    ASSERT_EQ(Cli({"exportar", "--formato", "bmp", "--paleta", "0", e, dir / "c.bmp"}).rc, cli::kExito);
    bmp = LeerFichero(dir / "c.bmp");
    EXPECT_EQ((std::pair<uint8_t, uint8_t>(bmp[54], bmp[56])), std::make_pair(p.azul[200], p.rojo[200]));
    EscribirFichero(dir / "mia.pal", "0 1 2 3\n");
    ASSERT_EQ(Cli({"exportar", "--formato", "png", "--paleta-fichero", dir / "mia.pal", e, dir / "m.png"}).rc,
              cli::kExito);
    EXPECT_EQ(LeerFichero(dir / "m.png").substr(1, 3), "PNG");

    SalidaCli s = Cli({"exportar", "--formato", "png", "--paleta-fichero", dir / "falta.pal", e, dir / "f.png"});
    EXPECT_EQ(s.rc, cli::kRechazo);
    EXPECT_EQ(s.err, Rechazo(Mensaje::Tabla(61267)));
    EXPECT_FALSE(Existe(dir / "f.png"));

    const std::string x = dir / "x.png";
    EsUso({"exportar", "--formato", "jpg", e, x});
    EsUso({"exportar", e, x});
    EsUso({"exportar", "--formato", "png", "--paleta", "6", e, x});
    EsUso({"exportar", "--formato", "png", "--paleta", "-1", e, x});
    EsUso({"exportar", "--formato", "png", "--paleta", "1", "--paleta-fichero", dir / "mia.pal", e, x});
    EXPECT_EQ(Cli({"exportar", "--formato", "png", dir / "e.inf", x}).rc, cli::kRechazo);
    EXPECT_FALSE(Existe(x));

    s = Cli({"exportar", "--formato", "bmp", e, dir / "no/x.bmp"});
    EXPECT_EQ(s.rc, cli::kFallo);
    EXPECT_EQ(s.err.substr(0, 7), "61262: ");
    EXPECT_NE(s.err.find(dir / "no/x.bmp"), std::string::npos);
    s = Cli({"exportar", "--formato", "ascii", e, dir / "no/x.txt"});
    EXPECT_EQ(s.rc, cli::kFallo);
    EXPECT_EQ(s.err.substr(0, 7), "61260: ");
}

TEST(Cli, Escena) {
    CarpetaPrueba dir;
    const SalidaCli s = Cli({"escena", dir / "nueva/escena"});
    ASSERT_EQ(s.rc, cli::kExito) << s.err;
    EXPECT_EQ(Contenido(dir / "nueva/escena").size(), 15u);
    EXPECT_EQ(Cli({"info", dir / "nueva/escena/tm7.ozm"}).rc, cli::kExito);
    EscribirFichero(dir / "fichero", "no es una carpeta");
    EXPECT_EQ(Cli({"escena", dir / "fichero/escena"}).rc, cli::kFallo);
}
