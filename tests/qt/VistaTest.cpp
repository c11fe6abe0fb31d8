// The view: zoom and its limits, full and normal screen, pixel query with
// the status-bar texts, and what the picture shows.
#include <QScrollBar>

#include "Entorno.h"

using namespace prueba;
using namespace cmd;

namespace {

// Samples f * 1000 + c + 0.25: each one tells its row and column.
std::vector<double> Posiciones(long filas, long columnas) {
    std::vector<double> v;
    for (long f = 0; f < filas; ++f)
        for (long c = 0; c < columnas; ++c) v.push_back(f * 1000.0 + c + 0.25);
    return v;
}
QColor Gris(int n) { return QColor(n, n, n); }

}  // namespace

class VistaTest : public QObject {
    Q_OBJECT
    Entorno entorno_;
    std::unique_ptr<Escritorio> e_;

    // A window showing a new image pair, its view sized to `tamano`.
    CBrimarView& Ventana(long filas, long columnas, const char* tipo, const std::vector<double>& valores, QSize tamano,
                         const std::string& sistema = "unknown", const orvela::Georreferencia& geo = {}) {
        e_->Ventana(entorno_.Imagen("v", filas, columnas, tipo, valores, sistema, geo));
        CChildFrame* v = e_->marco.VentanaActiva();
        v->resize(tamano + (v->size() - v->Vista().size()));
        return v->Vista();
    }
    void Ejecutar(std::initializer_list<int> ids) { e_->Ejecutar(ids); }
    QString Panel(int i) const { return e_->marco.TextoPanel(i); }

private slots:
    void init() {
        e_ = std::make_unique<Escritorio>();
        e_->marco.resize(1000, 800);
        e_->marco.show();
    }
    void cleanup() { e_.reset(); }

