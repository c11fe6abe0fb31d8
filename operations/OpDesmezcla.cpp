// "Descomposición espectral > NOAA" and "> Landsat": the vegetation, shade
// and soil fractions of each pixel, with the endmember spectra taken from
// three class files, and the RMS residual.
#include "operations/Operacion.h"
#include "operations/Transformaciones.h"
#include "transforms/Desmezcla.h"
#include "transforms/MediasClase.h"

namespace orvela {

namespace {

const Clave kRestringida{"restringida"};

std::optional<Mensaje> LeerClase(const std::string& ruta) {
    if (!LeerMediasClase(ruta)) return Mensaje::Tabla(msg::kNoEsArchivoDe, relleno::kClase);
    return std::nullopt;
}

DeclEntrada FicheroClase(const char* boton, const char* nombre, const char* opcion, const char* ayuda,
                         const char* grupo = nullptr) {
    return {.boton = boton,
            .nombre = nombre,
            .clase = ClaseEntrada::Fichero,
            .filtro = "Ficheros de clase (*.txt)",
            .extensiones = {"txt", "TXT"},
            .leer = LeerClase,
            .opcionCli = opcion,
            .etiquetaCli = "CLASE.txt",
            .ayudaCli = ayuda,
            .grupo = grupo};
}

Resultado Calcular(const Contexto& c) {
    Resultado r;
    // The list is the only image input: every image is a band.
    const auto& bandas = c.entradas;
    Extremos e;
    for (int k = 0; k < 3; ++k) {
        auto medias = LeerMediasClase(c.ficheros[static_cast<std::size_t>(k) + 1][0]);
        if (!medias) {
            r.Rechazar(Mensaje::Tabla(msg::kNoEsArchivoDe, relleno::kClase));
            return r;
        }
        if (medias->size() != bandas.size()) {
            r.Rechazar(Mensaje::Libre(texto::kBandasFicheroClase));
            return r;
        }
        e.espectro[static_cast<std::size_t>(k)] = std::move(*medias);
    }
    const auto d = Desmezclador::Crear(e);
    if (!d) {
        r.Rechazar(Mensaje::Libre(texto::kEspectrosDependientes));
        return r;
    }
    const bool restringida = c.valores.Marcada(kRestringida);
    const CImagen& primera = *bandas[0];
    std::vector<const Muestras*> muestras;
    for (const auto* b : bandas) muestras.push_back(&b->pixeles);
    const std::string base = primera.titulo + "_Descomposición_Espectral";
    return VariasSalidas(c, primera, kReal,
                         {{"_Vegetacion", base + "_vegetación"},
                          {"_Sombra", base + "_sombra"},
                          {"_Suelo", base + "_suelo"},
                          {"_Error", base + "_error"}},
                         [&](std::vector<Muestras*>& s) {
                             return Desmezclar(*d, muestras, primera.Filas(), primera.Columnas(), restringida, *s[0],
                                               *s[1], *s[2], *s[3], c.progreso);
                         });
}

Declaracion Desmezcla(int id, const char* orden, const char* titulo, const char* resumen, int minimo, int maximo) {
    Declaracion d;
    d.idComando = id;
    d.orden = orden;
    d.titulo = titulo;
    d.resumen = resumen;
    d.paginaAyuda = "desmezcla";
    d.grupoEntrada = "Bandas de entrada";
    d.entradas = {{.boton = "&Añadir banda",
                   .nombre = relleno::kNingunaBanda,
                   .clase = ClaseEntrada::Bandas,
                   .minimo = minimo,
                   .maximo = maximo,
                   .etiquetaCli = "BANDA",
                   .ayudaCli = "bandas de la escena, en el orden en que se tomaron las muestras de las clases"},
                  FicheroClase("Clase de &vegetación", relleno::kClaseVegetacion, "--vegetacion",
                               "fichero de clase de la vegetación pura", "Clases puras (extremos de la mezcla)"),
                  FicheroClase("Clase de &sombra", relleno::kClaseSombra, "--sombra", "fichero de clase de la sombra"),
                  FicheroClase("Clase de s&uelo", relleno::kClaseSuelo, "--suelo", "fichero de clase del suelo desnudo")};
    d.campos = {{.clave = &kRestringida,
                 .tipo = TipoCampo::Casilla,
                 .grupo = "Solución",
                 .etiqueta = "Fracciones no negativas (restringida)",
                 .opcionCli = "--restringida",
                 .ayudaCli = "fracciones entre 0 y 1 además de sumar 1"}};
    d.grupoSalida = "Prefijo de las Imágenes de Salida";
    d.salidaPrefijo = true;
    d.alElegir = ComprobarBandaConPrimera;
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores&) { return ComprobarBandasCargadas(e); };
    d.calcular = Calcular;
    d.sufijo = SufijoFijo("_Descomposición_Espectral");
    return d;
}

// The command line knows one order for any number of bands from two up;
// the Landsat menu entry takes the four bands of its own order.
const Declaracion kNoaa = Desmezcla(
    32793, "desmezcla", "Descomposición espectral NOAA",
    "Fracciones de vegetación, sombra y suelo de cada píxel, con su error, a partir de tres ficheros de clase; "
    "dos bandas (NOAA) o más.",
    2, 64);
const Declaracion kLandsat = Desmezcla(
    32794, "desmezcla-landsat", "Descomposición espectral Landsat",
    "Descomposición espectral de cuatro bandas Landsat (por ejemplo TM2, TM3, TM4 y TM5): fracciones de "
    "vegetación, sombra y suelo y su error; las mismas opciones que «desmezcla», exactamente cuatro bandas.",
    4, 4);

const Registro registroNoaa(kNoaa);
const Registro registroLandsat(kLandsat);

}  // namespace

}  // namespace orvela
