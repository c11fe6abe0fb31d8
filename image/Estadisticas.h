// Whole-image figures shared by many operations.
#pragma once

#include <cstdint>

#include "image/Muestras.h"

namespace orvela {

// Mean of all samples: their sum, in sample order, divided by the sample
// count. With a mask only samples whose mask byte is not 0 are summed, but
// the divisor stays the full sample count.
double ImageMean(const Muestras& m, const uint8_t* mascara = nullptr);
// Population standard deviation around `media`: square root of the sum of
// (x - media)^2 over the counted samples divided by the full sample count.
double ImageStdDev(const Muestras& m, double media, const uint8_t* mascara = nullptr);
// Smallest and largest sample: a scan from the first sample that replaces
// the running value only on a strictly smaller (larger) sample. False for
// an unknown type code or an empty buffer (mn and mx are then left alone).
bool MinimoMaximo(const Muestras& m, double& mn, double& mx);

}  // namespace orvela
