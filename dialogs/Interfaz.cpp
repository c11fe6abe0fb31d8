#include "dialogs/Interfaz.h"

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QMessageBox>

void InterfazWidgets::Mostrar(const orvela::Mensaje& m) { MostrarTexto(QString::fromStdString(m.Texto())); }

void InterfazWidgets::MostrarTexto(const QString& texto) {
    QApplication::restoreOverrideCursor();
    QMessageBox::warning(padre_, QStringLiteral("Orvela"), texto);
}

bool InterfazWidgets::Ejecutar(QDialog& d) { return d.exec() == QDialog::Accepted; }

std::optional<std::string> InterfazWidgets::FicheroAbrir(const QString& titulo, const QStringList& filtros) {
    const QString r = QFileDialog::getOpenFileName(padre_, titulo, {}, filtros.join(QStringLiteral(";;")));
    if (r.isEmpty()) return std::nullopt;
    return r.toStdString();
}

std::optional<std::string> InterfazWidgets::FicheroGuardar(const QString& titulo, const QStringList& filtros) {
    const QString r = QFileDialog::getSaveFileName(padre_, titulo, {}, filtros.join(QStringLiteral(";;")), nullptr,
                                                   QFileDialog::DontConfirmOverwrite);
    if (r.isEmpty()) return std::nullopt;
    return r.toStdString();
}

std::optional<std::string> InterfazWidgets::FicheroGuardarComo(const QString& titulo, const QStringList& filtros,
                                                               const std::string& propuesto) {
    const QString r = QFileDialog::getSaveFileName(padre_, titulo, QString::fromStdString(propuesto),
                                                   filtros.join(QStringLiteral(";;")));
    if (r.isEmpty()) return std::nullopt;
    return r.toStdString();
}

void InterfazWidgets::CursorEspera(bool activo) {
    if (activo)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}
