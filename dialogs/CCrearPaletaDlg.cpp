#include "dialogs/FilaBotones.h"
#include "dialogs/CCrearPaletaDlg.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "dialogs/Interfaz.h"
#include "image/FicheroSeguro.h"
#include "image/Paleta.h"
#include "operations/Curso.h"

using orvela::Mensaje;
namespace msg = orvela::msg;
namespace relleno = orvela::relleno;

CCrearPaletaDlg::CCrearPaletaDlg(Interfaz& ui, QWidget* padre) : QDialog(padre), ui_(ui) {
    setWindowTitle(QStringLiteral("Crear paleta"));
    setObjectName(QStringLiteral("crearPaleta"));

    auto* grupoNombre = new QGroupBox(QStringLiteral("Nombre de la paleta"), this);
    auto* guardarComo = new QPushButton(QStringLiteral("Guardar como"), grupoNombre);
    guardarComo->setObjectName(QStringLiteral("guardarComo"));
    guardarComo->setAutoDefault(false);
    nombre_ = new QLineEdit(grupoNombre);
    nombre_->setObjectName(QStringLiteral("nombre"));
    nombre_->setReadOnly(true);
    auto* filaNombre = new QHBoxLayout(grupoNombre);
    filaNombre->addWidget(guardarComo);
    filaNombre->addWidget(nombre_, 1);

    auto* grupoPaleta = new QGroupBox(QStringLiteral("Definir paleta"), this);
    auto* rejilla = new QGridLayout(grupoPaleta);
    // Two columns of eight: swatch and level edit side by side.
    for (int i = 0; i < 16; ++i) {
        const auto& c = orvela::kColoresCrearPaleta[i];
        auto* muestra = new QLabel(grupoPaleta);
        muestra->setObjectName(QStringLiteral("color%1").arg(i));
        muestra->setFixedSize(36, 20);
        muestra->setFrameShape(QFrame::Box);
        muestra->setAutoFillBackground(true);
        QPalette pal = muestra->palette();
        pal.setColor(QPalette::Window, QColor(c[0], c[1], c[2]));
        muestra->setPalette(pal);
        auto* nivel = new QSpinBox(grupoPaleta);
        nivel->setObjectName(QStringLiteral("nivel%1").arg(i));
        nivel->setRange(-1, 256);
        nivel->setValue(-1);
        niveles_[i] = nivel;
        const int fila = i % 8, col = (i / 8) * 2;
        rejilla->addWidget(muestra, fila, col);
        rejilla->addWidget(nivel, fila, col + 1);
    }
    auto* indicaciones = new QVBoxLayout;
    for (const char* t : {"Indicar:", "el ND asociado a cada color", "256 para el color asociado al resto de ND",
                          "-1 para no asociar el color a ningún ND"})
        indicaciones->addWidget(new QLabel(QString::fromUtf8(t), grupoPaleta));
    indicaciones->addStretch();
    rejilla->addLayout(indicaciones, 0, 4, 8, 1);
    rejilla->setColumnMinimumWidth(2, 0);

    const FilaBotones botones(this, QStringLiteral("OK"), QStringLiteral("Cancel"));

    auto* v = new QVBoxLayout(this);
    v->addWidget(grupoNombre);
    v->addWidget(grupoPaleta);
    v->addLayout(botones.fila);

    connect(guardarComo, &QPushButton::clicked, this, &CCrearPaletaDlg::GuardarComo);
    connect(botones.aceptar, &QPushButton::clicked, this, &CCrearPaletaDlg::accept);
}

std::array<int, 16> CCrearPaletaDlg::Niveles() const {
    std::array<int, 16> r{};
    for (int i = 0; i < 16; ++i) r[i] = niveles_[i]->value();
    return r;
}

void CCrearPaletaDlg::GuardarComo() {
    const auto r = ui_.FicheroGuardar(QStringLiteral("Guardar como"), {QStringLiteral("Paleta (*.pal)")});
    if (!r) return;
    ruta_ = *r;
    if (QFileInfo(QString::fromStdString(ruta_)).suffix().isEmpty()) ruta_ += ".pal";
    nombre_->setText(QString::fromStdString(orvela::TituloFichero(ruta_)));
}

void CCrearPaletaDlg::accept() {
    if (ruta_.empty())
        return ui_.Mostrar(Mensaje::Tabla(msg::kNoSeleccionadaSalida, relleno::kNingunArchivoPal, relleno::kUnArchivo));
    const auto niveles = Niveles();
    if (auto e = orvela::ComprobarNivelesPaleta(niveles)) return ui_.Mostrar(*e);
    // Written aside and renamed: a palette already there is replaced whole
    // or kept as it was.
    if (!orvela::EscribirFicheroSeguro(ruta_, orvela::TextoPaletaCreada(niveles)))
        return ui_.Mostrar(Mensaje::Tabla(msg::kNoCreadoFichero, ruta_));
    QDialog::accept();
}
