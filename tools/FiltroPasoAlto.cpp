#include "tools/FiltroPasoAlto.h"

#include "tools/Convolucion.h"

namespace orvela {

std::vector<double> NucleoPasoAlto(int k, PasoAlto v) {
    const int n = k * k, centro = n / 2;
    std::vector<double> p(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        if (v == PasoAlto::Laplaciano9)
            p[i] = i == centro ? 9.0 : -1.0;
        else
            p[i] = i == centro ? 5.0 : (i % 2 == 0 ? 0.0 : -1.0);
    }
    return p;
}

double EscalaPasoAlto(int k, PasoAlto v) {
    const int i = k == 3 ? 0 : (k == 5 ? 1 : 2);
    static constexpr float kEscalas[2][3] = {
        {1.0f / 17.0f, -1.0f / 15.0f, -1.0f / 39.0f},
        {1.0f / 9.0f, -1.0f / 7.0f, -1.0f / 19.0f},
    };
    return static_cast<double>(kEscalas[static_cast<int>(v)][i]);
}

namespace {

template <class T>
void FiltrarPasoAlto(const T* entrada, long filas, long columnas, int k, PasoAlto v, T* salida, Progreso& progreso) {
    const double escala = EscalaPasoAlto(k, v);
    const auto op = [escala](auto suma, auto) { return escala * suma; };
    convolucion::Convolucionar(entrada, filas, columnas, k, convolucion::Tomas(k, NucleoPasoAlto(k, v)), op, salida, progreso);
}

}  // namespace

bool FiltroPasoAlto(const Muestras& entrada, long filas, long columnas, int k, PasoAlto v, Muestras& salida, Progreso& progreso) {
    if (!convolucion::Dimensiones(entrada, filas, columnas, k, salida)) return false;
    return ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        FiltrarPasoAlto(entrada.Como<T>().data(), filas, columnas, k, v, salida.Como<T>().data(), progreso);
    });
}

}  // namespace orvela
