#include "app/CMainFrame.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMenuBar>
#include <QPainter>
#include <QSettings>
#include <QStatusBar>
#include <QToolBar>
#include <map>
#include <set>

#include "app/CAcercaDeDlg.h"
#include "app/CChildFrame.h"
#include "app/Iconos.h"
#include "dialogs/Interfaz.h"
#include "dialogs/TablaComandos.h"
#include "dialogs/CCrearPaletaDlg.h"
#include "dialogs/CEditorPuntosDlg.h"
#include "dialogs/ComandosClases.h"
#include "dialogs/ComandosEspacio.h"
#include "dialogs/CursoDialogo.h"
#include "dialogs/VentanasResultado.h"
#include "dialogs/Ficheros.h"
#include "doc/CBrimarDoc.h"
#include "doc/CBrimarView.h"
#include "doc/ComandosDocumento.h"
#include "operations/ClasificacionesHechas.h"
#include "operations/Operacion.h"

using orvela::Mensaje;
namespace msg = orvela::msg;

const char* const CMainFrame::kMensajeSinPaletas =
    "ERROR. Asegúrese de que la carpeta con las paletas \nestá en el directorio del ejecutable. Si el problema\n"
    "persiste, reinstale el software.\n";

namespace {

// The supervised classifiers share one declaration; the menu entries of the
// parallelepiped and maximum likelihood rules open it with their rule
// chosen.
void Clasificar(CMainFrame& f, int regla) {
    static std::map<int, orvela::Declaracion> conRegla;
    auto it = conRegla.find(regla);
    if (it == conRegla.end()) {
        const orvela::Declaracion* base = orvela::BuscarPorOrden("supervisada");
        if (!base) return;
        orvela::Declaracion d = *base;
        for (auto& c : d.campos)
            if (std::string_view(c.clave->nombre) == "regla") c.porDefecto = regla;
        it = conRegla.emplace(regla, std::move(d)).first;
    }
    EjecutarOperacion(it->second, f, f.Ui());
}

// Commands outside the operation declarations: one table from a command id
// to its handler. The menu enables exactly what is here or declared.
using Manejador = void (*)(CMainFrame&);
const std::map<int, Manejador>& Manejadores() {
    static const std::map<int, Manejador> tabla = {
        {cmd::kGuardar, [](CMainFrame& f) { ComandoGuardar(f, f.Ui()); }},
        {cmd::kParalelepipedos, [](CMainFrame& f) { Clasificar(f, 1); }},
        {cmd::kMaximaProbabilidad, [](CMainFrame& f) { Clasificar(f, 2); }},
        {cmd::kEditorPuntos, [](CMainFrame& f) { ComandoEditorPuntos(f, f.Ui(), &f); }},
        {cmd::kFaseEntrenamiento, [](CMainFrame& f) { ComandoFaseEntrenamiento(f.Entrenamiento(), f.Ui(), &f); }},
        {cmd::kEstablecerClase,
         [](CMainFrame& f) { ComandoEstablecerClase(f.Entrenamiento(), f, f.VistaActiva(), f.Ui(), &f); }},
        {cmd::kInspeccionarDecision,
         [](CMainFrame& f) { ComandoInspeccionarDecision(f, f.VistaActiva(), f.Ui(), &f); }},
        {cmd::kGuardarComo, [](CMainFrame& f) { ComandoGuardarComo(f, f.Ui()); }},
        {cmd::kInformacion, [](CMainFrame& f) { ComandoInformacion(f, f.Ui(), &f); }},
        {cmd::kExportarAscii, [](CMainFrame& f) { ComandoExportarAscii(f, f.Ui()); }},
        {cmd::kExportarBmp, [](CMainFrame& f) { ComandoExportarBmp(f, f.Ui()); }},
        {cmd::kSalir, [](CMainFrame& f) { f.close(); }},
        {cmd::kImagen, [](CMainFrame& f) { ComandoImagen(f, f.Ui(), &f); }},
        {cmd::kNuevaVentana, [](CMainFrame& f) { f.NuevaVentana(); }},
        {cmd::kHistograma, [](CMainFrame& f) { ComandoHistograma(f, f.Ui(), &f); }},
        {cmd::kNivelDigital, [](CMainFrame& f) { f.ConsultarPixel(); }},
        {cmd::kCrearPaleta,
         [](CMainFrame& f) {
             CCrearPaletaDlg dlg(f.Ui(), &f);
             if (f.Ui().Ejecutar(dlg) && dlg.result() == QDialog::Accepted) f.Confirmar(TextoGuardado({dlg.Ruta()}));
         }},
        {cmd::kZoomAdelante, [](CMainFrame& f) { f.EnVista([](CBrimarView& v) { v.ZoomAdelante(); }); }},
        {cmd::kZoomAtras, [](CMainFrame& f) { f.EnVista([](CBrimarView& v) { v.ZoomAtras(); }); }},
        {cmd::kPantallaCompleta, [](CMainFrame& f) { f.EnVista([](CBrimarView& v) { v.PantallaCompleta(); }); }},
        {cmd::kPantallaNormal, [](CMainFrame& f) { f.EnVista([](CBrimarView& v) { v.PantallaNormal(); }); }},
        {cmd::kMostrarLeyenda, [](CMainFrame& f) { f.EnVista([](CBrimarView& v) { v.MostrarLeyenda(); }); }},
        {cmd::kContenidos, [](CMainFrame& f) { MostrarAyuda(nullptr, &f); }},
        {cmd::kTemasAyuda, [](CMainFrame& f) { MostrarAyuda("", &f); }},
        {cmd::kAcercaDe,
         [](CMainFrame& f) {
             CAcercaDeDlg dlg(&f);
             f.Ui().Ejecutar(dlg);
         }},
    };
    return tabla;
}

const char* const kIndicadores[3] = {"MAY", "NUM", "DESP"};

// A pane of the status bar that never overlaps its neighbours: it asks for
// its usual width (or that of its text), gives way down to a few letters
// when the window is narrow, and then shows its text cut short with "..."
// and whole in its tool tip.
class PanelEstado : public QLabel {
public:
    PanelEstado(int anchoHabitual, QWidget* padre) : QLabel(padre), habitual_(anchoHabitual) {
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }
    QSize sizeHint() const override {
        const QSize h = QLabel::sizeHint();
        return QSize(std::max(habitual_, Ancho(Mostrado()) + 12), h.height());
    }
    QSize minimumSizeHint() const override {
        return QSize(std::min(habitual_, fontMetrics().horizontalAdvance(QStringLiteral("MMMM")) + 8),
                     QLabel::minimumSizeHint().height());
    }
    // The text as drawn: tabs as spaces.
    QString Mostrado() const { return QString(text()).replace(QLatin1Char('\t'), QStringLiteral("    ")); }
    int Ancho(const QString& t) const { return fontMetrics().horizontalAdvance(t); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        drawFrame(&p);
        const QRect r = contentsRect().adjusted(4, 0, -4, 0);
        const QString t = fontMetrics().elidedText(Mostrado(), Qt::ElideRight, r.width());
        p.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
        p.drawText(r, static_cast<int>(alignment()) | Qt::TextSingleLine, t);
        setToolTip(t == Mostrado() ? QString() : Mostrado());
    }

private:
    int habitual_;
};

}  // namespace

