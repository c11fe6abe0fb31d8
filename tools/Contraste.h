// Contrast expansion of one image, by three methods, into a result of the
// input's type stored by the store rule (byte and integer results keep the
// low bits of the truncated value: no clamping, -1 becomes 255 in a byte).
//
// 0, linear: the range mean +/- 2 standard deviations is spread over the
//    grey levels NVmin..NVmax. A constant image (no spread at all) has no
//    such range: every sample becomes NVmin.
// 1, histogram equalisation over the 256 levels 0..255: each level goes to
//    the level whose ideal cumulative percentage is nearest to its own
//    cumulative percentage. A byte or integer sample is at level k when it
//    equals k, a real or double sample when its value truncated toward zero
//    equals k. Samples at no level (integer samples above 255, real samples
//    outside -1..256 exclusive, NaN) are kept unchanged.
// 2, linear with a range NDmin..NDmax given by the user, spread over
//    NVmin..NVmax; samples outside the range map outside NVmin..NVmax.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

enum class MetodoContraste { Lineal = 0, Ecualizacion = 1, RangoInteractivo = 2 };

struct ParametrosContraste {
    MetodoContraste metodo = MetodoContraste::Lineal;
    double ndMaximo = 0, ndMinimo = 0;   // method 2
    double nvMaximo = 255, nvMinimo = 0;  // methods 0 and 2
};

// The line x * ganancia + desplazamiento of the linear methods. `constante`
// when the input range is empty (a constant image under method 0): every
// sample then becomes NVmin.
struct RectaContraste {
    double ganancia = 0, desplazamiento = 0;
    bool constante = false;
};
RectaContraste RectaLineal(double media, double desviacion, double nvMinimo, double nvMaximo);
RectaContraste RectaRango(double ndMinimo, double ndMaximo, double nvMinimo, double nvMaximo);

// One row of the equalisation table.
struct NivelEcualizacion {
    int nivel = 0;
    double porcentaje = 0;  // of the N samples of the image at this level
    double acumulado = 0;   // levels 0..nivel, added in level order
    double ideal = 0;       // (nivel + 1) / 256 of 100, by repeated addition
    int nuevo = 0;          // level assigned
};
using TablaEcualizacion = std::array<NivelEcualizacion, 256>;

// Samples at each level 0..255.
template <class T> std::array<uint64_t, 256> ContarNiveles(std::span<const T> x);
// The table from the level counts and the image's sample count N.
TablaEcualizacion CalcularTablaEcualizacion(const std::array<uint64_t, 256>& cuentas, std::size_t n);

template <class T> void AplicarRecta(std::span<const T> x, std::span<T> r, const RectaContraste& recta, double nvMinimo);
template <class T> void Ecualizar(std::span<const T> x, std::span<T> r, const TablaEcualizacion& tabla);

// `r` of the input's type and length. False when the type code is unknown
// (message 61250) or the buffers do not match.
bool ExpandirContraste(const Muestras& x, Muestras& r, const ParametrosContraste& p,
                       Progreso& progreso = SinProgreso());

}  // namespace orvela
