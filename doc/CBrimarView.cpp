#include "doc/CBrimarView.h"

#include <QActionGroup>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QWheelEvent>
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

namespace vista {

// The armed zoom: the rectangle dragged becomes the source of the level
// already raised; an empty drag or a cancel takes the level back.
class HerramientaZoom : public HerramientaRectangulo {
public:
    HerramientaZoom() : HerramientaRectangulo([](CBrimarView& v, const RectanguloImagen& r) { v.FijarZoom(r); }) {}
    const char* Nombre() const override { return "zoom"; }
    QCursor Cursor() const override { return CursorLupa(); }
    void Cancelada(CBrimarView& v) override { v.Desarmar(); }
};

// Pixel query: each left press writes the pixel's row, column, value and
// map coordinates in the status bar.
class HerramientaConsulta : public HerramientaVista {
public:
    const char* Nombre() const override { return "consulta"; }
    Respuesta Pulsar(CBrimarView& v, const EventoRaton& e) override {
        if (e.boton != Qt::LeftButton) return Respuesta::Ignorada;
        v.Consultar(e.pantalla);
        return Respuesta::Usada;
    }
};

}  // namespace vista

using vista::Respuesta;

CBrimarView::CBrimarView(CBrimarDoc& doc, Espacio& espacio, Interfaz& ui, QWidget* padre)
    : QAbstractScrollArea(padre), doc_(doc), espacio_(espacio), ui_(ui) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setAutoFillBackground(false);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(120, 90);
    viewport()->setMouseTracking(true);
    connect(&doc_, &CBrimarDoc::imagenPuesta, this, &CBrimarView::Preparar);
    for (auto senal : {&CBrimarDoc::realceCambiado, &CBrimarDoc::paletaCambiada})
        connect(&doc_, senal, this, [this] {
        Convertir();
        viewport()->update();
    });
    if (doc_.TieneImagen()) Preparar();
}

CBrimarView::~CBrimarView() = default;

bool CBrimarView::HayDibujo() const { return !indices_.isNull() || !rgb_.isNull(); }