CMainFrame::CMainFrame(Interfaz* ui, QWidget* padre) : QMainWindow(padre) {
    if (!ui) {
        uiPropia_ = std::make_unique<InterfazWidgets>(this);
        ui = uiPropia_.get();
    }
    ui_ = ui;
    // The decision inspector recognises the classifications of the session.
    orvela::ActivarRegistroClasificaciones();
    setWindowTitle(QStringLiteral("Orvela"));
    if (QApplication::windowIcon().isNull()) QApplication::setWindowIcon(IconoAplicacion());
    setWindowIcon(QApplication::windowIcon());

    mdi_ = new QMdiArea(this);
    mdi_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdi_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(mdi_);
    connect(mdi_, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* s) {
        if (s) ultima_ = s;
        ActualizarTitulo();
        ActualizarBotones();
    });

    CrearMenus();
    // Windows above the command table: "Cambiar paleta", recent images and
    // the "Ventana" menu.
    for (QAction* a : menuBar()->actions()) {
        if (a->text() == QStringLiteral("Fichero")) menuFichero_ = a->menu();
        if (a->text() == QStringLiteral("Ayuda")) {
            menuVentana_ = new QMenu(QStringLiteral("Ventana"), this);
            menuVentana_->setObjectName(QStringLiteral("menuVentana"));
            menuBar()->insertMenu(a, menuVentana_);
            connect(menuVentana_, &QMenu::aboutToShow, this, &CMainFrame::ActualizarMenuVentana);
        }
    }
    cambiarPaleta_ = new QAction(QStringLiteral("Cambiar paleta"), this);
    cambiarPaleta_->setObjectName(QStringLiteral("cambiarPaleta"));
    connect(cambiarPaleta_, &QAction::triggered, this, [this] { ComandoCambiarPaleta(*this, *ui_, this); });
    if (QAction* imagen = Accion(cmd::kImagen)) {
        QMenu* m = nullptr;
        for (QObject* o : imagen->associatedObjects())
            if (auto* x = qobject_cast<QMenu*>(o)) m = x;
        if (m) {
            const auto lista = m->actions();
            const qsizetype k = lista.indexOf(imagen);
            m->insertAction(k + 1 < lista.size() ? lista[k + 1] : nullptr, cambiarPaleta_);
        }
    }
    if (menuFichero_) {
        separadorRecientes_ = menuFichero_->insertSeparator(Accion(cmd::kSalir));
        for (int i = 0; i < kMaximoRecientes; ++i) {
            auto* a = new QAction(this);
            a->setObjectName(QStringLiteral("reciente%1").arg(i));
            connect(a, &QAction::triggered, this, [this, a] { AbrirReciente(a->data().toString()); });
            menuFichero_->insertAction(separadorRecientes_, a);
            recientes_.push_back(a);
        }
        menuFichero_->insertSeparator(Accion(cmd::kSalir));
        connect(menuFichero_, &QMenu::aboutToShow, this, &CMainFrame::ActualizarRecientes);
        ActualizarRecientes();
    }
    CrearBarraHerramientas();
    CrearBarraEstado();
    qApp->installEventFilter(this);
    resize(1100, 720);
    LeerCarpeta();
}

