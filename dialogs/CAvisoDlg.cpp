#include "dialogs/FilaBotones.h"
#include "dialogs/CAvisoDlg.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "dialogs/Espacio.h"
#include "dialogs/Ficheros.h"
#include "dialogs/Interfaz.h"
#include "doc/CBrimarDoc.h"
#include "operations/Curso.h"

using orvela::Mensaje;

CAvisoDlg::CAvisoDlg(const CBrimarDoc& doc, Interfaz& ui, QWidget* padre) : QDialog(padre), ui_(ui) {
    setWindowTitle(QStringLiteral("AVISO DE Brimar"));
    setObjectName(QStringLiteral("aviso"));

    auto* texto1 = new QLabel(QStringLiteral("SE PERDERÁ LA INFORMACIÓN DE LA VENTANA ACTUAL."), this);
    auto* texto2 = new QLabel(QStringLiteral("¿DESEA GUARDARLA?"), this);
    QFont negrita = texto1->font();
    negrita.setBold(true);
    texto1->setFont(negrita);
    texto2->setFont(negrita);

    auto* guardarEn = new QRadioButton(QStringLiteral(" Guardar en:"), this);
    guardarEn->setObjectName(QStringLiteral("guardarEn"));
    auto* nombreActual = new QLineEdit(doc.Nombre(), this);
    nombreActual->setObjectName(QStringLiteral("nombreActual"));
    nombreActual->setReadOnly(true);

    auto* guardarNuevo = new QRadioButton(this);
    guardarNuevo->setObjectName(QStringLiteral("guardarNuevo"));
    auto* guardarComo = new QPushButton(QStringLiteral("&Guardar como"), this);
    guardarComo->setObjectName(QStringLiteral("guardarComo"));
    guardarComo->setAutoDefault(false);
    nombreNuevo_ = new QLineEdit(this);
    nombreNuevo_->setObjectName(QStringLiteral("nombreNuevo"));
    nombreNuevo_->setReadOnly(true);

    auto* no = new QRadioButton(QStringLiteral(" No."), this);
    no->setObjectName(QStringLiteral("no"));

    modos_ = new QButtonGroup(this);
    modos_->addButton(guardarEn, 0);
    modos_->addButton(guardarNuevo, 1);
    modos_->addButton(no, 2);
    no->setChecked(true);
    // An image that has no file of its own ("TMP") has no path to be saved
    // to: only a new name can keep it.
    if (doc.Nombre() == QStringLiteral("TMP") || doc.Imagen().rutaRaster.empty()) guardarEn->setEnabled(false);

    const FilaBotones botones(this, QStringLiteral("OK"), QStringLiteral("Cancel"));

    auto* rejilla = new QGridLayout;
    rejilla->addWidget(guardarEn, 0, 0);
    rejilla->addWidget(nombreActual, 0, 1, 1, 2);
    rejilla->addWidget(guardarNuevo, 1, 0);
    auto* fila = new QHBoxLayout;
    fila->addWidget(guardarComo);
    rejilla->addLayout(fila, 1, 1);
    rejilla->addWidget(nombreNuevo_, 1, 2);
    rejilla->addWidget(no, 2, 0);
    rejilla->setColumnStretch(2, 1);


    auto* v = new QVBoxLayout(this);
    v->addWidget(texto1, 0, Qt::AlignHCenter);
    v->addWidget(texto2, 0, Qt::AlignHCenter);
    v->addSpacing(8);
    v->addLayout(rejilla);
    v->addSpacing(8);
    v->addLayout(botones.fila);

    connect(guardarComo, &QPushButton::clicked, this, &CAvisoDlg::ElegirFichero);
    connect(botones.aceptar, &QPushButton::clicked, this, &CAvisoDlg::accept);
}

int CAvisoDlg::Modo() const { return modos_->checkedId(); }

void CAvisoDlg::ElegirFichero() {
    const auto r = ui_.FicheroGuardar(QStringLiteral("Guardar como"),
                                      {QStringLiteral("Imágenes (*.ozm)"), QStringLiteral("Todos Los Archivos (*.*)")});
    if (!r) return;
    ruta_ = orvela::QuitarExtensionGuardar(*r);
    titulo_ = orvela::TituloFichero(*r);
    nombreNuevo_->setText(QString::fromStdString(titulo_));
    modos_->button(1)->setChecked(true);
}

void CAvisoDlg::accept() {
    if (Modo() == 1 && ruta_.empty()) {
        ui_.Mostrar(Mensaje::Tabla(orvela::msg::kNoSeleccionadaSalida, orvela::relleno::kNingunaImagen,
                                   orvela::relleno::kUnaImagen));
        return;
    }
    QDialog::accept();
}

bool PreguntarAviso(CBrimarDoc& doc, Interfaz& ui, Espacio* espacio) {
    if (!doc.TieneImagen() || doc.EsComposicion()) return true;
    CAvisoDlg dlg(doc, ui);
    if (!ui.Ejecutar(dlg)) return false;
    const int modo = dlg.Modo();
    if (modo != 0 && modo != 1) return true;
    EsperaCursor espera(ui);
    if (auto e = doc.Imagen().Guardar(dlg.Ruta(), modo)) {
        ui.Mostrar(*e);
        return false;
    }
    if (modo == 1) doc.PonerNombre(QString::fromStdString(dlg.Titulo()));
    doc.MarcarGuardado();
    if (espacio) espacio->Confirmar(TextoGuardado({doc.Imagen().rutaRaster}));
    return true;
}
