#include "tools/Componer.h"

#include <algorithm>
#include <cstring>

namespace orvela {

namespace {

bool Concuerdan(const std::vector<const Muestras*>& v, const Muestras& salida) {
    if (v.empty()) return false;
    for (const Muestras* m : v)
        if (!m || m->Codigo() != salida.Codigo() || m->Cantidad() != salida.Cantidad()) return false;
    return true;
}

template <class T> inline bool Gana(T candidato, T actual, CriterioComponer c) {
    return c == CriterioComponer::Maximo ? candidato > actual : candidato < actual;
}

}  // namespace

bool ComponerSinReferencia(const std::vector<const Muestras*>& imagenes, CriterioComponer criterio, long filas,
                           long columnas, Muestras& salida, Progreso& progreso) {
    if (!Concuerdan(imagenes, salida) || static_cast<std::size_t>(filas * columnas) != salida.Cantidad()) return false;
    bool hecho = true;
    const bool conocido = ConTipo(salida.Codigo(), [&]<class T>(Muestra<T>) {
        T* out = salida.Como<T>().data();
        hecho = PorFilas(progreso, filas, [&](long desde, long hasta) {
            const std::size_t i0 = static_cast<std::size_t>(desde * columnas);
            const std::size_t n = static_cast<std::size_t>((hasta - desde) * columnas);
            std::memcpy(out + i0, imagenes[0]->Como<T>().data() + i0, n * sizeof(T));
            for (std::size_t k = 1; k < imagenes.size(); ++k) {
                const T* in = imagenes[k]->Como<T>().data() + i0;
                T* o = out + i0;
                // Written as "keep unless strictly better" so that the loop
                // has no branch; NaN never wins, as in the plain comparison.
                if (criterio == CriterioComponer::Maximo)
                    for (std::size_t j = 0; j < n; ++j) o[j] = in[j] > o[j] ? in[j] : o[j];
                else
                    for (std::size_t j = 0; j < n; ++j) o[j] = in[j] < o[j] ? in[j] : o[j];
            }
        });
    });
    return conocido && hecho;
}

bool ComponerConReferencia(const std::vector<const Muestras*>& imagenes, const std::vector<const Muestras*>& referencias,
                           CriterioComponer criterio, long filas, long columnas, Muestras& salida,
                           Progreso& progreso) {
    if (!Concuerdan(imagenes, salida) || referencias.size() != imagenes.size() ||
        static_cast<std::size_t>(filas * columnas) != salida.Cantidad())
        return false;
    for (const Muestras* r : referencias)
        if (!r || r->Codigo() != salida.Codigo() || r->Cantidad() != salida.Cantidad()) return false;
    bool hecho = true;
    const bool conocido = ConTipo(salida.Codigo(), [&]<class T>(Muestra<T>) {
        T* out = salida.Como<T>().data();
        hecho = PorFilas(progreso, filas, [&](long desde, long hasta) {
            const std::size_t i0 = static_cast<std::size_t>(desde * columnas);
            const std::size_t n = static_cast<std::size_t>((hasta - desde) * columnas);
            // Best reference so far of each pixel of the block.
            std::vector<T> mejor(referencias[0]->Como<T>().data() + i0, referencias[0]->Como<T>().data() + i0 + n);
            std::memcpy(out + i0, imagenes[0]->Como<T>().data() + i0, n * sizeof(T));
            for (std::size_t k = 1; k < imagenes.size(); ++k) {
                const T* ref = referencias[k]->Como<T>().data() + i0;
                const T* in = imagenes[k]->Como<T>().data() + i0;
                T* o = out + i0;
                for (std::size_t j = 0; j < n; ++j) {
                    const bool gana = Gana(ref[j], mejor[j], criterio);
                    mejor[j] = gana ? ref[j] : mejor[j];
                    o[j] = gana ? in[j] : o[j];
                }
            }
        });
    });
    return conocido && hecho;
}

}  // namespace orvela
