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

    // A result put into the window and not saved since: it would be lost if
    // the window were closed or given another image. Loading an image from
    // a file or saving clears it.
    bool Modificado() const { return modificado_; }
    void MarcarGuardado();
    // Window caption: the display name, with an asterisk while modified.
    QString Titulo() const { return modificado_ ? Nombre() + QLatin1Char('*') : Nombre(); }
    // Shows the image with another palette: the window converts it again.
    void CambiarPaleta(int codigo, const std::string& rutaPersonalizada);

signals:
    // The image was replaced: the view sets itself up again and redraws.
    void imagenPuesta();
    // The display name changed.
    void nombreCambiado(const QString& nombre);
    // The caption changed (name or unsaved mark).
    void tituloCambiado(const QString& titulo);
    // The palette changed: the window draws the image again.
    void paletaCambiada();

private:
    orvela::CImagen imagen_;
    bool modificado_ = false;
};
