#include "dialogs/CHistogramaDlg.h"

#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>

#include "image/Estadisticas.h"
#include "image/Visualizacion.h"

using namespace orvela;

Histograma CalcularHistograma(const CImagen& im) {
    Histograma h;
    const Muestras& m = im.pixeles;
    h.pixeles = m.Cantidad();
    if (h.pixeles == 0) return h;
    MinimoMaximo(m, h.minimo, h.maximo);
    h.media = ImageMean(m);
    h.desviacion = ImageStdDev(m, h.media);
    h.porNiveles = m.Codigo() == kByte;
    h.anchoClase = h.porNiveles ? 1.0 : (h.maximo - h.minimo) * 0.00390625;
    for (uint8_t k : IndicesPaleta(m)) ++h.cuentas[k];
    return h;
}

namespace {
QString Numero(double x) { return QString::number(x, 'g', 10); }
}  // namespace

CGraficoHistograma::CGraficoHistograma(const Histograma& h, QWidget* padre) : QWidget(padre), h_(h) {
    setMouseTracking(true);
    setMinimumSize(300, 180);
    setObjectName(QStringLiteral("grafico"));
}

QRect CGraficoHistograma::AreaBarras() const {
    const QFontMetrics fm(font());
    const int izquierda = fm.horizontalAdvance(QString::number(static_cast<qulonglong>(
                              *std::max_element(h_.cuentas.begin(), h_.cuentas.end())))) + 12;
    const int abajo = fm.height() + 10;
    return QRect(izquierda, 10, std::max(256, width() - izquierda - 10), std::max(20, height() - abajo - 10));
}

int CGraficoHistograma::ClaseEn(int x) const {
    const QRect a = AreaBarras();
    if (x < a.left() || x > a.right()) return -1;
    const int k = static_cast<int>((x - a.left()) * 256.0 / a.width());
    return std::clamp(k, 0, 255);
}

void CGraficoHistograma::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), palette().base());
    const QRect a = AreaBarras();
    const std::uint64_t maximo = *std::max_element(h_.cuentas.begin(), h_.cuentas.end());
    p.setPen(palette().text().color());
    p.drawLine(a.bottomLeft(), a.bottomRight());
    p.drawLine(a.bottomLeft(), a.topLeft());
    const QFontMetrics fm(font());
    p.drawText(QRect(0, a.top() - fm.height() / 2, a.left() - 6, fm.height()), Qt::AlignRight | Qt::AlignVCenter,
               QString::number(static_cast<qulonglong>(maximo)));
    p.drawText(QRect(0, a.bottom() - fm.height() / 2, a.left() - 6, fm.height()), Qt::AlignRight | Qt::AlignVCenter,
               QStringLiteral("0"));
    const QString izquierda = h_.porNiveles ? QStringLiteral("0") : Numero(h_.minimo);
    const QString derecha = h_.porNiveles ? QStringLiteral("255") : Numero(h_.maximo);
    p.drawText(QRect(a.left(), a.bottom() + 4, a.width() / 2, fm.height()), Qt::AlignLeft, izquierda);
    p.drawText(QRect(a.left() + a.width() / 2, a.bottom() + 4, a.width() / 2, fm.height()), Qt::AlignRight, derecha);
    if (h_.conRealce) {
        // The stretch limits: dashed lines where they fall on the axis.
        const double origen = h_.porNiveles ? 0.0 : h_.minimo;
        const double ancho = h_.porNiveles ? 1.0 : h_.anchoClase;
        p.save();
        p.setPen(QPen(QColor(200, 30, 30), 1, Qt::DashLine));
        for (double limite : {h_.realceBajo, h_.realceAlto}) {
            const double clase = ancho > 0 ? (limite - origen) / ancho : 0.0;
            const int x = a.left() + static_cast<int>(std::clamp(clase, 0.0, 256.0) * a.width() / 256.0);
            p.drawLine(x, a.top(), x, a.bottom());
        }
        p.restore();
    }
    if (maximo == 0) return;
    const QColor color(40, 80, 160);
    for (int k = 0; k < 256; ++k) {
        if (h_.cuentas[k] == 0) continue;
        const int x0 = a.left() + static_cast<int>(static_cast<double>(k) * a.width() / 256.0);
        const int x1 = a.left() + static_cast<int>(static_cast<double>(k + 1) * a.width() / 256.0);
        const int alto = std::max(1, static_cast<int>(static_cast<double>(h_.cuentas[k]) / maximo * a.height()));
        p.fillRect(QRect(x0, a.bottom() - alto, std::max(1, x1 - x0), alto), color);
    }
}

