// The common course of an operation in the desktop: the operation's dialog
// built from its declaration, its checks, the handler's course (wait cursor,
// active-window checks, AVISO before replacing a window's image, computing
// while the window keeps repainting) and the output to the window or to a
// file pair.
#pragma once

#include "operations/Operacion.h"

class Espacio;
class Interfaz;

// Runs the command of `d` from the menu.
void EjecutarOperacion(const orvela::Declaracion& d, Espacio& espacio, Interfaz& ui);
