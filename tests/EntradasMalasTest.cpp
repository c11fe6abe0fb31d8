// The bad inputs of a hostile user, one line each, through the command line:
// special files, pairs that do not match, names that name no file, targets
// a careful program does not overwrite. A new order is added by one line.
#include <sys/stat.h>
#include <unistd.h>

#include "tests/Prueba.h"

namespace orvela::prueba {
namespace {

struct EntradaMala {
    const char* caso;
    std::vector<std::string> args;  // "@" stands for the test's folder
    int rc;
    std::string err;                // beginning of standard error ("@" as above)
    std::set<std::string> quedan;   // what the folder holds afterwards
};

std::string Sustituir(std::string s, const std::string& carpeta) {
    for (auto p = s.find('@'); p != std::string::npos; p = s.find('@', p + carpeta.size())) s.replace(p, 1, carpeta);
    return s;
}

TEST(EntradasMalas, TablaDeLaLineaDeOrdenes) {
    const std::string cab = Rechazo(Mensaje::Tabla(msg::kCabeceraNoEncontrada, relleno::kInf));
    const std::string raster = Rechazo(Mensaje::Tabla(msg::kArchivoNoExiste));
    const std::string sinNombre = "El nombre de la imagen \"";
    const std::set<std::string> base = {"a.inf", "a.ozm", "fifo.inf", "fifo.ozm", "cero.inf", "cero.ozm",
                                        "largo.inf", "largo.ozm", "ro.inf", "ro.ozm", "fifo.pal", "fifo.txt"};
    auto con = [&](std::initializer_list<std::string> mas) {
        std::set<std::string> s = base;
        s.insert(mas);
        return s;
    };
    const std::vector<EntradaMala> tabla = {
        {"cabecera FIFO", {"info", "@/fifo.ozm"}, 2, cab, base},
        {"cabecera enlace a /dev/zero", {"info", "@/cero.ozm"}, 2, cab, base},
        {"ráster más largo que su cabecera", {"info", "@/largo.ozm"}, 2, raster, base},
        {"paleta FIFO", {"exportar", "--formato", "bmp", "--paleta-fichero", "@/fifo.pal", "@/a.ozm", "@/x.bmp"},
         2, "", base},
        {"fichero de clase FIFO", {"supervisada", "--regla", "distancia", "--clase", "@/fifo.txt", "@/a.ozm", "@/s"},
         2, "El fichero @/fifo.txt no es un fichero normal", base},
        {"clases de la desmezcla FIFO",
         {"desmezcla", "--vegetacion", "@/fifo.txt", "--sombra", "@/fifo.txt", "--suelo", "@/fifo.txt", "@/a.ozm",
          "@/a.ozm", "@/d"},
         2, "", base},
        {"puntos de control FIFO",
         {"geometrica", "--puntos", "@/fifo.txt", "--metodo", "vecino", "--x-min", "0", "--x-max", "1", "--y-min", "0",
          "--y-max", "1", "--columnas", "2", "--filas", "2", "@/a.ozm", "@/g"},
         2, "No se puede leer el fichero de puntos de control", base},
        {"metadatos FIFO", {"reflectancia", "--banda", "4", "--metadatos", "@/fifo.txt", "@/a.ozm", "@/r"}, 2,
         "No se puede leer el fichero de metadatos", base},
        {"stem vacío", {"iniciar", "--filas", "1", "--columnas", "1", "--tipo", "byte", "--valor", "1", ""}, 64,
         sinNombre, base},
        {"stem .ozm", {"iniciar", "--filas", "1", "--columnas", "1", "--tipo", "byte", "--valor", "1", ".ozm"}, 64,
         sinNombre, base},
        {"stem carpeta", {"iniciar", "--filas", "1", "--columnas", "1", "--tipo", "byte", "--valor", "1", "@/"}, 64,
         sinNombre, base},
        {"stem raíz", {"iniciar", "--filas", "1", "--columnas", "1", "--tipo", "byte", "--valor", "1", "/"}, 64,
         sinNombre, base},
        {"extensión en mayúsculas",
         {"iniciar", "--filas", "1", "--columnas", "1", "--tipo", "byte", "--valor", "1", "@/M.OZM"}, 0, "",
         con({"M.ozm", "M.inf"})},
        {"título con salto de línea",
         {"iniciar", "--filas", "1", "--columnas", "1", "--tipo", "byte", "--valor", "1", "--titulo", "a\nb", "@/t"},
         2, std::string(texto::kTituloConSaltos) + "\n", base},
        {"--help como valor",
         {"iniciar", "--filas", "1", "--columnas", "1", "--tipo", "byte", "--valor", "1", "--titulo", "--help", "@/h"},
         0, "", con({"h.ozm", "h.inf"})},
        {"destino de solo lectura",
         {"iniciar", "--filas", "1", "--columnas", "1", "--tipo", "byte", "--valor", "9", "@/ro"}, 1,
         Rechazo(Mensaje::Tabla(msg::kNoCreadoFichero, "@/ro.ozm")), base},
    };
    for (const auto& c : tabla) {
        SCOPED_TRACE(c.caso);
        CarpetaPrueba dir;
        CImagen a = Imagen(kByte, 2, 3, {1, 2, 3, 4, 5, 6});
        Escribir(a, dir / "a");
        ASSERT_EQ(::mkfifo((dir / "fifo.inf").c_str(), 0600), 0);
        ASSERT_EQ(::mkfifo((dir / "fifo.pal").c_str(), 0600), 0);
        ASSERT_EQ(::mkfifo((dir / "fifo.txt").c_str(), 0600), 0);
        EscribirFichero(dir / "fifo.ozm", std::string(6, '\1'));
        std::filesystem::create_symlink("/dev/zero", dir / "cero.inf");
        EscribirFichero(dir / "cero.ozm", std::string(6, '\1'));
        std::filesystem::copy_file(dir / "a.inf", dir / "largo.inf");
        EscribirFichero(dir / "largo.ozm", std::string(7, '\1'));
        Escribir(a, dir / "ro");
        std::filesystem::permissions(dir / "ro.ozm", std::filesystem::perms::owner_read);
        const std::string ro = LeerFichero(dir / "ro.ozm");
        std::vector<std::string> args;
        for (const auto& s : c.args) args.push_back(Sustituir(s, dir.Ruta()));
        Espera(args, c.rc, Sustituir(c.err, dir.Ruta()));
        EXPECT_EQ(Contenido(dir.Ruta()), c.quedan);
        EXPECT_EQ(LeerFichero(dir / "ro.ozm"), ro);
    }
}

// A scene with one target that cannot be replaced is not written at all:
// the earlier images of the scene already there stay as they were.
TEST(EntradasMalas, EscenaEnteraONada) {
    CarpetaPrueba dir;
    const std::string carpeta = dir / "escena";
    Espera({"escena", carpeta}, 0);
    const std::string tm1 = LeerFichero(carpeta + "/tm1.ozm");
    EscribirFichero(carpeta + "/tm1.ozm", "antes");
    std::filesystem::remove(carpeta + "/verdad.inf");
    std::filesystem::create_directory(carpeta + "/verdad.inf");
    EXPECT_NE(Cli({"escena", carpeta}).rc, 0);
    EXPECT_EQ(LeerFichero(carpeta + "/tm1.ozm"), "antes");
    const auto hay = Contenido(carpeta);
    EXPECT_TRUE(std::none_of(hay.begin(), hay.end(), [](const std::string& n) { return n[0] == '.'; }));
    std::filesystem::remove(carpeta + "/verdad.inf");
    Espera({"escena", carpeta}, 0);
    EXPECT_EQ(LeerFichero(carpeta + "/tm1.ozm"), tm1);
}

}  // namespace
}  // namespace orvela::prueba
