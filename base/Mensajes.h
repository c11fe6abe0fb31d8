// The message table and the fillers used with it. Every text the user reads
// in a message box comes from here; the operations only name an id.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvela {

// Ids of the table, by what they say.
namespace msg {
inline constexpr int kNoHayVentanaActiva = 61216;
inline constexpr int kExtensionInadecuada = 61217;
inline constexpr int kCabeceraNoEncontrada = 61218;
inline constexpr int kNoSeleccionadaEntrada = 61219;
inline constexpr int kNoSeleccionadaSalida = 61220;
inline constexpr int kSeleccionarAntes = 61221;
inline constexpr int kNoCoincide = 61222;
inline constexpr int kNumeroClases = 61223;
inline constexpr int kNumeroBandas = 61224;
inline constexpr int kMultiplicador = 61225;
inline constexpr int kNumeroComponentes = 61226;
inline constexpr int kNumeroImagenesComponer = 61227;
inline constexpr int kConcatenarFuera = 61228;
inline constexpr int kIdentificador = 61229;
inline constexpr int kValorIncorrecto = 61230;
inline constexpr int kEstimacionIncorrecta = 61231;
inline constexpr int kDimensionesCorregida = 61232;
inline constexpr int kCoordenadasUtm = 61233;
inline constexpr int kValoresIncorrectos = 61234;
inline constexpr int kMismoNdColores = 61235;
inline constexpr int kColoresSinNd = 61236;
inline constexpr int kSinColorDefecto = 61237;
inline constexpr int kTodosNulos = 61238;
inline constexpr int kComponentesBasicos = 61239;
inline constexpr int kRectangulo = 61240;
inline constexpr int kLeyendaNoAbierta = 61241;
inline constexpr int kEnventanarFuera = 61242;
inline constexpr int kExtremoSuperior = 61243;
inline constexpr int kPosicionesNegativas = 61244;
inline constexpr int kEnventanarRaton = 61245;
inline constexpr int kRangoNv = 61246;
inline constexpr int kRangoNd = 61247;
inline constexpr int kNdByte = 61248;
inline constexpr int kNdInteger = 61249;
inline constexpr int kTipoNoReconocido = 61250;
inline constexpr int kTipoNoByteInteger = 61251;
inline constexpr int kRangoEntrada = 61252;
inline constexpr int kMascaraNoByte = 61253;
inline constexpr int kClasificadaNoByte = 61254;
inline constexpr int kDireccionalTamano = 61255;
inline constexpr int kMismoTipo = 61256;
inline constexpr int kPerdidaPrecision = 61257;
inline constexpr int kFueraDeImagen = 61258;
inline constexpr int kNdClasesDistintos = 61259;
inline constexpr int kNoCreadoFichero = 61260;
inline constexpr int kMaximoRasterizacion = 61261;
inline constexpr int kNoCreadoBmp = 61262;
inline constexpr int kResolucionZoom = 61263;
inline constexpr int kSinImagen = 61264;
inline constexpr int kComposicionColor = 61265;
inline constexpr int kErrorDibujar = 61266;
inline constexpr int kPaletaNoEncontrada = 61267;
inline constexpr int kContraccionFilas = 61268;
inline constexpr int kContraccionColumnas = 61269;
inline constexpr int kDivisionCeroVentana = 61270;
inline constexpr int kDivisionCeroFichero = 61271;
inline constexpr int kSinNombre = 61272;
inline constexpr int kZoomPantallaCompleta = 61273;
inline constexpr int kMaximoZooms = 61274;
inline constexpr int kNoEsArchivoDe = 61275;
inline constexpr int kUbicacionesActivas = 61276;
inline constexpr int kFicheroYaActivo = 61277;
inline constexpr int kElementoNoActivo = 61278;
inline constexpr int kFaseEntrenamiento = 61279;
inline constexpr int kBandaEntrenamiento = 61280;
inline constexpr int kPosicionesFuera = 61281;
inline constexpr int kRaizNegativos = 61282;
inline constexpr int kLogaritmoPositivos = 61283;
inline constexpr int kArchivoNoExiste = 61284;
inline constexpr int kZoomMapa = 61285;
inline constexpr int kPantallaCompletaMapa = 61286;
inline constexpr int kVectorialMapa = 61287;
inline constexpr int kYaPantallaCompleta = 61288;
}  // namespace msg

