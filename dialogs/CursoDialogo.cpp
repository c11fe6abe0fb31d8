#include "dialogs/CursoDialogo.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QFutureWatcher>
#include <QProgressDialog>
#include <QTimer>
#include <QtConcurrent/QtConcurrentRun>
#include <algorithm>
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

#include "dialogs/CAvisoDlg.h"
#include "dialogs/CErroresPuntosControlDlg.h"
#include "dialogs/COperacionDlg.h"
#include "dialogs/Ficheros.h"
#include "dialogs/Espacio.h"
#include "dialogs/Interfaz.h"
#include "dialogs/VentanasResultado.h"
#include "doc/CBrimarDoc.h"
#include "doc/CBrimarView.h"
#include "doc/HerramientaVista.h"
#include "operations/Curso.h"

using namespace orvela;

namespace {

// The active window can serve as an input: it exists, holds an image, and
// that image is not a colour composite.
std::optional<Mensaje> ComprobarVentana(const CBrimarDoc* doc) {
    if (!doc) return Mensaje::Tabla(msg::kNoHayVentanaActiva);
    if (!doc->TieneImagen()) return Mensaje::Tabla(msg::kSinImagen);
    if (doc->EsComposicion()) return Mensaje::Tabla(msg::kComposicionColor);
    return std::nullopt;
}

// While an operation computes, the windows go on repainting but must not be
// closed: a window's image may be an input of the computation.
class BloqueoCierre : public QObject {
public:
    BloqueoCierre() { qApp->installEventFilter(this); }
    ~BloqueoCierre() override { qApp->removeEventFilter(this); }

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override {
        if (evento->type() == QEvent::Close && objeto->isWidgetType() && objeto->objectName() != "progreso") {
            evento->ignore();
            return true;
        }
        return false;
    }
};

// What the computing threads report, read by the progress window's timer.
class ProgresoEscritorio : public Progreso {
public:
    int Milesimas() const { return milesimas_.load(); }
    QString Texto() {
        std::lock_guard<std::mutex> l(texto_);
        return QString::fromStdString(ultimo_);
    }

protected:
    void AlInformar(double f, const std::string& texto) override {
        milesimas_.store(static_cast<int>(f * 1000.0));
        if (!texto.empty()) {
            std::lock_guard<std::mutex> l(texto_);
            ultimo_ = texto;
        }
    }

private:
    std::atomic<int> milesimas_{-1};
    std::mutex texto_;
    std::string ultimo_;
};

// Runs the computation on a worker thread while a local event loop keeps
// the windows painted; a progress window with "Cancelar" appears when it
// takes more than a moment.
Resultado CalcularSinBloquear(const Declaracion& d, const EntradasCargadas& entradas, const Valores& v,
                              Destino destino, QWidget* padre) {
    ProgresoEscritorio progreso;
    Resultado resultado;
    QFuture<void> futuro = QtConcurrent::run([&] { resultado = Calcular(d, entradas, v, destino, progreso); });
    if (!futuro.isFinished()) {
        BloqueoCierre bloqueo;
        QEventLoop bucle;
        QFutureWatcher<void> vigilante;
        QObject::connect(&vigilante, &QFutureWatcher<void>::finished, &bucle, &QEventLoop::quit);
        vigilante.setFuture(futuro);

        std::unique_ptr<QProgressDialog> dialogo;
        QTimer mostrar;
        mostrar.setSingleShot(true);
        QTimer avance;
        avance.setInterval(100);
        QObject::connect(&mostrar, &QTimer::timeout, [&] {
            dialogo = std::make_unique<QProgressDialog>(QStringLiteral("Realizando la operación..."),
                                                        QStringLiteral("Cancelar"), 0, 0,
                                                        padre);
            dialogo->setObjectName(QStringLiteral("progreso"));
            dialogo->setWindowTitle(QString::fromUtf8(d.titulo));
            dialogo->setAutoClose(false);
            dialogo->setAutoReset(false);
            dialogo->setMinimumDuration(0);
            dialogo->setWindowModality(Qt::ApplicationModal);
            QObject::connect(dialogo.get(), &QProgressDialog::canceled, [&] {
                progreso.Cancelar();
                dialogo->setLabelText(QStringLiteral("Cancelando..."));
            });
            dialogo->show();
            avance.start();
        });
        QObject::connect(&avance, &QTimer::timeout, [&] {
            const int m = progreso.Milesimas();
            if (!dialogo || m < 0 || progreso.Cancelado()) return;
            if (dialogo->maximum() != 1000) dialogo->setRange(0, 1000);
            dialogo->setValue(m);
            const QString t = progreso.Texto();
            if (!t.isEmpty()) dialogo->setLabelText(QStringLiteral("Realizando la operación... ") + t);
        });
        mostrar.start(kEsperaProgresoMs);
        if (!futuro.isFinished()) bucle.exec(QEventLoop::ExcludeUserInputEvents);
    }
    futuro.waitForFinished();
    return resultado;
}

// What the dialog decided, kept while a rectangle is dragged.
struct Decision {
    std::vector<COperacionDlg::Entrada> elegidas;
    std::string stem;
    bool salidaVentana = false;
    Valores v;
    Elegidas cabeceras;
};

void PedirRectangulo(const Declaracion& d, Espacio& espacio, Interfaz& ui, Decision decision);
// The course after the dialogs: loading, checks, computing and output.
// `docVista`: the window the rectangle was dragged on (else the active one).
void Seguir(const Declaracion& d, Espacio& espacio, Interfaz& ui, const Decision& decision, CBrimarDoc* docVista);

}  // namespace

