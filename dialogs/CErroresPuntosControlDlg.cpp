#include "dialogs/CErroresPuntosControlDlg.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <string_view>

#include "dialogs/COperacionDlg.h"
#include "dialogs/Espacio.h"
#include "dialogs/FilaBotones.h"
#include "dialogs/Interfaz.h"
#include "doc/CBrimarDoc.h"
#include "doc/CBrimarView.h"
#include "doc/CapaPuntosControl.h"
#include "operations/Operacion.h"

using namespace orvela;

CErroresPuntosControlDlg::CErroresPuntosControlDlg(std::vector<PuntoControl> puntos, Interfaz& ui, QWidget* padre,
                                                   CBrimarView* vista, long filas, long columnas)
    : QDialog(padre), puntos_(std::move(puntos)), marcas_(puntos_.size(), Marca::Ninguna), ui_(ui), vista_(vista) {
    setWindowTitle(QStringLiteral("Errores De los Puntos De Control"));
    setObjectName(QStringLiteral("errores_puntos"));
    auto* raiz = new QVBoxLayout(this);
    auto* cabeza = new QLabel(QStringLiteral("Nº Punto Control           Error(EL)"), this);
    raiz->addWidget(cabeza);
    auto* medio = new QHBoxLayout;
    errores_ = new QListWidget(this);
    errores_->setObjectName(QStringLiteral("lista_errores"));
    errores_->setFont(QFont(QStringLiteral("monospace")));
    errores_->setMinimumWidth(420);
    medio->addWidget(errores_, 1);
    auto* botones = new QVBoxLayout;
    auto boton = [&](const char* texto, const char* nombre) {
        auto* b = new QPushButton(QString::fromUtf8(texto), this);
        b->setObjectName(QString::fromUtf8(nombre));
        b->setAutoDefault(false);
        botones->addWidget(b);
        return b;
    };
    connect(boton("&Omitir Punto", "omitir"), &QPushButton::clicked, this, [this] { Marcar(Marca::Omitir); });
    connect(boton("&Restaurar Punto", "restaurar"), &QPushButton::clicked, this, [this] { Marcar(Marca::Restaurar); });
    connect(boton("Recalcular &Estimación", "recalcular"), &QPushButton::clicked, this, [this] { Recalcular(); });
    botones->addStretch();
    medio->addLayout(botones);
    raiz->addLayout(medio, 1);
    raiz->addWidget(new QLabel(QStringLiteral("Error Global. RMS"), this));
    rms_ = new QListWidget(this);
    rms_->setObjectName(QStringLiteral("lista_rms"));
    rms_->setMaximumHeight(rms_->fontMetrics().height() * 2 + 8);
    raiz->addWidget(rms_);
    FilaBotones fila(this, QStringLiteral("&Aceptar"), QStringLiteral("&Cancelar"));
    connect(fila.aceptar, &QPushButton::clicked, this, &QDialog::accept);
    raiz->addLayout(fila.fila);
    connect(errores_, &QListWidget::currentRowChanged, this, [this](int fila) {
        if (capa_) {
            capa_->Seleccionar(fila);
            if (vista_) vista_->viewport()->update();
        }
    });
    if (vista_ && filas > 0 && columnas > 0) {
        auto capa = std::make_unique<vista::CapaPuntosControl>(filas, columnas);
        capa_ = capa.get();
        vista_->AnadirCapa(std::move(capa));
    }
}

CErroresPuntosControlDlg::~CErroresPuntosControlDlg() {
    if (vista_ && capa_) vista_->QuitarCapa(vista::CapaPuntosControl::NombreCapa());
}

bool CErroresPuntosControlDlg::Estimar() {
    for (auto& p : puntos_) p.activo = true;
    std::fill(marcas_.begin(), marcas_.end(), Marca::Ninguna);
    estimacion_ = EstimarPolinomio(puntos_);
    Rellenar();
    return estimacion_.Valida();
}

std::string CErroresPuntosControlDlg::Omitidos() const {
    std::string s;
    for (std::size_t k = 0; k < puntos_.size(); ++k) {
        if (puntos_[k].activo) continue;
        if (!s.empty()) s += ',';
        s += std::to_string(k + 1);
    }
    return s;
}

void CErroresPuntosControlDlg::Marcar(Marca m) {
    const int fila = errores_->currentRow();
    if (fila < 0 || fila >= static_cast<int>(marcas_.size())) return;
    marcas_[static_cast<std::size_t>(fila)] = m;
    errores_->item(fila)->setText(QString::fromStdString(
        LineaErrorPunto(fila + 1, m == Marca::Omitir ? "Omitir" : "Restaurar")));
}

