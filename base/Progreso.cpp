#include "base/Progreso.h"

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>

#include <tbb/blocked_range.h>
#include <tbb/global_control.h>
#include <tbb/info.h>
#include <tbb/parallel_for.h>
#include <tbb/partitioner.h>
#include <tbb/task_arena.h>

namespace orvela {

namespace {

std::atomic<int> nucleosFijados{0};

// Blocks of about a 256th of the rows: small enough for the progress to move
// smoothly and for the cores to share the work, large enough that the cost
// of a block is only the rows themselves.
long BloquePorDefecto(long filas) { return std::max(1L, filas / 256); }

// One arena per number of cores, made once: making one costs more than a
// small image's rows.
tbb::task_arena& Arena(int nucleos) {
    static std::mutex cerrojo;
    static std::map<int, std::unique_ptr<tbb::task_arena>> arenas;
    std::lock_guard<std::mutex> l(cerrojo);
    // More threads than the machine has would only wait on each other.
    nucleos = std::min(nucleos, tbb::info::default_concurrency());
    auto& a = arenas[nucleos];
    if (!a) a = std::make_unique<tbb::task_arena>(nucleos);
    return *a;
}

}  // namespace

void Progreso::Informar(double fraccion, const std::string& texto) {
    std::lock_guard<std::mutex> l(informe_);
    AlInformar(std::clamp(fraccion, 0.0, 1.0), texto);
}

Progreso& SinProgreso() {
    // Each thread its own, so that nobody can cancel another's work through it.
    thread_local Progreso nulo;
    return nulo;
}

void FijarNucleos(int nucleos) { nucleosFijados.store(std::max(0, nucleos)); }

int NucleosEnUso() {
    const int n = nucleosFijados.load();
    return n > 0 ? n : tbb::info::default_concurrency();
}

bool PorFilas(Progreso& p, long filas, const std::function<void(long, long)>& cuerpo, long bloque) {
    if (filas <= 0) return !p.Cancelado();
    if (bloque <= 0) bloque = BloquePorDefecto(filas);
    const long bloques = (filas + bloque - 1) / bloque;
    std::atomic<long> hechos{0};
    auto uno = [&](long b) {
        if (p.Cancelado()) return;
        const long desde = b * bloque;
        const long hasta = std::min(filas, desde + bloque);
        cuerpo(desde, hasta);
        const long h = hechos.fetch_add(1) + 1;
        p.Informar(static_cast<double>(h) / static_cast<double>(bloques));
    };
    const int nucleos = NucleosEnUso();
    if (nucleos == 1 || bloques == 1) {
        for (long b = 0; b < bloques && !p.Cancelado(); ++b) uno(b);
    } else {
        Arena(nucleos).execute([&] {
            tbb::parallel_for(
                tbb::blocked_range<long>(0, bloques, 1),
                [&](const tbb::blocked_range<long>& r) {
                    for (long b = r.begin(); b < r.end(); ++b) uno(b);
                },
                tbb::simple_partitioner());
        });
    }
    return !p.Cancelado();
}

bool PorTrozos(Progreso& p, std::size_t n, const std::function<void(std::size_t, std::size_t)>& cuerpo) {
    // Pieces of at least a million samples: a piece may build a table of all
    // 65536 integer values first.
    const std::size_t partes = 16u * static_cast<std::size_t>(NucleosEnUso());
    const std::size_t trozo = std::max<std::size_t>(std::size_t{1} << 20, (n + partes - 1) / partes);
    const long trozos = static_cast<long>((n + trozo - 1) / trozo);
    return PorFilas(
        p, trozos,
        [&](long t0, long t1) {
            for (long t = t0; t < t1; ++t) {
                const std::size_t desde = static_cast<std::size_t>(t) * trozo;
                cuerpo(desde, std::min(n, desde + trozo));
            }
        },
        1);
}

}  // namespace orvela
