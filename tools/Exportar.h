// Export of an image: its samples as text, or its picture drawn through a
// palette as a BMP or PNG file.
#pragma once

#include <optional>
#include <string>

#include "image/CImagen.h"
#include "image/Visualizacion.h"

namespace orvela {

enum class FormatoImagen { Bmp, Png };

// The samples as text. A file that cannot be created gives 61260.
std::optional<Mensaje> ExportarAscii(const CImagen& im, const std::string& ruta);
// The picture, one pixel per sample, through the palette (the display
// conversion): an indexed, compressed PNG, or a 24-bit BMP. A file that cannot be created gives 61262.
std::optional<Mensaje> ExportarImagen(const CImagen& im, const Paleta& p, const std::string& ruta, FormatoImagen f);
// A colour composite's picture, one pixel per sample in its own colours:
// an RGB PNG or a 24-bit BMP (the same failures as above).
std::optional<Mensaje> ExportarComposicion(const ComposicionColor& c, const std::string& ruta, FormatoImagen f);
// ".png" (any case) at the end of a path: PNG; otherwise BMP.
FormatoImagen FormatoDeRuta(const std::string& ruta);

}  // namespace orvela
