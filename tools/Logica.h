// Bitwise AND, OR and XOR of two byte or two integer images; the result
// keeps the input's type.
#pragma once

#include <span>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// Index of the operation in the dialog's radio group.
enum class OperacionLogica { And = 0, Or = 1, Xor = 2 };

// T is uint8_t or uint16_t.
template <class T> void OperarLogica(OperacionLogica op, std::span<const T> a, std::span<const T> b, std::span<T> r);

// `a`, `b` and `r` of one type and length. False when that type is not
// byte or integer (message 61250) or the buffers do not match.
bool OperarLogica(OperacionLogica op, const Muestras& a, const Muestras& b, Muestras& r,
                  Progreso& progreso = SinProgreso());

}  // namespace orvela
