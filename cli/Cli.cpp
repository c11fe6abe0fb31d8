#include "cli/Cli.h"

#include <cctype>

#include <charconv>
#include <cmath>

#include "image/Codificacion.h"
#include "operations/Curso.h"
#include "operations/Operacion.h"

namespace orvela::cli {

namespace {

std::vector<OrdenEspecial>& Especiales() {
    static std::vector<OrdenEspecial> v;
    return v;
}

const char* NombreTipoCampo(const Campo& c) {
    switch (c.tipo) {
        case TipoCampo::Entero: return "ENTERO";
        case TipoCampo::Real: return "NÚMERO";
        case TipoCampo::Texto: return "TEXTO";
        case TipoCampo::ListaReales: return "c1,c2,...";
        case TipoCampo::Eleccion: break;
    }
    return "";
}

std::string SintaxisDeclaracion(const Declaracion& d) {
    std::string s;
    std::set<std::string> vistas;
    for (const auto& c : d.campos) {
        if (!vistas.insert(c.opcionCli).second) continue;
        std::string valor;
        if (c.tipo == TipoCampo::Eleccion) {
            for (const auto& campo : d.campos) {
                if (std::string(campo.opcionCli) != c.opcionCli) continue;
                for (const auto& o : campo.opciones) valor += (valor.empty() ? "" : "|") + std::string(o.palabra);
            }
        } else {
            valor = NombreTipoCampo(c);
        }
        const std::string op = std::string(c.opcionCli) + " " + valor;
        s += (c.obligatorio && !c.aplica) ? op + " " : "[" + op + "] ";
    }
    for (std::size_t i = 0; i < d.entradas.size(); ++i) s += d.entradas.size() == 1 ? "ENTRADA " : "IMAGEN" + std::to_string(i + 1) + " ";
    if (d.conSalida) s += "SALIDA";
    return s;
}

void AyudaGeneral(std::ostream& out) {
    out << "Uso: orvela-cli ORDEN [OPCIONES] ARGUMENTOS\n"
           "Ejecuta las operaciones de Orvela sin ventanas. 'orvela-cli ORDEN --help' describe una orden.\n\n"
           "Órdenes:\n";
    for (const auto* d : Catalogo()) out << "  " << d->orden << "\t" << d->resumen << "\n";
    for (const auto& o : Especiales()) out << "  " << o.nombre << "\t" << o.resumen << "\n";
}

void AyudaDeclaracion(std::ostream& out, const Declaracion& d) {
    out << "Uso: orvela-cli " << d.orden << " " << SintaxisDeclaracion(d) << "\n" << d.resumen << "\n";
    std::set<std::string> vistas;
    for (const auto& c : d.campos) {
        if (!vistas.insert(c.opcionCli).second) continue;
        out << "  " << c.opcionCli << "\t" << c.ayudaCli << "\n";
    }
}

std::optional<std::vector<double>> LeerLista(const std::string& s) {
    std::vector<double> r;
    std::size_t i = 0;
    while (i <= s.size()) {
        const auto coma = s.find(',', i);
        const std::string parte = s.substr(i, coma == std::string::npos ? std::string::npos : coma - i);
        auto v = LeerReal(parte);
        if (!v) return std::nullopt;
        r.push_back(*v);
        if (coma == std::string::npos) break;
        i = coma + 1;
    }
    return r;
}

int EjecutarDeclaracion(const Declaracion& d, const std::vector<std::string>& args, std::ostream& out,
                        std::ostream& err) {
    std::set<std::string> validas;
    for (const auto& c : d.campos) validas.insert(c.opcionCli);
    auto a = Separar(args, validas);
    if (!a) return Uso(err, d.orden);
    if (a->ayuda) {
        AyudaDeclaracion(out, d);
        return kExito;
    }
    const std::size_t esperados = d.entradas.size() + (d.conSalida ? 1 : 0);
    if (a->posicionales.size() != esperados) return Uso(err, d.orden, "número de argumentos incorrecto");

    Valores v;
    for (const auto& c : d.campos) {
        if (!c.Aplica(v)) continue;
        auto it = a->opciones.find(c.opcionCli);
        if (it == a->opciones.end()) {
            if (c.obligatorio) return Uso(err, d.orden, std::string("falta ") + c.opcionCli);
            Valores parcial = v;
            switch (c.tipo) {
                case TipoCampo::Texto: v.Poner(c.clave, std::string(c.textoPorDefecto)); break;
                case TipoCampo::ListaReales:
                    v.Poner(c.clave, std::vector<double>(c.cantidad ? std::max(0, c.cantidad(parcial)) : 0, c.porDefecto));
                    break;
                default: v.Poner(c.clave, c.porDefecto); break;
            }
            continue;
        }
        const std::string& texto = it->second;
        switch (c.tipo) {
            case TipoCampo::Eleccion: {
                int indice = -1;
                for (std::size_t k = 0; k < c.opciones.size(); ++k)
                    if (texto == c.opciones[k].palabra) indice = static_cast<int>(k);
                if (indice < 0) return Uso(err, d.orden, "valor no válido para " + std::string(c.opcionCli));
                v.Poner(c.clave, static_cast<double>(indice));
                break;
            }
            case TipoCampo::Entero: {
                auto n = LeerEntero(texto);
                if (!n) return Uso(err, d.orden, "se esperaba un número entero en " + std::string(c.opcionCli));
                v.Poner(c.clave, static_cast<double>(*n));
                break;
            }
            case TipoCampo::Real: {
                auto n = LeerReal(texto);
                if (!n) return Uso(err, d.orden, "se esperaba un número en " + std::string(c.opcionCli));
                v.Poner(c.clave, *n);
                break;
            }
            case TipoCampo::Texto: v.Poner(c.clave, texto); break;
            case TipoCampo::ListaReales: {
                auto l = LeerLista(texto);
                const int n = c.cantidad ? c.cantidad(v) : -1;
                if (!l || (n >= 0 && static_cast<int>(l->size()) != n))
                    return Uso(err, d.orden, "lista de valores incorrecta en " + std::string(c.opcionCli));
                v.Poner(c.clave, *l);
                break;
            }
        }
    }
    std::vector<std::string> entradas(a->posicionales.begin(), a->posicionales.begin() + d.entradas.size());
    const std::string stem = d.conSalida ? StemSalida(a->posicionales.back()) : std::string();
    if (d.conSalida) {
        // Refused before any work: "", ".ozm", "/" or "dir/" name no file.
        if (auto e = ComprobarNombreImagen(stem + ".ozm")) {
            ImprimirMensaje(err, *e);
            return kUso;
        }
    }
    Ejecucion ej = EjecutarAFichero(d, entradas, v, stem);
    for (const auto& m : ej.avisos) ImprimirMensaje(err, m);
    if (ej.error) {
        ImprimirMensaje(err, *ej.error);
        return ej.falloSistema ? kFallo : kRechazo;
    }
    out << ej.consola;
    return kExito;
}

}  // namespace

RegistroOrden::RegistroOrden(OrdenEspecial o) { Especiales().push_back(std::move(o)); }
const std::vector<OrdenEspecial>& OrdenesEspeciales() { return Especiales(); }

std::optional<Argumentos> Separar(const std::vector<std::string>& args, const std::set<std::string>& validas,
                                  const std::set<std::string>& banderas) {
    Argumentos a;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& s = args[i];
        // An option takes the next argument as its value whatever it says
        // ("--titulo --help" is a title).
        if (validas.count(s) && i + 1 < args.size()) {
            a.opciones[s] = args[i + 1];
            a.todas.emplace(s, args[i + 1]);
            ++i;
        } else if (s == "--help" || s == "-h") {
            a.ayuda = true;
        } else if (s.size() > 2 && s.rfind("--", 0) == 0) {
            if (banderas.count(s)) {
                a.banderas.insert(s);
                continue;
            }
            if (!validas.count(s) || i + 1 >= args.size()) return std::nullopt;
            a.opciones[s] = args[i + 1];
            a.todas.emplace(s, args[i + 1]);
            ++i;
        } else {
            a.posicionales.push_back(s);
        }
    }
    return a;
}

