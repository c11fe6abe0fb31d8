// What a command handler needs of the workspace: the active document, the
// open documents, the application folder, and windows for results. The main
// frame implements it.
#pragma once

#include <string>
#include <vector>

#include "operations/Operacion.h"

class CBrimarDoc;
class CBrimarView;
class QWidget;

class Espacio {
public:
    virtual ~Espacio() = default;
    // Document of the active child window; nullptr when there is none.
    virtual CBrimarDoc* DocumentoActivo() = 0;
    // Documents of every open child window, in window order.
    virtual std::vector<CBrimarDoc*> Documentos() = 0;
    // Application folder (the "Path" setting, or the executable's folder);
    // palettes are in its "Paletas" subfolder.
    virtual std::string CarpetaAplicacion() const = 0;
    // The main window: every dialog hangs from it (never from whatever
    // window happens to be active, such as the help window).
    virtual QWidget* VentanaPrincipal() { return nullptr; }
    // The view that shows a document; nullptr when it has none.
    virtual CBrimarView* VistaDe(CBrimarDoc* doc) {
        (void)doc;
        return nullptr;
    }

    // A new child window showing a result image (the second and later images
    // of an operation). `guardada`: the image already has its files.
    virtual void AbrirImagen(orvela::CImagen imagen, bool guardada) = 0;
    // A report in a text window that can be saved.
    virtual void AbrirInforme(const orvela::InformeTexto& informe) = 0;
    // A chart in a window that can be saved as a picture.
    virtual void AbrirGrafico(const orvela::Grafico& grafico) = 0;
    // A colour composite in a window: the active one when it is empty, else
    // a new one.
    virtual void AbrirComposicion(orvela::ComposicionResultado composicion) = 0;
    // View of the active child window, where a command arms a tool;
    // nullptr when there is none.
    virtual CBrimarView* VistaParaHerramientas() { return nullptr; }
    // A line in the status bar's message pane ("Guardado: tm4_filtrada.ozm").
    virtual void Confirmar(const std::string& texto) = 0;
};
