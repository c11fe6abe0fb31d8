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
        case TipoCampo::ListaReales:
        case TipoCampo::Tabla: return "v1,v2,...";
        case TipoCampo::Casilla:
        case TipoCampo::Eleccion: break;
    }
    return "";
}

std::string EtiquetaEntrada(const Declaracion& d, std::size_t i) {
    const DeclEntrada& e = d.entradas[i];
    if (*e.etiquetaCli) return e.etiquetaCli;
    if (e.clase == ClaseEntrada::Bandas) return "BANDA";
    if (e.clase == ClaseEntrada::Fichero) return "FICHERO";
    return d.entradas.size() == 1 ? "ENTRADA" : "IMAGEN" + std::to_string(i + 1);
}

std::string SintaxisDeclaracion(const Declaracion& d) {
    std::string s;
    std::set<std::string> vistas;
    for (const auto& c : d.campos) {
        if (!vistas.insert(c.opcionCli).second) continue;
        std::string op = c.opcionCli;
        if (c.tipo == TipoCampo::Eleccion) {
            std::string valor;
            for (const auto& campo : d.campos) {
                if (std::string(campo.opcionCli) != c.opcionCli) continue;
                for (const auto& o : campo.opciones) valor += (valor.empty() ? "" : "|") + std::string(o.palabra);
            }
            op += " " + valor;
        } else if (c.tipo != TipoCampo::Casilla) {
            op += std::string(" ") + NombreTipoCampo(c);
        }
        if (c.tipo == TipoCampo::Tabla) op += " [" + std::string(c.opcionCli) + " ...]";
        s += (c.obligatorio && !c.aplica) ? op + " " : "[" + op + "] ";
    }
    for (std::size_t i = 0; i < d.entradas.size(); ++i) {
        const DeclEntrada& e = d.entradas[i];
        const std::string nombre = EtiquetaEntrada(d, i);
        const bool varios = e.maximo > 1;
        if (*e.opcionCli)
            s += std::string(e.opcionCli) + " " + nombre + (varios ? " [" + std::string(e.opcionCli) + " ...] " : " ");
        else
            s += nombre + (varios ? "... " : " ");
    }
    if (d.conSalida) s += d.salidaPrefijo ? "PREFIJO" : "SALIDA";
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
    for (const auto& e : d.entradas)
        if (*e.opcionCli) out << "  " << e.opcionCli << "\t" << e.ayudaCli << "\n";
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

// The value of one field from its option's text; the usage detail when it
// does not parse.
std::optional<std::string> LeerCampo(const Campo& c, const std::string& texto, Valores& v) {
    switch (c.tipo) {
        case TipoCampo::Eleccion:
            for (std::size_t k = 0; k < c.opciones.size(); ++k)
                if (texto == c.opciones[k].palabra) {
                    v.Poner(*c.clave, static_cast<double>(k));
                    return std::nullopt;
                }
            return "valor no válido para " + std::string(c.opcionCli);
        case TipoCampo::Entero: {
            auto n = LeerEntero(texto);
            if (!n) return "se esperaba un número entero en " + std::string(c.opcionCli);
            v.Poner(*c.clave, static_cast<double>(*n));
            return std::nullopt;
        }
        case TipoCampo::Real: {
            auto n = LeerReal(texto);
            if (!n) return "se esperaba un número en " + std::string(c.opcionCli);
            v.Poner(*c.clave, *n);
            return std::nullopt;
        }
        case TipoCampo::Texto: v.Poner(*c.clave, texto); return std::nullopt;
        case TipoCampo::ListaReales: {
            auto l = LeerLista(texto);
            const int n = c.cantidad ? c.cantidad(v) : -1;
            if (!l || (n >= 0 && static_cast<int>(l->size()) != n))
                return "lista de valores incorrecta en " + std::string(c.opcionCli);
            v.Poner(*c.clave, *l);
            return std::nullopt;
        }
        case TipoCampo::Casilla:
        case TipoCampo::Tabla: break;
    }
    return std::nullopt;
}

}  // namespace

