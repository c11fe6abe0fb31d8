#include "corrections/PuntosControl.h"
#include "image/FicheroTexto.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <locale>
#include <sstream>

#include "base/Mensajes.h"

namespace orvela {

namespace {

bool Blanco(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f'; }

std::string LineaMala(int n) { return Sustituir(texto::kPuntosLineaIncorrecta, std::to_string(n)); }

}  // namespace

std::optional<std::vector<PuntoControl>> AnalizarPuntosControl(const std::string& texto, std::string* error) {
    auto falla = [&](std::string e) -> std::optional<std::vector<PuntoControl>> {
        if (error) *error = std::move(e);
        return std::nullopt;
    };
    const char* p = texto.c_str();
    const char* fin = p + texto.size();
    // The point count: a whole number; the rest of the first line is ignored.
    while (p < fin && Blanco(*p)) ++p;
    char* tras = nullptr;
    errno = 0;
    const long n = std::strtol(p, &tras, 10);
    if (tras == p || errno != 0 || n <= 0 || n > 1000000) return falla(texto::kPuntosSinNumero);
    p = tras;
    while (p < fin && *p != '\n') ++p;
    std::vector<PuntoControl> puntos;
    // Room for the points the text can hold (a line takes at least eight
    // characters), not for whatever count its first line claims.
    puntos.reserve(std::min(static_cast<std::size_t>(n), texto.size() / 8 + 1));
    for (long i = 0; i < n; ++i) {
        const int numeroLinea = static_cast<int>(i) + 2;
        if (p < fin) ++p;  // the line feed
        if (p >= fin) return falla(Sustituir(texto::kPuntosFaltan, std::to_string(i), std::to_string(n)));
        double v[4];
        for (int k = 0; k < 4; ++k) {
            while (p < fin && Blanco(*p)) ++p;
            if (p >= fin || *p == '\n')
                return falla(LineaMala(numeroLinea));
            errno = 0;
            v[k] = std::strtod(p, &tras);
            if (tras == p || !std::isfinite(v[k])) return falla(LineaMala(numeroLinea));
            p = tras;
            if (k < 3) {
                while (p < fin && !Blanco(*p) && *p != '\n') ++p;
            } else {
                while (p < fin && *p != '\n') ++p;
            }
        }
        puntos.push_back({v[0], v[1], v[2], v[3], true});
    }
    return puntos;
}

std::optional<std::vector<PuntoControl>> LeerPuntosControl(const std::string& ruta, std::string* error) {
    // Only a regular file, and no more than a text file's bound.
    const auto contenido = LeerTextoAcotado(ruta, kMaxTexto);
    if (!contenido) {
        if (error) *error = Sustituir(texto::kPuntosNoLegible, ruta);
        return std::nullopt;
    }
    return AnalizarPuntosControl(*contenido, error);
}

std::string TextoPuntosControl(const std::vector<PuntoControl>& puntos) {
    std::ostringstream o;
    o.imbue(std::locale::classic());
    o.precision(17);
    o << puntos.size() << "\n";
    for (const PuntoControl& q : puntos) o << q.fila << " " << q.columna << " " << q.x << " " << q.y << "\n";
    return o.str();
}

Estimacion EstimarPolinomio(const std::vector<PuntoControl>& puntos) {
    Estimacion e;
    const std::size_t total = puntos.size();
    e.filaEstimada.assign(total, 0.0);
    e.columnaEstimada.assign(total, 0.0);
    e.errores.assign(total, 0.0);
    int n = 0;
    for (const PuntoControl& q : puntos) n += q.activo ? 1 : 0;
    if (n < 3) return e;
    // Normal matrix M = DᵀD and the vectors Dᵀ fila, Dᵀ columna, summed in
    // file order over the active points.
    double m[3][3] = {};
    double tf[3] = {}, tc[3] = {};
    for (const PuntoControl& q : puntos) {
        if (!q.activo) continue;
        const double d[3] = {1.0, q.x, q.y};
        for (int i = 0; i < 3; ++i) {
            for (int j = 0; j < 3; ++j) m[i][j] += d[i] * d[j];
            tf[i] += d[i] * q.fila;
            tc[i] += d[i] * q.columna;
        }
    }
    // Rule of Sarrus.
    double det = m[0][0] * m[1][1] * m[2][2] + m[0][1] * m[1][2] * m[2][0] + m[0][2] * m[1][0] * m[2][1] -
                 m[0][2] * m[1][1] * m[2][0] - m[0][0] * m[1][2] * m[2][1] - m[0][1] * m[1][0] * m[2][2];
    det = std::fabs(det);
    if (det == 0.0) return e;
    // Inverse: the transposed cofactors divided by the determinant.
    double inv[3][3];
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            // Cofactor of element (j, i).
            const int f0 = j == 0 ? 1 : 0, f1 = j == 2 ? 1 : 2;
            const int c0 = i == 0 ? 1 : 0, c1 = i == 2 ? 1 : 2;
            const double menor = m[f0][c0] * m[f1][c1] - m[f0][c1] * m[f1][c0];
            const double cof = ((i + j) % 2 == 0) ? menor : -menor;
            inv[i][j] = cof / det;
        }
    }
    for (int i = 0; i < 3; ++i) {
        e.B[i] = inv[i][0] * tf[0] + inv[i][1] * tf[1] + inv[i][2] * tf[2];
        e.A[i] = inv[i][0] * tc[0] + inv[i][1] * tc[1] + inv[i][2] * tc[2];
    }
    double cuadrados = 0;
    for (std::size_t k = 0; k < total; ++k) {
        const PuntoControl& q = puntos[k];
        if (!q.activo) continue;
        const double fe = e.B[0] + e.B[1] * q.x + e.B[2] * q.y;
        const double ce = e.A[0] + e.A[1] * q.x + e.A[2] * q.y;
        const double df = q.fila - fe, dc = q.columna - ce;
        e.filaEstimada[k] = fe;
        e.columnaEstimada[k] = ce;
        e.errores[k] = std::sqrt(df * df + dc * dc);
        cuadrados += e.errores[k] * e.errores[k];
    }
    e.rms = std::sqrt(cuadrados / static_cast<double>(n));
    return e;
}

