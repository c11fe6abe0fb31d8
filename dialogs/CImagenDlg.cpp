#include "dialogs/FilaBotones.h"
#include "dialogs/CImagenDlg.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "dialogs/Interfaz.h"
#include "image/Paleta.h"
#include "operations/Curso.h"

using orvela::Mensaje;
namespace msg = orvela::msg;
namespace relleno = orvela::relleno;

CImagenDlg::CImagenDlg(Interfaz& ui, QWidget* padre, Modo modo) : QDialog(padre), ui_(ui), modo_(modo) {
    setWindowTitle(modo == SoloPaleta ? QStringLiteral("Cambiar paleta") : QStringLiteral("Imagen"));
    setObjectName(modo == SoloPaleta ? QStringLiteral("cambiarPaleta") : QStringLiteral("imagen"));

    auto* grupoEntrada = new QGroupBox(QStringLiteral("Nombre de la Imagen de Entrada"), this);
    auto* seleccionar = new QPushButton(QStringLiteral("&Seleccionar"), grupoEntrada);
    seleccionar->setObjectName(QStringLiteral("seleccionar"));
    seleccionar->setAutoDefault(false);
    entrada_ = new QLineEdit(grupoEntrada);
    entrada_->setObjectName(QStringLiteral("entrada"));
    entrada_->setReadOnly(true);
    auto* filaEntrada = new QHBoxLayout(grupoEntrada);
    filaEntrada->addWidget(seleccionar);
    filaEntrada->addWidget(entrada_, 1);

    auto* grupoPaleta = new QGroupBox(QStringLiteral("Opciones de Paleta"), this);
    paletas_ = new QButtonGroup(this);
    auto* rejilla = new QGridLayout(grupoPaleta);
    for (int codigo = 0; codigo <= orvela::kPaletaPersonalizada; ++codigo) {
        auto* r = new QRadioButton(QString::fromUtf8(orvela::NombreOpcionPaleta(codigo)), grupoPaleta);
        r->setObjectName(QStringLiteral("paleta%1").arg(codigo));
        paletas_->addButton(r, codigo);
        if (codigo < orvela::kPaletaPersonalizada)
            rejilla->addWidget(r, codigo % 3, codigo / 3);
        else
            rejilla->addWidget(r, 3, 0);
    }
    auto* elegir = new QPushButton(QStringLiteral("Elegir paleta"), grupoPaleta);
    elegir->setObjectName(QStringLiteral("elegirPaleta"));
    elegir->setAutoDefault(false);
    paleta_ = new QLineEdit(grupoPaleta);
    paleta_->setObjectName(QStringLiteral("nombrePaleta"));
    paleta_->setReadOnly(true);
    rejilla->addWidget(elegir, 3, 1);
    rejilla->addWidget(paleta_, 3, 2);
    // Grey levels suit a single band best; the user changes it at will.
    PonerCodigoPaleta(2);

    const FilaBotones botones(this, QStringLiteral("&Aceptar"), QStringLiteral("&Cancelar"));

    auto* v = new QVBoxLayout(this);
    if (modo == SoloPaleta) grupoEntrada->hide();
    else v->addWidget(grupoEntrada);
    v->addWidget(grupoPaleta);
    v->addLayout(botones.fila);

    connect(seleccionar, &QPushButton::clicked, this, &CImagenDlg::Seleccionar);
    connect(elegir, &QPushButton::clicked, this, &CImagenDlg::ElegirPaleta);
    connect(botones.aceptar, &QPushButton::clicked, this, &CImagenDlg::accept);
}

int CImagenDlg::CodigoPaleta() const { return paletas_->checkedId(); }

void CImagenDlg::PonerCodigoPaleta(int codigo) {
    if (auto* b = paletas_->button(codigo)) b->setChecked(true);
}

void CImagenDlg::Seleccionar() {
    const auto r = ui_.FicheroAbrir(QStringLiteral("Abrir imagen"), {QStringLiteral("Imágenes (*.ozm)"),
                                                                      QStringLiteral("Todos Los Archivos (*.*)")});
    if (!r) return;
    ruta_ = *r;
    orvela::Cabecera cab;
    if (auto e = orvela::ComprobarFicheroEntrada(ruta_, cab)) {
        ui_.Mostrar(*e);
        aceptado_ = false;
        entrada_->clear();
        return;
    }
    cabecera_ = cab;
    aceptado_ = true;
    entrada_->setText(QString::fromStdString(orvela::TituloFichero(ruta_)));
}

void CImagenDlg::ElegirPaleta() {
    const auto r = ui_.FicheroAbrir(QStringLiteral("Elegir paleta"), {QStringLiteral("Paleta (*.pal)")});
    if (!r) return;
    rutaPaleta_ = *r;
    paleta_->setText(QString::fromStdString(orvela::TituloFichero(rutaPaleta_)));
    PonerCodigoPaleta(orvela::kPaletaPersonalizada);
}

void CImagenDlg::PonerPaletaPersonalizada(const std::string& ruta) {
    rutaPaleta_ = ruta;
    paleta_->setText(QString::fromStdString(orvela::TituloFichero(ruta)));
    PonerCodigoPaleta(orvela::kPaletaPersonalizada);
}

void CImagenDlg::accept() {
    if (modo_ == SoloPaleta) {
        if (CodigoPaleta() == orvela::kPaletaPersonalizada && rutaPaleta_.empty())
            return ui_.Mostrar(Mensaje::Tabla(msg::kNoSeleccionadaEntrada, relleno::kElArchivoPaleta, relleno::kUnArchivo));
        return QDialog::accept();
    }
    if (ruta_.empty())
        return ui_.Mostrar(Mensaje::Tabla(msg::kNoSeleccionadaEntrada, relleno::kNingunaImagen, relleno::kUnaImagen));
    if (!aceptado_) return;
    if (CodigoPaleta() == orvela::kPaletaPersonalizada && rutaPaleta_.empty())
        return ui_.Mostrar(Mensaje::Tabla(msg::kNoSeleccionadaEntrada, relleno::kElArchivoPaleta, relleno::kUnArchivo));
    QDialog::accept();
}