void EjecutarOperacion(const Declaracion& d, Espacio& espacio, Interfaz& ui) {
    QWidget* padre = espacio.VentanaPrincipal();
    CBrimarDoc* doc = espacio.DocumentoActivo();
    if (d.OfreceVentanaActiva()) {
        if (auto m = ComprobarVentana(doc)) {
            ui.Mostrar(*m);
            return;
        }
    }
    std::optional<Cabecera> cabeceraVentana;
    if (doc && doc->TieneImagen()) cabeceraVentana = doc->Imagen().ComoCabecera();
    std::vector<COperacionDlg::Abierta> abiertas;
    for (CBrimarDoc* o : espacio.Documentos())
        if (o->TieneImagen() && !o->EsComposicion() && o->Imagen().pixeles.Valido())
            abiertas.push_back({o->Nombre().toStdString(), &o->Imagen()});

    COperacionDlg dlg(d, ui, cabeceraVentana, padre, abiertas);
    PrepararRevisionPuntos(d, dlg, espacio, ui);
    if (!ui.Ejecutar(dlg) || dlg.result() != QDialog::Accepted) return;
    Decision decision{dlg.Entradas(), dlg.Stem(), dlg.SalidaVentana(), dlg.Valores(), dlg.Elegidas()};
    if (!EjecutarSubdialogos(d, ui, decision.v, decision.cabeceras, padre)) return;
    if (d.conRectangulo && d.ponerRectangulo && d.conRectangulo(decision.v))
        return PedirRectangulo(d, espacio, ui, std::move(decision));
    Seguir(d, espacio, ui, decision, nullptr);
}

