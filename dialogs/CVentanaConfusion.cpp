#include "dialogs/CVentanaConfusion.h"

#include <QHeaderView>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "classification/Confusion.h"
#include "dialogs/VentanasResultado.h"

namespace {

// White at no count up to the full colour at the largest count.
QColor Sombra(QColor pleno, double t) {
    t = std::clamp(t, 0.0, 1.0);
    auto mezcla = [t](int a) { return static_cast<int>(255 + (a - 255) * t + 0.5); };
    return QColor(mezcla(pleno.red()), mezcla(pleno.green()), mezcla(pleno.blue()));
}

// An accuracy as a percentage; -1 (a class without samples) as a dash.
QString Porcentaje(float v) {
    return v < 0 ? QStringLiteral("—") : QStringLiteral("%1 %").arg(100.0 * v, 0, 'f', 1);
}

QTableWidgetItem* Celda(const QString& texto, const QString& ayuda = {}) {
    auto* c = new QTableWidgetItem(texto);
    c->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    c->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (!ayuda.isEmpty()) c->setToolTip(ayuda);
    return c;
}

}  // namespace

CVentanaConfusion::CVentanaConfusion(Interfaz& ui, const orvela::InformeTexto& informe, QWidget* padre)
    : QWidget(padre) {
    setWindowTitle(QString::fromStdString(informe.titulo));
    const orvela::MatrizConfusion& m = *informe.confusion;
    const int k = m.k;
    informe_ = new CVentanaInforme(ui, informe.titulo, informe.contenido, informe.final.empty() ? ".txt" : informe.final,
                                   nullptr, informe.guardado);

    auto* lado = new QWidget;
    auto* capas = new QVBoxLayout(lado);
    auto* titulo = new QLabel(QStringLiteral("Filas: imagen clasificada. Columnas: verdad terreno."), lado);
    tabla_ = new QTableWidget(k + 2, k + 2, lado);
    tabla_->setObjectName(QStringLiteral("matriz"));
    tabla_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    QStringList filas, columnas;
    for (int i = 0; i < k; ++i) {
        const QString n = QStringLiteral("%1 (%2)").arg(QString::fromStdString(m.nombres[static_cast<std::size_t>(i)]))
                              .arg(m.valores[static_cast<std::size_t>(i)]);
        filas << n;
        columnas << n;
    }
    filas << QStringLiteral("Total") << QStringLiteral("Exact. de productor");
    columnas << QStringLiteral("Total") << QStringLiteral("Exact. de usuario");
    tabla_->setVerticalHeaderLabels(filas);
    tabla_->setHorizontalHeaderLabels(columnas);

    float mayor = 0;
    for (int i = 0; i < k; ++i)
        for (int j = 0; j < k; ++j) mayor = std::max(mayor, m(i, j));
    double aciertos = 0;
    for (int i = 0; i < k; ++i) {
        aciertos += m(i, i);
        for (int j = 0; j < k; ++j) {
            const double t = mayor > 0 ? m(i, j) / mayor : 0.0;
            auto* c = Celda(QString::number(static_cast<double>(m(i, j)), 'f', 0),
                            i == j ? QStringLiteral("Muestras bien clasificadas")
                                   : QStringLiteral("Muestras de %1 clasificadas como %2").arg(columnas[j], filas[i]));
            c->setBackground(Sombra(i == j ? QColor(40, 150, 70) : QColor(210, 50, 40), t));
            c->setForeground(t > 0.6 ? Qt::white : Qt::black);
            tabla_->setItem(i, j, c);
        }
        tabla_->setItem(i, k, Celda(QString::number(static_cast<double>(m(i, k)), 'f', 0)));
        tabla_->setItem(i, k + 1, Celda(Porcentaje(m(i, k + 2)),
                                        QStringLiteral("De las muestras clasificadas en la clase, las que lo son de verdad")));
    }
    for (int j = 0; j <= k; ++j) tabla_->setItem(k, j, Celda(QString::number(static_cast<double>(m(k, j)), 'f', 0)));
    for (int j = 0; j < k; ++j)
        tabla_->setItem(k + 1, j, Celda(Porcentaje(m(k + 2, j)),
                                        QStringLiteral("De las muestras de la clase, las que se han clasificado bien")));
    for (int i = k; i < k + 2; ++i)
        for (int j = (i == k ? k + 1 : k); j < k + 2; ++j) tabla_->setItem(i, j, Celda(QString()));
    tabla_->resizeColumnsToContents();

    const double n = m(k, k);
    auto* global = new QLabel(n > 0 ? QStringLiteral("Exactitud global: %1 % (%2 de %3 muestras)")
                                          .arg(100.0 * aciertos / n, 0, 'f', 1)
                                          .arg(aciertos, 0, 'f', 0)
                                          .arg(n, 0, 'f', 0)
                                    : QStringLiteral("Exactitud global: — (ninguna muestra)"),
                              lado);
    global->setObjectName(QStringLiteral("exactitudGlobal"));
    auto* kappa = new QLabel(QStringLiteral("Índice kappa: %1").arg(m.kappa, 0, 'f', 4), lado);
    kappa->setObjectName(QStringLiteral("kappa"));
    capas->addWidget(titulo);
    capas->addWidget(tabla_, 1);
    capas->addWidget(global);
    capas->addWidget(kappa);

    auto* division = new QSplitter(Qt::Horizontal, this);
    division->addWidget(informe_);
    division->addWidget(lado);
    auto* todo = new QVBoxLayout(this);
    todo->setContentsMargins(0, 0, 0, 0);
    todo->addWidget(division);
}

CVentanaConfusion* AbrirVentanaConfusion(QMdiArea* area, Interfaz& ui, const orvela::InformeTexto& informe) {
    auto* v = new CVentanaConfusion(ui, informe);
    v->setAttribute(Qt::WA_DeleteOnClose);
    if (area) {
        QMdiSubWindow* s = area->addSubWindow(v);
        s->setAttribute(Qt::WA_DeleteOnClose);
        s->resize(1000, 480);
        s->show();
        area->setActiveSubWindow(s);
    } else {
        v->resize(1000, 480);
        v->show();
    }
    return v;
}
