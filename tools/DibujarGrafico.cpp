#include "tools/DibujarGrafico.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "tools/Fuente.h"

namespace orvela {

std::array<double, 2> MarcoGrafico::APixel(double dx, double dy) const {
    const double fx = (x.maximo > x.minimo) ? (dx - x.minimo) / (x.maximo - x.minimo) : 0.5;
    const double fy = (y.maximo > y.minimo) ? (y.maximo - dy) / (y.maximo - y.minimo) : 0.5;
    return {x0 + fx * (ancho - 1), y0 + fy * (alto - 1)};
}

std::optional<std::array<double, 2>> MarcoGrafico::ADatos(double px, double py) const {
    if (ancho < 2 || alto < 2 || px < x0 - 0.5 || py < y0 - 0.5 || px > x0 + ancho - 0.5 || py > y0 + alto - 0.5)
        return std::nullopt;
    const double fx = std::clamp((px - x0) / (ancho - 1), 0.0, 1.0);
    const double fy = std::clamp((py - y0) / (alto - 1), 0.0, 1.0);
    return std::array<double, 2>{x.minimo + fx * (x.maximo - x.minimo), y.maximo - fy * (y.maximo - y.minimo)};
}

namespace {

// The step of the ticks: 1, 2 or 5 times a power of ten.
double Paso(double minimo, double maximo, int cuantas) {
    const double bruto = (maximo - minimo) / std::max(1, cuantas);
    if (!(bruto > 0) || !std::isfinite(bruto)) return 1;
    const double potencia = std::pow(10.0, std::floor(std::log10(bruto)));
    const double m = bruto / potencia;
    // A little slack, so that 0.2000000001 stays a step of 2.
    return (m <= 1 + 1e-9 ? 1 : m <= 2 + 1e-9 ? 2 : m <= 5 + 1e-9 ? 5 : 10) * potencia;
}

// A tick value written with the decimals its step needs, point as the
// decimal separator whatever the locale.
std::string Numero(double v, double paso) {
    const int decimales = std::clamp(static_cast<int>(-std::floor(std::log10(paso) + 1e-9)), 0, 12);
    if (std::fabs(v) < paso * 1e-6) v = 0;
    char buf[64];
    auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::fixed, decimales);
    if (r.ec != std::errc()) r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, 6);
    return std::string(buf, r.ptr);
}

class Lienzo {
public:
    explicit Lienzo(RasterRgb& r) : r_(r) {}
    void Punto(long x, long y, ColorRgb c) {
        if (x < 0 || y < 0 || x >= static_cast<long>(r_.ancho) || y >= static_cast<long>(r_.alto)) return;
        uint8_t* p = r_.Pixel(static_cast<uint32_t>(x), static_cast<uint32_t>(y));
        p[0] = c[0];
        p[1] = c[1];
        p[2] = c[2];
    }
    void Rectangulo(long x0, long y0, long x1, long y1, ColorRgb c) {  // filled, inclusive
        for (long y = y0; y <= y1; ++y)
            for (long x = x0; x <= x1; ++x) Punto(x, y, c);
    }

private:
    RasterRgb& r_;
};

// Liang-Barsky: the part of the segment inside [xa, xb] x [ya, yb].
bool Recortar(double& x0, double& y0, double& x1, double& y1, double xa, double ya, double xb, double yb) {
    double t0 = 0, t1 = 1;
    const double dx = x1 - x0, dy = y1 - y0;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {x0 - xa, xb - x0, y0 - ya, yb - y0};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0) return false;
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0)
            t0 = std::max(t0, t);
        else
            t1 = std::min(t1, t);
        if (t0 > t1) return false;
    }
    const double ax = x0 + t0 * dx, ay = y0 + t0 * dy;
    x1 = x0 + t1 * dx;
    y1 = y0 + t1 * dy;
    x0 = ax;
    y0 = ay;
    return true;
}

