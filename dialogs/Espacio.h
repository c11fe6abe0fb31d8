// What a command handler needs of the workspace: the active document and
// the application folder. The main frame implements it; tests use a plain
// list of documents.
#pragma once

#include <string>

class CBrimarDoc;
class QString;
class QWidget;

class Espacio {
public:
    virtual ~Espacio() = default;
    // Document of the active child window; nullptr when there is none.
    virtual CBrimarDoc* DocumentoActivo() = 0;
    // Application folder (the "Path" setting, or the executable's folder);
    // palettes are in its "Paletas" subfolder.
    virtual std::string CarpetaAplicacion() const = 0;
    // The main window: every dialog hangs from it (never from whatever
    // window happens to be active, such as the help window).
    virtual QWidget* VentanaPrincipal() { return nullptr; }
    // Tells the user, where the status bar shows it, that a file was written.
    virtual void Confirmar(const QString& texto) { (void)texto; }
};
