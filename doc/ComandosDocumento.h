// Commands on the image of the active window: "Imagen", "Guardar",
// "Guardar como", and opening a file named on the command line.
#pragma once

#include <string>

class CBrimarDoc;
class Espacio;
class Interfaz;
class QWidget;

void ComandoImagen(Espacio& espacio, Interfaz& ui, QWidget* padre);
void ComandoGuardar(Espacio& espacio, Interfaz& ui);
void ComandoGuardarComo(Espacio& espacio, Interfaz& ui);
// "Cambiar paleta": the active window's image shown with another palette,
// without reading it again.
void ComandoCambiarPaleta(Espacio& espacio, Interfaz& ui, QWidget* padre);

// Before a window's unsaved result is discarded (the window closed, the
// program left, another image loaded into it): the user saves it (under a
// new name when it has none), discards it, or cancels. True when what was
// being done may go on.
bool PermitirDescartar(CBrimarDoc& doc, Espacio& espacio, Interfaz& ui);

// Checks a raster path as the file pickers do and shows it in `doc` with
// the palette `codigo` (6: the file `rutaPaleta`). False after a message.
bool AbrirImagen(CBrimarDoc& doc, const std::string& ruta, int codigo, const std::string& rutaPaleta,
                 Interfaz& ui);
