// Tools on the view: the rectangle, the click points and the digitised line
// read in image rows and columns whatever the zoom; the wheel, the keys and
// the middle button move the picture around the pixel under the pointer;
// the live readout names the pixel the query names; the buttons of the
// zoom and the query stay pressed while armed.
#include <QScrollBar>

#include "Entorno.h"

using namespace prueba;
using namespace cmd;
using vista::HerramientaLinea;
using vista::HerramientaPuntos;
using vista::HerramientaRectangulo;
using vista::PuntoImagen;
using vista::RectanguloImagen;

namespace {

// Samples f * 1000 + c + 0.25: each one tells its row and column.
std::vector<double> Posiciones(long filas, long columnas) {
    std::vector<double> v;
    for (long f = 0; f < filas; ++f)
        for (long c = 0; c < columnas; ++c) v.push_back(f * 1000.0 + c + 0.25);
    return v;
}

void Boton(CBrimarView& v, QEvent::Type tipo, QPoint p, Qt::MouseButton boton) {
    const Qt::MouseButtons abajo = tipo == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(boton);
    QMouseEvent e(tipo, QPointF(p), v.viewport()->mapToGlobal(QPointF(p)), boton, abajo, Qt::NoModifier);
    QCoreApplication::sendEvent(v.viewport(), &e);
}
void Clic(CBrimarView& v, QPoint p, Qt::MouseButton boton = Qt::LeftButton) {
    Boton(v, QEvent::MouseButtonPress, p, boton);
    Boton(v, QEvent::MouseButtonRelease, p, boton);
}
void Mover(CBrimarView& v, QPoint p) {
    QMouseEvent e(QEvent::MouseMove, QPointF(p), v.viewport()->mapToGlobal(QPointF(p)), Qt::NoButton, Qt::NoButton,
                  Qt::NoModifier);
    QCoreApplication::sendEvent(v.viewport(), &e);
}
void Rueda(CBrimarView& v, QPoint p, int paso) {
    QWheelEvent e(QPointF(p), v.viewport()->mapToGlobal(QPointF(p)), QPoint(), QPoint(0, paso), Qt::NoButton,
                  Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(v.viewport(), &e);
}
void Tecla(CBrimarView& v, int tecla, Qt::KeyboardModifiers m = Qt::NoModifier) {
    QKeyEvent e(QEvent::KeyPress, tecla, m);
    QCoreApplication::sendEvent(&v, &e);
}
QList<QPoint> Pixeles(const std::vector<PuntoImagen>& p) {
    QList<QPoint> r;
    for (const PuntoImagen& q : p) r << QPoint(static_cast<int>(q.columnaPixel), static_cast<int>(q.filaPixel));
    return r;
}

}  // namespace

class HerramientasTest : public QObject {
    Q_OBJECT
    Entorno entorno_;
    std::unique_ptr<Escritorio> e_;

    CBrimarView& Ventana(long filas, long columnas, QSize tamano, const std::string& sistema = "unknown",
                         const orvela::Georreferencia& geo = {}) {
        e_->Ventana(entorno_.Imagen("h", filas, columnas, "real", Posiciones(filas, columnas), sistema, geo));
        CChildFrame* v = e_->marco.VentanaActiva();
        v->resize(tamano + (v->size() - v->Vista().size()));
        return v->Vista();
    }
    // Zoom to the image rectangle (10, 20) - (109, 69) of a 500 x 450
    // view: 5 screen pixels a sample.
    void ZoomCinco(CBrimarView& v) {
        e_->Ejecutar({kZoomAdelante});
        Arrastrar(v, QPoint(10, 20), QPoint(109, 69));
        QCOMPARE(v.Origen(), QRect(10, 20, 100, 50));
        QCOMPARE(v.Destino(), QRect(0, 0, 500, 250));
    }

private slots:
    void init() {
        e_ = std::make_unique<Escritorio>();
        e_->marco.resize(1000, 800);
        e_->marco.show();
    }
    void cleanup() { e_.reset(); }

