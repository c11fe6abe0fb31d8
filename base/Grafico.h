// A chart as plain data: what an operation gives back when its result is a
// diagram (a scatter of two bands with the regression line, a profile). The
// desktop shows it in a chart window; the batch front end draws it into a
// PNG file (tools/DibujarGrafico.h). Nothing here knows how it is drawn.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvela {

using ColorGrafico = std::array<uint8_t, 3>;  // red, green, blue

// A point; `cuenta` is how many samples fell on it, so that a dense cloud
// (a 256 x 256 grid of counts) is shaded by how full each cell is.
struct PuntoGrafico {
    double x = 0, y = 0;
    uint64_t cuenta = 1;
};

struct SeriePuntos {
    std::string nombre;
    ColorGrafico color{0, 0, 160};
    int lado = 3;  // side of the square drawn for each point, in pixels
    // Whether the colour of a point goes from pale (one sample) to `color`
    // (the fullest point of the series), on a logarithmic scale.
    bool sombrearPorCuenta = false;
    std::vector<PuntoGrafico> puntos;
};

// A polyline through its vertices, or the straight line y = a + b x drawn
// across the whole x range.
struct LineaGrafico {
    std::string nombre;
    ColorGrafico color{200, 0, 0};
    int grosor = 1;  // pixels
    std::vector<std::array<double, 2>> vertices;
    bool recta = false;
    double a = 0, b = 0;

    static LineaGrafico Recta(double a, double b, ColorGrafico color = {200, 0, 0}) {
        LineaGrafico l;
        l.recta = true;
        l.a = a;
        l.b = b;
        l.color = color;
        return l;
    }
};

// The range of an axis; without one the chart takes the span of its data
// widened to round tick values.
struct RangoEje {
    double minimo = 0, maximo = 1;
};

struct Grafico {
    std::string titulo, tituloX, tituloY;  // UTF-8
    std::optional<RangoEje> rangoX, rangoY;
    std::vector<SeriePuntos> series;
    std::vector<LineaGrafico> lineas;
    ColorGrafico fondo{255, 255, 255}, tinta{0, 0, 0};
    uint32_t ancho = 640, alto = 480;  // pixels of the drawn picture
};

}  // namespace orvela
