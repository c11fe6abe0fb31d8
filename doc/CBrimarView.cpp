#include "doc/CBrimarView.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QRubberBand>
#include <QScrollBar>
#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

#include "dialogs/Espacio.h"
#include "dialogs/Interfaz.h"
#include "dialogs/TablaComandos.h"
#include "dialogs/CMostrarLeyendaDlg.h"
#include "doc/CBrimarDoc.h"
#include "image/Estadisticas.h"
#include "image/Leyenda.h"
#include "image/Paleta.h"

using orvela::Mensaje;
namespace msg = orvela::msg;

namespace {

// a * b / c rounded toward minus infinity, without overflow for view sizes.
long long Escalar(long long a, long long b, long long c) {
    const long long n = a * b;
    long long q = n / c;
    if ((n % c != 0) && ((n < 0) != (c < 0))) --q;
    return q;
}

// Fits a w x h picture into a client area keeping its proportions: the
// candidate width is w / h x client height; when it reaches the client
// width, the picture takes the client width and h / w of it in height.
QSize Ajustar(double w, double h, int anchoCliente, int altoCliente) {
    const auto candidato = static_cast<long long>(w / h * altoCliente);
    if (candidato >= anchoCliente)
        return QSize(anchoCliente, static_cast<int>(static_cast<long long>(h / w * anchoCliente)));
    return QSize(static_cast<int>(candidato), altoCliente);
}

// Pointer of the armed zoom: a small magnifying glass.
QCursor CursorLupa() {
    QPixmap pm(32, 32);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(Qt::white, 4));
    p.drawEllipse(QPointF(12, 12), 8, 8);
    p.drawLine(QPointF(18, 18), QPointF(28, 28));
    p.setPen(QPen(Qt::black, 2));
    p.drawEllipse(QPointF(12, 12), 8, 8);
    p.drawLine(QPointF(18, 18), QPointF(28, 28));
    p.drawLine(QPointF(8, 12), QPointF(16, 12));
    p.drawLine(QPointF(12, 8), QPointF(12, 16));
    p.end();
    return QCursor(pm, 12, 12);
}

}  // namespace

CBrimarView::CBrimarView(CBrimarDoc& doc, Espacio& espacio, Interfaz& ui, QWidget* padre)
    : QAbstractScrollArea(padre), doc_(doc), espacio_(espacio), ui_(ui) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setAutoFillBackground(false);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(120, 90);
    connect(&doc_, &CBrimarDoc::imagenPuesta, this, &CBrimarView::Preparar);
    if (doc_.TieneImagen()) Preparar();
}

CBrimarView::~CBrimarView() = default;

bool CBrimarView::HayDibujo() const { return !indices_.isNull(); }

void CBrimarView::Preparar() {
    nivel_ = 0;
    armado_ = false;
    pantallaCompleta_ = false;
    arrastrando_ = false;
    if (banda_) banda_->hide();
    const auto& im = doc_.Imagen();
    filas_ = im.Filas();
    columnas_ = im.Columnas();
    pila_.fill(QRect());
    pila_[0] = QRect(0, 0, static_cast<int>(columnas_), static_cast<int>(filas_));
    horizontalScrollBar()->setValue(0);
    verticalScrollBar()->setValue(0);
    Convertir();
    ActualizarBarras();
    ActualizarCursor();
    viewport()->update();
}

void CBrimarView::Convertir() {
    indices_ = QImage();
    const auto& im = doc_.Imagen();
    if (!doc_.TieneImagen() || !im.pixeles.Valido() || filas_ <= 0 || columnas_ <= 0) return;
    orvela::Paleta p;
    if (orvela::CargarPaleta(static_cast<int>(im.indicePaleta), espacio_.CarpetaAplicacion(),
                             im.rutaPaletaPersonalizada, p) < 0) {
        ui_.Mostrar(Mensaje::Tabla(msg::kPaletaNoEncontrada));
        return;
    }
    paleta_ = p;
    for (int i = 0; i < 256; ++i) colores_[i] = qRgb(p.rojo[i], p.verde[i], p.azul[i]);

    if (im.pixeles.Cantidad() < static_cast<std::size_t>(filas_) * static_cast<std::size_t>(columnas_)) return;
    // The picture is the only image-sized allocation: the entries go into it
    // row by row. When memory cannot be had the window says so and shows
    // nothing, and the program goes on.
    try {
        QImage q(static_cast<int>(columnas_), static_cast<int>(filas_), QImage::Format_Indexed8);
        if (q.isNull()) {
            ui_.Mostrar(orvela::MensajeMemoria(im.filas, im.columnas));
            return;
        }
        double mn = 0, mx = 0;
        if (im.pixeles.Codigo() != orvela::kByte) orvela::MinimoMaximo(im.pixeles, mn, mx);
        for (long f = 0; f < filas_; ++f)
            orvela::IndicesPaletaTramo(im.pixeles, static_cast<std::size_t>(f) * static_cast<std::size_t>(columnas_),
                                       static_cast<std::size_t>(columnas_), mn, mx, q.scanLine(static_cast<int>(f)));
        q.setColorTable(QList<QRgb>(colores_.begin(), colores_.end()));
        indices_ = std::move(q);
    } catch (const std::bad_alloc&) {
        indices_ = QImage();
        ui_.Mostrar(orvela::MensajeMemoria(im.filas, im.columnas));
    }
}

