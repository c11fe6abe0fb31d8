// The image tools on the desktop, with a scripted user: a colour composite
// drawn from three known bands, queried and exported, refusing the other
// operations; a window cut by a rectangle dragged at two zoom levels; a
// click in the scatter diagram read in the status bar; the statistics of a
// continuous image in their dialog and the per-class text shown apart from
// the report saved.
#include <QImage>
#include <QMdiArea>
#include <QMdiSubWindow>

#include "Entorno.h"
#include "dialogs/VentanasResultado.h"
#include "image/Codificacion.h"
#include "image/Leyenda.h"

using namespace orvela;
using namespace prueba;
using namespace cmd;

namespace {

constexpr int kComposicionColor = 32855;
constexpr int kEnventanar = 32852;
constexpr int kEstadisticas = 32789;
constexpr int kRegresion = 32863;

QColor Dibujo(CBrimarView& v, int x, int y) { return v.viewport()->grab().toImage().pixelColor(x, y); }

// Samples f * 1000 + c + 0.25: each one tells its row and column.
std::vector<double> Posiciones(long filas, long columnas) {
    std::vector<double> v;
    for (long f = 0; f < filas; ++f)
        for (long c = 0; c < columnas; ++c) v.push_back(f * 1000.0 + c + 0.25);
    return v;
}

template <class W> W* Activa(CMainFrame& m) {
    QMdiSubWindow* s = m.Area()->activeSubWindow();
    return s ? qobject_cast<W*>(s->widget()) : nullptr;
}

}  // namespace

class HerramientasImagenTest : public QObject {
    Q_OBJECT
    Entorno entorno_;
    std::unique_ptr<Escritorio> e_;

