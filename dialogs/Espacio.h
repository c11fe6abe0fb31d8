// What a command handler needs of the workspace: the active document, the
// application folder and the area where result windows open. The main frame implements it; tests use a plain
// list of documents.
#pragma once

#include <string>

class CBrimarDoc;
class QMdiArea;

class Espacio {
public:
    virtual ~Espacio() = default;
    // Document of the active child window; nullptr when there is none.
    virtual CBrimarDoc* DocumentoActivo() = 0;
    // Application folder (the "Path" setting, or the executable's folder);
    // palettes are in its "Paletas" subfolder.
    virtual std::string CarpetaAplicacion() const = 0;
    // The workspace's area of child windows; without one (nullptr), result
    // windows open on their own.
    virtual QMdiArea* AreaVentanas() { return nullptr; }
};
