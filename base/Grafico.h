// A chart as plain data: what an operation gives (a scatter diagram, a line
// profile) and what the chart window and the picture writer draw
// (tools/DibujarGrafico.h). Nothing here knows how it is drawn.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orvela {

struct PuntoGrafico {
    double x = 0, y = 0;
    // Pixels that fall on this point; a dense cloud is shaded by it.
    uint64_t cuenta = 1;
};

struct SerieGrafico {
    // Points: a square of `lado` pixels each, from a pale tint (one pixel)
    // to the full colour (the series' fullest point) on a logarithmic scale
    // of the counts, when they differ. Linea: a polyline through the points
    // in order. Recta: the straight line y = a + b x across the x range.
    enum class Clase { Puntos, Linea, Recta };
    Clase clase = Clase::Puntos;
    std::string nombre;
    std::vector<PuntoGrafico> puntos;  // a line joins them in order
    uint32_t color = 0x000000;         // 0xRRGGBB
    double a = 0, b = 0;               // of a Recta
    int lado = 3;                      // of a point, pixels
    int grosor = 1;                    // of a line, pixels

    static SerieGrafico Recta(double a, double b, uint32_t color = 0xC80000) {
        SerieGrafico s;
        s.clase = Clase::Recta;
        s.a = a;
        s.b = b;
        s.color = color;
        return s;
    }
};

struct Grafico {
    std::string titulo, ejeX, ejeY;
    double xMinimo = 0, xMaximo = 1, yMinimo = 0, yMaximo = 1;
    // Instead of the ranges above, the span of the data widened to round
    // tick values.
    bool rangoDeLosDatos = false;
    std::vector<SerieGrafico> series;
    // Where the picture goes when written: a fixed ending beside the result's
    // stem ("_Diagrama.png"), or a path the user gave (`ruta`, which wins).
    std::string final, ruta;
};

}  // namespace orvela
