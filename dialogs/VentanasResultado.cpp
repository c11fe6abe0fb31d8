#include "dialogs/VentanasResultado.h"

#include <QFontDatabase>
#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QHBoxLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "dialogs/Interfaz.h"
#include "image/Codificacion.h"
#include "image/FicheroSeguro.h"

using orvela::Mensaje;
namespace msg = orvela::msg;

namespace {

// The extension of a file ending (".txt" of "_Estadisticas.txt"), or "".
std::string Extension(const std::string& final) {
    const auto punto = final.rfind('.');
    return punto == std::string::npos ? std::string() : final.substr(punto);
}

// A chosen name without an extension takes the ending's.
std::string ConExtension(std::string ruta, const std::string& extension) {
    const auto barra = ruta.rfind('/');
    const std::string nombre = barra == std::string::npos ? ruta : ruta.substr(barra + 1);
    if (!extension.empty() && nombre.find('.') == std::string::npos) ruta += extension;
    return ruta;
}

QPushButton* BotonGuardar(QWidget* padre) {
    auto* b = new QPushButton(QStringLiteral("Guardar como..."), padre);
    b->setObjectName(QStringLiteral("guardarComo"));
    return b;
}

template <class V> V* Colocar(QMdiArea* area, V* ventana, QSize tamano) {
    if (area) {
        QMdiSubWindow* s = area->addSubWindow(ventana);
        s->setAttribute(Qt::WA_DeleteOnClose);
        s->resize(tamano);
        s->show();
        area->setActiveSubWindow(s);
    } else {
        ventana->setAttribute(Qt::WA_DeleteOnClose);
        ventana->resize(tamano);
        ventana->show();
    }
    return ventana;
}

}  // namespace

// ----- Report.

CVentanaInforme::CVentanaInforme(Interfaz& ui, const std::string& titulo, const std::string& texto,
                                 const std::string& final, QWidget* padre, const std::string& guardado)
    : QWidget(padre), ui_(ui), texto_(texto), final_(final), guardado_(guardado) {
    setWindowTitle(QString::fromStdString(titulo));
    auto* texto_w = new QPlainTextEdit(QString::fromStdString(texto), this);
    texto_w->setObjectName(QStringLiteral("texto"));
    texto_w->setReadOnly(true);
    texto_w->setLineWrapMode(QPlainTextEdit::NoWrap);
    texto_w->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* fila = new QHBoxLayout;
    QPushButton* guardar = BotonGuardar(this);
    fila->addWidget(guardar);
    fila->addStretch();
    auto* capas = new QVBoxLayout(this);
    capas->addLayout(fila);
    capas->addWidget(texto_w);
    connect(guardar, &QPushButton::clicked, this, [this] { GuardarComo(); });
}

bool CVentanaInforme::GuardarComo() {
    const std::string extension = Extension(final_);
    QStringList filtros;
    if (!extension.empty()) filtros << QStringLiteral("Informes (*%1)").arg(QString::fromStdString(extension));
    filtros << QStringLiteral("Todos los ficheros (*)");
    const auto elegido = ui_.FicheroGuardarComo(QStringLiteral("Guardar como"), filtros, final_);
    if (!elegido) return false;
    const std::string ruta = ConExtension(*elegido, extension);
    if (!orvela::EscribirFicheroSeguro(ruta, orvela::Utf8ACp1252(guardado_.empty() ? texto_ : guardado_))) {
        ui_.Mostrar(Mensaje::Tabla(msg::kNoCreadoFichero, ruta));
        return false;
    }
    return true;
}

// ----- Chart.

CLienzoGrafico::CLienzoGrafico(orvela::Grafico g, QWidget* padre) : QWidget(padre), grafico_(std::move(g)) {
    setObjectName(QStringLiteral("lienzo"));
    setMinimumSize(160, 120);
    setCursor(Qt::CrossCursor);
    dibujo_ = orvela::DibujarGrafico(grafico_, 640, 480);
}

void CLienzoGrafico::resizeEvent(QResizeEvent*) {
    const auto ancho = static_cast<uint32_t>(std::max(width(), 160));
    const auto alto = static_cast<uint32_t>(std::max(height(), 120));
    if (ancho != dibujo_.imagen.ancho || alto != dibujo_.imagen.alto)
        dibujo_ = orvela::DibujarGrafico(grafico_, ancho, alto);
}

