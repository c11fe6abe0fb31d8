#include "app/Iconos.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include "dialogs/TablaComandos.h"

namespace {

constexpr int kLado = 24;

QPixmap Lienzo() {
    QPixmap pm(kLado, kLado);
    pm.fill(Qt::transparent);
    return pm;
}

// A small satellite scene: a 4 x 4 mosaic of grey and green levels.
void Mosaico(QPainter& p, QRectF r) {
    static const int niveles[16] = {40, 90, 140, 200, 70, 160, 110, 60, 180, 120, 50, 150, 100, 210, 80, 130};
    const double w = r.width() / 4, h = r.height() / 4;
    for (int i = 0; i < 16; ++i) {
        const int n = niveles[i];
        p.fillRect(QRectF(r.x() + (i % 4) * w, r.y() + (i / 4) * h, w, h), QColor(n / 2, n, n / 3 + 40));
    }
    p.setPen(QPen(QColor(30, 30, 30), 1));
    p.drawRect(r);
}

void Lupa(QPainter& p, bool mas) {
    p.setPen(QPen(QColor(30, 30, 30), 2));
    p.setBrush(QColor(220, 235, 255));
    p.drawEllipse(QPointF(10, 10), 7, 7);
    p.setPen(QPen(QColor(90, 60, 20), 3));
    p.drawLine(QPointF(15, 15), QPointF(22, 22));
    p.setPen(QPen(QColor(30, 30, 30), 2));
    p.drawLine(QPointF(6, 10), QPointF(14, 10));
    if (mas) p.drawLine(QPointF(10, 6), QPointF(10, 14));
}

}  // namespace

QIcon IconoAplicacion() {
    QPixmap pm(64, 64);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    Mosaico(p, QRectF(4, 4, 56, 56));
    p.end();
    return QIcon(pm);
}

QIcon IconoComando(int id) {
    QPixmap pm = Lienzo();
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    switch (id) {
        case cmd::kNuevaVentana:
            p.setPen(QPen(QColor(30, 30, 30), 1));
            p.setBrush(Qt::white);
            p.drawRect(QRectF(3.5, 4.5, 17, 15));
            p.fillRect(QRectF(4, 5, 16, 3), QColor(40, 80, 160));
            break;
        case cmd::kImagen:
            Mosaico(p, QRectF(3.5, 3.5, 17, 17));
            break;
        case cmd::kGuardar: {
            p.setPen(QPen(QColor(20, 20, 60), 1));
            p.setBrush(QColor(60, 90, 170));
            p.drawRect(QRectF(3.5, 3.5, 17, 17));
            p.fillRect(QRectF(7, 4, 10, 6), Qt::white);
            p.fillRect(QRectF(7, 14, 10, 6), QColor(200, 200, 200));
            break;
        }
        case cmd::kZoomAdelante: Lupa(p, true); break;
        case cmd::kZoomAtras: Lupa(p, false); break;
        case cmd::kPantallaCompleta:
            p.setPen(QPen(QColor(30, 30, 30), 2));
            p.drawRect(QRectF(3, 3, 18, 18));
            p.drawLine(QPointF(7, 7), QPointF(11, 11));
            p.drawLine(QPointF(17, 17), QPointF(13, 13));
            p.drawLine(QPointF(7, 7), QPointF(7, 10));
            p.drawLine(QPointF(7, 7), QPointF(10, 7));
            p.drawLine(QPointF(17, 17), QPointF(17, 14));
            p.drawLine(QPointF(17, 17), QPointF(14, 17));
            break;
        case cmd::kPantallaNormal:
            p.setPen(QPen(QColor(30, 30, 30), 2));
            p.drawRect(QRectF(3, 3, 18, 18));
            p.drawRect(QRectF(8, 8, 8, 8));
            break;
        case cmd::kNivelDigital:
            p.setPen(QPen(QColor(180, 20, 20), 2));
            p.drawLine(QPointF(12, 2), QPointF(12, 22));
            p.drawLine(QPointF(2, 12), QPointF(22, 12));
            p.drawEllipse(QPointF(12, 12), 5, 5);
            break;
        case cmd::kHistograma:
            p.setPen(Qt::NoPen);
            p.setBrush(QColor(40, 90, 160));
            for (int i = 0; i < 5; ++i) {
                const int h = (i * 7 + 5) % 16 + 4;
                p.drawRect(QRectF(3 + i * 4, 21 - h, 3, h));
            }
            p.setPen(QPen(QColor(30, 30, 30), 1));
            p.drawLine(QPointF(2, 21.5), QPointF(22, 21.5));
            break;
        case cmd::kAcercaDe: {
            p.setPen(QPen(QColor(20, 60, 140), 1));
            p.setBrush(QColor(60, 110, 200));
            p.drawEllipse(QRectF(2.5, 2.5, 19, 19));
            QFont f = p.font();
            f.setBold(true);
            f.setPixelSize(15);
            p.setFont(f);
            p.setPen(Qt::white);
            p.drawText(QRectF(2, 2, 20, 20), Qt::AlignCenter, QStringLiteral("?"));
            break;
        }
        default:
            return QIcon();
    }
    p.end();
    return QIcon(pm);
}
