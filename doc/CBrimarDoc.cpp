#include "doc/CBrimarDoc.h"

void CBrimarDoc::PonerImagen(orvela::CImagen&& im) {
    const bool composicion = im.composicionColor;
    const std::string paleta = imagen_.rutaPaletaPersonalizada;
    imagen_ = std::move(im);
    if (imagen_.rutaPaletaPersonalizada.empty()) imagen_.rutaPaletaPersonalizada = paleta;
    imagen_.tieneImagen = true;
    imagen_.composicionColor = composicion;
    imagen_.nombreVisualizacion = "TMP";
    emit imagenPuesta();
    emit nombreCambiado(Nombre());
}

void CBrimarDoc::PonerNombre(const QString& nombre) {
    imagen_.nombreVisualizacion = nombre.toStdString();
    emit nombreCambiado(nombre);
}
