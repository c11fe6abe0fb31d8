// Workspace commands that are not operations of the common course.
#pragma once

class Espacio;
class Interfaz;
class QWidget;

void ComandoHistograma(Espacio& espacio, Interfaz& ui, QWidget* padre);      // 32862
void ComandoInformacion(Espacio& espacio, Interfaz& ui, QWidget* padre);     // 32771
void ComandoExportarAscii(Espacio& espacio, Interfaz& ui);                   // 32773
void ComandoExportarBmp(Espacio& espacio, Interfaz& ui);                     // 32878
// Help window: contents (empty page) or one command's page.
void MostrarAyuda(const char* pagina, QWidget* padre);
