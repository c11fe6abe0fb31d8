// The desktop course of an operation, driven by a scripted user: the checks
// before the dialog, the dialog's own checks in their order, the parameter
// dialogs, the output to a file pair or to the window, and the computation
// off the user-interface thread.
#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QGroupBox>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QtTest>
#include <atomic>

#include "EspacioPrueba.h"
#include "InterfazGuion.h"
#include "dialogs/COperacionDlg.h"
#include "dialogs/CursoDialogo.h"
#include "operations/Curso.h"

using namespace orvela;

namespace {

QString NombreCampo(Clave c, int k = -1) {
    return k < 0 ? QStringLiteral("campo_%1").arg(static_cast<int>(c))
                 : QStringLiteral("campo_%1_%2").arg(static_cast<int>(c)).arg(k);
}

void Marcar(QDialog& d, const QString& nombre) {
    if (auto* r = d.findChild<QRadioButton*>(nombre)) r->click();
}

bool Habilitado(QDialog& d, const QString& nombre) {
    auto* w = d.findChild<QWidget*>(nombre);
    return w && w->isEnabled();
}

// What the computing functions of the test declarations saw.
struct Visto {
    int llamadas = 0;
    Valores valores;
    bool otroHilo = false;
    bool bucleVivo = false;
};
Visto visto;
std::atomic<bool> temporizadorDisparado{false};

Resultado CopiaDeLaEntrada(const Contexto& c) {
    ++visto.llamadas;
    visto.valores = c.valores;
    visto.otroHilo = QThread::currentThread() != qApp->thread();
    Resultado r;
    CImagen s;
    if (auto e = s.CopiarCabecera(*c.entradas[0])) {
        r.error = e;
        return r;
    }
    s.pixeles = c.entradas[0]->pixeles.Copia();
    r.imagenes.push_back(std::move(s));
    return r;
}

// Two images from files: sum, or a quotient that stops at a zero divisor
// and leaves the second image in the window.
Declaracion DosImagenes() {
    Declaracion d;
    d.titulo = "Operaciones de prueba";
    d.paginaAyuda = "indice";
    d.grupoEntrada = "Nombres de las imágenes de entrada";
    d.entradas = {{"&Seleccionar primera", relleno::kLaPrimeraImagen, false},
                  {"S&eleccionar segunda", relleno::kLaSegundaImagen, false}};
    d.campos = {{.clave = Clave::Operacion,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Operaciones",
                 .opciones = {{"primera + segunda", "suma"}, {"primera / segunda", "cociente"}}}};
    d.alElegir = [](int i, const Cabecera& c, const std::vector<std::optional<Cabecera>>& previas) -> std::optional<Mensaje> {
        if (i != 1) return std::nullopt;
        if (!previas[0]) return Mensaje::Tabla(msg::kSeleccionarAntes, relleno::kLaPrimeraImagen);
        if (previas[0]->filas != c.filas || previas[0]->columnas != c.columnas)
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kImagenes);
        return std::nullopt;
    };
    d.calcular = [](const Contexto& c) {
        ++visto.llamadas;
        Resultado r;
        CImagen s;
        s.CopiarCabecera(*c.entradas[0], kDouble);
        auto o = s.pixeles.Como<double>();
        for (std::size_t k = 0; k < o.size(); ++k) {
            const double a = c.entradas[0]->pixeles.Valor(k), b = c.entradas[1]->pixeles.Valor(k);
            if (c.valores.Entero(Clave::Operacion) == 0) {
                o[k] = a + b;
            } else if (b == 0) {
                r.error = Mensaje::Tabla(c.destino == Destino::Ventana ? msg::kDivisionCeroVentana : msg::kDivisionCeroFichero);
                r.entradaEnVentana = 1;
                return r;
            } else {
                o[k] = a / b;
            }
        }
        r.imagenes.push_back(std::move(s));
        return r;
    };
    d.sufijo = [](const Valores& v) { return std::string(v.Entero(Clave::Operacion) == 0 ? "_Sumada_Con_" : "_Dividida_Entre_"); };
    d.tituloConSegunda = true;
    return d;
}

