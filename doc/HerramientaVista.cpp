#include "doc/HerramientaVista.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "doc/CBrimarView.h"

namespace vista {

namespace {

// Marks drawn over any palette: a dark line under a light one.
void Trazar(QPainter& p, const std::function<void()>& dibujar) {
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(QColor(0, 0, 0, 200), 3));
    dibujar();
    p.setPen(QPen(QColor(255, 255, 0), 1));
    dibujar();
}

// Screen rectangle of the image pixels from (f1, c1) to (f2, c2), both
// included.
QRectF Celdas(const CBrimarView& v, long f1, long c1, long f2, long c2) {
    return QRectF(v.EnPantalla(static_cast<double>(f1), static_cast<double>(c1)),
                  v.EnPantalla(static_cast<double>(f2 + 1), static_cast<double>(c2 + 1)));
}

}  // namespace

// ---- Rectangle -------------------------------------------------------------

RectanguloImagen HerramientaRectangulo::Calcular(const CBrimarView& v, QPoint a, QPoint b) {
    const QRect o = v.Origen(), d = v.Destino();
    if (d.isEmpty() || o.isEmpty()) return {};
    auto dentro = [&](QPoint p) {
        return QPoint(std::clamp(p.x(), d.left(), d.right()), std::clamp(p.y(), d.top(), d.bottom()));
    };
    const QPoint pa = v.PixelEn(dentro(a));
    const QPoint pb = v.PixelEn(dentro(b));
    QRect r(QPoint(std::min(pa.x(), pb.x()), std::min(pa.y(), pb.y())),
            QPoint(std::max(pa.x(), pb.x()), std::max(pa.y(), pb.y())));
    r &= o;
    if (r.isEmpty()) return {};
    return RectanguloImagen{r.top(), r.left(), r.bottom(), r.right()};
}

Respuesta HerramientaRectangulo::Pulsar(CBrimarView&, const EventoRaton& e) {
    if (e.boton != Qt::LeftButton) return Respuesta::Ignorada;
    arrastrando_ = true;
    inicio_ = actual_ = e.pantalla;
    return Respuesta::Usada;
}

Respuesta HerramientaRectangulo::Mover(CBrimarView&, const EventoRaton& e) {
    if (!arrastrando_) return Respuesta::Ignorada;
    actual_ = e.pantalla;
    return Respuesta::Usada;
}

Respuesta HerramientaRectangulo::Soltar(CBrimarView& v, const EventoRaton& e) {
    if (!arrastrando_ || e.boton != Qt::LeftButton) return Respuesta::Ignorada;
    arrastrando_ = false;
    const RectanguloImagen r = Calcular(v, inicio_, e.pantalla);
    if (fin_) fin_(v, r);
    return Respuesta::Terminada;
}

void HerramientaRectangulo::Dibujar(QPainter& p, const CBrimarView&) const {
    if (!arrastrando_) return;
    const QRect r = QRect(inicio_, actual_).normalized();
    Trazar(p, [&] { p.drawRect(r); });
}

// ---- Points ----------------------------------------------------------------

std::vector<QPoint> HerramientaPuntos::Pixeles(const PuntoImagen& p) const {
    const int c = static_cast<int>(p.columnaPixel), f = static_cast<int>(p.filaPixel);
    switch (marca_) {
        case Marca::Punto: return {QPoint(c, f)};
        case Marca::Cruz: return {QPoint(c, f), QPoint(c, f - 1), QPoint(c - 1, f), QPoint(c, f + 1), QPoint(c + 1, f)};
        case Marca::Rectangulo: {
            std::vector<QPoint> r;
            for (int dy = -semialto_; dy <= semialto_; ++dy)
                for (int dx = -semiancho_; dx <= semiancho_; ++dx) r.emplace_back(c + dx, f + dy);
            return r;
        }
    }
    return {};
}

Respuesta HerramientaPuntos::Pulsar(CBrimarView& v, const EventoRaton& e) {
    if (e.boton == Qt::RightButton) {
        if (fin_) fin_(v, puntos_);
        return Respuesta::Terminada;
    }
    if (e.boton != Qt::LeftButton) return Respuesta::Ignorada;
    if (!aceptar_ || aceptar_(v, e.punto)) puntos_.push_back(e.punto);
    return Respuesta::Usada;
}