void CBrimarView::Preparar() {
    // A new image ends every tool but the pixel query, which stays on.
    for (std::size_t i = herramientas_.size(); i-- > 0;)
        if (i < herramientas_.size() && std::strcmp(herramientas_[i]->Nombre(), "consulta") != 0)
            Retirar(herramientas_[i].get(), true);
    nivel_ = 0;
    armado_ = false;
    pantallaCompleta_ = false;
    paneando_ = false;
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
    rgb_ = QImage();
    const auto& im = doc_.Imagen();
    if (const orvela::ComposicionColor* c = doc_.Composicion()) {
        // A composite is its own colours: no palette, no stretch.
        if (!c->Valida() || c->filas != filas_ || c->columnas != columnas_) return;
        const std::vector<uint32_t> colores = orvela::ColoresComposicion(*c);
        QImage q(static_cast<int>(columnas_), static_cast<int>(filas_), QImage::Format_RGB32);
        if (q.isNull()) return ui_.Mostrar(orvela::MensajeMemoria(im.filas, im.columnas));
        for (long f = 0; f < filas_; ++f)
            std::memcpy(q.scanLine(static_cast<int>(f)), colores.data() + static_cast<std::size_t>(f) * columnas_,
                        static_cast<std::size_t>(columnas_) * sizeof(uint32_t));
        rgb_ = std::move(q);
        return;
    }
    if (!doc_.TieneImagen() || !im.pixeles.Valido() || filas_ <= 0 || columnas_ <= 0) return;
    orvela::Paleta p;
    if (orvela::CargarPaleta(static_cast<int>(im.indicePaleta), espacio_.CarpetaAplicacion(),
                             im.rutaPaletaPersonalizada, p) < 0) {
        ui_.Mostrar(Mensaje::Tabla(msg::kPaletaNoEncontrada));
        return;
    }
    // A classified image: each class in a colour of its own.
    entradasClases_.clear();
    if (auto clases = orvela::LeerLeyendaVentana(im.rutaRaster)) {
        for (const auto& c : *clases) entradasClases_.push_back(orvela::EntradaDeValor(im.pixeles, c.nd));
        orvela::DistinguirClases(p, entradasClases_);
    }
    paleta_ = p;
    for (int i = 0; i < 256; ++i) colores_[i] = qRgb(p.rojo[i], p.verde[i], p.azul[i]);

    // When memory cannot be had for the picture the window says so, shows
    // nothing, and the program goes on.
    try {
        const std::vector<uint8_t> idx = orvela::IndicesRealce(im.pixeles, doc_.Realce());
        if (idx.size() < static_cast<std::size_t>(filas_) * static_cast<std::size_t>(columnas_)) return;
        QImage q(static_cast<int>(columnas_), static_cast<int>(filas_), QImage::Format_Indexed8);
        if (q.isNull()) {
            ui_.Mostrar(orvela::MensajeMemoria(im.filas, im.columnas));
            return;
        }
        for (long f = 0; f < filas_; ++f)
            std::memcpy(q.scanLine(static_cast<int>(f)), idx.data() + static_cast<std::size_t>(f) * columnas_,
                        static_cast<std::size_t>(columnas_));
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
    // Zoomed levels and full screen have no scroll bars: their area is the
    // viewport without bars, even before the bars' removal is laid out.
    const bool normal = !pantallaCompleta_ && NivelVisible() == 0;
    const QSize cliente = normal ? viewport()->size() : maximumViewportSize();
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

vista::PuntoImagen CBrimarView::PuntoEn(QPoint v) const {
    vista::PuntoImagen p;
    QRect o, d;
    Geometria(o, d);
    if (d.width() <= 0 || d.height() <= 0) {
        p.filaPixel = p.columnaPixel = -1;
        p.fila = p.columna = -1.0;
        return p;
    }
    const QPoint px = PixelEn(v);
    p.columnaPixel = px.x();
    p.filaPixel = px.y();
    p.columna = o.x() + static_cast<double>(v.x() - d.x()) * o.width() / d.width();
    p.fila = o.y() + static_cast<double>(v.y() - d.y()) * o.height() / d.height();
    p.dentro = d.contains(v) && p.filaPixel >= 0 && p.columnaPixel >= 0 && p.filaPixel < filas_ &&
               p.columnaPixel < columnas_;
    return p;
}

QPointF CBrimarView::EnPantalla(double fila, double columna) const {
    QRect o, d;
    Geometria(o, d);
    if (o.width() <= 0 || o.height() <= 0) return QPointF(-1.0, -1.0);
    return QPointF(d.x() + (columna - o.x()) * d.width() / o.width(), d.y() + (fila - o.y()) * d.height() / o.height());
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
    if (paneando_)
        viewport()->setCursor(Qt::ClosedHandCursor);
    else if (const vista::HerramientaVista* h = Herramienta())
        viewport()->setCursor(h->Cursor());
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
        auto* dst = reinterpret_cast<QRgb*>(trozo.scanLine(j));
        if (!rgb_.isNull()) {
            const auto* src = reinterpret_cast<const QRgb*>(rgb_.constScanLine(fila));
            for (int i = 0; i < area.width(); ++i) dst[i] = src[columna[i]];
        } else {
            const uchar* src = indices_.constScanLine(fila);
            for (int i = 0; i < area.width(); ++i) dst[i] = colores_[src[columna[i]]];
        }
    }
    p.drawImage(area.topLeft(), trozo);
    // The layers, bottom first.
    p.setClipRect(d);
    for (const auto& c : capas_) {
        if (!c->visible) continue;
        p.save();
        c->Dibujar(p, *this);
        p.restore();
    }
    // The marks of the armed tools, lowest first.
    for (const auto& h : herramientas_) {
        p.save();
        h->Dibujar(p, *this);
        p.restore();
    }
}

// ---- Commands -------------------------------------------------------------

void CBrimarView::ZoomAdelante() {
    if (!doc_.TieneImagen()) return ui_.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    if (MapaVisible()) return ui_.Mostrar(Mensaje::Tabla(msg::kZoomMapa));
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
    ArmarHerramienta(std::make_unique<vista::HerramientaZoom>());
}

// Takes the raised level of the armed zoom back, and the zoom tool off.
void CBrimarView::Desarmar() {
    if (!armado_) return;
    armado_ = false;
    --nivel_;
    for (const auto& h : herramientas_)
        if (std::strcmp(h->Nombre(), "zoom") == 0) {
            Retirar(h.get(), false);
            break;
        }
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
    if (MapaVisible()) return ui_.Mostrar(Mensaje::Tabla(msg::kPantallaCompletaMapa));
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
    // The query is a mode: it goes below whatever tool is armed.
    if (!EnConsulta()) {
        herramientas_.insert(herramientas_.begin(), std::make_unique<vista::HerramientaConsulta>());
        ActualizarCursor();
        emit herramientaCambiada();
    }
    emit textoPanel(1, QStringLiteral("Fila =                             Columna =  "));
    emit textoPanel(2, QStringLiteral("\tNivel Digital = \t"));
    emit textoPanel(3, QString());
}

void CBrimarView::TerminarConsulta() {
    for (const auto& h : herramientas_)
        if (std::strcmp(h->Nombre(), "consulta") == 0) return Retirar(h.get(), false);
}

void CBrimarView::MostrarLeyenda() {
    if (!doc_.TieneImagen()) return ui_.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    auto clases = orvela::LeerLeyendaVentana(doc_.Imagen().rutaRaster);
    if (!clases) return ui_.Mostrar(Mensaje::Tabla(msg::kLeyendaNoAbierta));
    std::vector<uint8_t> entradas;
    for (const auto& c : *clases) entradas.push_back(orvela::EntradaDeValor(doc_.Imagen().pixeles, c.nd));
    CMostrarLeyendaDlg dlg(std::move(*clases), paleta_, this, std::move(entradas));
    ui_.Ejecutar(dlg);
}

// ---- Tools ------------------------------------------------------------------

void CBrimarView::ArmarHerramienta(std::unique_ptr<vista::HerramientaVista> h) {
    if (!h) return;
    herramientas_.push_back(std::move(h));
    ActualizarCursor();
    viewport()->update();
    emit herramientaCambiada();
}

void CBrimarView::CancelarHerramienta() {
    if (vista::HerramientaVista* h = Herramienta()) Retirar(h, true);
}

void CBrimarView::QuitarHerramienta(const vista::HerramientaVista* h) {
    Retirar(const_cast<vista::HerramientaVista*>(h), false);
}

QString CBrimarView::NombreHerramienta() const {
    const vista::HerramientaVista* h = Herramienta();
    return h ? QString::fromLatin1(h->Nombre()) : QString();
}

bool CBrimarView::HayHerramienta(const char* nombre) const {
    return std::any_of(herramientas_.begin(), herramientas_.end(),
                       [&](const auto& h) { return std::strcmp(h->Nombre(), nombre) == 0; });
}

void CBrimarView::Retirar(vista::HerramientaVista* h, bool cancelar) {
    auto it = std::find_if(herramientas_.begin(), herramientas_.end(), [&](const auto& p) { return p.get() == h; });
    if (it == herramientas_.end()) return;
    // Kept alive until no call of a tool is running: the tool being taken
    // off may be the one whose method is on the stack.
    retiradas_.push_back(std::move(*it));
    herramientas_.erase(it);
    ++enLlamada_;
    if (cancelar) h->Cancelada(*this);
    --enLlamada_;
    if (enLlamada_ == 0) retiradas_.clear();
    ActualizarCursor();
    viewport()->update();
    emit herramientaCambiada();
}

bool CBrimarView::Despachar(const std::function<Respuesta(vista::HerramientaVista&)>& f) {
    vista::HerramientaVista* h = Herramienta();
    if (!h) return false;
    ++enLlamada_;
    const Respuesta r = f(*h);
    --enLlamada_;
    if (r == Respuesta::Terminada) Retirar(h, false);
    if (enLlamada_ == 0) retiradas_.clear();
    if (r != Respuesta::Ignorada) viewport()->update();
    return r != Respuesta::Ignorada;
}

vista::EventoRaton CBrimarView::Evento(const QMouseEvent& e) const {
    vista::EventoRaton r;
    r.pantalla = e.position().toPoint();
    r.punto = PuntoEn(r.pantalla);
    r.boton = e.button();
    r.botones = e.buttons();
    r.modificadores = e.modifiers();
    return r;
}

void CBrimarView::FijarZoom(const vista::RectanguloImagen& r) {
    if (!armado_) return;
    if (r.Vacio()) return Desarmar();
    pila_[nivel_] = r.ComoQRect();
    armado_ = false;
    ActualizarCursor();
    ActualizarBarras();
    viewport()->update();
}

// ---- Layers ------------------------------------------------------------------

void CBrimarView::AnadirCapa(std::unique_ptr<vista::CapaVista> c) {
    if (!c) return;
    for (auto& x : capas_)
        if (x->Nombre() == c->Nombre()) {
            x = std::move(c);
            viewport()->update();
            return;
        }
    capas_.push_back(std::move(c));
    viewport()->update();
}

void CBrimarView::QuitarCapa(const QString& nombre) {
    std::erase_if(capas_, [&](const auto& c) { return c->Nombre() == nombre; });
    viewport()->update();
}

vista::CapaVista* CBrimarView::Capa(const QString& nombre) const {
    for (const auto& c : capas_)
        if (c->Nombre() == nombre) return c.get();
    return nullptr;
}

bool CBrimarView::MapaVisible() const {
    return std::any_of(capas_.begin(), capas_.end(), [](const auto& c) { return c->visible && c->EsElementoMapa(); });
}

// ---- Viewer habits -----------------------------------------------------------

void CBrimarView::AcercarEn(QPoint v) {
    if (!HayDibujo() || armado_ || nivel_ >= kMaximoZooms || MapaVisible()) return;
    QRect o, d;
    Geometria(o, d);
    if (o.width() <= 1 || o.height() <= 1 || d.isEmpty()) return;
    const QPoint px = PixelEn(v);
    // Half the rows and columns; placed so that the same pixel lies under
    // the same screen point once the new source fills the window.
    const int w = std::max(1, o.width() / 2), h = std::max(1, o.height() / 2);
    // Zoomed levels show no scroll bars.
    const QSize cliente = maximumViewportSize();
    const QSize nuevo = Ajustar(w, h, cliente.width(), cliente.height());
    if (nuevo.width() <= 0 || nuevo.height() <= 0) return;
    long x = px.x() - Escalar(v.x(), w, nuevo.width());
    long y = px.y() - Escalar(v.y(), h, nuevo.height());
    x = std::clamp<long>(x, 0, std::max<long>(0, columnas_ - w));
    y = std::clamp<long>(y, 0, std::max<long>(0, filas_ - h));
    pantallaCompleta_ = false;
    ++nivel_;
    pila_[nivel_] = QRect(static_cast<int>(x), static_cast<int>(y), w, h);
    ActualizarBarras();
    viewport()->update();
}

void CBrimarView::AlejarEn(QPoint v) {
    if (!HayDibujo() || armado_ || nivel_ == 0 || pantallaCompleta_) return;
    const QPoint px = PixelEn(v);
    --nivel_;
    ActualizarBarras();
    if (nivel_ > 0) {
        // The previous level's size, moved so that the pixel stays put.
        QRect& r = pila_[nivel_];
        const QSize cliente = maximumViewportSize();
        const QSize d = Ajustar(r.width(), r.height(), cliente.width(), cliente.height());
        if (d.width() > 0 && d.height() > 0) {
            const long x = px.x() - Escalar(v.x(), r.width(), d.width());
            const long y = px.y() - Escalar(v.y(), r.height(), d.height());
            r.moveTo(static_cast<int>(std::clamp<long>(x, 0, std::max<long>(0, columnas_ - r.width()))),
                     static_cast<int>(std::clamp<long>(y, 0, std::max<long>(0, filas_ - r.height()))));
        }
    } else {
        horizontalScrollBar()->setValue(px.x() - v.x());
        verticalScrollBar()->setValue(px.y() - v.y());
    }
    viewport()->update();
}

void CBrimarView::Desplazar(QPoint distancia) {
    if (!HayDibujo() || pantallaCompleta_) return;
    if (NivelVisible() == 0) {
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - distancia.x());
        verticalScrollBar()->setValue(verticalScrollBar()->value() - distancia.y());
        return;
    }
    QRect o, d;
    Geometria(o, d);
    if (d.isEmpty()) return;
    QRect& r = pila_[NivelVisible()];
    const long dx = Escalar(distancia.x(), o.width(), d.width());
    const long dy = Escalar(distancia.y(), o.height(), d.height());
    r.moveTo(static_cast<int>(std::clamp<long>(r.x() - dx, 0, std::max<long>(0, columnas_ - r.width()))),
             static_cast<int>(std::clamp<long>(r.y() - dy, 0, std::max<long>(0, filas_ - r.height()))));
    viewport()->update();
}

