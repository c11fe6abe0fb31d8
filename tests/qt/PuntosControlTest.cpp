// Control points on the desktop: the errors dialog of the geometric
// correction (omit, restore, recalculate, its exact lines, 61231), the
// points and error vectors drawn on the input's view, and the editor that
// measures points by clicking on the image and saves the file the reader
// takes back.
#include <QLabel>
#include <QListWidget>

#include "Entorno.h"
#include "corrections/PuntosControl.h"
#include "dialogs/CEditorPuntosDlg.h"
#include "doc/CapaPuntosControl.h"

using namespace prueba;
using namespace orvela;

namespace {

// Four corners of a 100 m square and its centre; line = 10 + y / 10 and
// column = 20 + x / 10, except point 4, measured 4 lines too high. The
// least-squares residuals are then the projection of that blunder:
// (1.2, -0.8, -0.8, 1.2, -0.8) lines, RMS sqrt(0.96).
const char* const kCinco =
    "5\n"
    "10 20 0 0\n"
    "10 30 100 0\n"
    "20 20 0 100\n"
    "24 30 100 100\n"
    "15 25 50 50\n";

QStringList Lineas(QDialog& d, const char* lista) {
    QStringList r;
    auto* l = d.findChild<QListWidget*>(QString::fromLatin1(lista));
    if (!l) return {QStringLiteral("<no existe>")};
    for (int i = 0; i < l->count(); ++i) r << l->item(i)->text();
    return r;
}
void Elegir(QDialog& d, int fila) { d.findChild<QListWidget*>(QStringLiteral("lista_errores"))->setCurrentRow(fila); }
QString Linea(int n, const char* resto) {
    return QString::fromStdString(std::string(n < 10 ? 14 : 12, ' ') + std::to_string(n) + std::string(22, ' ') + resto);
}

}  // namespace

class PuntosControlTest : public QObject {
    Q_OBJECT
    Entorno entorno_;
    std::unique_ptr<Escritorio> e_;

    std::string Fichero(const std::string& nombre, const char* texto) {
        const std::string ruta = entorno_.Ruta(nombre);
        std::ofstream(ruta) << texto;
        return ruta;
    }
    CBrimarView* vista_ = nullptr;
    // The window of the image the points are measured on.
    void Ventana() {
        e_->Ventana(entorno_.Imagen("tm", 40, 50, "byte", {7}));
        vista_ = &e_->marco.VentanaActiva()->Vista();
    }
    vista::CapaPuntosControl* Capa() {
        return dynamic_cast<vista::CapaPuntosControl*>(vista_->Capa(vista::CapaPuntosControl::NombreCapa()));
    }

private slots:
    void init() { e_ = std::make_unique<Escritorio>(); }
    void cleanup() { e_.reset(); }

