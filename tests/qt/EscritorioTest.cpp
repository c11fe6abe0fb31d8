// The desktop as a student meets it: help opened from a dialog while the
// help window is active, unsaved results never lost without a question,
// Qt's own Spanish texts, the folder and images remembered, a classified
// image in distinct colours, windows and status bar that fit a small
// screen, the "Ventana" menu, another palette for an open image, and the
// status-bar line after every file written.
#include <QDialogButtonBox>
#include <QFile>
#include <QLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTranslator>

#include "Entorno.h"
#include "app/Arranque.h"
#include "dialogs/CAyudaDlg.h"
#include "dialogs/CMostrarLeyendaDlg.h"
#include "dialogs/ComandosEspacio.h"
#include "dialogs/CursoDialogo.h"
#include "dialogs/Ficheros.h"
#include "image/Leyenda.h"

using namespace prueba;
using namespace orvela;

namespace {

CAyudaDlg* VentanaAyuda() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* a = qobject_cast<CAyudaDlg*>(w)) return a;
    for (QWidget* w : QApplication::allWidgets())
        if (auto* a = qobject_cast<CAyudaDlg*>(w)) return a;
    return nullptr;
}

// The chain of parents above a widget, at most 20 long (a cycle would make
// it endless).
std::vector<QWidget*> Ascendientes(QWidget* w) {
    std::vector<QWidget*> r;
    for (w = w ? w->parentWidget() : nullptr; w && r.size() < 20; w = w->parentWidget()) r.push_back(w);
    return r;
}

void Eliminados() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

std::vector<QMdiSubWindow*> Ventanas(CMainFrame& m) {
    const auto l = m.Area()->subWindowList();
    return {l.begin(), l.end()};
}

QColor EnTabla(const QImage& indices, int entrada) { return QColor(indices.colorTable().value(entrada)); }

}  // namespace

class EscritorioTest : public QObject {
    Q_OBJECT
    Entorno entorno_;

private slots:
    void initTestCase() { QApplication::setQuitOnLastWindowClosed(false); }

    // The help window is active, an operation's dialog opens and its
    // "Ayuda" is pressed: the dialog hangs from the main window, the help
    // window from the main window, and neither becomes the other's parent.
    // A modal dialog lends the help window its own parentage while it is
    // open, and gives it back to the main window when it ends.
    void ayudaDesdeUnDialogoConLaAyudaActiva() {
        Escritorio e;
        e.marco.show();
        e.Ventana(entorno_.Imagen("ay", 2, 2, "byte", {1}));
        e.marco.EjecutarComando(cmd::kContenidos);
        CAyudaDlg* ayuda = VentanaAyuda();
        QVERIFY(ayuda);
        QCOMPARE(ayuda->parentWidget(), &e.marco);
        ayuda->activateWindow();
        QApplication::setActiveWindow(ayuda);
        QWidget* padreDialogo = nullptr;
        e.ui.dialogos.push_back([&](QDialog& d) {
            padreDialogo = d.parentWidget();
            Pulsar(d, "ayuda");
            return false;
        });
        EjecutarOperacion(*BuscarPorOrden("convertir"), e.marco, e.ui);
        QCOMPARE(padreDialogo, static_cast<QWidget*>(&e.marco));
        QCOMPARE(VentanaAyuda(), ayuda);
        QCOMPARE(Ascendientes(ayuda), std::vector<QWidget*>{&e.marco});
        QCOMPARE(ayuda->PaginaActual(), QStringLiteral("convertir"));

        // A modal dialog of the main window takes it while open.
        QDialog modal(&e.marco);
        modal.setModal(true);
        MostrarAyuda("zoom", &modal);
        QCOMPARE(Ascendientes(ayuda), (std::vector<QWidget*>{&modal, &e.marco}));
        modal.done(QDialog::Rejected);
        QCOMPARE(Ascendientes(ayuda), std::vector<QWidget*>{&e.marco});

        // A modal dialog hanging from the help window never takes it.
        QDialog colgado(ayuda);
        colgado.setModal(true);
        MostrarAyuda("pixel", &colgado);
        QCOMPARE(Ascendientes(ayuda), std::vector<QWidget*>{&e.marco});
        QCOMPARE(Ascendientes(&colgado), (std::vector<QWidget*>{ayuda, &e.marco}));
        QCOMPARE(ayuda->PaginaActual(), QStringLiteral("pixel"));
        ayuda->setParent(nullptr);  // it outlives this main window
    }

