// Apparent (top of atmosphere) reflectance of a Landsat 5 TM band:
// digital numbers to at-sensor radiance with the band's gain and bias,
//     L = ganancia * ND + sesgo,
// then to reflectance with the solar exoatmospheric irradiance of the band,
// the Earth-Sun distance of the acquisition day and the sun elevation,
//     rho = pi * (L - Loscuro) * d^2 / (ESUN * cos(90 - elevacion)).
// ND 0 is the scene's fill and stays 0.
#pragma once

#include <optional>
#include <string>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

struct CalibracionTM {
    int banda = 0;             // 1, 2, 3, 4, 5 or 7
    double ganancia = 0;       // W / (m^2 sr um) per ND
    double sesgo = 0;          // W / (m^2 sr um)
    double elevacionSolar = 0; // degrees
    int anio = 0, mes = 0, dia = 0;
};

// Solar exoatmospheric irradiance of a TM band (W / (m^2 um)); 0 for a band
// without one (6, thermal) or unknown.
double EsunTM(int banda);
// Day of the year (1 January = 1), or 0 for a date that does not exist.
int DiaDelAnio(int anio, int mes, int dia);
// Earth-Sun distance in astronomical units for a day of the year:
// 1 - 0.01672 cos(0.9856 (dia - 4)) with the angle in degrees.
double DistanciaTierraSol(int diaDelAnio);
// "AAAA-MM-DD" into the calibration; false when it is not a real date.
bool LeerFecha(const std::string& texto, CalibracionTM& c);

// Gain, bias, sun elevation and date of `banda` from a Landsat metadata file
// (_MTL.txt): RADIANCE_MULT_BAND_n and RADIANCE_ADD_BAND_n, or else
// RADIANCE_MAXIMUM/MINIMUM and QUANTIZE_CAL_MAX/MIN (or LMAX/LMIN and
// QCALMAX/QCALMIN of older files); SUN_ELEVATION; DATE_ACQUIRED (or
// ACQUISITION_DATE). On failure `error` says what is missing.
std::optional<CalibracionTM> LeerMetadatosTM(const std::string& ruta, int banda, std::string* error = nullptr);
// The same reading of a metadata file's text; `ruta` only names the file in `error`.
std::optional<CalibracionTM> AnalizarMetadatosTM(const std::string& texto, const std::string& ruta, int banda,
                                                 std::string* error = nullptr);

// The dark object: the lowest ND above 0 (truncated to whole levels) whose
// count reaches 1 in 10000 of the samples above 0 (at least one sample).
// -1 when there is none.
double ObjetoOscuro(const Muestras& m, Progreso& progreso = SinProgreso());

struct FigurasReflectancia {
    double esun = 0, distancia = 0, cenit = 0;  // cenit in degrees
    double ndOscuro = -1, radianciaOscura = 0;  // with dark-object subtraction
};

// `salida` holds as many reals (float) as `entrada` has samples. With
// `objetoOscuro` the radiance of the dark object is subtracted first.
// nullopt for an unknown type code, a band without irradiance or when cancelled.
std::optional<FigurasReflectancia> Reflectancia(const Muestras& entrada, const CalibracionTM& c, bool objetoOscuro,
                                                Muestras& salida, Progreso& progreso = SinProgreso());

}  // namespace orvela
