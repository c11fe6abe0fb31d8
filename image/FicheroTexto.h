// Reading a small text file whole, safely: only a regular file is read (a
// FIFO, a device or a folder would block, spin or fail half-way), it is
// opened without waiting on anything, and no more than a bound is read.
// Every reader of a text file of the program (headers, palettes, legends,
// class files, control points, vector files) goes through here.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "base/Mensajes.h"

namespace orvela {

// Bounds of the text files, in bytes.
inline constexpr std::size_t kMaxCabecera = std::size_t{1} << 20;   // a header (.inf)
inline constexpr std::size_t kMaxPaleta = std::size_t{1} << 20;     // a palette
inline constexpr std::size_t kMaxTexto = std::size_t{64} << 20;     // legends, class files, points, vectors

enum class FalloTexto {
    NoExiste,    // missing or cannot be opened
    NoRegular,   // a folder, FIFO, device, socket
    Grande,      // longer than the bound
    Lectura      // a read error, or memory for the text could not be had
};

// The whole contents of `ruta`, or nullopt with the reason in `fallo` (when
// given). A symbolic link to a regular file is followed.
std::optional<std::string> LeerTextoAcotado(const std::string& ruta, std::size_t maximo,
                                            FalloTexto* fallo = nullptr);

// A Spanish sentence for a failure of LeerTextoAcotado on `ruta`.
Mensaje MensajeFalloTexto(FalloTexto fallo, const std::string& ruta);

}  // namespace orvela
