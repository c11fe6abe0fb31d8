// "Crear paleta" and the legend window of a classified image.
#include <QLineEdit>
#include <QSpinBox>
#include <QtTest>

#include "Entorno.h"
#include "InterfazGuion.h"
#include "app/CChildFrame.h"
#include "app/CMainFrame.h"
#include "dialogs/CMostrarLeyendaDlg.h"
#include "doc/CBrimarDoc.h"
#include "doc/ComandosDocumento.h"

using namespace prueba;
using orvela::Mensaje;

namespace {

void PonerNiveles(QDialog& d, const std::array<int, 16>& n) {
    for (int i = 0; i < 16; ++i) d.findChild<QSpinBox*>(QStringLiteral("nivel%1").arg(i))->setValue(n[i]);
}

std::array<int, 16> Todos(int v) {
    std::array<int, 16> n;
    n.fill(v);
    return n;
}

// The checks of the palette levels are there (not a placeholder).
bool HayComprobaciones() { return orvela::ComprobarNivelesPaleta(Todos(-1)).has_value(); }

void EscribirTexto(const std::string& ruta, const std::string& texto) { std::ofstream(ruta, std::ios::binary) << texto; }

}  // namespace

class PaletaLeyendaTest : public QObject {
    Q_OBJECT
    Entorno* entorno_ = nullptr;

private slots:
    void initTestCase() { entorno_ = new Entorno; }
    void cleanupTestCase() { delete entorno_; }

