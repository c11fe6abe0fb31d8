// The training phase and the class sampling on the view, with a scripted
// user: the checks in their order, the dialogs' refusals, the same clicks at
// two zoom levels writing the file orvela-cli writes from the same points;
// and the decision inspector on a classification of the session and on
// one opened from disk.
#include <QListWidget>
#include <QRadioButton>
#include <QTableWidget>
#include <cmath>

#include "Entorno.h"
#include "classification/FicheroClase.h"
#include "dialogs/CDecisionDlg.h"
#include "dialogs/ComandosClases.h"
#include "operations/ClasificacionesHechas.h"

using namespace prueba;
using namespace orvela;

namespace {

constexpr long kFilas = 20, kColumnas = 30;

std::vector<double> Banda(int a, int b) {
    std::vector<double> v;
    for (long f = 0; f < kFilas; ++f)
        for (long c = 0; c < kColumnas; ++c) v.push_back(static_cast<double>((a * f + b * c) % 250));
    return v;
}

void Clic(CBrimarView& v, QPoint p, Qt::MouseButton boton = Qt::LeftButton) {
    for (auto tipo : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const Qt::MouseButtons abajo = tipo == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(boton);
        QMouseEvent e(tipo, QPointF(p), v.viewport()->mapToGlobal(QPointF(p)), boton, abajo, Qt::NoModifier);
        QCoreApplication::sendEvent(v.viewport(), &e);
    }
}
// A screen point inside pixel (f, c) as the view shows it now.
QPoint Sobre(const CBrimarView& v, double f, double c) {
    const QPointF p = v.EnPantalla(f + 0.5, c + 0.5);
    return QPoint(static_cast<int>(std::floor(p.x())), static_cast<int>(std::floor(p.y())));
}

// The training dialog answered with these bands.
InterfazGuion::Guion Entrenar(int n) {
    return [n](QDialog& d) {
        Escribir(d, "numeroBandas", QString::number(n));
        Pulsar(d, "seleccionar");
        return Aceptar(d);
    };
}

}  // namespace

class ClasesTest : public QObject {
    Q_OBJECT
    Entorno entorno_;
    std::string tm3_, tm4_, TM4_;

    CBrimarView& Vista(Escritorio& e, const std::string& ruta) {
        e.Ventana(ruta);
        CChildFrame* w = e.marco.VentanaActiva();
        w->resize(QSize(500, 450) + (w->size() - w->Vista().size()));
        return w->Vista();
    }

private slots:
    void initTestCase() {
        Georreferencia geo{0, 0, 900, 600, SinDato, 30, 1};
        tm3_ = entorno_.Imagen("tm3", kFilas, kColumnas, "byte", Banda(7, 3), "UTM-30N", geo);
        tm4_ = entorno_.Imagen("tm4", kFilas, kColumnas, "byte", Banda(13, 5), "UTM-30N", geo);
        TM4_ = entorno_.Imagen("TM4", kFilas, kColumnas, "byte", Banda(13, 5), "UTM-30N", geo);
    }

