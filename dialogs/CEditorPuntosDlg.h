// "Editor de puntos de control": the student measures control points on
// the image of the active window. Each click on a pixel asks for its map X
// and Y ("Punto de control"); the point's line counts from the image's last
// line up and its column is the pixel's, as the geometric correction reads
// them. From the third point on, the polynomials are estimated after every
// change and each point's error and the RMS are listed, while the points
// and their error vectors are drawn on the image. "Quitar último" (or
// Backspace on the image) removes the last point; "Guardar..." writes the
// control-point file. The window stays open beside the image (it is not
// modal); closing it, a new image in the window or the window's closing
// ends the measuring, after offering to save points not yet saved.
//
// Object names: editor_puntos (the window), lista_puntos, rms, quitar,
// guardar, cerrar; the dialog of a point: punto_control, with campo_x,
// campo_y, aceptar, cancelar.
#pragma once

#include <QDialog>
#include <QPointer>
#include <string>
#include <vector>

#include "corrections/PuntosControl.h"

class CBrimarView;
class Espacio;
class Interfaz;
class QLabel;
class QListWidget;
namespace vista {
class CapaPuntosControl;
class HerramientaPuntosControl;
struct PuntoImagen;
}  // namespace vista

class CEditorPuntosDlg : public QDialog {
    Q_OBJECT
public:
    CEditorPuntosDlg(CBrimarView& vista, Espacio& espacio, Interfaz& ui, QWidget* padre);
    ~CEditorPuntosDlg() override;

    const std::vector<orvela::PuntoControl>& Puntos() const { return puntos_; }
    const orvela::Estimacion& Estimacion() const { return estimacion_; }
    // A point measured at this pixel with these map coordinates.
    void Anadir(long filaPixel, long columnaPixel, double x, double y);
    void QuitarUltimo();
    // Asks for a file name and writes the points; true when written.
    bool Guardar();

protected:
    void done(int r) override;

private:
    void Clic(const vista::PuntoImagen& p);
    void Actualizar();
    // Unsaved points: the user saves them, discards them or (`puedeSeguir`)
    // goes on measuring. True when the editor may close.
    bool PermitirCerrar(bool puedeSeguir);
    void Terminar();

    QPointer<CBrimarView> vista_;
    Espacio& espacio_;
    Interfaz& ui_;
    long filas_ = 0, columnas_ = 0;
    std::vector<orvela::PuntoControl> puntos_;
    orvela::Estimacion estimacion_;
    bool guardados_ = true;
    bool terminado_ = false;
    QListWidget* lista_;
    QLabel* rms_;
    vista::CapaPuntosControl* capa_ = nullptr;
    vista::HerramientaPuntosControl* herramienta_ = nullptr;
};

// The command: checks the active window (61216, 61264, 61265) and opens the
// editor on it.
void ComandoEditorPuntos(Espacio& espacio, Interfaz& ui, QWidget* padre);
