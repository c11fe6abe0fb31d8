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
}  // namespace orvela::texto
