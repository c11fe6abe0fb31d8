#include "dialogs/CursoDialogo.h"

void EjecutarOperacion(const orvela::Declaracion&, Espacio&, Interfaz&) {}
