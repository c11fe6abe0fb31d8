#include "tools/FiltroDireccional.h"

#include "tools/Convolucion.h"

namespace orvela {

std::vector<double> MascaraDireccional(Direccion d) {
    static constexpr double kMascaras[8][9] = {
        {1, 1, 1, 1, -2, 1, -1, -1, -1},    // N
        {-1, -1, -1, 1, -2, 1, 1, 1, 1},    // S
        {-1, 1, 1, -1, -2, 1, -1, 1, 1},    // E
        {1, 1, -1, 1, -2, -1, 1, 1, -1},    // W
        {1, 1, 1, -1, -2, 1, -1, -1, 1},    // NE
        {1, 1, 1, 1, -2, -1, 1, -1, -1},    // NW
        {-1, -1, 1, -1, -2, 1, 1, 1, 1},    // SE
        {1, -1, -1, 1, -2, -1, 1, 1, 1},    // SW
    };
    const auto& m = kMascaras[static_cast<int>(d)];
    return std::vector<double>(m, m + 9);
}

namespace {

// 0.1 as the float nearest to it, widened.
constexpr double kEscala = static_cast<double>(0.1f);

template <class T>
void FiltrarDireccional(const T* entrada, long filas, long columnas, Direccion d, T* salida, Progreso& progreso) {
    const auto op = [](auto suma, auto) { return kEscala * suma; };
    convolucion::Convolucionar(entrada, filas, columnas, 3, convolucion::Tomas(3, MascaraDireccional(d)), op, salida, progreso);
}

}  // namespace

bool FiltroDireccional(const Muestras& entrada, long filas, long columnas, Direccion d, Muestras& salida, Progreso& progreso) {
    if (!convolucion::Dimensiones(entrada, filas, columnas, 3, salida)) return false;
    return ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        FiltrarDireccional(entrada.Como<T>().data(), filas, columnas, d, salida.Como<T>().data(), progreso);
    });
}

}  // namespace orvela