    // The band choice refuses a count below one, a file that is not an
    // image, a band of another size; the list names the accepted bands;
    // "Aceptar" needs bands, and cancelling keeps the selection there was.
    void faseEntrenamiento() {
        Escritorio e;
        const std::string otra = entorno_.Imagen("otra", kFilas, kColumnas + 1, "byte", {1});
        const std::string geoDistinta = entorno_.Imagen("geo", kFilas, kColumnas, "byte", {1}, "UTM-29N");
        e.ui.ficherosAbrir = {tm3_, entorno_.Ruta("clase.txt"), tm3_, otra, tm3_, tm4_};
        QStringList lista;
        e.ui.dialogos.push_back([&](QDialog& d) {
            Escribir(d, "numeroBandas", "0");
            Pulsar(d, "seleccionar");  // 61230
            if (Aceptar(d)) return true;  // nothing chosen: 61219
            Escribir(d, "numeroBandas", "2");
            Pulsar(d, "seleccionar");  // tm3, then not an image: 61217
            Pulsar(d, "seleccionar");  // tm3, then another size: 61222
            Pulsar(d, "seleccionar");  // tm3, tm4
            auto* l = d.findChild<QListWidget*>("lista");
            for (int i = 0; l && i < l->count(); ++i) lista << l->item(i)->text();
            return Aceptar(d);
        });
        e.Ejecutar({cmd::kFaseEntrenamiento});
        QCOMPARE(e.ui.mensajes,
                 (std::vector<Mensaje>{Mensaje::Tabla(msg::kValorIncorrecto, relleno::kNumeroBandasEntrada),
                                       Mensaje::Tabla(msg::kNoSeleccionadaEntrada, relleno::kNingunaBanda,
                                                      relleno::kLasBandasClasificar),
                                       Mensaje::Tabla(msg::kExtensionInadecuada, relleno::kOzm, relleno::kOzmMayusculas),
                                       Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kBandas)}));
        QCOMPARE(lista, (QStringList{"Banda 1:  tm3", "Banda 2:  tm4"}));
        const Entrenamiento& t = e.marco.Entrenamiento();
        QVERIFY(t.hecho);
        QCOMPARE(t.bandas.size(), std::size_t(2));
        QCOMPARE(t.bandas[1].ruta, tm4_);
        QVERIFY(!t.georreferenciasDistintas);
        QCOMPARE(t.cabecera.sistema, std::string("UTM-30N"));
        // Cancelled: the selection stays. Accepted again: replaced whole,
        // and a band of another georeference makes it "unknown".
        e.ui.ficherosAbrir = {tm3_};
        e.ui.dialogos.push_back([](QDialog& d) {
            Entrenar(1)(d);
            return false;
        });
        e.Ejecutar({cmd::kFaseEntrenamiento});
        QCOMPARE(e.marco.Entrenamiento().bandas.size(), std::size_t(2));
        e.ui.ficherosAbrir = {tm4_, geoDistinta};
        e.ui.dialogos.push_back(Entrenar(2));
        e.Ejecutar({cmd::kFaseEntrenamiento});
        QCOMPARE(e.marco.Entrenamiento().bandas[0].nombre, std::string("tm4"));
        QVERIFY(e.marco.Entrenamiento().georreferenciasDistintas);
        QCOMPARE(e.marco.Entrenamiento().cabecera.sistema, std::string("unknown"));
    }

    // "Establecer clase": training (61279), a window (61216) with an image
    // (61264) named exactly as a training band (61280, letter case counts);
    // then the dialog wants a file (61220) and, for rectangles, a height and
    // width of at least one (61240), and keeps the choice open meanwhile.
    void establecerClaseComprobado() {
        Escritorio e;
        e.Ejecutar({cmd::kEstablecerClase});
        e.ui.ficherosAbrir = {tm3_, tm4_};
        e.ui.dialogos.push_back(Entrenar(2));
        e.Ejecutar({cmd::kFaseEntrenamiento, cmd::kEstablecerClase});
        e.Ventana();
        e.Ejecutar({cmd::kEstablecerClase});
        CBrimarView& mayusculas = Vista(e, TM4_);
        e.Ejecutar({cmd::kEstablecerClase});
        QCOMPARE(e.ui.Ids(), (std::vector<int>{msg::kFaseEntrenamiento, msg::kNoHayVentanaActiva, msg::kSinImagen,
                                               msg::kBandaEntrenamiento}));
        QCOMPARE(e.ui.titulosDialogos.size(), std::size_t(1));  // only the training's
        QCOMPARE(mayusculas.NombreHerramienta(), QString());
        e.ui.mensajes.clear();

        CBrimarView& v = Vista(e, tm4_);
        e.ui.ficherosGuardar = {entorno_.Ruta("agua.txt")};
        QString nombre;
        bool alturaActiva = true;
        e.ui.dialogos.push_back([&](QDialog& d) {
            if (Aceptar(d)) return true;  // 61220
            Pulsar(d, "guardarEn");
            nombre = Texto(d, "nombre");
            alturaActiva = d.findChild<QLineEdit*>("altura")->isEnabled();
            Pulsar(d, "rectangulos");
            Escribir(d, "altura", "0");
            if (Aceptar(d)) return true;  // 61240
            Escribir(d, "altura", "");
            if (Aceptar(d)) return true;  // 61240
            Escribir(d, "altura", "1");
            Escribir(d, "anchura", "2");
            return Aceptar(d);
        });
        e.Ejecutar({cmd::kEstablecerClase});
        QCOMPARE(e.ui.mensajes,
                 (std::vector<Mensaje>{Mensaje::Tabla(msg::kNoSeleccionadaSalida, relleno::kNingunArchivoTxt,
                                                      relleno::kUnFichero),
                                       Mensaje::Tabla(msg::kRectangulo), Mensaje::Tabla(msg::kRectangulo)}));
        QCOMPARE(nombre, QStringLiteral("agua"));
        QVERIFY(!alturaActiva);
        QCOMPARE(v.NombreHerramienta(), QStringLiteral("clase"));
        // A right click without samples writes the file all the same: the
        // statistics of no sample, in the file's shape.
        Clic(v, Sobre(v, 3, 3), Qt::RightButton);
        QCOMPARE(v.NombreHerramienta(), QString());
        const std::string vacio = LeerFichero(entorno_.Ruta("agua.txt"));
        QVERIFY(vacio.rfind("\n\ntm3\nND M", 0) == 0);
        QVERIFY(vacio.find("Valor Medio:-nan\n") != std::string::npos ||
                vacio.find("Valor Medio:nan\n") != std::string::npos);
        QCOMPARE(e.marco.TextoPanel(0), QStringLiteral("Guardado: agua.txt"));
    }

    // The same clicks at the whole-image level and zoomed twice give the
    // same class file, the one orvela-cli writes from those points; each
    // accepted click stays marked until the right click; a click off the
    // image adds nothing (61258).
    void mismosClicsADosZooms() {
        const Declaracion* clase = BuscarPorOrden("clase");
        QVERIFY(clase);
        Valores valores;
        valores.Poner(ClaveDe(*clase, "modo"), 1.0);
        valores.Poner(ClaveDe(*clase, "punto"), TablaNumeros{{2, 3}, {0, 0}, {19, 29}, {7, 11}});
        const auto cli = EjecutarAFichero(*clase, {{tm3_, tm4_}}, {{}}, Completar(*clase, valores),
                                          entorno_.Ruta("cli"));
        QVERIFY(!cli.fallo);
        const std::string esperado = LeerFichero(entorno_.Ruta("cli.txt"));
        QVERIFY(esperado.size() > 100);

        for (int zoom = 0; zoom < 2; ++zoom) {
            Escritorio e;
            e.ui.ficherosAbrir = {tm3_, tm4_};
            e.ui.dialogos.push_back(Entrenar(2));
            e.Ejecutar({cmd::kFaseEntrenamiento});
            CBrimarView& v = Vista(e, tm3_);
            const QSize entero = v.Destino().size();
            QCOMPARE(entero, QSize(kColumnas, kFilas));  // one screen pixel a sample
            if (zoom) {
                // The whole image dragged as the zoom rectangle: 500 / 30
                // screen pixels a sample.
                e.Ejecutar({cmd::kZoomAdelante});
                Arrastrar(v, QPoint(0, 0), QPoint(kColumnas - 1, kFilas - 1));
                QCOMPARE(v.Origen(), QRect(0, 0, kColumnas, kFilas));
                QVERIFY(v.Destino().width() > 10 * kColumnas);
            }
            const std::string stem = entorno_.Ruta("zoom" + std::to_string(zoom));
            e.ui.ficherosGuardar = {stem + ".txt"};
            e.ui.dialogos.push_back([](QDialog& d) {
                Pulsar(d, "guardarEn");
                return Pulsando({"cruces"})(d);
            });
            e.Ejecutar({cmd::kEstablecerClase});
            auto* h = dynamic_cast<vista::HerramientaPuntos*>(v.Herramienta());
            QVERIFY(h);
            Clic(v, Sobre(v, 2, 3));
            Clic(v, Sobre(v, 0, 0));
            Clic(v, Sobre(v, kFilas + 2, 3));
            Clic(v, Sobre(v, 19, 29));
            Clic(v, Sobre(v, 7, 11));
            QCOMPARE(e.ui.Ids(), (std::vector<int>{msg::kFueraDeImagen}));
            QCOMPARE(h->Puntos().size(), std::size_t(4));
            QCOMPARE(h->Puntos()[3].filaPixel, 7L);
            QCOMPARE(h->Puntos()[3].columnaPixel, 11L);
            QVERIFY(!Existe(stem + ".txt"));
            Clic(v, Sobre(v, 5, 5), Qt::RightButton);
            QCOMPARE(v.NombreHerramienta(), QString());
            QCOMPARE(LeerFichero(stem + ".txt"), esperado);
        }
    }

    // A classification of this session is explained at once: per class the
    // figure of the rule, the winner (the image's label) and the runner-up.
    // Opened from disk, its bands, classes and rule are asked for.
    void inspectorDeDecision() {
        const std::string agua = entorno_.Ruta("c_agua.txt"), suelo = entorno_.Ruta("c_suelo.txt");
        {
            std::ofstream(agua) << "\n\ntm3\nND Máximo:0\nND Mínimo:0\nValor Medio:40\nDesviación Típica:5\n\n"
                                   "tm4\nND Máximo:0\nND Mínimo:0\nValor Medio:60\nDesviación Típica:5\n\n"
                                   "Matriz De Covarianza:\n25 0 \n0 25 \n";
            std::ofstream(suelo) << "\n\ntm3\nND Máximo:0\nND Mínimo:0\nValor Medio:120\nDesviación Típica:9\n\n"
                                    "tm4\nND Máximo:0\nND Mínimo:0\nValor Medio:150\nDesviación Típica:9\n\n"
                                    "Matriz De Covarianza:\n81 0 \n0 81 \n";
        }
        Escritorio e;
        const Declaracion* sup = BuscarPorOrden("supervisada");
        Valores val;
        val.Poner(ClaveDe(*sup, "regla"), 0.0);
        const auto hecha = EjecutarAFichero(*sup, {{tm3_, tm4_}, {}}, {{}, {agua, suelo}}, Completar(*sup, val),
                                            entorno_.Ruta("clasificada"));
        QVERIFY(!hecha.fallo);
        CBrimarView& v = Vista(e, entorno_.Ruta("clasificada.ozm"));
        e.Ejecutar({cmd::kInspeccionarDecision});
        QCOMPARE(v.NombreHerramienta(), QStringLiteral("decision"));
        QVERIFY(e.ui.titulosDialogos.empty());  // recognised: nothing asked
        // Pixel (1, 2): tm3 = 7 + 6 = 13, tm4 = 13 + 10 = 23; distances
        // sqrt(27² + 37²) = 45.8039 to agua, sqrt(107² + 127²) = 166.0662 to
        // suelo: agua (ND 50) wins.
        Clic(v, Sobre(v, 1, 2));
        CDecisionDlg* w = VentanaDecision(&e.marco);
        QVERIFY(w);
        QVERIFY(w->isVisible());
        QCOMPARE(w->TablaBandas()->item(0, 1)->text(), QStringLiteral("13"));
        QCOMPARE(w->TablaBandas()->item(1, 1)->text(), QStringLiteral("23"));
        QTableWidget* t = w->TablaClases();
        QCOMPARE(t->rowCount(), 2);
        QCOMPARE(t->item(0, 0)->text(), QStringLiteral("c_agua"));
        QCOMPARE(t->item(0, 1)->text(), QStringLiteral("50"));
        QCOMPARE(t->item(0, 2)->text().left(7), QStringLiteral("45.8039"));
        QCOMPARE(t->item(1, 2)->text().left(8), QStringLiteral("166.0662"));
        QCOMPARE(t->item(0, 3)->text(), QStringLiteral("Ganadora"));
        QCOMPARE(t->item(1, 3)->text(), QStringLiteral("Segunda"));
        QCOMPARE(w->Aviso(), QString());
        // Pixel (19, 29): tm3 = (133 + 87) % 250 = 220, tm4 = (247 + 145) % 250
        // = 142: suelo (ND 135).
        Clic(v, Sobre(v, 19, 29));
        QCOMPARE(VentanaDecision(&e.marco), w);
        QVERIFY(w->Posicion().contains(QStringLiteral("135")));
        QCOMPARE(t->item(1, 3)->text(), QStringLiteral("Ganadora"));
        Clic(v, Sobre(v, kFilas + 2, 3));
        QCOMPARE(e.ui.Ids(), (std::vector<int>{msg::kFueraDeImagen}));
        Clic(v, Sobre(v, 0, 0), Qt::RightButton);
        QCOMPARE(v.NombreHerramienta(), QString());

        // Forgotten (another session): the bands, the class files and the
        // rule are asked for; the wrong rule is shown against the image.
        OlvidarClasificaciones();
        e.ui.ficherosAbrir = {tm3_, tm4_, agua, suelo};
        e.ui.dialogos.push_back([](QDialog& d) {
            Pulsar(d, "entrada0_seleccionar");
            Pulsar(d, "entrada0_seleccionar");
            Pulsar(d, "entrada1_seleccionar");
            Pulsar(d, "entrada1_seleccionar");
            return Pulsando({"campo_regla_2"})(d);
        });
        e.Ejecutar({cmd::kInspeccionarDecision});
        QCOMPARE(e.ui.titulosDialogos, (std::vector<QString>{QStringLiteral("Inspector de decisión")}));
        QCOMPARE(v.NombreHerramienta(), QStringLiteral("decision"));
        Clic(v, Sobre(v, 1, 2));
        QVERIFY(t->horizontalHeaderItem(2)->text().contains(QStringLiteral("verosimilitud")));
        QCOMPARE(t->item(0, 3)->text(), QStringLiteral("Ganadora"));
        QCOMPARE(w->Aviso(), QString());
        // An image of another type is no classification.
        Vista(e, entorno_.Imagen("real", 2, 2, "real", {1}));
        e.Ejecutar({cmd::kInspeccionarDecision});
        QCOMPARE(e.ui.mensajes.back(), Mensaje::Libre(texto::kInspectorNoByte));
    }
};

QTEST_MAIN(ClasesTest)
#include "ClasesTest.moc"
