#include "image/Muestras.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <sys/mman.h>
#include <unistd.h>

namespace orvela {

namespace {

constexpr std::size_t kMapeoMinimo = std::size_t{4} << 20;
constexpr std::size_t kPaginaGrande = std::size_t{2} << 20;

// Largest buffer worth asking for: the machine's physical memory (a larger
// image could only be worked on by swapping, if at all), and never more
// than 1 TiB, which is also what the memory checkers accept.
std::size_t MayorReserva() {
    static const std::size_t limite = [] {
        std::size_t l = std::size_t{1} << 40;
        const long paginas = ::sysconf(_SC_PHYS_PAGES);
        const long tam = ::sysconf(_SC_PAGESIZE);
        if (paginas > 0 && tam > 0) {
            const auto fisica = static_cast<unsigned long long>(paginas) * static_cast<unsigned long long>(tam);
            if (fisica < l) l = static_cast<std::size_t>(fisica);
        }
        return l;
    }();
    return limite;
}

}  // namespace

Muestras Muestras::Crear(int codigo, std::size_t cantidad) {
    Muestras m;
    const std::size_t ancho = AnchoMuestra(codigo);
    if (ancho == 0) return m;
    if (cantidad > std::numeric_limits<std::size_t>::max() / ancho / 2) return m;
    const std::size_t bytes = cantidad * ancho;
    if (bytes > MayorReserva()) return m;
    m.codigo_ = codigo;
    m.cantidad_ = cantidad;
    if (bytes == 0) return m;
    // Fresh pages come zeroed without being touched, so a result is written
    // once, by its kernel. A large buffer gets pages of its own, marked for
    // huge pages: a whole scene then costs a few hundred page faults
    // instead of a hundred thousand.
    if (bytes >= kMapeoMinimo) {
        const std::size_t largo = (bytes + kPaginaGrande - 1) / kPaginaGrande * kPaginaGrande;
        void* p = ::mmap(nullptr, largo, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (p != MAP_FAILED) {
#ifdef MADV_HUGEPAGE
            ::madvise(p, largo, MADV_HUGEPAGE);
#endif
            m.datos_ = std::unique_ptr<std::byte, Liberar>(static_cast<std::byte*>(p), Liberar{largo});
            return m;
        }
    }
    void* p = std::calloc(bytes, 1);
    if (p == nullptr) {
        m.codigo_ = 0;
        m.cantidad_ = 0;
        return m;
    }
    m.datos_.reset(static_cast<std::byte*>(p));
    return m;
}

void Muestras::Liberar::operator()(std::byte* p) const {
    if (mapeados)
        ::munmap(p, mapeados);
    else
        std::free(p);
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

bool LeerComoDouble(const Muestras& m, std::size_t desde, std::size_t cantidad, double* destino) {
    if (desde > m.Cantidad() || cantidad > m.Cantidad() - desde) return false;
    return ConTipo(m.Codigo(), [&](auto muestra) {
        using T = typename decltype(muestra)::tipo;
        const T* p = m.Como<T>().data() + desde;
        for (std::size_t i = 0; i < cantidad; ++i) destino[i] = static_cast<double>(p[i]);
    });
}

}  // namespace orvela
