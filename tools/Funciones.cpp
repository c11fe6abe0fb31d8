#include "tools/Funciones.h"

#include <cmath>
#include <cstdint>

#include "tools/PorMuestra.h"
#include <limits>
#include <type_traits>
#include <vector>

namespace orvela {

namespace {

template <class T, class F> void Aplicar(std::span<const T> a, std::span<double> r, F f) {
    if constexpr (std::is_integral_v<T>) {
        // A byte or integer image holds at most 256 or 65536 distinct values:
        // the function is evaluated once per value and looked up, which
        // gives the very same results. Small images are computed directly.
        constexpr std::size_t kValores = std::size_t{std::numeric_limits<T>::max()} + 1;
        if (r.size() >= kValores) {
            std::vector<double> tabla(kValores);
            for (std::size_t v = 0; v < kValores; ++v) tabla[v] = f(static_cast<double>(v));
            const T* pa = a.data();
            double* pr = r.data();
            for (std::size_t i = 0; i < r.size(); ++i) pr[i] = tabla[pa[i]];
            return;
        }
    }
    PorMuestra(a, r, f);
}

}  // namespace

double ValorFuncion(Funcion f, double x) {
    switch (f) {
        case Funcion::Cuadrado: return std::pow(x, 2.0);
        case Funcion::RaizCuadrada: return std::sqrt(x);
        case Funcion::LogNeperiano: return std::log(x);
        case Funcion::Exponencial: return std::exp(x);
        case Funcion::Seno: return std::sin(x);
        case Funcion::Coseno: return std::cos(x);
        case Funcion::Tangente: return std::tan(x);
        case Funcion::ValorAbsoluto: return std::fabs(x);
    }
    return x;
}

template <class T> void AplicarFuncion(Funcion f, std::span<const T> a, std::span<double> r) {
    // One loop per function, so that each loop calls its function directly.
    switch (f) {
        case Funcion::Cuadrado: Aplicar(a, r, [](double x) { return std::pow(x, 2.0); }); break;
        case Funcion::RaizCuadrada: Aplicar(a, r, [](double x) { return std::sqrt(x); }); break;
        case Funcion::LogNeperiano: Aplicar(a, r, [](double x) { return std::log(x); }); break;
        case Funcion::Exponencial: Aplicar(a, r, [](double x) { return std::exp(x); }); break;
        case Funcion::Seno: Aplicar(a, r, [](double x) { return std::sin(x); }); break;
        case Funcion::Coseno: Aplicar(a, r, [](double x) { return std::cos(x); }); break;
        case Funcion::Tangente: Aplicar(a, r, [](double x) { return std::tan(x); }); break;
        case Funcion::ValorAbsoluto: Aplicar(a, r, [](double x) { return std::fabs(x); }); break;
    }
}

template void AplicarFuncion<uint8_t>(Funcion, std::span<const uint8_t>, std::span<double>);
template void AplicarFuncion<uint16_t>(Funcion, std::span<const uint16_t>, std::span<double>);
template void AplicarFuncion<float>(Funcion, std::span<const float>, std::span<double>);
template void AplicarFuncion<double>(Funcion, std::span<const double>, std::span<double>);

bool AplicarFuncion(Funcion f, const Muestras& a, Muestras& r, Progreso& progreso) {
    if (r.Codigo() != kDouble || r.Cantidad() != a.Cantidad()) return false;
    return ConTipo(a.Codigo(), [&]<class T>(Muestra<T>) {
        PorTrozos(progreso, r.Cantidad(), [&](std::size_t i, std::size_t j) {
            AplicarFuncion<T>(f, a.Como<T>().subspan(i, j - i), r.Como<double>().subspan(i, j - i));
        });
    });
}

}  // namespace orvela
