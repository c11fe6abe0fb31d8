// Declaration of an image operation: its inputs, its dialog fields, its
// checks in their order, its computing function and its result suffix. The
// desktop command, the orvela-cli order and the table-driven tests are all
// built from it, so the common course of an operation is written once.
//
// A declaration is plain data. Each operation file defines its own parameter
// keys beside its declaration:
//
//     const Clave kTamano{"tamano"};
//     d.campos = {{.clave = &kTamano, .tipo = TipoCampo::Eleccion, ...}};
//     ... c.valores.Entero(kTamano) ...
//
// so adding an operation touches only its own file. Reading a value the
// declaration does not give is a programming error (`ValorNoDeclarado`),
// never a silent 0.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Grafico.h"
#include "base/Mensajes.h"
#include "base/Progreso.h"
#include "image/CImagen.h"
#include "image/Visualizacion.h"

namespace orvela {

// Key of one parameter. Values are found by the key's address; the name
// names the dialog controls ("campo_<nombre>") and the error of a value
// that is not there.
struct Clave {
    const char* nombre;
};

enum class TipoCampo {
    Eleccion,     // radio group: value is the 0-based index of the option
    Entero,       // edit box holding a whole number
    Real,         // edit box holding a number
    Texto,        // edit box holding text
    ListaReales,  // several edit boxes (kernel coefficients), row order
    Casilla,      // check box: 1 or 0; a flag without value in the CLI
    Tabla,        // rows of numbers; one repeated CLI option per row
};

struct Opcion {
    const char* etiqueta;  // radio text in the dialog
    const char* palabra;   // word of the CLI option
};

// Rows of numbers of a Tabla field.
using TablaNumeros = std::vector<std::vector<double>>;

// A value read that the declaration does not give: a fault of the program.
class ValorNoDeclarado : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

class Valores {
public:
    // Eleccion, Entero, Real and Casilla.
    double Numero(const Clave& c) const;
    int Entero(const Clave& c) const { return static_cast<int>(Numero(c)); }
    bool Marcada(const Clave& c) const { return Numero(c) != 0; }
    const std::string& Texto(const Clave& c) const;
    const std::vector<double>& Lista(const Clave& c) const;
    const TablaNumeros& Tabla(const Clave& c) const;
    bool Tiene(const Clave& c) const { return valores_.count(&c) != 0; }

    void Poner(const Clave& c, double v) { valores_[&c] = v; }
    void Poner(const Clave& c, std::string v) { valores_[&c] = std::move(v); }
    void Poner(const Clave& c, const char* v) { valores_[&c] = std::string(v); }
    void Poner(const Clave& c, std::vector<double> v) { valores_[&c] = std::move(v); }
    void Poner(const Clave& c, TablaNumeros v) { valores_[&c] = std::move(v); }

private:
    std::map<const Clave*, std::variant<double, std::string, std::vector<double>, TablaNumeros>> valores_;
    template <class T> const T& Buscar(const Clave& c) const;
};

struct Campo {
    const Clave* clave = nullptr;
    TipoCampo tipo = TipoCampo::Real;
    const char* grupo = "";      // title of the dialog group that holds it
    const char* etiqueta = "";   // label beside an edit box or check box
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
    // ListaReales: how many values; Tabla: how many numbers a row (-1: any).
    std::function<int(const Valores&)> cantidad;
    // Tabla: column titles in the dialog.
    std::vector<const char*> columnas;
    const char* ayudaCli = "";   // Spanish help of the CLI option

