#include "tools/FiltroPersonalizado.h"

#include <algorithm>
#include <cmath>

#include "tools/Convolucion.h"

namespace orvela {

double DivisorPersonalizado(const std::vector<double>& coeficientes) {
    double d = 0.0;
    for (const double w : coeficientes) d += std::fabs(std::trunc(w));
    return d;
}

namespace {

template <class T>
void FiltrarPersonalizado(const T* entrada, long filas, long columnas, int k, const std::vector<double>& w, T* salida, Progreso& progreso) {
    const double divisor = DivisorPersonalizado(w);
    if (divisor == 0.0) {
        std::fill(salida, salida + filas * columnas, T{});
        return;
    }
    const auto op = [divisor](auto suma, auto) { return suma / divisor; };
    convolucion::Convolucionar(entrada, filas, columnas, k, convolucion::Tomas(k, w), op, salida, progreso);
}

}  // namespace

bool FiltroPersonalizado(const Muestras& entrada, long filas, long columnas, int k,
                         const std::vector<double>& coeficientes, Muestras& salida, Progreso& progreso) {
    if (!convolucion::Dimensiones(entrada, filas, columnas, k, salida)) return false;
    if (coeficientes.size() != static_cast<std::size_t>(k * k)) return false;
    return ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        FiltrarPersonalizado(entrada.Como<T>().data(), filas, columnas, k, coeficientes, salida.Como<T>().data(), progreso);
    });
}

}  // namespace orvela
