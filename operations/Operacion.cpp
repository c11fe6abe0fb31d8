#include "operations/Operacion.h"

#include <algorithm>

namespace orvela {

namespace {
std::vector<const Declaracion*>& Lista() {
    static std::vector<const Declaracion*> lista;
    return lista;
}
}  // namespace

Registro::Registro(const Declaracion& d) {
    auto& l = Lista();
    l.insert(std::upper_bound(l.begin(), l.end(), &d,
                              [](const Declaracion* a, const Declaracion* b) { return a->idComando < b->idComando; }),
             &d);
}

const std::vector<const Declaracion*>& Catalogo() { return Lista(); }

const Declaracion* BuscarPorOrden(std::string_view orden) {
    for (const auto* d : Lista())
        if (orden == d->orden) return d;
    return nullptr;
}

const Declaracion* BuscarPorComando(int id) {
    for (const auto* d : Lista())
        if (d->idComando == id) return d;
    return nullptr;
}

double Valores::Numero(Clave c) const {
    auto it = numeros_.find(c);
    return it == numeros_.end() ? 0.0 : it->second;
}

const std::string& Valores::Texto(Clave c) const {
    static const std::string vacio;
    auto it = textos_.find(c);
    return it == textos_.end() ? vacio : it->second;
}

const std::vector<double>& Valores::Lista(Clave c) const {
    static const std::vector<double> vacia;
    auto it = listas_.find(c);
    return it == listas_.end() ? vacia : it->second;
}

bool Valores::Tiene(Clave c) const { return numeros_.count(c) || textos_.count(c) || listas_.count(c); }

Valores ValoresPorDefecto(const Declaracion& d) {
    Valores v;
    for (const auto& c : d.campos) {
        if (!c.Aplica(v)) continue;
        switch (c.tipo) {
            case TipoCampo::Texto: v.Poner(c.clave, std::string(c.textoPorDefecto)); break;
            case TipoCampo::ListaReales:
                v.Poner(c.clave, std::vector<double>(c.cantidad ? std::max(0, c.cantidad(v)) : 0, c.porDefecto));
                break;
            default: v.Poner(c.clave, c.porDefecto); break;
        }
    }
    return v;
}

std::function<std::string(const Valores&)> SufijoSegun(Clave c, std::vector<const char*> sufijos) {
    return [c, sufijos = std::move(sufijos)](const Valores& v) {
        const int i = v.Entero(c);
        return std::string(i >= 0 && static_cast<std::size_t>(i) < sufijos.size() ? sufijos[static_cast<std::size_t>(i)] : "");
    };
}

std::function<std::string(const Valores&)> SufijoFijo(const char* sufijo) {
    return [sufijo](const Valores&) { return std::string(sufijo); };
}

Resultado UnaSalida(const Contexto& c, int codigo,
                    const std::function<std::optional<Mensaje>(CImagen& salida)>& rellenar) {
    Resultado r;
    CImagen salida;
    if (auto e = salida.CopiarCabecera(*c.entradas[0], codigo)) {
        r.error = e;
        return r;
    }
    if (auto e = rellenar(salida)) {
        r.error = e;
        return r;
    }
    r.imagenes.push_back(std::move(salida));
    return r;
}

Resultado UnaSalida(const Contexto& c, int codigo, const std::function<bool(CImagen& salida)>& rellenar) {
    return UnaSalida(c, codigo, [&](CImagen& s) -> std::optional<Mensaje> {
        if (!rellenar(s)) return Mensaje::Tabla(msg::kTipoNoReconocido);
        return std::nullopt;
    });
}

}  // namespace orvela
