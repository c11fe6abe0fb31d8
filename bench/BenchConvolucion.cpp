// Speed of the convolution filters on a 7000 x 7000 scene, in millions of
// pixels per second, for every filter, window size and sample type.
#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

#include "bench/Escena.h"
#include "tools/FiltroDireccional.h"
#include "tools/FiltroMedia.h"
#include "tools/FiltroPasoAlto.h"
#include "tools/FiltroPasoBajo.h"
#include "tools/FiltroPersonalizado.h"

namespace {

using namespace orvela;

// The scene in one sample type; only the last one asked for is kept, the
// benchmarks being registered type after type.
const Muestras& Escena(int codigo) {
    static int actual = 0;
    static Muestras escena;
    if (actual != codigo) {
        escena = Muestras();
        escena = bench::Banda(4, codigo);
        actual = codigo;
    }
    return escena;
}

using Filtro = std::function<bool(const Muestras&, long, long, Muestras&)>;

void Medir(benchmark::State& state, int codigo, const Filtro& f) {
    const Muestras& in = Escena(codigo);
    Muestras out = bench::Salida(codigo, in.Cantidad());
    for (auto _ : state) {
        if (!f(in, bench::kLado, bench::kLado, out)) state.SkipWithError("filtro rechazado");
        benchmark::DoNotOptimize(out.Datos());
        benchmark::ClobberMemory();
    }
    state.counters["Mpx/s"] = benchmark::Counter(
        static_cast<double>(in.Cantidad()) * static_cast<double>(state.iterations()) / 1e6, benchmark::Counter::kIsRate);
}

// A sharpening kernel of whole numbers and a smoothing one of decimals.
std::vector<double> Entero(int k) {
    std::vector<double> w(k * k, -1.0);
    w[k * k / 2] = k * k;
    return w;
}
std::vector<double> Decimal(int k) {
    std::vector<double> w(k * k);
    const int h = k / 2;
    for (int f = 0; f < k; ++f)
        for (int c = 0; c < k; ++c) w[f * k + c] = 1.5 / (1.0 + (f - h) * (f - h) + (c - h) * (c - h));
    return w;
}

const int registrados = [] {
    const std::pair<int, const char*> tipos[] = {{kByte, "byte"}, {kInteger, "integer"}, {kReal, "real"}, {kDouble, "double"}};
    const std::pair<PasoBajo, const char*> bajos[] = {
        {PasoBajo::Promedio, "promedio"}, {PasoBajo::Ponderado1, "ponderado1"}, {PasoBajo::Ponderado2, "ponderado2"}};
    const std::pair<PasoAlto, const char*> altos[] = {{PasoAlto::Laplaciano9, "laplaciano9"}, {PasoAlto::Laplaciano5, "laplaciano5"}};
    for (const auto& [codigo, tipo] : tipos) {
        auto registrar = [codigo = codigo, tipo = tipo](const std::string& nombre, int k, Filtro f) {
            const std::string n = nombre + "/" + tipo + "/" + std::to_string(k) + "x" + std::to_string(k);
            benchmark::RegisterBenchmark(n.c_str(), [codigo, f](benchmark::State& s) { Medir(s, codigo, f); })
                ->Unit(benchmark::kMillisecond);
        };
        for (int k : {3, 5, 7}) {
            registrar("Media", k, [k](const Muestras& i, long fi, long co, Muestras& o) { return FiltroMedia(i, fi, co, k, o); });
            for (const auto& [v, nombre] : bajos)
                registrar(std::string("PasoBajo_") + nombre, k, [k, v = v](const Muestras& i, long fi, long co, Muestras& o) {
                    return FiltroPasoBajo(i, fi, co, k, v, o);
                });
            for (const auto& [v, nombre] : altos)
                registrar(std::string("PasoAlto_") + nombre, k, [k, v = v](const Muestras& i, long fi, long co, Muestras& o) {
                    return FiltroPasoAlto(i, fi, co, k, v, o);
                });
            registrar("Personalizado_entero", k, [k](const Muestras& i, long fi, long co, Muestras& o) {
                return FiltroPersonalizado(i, fi, co, k, Entero(k), o);
            });
            registrar("Personalizado_decimal", k, [k](const Muestras& i, long fi, long co, Muestras& o) {
                return FiltroPersonalizado(i, fi, co, k, Decimal(k), o);
            });
        }
        registrar("Direccional_n", 3, [](const Muestras& i, long fi, long co, Muestras& o) {
            return FiltroDireccional(i, fi, co, Direccion::N, o);
        });
    }
    return 0;
}();

}  // namespace
