// "Matriz de confusión": agreement between a ground truth and a classified
// image at the pixels of a sample mask, with per-class errors and
// accuracies and the kappa index, and its report.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Mensajes.h"
#include "image/CImagen.h"
#include "image/Leyenda.h"

namespace orvela {

struct MatrizConfusion {
    int k = 0;
    // (K + 3) x (K + 3) single-precision cells, row after row. Rows: classes
    // of the classified image, then column totals, omission errors,
    // producer's accuracies; columns: classes of the truth, then row totals,
    // commission errors, user's accuracies. Cell (K, K) is n. Empty rows or
    // columns show -1 in their error and accuracy cells.
    std::vector<float> m;
    std::vector<int> valores;  // class values as the image type holds them
    std::vector<std::string> nombres;
    double kappa = 0;

    float& operator()(int i, int j) { return m[static_cast<std::size_t>(i * (k + 3) + j)]; }
    float operator()(int i, int j) const { return m[static_cast<std::size_t>(i * (k + 3) + j)]; }
};

// Counts the masked pixels (mask value not 0) in the cell (class of the
// classified value, class of the truth value), the first legend entry equal
// to each value; the legend's NDs are held in the classified image's type
// (byte or integer). Other types of truth or classified image leave the
// counts at zero. A masked value that is not in the legend gives 61259.
// kappa = (n*d - p) / (n^2 - p) with n^2 a 32-bit product that wraps.
std::optional<Mensaje> CalcularConfusion(const CImagen& mascara, const CImagen& verdad, const CImagen& clasificada,
                                         const std::vector<ClaseLeyenda>& leyenda, MatrizConfusion& salida);

// The report; `ventana` gives the window's copy of the two image lines.
std::string InformeConfusion(const MatrizConfusion& m, const std::string& nombreVerdad,
                             const std::string& nombreClasificada, bool ventana = false);

}  // namespace orvela