// Fillers that the table's messages take.
namespace relleno {
inline constexpr const char* kNingunaImagen = "ninguna imagen";
inline constexpr const char* kUnaImagen = "una imagen";
inline constexpr const char* kLaPrimeraImagen = "la primera imagen";
inline constexpr const char* kLaSegundaImagen = "la segunda imagen";
inline constexpr const char* kOzm = "ozm";
inline constexpr const char* kOzmMayusculas = "OZM";
inline constexpr const char* kInf = "inf";
inline constexpr const char* kLasDimensiones = "Las dimensiones";
inline constexpr const char* kElTipoDeDato = "El tipo de dato";
inline constexpr const char* kImagenes = "imágenes";
inline constexpr const char* kBandas = "bandas";
inline constexpr const char* kElArchivoPaleta = "el archivo paleta";
inline constexpr const char* kUnArchivo = "un archivo";
inline constexpr const char* kNingunArchivoPal = "ningun archivo (*.pal)";
inline constexpr const char* kFilasColumnas = "Los valores de filas y columnas";
// Transformations: the bands of each operation, as 61219 and 61222 name them.
inline constexpr const char* kNingunaBanda = "ninguna banda";
inline constexpr const char* kBandaRojo = "la banda del rojo (R)";
inline constexpr const char* kBandaInfrarrojo = "la banda del infrarrojo cercano (IR)";
inline constexpr const char* kBandasRIR = "bandas R e IR";
inline constexpr const char* kBandaUno = "la banda uno";
inline constexpr const char* kBandaDos = "la banda dos";
inline constexpr const char* kBandaTres = "la banda tres";
inline constexpr const char* kBandaCuatro = "la banda cuatro";
inline constexpr const char* kBandaCinco = "la banda cinco";
inline constexpr const char* kBandaSiete = "la banda siete";
inline constexpr const char* kBandasUnoDos = "bandas uno y dos";
inline constexpr const char* kBandasUnoTres = "bandas uno y tres";
inline constexpr const char* kBandasUnoCuatro = "bandas uno y cuatro";
inline constexpr const char* kBandasUnoCinco = "bandas uno y cinco";
inline constexpr const char* kBandasUnoSiete = "bandas uno y siete";
inline constexpr const char* kNingunPrefijo = "ningún prefijo para las imágenes";
inline constexpr const char* kUnPrefijo = "un prefijo";
inline constexpr const char* kBandaSuelo = "la banda de suelo";
inline constexpr const char* kBandaSombra = "la banda de sombra";
inline constexpr const char* kBandaVegetacion = "la banda de vegetación";
inline constexpr const char* kBandasSombraSuelo = "bandas sombra y suelo";
inline constexpr const char* kBandasSombraVegetacion = "bandas sombra y vegetación";
inline constexpr const char* kClaseVegetacion = "el fichero de clase de vegetación";
inline constexpr const char* kClaseSombra = "el fichero de clase de sombra";
inline constexpr const char* kClaseSuelo = "el fichero de clase de suelo";
inline constexpr const char* kClase = "clase";
// Training phase and class sampling.
inline constexpr const char* kNumeroBandasEntrada = "El número de bandas de entrada";
inline constexpr const char* kLasBandasClasificar = "las bandas a clasificar";
}  // namespace relleno

// Text of an id (UTF-8, fillers not substituted); nullptr for an unknown id.
const char* TextoMensaje(int id);
std::vector<int> IdsMensajes();
// Standard two-placeholder substitution of %1 and %2.
std::string Sustituir(std::string_view plantilla, std::string_view f1, std::string_view f2 = {});

// A message to show: an id of the table with its fillers, or (id 0) a free
// Spanish sentence for failures the table does not cover (a file that cannot
// be written, memory exhausted).
struct Mensaje {
    int id = 0;
    std::string f1, f2;
    std::string libre;

    std::string Texto() const;
    static Mensaje Tabla(int id, std::string f1 = {}, std::string f2 = {}) {
        return Mensaje{id, std::move(f1), std::move(f2), {}};
    }
    static Mensaje Libre(std::string texto) { return Mensaje{0, {}, {}, std::move(texto)}; }
    bool operator==(const Mensaje&) const = default;
};

}  // namespace orvela

