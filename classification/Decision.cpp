#include "classification/Decision.h"

#include <cmath>
#include <cstring>
#include <fstream>

#include "classification/Supervisada.h"
#include "image/Conversion.h"

namespace orvela {

double DistanciaClase(const ClaseLeida& c, const double* x) {
    double s = 0;
    for (std::size_t b = 0; b < c.media.size(); ++b) s += (x[b] - c.media[b]) * (x[b] - c.media[b]);
    return std::sqrt(s);
}

int BandasEnCaja(const ClaseLeida& c, int multiplicador, const double* x) {
    const double m = multiplicador;
    int dentro = 0;
    for (std::size_t b = 0; b < c.media.size(); ++b) {
        const double bajo = c.media[b] - m * c.desviacion[b], alto = c.media[b] + m * c.desviacion[b];
        dentro += bajo <= x[b] && x[b] <= alto;
    }
    return dentro;
}

namespace {

// The first of the classes (other than `salvo`) that `mejor(a, b)` prefers,
// taken in order with the earlier class kept unless the later is strictly
// better: the comparison sequence of the pixel loops.
template <class Mejor>
int Elegir(const std::vector<FiguraClase>& f, int salvo, Mejor mejor) {
    int r = -1;
    for (int i = 0; i < static_cast<int>(f.size()); ++i) {
        if (i == salvo) continue;
        if (r < 0 || mejor(f[i].valor, f[r].valor)) r = i;
    }
    return r;
}

}  // namespace

Decision Decidir(ReglaSupervisada regla, const std::vector<ClaseLeida>& clases, int multiplicador,
                 const std::vector<double>& x) {
    Decision d;
    for (const auto& c : clases) {
        FiguraClase f;
        f.nd = NdClase(c);
        switch (regla) {
            case ReglaSupervisada::Distancia: f.valor = DistanciaClase(c, x.data()); break;
            case ReglaSupervisada::Paralelepipedos: {
                const int n = BandasEnCaja(c, multiplicador, x.data());
                f.valor = n;
                f.dentro = n == static_cast<int>(c.media.size());
                break;
            }
            case ReglaSupervisada::Probabilidad: f.valor = LogVerosimilitud(PrepararModelo(c), x.data()); break;
        }
        d.clases.push_back(f);
    }
    switch (regla) {
        case ReglaSupervisada::Distancia: {
            auto menor = [](double a, double b) { return a < b; };
            d.ganadora = Elegir(d.clases, -1, menor);
            d.segunda = Elegir(d.clases, d.ganadora, menor);
            break;
        }
        case ReglaSupervisada::Probabilidad: {
            auto mayor = [](double a, double b) { return a > b; };
            d.ganadora = Elegir(d.clases, -1, mayor);
            d.segunda = Elegir(d.clases, d.ganadora, mayor);
            break;
        }
        case ReglaSupervisada::Paralelepipedos: {
            for (int i = 0; i < static_cast<int>(d.clases.size()); ++i)
                if (d.clases[i].dentro) d.ganadora = i;
            // Most bands inside; on equal counts the later class, as the
            // later box wins.
            d.segunda = Elegir(d.clases, d.ganadora, [](double a, double b) { return a >= b; });
            break;
        }
    }
    if (d.ganadora >= 0) d.etiqueta = AlmacenarEntero<uint8_t>(d.clases[d.ganadora].nd);
    return d;
}

std::optional<double> LeerMuestraRaster(const std::string& ruta, int codigo, long columnas, long fila,
                                        long columna) {
    const std::size_t ancho = AnchoMuestra(codigo);
    if (ancho == 0 || fila < 0 || columna < 0 || columna >= columnas) return std::nullopt;
    std::ifstream f(ruta, std::ios::binary);
    if (!f) return std::nullopt;
    const auto posicion = (static_cast<std::streamoff>(fila) * columnas + columna) * static_cast<std::streamoff>(ancho);
    char bytes[8];
    if (!f.seekg(posicion) || !f.read(bytes, static_cast<std::streamsize>(ancho))) return std::nullopt;
    return ConTipo(codigo, [&]<class T>(Muestra<T>) {
        T v;
        std::memcpy(&v, bytes, sizeof v);
        return Leer(v);
    });
}

}  // namespace orvela