void Segmento(Lienzo& l, const MarcoGrafico& m, std::array<double, 2> a, std::array<double, 2> b, ColorRgb c,
              int grosor) {
    double x0 = a[0], y0 = a[1], x1 = b[0], y1 = b[1];
    if (!std::isfinite(x0) || !std::isfinite(y0) || !std::isfinite(x1) || !std::isfinite(y1)) return;
    if (!Recortar(x0, y0, x1, y1, m.x0 - 0.5, m.y0 - 0.5, m.x0 + m.ancho - 0.5, m.y0 + m.alto - 0.5)) return;
    // One pixel per step along the longer axis, at the rounded position of
    // the line there: the pixel of any point of the line is the rounded
    // pixel position of that point.
    const int antes = (grosor - 1) / 2, despues = grosor / 2;
    auto marcar = [&](long px, long py) {
        for (long v = py - antes; v <= py + despues; ++v)
            for (long u = px - antes; u <= px + despues; ++u)
                if (u >= m.x0 && u < m.x0 + m.ancho && v >= m.y0 && v < m.y0 + m.alto) l.Punto(u, v, c);
    };
    const double dx = x1 - x0, dy = y1 - y0;
    if (std::fabs(dx) >= std::fabs(dy)) {
        const long ua = std::lround(std::min(x0, x1)), ub = std::lround(std::max(x0, x1));
        for (long u = ua; u <= ub; ++u) marcar(u, std::lround(dx == 0 ? y0 : y0 + (u - x0) * (dy / dx)));
    } else {
        const long va = std::lround(std::min(y0, y1)), vb = std::lround(std::max(y0, y1));
        for (long v = va; v <= vb; ++v) marcar(std::lround(x0 + (v - y0) * (dx / dy)), v);
    }
}

ColorRgb Rgb(uint32_t c) {
    return {static_cast<uint8_t>(c >> 16), static_cast<uint8_t>(c >> 8), static_cast<uint8_t>(c)};
}

// The span of the data along one axis (the straight lines have none of
// their own: they run across the x range).
void Extender(double v, double& mn, double& mx) {
    if (!std::isfinite(v)) return;
    mn = std::min(mn, v);
    mx = std::max(mx, v);
}

}  // namespace

std::vector<double> MarcasEje(double minimo, double maximo, int cuantas) {
    std::vector<double> r;
    if (!std::isfinite(minimo) || !std::isfinite(maximo) || maximo < minimo) return r;
    const double paso = Paso(minimo, maximo, cuantas);
    const double margen = paso * 1e-9;
    for (double k = std::ceil((minimo - margen) / paso); k * paso <= maximo + margen && r.size() < 100; ++k)
        r.push_back(k * paso);
    return r;
}

RangoEje RangoRedondo(double minimo, double maximo, int cuantas) {
    if (!std::isfinite(minimo) || !std::isfinite(maximo) || maximo < minimo) return {0, 1};
    if (maximo == minimo) {
        const double d = minimo == 0 ? 1 : std::fabs(minimo) * 0.1;
        minimo -= d;
        maximo += d;
    }
    const double paso = Paso(minimo, maximo, cuantas);
    return {std::floor(minimo / paso + 1e-9) * paso, std::ceil(maximo / paso - 1e-9) * paso};
}

