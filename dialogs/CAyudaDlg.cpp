#include "dialogs/CAyudaDlg.h"

#include <QCollator>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QSplitter>
#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

namespace {

// Lower case without accents, so that "pixel" finds "píxel".
QString Plegar(const QString& s) {
    const QString d = s.normalized(QString::NormalizationForm_D).toLower();
    QString r;
    r.reserve(d.size());
    for (QChar c : d)
        if (c.category() != QChar::Mark_NonSpacing) r.append(c);
    return r;
}

const QString kIndice = QStringLiteral("indice");

}  // namespace

QString CAyudaDlg::CarpetaPorDefecto() { return QCoreApplication::applicationDirPath() + QStringLiteral("/Ayuda"); }

CAyudaDlg::CAyudaDlg(const QString& carpeta, QWidget* padre) : QWidget(padre, Qt::Window), carpeta_(carpeta) {
    setObjectName(QStringLiteral("ayuda"));
    setWindowTitle(QStringLiteral("Ayuda de Orvela"));
    setAttribute(Qt::WA_QuitOnClose, false);
    resize(820, 560);

    auto* izquierda = new QWidget(this);
    auto* li = new QVBoxLayout(izquierda);
    li->setContentsMargins(0, 0, 0, 0);
    li->addWidget(new QLabel(QStringLiteral("Buscar:"), izquierda));
    busqueda_ = new QLineEdit(izquierda);
    busqueda_->setObjectName(QStringLiteral("buscar"));
    busqueda_->setClearButtonEnabled(true);
    li->addWidget(busqueda_);
    li->addWidget(new QLabel(QStringLiteral("Contenido:"), izquierda));
    lista_ = new QListWidget(izquierda);
    lista_->setObjectName(QStringLiteral("contenido"));
    li->addWidget(lista_, 1);

    navegador_ = new QTextBrowser(this);
    navegador_->setObjectName(QStringLiteral("pagina"));
    navegador_->setOpenExternalLinks(true);
    navegador_->setSearchPaths({carpeta_});

    auto* divisor = new QSplitter(this);
    divisor->addWidget(izquierda);
    divisor->addWidget(navegador_);
    divisor->setStretchFactor(1, 1);
    divisor->setSizes({220, 600});
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(divisor);

    Cargar();
    connect(busqueda_, &QLineEdit::textChanged, this, &CAyudaDlg::Buscar);
    connect(lista_, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
        if (item) MostrarPagina(item->data(Qt::UserRole).toString());
    });
    connect(navegador_, &QTextBrowser::sourceChanged, this, [this](const QUrl& url) {
        const QFileInfo fi(url.toLocalFile().isEmpty() ? url.path() : url.toLocalFile());
        if (fi.suffix() == QLatin1String("html")) {
            actual_ = fi.completeBaseName();
            Seleccionar(actual_);
        }
    });
}

void CAyudaDlg::Cargar() {
    const QDir dir(carpeta_);
    const QStringList ficheros = dir.entryList({QStringLiteral("*.html")}, QDir::Files);
    static const QRegularExpression reTitulo(QStringLiteral("<title>(.*?)</title>"),
                                              QRegularExpression::CaseInsensitiveOption |
                                                  QRegularExpression::DotMatchesEverythingOption);
    for (const QString& f : ficheros) {
        QFile fichero(dir.filePath(f));
        if (!fichero.open(QIODevice::ReadOnly)) continue;
        const QString html = QString::fromUtf8(fichero.readAll());
        Pagina p;
        p.nombre = QFileInfo(f).completeBaseName();
        const auto m = reTitulo.match(html);
        QTextDocument doc;
        doc.setHtml(html);
        p.titulo = m.hasMatch() ? m.captured(1).simplified() : p.nombre;
        {
            QTextDocument t;
            t.setHtml(p.titulo);
            p.titulo = t.toPlainText();
        }
        p.texto = Plegar(p.titulo + QLatin1Char('\n') + doc.toPlainText());
        paginas_.push_back(std::move(p));
    }
    QCollator orden(QLocale(QLocale::Spanish, QLocale::Spain));
    orden.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(paginas_.begin(), paginas_.end(), [&](const Pagina& a, const Pagina& b) {
        if ((a.nombre == kIndice) != (b.nombre == kIndice)) return a.nombre == kIndice;
        return orden.compare(a.titulo, b.titulo) < 0;
    });
    Buscar(QString());
}

void CAyudaDlg::Buscar(const QString& texto) {
    if (busqueda_->text() != texto) {
        busqueda_->setText(texto);  // comes back here through textChanged
        return;
    }
    const QStringList palabras = Plegar(texto).split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    const QSignalBlocker bloqueo(lista_);
    lista_->clear();
    for (const Pagina& p : paginas_) {
        const bool vale = std::all_of(palabras.begin(), palabras.end(), [&](const QString& w) { return p.texto.contains(w); });
        if (!vale) continue;
        auto* item = new QListWidgetItem(p.titulo, lista_);
        item->setData(Qt::UserRole, p.nombre);
    }
    Seleccionar(actual_);
}

QStringList CAyudaDlg::PaginasListadas() const {
    QStringList r;
    for (int i = 0; i < lista_->count(); ++i) r << lista_->item(i)->data(Qt::UserRole).toString();
    return r;
}

QString CAyudaDlg::TituloDe(const QString& pagina) const {
    for (const Pagina& p : paginas_)
        if (p.nombre == pagina) return p.titulo;
    return {};
}

void CAyudaDlg::Seleccionar(const QString& pagina) {
    const QSignalBlocker bloqueo(lista_);
    lista_->setCurrentItem(nullptr);
    for (int i = 0; i < lista_->count(); ++i)
        if (lista_->item(i)->data(Qt::UserRole).toString() == pagina) lista_->setCurrentRow(i);
}

void CAyudaDlg::MostrarPagina(const QString& nombre) {
    const QString pagina = nombre.isEmpty() ? kIndice : nombre;
    const QString ruta = QDir(carpeta_).filePath(pagina + QStringLiteral(".html"));
    if (!QFileInfo::exists(ruta)) {
        actual_.clear();
        navegador_->setHtml(
            QStringLiteral("<h2>Página no encontrada</h2><p>No se ha encontrado la página de ayuda «%1» en la carpeta %2.</p>")
                .arg(pagina.toHtmlEscaped(), QDir::toNativeSeparators(carpeta_).toHtmlEscaped()));
        Seleccionar(QString());
        return;
    }
    actual_ = pagina;
    const QUrl url = QUrl::fromLocalFile(ruta);
    if (navegador_->source() == url)
        navegador_->reload();
    else
        navegador_->setSource(url, QTextDocument::HtmlResource);
    Seleccionar(pagina);
}
