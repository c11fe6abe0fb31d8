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

struct Escena {
    std::vector<CImagen> bandas;  // titles "tm1" ... "tm7", byte
    CImagen verdad;               // title "verdad", byte, class values
    std::vector<ClaseLeyenda> clases;
};

// Builds the scene in memory; a message when memory cannot be had.
std::optional<Mensaje> CrearEscena(Escena& e);

// Writes tm1 ... tm5, tm7 and verdad (each .ozm and .inf) and
// verdadLeyenda.txt into `carpeta`, made when missing. When a file cannot
// be written, the files this call made are removed again.
std::optional<Mensaje> EscribirEscena(const std::string& carpeta);

}  // namespace orvela::escena
