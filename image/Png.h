// PNG files through libpng (deflate-compressed): an RGB picture, or an
// indexed one with its palette. Export, the chart renderer and the maps
// write through here. The file is replaced whole or not at all.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace orvela {

using ColorRgb = std::array<uint8_t, 3>;  // red, green, blue

// A picture of 8-bit red, green, blue triples, row by row from the top.
struct RasterRgb {
    uint32_t ancho = 0, alto = 0;
    std::vector<uint8_t> rgb;

    RasterRgb() = default;
    RasterRgb(uint32_t ancho_, uint32_t alto_, std::array<uint8_t, 3> fondo = {255, 255, 255});
    uint8_t* Pixel(uint32_t x, uint32_t y) { return rgb.data() + 3 * (static_cast<std::size_t>(y) * ancho + x); }
    const uint8_t* Pixel(uint32_t x, uint32_t y) const {
        return rgb.data() + 3 * (static_cast<std::size_t>(y) * ancho + x);
    }
    std::array<uint8_t, 3> Color(uint32_t x, uint32_t y) const {
        const uint8_t* p = Pixel(x, y);
        return {p[0], p[1], p[2]};
    }
};

// Gives row `y` (0 at the top): 3 * ancho bytes for RGB, ancho palette
// indices for an indexed picture. The pointer must stay valid until the
// next call.
using FilaPng = std::function<const uint8_t*(uint32_t y)>;

// False when the file cannot be written (what was on disk stays) or the
// size is zero or beyond what PNG holds.
bool EscribirPngRgb(const std::string& ruta, uint32_t ancho, uint32_t alto, const FilaPng& fila);
bool EscribirPng(const std::string& ruta, const RasterRgb& r);
// The same into a file the caller commits (alone or with others).
class FicheroSeguro;
bool EscribirPng(FicheroSeguro& f, const RasterRgb& r);
// 256 palette entries, red, green, blue.
bool EscribirPngIndexado(const std::string& ruta, uint32_t ancho, uint32_t alto,
                         const std::array<std::array<uint8_t, 3>, 256>& paleta, const FilaPng& fila);

}  // namespace orvela
