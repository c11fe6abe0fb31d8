// Speed of the arithmetic, scalar, logical, function and contrast kernels
// on the 7000 x 7000 scene, in each data type, in millions of pixels per
// second. Result buffers are allocated once outside the timed loop; the two
// whole operations with a speed target (equalisation of a byte band and the
// normalised difference) are also timed through the common course, result
// allocation included.
#include <benchmark/benchmark.h>

#include "Escena.h"
#include "image/CImagen.h"
#include "operations/Curso.h"
#include "operations/Operacion.h"
#include "tools/Aritmetica.h"
#include "tools/Contraste.h"
#include "tools/Escalar.h"
#include "tools/Funciones.h"
#include "tools/Logica.h"

namespace orvela::bench {

namespace {

// Bands 3 and 4 of the scene in each type, made once.
const Muestras& Escena(int banda, int codigo) {
    static Muestras cache[8][5];
    Muestras& m = cache[banda][codigo];
    if (!m.Valido() || m.Cantidad() == 0) m = Banda(banda, codigo);
    return m;
}

const CImagen& ImagenEscena(int banda, int codigo) {
    static CImagen cache[8][5];
    CImagen& im = cache[banda][codigo];
    if (im.NumeroPixeles() == 0) {
        im.pixeles = Escena(banda, codigo).Copia();
        im.tipoDato = codigo;
        im.filas = im.columnas = static_cast<double>(kLado);
        im.titulo = "tm" + std::to_string(banda);
        im.tieneImagen = true;
    }
    return im;
}

void Ritmo(benchmark::State& s) {
    s.counters["Mpix/s"] = benchmark::Counter(static_cast<double>(s.iterations()) * kLado * kLado / 1e6,
                                              benchmark::Counter::kIsRate);
}

const char* NombreTipo(int codigo) {
    switch (codigo) {
        case kByte: return "byte";
        case kInteger: return "integer";
        case kReal: return "real";
        default: return "double";
    }
}

void BM_Aritmetica(benchmark::State& s) {
    const int codigo = static_cast<int>(s.range(1));
    const auto op = static_cast<OperacionAritmetica>(s.range(0));
    const Muestras& a = Escena(4, codigo);
    const Muestras& b = Escena(3, codigo);
    Muestras r = Salida(kDouble, a.Cantidad());
    for (auto _ : s) {
        auto estado = OperarAritmetica(op, a, b, r);
        if (estado != kCalculoCorrecto) s.SkipWithError("la escena tiene un denominador cero");
        benchmark::DoNotOptimize(estado);
        benchmark::ClobberMemory();
    }
    s.SetLabel(NombreTipo(codigo));
    Ritmo(s);
}

void BM_Escalar(benchmark::State& s) {
    const int codigo = static_cast<int>(s.range(1));
    const auto op = static_cast<OperacionEscalar>(s.range(0));
    const Muestras& a = Escena(4, codigo);
    Muestras r = Salida(kDouble, a.Cantidad());
    for (auto _ : s) {
        benchmark::DoNotOptimize(OperarConEscalar(op, a, 2.5, r));
        benchmark::ClobberMemory();
    }
    s.SetLabel(NombreTipo(codigo));
    Ritmo(s);
}

void BM_Logica(benchmark::State& s) {
    const int codigo = static_cast<int>(s.range(1));
    const auto op = static_cast<OperacionLogica>(s.range(0));
    const Muestras& a = Escena(4, codigo);
    const Muestras& b = Escena(3, codigo);
    Muestras r = Salida(codigo, a.Cantidad());
    for (auto _ : s) {
        benchmark::DoNotOptimize(OperarLogica(op, a, b, r));
        benchmark::ClobberMemory();
    }
    s.SetLabel(NombreTipo(codigo));
    Ritmo(s);
}

void BM_Funcion(benchmark::State& s) {
    const int codigo = static_cast<int>(s.range(1));
    const auto f = static_cast<Funcion>(s.range(0));
    const Muestras& a = Escena(4, codigo);
    Muestras r = Salida(kDouble, a.Cantidad());
    for (auto _ : s) {
        benchmark::DoNotOptimize(AplicarFuncion(f, a, r));
        benchmark::ClobberMemory();
    }
    s.SetLabel(NombreTipo(codigo));
    Ritmo(s);
}

void BM_Contraste(benchmark::State& s) {
    const int codigo = static_cast<int>(s.range(1));
    ParametrosContraste p;
    p.metodo = static_cast<MetodoContraste>(s.range(0));
    p.ndMinimo = 20;
    p.ndMaximo = 120;
    const Muestras& a = Escena(4, codigo);
    Muestras r = Salida(codigo, a.Cantidad());
    for (auto _ : s) {
        benchmark::DoNotOptimize(ExpandirContraste(a, r, p));
        benchmark::ClobberMemory();
    }
    s.SetLabel(NombreTipo(codigo));
    Ritmo(s);
}

// The whole operation as the course runs it: checks, result allocation,
// kernel, title.
void BM_Operacion(benchmark::State& s, const char* orden, const char* campo, int indice, int entradas) {
    const int codigo = static_cast<int>(s.range(0));
    const Declaracion& d = *BuscarPorOrden(orden);
    Valores v = ValoresPorDefecto(d);
    v.Poner(ClaveDe(d, campo), static_cast<double>(indice));
    std::vector<const CImagen*> e = {&ImagenEscena(4, codigo)};
    if (entradas == 2) e.push_back(&ImagenEscena(3, codigo));
    for (auto _ : s) {
        Resultado r = Calcular(d, e, v, Destino::Fichero);
        if (r.fallo) s.SkipWithError(r.fallo->mensaje.Texto().c_str());
        benchmark::DoNotOptimize(r.imagenes.data());
    }
    s.SetLabel(NombreTipo(codigo));
    Ritmo(s);
}

void Tipos(benchmark::internal::Benchmark* b, int operaciones) {
    for (int op = 0; op < operaciones; ++op)
        for (int codigo : {kByte, kInteger, kReal, kDouble}) b->Args({op, codigo});
}

}  // namespace

BENCHMARK(BM_Aritmetica)->Apply([](auto* b) { Tipos(b, 6); })->ArgNames({"op", "tipo"})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Escalar)->Apply([](auto* b) { Tipos(b, 4); })->ArgNames({"op", "tipo"})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Logica)
    ->ArgsProduct({{0, 1, 2}, {kByte, kInteger}})
    ->ArgNames({"op", "tipo"})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Funcion)->Apply([](auto* b) { Tipos(b, 8); })->ArgNames({"f", "tipo"})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Contraste)->Apply([](auto* b) { Tipos(b, 3); })->ArgNames({"metodo", "tipo"})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Operacion, ecualizacion, "contraste", "metodo", 1, 1)
    ->Arg(kByte)
    ->ArgName("tipo")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Operacion, normalizada, "aritmetica", "operacion", 4, 2)
    ->DenseRange(1, 4)
    ->ArgName("tipo")
    ->Unit(benchmark::kMillisecond);

}  // namespace orvela::bench
