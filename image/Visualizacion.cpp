#include "image/Visualizacion.h"

#include <algorithm>
#include <cmath>

#include "image/Conversion.h"
#include "image/Estadisticas.h"

namespace orvela {

uint8_t IndicePaleta(double s, double mn, double mx) {
    const double paso = (mx - mn) * 0.00390625;
    if (!(paso > 0.0)) return 0;
    const double q = (s - mn) / paso;
    if (!(q >= 0.0)) return 0;
    if (q >= 255.0) return 255;
    return static_cast<uint8_t>(TruncarA32(q));
}

void IndicesPaletaTramo(const Muestras& m, std::size_t desde, std::size_t n, double mn, double mx, uint8_t* destino) {
    if (desde > m.Cantidad() || n > m.Cantidad() - desde) return;
    if (m.Codigo() == kByte) {
        const auto d = m.Como<uint8_t>().subspan(desde, n);
        std::copy(d.begin(), d.end(), destino);
        return;
    }
    ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
        const auto d = m.Como<T>().subspan(desde, n);
        for (std::size_t i = 0; i < d.size(); ++i) destino[i] = IndicePaleta(static_cast<double>(d[i]), mn, mx);
    });
}

std::vector<uint8_t> IndicesPaleta(const Muestras& m) {
    std::vector<uint8_t> r(m.Cantidad());
    double mn = 0, mx = 0;
    if (m.Codigo() != kByte && !MinimoMaximo(m, mn, mx)) return r;
    IndicesPaletaTramo(m, 0, m.Cantidad(), mn, mx, r.data());
    return r;
}

const char* NombreRealce(Realce r) {
    switch (r) {
        case Realce::Ninguno: return "Ninguno";
        case Realce::MinimoMaximo: return "Mínimo-máximo";
        case Realce::Lineal2: return "Lineal 2 %";
        case Realce::Desviaciones: return "Desviaciones típicas (±2)";
    }
    return "";
}

LimitesRealce CalcularRealce(const Muestras& m, Realce r) {
    LimitesRealce l;
    if (m.Cantidad() == 0 || !CodigoValido(m.Codigo())) return l;
    switch (r) {
        case Realce::Ninguno:
            if (m.Codigo() == kByte) {
                l.bajo = 0;
                l.alto = 255;
                l.valido = true;
                return l;
            }
            [[fallthrough]];
        case Realce::MinimoMaximo:
            l.valido = MinimoMaximo(m, l.bajo, l.alto);
            return l;
        case Realce::Desviaciones: {
            const double media = ImageMean(m);
            const double desviacion = ImageStdDev(m, media);
            l.bajo = media - 2.0 * desviacion;
            l.alto = media + 2.0 * desviacion;
            l.valido = true;
            return l;
        }
        case Realce::Lineal2:
            ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
                const auto d = m.Como<T>();
                std::vector<T> orden;
                orden.reserve(d.size());
                for (T x : d)
                    if (!std::isnan(static_cast<double>(x))) orden.push_back(x);
                if (orden.empty()) return;
                const std::size_t n = orden.size();
                const std::size_t k = n * 2 / 100;
                std::nth_element(orden.begin(), orden.begin() + static_cast<std::ptrdiff_t>(k), orden.end());
                l.bajo = static_cast<double>(orden[k]);
                std::nth_element(orden.begin(), orden.begin() + static_cast<std::ptrdiff_t>(n - 1 - k), orden.end());
                l.alto = static_cast<double>(orden[n - 1 - k]);
                l.valido = true;
            });
            return l;
    }
    return l;
}

std::vector<uint8_t> IndicesRealce(const Muestras& m, Realce r) {
    if (r == Realce::Ninguno) return IndicesPaleta(m);
    std::vector<uint8_t> indices(m.Cantidad());
    const LimitesRealce l = CalcularRealce(m, r);
    if (!l.valido) return indices;
    ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
        const auto d = m.Como<T>();
        for (std::size_t i = 0; i < d.size(); ++i) indices[i] = IndicePaleta(static_cast<double>(d[i]), l.bajo, l.alto);
    });
    return indices;
}

