// What the program sets up before its first window: its names (for the
// settings) and Qt's own Spanish texts for the standard dialogs and buttons.
#pragma once

#include <QString>

class QCoreApplication;

// Names the application. No display name is set: the window system would
// add it to every caption, and the main window's caption names the
// program already.
void NombrarAplicacion();

// Loads Qt's Spanish translations ("qt_es", else "qtbase_es") from Qt's
// translations folder, or from `carpeta` when given; true when one was
// installed. Without them the program runs with Qt's English texts.
bool CargarTraducciones(QCoreApplication& app, const QString& carpeta = {});
