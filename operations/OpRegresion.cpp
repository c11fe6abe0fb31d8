// "Regresión": Pearson's r, the least-squares line of band Y on band X, its
// R² and the sample size, over every pixel or those of a byte mask (every
// divisor stays the full pixel count), with the scatter diagram: the
// 256 x 256 cells between each band's minimum and maximum shaded by how
// many pixels fall on them, and the line over them.
#include <cstdio>

#include "image/Estadisticas.h"
#include "operations/Operacion.h"
#include "tools/Regresion.h"

namespace orvela {

namespace {

const Clave kDiagrama{"diagrama"};

std::string Linea(const char* etiqueta, double v) {
    char b[64];
    std::snprintf(b, sizeof b, "%.10g", v);
    return std::string(etiqueta) + ": " + b + "\n";
}

std::optional<Mensaje> AlElegir(int indice, const Cabecera& elegida, const std::vector<std::optional<Cabecera>>& p) {
    auto hay = [&](int i) { return static_cast<int>(p.size()) > i && p[static_cast<std::size_t>(i)].has_value(); };
    if (indice == 1) {
        if (!hay(0)) return Mensaje::Tabla(msg::kSeleccionarAntes, relleno::kLaImagenDelEjeOX);
        if (CodigoDeNombre(p[0]->nombreTipo) != CodigoDeNombre(elegida.nombreTipo))
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, relleno::kBandasEjes);
        if (p[0]->filas != elegida.filas || p[0]->columnas != elegida.columnas)
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kBandasEjes);
    }
    if (indice == 2) {
        if (!hay(1)) return Mensaje::Tabla(msg::kSeleccionarAntes, relleno::kLaImagenDelEjeOY);
        if (CodigoDeNombre(elegida.nombreTipo) != kByte) return Mensaje::Tabla(msg::kMascaraNoByte);
        if (p[1]->filas != elegida.filas || p[1]->columnas != elegida.columnas)
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kBandasYMascara);
    }
    return std::nullopt;
}

std::optional<Mensaje> Cargadas(const std::vector<const CImagen*>& e, const Valores&) {
    if (e[0]->tipoDato != e[1]->tipoDato)
        return Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, relleno::kBandasEjes);
    if (e[0]->filas != e[1]->filas || e[0]->columnas != e[1]->columnas)
        return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kBandasEjes);
    if (e.size() > 2) {
        if (e[2]->tipoDato != kByte) return Mensaje::Tabla(msg::kMascaraNoByte);
        if (e[2]->filas != e[0]->filas || e[2]->columnas != e[0]->columnas)
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kBandasYMascara);
    }
    return std::nullopt;
}

const Declaracion kRegresion = [] {
    Declaracion d;
    d.idComando = 32863;
    d.orden = "regresion";
    d.titulo = "Regresión";
    d.resumen = "Correlación de Pearson, recta de regresión y = a·x + b y R2 de dos bandas, con su diagrama de "
                "dispersión.";
    d.paginaAyuda = "regresion";
    d.grupoEntrada = "Nombre de las Imágenes de Entrada";
    d.entradas = {{.boton = "Seleccionar banda para el eje X",
                   .nombre = relleno::kLaBandaDelEjeOX,
                   .etiquetaCli = "BANDA_X"},
                  {.boton = "Seleccionar banda para el eje Y",
                   .nombre = relleno::kLaBandaDelEjeOY,
                   .etiquetaCli = "BANDA_Y"},
                  {.boton = "Seleccionar máscara (opcional)",
                   .nombre = relleno::kLaImagenMascara,
                   .minimo = 0,
                   .opcionCli = "--mascara",
                   .etiquetaCli = "M",
                   .ayudaCli = "máscara byte: solo cuentan los píxeles distintos de cero"}};
    d.campos = {{.clave = &kDiagrama,
                 .tipo = TipoCampo::Texto,
                 .grupo = "Diagrama de dispersión",
                 .etiqueta = "Fichero del diagrama (opcional, .png)",
                 .opcionCli = "--diagrama",
                 .textoPorDefecto = "",
                 .ayudaCli = "escribe el diagrama de dispersión en este fichero PNG"}};
    d.conSalida = false;
    d.alElegir = AlElegir;
    d.antesDeCalcular = Cargadas;
    d.calcular = [](const Contexto& c) {
        Resultado r;
        const CImagen& x = *c.entradas[0];
        const CImagen& y = *c.entradas[1];
        const uint8_t* mascara = c.entradas.size() > 2 ? c.entradas[2]->pixeles.Como<uint8_t>().data() : nullptr;
        const auto f = CalcularRegresion(x.pixeles, y.pixeles, mascara, x.Filas(), c.progreso);
        if (!f) {
            if (!c.progreso.Cancelado()) r.Rechazar(Mensaje::Tabla(msg::kTipoNoReconocido));
            return r;
        }
        r.consola = Linea("r", f->r) + Linea("a", f->a) + Linea("b", f->b) + Linea("R2", f->r2) +
                    Linea("n", static_cast<double>(f->muestra));
        if (c.destino == Destino::Ventana) {
            auto numero = [](double v) {
                char b[64];
                std::snprintf(b, sizeof b, "%.10g", v);
                return std::string(b);
            };
            r.cuadro = CuadroValores{
                "Regresión",
                "La ecuación de la recta es y = a·x +b",
                "Pinchando sobre la nube de puntos se obtienen los ND, cuyo valor aparece en la barra de estado.",
                {{"Coeficiente de correlación de Pearson", numero(f->r)},
                 {"a", numero(f->a)},
                 {"b", numero(f->b)},
                 {"R2", numero(f->r2)},
                 {"Tamaño de la muestra", numero(static_cast<double>(f->muestra))},
                 {"Imagen del eje X", x.titulo},
                 {"Imagen del eje Y", y.titulo}}};
        }
        const std::string ruta = c.valores.Tiene(kDiagrama) ? c.valores.Texto(kDiagrama) : std::string();
        if (c.destino == Destino::Ventana || !ruta.empty()) {
            double minX = 0, maxX = 0, minY = 0, maxY = 0;
            MinimoMaximo(x.pixeles, minX, maxX);
            MinimoMaximo(y.pixeles, minY, maxY);
            const auto rejilla = RejillaDispersion(x.pixeles, y.pixeles, mascara, minX, maxX, minY, maxY, c.progreso);
            if (!rejilla) return r;
            Grafico g = DiagramaRegresion(*rejilla, minX, maxX, minY, maxY, f->a, f->b, x.titulo, y.titulo);
            g.ruta = ruta;
            r.graficos.push_back(std::move(g));
        }
        return r;
    };
    return d;
}();

const Registro registro(kRegresion);

}  // namespace

}  // namespace orvela
