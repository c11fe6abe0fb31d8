// "Bandeado de la imagen": destriping of the 16 detectors into a double image.
#include <cstring>

#include "corrections/Bandeado.h"
#include "operations/Operacion.h"

namespace orvela {

namespace {

const Declaracion kBandeado = [] {
    Declaracion d;
    d.idComando = 32811;
    d.orden = "bandeado";
    d.titulo = "Corrección radiométrica del bandeado de la imagen";
    d.resumen = "Corrige el bandeado: las líneas de cada uno de los 16 detectores a la media y desviación de la imagen.";
    d.paginaAyuda = "bandeado";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    d.calcular = [](const Contexto& c) {
        const CImagen& e = *c.entradas[0];
        return UnaSalida(c, kDouble, [&](CImagen& salida) {
            return Destripe(e.pixeles, e.Filas(), e.Columnas(), salida.pixeles, nullptr, c.progreso);
        });
    };
    d.sufijo = SufijoFijo("_Corregida_bandeado");
    return d;
}();

const Registro registro(kBandeado);

}  // namespace

}  // namespace orvela
