#include <algorithm>
#include <cstring>

#include "tools/Reformar.h"

namespace orvela {

TamanoConcatenado TamanoConcatenar(long filasM, long columnasM, long filasS, long columnasS, long r0, long c0) {
    return {std::max(filasM, r0 + filasS), std::max(columnasM, c0 + columnasS)};
}

bool Concatenar(const Muestras& principal, long filasM, long columnasM, const Muestras& segunda, long filasS,
                long columnasS, long r0, long c0, Muestras& salida, Progreso& progreso) {
    if (r0 < 0 || c0 < 0) return false;
    const auto [fr, cr] = TamanoConcatenar(filasM, columnasM, filasS, columnasS, r0, c0);
    if (principal.Codigo() != salida.Codigo() || segunda.Codigo() != salida.Codigo() ||
        principal.Cantidad() != static_cast<std::size_t>(filasM * columnasM) ||
        segunda.Cantidad() != static_cast<std::size_t>(filasS * columnasS) ||
        salida.Cantidad() != static_cast<std::size_t>(fr * cr))
        return false;
    bool hecho = true;
    const bool conocido = ConTipo(salida.Codigo(), [&]<class T>(Muestra<T>) {
        const T* m = principal.Como<T>().data();
        const T* s = segunda.Como<T>().data();
        T* out = salida.Como<T>().data();
        hecho = PorFilas(progreso, fr, [&](long desde, long hasta) {
            for (long i = desde; i < hasta; ++i) {
                T* fila = out + i * cr;
                std::fill(fila, fila + cr, T{});
                if (i < filasM) std::memcpy(fila, m + i * columnasM, static_cast<std::size_t>(columnasM) * sizeof(T));
                if (i >= r0 && i < r0 + filasS)
                    std::memcpy(fila + c0, s + (i - r0) * columnasS, static_cast<std::size_t>(columnasS) * sizeof(T));
            }
        });
    });
    return conocido && hecho;
}

}  // namespace orvela
