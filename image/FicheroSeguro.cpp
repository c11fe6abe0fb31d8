#include "image/FicheroSeguro.h"

#include <atomic>
#include <cstdio>
#include <unistd.h>

namespace orvela {

namespace {
std::atomic<unsigned> contador{0};
}

FicheroSeguro::FicheroSeguro(std::string destino) : destino_(std::move(destino)) {
    temporal_ = destino_ + ".tmp" + std::to_string(::getpid()) + "_" + std::to_string(contador++);
    f_ = std::fopen(temporal_.c_str(), "wb");
    if (!f_) ok_ = false;
}

FicheroSeguro::~FicheroSeguro() {
    if (f_) std::fclose(f_);
    if (!confirmado_) std::remove(temporal_.c_str());
}

bool FicheroSeguro::Escribir(const void* datos, std::size_t bytes) {
    if (!f_ || !ok_) return false;
    if (bytes != 0 && std::fwrite(datos, 1, bytes, f_) != bytes) ok_ = false;
    return ok_;
}

bool FicheroSeguro::Cerrar() {
    if (cerrado_) return ok_;
    cerrado_ = true;
    if (!f_) return false;
    if (std::fflush(f_) != 0) ok_ = false;
    if (std::fclose(f_) != 0) ok_ = false;
    f_ = nullptr;
    return ok_;
}

bool FicheroSeguro::ConfirmarRenombrado() {
    if (!ok_ || !cerrado_) return false;
    if (std::rename(temporal_.c_str(), destino_.c_str()) != 0) return ok_ = false;
    confirmado_ = true;
    return true;
}

bool FicheroSeguro::Confirmar() { return Cerrar() && ConfirmarRenombrado(); }

bool EscribirFicheroSeguro(const std::string& ruta, std::string_view contenido) {
    FicheroSeguro f(ruta);
    return f.Escribir(contenido) && f.Confirmar();
}

}  // namespace orvela
