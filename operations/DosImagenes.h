// What the operations between two images share: the checks of a picked
// image against the other one, and the header of their result.
#pragma once

#include <optional>
#include <vector>

#include "image/CImagen.h"
#include "base/Mensajes.h"

namespace orvela {

// Checks of a picked image of a pair (index 0 first, 1 second): the second
// needs the first (61221), then the same data type (61222 "El tipo de
// dato"), then the same rows and columns (61222 "Las dimensiones"). A first
// image picked again is compared with a second already there.
std::optional<Mensaje> ComprobarEleccionPar(int indice, const Cabecera& elegida,
                                            const std::vector<std::optional<Cabecera>>& previas);
// The same agreement once both images are loaded.
std::optional<Mensaje> ComprobarParCargado(const CImagen& primera, const CImagen& segunda);

// The result takes the first image's header; when the two reference
// systems, units or any of the seven georeference numbers differ, its
// reference system becomes "unknown".
void GeorreferenciaDelPar(const CImagen& primera, const CImagen& segunda, CImagen& resultado);

}  // namespace orvela
