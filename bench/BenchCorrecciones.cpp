// Corrections on the 7000 x 7000 scene, for every sample type (tipo 1 byte,
// 2 double, 3 integer, 4 real), on one core (nucleos 1) and on every core
// (nucleos 0): destriping, lost lines, lost pixels, and the resampling of
// the geometric correction to a 7000 x 7000 grid.
#include <benchmark/benchmark.h>

#include <cstring>

#include "base/Progreso.h"
#include "bench/Escena.h"
#include "corrections/Bandeado.h"
#include "corrections/CorreccionGeometrica.h"
#include "corrections/LineasPerdidas.h"
#include "corrections/PixelesPerdidos.h"

namespace {

using orvela::bench::kLado;

void Pixeles(benchmark::State& estado) {
    const double n = static_cast<double>(kLado) * kLado;
    estado.counters["Mpix/s"] =
        benchmark::Counter(n * 1e-6 * static_cast<double>(estado.iterations()), benchmark::Counter::kIsRate);
    orvela::FijarNucleos(0);
}

void Bandeado(benchmark::State& estado) {
    const int codigo = static_cast<int>(estado.range(0));
    orvela::FijarNucleos(static_cast<int>(estado.range(1)));
    const orvela::Muestras entrada = orvela::bench::Banda(1, codigo);
    orvela::Muestras salida = orvela::bench::Salida(orvela::kDouble, entrada.Cantidad());
    for (auto _ : estado) {
        orvela::Destripe(entrada, kLado, kLado, salida);
        benchmark::DoNotOptimize(salida.Datos());
    }
    Pixeles(estado);
}

// Lost lines (mean of the neighbours) on a copy of the band with one line
// of zeros every 500; the copy is part of the order's work.
void Lineas(benchmark::State& estado) {
    const int codigo = static_cast<int>(estado.range(0));
    orvela::FijarNucleos(static_cast<int>(estado.range(1)));
    orvela::Muestras entrada = orvela::bench::Banda(3, codigo);
    const std::size_t ancho = orvela::AnchoMuestra(codigo) * kLado;
    for (long l = 250; l < kLado; l += 500) std::memset(entrada.Datos() + l * ancho, 0, ancho);
    orvela::Muestras copia = orvela::bench::Salida(codigo, entrada.Cantidad());
    const orvela::UmbralesLineas u{10, 5, 50};
    for (auto _ : estado) {
        std::memcpy(copia.Datos(), entrada.Datos(), entrada.Bytes());
        orvela::CorregirLineas(copia, nullptr, kLado, kLado, orvela::MetodoLineas::Media, u);
        benchmark::DoNotOptimize(copia.Datos());
    }
    Pixeles(estado);
}

void PixelesPerdidos(benchmark::State& estado) {
    const int codigo = static_cast<int>(estado.range(0));
    orvela::FijarNucleos(static_cast<int>(estado.range(1)));
    const orvela::Muestras entrada = orvela::bench::Banda(5, codigo);
    orvela::Muestras copia = orvela::bench::Salida(codigo, entrada.Cantidad());
    for (auto _ : estado) {
        std::memcpy(copia.Datos(), entrada.Datos(), entrada.Bytes());
        orvela::CorregirPixeles(copia, kLado, kLado, 50);
        benchmark::DoNotOptimize(copia.Datos());
    }
    Pixeles(estado);
}

// A slight rotation and scale, as control points of a real scene give:
// 30 m pixels, the grid over the image's own extent.
void Geometrica(benchmark::State& estado, orvela::Remuestreo metodo) {
    const int codigo = static_cast<int>(estado.range(0));
    orvela::FijarNucleos(static_cast<int>(estado.range(1)));
    const orvela::Muestras entrada = orvela::bench::Banda(4, codigo);
    orvela::Muestras salida = orvela::bench::Salida(codigo, entrada.Cantidad());
    const double x0 = 400000, y0 = 4400000, lado = 30.0 * kLado;
    // line = (y - y0) / 30 * 0.999 + (x - x0) / 30 * 0.01 + 2, column = (x - x0) / 30 * 0.999 - (y - y0) / 30 * 0.01 + 40
    const double B[3] = {2 - y0 / 30 * 0.999 - x0 / 30 * 0.01, 0.01 / 30, 0.999 / 30};
    const double A[3] = {40 - x0 / 30 * 0.999 + y0 / 30 * 0.01, 0.999 / 30, -0.01 / 30};
    const orvela::Rejilla g{x0 + lado, x0, y0 + lado, y0, kLado, kLado};
    for (auto _ : estado) {
        orvela::Remuestrear(metodo, entrada, kLado, kLado, B, A, g, salida);
        benchmark::DoNotOptimize(salida.Datos());
    }
    Pixeles(estado);
}

void Argumentos(benchmark::internal::Benchmark* b) {
    for (const int codigo : {orvela::kByte, orvela::kInteger, orvela::kReal, orvela::kDouble})
        for (const int nucleos : {1, 0}) b->Args({codigo, nucleos});
    b->ArgNames({"tipo", "nucleos"})->Unit(benchmark::kMillisecond)->UseRealTime();
}

}  // namespace

BENCHMARK(Bandeado)->Apply(Argumentos)->Iterations(3);
BENCHMARK(Lineas)->Apply(Argumentos)->Iterations(3);
BENCHMARK(PixelesPerdidos)->Apply(Argumentos)->Iterations(3);
BENCHMARK_CAPTURE(Geometrica, Vecino, orvela::Remuestreo::Vecino)->Apply(Argumentos)->Iterations(3);
BENCHMARK_CAPTURE(Geometrica, Bilineal, orvela::Remuestreo::Bilineal)->Apply(Argumentos)->Iterations(3);
BENCHMARK_CAPTURE(Geometrica, Cubica, orvela::Remuestreo::Cubica)->Apply(Argumentos)->Iterations(3);
