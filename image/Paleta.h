// Palette files (.pal) and the rules of "Crear paleta".
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "image/Visualizacion.h"
#include "base/Mensajes.h"

namespace orvela {

// Palette codes 0..5 load these files from the "Paletas" folder; 6 is the
// user's own file.
inline constexpr int kPaletaPersonalizada = 6;
const char* FicheroPaleta(int codigo);           // nullptr outside 0..5
const char* NombreOpcionPaleta(int codigo);      // "Cuantitativa 256", ... 0..6

// Loads a palette: codes 0..5 from carpetaAplicacion + "/Paletas/" + file,
// code 6 from rutaPersonalizada. Entries in file order, low 8 bits of each
// colour number. Returns the code, or -1 when it cannot be loaded.
// A file that cannot be opened, or holds not one whole entry, fails and
// leaves `p` as it was; entries the file does not reach are black.
int CargarPaleta(int codigo, const std::string& carpetaAplicacion, const std::string& rutaPersonalizada, Paleta& p);
// One palette file, as code 6 loads it: returns 6, or -1.
int CargarPaletaFichero(const std::string& ruta, Paleta& p);
// The same reading of a palette text already in memory.
int LeerPaletaTexto(std::string texto, Paleta& p);

// The sixteen colours of "Crear paleta", red, green, blue, in colour order.
extern const std::array<std::array<uint8_t, 3>, 16> kColoresCrearPaleta;

// Levels given to the sixteen colours: -1 unused, 256 default, 0..255 a
// level. Checks in their order: 61235, 61236, 61237.
std::optional<Mensaje> ComprobarNivelesPaleta(const std::array<int, 16>& niveles);
// The 256 lines "%d %d %d %d\n" of the palette made from valid levels.
std::string TextoPaletaCreada(const std::array<int, 16>& niveles);

}  // namespace orvela
