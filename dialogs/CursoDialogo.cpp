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
#include <new>

#include "dialogs/Espacio.h"
#include "dialogs/Interfaz.h"
#include "dialogs/CAvisoDlg.h"
#include "dialogs/COperacionDlg.h"
#include "dialogs/Ficheros.h"
#include "doc/CBrimarDoc.h"
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
        if (evento->type() == QEvent::Close && objeto->isWidgetType()) {
            evento->ignore();
            return true;
        }
        return false;
    }
};

// How long a computation runs before the progress window appears.
constexpr int kEsperaProgresoMs = 300;

// Runs the computation on a worker thread while a local event loop keeps
// the windows painted; a progress window appears only when it takes long.
Resultado CalcularSinBloquear(const Declaracion& d, const std::vector<const CImagen*>& entradas, const Valores& v,
                              Destino destino, QWidget* padre) {
    auto milesimas = std::make_shared<std::atomic<int>>(-1);
    auto progreso = [milesimas](double f) {
        const double x = std::clamp(f, 0.0, 1.0) * 1000.0;
        milesimas->store(static_cast<int>(x));
    };
    Resultado resultado;
    QFuture<void> futuro = QtConcurrent::run([&d, &entradas, &v, destino, progreso, &resultado] {
        try {
            resultado = Calcular(d, entradas, v, destino, progreso);
        } catch (const std::bad_alloc&) {
            resultado = Resultado{};
            resultado.error = Mensaje::Libre("No hay memoria suficiente para realizar la operación.");
        } catch (const std::exception& e) {
            resultado = Resultado{};
            resultado.error = Mensaje::Libre(std::string("No se ha podido realizar la operación: ") + e.what());
        }
    });
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
            dialogo = std::make_unique<QProgressDialog>(QStringLiteral("Realizando la operación..."), QString(), 0, 0,
                                                        padre);
            dialogo->setObjectName(QStringLiteral("progreso"));
            dialogo->setWindowTitle(QString::fromUtf8(d.titulo));
            dialogo->setCancelButton(nullptr);
            dialogo->setAutoClose(false);
            dialogo->setAutoReset(false);
            dialogo->setMinimumDuration(0);
            dialogo->setWindowModality(Qt::ApplicationModal);
            dialogo->show();
            avance.start();
        });
        QObject::connect(&avance, &QTimer::timeout, [&] {
            const int m = milesimas->load();
            if (!dialogo || m < 0) return;
            if (dialogo->maximum() != 1000) dialogo->setRange(0, 1000);
            dialogo->setValue(m);
        });
        mostrar.start(kEsperaProgresoMs);
        if (!futuro.isFinished()) bucle.exec(QEventLoop::ExcludeUserInputEvents);
    }
    futuro.waitForFinished();
    return resultado;
}

}  // namespace

void EjecutarOperacion(const Declaracion& d, Espacio& espacio, Interfaz& ui) {
    QWidget* padre = espacio.VentanaPrincipal();
    CBrimarDoc* doc = espacio.DocumentoActivo();
    const bool ofreceVentana =
        std::any_of(d.entradas.begin(), d.entradas.end(), [](const DeclEntrada& e) { return e.admiteVentanaActiva; });
    if (ofreceVentana) {
        if (auto m = ComprobarVentana(doc)) {
            ui.Mostrar(*m);
            return;
        }
    }
    std::optional<Cabecera> cabeceraVentana;
    if (doc && doc->TieneImagen()) cabeceraVentana = doc->Imagen().ComoCabecera();

    COperacionDlg dlg(d, ui, cabeceraVentana, padre);
    if (!ui.Ejecutar(dlg) || dlg.result() != QDialog::Accepted) return;
    Valores v = dlg.Valores();
    if (!EjecutarSubdialogos(d, ui, v, padre)) return;

    EsperaCursor espera(ui);
    doc = espacio.DocumentoActivo();
    const auto& elegidas = dlg.Entradas();
    const bool aVentana = d.conSalida && dlg.SalidaVentana();
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

    // Inputs: the window's own record, or a local record read from the file.
    std::vector<CImagen> locales(elegidas.size());
    std::vector<const CImagen*> entradas;
    for (std::size_t i = 0; i < elegidas.size(); ++i) {
        const auto& e = elegidas[i];
        if (e.ventana) {
            entradas.push_back(&doc->Imagen());
            continue;
        }
        std::optional<Mensaje> m = ComprobarRaster(e.ruta, e.cabecera);
        if (!m) m = locales[i].Cargar(e.cabecera, e.ruta, 0, true);
        if (m) {
            ui.Mostrar(*m);
            return;
        }
        entradas.push_back(&locales[i]);
    }

    // The operation's own checks run before anything is replaced or written.
    if (d.antesDeCalcular) {
        if (auto m = d.antesDeCalcular(entradas, v)) {
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
    Resultado r = CalcularSinBloquear(sinComprobar, entradas, v, aVentana ? Destino::Ventana : Destino::Fichero, padre);

    for (const auto& a : r.avisos) ui.Mostrar(a);
    if (r.error) {
        ui.Mostrar(*r.error);
        const int k = r.entradaEnVentana;
        if (aVentana && k >= 0 && static_cast<std::size_t>(k) < elegidas.size() && !elegidas[static_cast<std::size_t>(k)].ventana) {
            CImagen mostrada = std::move(locales[static_cast<std::size_t>(k)]);
            if (doc->TieneImagen()) mostrada.indicePaleta = doc->Imagen().indicePaleta;
            doc->PonerImagen(std::move(mostrada));
        }
        return;
    }
    if (!d.conSalida) {
        if (!r.consola.empty()) ui.MostrarTexto(QString::fromStdString(r.consola));
        return;
    }
    if (r.imagenes.empty()) return;
    if (aVentana) {
        CImagen& resultado = r.imagenes.front();
        // The window keeps the palette it was showing.
        if (doc->TieneImagen()) resultado.indicePaleta = doc->Imagen().indicePaleta;
        doc->PonerImagen(std::move(resultado));
        return;
    }
    std::vector<std::string> escritos;
    if (auto m = EscribirResultado(r, dlg.Stem(), &escritos)) return ui.Mostrar(*m);
    if (!escritos.empty()) espacio.Confirmar(TextoGuardado(escritos));
}
