// The direction of dependencies: base below the image store, the image
// store below the kernels, the kernels below the operations, the operations
// below orvela-cli and the desktop. Every #include of the project's own
// headers is checked against it, and a tree with one upward include shows
// that the check catches it.
#include <filesystem>
#include <map>
#include <regex>

#include "Prueba.h"

using namespace orvela::prueba;
namespace fs = std::filesystem;

namespace {

// Layer of each folder; a file may include only its own layer or lower
// ones. The desktop folders share one layer above the operations, and
// orvela-cli stands beside them: neither includes the other.
const std::map<std::string, int> kCapas = {
    {"base", 0},           {"image", 1},         {"tools", 2},  {"corrections", 2}, {"transforms", 2},
    {"classification", 2}, {"operations", 3},    {"cli", 4},    {"app", 5},         {"doc", 5},
    {"dialogs", 5},
};

bool Escritorio(const std::string& c) { return c == "app" || c == "doc" || c == "dialogs"; }

// "carpeta/Fichero.cpp: includes X" for every include that points upward
// or across from orvela-cli to the desktop (or back); the desktop's frames
// (app/) are included by no other desktop folder.
std::vector<std::string> IncluyeHaciaArriba(const std::string& raiz) {
    std::vector<std::string> malos;
    const std::regex incluye(R"re(^\s*#\s*include\s*"([a-z]+)/[^"]+")re");
    for (const auto& [carpeta, capa] : kCapas) {
        std::error_code ec;
        for (const auto& e : fs::directory_iterator(raiz + "/" + carpeta, ec)) {
            const std::string ext = e.path().extension().string();
            if (ext != ".h" && ext != ".cpp") continue;
            std::ifstream in(e.path());
            std::string linea;
            while (std::getline(in, linea)) {
                std::smatch m;
                if (!std::regex_search(linea, m, incluye)) continue;
                const std::string destino = m[1];
                auto it = kCapas.find(destino);
                if (it == kCapas.end()) continue;
                const bool arriba = it->second > capa;
                const bool cruzado = (carpeta == "cli" && Escritorio(destino)) || (Escritorio(carpeta) && destino == "cli");
                const bool marcos = destino == "app" && carpeta != "app";
                if (arriba || cruzado || marcos)
                    malos.push_back(carpeta + "/" + e.path().filename().string() + ": " + linea);
            }
        }
    }
    return malos;
}

}  // namespace

TEST(Capas, NingunIncludeApuntaHaciaArriba) {
    ASSERT_TRUE(Existe(std::string(ORVELA_FUENTES) + "/operations/Operacion.h"));
    const auto malos = IncluyeHaciaArriba(ORVELA_FUENTES);
    for (const auto& m : malos) ADD_FAILURE() << m;
}

TEST(Capas, UnIncludeHaciaArribaSeDetecta) {
    CarpetaPrueba dir;
    for (const char* c : {"base", "image", "tools", "operations", "cli", "doc", "app"}) fs::create_directory(dir / c);
    EscribirFichero(dir / "image/Bien.h", "#include \"base/Mensajes.h\"\n#include <vector>\n");
    EXPECT_TRUE(IncluyeHaciaArriba(dir.Ruta()).empty());
    EscribirFichero(dir / "tools/Nucleo.cpp", "#include \"image/Bien.h\"\n  #  include \"operations/Operacion.h\"\n");
    EscribirFichero(dir / "cli/Orden.cpp", "#include \"doc/CBrimarDoc.h\"\n");
    EscribirFichero(dir / "doc/Vista.cpp", "#include \"app/CMainFrame.h\"\n");
    EXPECT_EQ(IncluyeHaciaArriba(dir.Ruta()),
              (std::vector<std::string>{"cli/Orden.cpp: #include \"doc/CBrimarDoc.h\"",
                                        "doc/Vista.cpp: #include \"app/CMainFrame.h\"",
                                        "tools/Nucleo.cpp:   #  include \"operations/Operacion.h\""}));
}
