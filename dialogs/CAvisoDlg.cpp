#include "dialogs/CAvisoDlg.h"

bool PreguntarAviso(CBrimarDoc&, Interfaz&) { return true; }
