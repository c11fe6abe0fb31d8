#include "tools/AreaCategorias.h"

#include <cstdio>

namespace orvela {

std::optional<AreaCategorias> CalcularAreaCategorias(const Muestras& m, const std::string& sistema,
                                                     const std::string& unidades, double resolucion,
                                                     Progreso& progreso) {
    if (m.Codigo() != kByte && m.Codigo() != kInteger) return std::nullopt;
    // Counting every value and keeping the values present gives the list of
    // distinct values already sorted and each one's count, as the scan for
    // new values, the sort and the binary search per pixel do.
    std::vector<uint64_t> histograma(m.Codigo() == kByte ? 256 : 65536, 0);
    bool cancelado = false;
    ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
        if constexpr (!kEsReal<T>) {
            const T* d = m.Como<T>().data();
            const std::size_t n = m.Cantidad();
            constexpr std::size_t kTramo = 1 << 22;
            for (std::size_t i0 = 0; i0 < n && !cancelado; i0 += kTramo) {
                const std::size_t i1 = std::min(n, i0 + kTramo);
                // Four tables side by side so that runs of equal values do
                // not wait on one counter.
                uint32_t t[4][sizeof(T) == 1 ? 256 : 1] = {};
                if constexpr (sizeof(T) == 1) {
                    std::size_t i = i0;
                    for (; i + 4 <= i1; i += 4) {
                        ++t[0][d[i]];
                        ++t[1][d[i + 1]];
                        ++t[2][d[i + 2]];
                        ++t[3][d[i + 3]];
                    }
                    for (; i < i1; ++i) ++t[0][d[i]];
                    for (int v = 0; v < 256; ++v) histograma[v] += uint64_t{t[0][v]} + t[1][v] + t[2][v] + t[3][v];
                } else {
                    for (std::size_t i = i0; i < i1; ++i) ++histograma[d[i]];
                }
                progreso.Informar(static_cast<double>(i1) / static_cast<double>(n));
                cancelado = progreso.Cancelado();
            }
        }
    });
    if (cancelado) return std::nullopt;
    AreaCategorias a;
    a.codigo = m.Codigo();
    for (std::size_t v = 0; v < histograma.size(); ++v)
        if (histograma[v]) {
            a.categorias.push_back(static_cast<uint32_t>(v));
            a.cuentas.push_back(static_cast<uint32_t>(histograma[v]));
        }
    a.conArea = sistema != "unknown" && unidades == "m" && resolucion != -1.0;
    if (a.conArea) {
        const float r = static_cast<float>(resolucion);
        for (uint32_t c : a.cuentas) a.areas.push_back(static_cast<float>(c) * r * r);
    }
    return a;
}

namespace {

template <class... A> std::string Formato(const char* f, A... a) {
    const int n = std::snprintf(nullptr, 0, f, a...);
    std::string s(static_cast<std::size_t>(n), '\0');
    std::snprintf(s.data(), s.size() + 1, f, a...);
    return s;
}

}  // namespace

std::string InformeArea(const AreaCategorias& a, const std::string& nombre) {
    std::string s = "\n\nEste fichero muestra el área correspondiente a cada categoría  de la imagen:\n\n\t" + nombre;
    s += "\n\n\n\tCategoría\tNúmero de píxeles";
    if (a.conArea) s += "\tHectáreas";
    s += "\t% del total\n\n";
    uint32_t total = 0;
    for (uint32_t c : a.cuentas) total += c;
    for (std::size_t k = 0; k < a.categorias.size(); ++k) {
        s += Formato("\t%u\t\t%u", a.categorias[k], a.cuentas[k]);
        if (a.conArea) s += Formato("\t\t\t%.2f", static_cast<double>(a.areas[k] * 0.0001f));
        const double parte = a.codigo == kByte
                                 ? static_cast<double>(a.cuentas[k]) / static_cast<double>(total) * 100.0
                                 : static_cast<double>(a.cuentas[k] / total * 100u);
        s += Formato("\t\t%.2f", parte) + "\n";
    }
    return s;
}

}  // namespace orvela
