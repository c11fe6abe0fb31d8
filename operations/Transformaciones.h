// What the transformations share: the checks of bands picked one by one
// against those already picked, and of the loaded bands.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/Mensajes.h"
#include "image/CImagen.h"
#include "operations/Operacion.h"

namespace orvela {

// Two image inputs (by index, lists expanded) that must agree, and the
// second filler of 61222 that names them.
struct ParBandas {
    int a, b;
    const char* nombre;
};

// 61222 "El tipo de dato", then "Las dimensiones", with `nombre`.
std::optional<Mensaje> CompararCabeceras(const Cabecera& x, const Cabecera& y, const char* nombre);
std::optional<Mensaje> CompararCargadas(const CImagen& x, const CImagen& y, const char* nombre);

// The picked image `indice` against the images of the pairs it belongs to
// that are already picked, pair by pair in the order given.
std::optional<Mensaje> ComprobarPares(const std::vector<ParBandas>& pares, int indice, const Cabecera& elegida,
                                      const std::vector<std::optional<Cabecera>>& previas);
// The same pairs once loaded.
std::optional<Mensaje> ComprobarParesCargados(const std::vector<ParBandas>& pares,
                                              const std::vector<const CImagen*>& e);

// A band of a list against the first band picked ("bandas").
std::optional<Mensaje> ComprobarBandaConPrimera(int indice, const Cabecera& elegida,
                                                const std::vector<std::optional<Cabecera>>& previas);
// Every loaded band against the first.
std::optional<Mensaje> ComprobarBandasCargadas(const std::vector<const CImagen*>& e);

// A result of several images, each with `modelo`'s header, a zeroed buffer of
// `codigo` (0: the model's type), its own file ending and its own title.
// `rellenar` fills the buffers; false means an unknown type code (61250)
// unless the run was cancelled.
struct SalidaNombrada {
    std::string final, titulo;
};
Resultado VariasSalidas(const Contexto& c, const CImagen& modelo, int codigo, const std::vector<SalidaNombrada>& nombres,
                        const std::function<bool(std::vector<Muestras*>&)>& rellenar);

}  // namespace orvela
