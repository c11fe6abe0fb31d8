// "Muestreo aleatorio": a byte mask of a reference's size with 1 at S
// distinct pixels drawn at random, 0 elsewhere.
//
// The generator is the C runtime's of the original platform: state =
// state * 214013 + 2531011 (32 bits), output bits 16..30 (0..32767).
// Rows are drawn first, row = rand() * R / 32767 (whole numbers, truncated;
// the product in 64 bits), then, after reseeding, the columns the same way.
// A sample that lands on a pixel already taken is drawn again (row and
// column, each after a reseed) until all are distinct. The draw of 32767
// would give row R or column C, one past the end: such a sample is treated
// as a collision and drawn again.
//
// Seeds: the k-th reseed (k = 0 for the first rows, 1 for the first
// columns, 2 and 3 for the first redraw, ...) uses
// MezclarSemilla(semilla, k): semilla itself for k = 0 and a value unrelated
// to it for the others (a multiplicative hash), so that a seed given with
// --semilla repeats the draw and the rows and columns do not follow each
// other.
#pragma once

#include <cstdint>
#include <span>

#include "base/Progreso.h"

namespace orvela {

class GeneradorC {
public:
    static constexpr int kMaximo = 32767;
    void Sembrar(uint32_t semilla) { estado_ = semilla; }
    int Siguiente() {
        estado_ = estado_ * 214013u + 2531011u;
        return static_cast<int>((estado_ >> 16) & 0x7FFFu);
    }

private:
    uint32_t estado_ = 1;
};

uint32_t MezclarSemilla(uint32_t semilla, uint32_t k);

// Fills `mascara` (R x C bytes, set to 0 first) with S distinct samples.
// The caller ensures 1 <= S <= R x C. False when cancelled.
bool MuestreoAleatorio(long filas, long columnas, long muestras, uint32_t semilla, std::span<uint8_t> mascara,
                       Progreso& p = SinProgreso());

}  // namespace orvela
