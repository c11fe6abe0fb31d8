// Image tools on the 7000 x 7000 scene, for each sample type (tipo 1 byte,
// 2 double, 3 integer, 4 real), on one core (nucleos 1) and on every core
// (nucleos 0), in wall-clock time: composition of six bands, reclassification,
// contraction and expansion by 2 x 2, whole-image statistics, regression of
// a pair, its scatter grid, and area per category of a byte classification.
#include <benchmark/benchmark.h>

#include "bench/Escena.h"
#include "base/Progreso.h"
#include "tools/AreaCategorias.h"
#include "tools/Componer.h"
#include "tools/ComposicionColor.h"
#include "tools/EstadisticasImagen.h"
#include "tools/Reclasificar.h"
#include "tools/Reformar.h"
#include "tools/Regresion.h"
#include "image/Estadisticas.h"

namespace {

using namespace orvela;
using bench::kLado;

constexpr int kBandas[6] = {1, 2, 3, 4, 5, 7};

int Preparar(benchmark::State& estado) {
    FijarNucleos(static_cast<int>(estado.range(1)));
    return static_cast<int>(estado.range(0));
}

void Pixeles(benchmark::State& estado) {
    estado.counters["Mpx/s"] = benchmark::Counter(static_cast<double>(kLado) * kLado * 1e-6 *
                                                      static_cast<double>(estado.iterations()),
                                                  benchmark::Counter::kIsRate);
    FijarNucleos(0);
}

void Componer6(benchmark::State& estado) {
    const int codigo = Preparar(estado);
    std::vector<Muestras> b;
    for (int k : kBandas) b.push_back(bench::Banda(k, codigo));
    std::vector<const Muestras*> p;
    for (const auto& m : b) p.push_back(&m);
    Muestras s = bench::Salida(codigo, b[0].Cantidad());
    for (auto _ : estado) {
        ComponerSinReferencia(p, CriterioComponer::Maximo, kLado, kLado, s);
        benchmark::DoNotOptimize(s.Datos());
    }
    Pixeles(estado);
}

void ComponerReferencia6(benchmark::State& estado) {
    const int codigo = Preparar(estado);
    std::vector<Muestras> b;
    for (int k : kBandas) b.push_back(bench::Banda(k, codigo));
    std::vector<const Muestras*> p, r;
    for (const auto& m : b) p.push_back(&m);
    for (auto it = b.rbegin(); it != b.rend(); ++it) r.push_back(&*it);
    Muestras s = bench::Salida(codigo, b[0].Cantidad());
    for (auto _ : estado) {
        ComponerConReferencia(p, r, CriterioComponer::Maximo, kLado, kLado, s);
        benchmark::DoNotOptimize(s.Datos());
    }
    Pixeles(estado);
}

void ReclasificarBanda(benchmark::State& estado) {
    const int codigo = Preparar(estado);
    const Muestras e = bench::Banda(4, codigo);
    Muestras s = bench::Salida(codigo, e.Cantidad());
    for (auto _ : estado) {
        Reclasificar(e, kLado, kLado, 60, 90, 1, s);
        benchmark::DoNotOptimize(s.Datos());
    }
    Pixeles(estado);
}

void Contraer2(benchmark::State& estado) {
    const int codigo = Preparar(estado);
    const Muestras e = bench::Banda(4, codigo);
    Muestras s = bench::Salida(codigo, e.Cantidad() / 4);
    for (auto _ : estado) {
        Contraer(e, kLado, kLado, 2, 2, s);
        benchmark::DoNotOptimize(s.Datos());
    }
    Pixeles(estado);
}

// A 3500 x 3500 window expanded back to 7000 x 7000.
void Expandir2(benchmark::State& estado) {
    const int codigo = Preparar(estado);
    const Muestras b = bench::Banda(4, codigo);
    Muestras e = bench::Salida(codigo, b.Cantidad() / 4);
    Enventanar(b, kLado, kLado, 0, 0, kLado / 2, kLado / 2, e);
    Muestras s = bench::Salida(codigo, b.Cantidad());
    for (auto _ : estado) {
        Expandir(e, kLado / 2, kLado / 2, 2, 2, s);
        benchmark::DoNotOptimize(s.Datos());
    }
    Pixeles(estado);
}

void Estadisticas(benchmark::State& estado) {
    const int codigo = Preparar(estado);
    const Muestras e = bench::Banda(4, codigo);
    for (auto _ : estado) benchmark::DoNotOptimize(CalcularEstadisticas(e));
    Pixeles(estado);
}

void RegresionPar(benchmark::State& estado) {
    const int codigo = Preparar(estado);
    const Muestras x = bench::Banda(3, codigo), y = bench::Banda(4, codigo);
    for (auto _ : estado) benchmark::DoNotOptimize(CalcularRegresion(x, y, nullptr, kLado));
    Pixeles(estado);
}

void Dispersion(benchmark::State& estado) {
    const int codigo = Preparar(estado);
    const Muestras x = bench::Banda(3, codigo), y = bench::Banda(4, codigo);
    double minX = 0, maxX = 0, minY = 0, maxY = 0;
    MinimoMaximo(x, minX, maxX);
    MinimoMaximo(y, minY, maxY);
    for (auto _ : estado) benchmark::DoNotOptimize(RejillaDispersion(x, y, nullptr, minX, maxX, minY, maxY));
    Pixeles(estado);
}

void AreaClasificacion(benchmark::State& estado) {
    const int codigo = Preparar(estado);
    Muestras e = bench::Banda(4, codigo);
    // A classification-like image: the band in 8 classes.
    ConTipo(codigo, [&]<class T>(Muestra<T>) {
        for (T& v : e.Como<T>()) v = static_cast<T>(static_cast<unsigned>(v) % 8u);
    });
    for (auto _ : estado) benchmark::DoNotOptimize(CalcularAreaCategorias(e, "UTM-30N", "m", 30));
    Pixeles(estado);
}

void Color(benchmark::State& estado) {
    const int codigo = Preparar(estado);
    const Muestras b = bench::Banda(1, codigo), g = bench::Banda(2, codigo), r = bench::Banda(3, codigo);
    for (auto _ : estado) benchmark::DoNotOptimize(ComponerColor(b, g, r, kLado, EscaladoColor::Lineal2));
    Pixeles(estado);
}

void Todos(benchmark::internal::Benchmark* b) {
    for (const int codigo : {kByte, kInteger, kReal, kDouble})
        for (const int nucleos : {1, 0}) b->Args({codigo, nucleos});
    b->ArgNames({"tipo", "nucleos"})->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
}

void Enteros(benchmark::internal::Benchmark* b) {
    for (const int codigo : {kByte, kInteger})
        for (const int nucleos : {1, 0}) b->Args({codigo, nucleos});
    b->ArgNames({"tipo", "nucleos"})->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
}

}  // namespace

BENCHMARK(Componer6)->Apply(Todos);
BENCHMARK(ComponerReferencia6)->Apply(Todos);
BENCHMARK(ReclasificarBanda)->Apply(Todos);
BENCHMARK(Contraer2)->Apply(Todos);
BENCHMARK(Expandir2)->Apply(Todos);
BENCHMARK(Estadisticas)->Apply(Todos);
BENCHMARK(RegresionPar)->Apply(Todos);
BENCHMARK(Dispersion)->Apply(Todos);
BENCHMARK(AreaClasificacion)->Apply(Enteros);
BENCHMARK(Color)->Apply(Todos);
