// A scripted user for the desktop tests: records every message shown and
// answers dialogs and file choosers from queues filled by the test.
#pragma once

#include <QDialog>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "dialogs/Interfaz.h"

class InterfazGuion : public Interfaz {
public:
    // What each dialog does: fill the controls and return true to accept.
    using Guion = std::function<bool(QDialog&)>;

    std::vector<orvela::Mensaje> mensajes;      // shown, in order
    std::vector<QString> textos;                 // plain message boxes
    std::deque<Guion> dialogos;                  // one per dialog, in order
    std::deque<std::optional<std::string>> ficherosAbrir, ficherosGuardar;
    std::vector<QString> titulosDialogos;        // window titles of the dialogs run
    std::vector<std::string> propuestos;         // names proposed by "Guardar como"
    int esperas = 0;                             // wait-cursor depth
    // Answers to "save before discarding?" (discard when none is left) and
    // the windows asked about, in order.
    std::deque<RespuestaGuardar> respuestas;
    std::vector<QString> preguntas;

    void Mostrar(const orvela::Mensaje& m) override { mensajes.push_back(m); }
    void MostrarTexto(const QString& t) override { textos.push_back(t); }
    bool Ejecutar(QDialog& d) override {
        titulosDialogos.push_back(d.windowTitle());
        if (dialogos.empty()) return false;
        Guion g = std::move(dialogos.front());
        dialogos.pop_front();
        return g(d);
    }
    std::optional<std::string> FicheroAbrir(const QString&, const QStringList&) override {
        return Sacar(ficherosAbrir);
    }
    std::optional<std::string> FicheroGuardar(const QString&, const QStringList&) override {
        return Sacar(ficherosGuardar);
    }
    std::optional<std::string> FicheroGuardarComo(const QString&, const QStringList&,
                                                  const std::string& propuesto) override {
        propuestos.push_back(propuesto);
        return Sacar(ficherosGuardar);
    }
    void CursorEspera(bool activo) override { esperas += activo ? 1 : -1; }
    RespuestaGuardar PreguntarGuardar(const QString& ventana) override {
        preguntas.push_back(ventana);
        if (respuestas.empty()) return RespuestaGuardar::Descartar;
        const RespuestaGuardar r = respuestas.front();
        respuestas.pop_front();
        return r;
    }

    std::vector<int> Ids() const {
        std::vector<int> r;
        for (const auto& m : mensajes) r.push_back(m.id);
        return r;
    }

private:
    static std::optional<std::string> Sacar(std::deque<std::optional<std::string>>& q) {
        if (q.empty()) return std::nullopt;
        auto r = q.front();
        q.pop_front();
        return r;
    }
};
