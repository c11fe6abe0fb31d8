#include <algorithm>
#include <cstring>

#include "tools/Reformar.h"

namespace orvela {

bool Expandir(const Muestras& entrada, long filas, long columnas, long fr, long fc, Muestras& salida,
              Progreso& progreso) {
    if (fr <= 0 || fc <= 0) return false;
    const long fs = filas * fr, cs = columnas * fc;
    if (entrada.Codigo() != salida.Codigo() || entrada.Cantidad() != static_cast<std::size_t>(filas * columnas) ||
        salida.Cantidad() != static_cast<std::size_t>(fs * cs))
        return false;
    bool hecho = true;
    const bool conocido = ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        const T* in = entrada.Como<T>().data();
        T* out = salida.Como<T>().data();
        // By input rows: the first result row of a block is built, the
        // others of the block are copies of it.
        hecho = PorFilas(progreso, filas, [&](long desde, long hasta) {
            for (long r = desde; r < hasta; ++r) {
                const T* fila = in + r * columnas;
                T* o = out + r * fr * cs;
                if (fc == 1) {
                    std::memcpy(o, fila, static_cast<std::size_t>(columnas) * sizeof(T));
                } else {
                    for (long c = 0; c < columnas; ++c) std::fill(o + c * fc, o + c * fc + fc, fila[c]);
                }
                for (long k = 1; k < fr; ++k)
                    std::memcpy(o + k * cs, o, static_cast<std::size_t>(cs) * sizeof(T));
            }
        });
    });
    return conocido && hecho;
}

}  // namespace orvela