void CBrimarView::Geometria(QRect& origen, QRect& destino) const {
    origen = destino = QRect();
    if (!doc_.TieneImagen() || columnas_ <= 0 || filas_ <= 0) return;
    const QSize cliente = viewport()->size();
    if (pantallaCompleta_) {
        origen = pila_[0];
        destino = QRect(QPoint(0, 0), Ajustar(static_cast<double>(columnas_), static_cast<double>(filas_),
                                               cliente.width(), cliente.height()));
    } else if (NivelVisible() > 0) {
        origen = pila_[NivelVisible()];
        destino = QRect(QPoint(0, 0), Ajustar(origen.width(), origen.height(), cliente.width(), cliente.height()));
    } else {
        const int x = horizontalScrollBar()->value();
        const int y = verticalScrollBar()->value();
        const int w = static_cast<int>(std::min<long>(cliente.width(), columnas_ - x));
        const int h = static_cast<int>(std::min<long>(cliente.height(), filas_ - y));
        origen = QRect(x, y, std::max(w, 0), std::max(h, 0));
        destino = QRect(0, 0, origen.width(), origen.height());
    }
}

QRect CBrimarView::Origen() const {
    QRect o, d;
    Geometria(o, d);
    return o;
}

QRect CBrimarView::Destino() const {
    QRect o, d;
    Geometria(o, d);
    return d;
}

QPoint CBrimarView::PixelEn(QPoint v) const {
    QRect o, d;
    Geometria(o, d);
    if (d.width() <= 0 || d.height() <= 0) return QPoint(-1, -1);
    return QPoint(static_cast<int>(o.x() + Escalar(v.x() - d.x(), o.width(), d.width())),
                  static_cast<int>(o.y() + Escalar(v.y() - d.y(), o.height(), d.height())));
}

void CBrimarView::ActualizarBarras() {
    const bool normal = doc_.TieneImagen() && !pantallaCompleta_ && NivelVisible() == 0;
    const Qt::ScrollBarPolicy politica = normal ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
    if (horizontalScrollBarPolicy() != politica) setHorizontalScrollBarPolicy(politica);
    if (verticalScrollBarPolicy() != politica) setVerticalScrollBarPolicy(politica);
    QSize cliente = viewport()->size();
    // An image that fits once the bars are gone needs no bars: measure
    // against the viewport as it would be without them.
    const QSize sinBarras = maximumViewportSize();
    if (columnas_ <= sinBarras.width() && filas_ <= sinBarras.height()) cliente = sinBarras;
    if (normal) {
        horizontalScrollBar()->setRange(0, static_cast<int>(std::max<long>(0, columnas_ - cliente.width())));
        verticalScrollBar()->setRange(0, static_cast<int>(std::max<long>(0, filas_ - cliente.height())));
        horizontalScrollBar()->setPageStep(std::max(1, cliente.width()));
        verticalScrollBar()->setPageStep(std::max(1, cliente.height()));
        horizontalScrollBar()->setSingleStep(16);
        verticalScrollBar()->setSingleStep(16);
    }
}

void CBrimarView::ActualizarCursor() {
    if (armado_)
        viewport()->setCursor(CursorLupa());
    else if (consulta_)
        viewport()->setCursor(Qt::CrossCursor);
    else
        viewport()->unsetCursor();
}

void CBrimarView::resizeEvent(QResizeEvent* e) {
    QAbstractScrollArea::resizeEvent(e);
    ActualizarBarras();
}

