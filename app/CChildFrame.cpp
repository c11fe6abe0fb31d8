#include "app/CChildFrame.h"

#include <QMdiArea>
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
    // The first image shown in a window sizes it, as far as the workspace
    // allows; later images leave the size the user chose.
    connect(doc_, &CBrimarDoc::imagenPuesta, this, [this] {
        if (ajustada_ || !mdiArea()) return;
        AjustarAImagen(mdiArea()->viewport()->size());
    });
    resize(480, 400);
}

void CChildFrame::AjustarAImagen(const QSize& maximo) {
    if (!doc_->TieneImagen() || isMaximized()) return;
    ajustada_ = true;
    // Frame around the picture: the window's border and the view's frame.
    ensurePolished();
    const QMargins m = contentsMargins();
    const QSize marco(m.left() + m.right() + 2 * vista_->frameWidth(), m.top() + m.bottom() + 2 * vista_->frameWidth());
    const int ancho = static_cast<int>(std::min<long>(doc_->Imagen().Columnas() + marco.width(), maximo.width()));
    const int alto = static_cast<int>(std::min<long>(doc_->Imagen().Filas() + marco.height(), maximo.height()));
    resize(std::max(ancho, 200), std::max(alto, 150));
}
