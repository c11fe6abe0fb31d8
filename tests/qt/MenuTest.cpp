// The main window: the menu bar built from the command table, what each
// command answers where it cannot act, the status bar, the start-up check
// of the palette folder, the windows, and help: the pages shipped beside
// the program and the one help window.
#include <QApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextBrowser>
#include <set>

#include "Entorno.h"
#include "dialogs/TablaComandos.h"
#include "dialogs/CAyudaDlg.h"
#include "dialogs/COperacionDlg.h"
#include "dialogs/ComandosEspacio.h"

using namespace prueba;
using namespace cmd;

namespace {

// The command entries found in a menu and its submenus.
std::vector<QAction*> Acciones(QWidget* menu) {
    std::vector<QAction*> r;
    for (QAction* a : menu->actions()) {
        if (a->menu()) std::ranges::copy(Acciones(a->menu()), std::back_inserter(r));
        else if (!a->isSeparator()) r.push_back(a);
    }
    return r;
}

CAyudaDlg* VentanaAyuda() {
    std::vector<CAyudaDlg*> r;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* a = qobject_cast<CAyudaDlg*>(w)) r.push_back(a);
    return r.size() == 1 ? r[0] : nullptr;
}

}  // namespace

class MenuTest : public QObject {
    Q_OBJECT
    Entorno entorno_;

private slots:
    // Every entry of the table under its menus, with its text, id and
    // shortcut, greyed when nothing answers it; beside them only the
    // desktop's own entries: "Cambiar paleta", the recent images and the
    // "Ventana" menu.
    void menusSegunLaTabla() {
        Escritorio e;
        CMainFrame& marco = e.marco;
        QStringList arriba;
        for (QAction* a : marco.menuBar()->actions()) arriba << a->text();
        QCOMPARE(arriba, QStringList({"Fichero", "Visualización", "Correcciones", "Realces", "Transformaciones",
                                      "Clasificaciones", "Herramientas", "Ventana", "Ayuda"}));
        std::set<int> ids;
        std::size_t conMenu = 0;
        for (const EntradaComando& c : TablaComandos()) {
            QVERIFY2(ids.insert(c.id).second, c.texto);
            QAction* a = marco.Accion(c.id);
            QVERIFY2(a, c.texto);
            QCOMPARE(a->text(), QString::fromUtf8(c.texto));
            QCOMPARE(a->shortcut(), QKeySequence(QString::fromLatin1(c.atajo)));
            QCOMPARE(a->isEnabled(), CMainFrame::Manejado(c.id));
            if (c.menus.empty()) continue;
            ++conMenu;
            QWidget* menu = marco.menuBar();
            for (const char* m : c.menus) {
                auto acciones = menu->actions();
                auto it = std::ranges::find_if(acciones, [&](QAction* x) { return x->menu() && x->text() == QString::fromUtf8(m); });
                QVERIFY2(it != acciones.end(), m);
                menu = (*it)->menu();
            }
            QVERIFY2(menu->actions().contains(a), c.texto);
        }
        std::size_t propias = 0;
        for (QAction* a : Acciones(marco.menuBar()))
            if (!a->objectName().startsWith(QLatin1String("comando"))) {
                QVERIFY2(a == marco.AccionCambiarPaleta() || a->objectName().startsWith(QLatin1String("reciente")),
                         qPrintable(a->text()));
                ++propias;
            }
        QCOMPARE(Acciones(marco.menuBar()).size(), conMenu + propias);
        // The legend has no menu entry: its shortcut works from the main window.
        QVERIFY(!std::ranges::count(Acciones(marco.menuBar()), marco.Accion(32822)));
        QVERIFY(marco.actions().contains(marco.Accion(32822)));
        QCOMPARE(marco.Accion(32822)->shortcut(), QKeySequence(QStringLiteral("Ctrl+L")));
        for (int id : {32840, 32841, 57665, 32774, 57600, 32778, 32879, 32839, 32842, 32847, 32848, 57664, 57667,
                       32883, 32862, 32771, 32773, 32878, 32822})
            QVERIFY2(CMainFrame::Manejado(id), qPrintable(QString::number(id)));
        QCOMPARE(marco.Accion(32823)->text(), QStringLiteral("Clasificador de parelelepípedos"));
        QCOMPARE(marco.Accion(32824)->text(), QStringLiteral("Expansion del contraste"));
    }

