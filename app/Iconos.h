// Pictures of the toolbar buttons and of the application, drawn at start-up.
#pragma once

#include <QIcon>

QIcon IconoAplicacion();
// Icon of a command id; a null icon when the command has none.
QIcon IconoComando(int id);
