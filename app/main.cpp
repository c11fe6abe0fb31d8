// Orvela: the workspace with one empty window; an ".ozm" named on the
// command line is shown in it with the grey palette. "--captura FILE.png"
// saves a picture of the main window once it is drawn, then quits.
#include <QApplication>
#include <QMdiArea>
#include <QTimer>

#include "app/Arranque.h"
#include "app/CChildFrame.h"
#include "app/CMainFrame.h"
#include "doc/ComandosDocumento.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    NombrarAplicacion();
    CargarTraducciones(app);

    CMainFrame marco;
    CChildFrame* primera = marco.NuevaVentana();
    marco.show();

    // The picture is taken from the event loop, so that it is also taken
    // while a message of the start-up waits for an answer.
    const QStringList args = QApplication::arguments();
    const qsizetype k = args.indexOf(QStringLiteral("--captura"));
    if (k > 0 && k + 1 < args.size()) {
        const QString captura = args[k + 1];
        QTimer::singleShot(800, &marco, [&marco, captura] {
            marco.grab().save(captura);
            QApplication::exit(0);
        });
    }
    for (qsizetype i = 1; i < args.size(); ++i) {
        if (i == k || i == k + 1) continue;
        if (args[i].endsWith(QStringLiteral(".ozm"), Qt::CaseInsensitive)) {
            // The grey palette suits a single band whatever its sensor.
            if (AbrirImagen(primera->Documento(), args[i].toStdString(), 2, {}, marco.Ui()))
                primera->AjustarAImagen(marco.Area()->viewport()->size());
        }
    }
    return app.exec();
}
