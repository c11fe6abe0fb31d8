// The image of a window: "Imagen", "Guardar", "Guardar como" and the
// "AVISO DE Brimar" question, with their messages in their order.
#include <QLineEdit>
#include <QRadioButton>
#include <QtTest>

#include "Entorno.h"
#include "InterfazGuion.h"
#include "app/CChildFrame.h"
#include "app/CMainFrame.h"
#include "dialogs/CAvisoDlg.h"
#include "doc/CBrimarDoc.h"
#include "operations/Curso.h"

using namespace prueba;
using orvela::Mensaje;

namespace {

// Shows a file pair in a window as "Imagen" does, without the dialog.
void Cargar(CBrimarDoc& doc, const std::string& stem) {
    orvela::CImagen im;
    QVERIFY(!im.Cargar(stem + ".ozm", 2));
    doc.PonerImagen(std::move(im));
    doc.PonerNombre(QString::fromStdString(orvela::TituloFichero(stem)));
}

void CambiarPrimerPixel(CBrimarDoc& doc, uint8_t v) { doc.Imagen().pixeles.Como<uint8_t>()[0] = v; }

uint8_t PrimerByte(const std::string& ruta) {
    const std::string s = LeerFichero(ruta);
    return s.empty() ? 0 : static_cast<uint8_t>(s[0]);
}

}  // namespace

class DocumentoTest : public QObject {
    Q_OBJECT
    Entorno* entorno_ = nullptr;

private slots:
    void initTestCase() { entorno_ = new Entorno; }
    void cleanupTestCase() { delete entorno_; }

    void guardarMensajesEnOrden() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        marco.show();
        marco.EjecutarComando(32840);  // no window
        CChildFrame* v = marco.NuevaVentana();
        marco.EjecutarComando(32840);  // no image
        CBrimarDoc& doc = v->Documento();
        const std::string stem = entorno_->Ruta("g1");
        EscribirImagen(stem, 3, 4, "byte", {5});
        Cargar(doc, stem);
        doc.PonerNombre(QStringLiteral("TMP"));
        marco.EjecutarComando(32840);  // no name
        doc.Imagen().composicionColor = true;
        marco.EjecutarComando(32840);  // a composite without a name: the name check comes first
        doc.PonerNombre(QStringLiteral("g1"));
        marco.EjecutarComando(32840);  // a named composite
        QCOMPARE(entorno_->Ids(ui), (std::vector<int>{61216, 61264, 61272, 61272, 61265}));
        QCOMPARE(ui.esperas, 0);