    // The whole course: the pick opens the dialog on the estimation, the
    // marks show until "Recalcular Estimación" applies them, a failed
    // re-estimation keeps them, the points are drawn on the active window
    // while it is open, and what it leaves omitted is what the correction
    // and its report use.
    void omitirRestaurarYRecalcular() {
        Ventana();
        e_->ui.ficherosAbrir = {Fichero("cinco.txt", kCinco)};
        e_->ui.ficherosGuardar = {entorno_.Ruta("corregida")};
        QStringList alAbrir, marcadas, sinCuarto, restaurada, fallida;
        QStringList rmsAlAbrir, rmsSinCuarto;
        std::vector<int> mensajesFallo;
        int seleccionEnCapa = -2;
        double escala = 0;
        std::size_t puntosEnCapa = 0;
        QString omitidos;
        bool capaTrasElegir = true;
        e_->ui.dialogos.push_back([&](QDialog& d) {
            Pulsar(d, "entrada1_seleccionar");
            omitidos = Texto(d, "campo_omitir");
            capaTrasElegir = Capa() != nullptr;  // gone with the errors dialog
            Escribir(d, "campo_x_maxima", "100");
            Escribir(d, "campo_x_minima", "0");
            Escribir(d, "campo_y_maxima", "100");
            Escribir(d, "campo_y_minima", "0");
            Escribir(d, "campo_columnas", "10");
            Escribir(d, "campo_filas", "10");
            return Pulsando({"salida_guardar"})(d);
        });
        e_->ui.dialogos.push_back([&](QDialog& d) {
            alAbrir = Lineas(d, "lista_errores");
            rmsAlAbrir = Lineas(d, "lista_rms");
            if (!Capa()) return false;
            puntosEnCapa = Capa()->NumeroPuntos();
            escala = Capa()->Escala();
            Elegir(d, 3);
            seleccionEnCapa = Capa()->Seleccionado();
            Pulsar(d, "omitir");
            marcadas = Lineas(d, "lista_errores");
            Pulsar(d, "recalcular");
            sinCuarto = Lineas(d, "lista_errores");
            rmsSinCuarto = Lineas(d, "lista_rms");
            Elegir(d, 3);
            Pulsar(d, "restaurar");
            Pulsar(d, "recalcular");
            restaurada = Lineas(d, "lista_errores");
            // Two points left: the estimation fails and the marks stay.
            for (int i : {0, 1, 2}) {
                Elegir(d, i);
                Pulsar(d, "omitir");
            }
            Pulsar(d, "recalcular");
            mensajesFallo = e_->ui.Ids();
            fallida = Lineas(d, "lista_errores");
            for (int i : {0, 1, 2}) {
                Elegir(d, i);
                Pulsar(d, "restaurar");
            }
            Elegir(d, 3);
            Pulsar(d, "omitir");
            Pulsar(d, "recalcular");
            return Aceptar(d);
        });
        e_->Ejecutar({32814});

        QCOMPARE(QStringList(e_->ui.titulosDialogos.begin(), e_->ui.titulosDialogos.end()),
                 QStringList({"Correcciones geométricas", "Errores De los Puntos De Control"}));
        QCOMPARE(alAbrir, QStringList({Linea(1, "1.200000"), Linea(2, "0.800000"), Linea(3, "0.800000"),
                                       Linea(4, "1.200000"), Linea(5, "0.800000")}));
        QCOMPARE(rmsAlAbrir, QStringList({"0.979796"}));
        QCOMPARE(puntosEnCapa, std::size_t(5));
        QCOMPARE(escala, 2.0);  // 1.2 pixels against a tenth of 40 rows: x 3.3, rounded down to 2
        QCOMPARE(seleccionEnCapa, 3);
        QCOMPARE(marcadas[3], Linea(4, "Omitir"));
        QCOMPARE(marcadas[0], alAbrir[0]);
        QCOMPARE(sinCuarto, QStringList({Linea(1, "0.000000"), Linea(2, "0.000000"), Linea(3, "0.000000"),
                                         Linea(4, "Omitido"), Linea(5, "0.000000")}));
        QCOMPARE(rmsSinCuarto, QStringList({"0.000000"}));
        QCOMPARE(restaurada, alAbrir);
        QCOMPARE(mensajesFallo, (std::vector<int>{msg::kEstimacionIncorrecta}));
        QCOMPARE(fallida[0], Linea(1, "Omitir"));
        QCOMPARE(fallida[3], Linea(4, "1.200000"));
        QCOMPARE(omitidos, QStringLiteral("4"));
        QVERIFY(!capaTrasElegir);
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{msg::kEstimacionIncorrecta}));
        const std::string informe = LeerFichero(entorno_.Ruta("corregida_Estimacion.txt"));
        const auto rmsInforme = informe.rfind('\t');
        QVERIFY(rmsInforme != std::string::npos && std::abs(std::stod(informe.substr(rmsInforme + 1))) < 1e-9);
        QVERIFY(informe.find("\n 24      ") == std::string::npos);  // point 4 left out
        QVERIFY(Capa() == nullptr);
    }

    // Collinear points: 61231 at the pick, the name cleared, no errors
    // dialog; a cancelled errors dialog gives the pick up as well; a
    // second point numbered from 10 gets the narrower padding.
    void estimacionFallidaYCancelar() {
        Ventana();
        e_->ui.ficherosAbrir = {Fichero("alineados.txt", "3\n1 1 0 0\n2 2 10 10\n3 3 20 20\n"),
                                Fichero("cinco.txt", kCinco)};
        QString trasFallo = "x", trasCancelar = "x";
        e_->ui.dialogos.push_back([&](QDialog& d) {
            Pulsar(d, "entrada1_seleccionar");
            trasFallo = Texto(d, "entrada1_nombre");
            Pulsar(d, "entrada1_seleccionar");
            trasCancelar = Texto(d, "entrada1_nombre");
            return false;
        });
        e_->ui.dialogos.push_back([](QDialog& d) {
            Pulsar(d, "cancelar");
            return false;
        });
        e_->Ejecutar({32814});
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{msg::kEstimacionIncorrecta}));
        QCOMPARE(QStringList(e_->ui.titulosDialogos.begin(), e_->ui.titulosDialogos.end()),
                 QStringList({"Correcciones geométricas", "Errores De los Puntos De Control"}));
        QCOMPARE(trasFallo, QString());
        QCOMPARE(trasCancelar, QString());
        QCOMPARE(Linea(12, "Omitido"), QString::fromStdString(LineaErrorPunto(12, "Omitido")));
        QCOMPARE(int(Linea(12, "Omitido").indexOf(QLatin1String("12"))), 12);
    }

    // The editor: a click asks for X and Y; the same pixel clicked at two
    // zoom levels gives the same line and column; errors from the third
    // point on; Backspace takes the last point back; the file written reads
    // back through the control-point reader; closing with points not saved
    // asks first; the tool and the drawing go with the editor.
    void editorDePuntos() {
        Ventana();
        CBrimarView& v = *vista_;
        v.resize(400, 320);
        e_->Ejecutar({cmd::kEditorPuntos});
        auto* editor = e_->marco.findChild<CEditorPuntosDlg*>(QStringLiteral("editor_puntos"));
        QVERIFY(editor && editor->isVisible());
        QCOMPARE(v.NombreHerramienta(), QStringLiteral("puntos_control"));
        auto punto = [&](long fila, long columna, const char* x, const char* y) {
            e_->ui.dialogos.push_back([x, y](QDialog& d) {
                Escribir(d, "campo_x", QString::fromLatin1(x));
                Escribir(d, "campo_y", QString::fromLatin1(y));
                return Aceptar(d);
            });
            Pulsar(v, v.EnPantalla(fila + 0.5, columna + 0.5).toPoint());
        };
        // Pixel (30, 20) at the whole view, then again two levels closer in.
        punto(30, 20, "0", "0");
        const double paso = v.EnPantalla(0, 1).x() - v.EnPantalla(0, 0).x();
        v.AcercarEn(v.EnPantalla(30.5, 20.5).toPoint());
        v.AcercarEn(v.EnPantalla(30.5, 20.5).toPoint());
        QVERIFY(v.EnPantalla(0, 1).x() - v.EnPantalla(0, 0).x() > 3 * paso);
        punto(30, 20, "0", "0");
        QCOMPARE(editor->Puntos().size(), std::size_t(2));
        QCOMPARE(editor->Puntos()[1].fila, 10.0);  // 40 rows - row 30
        QCOMPARE(editor->Puntos()[1].columna, 20.0);
        QCOMPARE(editor->Puntos()[0].fila, editor->Puntos()[1].fila);
        QCOMPARE(editor->Puntos()[0].columna, editor->Puntos()[1].columna);
        QKeyEvent atras(QEvent::KeyPress, Qt::Key_Backspace, Qt::NoModifier);
        QCoreApplication::sendEvent(&v, &atras);
        QCOMPARE(editor->Puntos().size(), std::size_t(1));
        v.AlejarEn(QPoint(10, 10));
        v.AlejarEn(QPoint(10, 10));

        // A bad number is refused with its sentence and adds nothing.
        e_->ui.dialogos.push_back([](QDialog& d) {
            Escribir(d, "campo_x", "cien");
            Escribir(d, "campo_y", "0");
            return Aceptar(d);
        });
        Pulsar(v, v.EnPantalla(30.5, 30.5).toPoint());
        QCOMPARE(e_->ui.mensajes, (std::vector<Mensaje>{Mensaje::Libre(texto::kCoordenadasPunto)}));
        QCOMPARE(editor->Puntos().size(), std::size_t(1));

        auto* rms = editor->findChild<QLabel*>(QStringLiteral("rms"));
        punto(30, 30, "100", "0");
        QVERIFY(!Lineas(*editor, "lista_puntos")[1].contains(QLatin1String("0.000000")));
        punto(20, 20, "0", "100");
        QVERIFY(Lineas(*editor, "lista_puntos")[2].endsWith(QLatin1String("  0.000000")));
        QCOMPARE(rms->text(), QStringLiteral("Error Global. RMS: 0.000000"));
        // Four columns too far right on the fourth corner: a residual of one
        // column at each corner.
        punto(20, 34, "100", "100");
        for (const QString& l : Lineas(*editor, "lista_puntos")) QVERIFY2(l.endsWith(QLatin1String("  1.000000")), qPrintable(l));
        QCOMPARE(rms->text(), QStringLiteral("Error Global. RMS: 1.000000"));
        QVERIFY(Capa() && Capa()->ConVectores());
        QCOMPARE(Capa()->NumeroPuntos(), std::size_t(4));

        e_->ui.ficherosGuardar = {entorno_.Ruta("medidos")};
        Pulsar(*editor, "guardar");
        std::string error;
        const auto leidos = LeerPuntosControl(entorno_.Ruta("medidos.txt"), &error);
        QVERIFY2(leidos, error.c_str());
        QCOMPARE(leidos->size(), editor->Puntos().size());
        for (std::size_t k = 0; k < leidos->size(); ++k) {
            const auto& a = (*leidos)[k];
            const auto& b = editor->Puntos()[k];
            QVERIFY(a.fila == b.fila && a.columna == b.columna && a.x == b.x && a.y == b.y);
        }
        QCOMPARE((*leidos)[3].fila, 20.0);
        QCOMPARE((*leidos)[3].columna, 34.0);
        QVERIFY(std::abs(EstimarPolinomio(*leidos).rms - 1.0) < 1e-9);

        // Saved: closing asks nothing. A new editor with an unsaved point asks.
        QPointer<CEditorPuntosDlg> cerrado(editor);
        Pulsar(*editor, "cerrar");
        QVERIFY(e_->ui.preguntas.empty());
        QCOMPARE(v.NombreHerramienta(), QString());
        QVERIFY(Capa() == nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(cerrado.isNull());

        e_->Ejecutar({cmd::kEditorPuntos});
        editor = e_->marco.findChild<CEditorPuntosDlg*>(QStringLiteral("editor_puntos"));
        punto(5, 5, "1", "2");
        e_->ui.respuestas = {RespuestaGuardar::Cancelar};
        Pulsar(*editor, "cerrar");
        QVERIFY(editor->isVisible());  // the user goes on measuring
        e_->ui.respuestas = {RespuestaGuardar::Descartar};
        Pulsar(*editor, "cerrar");
        QCOMPARE(QStringList(e_->ui.preguntas.begin(), e_->ui.preguntas.end()), QStringList({"Puntos de control", "Puntos de control"}));
        QCOMPARE(v.NombreHerramienta(), QString());
    }

    // The editor needs an image in the active window.
    void editorSinImagen() {
        e_->Ejecutar({cmd::kEditorPuntos});
        e_->Ventana();
        e_->Ejecutar({cmd::kEditorPuntos});
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{msg::kNoHayVentanaActiva, msg::kSinImagen}));
    }

    // The factor of the error vectors: a tenth of the shorter side over the
    // largest error, rounded down to 1, 2 or 5 times a power of ten.
    void escalaDeLosVectores() {
        using vista::CapaPuntosControl;
        QCOMPARE(CapaPuntosControl::EscalaPara(1.2, 40, 50), 2.0);
        QCOMPARE(CapaPuntosControl::EscalaPara(0.3, 7000, 6000), 2000.0);
        QCOMPARE(CapaPuntosControl::EscalaPara(0.07, 100, 100), 100.0);
        QCOMPARE(CapaPuntosControl::EscalaPara(30, 100, 100), 1.0);
        QCOMPARE(CapaPuntosControl::EscalaPara(0, 100, 100), 1.0);
    }
};

QTEST_MAIN(PuntosControlTest)
#include "PuntosControlTest.moc"
