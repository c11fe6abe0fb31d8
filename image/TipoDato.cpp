#include "image/TipoDato.h"

namespace orvela {

int CodigoDeNombre(std::string_view nombre) {
    if (nombre == "byte") return kByte;
    if (nombre == "double") return kDouble;
    if (nombre == "integer") return kInteger;
    return kReal;
}

const char* NombreDeCodigo(int codigo) {
    switch (codigo) {
        case kByte: return "byte";
        case kDouble: return "double";
        case kInteger: return "integer";
        case kReal: return "real";
        default: return nullptr;
    }
}

std::size_t AnchoMuestra(int codigo) {
    switch (codigo) {
        case kByte: return 1;
        case kDouble: return 8;
        case kInteger: return 2;
        case kReal: return 4;
        default: return 0;
    }
}

bool CodigoValido(int codigo) { return AnchoMuestra(codigo) != 0; }

}  // namespace orvela
