#include "doc/ComandosDocumento.h"

#include "dialogs/Espacio.h"
#include "dialogs/Interfaz.h"
#include "dialogs/CImagenDlg.h"
#include "dialogs/Ficheros.h"
#include "doc/CBrimarDoc.h"
#include "image/Paleta.h"
#include "operations/Curso.h"

using orvela::Mensaje;
namespace msg = orvela::msg;

namespace {

// Loads the raster into the window's record, runs the window set-up (the
// name is "TMP" then) and names the window after the file.
bool PonerFichero(CBrimarDoc& doc, const std::string& ruta, const orvela::Cabecera& cab, int codigo,
                  const std::string& rutaPaleta, Interfaz& ui) {
    orvela::CImagen nueva;
    if (auto e = nueva.Cargar(cab, ruta, static_cast<uint32_t>(codigo), true)) {
        ui.Mostrar(*e);
        return false;
    }
    if (codigo == orvela::kPaletaPersonalizada) nueva.rutaPaletaPersonalizada = rutaPaleta;
    doc.PonerImagen(std::move(nueva));
    doc.PonerNombre(QString::fromStdString(orvela::TituloFichero(ruta)));
    doc.MarcarGuardado();
    AnadirReciente(QString::fromStdString(ruta));
    return true;
}

// "Guardar" of one document, checks in their order; true when written.
bool Guardar(CBrimarDoc& doc, Espacio& espacio, Interfaz& ui) {
    EsperaCursor espera(ui);
    if (!doc.TieneImagen()) return ui.Mostrar(Mensaje::Tabla(msg::kSinImagen)), false;
    if (doc.Nombre() == QStringLiteral("TMP")) return ui.Mostrar(Mensaje::Tabla(msg::kSinNombre)), false;
    if (doc.EsComposicion()) return ui.Mostrar(Mensaje::Tabla(msg::kComposicionColor)), false;
    // Raster and header are written aside and replace the old pair together.
    if (auto e = doc.Imagen().Guardar({}, 0)) return ui.Mostrar(*e), false;
    doc.MarcarGuardado();
    espacio.Confirmar(TextoGuardado({doc.Imagen().rutaRaster}));
    return true;
}

// "Guardar como" of one document; true when written.
bool GuardarComo(CBrimarDoc& doc, Espacio& espacio, Interfaz& ui) {
    if (!doc.TieneImagen()) return ui.Mostrar(Mensaje::Tabla(msg::kSinImagen)), false;
    if (doc.EsComposicion()) return ui.Mostrar(Mensaje::Tabla(msg::kComposicionColor)), false;
    const auto r = ui.FicheroGuardar(QStringLiteral("Guardar como"), {QStringLiteral("Imágenes (*.ozm)"),
                                                                       QStringLiteral("Todos Los Archivos (*.*)")});
    if (!r) return false;
    EsperaCursor espera(ui);
    const std::string stem = orvela::QuitarExtensionGuardar(*r);
    // The record takes the new path only when both files were written.
    if (auto e = doc.Imagen().Guardar(stem, 1)) return ui.Mostrar(*e), false;
    doc.PonerNombre(QString::fromStdString(orvela::TituloFichero(*r)));
    doc.MarcarGuardado();
    AnadirReciente(QString::fromStdString(doc.Imagen().rutaRaster));
    espacio.Confirmar(TextoGuardado({doc.Imagen().rutaRaster}));
    return true;
}

}  // namespace

bool PermitirDescartar(CBrimarDoc& doc, Espacio& espacio, Interfaz& ui) {
    if (!doc.TieneImagen() || !doc.Modificado()) return true;
    switch (ui.PreguntarGuardar(doc.Nombre())) {
        case RespuestaGuardar::Descartar: return true;
        case RespuestaGuardar::Cancelar: return false;
        case RespuestaGuardar::Guardar: break;
    }
    // A result has no name of its own yet: it is saved under a new one.
    return doc.Nombre() == QStringLiteral("TMP") ? GuardarComo(doc, espacio, ui) : Guardar(doc, espacio, ui);
}

void ComandoImagen(Espacio& espacio, Interfaz& ui, QWidget* padre) {
    CImagenDlg dlg(ui, padre);
    if (!ui.Ejecutar(dlg)) return;
    EsperaCursor espera(ui);
    CBrimarDoc* doc = espacio.DocumentoActivo();
    if (!doc) return ui.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    if (!PermitirDescartar(*doc, espacio, ui)) return;
    PonerFichero(*doc, dlg.Ruta(), dlg.Cabecera(), dlg.CodigoPaleta(), dlg.RutaPaleta(), ui);
}

bool AbrirImagen(CBrimarDoc& doc, const std::string& ruta, int codigo, const std::string& rutaPaleta,
                 Interfaz& ui) {
    orvela::Cabecera cab;
    if (auto e = orvela::ComprobarFicheroEntrada(ruta, cab)) {
        ui.Mostrar(*e);
        return false;
    }
    EsperaCursor espera(ui);
    return PonerFichero(doc, ruta, cab, codigo, rutaPaleta, ui);
}

void ComandoGuardar(Espacio& espacio, Interfaz& ui) {
    CBrimarDoc* doc = espacio.DocumentoActivo();
    if (!doc) return ui.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    Guardar(*doc, espacio, ui);
}

void ComandoGuardarComo(Espacio& espacio, Interfaz& ui) {
    CBrimarDoc* doc = espacio.DocumentoActivo();
    if (!doc) return ui.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    GuardarComo(*doc, espacio, ui);
}

void ComandoCambiarPaleta(Espacio& espacio, Interfaz& ui, QWidget* padre) {
    CBrimarDoc* doc = espacio.DocumentoActivo();
    if (!doc) return ui.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    if (!doc->TieneImagen()) return ui.Mostrar(Mensaje::Tabla(msg::kSinImagen));
    if (doc->EsComposicion()) return ui.Mostrar(Mensaje::Tabla(msg::kComposicionColor));
    CImagenDlg dlg(ui, padre, CImagenDlg::SoloPaleta);
    if (doc->Imagen().indicePaleta == orvela::kPaletaPersonalizada && !doc->Imagen().rutaPaletaPersonalizada.empty())
        dlg.PonerPaletaPersonalizada(doc->Imagen().rutaPaletaPersonalizada);
    else
        dlg.PonerCodigoPaleta(static_cast<int>(doc->Imagen().indicePaleta));
    if (!ui.Ejecutar(dlg)) return;
    EsperaCursor espera(ui);
    doc->CambiarPaleta(dlg.CodigoPaleta(), dlg.RutaPaleta());
}