QString CBrimarView::Lectura(QPoint v) const {
    const vista::PuntoImagen p = PuntoEn(v);
    if (!doc_.TieneImagen() || !p.dentro) return QString();
    QString t = QStringLiteral("Fila %1  Columna %2  ").arg(p.filaPixel).arg(p.columnaPixel);
    double x = -1.0, y = -1.0;
    const double valor = doc_.Imagen().ValorPixel(p.filaPixel, p.columnaPixel, &x, &y);
    if (const orvela::ComposicionColor* c = doc_.Composicion()) {
        const std::size_t k = static_cast<std::size_t>(p.filaPixel) * static_cast<std::size_t>(columnas_) +
                              static_cast<std::size_t>(p.columnaPixel);
        if (k < c->rojo.size()) t += QString::asprintf("R %d  G %d  B %d", c->rojo[k], c->verde[k], c->azul[k]);
    } else {
        t += QString::asprintf("ND %.2f", valor);
    }
    if (x != -1.0 && y != -1.0) t += QString::asprintf("  X %.1f  Y %.1f", x, y);
    return t;
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
        const orvela::ComposicionColor* c = doc_.Composicion();
        const std::size_t k = static_cast<std::size_t>(fila) * static_cast<std::size_t>(columnas_) +
                              static_cast<std::size_t>(columna);
        if (c && k < c->rojo.size())
            emit textoPanel(2, QString::asprintf("\tR =  %d   G =  %d   B =  %d\t", c->rojo[k], c->verde[k], c->azul[k]));
        else
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
    if (!doc_.TieneImagen()) return QAbstractScrollArea::mousePressEvent(e);
    if (e->button() == Qt::MiddleButton) {
        paneando_ = true;
        inicioPaneo_ = e->position().toPoint();
        ActualizarCursor();
        return;
    }
    const vista::EventoRaton ev = Evento(*e);
    const bool usado = Despachar([&](vista::HerramientaVista& h) { return h.Pulsar(*this, ev); });
    sinMenu_ = usado && e->button() == Qt::RightButton;
    if (usado) return;
    QAbstractScrollArea::mousePressEvent(e);
}

