// Colour composition: three bands (blue, green, red) of one type and size
// each scaled to 0..255 and drawn as one colour picture.
//
// Scaling of a band between a low and a high value: v <= low gives 0,
// v >= high gives 255, and between them truncate((v - low) / (high - low)
// x 255). A band whose low equals its high (a constant band) is 0 where
// v <= low and 255 above; NaN samples give 0.
//   Lineal2: low and high are the samples at 2 % and 98 % of the band in
//   ascending order (positions floor(0.02 (N - 1)) and ceil(0.98 (N - 1))
//   of the sorted samples), so the darkest and brightest 2 % saturate.
//   MinimoMaximo: low and high are the band's minimum and maximum.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// Index of the rule in the dialog's radio group.
enum class EscaladoColor { Lineal2 = 0, MinimoMaximo = 1 };

struct LimitesBanda {
    double bajo = 0, alto = 0;
};

// nullopt for an unknown type code or an empty band.
std::optional<LimitesBanda> LimitesEscalado(const Muestras& banda, EscaladoColor regla);
uint8_t EscalarValor(double v, const LimitesBanda& l);

struct PlanosColor {
    std::vector<uint8_t> azul, verde, rojo;
    LimitesBanda limitesAzul, limitesVerde, limitesRojo;
    // Pixel k as 0xRRGGBB.
    uint32_t Rgb(std::size_t k) const {
        return (uint32_t{rojo[k]} << 16) | (uint32_t{verde[k]} << 8) | uint32_t{azul[k]};
    }
};

// The three planes; nullopt for bands of unknown or different types or
// sizes, or a cancel.
std::optional<PlanosColor> ComponerColor(const Muestras& azul, const Muestras& verde, const Muestras& rojo,
                                         long filas, EscaladoColor regla, Progreso& progreso = SinProgreso());

}  // namespace orvela
