// The common course of an operation in the desktop: the operation's dialog
// built from its declaration, its checks, the handler's course (wait cursor,
// active-window checks, AVISO before replacing a window's image, computing
// while the window keeps repainting) and the output to the window or to a
// file pair.
//
// In order: an operation that offers the active window's image refuses to
// open its dialog without an active window (61216), with an empty one
// (61264) or with a colour composite (61265). After "Aceptar" (and the
// parameter dialogs) the wait cursor is on; the output or an input taken
// from the window needs an active window (61216); the inputs are loaded
// (61284 for a missing or short raster); the operation's own checks run;
// when the result is to replace a window image that is not one of the
// inputs (and is not a colour composite) the user is asked whether to save
// it first, and may give up. The computation runs on worker threads; a
// progress window with "Cancelar" appears when it takes more than a moment,
// and a cancelled run changes no window and writes nothing. Warnings are
// shown, then either the error (leaving, when the operation says so, one of
// the inputs in the window) or the result: the first image put into the
// window, keeping the window's palette, or everything written under the
// chosen stem; later images open in new windows, reports and charts in
// windows of their own.
#pragma once

#include "operations/Operacion.h"

// How long a computation runs before the progress window appears.
inline constexpr int kEsperaProgresoMs = 300;

class Espacio;
class Interfaz;

// Runs the command of `d` from the menu.
void EjecutarOperacion(const orvela::Declaracion& d, Espacio& espacio, Interfaz& ui);
