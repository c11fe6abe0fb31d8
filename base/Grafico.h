// A chart as plain data: what an operation gives (a scatter diagram, a line
// profile) and what the chart window and the picture writer draw.
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
    enum class Clase { Puntos, Linea };
    Clase clase = Clase::Puntos;
    std::string nombre;
    std::vector<PuntoGrafico> puntos;  // a line joins them in order
    uint32_t color = 0x000000;         // 0xRRGGBB
};

struct Grafico {
    std::string titulo, ejeX, ejeY;
    double xMinimo = 0, xMaximo = 1, yMinimo = 0, yMaximo = 1;
    std::vector<SerieGrafico> series;
    // Where the picture goes when written: a fixed ending beside the result's
    // stem ("_Diagrama.png"), or a path the user gave (`ruta`, which wins).
    std::string final, ruta;
};

}  // namespace orvela
