#include "operations/Clasificacion.h"

namespace orvela {

DeclEntrada EntradaBandas(int minimo) {
    DeclEntrada e;
    e.boton = "&Seleccionar las bandas a clasificar";
    e.clase = ClaseEntrada::Bandas;
    e.minimo = minimo;
    e.maximo = 64;
    e.etiquetaCli = "BANDA";
    e.ayudaCli = "bandas a clasificar, todas del mismo tipo y tamaño";
    return e;
}

DeclEntrada EntradaClases(const char* ayudaCli) {
    DeclEntrada e;
    e.boton = "&Seleccionar clases";
    e.clase = ClaseEntrada::Fichero;
    e.minimo = 1;
    e.maximo = 255;
    e.filtro = "Clases (*.txt)";
    e.extensiones = {"txt", "TXT"};
    e.opcionCli = "--clase";
    e.etiquetaCli = "FICHERO.txt";
    e.ayudaCli = ayudaCli;
    return e;
}

std::optional<Mensaje> BandaIgualPrimera(int indice, const Cabecera& elegida,
                                         const std::vector<std::optional<Cabecera>>& previas) {
    if (indice == 0 || previas.empty() || !previas[0]) return std::nullopt;
    const Cabecera& p = *previas[0];
    if (CodigoDeNombre(elegida.nombreTipo) != CodigoDeNombre(p.nombreTipo))
        return Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, relleno::kBandas);
    if (elegida.filas != p.filas || elegida.columnas != p.columnas)
        return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kBandas);
    return std::nullopt;
}

bool GeorreferenciasDistintas(const std::vector<const CImagen*>& bandas) {
    for (std::size_t i = 1; i < bandas.size(); ++i)
        if (bandas[i]->sistemaReferencia != bandas[0]->sistemaReferencia ||
            bandas[i]->unidades != bandas[0]->unidades || !(bandas[i]->geo == bandas[0]->geo))
            return true;
    return false;
}

}  // namespace orvela