// One input that admits the window; a number that takes part with the first
// choice, coefficients in a parameter dialog with the second.
Declaracion ConParametros() {
    Declaracion d;
    d.titulo = "Filtrado de prueba";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    auto media = [](const Valores& v) { return v.Entero(Clave::TipoFiltro) == 0; };
    d.campos = {
        {.clave = Clave::TipoFiltro,
         .tipo = TipoCampo::Eleccion,
         .grupo = "Tipo de filtro",
         .opciones = {{"Media", "media"}, {"Personalizado", "personalizado"}}},
        {.clave = Clave::Escalar, .tipo = TipoCampo::Real, .grupo = "Valor del Escalar", .etiqueta = "Establecer",
         .porDefecto = 1, .aplica = media},
        {.clave = Clave::Coeficientes,
         .tipo = TipoCampo::ListaReales,
         .etiqueta = "Introduzca los coeficientes del filtro:",
         .subdialogo = "Filtro Personalizado 3 x 3",
         .aplica = [media](const Valores& v) { return !media(v); },
         .cantidad = [](const Valores&) { return 9; }},
    };
    d.alAceptar = [](const Valores& v) -> std::optional<Mensaje> {
        if (v.Tiene(Clave::Escalar) && v.Numero(Clave::Escalar) <= 0)
            return Mensaje::Tabla(msg::kNoSeleccionadaEntrada, "un valor correcto para el escalar", "un valor >0");
        if (v.Tiene(Clave::Coeficientes)) {
            const auto& l = v.Lista(Clave::Coeficientes);
            if (std::all_of(l.begin(), l.end(), [](double x) { return x == 0; }))
                return Mensaje::Tabla(msg::kTodosNulos, "Los coeficientes");
        }
        return std::nullopt;
    };
    d.calcular = CopiaDeLaEntrada;
    d.sufijo = [](const Valores&) { return std::string("_Filtrado_de_Prueba"); };
    return d;
}

// No input: a new image made from the fields.
Declaracion SinEntradas() {
    Declaracion d;
    d.titulo = "Iniciar de prueba";
    d.campos = {{.clave = Clave::Filas, .tipo = TipoCampo::Entero, .grupo = "Tamaño", .etiqueta = "Filas", .porDefecto = 2},
                {.clave = Clave::Columnas, .tipo = TipoCampo::Entero, .grupo = "Tamaño", .etiqueta = "Columnas", .porDefecto = 3},
                {.clave = Clave::Valor, .tipo = TipoCampo::Real, .grupo = "Valor", .etiqueta = "Valor"}};
    d.calcular = [](const Contexto& c) {
        Resultado r;
        CImagen s;
        s.Iniciar("", "", "Nueva", static_cast<uint32_t>(c.valores.Entero(Clave::Filas)),
                  static_cast<uint32_t>(c.valores.Entero(Clave::Columnas)), "byte", c.valores.Numero(Clave::Valor), 0,
                  "unknown", "m", {});
        r.imagenes.push_back(std::move(s));
        r.titulosPropios = true;
        return r;
    };
    return d;
}

// Waits, on the computing thread, until a timer of the user-interface thread
// has fired: proof that the windows are served while it computes.
Declaracion Lenta() {
    Declaracion d;
    d.titulo = "Operación lenta";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, false}};
    d.calcular = [](const Contexto& c) {
        QElapsedTimer t;
        t.start();
        while (!temporizadorDisparado.load() && t.elapsed() < 10000) QThread::msleep(5);
        visto.bucleVivo = temporizadorDisparado.load();
        return CopiaDeLaEntrada(c);
    };
    return d;
}

const Declaracion& Convertir() { return *BuscarPorOrden("convertir"); }

}  // namespace

class CursoDialogoTest : public QObject {
    Q_OBJECT

    QTemporaryDir dir_;
    std::string Ruta(const char* nombre) const { return (dir_.path() + QLatin1Char('/') + QLatin1String(nombre)).toStdString(); }

private slots:
    void init() { visto = Visto{}; }

    void ventanaActivaComprobadaAntesDelDialogo() {
        QVERIFY(BuscarPorOrden("convertir"));
        EspacioPrueba espacio;
        InterfazGuion ui;
        EjecutarOperacion(Convertir(), espacio, ui);
        CBrimarDoc* doc = espacio.NuevaVentana();
        EjecutarOperacion(Convertir(), espacio, ui);
        AbrirEnVentana(*doc, EscribirImagen(Ruta("comp"), "comp", "byte", 1, 1, {1}));
        doc->Imagen().composicionColor = true;
        EjecutarOperacion(Convertir(), espacio, ui);
        QCOMPARE(ui.Ids(), (std::vector<int>{msg::kNoHayVentanaActiva, msg::kSinImagen, msg::kComposicionColor}));
        QVERIFY(ui.titulosDialogos.empty());
        QCOMPARE(ui.esperas, 0);
    }

