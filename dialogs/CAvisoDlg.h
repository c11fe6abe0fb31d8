// "AVISO DE Brimar": offered before an operation replaces the image of the
// active window. Saves the present image as the user chooses (mode 0 to its
// own path, 1 under a new name, 2 not at all). False when the user cancels:
// the whole operation is then abandoned.
#pragma once

#include <QDialog>
#include <string>

class CBrimarDoc;
class Espacio;
class Interfaz;
class QButtonGroup;
class QLineEdit;

// Asks and saves. A window without an image, or holding a colour composite,
// has nothing to protect: true without asking. A save that fails is
// reported and abandons the operation (false).
// `espacio`, when given, shows the line of the file saved.
bool PreguntarAviso(CBrimarDoc& doc, Interfaz& ui, Espacio* espacio = nullptr);

class CAvisoDlg : public QDialog {
    Q_OBJECT
public:
    CAvisoDlg(const CBrimarDoc& doc, Interfaz& ui, QWidget* padre = nullptr);

    // 0 save to the present path, 1 under the new name, 2 do not save.
    int Modo() const;
    // Chosen path without extension (mode 1).
    const std::string& Ruta() const { return ruta_; }
    // File title of the chosen name.
    const std::string& Titulo() const { return titulo_; }

public slots:
    void accept() override;

private:
    void ElegirFichero();

    Interfaz& ui_;
    QButtonGroup* modos_;
    QLineEdit* nombreNuevo_;
    std::string ruta_, titulo_;
};
