// orvela-cli paleta --nd n0,...,n15 FICHERO.pal: a palette file made as
// "Crear paleta" makes it, one level per colour in colour order.
#include "cli/Cli.h"
#include "image/FicheroSeguro.h"
#include "image/Paleta.h"

namespace orvela::cli {

namespace {

int CrearPaleta(const std::vector<std::string>& args, std::ostream&, std::ostream& err) {
    auto a = Separar(args, {"--nd"});
    if (!a) return Uso(err, "paleta");
    if (a->posicionales.size() != 1) return Uso(err, "paleta", "número de argumentos incorrecto");
    auto it = a->opciones.find("--nd");
    if (it == a->opciones.end()) return Uso(err, "paleta", "falta --nd");

    std::array<int, 16> niveles{};
    std::size_t n = 0, i = 0;
    const std::string& lista = it->second;
    for (bool seguir = true; seguir;) {
        const auto coma = lista.find(',', i);
        seguir = coma != std::string::npos;
        const auto v = LeerEntero(lista.substr(i, seguir ? coma - i : std::string::npos));
        if (!v || n == niveles.size()) return Uso(err, "paleta", "--nd necesita 16 números enteros separados por comas");
        if (*v < -1 || *v > 256) return Uso(err, "paleta", "cada ND de --nd debe estar entre -1 y 256");
        niveles[n++] = static_cast<int>(*v);
        i = coma + 1;
    }
    if (n != niveles.size()) return Uso(err, "paleta", "--nd necesita 16 números enteros separados por comas");
    if (auto e = ComprobarNivelesPaleta(niveles)) {
        ImprimirMensaje(err, *e);
        return kRechazo;
    }
    // As the save dialog does: a name without extension gets ".pal".
    std::string ruta = a->posicionales[0];
    const auto barra = ruta.find_last_of('/');
    const auto punto = ruta.find_last_of('.');
    if (punto == std::string::npos || (barra != std::string::npos && punto < barra)) ruta += ".pal";
    if (!EscribirFicheroSeguro(ruta, TextoPaletaCreada(niveles))) {
        ImprimirMensaje(err, Mensaje::Tabla(msg::kNoCreadoFichero, ruta));
        return kFallo;
    }
    return kExito;
}

const RegistroOrden registro({"paleta", "Crea un fichero de paleta asignando un ND a cada uno de los 16 colores.",
                              "--nd n0,n1,...,n15 FICHERO.pal  (-1: color sin usar; 256: color por defecto)",
                              CrearPaleta});

}  // namespace

}  // namespace orvela::cli
