// The training selection: the bands that the classes are sampled on and
// that the supervised classifiers classify. The desktop keeps one for the
// whole session; running "Fase entrenamiento" again replaces it whole.
#pragma once

#include <string>
#include <vector>

#include "image/CImagen.h"

namespace orvela {

struct BandaEntrenamiento {
    std::string ruta;    // raster path
    std::string nombre;  // file title, as the band's window is named
    Cabecera cabecera;
};

struct Entrenamiento {
    bool hecho = false;
    std::vector<BandaEntrenamiento> bandas;
    // The first band's header; its reference system becomes "unknown" when
    // the bands' georeferences differ.
    Cabecera cabecera;
    bool georreferenciasDistintas = false;

    // Index of the band named exactly `nombre` (letter case counts); -1
    // when none is.
    int BandaDeNombre(const std::string& nombre) const;
};

// Whether any header from the second on differs from the first in the
// reference system, the units or one of the seven georeference numbers.
bool CabecerasGeoDistintas(const std::vector<Cabecera>& cabeceras);

// The selection made of these bands (at least one), marked done.
Entrenamiento FijarEntrenamiento(std::vector<BandaEntrenamiento> bandas);

}  // namespace orvela
