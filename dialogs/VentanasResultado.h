// The windows that show what an operation gives besides images: a report
// (its text read-only in a fixed-width font, "Guardar como" writing it as
// Windows-1252) and a chart (drawn to the size of the window, "Guardar como"
// PNG, a click in the plot area giving the data point under it). Both open
// as child windows of the workspace, beside the image windows: the main
// frame's AbrirInforme and AbrirGrafico (Espacio) open them here.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QWidget>
#include <array>
#include <optional>
#include <string>

#include "base/Grafico.h"
#include "operations/Operacion.h"
#include "tools/DibujarGrafico.h"

class Interfaz;
class QMdiArea;

class CVentanaInforme : public QWidget {
    Q_OBJECT
public:
    // `final` is the report's fixed file ending ("_Estadisticas.txt"),
    // proposed as the file name when saving. `guardado`: what is saved
    // when the report file is formatted apart from the text shown (empty:
    // the text shown).
    CVentanaInforme(Interfaz& ui, const std::string& titulo, const std::string& texto, const std::string& final,
                    QWidget* padre = nullptr, const std::string& guardado = {});
    // Asks for a file and writes the report as Windows-1252; a name without
    // an extension takes the ending's. False when the user cancels or the
    // file cannot be written (61260 is shown; what was on disk stays).
    bool GuardarComo();
    const std::string& Texto() const { return texto_; }

private:
    Interfaz& ui_;
    std::string texto_, final_, guardado_;
};

// Figures in read-only boxes inside one group, and "&Aceptar" (the
// statistics of a continuous image). Object names: valor_<k> for the box
// of figure k, aceptar.
class CCuadroValoresDlg : public QDialog {
    Q_OBJECT
public:
    explicit CCuadroValoresDlg(const orvela::CuadroValores& c, QWidget* padre = nullptr);
};

// The picture of the chart, drawn again whenever its size changes.
class CLienzoGrafico : public QWidget {
    Q_OBJECT
public:
    CLienzoGrafico(orvela::Grafico g, QWidget* padre = nullptr);
    const orvela::Grafico& Grafico() const { return grafico_; }
    const orvela::GraficoDibujado& Dibujo() const { return dibujo_; }
    QSize sizeHint() const override { return {640, 480}; }

signals:
    // A left click in the plot area: the data point under it.
    void pulsado(double x, double y);

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void mousePressEvent(QMouseEvent* e) override;

private:
    orvela::Grafico grafico_;
    orvela::GraficoDibujado dibujo_;
};

class CVentanaGrafico : public QWidget {
    Q_OBJECT
public:
    CVentanaGrafico(Interfaz& ui, orvela::Grafico g, QWidget* padre = nullptr);
    // Asks for a file (the chart's fixed ending proposed) and writes the
    // chart as a 640 x 480 PNG, the picture orvela-cli writes. False when
    // the user cancels or the file cannot be written (61260 is shown).
    bool GuardarComo();
    const orvela::Grafico& Grafico() const { return lienzo_->Grafico(); }
    CLienzoGrafico& Lienzo() { return *lienzo_; }

signals:
    // A click in the plot area: the data point under it (also shown in the
    // window's own status line).
    void puntoPulsado(double x, double y);

private:
    Interfaz& ui_;
    CLienzoGrafico* lienzo_;
    QLabel* estado_;
};

// Open a result window as a child window of `area` (made active), or on its
// own without one, and return it; the window is deleted when closed.
CVentanaInforme* AbrirVentanaInforme(QMdiArea* area, Interfaz& ui, const std::string& titulo, const std::string& texto,
                                     const std::string& final, const std::string& guardado = {});
CVentanaGrafico* AbrirVentanaGrafico(QMdiArea* area, Interfaz& ui, const orvela::Grafico& g);
