// The command table of the menu bar: menu path, text, command id and
// shortcut of every entry. The main frame builds its menus from it and the
// tests check the menus against it.
#pragma once

#include <vector>

namespace cmd {
// Commands handled by the workspace itself.
inline constexpr int kGuardar = 32840;
inline constexpr int kGuardarComo = 32841;
inline constexpr int kInformacion = 32771;
inline constexpr int kExportarAscii = 32773;
inline constexpr int kExportarBmp = 32878;
inline constexpr int kSalir = 57665;
inline constexpr int kImagen = 32774;
inline constexpr int kNuevaVentana = 57600;
inline constexpr int kHistograma = 32862;
inline constexpr int kNivelDigital = 32778;
inline constexpr int kCrearPaleta = 32879;
inline constexpr int kZoomAdelante = 32839;
inline constexpr int kZoomAtras = 32842;
inline constexpr int kPantallaCompleta = 32847;
inline constexpr int kPantallaNormal = 32848;
inline constexpr int kContenidos = 57667;
inline constexpr int kAcercaDe = 57664;
inline constexpr int kTemasAyuda = 32883;
inline constexpr int kMostrarLeyenda = 32822;
// The supervised classifiers by rule (minimum distance is the declaration's
// own command).
inline constexpr int kParalelepipedos = 32823;
inline constexpr int kMaximaProbabilidad = 32828;
// "Editor de puntos de control" (Correcciones, after "Geométricas"): the
// control points measured on the active window's image.
inline constexpr int kEditorPuntos = 32884;
// Training and classes on the view.
inline constexpr int kFaseEntrenamiento = 32816;
inline constexpr int kEstablecerClase = 32819;
inline constexpr int kInspeccionarDecision = 32900;
}  // namespace cmd

struct EntradaComando {
    // Menus that lead to the entry, outermost first; empty for a command
    // without a menu entry (offered by the view's context menu).
    std::vector<const char*> menus;
    const char* texto;
    int id;
    const char* atajo;  // in QKeySequence's portable text; "" for none
};

// Every command, menu entries in menu order, then those without a menu entry.
const std::vector<EntradaComando>& TablaComandos();
// Entry of a command id; nullptr when there is none.
const EntradaComando* BuscarComando(int id);