int EjecutarDeclaracion(const Declaracion& d, const std::vector<std::string>& args, std::ostream& out,
                        std::ostream& err, Progreso& progreso) {
    std::set<std::string> validas, banderas;
    for (const auto& c : d.campos) (c.tipo == TipoCampo::Casilla ? banderas : validas).insert(c.opcionCli);
    for (const auto& e : d.entradas)
        if (*e.opcionCli) validas.insert(e.opcionCli);
    auto a = Separar(args, validas, banderas);
    if (!a) return Uso(err, d.orden);
    if (a->ayuda) {
        AyudaDeclaracion(out, d);
        return kExito;
    }

    // Positional arguments: the images without an option of their own, in
    // order (a list takes what the others leave), then the output.
    std::vector<std::size_t> posicionales;
    int listas = 0;
    for (std::size_t i = 0; i < d.entradas.size(); ++i)
        if (!*d.entradas[i].opcionCli && d.entradas[i].clase != ClaseEntrada::Fichero) {
            posicionales.push_back(i);
            if (d.entradas[i].maximo > 1 || d.entradas[i].minimo == 0) ++listas;
        }
    const std::size_t salida = d.conSalida ? 1 : 0;
    const std::size_t fijas = posicionales.size() - static_cast<std::size_t>(listas);
    // A list that may be empty (minimo 0) needs no argument.
    std::size_t listasObligatorias = 0;
    for (std::size_t i : posicionales)
        if (d.entradas[i].maximo > 1 && d.entradas[i].minimo > 0) ++listasObligatorias;
    // A list, or an input that may be left out, takes what the others leave.
    auto variable = [&](std::size_t i) { return d.entradas[i].maximo > 1 || d.entradas[i].minimo == 0; };
    if (a->posicionales.size() < fijas + salida + listasObligatorias ||
        (listas == 0 && a->posicionales.size() != fijas + salida))
        return Uso(err, d.orden, "número de argumentos incorrecto");
    std::vector<std::vector<std::string>> imagenes(d.entradas.size()), ficheros(d.entradas.size());
    std::size_t k = 0;
    const std::size_t enLista = a->posicionales.size() - salida - fijas;
    for (std::size_t i : posicionales) {
        const std::size_t n = variable(i) ? enLista : 1;
        for (std::size_t j = 0; j < n; ++j) imagenes[i].push_back(a->posicionales[k++]);
    }
    for (std::size_t i = 0; i < d.entradas.size(); ++i) {
        const DeclEntrada& e = d.entradas[i];
        if (!*e.opcionCli) continue;
        auto& destino = e.clase == ClaseEntrada::Fichero ? ficheros[i] : imagenes[i];
        auto [desde, hasta] = a->todas.equal_range(e.opcionCli);
        for (auto it = desde; it != hasta; ++it) destino.push_back(it->second);
        if (destino.empty() && e.minimo > 0) return Uso(err, d.orden, std::string("falta ") + e.opcionCli);
        if (destino.size() > static_cast<std::size_t>(e.maximo))
            return Uso(err, d.orden, std::string("demasiados ") + e.opcionCli);
    }

    Valores v;
    for (const auto& c : d.campos) {
        if (!c.Aplica(v)) continue;
        if (c.tipo == TipoCampo::Casilla) {
            v.Poner(*c.clave, a->banderas.count(c.opcionCli) ? 1.0 : 0.0);
            continue;
        }
        if (c.tipo == TipoCampo::Tabla) {
            TablaNumeros filas;
            auto [desde, hasta] = a->todas.equal_range(c.opcionCli);
            const int n = c.cantidad ? c.cantidad(v) : -1;
            for (auto it = desde; it != hasta; ++it) {
                auto l = LeerLista(it->second);
                if (!l || (n >= 0 && static_cast<int>(l->size()) != n))
                    return Uso(err, d.orden, "fila de valores incorrecta en " + std::string(c.opcionCli));
                filas.push_back(*l);
            }
            if (filas.empty() && c.obligatorio) return Uso(err, d.orden, std::string("falta ") + c.opcionCli);
            v.Poner(*c.clave, std::move(filas));
            continue;
        }
        auto it = a->opciones.find(c.opcionCli);
        if (it == a->opciones.end()) {
            if (c.obligatorio) return Uso(err, d.orden, std::string("falta ") + c.opcionCli);
            PonerPorDefecto(c, v);
            continue;
        }
        if (auto detalle = LeerCampo(c, it->second, v)) return Uso(err, d.orden, *detalle);
    }
    const std::string stem = d.conSalida ? StemSalida(a->posicionales.back()) : std::string();
    if (d.conSalida) {
        // Refused before any work: "", ".ozm", "/" or "dir/" name no file.
        if (auto e = ComprobarNombreImagen(stem + ".ozm")) {
            ImprimirMensaje(err, *e);
            return kUso;
        }
    }
    Ejecucion ej = EjecutarAFichero(d, imagenes, ficheros, v, stem, progreso);
    progreso.Terminar();
    for (const auto& m : ej.avisos) ImprimirMensaje(err, m);
    if (ej.fallo) {
        ImprimirMensaje(err, ej.fallo->mensaje);
        return ej.fallo->clase == ClaseFallo::Rechazo ? kRechazo : kFallo;
    }
    out << ej.consola;
    return kExito;
}

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

int Ejecutar(const std::vector<std::string>& args, std::ostream& out, std::ostream& err, Progreso& progreso) {
    if (args.empty()) return Uso(err, "");
    const std::string& orden = args[0];
    if (orden == "--help" || orden == "-h" || orden == "ayuda") {
        AyudaGeneral(out);
        return kExito;
    }
    const std::vector<std::string> resto(args.begin() + 1, args.end());
    if (const Declaracion* d = BuscarPorOrden(orden)) return EjecutarDeclaracion(*d, resto, out, err, progreso);
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
