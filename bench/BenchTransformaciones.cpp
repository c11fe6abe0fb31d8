// Speed of the transformations on the 7000 x 7000 scene of six TM bands, on
// one core (nucleos = 1) and on every core (nucleos = 0): the whole
// "componentes" course (six bands into three components, report included),
// the tasseled cap kernel and the unmixing of four bands.
#include <benchmark/benchmark.h>

#include "Escena.h"
#include "base/Progreso.h"
#include "image/CImagen.h"
#include "operations/Curso.h"
#include "operations/Operacion.h"
#include "transforms/Desmezcla.h"
#include "transforms/TasseledCap.h"

namespace orvela::bench {

namespace {

// The six reflective bands (1, 2, 3, 4, 5, 7) of the scene, as byte images.
const std::vector<CImagen>& Seis(int codigo) {
    static std::vector<CImagen> cache[5];
    auto& v = cache[codigo];
    if (v.empty()) {
        for (int banda : {1, 2, 3, 4, 5, 7}) {
            CImagen im;
            im.pixeles = Banda(banda, codigo);
            im.tipoDato = codigo;
            im.filas = im.columnas = static_cast<double>(kLado);
            im.titulo = "tm" + std::to_string(banda);
            im.tieneImagen = true;
            v.push_back(std::move(im));
        }
    }
    return v;
}

void Pixeles(benchmark::State& s) {
    s.counters["Mpx/s"] = benchmark::Counter(static_cast<double>(s.iterations()) * kLado * kLado / 1e6,
                                             benchmark::Counter::kIsRate);
}

void BM_Componentes(benchmark::State& s) {
    const int codigo = static_cast<int>(s.range(0));
    FijarNucleos(static_cast<int>(s.range(1)));
    const auto& seis = Seis(codigo);
    std::vector<const CImagen*> bandas;
    for (const auto& b : seis) bandas.push_back(&b);
    const Declaracion* d = BuscarPorOrden("componentes");
    Valores v;
    v.Poner(ClaveDe(*d, "numero"), 3.0);
    EntradasCargadas e;
    e.imagenes = {bandas};
    e.ficheros.resize(1);
    for (auto _ : s) {
        Resultado r = Calcular(*d, e, v, Destino::Fichero);
        benchmark::DoNotOptimize(r.imagenes.data());
    }
    FijarNucleos(0);
    Pixeles(s);
}

void BM_TasseledCap(benchmark::State& s) {
    const int codigo = static_cast<int>(s.range(0));
    FijarNucleos(static_cast<int>(s.range(1)));
    const auto& seis = Seis(codigo);
    const Muestras* tm[6];
    for (int b = 0; b < 6; ++b) tm[b] = &seis[static_cast<std::size_t>(b)].pixeles;
    Muestras o1 = Salida(codigo, kLado * kLado), o2 = Salida(codigo, kLado * kLado), o3 = Salida(codigo, kLado * kLado);
    for (auto _ : s) benchmark::DoNotOptimize(TasseledCap(tm, kLado, kLado, o1, o2, o3));
    FijarNucleos(0);
    Pixeles(s);
}

void BM_Desmezcla(benchmark::State& s) {
    const int codigo = static_cast<int>(s.range(0));
    FijarNucleos(static_cast<int>(s.range(1)));
    const bool restringida = s.range(2) != 0;
    const auto& seis = Seis(codigo);
    // Bands 2, 3, 4 and 5 with spectra of the kind a student samples.
    std::vector<const Muestras*> bandas = {&seis[1].pixeles, &seis[2].pixeles, &seis[3].pixeles, &seis[4].pixeles};
    Extremos e;
    e.espectro = {std::vector<double>{40, 35, 120, 90}, std::vector<double>{10, 8, 12, 6},
                  std::vector<double>{70, 90, 100, 140}};
    const auto d = Desmezclador::Crear(e);
    Muestras v = Salida(kReal, kLado * kLado), sm = Salida(kReal, kLado * kLado), u = Salida(kReal, kLado * kLado),
             er = Salida(kReal, kLado * kLado);
    for (auto _ : s) benchmark::DoNotOptimize(Desmezclar(*d, bandas, kLado, kLado, restringida, v, sm, u, er));
    FijarNucleos(0);
    Pixeles(s);
}

}  // namespace

BENCHMARK(BM_Componentes)
    ->ArgsProduct({{kByte, kInteger, kReal}, {1, 0}})
    ->ArgNames({"tipo", "nucleos"})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(BM_TasseledCap)
    ->ArgsProduct({{kByte, kInteger, kReal, kDouble}, {1, 0}})
    ->ArgNames({"tipo", "nucleos"})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(BM_Desmezcla)
    ->ArgsProduct({{kByte}, {1, 0}, {0, 1}})
    ->ArgNames({"tipo", "nucleos", "restringida"})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace orvela::bench
