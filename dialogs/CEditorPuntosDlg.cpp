#include "dialogs/CEditorPuntosDlg.h"

#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <QVariant>
#include <cmath>
#include <optional>

#include "base/Mensajes.h"
#include "dialogs/Espacio.h"
#include "dialogs/FilaBotones.h"
#include "dialogs/Ficheros.h"
#include "dialogs/Interfaz.h"
#include "doc/CBrimarDoc.h"
#include "doc/CBrimarView.h"
#include "doc/CapaPuntosControl.h"
#include "doc/HerramientaVista.h"
#include "image/FicheroSeguro.h"

using namespace orvela;

namespace {

// A number typed by the user: a decimal point or a decimal comma.
std::optional<double> Numero(QString t) {
    t = t.trimmed().replace(QLatin1Char(','), QLatin1Char('.'));
    bool ok = false;
    const double v = t.toDouble(&ok);
    if (!ok || !std::isfinite(v)) return std::nullopt;
    return v;
}

// "Punto de control": the map coordinates of a clicked pixel.
class CPuntoControlDlg : public QDialog {
public:
    CPuntoControlDlg(int numero, long filaPixel, long columnaPixel, double fila, Interfaz& ui, QWidget* padre)
        : QDialog(padre) {
        setWindowTitle(QStringLiteral("Punto de control %1").arg(numero));
        setObjectName(QStringLiteral("punto_control"));
        auto* raiz = new QVBoxLayout(this);
        raiz->addWidget(new QLabel(QStringLiteral("Píxel: fila %1, columna %2 (fila del fichero: %3)")
                                       .arg(filaPixel)
                                       .arg(columnaPixel)
                                       .arg(fila),
                                   this));
        auto* form = new QFormLayout;
        x_ = new QLineEdit(this);
        x_->setObjectName(QStringLiteral("campo_x"));
        y_ = new QLineEdit(this);
        y_->setObjectName(QStringLiteral("campo_y"));
        form->addRow(QStringLiteral("X (m)"), x_);
        form->addRow(QStringLiteral("Y (m)"), y_);
        raiz->addLayout(form);
        FilaBotones fila2(this, QStringLiteral("&Aceptar"), QStringLiteral("&Cancelar"));
        raiz->addLayout(fila2.fila);
        connect(fila2.aceptar, &QPushButton::clicked, this, [this, &ui] {
            if (!Numero(x_->text()) || !Numero(y_->text())) return ui.Mostrar(Mensaje::Libre(texto::kCoordenadasPunto));
            accept();
        });
    }
    double X() const { return Numero(x_->text()).value_or(0); }
    double Y() const { return Numero(y_->text()).value_or(0); }

private:
    QLineEdit* x_;
    QLineEdit* y_;
};

}  // namespace

