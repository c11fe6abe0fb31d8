// The help window: the Spanish pages in the "Ayuda" folder beside the
// program, a contents list made from each page's <title>, a search box that
// keeps the pages whose text holds every word typed (without regard to case
// or accents), and the page itself. One window for the whole program, not
// modal.
#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>
#include <vector>

class QLineEdit;
class QListWidget;
class QTextBrowser;

class CAyudaDlg : public QWidget {
    Q_OBJECT
public:
    explicit CAyudaDlg(const QString& carpeta = CarpetaPorDefecto(), QWidget* padre = nullptr);

    // The "Ayuda" folder beside the program.
    static QString CarpetaPorDefecto();

    // Shows a page by name (file name without ".html"); empty: "indice".
    void MostrarPagina(const QString& pagina);
    // Filters the contents list.
    void Buscar(const QString& texto);

    // Names of the pages listed now, in list order.
    QStringList PaginasListadas() const;
    // Name of the page shown ("" when none could be shown).
    QString PaginaActual() const { return actual_; }
    QString TituloDe(const QString& pagina) const;
    QTextBrowser* Navegador() const { return navegador_; }

private:
    struct Pagina {
        QString nombre, titulo, texto;  // texto: plain and folded for search
    };
    QString carpeta_;
    std::vector<Pagina> paginas_;
    QString actual_;
    QLineEdit* busqueda_;
    QListWidget* lista_;
    QTextBrowser* navegador_;

    void Cargar();
    void Seleccionar(const QString& pagina);
};