    // 61219, a refused file (61217, then silence), 61220, then the
    // operation's own check once the inputs are loaded.
    void mensajesDelDialogoEnSuOrden() {
        EspacioPrueba espacio;
        AbrirEnVentana(*espacio.NuevaVentana(), EscribirImagen(Ruta("ventana"), "ventana", "byte", 1, 2, {1, 2}));
        const std::string banda = EscribirImagen(Ruta("banda"), "banda", "byte", 1, 2, {3, 4});
        InterfazGuion ui;
        ui.ficherosAbrir = {Ruta("banda.Ozm"), banda};
        ui.ficherosGuardar = {Ruta("salida.ozm")};
        std::vector<int> idsEnElDialogo;
        QString nombreTrasRechazo, nombreTrasAceptar;
        bool aceptadoConRechazo = true;
        ui.dialogos.push_back([&](QDialog& d) {
            Marcar(d, QStringLiteral("entrada0_fichero"));
            Aceptar(d);                              // 61219
            Pulsar(d, "entrada0_seleccionar");       // 61217
            nombreTrasRechazo = Texto(d, "entrada0_nombre");
            aceptadoConRechazo = Aceptar(d);         // silent
            Pulsar(d, "entrada0_seleccionar");
            nombreTrasAceptar = Texto(d, "entrada0_nombre");
            Marcar(d, QStringLiteral("salida_fichero"));
            Aceptar(d);                              // 61220
            idsEnElDialogo = ui.Ids();
            Pulsar(d, "salida_guardar");
            Marcar(d, NombreCampo(Clave::TipoDestino, 0));  // byte into byte
            return Aceptar(d);
        });
        EjecutarOperacion(Convertir(), espacio, ui);
        QCOMPARE(ui.titulosDialogos, (std::vector<QString>{QStringLiteral("Convertir tipo de dato")}));
        QCOMPARE(idsEnElDialogo, (std::vector<int>{msg::kNoSeleccionadaEntrada, msg::kExtensionInadecuada, msg::kNoSeleccionadaSalida}));
        QCOMPARE(ui.mensajes[0], Mensaje::Tabla(msg::kNoSeleccionadaEntrada, "ninguna imagen", "una imagen"));
        QCOMPARE(ui.mensajes[2], Mensaje::Tabla(msg::kNoSeleccionadaSalida, "ninguna imagen", "una imagen"));
        QVERIFY(nombreTrasRechazo.isEmpty());
        QVERIFY(!aceptadoConRechazo);
        QCOMPARE(nombreTrasAceptar, QStringLiteral("banda"));
        QCOMPARE(ui.Ids().back(), msg::kMismoTipo);
        QVERIFY(!QFileInfo::exists(QString::fromStdString(Ruta("salida.ozm"))));
        QCOMPARE(ui.esperas, 0);
    }

    void salidaAFicheroConTituloDelResultado() {
        EspacioPrueba espacio;
        CBrimarDoc* doc = espacio.NuevaVentana();
        AbrirEnVentana(*doc, EscribirImagen(Ruta("otra"), "otra", "integer", 1, 1, {7}));
        InterfazGuion ui;
        ui.ficherosAbrir = {EscribirImagen(Ruta("b3"), "b3", "byte", 2, 2, {0, 1, 254, 255})};
        ui.ficherosGuardar = {Ruta("resultado.ozm")};
        ui.dialogos.push_back([](QDialog& d) {
            Pulsar(d, "entrada0_seleccionar");
            Pulsar(d, "salida_guardar");
            Marcar(d, NombreCampo(Clave::TipoDestino, 2));  // real
            return Aceptar(d);
        });
        EjecutarOperacion(Convertir(), espacio, ui);
        QVERIFY(ui.mensajes.empty());
        CImagen r;
        QVERIFY(!r.Cargar(Ruta("resultado.ozm")));
        QCOMPARE(r.titulo, std::string("b3_Convertida_De_Tipo_De_Dato"));
        QCOMPARE(r.tipoDato, static_cast<int>(kReal));
        QCOMPARE(ValoresDe(r), (std::vector<double>{0, 1, 254, 255}));
        QCOMPARE(doc->Imagen().titulo, std::string("otra"));  // the window is left alone
        QCOMPARE(doc->Nombre(), QStringLiteral("otra"));
        QCOMPARE(ui.esperas, 0);
    }

