// "Clasificador de paralelepípedos".
#include <bit>

#include "classification/Supervisada.h"
#include "image/Conversion.h"
#include "image/TipoDato.h"

namespace orvela {

namespace {

// Byte and integer bands with at most 64 classes: every sample value v of
// band b is tested once against every box, giving a set of classes (bit i:
// lo <= v <= hi for class i, the same comparisons of the same doubles). A
// pixel's boxes are the intersection of its bands' sets; the last class in
// it wins, as when every class is tried in order.
template <class T>
bool PorTablas(const BandasClasificar& b, std::size_t k, const std::vector<double>& bajo,
               const std::vector<double>& alto, const std::vector<uint8_t>& nd, std::span<uint8_t> salida,
               Progreso& p) {
    const std::size_t n = b.bandas.size();
    constexpr std::size_t kValores = std::size_t{1} << (8 * sizeof(T));
    const std::size_t total = static_cast<std::size_t>(b.filas) * static_cast<std::size_t>(b.columnas);
    std::vector<std::span<const T>> bandas;
    for (const Muestras* m : b.bandas) {
        if (m->Cantidad() < total || salida.size() < total) return false;
        bandas.push_back(m->Como<T>());
    }
    std::vector<uint64_t> tabla(n * kValores);
    for (std::size_t bb = 0; bb < n; ++bb)
        for (std::size_t v = 0; v < kValores; ++v) {
            const double x = static_cast<double>(v);
            uint64_t cajas = 0;
            for (std::size_t i = 0; i < k; ++i)
                if (bajo[i * n + bb] <= x && x <= alto[i * n + bb]) cajas |= uint64_t{1} << i;
            tabla[bb * kValores + v] = cajas;
        }
    const uint64_t todas = k == 64 ? ~uint64_t{0} : (uint64_t{1} << k) - 1;
    const auto c = static_cast<std::size_t>(b.columnas);
    return PorFilas(p, b.filas, [&](long desde, long hasta) {
        for (long f = desde; f < hasta; ++f) {
            const std::size_t inicio = static_cast<std::size_t>(f) * c;
            uint8_t* r = salida.data() + inicio;
            for (std::size_t j = 0; j < c; ++j) {
                uint64_t cajas = todas;
                for (std::size_t bb = 0; bb < n; ++bb) cajas &= tabla[bb * kValores + bandas[bb][inicio + j]];
                r[j] = cajas ? nd[63 - static_cast<std::size_t>(std::countl_zero(cajas))] : 0;
            }
        }
    });
}

}  // namespace

bool ClasificarParalelepipedos(const BandasClasificar& b, const std::vector<ClaseLeida>& clases, int multiplicador,
                               std::span<uint8_t> salida, Progreso& p) {
    const std::size_t n = b.bandas.size(), k = clases.size();
    const double m = multiplicador;
    std::vector<uint8_t> nd(k);
    std::vector<double> bajo(k * n), alto(k * n);
    for (std::size_t i = 0; i < k; ++i) {
        nd[i] = AlmacenarEntero<uint8_t>(NdClase(clases[i]));
        for (std::size_t j = 0; j < n; ++j) {
            bajo[i * n + j] = clases[i].media[j] - m * clases[i].desviacion[j];
            alto[i * n + j] = clases[i].media[j] + m * clases[i].desviacion[j];
        }
    }
    int codigo = n > 0 ? b.bandas[0]->Codigo() : 0;
    for (const Muestras* x : b.bandas)
        if (x->Codigo() != codigo) codigo = 0;
    if (k <= 64 && codigo == kByte) return PorTablas<uint8_t>(b, k, bajo, alto, nd, salida, p);
    if (k <= 64 && codigo == kInteger) return PorTablas<uint16_t>(b, k, bajo, alto, nd, salida, p);
    return ParalelepipedosDirecto(b, bajo, alto, nd, salida, p);
}

// Every class tried in order on each pixel, counting the bands inside its
// box: the last box that holds the pixel wins.
bool ParalelepipedosDirecto(const BandasClasificar& b, const std::vector<double>& bajo, const std::vector<double>& alto,
                            const std::vector<uint8_t>& nd, std::span<uint8_t> salida, Progreso& p) {
    const std::size_t n = b.bandas.size(), k = nd.size();
    return RecorrerFilas(b, salida, p, [&](const double* const* x, std::size_t c, uint8_t* r) {
        thread_local std::vector<uint32_t> dentro;
        dentro.resize(c);
        uint32_t* d = dentro.data();
        for (std::size_t j = 0; j < c; ++j) r[j] = 0;
        for (std::size_t i = 0; i < k; ++i) {
            for (std::size_t j = 0; j < c; ++j) d[j] = 0;
            for (std::size_t bb = 0; bb < n; ++bb) {
                const double lo = bajo[i * n + bb], hi = alto[i * n + bb];
                const double* xb = x[bb];
                for (std::size_t j = 0; j < c; ++j) d[j] += (lo <= xb[j]) & (xb[j] <= hi);
            }
            const uint8_t v = nd[i];
            for (std::size_t j = 0; j < c; ++j) r[j] = d[j] == n ? v : r[j];
        }
    });
}

}  // namespace orvela
