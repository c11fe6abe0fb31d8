// "Correcciones geométricas": the polynomials line(x, y) and column(x, y)
// estimated from a control-point file, then an image on a regular map grid
// resampled from the input, and the "_Estimacion.txt" report.
#include <cmath>
#include <sstream>

#include "corrections/CorreccionGeometrica.h"
#include "corrections/PuntosControl.h"
#include "operations/Operacion.h"

namespace orvela {

namespace {

const Clave kXMaxima{"x_maxima"};
const Clave kYMaxima{"y_maxima"};
const Clave kXMinima{"x_minima"};
const Clave kYMinima{"y_minima"};
const Clave kColumnas{"columnas"};
const Clave kFilas{"filas"};
const Clave kMetodo{"metodo"};
const Clave kSistema{"sistema"};
const Clave kOmitir{"omitir"};

// The loops over the output grid count in 16 bits.
constexpr double kLadoMaximo = 32767;

// Point numbers (from 1) of a list "2,5,7"; nullopt with the first bad one.
std::optional<std::vector<int>> Numeros(const std::string& texto, std::string& malo) {
    std::vector<int> v;
    std::stringstream s(texto);
    std::string pieza;
    while (std::getline(s, pieza, ',')) {
        const auto a = pieza.find_first_not_of(" \t");
        if (a == std::string::npos) continue;
        const auto b = pieza.find_last_not_of(" \t");
        pieza = pieza.substr(a, b - a + 1);
        char* fin = nullptr;
        const long n = std::strtol(pieza.c_str(), &fin, 10);
        if (*fin != '\0' || n < 1 || n > 1000000) {
            malo = pieza;
            return std::nullopt;
        }
        v.push_back(static_cast<int>(n));
    }
    return v;
}

std::optional<Mensaje> LeerYEstimar(const std::string& ruta) {
    std::string error;
    const auto puntos = LeerPuntosControl(ruta, &error);
    if (!puntos) return Mensaje::Libre(error);
    if (!EstimarPolinomio(*puntos).Valida()) return Mensaje::Tabla(msg::kEstimacionIncorrecta);
    return std::nullopt;
}

Campo Coordenada(const Clave& k, const char* etiqueta, const char* opcion, const char* ayuda) {
    return {.clave = &k,
            .tipo = TipoCampo::Real,
            .grupo = "Coordenadas UTM de los Extremos (unidades m)",
            .etiqueta = etiqueta,
            .opcionCli = opcion,
            .obligatorio = true,
            .ayudaCli = ayuda};
}

const Declaracion kGeometrica = [] {
    Declaracion d;
    d.idComando = 32814;
    d.orden = "geometrica";
    d.titulo = "Correcciones geométricas";
    d.resumen = "Corrige la geometría con puntos de control: polinomio de primer grado y remuestreo a una malla UTM.";
    d.paginaAyuda = "geometrica";
    DeclEntrada puntos{"S&eleccionar", "el fichero de puntos de control", false, ClaseEntrada::Fichero};
    puntos.filtro = "Fichero (*.txt)";
    puntos.extensiones = {"txt"};
    puntos.leer = LeerYEstimar;
    puntos.opcionCli = "--puntos";
    puntos.etiquetaCli = "FICHERO.txt";
    puntos.ayudaCli = "fichero de puntos de control (fila, columna, X, Y)";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}, puntos};
    d.campos = {Coordenada(kXMaxima, "X Máxima", "--x-max", "X máxima de la malla (m)"),
                Coordenada(kYMaxima, "Y Máxima", "--y-max", "Y máxima de la malla (m)"),
                Coordenada(kXMinima, "X Mínima", "--x-min", "X mínima de la malla (m)"),
                Coordenada(kYMinima, "Y Mínima", "--y-min", "Y mínima de la malla (m)"),
                {.clave = &kColumnas,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Dimensiones de la Imagen Corregida",
                 .etiqueta = "Columnas",
                 .opcionCli = "--columnas",
                 .obligatorio = true,
                 .ayudaCli = "columnas de la imagen corregida"},
                {.clave = &kFilas,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Dimensiones de la Imagen Corregida",
                 .etiqueta = "Filas",
                 .opcionCli = "--filas",
                 .obligatorio = true,
                 .ayudaCli = "filas de la imagen corregida"},
                {.clave = &kMetodo,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Método de Transferencia de los Niveles Digitales",
                 .opcionCli = "--metodo",
                 .opciones = {{"El Vecino Más Próximo", "vecino"},
                              {"Interpolación Bilineal", "bilineal"},
                              {"Convolución Cúbica", "cubica"}},
                 .porDefecto = 0,
                 .obligatorio = true,
                 .ayudaCli = "transferencia de los niveles digitales"},
                {.clave = &kSistema,
                 .tipo = TipoCampo::Texto,
                 .etiqueta = "Sistema de referencia",
                 .opcionCli = "--sistema",
                 .textoPorDefecto = "UTM-30N",
                 .ayudaCli = "sistema de referencia de la imagen corregida (por defecto UTM-30N)"},
                {.clave = &kOmitir,
                 .tipo = TipoCampo::Texto,
                 .etiqueta = "Puntos omitidos",
                 .opcionCli = "--omitir",
                 .textoPorDefecto = "",
                 .ayudaCli = "puntos que no entran en la estimación, numerados desde 1 (N,N,...)"}};
    d.alAceptar = SoloValores([](const Valores& v) -> std::optional<Mensaje> {
        const double columnas = v.Numero(kColumnas), filas = v.Numero(kFilas);
        if (!(columnas > 0 && filas > 0 && columnas <= kLadoMaximo && filas <= kLadoMaximo))
            return Mensaje::Tabla(msg::kDimensionesCorregida);
        const double xMax = v.Numero(kXMaxima), xMin = v.Numero(kXMinima);
        const double yMax = v.Numero(kYMaxima), yMin = v.Numero(kYMinima);
        if (xMax < 0 || xMax < xMin || !std::isfinite(xMax) || !std::isfinite(xMin))
            return Mensaje::Tabla(msg::kCoordenadasUtm);
        if (yMax < 0 || yMax < yMin || !std::isfinite(yMax) || !std::isfinite(yMin))
            return Mensaje::Tabla(msg::kCoordenadasUtm);
        std::string malo;
        if (!Numeros(v.Texto(kOmitir), malo)) return Mensaje::Libre(Sustituir(texto::kPuntoInexistente, malo));
        return std::nullopt;
    });
    d.calcular = [](const Contexto& c) {
        Resultado r;
        const CImagen& e = *c.entradas[0];
        std::string error;
        auto puntos = LeerPuntosControl(c.ficheros[1].at(0), &error);
        if (!puntos) {
            r.Rechazar(Mensaje::Libre(error));
            return r;
        }
        std::string malo;
        const auto omitidos = Numeros(c.valores.Texto(kOmitir), malo);
        if (!omitidos) {
            r.Rechazar(Mensaje::Libre(Sustituir(texto::kPuntoInexistente, malo)));
            return r;
        }
        for (int n : *omitidos) {
            if (n > static_cast<int>(puntos->size())) {
                r.Rechazar(Mensaje::Libre(Sustituir(texto::kPuntoInexistente, std::to_string(n))));
                return r;
            }
            (*puntos)[static_cast<std::size_t>(n - 1)].activo = false;
        }
        const Estimacion est = EstimarPolinomio(*puntos);
        if (!est.Valida()) {
            r.Rechazar(Mensaje::Tabla(msg::kEstimacionIncorrecta));
            return r;
        }
        Rejilla g;
        g.xMax = c.valores.Numero(kXMaxima);
        g.xMin = c.valores.Numero(kXMinima);
        g.yMax = c.valores.Numero(kYMaxima);
        g.yMin = c.valores.Numero(kYMinima);
        g.columnas = c.valores.Entero(kColumnas);
        g.filas = c.valores.Entero(kFilas);
        CImagen s;
        s.pixeles = Muestras::Crear(e.tipoDato, static_cast<std::size_t>(g.filas) * static_cast<std::size_t>(g.columnas));
        if (!s.pixeles.Valido()) {
            r.FallarSistema(Mensaje::Libre(texto::kSinMemoriaOperacion));
            return r;
        }
        const auto metodo = static_cast<Remuestreo>(c.valores.Entero(kMetodo));
        if (!Remuestrear(metodo, e.pixeles, e.Filas(), e.Columnas(), est.B, est.A, g, s.pixeles, c.progreso)) {
            if (c.progreso.Cancelado())
                r.Cancelar();
            else
                r.Rechazar(Mensaje::Tabla(msg::kTipoNoReconocido));
            return r;
        }
        s.tipoDato = e.tipoDato;
        s.filas = static_cast<double>(g.filas);
        s.columnas = static_cast<double>(g.columnas);
        s.indicePaleta = e.indicePaleta;
        s.titulo = e.titulo;
        s.tipoFichero = e.tipoFichero;
        s.sistemaReferencia = c.valores.Texto(kSistema);
        s.unidades = "m";
        s.geo = e.geo;
        s.geo.minX = static_cast<float>(g.xMin);
        s.geo.maxX = static_cast<float>(g.xMax);
        s.geo.minY = static_cast<float>(g.yMin);
        s.geo.maxY = static_cast<float>(g.yMax);
        s.geo.resolucion = static_cast<float>(g.TamanoPixel());
        s.tieneImagen = true;
        r.imagenes.push_back(std::move(s));
        r.informes.push_back({"_Estimacion.txt", InformeEstimacion(est, *puntos), "Estimación", ""});
        // The errors as the errors dialog lists them.
        std::string t = "Nº Punto Control           Error(EL)\n";
        for (std::size_t k = 0; k < puntos->size(); ++k) {
            const int n = static_cast<int>(k) + 1;
            t += ((*puntos)[k].activo ? LineaErrorPunto(n, est.errores[k]) : LineaErrorPunto(n, "Omitido")) + "\n";
        }
        t += "Error Global. RMS\n" + TextoLf(est.rms) + "\n";
        r.consola = t;
        return r;
    };
    d.sufijo = [](const Valores& v) {
        static const char* const kSufijos[] = {"_Corregida_Geométricamente_Con_Vecino_Más_Próximo",
                                               "_Corregida_Geométricamente_Con_Interpolación_Bilineal",
                                               "_Corregida_Geométricamente_Con_Interpolación_Cúbica"};
        const int m = v.Entero(kMetodo);
        return std::string(m >= 0 && m < 3 ? kSufijos[m] : "") + "_Correccion_Geométrica";
    };
    return d;
}();

const Registro registro(kGeometrica);

}  // namespace

}  // namespace orvela
