#include "classification/Entrenamiento.h"

namespace orvela {

int Entrenamiento::BandaDeNombre(const std::string& nombre) const {
    for (std::size_t i = 0; i < bandas.size(); ++i)
        if (bandas[i].nombre == nombre) return static_cast<int>(i);
    return -1;
}

bool CabecerasGeoDistintas(const std::vector<Cabecera>& cabeceras) {
    for (std::size_t i = 1; i < cabeceras.size(); ++i)
        if (cabeceras[i].sistema != cabeceras[0].sistema || cabeceras[i].unidades != cabeceras[0].unidades ||
            !(cabeceras[i].geo == cabeceras[0].geo))
            return true;
    return false;
}

Entrenamiento FijarEntrenamiento(std::vector<BandaEntrenamiento> bandas) {
    Entrenamiento e;
    if (bandas.empty()) return e;
    std::vector<Cabecera> cabeceras;
    for (const auto& b : bandas) cabeceras.push_back(b.cabecera);
    e.cabecera = cabeceras[0];
    e.georreferenciasDistintas = CabecerasGeoDistintas(cabeceras);
    if (e.georreferenciasDistintas) e.cabecera.sistema = "unknown";
    e.bandas = std::move(bandas);
    e.hecho = true;
    return e;
}

}  // namespace orvela
