// "Crear paleta": sixteen fixed colours, each given a level, written as a
// palette file of 256 entries.
#pragma once

#include <QDialog>
#include <array>
#include <string>

class Interfaz;
class QLineEdit;
class QSpinBox;

class CCrearPaletaDlg : public QDialog {
    Q_OBJECT
public:
    explicit CCrearPaletaDlg(Interfaz& ui, QWidget* padre = nullptr);

    // Levels of the sixteen colours: -1 unused, 256 the colour of every
    // level given to no other colour, 0..255 a level.
    std::array<int, 16> Niveles() const;
    const std::string& Ruta() const { return ruta_; }

public slots:
    void accept() override;

private:
    void GuardarComo();

    Interfaz& ui_;
    QLineEdit* nombre_;
    std::array<QSpinBox*, 16> niveles_{};
    std::string ruta_;
};