    // A result put into a window is marked with an asterisk in the window's
    // and the main window's captions until it is saved; an image loaded
    // from a file is not.
    void asteriscoHastaGuardar() {
        Escritorio e;
        CBrimarDoc& doc = e.Ventana(entorno_.Imagen("ast", 1, 2, "byte", {1, 2}));
        QCOMPARE(e.marco.VentanaActiva()->windowTitle(), QStringLiteral("ast"));
        QCOMPARE(e.marco.windowTitle(), QStringLiteral("Orvela - ast"));
        QVERIFY(!doc.Modificado());
        CImagen copia;
        copia.CopiarCabecera(doc.Imagen());
        copia.pixeles = doc.Imagen().pixeles.Copia();
        doc.PonerImagen(std::move(copia));
        QCOMPARE(e.marco.VentanaActiva()->windowTitle(), QStringLiteral("TMP*"));
        QCOMPARE(e.marco.windowTitle(), QStringLiteral("Orvela - TMP*"));
        e.ui.ficherosGuardar = {entorno_.Ruta("astGuardada.ozm")};
        e.Ejecutar({cmd::kGuardarComo});
        QCOMPARE(e.marco.VentanaActiva()->windowTitle(), QStringLiteral("astGuardada"));
        QCOMPARE(e.marco.windowTitle(), QStringLiteral("Orvela - astGuardada"));
        QCOMPARE(e.marco.TextoPanel(0), QStringLiteral("Guardado: astGuardada.ozm"));
        QVERIFY(e.ui.preguntas.empty());
    }

    // Each way of discarding a window's unsaved result -- closing the
    // window, leaving the program, loading another image into it -- asks
    // first; "Guardar" saves it under a new name (a cancelled name cancels),
    // "No guardar" goes on, "Cancelar" leaves everything as it was.
    void resultadoSinGuardar_data() {
        QTest::addColumn<QString>("camino");
        QTest::addColumn<int>("respuesta");
        QTest::addColumn<bool>("conNombre");
        for (const char* c : {"cerrar", "salir", "imagen"}) {
            QTest::addRow("%s guardar", c) << c << static_cast<int>(RespuestaGuardar::Guardar) << true;
            QTest::addRow("%s guardar sin nombre", c) << c << static_cast<int>(RespuestaGuardar::Guardar) << false;
            QTest::addRow("%s descartar", c) << c << static_cast<int>(RespuestaGuardar::Descartar) << true;
            QTest::addRow("%s cancelar", c) << c << static_cast<int>(RespuestaGuardar::Cancelar) << true;
        }
    }
    void resultadoSinGuardar() {
        QFETCH(QString, camino);
        QFETCH(int, respuesta);
        QFETCH(bool, conNombre);
        const RespuestaGuardar r = static_cast<RespuestaGuardar>(respuesta);
        const std::string guardado = entorno_.Ruta("guardado_" + camino.toStdString() + std::to_string(respuesta));
        QFile::remove(QString::fromStdString(guardado + ".ozm"));
        Escritorio e;
        e.marco.show();
        e.Ventana(entorno_.Imagen("limpia", 1, 1, "byte", {9}));  // nothing to ask about
        CBrimarDoc& doc = e.Ventana(entorno_.Imagen("origen", 1, 2, "byte", {3, 4}));
        QPointer<QMdiSubWindow> ventana = e.marco.VentanaActiva();
        CImagen resultado;
        resultado.CopiarCabecera(doc.Imagen());
        resultado.pixeles = doc.Imagen().pixeles.Copia();
        doc.PonerImagen(std::move(resultado));
        e.ui.respuestas = {r};
        e.ui.ficherosGuardar = {conNombre ? std::optional<std::string>(guardado) : std::nullopt};
        const std::string otra = entorno_.Imagen("otra", 1, 1, "byte", {7});
        if (camino == QLatin1String("cerrar")) {
            ventana->close();
        } else if (camino == QLatin1String("salir")) {
            e.Ejecutar({cmd::kSalir});
        } else {
            e.ui.ficherosAbrir = {otra};
            e.ui.dialogos.push_back(Pulsando({"seleccionar"}));
            e.Ejecutar({cmd::kImagen});
        }
        Eliminados();
        QCOMPARE(e.ui.preguntas, std::vector<QString>{QStringLiteral("TMP")});
        const bool guarda = r == RespuestaGuardar::Guardar && conNombre;
        const bool sigue = r == RespuestaGuardar::Descartar || guarda;
        QCOMPARE(Existe(guardado + ".ozm"), guarda);
        if (guarda) {
            CImagen leida;
            QVERIFY(!leida.Cargar(guardado + ".ozm"));
            QCOMPARE(ValoresDe(leida), (std::vector<double>{3, 4}));
        }
        if (camino == QLatin1String("cerrar")) {
            QCOMPARE(ventana.isNull(), sigue);
            QCOMPARE(Ventanas(e.marco).size(), sigue ? 1u : 2u);
        } else if (camino == QLatin1String("salir")) {
            QCOMPARE(e.marco.isVisible(), !sigue);
            QCOMPARE(Ventanas(e.marco).size(), 2u);
        } else {
            QVERIFY(!ventana.isNull());
            QCOMPARE(doc.Nombre(), sigue ? QStringLiteral("otra") : QStringLiteral("TMP"));
            QCOMPARE(ValoresDe(doc.Imagen()), (sigue ? std::vector<double>{7} : std::vector<double>{3, 4}));
        }
        if (!sigue) QCOMPARE(ventana->windowTitle(), QStringLiteral("TMP*"));
    }

