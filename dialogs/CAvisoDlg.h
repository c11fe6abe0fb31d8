// "AVISO DE Brimar": offered before an operation replaces the image of the
// active window. Saves the present image as the user chooses (mode 0 to its
// own path, 1 under a new name, 2 not at all). False when the user cancels:
// the whole operation is then abandoned.
#pragma once

class CBrimarDoc;
class Interfaz;

bool PreguntarAviso(CBrimarDoc& doc, Interfaz& ui);
