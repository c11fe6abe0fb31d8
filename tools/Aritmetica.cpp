#include "tools/Aritmetica.h"

#include <atomic>

#include <algorithm>
#include <type_traits>

namespace orvela {

namespace {

template <class T> inline constexpr bool kEntero = std::is_integral_v<T>;

// A byte or integer sample as the 32-bit integer the arithmetic works with
// (unsigned reading).
template <class T> inline int32_t Entero32(T v) { return static_cast<int32_t>(v); }

// Operands widened to double for real and double samples.
template <class T> inline double Ancho(T v) { return static_cast<double>(v); }

template <class T> inline double SumaDe(T a, T b) {
    if constexpr (std::is_same_v<T, uint16_t>) {
        // Integer samples are read as signed 16-bit numbers in the sum only.
        return static_cast<double>(int32_t{static_cast<int16_t>(a)} + int32_t{static_cast<int16_t>(b)});
    } else if constexpr (kEntero<T>) {
        return static_cast<double>(Entero32(a) + Entero32(b));
    } else {
        return Ancho(a) + Ancho(b);
    }
}

template <class T> inline double DiferenciaDe(T a, T b) {
    if constexpr (kEntero<T>)
        return static_cast<double>(Entero32(a) - Entero32(b));
    else
        return Ancho(a) - Ancho(b);
}

template <class T> inline double ProductoDe(T a, T b) {
    if constexpr (kEntero<T>) {
        // 32-bit product of the unsigned operands read as a signed number:
        // 50000 * 50000 wraps to -1794967296. Formed unsigned, so the wrap is
        // defined, then converted (modulo 2^32) to the signed value.
        const uint32_t p = static_cast<uint32_t>(a) * static_cast<uint32_t>(b);
        return static_cast<double>(static_cast<int32_t>(p));
    } else {
        return Ancho(a) * Ancho(b);
    }
}

// Denominator of the quotient, compared with zero before each sample.
template <class T> inline bool DivisorCero(T, T b) { return b == T{0}; }

template <class T> inline double CocienteDe(T a, T b) {
    if constexpr (kEntero<T>) {
        // Integer quotient, truncated. Both operands are whole numbers below
        // 2^16, so the double quotient lies within 2^-37 of the exact one
        // while any fractional part is at least 1/b >= 2^-16: truncating it
        // gives exactly the integer quotient, and the loop vectorises.
        return static_cast<double>(static_cast<int32_t>(Ancho(a) / Ancho(b)));
    } else {
        return Ancho(a) / Ancho(b);
    }
}

// Denominator A + B of the normalised difference.
template <class T> inline bool SumaCero(T a, T b) {
    if constexpr (kEntero<T>)
        return Entero32(a) + Entero32(b) == 0;
    else
        return Ancho(a) + Ancho(b) == 0.0;
}

template <class T> inline double NormalizadaDe(T a, T b) {
    if constexpr (kEntero<T>) {
        const int32_t num = Entero32(a) - Entero32(b);
        const int32_t den = Entero32(a) + Entero32(b);
        return static_cast<double>(num) / static_cast<double>(den);
    } else {
        return (Ancho(a) - Ancho(b)) / (Ancho(a) + Ancho(b));
    }
}

template <class T> inline double SuperposicionDe(T a, T b) {
    // -0.0 compares equal to 0 and lets B through.
    return a != T{0} ? Ancho(a) : Ancho(b);
}

template <class T, class F> void PorMuestra(std::span<const T> a, std::span<const T> b, std::span<double> r, F f) {
    const std::size_t n = r.size();
    const T* pa = a.data();
    const T* pb = b.data();
    double* pr = r.data();
    for (std::size_t i = 0; i < n; ++i) pr[i] = f(pa[i], pb[i]);
}

// A quotient that stops at the first zero denominator. The samples are
// taken in blocks: a block is first searched for a zero denominator, then
// computed. Nothing after a zero is ever computed, and everything before it
// is discarded by the caller, so this is the same as testing before each
// sample.
template <class T, class Cero, class F>
int ConDenominador(std::span<const T> a, std::span<const T> b, std::span<double> r, Cero cero, F f) {
    constexpr std::size_t kBloque = 2048;
    const std::size_t n = r.size();
    const T* pa = a.data();
    const T* pb = b.data();
    double* pr = r.data();
    for (std::size_t i0 = 0; i0 < n; i0 += kBloque) {
        const std::size_t i1 = std::min(n, i0 + kBloque);
        unsigned hay = 0;
        for (std::size_t i = i0; i < i1; ++i) hay |= cero(pa[i], pb[i]) ? 1u : 0u;
        if (hay) return kDenominadorCero;
        for (std::size_t i = i0; i < i1; ++i) pr[i] = f(pa[i], pb[i]);
    }
    return kCalculoCorrecto;
}

}  // namespace

template <class T> void Sumar(std::span<const T> a, std::span<const T> b, std::span<double> r) {
    PorMuestra(a, b, r, SumaDe<T>);
}
template <class T> void Restar(std::span<const T> a, std::span<const T> b, std::span<double> r) {
    PorMuestra(a, b, r, DiferenciaDe<T>);
}
template <class T> void Multiplicar(std::span<const T> a, std::span<const T> b, std::span<double> r) {
    PorMuestra(a, b, r, ProductoDe<T>);
}
template <class T> int Dividir(std::span<const T> a, std::span<const T> b, std::span<double> r) {
    return ConDenominador(a, b, r, DivisorCero<T>, CocienteDe<T>);
}
template <class T> int DiferenciaNormalizada(std::span<const T> a, std::span<const T> b, std::span<double> r) {
    return ConDenominador(a, b, r, SumaCero<T>, NormalizadaDe<T>);
}
template <class T> void Superponer(std::span<const T> a, std::span<const T> b, std::span<double> r) {
    PorMuestra(a, b, r, SuperposicionDe<T>);
}

#define ORVELA_ARITMETICA(T)                                                                   \
    template void Sumar<T>(std::span<const T>, std::span<const T>, std::span<double>);         \
    template void Restar<T>(std::span<const T>, std::span<const T>, std::span<double>);        \
    template void Multiplicar<T>(std::span<const T>, std::span<const T>, std::span<double>);   \
    template int Dividir<T>(std::span<const T>, std::span<const T>, std::span<double>);        \
    template int DiferenciaNormalizada<T>(std::span<const T>, std::span<const T>, std::span<double>); \
    template void Superponer<T>(std::span<const T>, std::span<const T>, std::span<double>);
ORVELA_ARITMETICA(uint8_t)
ORVELA_ARITMETICA(uint16_t)
ORVELA_ARITMETICA(float)
ORVELA_ARITMETICA(double)
#undef ORVELA_ARITMETICA

std::optional<int> OperarAritmetica(OperacionAritmetica op, const Muestras& a, const Muestras& b, Muestras& r,
                                    Progreso& progreso) {
    if (a.Codigo() != b.Codigo() || a.Cantidad() != b.Cantidad() || r.Codigo() != kDouble ||
        r.Cantidad() != a.Cantidad())
        return std::nullopt;
    return ConTipo(a.Codigo(), [&]<class T>(Muestra<T>) -> int {
        // A zero denominator in any piece spoils the whole result.
        std::atomic<int> estado{kCalculoCorrecto};
        PorTrozos(progreso, r.Cantidad(), [&](std::size_t i, std::size_t j) {
            const auto x = a.Como<T>().subspan(i, j - i);
            const auto y = b.Como<T>().subspan(i, j - i);
            const auto z = r.Como<double>().subspan(i, j - i);
            int e = kCalculoCorrecto;
            switch (op) {
                case OperacionAritmetica::Suma: Sumar<T>(x, y, z); break;
                case OperacionAritmetica::Resta: Restar<T>(x, y, z); break;
                case OperacionAritmetica::Producto: Multiplicar<T>(x, y, z); break;
                case OperacionAritmetica::Cociente: e = Dividir<T>(x, y, z); break;
                case OperacionAritmetica::DiferenciaNormalizada: e = DiferenciaNormalizada<T>(x, y, z); break;
                case OperacionAritmetica::Superposicion: Superponer<T>(x, y, z); break;
            }
            if (e != kCalculoCorrecto) estado.store(e);
        });
        return estado.load();
    });
}

}  // namespace orvela
