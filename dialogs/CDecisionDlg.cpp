#include "dialogs/CDecisionDlg.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>
#include <cmath>

#include "base/Mensajes.h"

namespace {

QString Numero(double v) {
    if (std::isnan(v)) return QStringLiteral("no es un número");
    if (std::isinf(v)) return v > 0 ? QStringLiteral("infinito") : QStringLiteral("-infinito");
    return QString::number(v, 'g', 8);
}

QTableWidgetItem* Celda(const QString& t) {
    auto* c = new QTableWidgetItem(t);
    c->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    return c;
}

QTableWidget* Tabla(QWidget* padre, const char* nombre) {
    auto* t = new QTableWidget(padre);
    t->setObjectName(QString::fromLatin1(nombre));
    t->verticalHeader()->hide();
    t->horizontalHeader()->setStretchLastSection(true);
    t->setEditTriggers(QAbstractItemView::NoEditTriggers);
    return t;
}

}  // namespace

CDecisionDlg::CDecisionDlg(QWidget* padre) : QDialog(padre) {
    setWindowTitle(QStringLiteral("Inspector de decisión"));
    setObjectName(QStringLiteral("decision"));
    posicion_ = new QLabel(this);
    posicion_->setObjectName(QStringLiteral("posicion"));
    bandas_ = Tabla(this, "bandas");
    clases_ = Tabla(this, "clases");
    aviso_ = new QLabel(this);
    aviso_->setObjectName(QStringLiteral("aviso"));
    aviso_->setWordWrap(true);
    aviso_->setStyleSheet(QStringLiteral("color: #a00000;"));
    aviso_->hide();
    auto* v = new QVBoxLayout(this);
    v->addWidget(posicion_);
    v->addWidget(bandas_, 2);
    v->addWidget(clases_, 3);
    v->addWidget(aviso_);
    resize(460, 420);
}

QString CDecisionDlg::Posicion() const { return posicion_->text(); }
QString CDecisionDlg::Aviso() const { return aviso_->isHidden() ? QString() : aviso_->text(); }

void CDecisionDlg::Mostrar(long fila, long columna, double etiqueta, const std::vector<std::string>& bandas,
                           const std::vector<double>& valores, orvela::ReglaSupervisada regla,
                           const std::vector<std::string>& clases, const orvela::Decision& d) {
    using orvela::ReglaSupervisada;
    posicion_->setText(QStringLiteral("Fila %1, columna %2: la imagen clasificada vale %3.")
                           .arg(fila)
                           .arg(columna)
                           .arg(Numero(etiqueta)));

    bandas_->clear();
    bandas_->setColumnCount(2);
    bandas_->setHorizontalHeaderLabels({QStringLiteral("Banda"), QStringLiteral("Valor")});
    bandas_->setRowCount(static_cast<int>(bandas.size()));
    for (std::size_t i = 0; i < bandas.size(); ++i) {
        bandas_->setItem(static_cast<int>(i), 0, Celda(QString::fromStdString(bandas[i])));
        bandas_->setItem(static_cast<int>(i), 1, Celda(i < valores.size() ? Numero(valores[i]) : QString()));
    }

    const QString figura = regla == ReglaSupervisada::Distancia         ? QStringLiteral("Distancia a la media")
                           : regla == ReglaSupervisada::Paralelepipedos ? QStringLiteral("Bandas dentro de la caja")
                                                                        : QStringLiteral("Log-verosimilitud g");
    clases_->clear();
    clases_->setColumnCount(4);
    clases_->setHorizontalHeaderLabels({QStringLiteral("Clase"), QStringLiteral("ND"), figura, QStringLiteral("Decisión")});
    clases_->setRowCount(static_cast<int>(d.clases.size()));
    const int n = static_cast<int>(bandas.size());
    for (int i = 0; i < static_cast<int>(d.clases.size()); ++i) {
        const orvela::FiguraClase& f = d.clases[static_cast<std::size_t>(i)];
        const QString texto = regla == ReglaSupervisada::Paralelepipedos
                                  ? QStringLiteral("%1 de %2").arg(static_cast<int>(f.valor)).arg(n)
                                  : Numero(f.valor);
        QString marca = i == d.ganadora ? QStringLiteral("Ganadora") : i == d.segunda ? QStringLiteral("Segunda") : QString();
        clases_->setItem(i, 0, Celda(QString::fromStdString(i < static_cast<int>(clases.size()) ? clases[i] : std::string())));
        clases_->setItem(i, 1, Celda(QString::number(f.nd)));
        clases_->setItem(i, 2, Celda(texto));
        clases_->setItem(i, 3, Celda(marca));
        if (i == d.ganadora || i == d.segunda) {
            const QColor fondo = i == d.ganadora ? QColor(190, 230, 190) : QColor(245, 235, 180);
            for (int k = 0; k < 4; ++k) clases_->item(i, k)->setBackground(fondo);
        }
    }
    clases_->resizeColumnsToContents();
    bandas_->resizeColumnsToContents();

    if (static_cast<double>(d.etiqueta) != etiqueta) {
        const QString eleccion = d.ganadora >= 0
                                     ? QString::fromStdString(clases[static_cast<std::size_t>(d.ganadora)]) +
                                           QStringLiteral(" (%1)").arg(d.etiqueta)
                                     : QStringLiteral("0 (ninguna caja)");
        aviso_->setText(QString::fromStdString(
            orvela::Sustituir(orvela::texto::kDecisionNoCoincide, Numero(etiqueta).toStdString(), eleccion.toStdString())));
        aviso_->show();
    } else {
        aviso_->hide();
    }
}
