// The main window: menu bar built from the command table, toolbar, status
// bar with seven panes, and the workspace of child windows.
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "classification/Entrenamiento.h"
#include "dialogs/Espacio.h"

class CBrimarView;
class CChildFrame;
class Interfaz;
class QMdiArea;
class QMdiSubWindow;
class QMenu;

class CMainFrame : public QMainWindow, public Espacio {
    Q_OBJECT
public:
    // The start-up message about the palette folder, shown when the
    // application folder has no "Paletas" folder.
    static const char* const kMensajeSinPaletas;

    // `ui` talks to the user (not owned; the tests pass a script); without
    // one, message boxes and dialogs are used.
    explicit CMainFrame(Interfaz* ui = nullptr, QWidget* padre = nullptr);
    ~CMainFrame() override;

    CBrimarDoc* DocumentoActivo() override;
    std::vector<CBrimarDoc*> Documentos() override;
    std::string CarpetaAplicacion() const override { return carpeta_; }
    QWidget* VentanaPrincipal() override { return this; }
    CBrimarView* VistaDe(CBrimarDoc* doc) override;
    void AbrirImagen(orvela::CImagen imagen, bool guardada) override;
    void AbrirInforme(const orvela::InformeTexto& informe) override;
    void AbrirGrafico(const orvela::Grafico& grafico) override;
    void AbrirComposicion(orvela::ComposicionResultado composicion) override;
    void Confirmar(const std::string& texto) override;

    Interfaz& Ui() { return *ui_; }
    QMdiArea* Area() { return mdi_; }

    // "Nueva ventana": a new empty document and its window, made active.
    CChildFrame* NuevaVentana();
    CChildFrame* VentanaActiva();
    // Not virtual: the frame's buttons read it while the frame is being
    // destroyed.
    CBrimarView* VistaActiva();
    CBrimarView* VistaParaHerramientas() override { return VistaActiva(); }

    // Runs a command of the table by its id.
    void EjecutarComando(int id);
    // Whether a command id has a handler (the others are shown greyed).
    static bool Manejado(int id);
    // The action of a command id (menu entries and the commands without one).
    QAction* Accion(int id) const;

    // The pixel query of the active window (after its checks).
    void ConsultarPixel();
    // Runs f on the active view, or says there is no active window.
    template <class F> void EnVista(F f);

    // Texts of the status bar: panes 0..3 (0 is the message pane), then the
    // indicators "MAY", "NUM", "DESP" (4..6).
    QString TextoPanel(int i) const;
    void PonerTextoPanel(int i, const QString& texto);
    QLabel* Panel(int i) const { return i >= 0 && i < 7 ? paneles_[i] : nullptr; }

    // "Ventana": cascade, tile and the open windows, made afresh each time
    // it opens; the images opened last, in "Fichero" above "Salir".
    QMenu* MenuVentana() const { return menuVentana_; }
    void ActualizarMenuVentana();
    void ActualizarRecientes();
    // Opens one of the images opened last: in the active window when it is
    // empty, else in a new one.
    void AbrirReciente(const QString& ruta);
    // The training selection: the bands chosen by "Fase entrenamiento",
    // kept until the program ends or the command is accepted again.
    orvela::Entrenamiento& Entrenamiento() { return entrenamiento_; }

    // "Cambiar paleta" (Visualización): the action outside the command table.
    QAction* AccionCambiarPaleta() const { return cambiarPaleta_; }

protected:
    bool eventFilter(QObject* objeto, QEvent* e) override;
    // "Salir", Ctrl+S and the close box: no unsaved result is lost without
    // a question.
    void closeEvent(QCloseEvent* e) override;

private:
    void LeerCarpeta();
    void CrearMenus();
    void CrearBarraHerramientas();
    void CrearBarraEstado();
    void ActualizarTitulo();
    void ActualizarBotones();

    std::unique_ptr<Interfaz> uiPropia_;
    Interfaz* ui_;
    std::string carpeta_;
    QMdiArea* mdi_;
    // Last active child window (kept as a QObject: it may be read while the
    // window is being destroyed).
    QPointer<QObject> ultima_;
    int numeroVentanas_ = 0;
    std::array<QLabel*, 7> paneles_{};
    std::array<bool, 3> bloqueos_{};
    std::map<int, QAction*> acciones_;
    QMenu* menuVentana_ = nullptr;
    QMenu* menuFichero_ = nullptr;
    std::vector<QAction*> recientes_;
    QAction* separadorRecientes_ = nullptr;
    QAction* cambiarPaleta_ = nullptr;
    orvela::Entrenamiento entrenamiento_;
};
