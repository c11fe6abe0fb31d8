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

// Index of one sample given the image's minimum and maximum.
uint8_t IndicePaleta(double muestra, double minimo, double maximo);

struct Paleta {
    std::array<uint8_t, 256> rojo{}, verde{}, azul{};
};

// Palette entry of one value of a band, as IndicesPaleta gives it (a byte
// value is its own entry; a value outside 0..255 keeps its low byte).
uint8_t EntradaDeValor(const Muestras& m, double valor);

// A classified image is drawn so that each class stands out whatever
// palette was chosen: when two of the classes' entries (`entradas`, in
// legend order) get colours that are hard to tell apart -- closer than 48
// levels in every channel -- every class entry takes a colour of its own
// from a set of clearly different colours, in legend order. Otherwise the
// palette stays as it is.
void DistinguirClases(Paleta& p, const std::vector<uint8_t>& entradas);
// Colour i of that set: the first sixteen are those the qualitative
// palette gives to the values 1 to 16; after them, colours of the 6 x 6 x 6
// cube far from all before them (well over a hundred in all; the set
// repeats after its end).
std::array<uint8_t, 3> ColorClaseDistinto(std::size_t i);

// Display picture: one 32-bit entry per pixel laid out blue, green, red, 0
// (0xFF in the top byte so that it can be used as an opaque ARGB picture).
std::vector<uint32_t> ColoresPaleta(const std::vector<uint8_t>& indices, const Paleta& p);

}  // namespace orvela