    bool Aplica(const Valores& v) const { return !aplica || aplica(v); }
};

enum class ClaseEntrada {
    Imagen,   // one image: the active window's or a picked ".ozm"
    Bandas,   // a list of images, each picked in its own file dialog
    Fichero,  // a file that is not an image (control points, a class file)
};

struct DeclEntrada {
    const char* boton = "&Seleccionar";         // "&Seleccionar primera", ...
    const char* nombre = relleno::kNingunaImagen;  // filler of 61219 when it is missing
    bool admiteVentanaActiva = false;            // offers "Imagen de la ventana activa"
    ClaseEntrada clase = ClaseEntrada::Imagen;
    // Bandas, and a Fichero given more than once: how many may be picked.
    int minimo = 1, maximo = 1;
    // Fichero: the chooser's filter ("Puntos de control (*.txt)"), the
    // extensions accepted, and the check of a picked file by its reader.
    const char* filtro = "";
    std::vector<const char*> extensiones;
    std::function<std::optional<Mensaje>(const std::string& ruta)> leer;
    // The CLI takes it by this (repeatable) option; positional when empty.
    const char* opcionCli = "";
    // Name in the CLI's usage line ("ROJO", "BANDA", "FICHERO.txt").
    const char* etiquetaCli = "";
    const char* ayudaCli = "";
    // Title of a group box of its own in the dialog, from this input on
    // (the first input's group is the declaration's `grupoEntrada`).
    const char* grupo = nullptr;
};

enum class Destino { Ventana, Fichero };

// What the computing function sees.
struct Contexto {
    // Every image input in declared order, lists expanded.
    std::vector<const CImagen*> entradas;
    // The same by declared input: one image, the bands of a list, none for
    // a file input.
    std::vector<std::vector<const CImagen*>> porEntrada;
    // Paths of the file inputs, by declared input (empty for image inputs).
    std::vector<std::vector<std::string>> ficheros;
    const Valores& valores;
    Destino destino;
    // Progress and cancel: long loops report through it and stop when it
    // is cancelled (the result is then thrown away).
    Progreso& progreso;
};

struct MatrizConfusion;

struct InformeTexto {
    std::string final;      // fixed ending beside the stem ("_Estimacion.txt")
    std::string contenido;  // UTF-8; written as Windows-1252
    std::string titulo;     // title of its window on the desktop
    std::string ruta;       // a path the user gave (`--informe`); wins over `final`
    // What "Guardar como" of its window writes when the saved report is
    // formatted apart from the text shown (UTF-8; empty: the text shown).
    std::string guardado;
    // The figures of a confusion matrix: the desktop shows them as a table
    // beside the text.
    std::shared_ptr<const MatrizConfusion> confusion;
};

// A colour composite: display only. The desktop shows it in a window of
// its own; orvela-cli writes its picture to `ruta` (".png", else BMP)
// when one is given.
struct ComposicionResultado {
    ComposicionColor planos;
    // Title, reference system and georeference of the window (no samples).
    CImagen cabecera;
    std::string ruta;
};

// Figures shown in a small dialog of read-only boxes, one labelled box a
// figure, inside one group.
struct CuadroValores {
    std::string titulo, grupo;
    std::string nota;  // a line above the group ("" for none)
    std::vector<std::pair<std::string, std::string>> filas;  // label, value as shown
};

// Why an operation gave no result: a message of the table that refuses what
// was asked, a failure of the system (a file that cannot be written,
// memory), or the user's cancel.
enum class ClaseFallo { Rechazo, Sistema, Cancelado };
struct Fallo {
    ClaseFallo clase = ClaseFallo::Rechazo;
    Mensaje mensaje;
    bool operator==(const Fallo&) const = default;
};

struct Resultado {
    // Result images; the first is the one that goes where the dialog says,
    // the others open in windows of their own. Titles are set by the course
    // unless `titulosPropios`.
    std::vector<CImagen> imagenes;
    // Fixed endings of the image files, one per image: "" for the stem
    // itself ("_VG_NORMAL", "_CP1"). Images without one: the first takes the
    // stem, the others "_2", "_3", ...
    std::vector<std::string> finales;
    bool titulosPropios = false;
    std::optional<Fallo> fallo;      // nothing is written or shown
    std::vector<Mensaje> avisos;     // shown; the operation goes on
    // After a refusal in window mode, the input of this index is left in the
    // window (a quotient that met a zero shows the second image); -1 none.
    int entradaEnVentana = -1;
    std::vector<InformeTexto> informes;
    std::vector<Grafico> graficos;
    std::optional<ComposicionResultado> composicion;
    std::optional<CuadroValores> cuadro;
    std::string consola;             // what orvela-cli prints

