// Arithmetic between two images of the same type and size, sample by
// sample, into a result of type double.
//
// Byte and integer samples are read unsigned, except in the sum, where
// integer samples are read as signed 16-bit numbers (0xFFFF + 1 gives 0).
// Byte and integer sums, differences and products are formed as 32-bit
// integers (an integer product of 2^31 or more wraps to a negative value);
// their quotient is the integer quotient. Real samples are widened to
// double before the operation. Nothing is clamped, rounded or rescaled.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// Index of the operation in the dialog's radio group.
enum class OperacionAritmetica {
    Suma = 0,
    Resta = 1,
    Producto = 2,
    Cociente = 3,
    DiferenciaNormalizada = 4,  // (A - B) / (A + B)
    Superposicion = 5,          // A where A is not 0, else B
};

// Status of the quotient and of the normalised difference.
inline constexpr int kCalculoCorrecto = 0;
inline constexpr int kDenominadorCero = -1;

// One function per operation. `a`, `b` and `r` have the same length. The
// quotient and the normalised difference stop at the first denominator that
// is exactly zero and return kDenominadorCero; what `r` holds then is of no
// use and the caller discards it.
template <class T> void Sumar(std::span<const T> a, std::span<const T> b, std::span<double> r);
template <class T> void Restar(std::span<const T> a, std::span<const T> b, std::span<double> r);
template <class T> void Multiplicar(std::span<const T> a, std::span<const T> b, std::span<double> r);
template <class T> int Dividir(std::span<const T> a, std::span<const T> b, std::span<double> r);
template <class T> int DiferenciaNormalizada(std::span<const T> a, std::span<const T> b, std::span<double> r);
template <class T> void Superponer(std::span<const T> a, std::span<const T> b, std::span<double> r);

// Runs `op` on two buffers of the same type code and length into `r`, a
// double buffer of that length. Returns the status, or std::nullopt when the
// type code is unknown (message 61250) or the buffers do not match.
std::optional<int> OperarAritmetica(OperacionAritmetica op, const Muestras& a, const Muestras& b, Muestras& r,
                                    Progreso& progreso = SinProgreso());

}  // namespace orvela
