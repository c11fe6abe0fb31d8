#include "tools/FiltroPasoBajo.h"

#include "tools/Convolucion.h"

namespace orvela {

std::vector<double> NucleoPasoBajo(int k, PasoBajo v) {
    const int n = k * k, centro = n / 2;
    std::vector<double> p(static_cast<std::size_t>(n), 1.0);
    for (int i = 0; i < n; ++i) {
        if (v == PasoBajo::Ponderado1) p[i] = i == centro ? 1.0 : (i % 2 == 0 ? 0.25 : 0.5);
        if (v == PasoBajo::Ponderado2 && i == centro) p[i] = 2.0;
    }
    return p;
}

double EscalaPasoBajo(int k, PasoBajo v) {
    const int i = k == 3 ? 0 : (k == 5 ? 1 : 2);
    static constexpr float kEscalas[3][3] = {
        {1.0f / 9.0f, 1.0f / 25.0f, 1.0f / 49.0f},
        {1.0f / 4.0f, 1.0f / 10.0f, 1.0f / 19.0f},
        {1.0f / 10.0f, 1.0f / 26.0f, 1.0f / 50.0f},
    };
    return static_cast<double>(kEscalas[static_cast<int>(v)][i]);
}

namespace {

template <class T>
void FiltrarPasoBajo(const T* entrada, long filas, long columnas, int k, PasoBajo v, T* salida, Progreso& progreso) {
    const double escala = EscalaPasoBajo(k, v);
    std::vector<double> pesos = NucleoPasoBajo(k, v);
    if (std::is_integral_v<T> && v == PasoBajo::Ponderado1) {
        // With weights 1, 2 and 4 the sum is four times the plain one, and
        // exact either way; 0.25 * it is exactly the plain sum.
        for (double& p : pesos) p *= 4.0;
        const auto op = [escala](auto suma, auto) { return escala * (0.25 * suma); };
        convolucion::Convolucionar(entrada, filas, columnas, k, convolucion::Tomas(k, pesos), op, salida, progreso);
        return;
    }
    const auto op = [escala](auto suma, auto) { return escala * suma; };
    convolucion::Convolucionar(entrada, filas, columnas, k, convolucion::Tomas(k, pesos), op, salida, progreso);
}

}  // namespace

bool FiltroPasoBajo(const Muestras& entrada, long filas, long columnas, int k, PasoBajo v, Muestras& salida, Progreso& progreso) {
    if (!convolucion::Dimensiones(entrada, filas, columnas, k, salida)) return false;
    return ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        FiltrarPasoBajo(entrada.Como<T>().data(), filas, columnas, k, v, salida.Como<T>().data(), progreso);
    });
}

}  // namespace orvela
