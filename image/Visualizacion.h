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

// Display stretch of one window: it changes how samples become palette
// entries, never the samples. None is the conversion above. The others
// spread the samples between a low and a high limit over the 256 entries
// by the same rule (step = (high - low) x 0.00390625, entry = (sample -
// low) / step truncated, below low shown as 0, from high on as 255), for
// byte images too:
// - minimum-maximum: the band's minimum and maximum;
// - 2 % linear: with the n samples sorted (NaN left out) and k = n x 2 /
//   100 truncated, the sample of rank k and the sample of rank n - 1 - k;
// - standard deviations: mean -/+ 2 standard deviations (population form,
//   as the histogram shows them).
enum class Realce { Ninguno, MinimoMaximo, Lineal2, Desviaciones };
inline constexpr Realce kRealces[] = {Realce::Ninguno, Realce::MinimoMaximo, Realce::Lineal2, Realce::Desviaciones};
// Its name in the menus ("Ninguno", "Mínimo-máximo", ...).
const char* NombreRealce(Realce r);

struct LimitesRealce {
    double bajo = 0, alto = 0;
    bool valido = false;  // false for an empty band or an unknown type
};
// The limits the stretch uses; for None, 0 and 255 on byte images and the
// minimum and maximum on the others.
LimitesRealce CalcularRealce(const Muestras& m, Realce r);
// Palette entries under a stretch (None: IndicesPaleta).
std::vector<uint8_t> IndicesRealce(const Muestras& m, Realce r);

// A colour composite: three byte planes already scaled to 0..255, in
// sample order, of filas x columnas each.
struct ComposicionColor {
    long filas = 0, columnas = 0;
    std::vector<uint8_t> rojo, verde, azul;
    bool Valida() const {
        const auto n = static_cast<std::size_t>(filas) * static_cast<std::size_t>(columnas);
        return filas > 0 && columnas > 0 && rojo.size() == n && verde.size() == n && azul.size() == n;
    }
};
// Its display picture: 0xFF, red, green, blue from the top byte down.
std::vector<uint32_t> ColoresComposicion(const ComposicionColor& c);
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
