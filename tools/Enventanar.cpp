#include <cstring>

#include "tools/Reformar.h"

namespace orvela {

bool Enventanar(const Muestras& entrada, long filas, long columnas, long r1, long c1, long r2, long c2,
                Muestras& salida, Progreso& progreso) {
    if (r1 < 0 || c1 < 0 || r2 <= r1 || c2 <= c1 || r2 > filas || c2 > columnas) return false;
    const long fs = r2 - r1, cs = c2 - c1;
    if (entrada.Codigo() != salida.Codigo() || entrada.Cantidad() != static_cast<std::size_t>(filas * columnas) ||
        salida.Cantidad() != static_cast<std::size_t>(fs * cs))
        return false;
    bool hecho = true;
    const bool conocido = ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        const T* in = entrada.Como<T>().data();
        T* out = salida.Como<T>().data();
        hecho = PorFilas(progreso, fs, [&](long desde, long hasta) {
            for (long i = desde; i < hasta; ++i)
                std::memcpy(out + i * cs, in + (r1 + i) * columnas + c1, static_cast<std::size_t>(cs) * sizeof(T));
        });
    });
    return conocido && hecho;
}

}  // namespace orvela
