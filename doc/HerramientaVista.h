// Interactive tools on the image view.
//
// A tool is armed on a view (CBrimarView::ArmarHerramienta) and from then on
// receives the presses, moves, releases and keys of the view, already turned
// into image rows and columns, and draws its marks over the picture after
// the image and the layers. The view keeps a stack: a tool armed over
// another (the zoom over the pixel query) hands the view back to the one
// below when it ends or is cancelled.
//
// Interactive input always ends in values handed to a callback (a
// rectangle, a list of points, a list of vertices): the command that armed
// the tool turns them into the values or the file an ordinary operation
// reads, so the same operation runs from the command line with typed values.
//
// Arming a tool from a command:
//
//     vista.ArmarHerramienta(std::make_unique<vista::HerramientaRectangulo>(
//         [](CBrimarView& v, const vista::RectanguloImagen& r) { ...r.fila1, r.columna2... }));
//
// The callback runs once, on the release that ends the drag; the view then
// drops the tool. Escape (or a new image in the window) cancels it without
// calling back.
#pragma once

#include <QCursor>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <functional>
#include <vector>

class CBrimarView;
class QPainter;

namespace vista {

// A point of the image under the pointer. Pixel (f, c) covers the rows
// f <= fila < f + 1 and the columns c <= columna < c + 1; the whole pixel is
// the one the pixel query names for that screen point.
struct PuntoImagen {
    double fila = 0, columna = 0;
    long filaPixel = 0, columnaPixel = 0;
    bool dentro = false;  // on a pixel of the image
};

struct EventoRaton {
    PuntoImagen punto;
    QPoint pantalla;                                  // point of the view's viewport
    Qt::MouseButton boton = Qt::NoButton;             // pressed or released; none on a move
    Qt::MouseButtons botones = Qt::NoButton;          // held down
    Qt::KeyboardModifiers modificadores = Qt::NoModifier;
};

// What an event did to the tool: not used (the view goes on with its own
// handling), used, or used and the tool is done (the view drops it).
enum class Respuesta { Ignorada, Usada, Terminada };

// Rows and columns of an image rectangle, both ends included.
struct RectanguloImagen {
    long fila1 = 0, columna1 = 0, fila2 = -1, columna2 = -1;
    long Filas() const { return fila2 - fila1 + 1; }
    long Columnas() const { return columna2 - columna1 + 1; }
    bool Vacio() const { return fila2 < fila1 || columna2 < columna1; }
    // x = column, y = row.
    QRect ComoQRect() const {
        return QRect(QPoint(static_cast<int>(columna1), static_cast<int>(fila1)),
                     QPoint(static_cast<int>(columna2), static_cast<int>(fila2)));
    }
    bool operator==(const RectanguloImagen&) const = default;
};

class HerramientaVista {
public:
    virtual ~HerramientaVista() = default;
    // Short name, for the frame's buttons and the tests ("zoom", "consulta",
    // "rectangulo", "puntos", "linea", "poligono").
    virtual const char* Nombre() const = 0;
    virtual Respuesta Pulsar(CBrimarView&, const EventoRaton&) { return Respuesta::Ignorada; }
    virtual Respuesta Mover(CBrimarView&, const EventoRaton&) { return Respuesta::Ignorada; }
    virtual Respuesta Soltar(CBrimarView&, const EventoRaton&) { return Respuesta::Ignorada; }
    // A key (Qt::Key) pressed while the view has the focus. Escape not used
    // by the tool cancels it.
    virtual Respuesta Tecla(CBrimarView&, int, Qt::KeyboardModifiers) { return Respuesta::Ignorada; }
    // Marks over the picture, in viewport coordinates (CBrimarView::EnPantalla
    // turns image coordinates into them).
    virtual void Dibujar(QPainter&, const CBrimarView&) const {}
    virtual QCursor Cursor() const { return QCursor(Qt::CrossCursor); }
    // The tool was taken off the view without ending: Escape, a new image,
    // the window closed.
    virtual void Cancelada(CBrimarView&) {}
};

// Drag with the left button: the rectangle of image pixels between the
// press and the release, corners outside the picture brought to its edge,
// at whatever zoom the view shows. A drag that covers no pixel of the
// picture ends the tool with an empty rectangle.
class HerramientaRectangulo : public HerramientaVista {
public:
    using Fin = std::function<void(CBrimarView&, const RectanguloImagen&)>;
    explicit HerramientaRectangulo(Fin fin) : fin_(std::move(fin)) {}
    const char* Nombre() const override { return "rectangulo"; }
    Respuesta Pulsar(CBrimarView& v, const EventoRaton& e) override;
    Respuesta Mover(CBrimarView& v, const EventoRaton& e) override;
    Respuesta Soltar(CBrimarView& v, const EventoRaton& e) override;
    void Dibujar(QPainter& p, const CBrimarView& v) const override;
    bool Arrastrando() const { return arrastrando_; }

