// Why a pixel went where it went: the figures that a supervised rule
// weighs for one pixel, class by class, with the class that wins and the
// one that came closest after it. The figures are those of the pixel loops
// of the classifiers, in the same order of operations, so the winner's ND
// is the label the classified image holds at that pixel.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "classification/FicheroClase.h"

namespace orvela {

// The rules in the order of the classifier's choice.
enum class ReglaSupervisada { Distancia = 0, Paralelepipedos = 1, Probabilidad = 2 };

struct FiguraClase {
    // Minimum distance: the distance to the class mean. Maximum
    // likelihood: g = -ln(det) - d' C^-1 d. Parallelepipeds: the number of
    // bands whose value lies inside the box.
    double valor = 0;
    bool dentro = false;  // parallelepipeds: inside the box in every band
    int32_t nd = 0;       // the class's ND before it is stored as a byte
};

struct Decision {
    std::vector<FiguraClase> clases;
    int ganadora = -1;  // index of the winning class; -1: no box holds the pixel
    int segunda = -1;   // the runner-up; -1 when there is none
    uint8_t etiqueta = 0;  // what the classified image holds
};

// The decision of `regla` for the band values `x` (one per band).
// Distance: the smallest distance wins, the earlier class on equal ones;
// the runner-up is the smallest among the others by the same rule.
// Likelihood: the same with the largest g (a non-finite g never wins a
// comparison). Parallelepipeds: the last class whose box holds the pixel
// wins (0 when none does); the runner-up is the class, other than the
// winner, with most bands inside its box (the later one on equal counts).
Decision Decidir(ReglaSupervisada regla, const std::vector<ClaseLeida>& clases, int multiplicador,
                 const std::vector<double>& x);

// Distance from x to the class mean, summed over the bands in order.
double DistanciaClase(const ClaseLeida& c, const double* x);
// Bands of x inside the box mean +- m * deviation (bounds included).
int BandasEnCaja(const ClaseLeida& c, int multiplicador, const double* x);

// One sample of a raster file read without reading the rest: the sample at
// (fila, columna) of an image of `columnas` columns and type `codigo`,
// widened to double. nullopt when the file is short or cannot be read, or
// the code is unknown.
std::optional<double> LeerMuestraRaster(const std::string& ruta, int codigo, long columnas, long fila, long columna);

}  // namespace orvela
