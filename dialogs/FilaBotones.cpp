#include "dialogs/FilaBotones.h"

#include <QDialog>

FilaBotones::FilaBotones(QDialog* d, const QString& textoAceptar, const QString& textoCancelar,
                         const QString& textoAyuda)
    : fila(new QHBoxLayout), aceptar(new QPushButton(textoAceptar, d)), cancelar(new QPushButton(textoCancelar, d)),
      ayuda(textoAyuda.isEmpty() ? nullptr : new QPushButton(textoAyuda, d)) {
    aceptar->setObjectName(QStringLiteral("aceptar"));
    aceptar->setDefault(true);
    cancelar->setObjectName(QStringLiteral("cancelar"));
    cancelar->setAutoDefault(false);
    fila->addStretch(1);
    fila->addWidget(aceptar);
    fila->addWidget(cancelar);
    if (ayuda) {
        ayuda->setObjectName(QStringLiteral("ayuda"));
        ayuda->setAutoDefault(false);
        fila->addWidget(ayuda);
    }
    QObject::connect(cancelar, &QPushButton::clicked, d, &QDialog::reject);
}
