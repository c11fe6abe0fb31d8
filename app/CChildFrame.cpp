#include "app/CChildFrame.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <QStyle>
#include <algorithm>

#include "doc/CBrimarDoc.h"
#include "doc/CBrimarView.h"
#include "doc/ComandosDocumento.h"

CChildFrame::CChildFrame(Espacio& espacio, Interfaz& ui, int numero, QWidget* padre)
    : QMdiSubWindow(padre), espacio_(espacio), ui_(ui) {
    setAttribute(Qt::WA_DeleteOnClose);
    doc_ = new CBrimarDoc(this);
    vista_ = new CBrimarView(*doc_, espacio, ui, this);
    setWidget(vista_);
    setWindowTitle(QStringLiteral("Sin título %1").arg(numero));
    connect(doc_, &CBrimarDoc::tituloCambiado, this, [this](const QString& t) { setWindowTitle(t); });
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
    MeterEnEspacio();
}

void CChildFrame::MeterEnEspacio() {
    QMdiArea* area = mdiArea();
    if (!area || isMaximized() || isMinimized()) return;
    const QSize espacio = area->viewport()->size();
    if (espacio.width() <= 0 || espacio.height() <= 0) return;
    QRect g = geometry();
    g.setWidth(std::min(g.width(), espacio.width()));
    g.setHeight(std::min(g.height(), espacio.height()));
    // Moved back as far as needed, then shrunk if it still does not fit.
    g.moveLeft(std::max(0, std::min(g.left(), espacio.width() - g.width())));
    g.moveTop(std::max(0, std::min(g.top(), espacio.height() - g.height())));
    if (g != geometry()) setGeometry(g);
}

void CChildFrame::CerrarSinPreguntar() {
    sinPreguntar_ = true;
    close();
}

void CChildFrame::closeEvent(QCloseEvent* e) {
    // An unsaved result is not lost without the user's word.
    if (!sinPreguntar_ && !PermitirDescartar(*doc_, espacio_, ui_)) {
        e->ignore();
        return;
    }
    QMdiSubWindow::closeEvent(e);
}