void HerramientaPuntos::Dibujar(QPainter& p, const CBrimarView& v) const {
    Trazar(p, [&] {
        for (const PuntoImagen& q : puntos_) {
            const long f = q.filaPixel, c = q.columnaPixel;
            switch (marca_) {
                case Marca::Punto: p.drawRect(Celdas(v, f, c, f, c)); break;
                case Marca::Cruz: {
                    QPainterPath cruz;
                    cruz.addRect(Celdas(v, f - 1, c, f + 1, c));
                    cruz.addRect(Celdas(v, f, c - 1, f, c + 1));
                    p.drawPath(cruz.simplified());
                    break;
                }
                case Marca::Rectangulo: p.drawRect(Celdas(v, f - semialto_, c - semiancho_, f + semialto_, c + semiancho_)); break;
            }
        }
    });
}

// ---- Lines and polygons ------------------------------------------------------

Respuesta HerramientaLinea::Terminar(CBrimarView& v) {
    if (vertices_.size() < (poligono_ ? 3u : 2u)) return Respuesta::Usada;
    if (fin_) fin_(v, vertices_);
    return Respuesta::Terminada;
}

Respuesta HerramientaLinea::Pulsar(CBrimarView& v, const EventoRaton& e) {
    if (e.boton == Qt::RightButton) return Terminar(v);
    if (e.boton != Qt::LeftButton) return Respuesta::Ignorada;
    vertices_.emplace_back(e.punto.columna, e.punto.fila);
    return Respuesta::Usada;
}

Respuesta HerramientaLinea::Mover(CBrimarView&, const EventoRaton& e) {
    cursor_ = QPointF(e.punto.columna, e.punto.fila);
    conCursor_ = true;
    return vertices_.empty() ? Respuesta::Ignorada : Respuesta::Usada;
}

Respuesta HerramientaLinea::Tecla(CBrimarView& v, int tecla, Qt::KeyboardModifiers) {
    if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) return Terminar(v);
    if (tecla == Qt::Key_Backspace && !vertices_.empty()) {
        vertices_.pop_back();
        return Respuesta::Usada;
    }
    return Respuesta::Ignorada;
}

void HerramientaLinea::Dibujar(QPainter& p, const CBrimarView& v) const {
    if (vertices_.empty()) return;
    QPolygonF linea;
    for (const QPointF& q : vertices_) linea << v.EnPantalla(q.y(), q.x());
    if (conCursor_) linea << v.EnPantalla(cursor_.y(), cursor_.x());
    if (poligono_ && linea.size() > 2) linea << linea.front();
    Trazar(p, [&] {
        p.drawPolyline(linea);
        for (const QPointF& q : vertices_) p.drawRect(QRectF(v.EnPantalla(q.y(), q.x()) - QPointF(2, 2), QSizeF(4, 4)));
    });
}

}  // namespace vista

// ---- Layers ------------------------------------------------------------------

#include "doc/CapaVista.h"

namespace vista {

// ---- Control points --------------------------------------------------------

Respuesta HerramientaPuntosControl::Pulsar(CBrimarView& v, const EventoRaton& e) {
    if (e.boton != Qt::LeftButton) return Respuesta::Ignorada;
    if (e.punto.dentro && clic_) clic_(v, e.punto);
    return Respuesta::Usada;
}

Respuesta HerramientaPuntosControl::Tecla(CBrimarView& v, int tecla, Qt::KeyboardModifiers) {
    if (tecla == Qt::Key_Backspace || tecla == Qt::Key_Delete) {
        if (quitar_) quitar_(v);
        return Respuesta::Usada;
    }
    return tecla == Qt::Key_Escape ? Respuesta::Usada : Respuesta::Ignorada;
}

void CapaVectorial::Dibujar(QPainter& p, const CBrimarView& v) const {
    p.setBrush(Qt::NoBrush);
    for (const Elemento& e : elementos) {
        if (e.vertices.empty()) continue;
        QPolygonF pantalla;
        for (const QPointF& q : e.vertices) pantalla << v.EnPantalla(q.y(), q.x());
        p.setPen(QPen(e.color, 2));
        switch (e.tipo) {
            case Tipo::Punto:
                p.setBrush(e.color);
                for (const QPointF& q : pantalla) p.drawEllipse(q, 3.0, 3.0);
                p.setBrush(Qt::NoBrush);
                break;
            case Tipo::Linea: p.drawPolyline(pantalla); break;
            case Tipo::Poligono: p.drawPolygon(pantalla); break;
        }
    }
}

}  // namespace vista