    // The rectangle of image pixels between two viewport points, as the
    // view shows the image now.
    static RectanguloImagen Calcular(const CBrimarView& v, QPoint a, QPoint b);

private:
    Fin fin_;
    bool arrastrando_ = false;
    QPoint inicio_, actual_;
};

// Left clicks collect points; each is marked on the picture as the pixel
// itself, a cross of five pixels or a rectangle of (2 x semialto + 1) by
// (2 x semiancho + 1) pixels around it. A right click ends the tool and
// hands over the points in click order. `aceptar`, when given, decides on
// each click (it may tell the user why not); a refused click adds nothing.
class HerramientaPuntos : public HerramientaVista {
public:
    enum class Marca { Punto, Cruz, Rectangulo };
    using Aceptar = std::function<bool(CBrimarView&, const PuntoImagen&)>;
    using Fin = std::function<void(CBrimarView&, const std::vector<PuntoImagen>&)>;
    HerramientaPuntos(Marca marca, int semialto, int semiancho, Fin fin, Aceptar aceptar = {})
        : marca_(marca), semialto_(semialto), semiancho_(semiancho), fin_(std::move(fin)), aceptar_(std::move(aceptar)) {}
    const char* Nombre() const override { return "puntos"; }
    Respuesta Pulsar(CBrimarView& v, const EventoRaton& e) override;
    void Dibujar(QPainter& p, const CBrimarView& v) const override;
    const std::vector<PuntoImagen>& Puntos() const { return puntos_; }
    // The pixels marked for one point (row, column as x = column, y = row),
    // in the order the class sampling takes them.
    std::vector<QPoint> Pixeles(const PuntoImagen& p) const;

private:
    Marca marca_;
    int semialto_, semiancho_;
    Fin fin_;
    Aceptar aceptar_;
    std::vector<PuntoImagen> puntos_;
};

// Digitising: left clicks add vertices (image coordinates as doubles), the
// pointer pulls a line from the last one; Backspace removes the last
// vertex; a right click or Enter ends with at least two vertices (three
// for a polygon, which is closed back to its first vertex); with fewer the
// ending is not taken (Escape cancels).
class HerramientaLinea : public HerramientaVista {
public:
    using Fin = std::function<void(CBrimarView&, const std::vector<QPointF>&)>;  // x = column, y = row
    HerramientaLinea(bool poligono, Fin fin) : poligono_(poligono), fin_(std::move(fin)) {}
    const char* Nombre() const override { return poligono_ ? "poligono" : "linea"; }
    Respuesta Pulsar(CBrimarView& v, const EventoRaton& e) override;
    Respuesta Mover(CBrimarView& v, const EventoRaton& e) override;
    Respuesta Tecla(CBrimarView& v, int tecla, Qt::KeyboardModifiers m) override;
    void Dibujar(QPainter& p, const CBrimarView& v) const override;
    const std::vector<QPointF>& Vertices() const { return vertices_; }

private:
    Respuesta Terminar(CBrimarView& v);
    bool poligono_;
    Fin fin_;
    std::vector<QPointF> vertices_;
    QPointF cursor_;
    bool conCursor_ = false;
};

// Control points measured on the picture: each left click on a pixel of
// the image hands that point to `clic` (which may ask for its map
// coordinates); Backspace hands over the removal of the last one. Escape
// does not end it: it stays armed until the command that armed it takes it
// off, or a new image or the window's closing cancels it (`cancelada`).
class HerramientaPuntosControl : public HerramientaVista {
public:
    using Clic = std::function<void(CBrimarView&, const PuntoImagen&)>;
    using Aviso = std::function<void(CBrimarView&)>;
    HerramientaPuntosControl(Clic clic, Aviso quitarUltimo, Aviso cancelada)
        : clic_(std::move(clic)), quitar_(std::move(quitarUltimo)), cancelada_(std::move(cancelada)) {}
    const char* Nombre() const override { return "puntos_control"; }
    Respuesta Pulsar(CBrimarView& v, const EventoRaton& e) override;
    Respuesta Tecla(CBrimarView& v, int tecla, Qt::KeyboardModifiers m) override;
    void Cancelada(CBrimarView& v) override {
        if (cancelada_) cancelada_(v);
    }

private:
    Clic clic_;
    Aviso quitar_, cancelada_;
};

}  // namespace vista
