#include "dialogs/CMostrarLeyendaDlg.h"

#include <QPainter>
#include <QPushButton>
#include <cmath>

namespace {
constexpr int kAncho = 300, kAlto = 270;
}

CMostrarLeyendaDlg::CMostrarLeyendaDlg(std::vector<orvela::ClaseLeyenda> clases, const orvela::Paleta& paleta,
                                       QWidget* padre, std::vector<uint8_t> entradas)
    : QDialog(padre), clases_(std::move(clases)), paleta_(paleta), entradas_(std::move(entradas)) {
    setWindowTitle(QStringLiteral("Mostrar Leyenda De Clasificación"));
    setObjectName(QStringLiteral("leyenda"));
    setFixedSize(kAncho, kAlto);
    auto* cancelar = new QPushButton(QStringLiteral("&Cancelar"), this);
    cancelar->setObjectName(QStringLiteral("cancelar"));
    cancelar->setGeometry(kAncho - 90, kAlto - 34, 80, 26);
    connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
}

QPoint CMostrarLeyendaDlg::OrigenMuestra(int i) {
    if (i < 9) return QPoint(10, 10 + 25 * i);
    return QPoint(155, 10 + 25 * (i - 9));
}

QColor CMostrarLeyendaDlg::ColorClase(double nd) const {
    // The ND indexes the colour tables; the low byte keeps it inside them.
    const auto k = static_cast<unsigned>(static_cast<long long>(std::isfinite(nd) ? nd : 0.0)) & 0xFFu;
    return QColor(paleta_.rojo[k], paleta_.verde[k], paleta_.azul[k]);
}

QColor CMostrarLeyendaDlg::ColorMuestra(std::size_t i) const {
    if (i >= clases_.size()) return {};
    if (i >= entradas_.size()) return ColorClase(clases_[i].nd);
    const uint8_t k = entradas_[i];
    return QColor(paleta_.rojo[k], paleta_.verde[k], paleta_.azul[k]);
}

void CMostrarLeyendaDlg::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), QColor(193, 193, 193));
    p.setClipRect(rect());
    p.setPen(Qt::black);
    const int alto = p.fontMetrics().height();
    for (std::size_t i = 0; i < clases_.size(); ++i) {
        const QPoint o = OrigenMuestra(static_cast<int>(i));
        p.fillRect(QRect(o.x(), o.y(), 25, 10), ColorMuestra(i));
        // Names of the first column stop short of the second column.
        const int borde = o.x() < 155 ? 150 : kAncho;
        const QRect texto(o.x() + 28, o.y() - 5, borde - (o.x() + 28), alto);
        p.drawText(texto, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                   QString::fromStdString(clases_[i].nombre));
    }
}
