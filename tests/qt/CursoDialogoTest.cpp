// The desktop course of an operation, driven by a scripted user: the checks
// before the dialog, the dialog's own checks in their order, the parameter
// dialogs, the AVISO, the output to a file pair or to the window, and the
// computation off the user-interface thread.
#include <QElapsedTimer>
#include <QThread>
#include <QTimer>
#include <atomic>

#include "Entorno.h"
#include "dialogs/CursoDialogo.h"

using namespace orvela;
using namespace prueba;

namespace {

// Keys of the test declaration.
const Clave kTipoFiltro{"tipo_filtro"}, kEscalar{"escalar"}, kCoeficientes{"coeficientes"};

QString NombreCampo(const char* c, int k = -1) {
    const QString n = QStringLiteral("campo_%1").arg(QString::fromUtf8(c));
    return k < 0 ? n : n + QStringLiteral("_%1").arg(k);
}

// What the computation of the test declaration saw.
struct Visto {
    int llamadas = 0;
    Valores valores;
    bool otroHilo = false, temporizador = false;
};
Visto visto;
std::atomic<bool> esperarTemporizador{false}, temporizadorDisparado{false};

// One input that admits the window; a scalar that takes part with the first
// choice, coefficients in a parameter dialog with the second. It computes a
// copy of the input; when asked, it first waits until a timer of the
// user-interface thread has fired: proof that the windows are served.
Declaracion ConParametros() {
    Declaracion d;
    d.titulo = "Filtrado de prueba";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    auto media = [](const Valores& v) { return v.Entero(kTipoFiltro) == 0; };
    d.campos = {
        {.clave = &kTipoFiltro, .tipo = TipoCampo::Eleccion, .grupo = "Tipo de filtro",
         .opciones = {{"Media", "media"}, {"Personalizado", "personalizado"}}},
        {.clave = &kEscalar, .tipo = TipoCampo::Real, .grupo = "Valor del Escalar", .etiqueta = "Establecer",
         .porDefecto = 1, .aplica = media},
        {.clave = &kCoeficientes, .tipo = TipoCampo::ListaReales,
         .etiqueta = "Introduzca los coeficientes del filtro:", .subdialogo = "Filtro Personalizado 3 x 3",
         .aplica = [media](const Valores& v) { return !media(v); }, .cantidad = [](const Valores&) { return 9; }},
    };
    d.alAceptar = [](const Valores& v, const Elegidas&) -> std::optional<Mensaje> {
        if (v.Tiene(kEscalar) && v.Numero(kEscalar) <= 0)
            return Mensaje::Tabla(msg::kNoSeleccionadaEntrada, "un valor correcto para el escalar", "un valor >0");
        if (v.Tiene(kCoeficientes) && std::ranges::all_of(v.Lista(kCoeficientes), [](double x) { return x == 0; }))
            return Mensaje::Tabla(msg::kTodosNulos, "Los coeficientes");
        return std::nullopt;
    };
    d.calcular = [](const Contexto& c) {
        visto = {visto.llamadas + 1, c.valores, QThread::currentThread() != qApp->thread()};
        QElapsedTimer t;
        t.start();
        while (esperarTemporizador && !temporizadorDisparado && t.elapsed() < 10000) QThread::msleep(5);
        visto.temporizador = temporizadorDisparado;
        Resultado r;
        r.imagenes.emplace_back();
        r.imagenes[0].CopiarCabecera(*c.entradas[0]);
        r.imagenes[0].pixeles = c.entradas[0]->pixeles.Copia();
        return r;
    };
    d.sufijo = [](const Valores&) { return std::string("_Filtrado_de_Prueba"); };
    return d;
}

const Declaracion& Convertir() { return *BuscarPorOrden("convertir"); }
const Declaracion& Aritmetica() { return *BuscarPorOrden("aritmetica"); }

}  // namespace

class CursoDialogoTest : public QObject {
    Q_OBJECT
    Entorno entorno_;
    std::unique_ptr<Escritorio> e_;

    void Ejecutar(const Declaracion& d) { EjecutarOperacion(d, e_->marco, e_->ui); }

private slots:
    void init() {
        visto = Visto{};
        temporizadorDisparado = false;
        e_ = std::make_unique<Escritorio>();
    }
    void cleanup() { e_.reset(); }

