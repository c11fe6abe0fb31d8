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

template <class T> const T& Valores::Buscar(const Clave& c) const {
    auto it = valores_.find(&c);
    if (it == valores_.end()) throw ValorNoDeclarado(std::string("valor sin dar: ") + c.nombre);
    const T* v = std::get_if<T>(&it->second);
    if (!v) throw ValorNoDeclarado(std::string("valor de otra clase: ") + c.nombre);
    return *v;
}

double Valores::Numero(const Clave& c) const { return Buscar<double>(c); }
const std::string& Valores::Texto(const Clave& c) const { return Buscar<std::string>(c); }
const std::vector<double>& Valores::Lista(const Clave& c) const { return Buscar<std::vector<double>>(c); }
const TablaNumeros& Valores::Tabla(const Clave& c) const { return Buscar<TablaNumeros>(c); }

void Resultado::Cancelar() {
    imagenes.clear();
    informes.clear();
    graficos.clear();
    fallo = Fallo{ClaseFallo::Cancelado, Mensaje::Libre(texto::kOperacionCancelada)};
}

bool Declaracion::OfreceVentanaActiva() const {
    return std::any_of(entradas.begin(), entradas.end(), [](const DeclEntrada& e) { return e.admiteVentanaActiva; });
}

bool Declaracion::Declara(const Clave& c) const {
    return std::any_of(campos.begin(), campos.end(), [&](const Campo& k) { return k.clave == &c; });
}

const Clave& ClaveDe(const Declaracion& d, std::string_view nombre) {
    for (const auto& c : d.campos)
        if (nombre == c.clave->nombre) return *c.clave;
    throw ValorNoDeclarado(std::string("campo sin declarar: ") + std::string(nombre));
}

void PonerPorDefecto(const Campo& c, Valores& v) {
    switch (c.tipo) {
        case TipoCampo::Texto: v.Poner(*c.clave, std::string(c.textoPorDefecto)); break;
        case TipoCampo::ListaReales:
            v.Poner(*c.clave, std::vector<double>(c.cantidad ? std::max(0, c.cantidad(v)) : 0, c.porDefecto));
            break;
        case TipoCampo::Tabla: v.Poner(*c.clave, TablaNumeros{}); break;
        default: v.Poner(*c.clave, c.porDefecto); break;
    }
}

Valores Completar(const Declaracion& d, Valores v) {
    for (const auto& c : d.campos)
        if (c.Aplica(v) && !v.Tiene(*c.clave)) PonerPorDefecto(c, v);
    return v;
}

Valores ValoresPorDefecto(const Declaracion& d) { return Completar(d, {}); }

std::function<std::string(const Valores&)> SufijoSegun(const Clave& c, std::vector<const char*> sufijos) {
    return [&c, sufijos = std::move(sufijos)](const Valores& v) {
        const int i = v.Entero(c);
        return std::string(i >= 0 && static_cast<std::size_t>(i) < sufijos.size() ? sufijos[static_cast<std::size_t>(i)] : "");
    };
}

std::function<std::string(const Valores&)> SufijoFijo(const char* sufijo) {
    return [sufijo](const Valores&) { return std::string(sufijo); };
}

std::function<std::optional<Mensaje>(const Valores&, const Elegidas&)> SoloValores(
    std::function<std::optional<Mensaje>(const Valores&)> f) {
    return [f = std::move(f)](const Valores& v, const Elegidas&) { return f(v); };
}

Resultado UnaSalida(const Contexto& c, int codigo,
                    const std::function<std::optional<Mensaje>(CImagen& salida)>& rellenar) {
    Resultado r;
    CImagen salida;
    if (auto e = salida.CopiarCabecera(*c.entradas[0], codigo)) {
        r.FallarSistema(*e);
        return r;
    }
    if (auto e = rellenar(salida)) {
        r.Rechazar(*e);
        return r;
    }
    if (c.progreso.Cancelado()) {
        r.Cancelar();
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
