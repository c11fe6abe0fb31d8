// The one small interface through which the desktop talks to the user:
// message boxes, modal dialogs and file choosers. The program uses the
// widget implementation; the tests replace it with a script.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <string>

#include "base/Mensajes.h"

class QDialog;
class QWidget;

// Answer to "save before discarding?".
enum class RespuestaGuardar { Guardar, Descartar, Cancelar };

class Interfaz {
public:
    virtual ~Interfaz() = default;
    // Modal message box with a text of the message table (or a free sentence).
    virtual void Mostrar(const orvela::Mensaje& m) = 0;
    // A plain message box with a text that is not in the table.
    virtual void MostrarTexto(const QString& texto) = 0;
    // Runs a modal dialog; true when it was accepted. A script fills the
    // dialog's controls (found by object name) and accepts or rejects it.
    virtual bool Ejecutar(QDialog& dialogo) = 0;
    // File-open and file-save choosers; filters as "Imágenes (*.ozm)".
    // nullopt when the user cancels. Paths are UTF-8.
    virtual std::optional<std::string> FicheroAbrir(const QString& titulo, const QStringList& filtros) = 0;
    virtual std::optional<std::string> FicheroGuardar(const QString& titulo, const QStringList& filtros) = 0;
    // "Guardar como" with a file name proposed (a result's fixed ending);
    // asks before replacing a file.
    virtual std::optional<std::string> FicheroGuardarComo(const QString& titulo, const QStringList& filtros,
                                                          const std::string& propuesto) {
        (void)propuesto;
        return FicheroGuardar(titulo, filtros);
    }
    // Wait cursor around a long command (restored on every way out).
    virtual void CursorEspera(bool activo) = 0;
    // A window holds a result that has not been saved and is about to be
    // discarded: save it, discard it, or give up what was being done.
    virtual RespuestaGuardar PreguntarGuardar(const QString& ventana) = 0;
};

// The real thing: QMessageBox, QDialog::exec, QFileDialog.
class InterfazWidgets : public Interfaz {
public:
    explicit InterfazWidgets(QWidget* padre) : padre_(padre) {}
    void Mostrar(const orvela::Mensaje& m) override;
    void MostrarTexto(const QString& texto) override;
    bool Ejecutar(QDialog& dialogo) override;
    std::optional<std::string> FicheroAbrir(const QString& titulo, const QStringList& filtros) override;
    std::optional<std::string> FicheroGuardar(const QString& titulo, const QStringList& filtros) override;
    std::optional<std::string> FicheroGuardarComo(const QString& titulo, const QStringList& filtros,
                                                  const std::string& propuesto) override;
    void CursorEspera(bool activo) override;
    RespuestaGuardar PreguntarGuardar(const QString& ventana) override;

private:
    QWidget* padre_;
};

// Sets the wait cursor for a scope.
class EsperaCursor {
public:
    explicit EsperaCursor(Interfaz& ui) : ui_(ui) { ui_.CursorEspera(true); }
    ~EsperaCursor() { ui_.CursorEspera(false); }
    EsperaCursor(const EsperaCursor&) = delete;
    EsperaCursor& operator=(const EsperaCursor&) = delete;

private:
    Interfaz& ui_;
};
