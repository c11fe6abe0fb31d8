#include "dialogs/ComandosEspacio.h"

void ComandoHistograma(Espacio&, Interfaz&, QWidget*) {}
void ComandoInformacion(Espacio&, Interfaz&, QWidget*) {}
void ComandoExportarAscii(Espacio&, Interfaz&) {}
void ComandoExportarBmp(Espacio&, Interfaz&) {}
void MostrarAyuda(const char*, QWidget*) {}
