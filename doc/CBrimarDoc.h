// The image document of one child window: exactly one image record.
#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "image/CImagen.h"
#include "image/Visualizacion.h"

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
    // Puts a colour composite in: three byte planes already scaled to
    // 0..255. The record gets the size, the flag that keeps every other
    // operation off it (61265) and, from `referencia` when given, the title,
    // reference system and georeference of the bands; its samples are a
    // zeroed byte plane (the colours are in Composicion()).
    void PonerComposicion(orvela::ComposicionColor&& c, const orvela::CImagen* referencia = nullptr);
    // The composite shown; nullptr for a band.
    const orvela::ComposicionColor* Composicion() const { return composicion_.get(); }

    // Display stretch of the window: changes the drawing, never a sample.
    orvela::Realce Realce() const { return realce_; }
    void PonerRealce(orvela::Realce r);

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
    // The display stretch changed: the view draws again.
    void realceCambiado();
    // The caption changed (name or unsaved mark).
    void tituloCambiado(const QString& titulo);
    // The palette changed: the window draws the image again.
    void paletaCambiada();

private:
    orvela::CImagen imagen_;
    std::unique_ptr<orvela::ComposicionColor> composicion_;
    orvela::Realce realce_ = orvela::Realce::Ninguno;
    bool modificado_ = false;
};
