// "Fase entrenamiento": the number of bands, one file dialog per band
// ("&Seleccionar las bandas a clasificar"), and the bands listed as
// "Banda %i:  %s". Accepting gives the new training selection; cancelling
// keeps the one there was.
//
// Object names: numeroBandas, seleccionar, lista, aceptar, cancelar, ayuda.
#pragma once

#include <QDialog>
#include <vector>

#include "classification/Entrenamiento.h"

class Interfaz;
class QLineEdit;
class QListWidget;

class CFaseEntrenamientoDlg : public QDialog {
    Q_OBJECT
public:
    CFaseEntrenamientoDlg(Interfaz& ui, QWidget* padre = nullptr);
    // The bands chosen (valid once accepted).
    const std::vector<orvela::BandaEntrenamiento>& Bandas() const { return bandas_; }

private slots:
    void Seleccionar();
    void Aceptar();

private:
    Interfaz& ui_;
    QLineEdit* numero_;
    QListWidget* lista_;
    std::vector<orvela::BandaEntrenamiento> bandas_;
};
