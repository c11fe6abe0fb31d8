// The result windows: a report saved as Windows-1252 under the name the
// user picks (the fixed ending proposed), a chart saved as the PNG that
// orvela-cli writes (read back with libpng), clicks in the chart giving data
// points, and both opening as child windows of the workspace.
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QSignalSpy>

#include "Entorno.h"
#include "dialogs/VentanasResultado.h"
#include "tests/LeerPng.h"

using namespace prueba;

namespace {

// Points at (5, 5) in blue and the line y = 2 + 0.5 x in red over a frame
// of 0 to 10 on both axes.
orvela::Grafico Ejemplo() {
    orvela::Grafico g;
    g.titulo = "Regresión";
    g.ejeX = "Banda 3";
    g.ejeY = "Banda 4";
    g.xMaximo = g.yMaximo = 10;
    g.final = "_Regresion.png";
    orvela::SerieGrafico puntos;
    puntos.color = 0x0000FF;
    puntos.puntos = {{5, 5}, {8, 1}};
    g.series.push_back(puntos);
    g.series.push_back(orvela::SerieGrafico::Recta(2, 0.5, 0xFF0000));
    return g;
}

void PulsarBoton(QWidget& w, const QString& nombre) {
    auto* b = w.findChild<QAbstractButton*>(nombre);
    QVERIFY2(b, qPrintable(nombre));
    b->click();
}

}  // namespace

class VentanasResultadoTest : public QObject {
    Q_OBJECT
    Entorno entorno_;
    std::unique_ptr<Escritorio> e_;

private slots:
    void init() { e_ = std::make_unique<Escritorio>(); }
    void cleanup() { e_.reset(); }

