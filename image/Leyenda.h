// Legend file of a classified image: stem + "Leyenda.txt".
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvela {

struct ClaseLeyenda {
    std::string nombre;  // UTF-8
    double nd = 0;
};

// Raster path with ".ozm" replaced by "Leyenda.txt".
std::string RutaLeyenda(const std::string& rutaRaster);
// The file's text (UTF-8): the count, then per class name, "ND Clase:" +
// integer ND (truncated), blank line.
std::string TextoLeyenda(const std::vector<ClaseLeyenda>& clases);
// Writes the count, then per class: name, "ND Clase:" + integer ND, blank line.
bool EscribirLeyenda(const std::string& rutaRaster, const std::vector<ClaseLeyenda>& clases);
// The text EscribirLeyenda writes (Windows-1252).
std::string TextoLeyenda(const std::vector<ClaseLeyenda>& clases);
// Reading of the legend window (count; name as one word; ND after the colon).
// nullopt when the file cannot be opened.
std::optional<std::vector<ClaseLeyenda>> LeerLeyendaVentana(const std::string& rutaRaster);
// Formatted reading of the confusion matrix ("%d\n", "%s\n", "ND Clase:%f\n\n").
std::optional<std::vector<ClaseLeyenda>> LeerLeyendaConfusion(const std::string& rutaRaster);
// The two readings of a legend text already in memory.
std::vector<ClaseLeyenda> LeerLeyendaVentanaTexto(const std::string& contenido);
std::vector<ClaseLeyenda> LeerLeyendaConfusionTexto(const std::string& contenido);

}  // namespace orvela
