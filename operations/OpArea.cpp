// "Calcular área": the pixels of each distinct value of a byte or integer
// image (a classification), in hectares when the image is metric with a
// known resolution, as a report shown in a window and saved on request.
// The report names the image by its title (a file's title when the input
// is a file).
#include "operations/CampoInforme.h"
#include "operations/Operacion.h"
#include "tools/AreaCategorias.h"

namespace orvela {

namespace {

const Clave kInforme{"informe"};

std::optional<Mensaje> ByteOInteger(int codigo) {
    if (codigo != kByte && codigo != kInteger) return Mensaje::Tabla(msg::kTipoNoByteInteger);
    return std::nullopt;
}

const Declaracion kArea = [] {
    Declaracion d;
    d.idComando = 32859;
    d.orden = "area";
    d.titulo = "Calcular área";
    d.resumen = "Número de píxeles, hectáreas y porcentaje de cada categoría de una imagen byte o integer.";
    d.paginaAyuda = "area";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    d.campos = {CampoInforme(kInforme, "Informe", "escribe también el informe en este fichero (.txt)")};
    d.conSalida = false;
    d.alElegir = [](int, const Cabecera& c, const std::vector<std::optional<Cabecera>>&) {
        return ByteOInteger(CodigoDeNombre(c.nombreTipo));
    };
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores&) {
        return ByteOInteger(e[0]->tipoDato);
    };
    d.calcular = [](const Contexto& c) {
        Resultado r;
        const CImagen& e = *c.entradas[0];
        const auto a = CalcularAreaCategorias(e.pixeles, e.sistemaReferencia, e.unidades, e.geo.resolucion,
                                              c.progreso);
        if (!a) {
            if (!c.progreso.Cancelado()) r.Rechazar(Mensaje::Tabla(msg::kTipoNoByteInteger));
            return r;
        }
        const std::string texto = InformeArea(*a, e.titulo);
        r.consola = texto;
        const std::string ruta = c.valores.Tiene(kInforme) ? c.valores.Texto(kInforme) : std::string();
        if (c.destino == Destino::Ventana || !ruta.empty())
            r.informes.push_back(InformeTexto{.contenido = texto, .titulo = "Información del área", .ruta = ruta});
        return r;
    };
    return d;
}();

const Registro registro(kArea);

}  // namespace

}  // namespace orvela
