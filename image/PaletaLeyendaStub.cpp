// Placeholder definitions; replaced by the palette, legend and export files.
#include "image/Leyenda.h"
#include "image/Paleta.h"
#include "tools/Exportar.h"

namespace orvela {
const char* FicheroPaleta(int) { return nullptr; }
const char* NombreOpcionPaleta(int) { return ""; }
int CargarPaleta(int, const std::string&, const std::string&, Paleta&) { return -1; }
int CargarPaletaFichero(const std::string&, Paleta&) { return -1; }
const std::array<std::array<uint8_t, 3>, 16> kColoresCrearPaleta{};
std::optional<Mensaje> ComprobarNivelesPaleta(const std::array<int, 16>&) { return std::nullopt; }
std::string TextoPaletaCreada(const std::array<int, 16>&) { return {}; }
std::string RutaLeyenda(const std::string& r) { return r; }
bool EscribirLeyenda(const std::string&, const std::vector<ClaseLeyenda>&) { return false; }
std::optional<std::vector<ClaseLeyenda>> LeerLeyendaVentana(const std::string&) { return std::nullopt; }
std::optional<std::vector<ClaseLeyenda>> LeerLeyendaConfusion(const std::string&) { return std::nullopt; }
std::optional<Mensaje> ExportarAscii(const CImagen&, const std::string&) { return std::nullopt; }
std::optional<Mensaje> ExportarImagen(const CImagen&, const Paleta&, const std::string&, FormatoImagen) { return std::nullopt; }
}  // namespace orvela
