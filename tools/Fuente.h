// A small bitmap font of our own for the pictures the core draws (charts,
// later map legends): printable ASCII and the Spanish letters (á é í ó ú ñ
// ü, upper and lower case, ¿ ¡, and °). Each glyph is 5 pixels wide in a
// cell 10 rows tall: row 0 holds the accents of capitals, rows 1 to 7 the
// letter, rows 8 and 9 the descenders.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "image/Png.h"

namespace orvela::fuente {

inline constexpr int kAnchoGlifo = 5, kAltoGlifo = 10;
inline constexpr int kAvance = 6;  // from one character to the next
inline constexpr int kLinea = 11;  // from one line to the next

// Rows 0..9 of a glyph; bit 4 is the leftmost column.
using Glifo = std::array<uint8_t, kAltoGlifo>;

// The glyph of a character; characters the font lacks are drawn as '?'.
const Glifo& GlifoDe(char32_t c);
// Characters of a UTF-8 text; a malformed byte counts as one unknown character.
std::u32string Caracteres(std::string_view utf8);
// Width in pixels of a text drawn at `escala` (each glyph pixel a square
// of escala x escala).
int AnchoTexto(std::string_view utf8, int escala = 1);

// Draws a text with its top-left corner at (x, y); parts outside the
// picture are left out. `vertical` turns it a quarter to the left, reading
// upwards: (x, y) is then the bottom-left corner of the turned text.
void DibujarTexto(RasterRgb& r, int x, int y, std::string_view utf8, ColorRgb color, int escala = 1,
                  bool vertical = false);

}  // namespace orvela::fuente