GraficoDibujado DibujarGrafico(const Grafico& g, uint32_t anchoPedido, uint32_t altoPedido) {
    GraficoDibujado d;
    const uint32_t ancho = std::clamp<uint32_t>(anchoPedido, 160, 8000);
    const uint32_t alto = std::clamp<uint32_t>(altoPedido, 120, 8000);
    const ColorRgb fondo{255, 255, 255}, tinta{0, 0, 0};
    d.imagen = RasterRgb(ancho, alto, fondo);
    Lienzo l(d.imagen);
    const int s = ancho >= 1200 && alto >= 900 ? 2 : 1;  // text scale
    const int margen = 8 * s, marca = 4 * s, linea = fuente::kLinea * s;

    // Ranges: given, or the data's span widened to round ticks.
    double xmn = std::numeric_limits<double>::infinity(), xmx = -xmn, ymn = xmn, ymx = -xmn;
    for (const auto& serie : g.series)
        for (const auto& p : serie.puntos) {
            Extender(p.x, xmn, xmx);
            Extender(p.y, ymn, ymx);
        }
    if (xmn > xmx) xmn = 0, xmx = 1;
    auto valido = [](double a, double b) { return std::isfinite(a) && std::isfinite(b) && a < b; };
    const RangoEje rx = !g.rangoDeLosDatos && valido(g.xMinimo, g.xMaximo) ? RangoEje{g.xMinimo, g.xMaximo}
                                                                          : RangoRedondo(xmn, xmx);
    for (const auto& serie : g.series)
        if (serie.clase == SerieGrafico::Clase::Recta) {
            Extender(serie.a + serie.b * rx.minimo, ymn, ymx);
            Extender(serie.a + serie.b * rx.maximo, ymn, ymx);
        }
    if (ymn > ymx) ymn = 0, ymx = 1;
    const RangoEje ry = !g.rangoDeLosDatos && valido(g.yMinimo, g.yMaximo) ? RangoEje{g.yMinimo, g.yMaximo}
                                                                          : RangoRedondo(ymn, ymx);
    const std::vector<double> mx = MarcasEje(rx.minimo, rx.maximo), my = MarcasEje(ry.minimo, ry.maximo);
    const double pasoX = Paso(rx.minimo, rx.maximo, 6), pasoY = Paso(ry.minimo, ry.maximo, 6);

    // Layout: the numbers of y on the left, those of x below, the titles
    // outside them.
    int anchoNumerosY = 0;
    for (double v : my) anchoNumerosY = std::max(anchoNumerosY, fuente::AnchoTexto(Numero(v, pasoY), s));
    const int izquierda = margen + (g.ejeY.empty() ? 0 : linea + margen / 2) + anchoNumerosY + marca + margen / 2;
    const int arriba = margen + (g.titulo.empty() ? linea / 2 : 2 * linea + margen / 2);
    const int abajo = marca + margen / 2 + linea + (g.ejeX.empty() ? 0 : linea + margen / 2) + margen;
    const int derecha = margen + (mx.empty() ? 0 : fuente::AnchoTexto(Numero(mx.back(), pasoX), s) / 2);
    MarcoGrafico& m = d.marco;
    m.x0 = izquierda;
    m.y0 = arriba;
    m.ancho = std::max(2, static_cast<int>(ancho) - izquierda - derecha);
    m.alto = std::max(2, static_cast<int>(alto) - arriba - abajo);
    m.x = rx;
    m.y = ry;
    const int x1 = m.x0 + m.ancho - 1, y1 = m.y0 + m.alto - 1;

    // Grid at the ticks.
    const ColorRgb rejilla{225, 225, 225};
    for (double v : mx) {
        const long px = std::lround(m.APixel(v, ry.minimo)[0]);
        for (long y = m.y0; y <= y1; ++y) l.Punto(px, y, rejilla);
    }
    for (double v : my) {
        const long py = std::lround(m.APixel(rx.minimo, v)[1]);
        for (long x = m.x0; x <= x1; ++x) l.Punto(x, py, rejilla);
    }

    // Points, the fuller ones over the emptier ones; then the lines over
    // every point.
    for (const auto& serie : g.series) {
        if (serie.clase != SerieGrafico::Clase::Puntos) continue;
        const ColorRgb color = Rgb(serie.color);
        uint64_t mayor = 1;
        for (const auto& p : serie.puntos) mayor = std::max(mayor, p.cuenta);
        std::vector<const PuntoGrafico*> orden;
        for (const auto& p : serie.puntos) orden.push_back(&p);
        if (mayor > 1)
            std::stable_sort(orden.begin(), orden.end(),
                             [](const PuntoGrafico* a, const PuntoGrafico* b) { return a->cuenta < b->cuenta; });
        const int lado = std::max(1, serie.lado), antes = (lado - 1) / 2;
        for (const PuntoGrafico* p : orden) {
            if (!(p->x >= rx.minimo && p->x <= rx.maximo && p->y >= ry.minimo && p->y <= ry.maximo)) continue;
            ColorRgb c = color;
            if (mayor > 1) {
                // From a pale tint (one sample) to the full colour, on a
                // logarithmic scale of the count.
                const double t = std::log1p(static_cast<double>(std::max<uint64_t>(p->cuenta, 1)) - 1) /
                                 std::log(static_cast<double>(mayor));
                const double f = 0.25 + 0.75 * std::clamp(t, 0.0, 1.0);
                for (int k = 0; k < 3; ++k)
                    c[k] = static_cast<uint8_t>(std::lround(fondo[k] + f * (color[k] - fondo[k])));
            }
            const auto q = m.APixel(p->x, p->y);
            const long px = std::lround(q[0]) - antes, py = std::lround(q[1]) - antes;
            l.Rectangulo(std::max<long>(px, m.x0), std::max<long>(py, m.y0), std::min<long>(px + lado - 1, x1),
                         std::min<long>(py + lado - 1, y1), c);
        }
    }

    for (const auto& li : g.series) {
        const int grosor = std::clamp(li.grosor, 1, 9);
        const ColorRgb color = Rgb(li.color);
        const auto& v = li.puntos;
        if (li.clase == SerieGrafico::Clase::Recta)
            Segmento(l, m, m.APixel(rx.minimo, li.a + li.b * rx.minimo), m.APixel(rx.maximo, li.a + li.b * rx.maximo),
                     color, grosor);
        if (li.clase != SerieGrafico::Clase::Linea) continue;
        for (std::size_t i = 1; i < v.size(); ++i)
            Segmento(l, m, m.APixel(v[i - 1].x, v[i - 1].y), m.APixel(v[i].x, v[i].y), color, grosor);
        if (v.size() == 1) Segmento(l, m, m.APixel(v[0].x, v[0].y), m.APixel(v[0].x, v[0].y), color, grosor);
    }

    // The key, in the top right corner of the plot area: a sample of each
    // named series and its name.
    {
        std::vector<const SerieGrafico*> nombradas;
        int anchoNombres = 0;
        for (const auto& serie : g.series)
            if (!serie.nombre.empty()) {
                nombradas.push_back(&serie);
                anchoNombres = std::max(anchoNombres, fuente::AnchoTexto(serie.nombre, s));
            }
        if (!nombradas.empty()) {
            const int muestra = 12 * s, hueco = 4 * s;
            const long ancho = hueco + muestra + hueco + anchoNombres + hueco;
            const long alto = hueco + static_cast<long>(nombradas.size()) * linea + hueco - (linea - 8 * s);
            const long xa = x1 - 4 * s - ancho, ya = m.y0 + 4 * s;
            l.Rectangulo(xa, ya, xa + ancho - 1, ya + alto - 1, fondo);
            for (long x = xa; x < xa + ancho; ++x) {
                l.Punto(x, ya, tinta);
                l.Punto(x, ya + alto - 1, tinta);
            }
            for (long y = ya; y < ya + alto; ++y) {
                l.Punto(xa, y, tinta);
                l.Punto(xa + ancho - 1, y, tinta);
            }
            for (std::size_t i = 0; i < nombradas.size(); ++i) {
                const SerieGrafico& serie = *nombradas[i];
                const long y = ya + hueco + static_cast<long>(i) * linea;  // top of the line of text
                const long centro = y + 4 * s;
                const ColorRgb c = Rgb(serie.color);
                if (serie.clase == SerieGrafico::Clase::Puntos)
                    l.Rectangulo(xa + hueco + muestra / 2 - 2 * s, centro - 2 * s, xa + hueco + muestra / 2 + s,
                                 centro + s, c);
                else
                    l.Rectangulo(xa + hueco, centro - (s - 1) / 2, xa + hueco + muestra - 1, centro + s / 2, c);
                fuente::DibujarTexto(d.imagen, static_cast<int>(xa + hueco + muestra + hueco),
                                     static_cast<int>(y - s), serie.nombre, tinta, s);
            }
        }
    }

    // Frame, ticks and their numbers.
    for (long x = m.x0 - 1; x <= x1 + 1; ++x) {
        l.Punto(x, m.y0 - 1, tinta);
        l.Punto(x, y1 + 1, tinta);
    }
    for (long y = m.y0 - 1; y <= y1 + 1; ++y) {
        l.Punto(m.x0 - 1, y, tinta);
        l.Punto(x1 + 1, y, tinta);
    }
    const int altoTexto = 7 * s;  // capitals and digits: rows 1 to 7 of the cell
    for (double v : mx) {
        const long px = std::lround(m.APixel(v, ry.minimo)[0]);
        for (long k = 1; k <= marca; ++k) l.Punto(px, y1 + 1 + k, tinta);
        const std::string t = Numero(v, pasoX);
        fuente::DibujarTexto(d.imagen, static_cast<int>(px) - fuente::AnchoTexto(t, s) / 2,
                             y1 + 1 + marca + margen / 2 - s, t, tinta, s);
    }
    for (double v : my) {
        const long py = std::lround(m.APixel(rx.minimo, v)[1]);
        for (long k = 1; k <= marca; ++k) l.Punto(m.x0 - 1 - k, py, tinta);
        const std::string t = Numero(v, pasoY);
        fuente::DibujarTexto(d.imagen, m.x0 - 1 - marca - margen / 2 - fuente::AnchoTexto(t, s),
                             static_cast<int>(py) - altoTexto / 2 - s, t, tinta, s);
    }

    // Titles: the chart's centred above, x's centred below, y's turned on
    // the left.
    if (!g.titulo.empty())
        fuente::DibujarTexto(d.imagen, static_cast<int>(ancho) / 2 - fuente::AnchoTexto(g.titulo, 2 * s) / 2, margen,
                             g.titulo, tinta, 2 * s);
    if (!g.ejeX.empty())
        fuente::DibujarTexto(d.imagen, m.x0 + m.ancho / 2 - fuente::AnchoTexto(g.ejeX, s) / 2,
                             y1 + 1 + marca + margen / 2 + linea + margen / 2, g.ejeX, tinta, s);
    if (!g.ejeY.empty())
        fuente::DibujarTexto(d.imagen, margen, m.y0 + m.alto / 2 + fuente::AnchoTexto(g.ejeY, s) / 2, g.ejeY,
                             tinta, s, true);
    return d;
}