std::vector<uint32_t> ColoresComposicion(const ComposicionColor& c) {
    std::vector<uint32_t> r;
    if (!c.Valida()) return r;
    r.resize(c.rojo.size());
    for (std::size_t i = 0; i < r.size(); ++i)
        r[i] = 0xFF000000u | (uint32_t{c.rojo[i]} << 16) | (uint32_t{c.verde[i]} << 8) | c.azul[i];
    return r;
}

uint8_t EntradaDeValor(const Muestras& m, double valor) {
    if (m.Codigo() == kByte) {
        if (!(valor == valor)) return 0;
        return static_cast<uint8_t>(static_cast<long long>(valor) & 0xFF);
    }
    double mn = 0, mx = 0;
    if (!MinimoMaximo(m, mn, mx)) return 0;
    return IndicePaleta(valor, mn, mx);
}

namespace {

// Whether two colours can be told apart: 48 levels or more in some channel.
bool Lejos(const std::array<uint8_t, 3>& a, const std::array<uint8_t, 3>& b) {
    for (int c = 0; c < 3; ++c)
        if ((a[c] > b[c] ? a[c] - b[c] : b[c] - a[c]) >= 48) return true;
    return false;
}

// The set: the sixteen colours the qualitative palette gives to the values
// 1 to 16, then the colours of the 6 x 6 x 6 cube (levels 51 apart) far
// from every colour before them, taken in a scrambled order so that
// neighbours in the legend differ in more than one channel.
std::vector<std::array<uint8_t, 3>> ConjuntoDistinto() {
    std::vector<std::array<uint8_t, 3>> r = {
        {0, 0, 255},     {0, 170, 0},   {205, 133, 63}, {255, 0, 0},     {255, 255, 0},  {0, 255, 255},
        {255, 0, 255},   {255, 128, 0}, {128, 0, 255},  {0, 100, 0},     {128, 128, 128}, {255, 192, 203},
        {0, 0, 128},     {128, 64, 0},  {170, 255, 170}, {255, 255, 255},
    };
    for (int k = 0; k < 216; ++k) {
        const int m = (k * 97) % 216;
        const std::array<uint8_t, 3> c = {static_cast<uint8_t>(51 * (m / 36)), static_cast<uint8_t>(51 * (m / 6 % 6)),
                                          static_cast<uint8_t>(51 * (m % 6))};
        if (std::all_of(r.begin(), r.end(), [&](const auto& x) { return Lejos(c, x); })) r.push_back(c);
    }
    return r;
}

}  // namespace

std::array<uint8_t, 3> ColorClaseDistinto(std::size_t i) {
    static const std::vector<std::array<uint8_t, 3>> conjunto = ConjuntoDistinto();
    return conjunto[i % conjunto.size()];
}

void DistinguirClases(Paleta& p, const std::vector<uint8_t>& entradas) {
    const auto cerca = [&](uint8_t a, uint8_t b) {
        return !Lejos({p.rojo[a], p.verde[a], p.azul[a]}, {p.rojo[b], p.verde[b], p.azul[b]});
    };
    bool distintas = true;
    for (std::size_t i = 0; i < entradas.size() && distintas; ++i)
        for (std::size_t j = i + 1; j < entradas.size() && distintas; ++j)
            if (entradas[i] != entradas[j] && cerca(entradas[i], entradas[j])) distintas = false;
    if (distintas) return;
    // Entries shared by several classes (the same value listed twice, or
    // values spread onto one entry) keep the colour of the first of them.
    std::array<bool, 256> hecha{};
    std::size_t n = 0;
    for (uint8_t e : entradas) {
        if (hecha[e]) continue;
        hecha[e] = true;
        const auto c = ColorClaseDistinto(n++);
        p.rojo[e] = c[0];
        p.verde[e] = c[1];
        p.azul[e] = c[2];
    }
}

std::vector<uint32_t> ColoresPaleta(const std::vector<uint8_t>& indices, const Paleta& p) {
    std::array<uint32_t, 256> tabla{};
    for (int i = 0; i < 256; ++i)
        tabla[i] = 0xFF000000u | (uint32_t{p.rojo[i]} << 16) | (uint32_t{p.verde[i]} << 8) | p.azul[i];
    std::vector<uint32_t> r(indices.size());
    for (std::size_t i = 0; i < indices.size(); ++i) r[i] = tabla[indices[i]];
    return r;
}

}  // namespace orvela
