// The menu bar, the toolbar and status bar, the start-up check of the
// palette folder, and the commands that only open windows.
#include <QLabel>
#include <QMdiArea>
#include <QMenuBar>
#include <QtTest>
#include <set>

#include "Entorno.h"
#include "InterfazGuion.h"
#include "app/CChildFrame.h"
#include "app/CMainFrame.h"
#include "app/TablaComandos.h"
#include "doc/CBrimarDoc.h"
#include "doc/CBrimarView.h"

using namespace prueba;

namespace {

QMenu* Submenu(QWidget* padre, const QString& titulo) {
    const auto acciones = padre->actions();
    for (QAction* a : acciones)
        if (a->menu() && a->text() == titulo) return a->menu();
    return nullptr;
}

// Every command action found in the menus, with the path that leads to it.
void RecogerAcciones(QWidget* menu, std::vector<std::pair<std::vector<QString>, QAction*>>& salida,
                     std::vector<QString> ruta) {
    for (QAction* a : menu->actions()) {
        if (a->isSeparator()) continue;
        if (a->menu()) {
            auto r = ruta;
            r.push_back(a->text());
            RecogerAcciones(a->menu(), salida, r);
        } else {
            salida.push_back({ruta, a});
        }
    }
}

}  // namespace

class MenuTest : public QObject {
    Q_OBJECT
    Entorno* entorno_ = nullptr;

private slots:
    void initTestCase() { entorno_ = new Entorno; }
    void cleanupTestCase() { delete entorno_; }

    void menusSegunLaTabla() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        std::vector<std::pair<std::vector<QString>, QAction*>> vistas;
        RecogerAcciones(marco.menuBar(), vistas, {});

        // Menus in the order of the table.
        QStringList arriba;
        for (QAction* a : marco.menuBar()->actions()) arriba << a->text();
        QCOMPARE(arriba, QStringList({"Fichero", "Visualización", "Correcciones", "Realces", "Transformaciones",
                                      "Clasificaciones", "Herramientas", "Ayuda"}));

