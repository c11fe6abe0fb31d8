// The view of one child window: draws the document's image through its
// palette at the current zoom, and answers the zoom, full-screen, pixel
// query and legend commands. Mouse and keys go first to the armed tool
// (doc/HerramientaVista.h); the zoom and the pixel query are tools too.
#pragma once

#include <QAbstractScrollArea>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "doc/CapaVista.h"
#include "doc/HerramientaVista.h"
#include "image/Visualizacion.h"

class CBrimarDoc;
class Espacio;
class Interfaz;
class QMenu;
namespace vista {
class HerramientaZoom;
class HerramientaConsulta;
}  // namespace vista

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
    bool EnConsulta() const { return HayHerramienta("consulta"); }
    // Source rectangle (image pixels) and destination (viewport pixels) of
    // what is drawn now.
    QRect Origen() const;
    QRect Destino() const;
    // Palette entries of the band, one byte per sample, with the palette as
    // colour table; null when nothing can be drawn or a composite is shown.
    const QImage& Indices() const { return indices_; }
    // The colours of a composite, one pixel per sample; null for a band.
    const QImage& ColoresComposicion() const { return rgb_; }
    const orvela::Paleta& PaletaActual() const { return paleta_; }
    // Image column (x) and row (y) under a viewport point.
    QPoint PixelEn(QPoint punto) const;
    // The image point under a viewport point, and the viewport point of an
    // image row and column (as doubles: pixel (f, c) spans f..f+1, c..c+1).
    vista::PuntoImagen PuntoEn(QPoint punto) const;
    QPointF EnPantalla(double fila, double columna) const;

    // Tools. The armed tool gets the mouse and the keys first; arming one
    // over another keeps the lower one for when the upper one ends. The
    // pixel query is a mode that stays below whatever is armed over it.
    void ArmarHerramienta(std::unique_ptr<vista::HerramientaVista> h);
    // Takes the top tool off without its result (Cancelada is called).
    void CancelarHerramienta();
    // Takes this tool off wherever it is in the stack, without calling its
    // Cancelada (its owner is done with it).
    void QuitarHerramienta(const vista::HerramientaVista* h);
    vista::HerramientaVista* Herramienta() const { return herramientas_.empty() ? nullptr : herramientas_.back().get(); }
    // Name of the armed tool ("" for none).
    QString NombreHerramienta() const;

    // Layers over the picture, drawn in the order added. A layer of the
    // same name is replaced.
    void AnadirCapa(std::unique_ptr<vista::CapaVista> c);
    void QuitarCapa(const QString& nombre);
    vista::CapaVista* Capa(const QString& nombre) const;
    std::size_t NumeroCapas() const { return capas_.size(); }

    // Viewer habits: zoom by two around a viewport point (the pixel under
    // it stays under it; the wheel and the keys + and - use these), and
    // panning by a viewport distance.
    void AcercarEn(QPoint punto);
    void AlejarEn(QPoint punto);
    void Desplazar(QPoint distancia);
    // Live readout for the pixel under a viewport point: row, column,
    // value (three values on a colour composite) and map coordinates;
    // empty off the image.
    QString Lectura(QPoint punto) const;

signals:
    // Text for a pane of the status bar (1: row and column, 2: value, 3: UTM).
    void textoPanel(int panel, const QString& texto);
    // A command chosen in the context menu; the frame runs it.
    void comando(int id);
    // A tool was armed or taken off (the frame's buttons show the mode).
    void herramientaCambiada();
    // The live readout under the pointer ("" when it leaves the image).
    void lectura(const QString& texto);

protected:
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void contextMenuEvent(QContextMenuEvent* e) override;

private:
    friend class vista::HerramientaZoom;
    friend class vista::HerramientaConsulta;
    vista::EventoRaton Evento(const QMouseEvent& e) const;
    bool Despachar(const std::function<vista::Respuesta(vista::HerramientaVista&)>& f);
    void Retirar(vista::HerramientaVista* h, bool cancelar);
    bool HayHerramienta(const char* nombre) const;
    void FijarZoom(const vista::RectanguloImagen& r);
    QMenu* MenuRealce(QMenu& padre);
    bool HayDibujo() const;
    bool MapaVisible() const;
    int NivelVisible() const { return armado_ ? nivel_ - 1 : nivel_; }
    void Geometria(QRect& origen, QRect& destino) const;
    void Convertir();
    void ActualizarBarras();
    void ActualizarCursor();
    void Desarmar();
    void Consultar(QPoint punto);

    CBrimarDoc& doc_;
    Espacio& espacio_;
    Interfaz& ui_;

    QImage indices_;
    QImage rgb_;
    std::vector<std::unique_ptr<vista::CapaVista>> capas_;
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

    // Armed tools, the top one last; tools taken off while one of them is
    // still running are kept until the outermost call returns.
    std::vector<std::unique_ptr<vista::HerramientaVista>> herramientas_;
    std::vector<std::unique_ptr<vista::HerramientaVista>> retiradas_;
    int enLlamada_ = 0;

    bool sinMenu_ = false;  // a tool took the right press

    // Middle-button panning.
    bool paneando_ = false;
    QPoint inicioPaneo_;
};