    // An operation offering the window's image checks it before its dialog.
    void ventanaComprobadaAntesDelDialogo() {
        Ejecutar(Convertir());
        CBrimarDoc& doc = e_->Ventana();
        Ejecutar(Convertir());
        AbrirImagen(doc, entorno_.Imagen("comp", 1, 1, "byte", {1}), 2, {}, e_->ui);
        doc.Imagen().composicionColor = true;
        Ejecutar(Convertir());
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{msg::kNoHayVentanaActiva, msg::kSinImagen, msg::kComposicionColor}));
        QVERIFY(e_->ui.titulosDialogos.empty());
    }

    // The check of a chosen file sees the headers chosen before it; without
    // a window, output to the window stops with 61216 before the inputs are
    // read (the second raster is short: reading it would give 61284).
    void eleccionDeFicherosYSinVentana() {
        const std::string a = entorno_.Imagen("a", 2, 2, "byte", {1}), corta = entorno_.Imagen("corta", 2, 2, "byte", {1});
        QFile::resize(QString::fromStdString(corta), 3);
        e_->ui.ficherosAbrir = {a, a, entorno_.Imagen("p2", 2, 3, "byte", {}), corta};
        QString nombre;
        e_->ui.dialogos.push_back([&](QDialog& d) {
            Pulsar(d, "entrada1_seleccionar");  // 61221
            Pulsar(d, "entrada0_seleccionar");
            Pulsar(d, "entrada1_seleccionar");  // 61222
            nombre = Texto(d, "entrada1_nombre");
            Pulsar(d, "entrada1_seleccionar");
            return Aceptar(d);
        });
        Ejecutar(Aritmetica());
        QCOMPARE(e_->ui.mensajes, (std::vector<Mensaje>{Mensaje::Tabla(msg::kSeleccionarAntes, "la primera imagen"),
                                                     Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "imágenes"),
                                                     Mensaje::Tabla(msg::kNoHayVentanaActiva)}));
        QVERIFY(nombre.isEmpty());
        QCOMPARE(visto.llamadas, 0);
    }

    // 61219, a refused file (61217, then silence), 61220, then the
    // operation's own check once the inputs are loaded.
    void mensajesDelDialogoEnSuOrden() {
        e_->Ventana(entorno_.Imagen("ventana", 1, 2, "byte", {1, 2}));
        e_->ui.ficherosAbrir = {entorno_.Ruta("banda.Ozm"), entorno_.Imagen("banda", 1, 2, "byte", {3, 4})};
        e_->ui.ficherosGuardar = {entorno_.Ruta("salida.ozm")};
        std::vector<int> enElDialogo;
        QString trasRechazo, trasElegir;
        bool aceptadoConRechazo = true;
        e_->ui.dialogos.push_back([&](QDialog& d) {
            Pulsar(d, "entrada0_fichero");
            Aceptar(d);                         // 61219
            Pulsar(d, "entrada0_seleccionar");  // 61217
            trasRechazo = Texto(d, "entrada0_nombre");
            aceptadoConRechazo = Aceptar(d);    // silent
            Pulsar(d, "entrada0_seleccionar");
            trasElegir = Texto(d, "entrada0_nombre");
            Pulsar(d, "salida_fichero");
            Aceptar(d);                         // 61220
            enElDialogo = e_->ui.Ids();
            return Pulsando({"salida_guardar", NombreCampo("tipo_destino", 0)})(d);  // byte into byte
        });
        Ejecutar(Convertir());
        QCOMPARE(enElDialogo, (std::vector<int>{msg::kNoSeleccionadaEntrada, msg::kExtensionInadecuada, msg::kNoSeleccionadaSalida}));
        QCOMPARE(e_->ui.mensajes[0], Mensaje::Tabla(msg::kNoSeleccionadaEntrada, "ninguna imagen", "una imagen"));
        QCOMPARE(e_->ui.mensajes[2], Mensaje::Tabla(msg::kNoSeleccionadaSalida, "ninguna imagen", "una imagen"));
        QCOMPARE(e_->ui.Ids().back(), msg::kMismoTipo);
        QVERIFY(trasRechazo.isEmpty() && !aceptadoConRechazo);
        QCOMPARE(trasElegir, QStringLiteral("banda"));
        QVERIFY(!Existe(entorno_.Ruta("salida.ozm")));
    }

    // To a file: the warnings of the computation, then the pair titled with
    // the operation's suffix; the window is left alone.
    void salidaAFicheroConTituloDelResultado() {
        CBrimarDoc& doc = e_->Ventana(entorno_.Imagen("otra", 1, 1, "integer", {7}));
        e_->ui.ficherosAbrir = {entorno_.Imagen("b3", 1, 2, "real", {1.5, 300})};
        e_->ui.ficherosGuardar = {entorno_.Ruta("resultado")};
        e_->ui.dialogos.push_back(Pulsando({"entrada0_seleccionar", "salida_guardar", NombreCampo("tipo_destino", 0)}));
        Ejecutar(Convertir());
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{msg::kPerdidaPrecision}));
        CImagen r;
        QVERIFY(!r.Cargar(entorno_.Ruta("resultado.ozm")));
        QCOMPARE(r.titulo, std::string("b3_Convertida_De_Tipo_De_Dato"));
        QCOMPARE(ValoresDe(r), (std::vector<double>{1, 44}));
        QCOMPARE(doc.Nombre(), QStringLiteral("otra"));
        QCOMPARE(doc.Imagen().tipoDato, static_cast<int>(kInteger));
    }

    // Input and output the window: replaced in place, no AVISO.
    void salidaAVentanaReemplazaLaImagen() {
        CBrimarDoc& doc = e_->Ventana(entorno_.Imagen("b4", 1, 3, "byte", {5, 6, 7}));
        e_->ui.dialogos = {Pulsando({NombreCampo("tipo_destino", 3)}), [](QDialog&) { return false; }};
        Ejecutar(Convertir());
        QVERIFY(e_->ui.mensajes.empty());
        QCOMPARE(e_->ui.titulosDialogos.size(), std::size_t{1});
        QCOMPARE(doc.Imagen().tipoDato, static_cast<int>(kDouble));
        QCOMPARE(doc.Imagen().titulo, std::string("b4_Convertida_De_Tipo_De_Dato"));
        QCOMPARE(doc.Nombre(), QStringLiteral("TMP"));
        QCOMPARE(ValoresDe(doc.Imagen()), (std::vector<double>{5, 6, 7}));
    }

    // A file's result about to replace the window's image: the AVISO first;
    // cancelled, the operation is abandoned; else the window keeps its palette.
    void avisoAntesDeReemplazar() {
        for (bool sigue : {false, true}) {
            CBrimarDoc& doc = e_->Ventana(entorno_.Imagen("vista", 1, 1, "byte", {1}));
            e_->ui.ficherosAbrir = {entorno_.Imagen("nuevo", 1, 1, "byte", {2})};
            e_->ui.titulosDialogos.clear();
            e_->ui.dialogos = {Pulsando({"entrada0_seleccionar", NombreCampo("tipo_destino", 1)}),
                             [sigue](QDialog& d) { return sigue && Aceptar(d); }};  // " No."
            Ejecutar(Convertir());
            QCOMPARE(e_->ui.titulosDialogos.size(), std::size_t{2});
            QCOMPARE(e_->ui.titulosDialogos[1], QStringLiteral("AVISO DE Brimar"));
            QCOMPARE(doc.Nombre(), sigue ? QStringLiteral("TMP") : QStringLiteral("vista"));
            QCOMPARE(doc.Imagen().tipoDato, static_cast<int>(sigue ? kInteger : kByte));
            QCOMPARE(doc.Imagen().indicePaleta, 2u);
        }
        QVERIFY(e_->ui.mensajes.empty());
    }

    // A quotient that meets a zero: in the window, the second image is left
    // shown; to a file, nothing is written.
    void errorDelCalculoDejaLaSegundaEnLaVentana() {
        const std::string a = entorno_.Imagen("num", 1, 2, "byte", {8, 9}), b = entorno_.Imagen("den", 1, 2, "byte", {2, 0});
        for (bool aVentana : {true, false}) {
            CBrimarDoc& doc = e_->Ventana(entorno_.Imagen("previa", 1, 1, "byte", {1}));
            e_->ui.mensajes.clear();
            e_->ui.ficherosAbrir = {a, b};
            e_->ui.ficherosGuardar = {entorno_.Ruta("cociente")};
            QStringList botones = {"entrada0_seleccionar", "entrada1_seleccionar", NombreCampo("operacion", 3)};
            if (!aVentana) botones << "salida_guardar";
            e_->ui.dialogos = {Pulsando(botones), Pulsando({})};  // the AVISO: go on, saving nothing
            Ejecutar(Aritmetica());
            QCOMPARE(e_->ui.Ids(), (std::vector<int>{aVentana ? msg::kDivisionCeroVentana : msg::kDivisionCeroFichero}));
            QCOMPARE(doc.Imagen().titulo, std::string(aVentana ? "den" : "previa"));
            QCOMPARE(ValoresDe(doc.Imagen()), (aVentana ? std::vector<double>{2, 0} : std::vector<double>{1}));
            QVERIFY(!Existe(entorno_.Ruta("cociente.ozm")));
        }
    }

    // Fields that do not take part are disabled as the choice changes and
    // are not checked; a number that does not parse keeps the dialog open;
    // a decimal comma is taken.
    void camposQueAplicanEnVivo() {
        e_->Ventana(entorno_.Imagen("f", 1, 1, "byte", {3}));
        const QString escalar = NombreCampo("escalar");
        bool conMedia = false, conPersonalizado = true, conTexto = true, conCero = true;
        e_->ui.dialogos.push_back([&](QDialog& d) {
            conMedia = d.findChild<QWidget*>(escalar)->isEnabled();
            Escribir(d, escalar, QStringLiteral("abc"));
            conTexto = Aceptar(d);
            Escribir(d, escalar, QStringLiteral("0"));
            conCero = Aceptar(d);
            Pulsar(d, NombreCampo("tipo_filtro", 1));
            conPersonalizado = d.findChild<QWidget*>(escalar)->isEnabled();
            Pulsar(d, NombreCampo("tipo_filtro", 0));
            Escribir(d, escalar, QStringLiteral("2,5"));
            return Aceptar(d);
        });
        Ejecutar(ConParametros());
        QVERIFY(conMedia && !conPersonalizado && !conTexto && !conCero);
        QCOMPARE(e_->ui.textos.size(), std::size_t{1});
        QVERIFY(e_->ui.textos[0].contains(QStringLiteral("Establecer")));
        QCOMPARE(e_->ui.mensajes, (std::vector<Mensaje>{Mensaje::Tabla(msg::kNoSeleccionadaEntrada,
                                                                     "un valor correcto para el escalar", "un valor >0")}));
        QCOMPARE(visto.valores.Numero(kEscalar), 2.5);
        QVERIFY(!visto.valores.Tiene(kCoeficientes));
    }

    // A cancelled parameter dialog cancels the operation; accepted, its
    // values are checked and reach the computation, which runs off the
    // user-interface thread.
    void subdialogoCanceladoYAceptado() {
        CBrimarDoc& doc = e_->Ventana(entorno_.Imagen("g", 1, 1, "byte", {3}));
        auto principal = Pulsando({NombreCampo("tipo_filtro", 1)});
        e_->ui.dialogos = {principal, [](QDialog&) { return false; }};
        Ejecutar(ConParametros());
        QCOMPARE(e_->ui.titulosDialogos, (std::vector<QString>{QStringLiteral("Filtrado de prueba"),
                                                             QStringLiteral("Filtro Personalizado 3 x 3")}));
        QVERIFY(e_->ui.mensajes.empty());
        QCOMPARE(visto.llamadas, 0);
        QCOMPARE(doc.Nombre(), QStringLiteral("g"));

        bool conCeros = true;
        e_->ui.dialogos = {principal, [&](QDialog& d) {
                             conCeros = Aceptar(d);  // every coefficient 0: the check sees them
                             for (int k = 0; k < 9; ++k)
                                 Escribir(d, NombreCampo("coeficientes", k), QString::number(k == 4 ? -2 : 1));
                             return Aceptar(d);
                         }};
        esperarTemporizador = true;
        QTimer::singleShot(0, [] { temporizadorDisparado = true; });
        Ejecutar(ConParametros());
        esperarTemporizador = false;
        QVERIFY(!conCeros);
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{msg::kTodosNulos}));
        QCOMPARE(visto.llamadas, 1);
        QCOMPARE(visto.valores.Lista(kCoeficientes), (std::vector<double>{1, 1, 1, 1, -2, 1, 1, 1, 1}));
        QVERIFY(!visto.valores.Tiene(kEscalar));
        QVERIFY(visto.otroHilo && visto.temporizador);
        QCOMPARE(doc.Imagen().titulo, std::string("g_Filtrado_de_Prueba"));
    }
};

QTEST_MAIN(CursoDialogoTest)
#include "CursoDialogoTest.moc"
