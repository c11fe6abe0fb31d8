// Workspace commands: the histogram (its classes for every data type, its
// window), the image information, the exports, "Crear paleta" and the
// legend window of a classified image.
#include <QApplication>
#include <QLabel>
#include <QSpinBox>
#include <cmath>

#include "Entorno.h"
#include "dialogs/CHistogramaDlg.h"
#include "image/Leyenda.h"
#include "image/Paleta.h"

using namespace prueba;

namespace {

enum Comando { kHistograma = 32862, kInformacion = 32771, kAscii = 32773, kBmp = 32878, kCrearPaleta = 32879, kLeyenda = 32822 };

// Non-empty classes as "class:count ...".
QString Clases(const Histograma& h) {
    QStringList r;
    for (int k = 0; k < 256; ++k)
        if (h.cuentas[k]) r << QStringLiteral("%1:%2").arg(k).arg(h.cuentas[k]);
    return r.join(' ');
}

CHistogramaDlg* VentanaHistograma() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* h = dynamic_cast<CHistogramaDlg*>(w)) return h;
    return nullptr;
}

}  // namespace

class ComandosEspacioTest : public QObject {
    Q_OBJECT
    Entorno entorno_;
    std::unique_ptr<Escritorio> e_;

    CBrimarDoc& Ventana(const std::string& nombre, long filas, long columnas, const char* tipo,
                        const std::vector<double>& valores) {
        return e_->Ventana(entorno_.Imagen(nombre, filas, columnas, tipo, valores));
    }
    void Ejecutar(int id) { e_->marco.EjecutarComando(id); }

private slots:
    void init() { e_ = std::make_unique<Escritorio>(); }
    void cleanup() { e_.reset(); }

    // Byte images by level; the other types over 256 classes between their
    // minimum and maximum, the maximum in the last; population deviation.
    void histogramaPorTipoDeDato_data() {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("valores");
        QTest::addColumn<QString>("clases");
        QTest::addColumn<double>("media");
        QTest::addColumn<double>("desviacion");
        QTest::newRow("byte") << "byte" << "0 0 5 255" << "0:2 5:1 255:1" << 65.0 << std::sqrt(12037.5);
        QTest::newRow("integer") << "integer" << "0 65535 65535 32768" << "0:1 128:1 255:2" << 40959.5 << 27169.338016411075;
        QTest::newRow("double negativo") << "double" << "-1 0 1" << "0:1 128:1 255:1" << 0.0 << std::sqrt(2.0 / 3.0);
        QTest::newRow("real constante") << "real" << "2.5 2.5 2.5" << "0:3" << 2.5 << 0.0;
    }
    void histogramaPorTipoDeDato() {
        QFETCH(QString, tipo);
        QFETCH(QString, valores);
        QFETCH(QString, clases);
        QFETCH(double, media);
        QFETCH(double, desviacion);
        std::vector<double> v;
        for (const QString& x : valores.split(' ')) v.push_back(x.toDouble());
        orvela::CImagen im;
        QVERIFY(!im.Cargar(entorno_.Imagen("h", 1, static_cast<long>(v.size()), qPrintable(tipo), v)));
        const Histograma h = CalcularHistograma(im);
        QCOMPARE(Clases(h), clases);
        QCOMPARE(h.pixeles, v.size());
        QCOMPARE(h.media, media);
        QVERIFY(std::abs(h.desviacion - desviacion) < 1e-9 * (1 + desviacion));
    }