    void Rechazar(Mensaje m) { fallo = Fallo{ClaseFallo::Rechazo, std::move(m)}; }
    void FallarSistema(Mensaje m) { fallo = Fallo{ClaseFallo::Sistema, std::move(m)}; }
    void Cancelar();
    const Mensaje* Error() const { return fallo ? &fallo->mensaje : nullptr; }
    std::optional<Mensaje> Motivo() const { return fallo ? std::optional<Mensaje>(fallo->mensaje) : std::nullopt; }
};

// What has been picked for the inputs, as the "Aceptar" checks see it.
struct Elegidas {
    std::vector<std::vector<Cabecera>> cabeceras;    // by declared input (image inputs)
    std::vector<std::vector<std::string>> ficheros;  // by declared input (file inputs)
    // By declared input: taken from the active window (the desktop only;
    // empty where none is).
    std::vector<bool> ventana;
    bool DeVentana(std::size_t i) const { return i < ventana.size() && ventana[i]; }
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
    // The CLI's last argument names a prefix of several results ("PREFIJO").
    bool salidaPrefijo = false;

    // A file picked for image input `indice` (after the extension and header
    // checks), knowing the headers already picked in order (lists expanded;
    // empty where none).
    std::function<std::optional<Mensaje>(int indice, const Cabecera& elegida,
                                         const std::vector<std::optional<Cabecera>>& previas)>
        alElegir;
    // Checks of "Aceptar" after the input and output checks, in their order.
    std::function<std::optional<Mensaje>(const Valores&, const Elegidas&)> alAceptar;
    // Checks of the handler once the inputs are loaded, before anything is
    // replaced or written.
    std::function<std::optional<Mensaje>(const std::vector<const CImagen*>&, const Valores&)> antesDeCalcular;
    std::function<Resultado(const Contexto&)> calcular;
    // Suffix of the result title (after the first input's title).
    std::function<std::string(const Valores&)> sufijo;
    // Two-image operations add the second input's title after the suffix.
    bool tituloConSegunda = false;
    // Input from the mouse: when `conRectangulo` is true for the values of
    // the dialog, the desktop asks for a rectangle dragged on the active
    // window's image and `ponerRectangulo` turns its rows and columns (both
    // ends included) into values before the course goes on. orvela-cli
    // takes typed values instead.
    std::function<bool(const Valores&)> conRectangulo;
    std::function<void(Valores&, long fila1, long columna1, long fila2, long columna2)> ponerRectangulo;

    bool OfreceVentanaActiva() const;
    // Whether the declaration has a field with this key.
    bool Declara(const Clave& c) const;
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

// The key of the field named `nombre` (tests and generic front ends);
// ValorNoDeclarado when the declaration has none.
const Clave& ClaveDe(const Declaracion& d, std::string_view nombre);

// Default value of each field that takes part (in declared order).
Valores ValoresPorDefecto(const Declaracion& d);
// `v` with the default of each field that takes part and has no value.
Valores Completar(const Declaracion& d, Valores v);
void PonerPorDefecto(const Campo& c, Valores& v);

// Suffix of the option chosen in a radio group (empty outside the list).
std::function<std::string(const Valores&)> SufijoSegun(const Clave& c, std::vector<const char*> sufijos);
// A fixed suffix.
std::function<std::string(const Valores&)> SufijoFijo(const char* sufijo);
// An "Aceptar" check that only looks at the values.
std::function<std::optional<Mensaje>(const Valores&, const Elegidas&)> SoloValores(
    std::function<std::optional<Mensaje>(const Valores&)> f);

// The usual computation of an operation with one result: a record with the
// first input's header and a zeroed buffer of `codigo` (0: the input's own
// type), filled by `rellenar(salida)`. `rellenar` returns false for a type
// code its kernel does not know (61250), or the message that refuses it.
// A cancelled computation gives the cancelled result.
Resultado UnaSalida(const Contexto& c, int codigo, const std::function<bool(CImagen& salida)>& rellenar);
Resultado UnaSalida(const Contexto& c, int codigo,
                    const std::function<std::optional<Mensaje>(CImagen& salida)>& rellenar);

}  // namespace orvela
