// "Contraer" and "Expandir": subsampling keeping the last pixel of each
// block, and enlargement by pixel replication, by whole factors for rows
// and columns. A factor of 0 or less is refused with 61234.
#include "operations/Operacion.h"
#include "operations/Reformado.h"
#include "tools/Reformar.h"

namespace orvela {

namespace {

const Clave kFactorFilas{"factor_filas"};
const Clave kFactorColumnas{"factor_columnas"};

std::vector<Campo> Factores(const char* grupo) {
    return {{.clave = &kFactorFilas,
             .tipo = TipoCampo::Entero,
             .grupo = grupo,
             .etiqueta = "Establecer para Filas",
             .opcionCli = "--filas",
             .obligatorio = true,
             .ayudaCli = "factor de las filas (entero mayor que cero)"},
            {.clave = &kFactorColumnas,
             .tipo = TipoCampo::Entero,
             .grupo = grupo,
             .etiqueta = "Establecer para Columnas",
             .opcionCli = "--columnas",
             .obligatorio = true,
             .ayudaCli = "factor de las columnas (entero mayor que cero)"}};
}

std::optional<Mensaje> FactoresPositivos(const Valores& v) {
    if (v.Numero(kFactorFilas) <= 0 || v.Numero(kFactorColumnas) <= 0)
        return Mensaje::Tabla(msg::kValoresIncorrectos, relleno::kLosFactores);
    return std::nullopt;
}

// Contraction factors against the image's size: each must be less than the
// rows (61268) or the columns (61269).
std::optional<Mensaje> FactoresMenores(const Valores& v, double filas, double columnas) {
    if (v.Numero(kFactorFilas) >= filas) return Mensaje::Tabla(msg::kContraccionFilas);
    if (v.Numero(kFactorColumnas) >= columnas) return Mensaje::Tabla(msg::kContraccionColumnas);
    return std::nullopt;
}

Resultado Reformar(const Contexto& c, bool contraer) {
    Resultado r;
    const CImagen& e = *c.entradas[0];
    const long fr = c.valores.Entero(kFactorFilas), fc = c.valores.Entero(kFactorColumnas);
    // The handler's checks, again, so that the computation never divides by 0.
    auto m = FactoresPositivos(c.valores);
    if (!m && contraer) m = FactoresMenores(c.valores, e.filas, e.columnas);
    if (m) {
        r.Rechazar(*m);
        return r;
    }
    const long filas = contraer ? e.Filas() / fr : e.Filas() * fr;
    const long columnas = contraer ? e.Columnas() / fc : e.Columnas() * fc;
    CImagen salida;
    if (auto m = SalidaDeTamano(e, filas, columnas, salida)) {
        r.FallarSistema(*m);
        return r;
    }
    const bool hecho = contraer ? Contraer(e.pixeles, e.Filas(), e.Columnas(), fr, fc, salida.pixeles, c.progreso)
                                : Expandir(e.pixeles, e.Filas(), e.Columnas(), fr, fc, salida.pixeles, c.progreso);
    if (!hecho) {
        if (!c.progreso.Cancelado()) r.Rechazar(Mensaje::Tabla(msg::kTipoNoReconocido));
        return r;
    }
    r.imagenes.push_back(std::move(salida));
    return r;
}

const Declaracion kContraer = [] {
    Declaracion d;
    d.idComando = 32772;
    d.orden = "contraer";
    d.titulo = "Contraer";
    d.resumen = "Reduce la imagen tomando el último píxel de cada bloque de FR x FC píxeles.";
    d.paginaAyuda = "contraer";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    d.campos = Factores("Factores de Contracción");
    d.alAceptar = [](const Valores& v, const Elegidas& e) -> std::optional<Mensaje> {
        if (auto m = FactoresPositivos(v)) return m;
        if (!e.cabeceras.empty() && !e.cabeceras[0].empty())
            return FactoresMenores(v, e.cabeceras[0][0].filas, e.cabeceras[0][0].columnas);
        return std::nullopt;
    };
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores& v) -> std::optional<Mensaje> {
        if (auto m = FactoresPositivos(v)) return m;
        return FactoresMenores(v, e[0]->filas, e[0]->columnas);
    };
    d.calcular = [](const Contexto& c) { return Reformar(c, true); };
    d.sufijo = SufijoFijo("_Contraída");
    return d;
}();

const Declaracion kExpandir = [] {
    Declaracion d;
    d.idComando = 32853;
    d.orden = "expandir";
    d.titulo = "Expandir";
    d.resumen = "Amplía la imagen repitiendo cada píxel en un bloque de FR x FC píxeles.";
    d.paginaAyuda = "expandir";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    d.campos = Factores("Factores de Expansión");
    d.alAceptar = SoloValores(FactoresPositivos);
    d.antesDeCalcular = [](const std::vector<const CImagen*>&, const Valores& v) { return FactoresPositivos(v); };
    d.calcular = [](const Contexto& c) { return Reformar(c, false); };
    d.sufijo = SufijoFijo("_Expandida");
    return d;
}();

const Registro registro(kContraer);
const Registro registroExpandir(kExpandir);

}  // namespace

}  // namespace orvela
