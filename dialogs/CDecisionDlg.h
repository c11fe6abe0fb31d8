// The decision inspector's window: for one pixel of a classified image,
// the value of each band and, class by class, the figure the rule weighed
// (distance, bands inside the box, or log-likelihood), with the winner and
// the runner-up marked. One window, kept open and refilled by each click.
//
// Object names: posicion (label), bandas and clases (tables), aviso (label,
// hidden unless the rule's choice differs from the image's label).
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "classification/Decision.h"

class QLabel;
class QTableWidget;

class CDecisionDlg : public QDialog {
    Q_OBJECT
public:
    explicit CDecisionDlg(QWidget* padre = nullptr);

    // Fills the window for the pixel (fila, columna) whose label in the
    // image is `etiqueta`.
    void Mostrar(long fila, long columna, double etiqueta, const std::vector<std::string>& bandas,
                 const std::vector<double>& valores, orvela::ReglaSupervisada regla,
                 const std::vector<std::string>& clases, const orvela::Decision& d);

    QTableWidget* TablaBandas() const { return bandas_; }
    QTableWidget* TablaClases() const { return clases_; }
    QString Posicion() const;
    QString Aviso() const;  // empty when the winner agrees with the image

private:
    QLabel* posicion_;
    QTableWidget* bandas_;
    QTableWidget* clases_;
    QLabel* aviso_;
};
