// The optional report file of the operations that give figures rather than
// an image ("--informe"): the text is shown, and also written when a file
// is named.
#pragma once

#include "operations/Operacion.h"

namespace orvela {

inline Campo CampoInforme(const Clave& clave, const char* grupo, const char* ayudaCli) {
    return {.clave = &clave,
            .tipo = TipoCampo::Texto,
            .grupo = grupo,
            .etiqueta = "Fichero del informe (opcional)",
            .opcionCli = "--informe",
            .textoPorDefecto = "",
            .ayudaCli = ayudaCli};
}

}  // namespace orvela
