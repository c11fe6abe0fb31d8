// Layers drawn over the picture of a view.
//
// The view draws a stack, bottom to top: the document's raster (an indexed
// band through its palette and the window's display stretch, or a colour
// composite), then its layers in the order they were added (vector overlays,
// map elements), then the marks of the armed tools. Layers hold image rows
// and columns and draw themselves through CBrimarView::EnPantalla, so they
// follow every zoom, scroll and full-screen change.
#pragma once

#include <QColor>
#include <QPointF>
#include <QString>
#include <vector>

class CBrimarView;
class QPainter;

namespace vista {

class CapaVista {
public:
    virtual ~CapaVista() = default;
    // Name shown to the user and used to find the layer again.
    virtual QString Nombre() const = 0;
    virtual void Dibujar(QPainter& p, const CBrimarView& v) const = 0;
    // A map element shown on the image stops the zoom and the full screen
    // (61285, 61286).
    virtual bool EsElementoMapa() const { return false; }
    bool visible = true;
};

// Points, lines and polygons in image coordinates (x = column, y = row, as
// doubles: the centre of pixel (f, c) is (c + 0.5, f + 0.5)).
class CapaVectorial : public CapaVista {
public:
    enum class Tipo { Punto, Linea, Poligono };
    struct Elemento {
        Tipo tipo = Tipo::Punto;
        std::vector<QPointF> vertices;
        QColor color = QColor(255, 0, 0);
    };
    explicit CapaVectorial(QString nombre) : nombre_(std::move(nombre)) {}
    QString Nombre() const override { return nombre_; }
    void Dibujar(QPainter& p, const CBrimarView& v) const override;
    std::vector<Elemento> elementos;

private:
    QString nombre_;
};

// Map elements (title, north arrow, scale bar, legend, grid) draw in
// window coordinates over everything else; the map commands derive from
// this.
class CapaMapa : public CapaVista {
public:
    bool EsElementoMapa() const override { return true; }
};

}  // namespace vista
