// The store rules: how a computed double becomes a sample of each type.
//
// Byte and integer results are truncated toward zero to a 32-bit integer and
// keep their low 8 or 16 bits, without clamping (-1 -> 255, 256 -> 0 for byte).
// A double that does not fit in 32 bits (or NaN) truncates to -2147483648, as
// the processor's own conversion does, so the result is the same on every
// machine and no undefined behaviour is involved. Real results are narrowed
// to float with round-to-nearest; values beyond the float range become
// infinities. Double results are kept.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace orvela {

inline int32_t TruncarA32(double v) {
    // Valid range of a truncating conversion: (-2^31 - 1, 2^31).
    if (v > -2147483649.0 && v < 2147483648.0) return static_cast<int32_t>(v);
    return std::numeric_limits<int32_t>::min();
}

inline float EstrecharAFloat(double v) {
    // Past FLT_MAX plus half an ulp a float rounds to infinity.
    constexpr double kLimite = 0x1.ffffffp127;
    if (v >= kLimite) return std::numeric_limits<float>::infinity();
    if (v <= -kLimite) return -std::numeric_limits<float>::infinity();
    return static_cast<float>(v);
}

template <class T> inline T Almacenar(double v);

template <> inline uint8_t Almacenar<uint8_t>(double v) {
    return static_cast<uint8_t>(static_cast<uint32_t>(TruncarA32(v)) & 0xFFu);
}
template <> inline uint16_t Almacenar<uint16_t>(double v) {
    return static_cast<uint16_t>(static_cast<uint32_t>(TruncarA32(v)) & 0xFFFFu);
}
template <> inline float Almacenar<float>(double v) { return EstrecharAFloat(v); }
template <> inline double Almacenar<double>(double v) { return v; }

// A 32-bit integer result stored in a sample (low bits for byte and integer).
template <class T> inline T AlmacenarEntero(int32_t v) {
    if constexpr (sizeof(T) < 4 && std::is_integral_v<T>)
        return static_cast<T>(static_cast<uint32_t>(v));
    else
        return static_cast<T>(v);
}

// Sample widened to double: integer samples read unsigned.
template <class T> inline double Leer(T v) { return static_cast<double>(v); }

}  // namespace orvela
