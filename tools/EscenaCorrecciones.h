// What the practice scene adds for the correction labs: tm4 seen through a
// known distortion with its control points, and a Landsat metadata file.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Mensajes.h"
#include "image/FicheroSeguro.h"
#include "tools/EscenaPractica.h"

namespace orvela::escena {

// tm4 rotated by kGiroDistorsion degrees and scaled by kEscalaDistorsion
// about the scene's centre (nearest neighbour; 0 outside the scene).
inline constexpr double kGiroDistorsion = 4.0;
inline constexpr double kEscalaDistorsion = 1.03;
// Twelve control points measured on it with errors of a few tenths of a
// pixel; point kPuntoErroneo (from 1) is badly measured, 6 lines off.
inline constexpr int kPuntosControl = 12;
inline constexpr int kPuntoErroneo = 5;

// Writes tm4_distorsionada (.ozm, .inf), puntos_tm4_distorsionada.txt and
// escena_MTL.txt aside for `base` (a folder path ending in "/"), adding them
// to `ficheros`: the scene commits them with its own files, as one group.
// Nothing on disk changes here.
std::optional<Mensaje> EscribirEscenaCorrecciones(const Escena& e, const std::string& base,
                                                  std::vector<std::unique_ptr<FicheroSeguro>>& ficheros);

}  // namespace orvela::escena
