#include "doc/CBrimarDoc.h"

void CBrimarDoc::PonerImagen(orvela::CImagen&& im) {
    const bool composicion = im.composicionColor;
    const std::string paleta = imagen_.rutaPaletaPersonalizada;
    imagen_ = std::move(im);
    if (imagen_.rutaPaletaPersonalizada.empty()) imagen_.rutaPaletaPersonalizada = paleta;
    imagen_.tieneImagen = true;
    imagen_.composicionColor = composicion;
    imagen_.nombreVisualizacion = "TMP";
    modificado_ = true;
    emit imagenPuesta();
    emit nombreCambiado(Nombre());
    emit tituloCambiado(Titulo());
}

void CBrimarDoc::PonerNombre(const QString& nombre) {
    imagen_.nombreVisualizacion = nombre.toStdString();
    emit nombreCambiado(nombre);
    emit tituloCambiado(Titulo());
}

void CBrimarDoc::MarcarGuardado() {
    if (!modificado_) return;
    modificado_ = false;
    emit tituloCambiado(Titulo());
}

void CBrimarDoc::CambiarPaleta(int codigo, const std::string& rutaPersonalizada) {
    imagen_.indicePaleta = static_cast<uint32_t>(codigo);
    if (!rutaPersonalizada.empty()) imagen_.rutaPaletaPersonalizada = rutaPersonalizada;
    emit paletaCambiada();
}