std::optional<double> LeerReal(const std::string& s) {
    if (s.empty()) return std::nullopt;
    const char* p = s.data();
    if (*p == '+') ++p;
    double v = 0;
    auto r = std::from_chars(p, s.data() + s.size(), v);
    if (r.ec != std::errc() || r.ptr != s.data() + s.size() || !std::isfinite(v)) return std::nullopt;
    return v;
}

std::optional<long> LeerEntero(const std::string& s) {
    if (s.empty()) return std::nullopt;
    const char* p = s.data();
    if (*p == '+') ++p;
    long v = 0;
    auto r = std::from_chars(p, s.data() + s.size(), v);
    if (r.ec != std::errc() || r.ptr != s.data() + s.size()) return std::nullopt;
    return v;
}

std::string StemSalida(const std::string& s) {
    if (s.size() >= 4 && s[s.size() - 4] == '.' && std::tolower(static_cast<unsigned char>(s[s.size() - 3])) == 'o' &&
        std::tolower(static_cast<unsigned char>(s[s.size() - 2])) == 'z' &&
        std::tolower(static_cast<unsigned char>(s[s.size() - 1])) == 'm')
        return s.substr(0, s.size() - 4);
    return s;
}

void ImprimirMensaje(std::ostream& err, const Mensaje& m) {
    if (m.id != 0)
        err << m.id << ": " << m.Texto() << "\n";
    else
        err << m.Texto() << "\n";
}

int Uso(std::ostream& err, const std::string& orden, const std::string& detalle) {
    err << "Uso: orvela-cli " << (orden.empty() ? "ORDEN" : orden) << " [OPCIONES] ARGUMENTOS"
        << (detalle.empty() ? "" : " (" + detalle + ")") << "; 'orvela-cli " << (orden.empty() ? "" : orden + " ")
        << "--help' da la ayuda.\n";
    return kUso;
}

int Ejecutar(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) return Uso(err, "");
    const std::string& orden = args[0];
    if (orden == "--help" || orden == "-h" || orden == "ayuda") {
        AyudaGeneral(out);
        return kExito;
    }
    const std::vector<std::string> resto(args.begin() + 1, args.end());
    if (const Declaracion* d = BuscarPorOrden(orden)) return EjecutarDeclaracion(*d, resto, out, err);
    for (const auto& o : Especiales()) {
        if (orden == o.nombre) {
            for (std::size_t i = 0; i < resto.size(); ++i)
                if ((resto[i] == "--help" || resto[i] == "-h") && (i == 0 || resto[i - 1].rfind("--", 0) != 0)) {
                    out << "Uso: orvela-cli " << o.nombre << " " << o.sintaxis << "\n" << o.resumen << "\n";
                    return kExito;
                }
            return o.ejecutar(resto, out, err);
        }
    }
    return Uso(err, "", "orden desconocida: " + orden);
}

}  // namespace orvela::cli
