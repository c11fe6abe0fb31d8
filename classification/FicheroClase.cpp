#include "classification/FicheroClase.h"
#include "image/FicheroTexto.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <limits>
#include <locale>
#include <sstream>

namespace orvela {

std::vector<Posicion> GrupoMuestras(ModoMuestreo modo, long fila, long columna, int alto, int ancho) {
    switch (modo) {
        case ModoMuestreo::Puntos: return {{fila, columna}};
        case ModoMuestreo::Cruces:
            return {{fila, columna}, {fila - 1, columna}, {fila, columna - 1}, {fila + 1, columna}, {fila, columna + 1}};
        case ModoMuestreo::Rectangulos: {
            std::vector<Posicion> g;
            for (long dy = -alto; dy <= alto; ++dy)
                for (long dx = -ancho; dx <= ancho; ++dx) g.push_back({fila + dy, columna + dx});
            return g;
        }
    }
    return {};
}

EstadisticasClase CalcularClase(const std::vector<const CImagen*>& bandas, const std::vector<std::string>& nombres,
                                const std::vector<Posicion>& muestras) {
    const std::size_t nb = bandas.size();
    const double n = static_cast<double>(muestras.size());
    std::vector<std::vector<double>> valores(nb);
    EstadisticasClase e;
    for (std::size_t b = 0; b < nb; ++b) {
        auto& v = valores[b];
        v.reserve(muestras.size());
        for (const auto& m : muestras) v.push_back(bandas[b]->ValorPixel(m.fila, m.columna));
        EstadisticaBanda s;
        s.nombre = b < nombres.size() ? nombres[b] : bandas[b]->titulo;
        s.maximo = -std::numeric_limits<double>::infinity();
        s.minimo = std::numeric_limits<double>::infinity();
        double suma = 0;
        for (double x : v) {
            if (x > s.maximo) s.maximo = x;
            if (x < s.minimo) s.minimo = x;
            suma += x;
        }
        s.media = suma / n;
        double cuadrados = 0;
        for (double x : v) cuadrados += (x - s.media) * (x - s.media);
        s.desviacion = std::sqrt(cuadrados / n);
        e.bandas.push_back(std::move(s));
    }
    e.covarianza.assign(nb, std::vector<double>(nb, 0.0));
    for (std::size_t i = 0; i < nb; ++i)
        for (std::size_t j = 0; j < nb; ++j) {
            double suma = 0;
            for (std::size_t k = 0; k < muestras.size(); ++k)
                suma += (valores[i][k] - e.bandas[i].media) * (valores[j][k] - e.bandas[j].media);
            e.covarianza[i][j] = suma / (n - 1);
        }
    return e;
}

std::string TextoFicheroClase(const EstadisticasClase& e) {
    std::ostringstream s;
    s.imbue(std::locale::classic());
    s << "\n\n";
    for (const auto& b : e.bandas) {
        s << b.nombre << "\n";
        s << "ND Máximo:" << b.maximo << "\n";
        s << "ND Mínimo:" << b.minimo << "\n";
        s << "Valor Medio:" << b.media << "\n";
        s << "Desviación Típica:" << b.desviacion << "\n\n";
    }
    s << "Matriz De Covarianza:\n";
    for (const auto& fila : e.covarianza) {
        for (double x : fila) s << x << " ";
        s << "\n";
    }
    return s.str();
}

namespace {

// The reading primitives of the classifiers over the file's bytes.
class Lector {
public:
    explicit Lector(std::string s) : s_(std::move(s)) {}
    // One line of at most 100 characters, its line feed included: a longer
    // line leaves its tail to the next skip.
    void SaltarLinea() {
        for (int k = 0; k < 100 && i_ < s_.size(); ++k)
            if (s_[i_++] == '\n') return;
    }
    // Up to and including the next colon.
    void HastaDosPuntos() {
        while (i_ < s_.size() && s_[i_++] != ':') {
        }
    }
    // A number after blanks, as the C library scans it.
    bool Numero(double& v) {
        if (i_ >= s_.size()) return false;
        const char* ini = s_.c_str() + i_;
        char* fin = nullptr;
        v = std::strtod(ini, &fin);
        if (fin == ini) return false;
        i_ += static_cast<std::size_t>(fin - ini);
        return true;
    }

private:
    std::string s_;
    std::size_t i_ = 0;
};

}  // namespace

std::string TituloClase(const std::string& ruta) {
    const auto barra = ruta.find_last_of("/\\");
    std::string nombre = barra == std::string::npos ? ruta : ruta.substr(barra + 1);
    const auto punto = nombre.find_last_of('.');
    if (punto != std::string::npos && punto > 0) nombre.resize(punto);
    return nombre;
}

std::optional<ClaseLeida> LeerFicheroClase(const std::string& ruta, int bandas, bool conDesviacion,
                                           bool conCovarianza) {
    // Only a regular file, and no more than a text file's bound.
    auto contenido = LeerTextoAcotado(ruta, kMaxTexto);
    if (!contenido) return std::nullopt;
    return AnalizarFicheroClase(std::move(*contenido), TituloClase(ruta), bandas, conDesviacion, conCovarianza);
}

std::optional<ClaseLeida> AnalizarFicheroClase(std::string texto, const std::string& titulo, int bandas,
                                               bool conDesviacion, bool conCovarianza) {
    Lector t{std::move(texto)};
    ClaseLeida c;
    c.nombre = titulo;
    const auto n = static_cast<std::size_t>(bandas < 0 ? 0 : bandas);
    c.media.assign(n, 0.0);
    c.desviacion.assign(n, 0.0);
    t.SaltarLinea();
    t.SaltarLinea();
    for (std::size_t b = 0; b < n; ++b) {
        t.SaltarLinea();  // name
        t.SaltarLinea();  // ND Máximo
        t.SaltarLinea();  // ND Mínimo
        t.HastaDosPuntos();
        if (!t.Numero(c.media[b])) return std::nullopt;
        t.SaltarLinea();
        if (conDesviacion) {
            t.HastaDosPuntos();
            if (!t.Numero(c.desviacion[b])) return std::nullopt;
        }
        t.SaltarLinea();
        t.SaltarLinea();  // blank
    }
    if (conCovarianza) {
        t.SaltarLinea();  // "Matriz De Covarianza:"
        c.covarianza.assign(n, std::vector<double>(n, 0.0));
        for (auto& fila : c.covarianza)
            for (double& x : fila)
                if (!t.Numero(x)) return std::nullopt;
    }
    return c;
}

}  // namespace orvela
