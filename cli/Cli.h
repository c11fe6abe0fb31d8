// orvela-cli: every image operation without a window.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "base/Mensajes.h"
#include "base/Progreso.h"
#include "operations/Operacion.h"

namespace orvela::cli {

// Exit statuses of the batch front end.
inline constexpr int kExito = 0;
inline constexpr int kFallo = 1;      // a file that cannot be created, memory
inline constexpr int kRechazo = 2;    // a message of the table
inline constexpr int kUso = 64;       // a wrong command line

// Runs one command line (without the program name). Console output is UTF-8.
// The operation reports to `progreso` and stops when it is cancelled.
int Ejecutar(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
             Progreso& progreso = SinProgreso());

// One operation's command line (after the order), built from its declaration.
int EjecutarDeclaracion(const Declaracion& d, const std::vector<std::string>& args, std::ostream& out,
                        std::ostream& err, Progreso& progreso = SinProgreso());

// Options and positional arguments of one command line. Every option takes
// a value (the next word, even when it starts with '-'), except the flags
// named as such.
struct Argumentos {
    std::map<std::string, std::string> opciones;
    std::vector<std::string> repetidas;  // values of options given more than once, in order
    std::multimap<std::string, std::string> todas;
    std::set<std::string> banderas;
    std::vector<std::string> posicionales;
    bool ayuda = false;
};
// Splits `args` (after the order). Returns nullopt for an option without
// its value or one not among `validas` / `banderas`.
std::optional<Argumentos> Separar(const std::vector<std::string>& args, const std::set<std::string>& validas,
                                  const std::set<std::string>& banderas = {});

// Strict number parsing: the whole word must be the number.
std::optional<double> LeerReal(const std::string& s);
std::optional<long> LeerEntero(const std::string& s);
// An output name without a trailing ".ozm".
std::string StemSalida(const std::string& s);

// Prints "ID: TEXT" (or the plain sentence of a free message).
void ImprimirMensaje(std::ostream& err, const Mensaje& m);
// Prints the usage hint and returns kUso.
int Uso(std::ostream& err, const std::string& orden, const std::string& detalle = {});

// Orders that are not operations of the common course (info, paleta, ...).
struct OrdenEspecial {
    const char* nombre;
    const char* resumen;   // one Spanish line for --help
    const char* sintaxis;  // arguments and options
    std::function<int(const std::vector<std::string>& args, std::ostream& out, std::ostream& err)> ejecutar;
};
struct RegistroOrden {
    explicit RegistroOrden(OrdenEspecial o);
};
const std::vector<OrdenEspecial>& OrdenesEspeciales();

}  // namespace orvela::cli
