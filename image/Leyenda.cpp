#include "image/Leyenda.h"

#include <charconv>
#include <cstdio>

#include "image/CImagen.h"
#include "image/Codificacion.h"
#include "image/Conversion.h"
#include "image/FicheroSeguro.h"
#include "image/FicheroTexto.h"

namespace orvela {

namespace {

bool EsBlanco(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f'; }

std::optional<std::string> LeerTodo(const std::string& ruta) { return LeerTextoAcotado(ruta, kMaxTexto); }

// A cursor over the legend text with the reading primitives of the two
// readers: formatted stream extraction and formatted scanning.
class Texto {
public:
    explicit Texto(const std::string& s) : s_(s) {}

    bool Fin() const { return i_ >= s_.size(); }
    void SaltarBlancos() {
        while (i_ < s_.size() && EsBlanco(s_[i_])) ++i_;
    }
    // Up to and including `c` (or to the end).
    void SaltarHasta(char c) {
        while (i_ < s_.size() && s_[i_++] != c) {
        }
    }
    // One whitespace-delimited word; false at the end of the text.
    bool Palabra(std::string& w) {
        SaltarBlancos();
        if (Fin()) return false;
        const std::size_t ini = i_;
        while (i_ < s_.size() && !EsBlanco(s_[i_])) ++i_;
        w = s_.substr(ini, i_ - ini);
        return true;
    }
    // A decimal integer after blanks ("%d", or extraction into an int).
    bool Entero(long& v) {
        SaltarBlancos();
        const char* ini = s_.data() + i_;
        const char* fin = s_.data() + s_.size();
        const char* p = ini;
        if (p < fin && *p == '+') ++p;
        long x = 0;
        auto r = std::from_chars(p, fin, x);
        if (r.ptr == p || r.ec != std::errc() || (p > ini && *p == '-')) return false;
        i_ = static_cast<std::size_t>(r.ptr - s_.data());
        v = x;
        return true;
    }
    // A real number after blanks ("%f"): the longest numeric prefix.
    bool Real(double& v) {
        SaltarBlancos();
        const char* ini = s_.data() + i_;
        const char* fin = s_.data() + s_.size();
        const char* p = ini;
        bool negativo = false;
        if (p < fin && (*p == '+' || *p == '-')) negativo = *p++ == '-';
        double x = 0;
        auto r = std::from_chars(p, fin, x);
        if (r.ptr == p || (p < fin && (*p == '+' || *p == '-'))) return false;
        i_ = static_cast<std::size_t>(r.ptr - s_.data());
        v = negativo ? -x : x;
        return true;
    }
    // Matches a scanning pattern of plain characters, where a blank stands
    // for any run of blanks (none included). Stops at the first mismatch,
    // leaving what matched consumed.
    bool Patron(std::string_view patron) {
        for (const char c : patron) {
            if (c == ' ') {
                SaltarBlancos();
                continue;
            }
            if (Fin() || s_[i_] != c) return false;
            ++i_;
        }
        return true;
    }

private:
    const std::string& s_;
    std::size_t i_ = 0;
};

}  // namespace

std::string RutaLeyenda(const std::string& rutaRaster) { return CambiarExtension(rutaRaster, "Leyenda.txt"); }

std::string TextoLeyenda(const std::vector<ClaseLeyenda>& clases) {
    std::string s = std::to_string(clases.size()) + "\n";
    for (const auto& c : clases) {
        s += c.nombre;
        s += "\nND Clase:";
        s += std::to_string(TruncarA32(c.nd));
        s += "\n\n";
    }
    return s;
}

bool EscribirLeyenda(const std::string& rutaRaster, const std::vector<ClaseLeyenda>& clases) {
    return EscribirFicheroSeguro(RutaLeyenda(rutaRaster), Utf8ACp1252(TextoLeyenda(clases)));
}

std::optional<std::vector<ClaseLeyenda>> LeerLeyendaVentana(const std::string& rutaRaster) {
    const auto contenido = LeerTodo(RutaLeyenda(rutaRaster));
    if (!contenido) return std::nullopt;
    return LeerLeyendaVentanaTexto(*contenido);
}

std::vector<ClaseLeyenda> LeerLeyendaVentanaTexto(const std::string& contenido) {
    Texto t(contenido);
    std::vector<ClaseLeyenda> clases;
    long k = 0;
    if (!t.Entero(k)) return clases;
    t.SaltarHasta('\n');
    // The count is believed only as far as the text goes: a reading that
    // fails ends the list, as a failed stream reads nothing more.
    for (long i = 0; i < k; ++i) {
        ClaseLeyenda c;
        long nd = 0;
        if (!t.Palabra(c.nombre)) break;
        t.SaltarHasta(':');
        if (!t.Entero(nd)) break;
        t.SaltarHasta('\n');
        c.nombre = Cp1252AUtf8(c.nombre);
        c.nd = static_cast<double>(nd);
        clases.push_back(std::move(c));
    }
    return clases;
}

std::optional<std::vector<ClaseLeyenda>> LeerLeyendaConfusion(const std::string& rutaRaster) {
    const auto contenido = LeerTodo(RutaLeyenda(rutaRaster));
    if (!contenido) return std::nullopt;
    return LeerLeyendaConfusionTexto(*contenido);
}

std::vector<ClaseLeyenda> LeerLeyendaConfusionTexto(const std::string& contenido) {
    Texto t(contenido);
    std::vector<ClaseLeyenda> clases;
    long k = 0;
    if (!t.Entero(k)) return clases;  // "%d\n"
    t.SaltarBlancos();
    // Per class "%s\n" then "ND Clase:%f\n\n". A line that does not match
    // the pattern leaves the number as the previous class had it and the
    // text where the mismatch was, so the next name is read from there: a
    // class name with a blank shifts every later class.
    double nd = 0;
    for (long i = 0; i < k; ++i) {
        std::string nombre;
        if (!t.Palabra(nombre)) break;
        t.SaltarBlancos();
        if (t.Patron("ND Clase:")) {
            double v = 0;
            if (t.Real(v)) {
                nd = v;
                t.SaltarBlancos();
            }
        }
        clases.push_back({Cp1252AUtf8(nombre), nd});
    }
    return clases;
}

}  // namespace orvela
