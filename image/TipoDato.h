// Sample types of an image and the one place where a type code becomes a C++ type.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace orvela {

// Codes as they are kept in the image record and in every computing function.
enum TipoDato : int32_t {
    kByte = 1,     // unsigned 8-bit
    kDouble = 2,   // 64-bit IEEE
    kInteger = 3,  // unsigned 16-bit, little-endian
    kReal = 4,     // 32-bit IEEE, little-endian
};

// Header/dialog name to code: "byte", "double", "integer"; anything else is "real".
int CodigoDeNombre(std::string_view nombre);
// " byte ", ... as written in a header; nullptr for an unknown code.
const char* NombreDeCodigo(int codigo);
// Bytes of one sample; 0 for an unknown code.
std::size_t AnchoMuestra(int codigo);
bool CodigoValido(int codigo);

// Compile-time link between a sample type and its code.
template <class T> struct CodigoDe;
template <> struct CodigoDe<uint8_t>  { static constexpr int valor = kByte; };
template <> struct CodigoDe<double>   { static constexpr int valor = kDouble; };
template <> struct CodigoDe<uint16_t> { static constexpr int valor = kInteger; };
template <> struct CodigoDe<float>    { static constexpr int valor = kReal; };

template <class T> struct Muestra { using tipo = T; };

// The four codes, in code order.
inline constexpr int kTiposDato[] = {kByte, kDouble, kInteger, kReal};

// Real types (real, double) against whole types (byte, integer).
template <class T> inline constexpr bool kEsReal = std::is_floating_point_v<T>;
inline bool EsReal(int codigo) { return codigo == kReal || codigo == kDouble; }

// Range of values a sample of each type can hold: 0..255, 0..65535, and the
// finite range of float and double.
template <class T> struct RangoTipo {
    static constexpr double minimo = std::is_floating_point_v<T> ? -static_cast<double>(std::numeric_limits<T>::max()) : 0.0;
    static constexpr double maximo = static_cast<double>(std::numeric_limits<T>::max());
};

// Calls f(Muestra<T>{}) with the sample type of the code. Every kernel that
// touches pixels goes through here. Returns std::nullopt (or false for void
// functions) when the code is none of the four: the caller reports 61250.
template <class F>
auto ConTipo(int codigo, F&& f) {
    using R = decltype(f(Muestra<uint8_t>{}));
    if constexpr (std::is_void_v<R>) {
        switch (codigo) {
            case kByte: f(Muestra<uint8_t>{}); return true;
            case kDouble: f(Muestra<double>{}); return true;
            case kInteger: f(Muestra<uint16_t>{}); return true;
            case kReal: f(Muestra<float>{}); return true;
            default: return false;
        }
    } else {
        switch (codigo) {
            case kByte: return std::optional<R>(f(Muestra<uint8_t>{}));
            case kDouble: return std::optional<R>(f(Muestra<double>{}));
            case kInteger: return std::optional<R>(f(Muestra<uint16_t>{}));
            case kReal: return std::optional<R>(f(Muestra<float>{}));
            default: return std::optional<R>();
        }
    }
}

}  // namespace orvela