void CLienzoGrafico::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), Qt::white);
    const auto& r = dibujo_.imagen;
    const QImage im(r.rgb.data(), static_cast<int>(r.ancho), static_cast<int>(r.alto), static_cast<int>(3 * r.ancho),
                    QImage::Format_RGB888);
    p.drawImage(0, 0, im);
}

void CLienzoGrafico::mousePressEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton) return;
    const QPointF q = e->position();
    if (const auto d = dibujo_.marco.ADatos(q.x(), q.y())) emit pulsado((*d)[0], (*d)[1]);
}

CVentanaGrafico::CVentanaGrafico(Interfaz& ui, orvela::Grafico g, QWidget* padre)
    : QWidget(padre), ui_(ui) {
    setWindowTitle(g.titulo.empty() ? QStringLiteral("Gráfico") : QString::fromStdString(g.titulo));
    lienzo_ = new CLienzoGrafico(std::move(g), this);
    estado_ = new QLabel(QStringLiteral("Pulse sobre el gráfico para leer sus valores."), this);
    estado_->setObjectName(QStringLiteral("estado"));
    auto* fila = new QHBoxLayout;
    QPushButton* guardar = BotonGuardar(this);
    fila->addWidget(guardar);
    fila->addStretch();
    auto* capas = new QVBoxLayout(this);
    capas->addLayout(fila);
    capas->addWidget(lienzo_, 1);
    capas->addWidget(estado_);
    connect(guardar, &QPushButton::clicked, this, [this] { GuardarComo(); });
    connect(lienzo_, &CLienzoGrafico::pulsado, this, [this](double x, double y) {
        estado_->setText(QStringLiteral("X: %1   Y: %2").arg(x, 0, 'g', 6).arg(y, 0, 'g', 6));
        emit puntoPulsado(x, y);
    });
}

bool CVentanaGrafico::GuardarComo() {
    const orvela::Grafico& g = Grafico();
    const std::string propuesto = g.final.empty() ? std::string("grafico.png") : g.final;
    const auto elegido = ui_.FicheroGuardarComo(QStringLiteral("Guardar como"),
                                                {QStringLiteral("Imágenes PNG (*.png)")}, propuesto);
    if (!elegido) return false;
    const std::string ruta = ConExtension(*elegido, ".png");
    if (!orvela::EscribirGraficoPng(g, ruta)) {
        ui_.Mostrar(Mensaje::Tabla(msg::kNoCreadoFichero, ruta));
        return false;
    }
    return true;
}

CVentanaInforme* AbrirVentanaInforme(QMdiArea* area, Interfaz& ui, const std::string& titulo, const std::string& texto,
                                     const std::string& final, const std::string& guardado) {
    return Colocar(area, new CVentanaInforme(ui, titulo, texto, final, nullptr, guardado), QSize(640, 420));
}

// ----- Figures.

CCuadroValoresDlg::CCuadroValoresDlg(const orvela::CuadroValores& c, QWidget* padre) : QDialog(padre) {
    setWindowTitle(QString::fromStdString(c.titulo));
    auto* grupo = new QGroupBox(QString::fromStdString(c.grupo), this);
    auto* formulario = new QFormLayout(grupo);
    for (std::size_t k = 0; k < c.filas.size(); ++k) {
        auto* valor = new QLineEdit(QString::fromStdString(c.filas[k].second), grupo);
        valor->setObjectName(QStringLiteral("valor_%1").arg(k));
        valor->setReadOnly(true);
        valor->setAlignment(Qt::AlignRight);
        formulario->addRow(QString::fromStdString(c.filas[k].first) + QLatin1Char(':'), valor);
    }
    auto* aceptar = new QPushButton(QStringLiteral("&Aceptar"), this);
    aceptar->setObjectName(QStringLiteral("aceptar"));
    aceptar->setDefault(true);
    connect(aceptar, &QPushButton::clicked, this, &QDialog::accept);
    auto* fila = new QHBoxLayout;
    fila->addStretch(1);
    fila->addWidget(aceptar);
    auto* capas = new QVBoxLayout(this);
    if (!c.nota.empty()) {
        auto* nota = new QLabel(QString::fromStdString(c.nota), this);
        nota->setWordWrap(true);
        capas->addWidget(nota);
    }
    capas->addWidget(grupo);
    capas->addLayout(fila);
}

CVentanaGrafico* AbrirVentanaGrafico(QMdiArea* area, Interfaz& ui, const orvela::Grafico& g) {
    return Colocar(area, new CVentanaGrafico(ui, g), QSize(680, 580));
}
