#include "image/FicheroSeguro.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace orvela {

namespace {

std::atomic<unsigned> contador{0};

// Folder part of a path, with its final slash ("" for a bare name).
std::string Carpeta(const std::string& ruta) {
    const auto barra = ruta.find_last_of('/');
    return barra == std::string::npos ? std::string() : ruta.substr(0, barra + 1);
}

// The target is missing or a regular file (or a link to one).
bool DestinoSustituible(const std::string& ruta) {
    struct stat st {};
    if (::stat(ruta.c_str(), &st) != 0) return errno == ENOENT;
    return S_ISREG(st.st_mode);
}

}  // namespace

FicheroSeguro::FicheroSeguro(std::string destino) : destino_(std::move(destino)) {
    // A short hidden name in the target's folder, so that a long target
    // name does not make the temporary one too long, and the final rename
    // stays within one file system.
    temporal_ = Carpeta(destino_) + ".orvela-" + std::to_string(::getpid()) + "-" + std::to_string(contador++) + ".tmp";
    if (!DestinoSustituible(destino_)) {
        ok_ = false;
        return;
    }
    f_ = std::fopen(temporal_.c_str(), "wbx");
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
    if (!f_) return ok_ = false;
    if (std::fflush(f_) != 0) ok_ = false;
    if (std::fclose(f_) != 0) ok_ = false;
    f_ = nullptr;
    return ok_;
}

bool FicheroSeguro::ConfirmarRenombrado() {
    if (!ok_ || !cerrado_) return false;
    if (!DestinoSustituible(destino_)) return ok_ = false;
    if (std::rename(temporal_.c_str(), destino_.c_str()) != 0) return ok_ = false;
    confirmado_ = true;
    return true;
}

bool FicheroSeguro::Confirmar() { return Cerrar() && ConfirmarRenombrado(); }

bool FicheroSeguro::ConfirmarPar(FicheroSeguro& a, FicheroSeguro& b) {
    const bool cerrados = a.Cerrar() && b.Cerrar();
    if (!cerrados || !DestinoSustituible(a.destino_) || !DestinoSustituible(b.destino_)) return false;
    // Keep the first target's present contents under a second name until
    // the second target is in place: a hard link where the file system has
    // them, a rename otherwise.
    const std::string copia = a.temporal_ + ".ant";
    bool habiaAnterior = false;
    if (::link(a.destino_.c_str(), copia.c_str()) == 0) {
        habiaAnterior = true;
    } else if (errno != ENOENT) {
        if (std::rename(a.destino_.c_str(), copia.c_str()) != 0) return false;
        habiaAnterior = true;
    }
    if (!a.ConfirmarRenombrado()) {
        if (habiaAnterior && ::access(a.destino_.c_str(), F_OK) != 0) std::rename(copia.c_str(), a.destino_.c_str());
        std::remove(copia.c_str());
        return false;
    }
    if (!b.ConfirmarRenombrado()) {
        if (habiaAnterior)
            std::rename(copia.c_str(), a.destino_.c_str());
        else
            std::remove(a.destino_.c_str());
        return false;
    }
    if (habiaAnterior) std::remove(copia.c_str());
    return true;
}

bool EscribirFicheroSeguro(const std::string& ruta, std::string_view contenido) {
    FicheroSeguro f(ruta);
    return f.Escribir(contenido) && f.Confirmar();
}

}  // namespace orvela
