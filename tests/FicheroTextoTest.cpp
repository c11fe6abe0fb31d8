// Text files of the program read whole only when they are small regular
// files: a FIFO, a device, a folder or a huge file is refused at once.
#include <sys/stat.h>
#include <unistd.h>

#include "image/FicheroTexto.h"
#include "tests/Prueba.h"

namespace orvela::prueba {
namespace {

TEST(FicheroTexto, SoloFicherosNormalesYAcotados) {
    CarpetaPrueba dir;
    EscribirFichero(dir / "t.txt", "uno\r\ndos\n");
    EscribirFichero(dir / "justo.txt", std::string(100, 'a'));
    EscribirFichero(dir / "largo.txt", std::string(101, 'a'));
    EscribirFichero(dir / "vacio.txt", "");
    ASSERT_EQ(::mkfifo((dir / "fifo").c_str(), 0600), 0);
    std::filesystem::create_directory(dir / "carpeta");
    std::filesystem::create_symlink("/dev/zero", dir / "cero");
    std::filesystem::create_symlink(dir / "t.txt", dir / "enlace.txt");
    struct Caso {
        const char* nombre;
        std::optional<std::string> texto;
        FalloTexto fallo;
    };
    const Caso casos[] = {
        {"t.txt", "uno\r\ndos\n", {}},
        {"enlace.txt", "uno\r\ndos\n", {}},
        {"justo.txt", std::string(100, 'a'), {}},
        {"vacio.txt", "", {}},
        {"largo.txt", std::nullopt, FalloTexto::Grande},
        {"fifo", std::nullopt, FalloTexto::NoRegular},
        {"carpeta", std::nullopt, FalloTexto::NoRegular},
        {"cero", std::nullopt, FalloTexto::NoRegular},
        {"falta.txt", std::nullopt, FalloTexto::NoExiste},
    };
    for (const auto& c : casos) {
        FalloTexto f = FalloTexto::Lectura;
        EXPECT_EQ(LeerTextoAcotado(dir / c.nombre, 100, &f), c.texto) << c.nombre;
        if (!c.texto) {
            EXPECT_EQ(f, c.fallo) << c.nombre;
        }
    }
    EXPECT_EQ(MensajeFalloTexto(FalloTexto::NoExiste, "x").id, msg::kArchivoNoExiste);
    EXPECT_EQ(MensajeFalloTexto(FalloTexto::NoRegular, "/a/b.inf").Texto(),
              "El fichero /a/b.inf no es un fichero normal y no se puede leer.");
}

// Every text reader of the image store refuses what is not a regular file
// instead of waiting on it or reading it for ever.
TEST(FicheroTexto, LosLectoresNoSeBloquean) {
    CarpetaPrueba dir;
    ASSERT_EQ(::mkfifo((dir / "f.inf").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo((dir / "f.pal").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo((dir / "fLeyenda.txt").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", dir / "z.inf");
    std::filesystem::create_symlink("/dev/zero", dir / "z.pal");
    std::filesystem::create_symlink("/dev/zero", dir / "zLeyenda.txt");
    for (const char* s : {"f", "z"}) {
        Cabecera c;
        c.titulo = "antes";
        EXPECT_FALSE(LeerInf(dir / (std::string(s) + ".ozm"), c)) << s;
        EXPECT_EQ(c.titulo, "antes");
        CImagen im;
        EXPECT_EQ(im.Cargar(dir / (std::string(s) + ".ozm")).value_or(Mensaje{}).id, msg::kCabeceraNoEncontrada);
        Paleta p;
        EXPECT_EQ(CargarPaletaFichero(dir / (std::string(s) + ".pal"), p), -1) << s;
        EXPECT_FALSE(LeerLeyendaVentana(dir / (std::string(s) + ".ozm"))) << s;
        EXPECT_FALSE(LeerLeyendaConfusion(dir / (std::string(s) + ".ozm"))) << s;
    }
    // A header over the bound is not read at all.
    EscribirFichero(dir / "g.inf", "file title    : g\n" + std::string(kMaxCabecera, ' '));
    Cabecera c;
    EXPECT_FALSE(LeerInf(dir / "g.ozm", c));
}

}  // namespace
}  // namespace orvela::prueba
