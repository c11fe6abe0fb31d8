#include "classification/Muestreo.h"

#include <algorithm>
#include <vector>

namespace orvela {

uint32_t MezclarSemilla(uint32_t semilla, uint32_t k) {
    if (k == 0) return semilla;
    uint32_t h = semilla ^ (k * 0x9E3779B9u);
    h ^= h >> 16;
    h *= 0x85EBCA6Bu;
    h ^= h >> 13;
    h *= 0xC2B2AE35u;
    h ^= h >> 16;
    return h;
}

bool MuestreoAleatorio(long filas, long columnas, long muestras, uint32_t semilla, std::span<uint8_t> mascara,
                       Progreso& p) {
    std::fill(mascara.begin(), mascara.end(), uint8_t{0});
    GeneradorC g;
    uint32_t siembra = 0;
    std::vector<long> fila(static_cast<std::size_t>(muestras)), columna(fila.size());
    std::vector<std::size_t> pendientes(fila.size());
    for (std::size_t i = 0; i < pendientes.size(); ++i) pendientes[i] = i;
    while (!pendientes.empty()) {
        if (p.Cancelado()) return false;
        g.Sembrar(MezclarSemilla(semilla, siembra++));
        for (std::size_t i : pendientes) fila[i] = static_cast<long>(int64_t{g.Siguiente()} * filas / GeneradorC::kMaximo);
        g.Sembrar(MezclarSemilla(semilla, siembra++));
        for (std::size_t i : pendientes)
            columna[i] = static_cast<long>(int64_t{g.Siguiente()} * columnas / GeneradorC::kMaximo);
        std::vector<std::size_t> choques;
        for (std::size_t i : pendientes) {
            if (fila[i] >= filas || columna[i] >= columnas) {
                choques.push_back(i);
                continue;
            }
            uint8_t& m = mascara[static_cast<std::size_t>(fila[i]) * static_cast<std::size_t>(columnas) +
                                 static_cast<std::size_t>(columna[i])];
            if (m == 1)
                choques.push_back(i);
            else
                m = 1;
        }
        p.Informar(1.0 - static_cast<double>(choques.size()) / static_cast<double>(muestras));
        pendientes.swap(choques);
    }
    return true;
}

}  // namespace orvela
