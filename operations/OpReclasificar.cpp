// "Reclasificar": the pixels in [desde, hasta) take one output value. On byte
// and integer images the three parameters are reduced to the sample's width
// first (300 acts as 44 on a byte image), so the range check that follows
// never fails; it is kept as the users know it.
#include "operations/Operacion.h"
#include "tools/Reclasificar.h"

namespace orvela {

namespace {

const Clave kDesde{"desde"};
const Clave kHasta{"hasta"};
const Clave kSalida{"nd_salida"};

std::optional<Mensaje> ComprobarRango(int codigo, const Valores& v) {
    const auto p = ReducirParametros(codigo, v.Numero(kDesde), v.Numero(kHasta), v.Numero(kSalida));
    const double limite = codigo == kByte ? 255 : codigo == kInteger ? 65535 : 0;
    if (limite == 0) return std::nullopt;
    if (p.desde > limite || p.hasta > limite || p.salida > limite)
        return Mensaje::Libre(codigo == kByte ? texto::kRangoReclasificarByte : texto::kRangoReclasificarInteger);
    return std::nullopt;
}

const Declaracion kReclasificar = [] {
    Declaracion d;
    d.idComando = 32858;
    d.orden = "reclasificar";
    d.titulo = "Reclasificar";
    d.resumen = "Da un mismo valor a los píxeles cuyo valor está en el rango [desde, hasta).";
    d.paginaAyuda = "reclasificar";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    d.campos = {{.clave = &kDesde,
                 .tipo = TipoCampo::Real,
                 .grupo = "Parámetros",
                 .etiqueta = "Desde (incluido)",
                 .opcionCli = "--desde",
                 .obligatorio = true,
                 .ayudaCli = "inicio del rango de entrada (incluido)"},
                {.clave = &kHasta,
                 .tipo = TipoCampo::Real,
                 .grupo = "Parámetros",
                 .etiqueta = "Hasta (sin incluir)",
                 .opcionCli = "--hasta",
                 .obligatorio = true,
                 .ayudaCli = "final del rango de entrada (sin incluir)"},
                {.clave = &kSalida,
                 .tipo = TipoCampo::Real,
                 .grupo = "Parámetros",
                 .etiqueta = "ND de salida:",
                 .opcionCli = "--nd-salida",
                 .obligatorio = true,
                 .ayudaCli = "valor que toman los píxeles del rango"}};
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores& v) {
        return ComprobarRango(e[0]->tipoDato, v);
    };
    d.calcular = [](const Contexto& c) {
        const CImagen& e = *c.entradas[0];
        const Valores& v = c.valores;
        return UnaSalida(c, 0, [&](CImagen& salida) {
            return Reclasificar(e.pixeles, e.Filas(), e.Columnas(), v.Numero(kDesde), v.Numero(kHasta),
                                v.Numero(kSalida), salida.pixeles, c.progreso) ||
                   c.progreso.Cancelado();
        });
    };
    d.sufijo = SufijoFijo("_Reclasificada");
    return d;
}();

const Registro registro(kReclasificar);

}  // namespace

}  // namespace orvela
