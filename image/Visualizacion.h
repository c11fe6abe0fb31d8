// Sample to palette entry: the conversion that the view and the picture
// exporter share.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "image/Muestras.h"

namespace orvela {

// Byte samples are the entry itself. Other types are spread over the 256
// entries: step = (max - min) x 0.00390625, entry = (sample - min) / step
// truncated, above 255 shown as 255. An image whose samples are all equal
// (step 0) is shown with entry 0 throughout; so is a NaN sample.
std::vector<uint8_t> IndicesPaleta(const Muestras& m);

// The entries of samples [desde, desde + n) written to `destino`, given the
// image's minimum and maximum (not used for byte samples): a picture is
// filled row by row with no image-sized buffer in between.
void IndicesPaletaTramo(const Muestras& m, std::size_t desde, std::size_t n, double mn, double mx, uint8_t* destino);

// Index of one sample given the image's minimum and maximum.
uint8_t IndicePaleta(double muestra, double minimo, double maximo);

struct Paleta {
    std::array<uint8_t, 256> rojo{}, verde{}, azul{};
};

// Display picture: one 32-bit entry per pixel laid out blue, green, red, 0
// (0xFF in the top byte so that it can be used as an opaque ARGB picture).
std::vector<uint32_t> ColoresPaleta(const std::vector<uint8_t>& indices, const Paleta& p);

}  // namespace orvela
