// "Convertir tipo de dato": the image's samples stored in another type by
// the store rule.
#include "image/Conversion.h"
#include "operations/Operacion.h"
#include "tools/ConvertirTipo.h"

namespace orvela {

namespace {

const Clave kTipoDestino{"tipo_destino"};

const std::vector<Opcion> kTipos = {{"byte", "byte"}, {"integer", "integer"}, {"real", "real"}, {"double", "double"}};

int CodigoElegido(const Valores& v) { return CodigoDeNombre(kTipos.at(static_cast<std::size_t>(v.Entero(kTipoDestino))).palabra); }

const Declaracion kConvertir = [] {
    Declaracion d;
    d.idComando = 32810;
    d.orden = "convertir";
    d.titulo = "Convertir tipo de dato";
    d.resumen = "Convierte la imagen a otro tipo de dato.";
    d.paginaAyuda = "convertir";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    d.campos = {{.clave = &kTipoDestino,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Tipo de dato de salida",
                 .opcionCli = "--tipo",
                 .opciones = kTipos,
                 .obligatorio = true,
                 .ayudaCli = "tipo de dato del resultado"}};
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores& v) -> std::optional<Mensaje> {
        if (e[0]->tipoDato == CodigoElegido(v)) return Mensaje::Tabla(msg::kMismoTipo);
        return std::nullopt;
    };
    d.calcular = [](const Contexto& c) {
        bool perdida = false;
        Resultado r = UnaSalida(c, CodigoElegido(c.valores), [&](CImagen& salida) {
            perdida = ConvertirTipo(c.entradas[0]->pixeles, salida.pixeles);
            return true;
        });
        if (perdida && !r.fallo) r.avisos.push_back(Mensaje::Tabla(msg::kPerdidaPrecision));
        return r;
    };
    d.sufijo = SufijoFijo("_Convertida_De_Tipo_De_Dato");
    return d;
}();

const Registro registro(kConvertir);

}  // namespace

}  // namespace orvela