void CBrimarView::mouseMoveEvent(QMouseEvent* e) {
    const QPoint v = e->position().toPoint();
    if (paneando_) {
        Desplazar(v - inicioPaneo_);
        inicioPaneo_ = v;
        return;
    }
    emit lectura(Lectura(v));
    const vista::EventoRaton ev = Evento(*e);
    if (Despachar([&](vista::HerramientaVista& h) { return h.Mover(*this, ev); })) return;
    QAbstractScrollArea::mouseMoveEvent(e);
}

void CBrimarView::mouseReleaseEvent(QMouseEvent* e) {
    if (paneando_ && e->button() == Qt::MiddleButton) {
        paneando_ = false;
        ActualizarCursor();
        return;
    }
    const vista::EventoRaton ev = Evento(*e);
    if (Despachar([&](vista::HerramientaVista& h) { return h.Soltar(*this, ev); })) return;
    QAbstractScrollArea::mouseReleaseEvent(e);
}

void CBrimarView::wheelEvent(QWheelEvent* e) {
    const int paso = e->angleDelta().y();
    if (!doc_.TieneImagen() || paso == 0) return QAbstractScrollArea::wheelEvent(e);
    const QPoint v = e->position().toPoint();
    paso > 0 ? AcercarEn(v) : AlejarEn(v);
    emit lectura(Lectura(v));
    e->accept();
}

