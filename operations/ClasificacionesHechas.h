// The supervised classifications made in this session, so that the
// decision inspector can explain a pixel of one of them without asking
// again for its bands and classes. A classification is found by its
// labels: an image whose samples are exactly those of a recorded result
// (same size, same bytes) is that result, in whatever window or file it is
// now; one changed since is no longer found.
//
// Recording is off until the program that wants it turns it on (the
// desktop); orvela-cli records nothing.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "classification/Decision.h"
#include "image/CImagen.h"

namespace orvela {

struct BandaClasificada {
    std::string ruta;  // raster read when the classification ran
    std::string nombre;
    int codigo = 0;
    long filas = 0, columnas = 0;
};

struct ClasificacionHecha {
    ReglaSupervisada regla = ReglaSupervisada::Distancia;
    int multiplicador = 1;
    std::vector<BandaClasificada> bandas;
    std::vector<ClaseLeida> clases;  // as they were read for the run
    std::vector<std::string> ficherosClase;
};

void ActivarRegistroClasificaciones(bool activo = true);
bool RegistroClasificacionesActivo();
// Records `c` as the classification whose result is `resultado`.
void RecordarClasificacion(const CImagen& resultado, ClasificacionHecha c);
// The latest recorded classification whose result has exactly the samples
// of `im`; nullopt when none has.
std::optional<ClasificacionHecha> BuscarClasificacion(const CImagen& im);
// Forgets every record (tests).
void OlvidarClasificaciones();

}  // namespace orvela