    // Input and output the window: replaced in place, no AVISO, palette kept.
    void salidaAVentanaReemplazaLaImagen() {
        EspacioPrueba espacio;
        CBrimarDoc* doc = espacio.NuevaVentana();
        AbrirEnVentana(*doc, EscribirImagen(Ruta("b4"), "b4", "byte", 1, 3, {5, 6, 7}));
        doc->Imagen().indicePaleta = 2;
        int puestas = 0;
        QObject::connect(doc, &CBrimarDoc::imagenPuesta, [&] { ++puestas; });
        InterfazGuion ui;
        ui.dialogos.push_back([](QDialog& d) {
            Marcar(d, NombreCampo(Clave::TipoDestino, 3));  // double
            return Aceptar(d);
        });
        ui.dialogos.push_back([](QDialog&) { return false; });  // an AVISO, were one asked
        EjecutarOperacion(Convertir(), espacio, ui);
        QVERIFY(ui.mensajes.empty());
        QCOMPARE(ui.titulosDialogos, (std::vector<QString>{QStringLiteral("Convertir tipo de dato")}));
        QCOMPARE(puestas, 1);
        QCOMPARE(doc->Imagen().tipoDato, static_cast<int>(kDouble));
        QCOMPARE(doc->Imagen().titulo, std::string("b4_Convertida_De_Tipo_De_Dato"));
        QCOMPARE(doc->Nombre(), QStringLiteral("TMP"));
        QCOMPARE(doc->Imagen().indicePaleta, 2u);
        QCOMPARE(ValoresDe(doc->Imagen()), (std::vector<double>{5, 6, 7}));
        QCOMPARE(ui.esperas, 0);
    }

    void avisosDelCalculoSeMuestranYElResultadoSigue() {
        EspacioPrueba espacio;
        AbrirEnVentana(*espacio.NuevaVentana(), EscribirImagen(Ruta("fr"), "fr", "real", 1, 2, {1.5, 300}));
        InterfazGuion ui;
        ui.ficherosGuardar = {Ruta("perdida")};
        ui.dialogos.push_back([](QDialog& d) {
            Pulsar(d, "salida_guardar");
            Marcar(d, NombreCampo(Clave::TipoDestino, 0));
            return Aceptar(d);
        });
        EjecutarOperacion(Convertir(), espacio, ui);
        QCOMPARE(ui.Ids(), (std::vector<int>{msg::kPerdidaPrecision}));
        CImagen r;
        QVERIFY(!r.Cargar(Ruta("perdida.ozm")));
        QCOMPARE(ValoresDe(r), (std::vector<double>{1, 44}));
    }

    // Without a window, output to the window stops with 61216 before the
    // inputs are read (the second raster is short: 61284 would follow).
    void sinVentanaYSalidaAVentana() {
        const std::string a = EscribirImagen(Ruta("a"), "a", "byte", 2, 2, {1, 2, 3, 4});
        const std::string corta = EscribirImagen(Ruta("corta"), "corta", "byte", 2, 2, {1, 2, 3, 4});
        QFile::resize(QString::fromStdString(corta), 3);
        for (bool aVentana : {true, false}) {
            EspacioPrueba espacio;
            InterfazGuion ui;
            ui.ficherosAbrir = {a, corta};
            ui.ficherosGuardar = {Ruta("nunca")};
            ui.dialogos.push_back([&](QDialog& d) {
                Pulsar(d, "entrada0_seleccionar");
                Pulsar(d, "entrada1_seleccionar");
                if (!aVentana) Pulsar(d, "salida_guardar");
                return Aceptar(d);
            });
            EjecutarOperacion(DosImagenes(), espacio, ui);
            QCOMPARE(ui.Ids(), (std::vector<int>{aVentana ? msg::kNoHayVentanaActiva : msg::kArchivoNoExiste}));
            QCOMPARE(visto.llamadas, 0);
            QVERIFY(!QFileInfo::exists(QString::fromStdString(Ruta("nunca.ozm"))));
            QCOMPARE(ui.esperas, 0);
        }
    }