bool EscribirGraficoPng(const Grafico& g, const std::string& ruta, uint32_t ancho, uint32_t alto) {
    return EscribirPng(ruta, DibujarGrafico(g, ancho, alto).imagen);
}

bool EscribirGraficoPng(const Grafico& g, FicheroSeguro& f, uint32_t ancho, uint32_t alto) {
    return EscribirPng(f, DibujarGrafico(g, ancho, alto).imagen);
}

// ----- The cloud of counts of a pair of bands.

namespace {

// How one band's values fall into cells.
struct Celdas {
    int n = 1;               // cells
    double minimo = 0;
    double ancho = 0;        // of a cell, in values (0: a single value)
    bool entera = false;     // integer band: cell = (v - minimo) / ancho in integers
    long anchoEntero = 1;
    std::vector<uint16_t> tabla;  // integer bands: the cell of each value
    double Centro(int i) const {
        return entera ? minimo + i * static_cast<double>(anchoEntero) + (anchoEntero - 1) / 2.0
                      : minimo + (i + 0.5) * ancho;
    }
};

constexpr long kTramo = 1 << 16;  // samples per piece of the passes

// Minimum and maximum of the samples that are numbers, on every core;
// nullopt when cancelled, {+inf, -inf} when there is none.
std::optional<std::array<double, 2>> Extremos(const Muestras& m, Progreso& p) {
    const long total = static_cast<long>(m.Cantidad());
    using Par = std::array<double, 2>;
    const auto partes = PorBloques<Par>(p, (total + kTramo - 1) / kTramo, 16, [&](long t0, long t1) {
        Par r{std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
        ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
            const T* d = m.Como<T>().data();
            const std::size_t fin = static_cast<std::size_t>(std::min(total, t1 * kTramo));
            if (static_cast<std::size_t>(t0 * kTramo) >= fin) return;
            T a = std::numeric_limits<T>::max(), b = std::numeric_limits<T>::lowest();
            bool alguno = false;
            for (std::size_t i = static_cast<std::size_t>(t0 * kTramo); i < fin; ++i) {
                const T v = d[i];
                if constexpr (std::is_floating_point_v<T>)
                    if (!std::isfinite(v)) continue;
                alguno = true;
                a = v < a ? v : a;
                b = v > b ? v : b;
            }
            if (alguno) r = {static_cast<double>(a), static_cast<double>(b)};
        });
        return r;
    });
    if (!partes) return std::nullopt;
    Par r{std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
    for (const Par& q : *partes) {
        r[0] = std::min(r[0], q[0]);
        r[1] = std::max(r[1], q[1]);
    }
    return r;
}

Celdas CeldasDe(const Muestras& m, const std::array<double, 2>& extremos) {
    Celdas c;
    // Integer bands: every value outside the cells is left out.
    if (!EsReal(m.Codigo())) c.tabla.assign(m.Codigo() == kByte ? 256 : 65536, 256);
    const double mn = extremos[0], mx = extremos[1];
    if (!std::isfinite(mn) || !std::isfinite(mx) || !(mx >= mn)) return c;
    c.minimo = mn;
    c.entera = !EsReal(m.Codigo());
    if (c.entera) {
        const long valores = static_cast<long>(mx - mn) + 1;
        c.anchoEntero = (valores + 255) / 256;
        c.n = static_cast<int>((valores + c.anchoEntero - 1) / c.anchoEntero);
        for (std::size_t v = static_cast<std::size_t>(mn); v < c.tabla.size(); ++v)
            c.tabla[v] = static_cast<uint16_t>(std::min<long>(c.n - 1, (static_cast<long>(v) - static_cast<long>(mn)) / c.anchoEntero));
    } else if (mx > mn) {
        c.n = 256;
        c.ancho = (mx - mn) / 256;
    }
    return c;
}

// Cells of samples [desde, desde + n) of one band; 256 for a sample that is
// not a finite number.
void IndicesCelda(const Muestras& m, const Celdas& c, std::size_t desde, std::size_t n, uint16_t* destino) {
    ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
        const T* d = m.Como<T>().data() + desde;
        if constexpr (std::is_integral_v<T>) {
            // Every value of the type has its cell looked up in a table.
            for (std::size_t i = 0; i < n; ++i) destino[i] = c.tabla[d[i]];
        } else {
            const double inv = c.ancho > 0 ? 1.0 / c.ancho : 0.0;
            const int ultima = c.n - 1;
            // A finite sample lies between the minimum and the maximum, so
            // t is in [0, n]; infinities and NaN fail the test.
            const double limite = c.n + 0.5;
            for (std::size_t i = 0; i < n; ++i) {
                const double t = (static_cast<double>(d[i]) - c.minimo) * inv;
                destino[i] = t >= 0 && t < limite ? static_cast<uint16_t>(std::min(static_cast<double>(ultima), t)) : 256;
            }
        }
    });
}

}  // namespace

