#include "dialogs/CFaseEntrenamientoDlg.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "dialogs/ComandosEspacio.h"
#include "dialogs/FilaBotones.h"
#include "dialogs/Interfaz.h"
#include "operations/Clasificacion.h"
#include "operations/Curso.h"

using orvela::Mensaje;
namespace msg = orvela::msg;
namespace relleno = orvela::relleno;

CFaseEntrenamientoDlg::CFaseEntrenamientoDlg(Interfaz& ui, QWidget* padre) : QDialog(padre), ui_(ui) {
    setWindowTitle(QStringLiteral("Fase entrenamiento"));
    setObjectName(QStringLiteral("faseEntrenamiento"));

    auto* grupo = new QGroupBox(QStringLiteral("Bandas a clasificar"), this);
    numero_ = new QLineEdit(grupo);
    numero_->setObjectName(QStringLiteral("numeroBandas"));
    auto* seleccionar = new QPushButton(QStringLiteral("&Seleccionar las bandas a clasificar"), grupo);
    seleccionar->setObjectName(QStringLiteral("seleccionar"));
    seleccionar->setAutoDefault(false);
    lista_ = new QListWidget(grupo);
    lista_->setObjectName(QStringLiteral("lista"));
    auto* fila = new QHBoxLayout;
    fila->addWidget(new QLabel(QStringLiteral("Número de bandas"), grupo));
    fila->addWidget(numero_);
    fila->addWidget(seleccionar);
    auto* g = new QVBoxLayout(grupo);
    g->addLayout(fila);
    g->addWidget(lista_);

    const FilaBotones botones(this, QStringLiteral("&Aceptar"), QStringLiteral("&Cancelar"), QStringLiteral("Ayuda"));
    auto* v = new QVBoxLayout(this);
    v->addWidget(grupo);
    v->addLayout(botones.fila);

    connect(seleccionar, &QPushButton::clicked, this, &CFaseEntrenamientoDlg::Seleccionar);
    connect(botones.aceptar, &QPushButton::clicked, this, &CFaseEntrenamientoDlg::Aceptar);
    connect(botones.ayuda, &QPushButton::clicked, this, [this] { MostrarAyuda("entrenamiento", this); });
}

void CFaseEntrenamientoDlg::Seleccionar() {
    bool bien = false;
    const int n = numero_->text().trimmed().toInt(&bien);
    // A new choice replaces the list whatever becomes of it.
    bandas_.clear();
    lista_->clear();
    if (!bien || n < 1) {
        ui_.Mostrar(Mensaje::Tabla(msg::kValorIncorrecto, relleno::kNumeroBandasEntrada));
        return;
    }
    std::vector<orvela::BandaEntrenamiento> elegidas;
    std::vector<std::optional<orvela::Cabecera>> previas;
    for (int i = 1; i <= n; ++i) {
        const auto ruta = ui_.FicheroAbrir(QStringLiteral("Banda %1").arg(i), {QStringLiteral("Imágenes (*.ozm)")});
        if (!ruta) return;
        orvela::Cabecera cab;
        auto error = orvela::ComprobarFicheroEntrada(*ruta, cab);
        if (!error) error = orvela::BandaIgualPrimera(i - 1, cab, previas);
        if (error) {
            ui_.Mostrar(*error);
            return;
        }
        previas.push_back(cab);
        elegidas.push_back({*ruta, orvela::TituloFichero(*ruta), cab});
    }
    bandas_ = std::move(elegidas);
    for (std::size_t i = 0; i < bandas_.size(); ++i)
        lista_->addItem(QStringLiteral("Banda %1:  %2").arg(i + 1).arg(QString::fromStdString(bandas_[i].nombre)));
}

void CFaseEntrenamientoDlg::Aceptar() {
    if (bandas_.empty()) {
        ui_.Mostrar(Mensaje::Tabla(msg::kNoSeleccionadaEntrada, relleno::kNingunaBanda, relleno::kLasBandasClasificar));
        return;
    }
    accept();
}
