// Ground control points drawn over the image they were measured on: a
// circle with its number at each point and, once there is an estimation,
// the vector from the point to where the polynomials put it, stretched by
// a round factor so that errors of a fraction of a pixel can be seen. The
// selected point is drawn larger and in another colour; omitted points are
// grey and have no vector.
#pragma once

#include <QString>
#include <vector>

#include "corrections/PuntosControl.h"
#include "doc/CapaVista.h"

namespace vista {

class CapaPuntosControl : public CapaVista {
public:
    static QString NombreCapa() { return QStringLiteral("Puntos de control"); }

    // `filasImagen`: rows of the image the points were measured on (their
    // lines count from its last line up).
    explicit CapaPuntosControl(long filasImagen, long columnasImagen)
        : filas_(filasImagen), columnas_(columnasImagen) {}
    QString Nombre() const override { return NombreCapa(); }
    void Dibujar(QPainter& p, const CBrimarView& v) const override;

    // New points and their estimation (nullptr or an invalid one: no
    // vectors); the factor of the vectors is chosen again.
    void Poner(const std::vector<orvela::PuntoControl>& puntos, const orvela::Estimacion* estimacion);
    // Index of the highlighted point; -1 none.
    void Seleccionar(int indice) { seleccionado_ = indice; }
    int Seleccionado() const { return seleccionado_; }
    // Factor that multiplies the error vectors (1, 2, 5, 10, 20, 50, ...).
    double Escala() const { return escala_; }
    std::size_t NumeroPuntos() const { return puntos_.size(); }
    bool ConVectores() const { return conVectores_; }

    // Image row and column (as doubles, pixel centre) of a point's line and
    // column; the line counts from the last row up.
    double FilaEnImagen(double fila) const { return static_cast<double>(filas_) - fila + 0.5; }
    static double ColumnaEnImagen(double columna) { return columna + 0.5; }

    // The factor for a largest error `maximo` on an image of these sides:
    // the largest vector about a tenth of the shorter side, rounded down to
    // 1, 2 or 5 times a power of ten, never below 1.
    static double EscalaPara(double maximo, long filas, long columnas);

private:
    long filas_, columnas_;
    std::vector<orvela::PuntoControl> puntos_;
    std::vector<double> filaEst_, columnaEst_;
    bool conVectores_ = false;
    double escala_ = 1;
    int seleccionado_ = -1;
};

}  // namespace vista
