// Workspace commands: the histogram (its classes for every data type, its
// window), the image information, the exports, "Crear paleta" and the
// legend window of a classified image.
#include <QApplication>
#include <QLabel>
#include <QSpinBox>

#include "Entorno.h"
#include "dialogs/CHistogramaDlg.h"
#include "image/Leyenda.h"
#include "image/Paleta.h"

using namespace prueba;

namespace {

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
    // minimum and maximum, the maximum in the last, a constant all in 0.
    void histogramaPorTipoDeDato_data() {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QList<double>>("valores");
        QTest::addColumn<QString>("clases");
        QTest::newRow("byte") << "byte" << QList<double>{0, 0, 5, 255} << "0:2 5:1 255:1";
        QTest::newRow("integer") << "integer" << QList<double>{0, 65535, 65535, 32768} << "0:1 128:1 255:2";
        QTest::newRow("double negativo") << "double" << QList<double>{-1, 0, 1} << "0:1 128:1 255:1";
        QTest::newRow("real constante") << "real" << QList<double>{2.5, 2.5, 2.5} << "0:3";
    }
    void histogramaPorTipoDeDato() {
        QFETCH(QString, tipo);
        QFETCH(QList<double>, valores);
        QFETCH(QString, clases);
        Ventana(tipo.toStdString(), 1, valores.size(), qPrintable(tipo), {valores.begin(), valores.end()});
        Ejecutar(cmd::kHistograma);
        CHistogramaDlg* h = VentanaHistograma();
        QVERIFY(h && !h->isModal() && h->isVisible());  // a window of its own, not blocking the others
        QVERIFY(h->windowTitle().contains(tipo));
        QCOMPARE(Clases(h->Datos()), clases);
        const auto [minimo, maximo] = std::ranges::minmax(valores);
        QCOMPARE(h->Datos().anchoClase, tipo == QLatin1String("byte") ? 1.0 : (maximo - minimo) / 256);
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
        e_->ui.dialogos.push_back([&](QDialog& d) {
            for (const char* n : {"titulo", "tipo", "filas", "columnas", "sistema", "x_minima", "y_maxima",
                                  "error_posicion", "resolucion", "minimo", "maximo"}) {
                auto* l = d.findChild<QLabel*>(QStringLiteral("valor_") + QLatin1String(n));
                vistos << (l ? l->text() : QStringLiteral("<no existe>"));
            }
            return true;
        });
        Ejecutar(cmd::kInformacion);
        QCOMPARE(e_->ui.titulosDialogos, (std::vector<QString>{QStringLiteral("Información de la imagen")}));
        QCOMPARE(vistos, QStringLiteral("geo integer 2 3 UTM-30N 100 220 desconocido 30 40 65535").split(' '));
    }

    // The format's extension added to a bare name, a cancelled chooser
    // doing nothing; a composite exported as a picture.
    void exportar() {
        CBrimarDoc& doc = Ventana("asc", 2, 2, "byte", {1, 2, 3, 4});
        e_->ui.ficherosGuardar = {std::nullopt, entorno_.Ruta("muestras"), entorno_.Ruta("dibujo"),
                                  entorno_.Ruta("no-existe/dibujo.bmp")};
        Ejecutar(cmd::kExportarAscii);
        Ejecutar(cmd::kExportarAscii);
        doc.Imagen().composicionColor = true;
        Ejecutar(cmd::kExportarBmp);
        Ejecutar(cmd::kExportarBmp);
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{61262}));
        QCOMPARE(LeerFichero(entorno_.Ruta("muestras.txt")), std::string("1 2\n3 4\n"));
        QCOMPARE(LeerFichero(entorno_.Ruta("dibujo.bmp")).substr(0, 2), std::string("BM"));
    }

    // Without a name 61220 and the dialog stays; so it does where the file
    // cannot be written (61260) and with levels that the checks refuse;
    // accepted, the palette is written, ".pal" added to a bare name.
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
        Ejecutar(cmd::kCrearPaleta);
        QCOMPARE(e_->ui.titulosDialogos, std::vector<QString>{QStringLiteral("Crear paleta")});
        QCOMPARE(e_->ui.mensajes[0], orvela::Mensaje::Tabla(61220, "ningun archivo (*.pal)", "un archivo"));
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{61220, 61260, 61236, 61235, 61237}));
        QCOMPARE(aceptados, (std::vector<bool>{false, false, false, false, false, true}));
        QCOMPARE(nombre, QStringLiteral("creada"));
        QCOMPARE(LeerFichero(entorno_.Ruta("creada.pal")), orvela::TextoPaletaCreada(buenos));

        // A name with an extension keeps it; what was there is replaced.
        std::ofstream(entorno_.Ruta("vieja.txt")) << "vieja";
        e_->ui.ficherosGuardar = {entorno_.Ruta("vieja.txt")};
        e_->ui.dialogos.push_back([&](QDialog& d) {
            Pulsar(d, "guardarComo");
            poner(d, buenos);
            return Aceptar(d);
        });
        Ejecutar(cmd::kCrearPaleta);
        QCOMPARE(LeerFichero(entorno_.Ruta("vieja.txt")), orvela::TextoPaletaCreada(buenos));
        QCOMPARE(e_->marco.TextoPanel(0), QStringLiteral("Guardado: vieja.txt"));
    }

    // Class i at (10, 10 + 25 i) for the first nine, the tenth heading the
    // second column; swatches 25 x 10 on grey. Grey levels 20 apart cannot
    // be told apart: the classes take the set of distinct colours, in
    // legend order. An empty legend is an empty grey window.
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
        Ejecutar(cmd::kMostrarLeyenda);
        QCOMPARE(e_->ui.titulosDialogos, std::vector<QString>{QString::fromUtf8("Mostrar Leyenda De Clasificación")});
        const QColor gris(193, 193, 193);
        QCOMPARE(QColor(dibujo.pixel(3, 3)), gris);
        for (int i = 0; i < 10; ++i) {
            const QPoint o = i < 9 ? QPoint(10, 10 + 25 * i) : QPoint(155, 10);
            const auto k = orvela::ColorClaseDistinto(static_cast<std::size_t>(i));
            const QColor c(k[0], k[1], k[2]);
            QCOMPARE(QColor(dibujo.pixel(o)), c);
            QCOMPARE(QColor(dibujo.pixel(o + QPoint(24, 9))), c);
            QCOMPARE(QColor(dibujo.pixel(o + QPoint(25, 4))), gris);
            QCOMPARE(QColor(dibujo.pixel(o + QPoint(12, 10))), gris);
        }
        QCOMPARE(QColor(dibujo.pixel(155, 35)), gris);  // no eleventh class

        e_->ui.dialogos = {grabar};
        Ventana("vacia", 2, 2, "byte", {1});
        Ejecutar(cmd::kMostrarLeyenda);
        QCOMPARE(QColor(dibujo.pixel(12, 12)), gris);
        QCOMPARE(QColor(dibujo.pixel(160, 12)), gris);
        QVERIFY(e_->ui.mensajes.empty());
    }
};

QTEST_MAIN(ComandosEspacioTest)
#include "ComandosEspacioTest.moc"
