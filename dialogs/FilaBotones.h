// The row of buttons at the foot of a dialog: accept (the default button),
// cancel and, when asked, help. Object names "aceptar", "cancelar", "ayuda"
// let the tests press them. Cancel rejects the dialog; the caller connects
// accept and help.
#pragma once

#include <QHBoxLayout>
#include <QPushButton>
#include <QString>

class QDialog;

struct FilaBotones {
    QHBoxLayout* fila;
    QPushButton* aceptar;
    QPushButton* cancelar;
    QPushButton* ayuda;  // nullptr without help

    FilaBotones(QDialog* dialogo, const QString& textoAceptar, const QString& textoCancelar,
                const QString& textoAyuda = {});
};
