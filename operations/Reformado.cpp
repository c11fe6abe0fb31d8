#include "operations/Reformado.h"

namespace orvela {

std::optional<Mensaje> SalidaDeTamano(const CImagen& entrada, long filas, long columnas, CImagen& salida) {
    const double f = static_cast<double>(filas), c = static_cast<double>(columnas);
    const std::size_t n = ContarMuestras(f, c, entrada.tipoDato);
    Muestras m = n ? Muestras::Crear(entrada.tipoDato, n) : Muestras();
    if (n == 0 || !m.Valido()) return MensajeMemoria(f, c);
    salida.pixeles = std::move(m);
    salida.tipoDato = entrada.tipoDato;
    salida.filas = f;
    salida.columnas = c;
    salida.indicePaleta = entrada.indicePaleta;
    salida.rutaSecundaria = entrada.rutaSecundaria;
    salida.rutaRaster = entrada.rutaRaster;
    salida.titulo = entrada.titulo;
    salida.tipoFichero = entrada.tipoFichero;
    salida.sistemaReferencia = entrada.sistemaReferencia;
    salida.unidades = entrada.unidades;
    salida.geo = entrada.geo;
    salida.tieneImagen = true;
    return std::nullopt;
}

}  // namespace orvela
