#include "classification/Confusion.h"

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstdio>

#include "image/Conversion.h"
#include "image/TipoDato.h"

namespace orvela {

namespace {

bool Entero(int codigo) { return codigo == kByte || codigo == kInteger; }

void Anadir(std::string& s, const char* formato, ...) {
    char b[512];
    va_list a;
    va_start(a, formato);
    const int n = std::vsnprintf(b, sizeof b, formato, a);
    va_end(a);
    if (n > 0) s.append(b, static_cast<std::size_t>(n) < sizeof b ? static_cast<std::size_t>(n) : sizeof b - 1);
}

}  // namespace

std::optional<Mensaje> CalcularConfusion(const CImagen& mascara, const CImagen& verdad, const CImagen& clasificada,
                                         const std::vector<ClaseLeyenda>& leyenda, MatrizConfusion& r) {
    const int k = static_cast<int>(leyenda.size());
    r.k = k;
    r.m.assign(static_cast<std::size_t>((k + 3) * (k + 3)), 0.0f);
    r.valores.clear();
    r.nombres.clear();
    for (const auto& c : leyenda) {
        r.valores.push_back(clasificada.tipoDato == kInteger ? int{Almacenar<uint16_t>(c.nd)}
                                                               : int{Almacenar<uint8_t>(c.nd)});
        r.nombres.push_back(c.nombre);
    }
    if (Entero(verdad.tipoDato) && Entero(clasificada.tipoDato)) {
        // Index of each possible value in the legend (first equal entry).
        std::vector<int> indice(65536, -1);
        for (int i = k - 1; i >= 0; --i) indice[static_cast<std::size_t>(r.valores[static_cast<std::size_t>(i)])] = i;
        const std::size_t total = mascara.NumeroPixeles();
        std::vector<double> mk(4096), vt(4096), cl(4096);
        for (std::size_t desde = 0; desde < total; desde += mk.size()) {
            const std::size_t n = std::min(mk.size(), total - desde);
            LeerComoDouble(mascara.pixeles, desde, n, mk.data());
            LeerComoDouble(verdad.pixeles, desde, n, vt.data());
            LeerComoDouble(clasificada.pixeles, desde, n, cl.data());
            for (std::size_t i = 0; i < n; ++i) {
                if (mk[i] == 0) continue;
                const int t = indice[static_cast<std::size_t>(vt[i])];
                const int c = indice[static_cast<std::size_t>(cl[i])];
                if (t < 0 || c < 0) return Mensaje::Tabla(msg::kNdClasesDistintos);
                r(c, t) += 1.0f;
            }
        }
    }
    std::vector<int32_t> filas(static_cast<std::size_t>(k)), columnas(static_cast<std::size_t>(k));
    for (int i = 0; i < k; ++i) {
        int32_t t = 0;
        for (int j = 0; j < k; ++j) t += static_cast<int32_t>(r(i, j));
        filas[static_cast<std::size_t>(i)] = t;
        r(i, k) = static_cast<float>(t);
        r(i, k + 1) = t != 0 ? (static_cast<float>(t) - r(i, i)) / static_cast<float>(t) : -1.0f;
        r(i, k + 2) = t != 0 ? r(i, i) / static_cast<float>(t) : -1.0f;
    }
    for (int j = 0; j < k; ++j) {
        int32_t t = 0;
        for (int i = 0; i < k; ++i) t += static_cast<int32_t>(r(i, j));
        columnas[static_cast<std::size_t>(j)] = t;
        r(k, j) = static_cast<float>(t);
        r(k + 1, j) = t != 0 ? (static_cast<float>(t) - r(j, j)) / static_cast<float>(t) : -1.0f;
        r(k + 2, j) = t != 0 ? r(j, j) / static_cast<float>(t) : -1.0f;
    }
    int32_t n = 0;
    double d = 0, p = 0;
    for (int i = 0; i < k; ++i) {
        n += filas[static_cast<std::size_t>(i)];
        d += r(i, i);
        p += static_cast<double>(filas[static_cast<std::size_t>(i)]) * columnas[static_cast<std::size_t>(i)];
    }
    if (k > 0) r(k, k) = static_cast<float>(n);
    const auto n2 = static_cast<int32_t>(static_cast<uint32_t>(n) * static_cast<uint32_t>(n));
    r.kappa = (static_cast<double>(n) * d - p) / (static_cast<double>(n2) - p);
    return std::nullopt;
}

std::string InformeConfusion(const MatrizConfusion& m, const std::string& nombreVerdad,
                             const std::string& nombreClasificada, bool ventana) {
    const int k = m.k;
    std::string s =
        "\n\nEste fichero muestra la matriz de confusión así como el índice kappa resultante de un proceso de "
        "verificación.\n\n";
    s += "Las imágenes que han intervenido son:\n";
    if (ventana) {
        Anadir(s, "\t%s\tVerdad terreno,\t\tmapeada en las columnas.\n", nombreVerdad.c_str());
        Anadir(s, "\t%s\tImagen clasificada,\t\tmapeada en las filas.\n\n\n", nombreClasificada.c_str());
    } else {
        Anadir(s, "\t%s\tVerdad terreno,\t\tmapeada en las columnas.\n", nombreVerdad.c_str());
        Anadir(s, "\t%s\tImagen clasificada,\tmapeada en las filas.\n\n\n", nombreClasificada.c_str());
    }
    s += "Los niveles digitales que representan cada clase son:\n";
    for (int i = 0; i < k; ++i)
        Anadir(s, "\t%d\t%s\n", m.valores[static_cast<std::size_t>(i)], m.nombres[static_cast<std::size_t>(i)].c_str());
    s += "\n\nLa matriz de confusión es la siguiente:\n\n";
    std::string cabecera;
    for (int i = 0; i < k; ++i) Anadir(cabecera, "\t%d", m.valores[static_cast<std::size_t>(i)]);
    cabecera += "\tTotal\tError de comis.\tExact. de usuario\n";
    s += cabecera;
    s += std::string(cabecera.size() + 15, '-');
    s += "\n";
    for (int i = 0; i < k; ++i) {
        Anadir(s, "%d\t|", m.valores[static_cast<std::size_t>(i)]);
        for (int j = 0; j <= k; ++j) Anadir(s, "%.0f\t", static_cast<double>(m(i, j)));
        Anadir(s, "%.4f\t", static_cast<double>(m(i, k + 1)));
        Anadir(s, "\t%.4f\t", static_cast<double>(m(i, k + 2)));
        s += "\n";
    }
    s += "\nTotal\t|";
    for (int j = 0; j <= k; ++j) Anadir(s, "%.0f\t", static_cast<double>(m(k, j)));
    s += "\nError\t|";
    for (int j = 0; j < k; ++j) Anadir(s, "%.4f\t", static_cast<double>(m(k + 1, j)));
    s += "\nde omisión\nExact\t|";
    for (int j = 0; j < k; ++j) Anadir(s, "%.4f\t", static_cast<double>(m(k + 2, j)));
    s += "\nde productor";
    Anadir(s, "\n\n\n\tEl índice kappa es:\n\t\t\t%f", m.kappa);
    return s;
}

}  // namespace orvela
