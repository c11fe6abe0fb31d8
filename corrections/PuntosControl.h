// Ground control points: their text file, the least-squares estimation of
// the first-degree polynomials line(x, y) and column(x, y), and the
// "_Estimacion.txt" report.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvela {

struct PuntoControl {
    double fila = 0, columna = 0;  // on the image (lines counted from its last line up)
    double x = 0, y = 0;           // map easting and northing, metres
    bool activo = true;            // takes part in the estimation
};

// Reads a control-point file: a first line whose number (whole) is the
// point count, the rest of it ignored; then that many lines of four
// numbers: fila, columna, x, y. After each of the first three numbers the
// reader skips to the next blank; after the fourth, to the end of the line.
// On failure `error` (if given) says why in Spanish and nullopt comes back.
std::optional<std::vector<PuntoControl>> LeerPuntosControl(const std::string& ruta, std::string* error = nullptr);
// The same from the text of a file.
std::optional<std::vector<PuntoControl>> AnalizarPuntosControl(const std::string& texto, std::string* error = nullptr);

// Writes the points as LeerPuntosControl reads them back (all of them).
std::string TextoPuntosControl(const std::vector<PuntoControl>& puntos);

struct Estimacion {
    double B[3] = {0, 0, 0};  // line = B0 + B1 x + B2 y
    double A[3] = {0, 0, 0};  // column = A0 + A1 x + A2 y
    // One per point, file order; those of omitted points stay 0.
    std::vector<double> filaEstimada, columnaEstimada, errores;
    double rms = -1.0;        // -1 when the estimation fails
    bool Valida() const { return rms != -1.0; }
};

// Least squares over the active points: normal matrix DᵀD with rows
// (1, x, y), its determinant by the rule of Sarrus (absolute value), its
// inverse by cofactors. Fails (rms -1) with fewer than three active points
// or a zero determinant.
Estimacion EstimarPolinomio(const std::vector<PuntoControl>& puntos);

// The "_Estimacion.txt" report (UTF-8), doubles in the stream's default format.
std::string InformeEstimacion(const Estimacion& e, const std::vector<PuntoControl>& puntos);

// Line of the errors list for point `numero` (from 1): its error with "%lf",
// or a word ("Omitido", "Omitir", "Restaurar") in its place.
std::string LineaErrorPunto(int numero, double error);
std::string LineaErrorPunto(int numero, const char* palabra);
// A number as "%lf" writes it (six decimals), whatever the locale.
std::string TextoLf(double v);

}  // namespace orvela