        std::size_t conMenu = 0;
        for (const EntradaComando& e : TablaComandos()) {
            if (e.menus.empty()) continue;
            ++conMenu;
            QWidget* menu = marco.menuBar();
            for (const char* m : e.menus) {
                menu = Submenu(menu, QString::fromUtf8(m));
                QVERIFY2(menu, m);
            }
            QAction* encontrada = nullptr;
            for (QAction* a : menu->actions())
                if (a->data().toInt() == e.id) encontrada = a;
            QVERIFY2(encontrada, e.texto);
            QCOMPARE(encontrada->text(), QString::fromUtf8(e.texto));
            QCOMPARE(encontrada->shortcut(), QKeySequence(QString::fromLatin1(e.atajo)));
            QCOMPARE(encontrada->isEnabled(), CMainFrame::Manejado(e.id));
            QCOMPARE(marco.Accion(e.id), encontrada);
        }
        // Nothing in the menus that the table does not hold.
        QCOMPARE(vistas.size(), conMenu);
    }

    void textosEIdsDelMenu() {
        std::set<int> ids;
        for (const EntradaComando& e : TablaComandos()) QVERIFY2(ids.insert(e.id).second, e.texto);

        auto texto = [](int id) { return QString::fromUtf8(BuscarComando(id)->texto); };
        QCOMPARE(texto(32824), QStringLiteral("Expansion del contraste"));
        QCOMPARE(texto(32823), QStringLiteral("Clasificador de parelelepípedos"));
        QCOMPARE(texto(32774), QStringLiteral("Imagen"));
        QCOMPARE(texto(57665), QStringLiteral("&Salir"));
        QCOMPARE(texto(57664), QStringLiteral("&Acerca De Orvela..."));
        QCOMPARE(texto(32883), QStringLiteral("&Temas De Ayuda"));
        QCOMPARE(texto(32870), QStringLiteral("Reflectividad aparente (Landsat)"));

        InterfazGuion ui;
        CMainFrame marco(&ui);
        QCOMPARE(marco.Accion(57665)->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_S));
        QCOMPARE(marco.Accion(32774)->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_I));
        // Commands nobody answers yet are greyed; the workspace's are not.
        QVERIFY(!marco.Accion(32880)->isEnabled());  // Crear mapa
        QVERIFY(!marco.Accion(32843)->isEnabled());  // Vectorial > Crear
        for (int id : {32840, 32841, 57665, 32774, 57600, 32778, 32879, 32839, 32842, 32847, 32848, 57664, 57667,
                       32883, 32862, 32771, 32773, 32878})
            QVERIFY2(marco.Accion(id)->isEnabled(), qPrintable(texto(id)));
    }

    void leyendaSinEntradaDeMenu() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        std::vector<std::pair<std::vector<QString>, QAction*>> vistas;
        RecogerAcciones(marco.menuBar(), vistas, {});
        for (const auto& v : vistas) QVERIFY(v.second->data().toInt() != 32822);
        QAction* leyenda = marco.Accion(32822);
        QVERIFY(leyenda);
        QVERIFY(marco.actions().contains(leyenda));  // its shortcut works from the main window
        QVERIFY(!leyenda->shortcut().isEmpty());
        QVERIFY(leyenda->isEnabled());
    }

    void barraDeEstado() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        QCOMPARE(marco.TextoPanel(4), QStringLiteral("MAY"));
        QCOMPARE(marco.TextoPanel(5), QStringLiteral("NUM"));
        QCOMPARE(marco.TextoPanel(6), QStringLiteral("DESP"));
        int paneles = 0;
        for (int i = 0; i < 7; ++i)
            if (marco.findChild<QLabel*>(QStringLiteral("panel%1").arg(i))) ++paneles;
        QCOMPARE(paneles, 7);
    }

    void carpetaDePaletas() {
        const QString mensaje = QString::fromUtf8(
            "ERROR. Asegúrese de que la carpeta con las paletas \nestá en el directorio del ejecutable. Si el "
            "problema\npersiste, reinstale el software.\n");
        {
            InterfazGuion ui;
            CMainFrame marco(&ui);
            QVERIFY(ui.textos.empty());
            QCOMPARE(marco.CarpetaAplicacion(), entorno_->Carpeta());
        }
        {
            // A folder without "Paletas": the message, and the program goes on.
            QTemporaryDir vacia;
            Entorno::PonerPath(vacia.path());
            InterfazGuion ui;
            CMainFrame marco(&ui);
            QCOMPARE(ui.textos.size(), std::size_t{1});
            QCOMPARE(ui.textos[0], mensaje);
            QVERIFY(marco.NuevaVentana());
            QVERIFY(marco.DocumentoActivo());
        }
        {
            // Without the setting, the executable's folder serves.
            Entorno::PonerPath(QString());
            InterfazGuion ui;
            CMainFrame marco(&ui);
            QCOMPARE(QString::fromStdString(marco.CarpetaAplicacion()), QCoreApplication::applicationDirPath());
            const bool hay = QDir(QCoreApplication::applicationDirPath() + "/Paletas").exists();
            QCOMPARE(ui.textos.empty(), hay);
        }
        Entorno::PonerPath(QString::fromStdString(entorno_->Carpeta()));
    }

    void ventanasYDocumentoActivo() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        marco.show();
        QVERIFY(!marco.DocumentoActivo());
        marco.EjecutarComando(57600);
        CBrimarDoc* primero = marco.DocumentoActivo();
        QVERIFY(primero);
        QVERIFY(!primero->TieneImagen());
        marco.EjecutarComando(57600);
        CBrimarDoc* segundo = marco.DocumentoActivo();
        QVERIFY(segundo && segundo != primero);
        QCOMPARE(marco.Area()->subWindowList().size(), 2);
        // The window caption follows the display name.
        CChildFrame* v = marco.VentanaActiva();
        segundo->PonerNombre(QStringLiteral("banda4"));
        QCOMPARE(v->windowTitle(), QStringLiteral("banda4"));
    }

    void cerrarVentanaVaciaLosPaneles() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        marco.show();
        const std::string stem = entorno_->Ruta("pequena");
        EscribirImagen(stem, 4, 5, "byte", {7});
        CChildFrame* v = marco.NuevaVentana();
        orvela::CImagen im;
        QVERIFY(!im.Cargar(stem + ".ozm", 2));
        v->Documento().PonerImagen(std::move(im));
        marco.EjecutarComando(32778);
        QVERIFY(!marco.TextoPanel(1).isEmpty());
        QVERIFY(!marco.TextoPanel(2).isEmpty());
        v->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(marco.TextoPanel(1), QString());
        QCOMPARE(marco.TextoPanel(2), QString());
        // No window: the view commands answer 61216.
        ui.mensajes.clear();
        for (int id : {32839, 32842, 32847, 32848, 32778, 32822}) marco.EjecutarComando(id);
        QCOMPARE(ui.Ids(), std::vector<int>(6, 61216));
    }

    void acercaDe() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        QStringList textos;
        ui.dialogos.push_back([&](QDialog& d) {
            for (QLabel* l : d.findChildren<QLabel*>()) textos << l->text();
            for (QAbstractButton* b : d.findChildren<QAbstractButton*>()) textos << b->text();
            return true;
        });
        marco.EjecutarComando(57664);
        QCOMPARE(ui.titulosDialogos, std::vector<QString>{QStringLiteral("Acerca de Orvela")});
        for (const char* t : {"Orvela 1.0 para Windows", "Desarrollo y programación:",
                              "Dirección científica y coordinación:", "&Aceptar"})
            QVERIFY2(textos.contains(QString::fromUtf8(t)), t);
    }
};

QTEST_MAIN(MenuTest)
#include "MenuTest.moc"