CEditorPuntosDlg::CEditorPuntosDlg(CBrimarView& vista, Espacio& espacio, Interfaz& ui, QWidget* padre)
    : QDialog(padre), vista_(&vista), espacio_(espacio), ui_(ui) {
    setWindowTitle(QStringLiteral("Editor de puntos de control"));
    setObjectName(QStringLiteral("editor_puntos"));
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);
    const CImagen& im = vista.Documento().Imagen();
    filas_ = im.Filas();
    columnas_ = im.Columnas();

    auto* raiz = new QVBoxLayout(this);
    raiz->addWidget(new QLabel(QStringLiteral("Pulse sobre un píxel de la imagen «%1» y escriba sus coordenadas X e Y.")
                                   .arg(vista.Documento().Nombre()),
                               this));
    raiz->addWidget(new QLabel(QStringLiteral("Nº    Fila    Columna    X    Y    Error(EL)"), this));
    lista_ = new QListWidget(this);
    lista_->setObjectName(QStringLiteral("lista_puntos"));
    lista_->setFont(QFont(QStringLiteral("monospace")));
    lista_->setMinimumWidth(520);
    raiz->addWidget(lista_, 1);
    rms_ = new QLabel(this);
    rms_->setObjectName(QStringLiteral("rms"));
    raiz->addWidget(rms_);
    auto* botones = new QHBoxLayout;
    auto boton = [&](const char* texto, const char* nombre) {
        auto* b = new QPushButton(QString::fromUtf8(texto), this);
        b->setObjectName(QString::fromUtf8(nombre));
        b->setAutoDefault(false);
        botones->addWidget(b);
        return b;
    };
    connect(boton("&Quitar último", "quitar"), &QPushButton::clicked, this, [this] { QuitarUltimo(); });
    connect(boton("&Guardar...", "guardar"), &QPushButton::clicked, this, [this] { Guardar(); });
    botones->addStretch();
    connect(boton("&Cerrar", "cerrar"), &QPushButton::clicked, this, [this] { reject(); });
    raiz->addLayout(botones);
    connect(lista_, &QListWidget::currentRowChanged, this, [this](int f) {
        if (capa_ && vista_) {
            capa_->Seleccionar(f);
            vista_->viewport()->update();
        }
    });

    auto capa = std::make_unique<vista::CapaPuntosControl>(filas_, columnas_);
    capa_ = capa.get();
    vista.AnadirCapa(std::move(capa));
    auto h = std::make_unique<vista::HerramientaPuntosControl>(
        [this](CBrimarView&, const vista::PuntoImagen& p) { Clic(p); }, [this](CBrimarView&) { QuitarUltimo(); },
        [this](CBrimarView&) {
            // A new image or the window closed: the tool is already off.
            herramienta_ = nullptr;
            PermitirCerrar(false);
            Terminar();
            close();
        });
    herramienta_ = h.get();
    vista.ArmarHerramienta(std::move(h));
    // The image's window closed: its tools and layers went with it.
    connect(&vista, &QObject::destroyed, this, [this] {
        herramienta_ = nullptr;
        capa_ = nullptr;
        terminado_ = true;
        PermitirCerrar(false);
        close();
    });
    Actualizar();
}

CEditorPuntosDlg::~CEditorPuntosDlg() { Terminar(); }

void CEditorPuntosDlg::Terminar() {
    if (terminado_) return;
    terminado_ = true;
    if (vista_) {
        if (herramienta_) vista_->QuitarHerramienta(herramienta_);
        vista_->QuitarCapa(vista::CapaPuntosControl::NombreCapa());
    }
    herramienta_ = nullptr;
    capa_ = nullptr;
}

void CEditorPuntosDlg::done(int r) {
    if (!terminado_ && !PermitirCerrar(true)) return;
    Terminar();
    QDialog::done(r);
}

bool CEditorPuntosDlg::PermitirCerrar(bool puedeSeguir) {
    if (guardados_ || puntos_.empty()) return true;
    switch (ui_.PreguntarGuardar(QStringLiteral("Puntos de control"))) {
        case RespuestaGuardar::Guardar: return Guardar() || !puedeSeguir;
        case RespuestaGuardar::Descartar: return true;
        case RespuestaGuardar::Cancelar: return !puedeSeguir;
    }
    return true;
}

void CEditorPuntosDlg::Clic(const vista::PuntoImagen& p) {
    const double fila = static_cast<double>(filas_ - p.filaPixel);
    CPuntoControlDlg dlg(static_cast<int>(puntos_.size()) + 1, p.filaPixel, p.columnaPixel, fila, ui_, this);
    if (!ui_.Ejecutar(dlg) || dlg.result() != QDialog::Accepted) return;
    Anadir(p.filaPixel, p.columnaPixel, dlg.X(), dlg.Y());
}

void CEditorPuntosDlg::Anadir(long filaPixel, long columnaPixel, double x, double y) {
    PuntoControl q;
    q.fila = static_cast<double>(filas_ - filaPixel);
    q.columna = static_cast<double>(columnaPixel);
    q.x = x;
    q.y = y;
    puntos_.push_back(q);
    guardados_ = false;
    Actualizar();
    lista_->setCurrentRow(lista_->count() - 1);
}

