#include "doc/CBrimarDoc.h"

void CBrimarDoc::PonerImagen(orvela::CImagen&& im) {
    const bool composicion = im.composicionColor;
    const std::string paleta = imagen_.rutaPaletaPersonalizada;
    imagen_ = std::move(im);
    composicion_.reset();
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

void CBrimarDoc::PonerComposicion(orvela::ComposicionColor&& c, const orvela::CImagen* referencia) {
    // The reference may be this window's own record: read before replacing.
    orvela::CImagen nueva;
    if (referencia) {
        nueva.titulo = referencia->titulo;
        nueva.sistemaReferencia = referencia->sistemaReferencia;
        nueva.unidades = referencia->unidades;
        nueva.geo = referencia->geo;
    }
    nueva.rutaPaletaPersonalizada = imagen_.rutaPaletaPersonalizada;
    imagen_ = std::move(nueva);
    // A zeroed byte plane of the composite's size: the record reads as an
    // image of that size (map coordinates, size checks) with no samples
    // that mean anything; 61265 keeps the operations off it.
    imagen_.tipoDato = orvela::kByte;
    imagen_.pixeles = orvela::Muestras::Crear(orvela::kByte, c.rojo.size());
    imagen_.filas = static_cast<double>(c.filas);
    imagen_.columnas = static_cast<double>(c.columnas);
    imagen_.tieneImagen = true;
    imagen_.composicionColor = true;
    imagen_.nombreVisualizacion = "TMP";
    composicion_ = std::make_unique<orvela::ComposicionColor>(std::move(c));
    emit imagenPuesta();
    emit nombreCambiado(Nombre());
}

void CBrimarDoc::PonerRealce(orvela::Realce r) {
    if (r == realce_) return;
    realce_ = r;
    emit realceCambiado();
}