std::string InformeEstimacion(const Estimacion& e, const std::vector<PuntoControl>& puntos) {
    std::ostringstream o;
    o.imbue(std::locale::classic());
    o << "Este fichero muestra los Estimadores obtenidos, así como las filas y columnas de los puntos de control como las"
      << "estimadas a partir de éstos, con los errores de cada punto de control y el RMS o error global.\n\n";
    o << " Los Estimadores obtenidos son:\n\n";
    o << " Los estimadores de las filas son:\n";
    o << "\tB0 = " << e.B[0] << "\n" << "\tB1 = " << e.B[1] << "\n" << "\tB2 = " << e.B[2] << "\n";
    o << " Los estimadores de las columnas son:\n";
    o << "\tA0 = " << e.A[0] << "\n" << "\tA1 = " << e.A[1] << "\n" << "\tA2 = " << e.A[2] << "\n\n\n";
    o << "A continuación mostramos las coordenadas de los puntos de control, sus estimaciones y errores.\n";
    o << " Fila\t     Fila est.\t   Columna\t Columna est.\t  Eror EL \n";
    o << "---------------------------------------------------\n ";
    for (std::size_t k = 0; k < puntos.size(); ++k) {
        if (!puntos[k].activo) continue;
        o << puntos[k].fila << "      " << e.filaEstimada[k] << "      " << puntos[k].columna << "      "
          << e.columnaEstimada[k] << "      " << e.errores[k] << "\n ";
    }
    o << "------------------------------------------------------\n";
    o << "Error de posición (rms medio al hacer la correción):\t" << e.rms;
    return o.str();
}

namespace {

std::string Sangria(int numero) {
    return std::string(numero < 10 ? 14 : numero < 100 ? 12 : 11, ' ') + std::to_string(numero) +
           std::string(22, ' ');
}

}  // namespace

std::string TextoLf(double v) {
    std::ostringstream o;
    o.imbue(std::locale::classic());
    o.setf(std::ios::fixed);
    o.precision(6);
    o << v;
    return o.str();
}

std::string LineaErrorPunto(int numero, double error) { return Sangria(numero) + TextoLf(error); }

std::string LineaErrorPunto(int numero, const char* palabra) { return Sangria(numero) + palabra; }

}  // namespace orvela
