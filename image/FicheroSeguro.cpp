#include "image/FicheroSeguro.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "image/FicheroTexto.h"

namespace orvela {

namespace {

constexpr std::size_t kBufer = std::size_t{1} << 16;
constexpr const char* kCabeceraDiario = "ORVELA-DIARIO 1\n";

std::string Absoluta(const std::string& ruta) {
    if (!ruta.empty() && ruta[0] == '/') return ruta;
    char cwd[PATH_MAX];
    if (!::getcwd(cwd, sizeof cwd)) return ruta;
    return std::string(cwd) + "/" + ruta;
}

// Folder of an absolute path, without its final slash ("/" for the root).
std::string Carpeta(const std::string& ruta) {
    const auto barra = ruta.find_last_of('/');
    if (barra == std::string::npos) return ".";
    return barra == 0 ? std::string("/") : ruta.substr(0, barra);
}

std::string Nombre(const std::string& ruta) {
    const auto barra = ruta.find_last_of('/');
    return barra == std::string::npos ? ruta : ruta.substr(barra + 1);
}

std::string Unir(const std::string& carpeta, const std::string& nombre) {
    return carpeta == "/" ? "/" + nombre : carpeta + "/" + nombre;
}

// The file a path names once symbolic links of its last part are followed
// (a link to a missing file names that file), as an absolute path.
std::string Resolver(const std::string& ruta) {
    std::string r = Absoluta(ruta);
    for (int i = 0; i < 40; ++i) {
        struct stat st {};
        if (::lstat(r.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return r;
        char destino[PATH_MAX];
        const ssize_t n = ::readlink(r.c_str(), destino, sizeof destino - 1);
        if (n <= 0) return r;
        const std::string d(destino, static_cast<std::size_t>(n));
        r = d[0] == '/' ? d : Unir(Carpeta(r), d);
    }
    return r;
}

// Start of the names of the temporary files of a target: hidden, beside it,
// with the target's name cut so that the whole stays within a file name.
std::string PrefijoTemporal(const std::string& real) { return "." + Nombre(real).substr(0, 200) + ".orvela-"; }

unsigned MascaraCreacion() {
    static const unsigned mascara = [] {
        unsigned m = 022;
        if (auto s = LeerTextoAcotado("/proc/self/status", 1 << 16)) {
            const auto p = s->find("Umask:");
            if (p != std::string::npos) m = static_cast<unsigned>(std::strtoul(s->c_str() + p + 6, nullptr, 8));
        }
        return m;
    }();
    return mascara;
}

// The target is missing, or a regular file (through a link) that may be
// written: a read-only file is left as it is, as a careful program does.
bool Sustituible(const std::string& real) {
    struct stat st {};
    if (::stat(real.c_str(), &st) != 0) return errno == ENOENT;
    return S_ISREG(st.st_mode) && (st.st_mode & 0222) != 0 && ::access(real.c_str(), W_OK) == 0;
}

bool Existe(const std::string& ruta) {
    struct stat st {};
    return ::lstat(ruta.c_str(), &st) == 0;
}

// An flock of a folder; none when the folder cannot be opened.
class Cerrojo {
public:
    Cerrojo() = default;
    Cerrojo(const std::string& carpeta, int modo) { Tomar(carpeta, modo); }
    ~Cerrojo() { Soltar(); }
    Cerrojo(Cerrojo&& o) noexcept : fd_(o.fd_) { o.fd_ = -1; }
    Cerrojo& operator=(Cerrojo&&) = delete;
    void Tomar(const std::string& carpeta, int modo) {
        Soltar();
        fd_ = ::open(carpeta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (fd_ < 0) return;
        while (::flock(fd_, modo) != 0 && errno == EINTR) {
        }
    }
    void Soltar() {
        if (fd_ >= 0) ::close(fd_);
        fd_ = -1;
    }
    int Soltar(bool) {
        const int fd = fd_;
        fd_ = -1;
        return fd;
    }

private:
    int fd_ = -1;
};

// What a folder holds that a reader or writer must see to first: an
// interrupted commit's journal, or temporary files of the given targets.
bool HayPendientes(const std::string& carpeta, const std::vector<std::string>& prefijos) {
    if (Existe(Unir(carpeta, kDiario))) return true;
    DIR* d = ::opendir(carpeta.c_str());
    if (!d) return false;
    bool hay = false;
    const std::string temporalDiario = std::string(kDiario) + ".";
    while (dirent* e = ::readdir(d)) {
        const std::string_view n(e->d_name);
        if (n.substr(0, temporalDiario.size()) == temporalDiario) hay = true;
        for (const auto& p : prefijos)
            if (n.substr(0, p.size()) == p) hay = true;
        if (hay) break;
    }
    ::closedir(d);
    return hay;
}

// Removes the temporary files of the given targets whose writers are dead
// (their lock can be taken), and the journal's own temporaries. The caller
// holds the folder's lock exclusively, so no writer is between creating a
// temporary and locking it, and no journal is being written.
void LimpiarTemporales(const std::string& carpeta, const std::vector<std::string>& prefijos) {
    DIR* d = ::opendir(carpeta.c_str());
    if (!d) return;
    std::vector<std::string> muertos;
    const std::string temporalDiario = std::string(kDiario) + ".";
    while (dirent* e = ::readdir(d)) {
        const std::string n(e->d_name);
        if (n.compare(0, temporalDiario.size(), temporalDiario) == 0) {
            muertos.push_back(n);
            continue;
        }
        if (std::none_of(prefijos.begin(), prefijos.end(),
                         [&](const std::string& p) { return n.compare(0, p.size(), p) == 0; }))
            continue;
        const int fd = ::open(Unir(carpeta, n).c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
        if (fd < 0) continue;
        struct stat st {};
        if (::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && ::flock(fd, LOCK_EX | LOCK_NB) == 0) muertos.push_back(n);
        ::close(fd);
    }
    ::closedir(d);
    for (const auto& n : muertos) ::unlink(Unir(carpeta, n).c_str());
}

struct Entrada {
    std::string temporal, destino, copia;  // copia: hard link of the old target, "" when none
    bool existia = false;
};

std::string TextoDiario(char modo, const std::vector<Entrada>& es) {
    std::string s = kCabeceraDiario;
    s += modo;
    s += '\n';
    for (const auto& e : es) {
        s += e.temporal + '\0' + e.destino + '\0' + e.copia + '\0' + (e.existia ? "1" : "0") + '\0';
    }
    return s;
}

bool LeerDiario(const std::string& texto, char& modo, std::vector<Entrada>& es) {
    const std::string cab = kCabeceraDiario;
    if (texto.compare(0, cab.size(), cab) != 0 || texto.size() < cab.size() + 2 || texto[cab.size() + 1] != '\n')
        return false;
    modo = texto[cab.size()];
    if (modo != 'H' && modo != 'D') return false;
    std::vector<std::string> campos;
    std::size_t i = cab.size() + 2;
    while (i < texto.size()) {
        const auto fin = texto.find('\0', i);
        if (fin == std::string::npos) return false;
        campos.push_back(texto.substr(i, fin - i));
        i = fin + 1;
    }
    if (campos.size() % 4 != 0) return false;
    for (std::size_t k = 0; k < campos.size(); k += 4) {
        // Only absolute paths of files this mechanism makes are touched.
        if (campos[k].empty() || campos[k][0] != '/' || campos[k + 1].empty() || campos[k + 1][0] != '/' ||
            campos[k].find(".orvela-") == std::string::npos)
            return false;
        es.push_back({campos[k], campos[k + 1], campos[k + 2], campos[k + 3] == "1"});
    }
    return true;
}

// Writes the journal of a folder whole (aside, then renamed into place).
bool EscribirDiario(const std::string& carpeta, char modo, const std::vector<Entrada>& es) {
    std::string plantilla = Unir(carpeta, std::string(kDiario) + ".XXXXXX");
    const int fd = ::mkstemp(plantilla.data());
    if (fd < 0) return false;
    const std::string s = TextoDiario(modo, es);
    std::size_t hecho = 0;
    bool ok = true;
    while (ok && hecho < s.size()) {
        const ssize_t r = ::write(fd, s.data() + hecho, s.size() - hecho);
        if (r < 0 && errno == EINTR) continue;
        ok = r > 0;
        if (ok) hecho += static_cast<std::size_t>(r);
    }
    ok = ::close(fd) == 0 && ok;
    if (ok && ::rename(plantilla.c_str(), Unir(carpeta, kDiario).c_str()) == 0) return true;
    ::unlink(plantilla.c_str());
    return false;
}

bool QuitarSiExiste(const std::string& ruta) { return ::unlink(ruta.c_str()) == 0 || errno == ENOENT; }

// Undoes the renames of a commit: each target as it was before.
bool Deshacer(const std::vector<Entrada>& es) {
    bool ok = true;
    for (const auto& e : es) {
        if (Existe(e.temporal)) {
            ok = QuitarSiExiste(e.temporal) && ok;  // never renamed: the target is the old one
            if (!e.copia.empty()) ok = QuitarSiExiste(e.copia) && ok;
            continue;
        }
        if (!e.copia.empty() && Existe(e.copia)) {
            // Renamed (or its temporary already removed while undoing, in
            // which case the copy is the target itself and the rename does
            // nothing): the old file back.
            ok = ::rename(e.copia.c_str(), e.destino.c_str()) == 0 && ok;
            ok = QuitarSiExiste(e.copia) && ok;
        } else if (!e.existia) {
            ok = QuitarSiExiste(e.destino) && ok;
        }
    }
    return ok;
}

// Completes the renames of a commit.
bool Completar(const std::vector<Entrada>& es) {
    bool ok = true;
    for (const auto& e : es)
        if (Existe(e.temporal)) ok = ::rename(e.temporal.c_str(), e.destino.c_str()) == 0 && ok;
    for (const auto& e : es)
        if (!e.copia.empty()) ok = QuitarSiExiste(e.copia) && ok;
    return ok;
}

// Completes or undoes the commit that a folder's journal records. The
// caller holds the folder's lock exclusively. False when it could not.
bool Recuperar(const std::string& carpeta) {
    const std::string ruta = Unir(carpeta, kDiario);
    if (!Existe(ruta)) return true;
    const auto texto = LeerTextoAcotado(ruta, kMaxTexto);
    char modo = 0;
    std::vector<Entrada> es;
    // A file of that name that this program did not write is left alone.
    if (!texto || !LeerDiario(*texto, modo, es)) return true;
    const bool ok = modo == 'H' ? Completar(es) : Deshacer(es);
    return ok && QuitarSiExiste(ruta);
}

// Folders, in one order for every process, so that locks of several are
// always taken in the same sequence.
std::vector<std::string> Carpetas(const std::vector<std::string>& reales) {
    std::vector<std::string> c;
    for (const auto& r : reales) c.push_back(Carpeta(r));
    std::sort(c.begin(), c.end());
    c.erase(std::unique(c.begin(), c.end()), c.end());
    return c;
}

std::vector<std::string> PrefijosDe(const std::string& carpeta, const std::vector<std::string>& reales) {
    std::vector<std::string> p;
    for (const auto& r : reales)
        if (Carpeta(r) == carpeta) p.push_back(PrefijoTemporal(r));
    return p;
}

// Under the folder's exclusive lock: an interrupted commit completed and
// dead writers' temporaries removed.
bool Sanear(const std::string& carpeta, const std::vector<std::string>& reales) {
    const bool ok = Recuperar(carpeta);
    LimpiarTemporales(carpeta, PrefijosDe(carpeta, reales));
    return ok;
}

}  // namespace

FicheroSeguro::FicheroSeguro(std::string destino) : destino_(std::move(destino)) {
    if (destino_.empty() || destino_.back() == '/') {
        ok_ = false;
        return;
    }
    real_ = Resolver(destino_);
    if (!Sustituible(real_)) {
        ok_ = false;
        return;
    }
    const std::string carpeta = Carpeta(real_);
    temporal_ = Unir(carpeta, PrefijoTemporal(real_) + "XXXXXX");
    {
        // Made and locked while no one may clean the folder: between the two
        // steps the file would look like a dead writer's.
        Cerrojo c(carpeta, LOCK_SH);
        fd_ = ::mkostemp(temporal_.data(), O_CLOEXEC);
        if (fd_ >= 0) ::flock(fd_, LOCK_EX);
    }
    if (fd_ < 0) {
        ok_ = false;
        temporal_.clear();
        return;
    }
    struct stat st {};
    const mode_t modo = ::stat(real_.c_str(), &st) == 0 ? (st.st_mode & 07777) : (0666 & ~MascaraCreacion());
    ::fchmod(fd_, modo);
}

FicheroSeguro::~FicheroSeguro() {
    if (!confirmado_ && !temporal_.empty()) ::unlink(temporal_.c_str());
    if (fd_ >= 0) ::close(fd_);
}

bool FicheroSeguro::Volcar() {
    std::size_t hecho = 0;
    while (ok_ && hecho < bufer_.size()) {
        const ssize_t r = ::write(fd_, bufer_.data() + hecho, bufer_.size() - hecho);
        if (r < 0 && errno == EINTR) continue;
        if (r <= 0) ok_ = false;
        else hecho += static_cast<std::size_t>(r);
    }
    bufer_.clear();
    return ok_;
}

bool FicheroSeguro::Escribir(const void* datos, std::size_t bytes) {
    if (fd_ < 0 || !ok_ || cerrado_) return ok_ = false;
    const char* p = static_cast<const char*>(datos);
    if (bufer_.size() + bytes <= kBufer) {
        try {
            if (bufer_.capacity() < kBufer) bufer_.reserve(kBufer);
        } catch (const std::bad_alloc&) {
            return ok_ = false;
        }
        bufer_.insert(bufer_.end(), p, p + bytes);
        return true;
    }
    if (!Volcar()) return false;
    std::size_t hecho = 0;
    while (hecho < bytes) {
        const ssize_t r = ::write(fd_, p + hecho, std::min<std::size_t>(bytes - hecho, std::size_t{1} << 30));
        if (r < 0 && errno == EINTR) continue;
        if (r <= 0) return ok_ = false;
        hecho += static_cast<std::size_t>(r);
    }
    return true;
}

bool FicheroSeguro::Cerrar() {
    if (cerrado_) return ok_;
    cerrado_ = true;
    if (fd_ < 0) return ok_ = false;
    return Volcar();
}

bool FicheroSeguro::Confirmar() {
    FicheroSeguro* uno[] = {this};
    return !ConfirmarGrupo(uno).has_value();
}

bool FicheroSeguro::ConfirmarPar(FicheroSeguro& a, FicheroSeguro& b) {
    FicheroSeguro* par[] = {&a, &b};
    return !ConfirmarGrupo(par).has_value();
}

std::optional<std::size_t> FicheroSeguro::ConfirmarGrupo(std::span<FicheroSeguro* const> fs) {
    for (std::size_t i = 0; i < fs.size(); ++i)
        if (!fs[i]->Cerrar() || fs[i]->confirmado_) return i;
    if (fs.empty()) return std::nullopt;
    std::vector<std::string> reales;
    for (auto* f : fs) reales.push_back(f->real_);
    // Every folder involved locked exclusively, in one order; the journal
    // lives in the first file's folder.
    std::vector<Cerrojo> cerrojos;
    for (const auto& c : Carpetas(reales)) {
        cerrojos.emplace_back(c, LOCK_EX);
        Sanear(c, reales);
    }
    for (std::size_t i = 0; i < fs.size(); ++i)
        if (!Sustituible(fs[i]->real_)) return i;
    std::vector<Entrada> es(fs.size());
    for (std::size_t i = 0; i < fs.size(); ++i) {
        es[i].temporal = fs[i]->temporal_;
        es[i].destino = fs[i]->real_;
        es[i].existia = Existe(fs[i]->real_);
    }
    if (fs.size() == 1) {
        // One file: its rename alone replaces it whole.
        if (::rename(es[0].temporal.c_str(), es[0].destino.c_str()) != 0) return 0;
        fs[0]->confirmado_ = true;
        return std::nullopt;
    }
    // The old targets kept under a second name until the commit is over.
    for (auto& e : es) {
        if (!e.existia) continue;
        const std::string copia = e.temporal + ".ant";
        if (::link(e.destino.c_str(), copia.c_str()) == 0) e.copia = copia;
    }
    const std::string carpetaDiario = Carpeta(reales[0]);
    auto quitarCopias = [&] {
        for (const auto& e : es)
            if (!e.copia.empty()) ::unlink(e.copia.c_str());
    };
    if (!EscribirDiario(carpetaDiario, 'H', es)) {
        quitarCopias();
        return 0;
    }
    for (std::size_t i = 0; i < es.size(); ++i) {
        if (::rename(es[i].temporal.c_str(), es[i].destino.c_str()) == 0) {
            fs[i]->confirmado_ = true;
            continue;
        }
        // Put back what was replaced: first say so in the journal, so that
        // a kill while undoing is undone too, not completed.
        EscribirDiario(carpetaDiario, 'D', es);
        for (auto* f : fs) f->confirmado_ = false;
        Deshacer(es);
        ::unlink(Unir(carpetaDiario, kDiario).c_str());
        return i;
    }
    quitarCopias();
    ::unlink(Unir(carpetaDiario, kDiario).c_str());
    return std::nullopt;
}

bool EscribirFicheroSeguro(const std::string& ruta, std::string_view contenido) {
    FicheroSeguro f(ruta);
    return f.Escribir(contenido) && f.Confirmar();
}

LecturaSegura::LecturaSegura(std::vector<std::string> rutas) {
    for (auto& r : rutas) r = Resolver(r);
    const auto carpetas = Carpetas(rutas);
    // The temporaries are looked at once: those left after cleaning belong
    // to live writers. A journal is looked at every time, since a commit may
    // have started (and died) between the cleaning and the shared lock.
    bool temporales = true;
    for (int intento = 0;; ++intento) {
        std::vector<std::string> pendientes;
        for (const auto& c : carpetas) {
            Cerrojo cerrojo(c, LOCK_SH);
            const bool pendiente = temporales ? HayPendientes(c, PrefijosDe(c, rutas)) : Existe(Unir(c, kDiario));
            if (pendiente) pendientes.push_back(c);
            cerrojos_.push_back(cerrojo.Soltar(true));
        }
        if (pendientes.empty() || intento == 8) return;
        for (int fd : cerrojos_)
            if (fd >= 0) ::close(fd);
        cerrojos_.clear();
        for (const auto& c : pendientes) {
            Cerrojo cerrojo(c, LOCK_EX);
            if (!Sanear(c, rutas)) {
                valida_ = false;
                return;
            }
        }
        temporales = false;
    }
}

LecturaSegura::~LecturaSegura() {
    for (int fd : cerrojos_)
        if (fd >= 0) ::close(fd);
}

}  // namespace orvela
