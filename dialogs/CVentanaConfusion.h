// The confusion matrix window ("Información índice kappa"): the report as
// written, and beside it the matrix as a table whose cells are shaded by
// their count (agreement in green on the diagonal, confusion in red off it),
// with the totals, each class's user's accuracy (by row) and producer's
// accuracy (by column), the overall accuracy and the kappa index.
#pragma once

#include <QWidget>

#include "operations/Operacion.h"

class Interfaz;
class QLabel;
class QMdiArea;
class QTableWidget;
class CVentanaInforme;

class CVentanaConfusion : public QWidget {
    Q_OBJECT
public:
    // `informe` must carry the matrix (`confusion`).
    CVentanaConfusion(Interfaz& ui, const orvela::InformeTexto& informe, QWidget* padre = nullptr);
    CVentanaInforme& Informe() { return *informe_; }
    QTableWidget& Tabla() { return *tabla_; }

private:
    CVentanaInforme* informe_;
    QTableWidget* tabla_;
};

// Opens it as a child window of `area` (made active), or on its own.
CVentanaConfusion* AbrirVentanaConfusion(QMdiArea* area, Interfaz& ui, const orvela::InformeTexto& informe);