    void informeEnVentanaHijaGuardadoEnWindows1252() {
        const int antes = static_cast<int>(e_->marco.Area()->subWindowList().size());
        const std::string texto = "Media: 12.5\nAño ñandú ¿Ú?\n";
        // As an operation's run opens it, through the workspace.
        Espacio& espacio = e_->marco;
        espacio.AbrirInforme({.final = "_Estadisticas.txt", .contenido = texto, .titulo = "Estadísticas de tm1"});
        QCOMPARE(e_->marco.Area()->subWindowList().size(), antes + 1);
        auto* v = qobject_cast<CVentanaInforme*>(e_->marco.Area()->activeSubWindow()->widget());
        QVERIFY(v);
        QCOMPARE(v->windowTitle(), QStringLiteral("Estadísticas de tm1"));
        auto* caja = v->findChild<QPlainTextEdit*>(QStringLiteral("texto"));
        QVERIFY(caja && caja->isReadOnly());
        QCOMPARE(caja->toPlainText().toStdString(), texto);
        QVERIFY(QFontInfo(caja->font()).fixedPitch());

        // A name without an extension takes the ending's; the bytes are
        // Windows-1252.
        e_->ui.ficherosGuardar.push_back(entorno_.Ruta("informe"));
        PulsarBoton(*v, QStringLiteral("guardarComo"));
        QCOMPARE(e_->ui.propuestos, std::vector<std::string>{"_Estadisticas.txt"});
        QCOMPARE(LeerFichero(entorno_.Ruta("informe.txt")), std::string("Media: 12.5\nA\xF1o \xF1" "and\xFA \xBF\xDA?\n"));

        // Cancelled: nothing written. Unwritable: 61260, the old file kept.
        QVERIFY(!v->GuardarComo());
        std::ofstream(entorno_.Ruta("viejo.txt")) << "anterior";
        e_->ui.ficherosGuardar.push_back(entorno_.Ruta("no/existe.txt"));
        QVERIFY(!v->GuardarComo());
        QCOMPARE(e_->ui.Ids(), std::vector<int>{orvela::msg::kNoCreadoFichero});
        QCOMPARE(LeerFichero(entorno_.Ruta("viejo.txt")), std::string("anterior"));
        // Closing the window deletes it.
        QPointer<CVentanaInforme> vivo(v);
        e_->marco.Area()->activeSubWindow()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!vivo);
    }

    void graficoGuardadoComoPngLeidoPorLibpng() {
        Espacio& espacio = e_->marco;
        espacio.AbrirGrafico(Ejemplo());
        auto* v = qobject_cast<CVentanaGrafico*>(e_->marco.Area()->activeSubWindow()->widget());
        QVERIFY(v);
        QCOMPARE(v->windowTitle(), QStringLiteral("Regresión"));
        e_->ui.ficherosGuardar.push_back(entorno_.Ruta("g"));
        PulsarBoton(*v, QStringLiteral("guardarComo"));
        QCOMPARE(e_->ui.propuestos, std::vector<std::string>{"_Regresion.png"});
        const orvela::prueba::PngLeido png = orvela::prueba::LeerPngLibpng(entorno_.Ruta("g.png"));
        QVERIFY(png.ok);
        QCOMPARE(png.ancho, 640u);
        QCOMPARE(png.alto, 480u);
        // Where the renderer puts them at that size: the point blue, the
        // line red at both ends of the x range and in the middle.
        const orvela::MarcoGrafico m = orvela::DibujarGrafico(Ejemplo()).marco;
        auto color = [&](double x, double y) {
            const auto p = m.APixel(x, y);
            return png.Color(static_cast<uint32_t>(std::lround(p[0])), static_cast<uint32_t>(std::lround(p[1])));
        };
        using C = std::array<uint8_t, 3>;
        QCOMPARE(color(5, 5), (C{0, 0, 255}));
        QCOMPARE(color(8, 1), (C{0, 0, 255}));
        QCOMPARE(color(0, 2), (C{255, 0, 0}));
        QCOMPARE(color(4, 4), (C{255, 0, 0}));
        QCOMPARE(color(10, 7), (C{255, 0, 0}));
        QCOMPARE(color(3, 9), (C{255, 255, 255}));  // between grid lines
        // Not writable: 61260 and no file.
        e_->ui.ficherosGuardar.push_back(entorno_.Ruta("no/g.png"));
        QVERIFY(!v->GuardarComo());
        QCOMPARE(e_->ui.Ids(), std::vector<int>{orvela::msg::kNoCreadoFichero});
    }

    // The chart is drawn to the size of its area at every size, and a
    // click gives the data point under it.
    void clicDaElPuntoDeLosDatos_data() {
        QTest::addColumn<QSize>("tamano");
        QTest::newRow("pequeño") << QSize(300, 220);
        QTest::newRow("normal") << QSize(640, 480);
        QTest::newRow("grande") << QSize(1400, 1000);
    }
    void clicDaElPuntoDeLosDatos() {
        QFETCH(QSize, tamano);
        CVentanaGrafico v(e_->ui, Ejemplo());
        v.show();
        v.Lienzo().setFixedSize(tamano);
        v.adjustSize();
        QVERIFY(QTest::qWaitForWindowExposed(&v));
        const orvela::GraficoDibujado& d = v.Lienzo().Dibujo();
        QCOMPARE(QSize(static_cast<int>(d.imagen.ancho), static_cast<int>(d.imagen.alto)), tamano);
        QSignalSpy spy(&v, &CVentanaGrafico::puntoPulsado);
        const auto p = d.marco.APixel(2.5, 7.5);
        const QPoint clic(static_cast<int>(std::lround(p[0])), static_cast<int>(std::lround(p[1])));
        QTest::mouseClick(&v.Lienzo(), Qt::LeftButton, {}, clic);
        QCOMPARE(spy.count(), 1);
        // Within half a pixel of the point.
        const double medioX = 5.0 / (d.marco.ancho - 1), medioY = 5.0 / (d.marco.alto - 1);
        QVERIFY(std::fabs(spy[0][0].toDouble() - 2.5) <= medioX);
        QVERIFY(std::fabs(spy[0][1].toDouble() - 7.5) <= medioY);
        QVERIFY(v.findChild<QLabel*>(QStringLiteral("estado"))->text().startsWith(QStringLiteral("X: 2.5")));
        // Outside the plot area (on the numbers of the y axis): nothing.
        QTest::mouseClick(&v.Lienzo(), Qt::LeftButton, {}, QPoint(d.marco.x0 - 6, clic.y()));
        QTest::mouseClick(&v.Lienzo(), Qt::RightButton, {}, clic);
        QCOMPARE(spy.count(), 1);
    }
};

QTEST_MAIN(VentanasResultadoTest)
#include "VentanasResultadoTest.moc"
