// Declaration of an image operation: its dialog fields, its checks in their
// order, its computing function and its result suffix. The desktop command,
// the orvela-cli order and the table-driven tests are all built from it, so
// the common course of an operation is written once.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "image/CImagen.h"
#include "base/Mensajes.h"

namespace orvela {

// Keys of operation parameters. Every front end looks values up by key.
enum class Clave {
    Operacion,       // radio group "Operaciones"
    Escalar,
    Metodo,
    NdMinimo, NdMaximo,
    NvMinimo, NvMaximo,
    TipoDestino,     // data type of a new or converted image
    Filas, Columnas,
    Valor,
    Titulo,
    Tamano,          // filter window size index
    TipoFiltro,
    VariantePasoAlto, VariantePasoBajo, VarianteDireccional,
    Coeficientes,
};

enum class TipoCampo {
    Eleccion,     // radio group: value is the 0-based index of the option
    Entero,       // edit box holding a whole number
    Real,         // edit box holding a number
    Texto,        // edit box holding text
    ListaReales,  // several edit boxes (kernel coefficients), row order
};

struct Opcion {
    const char* etiqueta;  // radio text in the dialog
    const char* palabra;   // word of the CLI option
};

class Valores {
public:
    double Numero(Clave c) const;
    int Entero(Clave c) const { return static_cast<int>(Numero(c)); }
    const std::string& Texto(Clave c) const;
    const std::vector<double>& Lista(Clave c) const;
    bool Tiene(Clave c) const;
    void Poner(Clave c, double v) { numeros_[c] = v; }
    void Poner(Clave c, std::string v) { textos_[c] = std::move(v); }
    void Poner(Clave c, std::vector<double> v) { listas_[c] = std::move(v); }

private:
    std::map<Clave, double> numeros_;
    std::map<Clave, std::string> textos_;
    std::map<Clave, std::vector<double>> listas_;
};

struct Campo {
    Clave clave;
    TipoCampo tipo;
    const char* grupo = "";      // title of the dialog group that holds it
    const char* etiqueta = "";   // label beside an edit box
    const char* opcionCli = "";  // "--op"
    std::vector<Opcion> opciones;  // Eleccion only
    double porDefecto = 0;
    const char* textoPorDefecto = "";
    bool obligatorio = false;    // the CLI must give it (it has no default)
    // Title of the parameter dialog that opens after the main dialog is
    // accepted; nullptr when the field sits in the main dialog.
    const char* subdialogo = nullptr;
    // Whether the field takes part, given the fields before it; empty = always.
    std::function<bool(const Valores&)> aplica;
    // ListaReales: how many values, given the fields before it.
    std::function<int(const Valores&)> cantidad;
    const char* ayudaCli = "";   // Spanish help of the CLI option

    bool Aplica(const Valores& v) const { return !aplica || aplica(v); }
};

struct DeclEntrada {
    const char* boton;            // "&Seleccionar", "&Seleccionar primera", ...
    const char* nombre;           // filler of 61219 when it is missing
    bool admiteVentanaActiva;     // offers "Imagen de la ventana activa"
};

enum class Destino { Ventana, Fichero };

// What the computing function sees.
struct Contexto {
    std::vector<const CImagen*> entradas;
    const Valores& valores;
    Destino destino;
    // Fraction done, 0 to 1; may be empty. Called from the computing thread.
    std::function<void(double)> progreso;
};

struct InformeTexto {
    std::string final;      // fixed ending beside the stem ("_Estimacion.txt")
    std::string contenido;  // UTF-8; written as Windows-1252
};

struct Resultado {
    // Result images; the first is the one shown in the window. Titles are set
    // by the course unless `titulosPropios`.
    std::vector<CImagen> imagenes;
    // Fixed endings of the files of images after the first ("_VG_NORMAL").
    std::vector<std::string> finales;
    bool titulosPropios = false;
    std::optional<Mensaje> error;   // refused: nothing is written or shown
    std::vector<Mensaje> avisos;    // shown; the operation goes on
    // After an error in window mode, the input of this index is left in the
    // window (a quotient that met a zero shows the second image); -1 none.
    int entradaEnVentana = -1;
    std::vector<InformeTexto> informes;
    std::string consola;            // what orvela-cli prints
};

struct Declaracion {
    int idComando = 0;              // command id of the menu entry
    const char* orden = "";         // orvela-cli order
    const char* titulo = "";        // dialog title
    const char* resumen = "";       // one Spanish line for help listings
    const char* paginaAyuda = "";   // help page name
    const char* grupoEntrada = "Nombre de la Imagen de Entrada";
    std::vector<DeclEntrada> entradas;
    std::vector<Campo> campos;
    const char* grupoSalida = "Nombre de la Imagen de Salida";
    const char* botonGuardar = "&Guardar como";
    bool conSalida = true;          // writes an image

    // A file picked for input `indice` (after the extension and header
    // checks), knowing the headers already picked (empty where none).
    std::function<std::optional<Mensaje>(int indice, const Cabecera& elegida,
                                         const std::vector<std::optional<Cabecera>>& previas)>
        alElegir;
    // Checks of "Aceptar" after the input and output checks, in their order.
    std::function<std::optional<Mensaje>(const Valores&)> alAceptar;
    // Checks of the handler once the inputs are loaded, before anything is
    // replaced or written.
    std::function<std::optional<Mensaje>(const std::vector<const CImagen*>&, const Valores&)> antesDeCalcular;
    std::function<Resultado(const Contexto&)> calcular;
    // Suffix of the result title (after the first input's title).
    std::function<std::string(const Valores&)> sufijo;
    // Two-image operations add the second input's title after the suffix.
    bool tituloConSegunda = false;
};

// Every declared operation, in command-id order.
const std::vector<const Declaracion*>& Catalogo();
const Declaracion* BuscarPorOrden(std::string_view orden);
const Declaracion* BuscarPorComando(int id);

// Registers a declaration at start-up; the core is linked whole, so every
// operation file that defines one is in the catalogue.
struct Registro {
    explicit Registro(const Declaracion& d);
};

Valores ValoresPorDefecto(const Declaracion& d);

// Suffix of the option chosen in a radio group (empty outside the list).
std::function<std::string(const Valores&)> SufijoSegun(Clave c, std::vector<const char*> sufijos);
// A fixed suffix.
std::function<std::string(const Valores&)> SufijoFijo(const char* sufijo);

// The usual computation of an operation with one result: a record with the
// first input's header and a zeroed buffer of `codigo` (0: the input's own
// type), filled by `rellenar(salida)`. `rellenar` returns false for a type
// code its kernel does not know (61250), or the message that stops it.
Resultado UnaSalida(const Contexto& c, int codigo, const std::function<bool(CImagen& salida)>& rellenar);
Resultado UnaSalida(const Contexto& c, int codigo,
                    const std::function<std::optional<Mensaje>(CImagen& salida)>& rellenar);

}  // namespace orvela
