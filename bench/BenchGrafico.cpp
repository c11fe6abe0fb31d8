// Speed of the scatter diagram of two bands of the 7000 x 7000 scene: the
// 256 x 256 grid of counts filled in one pass over the pair, then drawn as
// a chart (and the drawing alone), in each data type, on one core and on
// every core (wall-clock time).
#include <benchmark/benchmark.h>

#include "Escena.h"
#include "base/Progreso.h"
#include "tools/DibujarGrafico.h"

namespace orvela::bench {

namespace {

const Muestras& Par(int banda, int codigo) {
    static Muestras cache[8][5];
    Muestras& m = cache[banda][codigo];
    if (!m.Valido() || m.Cantidad() == 0) m = Banda(banda, codigo);
    return m;
}

const char* Nombre(int codigo) {
    switch (codigo) {
        case kByte: return "byte";
        case kInteger: return "integer";
        case kReal: return "real";
        default: return "double";
    }
}

// Arguments: type code, cores (1, or 0 for every core).
void BM_DiagramaDispersion(benchmark::State& s) {
    const int codigo = static_cast<int>(s.range(0));
    const Muestras& x = Par(3, codigo);
    const Muestras& y = Par(4, codigo);
    FijarNucleos(static_cast<int>(s.range(1)));
    for (auto _ : s) {
        Grafico g;
        g.titulo = "Diagrama de dispersión";
        g.ejeX = "Banda 3";
        g.ejeY = "Banda 4";
        g.rangoDeLosDatos = true;
        auto nube = NubeDeDispersion(x, y);
        if (!nube) s.SkipWithError("sin nube");
        g.series.push_back(std::move(*nube));
        g.series.push_back(SerieGrafico::Recta(3, 0.9));
        benchmark::DoNotOptimize(DibujarGrafico(g).imagen.rgb.data());
    }
    FijarNucleos(0);
    s.SetLabel(std::string(Nombre(codigo)) + (s.range(1) == 1 ? ", un núcleo" : ", todos los núcleos"));
    s.counters["Mpix/s"] = benchmark::Counter(static_cast<double>(s.iterations()) * kLado * kLado / 1e6,
                                              benchmark::Counter::kIsRate);
}
BENCHMARK(BM_DiagramaDispersion)
    ->ArgsProduct({{kByte, kInteger, kReal, kDouble}, {1, 0}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// The drawing alone, of a full grid of 65536 counts.
void BM_DibujarNube(benchmark::State& s) {
    Grafico g;
    g.titulo = "Diagrama de dispersión";
    g.xMaximo = g.yMaximo = 255;
    SerieGrafico nube;
    nube.lado = 2;
    for (int j = 0; j < 256; ++j)
        for (int i = 0; i < 256; ++i) nube.puntos.push_back({double(i), double(j), uint64_t(1 + (i * j) % 977)});
    g.series.push_back(std::move(nube));
    for (auto _ : s) benchmark::DoNotOptimize(DibujarGrafico(g).imagen.rgb.data());
}
BENCHMARK(BM_DibujarNube)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace orvela::bench
