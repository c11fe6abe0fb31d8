// "Lógicas": bitwise AND, OR and XOR of two byte or two integer images; the
// result keeps their type.
#include "operations/DosImagenes.h"
#include "operations/Operacion.h"
#include "tools/Logica.h"

namespace orvela {

namespace {

const Clave kOperacion{"operacion"};

bool TipoReal(int codigo) { return codigo == kReal || codigo == kDouble; }

const Declaracion kLogica = [] {
    Declaracion d;
    d.idComando = 32779;
    d.orden = "logica";
    d.titulo = "Operaciones lógicas";
    d.resumen = "AND, OR o XOR bit a bit de dos imágenes 'byte' o 'integer'.";
    d.paginaAyuda = "logica";
    d.grupoEntrada = "Nombres de las imágenes de entrada";
    d.entradas = {{"&Seleccionar Primera", relleno::kLaPrimeraImagen, false},
                  {"S&eleccionar Segunda", relleno::kLaSegundaImagen, false}};
    d.campos = {{.clave = &kOperacion,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Operaciones",
                 .opcionCli = "--op",
                 .opciones = {{"AND", "and"}, {"OR", "or"}, {"XOR", "xor"}},
                 .obligatorio = true,
                 .ayudaCli = "operación lógica, bit a bit"}};
    d.grupoSalida = "Nombre de la imagen de salida";
    d.alElegir = [](int indice, const Cabecera& elegida,
                    const std::vector<std::optional<Cabecera>>& previas) -> std::optional<Mensaje> {
        // Only whole-number images have bits to combine.
        if (indice == 0 && TipoReal(CodigoDeNombre(elegida.nombreTipo)))
            return Mensaje::Tabla(msg::kTipoNoByteInteger);
        return ComprobarEleccionPar(indice, elegida, previas);
    };
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores&) {
        return ComprobarParCargado(*e[0], *e[1]);
    };
    d.calcular = [](const Contexto& c) {
        const CImagen& a = *c.entradas[0];
        const CImagen& b = *c.entradas[1];
        const auto op = static_cast<OperacionLogica>(c.valores.Entero(kOperacion));
        return UnaSalida(c, 0, [&](CImagen& salida) {
            GeorreferenciaDelPar(a, b, salida);
            return OperarLogica(op, a.pixeles, b.pixeles, salida.pixeles, c.progreso);
        });
    };
    d.sufijo = SufijoSegun(kOperacion, {"_And_", "_Or_", "_Xor_"});
    d.tituloConSegunda = true;
    return d;
}();

const Registro registro(kLogica);

}  // namespace

}  // namespace orvela
