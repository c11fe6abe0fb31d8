#include "app/CChildFrame.h"

#include <QStyle>
#include <algorithm>

#include "doc/CBrimarDoc.h"
#include "doc/CBrimarView.h"

CChildFrame::CChildFrame(Espacio& espacio, Interfaz& ui, int numero, QWidget* padre) : QMdiSubWindow(padre) {
    setAttribute(Qt::WA_DeleteOnClose);
    doc_ = new CBrimarDoc(this);
    vista_ = new CBrimarView(*doc_, espacio, ui, this);
    setWidget(vista_);
    setWindowTitle(QStringLiteral("Sin título %1").arg(numero));
    connect(doc_, &CBrimarDoc::nombreCambiado, this, [this](const QString& n) { setWindowTitle(n); });
    resize(480, 400);
}

void CChildFrame::AjustarAImagen(const QSize& maximo) {
    if (!doc_->TieneImagen() || isMaximized()) return;
    // Frame around the view: the difference between the window and its view.
    const QSize marco = size() - vista_->size();
    const int ancho = static_cast<int>(std::min<long>(doc_->Imagen().Columnas() + marco.width(), maximo.width()));
    const int alto = static_cast<int>(std::min<long>(doc_->Imagen().Filas() + marco.height(), maximo.height()));
    resize(std::max(ancho, 200), std::max(alto, 150));
}
