// "Píxeles perdidos": a sample far from the mean of its neighbours takes
// that mean; the result keeps the input's type.
#include <cstring>

#include "corrections/PixelesPerdidos.h"
#include "operations/Operacion.h"

namespace orvela {

namespace {

const Clave kUmbral{"umbral"};

const Declaracion kPixeles = [] {
    Declaracion d;
    d.idComando = 32813;
    d.orden = "pixeles";
    d.titulo = "Corrección radiométrica de píxeles perdidos";
    d.resumen = "Sustituye cada píxel que se aparta de la media de sus vecinos más que el umbral por esa media.";
    d.paginaAyuda = "pixeles";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    d.campos = {{.clave = &kUmbral,
                 .tipo = TipoCampo::Real,
                 .grupo = "Valor Umbral",
                 .etiqueta = "Umbral De Píxeles",
                 .opcionCli = "--umbral",
                 .porDefecto = 50,
                 .obligatorio = true,
                 .ayudaCli = "diferencia con la media de los vecinos a partir de la cual se corrige (mayor que 0)"}};
    d.alAceptar = SoloValores([](const Valores& v) -> std::optional<Mensaje> {
        if (!(v.Numero(kUmbral) > 0)) return Mensaje::Tabla(msg::kValorIncorrecto, "El valor umbral de píxel");
        return std::nullopt;
    });
    d.calcular = [](const Contexto& c) {
        const CImagen& e = *c.entradas[0];
        return UnaSalida(c, 0, [&](CImagen& salida) {
            if (!CodigoValido(e.tipoDato)) return false;
            std::memcpy(salida.pixeles.Datos(), e.pixeles.Datos(), e.pixeles.Bytes());
            return CorregirPixeles(salida.pixeles, e.Filas(), e.Columnas(), c.valores.Numero(kUmbral), c.progreso)
                       .has_value() ||
                   c.progreso.Cancelado();
        });
    };
    d.sufijo = SufijoFijo("_Correccion_De_Pixels_Perdidos");
    return d;
}();

const Registro registro(kPixeles);

}  // namespace

}  // namespace orvela