    void eleccionDeFicheroVeLasCabecerasPrevias() {
        const std::string a = EscribirImagen(Ruta("p1"), "p1", "byte", 2, 2, {});
        const std::string otra = EscribirImagen(Ruta("p2"), "p2", "byte", 2, 3, {});
        EspacioPrueba espacio;
        InterfazGuion ui;
        ui.ficherosAbrir = {a, a, otra};
        QStringList nombres;
        ui.dialogos.push_back([&](QDialog& d) {
            Pulsar(d, "entrada1_seleccionar");
            nombres << Texto(d, "entrada1_nombre");
            Pulsar(d, "entrada0_seleccionar");
            Pulsar(d, "entrada1_seleccionar");
            nombres << Texto(d, "entrada1_nombre");
            Aceptar(d);  // the second was refused: silent
            return false;
        });
        EjecutarOperacion(DosImagenes(), espacio, ui);
        QCOMPARE(ui.mensajes, (std::vector<Mensaje>{Mensaje::Tabla(msg::kSeleccionarAntes, "la primera imagen"),
                                                   Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "imágenes")}));
        QCOMPARE(nombres, (QStringList{QString(), QString()}));
    }

    // A quotient that meets a zero: in the window, the second image is left
    // shown; to a file, nothing is written.
    void errorDelCalculoDejaLaSegundaEnLaVentana() {
        const std::string a = EscribirImagen(Ruta("num"), "num", "byte", 1, 2, {8, 9});
        const std::string b = EscribirImagen(Ruta("den"), "den", "byte", 1, 2, {2, 0});
        for (bool aVentana : {true, false}) {
            EspacioPrueba espacio;
            CBrimarDoc* doc = espacio.NuevaVentana();
            AbrirEnVentana(*doc, EscribirImagen(Ruta("previa"), "previa", "byte", 1, 1, {1}));
            InterfazGuion ui;
            ui.ficherosAbrir = {a, b};
            ui.ficherosGuardar = {Ruta("cociente")};
            ui.dialogos.push_back([&](QDialog& d) {
                Pulsar(d, "entrada0_seleccionar");
                Pulsar(d, "entrada1_seleccionar");
                Marcar(d, NombreCampo(Clave::Operacion, 1));
                if (!aVentana) Pulsar(d, "salida_guardar");
                return Aceptar(d);
            });
            ui.dialogos.push_back([](QDialog& d) {  // an AVISO, if asked: keep going, saving nothing
                d.accept();
                return true;
            });
            EjecutarOperacion(DosImagenes(), espacio, ui);
            QCOMPARE(ui.Ids(), (std::vector<int>{aVentana ? msg::kDivisionCeroVentana : msg::kDivisionCeroFichero}));
            QCOMPARE(doc->Imagen().titulo, std::string(aVentana ? "den" : "previa"));
            QCOMPARE(ValoresDe(doc->Imagen()), (aVentana ? std::vector<double>{2, 0} : std::vector<double>{1}));
            QVERIFY(!QFileInfo::exists(QString::fromStdString(Ruta("cociente.ozm"))));
        }
    }

    // Fields that do not take part are disabled as the choice changes and
    // are not checked; a number that does not parse keeps the dialog open.
    void camposQueAplicanEnVivo() {
        EspacioPrueba espacio;
        AbrirEnVentana(*espacio.NuevaVentana(), EscribirImagen(Ruta("f"), "f", "byte", 1, 1, {3}));
        InterfazGuion ui;
        bool conMedia = false, conPersonalizado = true, aceptadoConTexto = true, aceptadoConCero = true;
        ui.dialogos.push_back([&](QDialog& d) {
            const QString escalar = NombreCampo(Clave::Escalar);
            conMedia = Habilitado(d, escalar);
            Escribir(d, escalar, QStringLiteral("abc"));
            aceptadoConTexto = Aceptar(d);
            Escribir(d, escalar, QStringLiteral("0"));
            aceptadoConCero = Aceptar(d);
            Marcar(d, NombreCampo(Clave::TipoFiltro, 1));
            conPersonalizado = Habilitado(d, escalar);
            return false;
        });
        EjecutarOperacion(ConParametros(), espacio, ui);
        QVERIFY(conMedia);
        QVERIFY(!conPersonalizado);
        QVERIFY(!aceptadoConTexto);
        QVERIFY(!aceptadoConCero);
        QCOMPARE(ui.textos.size(), std::size_t{1});
        QVERIFY(ui.textos[0].contains(QStringLiteral("Establecer")));
        QCOMPARE(ui.mensajes, (std::vector<Mensaje>{Mensaje::Tabla(msg::kNoSeleccionadaEntrada,
                                                                   "un valor correcto para el escalar", "un valor >0")}));
        QCOMPARE(visto.llamadas, 0);

        // With a decimal comma the number is taken, and it reaches the computation.
        ui = InterfazGuion{};
        ui.dialogos.push_back([](QDialog& d) {
            Escribir(d, NombreCampo(Clave::Escalar), QStringLiteral("2,5"));
            return Aceptar(d);
        });
        EjecutarOperacion(ConParametros(), espacio, ui);
        QVERIFY(ui.mensajes.empty() && ui.textos.empty());
        QCOMPARE(visto.valores.Numero(Clave::Escalar), 2.5);
        QVERIFY(!visto.valores.Tiene(Clave::Coeficientes));
    }

    void subdialogoAceptadoYCancelado() {
        EspacioPrueba espacio;
        CBrimarDoc* doc = espacio.NuevaVentana();
        AbrirEnVentana(*doc, EscribirImagen(Ruta("g"), "g", "byte", 1, 1, {3}));
        auto principal = [](QDialog& d) {
            Marcar(d, NombreCampo(Clave::TipoFiltro, 1));
            return Aceptar(d);
        };
        InterfazGuion ui;
        ui.dialogos.push_back(principal);
        ui.dialogos.push_back([](QDialog&) { return false; });
        EjecutarOperacion(ConParametros(), espacio, ui);
        QCOMPARE(ui.titulosDialogos, (std::vector<QString>{QStringLiteral("Filtrado de prueba"),
                                                           QStringLiteral("Filtro Personalizado 3 x 3")}));
        QVERIFY(ui.mensajes.empty());
        QCOMPARE(visto.llamadas, 0);
        QCOMPARE(doc->Nombre(), QStringLiteral("g"));

        ui = InterfazGuion{};
        ui.dialogos.push_back(principal);
        bool aceptadoConCeros = true;
        ui.dialogos.push_back([&](QDialog& d) {
            aceptadoConCeros = Aceptar(d);  // every coefficient 0: the check sees them
            for (int k = 0; k < 9; ++k)
                Escribir(d, NombreCampo(Clave::Coeficientes, k), QString::number(k == 4 ? -2 : 1));
            return Aceptar(d);
        });
        EjecutarOperacion(ConParametros(), espacio, ui);
        QVERIFY(!aceptadoConCeros);
        QCOMPARE(ui.Ids(), (std::vector<int>{msg::kTodosNulos}));
        QCOMPARE(visto.llamadas, 1);
        QCOMPARE(visto.valores.Lista(Clave::Coeficientes), (std::vector<double>{1, 1, 1, 1, -2, 1, 1, 1, 1}));
        QVERIFY(!visto.valores.Tiene(Clave::Escalar));
        QCOMPARE(doc->Imagen().titulo, std::string("g_Filtrado_de_Prueba"));
    }

    void sinEntradasNoHayGrupoDeEntrada() {
        EspacioPrueba espacio;
        InterfazGuion ui;
        ui.ficherosGuardar = {Ruta("nueva")};
        bool conEntrada = true;
        ui.dialogos.push_back([&](QDialog& d) {
            conEntrada = d.findChild<QWidget*>(QStringLiteral("entrada0_seleccionar")) != nullptr;
            Escribir(d, NombreCampo(Clave::Valor), QStringLiteral("300.7"));
            Pulsar(d, "salida_guardar");
            return Aceptar(d);
        });
        EjecutarOperacion(SinEntradas(), espacio, ui);
        QVERIFY(!conEntrada);
        QVERIFY(ui.mensajes.empty());
        CImagen r;
        QVERIFY(!r.Cargar(Ruta("nueva.ozm")));
        QCOMPARE(r.titulo, std::string("Nueva"));
        QCOMPARE(ValoresDe(r), std::vector<double>(6, 44));
    }

    void calculoFueraDelHiloDeLaInterfaz() {
        EspacioPrueba espacio;
        InterfazGuion ui;
        ui.ficherosAbrir = {EscribirImagen(Ruta("l"), "l", "byte", 1, 1, {9})};
        ui.ficherosGuardar = {Ruta("lenta")};
        ui.dialogos.push_back([](QDialog& d) {
            Pulsar(d, "entrada0_seleccionar");
            Pulsar(d, "salida_guardar");
            return Aceptar(d);
        });
        temporizadorDisparado = false;
        QTimer::singleShot(0, [] { temporizadorDisparado = true; });
        EjecutarOperacion(Lenta(), espacio, ui);
        QVERIFY(visto.otroHilo);
        QVERIFY(visto.bucleVivo);
        QVERIFY(QFileInfo::exists(QString::fromStdString(Ruta("lenta.ozm"))));
        QCOMPARE(ui.esperas, 0);
    }

    // Every declared operation gives a dialog whose controls carry the
    // documented, unique object names.
    void dialogoDeCadaDeclaracion() {
        QVERIFY(!Catalogo().empty());
        for (const Declaracion* d : Catalogo()) {
            InterfazGuion ui;
            COperacionDlg dlg(*d, ui);
            QCOMPARE(dlg.windowTitle(), QString::fromUtf8(d->titulo));
            QStringList nombres;
            for (QWidget* w : dlg.findChildren<QWidget*>())
                if (!w->objectName().isEmpty() && !w->objectName().startsWith(QLatin1String("qt_"))) nombres << w->objectName();
            QStringList esperados = {QStringLiteral("aceptar"), QStringLiteral("cancelar"), QStringLiteral("ayuda")};
            for (std::size_t i = 0; i < d->entradas.size(); ++i) {
                esperados << QStringLiteral("entrada%1_seleccionar").arg(i) << QStringLiteral("entrada%1_nombre").arg(i);
                if (d->entradas[i].admiteVentanaActiva)
                    esperados << QStringLiteral("entrada%1_activa").arg(i) << QStringLiteral("entrada%1_fichero").arg(i);
            }
            const Valores defecto = ValoresPorDefecto(*d);
            for (const Campo& c : d->campos) {
                if (c.subdialogo) continue;
                if (c.tipo == TipoCampo::Eleccion)
                    for (std::size_t k = 0; k < c.opciones.size(); ++k) esperados << NombreCampo(c.clave, static_cast<int>(k));
                else if (c.tipo == TipoCampo::ListaReales)
                    for (int k = 0; k < (c.cantidad ? c.cantidad(defecto) : 0); ++k) esperados << NombreCampo(c.clave, k);
                else
                    esperados << NombreCampo(c.clave);
            }
            if (d->conSalida)
                esperados << QStringLiteral("salida_ventana") << QStringLiteral("salida_fichero")
                          << QStringLiteral("salida_guardar") << QStringLiteral("salida_nombre");
            nombres.sort();
            esperados.sort();
            QVERIFY2(nombres == esperados, qPrintable(QString::fromUtf8(d->orden) + QStringLiteral(": ") + nombres.join(QLatin1Char(' '))));
        }
    }

    // Cancelling the AVISO abandons the operation. Runs only once the AVISO
    // dialog asks through the user interface.
    void avisoCanceladoAbandona() {
        EspacioPrueba espacio;
        CBrimarDoc* doc = espacio.NuevaVentana();
        AbrirEnVentana(*doc, EscribirImagen(Ruta("vista"), "vista", "byte", 1, 1, {1}));
        InterfazGuion ui;
        ui.ficherosAbrir = {EscribirImagen(Ruta("nuevo"), "nuevo", "byte", 1, 1, {2})};
        ui.dialogos.push_back([](QDialog& d) {
            Pulsar(d, "entrada0_seleccionar");
            Marcar(d, NombreCampo(Clave::TipoDestino, 1));
            return Aceptar(d);
        });
        ui.dialogos.push_back([](QDialog&) { return false; });
        EjecutarOperacion(Convertir(), espacio, ui);
        QCOMPARE(ui.esperas, 0);
        if (ui.titulosDialogos.size() < 2) QSKIP("el aviso todavía no pregunta");
        QCOMPARE(ui.titulosDialogos[1], QStringLiteral("AVISO DE Brimar"));
        QCOMPARE(doc->Nombre(), QStringLiteral("vista"));
        QCOMPARE(doc->Imagen().tipoDato, static_cast<int>(kByte));
    }
};

QTEST_MAIN(CursoDialogoTest)
#include "CursoDialogoTest.moc"
