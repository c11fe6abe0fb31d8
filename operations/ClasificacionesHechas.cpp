#include "operations/ClasificacionesHechas.h"

#include <functional>
#include <mutex>
#include <string_view>

namespace orvela {

namespace {

struct Registrada {
    long filas = 0, columnas = 0;
    int codigo = 0;
    std::size_t huella = 0;
    ClasificacionHecha c;
};

struct Memoria {
    std::mutex m;
    bool activo = false;
    std::vector<Registrada> hechas;
};

Memoria& Unico() {
    static Memoria r;
    return r;
}

std::size_t Huella(const CImagen& im) {
    const auto* p = reinterpret_cast<const char*>(im.pixeles.Datos());
    return p ? std::hash<std::string_view>{}(std::string_view(p, im.pixeles.Bytes())) : 0;
}

}  // namespace

void ActivarRegistroClasificaciones(bool activo) {
    std::lock_guard l(Unico().m);
    Unico().activo = activo;
}

bool RegistroClasificacionesActivo() {
    std::lock_guard l(Unico().m);
    return Unico().activo;
}

void RecordarClasificacion(const CImagen& resultado, ClasificacionHecha c) {
    if (!RegistroClasificacionesActivo()) return;
    Registrada r{resultado.Filas(), resultado.Columnas(), resultado.pixeles.Codigo(), Huella(resultado), std::move(c)};
    std::lock_guard l(Unico().m);
    Unico().hechas.push_back(std::move(r));
}

std::optional<ClasificacionHecha> BuscarClasificacion(const CImagen& im) {
    {
        std::lock_guard l(Unico().m);
        if (Unico().hechas.empty()) return std::nullopt;
    }
    const std::size_t h = Huella(im);
    std::lock_guard l(Unico().m);
    const auto& v = Unico().hechas;
    for (auto it = v.rbegin(); it != v.rend(); ++it)
        if (it->filas == im.Filas() && it->columnas == im.Columnas() && it->codigo == im.pixeles.Codigo() &&
            it->huella == h)
            return it->c;
    return std::nullopt;
}

void OlvidarClasificaciones() {
    std::lock_guard l(Unico().m);
    Unico().hechas.clear();
}

}  // namespace orvela
