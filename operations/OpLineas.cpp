// "Líneas perdidas": lines with a sharp change of mean and many samples at
// the ends of the range rebuilt from the previous line, the mean of the two
// neighbours or an auxiliary band; the result keeps the input's type.
#include <cstring>

#include "corrections/LineasPerdidas.h"
#include "operations/Operacion.h"

namespace orvela {

namespace {

const Clave kMetodo{"metodo"};
const Clave kUmbralLinea{"umbral_linea"};
const Clave kUmbralMedias{"umbral_medias"};
const Clave kPorcentaje{"porcentaje"};

bool ConAuxiliar(const Valores& v) { return v.Entero(kMetodo) == static_cast<int>(MetodoLineas::Auxiliar); }

const Declaracion kLineas = [] {
    Declaracion d;
    d.idComando = 32812;
    d.orden = "lineas";
    d.titulo = "Corrección radiométrica de líneas perdidas";
    d.resumen = "Reconstruye las líneas perdidas con la línea anterior, la media de sus vecinas o una banda auxiliar.";
    d.paginaAyuda = "lineas";
    DeclEntrada auxiliar{"S&eleccionar", "la banda auxiliar", false};
    auxiliar.minimo = 0;
    auxiliar.opcionCli = "--auxiliar";
    auxiliar.etiquetaCli = "AUX";
    auxiliar.ayudaCli = "banda auxiliar de la misma escena (con el método 'auxiliar')";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}, auxiliar};
    // The initial thresholds are those of a byte band of a TM scene: a line
    // whose mean jumps by more than 10 levels from both neighbours and with
    // more than half of its samples below 5 or above 250.
    d.campos = {{.clave = &kUmbralLinea,
                 .tipo = TipoCampo::Real,
                 .grupo = "Umbrales De Corrección",
                 .etiqueta = "Umbral De Línea",
                 .opcionCli = "--umbral-linea",
                 .porDefecto = 5,
                 .obligatorio = true,
                 .ayudaCli = "un ND por debajo de TV o por encima de 255 - TV es erróneo"},
                {.clave = &kUmbralMedias,
                 .tipo = TipoCampo::Real,
                 .grupo = "Umbrales De Corrección",
                 .etiqueta = "Umbral De Medias",
                 .opcionCli = "--umbral-medias",
                 .porDefecto = 10,
                 .obligatorio = true,
                 .ayudaCli = "diferencia de medias con las dos líneas vecinas que hace sospechosa una línea"},
                {.clave = &kPorcentaje,
                 .tipo = TipoCampo::Real,
                 .grupo = "Umbrales De Corrección",
                 .etiqueta = "Porcentaje De Pixeles Erróneos.(%)",
                 .opcionCli = "--porcentaje",
                 .porDefecto = 50,
                 .obligatorio = true,
                 .ayudaCli = "porcentaje de ND erróneos que una línea perdida supera"},
                {.clave = &kMetodo,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Algoritmos De Corrección",
                 .opcionCli = "--metodo",
                 .opciones = {{"Línea Anterior", "anterior"}, {"Media De líneas", "media"},
                              {"Con Banda Auxiliar", "auxiliar"}},
                 .porDefecto = 0,
                 .obligatorio = true,
                 .ayudaCli = "reconstrucción de las líneas perdidas"}};
    d.grupoSalida = "Nombre De La Imagen De Salida";
    d.alElegir = [](int indice, const Cabecera& elegida,
                    const std::vector<std::optional<Cabecera>>& previas) -> std::optional<Mensaje> {
        // The auxiliary band agrees with the band to correct.
        const int otra = indice == 0 ? 1 : 0;
        if (otra >= static_cast<int>(previas.size()) || !previas[otra]) return std::nullopt;
        const Cabecera& p = *previas[otra];
        if (CodigoDeNombre(p.nombreTipo) != CodigoDeNombre(elegida.nombreTipo))
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, relleno::kBandas);
        if (p.filas != elegida.filas || p.columnas != elegida.columnas)
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kBandas);
        return std::nullopt;
    };
    d.alAceptar = [](const Valores& v, const Elegidas& e) -> std::optional<Mensaje> {
        if (ConAuxiliar(v) && (e.cabeceras.size() < 2 || e.cabeceras[1].empty()))
            return Mensaje::Tabla(msg::kNoSeleccionadaEntrada, "la banda auxiliar", relleno::kUnaImagen);
        if (!(v.Numero(kUmbralLinea) > 0 && v.Numero(kUmbralMedias) > 0 && v.Numero(kPorcentaje) > 0))
            return Mensaje::Tabla(msg::kValoresIncorrectos, "Los umbrales de correción");
        return std::nullopt;
    };
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores& v) -> std::optional<Mensaje> {
        if (!ConAuxiliar(v)) return std::nullopt;
        if (e.size() < 2) return Mensaje::Tabla(msg::kNoSeleccionadaEntrada, "la banda auxiliar", relleno::kUnaImagen);
        if (!CodigoValido(e[0]->tipoDato) || !CodigoValido(e[1]->tipoDato))
            return Mensaje::Tabla(msg::kTipoNoReconocido);
        if (e[0]->tipoDato != e[1]->tipoDato)
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, relleno::kBandas);
        if (e[0]->filas != e[1]->filas || e[0]->columnas != e[1]->columnas)
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kBandas);
        return std::nullopt;
    };
    d.calcular = [](const Contexto& c) {
        const CImagen& e = *c.entradas[0];
        const auto metodo = static_cast<MetodoLineas>(c.valores.Entero(kMetodo));
        const Muestras* aux = metodo == MetodoLineas::Auxiliar ? &c.entradas[1]->pixeles : nullptr;
        UmbralesLineas u;
        u.medias = c.valores.Numero(kUmbralMedias);
        u.linea = c.valores.Numero(kUmbralLinea);
        u.porcentaje = c.valores.Numero(kPorcentaje);
        return UnaSalida(c, 0, [&](CImagen& salida) {
            if (!CodigoValido(e.tipoDato)) return false;
            std::memcpy(salida.pixeles.Datos(), e.pixeles.Datos(), e.pixeles.Bytes());
            return CorregirLineas(salida.pixeles, aux, e.Filas(), e.Columnas(), metodo, u, c.progreso).has_value() ||
                   c.progreso.Cancelado();
        });
    };
    d.sufijo = [](const Valores& v) {
        static const char* const kSufijos[] = {"_Corregida_Con_Linea_Anterior", "_Corregida_Con_Media",
                                               "_Corregida_Con_Banda_Auxiliar"};
        const int m = v.Entero(kMetodo);
        return std::string(m >= 0 && m < 3 ? kSufijos[m] : "") + "_Correccion_De_Líneas";
    };
    return d;
}();

const Registro registro(kLineas);

}  // namespace

}  // namespace orvela
