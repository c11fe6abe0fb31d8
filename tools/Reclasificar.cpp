#include "tools/Reclasificar.h"

#include "image/Conversion.h"

namespace orvela {

ParametrosReclasificar ReducirParametros(int codigo, double desde, double hasta, double salida) {
    ParametrosReclasificar p{desde, hasta, salida};
    ConTipo(codigo, [&]<class T>(Muestra<T>) {
        if constexpr (!kEsReal<T>) {
            p.desde = static_cast<double>(Almacenar<T>(desde));
            p.hasta = static_cast<double>(Almacenar<T>(hasta));
            p.salida = static_cast<double>(Almacenar<T>(salida));
        }
    });
    return p;
}

bool Reclasificar(const Muestras& entrada, long filas, long columnas, double desde, double hasta, double valor,
                  Muestras& salida, Progreso& progreso) {
    if (entrada.Codigo() != salida.Codigo() || entrada.Cantidad() != salida.Cantidad() ||
        entrada.Cantidad() != static_cast<std::size_t>(filas * columnas))
        return false;
    bool hecho = true;
    const bool conocido = ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        const T* in = entrada.Como<T>().data();
        T* out = salida.Como<T>().data();
        hecho = PorFilas(progreso, filas, [&](long a, long b) {
            const std::size_t i0 = static_cast<std::size_t>(a * columnas), i1 = static_cast<std::size_t>(b * columnas);
            if constexpr (kEsReal<T>) {
                const T v = Almacenar<T>(valor);
                for (std::size_t i = i0; i < i1; ++i) {
                    const double x = static_cast<double>(in[i]);
                    out[i] = (x >= desde && x < hasta) ? v : in[i];
                }
            } else {
                // Reduced to the sample's width, the comparison is between
                // whole numbers of that width.
                const T d = Almacenar<T>(desde), h = Almacenar<T>(hasta), v = Almacenar<T>(valor);
                for (std::size_t i = i0; i < i1; ++i) out[i] = (in[i] >= d && in[i] < h) ? v : in[i];
            }
        });
    });
    return conocido && hecho;
}

}  // namespace orvela
