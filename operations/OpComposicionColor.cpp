// "Composición de color": three bands of one type and size (blue, green,
// red) each scaled to 0..255 by the 2 % linear stretch or between its
// minimum and maximum, shown as one colour picture. The result is for the
// eye only: its window takes no other operation (61265) and can be
// exported as a picture; orvela-cli writes that picture with `--imagen`.
#include <cstdio>

#include "operations/DosImagenes.h"
#include "operations/Operacion.h"
#include "tools/ComposicionColor.h"

namespace orvela {

namespace {

const Clave kEscalado{"escalado"};
const Clave kImagen{"imagen"};

// Green and red have the type and size of the bands picked before them.
std::optional<Mensaje> ComoLasAnteriores(int indice, const Cabecera& elegida,
                                         const std::vector<std::optional<Cabecera>>& previas) {
    for (int k = 0; k < indice && static_cast<std::size_t>(k) < previas.size(); ++k) {
        const auto& p = previas[static_cast<std::size_t>(k)];
        if (!p) continue;
        if (CodigoDeNombre(p->nombreTipo) != CodigoDeNombre(elegida.nombreTipo))
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, relleno::kBandas);
        if (p->filas != elegida.filas || p->columnas != elegida.columnas)
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kBandas);
    }
    return std::nullopt;
}

std::optional<Mensaje> Cargadas(const std::vector<const CImagen*>& e, const Valores&) {
    for (std::size_t k = 1; k < e.size(); ++k) {
        if (e[k]->tipoDato != e[0]->tipoDato)
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, relleno::kBandas);
        if (e[k]->filas != e[0]->filas || e[k]->columnas != e[0]->columnas)
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kBandas);
    }
    return std::nullopt;
}

std::string Limites(const char* banda, const std::string& titulo, const LimitesBanda& l) {
    char b[160];
    std::snprintf(b, sizeof b, "%s (%s): %.10g - %.10g\n", banda, titulo.c_str(), l.bajo, l.alto);
    return b;
}

Resultado Componer(const Contexto& c) {
    Resultado r;
    const CImagen& azul = *c.entradas[0];
    const CImagen& verde = *c.entradas[1];
    const CImagen& rojo = *c.entradas[2];
    const auto regla = static_cast<EscaladoColor>(c.valores.Entero(kEscalado));
    auto planos = ComponerColor(azul.pixeles, verde.pixeles, rojo.pixeles, azul.Filas(), regla, c.progreso);
    if (!planos) {
        if (c.progreso.Cancelado()) r.Cancelar();
        else r.Rechazar(Mensaje::Tabla(msg::kTipoNoReconocido));
        return r;
    }
    ComposicionResultado comp;
    comp.planos.filas = azul.Filas();
    comp.planos.columnas = azul.Columnas();
    comp.planos.azul = std::move(planos->azul);
    comp.planos.verde = std::move(planos->verde);
    comp.planos.rojo = std::move(planos->rojo);
    // Named red-green-blue, as students name a composite ("4-3-2").
    comp.cabecera.titulo = "Color_" + rojo.titulo + "_" + verde.titulo + "_" + azul.titulo;
    comp.cabecera.sistemaReferencia = azul.sistemaReferencia;
    comp.cabecera.unidades = azul.unidades;
    comp.cabecera.geo = azul.geo;
    GeorreferenciaDelPar(azul, verde, comp.cabecera);
    GeorreferenciaDelPar(azul, rojo, comp.cabecera);
    if (c.valores.Tiene(kImagen)) comp.ruta = c.valores.Texto(kImagen);
    r.consola = Limites("Rojo", rojo.titulo, planos->limitesRojo) + Limites("Verde", verde.titulo, planos->limitesVerde) +
                Limites("Azul", azul.titulo, planos->limitesAzul);
    r.composicion = std::move(comp);
    return r;
}

const Declaracion kComposicionColor = [] {
    Declaracion d;
    d.idComando = 32855;
    d.orden = "composicion-color";
    d.titulo = "Composición de color";
    d.resumen = "Muestra tres bandas (azul, verde y roja) como una imagen en color, cada una escalada a 0..255.";
    d.paginaAyuda = "composicion-color";
    d.grupoEntrada = "Bandas de la composición";
    d.entradas = {{.boton = "Banda azul", .nombre = relleno::kBandaAzul, .etiquetaCli = "AZUL"},
                  {.boton = "Banda verde", .nombre = relleno::kBandaVerde, .etiquetaCli = "VERDE"},
                  {.boton = "Banda roja", .nombre = relleno::kBandaRoja, .etiquetaCli = "ROJA"}};
    d.campos = {{.clave = &kEscalado,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Escalado de cada banda a 0..255",
                 .opcionCli = "--escalado",
                 .opciones = {{"Expansión lineal al 2 %", "lineal2"}, {"Mínimo-máximo", "minmax"}},
                 .ayudaCli = "lineal2 (por defecto): satura el 2 % más oscuro y el 2 % más claro de cada banda; "
                             "minmax: del mínimo al máximo de cada banda"},
                {.clave = &kImagen,
                 .tipo = TipoCampo::Texto,
                 .grupo = "Imagen en color",
                 .etiqueta = "Guardar también como (opcional, .png o .bmp)",
                 .opcionCli = "--imagen",
                 .textoPorDefecto = "",
                 .ayudaCli = "escribe la composición en este fichero (.png; cualquier otro nombre, BMP)"}};
    d.conSalida = false;
    d.alElegir = ComoLasAnteriores;
    d.antesDeCalcular = Cargadas;
    d.calcular = Componer;
    return d;
}();

const Registro registro(kComposicionColor);

}  // namespace

}  // namespace orvela