void CEditorPuntosDlg::QuitarUltimo() {
    if (puntos_.empty()) return;
    puntos_.pop_back();
    guardados_ = false;
    Actualizar();
}

void CEditorPuntosDlg::Actualizar() {
    estimacion_ = puntos_.size() >= 3 ? EstimarPolinomio(puntos_) : orvela::Estimacion{};
    const bool valida = estimacion_.Valida();
    lista_->clear();
    for (std::size_t k = 0; k < puntos_.size(); ++k) {
        const PuntoControl& q = puntos_[k];
        QString linea = QStringLiteral("%1  %2  %3  %4  %5")
                            .arg(k + 1, 3)
                            .arg(q.fila, 6, 'f', 0)
                            .arg(q.columna, 6, 'f', 0)
                            .arg(q.x, 12, 'f', 2)
                            .arg(q.y, 12, 'f', 2);
        if (valida) linea += QStringLiteral("  ") + QString::fromStdString(TextoLf(estimacion_.errores[k]));
        lista_->addItem(linea);
    }
    if (valida)
        rms_->setText(QStringLiteral("Error Global. RMS: ") + QString::fromStdString(TextoLf(estimacion_.rms)));
    else if (puntos_.size() < 3)
        rms_->setText(QStringLiteral("Los errores se calculan a partir del tercer punto."));
    else
        rms_->setText(QStringLiteral("Los puntos están alineados: no hay estimación."));
    if (capa_ && vista_) {
        capa_->Poner(puntos_, valida ? &estimacion_ : nullptr);
        vista_->viewport()->update();
    }
}

bool CEditorPuntosDlg::Guardar() {
    if (puntos_.empty()) {
        ui_.Mostrar(Mensaje::Libre(texto::kSinPuntosControl));
        return false;
    }
    auto ruta = ui_.FicheroGuardar(QStringLiteral("Guardar puntos de control"),
                                   {QStringLiteral("Fichero (*.txt)"), QStringLiteral("Todos Los Archivos (*.*)")});
    if (!ruta) return false;
    if (QFileInfo(QString::fromStdString(*ruta)).suffix().isEmpty()) *ruta += ".txt";
    if (!EscribirFicheroSeguro(*ruta, TextoPuntosControl(puntos_))) {
        ui_.Mostrar(Mensaje::Libre(Sustituir(texto::kNoSeEscribePuntos, *ruta)));
        return false;
    }
    guardados_ = true;
    RecordarCarpeta(QString::fromStdString(*ruta));
    espacio_.Confirmar(TextoGuardado({*ruta}));
    return true;
}

void ComandoEditorPuntos(Espacio& espacio, Interfaz& ui, QWidget* padre) {
    CBrimarDoc* doc = espacio.DocumentoActivo();
    if (!doc) return ui.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    if (!doc->TieneImagen() || doc->Imagen().NumeroPixeles() == 0) return ui.Mostrar(Mensaje::Tabla(msg::kSinImagen));
    if (doc->EsComposicion()) return ui.Mostrar(Mensaje::Tabla(msg::kComposicionColor));
    CBrimarView* vista = espacio.VistaDe(doc);
    if (!vista) return;
    // One editor a window: a second command on the same window brings the
    // open one forward.
    if (padre) {
        for (auto* e : padre->findChildren<CEditorPuntosDlg*>(QStringLiteral("editor_puntos"))) {
            if (e->property("vista").value<QObject*>() == vista && e->isVisible()) {
                e->raise();
                e->activateWindow();
                return;
            }
        }
    }
    auto* editor = new CEditorPuntosDlg(*vista, espacio, ui, padre);
    editor->setProperty("vista", QVariant::fromValue<QObject*>(vista));
    editor->show();
}
