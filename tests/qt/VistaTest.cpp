// The view: zoom and its limits, full and normal screen, pixel query with
// the status-bar texts, and what the picture shows.
#include <QMdiArea>
#include <QScrollBar>
#include <QtTest>

#include "Entorno.h"
#include "InterfazGuion.h"
#include "app/CChildFrame.h"
#include "app/CMainFrame.h"
#include "doc/CBrimarDoc.h"
#include "doc/CBrimarView.h"
#include "doc/ComandosDocumento.h"

using namespace prueba;

namespace {

// Mouse events sent as they stand (QTest would take the point (0, 0) for
// the centre of the widget).
void Raton(CBrimarView& v, QEvent::Type tipo, QPoint p, Qt::MouseButtons botones) {
    QWidget* w = v.viewport();
    QMouseEvent e(tipo, QPointF(p), w->mapToGlobal(QPointF(p)), tipo == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                  botones, Qt::NoModifier);
    QCoreApplication::sendEvent(w, &e);
}

void Arrastrar(CBrimarView& v, QPoint a, QPoint b) {
    Raton(v, QEvent::MouseButtonPress, a, Qt::LeftButton);
    Raton(v, QEvent::MouseMove, (a + b) / 2, Qt::LeftButton);
    Raton(v, QEvent::MouseMove, b, Qt::LeftButton);
    Raton(v, QEvent::MouseButtonRelease, b, Qt::NoButton);
}

void Pulsar(CBrimarView& v, QPoint p) {
    Raton(v, QEvent::MouseButtonPress, p, Qt::LeftButton);
    Raton(v, QEvent::MouseButtonRelease, p, Qt::NoButton);
}

// Samples f * 1000 + c + 0.25: each one tells its row and column.
std::vector<double> Posiciones(long filas, long columnas) {
    std::vector<double> v;
    for (long f = 0; f < filas; ++f)
        for (long c = 0; c < columnas; ++c) v.push_back(f * 1000.0 + c + 0.25);
    return v;
}

}  // namespace

class VistaTest : public QObject {
    Q_OBJECT
    Entorno* entorno_ = nullptr;
    InterfazGuion* ui_ = nullptr;
    CMainFrame* marco_ = nullptr;

    // A window showing a new image pair, its view sized to `tamano`.
    CBrimarView& Ventana(const std::string& nombre, long filas, long columnas, const char* tipo,
                         const std::vector<double>& valores, QSize tamano, const std::string& sistema = "unknown",
                         const orvela::Georreferencia& geo = {}) {
        const std::string stem = entorno_->Ruta(nombre);
        EscribirImagen(stem, filas, columnas, tipo, valores, sistema, geo);
        CChildFrame* v = marco_->NuevaVentana();
        AbrirImagen(v->Documento(), stem + ".ozm", 2, {}, *ui_);
        v->resize(tamano + (v->size() - v->Vista().size()));
        ui_->mensajes.clear();
        return v->Vista();
    }

private slots:
    void initTestCase() { entorno_ = new Entorno; }
    void cleanupTestCase() { delete entorno_; }
    void init() {
        ui_ = new InterfazGuion;
        marco_ = new CMainFrame(ui_);
        marco_->resize(1000, 800);
        marco_->show();
    }
    void cleanup() {
        delete marco_;
        delete ui_;
    }

