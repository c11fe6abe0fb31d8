// Owned pixel storage of one type code (16-byte aligned, as malloc gives).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <span>

#include "image/TipoDato.h"

namespace orvela {

class Muestras {
public:
    Muestras() = default;

    // Allocates `cantidad` samples of `codigo`, zero-filled. Returns an empty
    // buffer (Valido() false) when the code is unknown, the size overflows or
    // memory cannot be had; callers turn that into a message, never an abort.
    static Muestras Crear(int codigo, std::size_t cantidad);

    bool Valido() const { return datos_ != nullptr || (cantidad_ == 0 && codigo_ != 0); }
    int Codigo() const { return codigo_; }
    std::size_t Cantidad() const { return cantidad_; }
    std::size_t Bytes() const { return cantidad_ * AnchoMuestra(codigo_); }
    std::byte* Datos() { return datos_.get(); }
    const std::byte* Datos() const { return datos_.get(); }

    template <class T> std::span<T> Como() {
        return {reinterpret_cast<T*>(datos_.get()), datos_ ? cantidad_ : 0};
    }
    template <class T> std::span<const T> Como() const {
        return {reinterpret_cast<const T*>(datos_.get()), datos_ ? cantidad_ : 0};
    }

    // Sample k widened to double (integer read unsigned); -1 for an unknown code.
    double Valor(std::size_t k) const;
    Muestras Copia() const;

private:
    // Large buffers are mapped pages of their own (see Crear); `mapeados`
    // is their length, 0 for buffers from calloc.
    struct Liberar {
        Liberar() noexcept : mapeados(0) {}
        explicit Liberar(std::size_t n) noexcept : mapeados(n) {}
        std::size_t mapeados;
        void operator()(std::byte* p) const;
    };
    std::unique_ptr<std::byte, Liberar> datos_;
    std::size_t cantidad_ = 0;
    int codigo_ = 0;
};

// Samples [desde, desde + cantidad) of any type widened to double (integer
// read unsigned) into `destino`. A multi-band kernel reads each band's rows
// through here, so it dispatches once per band and row, whatever the mix of
// types. False for an unknown code or a range past the end.
bool LeerComoDouble(const Muestras& m, std::size_t desde, std::size_t cantidad, double* destino);

// Rows x columns as a sample count, or 0 when the figures are not whole,
// not positive or too large to address.
std::size_t ContarMuestras(double filas, double columnas, int codigo);

}  // namespace orvela
