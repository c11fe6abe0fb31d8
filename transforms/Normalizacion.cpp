#include "transforms/Normalizacion.h"

#include "image/Conversion.h"

namespace orvela {

namespace {

inline double SinSombra(double x, double s) {
    if (s <= 100) return x;
    if (s < 200) return (x - 100) * 100 / (100 - (s - 100)) + 100;
    return 100;
}

}  // namespace

bool Normalizar(const Muestras& vegetacion, const Muestras& sombra, const Muestras& suelo, long filas, long columnas,
                Muestras& sueloNormal, Muestras& vegetacionNormal, Progreso& progreso) {
    const auto hecho = ConTipo(sombra.Codigo(), [&]<class T>(Muestra<T>) {
        const T* v = vegetacion.Como<T>().data();
        const T* s = sombra.Como<T>().data();
        const T* u = suelo.Como<T>().data();
        T* un = sueloNormal.Como<T>().data();
        T* vn = vegetacionNormal.Como<T>().data();
        const auto cols = static_cast<std::size_t>(columnas);
        return PorFilas(progreso, filas, [&](long d, long h) {
            for (std::size_t i = static_cast<std::size_t>(d) * cols; i < static_cast<std::size_t>(h) * cols; ++i) {
                const double sombraI = Leer(s[i]);
                vn[i] = Almacenar<T>(SinSombra(Leer(v[i]), sombraI));
                un[i] = Almacenar<T>(SinSombra(Leer(u[i]), sombraI));
            }
        });
    });
    return hecho && *hecho;
}

}  // namespace orvela
