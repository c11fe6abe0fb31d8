// The in-memory image record, its header (.inf) and raster (.ozm) files.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "image/Muestras.h"
#include "image/TipoDato.h"
#include "base/Mensajes.h"

namespace orvela {

class FicheroSeguro;

// Georeference value meaning "unknown".
inline constexpr float SinDato = -1.0f;

// The seven georeference numbers, in record order.
struct Georreferencia {
    float minX = SinDato, minY = SinDato, maxX = SinDato, maxY = SinDato;
    float errorPosicion = SinDato, resolucion = SinDato, distanciaUnidad = SinDato;
    bool operator==(const Georreferencia&) const = default;
};

// The header fields that LeerInf reads back (lines 1 to 14), in UTF-8.
struct Cabecera {
    std::string titulo, nombreTipo, tipoFichero;
    int columnas = 0, filas = 0;
    std::string sistema, unidades;
    Georreferencia geo;
};

// Header path of a raster path: last four characters replaced.
std::string CambiarExtension(const std::string& ruta, const std::string& extension);

// A raster path that names a file of its own (not "dir/.ozm", ".ozm" or a
// folder): nullopt, else a sentence saying why it is refused.
std::optional<Mensaje> ComprobarNombreImagen(const std::string& rutaRaster);

// Reads fields 1 to 14 of stem.inf into `cab`; fields that cannot be read
// keep the value they had. Returns whether the file could be opened.
bool LeerInf(const std::string& rutaRaster, Cabecera& cab);
// The same reading of a header already in memory.
void LeerInfTexto(const std::string& texto, Cabecera& cab);

// The safe header test of the file pickers: the header opens and gives
// positive rows and columns.
bool CabeceraLegible(const std::string& rutaRaster, Cabecera* cab = nullptr);

class CImagen {
public:
    CImagen() = default;
    CImagen(CImagen&&) noexcept = default;
    CImagen& operator=(CImagen&&) noexcept = default;
    CImagen(const CImagen&) = delete;
    CImagen& operator=(const CImagen&) = delete;

    // Pixels: rows x columns samples of `tipoDato`, row after row.
    Muestras pixeles;
    int tipoDato = 0;
    double filas = 0, columnas = 0;
    uint32_t indicePaleta = 0;
    std::string rutaSecundaria;
    std::string rutaRaster;
    std::string titulo;
    std::string tipoFichero;
    std::string sistemaReferencia;
    std::string unidades = "m";
    Georreferencia geo;

    // Document flags that every handler reads.
    bool tieneImagen = false;
    bool composicionColor = false;
    // Name shown for the window: "TMP" until the image has a file of its own.
    std::string nombreVisualizacion = "TMP";
    // Palette file used with palette code 6.
    std::string rutaPaletaPersonalizada;

    // Raster file then header file. Returns an error when a file cannot be
    // written; what was on disk is replaced whole or left untouched.
    std::optional<Mensaje> EscribirRaster() const;
    std::optional<Mensaje> EscribirInf() const;
    // Mode 1: raster path = nombre + ".ozm", then write; mode 0: write to the
    // present path; any other mode does nothing. Both files are replaced
    // together or not at all.
    std::optional<Mensaje> Guardar(const std::string& nombre, int modo);
    // Writes the pair of raster path `ruta` aside, for a commit with other
    // files (FicheroSeguro::ConfirmarGrupo): `raster` and `inf` hold the
    // whole pair when no message comes back; nothing on disk has changed.
    std::optional<Mensaje> EscribirAparte(const std::string& ruta, std::unique_ptr<FicheroSeguro>& raster,
                                          std::unique_ptr<FicheroSeguro>& inf) const;

    // Fills the record from header fields; with `leer` the raster is read.
    // An empty type name keeps the present code. A raster that is missing
    // or shorter than the header says gives 61284 and leaves the record as
    // it was; so does a size that memory cannot hold (a plain sentence).
    std::optional<Mensaje> Cargar(const Cabecera& cab, const std::string& rutaRaster,
                                  uint32_t indice, bool leer);
    // Header of `ruta` then its raster.
    std::optional<Mensaje> Cargar(const std::string& ruta, uint32_t indice = 0);
    // The same from a header's text and a raster's bytes already in memory,
    // checked as a pair on disk is; `ruta` becomes the record's raster path.
    std::optional<Mensaje> CargarDeMemoria(const std::string& textoInf, std::span<const std::byte> raster,
                                           const std::string& ruta, uint32_t indice = 0);

private:
    std::optional<Mensaje> Adoptar(const Cabecera& cab, const std::string& ruta, uint32_t indice, bool leer,
                                   int codigo, Muestras nuevas);

public:

    // New image filled with `valor` converted by the store rule.
    std::optional<Mensaje> Iniciar(const std::string& rutaRaster, const std::string& rutaSecundaria,
                                   const std::string& titulo, uint32_t filas, uint32_t columnas,
                                   const std::string& nombreTipo, double valor, uint32_t indice,
                                   const std::string& sistema, const std::string& unidades,
                                   const Georreferencia& geo);

    // Sample at (fila, columna) widened to double; outside the image the
    // value is -1 and `error` (when given) receives 61258. With x and y the
    // upper-left corner's coordinates are given for UTM images, -1 otherwise.
    double ValorPixel(long fila, long columna, double* x = nullptr, double* y = nullptr,
                      std::optional<Mensaje>* error = nullptr) const;

    // A new record with this one's header (title, type, size, georeference)
    // and a zeroed buffer of `codigo` (the present type when 0).
    std::optional<Mensaje> CopiarCabecera(const CImagen& origen, int codigo = 0);
    // Header fields as LeerInf gives them.
    Cabecera ComoCabecera() const;

    std::size_t NumeroPixeles() const { return pixeles.Cantidad(); }
    long Filas() const { return static_cast<long>(filas); }
    long Columnas() const { return static_cast<long>(columnas); }
};

// The header text of an image record, as EscribirInf writes it.
std::string TextoCabecera(const CImagen& im);

// Reads `cantidad` samples of `codigo` from a raster file; nullopt with
// 61284 when it is missing or short, 61250 for an unknown code.
std::optional<Mensaje> LeerRaster(int codigo, double filas, double columnas,
                                  const std::string& ruta, Muestras& salida);

// Message for a size that cannot be held in memory.
Mensaje MensajeMemoria(double filas, double columnas);

}  // namespace orvela
