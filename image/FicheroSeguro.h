// Writing files so that what was on disk is replaced whole or not at all,
// even when the program is killed at any instant, and even when several
// programs write the same image at once.
//
// - The contents go to a temporary file beside the target, with a name no
//   other process can choose (mkstemp), locked (flock) by its writer for as
//   long as the writer lives: a temporary whose lock can be taken belongs
//   to a dead writer, and the next reader or writer of that target removes
//   it. A file this process did not create is never removed otherwise.
// - Files that belong together (a raster and its header, the images of a
//   scene) are committed as a group under an exclusive lock of their folder:
//   a journal (".orvela-diario" in the folder) names every temporary, target
//   and backup before the first rename, and is removed after the last. A
//   commit interrupted by a kill is completed (or, when it was being undone,
//   undone) by the next reader or writer of that folder before it touches a
//   file, as a database replays its journal.
// - Readers of a pair hold the folder's lock shared while they read, so they
//   never see half a replacement.
// - A target that is a symbolic link is written through: the file it points
//   to is replaced. A target that exists and is not a regular file, or that
//   is read-only, is never replaced.
//
// Nothing is flushed to the disk (no fsync): the guarantees are against the
// program being killed, which the page cache survives; ext4 also writes the
// data of a file renamed over another before the rename.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvela {

class FicheroSeguro {
public:
    explicit FicheroSeguro(std::string destino);
    ~FicheroSeguro();  // removes the temporary file unless committed
    FicheroSeguro(const FicheroSeguro&) = delete;
    FicheroSeguro& operator=(const FicheroSeguro&) = delete;

    bool Abierto() const { return fd_ >= 0 && ok_; }
    bool Escribir(const void* datos, std::size_t bytes);
    bool Escribir(std::string_view texto) { return Escribir(texto.data(), texto.size()); }
    // Finishes writing and renames over the target.
    bool Confirmar();
    // Finishes writing, leaving the rename for a group commit.
    bool Cerrar();
    const std::string& Destino() const { return destino_; }

    // Commits files that belong together: every target is replaced, or none
    // is (those already replaced are put back). Returns the index of the
    // file that could not be committed, nullopt when all were.
    static std::optional<std::size_t> ConfirmarGrupo(std::span<FicheroSeguro* const> ficheros);
    // The same for a raster and its header.
    static bool ConfirmarPar(FicheroSeguro& primero, FicheroSeguro& segundo);

private:
    bool Volcar();
    std::string destino_;  // as given
    std::string real_;     // absolute, through a symbolic link
    std::string temporal_;
    std::vector<char> bufer_;
    int fd_ = -1;
    bool ok_ = true, cerrado_ = false, confirmado_ = false;
};

// Writes a whole text or binary file safely; false when it cannot be written.
bool EscribirFicheroSeguro(const std::string& ruta, std::string_view contenido);

// Held by a reader while it reads files: first completes an interrupted
// commit of their folders and removes the temporaries of dead writers of
// those files, then keeps every commit in those folders waiting until it is
// destroyed. Valida() is false when an interrupted commit could not be
// completed (a folder that cannot be written): the files are then not to be
// trusted.
class LecturaSegura {
public:
    explicit LecturaSegura(std::vector<std::string> rutas);
    ~LecturaSegura();
    LecturaSegura(const LecturaSegura&) = delete;
    LecturaSegura& operator=(const LecturaSegura&) = delete;
    bool Valida() const { return valida_; }

private:
    std::vector<int> cerrojos_;
    bool valida_ = true;
};

// Name of the journal of a folder's interrupted commit.
inline constexpr const char* kDiario = ".orvela-diario";

}  // namespace orvela
