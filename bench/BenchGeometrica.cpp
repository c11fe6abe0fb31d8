// The whole `geometrica` order of orvela-cli on a 7000 x 7000 byte scene to
// a 7000 x 7000 grid: the input pair read, the control points read and
// estimated, the resampling, the result pair and the report written. By
// method (nearest, bilinear, cubic), on one core (nucleos 1) and on every
// core (nucleos 0). The files live in a temporary folder.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <string>
#include <unistd.h>

#include "base/Progreso.h"
#include "bench/Escena.h"
#include "image/CImagen.h"
#include "operations/Curso.h"
#include "operations/Operacion.h"

namespace {

using orvela::bench::kLado;

const std::string& Carpeta() {
    static const std::string c = [] {
        std::string p = "/tmp/orvela-bench-geo-XXXXXX";
        if (!::mkdtemp(p.data())) std::abort();
        return p;
    }();
    return c;
}

// The scene as a byte pair, and twelve control points measured on it
// through a slight rotation and scale with 30 m pixels (line counted from
// the last row up), as a real scene gives.
const std::string& Entrada() {
    static const std::string ruta = [] {
        orvela::CImagen im;
        if (im.Iniciar("", "", "tm4", kLado, kLado, "byte", 0, 0, "unknown", "m", {})) std::abort();
        std::memcpy(im.pixeles.Datos(), orvela::bench::BandaByte(4).data(), im.pixeles.Bytes());
        const std::string stem = Carpeta() + "/tm4";
        if (im.Guardar(stem, 1)) std::abort();
        std::ofstream f(Carpeta() + "/puntos.txt");
        f << std::setprecision(17) << 12 << "\n";
        const double x0 = 400000, y0 = 4400000;
        for (int k = 0; k < 12; ++k) {
            const double x = x0 + 30.0 * (300 + 550 * (k % 4) + 37 * k), y = y0 + 30.0 * (400 + 2000 * (k / 4) + 11 * k);
            const double fila = (y - y0) / 30 * 0.999 + (x - x0) / 30 * 0.01 + 2;
            const double columna = (x - x0) / 30 * 0.999 - (y - y0) / 30 * 0.01 + 40;
            f << fila << " " << columna << " " << x << " " << y << "\n";
        }
        return stem + ".ozm";
    }();
    return ruta;
}

void OrdenGeometrica(benchmark::State& estado) {
    const int metodo = static_cast<int>(estado.range(0));
    orvela::FijarNucleos(static_cast<int>(estado.range(1)));
    const orvela::Declaracion& d = *orvela::BuscarPorOrden("geometrica");
    const std::string entrada = Entrada();
    const double lado = 30.0 * kLado;
    orvela::Valores v;
    v.Poner(orvela::ClaveDe(d, "x_maxima"), 400000 + lado);
    v.Poner(orvela::ClaveDe(d, "x_minima"), 400000.0);
    v.Poner(orvela::ClaveDe(d, "y_maxima"), 4400000 + lado);
    v.Poner(orvela::ClaveDe(d, "y_minima"), 4400000.0);
    v.Poner(orvela::ClaveDe(d, "columnas"), static_cast<double>(kLado));
    v.Poner(orvela::ClaveDe(d, "filas"), static_cast<double>(kLado));
    v.Poner(orvela::ClaveDe(d, "metodo"), static_cast<double>(metodo));
    v = orvela::Completar(d, v);
    for (auto _ : estado) {
        const auto e = orvela::EjecutarAFichero(d, {{entrada}, {}}, {{}, {Carpeta() + "/puntos.txt"}}, v,
                                                Carpeta() + "/corregida");
        if (e.fallo) estado.SkipWithError(e.fallo->mensaje.Texto().c_str());
    }
    estado.SetLabel(metodo == 0 ? "vecino" : metodo == 1 ? "bilineal" : "cubica");
    orvela::FijarNucleos(0);
}

}  // namespace

BENCHMARK(OrdenGeometrica)
    ->ArgsProduct({{0, 1, 2}, {1, 0}})
    ->ArgNames({"metodo", "nucleos"})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(3);
