// What the desktop remembers about files across sessions (in the program's
// settings): the folder of the last file used, where the file choosers
// open, and the images opened last ("Fichero" lists them). Also the line
// the status bar shows once files were written.
#pragma once

#include <QString>
#include <QStringList>
#include <string>
#include <vector>

// Folder the file choosers open in: that of the last file used; the home
// folder the first time.
QString CarpetaInicial();
// Remembers the folder of a file chosen or used.
void RecordarCarpeta(const QString& ruta);

// Images opened or saved last, newest first, at most kMaximoRecientes.
inline constexpr int kMaximoRecientes = 4;
QStringList FicherosRecientes();
// Puts an image at the head of the list (and remembers its folder).
void AnadirReciente(const QString& ruta);
void QuitarReciente(const QString& ruta);

// "Guardado: a.ozm" or "Guardados: a.ozm, b.txt": the files written (the
// header beside each raster is not named).
// UTF-8.
std::string TextoGuardado(const std::vector<std::string>& escritos);