    // Nothing unsaved: the window closes and the program ends without a
    // question.
    void sinResultadoNoSePregunta() {
        Escritorio e;
        e.marco.show();
        e.Ventana(entorno_.Imagen("q", 1, 1, "byte", {1}));
        e.Ventana();
        e.marco.VentanaActiva()->close();
        e.Ejecutar({cmd::kSalir});
        QVERIFY(e.ui.preguntas.empty());
        QVERIFY(!e.marco.isVisible());
    }

    // Qt's Spanish texts for the standard buttons and the file dialog.
    void traduccionesDeQt() {
        if (!QFile::exists(QStringLiteral("/usr/share/qt6/translations/qtbase_es.qm")))
            QSKIP("Qt's Spanish translations are not installed (qt6-translations-l10n)");
        QVERIFY(CargarTraducciones(*QCoreApplication::instance()));
        QDialogButtonBox botones(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Open);
        QCOMPARE(botones.button(QDialogButtonBox::Cancel)->text().remove(QLatin1Char('&')), QStringLiteral("Cancelar"));
        QCOMPARE(botones.button(QDialogButtonBox::Open)->text().remove(QLatin1Char('&')), QStringLiteral("Abrir"));
        QVERIFY(QCoreApplication::translate("QFileDialog", "Look in:") != QStringLiteral("Look in:"));
        QVERIFY(!CargarTraducciones(*QCoreApplication::instance(), QString::fromStdString(entorno_.Carpeta())));  // none there
    }

    // The folder of the last image opened or saved is where the file
    // choosers open, across sessions; the images opened last are listed in
    // "Fichero" (four at most, newest first) and open again from there, in
    // a new window when the active one shows an image; one that is gone is
    // reported and dropped from the list.
    void carpetaYFicherosRecientes() {
        QSettings(QStringLiteral("Orvela"), QStringLiteral("Orvela")).remove(QStringLiteral("FicherosRecientes"));
        QDir(QString::fromStdString(entorno_.Ruta("sub"))).mkpath(QStringLiteral("."));
        std::vector<std::string> rutas;
        for (int i = 0; i < 5; ++i)
            rutas.push_back(entorno_.Imagen("sub/r" + std::to_string(i), 1, 1, "byte", {static_cast<double>(i)}));
        {
            Escritorio e;
            for (const auto& r : rutas) e.Ventana(r);
        }
        QCOMPARE(CarpetaInicial(), QString::fromStdString(entorno_.Ruta("sub")));
        Escritorio e;
        e.marco.ActualizarRecientes();
        QMenu* fichero = e.marco.menuBar()->actions().front()->menu();
        QStringList textos;
        for (QAction* a : fichero->actions())
            if (a->objectName().startsWith(QLatin1String("reciente")) && a->isVisible()) textos << a->text();
        QCOMPARE(textos, QStringList({"&1 r4.ozm", "&2 r3.ozm", "&3 r2.ozm", "&4 r1.ozm"}));
        QCOMPARE(fichero->actions().last(), e.marco.Accion(cmd::kSalir));

        e.Ventana();
        e.marco.findChild<QAction*>(QStringLiteral("reciente2"))->trigger();  // r2 into the empty window
        QCOMPARE(Ventanas(e.marco).size(), 1u);
        QCOMPARE(e.marco.DocumentoActivo()->Nombre(), QStringLiteral("r2"));
        e.marco.AbrirReciente(QString::fromStdString(rutas[3]));  // a new window beside it
        QCOMPARE(Ventanas(e.marco).size(), 2u);
        QCOMPARE(e.marco.DocumentoActivo()->Nombre(), QStringLiteral("r3"));
        QCOMPARE(FicherosRecientes().front(), QString::fromStdString(rutas[3]));

        QFile::remove(QString::fromStdString(rutas[2]));
        e.marco.AbrirReciente(QString::fromStdString(rutas[2]));
        QCOMPARE(e.ui.Ids(), std::vector<int>{msg::kArchivoNoExiste});
        QCOMPARE(Ventanas(e.marco).size(), 2u);
        QVERIFY(!FicherosRecientes().contains(QString::fromStdString(rutas[2])));
    }