    void zoomHastaElLimite() {
        CBrimarView& v = Ventana("z1", 310, 287, "byte", {10, 20, 30}, QSize(500, 450));
        for (int i = 1; i <= CBrimarView::kMaximoZooms; ++i) {
            marco_->EjecutarComando(32839);
            QVERIFY(v.ZoomArmado());
            const QRect d = v.Destino();
            Arrastrar(v, d.topLeft(), d.bottomRight());
            QCOMPARE(v.NivelZoom(), i);
            QVERIFY(!v.ZoomArmado());
            QCOMPARE(v.Origen(), QRect(0, 0, 287, 310));
        }
        QVERIFY(ui_->mensajes.empty());
        marco_->EjecutarComando(32839);  // the nineteenth
        QCOMPARE(ui_->Ids(), std::vector<int>{61274});
        QCOMPARE(v.NivelZoom(), CBrimarView::kMaximoZooms);
        QVERIFY(!v.ZoomArmado());
        // Zooming out walks back down to the whole image with its scroll bars.
        for (int i = CBrimarView::kMaximoZooms - 1; i >= 0; --i) {
            marco_->EjecutarComando(32842);
            QCOMPARE(v.NivelZoom(), i);
        }
        marco_->EjecutarComando(32842);
        QCOMPARE(v.NivelZoom(), 0);
        QCOMPARE(v.horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    }

    void zoomDelRectanguloArrastrado() {
        CBrimarView& v = Ventana("z2", 310, 287, "real", Posiciones(310, 287), QSize(500, 450));
        marco_->EjecutarComando(32839);
        Arrastrar(v, QPoint(109, 69), QPoint(10, 20));  // dragged up and left
        QCOMPARE(v.Origen(), QRect(10, 20, 100, 50));
        QCOMPARE(v.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        // The rectangle fills the window keeping its proportions.
        const QRect d = v.Destino();
        QVERIFY(d.width() == v.viewport()->width() || d.height() == v.viewport()->height());
        QVERIFY(qAbs(d.width() * 50 - d.height() * 100) <= 100);
        // What is clicked is what is shown.
        marco_->EjecutarComando(32778);
        Pulsar(v, d.topLeft());
        QCOMPARE(marco_->TextoPanel(1), QStringLiteral("Fila =  20 \t Columna =  10"));
        QCOMPARE(marco_->TextoPanel(2), QStringLiteral("\tNivel Digital =  20010.25\t"));
        Pulsar(v, d.bottomRight());
        QCOMPARE(marco_->TextoPanel(1), QStringLiteral("Fila =  69 \t Columna =  109"));

        // Pressed twice, the armed zoom is cancelled.
        marco_->EjecutarComando(32839);
        QCOMPARE(v.NivelZoom(), 2);
        marco_->EjecutarComando(32839);
        QCOMPARE(v.NivelZoom(), 1);
        QVERIFY(!v.ZoomArmado());
        // A click instead of a rectangle leaves one pixel: no further zoom.
        marco_->EjecutarComando(32839);
        Pulsar(v, QPoint(30, 30));
        QCOMPARE(v.Origen().size(), QSize(1, 1));
        marco_->EjecutarComando(32839);
        QCOMPARE(ui_->Ids(), std::vector<int>{61263});
        QVERIFY(!v.ZoomArmado());
    }

    void pantallaCompletaYNormal() {
        CBrimarView& v = Ventana("p1", 310, 287, "byte", {1, 2}, QSize(600, 250));
        marco_->EjecutarComando(32839);
        Arrastrar(v, QPoint(0, 0), QPoint(50, 50));
        marco_->EjecutarComando(32847);
        QVERIFY(v.EnPantallaCompleta());
        QCOMPARE(v.NivelZoom(), 0);
        QCOMPARE(v.Origen(), QRect(0, 0, 287, 310));
        // The whole image fitted, proportions kept, from the top left corner.
        const QSize c = v.viewport()->size();
        const QRect d = v.Destino();
        QCOMPARE(d.topLeft(), QPoint(0, 0));
        QCOMPARE(d.height(), c.height());
        QCOMPARE(d.width(), static_cast<int>(287.0 / 310.0 * c.height()));
        marco_->EjecutarComando(32847);
        marco_->EjecutarComando(32839);
        QCOMPARE(ui_->Ids(), (std::vector<int>{61288, 61273}));

        // A tall narrow window: the width decides.
        marco_->VentanaActiva()->resize(marco_->VentanaActiva()->size() + QSize(-450, 300));
        const QSize c2 = v.viewport()->size();
        QVERIFY(c2.width() < c2.height());
        QCOMPARE(v.Destino().size(), QSize(c2.width(), static_cast<int>(310.0 / 287.0 * c2.width())));

        marco_->EjecutarComando(32848);
        QVERIFY(!v.EnPantallaCompleta());
        QCOMPARE(v.Destino().topLeft(), QPoint(0, 0));
        QCOMPARE(v.Destino().size(), v.Origen().size());  // one screen pixel per sample
        QCOMPARE(v.horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);

        // Without an image.
        ui_->mensajes.clear();
        marco_->NuevaVentana();
        for (int id : {32839, 32842, 32847, 32848, 32778}) marco_->EjecutarComando(id);
        QCOMPARE(ui_->Ids(), (std::vector<int>{61216, 61264, 61264, 61264, 61264}));
    }

    void consultaDePixel() {
        const orvela::Georreferencia geo{500000.0f, 3998800.0f, 501500.0f, 4000000.0f, -1.0f, 30.0f, 1.0f};
        CBrimarView& v = Ventana("c1", 40, 50, "real", Posiciones(40, 50), QSize(300, 200), "UTM-30N", geo);
        marco_->EjecutarComando(32778);
        QVERIFY(v.EnConsulta());
        QCOMPARE(marco_->TextoPanel(1), QStringLiteral("Fila =                             Columna =  "));
        QCOMPARE(marco_->TextoPanel(2), QStringLiteral("\tNivel Digital = \t"));
        Pulsar(v, QPoint(10, 20));
        QCOMPARE(marco_->TextoPanel(1), QStringLiteral("Fila =  20 \t Columna =  10"));
        QCOMPARE(marco_->TextoPanel(2), QStringLiteral("\tNivel Digital =  20010.25\t"));
        QCOMPARE(marco_->TextoPanel(3), QStringLiteral("Coord. UTM. X = 500300.0 ; Y = 3999400.0 "));
        // Beside the image.
        Pulsar(v, QPoint(60, 5));
        QCOMPARE(marco_->TextoPanel(1), QStringLiteral("Fila =  5 \t Columna =  60"));
        QCOMPARE(marco_->TextoPanel(2), QStringLiteral("No Existe Imagen En Estas Coordenadas."));
        QCOMPARE(marco_->TextoPanel(3), QString());

        // An image without UTM coordinates writes no coordinates.
        CBrimarView& w = Ventana("c2", 300, 400, "integer", {0, 1, 2, 3, 4, 5, 6}, QSize(200, 150));
        marco_->EjecutarComando(32778);
        w.horizontalScrollBar()->setValue(30);
        w.verticalScrollBar()->setValue(7);
        Pulsar(w, QPoint(5, 5));
        QCOMPARE(marco_->TextoPanel(1), QStringLiteral("Fila =  12 \t Columna =  35"));
        QCOMPARE(marco_->TextoPanel(2), QString::asprintf("\tNivel Digital =  %.2f\t", double((12 * 400 + 35) % 7)));
        QCOMPARE(marco_->TextoPanel(3), QString());
        QVERIFY(ui_->mensajes.empty());

        // A colour composite cannot be queried.
        w.Documento().Imagen().composicionColor = true;
        marco_->EjecutarComando(32778);
        QCOMPARE(ui_->Ids(), std::vector<int>{61265});
    }

    void enteroConCeroYMaximo() {
        if (!entorno_->HayPaletas()) QSKIP("la lectura de paletas no está en este árbol");
        CBrimarView& v = Ventana("e1", 2, 3, "integer", {0, 65535, 32768, 1, 65534, 255}, QSize(100, 100));
        const QImage& idx = v.Indices();
        QCOMPARE(idx.format(), QImage::Format_Indexed8);
        QCOMPARE(idx.pixelIndex(0, 0), 0);
        QCOMPARE(idx.pixelIndex(1, 0), 255);
        QCOMPARE(idx.pixelIndex(2, 0), 128);
        QCOMPARE(idx.pixelIndex(1, 1), 255);  // 65534 / 255.996 = 255.99
        const QImage dibujo = v.viewport()->grab().toImage();
        QCOMPARE(QColor(dibujo.pixel(0, 0)), QColor(0, 0, 0));
        QCOMPARE(QColor(dibujo.pixel(1, 0)), QColor(255, 255, 255));
        QCOMPARE(QColor(dibujo.pixel(2, 0)), QColor(128, 128, 128));
        QCOMPARE(QColor(dibujo.pixel(50, 50)), QColor(Qt::white));  // beyond the image

        // A new image in the document: the view starts over with it.
        marco_->EjecutarComando(32839);
        orvela::CImagen otra;
        QVERIFY(!otra.Iniciar("", "", "otra", 4, 5, "byte", 77, 2, "unknown", "m", {}));
        v.Documento().PonerImagen(std::move(otra));
        QCOMPARE(v.NivelZoom(), 0);
        QVERIFY(!v.ZoomArmado());
        QCOMPARE(v.Indices().size(), QSize(5, 4));
        QCOMPARE(v.Indices().pixelIndex(4, 3), 77);
        QVERIFY(ui_->mensajes.empty());
    }

    void paletaQueNoEsta() {
        QTemporaryDir otra;
        QDir(otra.path()).mkpath(QStringLiteral("Paletas"));
        Entorno::PonerPath(otra.path());
        delete marco_;
        marco_ = new CMainFrame(ui_);
        marco_->show();
        const std::string stem = entorno_->Ruta("sp1");
        EscribirImagen(stem, 3, 3, "byte", {1});
        CChildFrame* c = marco_->NuevaVentana();
        QVERIFY(AbrirImagen(c->Documento(), stem + ".ozm", 0, {}, *ui_));
        Entorno::PonerPath(QString::fromStdString(entorno_->Carpeta()));
        QCOMPARE(ui_->Ids(), std::vector<int>{61267});
        QVERIFY(c->Vista().Indices().isNull());
        // The image is there all the same: it can be queried and saved.
        QVERIFY(c->Documento().TieneImagen());
        QCOMPARE(c->Documento().Nombre(), QStringLiteral("sp1"));
    }

    void bandaDeSieteMil() {
        if (!entorno_->HayPaletas()) QSKIP("la lectura de paletas no está en este árbol");
        const long lado = 7000;
        const std::string stem = entorno_->Ruta("grande");
        {
            orvela::CImagen im;
            QVERIFY(!im.Iniciar(stem + ".ozm", "", "grande", lado, lado, "byte", 0, 2, "unknown", "m", {}));
            auto d = im.pixeles.Como<uint8_t>();
            for (long f = 0; f < lado; ++f)
                for (long c = 0; c < lado; ++c) d[f * lado + c] = static_cast<uint8_t>((f + 3 * c) & 0xFF);
            QVERIFY(!im.Guardar(stem, 1));
        }
        CChildFrame* c = marco_->NuevaVentana();
        c->resize(QSize(400, 300) + (c->size() - c->Vista().size()));
        CBrimarView& v = c->Vista();
        QVERIFY(AbrirImagen(c->Documento(), stem + ".ozm", 2, {}, *ui_));
        QVERIFY(ui_->mensajes.empty());
        auto esperado = [](long f, long col) {
            const int n = static_cast<int>((f + 3 * col) & 0xFF);
            return QColor(n, n, n);
        };
        // Scrolled to the far corner.
        v.horizontalScrollBar()->setValue(v.horizontalScrollBar()->maximum());
        v.verticalScrollBar()->setValue(v.verticalScrollBar()->maximum());
        const QRect o = v.Origen();
        QCOMPARE(o.right(), static_cast<int>(lado - 1));
        QCOMPARE(o.bottom(), static_cast<int>(lado - 1));
        QImage dibujo = v.viewport()->grab().toImage();
        const QRect d = v.Destino();
        QCOMPARE(QColor(dibujo.pixel(d.right(), d.bottom())), esperado(lado - 1, lado - 1));
        QCOMPARE(QColor(dibujo.pixel(7, 11)), esperado(o.y() + 11, o.x() + 7));
        // Zoomed into a 4 x 4 block of the corner: each sample a large square.
        marco_->EjecutarComando(32839);
        Arrastrar(v, d.bottomRight() - QPoint(3, 3), d.bottomRight());
        QCOMPARE(v.Origen(), QRect(lado - 4, lado - 4, 4, 4));
        dibujo = v.viewport()->grab().toImage();
        const QRect z = v.Destino();
        QCOMPARE(QColor(dibujo.pixel(z.x() + 1, z.y() + 1)), esperado(lado - 4, lado - 4));
        QCOMPARE(QColor(dibujo.pixel(z.right() - 1, z.bottom() - 1)), esperado(lado - 1, lado - 1));
        // Full screen: the whole band shrunk into the window.
        marco_->EjecutarComando(32847);
        dibujo = v.viewport()->grab().toImage();
        QCOMPARE(QColor(dibujo.pixel(0, 0)), esperado(0, 0));
        QVERIFY(ui_->mensajes.empty());
    }
};

QTEST_MAIN(VistaTest)
#include "VistaTest.moc"
