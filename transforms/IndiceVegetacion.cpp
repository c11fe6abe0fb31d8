#include "transforms/IndiceVegetacion.h"

#include "image/Conversion.h"

namespace orvela {

namespace {

// Runs fila(r, n, out, desde, hasta) over the rows, with the bands as their type.
template <class R, class F>
bool PorFilasDelPar(R& rojo, const Muestras& infrarrojo, long filas, long columnas, Muestras& salida,
                    Progreso& progreso, F&& fila) {
    const auto hecho = ConTipo(rojo.Codigo(), [&]<class T>(Muestra<T>) {
        auto* r = rojo.template Como<T>().data();
        const T* n = infrarrojo.Como<T>().data();
        float* out = salida.Como<float>().data();
        const auto cols = static_cast<std::size_t>(columnas);
        return PorFilas(progreso, filas, [&](long d, long h) {
            fila(r, n, out, static_cast<std::size_t>(d) * cols, static_cast<std::size_t>(h) * cols);
        });
    });
    return hecho && *hecho;
}

}  // namespace

bool CocienteVegetacion(Muestras& rojo, const Muestras& infrarrojo, long filas, long columnas, Muestras& salida,
                        Progreso& progreso) {
    return PorFilasDelPar(rojo, infrarrojo, filas, columnas, salida, progreso,
                          []<class T>(T* r, const T* n, float* out, std::size_t i0, std::size_t i1) {
                              for (std::size_t i = i0; i < i1; ++i) {
                                  if (Leer(r[i]) == 0) r[i] = static_cast<T>(1);
                                  out[i] = Almacenar<float>(Leer(n[i]) / Leer(r[i]));
                              }
                          });
}

bool Ndvi(const Muestras& rojo, const Muestras& infrarrojo, long filas, long columnas, Muestras& salida,
          Progreso& progreso) {
    return PorFilasDelPar(rojo, infrarrojo, filas, columnas, salida, progreso,
                          []<class T>(const T* r, const T* n, float* out, std::size_t i0, std::size_t i1) {
                              for (std::size_t i = i0; i < i1; ++i) {
                                  const double rr = Leer(r[i]), nn = Leer(n[i]);
                                  out[i] = (rr != 0 || nn != 0) ? Almacenar<float>((nn - rr) / (nn + rr)) : 0.0f;
                              }
                          });
}

}  // namespace orvela
