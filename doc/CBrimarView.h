// The view of one child window: draws the document's image through its
// palette at the current zoom, and answers the zoom, full-screen, pixel
// query and legend commands.
#pragma once

#include <QAbstractScrollArea>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <array>
#include <vector>

#include "image/Visualizacion.h"

class CBrimarDoc;
class Espacio;
class Interfaz;
class QRubberBand;

class CBrimarView : public QAbstractScrollArea {
    Q_OBJECT
public:
    static constexpr int kMaximoZooms = 18;

    CBrimarView(CBrimarDoc& doc, Espacio& espacio, Interfaz& ui, QWidget* padre = nullptr);
    ~CBrimarView() override;

    CBrimarDoc& Documento() { return doc_; }

    // Window set-up after an image was put into the document: zoom, full
    // screen and scrolling reset, palette loaded, band converted once to
    // palette entries, redraw.
    void Preparar();

    // Commands. The caller has made sure that there is an active window.
    void ZoomAdelante();
    void ZoomAtras();
    void PantallaCompleta();
    void PantallaNormal();
    void ConsultarPixel();   // enters pixel-query mode (checks done by the caller)
    void TerminarConsulta();
    void MostrarLeyenda();

    // State, for the frame and the tests.
    int NivelZoom() const { return nivel_; }
    bool ZoomArmado() const { return armado_; }
    bool EnPantallaCompleta() const { return pantallaCompleta_; }
    bool EnConsulta() const { return consulta_; }
    // Source rectangle (image pixels) and destination (viewport pixels) of
    // what is drawn now.
    QRect Origen() const;
    QRect Destino() const;
    // Palette entries of the band, one byte per sample, with the palette as
    // colour table; null when nothing can be drawn.
    const QImage& Indices() const { return indices_; }
    const orvela::Paleta& PaletaActual() const { return paleta_; }
    // Image column (x) and row (y) under a viewport point.
    QPoint PixelEn(QPoint punto) const;

signals:
    // Text for a pane of the status bar (1: row and column, 2: value, 3: UTM).
    void textoPanel(int panel, const QString& texto);
    // A command chosen in the context menu; the frame runs it.
    void comando(int id);

protected:
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void contextMenuEvent(QContextMenuEvent* e) override;

private:
    bool HayDibujo() const;
    int NivelVisible() const { return armado_ ? nivel_ - 1 : nivel_; }
    void Geometria(QRect& origen, QRect& destino) const;
    void Convertir();
    void ActualizarBarras();
    void ActualizarCursor();
    void Desarmar();
    void Consultar(QPoint punto);
    void TerminarRectangulo(QPoint fin);

    CBrimarDoc& doc_;
    Espacio& espacio_;
    Interfaz& ui_;

    QImage indices_;
    orvela::Paleta paleta_;
    std::array<QRgb, 256> colores_{};
    long filas_ = 0, columnas_ = 0;
    // Palette entry of each class of the legend beside the image (empty
    // when it has none).
    std::vector<uint8_t> entradasClases_;

    // Zoom state: level 0 shows the whole image; pila_[n] is the source
    // rectangle of level n. While armed the level has been raised already
    // and the next dragged rectangle becomes pila_[nivel_].
    int nivel_ = 0;
    bool armado_ = false;
    std::array<QRect, kMaximoZooms + 1> pila_;
    bool pantallaCompleta_ = false;
    bool consulta_ = false;

    // Rectangle being dragged.
    bool arrastrando_ = false;
    QPoint inicioArrastre_;
    QRubberBand* banda_ = nullptr;
};
