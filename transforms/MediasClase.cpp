#include "transforms/MediasClase.h"
#include "image/FicheroTexto.h"

#include <cstdlib>
#include <sstream>
#include <fstream>

namespace orvela {

namespace {

bool Linea(std::istream& in, std::string& s) {
    if (!std::getline(in, s)) return false;
    if (!s.empty() && s.back() == '\r') s.pop_back();
    return true;
}

// The number after the colon of a labelled line.
std::optional<double> Numero(const std::string& s) {
    const auto dos = s.find(':');
    if (dos == std::string::npos) return std::nullopt;
    const char* p = s.c_str() + dos + 1;
    char* fin = nullptr;
    const double v = std::strtod(p, &fin);
    if (fin == p) return std::nullopt;
    return v;
}

}  // namespace

std::optional<std::vector<double>> LeerMediasClase(const std::string& ruta) {
    const auto contenido = LeerTextoAcotado(ruta, kMaxTexto);
    if (!contenido) return std::nullopt;
    return AnalizarMediasClase(*contenido);
}

std::optional<std::vector<double>> AnalizarMediasClase(const std::string& texto) {
    std::istringstream in(texto);
    std::string s;
    if (!Linea(in, s) || !Linea(in, s)) return std::nullopt;
    std::vector<double> medias;
    while (Linea(in, s)) {
        if (s.rfind("Matriz De Covarianza:", 0) == 0) {
            if (medias.empty()) return std::nullopt;
            return medias;
        }
        // A band block: its name, four labelled values, a blank line.
        std::optional<double> media;
        for (int k = 0; k < 4; ++k) {
            if (!Linea(in, s)) return std::nullopt;
            const auto v = Numero(s);
            if (!v) return std::nullopt;
            if (k == 2) media = v;
        }
        medias.push_back(*media);
        if (!Linea(in, s)) return std::nullopt;
    }
    return std::nullopt;
}

}  // namespace orvela