std::optional<SerieGrafico> NubeDeDispersion(const Muestras& x, const Muestras& y, Progreso& p) {
    if (x.Cantidad() != y.Cantidad() || !CodigoValido(x.Codigo()) || !CodigoValido(y.Codigo()) ||
        x.Cantidad() == 0)
        return std::nullopt;
    const auto ex = Extremos(x, p);
    const auto ey = ex ? Extremos(y, p) : std::nullopt;
    if (!ey) return std::nullopt;
    const Celdas cx = CeldasDe(x, *ex), cy = CeldasDe(y, *ey);
    const long total = static_cast<long>(x.Cantidad());
    const long tramos = (total + kTramo - 1) / kTramo;
    using Rejilla = std::vector<uint32_t>;
    const auto partes = PorBloques<Rejilla>(p, tramos, 16, [&](long t0, long t1) {
        Rejilla r(256 * 256, 0);
        std::vector<uint16_t> ix(kTramo), iy(kTramo);
        for (long t = t0; t < t1; ++t) {
            const auto desde = static_cast<std::size_t>(t * kTramo);
            const auto n = static_cast<std::size_t>(std::min(kTramo, total - t * kTramo));
            IndicesCelda(x, cx, desde, n, ix.data());
            IndicesCelda(y, cy, desde, n, iy.data());
            for (std::size_t i = 0; i < n; ++i)
                if ((ix[i] | iy[i]) < 256) ++r[static_cast<std::size_t>(iy[i]) * 256 + ix[i]];
        }
        return r;
    });
    if (!partes) return std::nullopt;
    std::vector<uint64_t> cuenta(256 * 256, 0);
    for (const Rejilla& r : *partes)
        for (std::size_t k = 0; k < cuenta.size(); ++k) cuenta[k] += r[k];
    SerieGrafico s;
    s.lado = 2;
    s.color = 0x0000A0;
    for (int j = 0; j < cy.n; ++j)
        for (int i = 0; i < cx.n; ++i)
            if (const uint64_t c = cuenta[static_cast<std::size_t>(j) * 256 + i])
                s.puntos.push_back({cx.Centro(i), cy.Centro(j), c});
    return s;
}

}  // namespace orvela
