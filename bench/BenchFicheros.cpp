// Saving and loading a 7000 x 7000 pair: the safe replacement (temporary,
// folder lock, journal, renames) against a plain write of the same bytes
// followed by one rename, which is what any save costs at least.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

#include "image/CImagen.h"

namespace orvela {
namespace {

const std::string& Carpeta() {
    static const std::string c = [] {
        std::string p = "/tmp/orvela-bench-XXXXXX";
        if (!::mkdtemp(p.data())) std::abort();
        return p;
    }();
    return c;
}

CImagen& Imagen(int codigo) {
    static CImagen im[5];
    if (!im[codigo].tieneImagen)
        (void)im[codigo].Iniciar("", "", "b", 7000, 7000, NombreDeCodigo(codigo), 7, 0, "unknown", "m", {});
    return im[codigo];
}

void BM_GuardarPar(benchmark::State& s) {
    CImagen& im = Imagen(static_cast<int>(s.range(0)));
    const std::string stem = Carpeta() + "/par";
    for (auto _ : s)
        if (im.Guardar(stem, 1)) s.SkipWithError("no se pudo guardar");
    s.SetLabel(NombreDeCodigo(static_cast<int>(s.range(0))));
}

// The floor: the same bytes written with stdio to a temporary, then renamed.
void BM_EscrituraSimple(benchmark::State& s) {
    CImagen& im = Imagen(static_cast<int>(s.range(0)));
    const std::string ruta = Carpeta() + "/simple.ozm", tmp = Carpeta() + "/simple.tmp";
    for (auto _ : s) {
        std::FILE* f = std::fopen(tmp.c_str(), "wb");
        std::fwrite(im.pixeles.Datos(), 1, im.pixeles.Bytes(), f);
        std::fclose(f);
        std::rename(tmp.c_str(), ruta.c_str());
    }
    s.SetLabel(NombreDeCodigo(static_cast<int>(s.range(0))));
}

void BM_CargarPar(benchmark::State& s) {
    CImagen& im = Imagen(static_cast<int>(s.range(0)));
    const std::string stem = Carpeta() + "/leido";
    if (im.Guardar(stem, 1)) s.SkipWithError("no se pudo guardar");
    for (auto _ : s) {
        CImagen r;
        if (r.Cargar(stem + ".ozm")) s.SkipWithError("no se pudo leer");
        benchmark::DoNotOptimize(r.pixeles.Datos());
    }
    s.SetLabel(NombreDeCodigo(static_cast<int>(s.range(0))));
}

}  // namespace

BENCHMARK(BM_GuardarPar)->Arg(kByte)->Arg(kDouble)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_EscrituraSimple)->Arg(kByte)->Arg(kDouble)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CargarPar)->Arg(kByte)->Arg(kDouble)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace orvela