void CErroresPuntosControlDlg::Recalcular() {
    std::vector<PuntoControl> nuevos = puntos_;
    for (std::size_t k = 0; k < nuevos.size(); ++k) {
        if (marcas_[k] == Marca::Omitir) nuevos[k].activo = false;
        if (marcas_[k] == Marca::Restaurar) nuevos[k].activo = true;
    }
    orvela::Estimacion e = EstimarPolinomio(nuevos);
    if (!e.Valida()) {
        // The marks stay, so that a point can be restored before trying again.
        ui_.Mostrar(Mensaje::Tabla(msg::kEstimacionIncorrecta));
        return;
    }
    puntos_ = std::move(nuevos);
    estimacion_ = std::move(e);
    std::fill(marcas_.begin(), marcas_.end(), Marca::Ninguna);
    const int fila = errores_->currentRow();
    Rellenar();
    if (fila >= 0) errores_->setCurrentRow(fila);
}

void CErroresPuntosControlDlg::Rellenar() {
    errores_->clear();
    rms_->clear();
    const bool valida = estimacion_.Valida();
    for (std::size_t k = 0; k < puntos_.size(); ++k) {
        const int n = static_cast<int>(k) + 1;
        const std::string linea = !puntos_[k].activo ? LineaErrorPunto(n, "Omitido")
                                                     : LineaErrorPunto(n, valida ? estimacion_.errores[k] : 0.0);
        errores_->addItem(QString::fromStdString(linea));
    }
    if (valida) rms_->addItem(QString::fromStdString(TextoLf(estimacion_.rms)));
    Dibujar();
}

void CErroresPuntosControlDlg::Dibujar() {
    if (!capa_ || !vista_) return;
    capa_->Poner(puntos_, &estimacion_);
    capa_->Seleccionar(errores_->currentRow());
    vista_->viewport()->update();
}

namespace {

// The view of the image picked as input 0 of the dialog: the active window
// when it is chosen, an open window whose image was picked, or one that
// shows the picked file. Its size in `filas`, `columnas`.
CBrimarView* VistaEntrada(COperacionDlg& dlg, Espacio& espacio, long& filas, long& columnas) {
    CBrimarDoc* doc = nullptr;
    auto* activa = dlg.findChild<QRadioButton*>(QStringLiteral("entrada0_activa"));
    if (activa && activa->isChecked()) {
        doc = espacio.DocumentoActivo();
    } else if (!dlg.Entradas().empty() && dlg.Entradas()[0].aceptado) {
        const auto& e = dlg.Entradas()[0].Unica();
        for (CBrimarDoc* o : espacio.Documentos()) {
            if (!o->TieneImagen()) continue;
            if ((e.abierta && &o->Imagen() == e.abierta) || (!e.abierta && o->Imagen().rutaRaster == e.ruta)) {
                doc = o;
                break;
            }
        }
    }
    if (!doc || !doc->TieneImagen() || doc->EsComposicion()) return nullptr;
    filas = doc->Imagen().Filas();
    columnas = doc->Imagen().Columnas();
    return espacio.VistaDe(doc);
}

}  // namespace

void PrepararRevisionPuntos(const Declaracion& d, COperacionDlg& dlg, Espacio& espacio, Interfaz& ui) {
    if (std::string_view(d.orden) != "geometrica") return;
    dlg.revisarFichero = [&dlg, &espacio, &ui](int, const std::string& ruta) {
        auto* omitir = dlg.findChild<QLineEdit*>(QStringLiteral("campo_omitir"));
        if (omitir) omitir->clear();
        std::string error;
        auto puntos = LeerPuntosControl(ruta, &error);
        if (!puntos) {
            ui.Mostrar(Mensaje::Libre(error));
            return false;
        }
        long filas = 0, columnas = 0;
        CBrimarView* vista = VistaEntrada(dlg, espacio, filas, columnas);
        CErroresPuntosControlDlg errores(std::move(*puntos), ui, &dlg, vista, filas, columnas);
        if (!errores.Estimar()) {
            ui.Mostrar(Mensaje::Tabla(msg::kEstimacionIncorrecta));
            return false;
        }
        if (!ui.Ejecutar(errores) || errores.result() != QDialog::Accepted) return false;
        if (omitir) omitir->setText(QString::fromStdString(errores.Omitidos()));
        return true;
    };
}
