#include "image/Visualizacion.h"

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

std::vector<uint8_t> IndicesPaleta(const Muestras& m) {
    std::vector<uint8_t> r(m.Cantidad());
    if (m.Codigo() == kByte) {
        const auto d = m.Como<uint8_t>();
        std::copy(d.begin(), d.end(), r.begin());
        return r;
    }
    double mn = 0, mx = 0;
    if (!MinimoMaximo(m, mn, mx)) return r;
    ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
        const auto d = m.Como<T>();
        for (std::size_t i = 0; i < d.size(); ++i) r[i] = IndicePaleta(static_cast<double>(d[i]), mn, mx);
    });
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

std::array<uint8_t, 3> ColorClaseDistinto(std::size_t i) {
    static constexpr std::array<std::array<uint8_t, 3>, 16> kPrimeros = {{
        {0, 0, 255},     {0, 170, 0},   {205, 133, 63}, {255, 0, 0},     {255, 255, 0},  {0, 255, 255},
        {255, 0, 255},   {255, 128, 0}, {128, 0, 255},  {0, 100, 0},     {128, 128, 128}, {255, 192, 203},
        {0, 0, 128},     {128, 64, 0},  {170, 255, 170}, {255, 255, 255},
    }};
    if (i < kPrimeros.size()) return kPrimeros[i];
    // Golden-angle hues at full saturation, value alternating between two
    // levels: neighbours in the legend never share a colour.
    const std::size_t k = i - kPrimeros.size();
    const double h = static_cast<double>((k * 137) % 360) / 60.0;
    const double v = k % 2 == 0 ? 230.0 : 150.0;
    const int sector = static_cast<int>(h);
    const double f = h - sector;
    const auto c = [](double x) { return static_cast<uint8_t>(x); };
    const uint8_t alto = c(v), bajo = c(v * 0.15), sube = c(v * (0.15 + 0.85 * f)), baja = c(v * (1.0 - 0.85 * f));
    switch (sector) {
        case 0: return {alto, sube, bajo};
        case 1: return {baja, alto, bajo};
        case 2: return {bajo, alto, sube};
        case 3: return {bajo, baja, alto};
        case 4: return {sube, bajo, alto};
        default: return {alto, bajo, baja};
    }
}

void DistinguirClases(Paleta& p, const std::vector<uint8_t>& entradas) {
    const auto cerca = [&](uint8_t a, uint8_t b) {
        const auto d = [](uint8_t x, uint8_t y) { return x > y ? x - y : y - x; };
        return d(p.rojo[a], p.rojo[b]) < 48 && d(p.verde[a], p.verde[b]) < 48 && d(p.azul[a], p.azul[b]) < 48;
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
