// "Errores De los Puntos De Control": the error of each control point and
// the global RMS of the estimation. A point of the list is marked "Omitir"
// or "Restaurar"; "Recalcular Estimación" applies the marks, estimates again
// and refills both lists. When a view shows the image the points were
// measured on, the points and their error vectors are drawn on it while the
// dialog is open, the selected point highlighted.
//
// Object names: lista_errores (one line per point), omitir, restaurar,
// recalcular, lista_rms, aceptar, cancelar.
#pragma once

#include <QDialog>
#include <QPointer>
#include <string>
#include <vector>

#include "corrections/PuntosControl.h"

class CBrimarView;
class COperacionDlg;
class Espacio;
class Interfaz;
class QListWidget;
namespace orvela {
struct Declaracion;
}
namespace vista {
class CapaPuntosControl;
}

class CErroresPuntosControlDlg : public QDialog {
    Q_OBJECT
public:
    // `vista`: the view of the input image (nullptr: nothing is drawn);
    // `filas`, `columnas`: its size.
    CErroresPuntosControlDlg(std::vector<orvela::PuntoControl> puntos, Interfaz& ui, QWidget* padre = nullptr,
                             CBrimarView* vista = nullptr, long filas = 0, long columnas = 0);
    ~CErroresPuntosControlDlg() override;

    // Every point active and estimated; false when the estimation fails.
    bool Estimar();
    const std::vector<orvela::PuntoControl>& Puntos() const { return puntos_; }
    const orvela::Estimacion& Estimacion() const { return estimacion_; }
    // The inactive points, numbered from 1, as "2,5" (empty: none).
    std::string Omitidos() const;

private:
    enum class Marca { Ninguna, Omitir, Restaurar };
    void Marcar(Marca m);
    void Recalcular();
    void Rellenar();
    void Dibujar();

    std::vector<orvela::PuntoControl> puntos_;
    std::vector<Marca> marcas_;
    orvela::Estimacion estimacion_;
    Interfaz& ui_;
    QListWidget* errores_;
    QListWidget* rms_;
    QPointer<CBrimarView> vista_;
    vista::CapaPuntosControl* capa_ = nullptr;
};

// The desktop course of the geometric correction: picking the control-point
// file opens the errors dialog on it; what it leaves omitted goes to the
// dialog's "Puntos omitidos" field. Cancelling it gives up the pick.
void PrepararRevisionPuntos(const orvela::Declaracion& d, COperacionDlg& dlg, Espacio& espacio, Interfaz& ui);
