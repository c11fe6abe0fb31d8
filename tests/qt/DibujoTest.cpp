// What the view draws: the window's display stretch (the drawing changes,
// the samples do not, the histogram shows the limits), a colour composite
// with its three values under the pointer, and the layers over the picture
// at any zoom, map elements stopping the zoom.
#include <QLabel>
#include <QPainter>

#include "Entorno.h"
#include "dialogs/CHistogramaDlg.h"

using namespace prueba;
using namespace cmd;

namespace {

QColor Gris(int n) { return QColor(n, n, n); }
QColor Dibujo(CBrimarView& v, int x, int y) { return v.viewport()->grab().toImage().pixelColor(x, y); }

void Mover(CBrimarView& v, QPoint p) {
    QMouseEvent e(QEvent::MouseMove, QPointF(p), v.viewport()->mapToGlobal(QPointF(p)), Qt::NoButton, Qt::NoButton,
                  Qt::NoModifier);
    QCoreApplication::sendEvent(v.viewport(), &e);
}

// A map element: a black square in the top left corner of the window.
class Norte : public vista::CapaMapa {
public:
    QString Nombre() const override { return QStringLiteral("norte"); }
    void Dibujar(QPainter& p, const CBrimarView&) const override { p.fillRect(QRect(0, 0, 4, 4), Qt::black); }
};

}  // namespace

class DibujoTest : public QObject {
    Q_OBJECT
    Entorno entorno_;
    std::unique_ptr<Escritorio> e_;

    CBrimarView& Ventana(const std::string& ruta, QSize tamano) {
        e_->Ventana(ruta);
        CChildFrame* v = e_->marco.VentanaActiva();
        v->resize(tamano + (v->size() - v->Vista().size()));
        return v->Vista();
    }

private slots:
    void init() {
        e_ = std::make_unique<Escritorio>();
        e_->marco.resize(1000, 800);
        e_->marco.show();
    }
    void cleanup() { e_.reset(); }

    // Byte samples 10, 20, 30, 110 through the grey palette: as they are,
    // then spread from 10 to 110 (20 -> 25, 30 -> 51), then as they are
    // again. The samples stay; the histogram names the limits.
    void realceCambiaSoloElDibujo() {
        CBrimarView& v = Ventana(entorno_.Imagen("r", 2, 4, "byte", {10, 20, 30, 110}), QSize(100, 100));
        CBrimarDoc& doc = v.Documento();
        const std::vector<double> muestras = ValoresDe(doc.Imagen());
        auto fila = [&] { return QList<QColor>{Dibujo(v, 0, 0), Dibujo(v, 1, 0), Dibujo(v, 2, 0), Dibujo(v, 3, 1)}; };
        QCOMPARE(fila(), (QList<QColor>{Gris(10), Gris(20), Gris(30), Gris(110)}));
        doc.PonerRealce(orvela::Realce::MinimoMaximo);
        QCOMPARE(fila(), (QList<QColor>{Gris(0), Gris(25), Gris(51), Gris(255)}));
        QCOMPARE(ValoresDe(doc.Imagen()), muestras);
        QCOMPARE(v.Indices().pixelIndex(1, 1), 25);

        e_->Ejecutar({kHistograma});
        auto* h = e_->marco.findChild<CHistogramaDlg*>(QStringLiteral("histograma"));
        QVERIFY(h);
        auto* limites = h->findChild<QLabel*>(QStringLiteral("realce"));
        QVERIFY(limites);
        QCOMPARE(limites->text(), QStringLiteral("Mínimo-máximo, de 10 a 110"));
        QVERIFY(h->Datos().conRealce);
        QCOMPARE(h->Datos().cuentas[20], std::uint64_t{2});  // the counts are of the samples
        h->close();

        // A new image in the window keeps the window's choice.
        QVERIFY(AbrirImagen(doc, entorno_.Imagen("r2", 1, 2, "byte", {50, 60}), 2, {}, e_->ui));
        QCOMPARE(Dibujo(v, 1, 0), Gris(255));
        doc.PonerRealce(orvela::Realce::Ninguno);
        QCOMPARE(Dibujo(v, 0, 0), Gris(50));
        QCOMPARE(Dibujo(v, 1, 0), Gris(60));
        QVERIFY(e_->ui.mensajes.empty());
    }

