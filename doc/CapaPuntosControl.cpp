#include "doc/CapaPuntosControl.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "doc/CBrimarView.h"

namespace vista {

double CapaPuntosControl::EscalaPara(double maximo, long filas, long columnas) {
    const double lado = static_cast<double>(std::min(filas, columnas));
    if (!(maximo > 0) || !(lado > 0)) return 1;
    const double deseada = lado / 10.0 / maximo;
    if (deseada <= 1) return 1;
    double potencia = std::pow(10.0, std::floor(std::log10(deseada)));
    for (double m : {5.0, 2.0, 1.0})
        if (m * potencia <= deseada) return m * potencia;
    return potencia;
}

void CapaPuntosControl::Poner(const std::vector<orvela::PuntoControl>& puntos, const orvela::Estimacion* e) {
    puntos_ = puntos;
    conVectores_ = e && e->Valida() && e->filaEstimada.size() == puntos.size();
    filaEst_.clear();
    columnaEst_.clear();
    double maximo = 0;
    if (conVectores_) {
        filaEst_ = e->filaEstimada;
        columnaEst_ = e->columnaEstimada;
        for (std::size_t k = 0; k < puntos.size(); ++k)
            if (puntos[k].activo) maximo = std::max(maximo, e->errores[k]);
    }
    escala_ = EscalaPara(maximo, filas_, columnas_);
    if (seleccionado_ >= static_cast<int>(puntos_.size())) seleccionado_ = -1;
}

void CapaPuntosControl::Dibujar(QPainter& p, const CBrimarView& v) const {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    const QColor activo(255, 40, 40), omitido(160, 160, 160), elegido(255, 230, 0), vector(0, 230, 255);
    for (std::size_t k = 0; k < puntos_.size(); ++k) {
        const auto& q = puntos_[k];
        const double f = FilaEnImagen(q.fila), c = ColumnaEnImagen(q.columna);
        const QPointF en = v.EnPantalla(f, c);
        if (conVectores_ && q.activo) {
            const double fe = f + (FilaEnImagen(filaEst_[k]) - f) * escala_;
            const double ce = c + (ColumnaEnImagen(columnaEst_[k]) - c) * escala_;
            const QPointF fin = v.EnPantalla(fe, ce);
            p.setPen(QPen(QColor(0, 0, 0, 180), 4));
            p.drawLine(en, fin);
            p.setPen(QPen(vector, 2));
            p.drawLine(en, fin);
        }
        const bool sel = static_cast<int>(k) == seleccionado_;
        const double radio = sel ? 7 : 4;
        p.setPen(QPen(Qt::black, 1));
        p.setBrush(sel ? elegido : q.activo ? activo : omitido);
        p.drawEllipse(en, radio, radio);
        const QString numero = QString::number(k + 1);
        const QPointF texto = en + QPointF(radio + 2, -radio - 2);
        p.setPen(Qt::black);
        p.drawText(texto + QPointF(1, 1), numero);
        p.setPen(sel ? elegido : Qt::white);
        p.drawText(texto, numero);
    }
    if (conVectores_ && escala_ != 1) {
        const QString t = QStringLiteral("Vectores de error x %1").arg(escala_);
        const QPointF esquina(8, 18);
        p.setPen(Qt::black);
        p.drawText(esquina + QPointF(1, 1), t);
        p.setPen(vector);
        p.drawText(esquina, t);
    }
    p.restore();
}

}  // namespace vista
