// The image of a window: "Imagen", "Guardar", "Guardar como" and the
// "AVISO DE Brimar" question, with their messages in their order.
#include "Entorno.h"
#include "dialogs/CAvisoDlg.h"

using namespace prueba;
using orvela::Mensaje;
using orvela::TituloFichero;

namespace {

int PrimerByte(const std::string& ruta) {
    const std::string s = LeerFichero(ruta);
    return s.empty() ? -1 : static_cast<uint8_t>(s[0]);
}
void CambiarPrimerPixel(CBrimarDoc& doc, uint8_t v) { doc.Imagen().pixeles.Como<uint8_t>()[0] = v; }

}  // namespace

class DocumentoTest : public QObject {
    Q_OBJECT
    Entorno entorno_;

    // Writes a 3 x 4 byte pair of samples 10 under that name; shown in `doc`.
    std::string Mostrar(CBrimarDoc& doc, const std::string& nombre, InterfazGuion& ui) {
        const std::string ruta = entorno_.Imagen(nombre, 3, 4, "byte", {10});
        AbrirImagen(doc, ruta, 2, {}, ui);
        return ruta;
    }

private slots:
    // Saved to its own pair; "Guardar como" to a new one, which the window
    // takes: ".ozm" is added to a name without extension, and a four-letter
    // extension loses its last four characters, keeping the dot.
    void guardarYGuardarComo() {
        Escritorio e;
        auto& [ui, marco] = e;
        const std::string propia = entorno_.Imagen("g1", 3, 4, "byte", {10});
        CBrimarDoc& doc = e.Ventana(propia);
        CambiarPrimerPixel(doc, 99);
        marco.EjecutarComando(32840);
        QCOMPARE(PrimerByte(propia), 99);

        // Cancelled, or a folder that does not exist: the window keeps its file.
        ui.ficherosGuardar = {std::nullopt, entorno_.Ruta("no/existe/g2.ozm")};
        marco.EjecutarComando(32841);
        marco.EjecutarComando(32841);
        QCOMPARE(ui.Ids(), std::vector<int>{61260});
        QCOMPARE(doc.Nombre(), QStringLiteral("g1"));
        QCOMPARE(doc.Imagen().rutaRaster, propia);

        for (auto [elegido, stem] : {std::pair{"gc2.ozm", "gc2"}, {"gc3", "gc3"}, {"gc4.tiff", "gc4."}}) {
            ui.ficherosGuardar = {entorno_.Ruta(elegido)};
            marco.EjecutarComando(32841);
            QVERIFY2(Existe(entorno_.Ruta(stem) + ".ozm") && Existe(entorno_.Ruta(stem) + ".inf"), elegido);
            QCOMPARE(doc.Imagen().rutaRaster, entorno_.Ruta(stem) + ".ozm");
        }
        QCOMPARE(doc.Nombre(), QStringLiteral("gc4"));
        QCOMPARE(marco.VentanaActiva()->windowTitle(), QStringLiteral("gc4"));
        // "Guardar" now writes to the new pair.
        CambiarPrimerPixel(doc, 42);
        marco.EjecutarComando(32840);
        QCOMPARE(PrimerByte(entorno_.Ruta("gc4..ozm")), 42);
        QCOMPARE(PrimerByte(propia), 99);
        QCOMPARE(ui.Ids(), std::vector<int>{61260});
    }

    // The dialog's checks in order; only then is the missing window reported.
    void imagenMensajesEnOrden() {
        Escritorio e;
        auto& [ui, marco] = e;
        const std::string buena = entorno_.Imagen("im1", 6, 7, "byte", {1, 2, 3});
        const std::string sinCabecera = entorno_.Ruta("im_sin.ozm"), paleta = entorno_.Ruta("mia.pal");
        std::ofstream(sinCabecera) << "xxxx";
        Entorno::EscribirPaletaGris(paleta);
        ui.ficherosAbrir = {entorno_.Ruta("im1.Ozm"), sinCabecera, buena, paleta};
        QString trasRechazo, trasElegir;
        bool aceptadoConRechazo = true;
        ui.dialogos.push_back([&](QDialog& d) {
            Aceptar(d);              // nothing chosen: 61219
            Pulsar(d, "seleccionar");  // mixed case: 61217
            trasRechazo = Texto(d, "entrada");
            aceptadoConRechazo = Aceptar(d);  // silent
            Pulsar(d, "seleccionar");  // no header: 61218
            Pulsar(d, "seleccionar");
            trasElegir = Texto(d, "entrada");
            Pulsar(d, "paleta6");
            Aceptar(d);              // a palette of one's own without its file: 61219
            return Pulsando({"elegirPaleta"})(d);
        });
        marco.EjecutarComando(32774);
        QCOMPARE(ui.mensajes, (std::vector<Mensaje>{Mensaje::Tabla(61219, "ninguna imagen", "una imagen"),
                                                   Mensaje::Tabla(61217, "ozm", "OZM"), Mensaje::Tabla(61218, "inf"),
                                                   Mensaje::Tabla(61219, "el archivo paleta", "un archivo"),
                                                   Mensaje::Tabla(61216)}));
        QVERIFY(trasRechazo.isEmpty() && !aceptadoConRechazo);
        QCOMPARE(trasElegir, QStringLiteral("im1"));
    }