    // "Cualitativa 16" gives the values 1 to 4 the same black: the classes
    // of an image with a legend take distinct colours, and the legend's
    // swatches are those colours. A palette that tells them apart already
    // ("Cualitativa 256") is kept as it is. "Cambiar paleta" draws the open
    // image again with another palette: same samples, same zoom.
    void clasificacionEnColoresDistintos() {
        const QString paletas = QCoreApplication::applicationDirPath() + QStringLiteral("/Paletas/");
        if (!QFile::exists(paletas + QStringLiteral("Qualital16.PAL"))) QSKIP("palettes not beside the test");
        for (const char* f : {"Qualital16.PAL", "Qualital256.PAL"}) {
            const QString destino = QString::fromStdString(entorno_.Carpeta() + "/Paletas/") + QString::fromLatin1(f);
            QFile::remove(destino);
            QVERIFY(QFile::copy(paletas + QString::fromLatin1(f), destino));
        }
        const std::string ruta = entorno_.Imagen("verdad", 3, 3, "byte", {0, 1, 2, 3, 4});
        QVERIFY(EscribirLeyenda(ruta, {{"agua", 1}, {"bosque", 2}, {"cultivo", 3}, {"urbano", 4}}));
        Escritorio e;
        e.marco.show();
        CBrimarDoc& doc = e.marco.NuevaVentana()->Documento();
        QVERIFY(AbrirImagen(doc, ruta, 4, {}, e.ui));
        CBrimarView& v = *e.marco.VistaActiva();
        for (int k = 1; k <= 4; ++k) {
            const auto c = ColorClaseDistinto(static_cast<std::size_t>(k - 1));
            QCOMPARE(EnTabla(v.Indices(), k), QColor(c[0], c[1], c[2]));
        }
        QCOMPARE(EnTabla(v.Indices(), 0), QColor(Qt::black));  // no class: as the palette has it
        std::vector<QColor> muestras;
        e.ui.dialogos.push_back([&](QDialog& d) {
            auto* l = qobject_cast<CMostrarLeyendaDlg*>(&d);
            for (std::size_t i = 0; l && i < 4; ++i) muestras.push_back(l->ColorMuestra(i));
            return false;
        });
        e.Ejecutar({cmd::kMostrarLeyenda});
        QCOMPARE(muestras.size(), 4u);
        for (int k = 1; k <= 4; ++k) QCOMPARE(muestras[static_cast<std::size_t>(k - 1)], EnTabla(v.Indices(), k));
        // The exported picture has the colours of the window.
        e.ui.ficherosGuardar = {entorno_.Ruta("verdad.png")};
        e.Ejecutar({cmd::kExportarBmp});
        const QImage exportada(QString::fromStdString(entorno_.Ruta("verdad.png")));
        QCOMPARE(exportada.size(), QSize(3, 3));
        for (int k = 0; k <= 4; ++k) QCOMPARE(QColor(exportada.pixel(k % 3, k / 3)), EnTabla(v.Indices(), k));

        // Another palette for the open image, zoomed in: "Cualitativa 256".
        e.Ejecutar({cmd::kZoomAdelante});
        Arrastrar(v, QPoint(0, 0), QPoint(1, 1));
        QCOMPARE(v.NivelZoom(), 1);
        const std::vector<double> antes = ValoresDe(doc.Imagen());
        e.ui.dialogos.push_back(Pulsando({"paleta1"}));
        e.marco.AccionCambiarPaleta()->trigger();
        QCOMPARE(e.ui.titulosDialogos.back(), QStringLiteral("Cambiar paleta"));
        QCOMPARE(doc.Imagen().indicePaleta, 1u);
        const QColor propios[5] = {QColor(0, 0, 0), QColor(0, 0, 255), QColor(0, 170, 0), QColor(205, 133, 63),
                                   QColor(255, 0, 0)};
        for (int k = 0; k <= 4; ++k) QCOMPARE(EnTabla(v.Indices(), k), propios[k]);
        QCOMPARE(ValoresDe(doc.Imagen()), antes);
        QCOMPARE(v.NivelZoom(), 1);
        QCOMPARE(doc.Nombre(), QStringLiteral("verdad"));
        QVERIFY(!doc.Modificado());
        QVERIFY(e.ui.mensajes.empty());

        // Refused where there is nothing to draw again.
        e.Ventana();
        e.marco.AccionCambiarPaleta()->trigger();
        QCOMPARE(e.ui.Ids(), std::vector<int>{msg::kSinImagen});
    }

