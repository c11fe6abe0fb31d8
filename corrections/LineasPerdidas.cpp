#include "corrections/LineasPerdidas.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <type_traits>

#include "image/Conversion.h"
#include "image/Estadisticas.h"

namespace orvela {

namespace {

// Mean of a line: its sum in column order divided by the column count.
template <class T> double MediaLinea(const T* fila, std::size_t ancho) {
    if constexpr (std::is_integral_v<T>) {
        uint64_t s = 0;  // exact, as the double running sum of whole samples is
        for (std::size_t c = 0; c < ancho; ++c) s += fila[c];
        return static_cast<double>(s) / static_cast<double>(ancho);
    } else {
        double s = 0;
        for (std::size_t c = 0; c < ancho; ++c) s += static_cast<double>(fila[c]);
        return s / static_cast<double>(ancho);
    }
}

bool Difieren(double a, double b, double umbral) {
    const int64_t d = TruncarA32(a - b);
    return static_cast<double>(std::llabs(d)) > umbral;
}

}  // namespace

std::optional<std::vector<long>> CorregirLineas(Muestras& banda, const Muestras* auxiliar, long filas, long columnas,
                                                MetodoLineas metodo, const UmbralesLineas& u, Progreso& progreso) {
    if (!CodigoValido(banda.Codigo())) return std::nullopt;
    if (metodo == MetodoLineas::Auxiliar &&
        (!auxiliar || auxiliar->Codigo() != banda.Codigo() || auxiliar->Cantidad() != banda.Cantidad()))
        return std::nullopt;
    std::vector<long> corregidas;
    bool hecho = true;
    ConTipo(banda.Codigo(), [&]<class T>(Muestra<T>) {
        const std::size_t ancho = static_cast<std::size_t>(columnas);
        T* p = banda.Como<T>().data();
        // The ratio of deviations is taken before anything is corrected.
        double k = 0;
        if (metodo == MetodoLineas::Auxiliar) {
            const double sp = ImageStdDev(banda, ImageMean(banda));
            const double sa = ImageStdDev(*auxiliar, ImageMean(*auxiliar));
            k = sp / sa;
        }
        // Every mean the detection reads is that of a line not yet touched
        // (the next line, or a line kept), so all of them are the input's:
        // they are taken first, side by side.
        std::vector<double> medias(static_cast<std::size_t>(filas));
        hecho = PorFilas(progreso, filas, [&](long desde, long hasta) {
            for (long l = desde; l < hasta; ++l)
                medias[static_cast<std::size_t>(l)] = MediaLinea(p + static_cast<std::size_t>(l) * ancho, ancho);
        });
        if (!hecho || filas < 3) return;
        const double alto = 255.0 - u.linea;
        double previa = medias[0], actual = medias[1];
        for (long l = 1; l <= filas - 2; ++l) {
            const double siguiente = medias[static_cast<std::size_t>(l + 1)];
            bool perdida = false;
            T* fila = p + static_cast<std::size_t>(l) * ancho;
            if (Difieren(previa, actual, u.medias) && Difieren(actual, siguiente, u.medias)) {
                std::size_t errores = 0;
                for (std::size_t c = 0; c < ancho; ++c) {
                    const double v = static_cast<double>(fila[c]);
                    errores += (v < u.linea || v > alto) ? 1 : 0;
                }
                perdida = static_cast<double>(errores) / static_cast<double>(columnas) * 100.0 > u.porcentaje;
            }
            if (perdida) {
                const T* arriba = fila - ancho;
                const T* abajo = fila + ancho;
                if (metodo == MetodoLineas::Anterior) {
                    for (std::size_t c = 0; c < ancho; ++c) fila[c] = arriba[c];
                } else if (metodo == MetodoLineas::Media) {
                    for (std::size_t c = 0; c < ancho; ++c) {
                        if constexpr (std::is_integral_v<T>)
                            fila[c] = static_cast<T>((static_cast<uint32_t>(arriba[c]) + abajo[c]) / 2u);
                        else
                            fila[c] = Almacenar<T>((static_cast<double>(arriba[c]) + static_cast<double>(abajo[c])) / 2.0);
                    }
                } else {
                    // The first term averages the corrected band's next line
                    // with the auxiliary band's previous line, as it always has.
                    const T* a = auxiliar->Como<T>().data() + static_cast<std::size_t>(l) * ancho;
                    const T* aArriba = a - ancho;
                    const T* aAbajo = a + ancho;
                    if constexpr (std::is_integral_v<T>) {
                        const int64_t ke = TruncarA32(k);
                        for (std::size_t c = 0; c < ancho; ++c) {
                            const int64_t v = (static_cast<int64_t>(abajo[c]) + aArriba[c]) / 2 +
                                              (static_cast<int64_t>(a[c]) - (static_cast<int64_t>(aArriba[c]) + aAbajo[c]) / 2) * ke;
                            fila[c] = AlmacenarEntero<T>(static_cast<int32_t>(static_cast<uint32_t>(v)));
                        }
                    } else {
                        for (std::size_t c = 0; c < ancho; ++c) {
                            const double v =
                                (static_cast<double>(abajo[c]) + static_cast<double>(aArriba[c])) / 2.0 +
                                (static_cast<double>(a[c]) -
                                 (static_cast<double>(aArriba[c]) + static_cast<double>(aAbajo[c])) / 2.0) *
                                    k;
                            fila[c] = Almacenar<T>(v);
                        }
                    }
                }
                corregidas.push_back(l);
            } else {
                previa = actual;
            }
            actual = siguiente;
            if (progreso.Cancelado()) {
                hecho = false;
                return;
            }
        }
    });
    if (!hecho) return std::nullopt;
    return corregidas;
}

}  // namespace orvela
