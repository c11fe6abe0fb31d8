// The image document of one child window: exactly one image record.
#pragma once

#include <QObject>
#include <QString>

#include "image/CImagen.h"

class CBrimarDoc : public QObject {
    Q_OBJECT
public:
    explicit CBrimarDoc(QObject* padre = nullptr) : QObject(padre) {}

    orvela::CImagen& Imagen() { return imagen_; }
    const orvela::CImagen& Imagen() const { return imagen_; }
    bool TieneImagen() const { return imagen_.tieneImagen; }
    bool EsComposicion() const { return imagen_.composicionColor; }

    // Puts a new image in, replacing what the window showed, and runs the
    // window set-up: zoom and scroll reset, display name "TMP", redraw.
    void PonerImagen(orvela::CImagen&& im);
    // Sets the display name (window caption).
    void PonerNombre(const QString& nombre);
    QString Nombre() const { return QString::fromStdString(imagen_.nombreVisualizacion); }

signals:
    // The image was replaced: the view sets itself up again and redraws.
    void imagenPuesta();
    // The display name changed.
    void nombreCambiado(const QString& nombre);

private:
    orvela::CImagen imagen_;
};
