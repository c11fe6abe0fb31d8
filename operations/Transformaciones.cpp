#include "operations/Transformaciones.h"

namespace orvela {

std::optional<Mensaje> CompararCabeceras(const Cabecera& x, const Cabecera& y, const char* nombre) {
    if (CodigoDeNombre(x.nombreTipo) != CodigoDeNombre(y.nombreTipo))
        return Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, nombre);
    if (x.filas != y.filas || x.columnas != y.columnas)
        return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, nombre);
    return std::nullopt;
}

std::optional<Mensaje> CompararCargadas(const CImagen& x, const CImagen& y, const char* nombre) {
    if (x.tipoDato != y.tipoDato) return Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, nombre);
    if (x.filas != y.filas || x.columnas != y.columnas)
        return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, nombre);
    return std::nullopt;
}

std::optional<Mensaje> ComprobarPares(const std::vector<ParBandas>& pares, int indice, const Cabecera& elegida,
                                      const std::vector<std::optional<Cabecera>>& previas) {
    for (const auto& p : pares) {
        int otra = -1;
        if (p.a == indice) otra = p.b;
        else if (p.b == indice) otra = p.a;
        if (otra < 0 || otra >= static_cast<int>(previas.size()) || !previas[static_cast<std::size_t>(otra)]) continue;
        if (auto m = CompararCabeceras(*previas[static_cast<std::size_t>(otra)], elegida, p.nombre)) return m;
    }
    return std::nullopt;
}

std::optional<Mensaje> ComprobarParesCargados(const std::vector<ParBandas>& pares,
                                              const std::vector<const CImagen*>& e) {
    for (const auto& p : pares) {
        if (p.a >= static_cast<int>(e.size()) || p.b >= static_cast<int>(e.size())) continue;
        if (auto m = CompararCargadas(*e[static_cast<std::size_t>(p.a)], *e[static_cast<std::size_t>(p.b)], p.nombre))
            return m;
    }
    return std::nullopt;
}

std::optional<Mensaje> ComprobarBandaConPrimera(int indice, const Cabecera& elegida,
                                                const std::vector<std::optional<Cabecera>>& previas) {
    for (int k = 0; k < static_cast<int>(previas.size()); ++k) {
        if (k == indice || !previas[static_cast<std::size_t>(k)]) continue;
        return CompararCabeceras(*previas[static_cast<std::size_t>(k)], elegida, relleno::kBandas);
    }
    return std::nullopt;
}

std::optional<Mensaje> ComprobarBandasCargadas(const std::vector<const CImagen*>& e) {
    for (std::size_t k = 1; k < e.size(); ++k)
        if (auto m = CompararCargadas(*e[0], *e[k], relleno::kBandas)) return m;
    return std::nullopt;
}

Resultado VariasSalidas(const Contexto& c, const CImagen& modelo, int codigo, const std::vector<SalidaNombrada>& nombres,
                        const std::function<bool(std::vector<Muestras*>&)>& rellenar) {
    Resultado r;
    r.imagenes.resize(nombres.size());
    std::vector<Muestras*> buffers;
    for (std::size_t k = 0; k < nombres.size(); ++k) {
        if (auto e = r.imagenes[k].CopiarCabecera(modelo, codigo)) {
            r = Resultado{};
            r.FallarSistema(*e);
            return r;
        }
        r.imagenes[k].titulo = nombres[k].titulo;
        r.finales.push_back(nombres[k].final);
        buffers.push_back(&r.imagenes[k].pixeles);
    }
    r.titulosPropios = true;
    if (!rellenar(buffers)) {
        const bool cancelado = c.progreso.Cancelado();
        r = Resultado{};
        if (cancelado)
            r.Cancelar();
        else
            r.Rechazar(Mensaje::Tabla(msg::kTipoNoReconocido));
    }
    return r;
}

}  // namespace orvela