void CGraficoHistograma::mouseMoveEvent(QMouseEvent* e) {
    const int k = ClaseEn(static_cast<int>(e->position().x()));
    if (k < 0) {
        QToolTip::hideText();
        return;
    }
    const QString cuenta = QString::number(static_cast<qulonglong>(h_.cuentas[k]));
    QString texto;
    if (h_.porNiveles)
        texto = QStringLiteral("ND %1: %2 píxeles").arg(k).arg(cuenta);
    else
        texto = QStringLiteral("ND de %1 a %2: %3 píxeles")
                    .arg(Numero(h_.LimiteInferior(k)), Numero(h_.LimiteInferior(k + 1)), cuenta);
    QToolTip::showText(e->globalPosition().toPoint(), texto, this);
}

CHistogramaDlg::CHistogramaDlg(const CImagen& im, const QString& nombre, QWidget* padre, Realce realce)
    : QDialog(padre), h_(CalcularHistograma(im)) {
    if (realce != Realce::Ninguno) {
        const LimitesRealce l = CalcularRealce(im.pixeles, realce);
        h_.conRealce = l.valido;
        h_.realceBajo = l.bajo;
        h_.realceAlto = l.alto;
    }
    setObjectName(QStringLiteral("histograma"));
    setWindowTitle(QStringLiteral("Histograma - %1").arg(nombre));
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new CGraficoHistograma(h_, this), 1);
    auto* datos = new QGridLayout;
    auto fila = [&](int f, int c, const QString& etiqueta, const QString& valor, const char* objeto) {
        datos->addWidget(new QLabel(etiqueta, this), f, c);
        auto* v = new QLabel(valor, this);
        v->setObjectName(QString::fromLatin1(objeto));
        v->setTextInteractionFlags(Qt::TextSelectableByMouse);
        datos->addWidget(v, f, c + 1);
    };
    fila(0, 0, QStringLiteral("Media:"), QString::number(h_.media, 'f', 4), "media");
    fila(1, 0, QStringLiteral("Desviación típica:"), QString::number(h_.desviacion, 'f', 4), "desviacion");
    fila(0, 2, QStringLiteral("Mínimo:"), Numero(h_.minimo), "minimo");
    fila(1, 2, QStringLiteral("Máximo:"), Numero(h_.maximo), "maximo");
    fila(2, 0, QStringLiteral("Píxeles:"), QString::number(static_cast<qulonglong>(h_.pixeles)), "pixeles");
    fila(2, 2, QStringLiteral("Anchura de clase:"), h_.porNiveles ? QStringLiteral("1 (un ND por barra)") : Numero(h_.anchoClase),
         "anchura");
    if (h_.conRealce)
        fila(3, 0, QStringLiteral("Realce de visualización:"),
             QStringLiteral("%1, de %2 a %3")
                 .arg(QString::fromUtf8(NombreRealce(realce)), Numero(h_.realceBajo), Numero(h_.realceAlto)),
             "realce");
    layout->addLayout(datos);
    auto* cerrar = new QPushButton(QStringLiteral("&Cerrar"), this);
    connect(cerrar, &QPushButton::clicked, this, &QDialog::close);
    auto* botones = new QHBoxLayout;
    botones->addStretch(1);
    botones->addWidget(cerrar);
    layout->addLayout(botones);
}
