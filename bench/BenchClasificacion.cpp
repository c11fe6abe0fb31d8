// Speed of the classifiers on the 7000 x 7000 scene of six byte bands
// (TM 1, 2, 3, 4, 5, 7) with eight classes sampled on it, on one core and on
// every core: the three supervised rules, one pass of the unsupervised
// classification (with its seeding and labelling), the random sampling of a
// mask and the confusion matrix of a classified image.
#include <benchmark/benchmark.h>

#include "Escena.h"
#include "base/Progreso.h"
#include "classification/Confusion.h"
#include "classification/FicheroClase.h"
#include "classification/Muestreo.h"
#include "classification/NoSupervisada.h"
#include "classification/Supervisada.h"
#include "image/CImagen.h"

namespace orvela::bench {

namespace {

constexpr int kBandasTm[] = {1, 2, 3, 4, 5, 7};

const std::vector<CImagen>& Bandas() {
    static std::vector<CImagen> v = [] {
        std::vector<CImagen> b(6);
        for (int i = 0; i < 6; ++i) {
            b[i].pixeles = Banda(kBandasTm[i], kByte);
            b[i].tipoDato = kByte;
            b[i].filas = b[i].columnas = static_cast<double>(kLado);
            b[i].tieneImagen = true;
        }
        return b;
    }();
    return v;
}

BandasClasificar Entrada() {
    BandasClasificar b;
    for (const auto& im : Bandas()) b.bandas.push_back(&im.pixeles);
    b.filas = b.columnas = kLado;
    return b;
}

// Eight classes from 11 x 11 rectangles at spread positions of the scene.
const std::vector<ClaseLeida>& Clases() {
    static std::vector<ClaseLeida> v = [] {
        std::vector<const CImagen*> ptr;
        for (const auto& im : Bandas()) ptr.push_back(&im);
        std::vector<ClaseLeida> c;
        for (int k = 0; k < 8; ++k) {
            const long f = 20 + 37 * k, col = 15 + 33 * ((k * 5) % 8);
            const auto e = CalcularClase(ptr, {"1", "2", "3", "4", "5", "7"},
                                         GrupoMuestras(ModoMuestreo::Rectangulos, f, col, 5, 5));
            ClaseLeida l;
            l.nombre = "c" + std::to_string(k);
            for (const auto& b : e.bandas) {
                l.media.push_back(b.media);
                l.desviacion.push_back(b.desviacion);
            }
            l.covarianza = e.covarianza;
            c.push_back(std::move(l));
        }
        return c;
    }();
    return v;
}

void Ritmo(benchmark::State& s) {
    s.counters["Mpix/s"] = benchmark::Counter(static_cast<double>(s.iterations()) * kLado * kLado / 1e6,
                                              benchmark::Counter::kIsRate);
}

template <class F> void Supervisada(benchmark::State& s, F regla) {
    FijarNucleos(static_cast<int>(s.range(0)));
    const auto b = Entrada();
    const auto& c = Clases();
    Muestras salida = Salida(kByte, static_cast<std::size_t>(kLado * kLado));
    for (auto _ : s) benchmark::DoNotOptimize(regla(b, c, salida.Como<uint8_t>()));
    Ritmo(s);
    FijarNucleos(0);
}

void BM_MinimaDistancia(benchmark::State& s) {
    Supervisada(s, [](auto& b, auto& c, auto o) { return ClasificarMinimaDistancia(b, c, o); });
}
void BM_Paralelepipedos(benchmark::State& s) {
    Supervisada(s, [](auto& b, auto& c, auto o) { return ClasificarParalelepipedos(b, c, 2, o); });
}
void BM_MaximaProbabilidad(benchmark::State& s) {
    Supervisada(s, [](auto& b, auto& c, auto o) { return ClasificarMaximaProbabilidad(b, c, o); });
}
// One pass (maxPasadas = 1): band extremes, one assignment with the member
// sums, and the labelling assignment.
void BM_NoSupervisadaUnaPasada(benchmark::State& s) {
    Supervisada(s, [](auto& b, auto&, auto o) { return ClasificarNoSupervisada(b, 8, o, 1).pasadas; });
}

void BM_Muestreo(benchmark::State& s) {
    Muestras salida = Salida(kByte, static_cast<std::size_t>(kLado * kLado));
    for (auto _ : s)
        benchmark::DoNotOptimize(MuestreoAleatorio(kLado, kLado, s.range(0), 2024, salida.Como<uint8_t>()));
}

void BM_Confusion(benchmark::State& s) {
    static CImagen mascara, clasificada;
    if (mascara.NumeroPixeles() == 0) {
        for (CImagen* im : {&mascara, &clasificada}) {
            im->pixeles = Muestras::Crear(kByte, static_cast<std::size_t>(kLado * kLado));
            im->tipoDato = kByte;
            im->filas = im->columnas = static_cast<double>(kLado);
        }
        MuestreoAleatorio(kLado, kLado, 10000, 7, mascara.pixeles.Como<uint8_t>());
        FijarNucleos(0);
        ClasificarMinimaDistancia(Entrada(), Clases(), clasificada.pixeles.Como<uint8_t>());
    }
    std::vector<ClaseLeyenda> leyenda;
    for (const auto& c : Clases()) leyenda.push_back({c.nombre, static_cast<double>(NdClase(c))});
    MatrizConfusion m;
    for (auto _ : s) benchmark::DoNotOptimize(CalcularConfusion(mascara, clasificada, clasificada, leyenda, m));
    Ritmo(s);
}

}  // namespace

BENCHMARK(BM_MinimaDistancia)->Arg(1)->Arg(0)->ArgName("nucleos")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_Paralelepipedos)->Arg(1)->Arg(0)->ArgName("nucleos")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_MaximaProbabilidad)->Arg(1)->Arg(0)->ArgName("nucleos")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_NoSupervisadaUnaPasada)->Arg(1)->Arg(0)->ArgName("nucleos")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_Muestreo)->Arg(10000)->Arg(1000000)->ArgName("muestras")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Confusion)->Unit(benchmark::kMillisecond);

}  // namespace orvela::bench
