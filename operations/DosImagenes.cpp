#include "operations/DosImagenes.h"

namespace orvela {

namespace {

std::optional<Mensaje> Comparar(int tipoA, double filasA, double columnasA, int tipoB, double filasB,
                                double columnasB) {
    if (tipoA != tipoB) return Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, relleno::kImagenes);
    if (filasA != filasB || columnasA != columnasB)
        return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kImagenes);
    return std::nullopt;
}

std::optional<Mensaje> CompararCabeceras(const Cabecera& a, const Cabecera& b) {
    return Comparar(CodigoDeNombre(a.nombreTipo), a.filas, a.columnas, CodigoDeNombre(b.nombreTipo), b.filas,
                    b.columnas);
}

}  // namespace

std::optional<Mensaje> ComprobarEleccionPar(int indice, const Cabecera& elegida,
                                            const std::vector<std::optional<Cabecera>>& previas) {
    if (indice == 1) {
        if (previas.empty() || !previas[0]) return Mensaje::Tabla(msg::kSeleccionarAntes, relleno::kLaPrimeraImagen);
        return CompararCabeceras(*previas[0], elegida);
    }
    if (indice == 0 && previas.size() > 1 && previas[1]) return CompararCabeceras(elegida, *previas[1]);
    return std::nullopt;
}

std::optional<Mensaje> ComprobarParCargado(const CImagen& a, const CImagen& b) {
    return Comparar(a.tipoDato, a.filas, a.columnas, b.tipoDato, b.filas, b.columnas);
}

void GeorreferenciaDelPar(const CImagen& a, const CImagen& b, CImagen& r) {
    const Georreferencia& x = a.geo;
    const Georreferencia& y = b.geo;
    // Header order: system, units, then the seven numbers; compared exactly.
    const bool iguales = a.sistemaReferencia == b.sistemaReferencia && a.unidades == b.unidades &&
                         x.minX == y.minX && x.maxX == y.maxX && x.minY == y.minY && x.maxY == y.maxY &&
                         x.errorPosicion == y.errorPosicion && x.resolucion == y.resolucion &&
                         x.distanciaUnidad == y.distanciaUnidad;
    if (!iguales) r.sistemaReferencia = "unknown";
}

}  // namespace orvela
