// The help pages shipped beside the program and the help window: every
// page readable with a title, every link and every operation's page there,
// search without regard to accents, one window for the whole program.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QtTest>

#include "EspacioPrueba.h"
#include "InterfazGuion.h"
#include "dialogs/CAyudaDlg.h"
#include "dialogs/COperacionDlg.h"
#include "dialogs/ComandosEspacio.h"
#include "operations/Operacion.h"

namespace {

const QStringList kPaginasEspacio = {
    QStringLiteral("indice"),      QStringLiteral("imagen"),       QStringLiteral("guardar"),
    QStringLiteral("zoom"),        QStringLiteral("pixel"),        QStringLiteral("histograma"),
    QStringLiteral("informacion"), QStringLiteral("iniciar"),      QStringLiteral("convertir"),
    QStringLiteral("exportar"),    QStringLiteral("crear-paleta"), QStringLiteral("leyenda"),
    QStringLiteral("nueva-ventana")};

CAyudaDlg* VentanaAyuda() {
    CAyudaDlg* r = nullptr;
    int n = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* a = qobject_cast<CAyudaDlg*>(w)) {
            r = a;
            ++n;
        }
    return n == 1 ? r : nullptr;
}

}  // namespace

class AyudaTest : public QObject {
    Q_OBJECT

    QString carpeta_ = CAyudaDlg::CarpetaPorDefecto();

private slots:
    void paginasLegiblesConTituloYEnlacesQueExisten() {
        const QDir dir(carpeta_);
        QVERIFY2(dir.exists(), qPrintable(carpeta_));
        QStringList paginas = dir.entryList({QStringLiteral("*.html")}, QDir::Files);
        for (const QString& p : kPaginasEspacio)
            QVERIFY2(paginas.contains(p + QStringLiteral(".html")), qPrintable(p));
        static const QRegularExpression titulo(QStringLiteral("<title>[^<]+</title>"));
        static const QRegularExpression enlace(QStringLiteral("href=\"([^\":#]+\\.html)"));
        for (const QString& f : paginas) {
            QFile fichero(dir.filePath(f));
            QVERIFY(fichero.open(QIODevice::ReadOnly));
            const QByteArray bytes = fichero.readAll();
            const QString html = QString::fromUtf8(bytes);
            QVERIFY2(html.toUtf8() == bytes && !html.contains(QChar::ReplacementCharacter), qPrintable(f));
            QVERIFY2(html.contains(QStringLiteral("charset=\"utf-8\"")), qPrintable(f));
            QVERIFY2(titulo.match(html).hasMatch(), qPrintable(f));
            for (auto it = enlace.globalMatch(html); it.hasNext();) {
                const QString destino = it.next().captured(1);
                QVERIFY2(dir.exists(destino), qPrintable(f + QStringLiteral(" -> ") + destino));
            }
        }
    }

    void cadaOperacionTieneSuPagina() {
        for (const orvela::Declaracion* d : orvela::Catalogo()) {
            const QString p = QString::fromUtf8(d->paginaAyuda);
            QVERIFY2(!p.isEmpty() && QFile::exists(carpeta_ + QLatin1Char('/') + p + QStringLiteral(".html")),
                     d->orden);
        }
    }

    void contenidoYBusqueda() {
        CAyudaDlg ayuda(carpeta_);
        const QStringList todas = ayuda.PaginasListadas();
        QCOMPARE(todas.value(0), QStringLiteral("indice"));
        QCOMPARE(ayuda.TituloDe(QStringLiteral("histograma")), QStringLiteral("Histograma"));
        QCOMPARE(ayuda.TituloDe(QStringLiteral("pixel")), QStringLiteral("Nivel digital del píxel"));

        ayuda.Buscar(QStringLiteral("DESVIACION tipica"));
        const QStringList desviacion = ayuda.PaginasListadas();
        QVERIFY(desviacion.contains(QStringLiteral("histograma")));
        QVERIFY(!desviacion.contains(QStringLiteral("zoom")));
        ayuda.Buscar(QStringLiteral("pixel"));
        QVERIFY(ayuda.PaginasListadas().contains(QStringLiteral("pixel")));
        ayuda.Buscar(QStringLiteral("xyzzy"));
        QVERIFY(ayuda.PaginasListadas().isEmpty());
        ayuda.Buscar(QString());
        QCOMPARE(ayuda.PaginasListadas(), todas);

        ayuda.MostrarPagina(QStringLiteral("no-existe"));
        QVERIFY(ayuda.PaginaActual().isEmpty());
        QVERIFY(ayuda.Navegador()->toPlainText().contains(QStringLiteral("No se ha encontrado la página")));
        ayuda.MostrarPagina(QString());
        QCOMPARE(ayuda.PaginaActual(), QStringLiteral("indice"));
    }

    // One help window for the program; the "Ayuda" button of an operation's
    // dialog opens its page there.
    void unaVentanaYElBotonAyuda() {
        MostrarAyuda("histograma", nullptr);
        CAyudaDlg* ayuda = VentanaAyuda();
        QVERIFY(ayuda);
        QCOMPARE(ayuda->PaginaActual(), QStringLiteral("histograma"));
        QVERIFY(ayuda->Navegador()->toPlainText().contains(QStringLiteral("Desviación típica")));

        const orvela::Declaracion* convertir = orvela::BuscarPorOrden("convertir");
        QVERIFY(convertir);
        InterfazGuion ui;
        COperacionDlg dlg(*convertir, ui);
        dlg.findChild<QPushButton*>(QStringLiteral("ayuda"))->click();
        QCOMPARE(VentanaAyuda(), ayuda);
        QCOMPARE(ayuda->PaginaActual(), QStringLiteral("convertir"));
        QVERIFY(ayuda->Navegador()->toPlainText().contains(QStringLiteral("pérdida en la precisión")));
    }
};

QTEST_MAIN(AyudaTest)
#include "AyudaTest.moc"