    // The dragged rectangle (here up and to the left) fills the window
    // keeping its proportions; what is clicked is what is shown. Pressed
    // twice, the armed zoom is cancelled; zooming out walks back down.
    void zoomDelRectanguloArrastrado() {
        CBrimarView& v = Ventana(310, 287, "real", Posiciones(310, 287), QSize(500, 450));
        Ejecutar({kZoomAdelante});
        Arrastrar(v, QPoint(109, 69), QPoint(10, 20));
        QCOMPARE(v.NivelZoom(), 1);
        QCOMPARE(v.Origen(), QRect(10, 20, 100, 50));
        QCOMPARE(v.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        const QRect d = v.Destino();
        QVERIFY(d.width() == v.viewport()->width() || d.height() == v.viewport()->height());
        QVERIFY(qAbs(d.width() * 50 - d.height() * 100) <= 100);
        Ejecutar({kNivelDigital});
        Pulsar(v, d.bottomRight());
        QCOMPARE(Panel(1), QStringLiteral("Fila =  69 \t Columna =  109"));
        Ejecutar({kZoomAdelante, kZoomAdelante});
        QVERIFY(!v.ZoomArmado());
        QCOMPARE(v.NivelZoom(), 1);
        Ejecutar({kZoomAtras, kZoomAtras});
        QCOMPARE(v.NivelZoom(), 0);
        QCOMPARE(v.Origen(), QRect(0, 0, 287, 310));
        QCOMPARE(v.horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
        QVERIFY(e_->ui.mensajes.empty());
    }

    // Full screen: the whole image fitted from the top left corner, the
    // height or (in a tall narrow window) the width deciding; normal
    // screen: one screen pixel per sample.
    void pantallaCompletaYNormal() {
        CBrimarView& v = Ventana(310, 287, "byte", {1, 2}, QSize(600, 250));
        Ejecutar({kZoomAdelante});
        Arrastrar(v, QPoint(0, 0), QPoint(50, 50));
        Ejecutar({kPantallaCompleta});
        QVERIFY(v.EnPantallaCompleta());
        QCOMPARE(v.NivelZoom(), 0);
        QCOMPARE(v.Origen(), QRect(0, 0, 287, 310));
        const QSize c = v.viewport()->size();
        QCOMPARE(v.Destino(), QRect(0, 0, static_cast<int>(287.0 / 310.0 * c.height()), c.height()));
        e_->marco.VentanaActiva()->resize(e_->marco.VentanaActiva()->size() + QSize(-450, 300));
        const QSize c2 = v.viewport()->size();
        QVERIFY(c2.width() < c2.height());
        QCOMPARE(v.Destino(), QRect(0, 0, c2.width(), static_cast<int>(310.0 / 287.0 * c2.width())));
        Ejecutar({kPantallaNormal});
        QVERIFY(!v.EnPantallaCompleta());
        QCOMPARE(v.Destino(), QRect(QPoint(0, 0), v.Origen().size()));
        QCOMPARE(v.horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
        QVERIFY(e_->ui.mensajes.empty());
    }

    // Row, column, sample and UTM coordinates of the pixel clicked, the
    // view scrolled or not; nothing beside the image; no coordinates
    // without UTM; closing the window empties the panes.
    void consultaDePixel() {
        const orvela::Georreferencia geo{500000.0f, 3991000.0f, 501800.0f, 4000000.0f, -1.0f, 30.0f, 1.0f};
        CBrimarView& v = Ventana(300, 60, "real", Posiciones(300, 60), QSize(200, 150), "UTM-30N", geo);
        auto paneles = [&] { return QStringList({Panel(1), Panel(2), Panel(3)}); };
        Ejecutar({kNivelDigital});
        QVERIFY(v.EnConsulta());
        QCOMPARE(paneles(), QStringList({"Fila =                             Columna =  ", "\tNivel Digital = \t", ""}));
        Pulsar(v, QPoint(10, 20));
        QCOMPARE(paneles(), QStringList({"Fila =  20 \t Columna =  10", "\tNivel Digital =  20010.25\t",
                                         "Coord. UTM. X = 500300.0 ; Y = 3999400.0 "}));
        Pulsar(v, QPoint(100, 5));
        QCOMPARE(paneles(), QStringList({"Fila =  5 \t Columna =  100", "No Existe Imagen En Estas Coordenadas.", ""}));
        v.verticalScrollBar()->setValue(7);
        Pulsar(v, QPoint(5, 5));
        QCOMPARE(paneles(), QStringList({"Fila =  12 \t Columna =  5", "\tNivel Digital =  12005.25\t",
                                         "Coord. UTM. X = 500150.0 ; Y = 3999640.0 "}));
        CBrimarView& w = Ventana(2, 2, "integer", {7}, QSize(100, 100));
        Ejecutar({kNivelDigital});
        Pulsar(w, QPoint(1, 1));
        QCOMPARE(paneles(), QStringList({"Fila =  1 \t Columna =  1", "\tNivel Digital =  7.00\t", ""}));
        e_->marco.VentanaActiva()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(paneles(), QStringList({"", "", ""}));
        QVERIFY(e_->ui.mensajes.empty());
    }

    // An integer image spread between its minimum and maximum over the
    // palette; a new image in the document starts the view over.
    void enteroConCeroYMaximo() {
        CBrimarView& v = Ventana(2, 3, "integer", {0, 65535, 32768, 1, 65534, 255}, QSize(100, 100));
        const QImage& idx = v.Indices();
        QCOMPARE(idx.format(), QImage::Format_Indexed8);
        QCOMPARE(idx.pixelIndex(0, 0), 0);
        QCOMPARE(idx.pixelIndex(1, 0), 255);
        QCOMPARE(idx.pixelIndex(2, 0), 128);
        QCOMPARE(idx.pixelIndex(1, 1), 255);  // 65534 / 255.996 = 255.99
        const QImage dibujo = v.viewport()->grab().toImage();
        QCOMPARE(QColor(dibujo.pixel(1, 0)), Gris(255));
        QCOMPARE(QColor(dibujo.pixel(2, 0)), Gris(128));
        QCOMPARE(QColor(dibujo.pixel(50, 50)), QColor(Qt::white));  // beyond the image

        Ejecutar({kZoomAdelante});
        orvela::CImagen otra;
        QVERIFY(!otra.Iniciar("", "", "otra", 4, 5, "byte", 77, 2, "unknown", "m", {}));
        v.Documento().PonerImagen(std::move(otra));
        QVERIFY(!v.ZoomArmado());
        QCOMPARE(v.Indices().pixelIndex(4, 3), 77);
    }

    // Without its palette the image is shown all the same, after 61267.
    void paletaQueNoEsta() {
        QTemporaryDir otra;
        QDir(otra.path()).mkpath(QStringLiteral("Paletas"));
        Entorno::PonerPath(otra.path());
        Escritorio e;
        Entorno::PonerPath(QString::fromStdString(entorno_.Carpeta()));
        CBrimarDoc& doc = e.Ventana(entorno_.Imagen("sp1", 3, 3, "byte", {1}));
        QCOMPARE(e.ui.Ids(), std::vector<int>{61267});
        QVERIFY(e.marco.VistaActiva()->Indices().isNull());
        QCOMPARE(doc.Nombre(), QStringLiteral("sp1"));
    }

    // A 7000 x 7000 band: the far corner scrolled to, a 4 x 4 block of it
    // zoomed, and the whole band shrunk into the window.
    void bandaDeSieteMil() {
        const long lado = 7000;
        const std::string stem = entorno_.Ruta("grande");
        {
            orvela::CImagen im;
            QVERIFY(!im.Iniciar(stem + ".ozm", "", "grande", lado, lado, "byte", 0, 2, "unknown", "m", {}));
            auto d = im.pixeles.Como<uint8_t>();
            for (long f = 0; f < lado; ++f)
                for (long c = 0; c < lado; ++c) d[f * lado + c] = static_cast<uint8_t>((f + 3 * c) & 0xFF);
            QVERIFY(!im.Guardar(stem, 1));
        }
        auto esperado = [](long f, long c) { return Gris(static_cast<int>((f + 3 * c) & 0xFF)); };
        CChildFrame* c = e_->marco.NuevaVentana();
        c->resize(QSize(400, 300) + (c->size() - c->Vista().size()));
        CBrimarView& v = c->Vista();
        QVERIFY(AbrirImagen(c->Documento(), stem + ".ozm", 2, {}, e_->ui));
        v.horizontalScrollBar()->setValue(v.horizontalScrollBar()->maximum());
        v.verticalScrollBar()->setValue(v.verticalScrollBar()->maximum());
        const QRect o = v.Origen(), d = v.Destino();
        QCOMPARE(o.bottomRight(), QPoint(lado - 1, lado - 1));
        QImage dibujo = v.viewport()->grab().toImage();
        QCOMPARE(QColor(dibujo.pixel(d.bottomRight())), esperado(lado - 1, lado - 1));
        QCOMPARE(QColor(dibujo.pixel(7, 11)), esperado(o.y() + 11, o.x() + 7));
        Ejecutar({kZoomAdelante});
        Arrastrar(v, d.bottomRight() - QPoint(3, 3), d.bottomRight());
        QCOMPARE(v.Origen(), QRect(lado - 4, lado - 4, 4, 4));
        dibujo = v.viewport()->grab().toImage();
        const QRect z = v.Destino();
        QCOMPARE(QColor(dibujo.pixel(z.topLeft() + QPoint(1, 1))), esperado(lado - 4, lado - 4));
        QCOMPARE(QColor(dibujo.pixel(z.bottomRight() - QPoint(1, 1))), esperado(lado - 1, lado - 1));
        Ejecutar({kPantallaCompleta});
        QCOMPARE(QColor(v.viewport()->grab().toImage().pixel(0, 0)), esperado(0, 0));
        QVERIFY(e_->ui.mensajes.empty());
    }
};

QTEST_MAIN(VistaTest)
#include "VistaTest.moc"
