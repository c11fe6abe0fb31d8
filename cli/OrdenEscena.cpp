// orvela-cli escena DIRECTORIO: the practice scene.
#include "cli/Cli.h"
#include "tools/EscenaPractica.h"

namespace orvela::cli {

namespace {

int Escena(const std::vector<std::string>& args, std::ostream&, std::ostream& err) {
    auto a = Separar(args, {});
    if (!a) return Uso(err, "escena");
    if (a->posicionales.size() != 1) return Uso(err, "escena", "número de argumentos incorrecto");
    if (auto e = escena::EscribirEscena(a->posicionales[0])) {
        ImprimirMensaje(err, *e);
        return kFallo;
    }
    return kExito;
}

const RegistroOrden registro({"escena",
                              "Escribe la escena de prácticas: seis bandas TM (tm1 ... tm5, tm7), la verdad "
                              "terreno clasificada con su leyenda, las áreas puras de vegetación, sombra y "
                              "suelo (extremos) con sus ficheros de clase y los ejercicios de corrección.",
                              "DIRECTORIO", Escena});

}  // namespace

}  // namespace orvela::cli
