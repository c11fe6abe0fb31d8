#include "tools/Logica.h"

#include <cstdint>
#include <type_traits>

namespace orvela {

namespace {

template <class T, class F> void PorMuestra(std::span<const T> a, std::span<const T> b, std::span<T> r, F f) {
    const T* pa = a.data();
    const T* pb = b.data();
    T* pr = r.data();
    for (std::size_t i = 0; i < r.size(); ++i) pr[i] = static_cast<T>(f(pa[i], pb[i]));
}

}  // namespace

template <class T> void OperarLogica(OperacionLogica op, std::span<const T> a, std::span<const T> b, std::span<T> r) {
    static_assert(std::is_integral_v<T>, "logical operations work on byte and integer samples");
    switch (op) {
        case OperacionLogica::And: PorMuestra(a, b, r, [](T x, T y) { return x & y; }); break;
        case OperacionLogica::Or: PorMuestra(a, b, r, [](T x, T y) { return x | y; }); break;
        case OperacionLogica::Xor: PorMuestra(a, b, r, [](T x, T y) { return x ^ y; }); break;
    }
}

template void OperarLogica<uint8_t>(OperacionLogica, std::span<const uint8_t>, std::span<const uint8_t>,
                                    std::span<uint8_t>);
template void OperarLogica<uint16_t>(OperacionLogica, std::span<const uint16_t>, std::span<const uint16_t>,
                                     std::span<uint16_t>);

bool OperarLogica(OperacionLogica op, const Muestras& a, const Muestras& b, Muestras& r, Progreso& progreso) {
    if (a.Codigo() != b.Codigo() || a.Codigo() != r.Codigo() || a.Cantidad() != b.Cantidad() ||
        a.Cantidad() != r.Cantidad())
        return false;
    bool hecho = false;
    ConTipo(a.Codigo(), [&]<class T>(Muestra<T>) {
        if constexpr (std::is_integral_v<T>) {
            PorTrozos(progreso, r.Cantidad(), [&](std::size_t i, std::size_t j) {
                OperarLogica<T>(op, a.Como<T>().subspan(i, j - i), b.Como<T>().subspan(i, j - i),
                                r.Como<T>().subspan(i, j - i));
            });
            hecho = true;
        }
    });
    return hecho;
}

}  // namespace orvela
