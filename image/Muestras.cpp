#include "image/Muestras.h"

#include <cmath>
#include <limits>

namespace orvela {

Muestras Muestras::Crear(int codigo, std::size_t cantidad) {
    Muestras m;
    const std::size_t ancho = AnchoMuestra(codigo);
    if (ancho == 0) return m;
    if (cantidad > std::numeric_limits<std::size_t>::max() / ancho / 2) return m;
    const std::size_t bytes = cantidad * ancho;
    m.codigo_ = codigo;
    m.cantidad_ = cantidad;
    if (bytes == 0) return m;
    void* p = ::operator new(bytes, std::align_val_t{64}, std::nothrow);
    if (p == nullptr) {
        m.codigo_ = 0;
        m.cantidad_ = 0;
        return m;
    }
    std::memset(p, 0, bytes);
    m.datos_.reset(static_cast<std::byte*>(p));
    return m;
}

double Muestras::Valor(std::size_t k) const {
    double v = -1.0;
    ConTipo(codigo_, [&]<class T>(Muestra<T>) { v = static_cast<double>(Como<T>()[k]); });
    return v;
}

Muestras Muestras::Copia() const {
    Muestras m = Crear(codigo_, cantidad_);
    if (m.datos_ && datos_) std::memcpy(m.datos_.get(), datos_.get(), Bytes());
    return m;
}

std::size_t ContarMuestras(double filas, double columnas, int codigo) {
    const std::size_t ancho = AnchoMuestra(codigo);
    if (ancho == 0) return 0;
    if (!(filas >= 1.0) || !(columnas >= 1.0)) return 0;
    if (filas != std::floor(filas) || columnas != std::floor(columnas)) return 0;
    const double total = filas * columnas;
    // Keep well inside what one allocation can address.
    if (total * static_cast<double>(ancho) > 0x1p46) return 0;
    return static_cast<std::size_t>(total);
}

}  // namespace orvela
