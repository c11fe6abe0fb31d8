#include "dialogs/Interfaz.h"

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

#include "dialogs/Ficheros.h"

void InterfazWidgets::Mostrar(const orvela::Mensaje& m) { MostrarTexto(QString::fromStdString(m.Texto())); }

void InterfazWidgets::MostrarTexto(const QString& texto) {
    QApplication::restoreOverrideCursor();
    QMessageBox::warning(padre_, QStringLiteral("Orvela"), texto);
}

bool InterfazWidgets::Ejecutar(QDialog& d) { return d.exec() == QDialog::Accepted; }

// File choosers open in the folder of the last file used, and remember the
// folder of the file chosen.
std::optional<std::string> InterfazWidgets::FicheroAbrir(const QString& titulo, const QStringList& filtros) {
    const QString r = QFileDialog::getOpenFileName(padre_, titulo, CarpetaInicial(), filtros.join(QStringLiteral(";;")));
    if (r.isEmpty()) return std::nullopt;
    RecordarCarpeta(r);
    return r.toStdString();
}

std::optional<std::string> InterfazWidgets::FicheroGuardar(const QString& titulo, const QStringList& filtros) {
    const QString r = QFileDialog::getSaveFileName(padre_, titulo, CarpetaInicial(), filtros.join(QStringLiteral(";;")),
                                                   nullptr, QFileDialog::DontConfirmOverwrite);
    if (r.isEmpty()) return std::nullopt;
    RecordarCarpeta(r);
    return r.toStdString();
}

std::optional<std::string> InterfazWidgets::FicheroGuardarComo(const QString& titulo, const QStringList& filtros,
                                                               const std::string& propuesto) {
    const QString r = QFileDialog::getSaveFileName(padre_, titulo, QString::fromStdString(propuesto),
                                                   filtros.join(QStringLiteral(";;")));
    if (r.isEmpty()) return std::nullopt;
    return r.toStdString();
}

RespuestaGuardar InterfazWidgets::PreguntarGuardar(const QString& ventana) {
    QApplication::restoreOverrideCursor();
    QMessageBox caja(QMessageBox::Warning, QStringLiteral("Orvela"),
                     QStringLiteral("La ventana «%1» tiene un resultado que no se ha guardado.\n\n"
                                    "¿Desea guardarlo antes de que se pierda?")
                         .arg(ventana),
                     QMessageBox::NoButton, padre_);
    caja.setObjectName(QStringLiteral("preguntaGuardar"));
    QPushButton* guardar = caja.addButton(QStringLiteral("&Guardar"), QMessageBox::AcceptRole);
    QPushButton* descartar = caja.addButton(QStringLiteral("&No guardar"), QMessageBox::DestructiveRole);
    QPushButton* cancelar = caja.addButton(QStringLiteral("&Cancelar"), QMessageBox::RejectRole);
    caja.setDefaultButton(guardar);
    caja.setEscapeButton(cancelar);
    caja.exec();
    if (caja.clickedButton() == guardar) return RespuestaGuardar::Guardar;
    if (caja.clickedButton() == descartar) return RespuestaGuardar::Descartar;
    return RespuestaGuardar::Cancelar;
}

void InterfazWidgets::CursorEspera(bool activo) {
    if (activo)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}
