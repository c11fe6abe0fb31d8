// The dialog of an operation, built from its declaration: the input group,
// the fields in declared order, the output group and the buttons "&Aceptar",
// "&Cancelar" and "Ayuda". The checks of the file pickers and of "&Aceptar"
// run here; the handler's course is in CursoDialogo.
//
// Object names of the controls (the tests script the dialog by them):
//   grupo_entrada<i>        group box that opens with input i (input 0's and
//                           each input's with a group title of its own)
//   entrada<i>_activa       radio "Imagen de la ventana activa" of input i
//                           (only for an input that admits the active window)
//   entrada<i>_fichero      radio of input i taken from a file (idem)
//   entrada<i>_seleccionar  button that picks the file of input i
//   entrada<i>_nombre       read-only edit with the picked file's title
//   entrada<i>_abiertas     list of the open images (picking one uses its
//                           samples in memory)
//   entrada<i>_lista        list of the picked bands or files of a list input
//                           ("Banda 1:  tm1"), with the buttons
//   entrada<i>_quitar, entrada<i>_subir, entrada<i>_bajar
//                           (entrada<i>_seleccionar adds one)
//   campo_<c>_<k>           radio k of the choice whose key is named c, or
//                           edit k of a list of numbers
//   campo_<c>               edit of a whole number, number or text; check
//                           box; text of a table (one row a line)
//   salida_ventana          radio "Visualizar en la ventana actual"
//   salida_fichero          radio of the output written as a file pair
//   salida_guardar          button that picks the output name
//   salida_nombre           read-only edit with the output's file title
//   aceptar, cancelar, ayuda
// The parameter dialogs (fields with a `subdialogo`) use the same field
// names and the buttons aceptar and cancelar.
//
// The operation's "Aceptar" checks (`alAceptar`) see, at the main dialog,
// the values of its own fields; at the OK of each parameter dialog they see
// those values plus the parameter dialogs' fields so far. A check of a
// parameter-dialog field therefore tests `Tiene` first.
#pragma once

#include <QDialog>
#include <QMetaObject>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "image/CImagen.h"
#include "operations/Operacion.h"

class Interfaz;
class QAbstractButton;
class QCheckBox;
class QComboBox;
class QListWidget;
class QPlainTextEdit;
class QGroupBox;
class QLineEdit;
class QRadioButton;
class QWidget;

// The controls of the fields of one dialog (the main one or a parameter
// dialog): builds them, keeps `aplica` live and reads the values back.
class CamposDialogo {
public:
    // Builds the controls of `campos` inside `padre` (whose layout receives
    // the group boxes). `base` holds the values known before these fields.
    CamposDialogo(QWidget* padre, const std::vector<const orvela::Campo*>& campos, const orvela::Valores& base);
    ~CamposDialogo();
    CamposDialogo(const CamposDialogo&) = delete;
    CamposDialogo& operator=(const CamposDialogo&) = delete;

    // Values of the fields that take part, added to `v`. False, with the
    // sentence in `error`, when an edit does not hold a valid number.
    bool Leer(orvela::Valores& v, QString& error) const;
    // Enables the controls of the fields that take part given the present
    // choices.
    void Actualizar();

private:
    struct Control {
        const orvela::Campo* campo;
        QGroupBox* grupo = nullptr;
        std::vector<QRadioButton*> radios;
        std::vector<QLineEdit*> edits;
        std::vector<QWidget*> etiquetas;
        QCheckBox* casilla = nullptr;
        QPlainTextEdit* tabla = nullptr;
    };
    std::vector<Control> controles_;
    orvela::Valores base_;
    std::vector<QMetaObject::Connection> conexiones_;

    bool LeerUno(const Control& c, orvela::Valores& v, QString& error) const;
};

class COperacionDlg : public QDialog {
    Q_OBJECT
public:
    // An open image the pickers offer: its window's name and its record.
    struct Abierta {
        std::string nombre;
        const orvela::CImagen* imagen = nullptr;
    };
    // One accepted pick of an input.
    struct Eleccion {
        std::string ruta;    // full path of the raster or file ("" for an open image)
        std::string titulo;  // file title or window name
        orvela::Cabecera cabecera;
        const orvela::CImagen* abierta = nullptr;  // samples already in memory
    };
    struct Entrada {
        bool ventana = false;   // the image of the active window
        bool elegido = false;   // a single input: something was picked (even if refused)
        bool aceptado = false;  // a single input: the pick passed the checks
        std::vector<Eleccion> elecciones;  // accepted picks, in order
        // The single input's pick (empty Eleccion when none).
        const Eleccion& Unica() const;
    };

    // `cabeceraVentana`: header of the active window's image when there is
    // one; the checks of a picked file see it in place of an input that is
    // taken from the window. `abiertas`: images of the open windows.
    COperacionDlg(const orvela::Declaracion& d, Interfaz& ui,
                  std::optional<orvela::Cabecera> cabeceraVentana = std::nullopt, QWidget* padre = nullptr,
                  std::vector<Abierta> abiertas = {});

    const std::vector<Entrada>& Entradas() const { return entradas_; }
    // What has been picked, as the "Aceptar" checks see it.
    orvela::Elegidas Elegidas() const;
    bool SalidaVentana() const;
    // Chosen output path without extension (the stem of the file pair).
    const std::string& Stem() const { return stem_; }
    // Values of the main dialog's fields (valid once accepted).
    const orvela::Valores& Valores() const { return valores_; }

    // A file input's pick that passed its checks is reviewed by the user
    // before it is taken (the control points' errors); false gives it up.
    std::function<bool(int indice, const std::string& ruta)> revisarFichero;

private slots:
    void Aceptar();

private:
    const orvela::Declaracion& d_;
    Interfaz& ui_;
    std::optional<orvela::Cabecera> cabeceraVentana_;
    std::vector<Abierta> abiertas_;
    std::vector<Entrada> entradas_;
    std::vector<QRadioButton*> radiosVentana_;
    std::vector<QLineEdit*> nombresEntrada_;
    std::vector<QListWidget*> listas_;
    QRadioButton* salidaVentana_ = nullptr;
    QRadioButton* salidaFichero_ = nullptr;
    QLineEdit* nombreSalida_ = nullptr;
    std::string stem_;
    bool salidaElegida_ = false;
    orvela::Valores valores_;
    std::optional<CamposDialogo> campos_;

    void ElegirEntrada(int i);
    void ElegirAbierta(int i, int k);
    // Checks a pick of input i and takes it (single input: replaces, list:
    // appends). False, with the message shown, when it is refused.
    bool Tomar(int i, Eleccion e);
    // Headers picked before a new pick of input i, in the order the checks
    // count them (lists expanded).
    std::vector<std::optional<orvela::Cabecera>> Previas(int i) const;
    void RellenarLista(int i);
    void Mover(int i, int paso);
    void Quitar(int i);
    void ElegirSalida();
};

// The parameter dialogs of the fields with a `subdialogo`, in declared
// order, after the main dialog was accepted with `v` (fields that share a
// title one after the other share a dialog). Adds their values to `v`.
// False when one is cancelled: the command is then abandoned.
bool EjecutarSubdialogos(const orvela::Declaracion& d, Interfaz& ui, orvela::Valores& v,
                         const orvela::Elegidas& elegidas = {}, QWidget* padre = nullptr);
