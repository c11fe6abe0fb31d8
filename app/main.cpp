// Orvela: the workspace with one empty window; each ".ozm" named on the
// command line is shown in a window of its own (the first in that window)
// with the grey palette. Two switches meant for the documentation:
// "--orden ID" runs the command ID on the window shown last (as the menu
// would), and "--captura FILE.png" saves a picture of the screen -- the
// main window and the program's other windows -- once everything is
// drawn, then quits.
#include <QApplication>
#include <QMdiArea>
#include <QScreen>
#include <QTimer>

#include "app/Arranque.h"
#include "app/CChildFrame.h"
#include "app/CMainFrame.h"
#include "doc/CBrimarDoc.h"
#include "doc/ComandosDocumento.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    NombrarAplicacion();
    CargarTraducciones(app);

    CMainFrame marco;
    CChildFrame* primera = marco.NuevaVentana();
    marco.show();

    // The picture is taken from the event loop, so that it is also taken
    // while a message or a dialog waits for an answer.
    const QStringList args = QApplication::arguments();
    const qsizetype k = args.indexOf(QStringLiteral("--captura"));
    if (k > 0 && k + 1 < args.size()) {
        const QString captura = args[k + 1];
        QTimer::singleShot(1500, &marco, [&marco, captura] {
            // The program's other windows go beside the main window, one
            // under the other, where the screen leaves room for them.
            const QRect pantalla = marco.screen() ? marco.screen()->geometry() : QRect();
            int y = 0;
            for (QWidget* w : QApplication::topLevelWidgets()) {
                if (w == &marco || !w->isVisible()) continue;
                const int x = marco.frameGeometry().right() + 8;
                if (x + w->frameGeometry().width() > pantalla.right()) continue;
                w->move(x, y);
                y += w->frameGeometry().height() + 8;
            }
            QTimer::singleShot(500, &marco, [&marco, captura] {
                QScreen* pantalla = marco.screen();
                QPixmap foto = pantalla ? pantalla->grabWindow(0) : QPixmap();
                if (foto.isNull() || QGuiApplication::platformName() == QLatin1String("offscreen")) {
                    foto = marco.grab();
                } else {
                    // Only what the program's windows cover.
                    QRect usado;
                    for (QWidget* w : QApplication::topLevelWidgets())
                        if (w->isVisible()) usado |= w->frameGeometry();
                    foto = foto.copy(usado & pantalla->geometry());
                }
                foto.save(captura);
                QApplication::exit(0);
            });
        });
    }
    std::vector<int> ordenes;
    for (qsizetype i = 1; i < args.size(); ++i) {
        if (i == k || i == k + 1) continue;
        if (args[i] == QLatin1String("--orden") && i + 1 < args.size()) {
            ordenes.push_back(args[++i].toInt());
            ordenes.push_back(static_cast<int>(marco.Area()->subWindowList().indexOf(marco.VentanaActiva())));
            continue;
        }
        if (args[i].endsWith(QStringLiteral(".ozm"), Qt::CaseInsensitive)) {
            CChildFrame* c = primera->Documento().TieneImagen() ? marco.NuevaVentana() : primera;
            // The grey palette suits a single band whatever its sensor.
            if (AbrirImagen(c->Documento(), args[i].toStdString(), 2, {}, marco.Ui()))
                c->AjustarAImagen(marco.Area()->viewport()->size());
        }
    }
    if (!ordenes.empty()) {
        // Commands run once the windows are laid out, each on its window.
        QTimer::singleShot(200, &marco, [&marco, ordenes] {
            if (marco.Area()->subWindowList().size() > 1) marco.Area()->tileSubWindows();
            for (std::size_t j = 0; j + 1 < ordenes.size(); j += 2) {
                const auto ventanas = marco.Area()->subWindowList();
                if (ordenes[j + 1] >= 0 && ordenes[j + 1] < ventanas.size())
                    marco.Area()->setActiveSubWindow(ventanas[ordenes[j + 1]]);
                marco.EjecutarComando(ordenes[j]);
            }
        });
    }
    return app.exec();
}