    // Shown in the active window with the palette chosen, named after the
    // file; another image replaces it without the AVISO; a short raster is
    // refused and the window stays as it was.
    void imagenEnLaVentanaActiva() {
        Escritorio e;
        auto& [ui, marco] = e;
        const CBrimarDoc& doc = e.Ventana();
        std::vector<QString> nombres;
        connect(&doc, &CBrimarDoc::nombreCambiado, this, [&](const QString& n) { nombres.push_back(n); });
        const std::string corta = entorno_.Imagen("im4", 5, 5, "byte", {1});
        QFile::resize(QString::fromStdString(corta), 3);
        ui.ficherosAbrir = {entorno_.Imagen("im2", 6, 7, "integer", {300, 7}),
                            entorno_.Imagen("im3", 2, 2, "byte", {9}), corta};
        ui.dialogos = {Pulsando({"seleccionar", "paleta5"}), Pulsando({"seleccionar", "paleta2"}),
                       Pulsando({"seleccionar", "paleta2"})};
        marco.EjecutarComando(32774);
        QCOMPARE(doc.Imagen().indicePaleta, 5u);
        QCOMPARE(doc.Imagen().pixeles.Valor(0), 300.0);
        QCOMPARE(nombres, (std::vector<QString>{"TMP", "im2"}));  // set-up, then the file's title
        QCOMPARE(marco.VentanaActiva()->windowTitle(), QStringLiteral("im2"));
        marco.EjecutarComando(32774);
        QCOMPARE(doc.Nombre(), QStringLiteral("im3"));
        QCOMPARE(doc.Imagen().pixeles.Valor(0), 9.0);
        marco.EjecutarComando(32774);
        QCOMPARE(ui.Ids(), std::vector<int>{61284});
        QCOMPARE(ui.titulosDialogos, (std::vector<QString>(3, "Imagen")));
        QCOMPARE(doc.Nombre(), QStringLiteral("im3"));
        QCOMPARE(doc.Imagen().Filas(), 2L);
    }

    // Modes 0 (to its own pair), 1 (a new name, 61220 without one) and
    // 2 (" No.", as it opens), and cancel, which abandons the operation.
    void avisoModos_data() {
        QTest::addColumn<int>("modo");
        QTest::addColumn<QString>("nuevo");
        QTest::addColumn<bool>("sigue");
        QTest::addColumn<int>("id");
        QTest::newRow("no") << 2 << QString() << true << 0;
        QTest::newRow("cancelar") << -1 << QString() << false << 0;
        QTest::newRow("guardarEn") << 0 << QString() << true << 0;
        QTest::newRow("guardarNuevo") << 1 << "av_nuevo" << true << 0;
        QTest::newRow("sin carpeta") << 1 << "no/existe/av" << false << 61260;
    }
    void avisoModos() {
        QFETCH(int, modo);
        QFETCH(QString, nuevo);
        QFETCH(bool, sigue);
        QFETCH(int, id);
        InterfazGuion ui;
        CBrimarDoc doc;
        const std::string propia = Mostrar(doc, std::string("av_") + QTest::currentDataTag(), ui);
        CambiarPrimerPixel(doc, 77);
        const std::string destino = nuevo.isEmpty() ? std::string() : entorno_.Ruta(nuevo.toStdString());
        bool sinNombre = true;
        ui.dialogos.push_back([&](QDialog& d) {
            if (modo == 0) Pulsar(d, "guardarEn");
            if (modo == 1) {
                Pulsar(d, "guardarNuevo");
                sinNombre = Aceptar(d);
                Pulsar(d, "no");
                ui.ficherosGuardar.push_back(destino + ".ozm");
                Pulsar(d, "guardarComo");  // chooses the new name's mode too
            }
            return modo >= 0 && Aceptar(d);
        });
        QCOMPARE(PreguntarAviso(doc, ui), sigue);
        QCOMPARE(ui.titulosDialogos, std::vector<QString>{"AVISO DE Brimar"});
        std::vector<int> ids = modo == 1 ? std::vector<int>{61220} : std::vector<int>{};
        if (id) ids.push_back(id);
        QCOMPARE(ui.Ids(), ids);
        QVERIFY(sinNombre == (modo != 1));
        QCOMPARE(PrimerByte(propia), modo == 0 ? 77 : 10);
        if (!destino.empty()) QCOMPARE(PrimerByte(destino + ".ozm"), sigue ? 77 : -1);
        QCOMPARE(doc.Nombre().toStdString(), sigue && modo == 1 ? TituloFichero(destino) : TituloFichero(propia));
        QCOMPARE(ui.esperas, 0);
    }

    // Nothing to protect in an empty window or a composite: no question.
    // An image without a file of its own cannot be saved "en" its name.
    void avisoSinNadaQueProteger() {
        InterfazGuion ui;
        CBrimarDoc vacio, composicion, resultado;
        QVERIFY(PreguntarAviso(vacio, ui));
        Mostrar(composicion, "av_comp", ui);
        composicion.Imagen().composicionColor = true;
        QVERIFY(PreguntarAviso(composicion, ui));
        QVERIFY(ui.titulosDialogos.empty());
        Mostrar(resultado, "av_res", ui);
        resultado.PonerNombre(QStringLiteral("TMP"));
        bool guardarEn = true;
        ui.dialogos.push_back([&](QDialog& d) {
            guardarEn = d.findChild<QWidget*>(QStringLiteral("guardarEn"))->isEnabled();
            return false;
        });
        QVERIFY(!PreguntarAviso(resultado, ui));
        QVERIFY(!guardarEn);
    }
};

QTEST_MAIN(DocumentoTest)
#include "DocumentoTest.moc"
