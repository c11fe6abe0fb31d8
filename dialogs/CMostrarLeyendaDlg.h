// "Mostrar Leyenda De Clasificación": one swatch and the name of each class
// of a classified image, in the colours the image is shown with.
#pragma once

#include <QDialog>
#include <vector>

#include "image/Leyenda.h"
#include "image/Visualizacion.h"

class CMostrarLeyendaDlg : public QDialog {
    Q_OBJECT
public:
    // `entradas`: the palette entry each class is drawn with in the image
    // (as many as classes); empty: the ND's low byte.
    CMostrarLeyendaDlg(std::vector<orvela::ClaseLeyenda> clases, const orvela::Paleta& paleta,
                       QWidget* padre = nullptr, std::vector<uint8_t> entradas = {});

    // Origin of the swatch of class i (from 0): two columns of nine rows,
    // 25 pixels apart; classes after the eighteenth go on down the second.
    static QPoint OrigenMuestra(int i);
    // Colour of an ND in the image's colour tables.
    QColor ColorClase(double nd) const;
    // Colour of the swatch of class i (from 0).
    QColor ColorMuestra(std::size_t i) const;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    std::vector<orvela::ClaseLeyenda> clases_;
    orvela::Paleta paleta_;
    std::vector<uint8_t> entradas_;
};
