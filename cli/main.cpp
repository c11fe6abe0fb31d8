#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

#include "cli/Cli.h"
#include "cli/ProgresoTerminal.h"

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    orvela::cli::ProgresoTerminal progreso(STDERR_FILENO, ::isatty(STDERR_FILENO) == 1);
    orvela::cli::CancelarConInterrupcion cancelar(progreso);
    const int rc = orvela::cli::Ejecutar(args, std::cout, std::cerr, progreso);
    progreso.Terminar();
    return rc;
}