    // At 800 x 600: a window for a large image fits inside the workspace
    // wherever it was placed, the status bar's panes do not overlap (their
    // texts cut short, whole in the tool tip), and the main window's
    // caption names the program once. Wide enough, the panes show their
    // texts whole.
    void tamanosEnPantallaPequena() {
        Escritorio e;
        e.marco.resize(800, 600);
        e.marco.show();
        QVERIFY(QTest::qWaitForWindowExposed(&e.marco));
        for (int i = 0; i < 4; ++i) e.Ventana();
        CChildFrame* grande = e.marco.NuevaVentana();
        QVERIFY(AbrirImagen(grande->Documento(), entorno_.Imagen("grande", 1500, 2000, "byte", {1, 2, 3}), 2, {}, e.ui));
        const QRect espacio(QPoint(0, 0), e.marco.Area()->viewport()->size());
        for (QMdiSubWindow* s : Ventanas(e.marco)) QVERIFY2(espacio.contains(s->geometry()), qPrintable(s->windowTitle()));
        QCOMPARE(e.marco.windowTitle(), QStringLiteral("Orvela - grande"));
        QCOMPARE(QGuiApplication::applicationDisplayName(), QGuiApplication::applicationName());

        e.marco.PonerTextoPanel(1, QStringLiteral("Fila =  1499 \t Columna =  1999"));
        e.marco.PonerTextoPanel(2, QStringLiteral("\tNivel Digital =  255.00\t"));
        e.marco.PonerTextoPanel(3, QStringLiteral("Coord. UTM. X = 712345.0 ; Y = 4412345.0 "));
        e.marco.Confirmar("Guardado: una_imagen_de_nombre_largo.ozm");
        for (int ancho : {1400, 800, 500}) {
            e.marco.resize(ancho, 600);
            QApplication::processEvents();
            e.marco.statusBar()->layout()->activate();
            const QRect barra = e.marco.statusBar()->rect();
            for (int i = 0; i < 7; ++i) {
                const QRect a = e.marco.Panel(i)->geometry();
                QVERIFY2(barra.contains(a) && a.width() > 0, qPrintable(QStringLiteral("%1 %2").arg(ancho).arg(i)));
                for (int j = i + 1; j < 7; ++j)
                    QVERIFY2(!a.intersects(e.marco.Panel(j)->geometry()), qPrintable(QStringLiteral("%1: %2 %3").arg(ancho).arg(i).arg(j)));
            }
            if (ancho == 1400)
                for (int i = 1; i <= 3; ++i) {
                    const QLabel* l = e.marco.Panel(i);
                    const QString visto = QString(l->text()).replace(QLatin1Char('\t'), QStringLiteral("    "));
                    QVERIFY(l->contentsRect().width() - 8 >= l->fontMetrics().horizontalAdvance(visto));
                }
        }
        QCOMPARE(e.marco.TextoPanel(1), QStringLiteral("Fila =  1499 \t Columna =  1999"));
    }