void CBrimarView::leaveEvent(QEvent* e) {
    emit lectura(QString());
    QAbstractScrollArea::leaveEvent(e);
}

void CBrimarView::keyPressEvent(QKeyEvent* e) {
    const int tecla = e->key();
    if (Despachar([&](vista::HerramientaVista& h) { return h.Tecla(*this, tecla, e->modifiers()); })) return;
    if (tecla == Qt::Key_Escape) {
        if (armado_)
            Desarmar();
        else
            CancelarHerramienta();
        return;
    }
    // Zoom in and out around the centre of the window, and the whole image
    // fitted to it.
    const bool normal = !pantallaCompleta_ && NivelVisible() == 0;
    const QPoint centro = QRect(QPoint(0, 0), normal ? viewport()->size() : maximumViewportSize()).center();
    if (doc_.TieneImagen()) {
        if (tecla == Qt::Key_Plus || tecla == Qt::Key_Equal) return AcercarEn(centro);
        if (tecla == Qt::Key_Minus) return AlejarEn(centro);
        if (tecla == Qt::Key_0 && (e->modifiers() & Qt::ControlModifier)) {
            if (!pantallaCompleta_) PantallaCompleta();
            return;
        }
    }
    QAbstractScrollArea::keyPressEvent(e);
}

QMenu* CBrimarView::MenuRealce(QMenu& padre) {
    QMenu* m = padre.addMenu(QStringLiteral("Realce de visualización"));
    m->setObjectName(QStringLiteral("realce"));
    m->setEnabled(doc_.TieneImagen() && !doc_.EsComposicion());
    auto* grupo = new QActionGroup(m);
    for (orvela::Realce r : orvela::kRealces) {
        QAction* a = m->addAction(QString::fromUtf8(orvela::NombreRealce(r)));
        a->setCheckable(true);
        a->setChecked(doc_.Realce() == r);
        a->setActionGroup(grupo);
        connect(a, &QAction::triggered, this, [this, r] { doc_.PonerRealce(r); });
    }
    return m;
}

void CBrimarView::contextMenuEvent(QContextMenuEvent* e) {
    // The right click that a tool took (to end a sampling, a line) opens
    // no menu.
    if (sinMenu_) {
        sinMenu_ = false;
        return;
    }
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
    if (EnConsulta()) {
        QAction* a = menu.addAction(QStringLiteral("Terminar la consulta de píxeles"));
        connect(a, &QAction::triggered, this, &CBrimarView::TerminarConsulta);
    }
    menu.addSeparator();
    MenuRealce(menu);
    menu.exec(e->globalPos());
}