    // The active window's view, its picture area resized to `tamano`.
    CBrimarView& Ajustar(QSize tamano) {
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

    // Three byte bands scaled between their minimum and maximum fill the
    // empty active window; the drawn pixels, the pixel query and both
    // exports give the hand-worked colours; a band of another type is
    // refused when picked, and other operations refuse the composite.
    void composicionDibujadaConsultadaYExportada() {
        const std::string azul = entorno_.Imagen("azul", 2, 3, "byte", {0, 255, 100, 50, 25, 200});
        const std::string verde = entorno_.Imagen("verde", 2, 3, "byte", {10, 20, 30, 40, 50, 110});
        const std::string rojo = entorno_.Imagen("rojo", 2, 3, "byte", {7, 7, 7, 7, 7, 9});
        const std::string entero = entorno_.Imagen("entero", 2, 3, "integer", {1});
        e_->Ventana();
        CBrimarView& v = Ajustar(QSize(120, 120));
        e_->ui.ficherosAbrir = {azul, verde, entero, rojo};
        e_->ui.dialogos.push_back([](QDialog& d) {
            Pulsar(d, "entrada0_seleccionar");
            Pulsar(d, "entrada1_seleccionar");
            Pulsar(d, "entrada2_seleccionar");  // refused: another type
            Pulsar(d, "entrada2_seleccionar");
            Pulsar(d, "campo_escalado_1");      // minimum-maximum
            return Aceptar(d);
        });
        e_->Ejecutar({kComposicionColor});
        QCOMPARE(e_->ui.Ids(), std::vector<int>{msg::kNoCoincide});
        QCOMPARE(e_->ui.mensajes[0].f1, std::string(relleno::kElTipoDeDato));
        QVERIFY(e_->ui.textos.empty());
        e_->ui.mensajes.clear();
        QCOMPARE(e_->marco.Documentos().size(), std::size_t{1});
        CBrimarDoc& doc = v.Documento();
        QVERIFY(doc.EsComposicion());
        QCOMPARE(doc.Imagen().titulo, std::string("Color_rojo_verde_azul"));
        // Red 7..9, green 10..110, blue 0..255 spread over 0..255.
        const QList<QColor> esperados{QColor(0, 0, 0),   QColor(0, 25, 255),  QColor(0, 51, 100),
                                      QColor(0, 76, 50), QColor(0, 102, 25), QColor(255, 255, 200)};
        for (int k = 0; k < 6; ++k) QCOMPARE(Dibujo(v, k % 3, k / 3), esperados[k]);

        // The pixel query gives the three values of the pixel.
        e_->Ejecutar({kNivelDigital});
        QVERIFY(e_->ui.mensajes.empty());
        QVERIFY(v.EnConsulta());
        Pulsar(v, QPoint(1, 1));
        QCOMPARE(e_->marco.TextoPanel(2), QStringLiteral("\tR =  0   G =  102   B =  25\t"));
        QCOMPARE(e_->marco.TextoPanel(1), QStringLiteral("Fila =  1 \t Columna =  1"));
        v.TerminarConsulta();

        // Exported in its own colours, as BMP and as PNG.
        for (const char* nombre : {"color.bmp", "color.png"}) {
            const std::string ruta = entorno_.Ruta(nombre);
            e_->ui.ficherosGuardar = {ruta};
            e_->Ejecutar({kExportarBmp});
            QVERIFY(e_->ui.mensajes.empty());
            const QImage im(QString::fromStdString(ruta));
            QCOMPARE(im.size(), QSize(3, 2));
            for (int k = 0; k < 6; ++k) QCOMPARE(im.pixelColor(k % 3, k / 3), esperados[k]);
        }
        QCOMPARE(prueba::LeerFichero(entorno_.Ruta("color.bmp")).substr(0, 2), std::string("BM"));

        // Any other operation refuses it.
        e_->Ejecutar({kEnventanar});
        e_->Ejecutar({kEstadisticas});
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{msg::kComposicionColor, msg::kComposicionColor}));
    }

    // The window dragged at one screen pixel a sample and again, over the
    // same pixels, at five: the same rows and columns, the bottom-right
    // ones included as the pixels dragged. Escape gives the drag up; the
    // mouse needs the window as input (61245).
    void enventanarConElRatonADosNiveles() {
        const std::string ruta = entorno_.Imagen("h", 310, 287, "real", Posiciones(310, 287));
        auto guion = [](QDialog& d) {
            Pulsar(d, "entrada0_activa");
            Pulsar(d, "campo_seleccion_1");
            return Aceptar(d);
        };
        std::vector<std::vector<double>> cortes;
        for (int nivel = 0; nivel < 2; ++nivel) {
            e_->Ventana(ruta);
            CBrimarView& v = Ajustar(QSize(500, 450));
            if (nivel == 1) {
                e_->Ejecutar({kZoomAdelante});
                Arrastrar(v, QPoint(10, 20), QPoint(109, 69));
                QCOMPARE(v.Origen(), QRect(10, 20, 100, 50));
                QCOMPARE(v.Destino(), QRect(0, 0, 500, 250));
            }
            e_->ui.dialogos.push_back(guion);
            e_->Ejecutar({kEnventanar});
            QCOMPARE(v.NombreHerramienta(), QStringLiteral("rectangulo"));
            QCOMPARE(e_->marco.TextoPanel(0), QString::fromUtf8(texto::kArrastrarVentana));
            // Columns 10..49 and rows 20..59 of the image.
            if (nivel == 0) Arrastrar(v, QPoint(10, 20), QPoint(49, 59));
            else Arrastrar(v, QPoint(2, 3), QPoint(197, 198));
            const CImagen& im = v.Documento().Imagen();
            QCOMPARE(im.Filas(), 40L);
            QCOMPARE(im.Columnas(), 40L);
            QCOMPARE(im.titulo, std::string("h_Enventanada"));
            cortes.push_back(ValoresDe(im));
        }
        QCOMPARE(cortes[0], cortes[1]);
        QCOMPARE(cortes[0].front(), 20010.25);
        QCOMPARE(cortes[0].back(), 59049.25);
        QVERIFY(e_->ui.mensajes.empty());

        // Escape gives the drag up: nothing is cut.
        CBrimarView& v = Ajustar(QSize(500, 450));
        e_->ui.dialogos.push_back(guion);
        e_->Ejecutar({kEnventanar});
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(&v, &escape);
        QCOMPARE(v.NombreHerramienta(), QString());
        Arrastrar(v, QPoint(2, 2), QPoint(10, 10));
        QCOMPARE(v.Documento().Imagen().Filas(), 40L);
        QVERIFY(e_->ui.mensajes.empty());

        // A file as input: 61245 when accepting, and the dialog stays.
        e_->ui.ficherosAbrir = {ruta};
        bool abierto = false;
        e_->ui.dialogos.push_back([&](QDialog& d) {
            Pulsar(d, "entrada0_seleccionar");
            Pulsar(d, "campo_seleccion_1");
            abierto = !Aceptar(d);
            return false;
        });
        e_->Ejecutar({kEnventanar});
        QVERIFY(abierto);
        QCOMPARE(e_->ui.Ids(), std::vector<int>{msg::kEnventanarRaton});
        QCOMPARE(v.NombreHerramienta(), QString());
    }

    // The figures in their dialog; a click on the point cloud writes the
    // two band values under it in the main window's status bar.
    void regresionClicEnLaNube() {
        const std::string x = entorno_.Imagen("x", 2, 2, "byte", {10, 20, 30, 40});
        const std::string y = entorno_.Imagen("y", 2, 2, "byte", {23, 43, 63, 83});
        e_->Ventana(x);
        e_->ui.ficherosAbrir = {x, y};
        e_->ui.dialogos.push_back(Pulsando({"entrada0_seleccionar", "entrada1_seleccionar"}));
        QStringList figuras;
        e_->ui.dialogos.push_back([&](QDialog& d) {
            for (int k = 0; k < 7; ++k) figuras << Texto(d, QStringLiteral("valor_%1").arg(k));
            return Aceptar(d);
        });
        e_->Ejecutar({kRegresion});
        QVERIFY(e_->ui.mensajes.empty());
        QVERIFY(e_->ui.textos.empty());
        // y = 2x + 3 over the four pixels.
        QCOMPARE(figuras, (QStringList{"1", "2", "3", "1", "4", "x", "y"}));
        auto* grafico = Activa<CVentanaGrafico>(e_->marco);
        QVERIFY(grafico);
        CLienzoGrafico& lienzo = grafico->Lienzo();
        for (auto [vx, vy] : {std::pair{20.0, 43.0}, std::pair{37.5, 70.0}}) {
            const auto p = lienzo.Dibujo().marco.APixel(vx, vy);
            QMouseEvent e(QEvent::MouseButtonPress, QPointF(p[0], p[1]), lienzo.mapToGlobal(QPointF(p[0], p[1])),
                          Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&lienzo, &e);
            QCOMPARE(e_->marco.TextoPanel(0),
                     QStringLiteral("x = %1 ; y = %2").arg(vx, 0, 'f', 2).arg(vy, 0, 'f', 2));
        }
    }

    // A continuous image: the six figures in "Mostrar Estadísticas". A
    // classified one: the window shows the on-screen text (two tabs before
    // the class name, two decimals) and saves the report (one tab, six
    // decimals), each class's minimum starting at the first source pixel.
    void estadisticasDialogoYPestanas() {
        e_->Ventana(entorno_.Imagen("s", 1, 2, "byte", {2, 4}));
        QStringList figuras;
        QString titulo;
        e_->ui.dialogos.push_back(Pulsando({"entrada0_activa"}));
        e_->ui.dialogos.push_back([&](QDialog& d) {
            titulo = d.windowTitle();
            for (int k = 0; k < 6; ++k) figuras << Texto(d, QStringLiteral("valor_%1").arg(k));
            return Aceptar(d);
        });
        e_->Ejecutar({kEstadisticas});
        QCOMPARE(titulo, QStringLiteral("Mostrar Estadísticas"));
        QCOMPARE(figuras, (QStringList{"3", "4", "2", "1", "1", "2"}));
        QVERIFY(e_->ui.textos.empty());
        QVERIFY(e_->ui.mensajes.empty());

        const std::string k = entorno_.Imagen("k", 1, 3, "byte", {1, 1, 2});
        QVERIFY(EscribirLeyenda(k, {{"agua", 1}, {"bosque", 2}}));
        const std::string o = entorno_.Imagen("o", 1, 3, "byte", {50, 60, 90});
        e_->ui.ficherosAbrir = {k, o};
        e_->ui.dialogos.push_back(Pulsando({"entrada0_fichero", "entrada1_seleccionar", "entrada2_seleccionar"}));
        e_->Ejecutar({kEstadisticas});
        QVERIFY(e_->ui.mensajes.empty());
        auto* informe = Activa<CVentanaInforme>(e_->marco);
        QVERIFY(informe);
        QCOMPARE(informe->windowTitle(), QStringLiteral("Información de las estadísticas"));
        for (const char* linea : {"\tNombre de la clase\t\tagua\r\n", "\tMínimo\t\t\t50.00\r\n", "\tMedia\t\t\t55.0000\r\n",
                                  "\tDesviación Típica\t\t\t5.0000\r\n"})
            QVERIFY2(informe->Texto().find(linea) != std::string::npos, linea);
        e_->ui.ficherosGuardar = {entorno_.Ruta("estadisticas")};
        QVERIFY(informe->GuardarComo());
        const std::string esperado =
            "\n\nResumen de las estadísticas de las siguientes imágenes clasificadas:\n\n"
            "\tImagen clasificada:\n\t\tk\n\tImagen original:\n\t\to\n\n"
            "Clase 0:\n\tND asociado\t\t1\n\tNombre de la clase\tagua\n\tMínimo\t\t\t50.000000\n"
            "\tMáximo\t\t\t60.000000\n\tTotal\t\t\t2.000000\n\tMedia\t\t\t55.000000\n\tRango\t\t\t10.000000\n"
            "\tDesviación Típica\t5.000000\n\n"
            "Clase 1:\n\tND asociado\t\t2\n\tNombre de la clase\tbosque\n\tMínimo\t\t\t50.000000\n"
            "\tMáximo\t\t\t90.000000\n\tTotal\t\t\t1.000000\n\tMedia\t\t\t90.000000\n\tRango\t\t\t40.000000\n"
            "\tDesviación Típica\t0.000000\n\n";
        QCOMPARE(LeerFichero(entorno_.Ruta("estadisticas.txt")), Utf8ACp1252(esperado));
    }
};

QTEST_MAIN(HerramientasImagenTest)
#include "HerramientasImagenTest.moc"
