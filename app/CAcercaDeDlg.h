// "Acerca de Orvela": the about box.
#pragma once

#include <QDialog>

class CAcercaDeDlg : public QDialog {
    Q_OBJECT
public:
    explicit CAcercaDeDlg(QWidget* padre = nullptr);
};