    // The same drag of the screen is a different rectangle of the image at
    // each zoom; the tool answers once, in image rows and columns, corners
    // off the picture brought to its edge.
    void rectanguloEnFilasYColumnas() {
        CBrimarView& v = Ventana(310, 287, QSize(500, 450));
        QCOMPARE(v.viewport()->size(), QSize(500, 450));
        std::vector<RectanguloImagen> r;
        auto armar = [&] {
            v.ArmarHerramienta(std::make_unique<HerramientaRectangulo>(
                [&](CBrimarView&, const RectanguloImagen& x) { r.push_back(x); }));
            QCOMPARE(v.NombreHerramienta(), QStringLiteral("rectangulo"));
        };
        armar();
        Arrastrar(v, QPoint(49, 59), QPoint(10, 20));  // one screen pixel a sample
        QCOMPARE(v.NombreHerramienta(), QString());
        ZoomCinco(v);
        armar();
        Arrastrar(v, QPoint(52, 27), QPoint(101, 76));
        armar();
        Arrastrar(v, QPoint(52, 27), QPoint(600, 300));  // past the picture's corner
        e_->Ejecutar({kPantallaCompleta});                // 287 x 310 fitted in 416 x 450
        armar();
        Arrastrar(v, QPoint(100, 90), QPoint(200, 180));
        armar();
        Arrastrar(v, QPoint(450, 10), QPoint(480, 40));   // beside the picture: its last column
        QCOMPARE(r, (std::vector<RectanguloImagen>{{20, 10, 59, 49}, {25, 20, 35, 30}, {25, 20, 69, 109},
                                                     {62, 68, 124, 137}, {6, 286, 27, 286}}));
        // Escape takes an armed tool off without an answer.
        armar();
        Tecla(v, Qt::Key_Escape);
        QCOMPARE(v.NombreHerramienta(), QString());
        QCOMPARE(r.size(), std::size_t{5});
        QVERIFY(e_->ui.mensajes.empty());
    }

