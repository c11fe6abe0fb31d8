// The run sequence of an operation, without any window. Its steps, in order:
//
//   1. a file picked for an input: ComprobarEleccion (images: extension and
//      header, then the operation's own check) or ComprobarFicheroDatos
//      (other files: extension, then the reader's check);
//   2. "Aceptar": ComprobarAceptar (number of files of each list, then the
//      operation's own checks);
//   3. loading the picked images: CargarEntrada;
//   4. the handler's checks, computing and naming: Calcular;
//   5. writing under the chosen stem: EscribirResultado.
//
// The desktop runs these steps around its dialogs and windows; orvela-cli
// runs them one after the other (EjecutarAFichero). A refusal (a message of
// the table), a failure of the system and a cancel are told apart by
// `Fallo::clase`, never by the message id.
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

// Step 1 for an image: the file checks, then the operation's check of the
// picked header against those picked before it (`previas`, every image
// input in order, lists expanded). `indice` counts images the same way.
std::optional<Mensaje> ComprobarEleccion(const Declaracion& d, int indice, const std::string& ruta, Cabecera& cab,
                                         const std::vector<std::optional<Cabecera>>& previas);
// Step 1 for a file that is not an image: its extension among the declared
// ones (61217 with the first two), then its reader.
std::optional<Mensaje> ComprobarFicheroDatos(const DeclEntrada& e, const std::string& ruta);

// Step 2: each list holds at least its minimum (61219 with the input's
// name) and at most its maximum, then the operation's own checks.
std::optional<Mensaje> ComprobarAceptar(const Declaracion& d, const Valores& v, const Elegidas& elegidas);

// Step 3: a picked image read into `destino` (61284 for a missing or short
// raster, a plain sentence when memory cannot hold it).
std::optional<Fallo> CargarEntrada(const std::string& ruta, const Cabecera& cab, CImagen& destino);

// A save name as the save dialog keeps it: when the name has an extension,
// the last four characters of the path are removed.
std::string QuitarExtensionGuardar(const std::string& ruta);
// File title of a path: the name without folder and extension.
std::string TituloFichero(const std::string& ruta);

// Title of the result: first input's title + suffix (+ second input's title).
std::string TituloResultado(const Declaracion& d, const std::vector<const CImagen*>& entradas, const Valores& v);

// Image inputs and file inputs of one run, by declared input.
struct EntradasCargadas {
    std::vector<std::vector<const CImagen*>> imagenes;
    std::vector<std::vector<std::string>> ficheros;
    std::vector<const CImagen*> Todas() const;
};

// Step 4: the handler's checks, the computing function and the naming of the
// results. Memory exhausted and unexpected errors become failures of the
// system; a cancel during the computation gives the cancelled result.
Resultado Calcular(const Declaracion& d, const EntradasCargadas& entradas, const Valores& v, Destino destino,
                   Progreso& progreso = SinProgreso());
// Only image inputs, one per declared input (the first family's shape).
Resultado Calcular(const Declaracion& d, const std::vector<const CImagen*>& entradas, const Valores& v,
                   Destino destino, Progreso& progreso = SinProgreso());

// Path of each file that EscribirResultado writes under `stem`, in order:
// images (raster path), reports, charts.
std::string RutaImagen(const Resultado& r, std::size_t i, const std::string& stem);
std::string RutaInforme(const InformeTexto& inf, const std::string& stem);
std::string RutaGrafico(const Grafico& g, const std::string& stem);

// Writes a chart as a picture (by default the PNG of tools/DibujarGrafico.h;
// a front end may set another) into a file that is committed with the other
// files of the result. Returns false when it cannot be written.
using EscritorGrafico = bool (*)(const Grafico& g, FicheroSeguro& fichero);
void FijarEscritorGrafico(EscritorGrafico f);

// Step 5: writes the result images, reports and charts under `stem` (the
// first image as stem + ".ozm" unless it has an ending). They replace what
// was on disk together or not at all: on a failure, or a kill at any
// instant, every file of those names is left as it was.
std::optional<Mensaje> EscribirResultado(Resultado& r, const std::string& stem,
                                         std::vector<std::string>* escritos = nullptr);

struct Ejecucion {
    std::optional<Fallo> fallo;
    std::vector<Mensaje> avisos;
    std::vector<std::string> escritos;
    std::string consola;
};

// What orvela-cli gives for one run: every input a file, the output written
// under `stem`. `imagenes` and `ficheros` by declared input.
Ejecucion EjecutarAFichero(const Declaracion& d, const std::vector<std::vector<std::string>>& imagenes,
                           const std::vector<std::vector<std::string>>& ficheros, const Valores& v,
                           const std::string& stem, Progreso& progreso = SinProgreso());
// Only image inputs, one per declared input.
Ejecucion EjecutarAFichero(const Declaracion& d, const std::vector<std::string>& entradas, const Valores& v,
                           const std::string& stem, Progreso& progreso = SinProgreso());

}  // namespace orvela
