#include "tools/Reformar.h"

namespace orvela {

bool Contraer(const Muestras& entrada, long filas, long columnas, long fr, long fc, Muestras& salida,
              Progreso& progreso) {
    if (fr <= 0 || fc <= 0) return false;
    const long fs = filas / fr, cs = columnas / fc;
    if (entrada.Codigo() != salida.Codigo() || entrada.Cantidad() != static_cast<std::size_t>(filas * columnas) ||
        salida.Cantidad() != static_cast<std::size_t>(fs * cs))
        return false;
    bool hecho = true;
    const bool conocido = ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        const T* in = entrada.Como<T>().data();
        T* out = salida.Como<T>().data();
        hecho = PorFilas(progreso, fs, [&](long desde, long hasta) {
            for (long i = desde; i < hasta; ++i) {
                const T* fila = in + ((i + 1) * fr - 1) * columnas + (fc - 1);
                T* o = out + i * cs;
                for (long j = 0; j < cs; ++j) o[j] = fila[j * fc];
            }
        });
    });
    return conocido && hecho;
}

}  // namespace orvela
