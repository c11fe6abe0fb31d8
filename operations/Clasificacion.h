// What the classification operations share: the band list input and its
// check (every band of the first one's type and size).
#pragma once

#include <optional>
#include <vector>

#include "operations/Operacion.h"

namespace orvela {

DeclEntrada EntradaBandas(int minimo = 1);
// The list of class files ("--clase"), one a class, in the legend's order.
DeclEntrada EntradaClases(const char* ayudaCli);
// Type and size of each band against the first (61222 with "bandas").
std::optional<Mensaje> BandaIgualPrimera(int indice, const Cabecera& elegida,
                                         const std::vector<std::optional<Cabecera>>& previas);
// Whether the georeference of the bands differs from the first's.
bool GeorreferenciasDistintas(const std::vector<const CImagen*>& bandas);

}  // namespace orvela