    // Its checks, then a window of its own that does not block the others.
    void ventanaDeHistograma() {
        Ejecutar(kHistograma);
        e_->marco.NuevaVentana();
        Ejecutar(kHistograma);
        CBrimarDoc& doc = Ventana("hist", 1, 3, "byte", {7, 7, 9});
        doc.Imagen().composicionColor = true;
        Ejecutar(kHistograma);
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{61216, 61264, 61265}));
        QVERIFY(!VentanaHistograma());
        doc.Imagen().composicionColor = false;
        Ejecutar(kHistograma);
        CHistogramaDlg* h = VentanaHistograma();
        QVERIFY(h && !h->isModal() && h->isVisible());
        QVERIFY(h->windowTitle().contains(QStringLiteral("hist")));
        QCOMPARE(Clases(h->Datos()), QStringLiteral("7:2 9:1"));
        h->close();  // deleted on close
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!VentanaHistograma());
    }

    void informacionDeLaCabecera() {
        orvela::CImagen im;
        const std::string stem = entorno_.Ruta("geo");
        QVERIFY(!im.Iniciar(stem + ".ozm", "", "geo", 2, 3, "integer", 40, 0, "UTM-30N", "m",
                            orvela::Georreferencia{100, 200, 160, 220, orvela::SinDato, 30, 1}));
        im.pixeles.Como<uint16_t>()[4] = 65535;
        QVERIFY(!im.Guardar(stem, 1));
        e_->Ventana(stem + ".ozm");
        QStringList vistos;
        const QStringList nombres = QStringLiteral("titulo tipo filas columnas sistema x_minima y_maxima error_posicion "
                                                   "resolucion minimo maximo").split(' ');
        e_->ui.dialogos.push_back([&](QDialog& d) {
            for (const QString& n : nombres) {
                auto* l = d.findChild<QLabel*>(QStringLiteral("valor_") + n);
                vistos << (l ? l->text() : QStringLiteral("<no existe>"));
            }
            return true;
        });
        Ejecutar(kInformacion);
        QCOMPARE(e_->ui.titulosDialogos, (std::vector<QString>{QStringLiteral("Información de la imagen")}));
        QCOMPARE(vistos, QStringLiteral("geo integer 2 3 UTM-30N 100 220 desconocido 30 40 65535").split(' '));
        e_->marco.NuevaVentana();
        Ejecutar(kInformacion);
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{61264}));
    }

    // A text file with the format's extension added (a composite refused,
    // a cancelled chooser doing nothing); a picture, composites too.
    void exportar() {
        Ejecutar(kBmp);
        CBrimarDoc& doc = Ventana("asc", 2, 2, "byte", {1, 2, 3, 4});
        e_->ui.ficherosGuardar = {std::nullopt, entorno_.Ruta("muestras"), entorno_.Ruta("dibujo"),
                                entorno_.Ruta("no-existe/dibujo.bmp")};
        Ejecutar(kAscii);
        Ejecutar(kAscii);
        doc.Imagen().composicionColor = true;
        Ejecutar(kAscii);
        Ejecutar(kBmp);
        Ejecutar(kBmp);
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{61216, 61265, 61262}));
        QCOMPARE(LeerFichero(entorno_.Ruta("muestras.txt")), std::string("1 2\n3 4\n"));
        QCOMPARE(LeerFichero(entorno_.Ruta("dibujo.bmp")).substr(0, 2), std::string("BM"));
    }

    // Without a name 61220 and the dialog stays; so it does where the file
    // cannot be written (61260) and with levels that the checks refuse;
    // accepted, the palette is written with ".pal" added.
    void crearPaleta() {
        auto niveles = [](std::initializer_list<std::pair<int, int>> puestos) {
            std::array<int, 16> n;
            n.fill(-1);
            for (auto [color, nivel] : puestos) n[color] = nivel;
            return n;
        };
        auto poner = [](QDialog& d, std::array<int, 16> n) {
            for (int i = 0; i < 16; ++i) d.findChild<QSpinBox*>(QStringLiteral("nivel%1").arg(i))->setValue(n[i]);
        };
        const auto buenos = niveles({{3, 10}, {7, 256}});
        QString nombre;
        std::vector<bool> aceptados;
        e_->ui.ficherosGuardar = {entorno_.Ruta("no/existe/p.pal"), entorno_.Ruta("creada")};
        e_->ui.dialogos.push_back([&](QDialog& d) {
            aceptados.push_back(Aceptar(d));
            Pulsar(d, "guardarComo");
            for (const auto& n : {buenos, niveles({{0, 256}}), niveles({{0, 256}, {1, 256}}), niveles({{2, 5}}), buenos}) {
                if (aceptados.size() == 2) {
                    Pulsar(d, "guardarComo");
                    nombre = Texto(d, "nombre");
                }
                poner(d, n);
                aceptados.push_back(Aceptar(d));
            }
            return aceptados.back();
        });
        Ejecutar(kCrearPaleta);
        QCOMPARE(e_->ui.titulosDialogos, std::vector<QString>{QStringLiteral("Crear paleta")});
        QCOMPARE(e_->ui.mensajes[0], orvela::Mensaje::Tabla(61220, "ningun archivo (*.pal)", "un archivo"));
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{61220, 61260, 61236, 61235, 61237}));
        QCOMPARE(aceptados, (std::vector<bool>{false, false, false, false, false, true}));
        QCOMPARE(nombre, QStringLiteral("creada"));
        QCOMPARE(LeerFichero(entorno_.Ruta("creada.pal")), orvela::TextoPaletaCreada(buenos));
    }

    void leyendaMensajes() {
        Ejecutar(kLeyenda);
        e_->marco.NuevaVentana();
        Ejecutar(kLeyenda);
        Ventana("sinleyenda", 2, 2, "byte", {1});
        Ejecutar(kLeyenda);
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{61216, 61216, 61241}));  // an empty window: as with none
        QVERIFY(e_->ui.titulosDialogos.empty());
    }

    // Class i at (10, 10 + 25 i) for the first nine, the tenth heading the
    // second column; swatches 25 x 10 in the palette's colour of its level,
    // on grey. An empty legend is an empty grey window.
    void leyendaDibujada() {
        std::string texto = "10\n";
        for (int i = 0; i < 10; ++i) texto += "clase" + std::to_string(i) + "\nND Clase:" + std::to_string(20 * i) + "\n\n";
        std::ofstream(entorno_.Ruta("clasifLeyenda.txt"), std::ios::binary) << texto;
        std::ofstream(entorno_.Ruta("vaciaLeyenda.txt"), std::ios::binary) << "0\n";
        QImage dibujo;
        auto grabar = [&](QDialog& d) {
            dibujo = d.grab().toImage();
            return false;
        };
        e_->ui.dialogos = {grabar};
        Ventana("clasif", 4, 4, "byte", {0, 10, 20});
        Ejecutar(kLeyenda);
        QCOMPARE(e_->ui.titulosDialogos, std::vector<QString>{QString::fromUtf8("Mostrar Leyenda De Clasificación")});
        const QColor gris(193, 193, 193);
        QCOMPARE(QColor(dibujo.pixel(3, 3)), gris);
        for (int i = 0; i < 10; ++i) {
            const QPoint o = i < 9 ? QPoint(10, 10 + 25 * i) : QPoint(155, 10);
            const QColor c(20 * i, 20 * i, 20 * i);
            QCOMPARE(QColor(dibujo.pixel(o)), c);
            QCOMPARE(QColor(dibujo.pixel(o + QPoint(24, 9))), c);
            QCOMPARE(QColor(dibujo.pixel(o + QPoint(25, 4))), gris);
            QCOMPARE(QColor(dibujo.pixel(o + QPoint(12, 10))), gris);
        }
        QCOMPARE(QColor(dibujo.pixel(155, 35)), gris);  // no eleventh class

        e_->ui.dialogos = {grabar};
        Ventana("vacia", 2, 2, "byte", {1});
        Ejecutar(kLeyenda);
        QCOMPARE(QColor(dibujo.pixel(12, 12)), gris);
        QCOMPARE(QColor(dibujo.pixel(160, 12)), gris);
        QVERIFY(e_->ui.mensajes.empty());
    }
};

QTEST_MAIN(ComandosEspacioTest)
#include "ComandosEspacioTest.moc"