CMainFrame::~CMainFrame() {
    qApp->removeEventFilter(this);
    // The child windows go with the workspace; nothing of theirs may reach
    // this frame once its own part is gone.
    for (QMdiSubWindow* s : mdi_->subWindowList()) {
        s->disconnect(this);
        if (auto* c = qobject_cast<CChildFrame*>(s)) {
            c->Vista().disconnect(this);
            c->Documento().disconnect(this);
        }
    }
    mdi_->disconnect(this);
}

void CMainFrame::LeerCarpeta() {
    QSettings ajustes(QStringLiteral("Orvela"), QStringLiteral("Orvela"));
    QString carpeta = ajustes.value(QStringLiteral("Path")).toString();
    if (carpeta.isEmpty()) carpeta = QCoreApplication::applicationDirPath();
    carpeta_ = carpeta.toStdString();
    if (!QDir(carpeta + QStringLiteral("/Paletas")).exists())
        ui_->MostrarTexto(QString::fromUtf8(kMensajeSinPaletas));
}

bool CMainFrame::Manejado(int id) { return Manejadores().count(id) || orvela::BuscarPorComando(id); }

void CMainFrame::CrearMenus() {
    // Menus are made in the order in which the table first names them.
    std::map<std::string, QMenu*> menus;
    for (const EntradaComando& e : TablaComandos()) {
        auto* a = new QAction(QString::fromUtf8(e.texto), this);
        a->setObjectName(QStringLiteral("comando%1").arg(e.id));
        a->setData(e.id);
        if (*e.atajo) a->setShortcut(QKeySequence(QString::fromLatin1(e.atajo)));
        a->setEnabled(Manejado(e.id));
        const int id = e.id;
        connect(a, &QAction::triggered, this, [this, id] {
            EjecutarComando(id);
            ActualizarBotones();
        });
        acciones_[id] = a;
        if (e.menus.empty()) {
            addAction(a);  // shortcut only; the view offers it in its context menu
            continue;
        }
        QMenu* padre = nullptr;
        std::string ruta;
        for (const char* nombre : e.menus) {
            ruta += std::string(nombre) + "\x1f";
            auto it = menus.find(ruta);
            if (it == menus.end()) {
                QMenu* m = padre ? padre->addMenu(QString::fromUtf8(nombre))
                                 : menuBar()->addMenu(QString::fromUtf8(nombre));
                it = menus.emplace(ruta, m).first;
            }
            padre = it->second;
        }
        padre->addAction(a);
    }
}