    // "Ventana": cascade and tile keep every window inside the workspace;
    // the open windows are listed by caption, the active one checked, and
    // choosing one makes it active.
    void menuVentana() {
        Escritorio e;
        e.marco.resize(800, 600);
        e.marco.show();
        e.Ventana(entorno_.Imagen("v1", 300, 300, "byte", {1}));
        e.Ventana(entorno_.Imagen("v2", 300, 300, "byte", {2}));
        e.Ventana();
        QMenu* menu = e.marco.MenuVentana();
        emit menu->aboutToShow();
        QStringList textos;
        for (QAction* a : menu->actions())
            if (a->objectName().startsWith(QLatin1String("ventana"))) textos << a->text() + (a->isChecked() ? "*" : "");
        QCOMPARE(textos, QStringList({"&1 v1", "&2 v2", "&3 Sin título 3*"}));
        menu->findChild<QAction*>(QStringLiteral("ventana0"))->trigger();
        QCOMPARE(e.marco.DocumentoActivo()->Nombre(), QStringLiteral("v1"));
        const QRect espacio(QPoint(0, 0), e.marco.Area()->viewport()->size());
        for (const char* orden : {"mosaico", "cascada"}) {
            emit menu->aboutToShow();
            menu->findChild<QAction*>(QString::fromLatin1(orden))->trigger();
            for (QMdiSubWindow* s : Ventanas(e.marco)) QVERIFY2(espacio.contains(s->geometry()), orden);
        }
        e.Ejecutar({cmd::kNuevaVentana});
        emit menu->aboutToShow();
        QVERIFY(menu->findChild<QAction*>(QStringLiteral("ventana3")));
    }

    // The line in the status bar after every file written: "Guardar",
    // "Guardar como", both exports, and an operation written to a file.
    void confirmacionEnLaBarraDeEstado() {
        Escritorio e;
        e.Ventana(entorno_.Imagen("conf", 2, 2, "byte", {1, 2}));
        e.Ejecutar({cmd::kGuardar});
        QCOMPARE(e.marco.TextoPanel(0), QStringLiteral("Guardado: conf.ozm"));
        e.ui.ficherosGuardar = {entorno_.Ruta("conf.txt"), entorno_.Ruta("conf"), entorno_.Ruta("conf2.ozm"),
                                entorno_.Ruta("convertida")};
        e.Ejecutar({cmd::kExportarAscii});
        QCOMPARE(e.marco.TextoPanel(0), QStringLiteral("Guardado: conf.txt"));
        e.Ejecutar({cmd::kExportarBmp});
        QCOMPARE(e.marco.TextoPanel(0), QStringLiteral("Guardado: conf.bmp"));
        e.Ejecutar({cmd::kGuardarComo});
        QCOMPARE(e.marco.TextoPanel(0), QStringLiteral("Guardado: conf2.ozm"));
        e.ui.dialogos.push_back(Pulsando({"entrada0_seleccionar", "salida_guardar", QStringLiteral("campo_tipo_destino_0")}));
        e.ui.ficherosAbrir = {entorno_.Imagen("entradaConf", 1, 2, "integer", {1, 2})};
        EjecutarOperacion(*BuscarPorOrden("convertir"), e.marco, e.ui);
        QVERIFY(e.ui.mensajes.empty() || e.ui.Ids() == std::vector<int>{msg::kPerdidaPrecision});
        QCOMPARE(e.marco.TextoPanel(0), QStringLiteral("Guardado: convertida.ozm"));
        // The AVISO saves the window's image before a result from a file
        // replaces it.
        e.Ventana(entorno_.Imagen("aviso", 1, 2, "byte", {1, 2}));
        e.marco.PonerTextoPanel(0, QStringLiteral("-"));
        e.ui.dialogos = {Pulsando({"entrada0_seleccionar", "salida_ventana",
                                   QStringLiteral("campo_tipo_destino_0")}),
                         Pulsando({"guardarEn"})};
        e.ui.ficherosAbrir = {entorno_.Imagen("entradaAviso", 1, 2, "integer", {1, 2})};
        EjecutarOperacion(*BuscarPorOrden("convertir"), e.marco, e.ui);
        QCOMPARE(e.ui.titulosDialogos.back(), QStringLiteral("AVISO DE Brimar"));
        QCOMPARE(e.marco.TextoPanel(0), QStringLiteral("Guardado: aviso.ozm"));
        QCOMPARE(e.marco.DocumentoActivo()->Nombre(), QStringLiteral("TMP"));
        QVERIFY(e.ui.preguntas.empty());
    }
};

QTEST_MAIN(EscritorioTest)
#include "EscritorioTest.moc"
