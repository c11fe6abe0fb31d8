#include "tools/EstadisticasImagen.h"

#include <cmath>
#include <cstdio>

#include "image/Estadisticas.h"

namespace orvela {

std::optional<EstadisticasContinuas> CalcularEstadisticas(const Muestras& m) {
    if (!CodigoValido(m.Codigo()) || m.Cantidad() == 0) return std::nullopt;
    EstadisticasContinuas e;
    e.media = ImageMean(m);
    e.desviacion = ImageStdDev(m, e.media);
    e.varianza = e.desviacion * e.desviacion;
    MinimoMaximo(m, e.minimo, e.maximo);
    e.rango = e.maximo - e.minimo;
    return e;
}

std::optional<std::vector<EstadisticaClase>> EstadisticasPorClase(const Muestras& clasificada, const Muestras& fuente,
                                                                  const std::vector<ClaseLeyenda>& clases,
                                                                  Progreso& progreso) {
    if (clasificada.Codigo() != kByte || clasificada.Cantidad() != fuente.Cantidad() || fuente.Cantidad() == 0)
        return std::nullopt;
    // Class of each byte value: the first class of the legend with that ND.
    int claseDe[256];
    for (int v = 0; v < 256; ++v) {
        claseDe[v] = -1;
        for (std::size_t k = 0; k < clases.size(); ++k)
            if (clases[k].nd == v) {
                claseDe[v] = static_cast<int>(k);
                break;
            }
    }
    const std::size_t n = fuente.Cantidad(), nc = clases.size();
    std::vector<EstadisticaClase> e(nc);
    bool cancelado = false;
    const bool conocido = ConTipo(fuente.Codigo(), [&]<class T>(Muestra<T>) {
        const T* s = fuente.Como<T>().data();
        const uint8_t* k = clasificada.Como<uint8_t>().data();
        std::vector<T> mn(nc, s[0]), mx(nc, s[0]);
        std::vector<uint64_t> cuenta(nc, 0), sumaEntera(nc, 0);
        std::vector<double> suma(nc, 0.0);
        constexpr std::size_t kTramo = 1 << 20;
        for (std::size_t i0 = 0; i0 < n && !cancelado; i0 += kTramo) {
            const std::size_t i1 = std::min(n, i0 + kTramo);
            for (std::size_t i = i0; i < i1; ++i) {
                const int c = claseDe[k[i]];
                if (c < 0) continue;
                const T v = s[i];
                // Whole samples are summed exactly; the total is the same
                // number a running double sum gives below 2^53.
                if constexpr (kEsReal<T>)
                    suma[c] += static_cast<double>(v);
                else
                    sumaEntera[c] += v;
                ++cuenta[c];
                if (v > mx[c]) mx[c] = v;
                if (v < mn[c]) mn[c] = v;
            }
            progreso.Informar(0.5 * static_cast<double>(i1) / static_cast<double>(n));
            cancelado = progreso.Cancelado();
        }
        std::vector<double> cuadrados(nc, 0.0), media(nc, 0.0);
        for (std::size_t c = 0; c < nc; ++c) {
            if constexpr (!kEsReal<T>) suma[c] = static_cast<double>(sumaEntera[c]);
            media[c] = suma[c] / static_cast<double>(cuenta[c]);
        }
        for (std::size_t i0 = 0; i0 < n && !cancelado; i0 += kTramo) {
            const std::size_t i1 = std::min(n, i0 + kTramo);
            for (std::size_t i = i0; i < i1; ++i) {
                const int c = claseDe[k[i]];
                if (c < 0) continue;
                cuadrados[c] += std::pow(static_cast<double>(s[i]) - media[c], 2.0);
            }
            progreso.Informar(0.5 + 0.5 * static_cast<double>(i1) / static_cast<double>(n));
            cancelado = progreso.Cancelado();
        }
        for (std::size_t c = 0; c < nc; ++c) {
            EstadisticaClase& r = e[c];
            r.nd = static_cast<int>(clases[c].nd);
            r.nombre = clases[c].nombre;
            r.minimo = static_cast<double>(mn[c]);
            r.maximo = static_cast<double>(mx[c]);
            r.total = static_cast<double>(cuenta[c]);
            r.rango = r.maximo - r.minimo;
            if (cuenta[c] > 0) {
                r.media = media[c];
                r.desviacion = std::sqrt(cuadrados[c] / static_cast<double>(cuenta[c]));
            }
        }
    });
    if (!conocido || cancelado) return std::nullopt;
    return e;
}

namespace {

template <class... A> std::string Formato(const char* f, A... a) {
    const int n = std::snprintf(nullptr, 0, f, a...);
    std::string s(static_cast<std::size_t>(n), '\0');
    std::snprintf(s.data(), s.size() + 1, f, a...);
    return s;
}

}  // namespace

std::string TextoEstadisticasClases(const std::vector<EstadisticaClase>& e, const std::string& tituloClasificada,
                                    const std::string& tituloOriginal, const std::string& salto) {
    std::vector<std::string> l = {"Resumen de las estadísticas de las siguientes imágenes clasificadas:",
                                  "",
                                  "\tImagen clasificada:",
                                  "\t\t" + tituloClasificada,
                                  "\tImagen original:",
                                  "\t\t" + tituloOriginal,
                                  ""};
    for (std::size_t k = 0; k < e.size(); ++k) {
        const EstadisticaClase& c = e[k];
        l.push_back(Formato("Clase %d:", static_cast<int>(k)));
        l.push_back(Formato("\tND asociado\t\t%d", c.nd));
        l.push_back("\tNombre de la clase\t\t" + c.nombre);
        l.push_back(Formato("\tMínimo\t\t\t%.2f", c.minimo));
        l.push_back(Formato("\tMáximo\t\t\t%.2f", c.maximo));
        l.push_back(Formato("\tTotal\t\t\t%.2f", c.total));
        l.push_back(Formato("\tMedia\t\t\t%.4f", c.media));
        l.push_back(Formato("\tRango\t\t\t%.2f", c.rango));
        l.push_back(Formato("\tDesviación Típica\t\t\t%.4f", c.desviacion));
        l.push_back("");
    }
    std::string s;
    for (std::size_t i = 0; i < l.size(); ++i) s += (i ? salto : "") + l[i];
    return s;
}

std::string InformeEstadisticasClases(const std::vector<EstadisticaClase>& e, const std::string& tituloClasificada,
                                      const std::string& tituloOriginal) {
    std::string s = "\n\nResumen de las estadísticas de las siguientes imágenes clasificadas:\n\n\tImagen clasificada:\n\t\t" +
                    tituloClasificada + "\n\tImagen original:\n\t\t" + tituloOriginal + "\n\n";
    for (std::size_t k = 0; k < e.size(); ++k) {
        const EstadisticaClase& c = e[k];
        s += Formato("Clase %d:\n", static_cast<int>(k));
        s += Formato("\tND asociado\t\t%d\n", c.nd);
        s += "\tNombre de la clase\t" + c.nombre + "\n";
        s += Formato("\tMínimo\t\t\t%3.6f\n", c.minimo);
        s += Formato("\tMáximo\t\t\t%3.6f\n", c.maximo);
        s += Formato("\tTotal\t\t\t%3.6f\n", c.total);
        s += Formato("\tMedia\t\t\t%3.6f\n", c.media);
        s += Formato("\tRango\t\t\t%3.6f\n", c.rango);
        s += Formato("\tDesviación Típica\t%3.6f\n\n", c.desviacion);
    }
    return s;
}

}  // namespace orvela
