// The training phase, the class sampling on the view and the decision
// inspector: commands of the classification that work on the view rather
// than through an operation dialog.
#pragma once

#include "classification/Entrenamiento.h"

class CBrimarView;
class CDecisionDlg;
class Espacio;
class Interfaz;
class QWidget;

// "Fase entrenamiento" (32816): accepting the dialog replaces `e`;
// cancelling keeps it.
void ComandoFaseEntrenamiento(orvela::Entrenamiento& e, Interfaz& ui, QWidget* padre);

// "Establecer clase" (32819), checked in this order: training done (61279),
// an active window (61216) with an image (61264) named exactly as one of the
// training bands (61280). After the dialog the view of `vista` samples: a
// left click on the image adds a group of samples and stays marked, one off
// it adds nothing (61258), the right click writes the class file with the
// samples of every training band read afresh from its file.
void ComandoEstablecerClase(const orvela::Entrenamiento& e, Espacio& espacio, CBrimarView* vista, Interfaz& ui,
                            QWidget* padre);

// "Inspeccionar decisión": on a classified image of the active window, each
// left click on a pixel shows in the inspector's window why the pixel took
// its class; a right click ends. A classification made in this session is
// recognised by its samples; for any other the bands, the class files and
// the rule are asked for.
void ComandoInspeccionarDecision(Espacio& espacio, CBrimarView* vista, Interfaz& ui, QWidget* padre);
// The inspector's window, once a click has opened it (nullptr before).
CDecisionDlg* VentanaDecision(QWidget* padre);