    // The rectangle being dragged is drawn over the picture, and gone once
    // released.
    void rectanguloDibujado() {
        CBrimarView& v = Ventana(100, 100, QSize(200, 200));
        const QColor antes = v.viewport()->grab().toImage().pixelColor(40, 20);
        v.ArmarHerramienta(std::make_unique<HerramientaRectangulo>(nullptr));
        Boton(v, QEvent::MouseButtonPress, QPoint(20, 20), Qt::LeftButton);
        QMouseEvent m(QEvent::MouseMove, QPointF(60, 60), v.viewport()->mapToGlobal(QPointF(60, 60)), Qt::NoButton,
                      Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(v.viewport(), &m);
        QCOMPARE(v.viewport()->grab().toImage().pixelColor(40, 20), QColor(255, 255, 0));
        Boton(v, QEvent::MouseButtonRelease, QPoint(60, 60), Qt::LeftButton);
        QCOMPARE(v.viewport()->grab().toImage().pixelColor(40, 20), antes);
    }

    // Left clicks on the same pixels at two zoom levels collect the same
    // pixels; the right click hands them over. A refused click adds
    // nothing; crosses and rectangles cover the pixels the class sampling
    // takes, and are drawn around the pixel at the zoom shown.
    void puntosADosNiveles() {
        CBrimarView& v = Ventana(310, 287, QSize(500, 450));
        std::vector<std::vector<PuntoImagen>> tandas;
        int rechazados = 0;
        auto armar = [&](HerramientaPuntos::Marca marca) {
            auto h = std::make_unique<HerramientaPuntos>(
                marca, 1, 2, [&](CBrimarView&, const std::vector<PuntoImagen>& p) { tandas.push_back(p); },
                [&](CBrimarView&, const PuntoImagen& p) { return p.dentro || (++rechazados, false); });
            v.ArmarHerramienta(std::move(h));
        };
        armar(HerramientaPuntos::Marca::Punto);
        Clic(v, QPoint(40, 30));
        Clic(v, QPoint(105, 65));
        Clic(v, QPoint(400, 400));  // off the picture
        Clic(v, QPoint(0, 0), Qt::RightButton);
        ZoomCinco(v);
        armar(HerramientaPuntos::Marca::Cruz);
        Clic(v, QPoint((40 - 10) * 5 + 4, (30 - 20) * 5));
        Clic(v, QPoint((105 - 10) * 5, (65 - 20) * 5 + 3));
        Clic(v, QPoint(200, 300));  // below the picture
        const QImage dibujo = v.viewport()->grab().toImage();
        Clic(v, QPoint(0, 0), Qt::RightButton);
        QCOMPARE(tandas.size(), std::size_t{2});
        const QList<QPoint> esperados{QPoint(40, 30), QPoint(105, 65)};
        QCOMPARE(Pixeles(tandas[0]), esperados);
        QCOMPARE(Pixeles(tandas[1]), esperados);
        QCOMPARE(rechazados, 2);
        QCOMPARE(v.NombreHerramienta(), QString());
        // The cross around (30, 40) spans screen columns 145..160 at rows
        // 50..55: its outline passes through (145, 52) and (160, 52).
        QCOMPARE(dibujo.pixelColor(145, 52), QColor(255, 255, 0));
        QCOMPARE(dibujo.pixelColor(152, 45), QColor(255, 255, 0));
        QVERIFY(dibujo.pixelColor(152, 52) != QColor(255, 255, 0));
        // The pixels a mark covers, in the order the sampling takes them.
        HerramientaPuntos c(HerramientaPuntos::Marca::Cruz, 0, 0, nullptr);
        HerramientaPuntos r(HerramientaPuntos::Marca::Rectangulo, 1, 2, nullptr);
        PuntoImagen p;
        p.filaPixel = 0;
        p.columnaPixel = 7;
        QCOMPARE(c.Pixeles(p), (std::vector<QPoint>{{7, 0}, {7, -1}, {6, 0}, {7, 1}, {8, 0}}));
        const auto celdas = r.Pixeles(p);
        QCOMPARE(celdas.size(), std::size_t{15});
        QCOMPARE(celdas.front(), QPoint(5, -1));
        QCOMPARE(celdas[5], QPoint(5, 0));
        QCOMPARE(celdas.back(), QPoint(9, 1));
        QVERIFY(e_->ui.mensajes.empty());
    }

    // Vertices in image coordinates as doubles; too few vertices do not
    // end the line; Backspace takes the last one back.
    void lineaYPoligono() {
        CBrimarView& v = Ventana(310, 287, QSize(500, 450));
        ZoomCinco(v);
        std::vector<QPointF> linea;
        bool acabado = false;
        v.ArmarHerramienta(std::make_unique<HerramientaLinea>(true, [&](CBrimarView&, const std::vector<QPointF>& p) {
            linea = p;
            acabado = true;
        }));
        QCOMPARE(v.NombreHerramienta(), QStringLiteral("poligono"));
        Clic(v, QPoint(52, 27));
        Clic(v, QPoint(100, 100));
        Clic(v, QPoint(0, 0), Qt::RightButton);  // two vertices: no polygon yet
        QVERIFY(!acabado);
        Clic(v, QPoint(300, 200));
        Clic(v, QPoint(301, 201));
        Tecla(v, Qt::Key_Backspace);
        Tecla(v, Qt::Key_Return);
        QVERIFY(acabado);
        QCOMPARE(linea, (std::vector<QPointF>{{20.4, 25.4}, {30, 40}, {70, 60}}));
        QCOMPARE(v.NombreHerramienta(), QString());
    }

    // A tool armed over the pixel query hands the view back to it.
    void consultaBajoOtraHerramienta() {
        CBrimarView& v = Ventana(40, 50, QSize(200, 200));
        auto pulsados = [&] {
            return std::make_pair(e_->marco.Accion(kZoomAdelante)->isChecked(),
                                  e_->marco.Accion(kNivelDigital)->isChecked());
        };
        QCOMPARE(pulsados(), std::make_pair(false, false));
        e_->Ejecutar({kNivelDigital});
        QCOMPARE(pulsados(), std::make_pair(false, true));
        e_->Ejecutar({kZoomAdelante});
        QCOMPARE(pulsados(), std::make_pair(true, true));
        e_->Ejecutar({kZoomAdelante});
        QCOMPARE(pulsados(), std::make_pair(false, true));
        RectanguloImagen r;
        v.ArmarHerramienta(std::make_unique<HerramientaRectangulo>([&](CBrimarView&, const RectanguloImagen& x) { r = x; }));
        QVERIFY(v.EnConsulta());
        Arrastrar(v, QPoint(1, 2), QPoint(3, 4));
        QCOMPARE(r, (RectanguloImagen{2, 1, 4, 3}));
        QCOMPARE(v.NombreHerramienta(), QStringLiteral("consulta"));
        Pulsar(v, QPoint(5, 6));
        QCOMPARE(e_->marco.TextoPanel(1), QStringLiteral("Fila =  6 \t Columna =  5"));
        // A new image keeps the query and drops the other tools.
        v.ArmarHerramienta(std::make_unique<HerramientaRectangulo>(nullptr));
        orvela::CImagen otra;
        QVERIFY(!otra.Iniciar("", "", "otra", 4, 5, "byte", 77, 2, "unknown", "m", {}));
        v.Documento().PonerImagen(std::move(otra));
        QCOMPARE(v.NombreHerramienta(), QStringLiteral("consulta"));
        Tecla(v, Qt::Key_Escape);
        QVERIFY(!v.EnConsulta());
        QCOMPARE(pulsados(), std::make_pair(false, false));
    }

    // The wheel zooms by two around the pointer: the pixel under it stays
    // under it, in and out, from the scrolled normal screen on; the keys
    // do the same around the centre; the middle button drags the picture.
    void ruedaAlrededorDelCursor() {
        CBrimarView& v = Ventana(310, 287, QSize(200, 150));
        v.horizontalScrollBar()->setValue(30);
        v.verticalScrollBar()->setValue(40);
        QCoreApplication::processEvents();  // the scroll bars laid out
        const QSize normal = v.viewport()->size();
        for (const QPoint p : {QPoint(60, 40), QPoint(150, 120)}) {
            const QPoint px = v.PixelEn(p);
            QCOMPARE(px, QPoint(30 + p.x(), 40 + p.y()));
            for (int nivel = 1; nivel <= 3; ++nivel) {
                Rueda(v, p, 120);
                QCOMPARE(v.NivelZoom(), nivel);
                QCOMPARE(v.PixelEn(p), px);
            }
            QCOMPARE(v.Origen().size(), normal / 8);  // halved three times
            for (int nivel = 2; nivel >= 0; --nivel) {
                Rueda(v, p, -120);
                QCOMPARE(v.NivelZoom(), nivel);
                QCOMPARE(v.PixelEn(p), px);
            }
        }
        Rueda(v, QPoint(10, 10), 120);
        const QPoint centro = QRect(QPoint(0, 0), v.maximumViewportSize()).center();  // no bars once zoomed
        const QPoint px = v.PixelEn(centro);
        Tecla(v, Qt::Key_Plus);
        Tecla(v, Qt::Key_Plus);
        QCOMPARE(v.NivelZoom(), 3);
        QCOMPARE(v.PixelEn(centro), px);
        // 23 columns over 200 screen pixels: dragging 16 pixels to the left
        // (1.84 columns) shows the picture two columns further right.
        QCOMPARE(v.Origen().width(), normal.width() / 8);
        QCOMPARE(v.Destino().width(), 200);
        Boton(v, QEvent::MouseButtonPress, QPoint(100, 50), Qt::MiddleButton);
        Mover(v, QPoint(84, 50));
        Boton(v, QEvent::MouseButtonRelease, QPoint(84, 50), Qt::MiddleButton);
        QCOMPARE(v.PixelEn(centro), px + QPoint(2, 0));
        Tecla(v, Qt::Key_Minus);
        QCOMPARE(v.NivelZoom(), 2);
        Tecla(v, Qt::Key_0, Qt::ControlModifier);
        QVERIFY(v.EnPantallaCompleta());
        QVERIFY(e_->ui.mensajes.empty());
    }

    // The readout while the pointer moves names the pixel that a query
    // click at the same point names, at three zoom levels, and it shows in
    // the status bar.
    void lecturaComoLaConsulta() {
        const orvela::Georreferencia geo{500000.0f, 3991000.0f, 501800.0f, 4000000.0f, -1.0f, 30.0f, 1.0f};
        CBrimarView& v = Ventana(300, 60, QSize(200, 150), "UTM-30N", geo);
        e_->Ejecutar({kNivelDigital});
        const QPoint p(23, 37);
        Mover(v, p);
        QCOMPARE(e_->marco.TextoPanel(0), QStringLiteral("Fila 37  Columna 23  ND 37023.25  X 500690.0  Y 3998890.0"));
        QRegularExpression numeros(QStringLiteral("(-?[0-9]+\\.?[0-9]*)"));
        auto numerosDe = [&](const QString& t) {
            QStringList r;
            for (auto it = numeros.globalMatch(t); it.hasNext();) r << it.next().captured(1);
            return r;
        };
        for (int nivel = 0; nivel < 3; ++nivel) {
            if (nivel > 0) Rueda(v, QPoint(0, 120), 120);
            QCOMPARE(v.NivelZoom(), nivel);
            Mover(v, p);
            Pulsar(v, p);
            const QStringList consulta =
                numerosDe(e_->marco.TextoPanel(1) + " " + e_->marco.TextoPanel(2) + " " + e_->marco.TextoPanel(3));
            QCOMPARE(consulta.size(), 5);
            QCOMPARE(numerosDe(e_->marco.TextoPanel(0)), consulta);
            if (nivel > 0) QVERIFY(consulta[0] != QStringLiteral("37"));
        }
        e_->Ejecutar({kPantallaCompleta});
        Mover(v, QPoint(150, 10));  // right of a tall narrow picture
        QCOMPARE(e_->marco.TextoPanel(0), QStringLiteral("Preparado"));
    }
};

QTEST_MAIN(HerramientasTest)
#include "HerramientasTest.moc"