    // The window a command needs, checked in its order: a window (61216),
    // an image in it (61264), a name of its own (61272), not a colour
    // composite (61265); then each command's own limits.
    void comandosRechazados_data() {
        QTest::addColumn<QString>("ventana");
        QTest::addColumn<int>("comando");
        QTest::addColumn<int>("id");
        auto fila = [](const char* ventana, int comando, int id) {
            QTest::addRow("%s %d", ventana, comando) << ventana << comando << id;
        };
        for (int c : {kGuardar, kGuardarComo, kHistograma, kExportarBmp, kZoomAdelante, kZoomAtras, kPantallaCompleta,
                      kPantallaNormal, kNivelDigital, kMostrarLeyenda})
            fila("ninguna", c, 61216);
        for (int c : {kGuardar, kGuardarComo, kHistograma, kInformacion, kZoomAtras, kPantallaCompleta, kPantallaNormal,
                      kNivelDigital})
            fila("vacia", c, 61264);
        fila("vacia", kZoomAdelante, 61216);  // the zoom answers an empty window as a missing one
        for (int c : {kGuardar, kGuardarComo, kHistograma, kExportarAscii}) fila("composicion", c, 61265);
        fila("composicion", kNivelDigital, 0);  // the pixel query gives its three values
        fila("resultado", kGuardar, 61272);
        fila("resultado", kGuardarComo, 0);
        fila("resultado composicion", kGuardar, 61272);
        fila("resultado composicion", kGuardarComo, 61265);
        fila("TMP", kGuardar, 61272);  // a file of that name
        fila("imagen", kMostrarLeyenda, 61241);  // no legend file beside it
        fila("pantalla completa", kPantallaCompleta, 61288);
        fila("pantalla completa", kZoomAdelante, 61273);
        fila("un pixel", kZoomAdelante, 61263);
        fila("18 zooms", kZoomAdelante, 61274);
    }
    void comandosRechazados() {
        QFETCH(QString, ventana);
        QFETCH(int, comando);
        QFETCH(int, id);
        Escritorio e;
        e.marco.show();
        if (ventana != QLatin1String("ninguna")) {
            const std::string nombre = ventana == QLatin1String("TMP") ? "TMP" : "g";
            CBrimarDoc& doc = e.Ventana(ventana == QLatin1String("vacia") ? "" : entorno_.Imagen(nombre, 310, 287, "byte", {1, 2}));
            if (ventana.startsWith(QLatin1String("resultado"))) doc.PonerNombre(QStringLiteral("TMP"));
            doc.Imagen().composicionColor = ventana.endsWith(QLatin1String("composicion"));
            CBrimarView& v = *e.marco.VistaActiva();
            if (ventana == QLatin1String("pantalla completa")) e.Ejecutar({kPantallaCompleta});
            if (ventana == QLatin1String("un pixel")) {
                e.Ejecutar({kZoomAdelante});
                Pulsar(v, QPoint(30, 30));  // a click instead of a rectangle: one pixel
            }
            for (int i = 0; ventana == QLatin1String("18 zooms") && i < CBrimarView::kMaximoZooms; ++i) {
                e.Ejecutar({kZoomAdelante});
                Arrastrar(v, v.Destino().topLeft(), v.Destino().bottomRight());
            }
        }
        QVERIFY(e.ui.mensajes.empty());
        e.ui.ficherosGuardar = {std::nullopt};
        e.Ejecutar({comando});
        QCOMPARE(e.ui.Ids(), id ? std::vector<int>{id} : std::vector<int>{});
        QVERIFY(!e.marco.VistaActiva() || !e.marco.VistaActiva()->ZoomArmado());
        QVERIFY(e.ui.titulosDialogos.empty());
    }

    // Status-bar indicators; a folder without "Paletas" is reported at
    // start-up and the program goes on; without the setting, the
    // executable's folder serves.
    void barraDeEstadoYCarpetaDePaletas() {
        {
            Escritorio e;
            QVERIFY(e.ui.textos.empty());
            QCOMPARE(e.marco.CarpetaAplicacion(), entorno_.Carpeta());
            QCOMPARE(QStringList({e.marco.TextoPanel(4), e.marco.TextoPanel(5), e.marco.TextoPanel(6)}),
                     QStringList({"MAY", "NUM", "DESP"}));
        }
        QTemporaryDir vacia;
        Entorno::PonerPath(vacia.path());
        {
            Escritorio e;
            QCOMPARE(e.ui.textos, std::vector<QString>{QString::fromUtf8(
                                      "ERROR. Asegúrese de que la carpeta con las paletas \nestá en el directorio del "
                                      "ejecutable. Si el problema\npersiste, reinstale el software.\n")});
            QVERIFY(e.marco.NuevaVentana() && e.marco.DocumentoActivo());
        }
        Entorno::PonerPath(QString());
        QCOMPARE(QString::fromStdString(Escritorio().marco.CarpetaAplicacion()), QCoreApplication::applicationDirPath());
        Entorno::PonerPath(QString::fromStdString(entorno_.Carpeta()));
    }

    // "Nueva ventana": a new empty document, made active, its caption
    // following the display name.
    void nuevaVentana() {
        Escritorio e;
        QVERIFY(!e.marco.DocumentoActivo());
        e.Ejecutar({57600});
        CBrimarDoc* primero = e.marco.DocumentoActivo();
        e.Ejecutar({57600});
        QVERIFY(primero && !primero->TieneImagen() && e.marco.DocumentoActivo() != primero);
        QCOMPARE(e.marco.Area()->subWindowList().size(), 2);
        e.marco.DocumentoActivo()->PonerNombre(QStringLiteral("banda4"));
        QCOMPARE(e.marco.VentanaActiva()->windowTitle(), QStringLiteral("banda4"));
    }