        // Saved to its own pair.
        ui.mensajes.clear();
        doc.Imagen().composicionColor = false;
        CambiarPrimerPixel(doc, 99);
        marco.EjecutarComando(32840);
        QVERIFY(entorno_->Ids(ui).empty());
        QCOMPARE(PrimerByte(stem + ".ozm"), uint8_t{99});
        QVERIFY(Existe(stem + ".inf"));
    }

    void guardarDeUnFicheroLlamadoTmp() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        CChildFrame* v = marco.NuevaVentana();
        const std::string stem = entorno_->Ruta("TMP");
        EscribirImagen(stem, 2, 2, "byte", {1});
        Cargar(v->Documento(), stem);
        marco.EjecutarComando(32840);
        QCOMPARE(entorno_->Ids(ui), std::vector<int>{61272});
    }

    void guardarComo() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        marco.EjecutarComando(32841);
        CChildFrame* v = marco.NuevaVentana();
        marco.EjecutarComando(32841);
        CBrimarDoc& doc = v->Documento();
        const std::string stem = entorno_->Ruta("gc1");
        EscribirImagen(stem, 3, 4, "byte", {5});
        Cargar(doc, stem);
        doc.Imagen().composicionColor = true;
        marco.EjecutarComando(32841);
        QCOMPARE(entorno_->Ids(ui), (std::vector<int>{61216, 61264, 61265}));
        doc.Imagen().composicionColor = false;

        // Cancelled at the file chooser: nothing changes.
        ui.mensajes.clear();
        ui.ficherosGuardar.push_back(std::nullopt);
        marco.EjecutarComando(32841);
        QCOMPARE(doc.Nombre(), QStringLiteral("gc1"));

        // A name with its extension: the pair takes it, and so does the window.
        const std::string nuevo = entorno_->Ruta("gc2");
        ui.ficherosGuardar.push_back(nuevo + ".ozm");
        marco.EjecutarComando(32841);
        QVERIFY(entorno_->Ids(ui).empty());
        QVERIFY(Existe(nuevo + ".ozm") && Existe(nuevo + ".inf"));
        QCOMPARE(doc.Nombre(), QStringLiteral("gc2"));
        QCOMPARE(v->windowTitle(), QStringLiteral("gc2"));
        QCOMPARE(doc.Imagen().rutaRaster, nuevo + ".ozm");
        // "Guardar" now writes to the new pair.
        CambiarPrimerPixel(doc, 42);
        marco.EjecutarComando(32840);
        QCOMPARE(PrimerByte(nuevo + ".ozm"), uint8_t{42});
        QCOMPARE(PrimerByte(stem + ".ozm"), uint8_t{5});

        // Without an extension ".ozm" is added; a four-letter extension
        // loses its last four characters and keeps the dot.
        ui.ficherosGuardar.push_back(entorno_->Ruta("gc3"));
        marco.EjecutarComando(32841);
        QVERIFY(Existe(entorno_->Ruta("gc3.ozm")));
        ui.ficherosGuardar.push_back(entorno_->Ruta("gc4.tiff"));
        marco.EjecutarComando(32841);
        QVERIFY(Existe(entorno_->Ruta("gc4..ozm")));
        QVERIFY(entorno_->Ids(ui).empty());
        QCOMPARE(ui.esperas, 0);
    }

    void guardarComoQueFalla() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        CChildFrame* v = marco.NuevaVentana();
        const std::string stem = entorno_->Ruta("gf1");
        EscribirImagen(stem, 2, 3, "byte", {8});
        Cargar(v->Documento(), stem);
        const std::string imposible = entorno_->Ruta("no/existe/gf2");
        ui.ficherosGuardar.push_back(imposible + ".ozm");
        marco.EjecutarComando(32841);
        QCOMPARE(entorno_->Ids(ui), std::vector<int>{61260});
        // The window keeps its name and its file.
        QCOMPARE(v->Documento().Nombre(), QStringLiteral("gf1"));
        QCOMPARE(v->Documento().Imagen().rutaRaster, stem + ".ozm");
        QVERIFY(!Existe(imposible + ".ozm"));
        QCOMPARE(ui.esperas, 0);
    }

    void imagenMensajesEnOrden() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        const std::string buena = entorno_->Ruta("im1");
        EscribirImagen(buena, 6, 7, "byte", {1, 2, 3});
        const std::string sinCabecera = entorno_->Ruta("im_sin.ozm");
        { std::ofstream(sinCabecera) << "xxxx"; }
        const std::string paleta = entorno_->Ruta("mia.pal");
        Entorno::EscribirPaletaGris(paleta);

        QString textoEntrada;
        bool aceptado = false;
        int codigo = -1;
        ui.dialogos.push_back([&](QDialog& d) {
            auto* entrada = d.findChild<QLineEdit*>(QStringLiteral("entrada"));
            if (Aceptar(d)) return true;  // nothing chosen: 61219
            ui.ficherosAbrir.push_back(entorno_->Ruta("im1.Ozm"));
            Pulsar(d, "seleccionar");  // mixed case: 61217
            if (!entrada->text().isEmpty() || Aceptar(d)) return true;  // not accepted: silent
            ui.ficherosAbrir.push_back(sinCabecera);
            Pulsar(d, "seleccionar");  // no header: 61218
            ui.ficherosAbrir.push_back(buena + ".ozm");
            Pulsar(d, "seleccionar");
            textoEntrada = entrada->text();
            d.findChild<QRadioButton*>(QStringLiteral("paleta6"))->setChecked(true);
            if (Aceptar(d)) return true;  // custom palette without a file: 61219
            ui.ficherosAbrir.push_back(paleta);
            Pulsar(d, "elegirPaleta");
            codigo = d.findChild<QRadioButton*>(QStringLiteral("paleta6"))->isChecked() ? 6 : -1;
            aceptado = Aceptar(d);
            return aceptado;
        });
        marco.EjecutarComando(32774);
        // The dialog comes first; only then is the missing window reported.
        const std::vector<Mensaje> esperados = {
            Mensaje::Tabla(61219, "ninguna imagen", "una imagen"), Mensaje::Tabla(61217, "ozm", "OZM"),
            Mensaje::Tabla(61218, "inf"), Mensaje::Tabla(61219, "el archivo paleta", "un archivo"),
            Mensaje::Tabla(61216)};
        QCOMPARE(ui.mensajes.size(), esperados.size());
        for (std::size_t i = 0; i < esperados.size(); ++i)
            QVERIFY2(ui.mensajes[i] == esperados[i], qPrintable(QString::number(ui.mensajes[i].id)));
        QCOMPARE(textoEntrada, QStringLiteral("im1"));
        QCOMPARE(codigo, 6);
        QVERIFY(aceptado);
        QCOMPARE(ui.esperas, 0);
    }

    void imagenEnLaVentanaActiva() {
        InterfazGuion ui;
        CMainFrame marco(&ui);
        CChildFrame* v = marco.NuevaVentana();
        const std::string stem = entorno_->Ruta("im2");
        EscribirImagen(stem, 6, 7, "integer", {300, 7});
        std::vector<QString> nombres;
        connect(&v->Documento(), &CBrimarDoc::nombreCambiado, this, [&](const QString& n) { nombres.push_back(n); });
        auto elegir = [&](const std::string& ruta, int paleta) {
            ui.dialogos.push_back([&, ruta, paleta](QDialog& d) {
                ui.ficherosAbrir.push_back(ruta);
                Pulsar(d, "seleccionar");
                d.findChild<QRadioButton*>(QStringLiteral("paleta%1").arg(paleta))->setChecked(true);
                return Aceptar(d);
            });
        };
        elegir(stem + ".ozm", 5);
        marco.EjecutarComando(32774);
        const CBrimarDoc& doc = v->Documento();
        QVERIFY(doc.TieneImagen());
        QCOMPARE(doc.Imagen().indicePaleta, 5u);
        QCOMPARE(doc.Imagen().Filas(), 6L);
        QCOMPARE(doc.Imagen().pixeles.Valor(0), 300.0);
        // Set-up names the window "TMP", then it takes the file's title.
        QCOMPARE(nombres, (std::vector<QString>{"TMP", "im2"}));
        QCOMPARE(v->windowTitle(), QStringLiteral("im2"));

        // Another image replaces it in place, without the AVISO question.
        const std::string otra = entorno_->Ruta("im3");
        EscribirImagen(otra, 2, 2, "byte", {9});
        elegir(otra + ".ozm", 2);
        marco.EjecutarComando(32774);
        QCOMPARE(ui.titulosDialogos, (std::vector<QString>{"Imagen", "Imagen"}));
        QCOMPARE(doc.Nombre(), QStringLiteral("im3"));
        QCOMPARE(doc.Imagen().pixeles.Valor(0), 9.0);

        // A raster shorter than its header says: 61284, the window unchanged.
        const std::string corta = entorno_->Ruta("im4");
        EscribirImagen(corta, 5, 5, "byte", {1});
        { std::ofstream(corta + ".ozm", std::ios::binary | std::ios::trunc) << "abc"; }
        elegir(corta + ".ozm", 2);
        ui.mensajes.clear();
        marco.EjecutarComando(32774);
        QCOMPARE(entorno_->Ids(ui), std::vector<int>{61284});
        QCOMPARE(doc.Nombre(), QStringLiteral("im3"));
        QCOMPARE(doc.Imagen().Filas(), 2L);
        QCOMPARE(ui.esperas, 0);
    }

    void avisoModos() {
        const std::string stem = entorno_->Ruta("av1");
        EscribirImagen(stem, 3, 3, "byte", {10});
        CBrimarDoc doc;
        Cargar(doc, stem);
        CambiarPrimerPixel(doc, 77);
        InterfazGuion ui;

        // Confirmed as it opens (" No."): nothing written, the operation goes on.
        int modoInicial = -1;
        ui.dialogos.push_back([&](QDialog& d) {
            modoInicial = static_cast<CAvisoDlg&>(d).Modo();
            return Aceptar(d);
        });
        QVERIFY(PreguntarAviso(doc, ui));
        QCOMPARE(modoInicial, 2);
        QCOMPARE(ui.titulosDialogos.back(), QStringLiteral("AVISO DE Brimar"));
        QCOMPARE(PrimerByte(stem + ".ozm"), uint8_t{10});

        // Cancel: the operation is abandoned, nothing written.
        ui.dialogos.push_back([](QDialog&) { return false; });
        QVERIFY(!PreguntarAviso(doc, ui));
        QCOMPARE(PrimerByte(stem + ".ozm"), uint8_t{10});

        // Mode 0: saved over its own pair.
        QString mostrado;
        ui.dialogos.push_back([&](QDialog& d) {
            mostrado = d.findChild<QLineEdit*>(QStringLiteral("nombreActual"))->text();
            d.findChild<QRadioButton*>(QStringLiteral("guardarEn"))->setChecked(true);
            return Aceptar(d);
        });
        QVERIFY(PreguntarAviso(doc, ui));
        QCOMPARE(mostrado, QStringLiteral("av1"));
        QCOMPARE(PrimerByte(stem + ".ozm"), uint8_t{77});
        QVERIFY(entorno_->Ids(ui).empty());

        // Mode 1: without a name 61220 and the dialog stays; with one the
        // pair is written under it.
        CambiarPrimerPixel(doc, 88);
        const std::string nuevo = entorno_->Ruta("av2");
        bool aceptadoSinNombre = true;
        int modoTrasElegir = -1;
        ui.dialogos.push_back([&](QDialog& d) {
            d.findChild<QRadioButton*>(QStringLiteral("guardarNuevo"))->setChecked(true);
            aceptadoSinNombre = Aceptar(d);
            d.findChild<QRadioButton*>(QStringLiteral("no"))->setChecked(true);
            ui.ficherosGuardar.push_back(nuevo + ".ozm");
            Pulsar(d, "guardarComo");
            modoTrasElegir = static_cast<CAvisoDlg&>(d).Modo();
            return Aceptar(d);
        });
        QVERIFY(PreguntarAviso(doc, ui));
        QVERIFY(!aceptadoSinNombre);
        QCOMPARE(modoTrasElegir, 1);
        QCOMPARE(ui.mensajes.size(), std::size_t{1});
        QVERIFY(ui.mensajes[0] == Mensaje::Tabla(61220, "ninguna imagen", "una imagen"));
        QCOMPARE(PrimerByte(nuevo + ".ozm"), uint8_t{88});
        QVERIFY(Existe(nuevo + ".inf"));
        QCOMPARE(PrimerByte(stem + ".ozm"), uint8_t{77});
        QCOMPARE(doc.Nombre(), QStringLiteral("av2"));
        QCOMPARE(ui.esperas, 0);
    }

    void avisoSinNadaQueProteger() {
        InterfazGuion ui;
        CBrimarDoc vacio;
        QVERIFY(PreguntarAviso(vacio, ui));
        const std::string stem = entorno_->Ruta("av3");
        EscribirImagen(stem, 2, 2, "byte", {1});
        CBrimarDoc composicion;
        Cargar(composicion, stem);
        composicion.Imagen().composicionColor = true;
        QVERIFY(PreguntarAviso(composicion, ui));
        QVERIFY(ui.titulosDialogos.empty());

        // An image without a file of its own cannot be saved "en" its name.
        CBrimarDoc resultado;
        orvela::CImagen im;
        QVERIFY(!im.Cargar(stem + ".ozm", 2));
        resultado.PonerImagen(std::move(im));
        bool guardarEnActivo = true;
        ui.dialogos.push_back([&](QDialog& d) {
            guardarEnActivo = d.findChild<QRadioButton*>(QStringLiteral("guardarEn"))->isEnabled();
            return false;
        });
        QVERIFY(!PreguntarAviso(resultado, ui));
        QCOMPARE(resultado.Nombre(), QStringLiteral("TMP"));
        QVERIFY(!guardarEnActivo);
    }

    void avisoQueNoPuedeGuardar() {
        const std::string stem = entorno_->Ruta("av4");
        EscribirImagen(stem, 2, 2, "byte", {1});
        CBrimarDoc doc;
        Cargar(doc, stem);
        InterfazGuion ui;
        ui.dialogos.push_back([&](QDialog& d) {
            ui.ficherosGuardar.push_back(entorno_->Ruta("no/existe/av5.ozm"));
            Pulsar(d, "guardarComo");
            return Aceptar(d);
        });
        // The user wanted it kept and it could not be: the operation stops.
        QVERIFY(!PreguntarAviso(doc, ui));
        QCOMPARE(entorno_->Ids(ui), std::vector<int>{61260});
        QCOMPARE(doc.Nombre(), QStringLiteral("av4"));
    }
};

QTEST_MAIN(DocumentoTest)
#include "DocumentoTest.moc"
