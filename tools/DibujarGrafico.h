// Drawing a chart into a picture: frame, grid, ticks with their numbers,
// axis titles, title, point series (shaded by their counts), lines, and a
// key of the series that have a name.
// The batch front end writes the picture as PNG; the desktop shows it.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/Grafico.h"
#include "base/Progreso.h"
#include "image/Muestras.h"
#include "image/Png.h"

namespace orvela {

struct RangoEje {
    double minimo = 0, maximo = 1;
};

// Where the data went: the plot area in pixels (columns x0 .. x0 + ancho - 1,
// rows y0 .. y0 + alto - 1) and the ranges drawn across it.
struct MarcoGrafico {
    int x0 = 0, y0 = 0, ancho = 0, alto = 0;
    RangoEje x, y;

    // Pixel position (fractional) of a data point.
    std::array<double, 2> APixel(double dx, double dy) const;
    // Data point under a pixel position; nullopt outside the plot area.
    std::optional<std::array<double, 2>> ADatos(double px, double py) const;
};

struct GraficoDibujado {
    RasterRgb imagen;
    MarcoGrafico marco;
};

// The picture of a chart, ancho x alto pixels (at least 160 x 120); text
// is drawn twice as large from 1200 x 900 up.
GraficoDibujado DibujarGrafico(const Grafico& g, uint32_t ancho = 640, uint32_t alto = 480);
// False when the file cannot be written (what was on disk stays).
bool EscribirGraficoPng(const Grafico& g, const std::string& ruta, uint32_t ancho = 640, uint32_t alto = 480);
// The same into a file the caller commits with the other files of a result.
bool EscribirGraficoPng(const Grafico& g, FicheroSeguro& f, uint32_t ancho = 640, uint32_t alto = 480);

// Values of the ticks over a range: multiples of 1, 2 or 5 times a power of
// ten, about `cuantas` of them, all inside [minimo, maximo].
std::vector<double> MarcasEje(double minimo, double maximo, int cuantas = 6);
// A range that holds [minimo, maximo] with ends on ticks.
RangoEje RangoRedondo(double minimo, double maximo, int cuantas = 6);

// The scatter of two bands of the same size as a cloud of counts: each band's
// span (its minimum to its maximum) cut into at most 256 cells (one cell per
// value for integer bands of 256 values or fewer), the pairs counted over
// the samples in one pass, one point per cell that holds any, at the cell's
// centre. Samples that are not finite numbers are left out (they take no
// part in the spans either). nullopt when cancelled
// or when the bands differ in size.
std::optional<SerieGrafico> NubeDeDispersion(const Muestras& x, const Muestras& y, Progreso& p = SinProgreso());

}  // namespace orvela
