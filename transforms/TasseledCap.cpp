#include "transforms/TasseledCap.h"

#include "image/Conversion.h"

namespace orvela {

namespace {

// Coefficient of each band (TM1, TM2, TM3, TM4, TM5, TM7) and the order in
// which each component adds them up.
struct Componente {
    double coef[6];
    int orden[6];
};
// Band indices: 0 TM1, 1 TM2, 2 TM3, 3 TM4, 4 TM5, 5 TM7.
constexpr Componente kBrillo{{0.3037, 0.2793, 0.4743, 0.5585, 0.5082, 0.1863}, {2, 0, 1, 3, 5, 4}};
constexpr Componente kVerdor{{-0.2848, -0.2435, -0.5436, 0.7243, 0.084, -0.18}, {3, 5, 0, 2, 4, 1}};
constexpr Componente kHumedad{{0.1509, 0.1973, 0.3279, 0.3406, -0.7112, -0.4572}, {2, 4, 5, 0, 1, 3}};
constexpr double kDesplazamiento = 32;

template <class T>
void Fila(const T* const x[6], std::size_t desde, std::size_t hasta, const Componente& k, T* out) {
    const T* b0 = x[k.orden[0]];
    const T* b1 = x[k.orden[1]];
    const T* b2 = x[k.orden[2]];
    const T* b3 = x[k.orden[3]];
    const T* b4 = x[k.orden[4]];
    const T* b5 = x[k.orden[5]];
    const double c0 = k.coef[k.orden[0]], c1 = k.coef[k.orden[1]], c2 = k.coef[k.orden[2]];
    const double c3 = k.coef[k.orden[3]], c4 = k.coef[k.orden[4]], c5 = k.coef[k.orden[5]];
    for (std::size_t i = desde; i < hasta; ++i) {
        double s = 0.0;
        s += c0 * Leer(b0[i]);
        s += c1 * Leer(b1[i]);
        s += c2 * Leer(b2[i]);
        s += c3 * Leer(b3[i]);
        s += c4 * Leer(b4[i]);
        s += c5 * Leer(b5[i]);
        out[i] = Almacenar<T>(s + kDesplazamiento);
    }
}

}  // namespace

bool TasseledCap(const Muestras* const tm[6], long filas, long columnas, Muestras& brillo, Muestras& verdor,
                 Muestras& humedad, Progreso& progreso) {
    const auto hecho = ConTipo(tm[0]->Codigo(), [&]<class T>(Muestra<T>) {
        const T* x[6];
        for (int b = 0; b < 6; ++b) x[b] = tm[b]->Como<T>().data();
        T* ob = brillo.Como<T>().data();
        T* ov = verdor.Como<T>().data();
        T* oh = humedad.Como<T>().data();
        const auto cols = static_cast<std::size_t>(columnas);
        return PorFilas(progreso, filas, [&](long d, long h) {
            const std::size_t i0 = static_cast<std::size_t>(d) * cols, i1 = static_cast<std::size_t>(h) * cols;
            Fila<T>(x, i0, i1, kBrillo, ob);
            Fila<T>(x, i0, i1, kVerdor, ov);
            Fila<T>(x, i0, i1, kHumedad, oh);
        });
    });
    return hecho && *hecho;
}

}  // namespace orvela