void CBrimarView::scrollContentsBy(int, int) { viewport()->update(); }

void CBrimarView::paintEvent(QPaintEvent* e) {
    QPainter p(viewport());
    p.fillRect(e->rect(), Qt::white);
    if (!HayDibujo()) return;
    QRect o, d;
    Geometria(o, d);
    const QRect area = e->rect() & d;
    if (area.isEmpty() || o.isEmpty()) return;
    // Only the part of the picture that is to be painted is built, one
    // screen pixel at a time from the nearest sample: the cost follows the
    // window's size, never the image's.
    QImage trozo(area.size(), QImage::Format_RGB32);
    std::vector<int> columna(static_cast<std::size_t>(area.width()));
    for (int i = 0; i < area.width(); ++i)
        columna[i] = static_cast<int>(o.x() + Escalar(area.x() + i - d.x(), o.width(), d.width()));
    for (int j = 0; j < area.height(); ++j) {
        const int fila = static_cast<int>(o.y() + Escalar(area.y() + j - d.y(), o.height(), d.height()));
        const uchar* src = indices_.constScanLine(fila);
        auto* dst = reinterpret_cast<QRgb*>(trozo.scanLine(j));
        for (int i = 0; i < area.width(); ++i) dst[i] = colores_[src[columna[i]]];
    }
    p.drawImage(area.topLeft(), trozo);
}

// ---- Commands -------------------------------------------------------------

void CBrimarView::ZoomAdelante() {
    if (!doc_.TieneImagen()) return ui_.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    if (armado_) {  // pressed twice: the armed zoom is cancelled
        Desarmar();
        return;
    }
    if (pantallaCompleta_) return ui_.Mostrar(Mensaje::Tabla(msg::kZoomPantallaCompleta));
    const QRect o = Origen();
    if (o.width() <= 1 || o.height() <= 1) return ui_.Mostrar(Mensaje::Tabla(msg::kResolucionZoom));
    if (nivel_ >= kMaximoZooms) return ui_.Mostrar(Mensaje::Tabla(msg::kMaximoZooms));
    armado_ = true;
    ++nivel_;
    ActualizarCursor();
}

void CBrimarView::Desarmar() {
    if (!armado_) return;
    armado_ = false;
    --nivel_;
    arrastrando_ = false;
    if (banda_) banda_->hide();
    ActualizarCursor();
}

void CBrimarView::ZoomAtras() {
    if (!doc_.TieneImagen()) return ui_.Mostrar(Mensaje::Tabla(msg::kSinImagen));
    if (armado_)
        Desarmar();
    else if (nivel_ > 0)
        --nivel_;
    ActualizarBarras();
    viewport()->update();
}

void CBrimarView::PantallaCompleta() {
    if (!doc_.TieneImagen()) return ui_.Mostrar(Mensaje::Tabla(msg::kSinImagen));
    if (pantallaCompleta_) return ui_.Mostrar(Mensaje::Tabla(msg::kYaPantallaCompleta));
    Desarmar();
    nivel_ = 0;
    pantallaCompleta_ = true;
    ActualizarBarras();
    viewport()->update();
}

void CBrimarView::PantallaNormal() {
    if (!doc_.TieneImagen()) return ui_.Mostrar(Mensaje::Tabla(msg::kSinImagen));
    Desarmar();
    nivel_ = 0;
    pantallaCompleta_ = false;
    ActualizarBarras();
    viewport()->update();
}

void CBrimarView::ConsultarPixel() {
    consulta_ = true;
    ActualizarCursor();
    emit textoPanel(1, QStringLiteral("Fila =                             Columna =  "));
    emit textoPanel(2, QStringLiteral("\tNivel Digital = \t"));
    emit textoPanel(3, QString());
}

void CBrimarView::TerminarConsulta() {
    consulta_ = false;
    ActualizarCursor();
}

void CBrimarView::MostrarLeyenda() {
    if (!doc_.TieneImagen()) return ui_.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    auto clases = orvela::LeerLeyendaVentana(doc_.Imagen().rutaRaster);
    if (!clases) return ui_.Mostrar(Mensaje::Tabla(msg::kLeyendaNoAbierta));
    CMostrarLeyendaDlg dlg(std::move(*clases), paleta_, this);
    ui_.Ejecutar(dlg);
}

// ---- Mouse and keyboard ------------------------------------------------------

