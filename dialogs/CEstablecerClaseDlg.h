// "Establecer clase": where the class file goes ("Guardar en", whose file
// title is shown), and how each click samples: "Puntos", "Cruces" or
// "Rectángulos" of half-height "Altura" and half-width "Anchura" (enabled
// only for rectangles).
//
// Object names: nombre, puntos, cruces, rectangulos, altura, anchura,
// guardarEn, aceptar, cancelar, ayuda.
#pragma once

#include <QDialog>
#include <string>

#include "classification/FicheroClase.h"

class Interfaz;
class QButtonGroup;
class QLineEdit;

class CEstablecerClaseDlg : public QDialog {
    Q_OBJECT
public:
    CEstablecerClaseDlg(Interfaz& ui, QWidget* padre = nullptr);

    // Valid once accepted.
    orvela::ModoMuestreo Modo() const;
    int Altura() const { return altura_; }
    int Anchura() const { return anchura_; }
    // The chosen path without its extension; the file is this + ".txt".
    const std::string& Stem() const { return stem_; }
    std::string Nombre() const;

private slots:
    void GuardarEn();
    void Aceptar();
    void CambiarModo();

private:
    Interfaz& ui_;
    QLineEdit* nombre_;
    QButtonGroup* modos_;
    QLineEdit* alturaEdit_;
    QLineEdit* anchuraEdit_;
    std::string stem_;
    int altura_ = 1, anchura_ = 1;
};