namespace {

void PedirRectangulo(const Declaracion& d, Espacio& espacio, Interfaz& ui, Decision decision) {
    CBrimarView* vista = espacio.VistaParaHerramientas();
    if (!vista) return ui.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    if (auto m = ComprobarVentana(&vista->Documento())) return ui.Mostrar(*m);
    espacio.Confirmar(texto::kArrastrarVentana);
    // The declaration is copied: the course goes on after this command has
    // returned, when the drag ends.
    auto decl = std::make_shared<const Declaracion>(d);
    Espacio* e = &espacio;
    Interfaz* u = &ui;
    vista->ArmarHerramienta(std::make_unique<vista::HerramientaRectangulo>(
        [decl, e, u, decision](CBrimarView& v, const vista::RectanguloImagen& r) mutable {
            if (r.Vacio()) return u->Mostrar(Mensaje::Tabla(msg::kPosicionesFuera));
            decl->ponerRectangulo(decision.v, r.fila1, r.columna1, r.fila2, r.columna2);
            if (decl->alAceptar) {
                if (auto m = decl->alAceptar(decision.v, decision.cabeceras)) return u->Mostrar(*m);
            }
            Seguir(*decl, *e, *u, decision, &v.Documento());
        }));
}

void Seguir(const Declaracion& d, Espacio& espacio, Interfaz& ui, const Decision& decision, CBrimarDoc* docVista) {
    QWidget* padre = espacio.VentanaPrincipal();
    const Valores& v = decision.v;
    std::optional<EsperaCursor> espera;
    espera.emplace(ui);
    CBrimarDoc* doc = docVista ? docVista : espacio.DocumentoActivo();
    const auto& elegidas = decision.elegidas;
    const bool aVentana = d.conSalida && decision.salidaVentana;
    const bool entradaVentana =
        std::any_of(elegidas.begin(), elegidas.end(), [](const COperacionDlg::Entrada& e) { return e.ventana; });
    if ((aVentana || entradaVentana) && !doc) {
        ui.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
        return;
    }
    if (entradaVentana) {
        if (auto m = ComprobarVentana(doc)) {
            ui.Mostrar(*m);
            return;
        }
    }

    // Inputs: the window's own record, an open image's record, or a local
    // record read from the file; file inputs by their paths.
    std::vector<std::vector<CImagen>> locales(elegidas.size());
    EntradasCargadas entradas;
    entradas.imagenes.resize(elegidas.size());
    entradas.ficheros.resize(elegidas.size());
    for (std::size_t i = 0; i < elegidas.size(); ++i) {
        const auto& e = elegidas[i];
        if (d.entradas[i].clase == ClaseEntrada::Fichero) {
            for (const auto& x : e.elecciones) entradas.ficheros[i].push_back(x.ruta);
            continue;
        }
        if (e.ventana) {
            entradas.imagenes[i].push_back(&doc->Imagen());
            continue;
        }
        locales[i].resize(e.elecciones.size());
        for (std::size_t k = 0; k < e.elecciones.size(); ++k) {
            const auto& x = e.elecciones[k];
            if (x.abierta) {
                entradas.imagenes[i].push_back(x.abierta);
                continue;
            }
            if (auto f = CargarEntrada(x.ruta, x.cabecera, locales[i][k])) {
                ui.Mostrar(f->mensaje);
                return;
            }
            entradas.imagenes[i].push_back(&locales[i][k]);
        }
    }

    // The operation's own checks run before anything is replaced or written.
    if (d.antesDeCalcular) {
        if (auto m = d.antesDeCalcular(entradas.Todas(), v)) {
            ui.Mostrar(*m);
            return;
        }
    }
    // The window's image is about to be replaced by something that does not
    // come from it: the user may save it first, or give up.
    if (aVentana && !entradaVentana && doc->TieneImagen() && !doc->EsComposicion()) {
        if (!PreguntarAviso(*doc, ui, &espacio)) return;
    }

    Declaracion sinComprobar = d;
    sinComprobar.antesDeCalcular = nullptr;
    // An operation that writes no image shows what it gives on the desktop.
    const Destino destino = aVentana || !d.conSalida ? Destino::Ventana : Destino::Fichero;
    Resultado r = CalcularSinBloquear(sinComprobar, entradas, v, destino, padre);

    for (const auto& a : r.avisos) ui.Mostrar(a);
    if (r.fallo) {
        ui.Mostrar(r.fallo->mensaje);
        // A refused quotient shows the second image in the window.
        const int k = r.entradaEnVentana;
        if (r.fallo->clase == ClaseFallo::Rechazo && aVentana && k >= 0 &&
            static_cast<std::size_t>(k) < elegidas.size() && !elegidas[static_cast<std::size_t>(k)].ventana &&
            !locales[static_cast<std::size_t>(k)].empty()) {
            CImagen mostrada = std::move(locales[static_cast<std::size_t>(k)].front());
            if (doc->TieneImagen()) mostrada.indicePaleta = doc->Imagen().indicePaleta;
            doc->PonerImagen(std::move(mostrada));
        }
        return;
    }
    if (!r.consola.empty() && r.informes.empty() && r.graficos.empty() && r.imagenes.empty() && !r.composicion &&
        !r.cuadro)
        ui.MostrarTexto(QString::fromStdString(r.consola));

    const bool conFichero = r.composicion && !r.composicion->ruta.empty();
    if ((!aVentana && d.conSalida) || conFichero) {
        std::vector<std::string> escritos;
        if (auto m = EscribirResultado(r, decision.stem, &escritos)) {
            ui.Mostrar(*m);
            return;
        }
        if (!escritos.empty()) espacio.Confirmar(TextoGuardado(escritos));
    }
    if (r.composicion) espacio.AbrirComposicion(std::move(*r.composicion));
    // Reports and charts open in windows of their own in both output modes.
    for (const auto& inf : r.informes) espacio.AbrirInforme(inf);
    for (const auto& g : r.graficos) espacio.AbrirGrafico(g);
    // Figures in their dialog, over the chart they go with.
    if (r.cuadro) {
        espera.reset();
        CCuadroValoresDlg cuadro(*r.cuadro, padre);
        ui.Ejecutar(cuadro);
    }
    if (r.imagenes.empty()) return;
    // The images after the first open in new windows.
    for (std::size_t i = 1; i < r.imagenes.size(); ++i) espacio.AbrirImagen(std::move(r.imagenes[i]), !aVentana);
    if (aVentana) {
        CImagen& resultado = r.imagenes.front();
        // The window keeps the palette it was showing.
        if (doc->TieneImagen()) resultado.indicePaleta = doc->Imagen().indicePaleta;
        doc->PonerImagen(std::move(resultado));
    }
}

}  // namespace
