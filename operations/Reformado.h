// What the reshaping operations share: a result record of a new size with
// the input's header.
#pragma once

#include <optional>

#include "image/CImagen.h"

namespace orvela {

// `salida` takes `entrada`'s header, `filas` x `columnas` and a zeroed
// buffer of its type; a size memory cannot hold gives the memory message.
std::optional<Mensaje> SalidaDeTamano(const CImagen& entrada, long filas, long columnas, CImagen& salida);

}  // namespace orvela
