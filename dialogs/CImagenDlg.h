// "Imagen": the raster file to show in the active window and the palette
// to show it with.
#pragma once

#include <QDialog>
#include <string>

#include "image/CImagen.h"

class Interfaz;
class QButtonGroup;
class QLineEdit;

class CImagenDlg : public QDialog {
    Q_OBJECT
public:
    // Imagen: the file and the palette. SoloPaleta: "Cambiar paleta", the
    // palette group alone, for the image a window already shows.
    enum Modo { ImagenYPaleta, SoloPaleta };
    explicit CImagenDlg(Interfaz& ui, QWidget* padre = nullptr, Modo modo = ImagenYPaleta);

    const std::string& Ruta() const { return ruta_; }
    const orvela::Cabecera& Cabecera() const { return cabecera_; }
    // 0..5 the palettes that come with the program, 6 the chosen file.
    int CodigoPaleta() const;
    void PonerCodigoPaleta(int codigo);
    const std::string& RutaPaleta() const { return rutaPaleta_; }
    // The palette file already chosen (code 6).
    void PonerPaletaPersonalizada(const std::string& ruta);

public slots:
    void accept() override;

private:
    void Seleccionar();
    void ElegirPaleta();

    Interfaz& ui_;
    QLineEdit* entrada_;
    QLineEdit* paleta_;
    QButtonGroup* paletas_;
    std::string ruta_, rutaPaleta_;
    orvela::Cabecera cabecera_;
    bool aceptado_ = false;
    Modo modo_;
};