void CMainFrame::CrearBarraHerramientas() {
    auto* barra = addToolBar(QStringLiteral("Estándar"));
    barra->setObjectName(QStringLiteral("barraHerramientas"));
    barra->setMovable(true);
    barra->setIconSize(QSize(24, 24));
    const int grupos[][4] = {{cmd::kNuevaVentana, cmd::kImagen, cmd::kGuardar, 0},
                             {cmd::kZoomAdelante, cmd::kZoomAtras, cmd::kPantallaCompleta, cmd::kPantallaNormal},
                             {cmd::kNivelDigital, cmd::kHistograma, 0, 0},
                             {cmd::kAcercaDe, 0, 0, 0}};
    bool primero = true;
    for (const auto& g : grupos) {
        if (!primero) barra->addSeparator();
        primero = false;
        for (int id : g) {
            if (!id) continue;
            QAction* a = acciones_.at(id);
            a->setIcon(IconoComando(id));
            a->setToolTip(a->text().remove(QLatin1Char('&')));
            barra->addAction(a);
        }
    }
}

void CMainFrame::ActualizarBotones() {
    // The zoom and the pixel query stay pressed while armed in the active
    // window.
    CBrimarView* v = VistaActiva();
    for (int id : {cmd::kZoomAdelante, cmd::kNivelDigital}) {
        QAction* a = Accion(id);
        if (!a) continue;
        a->setCheckable(true);
        a->setChecked(v && (id == cmd::kZoomAdelante ? v->ZoomArmado() : v->EnConsulta()));
    }
}

void CMainFrame::CrearBarraEstado() {
    QStatusBar* barra = statusBar();
    for (int i = 0; i < 7; ++i) {
        auto* l = new PanelEstado(i == 0 ? 160 : i == 3 ? 240 : i < 3 ? 200 : 0, this);
        l->setObjectName(QStringLiteral("panel%1").arg(i));
        l->setFrameShape(QFrame::Panel);
        l->setFrameShadow(QFrame::Sunken);
        paneles_[i] = l;
    }
    paneles_[0]->setText(QStringLiteral("Preparado"));
    barra->addWidget(paneles_[0], 1);
    for (int i = 1; i <= 3; ++i) barra->addWidget(paneles_[i], 0);
    for (int i = 0; i < 3; ++i) {
        QLabel* l = paneles_[4 + i];
        l->setText(QString::fromLatin1(kIndicadores[i]));
        l->setAlignment(Qt::AlignCenter);
        l->setFixedWidth(l->fontMetrics().horizontalAdvance(QStringLiteral("DESP")) + 16);
        l->setEnabled(false);  // shown greyed while the key is off
        barra->addPermanentWidget(l);
    }
}

QString CMainFrame::TextoPanel(int i) const { return i >= 0 && i < 7 ? paneles_[i]->text() : QString(); }

void CMainFrame::PonerTextoPanel(int i, const QString& texto) {
    if (i >= 0 && i < 4) paneles_[i]->setText(texto);
}

void CMainFrame::closeEvent(QCloseEvent* e) {
    for (QMdiSubWindow* s : mdi_->subWindowList()) {
        auto* c = qobject_cast<CChildFrame*>(s);
        if (!c) continue;
        mdi_->setActiveSubWindow(c);
        if (!PermitirDescartar(c->Documento(), *this, *ui_)) {
            e->ignore();
            return;
        }
    }
    QMainWindow::closeEvent(e);
}

void CMainFrame::ActualizarMenuVentana() {
    menuVentana_->clear();
    const auto ventanas = mdi_->subWindowList();
    QAction* cascada = menuVentana_->addAction(QStringLiteral("&Cascada"), mdi_, &QMdiArea::cascadeSubWindows);
    cascada->setObjectName(QStringLiteral("cascada"));
    QAction* mosaico = menuVentana_->addAction(QStringLiteral("&Mosaico"), mdi_, &QMdiArea::tileSubWindows);
    mosaico->setObjectName(QStringLiteral("mosaico"));
    QAction* siguiente = menuVentana_->addAction(QStringLiteral("&Siguiente"), mdi_, &QMdiArea::activateNextSubWindow);
    siguiente->setObjectName(QStringLiteral("siguiente"));
    for (QAction* a : {cascada, mosaico, siguiente}) a->setEnabled(!ventanas.isEmpty());
    if (ventanas.isEmpty()) return;
    menuVentana_->addSeparator();
    auto* grupo = new QActionGroup(menuVentana_);
    for (qsizetype i = 0; i < ventanas.size(); ++i) {
        QMdiSubWindow* s = ventanas[i];
        const QString texto = i < 9 ? QStringLiteral("&%1 %2").arg(i + 1).arg(s->windowTitle())
                                    : QStringLiteral("%1 %2").arg(i + 1).arg(s->windowTitle());
        QAction* a = menuVentana_->addAction(texto);
        a->setObjectName(QStringLiteral("ventana%1").arg(i));
        a->setCheckable(true);
        a->setChecked(s == mdi_->activeSubWindow());
        grupo->addAction(a);
        QPointer<QMdiSubWindow> destino = s;
        connect(a, &QAction::triggered, this, [this, destino] {
            if (!destino) return;
            if (destino->isMinimized()) destino->showNormal();
            mdi_->setActiveSubWindow(destino);
        });
    }
}

