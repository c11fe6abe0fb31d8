#include "image/FicheroTexto.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace orvela {

namespace {

struct Descriptor {
    int fd;
    ~Descriptor() {
        if (fd >= 0) ::close(fd);
    }
};

std::optional<std::string> Falla(FalloTexto f, FalloTexto* salida) {
    if (salida) *salida = f;
    return std::nullopt;
}

}  // namespace

std::optional<std::string> LeerTextoAcotado(const std::string& ruta, std::size_t maximo, FalloTexto* fallo) {
    // Without O_NONBLOCK opening a FIFO would wait for a writer forever.
    Descriptor d{::open(ruta.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)};
    if (d.fd < 0) return Falla(errno == ENXIO ? FalloTexto::NoRegular : FalloTexto::NoExiste, fallo);
    struct stat st {};
    if (::fstat(d.fd, &st) != 0) return Falla(FalloTexto::Lectura, fallo);
    if (!S_ISREG(st.st_mode)) return Falla(FalloTexto::NoRegular, fallo);
    if (static_cast<unsigned long long>(st.st_size) > maximo) return Falla(FalloTexto::Grande, fallo);
    // The file may grow while it is read: no more than the bound, and one
    // byte to tell that it is longer, is ever taken.
    std::string s;
    try {
        s.reserve(static_cast<std::size_t>(st.st_size));
        char bloque[1 << 16];
        for (;;) {
            const std::size_t pedir = std::min(sizeof bloque, maximo + 1 - s.size());
            const ssize_t r = ::read(d.fd, bloque, pedir);
            if (r < 0 && errno == EINTR) continue;
            if (r < 0) return Falla(FalloTexto::Lectura, fallo);
            if (r == 0) break;
            s.append(bloque, static_cast<std::size_t>(r));
            if (s.size() > maximo) return Falla(FalloTexto::Grande, fallo);
        }
    } catch (const std::bad_alloc&) {
        return Falla(FalloTexto::Lectura, fallo);
    }
    return s;
}

Mensaje MensajeFalloTexto(FalloTexto fallo, const std::string& ruta) {
    switch (fallo) {
        case FalloTexto::NoRegular:
            return Mensaje::Libre("El fichero " + ruta + " no es un fichero normal y no se puede leer.");
        case FalloTexto::Grande:
            return Mensaje::Libre("El fichero " + ruta + " es demasiado grande para ser un fichero de texto del programa.");
        case FalloTexto::Lectura:
            return Mensaje::Libre("No se pudo leer el fichero " + ruta + ".");
        case FalloTexto::NoExiste:
            break;
    }
    return Mensaje::Tabla(msg::kArchivoNoExiste);
}

}  // namespace orvela
