// "Establecer clase" without the view: the class file that a right click
// writes after one left click per given point, over the training bands.
// The desktop samples with the mouse; this declaration serves orvela-cli
// and the tests (the file is stem + ".txt").
#include "classification/FicheroClase.h"
#include "operations/Clasificacion.h"

namespace orvela {

namespace {

const Clave kModo{"modo"};
const Clave kAltura{"altura"};
const Clave kAnchura{"anchura"};
const Clave kPunto{"punto"};

bool ConRectangulo(const Valores& v) { return v.Entero(kModo) == static_cast<int>(ModoMuestreo::Rectangulos); }

const Declaracion kClase = [] {
    Declaracion d;
    d.idComando = 32819;
    d.orden = "clase";
    d.titulo = "Establecer clase";
    d.resumen = "Escribe el fichero de clase con las muestras tomadas en los puntos dados.";
    d.paginaAyuda = "clase";
    d.grupoEntrada = "Bandas de la fase de entrenamiento";
    d.grupoSalida = "Nombre del fichero de clase";
    d.botonGuardar = "Guardar en";
    d.entradas = {EntradaBandas()};
    d.campos = {{.clave = &kModo,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Modo de selección",
                 .opcionCli = "--modo",
                 .opciones = {{"Puntos", "puntos"}, {"Cruces", "cruces"}, {"Rectángulos", "rectangulos"}},
                 .obligatorio = true,
                 .ayudaCli = "forma de cada grupo de muestras"},
                {.clave = &kAltura,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Modo de selección",
                 .etiqueta = "Altura",
                 .opcionCli = "--altura",
                 .porDefecto = 1,
                 .obligatorio = true,
                 .aplica = ConRectangulo,
                 .ayudaCli = "semialtura del rectángulo en píxeles (con 'rectangulos')"},
                {.clave = &kAnchura,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Modo de selección",
                 .etiqueta = "Anchura",
                 .opcionCli = "--anchura",
                 .porDefecto = 1,
                 .obligatorio = true,
                 .aplica = ConRectangulo,
                 .ayudaCli = "semianchura del rectángulo en píxeles (con 'rectangulos')"},
                {.clave = &kPunto,
                 .tipo = TipoCampo::Tabla,
                 .grupo = "Puntos",
                 .opcionCli = "--punto",
                 .cantidad = [](const Valores&) { return 2; },
                 .columnas = {"Fila", "Columna"},
                 .ayudaCli = "FILA,COLUMNA de un clic (desde 0; se repite, una vez por clic)"}};
    d.alElegir = BandaIgualPrimera;
    d.alAceptar = SoloValores([](const Valores& v) -> std::optional<Mensaje> {
        if (ConRectangulo(v) && (v.Numero(kAltura) < 1 || v.Numero(kAnchura) < 1))
            return Mensaje::Tabla(msg::kRectangulo);
        return std::nullopt;
    });
    d.calcular = [](const Contexto& c) {
        Resultado r;
        const auto& bandas = c.porEntrada[0];
        const auto modo = static_cast<ModoMuestreo>(c.valores.Entero(kModo));
        const int alto = ConRectangulo(c.valores) ? c.valores.Entero(kAltura) : 1;
        const int ancho = ConRectangulo(c.valores) ? c.valores.Entero(kAnchura) : 1;
        std::vector<Posicion> muestras;
        for (const auto& p : c.valores.Tabla(kPunto)) {
            const double fila = p[0], columna = p[1];
            // A click is taken where the view would take it: inside the image.
            if (!(fila >= 0 && columna >= 0 && fila < bandas[0]->filas && columna < bandas[0]->columnas)) {
                r.avisos.push_back(Mensaje::Tabla(msg::kFueraDeImagen));
                continue;
            }
            for (const auto& m : GrupoMuestras(modo, static_cast<long>(fila), static_cast<long>(columna), alto, ancho))
                muestras.push_back(m);
        }
        std::vector<std::string> nombres;
        for (const auto* b : bandas) nombres.push_back(TituloClase(b->rutaRaster).empty() ? b->titulo
                                                                                            : TituloClase(b->rutaRaster));
        r.informes.push_back({".txt", TextoFicheroClase(CalcularClase(bandas, nombres, muestras)), "Fichero de clase", ""});
        return r;
    };
    d.sufijo = SufijoFijo("");
    return d;
}();

const Registro registro(kClase);

}  // namespace

}  // namespace orvela