void CBrimarView::Consultar(QPoint v) {
    const QPoint px = PixelEn(v);
    const long fila = px.y(), columna = px.x();
    emit textoPanel(1, QString::asprintf("Fila =  %d \t Columna =  %d", px.y(), px.x()));
    const bool dentro = Destino().contains(v);
    if (dentro && fila >= 0 && columna >= 0 && columna < columnas_ && fila < filas_) {
        double x = -1.0, y = -1.0;
        const double valor = doc_.Imagen().ValorPixel(fila, columna, &x, &y);
        emit textoPanel(2, QString::asprintf("\tNivel Digital =  %.2f\t", valor));
        if (x != -1.0 && y != -1.0)
            emit textoPanel(3, QString::asprintf("Coord. UTM. X = %.1f ; Y = %.1f ", x, y));
        else
            emit textoPanel(3, QString());
    } else {
        emit textoPanel(2, QStringLiteral("No Existe Imagen En Estas Coordenadas."));
        emit textoPanel(3, QString());
    }
}

void CBrimarView::mousePressEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton || !doc_.TieneImagen()) return QAbstractScrollArea::mousePressEvent(e);
    const QPoint v = e->position().toPoint();
    if (armado_) {
        arrastrando_ = true;
        inicioArrastre_ = v;
        if (!banda_) banda_ = new QRubberBand(QRubberBand::Rectangle, viewport());
        banda_->setGeometry(QRect(v, QSize(1, 1)));
        banda_->show();
        return;
    }
    if (consulta_) Consultar(v);
}

void CBrimarView::mouseMoveEvent(QMouseEvent* e) {
    if (arrastrando_ && banda_) banda_->setGeometry(QRect(inicioArrastre_, e->position().toPoint()).normalized());
    QAbstractScrollArea::mouseMoveEvent(e);
}

void CBrimarView::mouseReleaseEvent(QMouseEvent* e) {
    if (arrastrando_ && e->button() == Qt::LeftButton) return TerminarRectangulo(e->position().toPoint());
    QAbstractScrollArea::mouseReleaseEvent(e);
}

void CBrimarView::TerminarRectangulo(QPoint fin) {
    arrastrando_ = false;
    if (banda_) banda_->hide();
    if (!armado_) return;
    // The dragged rectangle, in the picture shown now, becomes the source of
    // the new level; corners outside the picture are brought to its edge.
    QRect o, d;
    Geometria(o, d);
    if (d.isEmpty() || o.isEmpty()) return Desarmar();
    auto dentro = [&](QPoint p) {
        return QPoint(std::clamp(p.x(), d.left(), d.right()), std::clamp(p.y(), d.top(), d.bottom()));
    };
    const QPoint a = PixelEn(dentro(inicioArrastre_));
    const QPoint b = PixelEn(dentro(fin));
    QRect r(QPoint(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
            QPoint(std::max(a.x(), b.x()), std::max(a.y(), b.y())));
    r &= o;
    if (r.isEmpty()) return Desarmar();
    pila_[nivel_] = r;
    armado_ = false;
    ActualizarCursor();
    ActualizarBarras();
    viewport()->update();
}

void CBrimarView::keyPressEvent(QKeyEvent* e) {
    if (e->key() == Qt::Key_Escape) {
        if (armado_)
            Desarmar();
        else if (consulta_)
            TerminarConsulta();
        return;
    }
    QAbstractScrollArea::keyPressEvent(e);
}

void CBrimarView::contextMenuEvent(QContextMenuEvent* e) {
    QMenu menu(this);
    for (int id : {cmd::kZoomAdelante, cmd::kZoomAtras, cmd::kPantallaCompleta, cmd::kPantallaNormal,
                   cmd::kNivelDigital, cmd::kMostrarLeyenda}) {
        const EntradaComando* c = BuscarComando(id);
        if (!c) continue;
        QAction* a = menu.addAction(QString::fromUtf8(c->texto));
        if (*c->atajo) a->setShortcut(QKeySequence(QString::fromLatin1(c->atajo)));
        connect(a, &QAction::triggered, this, [this, id] { emit comando(id); });
        if (id == cmd::kPantallaNormal || id == cmd::kNivelDigital) menu.addSeparator();
    }
    if (consulta_) {
        QAction* a = menu.addAction(QStringLiteral("Terminar la consulta de píxeles"));
        connect(a, &QAction::triggered, this, &CBrimarView::TerminarConsulta);
    }
    menu.exec(e->globalPos());
}
