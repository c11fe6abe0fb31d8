// The band means of a class file written by "Establecer clase": an empty
// line, a blank line, then per band six lines (name, "ND Máximo:",
// "ND Mínimo:", "Valor Medio:", "Desviación Típica:", blank), then
// "Matriz De Covarianza:" and the matrix.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvela {

// The "Valor Medio" of each band block, in file order; nullopt when the file
// cannot be opened or is not a class file (no band, a labelled line without
// its number, no covariance header).
std::optional<std::vector<double>> LeerMediasClase(const std::string& ruta);
// The same reading of a class file's text.
std::optional<std::vector<double>> AnalizarMediasClase(const std::string& texto);

}  // namespace orvela