    void crearPaletaSinNombre() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        bool aceptado = true;
        QString nombre;
        const std::string ruta = entorno_->Ruta("mia");
        ui.dialogos.push_back([&](QDialog& d) {
            aceptado = Aceptar(d);  // no name: 61220, the dialog stays
            ui.ficherosGuardar.push_back(ruta);
            Pulsar(d, "guardarComo");
            nombre = d.findChild<QLineEdit*>(QStringLiteral("nombre"))->text();
            return false;
        });
        marco.EjecutarComando(32879);
        QCOMPARE(ui.titulosDialogos, std::vector<QString>{QStringLiteral("Crear paleta")});
        QVERIFY(!aceptado);
        QCOMPARE(ui.mensajes.size(), std::size_t{1});
        QVERIFY(ui.mensajes[0] == Mensaje::Tabla(61220, "ningun archivo (*.pal)", "un archivo"));
        QCOMPARE(nombre, QStringLiteral("mia"));
        QVERIFY(!Existe(ruta + ".pal"));  // cancelled: nothing written
    }

    void crearPaletaComprobacionesYFichero() {
        if (!HayComprobaciones()) QSKIP("las comprobaciones de paletas no están en este árbol");
        InterfazGuion ui;
        CMainFrame marco(&ui);
        const std::string ruta = entorno_->Ruta("creada");
        std::array<int, 16> buenos = Todos(-1);
        buenos[3] = 10;
        buenos[7] = 256;
        bool aceptado = false;
        std::vector<bool> rechazos;
        ui.dialogos.push_back([&](QDialog& d) {
            ui.ficherosGuardar.push_back(ruta);
            Pulsar(d, "guardarComo");
            auto probar = [&](std::array<int, 16> n) {
                PonerNiveles(d, n);
                rechazos.push_back(!Aceptar(d));
            };
            std::array<int, 16> n = Todos(-1);
            n[0] = 256;
            probar(n);  // only the default colour: 61236
            n[1] = 256;
            probar(n);  // two colours at 256: 61235
            n = Todos(-1);
            n[2] = 5;
            probar(n);  // no default colour: 61237
            PonerNiveles(d, buenos);
            aceptado = Aceptar(d);
            return aceptado;
        });
        marco.EjecutarComando(32879);
        QCOMPARE(ui.Ids(), (std::vector<int>{61236, 61235, 61237}));
        QCOMPARE(rechazos, std::vector<bool>(3, true));
        QVERIFY(aceptado);
        // ".pal" was added to a name without extension.
        const std::string texto = LeerFichero(ruta + ".pal");
        QCOMPARE(texto, orvela::TextoPaletaCreada(buenos));
        QVERIFY(texto.find("\n10 255 255 0\n") != std::string::npos);  // colour 3 at level 10
        QVERIFY(texto.rfind("0 0 255 255\n", 0) == 0);                   // colour 7 everywhere else
    }

    void crearPaletaSobreOtra() {
        if (!HayComprobaciones()) QSKIP("las comprobaciones de paletas no están en este árbol");
        InterfazGuion ui;
        CMainFrame marco(&ui);
        // A name with an extension keeps it; what was there is replaced whole.
        const std::string ruta = entorno_->Ruta("vieja.txt");
        EscribirTexto(ruta, "vieja");
        std::array<int, 16> n = Todos(-1);
        n[0] = 0;
        n[15] = 256;
        ui.dialogos.push_back([&](QDialog& d) {
            ui.ficherosGuardar.push_back(ruta);
            Pulsar(d, "guardarComo");
            PonerNiveles(d, n);
            return Aceptar(d);
        });
        marco.EjecutarComando(32879);
        QVERIFY(ui.mensajes.empty());
        QCOMPARE(LeerFichero(ruta), orvela::TextoPaletaCreada(n));

        // A folder that does not exist: reported, the dialog stays open.
        bool aceptado = true;
        ui.dialogos.push_back([&](QDialog& d) {
            ui.ficherosGuardar.push_back(entorno_->Ruta("no/existe/p.pal"));
            Pulsar(d, "guardarComo");
            PonerNiveles(d, n);
            aceptado = Aceptar(d);
            return false;
        });
        marco.EjecutarComando(32879);
        QVERIFY(!aceptado);
        QCOMPARE(ui.Ids(), std::vector<int>{61260});
    }

    void leyendaMensajes() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        marco.EjecutarComando(32822);  // no window
        CChildFrame* v = marco.NuevaVentana();
        marco.EjecutarComando(32822);  // no image
        const std::string stem = entorno_->Ruta("sinleyenda");
        EscribirImagen(stem, 2, 2, "byte", {1});
        QVERIFY(AbrirImagen(v->Documento(), stem + ".ozm", 2, {}, ui));
        ui.mensajes.clear();
        marco.EjecutarComando(32822);  // no legend file
        QCOMPARE(ui.Ids(), std::vector<int>{61241});
        QVERIFY(ui.titulosDialogos.empty());
        // The shortcut reaches the same command.
        QCOMPARE(marco.Accion(32822)->shortcut(), QKeySequence(QStringLiteral("Ctrl+L")));
    }

    void leyendaDibujada() {
        const std::string stem = entorno_->Ruta("clasif");
        EscribirImagen(stem, 4, 4, "byte", {0, 10, 20});
        std::string texto = "10\n";
        for (int i = 0; i < 10; ++i) texto += "clase" + std::to_string(i) + "\nND Clase:" + std::to_string(20 * i) + "\n\n";
        EscribirTexto(entorno_->Ruta("clasifLeyenda.txt"), texto);
        if (!orvela::LeerLeyendaVentana(stem + ".ozm")) QSKIP("la lectura de leyendas no está en este árbol");
        if (!entorno_->HayPaletas()) QSKIP("la lectura de paletas no está en este árbol");

        InterfazGuion ui;
        CMainFrame marco(&ui);
        CChildFrame* v = marco.NuevaVentana();
        QVERIFY(AbrirImagen(v->Documento(), stem + ".ozm", 2, {}, ui));
        QImage dibujo;
        ui.dialogos.push_back([&](QDialog& d) {
            dibujo = d.grab().toImage();
            return false;
        });
        marco.EjecutarComando(32822);
        QVERIFY(ui.mensajes.empty());
        QCOMPARE(ui.titulosDialogos, std::vector<QString>{QString::fromUtf8("Mostrar Leyenda De Clasificación")});
        const QColor gris(193, 193, 193);
        QCOMPARE(QColor(dibujo.pixel(3, 3)), gris);
        // Class i at (10, 10 + 25 i) for the first nine; the tenth heads the
        // second column. Swatches 25 x 10 in the grey palette's colour of ND.
        for (int i = 0; i < 10; ++i) {
            const QPoint o = i < 9 ? QPoint(10, 10 + 25 * i) : QPoint(155, 10);
            const QColor c(20 * i, 20 * i, 20 * i);
            QCOMPARE(QColor(dibujo.pixel(o)), c);
            QCOMPARE(QColor(dibujo.pixel(o + QPoint(24, 9))), c);
            QCOMPARE(QColor(dibujo.pixel(o + QPoint(25, 4))), gris);
            QCOMPARE(QColor(dibujo.pixel(o + QPoint(12, 10))), gris);
        }
        QCOMPARE(QColor(dibujo.pixel(155, 35)), gris);  // no eleventh class
    }

    void leyendaVacia() {
        const std::string stem = entorno_->Ruta("vacia");
        EscribirImagen(stem, 2, 2, "byte", {1});
        EscribirTexto(entorno_->Ruta("vaciaLeyenda.txt"), "0\n");
        if (!orvela::LeerLeyendaVentana(stem + ".ozm")) QSKIP("la lectura de leyendas no está en este árbol");
        InterfazGuion ui;
        CMainFrame marco(&ui);
        CChildFrame* v = marco.NuevaVentana();
        QVERIFY(AbrirImagen(v->Documento(), stem + ".ozm", 2, {}, ui));
        QImage dibujo;
        ui.dialogos.push_back([&](QDialog& d) {
            dibujo = d.grab().toImage();
            return false;
        });
        marco.EjecutarComando(32822);
        // An empty grey window.
        QCOMPARE(QColor(dibujo.pixel(12, 12)), QColor(193, 193, 193));
        QCOMPARE(QColor(dibujo.pixel(160, 12)), QColor(193, 193, 193));
    }
};

QTEST_MAIN(PaletaLeyendaTest)
#include "PaletaLeyendaTest.moc"
