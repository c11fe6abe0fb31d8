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
    // Brings the window inside the workspace: moved, then shrunk as far as
    // needed so that its frame and buttons can be reached.
    void MeterEnEspacio();
    // Closing without a question (the main window has asked already).
    void CerrarSinPreguntar();

protected:
    void closeEvent(QCloseEvent* e) override;

private:
    Espacio& espacio_;
    Interfaz& ui_;
    bool sinPreguntar_ = false;
    CBrimarDoc* doc_;
    CBrimarView* vista_;
    bool ajustada_ = false;  // sized to its first image already
};
