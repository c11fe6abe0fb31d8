// "Histograma": the count of samples per display level of the active image,
// drawn as bars in a window of its own, with the mean and the standard
// deviation of the samples.
#pragma once

#include <QDialog>
#include <QWidget>
#include <array>
#include <cstdint>

#include "image/CImagen.h"
#include "image/Visualizacion.h"

// Counts of one image. Byte images are counted level by level (0..255);
// the other types are spread over 256 classes between their minimum and
// maximum exactly as the view spreads them over the palette (class width =
// range / 256, the maximum in the last class, a constant image all in
// class 0).
struct Histograma {
    std::array<std::uint64_t, 256> cuentas{};
    std::uint64_t pixeles = 0;
    double minimo = 0, maximo = 0;
    double media = 0, desviacion = 0;
    bool porNiveles = true;   // byte: class k is level k
    double anchoClase = 1;    // range of one class (1 for byte)

    // Limits of the window's display stretch, drawn over the bars (none
    // for the plain display).
    bool conRealce = false;
    double realceBajo = 0, realceAlto = 0;

    // Lower limit of class k.
    double LimiteInferior(int k) const { return porNiveles ? k : minimo + anchoClase * k; }
};

Histograma CalcularHistograma(const orvela::CImagen& im);

// The bars of a histogram; the pointer over a bar shows its class and count.
class CGraficoHistograma : public QWidget {
public:
    explicit CGraficoHistograma(const Histograma& h, QWidget* padre = nullptr);
    QSize sizeHint() const override { return {560, 300}; }
    // Class under the horizontal position x of the widget; -1 outside.
    int ClaseEn(int x) const;

protected:
    void paintEvent(QPaintEvent*) override;
    void mouseMoveEvent(QMouseEvent* e) override;

private:
    const Histograma& h_;
    QRect AreaBarras() const;
};

// Window "Histograma" (object name "histograma"); not modal, deleted when
// closed.
class CHistogramaDlg : public QDialog {
public:
    // `realce`: the display stretch of the window, whose limits are shown.
    CHistogramaDlg(const orvela::CImagen& im, const QString& nombre, QWidget* padre = nullptr,
                   orvela::Realce realce = orvela::Realce::Ninguno);
    const Histograma& Datos() const { return h_; }

private:
    Histograma h_;
};