void CMainFrame::ActualizarRecientes() {
    const QStringList lista = FicherosRecientes();
    for (int i = 0; i < static_cast<int>(recientes_.size()); ++i) {
        QAction* a = recientes_[static_cast<std::size_t>(i)];
        const bool hay = i < lista.size();
        a->setVisible(hay);
        if (!hay) continue;
        a->setText(QStringLiteral("&%1 %2").arg(i + 1).arg(QFileInfo(lista[i]).fileName()));
        a->setToolTip(lista[i]);
        a->setStatusTip(lista[i]);
        a->setData(lista[i]);
    }
    if (separadorRecientes_) separadorRecientes_->setVisible(!lista.isEmpty());
}

void CMainFrame::AbrirReciente(const QString& ruta) {
    if (!QFileInfo::exists(ruta)) {
        QuitarReciente(ruta);
        ActualizarRecientes();
    }
    CChildFrame* c = VentanaActiva();
    const bool nueva = !c || c->Documento().TieneImagen();
    if (nueva) c = NuevaVentana();
    // A single band is shown in grey levels, as from the command line.
    if (!::AbrirImagen(c->Documento(), ruta.toStdString(), 2, {}, *ui_)) {
        if (nueva) c->CerrarSinPreguntar();
        return;
    }
    ActualizarRecientes();
}

bool CMainFrame::eventFilter(QObject* objeto, QEvent* e) {
    // Lock keys seen by the program switch their indicators.
    if (e->type() == QEvent::KeyPress) {
        auto* k = static_cast<QKeyEvent*>(e);
        int i = -1;
        if (k->key() == Qt::Key_CapsLock) i = 0;
        if (k->key() == Qt::Key_NumLock) i = 1;
        if (k->key() == Qt::Key_ScrollLock) i = 2;
        // The event is seen once by the widget it is meant for: the focus
        // widget, or the active window when nothing has the focus.
        QWidget* destino = QApplication::focusWidget() ? QApplication::focusWidget() : QApplication::activeWindow();
        if (i >= 0 && !k->isAutoRepeat() && objeto == destino) {
            bloqueos_[i] = !bloqueos_[i];
            paneles_[4 + i]->setEnabled(bloqueos_[i]);
        }
    }
    return QMainWindow::eventFilter(objeto, e);
}

QAction* CMainFrame::Accion(int id) const {
    auto it = acciones_.find(id);
    return it == acciones_.end() ? nullptr : it->second;
}

CChildFrame* CMainFrame::NuevaVentana() {
    auto* hijo = new CChildFrame(*this, *ui_, ++numeroVentanas_);
    mdi_->addSubWindow(hijo);
    connect(&hijo->Vista(), &CBrimarView::textoPanel, this, &CMainFrame::PonerTextoPanel);
    connect(&hijo->Vista(), &CBrimarView::comando, this, &CMainFrame::EjecutarComando);
    // The live readout under the pointer takes the message pane.
    connect(&hijo->Vista(), &CBrimarView::lectura, this, [this](const QString& t) {
        paneles_[0]->setText(t.isEmpty() ? QStringLiteral("Preparado") : t);
    });
    connect(&hijo->Vista(), &CBrimarView::herramientaCambiada, this, &CMainFrame::ActualizarBotones);
    connect(&hijo->Documento(), &CBrimarDoc::tituloCambiado, this, &CMainFrame::ActualizarTitulo);
    // A closed window leaves no pixel query behind in the status bar.
    connect(hijo, &QObject::destroyed, this, [this](QObject* hijo) {
        if (ultima_ == hijo) ultima_ = nullptr;
        for (int i = 1; i <= 3; ++i) paneles_[i]->clear();
        paneles_[0]->setText(QStringLiteral("Preparado"));
        ActualizarTitulo();
        ActualizarBotones();
    });
    hijo->show();
    hijo->MeterEnEspacio();
    mdi_->setActiveSubWindow(hijo);
    ultima_ = hijo;
    ActualizarTitulo();
    return hijo;
}

