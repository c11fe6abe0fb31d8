// "Aritméticas": sum, difference, product, quotient, normalised difference
// and superposition of two images, into a double image.
#include "operations/DosImagenes.h"
#include "operations/Operacion.h"
#include "tools/Aritmetica.h"

namespace orvela {

namespace {

const Clave kOperacion{"operacion"};

const Declaracion kAritmetica = [] {
    Declaracion d;
    d.idComando = 32780;
    d.orden = "aritmetica";
    d.titulo = "Operaciones aritméticas";
    d.resumen = "Suma, resta, multiplica o divide dos imágenes, su diferencia normalizada o su superposición.";
    d.paginaAyuda = "aritmetica";
    d.grupoEntrada = "Nombres de las imágenes de entrada";
    d.entradas = {{"&Seleccionar primera", relleno::kLaPrimeraImagen, false},
                  {"S&eleccionar segunda", relleno::kLaSegundaImagen, false}};
    d.campos = {{.clave = &kOperacion,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Operaciones",
                 .opcionCli = "--op",
                 .opciones = {{"primera + segunda", "suma"},
                              {"primera - segunda", "resta"},
                              {"primera * segunda", "producto"},
                              {"primera / segunda", "cociente"},
                              {"(primera - segunda) / (primera + segunda)", "normalizada"},
                              {"primera superpone segunda excepto si cero", "superposicion"}},
                 .obligatorio = true,
                 .ayudaCli = "operación entre la primera y la segunda imagen"}};
    d.grupoSalida = "Nombre de la imagen de salida";
    d.alElegir = ComprobarEleccionPar;
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores&) {
        return ComprobarParCargado(*e[0], *e[1]);
    };
    d.calcular = [](const Contexto& c) {
        const CImagen& a = *c.entradas[0];
        const CImagen& b = *c.entradas[1];
        const auto op = static_cast<OperacionAritmetica>(c.valores.Entero(kOperacion));
        Resultado r = UnaSalida(c, kDouble, [&](CImagen& salida) -> std::optional<Mensaje> {
            GeorreferenciaDelPar(a, b, salida);
            const auto estado = OperarAritmetica(op, a.pixeles, b.pixeles, salida.pixeles, c.progreso);
            if (!estado) return Mensaje::Tabla(msg::kTipoNoReconocido);
            if (*estado != kDenominadorCero) return std::nullopt;
            // Nothing of the quotient is kept; the window shows the second image.
            return Mensaje::Tabla(c.destino == Destino::Ventana ? msg::kDivisionCeroVentana
                                                                : msg::kDivisionCeroFichero);
        });
        if (r.Error() && r.Error()->id == msg::kDivisionCeroVentana) r.entradaEnVentana = 1;
        return r;
    };
    // The suffix of the normalised difference names the operands the other
    // way round from its formula; both are as the users know them.
    d.sufijo = SufijoSegun(kOperacion, {"_Sumada_Con_", "_Menos_", "_Multiplicada_Por_", "_Dividida_Entre_",
                                              "_Suma_Entre_Diferencia_Con_", "_Superpuesta_A_"});
    d.tituloConSegunda = true;
    return d;
}();

const Registro registro(kAritmetica);

}  // namespace

}  // namespace orvela
