// Rank and mode filters on the 7000 x 7000 scene, in millions of pixels per
// second of processor time, for every filter, window size and sample type
// (tipo 1 byte, 2 double, 3 integer, 4 real).
#include <benchmark/benchmark.h>

#include "bench/Escena.h"
#include "tools/FiltrosRango.h"

namespace {

using Filtro = bool (*)(const orvela::Muestras&, long, long, int, orvela::Muestras&, orvela::Progreso&);

void Rango(benchmark::State& estado, Filtro filtro) {
    const int codigo = static_cast<int>(estado.range(0));
    const int k = static_cast<int>(estado.range(1));
    const orvela::Muestras entrada = orvela::bench::Banda(4, codigo);
    orvela::Muestras salida = orvela::bench::Salida(codigo, entrada.Cantidad());
    for (auto _ : estado) {
        filtro(entrada, orvela::bench::kLado, orvela::bench::kLado, k, salida, orvela::SinProgreso());
        benchmark::DoNotOptimize(salida.Datos());
    }
    const double pixeles = static_cast<double>(orvela::bench::kLado) * orvela::bench::kLado;
    estado.counters["Mpix/s"] = benchmark::Counter(pixeles * 1e-6 * static_cast<double>(estado.iterations()),
                                                   benchmark::Counter::kIsRate);
}

void Argumentos(benchmark::internal::Benchmark* b) {
    for (const int codigo : {orvela::kByte, orvela::kInteger, orvela::kReal, orvela::kDouble})
        for (const int k : {3, 5, 7}) b->Args({codigo, k});
    b->ArgNames({"tipo", "k"})->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK_CAPTURE(Rango, Minimo, orvela::FiltroMinimo)->Apply(Argumentos)->Iterations(3);
BENCHMARK_CAPTURE(Rango, Maximo, orvela::FiltroMaximo)->Apply(Argumentos)->Iterations(3);
BENCHMARK_CAPTURE(Rango, Mediana, orvela::FiltroMediana)->Apply(Argumentos)->Iterations(1);
BENCHMARK_CAPTURE(Rango, Moda, orvela::FiltroModa)->Apply(Argumentos)->Iterations(1);
