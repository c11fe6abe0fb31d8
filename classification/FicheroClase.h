// The class file: what the training phase writes for one class (per band the
// largest, smallest, mean and standard deviation of the samples, then the
// covariance matrix of the bands) and what the classifiers read back.
//
// Text (UTF-8 here; the framework writes it as Windows-1252):
//
//     "\n\n"
//     per band: name "\n" "ND Máximo:" max "\n" "ND Mínimo:" min "\n"
//               "Valor Medio:" mean "\n" "Desviación Típica:" std "\n\n"
//     "Matriz De Covarianza:\n"
//     per row: each element followed by " ", then "\n"
//
// Numbers in the default formatting of a C++ stream (six significant
// digits). The standard deviation divides by n (population), the covariance
// by n - 1 (sample): both divisors are kept on purpose. Zero samples give
// non-finite statistics in a file of the same shape; one sample gives a
// covariance divided by zero.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Progreso.h"
#include "image/CImagen.h"

namespace orvela {

// Sampling modes of "Establecer clase", in the order of its radio buttons.
enum class ModoMuestreo { Puntos = 0, Cruces = 1, Rectangulos = 2 };

struct Posicion {
    long fila = 0, columna = 0;
    bool operator==(const Posicion&) const = default;
};

// The samples of one accepted click at (fila, columna), in their order:
// the point; the cross (c,r), (c,r-1), (c-1,r), (c,r+1), (c+1,r); or the
// rectangle row by row from -alto to +alto, each from -ancho to +ancho.
// Not clipped to the image.
std::vector<Posicion> GrupoMuestras(ModoMuestreo modo, long fila, long columna, int alto = 1, int ancho = 1);

// Statistics of one band over the samples.
struct EstadisticaBanda {
    std::string nombre;
    double maximo = 0, minimo = 0, media = 0, desviacion = 0;
};

struct EstadisticasClase {
    std::vector<EstadisticaBanda> bandas;
    std::vector<std::vector<double>> covarianza;  // N x N
};

// Statistics of the samples at `muestras` (in list order) over `bandas`
// (values by CImagen::ValorPixel, so positions outside give its -1).
// Sums run in sample order. Zero samples: maximum -inf, minimum +inf, mean
// and deviation NaN.
EstadisticasClase CalcularClase(const std::vector<const CImagen*>& bandas, const std::vector<std::string>& nombres,
                                const std::vector<Posicion>& muestras);

// The file's text.
std::string TextoFicheroClase(const EstadisticasClase& e);

// What the classifiers read of a class file of N bands.
struct ClaseLeida {
    std::string nombre;  // file title: name without the folder and extension
    std::vector<double> media, desviacion;
    std::vector<std::vector<double>> covarianza;
};

// Reads a class file the way the classifiers do: two lines skipped; per band
// the name and the two extreme lines skipped, the mean (and the deviation)
// read after their colons, the rest of each line and the blank line
// skipped (the deviation line is skipped whole unless `conDesviacion`);
// after the blocks the header line of the matrix is skipped and N x N
// numbers read row by row (`conCovarianza`). Every line skip takes at most
// 100 characters. nullopt when the file cannot be opened or a number that
// is asked for is missing.
std::optional<ClaseLeida> LeerFicheroClase(const std::string& ruta, int bandas, bool conDesviacion,
                                           bool conCovarianza);
// The same reading of a class file's text; `titulo` names the class.
std::optional<ClaseLeida> AnalizarFicheroClase(std::string texto, const std::string& titulo, int bandas,
                                               bool conDesviacion, bool conCovarianza);

// File title of a path: "/a/b/agua.txt" -> "agua".
std::string TituloClase(const std::string& ruta);

}  // namespace orvela
