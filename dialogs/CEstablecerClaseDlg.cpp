#include "dialogs/CEstablecerClaseDlg.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "dialogs/ComandosEspacio.h"
#include "dialogs/FilaBotones.h"
#include "dialogs/Interfaz.h"
#include "operations/Curso.h"

using orvela::Mensaje;
namespace msg = orvela::msg;
namespace relleno = orvela::relleno;

CEstablecerClaseDlg::CEstablecerClaseDlg(Interfaz& ui, QWidget* padre) : QDialog(padre), ui_(ui) {
    setWindowTitle(QStringLiteral("Establecer clase"));
    setObjectName(QStringLiteral("establecerClase"));

    auto* grupoNombre = new QGroupBox(QStringLiteral("Nombre del fichero de clase"), this);
    nombre_ = new QLineEdit(grupoNombre);
    nombre_->setObjectName(QStringLiteral("nombre"));
    nombre_->setReadOnly(true);
    auto* guardar = new QPushButton(QStringLiteral("Guardar en"), grupoNombre);
    guardar->setObjectName(QStringLiteral("guardarEn"));
    guardar->setAutoDefault(false);
    auto* filaNombre = new QHBoxLayout(grupoNombre);
    filaNombre->addWidget(nombre_, 1);
    filaNombre->addWidget(guardar);

    auto* grupoModo = new QGroupBox(QStringLiteral("Modo de selección"), this);
    modos_ = new QButtonGroup(this);
    auto* rejilla = new QGridLayout(grupoModo);
    const char* const textos[] = {"Puntos", "Cruces", "Rectángulos"};
    const char* const nombres[] = {"puntos", "cruces", "rectangulos"};
    for (int i = 0; i < 3; ++i) {
        auto* r = new QRadioButton(QString::fromUtf8(textos[i]), grupoModo);
        r->setObjectName(QString::fromLatin1(nombres[i]));
        modos_->addButton(r, i);
        rejilla->addWidget(r, i, 0);
    }
    alturaEdit_ = new QLineEdit(QStringLiteral("1"), grupoModo);
    alturaEdit_->setObjectName(QStringLiteral("altura"));
    anchuraEdit_ = new QLineEdit(QStringLiteral("1"), grupoModo);
    anchuraEdit_->setObjectName(QStringLiteral("anchura"));
    rejilla->addWidget(new QLabel(QStringLiteral("Altura"), grupoModo), 2, 1);
    rejilla->addWidget(alturaEdit_, 2, 2);
    rejilla->addWidget(new QLabel(QStringLiteral("Anchura"), grupoModo), 2, 3);
    rejilla->addWidget(anchuraEdit_, 2, 4);
    modos_->button(0)->setChecked(true);
    CambiarModo();

    const FilaBotones botones(this, QStringLiteral("&Aceptar"), QStringLiteral("&Cancelar"), QStringLiteral("Ayuda"));
    auto* v = new QVBoxLayout(this);
    v->addWidget(grupoNombre);
    v->addWidget(grupoModo);
    v->addLayout(botones.fila);

    connect(guardar, &QPushButton::clicked, this, &CEstablecerClaseDlg::GuardarEn);
    connect(modos_, &QButtonGroup::idToggled, this, [this](int, bool) { CambiarModo(); });
    connect(botones.aceptar, &QPushButton::clicked, this, &CEstablecerClaseDlg::Aceptar);
    connect(botones.ayuda, &QPushButton::clicked, this, [this] { MostrarAyuda("clase", this); });
}

orvela::ModoMuestreo CEstablecerClaseDlg::Modo() const {
    return static_cast<orvela::ModoMuestreo>(std::max(0, modos_->checkedId()));
}

std::string CEstablecerClaseDlg::Nombre() const { return nombre_->text().toStdString(); }

void CEstablecerClaseDlg::CambiarModo() {
    const bool rectangulos = Modo() == orvela::ModoMuestreo::Rectangulos;
    alturaEdit_->setEnabled(rectangulos);
    anchuraEdit_->setEnabled(rectangulos);
}

void CEstablecerClaseDlg::GuardarEn() {
    const auto ruta = ui_.FicheroGuardar(QStringLiteral("Guardar en"), {QStringLiteral("Archivos (*.txt)")});
    if (!ruta) return;
    stem_ = orvela::QuitarExtensionGuardar(*ruta);
    nombre_->setText(QString::fromStdString(orvela::TituloFichero(stem_ + ".txt")));
}

void CEstablecerClaseDlg::Aceptar() {
    if (nombre_->text().isEmpty()) {
        ui_.Mostrar(Mensaje::Tabla(msg::kNoSeleccionadaSalida, relleno::kNingunArchivoTxt, relleno::kUnFichero));
        return;
    }
    if (Modo() == orvela::ModoMuestreo::Rectangulos) {
        bool bienAlto = false, bienAncho = false;
        const int alto = alturaEdit_->text().trimmed().toInt(&bienAlto);
        const int ancho = anchuraEdit_->text().trimmed().toInt(&bienAncho);
        if (!bienAlto || !bienAncho || alto < 1 || ancho < 1) {
            ui_.Mostrar(Mensaje::Tabla(msg::kRectangulo));
            return;
        }
        altura_ = alto;
        anchura_ = ancho;
    }
    accept();
}