    // Every page readable UTF-8 with a title and links that lead somewhere;
    // the workspace's pages and every declared operation's page are there,
    // and each operation's dialog is built with the controls a user (and
    // the scripts of these tests) reach by name.
    void paginasDeAyuda() {
        const QDir dir(CAyudaDlg::CarpetaPorDefecto());
        const QStringList paginas = dir.entryList({QStringLiteral("*.html")}, QDir::Files);
        for (const QString& p : QStringLiteral("indice imagen guardar zoom pixel histograma informacion iniciar "
                                               "convertir exportar crear-paleta leyenda nueva-ventana").split(' '))
            QVERIFY2(paginas.contains(p + QStringLiteral(".html")), qPrintable(p));
        static const QRegularExpression titulo(QStringLiteral("<title>[^<]+</title>"));
        static const QRegularExpression enlace(QStringLiteral("href=\"([^\":#]+\\.html)"));
        for (const QString& f : paginas) {
            const QString html = QString::fromStdString(LeerFichero(dir.filePath(f).toStdString()));
            QVERIFY2(!html.contains(QChar::ReplacementCharacter) && html.contains(QStringLiteral("charset=\"utf-8\"")) &&
                         titulo.match(html).hasMatch(), qPrintable(f));
            for (auto it = enlace.globalMatch(html); it.hasNext();) {
                const QString destino = it.next().captured(1);
                QVERIFY2(dir.exists(destino), qPrintable(f + QStringLiteral(" -> ") + destino));
            }
        }
        QVERIFY(!orvela::Catalogo().empty());
        for (const orvela::Declaracion* d : orvela::Catalogo()) {
            QVERIFY2(paginas.contains(QString::fromUtf8(d->paginaAyuda) + QStringLiteral(".html")), d->orden);
            InterfazGuion ui;
            COperacionDlg dlg(*d, ui);
            QCOMPARE(dlg.windowTitle(), QString::fromUtf8(d->titulo));
            QStringList nombres = {"aceptar", "cancelar", "ayuda"};
            for (std::size_t i = 0; i < d->entradas.size(); ++i) nombres << QStringLiteral("entrada%1_seleccionar").arg(i);
            for (const orvela::Campo& c : d->campos)
                if (!c.subdialogo && c.tipo != orvela::TipoCampo::ListaReales)
                    nombres << QStringLiteral("campo_%1").arg(QString::fromUtf8(c.clave->nombre)) + (c.tipo == orvela::TipoCampo::Eleccion ? "_0" : "");
            if (d->conSalida) nombres << QStringLiteral("salida_guardar");
            for (const QString& n : nombres) QVERIFY2(dlg.findChild<QWidget*>(n), qPrintable(QString::fromUtf8(d->orden) + ": " + n));
        }
    }

    // Contents and search without regard to case or accents; one help
    // window for the program, where an operation's "Ayuda" opens its page.
    void ventanaDeAyuda() {
        {
            CAyudaDlg ayuda;
            const QStringList todas = ayuda.PaginasListadas();
            QCOMPARE(todas.value(0), QStringLiteral("indice"));
            QCOMPARE(ayuda.TituloDe(QStringLiteral("pixel")), QStringLiteral("Nivel digital del píxel"));
            ayuda.Buscar(QStringLiteral("DESVIACION tipica"));
            QVERIFY(ayuda.PaginasListadas().contains(QStringLiteral("histograma")));
            QVERIFY(!ayuda.PaginasListadas().contains(QStringLiteral("zoom")));
            ayuda.Buscar(QStringLiteral("xyzzy"));
            QVERIFY(ayuda.PaginasListadas().isEmpty());
            ayuda.Buscar(QString());
            QCOMPARE(ayuda.PaginasListadas(), todas);
            ayuda.MostrarPagina(QStringLiteral("no-existe"));
            QVERIFY(ayuda.Navegador()->toPlainText().contains(QStringLiteral("No se ha encontrado la página")));
        }
        MostrarAyuda("histograma", nullptr);
        CAyudaDlg* unica = VentanaAyuda();
        QVERIFY(unica);
        QCOMPARE(unica->PaginaActual(), QStringLiteral("histograma"));
        InterfazGuion ui;
        COperacionDlg dlg(*orvela::BuscarPorOrden("convertir"), ui);
        Pulsar(dlg, "ayuda");
        QCOMPARE(VentanaAyuda(), unica);
        QCOMPARE(unica->PaginaActual(), QStringLiteral("convertir"));
        QVERIFY(unica->Navegador()->toPlainText().contains(QStringLiteral("pérdida en la precisión")));
    }
};

QTEST_MAIN(MenuTest)
#include "MenuTest.moc"
