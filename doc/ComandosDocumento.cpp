#include "doc/ComandosDocumento.h"

#include "dialogs/Espacio.h"
#include "dialogs/Interfaz.h"
#include "dialogs/CImagenDlg.h"
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
    return true;
}

}  // namespace

void ComandoImagen(Espacio& espacio, Interfaz& ui, QWidget* padre) {
    CImagenDlg dlg(ui, padre);
    if (!ui.Ejecutar(dlg)) return;
    EsperaCursor espera(ui);
    CBrimarDoc* doc = espacio.DocumentoActivo();
    if (!doc) return ui.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
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
    EsperaCursor espera(ui);
    CBrimarDoc* doc = espacio.DocumentoActivo();
    if (!doc) return ui.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    if (!doc->TieneImagen()) return ui.Mostrar(Mensaje::Tabla(msg::kSinImagen));
    if (doc->Nombre() == QStringLiteral("TMP")) return ui.Mostrar(Mensaje::Tabla(msg::kSinNombre));
    if (doc->EsComposicion()) return ui.Mostrar(Mensaje::Tabla(msg::kComposicionColor));
    // Raster and header are written aside and replace the old pair together.
    if (auto e = doc->Imagen().Guardar({}, 0)) ui.Mostrar(*e);
}

void ComandoGuardarComo(Espacio& espacio, Interfaz& ui) {
    CBrimarDoc* doc = espacio.DocumentoActivo();
    if (!doc) return ui.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    if (!doc->TieneImagen()) return ui.Mostrar(Mensaje::Tabla(msg::kSinImagen));
    if (doc->EsComposicion()) return ui.Mostrar(Mensaje::Tabla(msg::kComposicionColor));
    const auto r = ui.FicheroGuardar(QStringLiteral("Guardar como"), {QStringLiteral("Imágenes (*.ozm)"),
                                                                       QStringLiteral("Todos Los Archivos (*.*)")});
    if (!r) return;
    EsperaCursor espera(ui);
    const std::string stem = orvela::QuitarExtensionGuardar(*r);
    // The record takes the new path only when both files were written.
    if (auto e = doc->Imagen().Guardar(stem, 1)) return ui.Mostrar(*e);
    doc->PonerNombre(QString::fromStdString(orvela::TituloFichero(*r)));
}
