// Progress and cancel of a long computation, and the rows of a kernel run on
// every core.
//
// A computing function takes a `Progreso&` (the no-op `SinProgreso()` by
// default). Its long loops go through `PorFilas` (rows computed each on
// their own, on every core) or `PorBloques` (fixed blocks whose partial
// figures are combined in block order), or, for iterations, report each pass
// with `Informar` and stop when `Cancelado()`. The split of the work never
// depends on the number of cores, so the result is the same on one core and
// on sixteen.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace orvela {

class Progreso {
public:
    virtual ~Progreso() = default;

    // Fraction done (0 to 1) and, for iterations, a line saying where the
    // work is ("Pasada 3"). Called from any thread, never two at a time.
    void Informar(double fraccion, const std::string& texto = {});
    // Asks the computation to stop; it stops at its next check.
    void Cancelar() { cancelado_.store(true, std::memory_order_relaxed); }
    bool Cancelado() const { return cancelado_.load(std::memory_order_relaxed); }
    // The work is over: the front end takes its report away.
    void Terminar() { AlTerminar(); }

protected:
    // What the front end does with a report (a progress bar, a line on a
    // terminal). Runs on the computing threads.
    virtual void AlInformar(double /*fraccion*/, const std::string& /*texto*/) {}
    virtual void AlTerminar() {}

private:
    std::atomic<bool> cancelado_{false};
    std::mutex informe_;
};

// A progress that shows nothing and is never cancelled.
Progreso& SinProgreso();

// Runs cuerpo(desde, hasta) over the rows [0, filas) in blocks of `bloque`
// rows (0: a size chosen from `filas` alone), on every core. Each row must be
// computed on its own. Between blocks the cancel flag is checked and the
// fraction of rows done is reported. Returns false when cancelled (some rows
// may then be left undone).
bool PorFilas(Progreso& p, long filas, const std::function<void(long desde, long hasta)>& cuerpo, long bloque = 0);

// Samples [0, n) of a sample-by-sample computation, in large pieces on
// every core: cuerpo(desde, hasta). Each sample must be computed on its own.
bool PorTrozos(Progreso& p, std::size_t n, const std::function<void(std::size_t desde, std::size_t hasta)>& cuerpo);

// The same split for sums: parcial(desde, hasta) gives the figure of one
// block of rows; the figures come back in block order, so that the caller
// combines them in an order that never depends on the number of cores.
// nullopt when cancelled.
template <class T>
std::optional<std::vector<T>> PorBloques(Progreso& p, long filas, long bloque,
                                         const std::function<T(long desde, long hasta)>& parcial) {
    if (bloque <= 0) bloque = 1;
    const long n = filas <= 0 ? 0 : (filas + bloque - 1) / bloque;
    std::vector<T> partes(static_cast<std::size_t>(n));
    const bool hecho = PorFilas(
        p, n,
        [&](long b0, long b1) {
            for (long b = b0; b < b1; ++b) {
                const long desde = b * bloque;
                const long hasta = desde + bloque < filas ? desde + bloque : filas;
                partes[static_cast<std::size_t>(b)] = parcial(desde, hasta);
            }
        },
        1);
    if (!hecho) return std::nullopt;
    return partes;
}

// Cores used by PorFilas: 0 is every core of the machine. Tests and
// benchmarks set 1 to compare with one core.
void FijarNucleos(int nucleos);
int NucleosEnUso();

}  // namespace orvela