CChildFrame* CMainFrame::VentanaActiva() {
    if (QMdiSubWindow* s = mdi_->currentSubWindow()) return qobject_cast<CChildFrame*>(s);
    return qobject_cast<CChildFrame*>(ultima_.data());
}

CBrimarView* CMainFrame::VistaActiva() {
    CChildFrame* c = VentanaActiva();
    return c ? &c->Vista() : nullptr;
}

CBrimarDoc* CMainFrame::DocumentoActivo() {
    CChildFrame* c = VentanaActiva();
    return c ? &c->Documento() : nullptr;
}

void CMainFrame::ActualizarTitulo() {
    CChildFrame* c = VentanaActiva();
    setWindowTitle(c ? QStringLiteral("Orvela - %1").arg(c->windowTitle()) : QStringLiteral("Orvela"));
}

template <class F> void CMainFrame::EnVista(F f) {
    CBrimarView* v = VistaActiva();
    if (!v) return ui_->Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    f(*v);
}

void CMainFrame::ConsultarPixel() {
    CChildFrame* c = VentanaActiva();
    if (!c) return ui_->Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    const CBrimarDoc& d = c->Documento();
    if (!d.TieneImagen() || !d.Imagen().pixeles.Valido() || d.Imagen().NumeroPixeles() == 0)
        return ui_->Mostrar(Mensaje::Tabla(msg::kSinImagen));
    // A colour composite is queried too: the three values of the pixel.
    c->Vista().ConsultarPixel();
}

void CMainFrame::EjecutarComando(int id) {
    // A handler of the table wins over a declaration of the same id: the
    // desktop's own course of a command whose declaration serves
    // orvela-cli ("Establecer clase" samples with the mouse).
    auto it = Manejadores().find(id);
    if (it != Manejadores().end()) return it->second(*this);
    if (const orvela::Declaracion* d = orvela::BuscarPorComando(id)) EjecutarOperacion(*d, *this, *ui_);
}

std::vector<CBrimarDoc*> CMainFrame::Documentos() {
    std::vector<CBrimarDoc*> docs;
    for (QMdiSubWindow* s : mdi_->subWindowList())
        if (auto* c = qobject_cast<CChildFrame*>(s)) docs.push_back(&c->Documento());
    return docs;
}

CBrimarView* CMainFrame::VistaDe(CBrimarDoc* doc) {
    for (QMdiSubWindow* s : mdi_->subWindowList())
        if (auto* c = qobject_cast<CChildFrame*>(s); c && &c->Documento() == doc) return &c->Vista();
    return nullptr;
}

void CMainFrame::AbrirImagen(orvela::CImagen imagen, bool guardada) {
    CChildFrame* hijo = NuevaVentana();
    const std::string nombre = guardada ? imagen.rutaRaster : std::string();
    hijo->Documento().PonerImagen(std::move(imagen));
    if (!nombre.empty()) hijo->Documento().PonerNombre(QString::fromStdString(nombre));
    if (guardada) hijo->Documento().MarcarGuardado();
}

void CMainFrame::AbrirInforme(const orvela::InformeTexto& informe) {
    AbrirVentanaInforme(mdi_, *ui_, informe.titulo, informe.contenido, informe.final, informe.guardado);
}

void CMainFrame::AbrirGrafico(const orvela::Grafico& grafico) {
    CVentanaGrafico* v = AbrirVentanaGrafico(mdi_, *ui_, grafico);
    // A click on the chart gives the pair of values in the message pane
    // (the two band values of a scatter diagram).
    const QString ejeX = QString::fromStdString(grafico.ejeX.empty() ? std::string("X") : grafico.ejeX);
    const QString ejeY = QString::fromStdString(grafico.ejeY.empty() ? std::string("Y") : grafico.ejeY);
    connect(v, &CVentanaGrafico::puntoPulsado, this, [this, ejeX, ejeY](double x, double y) {
        paneles_[0]->setText(QStringLiteral("%1 = %2 ; %3 = %4")
                                 .arg(ejeX, QString::number(x, 'f', 2), ejeY, QString::number(y, 'f', 2)));
    });
}

void CMainFrame::AbrirComposicion(orvela::ComposicionResultado composicion) {
    CChildFrame* c = VentanaActiva();
    if (!c || c->Documento().TieneImagen()) c = NuevaVentana();
    c->Documento().PonerComposicion(std::move(composicion.planos), &composicion.cabecera);
}

void CMainFrame::Confirmar(const std::string& texto) {
    if (!texto.empty()) PonerTextoPanel(0, QString::fromStdString(texto));
}
