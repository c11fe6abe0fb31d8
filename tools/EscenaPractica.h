// The practice scene: six Landsat TM-like bands of a synthetic landscape
// with its ground truth, for labs that need no data of their own.
//
// 400 x 400 pixels of 30 m in UTM-30N. A lake and a river (water), fields
// and a forest (vegetation), ploughed and fallow fields (bare soil) and a
// town (urban), each with the spectral signature it has in TM bands 1 to 5
// and 7, with texture and noise. Three sensor defects are put in on purpose
// so that the corrections have something to correct; they are listed below.
// Everything is made from a fixed seed: every run gives the same bytes.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "image/CImagen.h"
#include "image/Leyenda.h"

namespace orvela::escena {

inline constexpr int kLado = 400;
inline constexpr double kResolucion = 30.0;
inline constexpr double kMinX = 440000.0, kMaxY = 4440000.0;
// TM band numbers of the six bands, in file order (tm1 ... tm5, tm7).
inline constexpr int kBandas[6] = {1, 2, 3, 4, 5, 7};

// Class values of the ground truth `verdad`, in legend order.
inline constexpr uint8_t kAgua = 1, kVegetacion = 2, kSuelo = 3, kUrbano = 4;

// Striping: in tm1 the lines recorded by one of the 16 detectors
// (line % 16 == kDetectorBandeado) are kDesplazamientoBandeado levels brighter.
inline constexpr int kBandaBandeada = 1;
inline constexpr int kDetectorBandeado = 5;
inline constexpr int kDesplazamientoBandeado = 9;
// A lost line: line kLineaPerdida of tm3 is all 0.
inline constexpr int kBandaLineaPerdida = 3;
inline constexpr int kLineaPerdida = 217;
// Lost pixels: kPixelesPerdidos isolated interior pixels of tm5 are 0 or
// 255 (no other sample of any band is either).
inline constexpr int kBandaPixelesPerdidos = 5;
inline constexpr int kPixelesPerdidos = 40;

// Endmembers of the unmixing labs: three pure areas of kLadoPuro x
// kLadoPuro pixels from line kFilaPuras (dense irrigated crop, the shaded
// slope of a hill, a bare threshing floor) with the signatures below in
// bands 1, 2, 3, 4, 5, 7, plus texture noise only.
inline constexpr int kFilaPuras = 304, kLadoPuro = 24;
inline constexpr int kColumnaVegetacionPura = 10, kColumnaSombra = 42, kColumnaSueloPuro = 74;
inline constexpr double kFirmaVegetacionPura[6] = {58, 26, 20, 118, 64, 21};
inline constexpr double kFirmaSombra[6] = {48, 16, 11, 9, 6, 4};
inline constexpr double kFirmaSueloPuro[6] = {104, 52, 72, 82, 142, 100};
// Values of `extremos`, the ground truth of the pure areas (0 elsewhere).
inline constexpr uint8_t kExtremoVegetacion = 1, kExtremoSombra = 2, kExtremoSuelo = 3;
// Scrubland south of them, lines kFilaMatorral .. kFilaMatorral +
// kAltoMatorral - 1, columns kColumnaVegetacionPura .. kColumnaSueloPuro +
// kLadoPuro - 1: each pixel is the linear mixture of the three pure
// signatures with the fractions of FraccionesMatorral, plus noise.
inline constexpr int kFilaMatorral = 334, kAltoMatorral = 60;
// Bands of the class files written with the scene (tm2 ... tm5), the four
// of "Descomposición espectral > Landsat".
inline constexpr int kBandasDesmezcla[4] = {2, 3, 4, 5};
// Samples of each class file: 7 x 7 rectangles ("Establecer clase" with
// rectangles of half-height and half-width 3) centred at these points
// (line, column offsets from the pure area's top-left corner).
inline constexpr int kCentrosMuestra[4][2] = {{5, 5}, {5, 18}, {18, 5}, {18, 18}};

// Fractions (vegetation, shade, soil) of the scrubland pixel at line f,
// column c; false outside the scrubland. Vegetation grows eastwards from
// 0.10 to 0.65, shade southwards from 0.05 to 0.35, soil is the rest.
bool FraccionesMatorral(int f, int c, double fracciones[3]);

struct Escena {
    std::vector<CImagen> bandas;  // titles "tm1" ... "tm7", byte
    CImagen verdad;               // title "verdad", byte, class values
    std::vector<ClaseLeyenda> clases;
    CImagen extremos;             // title "extremos", byte, pure areas
    std::vector<ClaseLeyenda> clasesExtremos;
};

// The class files of the three pure areas over kBandasDesmezcla, as
// "Establecer clase" writes them (UTF-8): vegetation, shade, soil.
std::vector<std::string> TextosClasesPuras(const Escena& e);

// Builds the scene in memory; a message when memory cannot be had.
std::optional<Mensaje> CrearEscena(Escena& e);

// Writes tm1 ... tm5, tm7, verdad and extremos (each .ozm and .inf),
// verdadLeyenda.txt, extremosLeyenda.txt and the class files
// vegetacion.txt, sombra.txt and suelo.txt into `carpeta`, made when missing. When a file cannot
// be written, the files this call made are removed again.
std::optional<Mensaje> EscribirEscena(const std::string& carpeta);

}  // namespace orvela::escena
