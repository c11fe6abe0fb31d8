// A child window of the workspace: one document and its view.
#pragma once

#include <QMdiSubWindow>

class CBrimarDoc;
class CBrimarView;
class Espacio;
class Interfaz;

class CChildFrame : public QMdiSubWindow {
    Q_OBJECT
public:
    // `numero` names the window while it holds no image ("Sin título 1").
    CChildFrame(Espacio& espacio, Interfaz& ui, int numero, QWidget* padre = nullptr);

    CBrimarDoc& Documento() { return *doc_; }
    CBrimarView& Vista() { return *vista_; }
    // Sizes the window to show the whole image, as far as `maximo` allows.
    void AjustarAImagen(const QSize& maximo);

private:
    CBrimarDoc* doc_;
    CBrimarView* vista_;
    bool ajustada_ = false;  // sized to its first image already
};
