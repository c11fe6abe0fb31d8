// Writing a file so that what was on disk is replaced whole or not at all:
// the contents go to a temporary file beside the target, which is renamed
// over it only once everything has been written.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace orvela {

class FicheroSeguro {
public:
    explicit FicheroSeguro(std::string destino);
    ~FicheroSeguro();  // removes the temporary file unless committed
    FicheroSeguro(const FicheroSeguro&) = delete;
    FicheroSeguro& operator=(const FicheroSeguro&) = delete;

    bool Abierto() const { return f_ != nullptr; }
    bool Escribir(const void* datos, std::size_t bytes);
    bool Escribir(std::string_view texto) { return Escribir(texto.data(), texto.size()); }
    // Flushes, closes and renames over the target.
    bool Confirmar();
    // Flushes and closes, leaving the rename for ConfirmarRenombrado.
    bool Cerrar();
    bool ConfirmarRenombrado();
    const std::string& Destino() const { return destino_; }

    // Commits two files that belong together (a raster and its header):
    // both targets are replaced, or, when the second cannot be, the first
    // target is put back as it was. A target that exists and is not a
    // regular file is never replaced.
    static bool ConfirmarPar(FicheroSeguro& primero, FicheroSeguro& segundo);

private:
    std::string destino_, temporal_;
    std::FILE* f_ = nullptr;
    bool ok_ = true, cerrado_ = false, confirmado_ = false;
};

// Writes a whole text or binary file safely; false when it cannot be written.
bool EscribirFicheroSeguro(const std::string& ruta, std::string_view contenido);

}  // namespace orvela
