// The common course of an operation, without any window: the checks of a
// picked file, the checks of "Aceptar", loading, computing, naming and
// writing the result. The desktop runs these steps around its dialogs;
// orvela-cli runs them one after the other.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "image/CImagen.h"
#include "operations/Operacion.h"

namespace orvela {

// Extension "ozm"/"OZM" (61217), readable header (61218). Fills `cab`.
std::optional<Mensaje> ComprobarFicheroEntrada(const std::string& ruta, Cabecera& cab);
// The raster is there and holds what its header says (61284).
std::optional<Mensaje> ComprobarRaster(const std::string& ruta, const Cabecera& cab);

// A save name as the save dialog keeps it: when the name has an extension,
// the last four characters of the path are removed.
std::string QuitarExtensionGuardar(const std::string& ruta);
// File title of a path: the name without folder and extension.
std::string TituloFichero(const std::string& ruta);

// Title of the result: first input's title + suffix (+ second input's title).
std::string TituloResultado(const Declaracion& d, const std::vector<const CImagen*>& entradas, const Valores& v);

// Runs the computing function with the handler checks before it and names
// the result images.
Resultado Calcular(const Declaracion& d, const std::vector<const CImagen*>& entradas, const Valores& v,
                   Destino destino, std::function<void(double)> progreso = {});

// Writes the result images and reports under `stem` (raster stem + ".ozm",
// later images stem + their ending, reports stem + their ending). Nothing is
// left half written: on a failure the files written by this call are removed.
std::optional<Mensaje> EscribirResultado(Resultado& r, const std::string& stem, std::vector<std::string>* escritos = nullptr);

struct Ejecucion {
    std::optional<Mensaje> error;
    // The error is a failure of the system (a file that cannot be written,
    // memory), not a refusal of the operation.
    bool falloSistema = false;
    std::vector<Mensaje> avisos;
    std::vector<std::string> escritos;
    std::string consola;
};

// The whole course with file inputs and "Guardar como" output, as orvela-cli
// runs it: each input picked in order (file checks, then the operation's
// own), "Aceptar" checks, loading, handler checks, computing, writing.
Ejecucion EjecutarAFichero(const Declaracion& d, const std::vector<std::string>& entradas, const Valores& v,
                           const std::string& stem);

}  // namespace orvela
