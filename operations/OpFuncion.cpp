// "Funciones": square, square root, natural logarithm, exponential, sine,
// cosine, tangent or absolute value of every sample, into a double image.
#include "image/Estadisticas.h"
#include "operations/Operacion.h"
#include "tools/Funciones.h"

namespace orvela {

namespace {

const Clave kOperacion{"operacion"};

const Declaracion kFuncion = [] {
    Declaracion d;
    d.idComando = 32860;
    d.orden = "funcion";
    d.titulo = "Funciones";
    d.resumen = "Aplica una función (cuadrado, raíz, logaritmo, exponencial, seno, coseno, tangente, valor absoluto).";
    d.paginaAyuda = "funcion";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    d.campos = {{.clave = &kOperacion,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Operaciones",
                 .opcionCli = "--op",
                 .opciones = {{"Elevar al cuadrado", "cuadrado"},
                              {"Raiz cuadrada", "raiz"},
                              {"Log neperiano", "ln"},
                              {"Exponencial", "exp"},
                              {"Seno", "seno"},
                              {"Coseno", "coseno"},
                              {"Tangente", "tangente"},
                              {"Valor absoluto", "absoluto"}},
                 .obligatorio = true,
                 .ayudaCli = "función que se aplica a cada ND (ángulos en radianes)"}};
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores& v) -> std::optional<Mensaje> {
        const auto f = static_cast<Funcion>(v.Entero(kOperacion));
        if (f != Funcion::RaizCuadrada && f != Funcion::LogNeperiano) return std::nullopt;
        // The domain is checked with the image minimum. Byte and integer
        // samples cannot be negative: their square root is never checked.
        const CImagen& a = *e[0];
        double minimo = 0, maximo = 0;
        if (!MinimoMaximo(a.pixeles, minimo, maximo)) return Mensaje::Tabla(msg::kTipoNoReconocido);
        if (f == Funcion::RaizCuadrada && (a.tipoDato == kReal || a.tipoDato == kDouble) && minimo < 0.0)
            return Mensaje::Tabla(msg::kRaizNegativos);
        if (f == Funcion::LogNeperiano && minimo <= 0.0) return Mensaje::Tabla(msg::kLogaritmoPositivos);
        return std::nullopt;
    };
    d.calcular = [](const Contexto& c) {
        const auto f = static_cast<Funcion>(c.valores.Entero(kOperacion));
        return UnaSalida(c, kDouble,
                         [&](CImagen& salida) { return AplicarFuncion(f, c.entradas[0]->pixeles, salida.pixeles, c.progreso); });
    };
    d.sufijo = SufijoSegun(kOperacion,
                           {"_^2", "_sqrt", "_ln", "_exp", "_seno", "_coseno", "_tangente", "_valor_absoluto"});
    return d;
}();

const Registro registro(kFuncion);

}  // namespace

}  // namespace orvela
