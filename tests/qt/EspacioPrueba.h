// A workspace for the desktop tests: a plain list of documents with one
// active, and helpers that write small image pairs and drive dialogs.
#pragma once

#include <QAbstractButton>
#include <QDialog>
#include <QLineEdit>
#include <memory>
#include <string>
#include <vector>

#include "app/Espacio.h"
#include "doc/CBrimarDoc.h"
#include "image/CImagen.h"
#include "image/Conversion.h"

class EspacioPrueba : public Espacio {
public:
    std::vector<std::unique_ptr<CBrimarDoc>> documentos;
    CBrimarDoc* activo = nullptr;
    std::string carpeta;

    CBrimarDoc* DocumentoActivo() override { return activo; }
    std::string CarpetaAplicacion() const override { return carpeta; }

    // "Nueva ventana": an empty document, made active.
    CBrimarDoc* NuevaVentana() {
        documentos.push_back(std::make_unique<CBrimarDoc>());
        activo = documentos.back().get();
        return activo;
    }
};

// Writes stem.ozm / stem.inf of `tipo` with the samples given in row order
// (stored by the store rule); returns the raster path.
inline std::string EscribirImagen(const std::string& stem, const std::string& titulo, const std::string& tipo,
                                  int filas, int columnas, const std::vector<double>& valores) {
    orvela::CImagen im;
    if (im.Iniciar(stem + ".ozm", "", titulo, static_cast<uint32_t>(filas), static_cast<uint32_t>(columnas), tipo, 0,
                   0, "unknown", "m", {}))
        return {};
    orvela::ConTipo(im.tipoDato, [&]<class T>(orvela::Muestra<T>) {
        auto d = im.pixeles.Como<T>();
        for (std::size_t k = 0; k < d.size() && k < valores.size(); ++k) d[k] = orvela::Almacenar<T>(valores[k]);
    });
    if (im.Guardar(stem, 1)) return {};
    return stem + ".ozm";
}

// Loads a file pair into a window, as the "Imagen" command does.
inline bool AbrirEnVentana(CBrimarDoc& doc, const std::string& ruta) {
    orvela::CImagen im;
    if (im.Cargar(ruta)) return false;
    const QString titulo = QString::fromStdString(im.titulo);
    doc.PonerImagen(std::move(im));
    doc.PonerNombre(titulo);
    return true;
}

inline std::vector<double> ValoresDe(const orvela::CImagen& im) {
    std::vector<double> r;
    for (std::size_t k = 0; k < im.pixeles.Cantidad(); ++k) r.push_back(im.pixeles.Valor(k));
    return r;
}

// Script steps on a dialog's controls, found by object name.
inline void Pulsar(QDialog& d, const char* nombre) {
    auto* b = d.findChild<QAbstractButton*>(QString::fromLatin1(nombre));
    if (b) b->click();
}
inline bool Aceptar(QDialog& d) {
    Pulsar(d, "aceptar");
    return d.result() == QDialog::Accepted;
}
inline QString Texto(QDialog& d, const char* nombre) {
    auto* e = d.findChild<QLineEdit*>(QString::fromLatin1(nombre));
    return e ? e->text() : QStringLiteral("<no existe>");
}
inline void Escribir(QDialog& d, const QString& nombre, const QString& texto) {
    if (auto* e = d.findChild<QLineEdit*>(nombre)) e->setText(texto);
}