    // Three known planes drawn pixel for pixel at one screen pixel a
    // sample and stretched in full screen; the readout gives the three
    // values; the pixel query takes it; a band put in its place
    // is drawn through the palette again.
    void composicionDibujada() {
        CBrimarView& v = Ventana(entorno_.Imagen("c", 2, 3, "byte", {0}), QSize(120, 120));
        CBrimarDoc& doc = v.Documento();
        orvela::ComposicionColor c{2, 3, {255, 0, 0, 10, 20, 30}, {0, 255, 0, 40, 50, 60}, {0, 0, 255, 70, 80, 90}};
        doc.PonerComposicion(std::move(c), &doc.Imagen());
        QVERIFY(doc.EsComposicion());
        QCOMPARE(doc.Nombre(), QStringLiteral("TMP"));
        QCOMPARE(doc.Imagen().Filas(), 2L);
        QVERIFY(v.Indices().isNull());
        const QList<QColor> esperados{QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255),
                                      QColor(10, 40, 70), QColor(20, 50, 80), QColor(30, 60, 90)};
        for (int k = 0; k < 6; ++k) QCOMPARE(Dibujo(v, k % 3, k / 3), esperados[k]);
        QCOMPARE(Dibujo(v, 3, 0), QColor(Qt::white));
        Mover(v, QPoint(2, 1));
        QCOMPARE(e_->marco.TextoPanel(0), QStringLiteral("Fila 1  Columna 2  R 30  G 60  B 90"));
        e_->Ejecutar({kNivelDigital});
        QVERIFY(e_->ui.mensajes.empty());
        QVERIFY(v.EnConsulta());
        v.TerminarConsulta();
        // Full screen: 3 x 2 samples fill a 120 x 80 picture, 40 screen
        // pixels a sample.
        e_->Ejecutar({kPantallaCompleta});
        QCOMPARE(v.Destino(), QRect(0, 0, 120, 80));
        QCOMPARE(Dibujo(v, 100, 70), esperados[5]);
        QCOMPARE(Dibujo(v, 41, 39), esperados[1]);
        // The stretch leaves a composite's colours alone.
        doc.PonerRealce(orvela::Realce::MinimoMaximo);
        QCOMPARE(Dibujo(v, 41, 39), esperados[1]);

        doc.PonerRealce(orvela::Realce::Ninguno);
        QVERIFY(AbrirImagen(doc, entorno_.Imagen("c2", 1, 1, "byte", {7}), 2, {}, e_->ui));
        QVERIFY(!doc.EsComposicion());
        QVERIFY(!doc.Composicion());
        QCOMPARE(v.Indices().pixelIndex(0, 0), 7);
        QVERIFY(e_->ui.mensajes.empty());
    }

    // A line through the centres of row 10, columns 10 to 60, drawn where
    // the picture has those pixels at one and at two screen pixels a
    // sample; a map element refuses the zoom and the full screen until it
    // is taken off.
    void capasSobreLaImagen() {
        CBrimarView& v = Ventana(entorno_.Imagen("k", 100, 100, "byte", {0}), QSize(200, 200));
        auto capa = std::make_unique<vista::CapaVectorial>(QStringLiteral("vias"));
        capa->elementos.push_back({vista::CapaVectorial::Tipo::Linea, {{10.5, 10.5}, {60.5, 10.5}}, QColor(255, 0, 0)});
        v.AnadirCapa(std::move(capa));
        QCOMPARE(v.NumeroCapas(), std::size_t{1});
        auto roja = [&](int x, int y) {
            const QImage d = v.viewport()->grab().toImage();
            return d.pixelColor(x, y) == QColor(255, 0, 0) || d.pixelColor(x, y + 1) == QColor(255, 0, 0);
        };
        QVERIFY(roja(30, 9));
        QVERIFY(!roja(30, 30));
        QVERIFY(!roja(80, 9));
        e_->Ejecutar({kPantallaCompleta});
        QCOMPARE(v.Destino(), QRect(0, 0, 200, 200));
        QVERIFY(roja(60, 20));
        QVERIFY(!roja(60, 9));
        v.Capa(QStringLiteral("vias"))->visible = false;
        v.viewport()->repaint();
        QVERIFY(!roja(60, 20));
        e_->Ejecutar({kPantallaNormal});

        v.AnadirCapa(std::make_unique<Norte>());
        QCOMPARE(Dibujo(v, 1, 1), QColor(Qt::black));
        e_->Ejecutar({kZoomAdelante, kPantallaCompleta});
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{61285, 61286}));
        QVERIFY(!v.ZoomArmado());
        v.QuitarCapa(QStringLiteral("norte"));
        QCOMPARE(v.NumeroCapas(), std::size_t{1});
        e_->Ejecutar({kZoomAdelante});
        QVERIFY(v.ZoomArmado());
        QCOMPARE(e_->ui.Ids().size(), std::size_t{2});
    }
};

QTEST_MAIN(DibujoTest)
#include "DibujoTest.moc"
