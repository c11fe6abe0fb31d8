// "Escalares": an image plus, minus, times or divided by a number, into a
// double image. The scalar must be greater than zero for all four.
#include "operations/Operacion.h"
#include "tools/Escalar.h"

namespace orvela {

namespace {

const Clave kValorEscalar{"escalar"};
const Clave kOperacion{"operacion"};

const Declaracion kEscalar = [] {
    Declaracion d;
    d.idComando = 32781;
    d.orden = "escalar";
    d.titulo = "Operaciones escalares";
    d.resumen = "Suma, resta, multiplica o divide la imagen por un escalar mayor que cero.";
    d.paginaAyuda = "escalar";
    d.entradas = {{"&Seleccionar ", relleno::kNingunaImagen, true}};
    d.campos = {{.clave = &kValorEscalar,
                 .tipo = TipoCampo::Real,
                 .grupo = "Valor del Escalar",
                 .etiqueta = "Establecer",
                 .opcionCli = "--escalar",
                 .porDefecto = 1.0,
                 .obligatorio = true,
                 .ayudaCli = "el escalar, mayor que cero"},
                {.clave = &kOperacion,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Operaciones",
                 .opcionCli = "--op",
                 .opciones = {{"Imagen + Escalar", "suma"},
                              {"Imagen - Escalar", "resta"},
                              {"Imagen * Escalar", "producto"},
                              {"Imagen / Escalar", "cociente"}},
                 .obligatorio = true,
                 .ayudaCli = "operación de la imagen con el escalar"}};
    d.alAceptar = SoloValores([](const Valores& v) -> std::optional<Mensaje> {
        // Zero and negative scalars are refused for the four operations.
        if (!(v.Numero(kValorEscalar) > 0.0))
            return Mensaje::Tabla(msg::kNoSeleccionadaEntrada, "un valor correcto para el escalar", "un valor >0");
        return std::nullopt;
    });
    d.calcular = [](const Contexto& c) {
        const auto op = static_cast<OperacionEscalar>(c.valores.Entero(kOperacion));
        return UnaSalida(c, kDouble, [&](CImagen& salida) {
            return OperarConEscalar(op, c.entradas[0]->pixeles, c.valores.Numero(kValorEscalar), salida.pixeles, c.progreso);
        });
    };
    // No suffix: the result keeps the input's title.
    d.sufijo = SufijoFijo("");
    return d;
}();

const Registro registro(kEscalar);

}  // namespace

}  // namespace orvela
