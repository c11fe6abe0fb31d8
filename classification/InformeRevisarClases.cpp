// "Revisar clases": the report text.
#include <cmath>
#include <cstdarg>
#include <cstdio>

#include "classification/RevisarClases.h"

namespace orvela {

namespace {

std::string Formato(const char* f, ...) {
    char b[256];
    va_list a;
    va_start(a, f);
    const int n = std::vsnprintf(b, sizeof b, f, a);
    va_end(a);
    return n <= 0 ? std::string() : std::string(b, static_cast<std::size_t>(n) < sizeof b ? n : sizeof b - 1);
}

// Characters (not bytes) of a UTF-8 text.
std::size_t Caracteres(const std::string& s) {
    std::size_t n = 0;
    for (unsigned char c : s) n += (c & 0xC0) != 0x80;
    return n;
}

std::string Izquierda(const std::string& s, std::size_t ancho) {
    const std::size_t n = Caracteres(s);
    return n >= ancho ? s + " " : s + std::string(ancho - n, ' ');
}

std::string Derecha(const std::string& s, std::size_t ancho) {
    const std::size_t n = Caracteres(s);
    return n >= ancho ? " " + s : std::string(ancho - n, ' ') + s;
}

std::string TextoEstado(const RevisionClase& c) {
    switch (c.estado) {
        case EstadoCovarianza::Buena: return "correcta";
        case EstadoCovarianza::CasiSingular: return "casi singular";
        case EstadoCovarianza::Singular: return "singular";
        case EstadoCovarianza::NoFinita: return "no calculable";
    }
    return "";
}

std::string Par(const RevisionClases& r, int i, int j) {
    return r.clases[static_cast<std::size_t>(i)].nombre + " - " + r.clases[static_cast<std::size_t>(j)].nombre;
}

void Avisos(const RevisionClases& r, std::vector<std::string>& avisos) {
    const int n = r.bandas;
    for (const auto& c : r.clases) {
        const std::string q = c.nombre + ": ";
        if (c.sinMuestras) {
            avisos.push_back(q + "la clase no tiene ninguna muestra (sus medias no son números). No se puede "
                                 "clasificar con ella: ningún píxel se le parecerá. Vuelva a tomar sus muestras.");
            continue;
        }
        if (c.menosDeDos) {
            avisos.push_back(q + "la clase tiene una sola muestra: su desviación típica es 0 y su covarianza se ha "
                                 "dividido por n - 1 = 0, así que no es un número. Los paralelepípedos solo aceptarán "
                                 "píxeles iguales a la muestra y la máxima probabilidad no la puede usar. Tome al "
                                 "menos " + std::to_string(n + 1) + " muestras.");
            continue;
        }
        if (c.muestras && *c.muestras <= n) {
            avisos.push_back(q + Formato("unas %ld muestras para %d bandas: pocas. Con n muestras la covarianza tiene "
                                         "como mucho rango n - 1, así que con menos de %d muestras (bandas + 1) es "
                                         "singular y la máxima probabilidad no la puede invertir. Tome al menos %d "
                                         "muestras (mejor de 10 a 100 por banda).",
                                         *c.muestras, n, n + 1, n + 1));
        } else if (c.muestras && *c.muestras < 10L * n) {
            avisos.push_back(q + Formato("unas %ld muestras para %d bandas: la covarianza se estima con poca "
                                         "seguridad. Se recomiendan de 10 a 100 muestras por banda (al menos %d).",
                                         *c.muestras, n, 10 * n));
        }
        if (c.estado == EstadoCovarianza::Singular) {
            avisos.push_back(q + Formato("la matriz de covarianza es singular (determinante %g). La máxima "
                                         "probabilidad usa su logaritmo y su inversa: con ella la clase no da un "
                                         "valor finito y sus píxeles irán a otras clases. Suele deberse a muy pocas "
                                         "muestras, a muestras todas iguales en alguna banda o a bandas que repiten "
                                         "la misma información.",
                                         c.determinante));
        } else if (c.estado == EstadoCovarianza::CasiSingular) {
            avisos.push_back(q + Formato("la matriz de covarianza es casi singular (su menor valor propio es %.2g "
                                         "veces el mayor). Su inversa multiplica los redondeos del fichero de clase "
                                         "(seis cifras) y la máxima probabilidad de la clase es poco fiable. Tome "
                                         "más muestras y más variadas, o quite una banda muy parecida a otra.",
                                         c.condicion));
        }
    }
    for (const auto& g : r.ndCompartidos) {
        std::string nombres;
        for (std::size_t i = 0; i < g.size(); ++i) {
            if (i > 0) nombres += i + 1 == g.size() ? " y " : ", ";
            nombres += r.clases[static_cast<std::size_t>(g[i])].nombre;
        }
        const auto& p = r.clases[static_cast<std::size_t>(g[0])];
        std::string nd = std::to_string(p.ndByte);
        bool vuelta = false;
        for (int i : g) vuelta = vuelta || r.clases[static_cast<std::size_t>(i)].nd != p.ndByte;
        if (vuelta) nd += ", una vez guardado en un byte";
        avisos.push_back(nombres + " comparten el ND " + nd +
                         ": en la imagen clasificada sus píxeles tendrán el mismo valor y no se podrán distinguir "
                         "(la leyenda las listará todas). El ND de una clase es la media de sus valores medios, así "
                         "que clases de brillo parecido coinciden aunque sus firmas sean distintas.");
    }
}

}  // namespace

std::string InformeRevisarClases(const RevisionClases& r, const std::vector<std::string>& nombresBandas) {
    const std::size_t k = r.clases.size();
    std::size_t ancho = 8;
    for (const auto& c : r.clases) ancho = std::max(ancho, Caracteres(c.nombre) + 2);
    std::string s = "REVISIÓN DE LAS CLASES DE ENTRENAMIENTO\n\n";
    s += "Bandas: " + std::to_string(r.bandas);
    if (!nombresBandas.empty()) {
        s += " (";
        for (std::size_t i = 0; i < nombresBandas.size(); ++i) s += (i ? ", " : "") + nombresBandas[i];
        s += ")";
    }
    s += "\nClases: " + std::to_string(k) + "\n\n";
    s += Izquierda("Clase", ancho) + Derecha("ND", 5) + Derecha("Muestras", 10) + "   Covarianza\n";
    for (const auto& c : r.clases) {
        std::string m = c.sinMuestras ? "0" : c.menosDeDos ? "1" : c.muestras ? std::to_string(*c.muestras) : "?";
        s += Izquierda(c.nombre, ancho) + Derecha(std::to_string(c.nd), 5) + Derecha(m, 10) + "   " + TextoEstado(c) +
             "\n";
    }
    s += "\n(Las muestras se deducen del fichero de clase, que da la desviación típica dividida por n y la "
         "covarianza dividida por n - 1; \"?\" cuando las muestras son todas iguales.)\n\n";

    std::vector<std::string> avisos;
    Avisos(r, avisos);
    s += "AVISOS\n\n";
    if (avisos.empty()) s += "Ninguno: las clases se pueden usar con los tres clasificadores.\n";
    for (const auto& a : avisos) s += "* " + a + "\n";

    s += "\nSEPARABILIDAD ENTRE CLASES (distancia de Jeffries-Matusita)\n\n";
    s += "Va de 0 (las dos clases tienen la misma distribución) a 2 (no se solapan). Por debajo de 1.0 los "
         "clasificadores confundirán muchos píxeles de las dos clases; de 1.0 a 1.9 se separan solo en parte; desde "
         "1.9 se separan bien. Se calcula con las medias y las covarianzas de los ficheros.\n\n";
    if (k < 2) {
        s += "Hace falta más de una clase.\n";
        return s;
    }
    std::size_t col = 8;
    for (const auto& c : r.clases) col = std::max(col, Caracteres(c.nombre) + 2);
    s += Izquierda("", ancho);
    for (const auto& c : r.clases) s += Derecha(c.nombre, col);
    s += "\n";
    for (std::size_t i = 0; i < k; ++i) {
        s += Izquierda(r.clases[i].nombre, ancho);
        for (std::size_t j = 0; j < k; ++j) {
            const double d = r.Jm(static_cast<int>(i), static_cast<int>(j));
            s += Derecha(i == j ? "-" : std::isfinite(d) ? Formato("%.4f", d) : "?", col);
        }
        s += "\n";
    }
    std::string confusas, partes, sinCalculo;
    int buenas = 0;
    for (std::size_t i = 0; i < k; ++i)
        for (std::size_t j = i + 1; j < k; ++j) {
            const double d = r.Jm(static_cast<int>(i), static_cast<int>(j));
            const std::string p = "  " + Par(r, static_cast<int>(i), static_cast<int>(j));
            if (!std::isfinite(d)) sinCalculo += p + "\n";
            else if (d < kJmConfusion) confusas += p + Formato(" (%.4f)\n", d);
            else if (d < kJmBuena) partes += p + Formato(" (%.4f)\n", d);
            else ++buenas;
        }
    s += "\n";
    if (!confusas.empty()) s += "Pares que se confundirán (JM menor que 1.0):\n" + confusas;
    if (!partes.empty()) s += "Pares que se separan solo en parte (JM de 1.0 a 1.9):\n" + partes;
    if (!sinCalculo.empty())
        s += "Pares sin separabilidad calculable (\"?\": una covarianza es singular o no es un número):\n" +
             sinCalculo;
    s += Formato("Pares bien separados (JM de 1.9 o más): %d de %zu.\n", buenas, k * (k - 1) / 2);
    return s;
}

}  // namespace orvela