namespace orvela::texto {
// Sentences for what the table does not cover: failures of the system and
// the user's cancel. Kept here with the table so that no operation carries
// texts of its own.
inline constexpr const char* kOperacionCancelada = "La operación se ha cancelado. No se ha escrito ni cambiado nada.";
inline constexpr const char* kSinMemoriaOperacion = "No hay memoria suficiente para realizar la operación.";
inline constexpr const char* kOperacionFallida = "No se ha podido realizar la operación: ";
inline constexpr const char* kCoeficientesFiltro =
    "El número de coeficientes del filtro no corresponde al tamaño de la ventana.";
inline constexpr const char* kFicheroClaseIlegible =
    "El fichero de clase no se ha podido leer o no tiene una estadística por cada banda: ";
inline constexpr const char* kSinConvergencia =
    "La clasificación no supervisada se ha detenido sin converger al llegar al máximo de pasadas: ";
inline constexpr const char* kTituloConSaltos =
    "El título de la imagen no puede contener saltos de línea: la cabecera no se podría leer.";
// Control-point files (corrections): %1 a line number, a path or a count.
inline constexpr const char* kPuntosSinNumero =
    "La primera línea del fichero de puntos de control no da un número de puntos válido.";
inline constexpr const char* kPuntosLineaIncorrecta =
    "La línea %1 del fichero de puntos de control no tiene los cuatro números fila, columna, X e Y.";
inline constexpr const char* kPuntosFaltan = "El fichero de puntos de control tiene %1 puntos en lugar de %2.";
inline constexpr const char* kPuntosNoLegible = "No se puede leer el fichero de puntos de control %1.";
inline constexpr const char* kCoordenadasPunto =
    "Escriba las coordenadas X e Y del punto de control como números (en metros).";
inline constexpr const char* kSinPuntosControl = "No hay puntos de control que guardar: pulse antes sobre la imagen.";
inline constexpr const char* kNoSeEscribePuntos = "No se puede escribir el fichero de puntos de control %1.";
inline constexpr const char* kPuntoInexistente =
    "No existe el punto de control %1 (los puntos se numeran desde 1 en el orden del fichero).";
// Apparent reflectance (Landsat TM): %1 a path or a date, %2 what is missing.
inline constexpr const char* kMetadatosNoLegible = "No se puede leer el fichero de metadatos %1.";
inline constexpr const char* kMetadatosIncompletos = "El fichero de metadatos %1 no da %2 de la banda elegida.";
inline constexpr const char* kReflectanciaSinCalibracion =
    "Falta la calibración: elija el fichero de metadatos (MTL) de la escena o escriba la ganancia, el sesgo, la "
    "elevación solar y la fecha de adquisición.";
inline constexpr const char* kReflectanciaFecha = "La fecha de adquisición %1 no es válida: escríbala como AAAA-MM-DD.";
inline constexpr const char* kReflectanciaElevacion =
    "La elevación solar debe ser mayor que 0 y no mayor que 90 grados.";
inline constexpr const char* kBandasFicheroClase =
    "Los ficheros de clase no tienen tantas bandas como imágenes se han elegido.\n\n"
    "Elija las mismas bandas con las que se tomaron las muestras de las clases.";
inline constexpr const char* kEspectrosDependientes =
    "Los valores medios de vegetación, sombra y suelo no son independientes en las bandas elegidas, "
    "y la descomposición no tiene una solución única.\n\nTome muestras más puras de cada clase.";
// Decision inspector: %1 a band name, %2 a value.
inline constexpr const char* kMuestraIlegible =
    "No se ha podido leer el valor del píxel en la banda %1.\n\nCompruebe que el fichero sigue en su sitio.";
inline constexpr const char* kDecisionNoCoincide =
    "La imagen guarda %1 en este píxel, pero con estas bandas y estas clases la regla elige %2.\n\n"
    "Compruebe que las bandas, los ficheros de clase y el clasificador son los de la clasificación.";
inline constexpr const char* kInspectorNoByte =
    "La imagen activa no es una imagen clasificada: una clasificación es una imagen de tipo byte.";
}  // namespace orvela::texto

// Fillers and sentences of the image tools (composition, reshaping,
// reclassification, statistics, regression, area).
namespace orvela::relleno {
inline constexpr const char* kLasReferencias = "las imágenes de referencia";
inline constexpr const char* kLosFactores = "Los factores";
inline constexpr const char* kFila = "fila";
inline constexpr const char* kColumna = "columna";
inline constexpr const char* kLaImagenClasificada = "la imagen clasificada";
inline constexpr const char* kLaImagenOriginal = "la imagen original";
inline constexpr const char* kClasificadaYOriginal = "imágenes clasificada y original";
inline constexpr const char* kLaImagenDelEjeOX = "la imagen del eje OX";
inline constexpr const char* kLaImagenDelEjeOY = "la imagen del eje OY";
inline constexpr const char* kLaBandaDelEjeOX = "la banda del eje OX";
inline constexpr const char* kLaBandaDelEjeOY = "la banda del eje OY";
inline constexpr const char* kLaImagenMascara = "la imagen máscara";
inline constexpr const char* kBandasEjes = "bandas del eje OY y OX";
inline constexpr const char* kBandasYMascara = "bandas y la máscara";
inline constexpr const char* kNingunArchivoTxt = "ningún archivo (*.txt)";
inline constexpr const char* kUnFichero = "un fichero";
inline constexpr const char* kBandaAzul = "la banda azul";
inline constexpr const char* kBandaVerde = "la banda verde";
inline constexpr const char* kBandaRoja = "la banda roja";
}  // namespace orvela::relleno

namespace orvela::texto {
// Range check of the reclassification (kept word for word, "byte" in the
// integer sentence included).
inline constexpr const char* kRangoReclasificarByte =
    "Los parámetros introducidos deben estar comprendidos en el rango\nde representación permitido por el tipo de "
    "dato de la imagen.\nAl ser tipo byte, debe pertenecer al rango [0-255].\n";
inline constexpr const char* kRangoReclasificarInteger =
    "Los parámetros introducidos deben estar comprendidos en el rango\nde representación permitido por el tipo de "
    "dato de la imagen.\nAl ser tipo byte, debe pertenecer al rango [0-65535].\n";
inline constexpr const char* kConcatenarUnaPosicion =
    "Elija una sola posición para concatenar: a la derecha, debajo, o una fila y una columna.";
inline constexpr const char* kEstadisticasUnCaso =
    "Elija una imagen continua o una imagen clasificada con su imagen original, no ambas.";
inline constexpr const char* kArrastrarVentana =
    "Arrastre con el ratón sobre la imagen el rectángulo que desea enventanar (Esc cancela).";
}  // namespace orvela::texto
