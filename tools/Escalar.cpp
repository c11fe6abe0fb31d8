#include "tools/Escalar.h"

#include <cstdint>

#include "tools/PorMuestra.h"

namespace orvela {

template <class T> void OperarConEscalar(OperacionEscalar op, std::span<const T> a, double s, std::span<double> r) {
    switch (op) {
        case OperacionEscalar::Suma: PorMuestra(a, r, [s](double x) { return x + s; }); break;
        case OperacionEscalar::Resta: PorMuestra(a, r, [s](double x) { return x - s; }); break;
        case OperacionEscalar::Producto: PorMuestra(a, r, [s](double x) { return x * s; }); break;
        case OperacionEscalar::Cociente: PorMuestra(a, r, [s](double x) { return x / s; }); break;
    }
}

template void OperarConEscalar<uint8_t>(OperacionEscalar, std::span<const uint8_t>, double, std::span<double>);
template void OperarConEscalar<uint16_t>(OperacionEscalar, std::span<const uint16_t>, double, std::span<double>);
template void OperarConEscalar<float>(OperacionEscalar, std::span<const float>, double, std::span<double>);
template void OperarConEscalar<double>(OperacionEscalar, std::span<const double>, double, std::span<double>);

bool OperarConEscalar(OperacionEscalar op, const Muestras& a, double s, Muestras& r, Progreso& progreso) {
    if (r.Codigo() != kDouble || r.Cantidad() != a.Cantidad()) return false;
    return ConTipo(a.Codigo(), [&]<class T>(Muestra<T>) {
        PorTrozos(progreso, r.Cantidad(), [&](std::size_t i, std::size_t j) {
            OperarConEscalar<T>(op, a.Como<T>().subspan(i, j - i), s, r.Como<double>().subspan(i, j - i));
        });
    });
}

}  // namespace orvela
