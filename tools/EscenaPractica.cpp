#include "tools/EscenaPractica.h"
#include "tools/EscenaCorrecciones.h"

#include "image/Codificacion.h"
#include "image/FicheroSeguro.h"

#include <cmath>
#include <filesystem>
#include <memory>

namespace orvela::escena {

namespace {

constexpr uint64_t kSemilla = 0x4F7276656C61ull;  // fixed: the scene is the same on every run

uint64_t Mezcla(uint64_t x) {
    x += 0x9E3779B97F4A7C15ull;
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;
    x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
    return x ^ (x >> 31);
}

// Uniform number in [0, 1) that depends only on its arguments, so that the
// scene does not depend on the order in which pixels are made.
double Azar(uint64_t a, uint64_t b = 0, uint64_t c = 0, uint64_t d = 0) {
    const uint64_t h = Mezcla(kSemilla ^ Mezcla(a ^ Mezcla(b ^ Mezcla(c ^ Mezcla(d)))));
    return static_cast<double>(h >> 11) * 0x1p-53;
}

// Roughly normal noise of deviation 1 (sum of four uniforms).
double Ruido(int f, int c, int canal) {
    double s = 0;
    for (int k = 0; k < 4; ++k) s += Azar(100 + canal, static_cast<uint64_t>(f), static_cast<uint64_t>(c), k);
    return (s - 2.0) * 1.7320508075688772;
}

// Smooth value noise in [-1, 1] with features about `escala` pixels wide.
double Suave(int f, int c, double escala, int canal) {
    const double y = f / escala, x = c / escala;
    const double fy = std::floor(y), fx = std::floor(x);
    const auto iy = static_cast<uint64_t>(fy), ix = static_cast<uint64_t>(fx);
    auto nodo = [&](uint64_t j, uint64_t i) { return 2.0 * Azar(200 + canal, j, i) - 1.0; };
    auto curva = [](double t) { return t * t * (3.0 - 2.0 * t); };
    const double ty = curva(y - fy), tx = curva(x - fx);
    const double arriba = nodo(iy, ix) * (1 - tx) + nodo(iy, ix + 1) * tx;
    const double abajo = nodo(iy + 1, ix) * (1 - tx) + nodo(iy + 1, ix + 1) * tx;
    return arriba * (1 - ty) + abajo * ty;
}

// Kinds of ground, each with its own signature; several make one class.
enum Cubierta { kLago, kRio, kRibera, kCultivo, kBosque, kArado, kBarbecho, kTejado, kCalle, kCubiertas };

// Digital levels of each kind of ground in TM bands 1, 2, 3, 4, 5, 7 (band 1
// carries the haze of the atmosphere; water is dark in the infrared,
// vegetation bright in band 4, soil bright in bands 5 and 7).
constexpr double kFirma[kCubiertas][6] = {
    {62, 22, 16, 9, 5, 3},         // lake
    {70, 28, 24, 14, 7, 4},        // river, shallower and turbid
    {55, 24, 19, 98, 55, 18},      // riverside trees
    {58, 26, 20, 118, 64, 21},     // green crops
    {52, 20, 17, 70, 40, 14},      // forest
    {84, 40, 52, 62, 108, 74},     // ploughed field
    {104, 52, 72, 82, 142, 100},   // dry fallow
    {96, 45, 56, 56, 86, 68},      // roofs
    {112, 54, 68, 64, 98, 80},     // streets
};

constexpr uint8_t kClaseDe[kCubiertas] = {kAgua,  kAgua,  kVegetacion, kVegetacion, kVegetacion,
                                          kSuelo, kSuelo, kUrbano,     kUrbano};

struct Punto {
    Cubierta cubierta;
    uint64_t parcela;  // field or block, for the variation between them
};

// Column strips of fields, each cut into fields of its own heights.
struct Parcelario {
    std::vector<int> cortesX;
    std::vector<std::vector<int>> cortesY;

    Parcelario() {
        for (int x = 0; x < kLado; x += 30 + static_cast<int>(Azar(1, cortesX.size()) * 35)) cortesX.push_back(x);
        cortesY.resize(cortesX.size());
        for (std::size_t j = 0; j < cortesX.size(); ++j)
            for (int y = 0; y < kLado; y += 25 + static_cast<int>(Azar(2, j, cortesY[j].size()) * 40))
                cortesY[j].push_back(y);
    }
    static std::size_t Tramo(const std::vector<int>& cortes, int v) {
        std::size_t k = 0;
        while (k + 1 < cortes.size() && cortes[k + 1] <= v) ++k;
        return k;
    }
    uint64_t Parcela(int f, int c) const {
        const std::size_t j = Tramo(cortesX, c);
        return j * 1000 + Tramo(cortesY[j], f);
    }
};

Punto Terreno(int f, int c, const Parcelario& campos) {
    // Lake with an uneven shore.
    const double ly = (f - 95) / 38.0, lx = (c - 300) / 55.0;
    if (ly * ly + lx * lx < 1.0 + 0.12 * Suave(f, c, 16, 9)) return {kLago, 0};
    // River from the top edge to the bottom one, widening downstream, with a
    // strip of trees on both banks.
    const double centro = 175 + 55 * std::sin(f / 64.0) + 12 * std::sin(f / 19.0 + 1.3);
    const double mitad = 2.0 + 1.5 * f / kLado;
    const double d = std::abs(c - centro);
    if (d <= mitad) return {kRio, 0};
    if (d <= mitad + 3) return {kRibera, 0};
    // Town: blocks of roofs between streets.
    if (std::hypot(f - 290.0, c - 300.0) < 58 + 10 * Suave(f, c, 24, 8)) {
        if (f % 13 < 2 || c % 13 < 2) return {kCalle, 0};
        return {kTejado, static_cast<uint64_t>(f / 13) * 1000 + static_cast<uint64_t>(c / 13)};
    }
    // Forest on the hills of the north-west.
    if (std::hypot(f - 90.0, (c - 80.0) / 1.15) < 88 + 22 * Suave(f, c, 40, 7)) return {kBosque, 0};
    // Fields: green crops, ploughed or fallow.
    const uint64_t p = campos.Parcela(f, c);
    const double u = Azar(3, p);
    return {u < 0.55 ? kCultivo : u < 0.8 ? kArado : kBarbecho, p};
}

uint8_t Nivel(double v) {
    // 0 and 255 are left to the lost pixels and the lost line.
    const double r = std::floor(v + 0.5);
    return static_cast<uint8_t>(r < 1 ? 1 : r > 254 ? 254 : r);
}

}  // namespace

std::optional<Mensaje> CrearEscena(Escena& e) {
    const Georreferencia geo{static_cast<float>(kMinX),
                             static_cast<float>(kMaxY - kLado * kResolucion),
                             static_cast<float>(kMinX + kLado * kResolucion),
                             static_cast<float>(kMaxY),
                             SinDato,
                             static_cast<float>(kResolucion),
                             1.0f};
    Escena nueva;
    nueva.bandas.resize(6);
    for (int b = 0; b < 6; ++b) {
        const std::string nombre = "tm" + std::to_string(kBandas[b]);
        if (auto m = nueva.bandas[b].Iniciar(nombre + ".ozm", "", nombre, kLado, kLado, "byte", 0, 0, "UTM-30N", "m", geo))
            return m;
    }
    if (auto m = nueva.verdad.Iniciar("verdad.ozm", "", "verdad", kLado, kLado, "byte", 0, 1, "UTM-30N", "m", geo))
        return m;

    const Parcelario campos;
    auto verdad = nueva.verdad.pixeles.Como<uint8_t>();
    for (int f = 0; f < kLado; ++f) {
        for (int c = 0; c < kLado; ++c) {
            const std::size_t k = static_cast<std::size_t>(f) * kLado + c;
            const Punto p = Terreno(f, c, campos);
            verdad[k] = kClaseDe[p.cubierta];
            // Fields and blocks differ in brightness; crops also in vigour.
            double brillo = 1.0, vigor = 1.0;
            if (p.cubierta >= kCultivo) brillo = 0.88 + 0.24 * Azar(4, p.parcela, p.cubierta);
            if (p.cubierta == kCultivo) vigor = 0.85 + 0.30 * Azar(5, p.parcela);
            for (int b = 0; b < 6; ++b) {
                double v = kFirma[p.cubierta][b] * brillo;
                if (kBandas[b] == 4) v *= vigor;
                if (kBandas[b] == 3 || kBandas[b] == 5) v *= 2.0 - vigor;
                v *= 1.0 + 0.04 * Suave(f, c, 48, b);  // moisture and slope
                const double textura = p.cubierta == kBosque ? (kBandas[b] == 4 ? 5.0 : 2.0) : 1.2;
                v += textura * Ruido(f, c, b);
                nueva.bandas[b].pixeles.Como<uint8_t>()[k] = Nivel(v);
            }
        }
    }

    // Sensor defects.
    auto bandeada = nueva.bandas[0].pixeles.Como<uint8_t>();
    for (int f = kDetectorBandeado; f < kLado; f += 16)
        for (int c = 0; c < kLado; ++c) {
            uint8_t& s = bandeada[static_cast<std::size_t>(f) * kLado + c];
            s = Nivel(s + kDesplazamientoBandeado);
        }
    auto perdida = nueva.bandas[2].pixeles.Como<uint8_t>();
    std::fill_n(perdida.begin() + static_cast<std::ptrdiff_t>(kLineaPerdida) * kLado, kLado, uint8_t{0});
    auto pixeles = nueva.bandas[4].pixeles.Como<uint8_t>();
    std::vector<std::pair<int, int>> puestos;
    for (uint64_t intento = 0; static_cast<int>(puestos.size()) < kPixelesPerdidos; ++intento) {
        const int f = 2 + static_cast<int>(Azar(20, intento) * (kLado - 4));
        const int c = 2 + static_cast<int>(Azar(21, intento) * (kLado - 4));
        bool aislado = true;
        for (auto [pf, pc] : puestos)
            if (std::abs(pf - f) <= 3 && std::abs(pc - c) <= 3) aislado = false;
        if (!aislado) continue;
        pixeles[static_cast<std::size_t>(f) * kLado + c] = puestos.size() % 2 ? 255 : 0;
        puestos.emplace_back(f, c);
    }

    nueva.clases = {{"Agua", kAgua}, {"Vegetacion", kVegetacion}, {"Suelo", kSuelo}, {"Urbano", kUrbano}};
    e = std::move(nueva);
    return std::nullopt;
}

std::optional<Mensaje> EscribirEscena(const std::string& carpeta) {
    namespace fs = std::filesystem;
    std::error_code ec;
    const bool existia = fs::exists(carpeta, ec);
    fs::create_directories(carpeta, ec);
    if (!fs::is_directory(carpeta, ec)) return Mensaje::Libre("No se ha podido crear la carpeta " + carpeta + ".");

    Escena e;
    if (auto m = CrearEscena(e)) return m;

    // Every file of the scene is written aside, then all are committed as
    // one group: an existing scene is replaced whole or left as it was.
    std::vector<std::unique_ptr<FicheroSeguro>> ficheros;
    const std::string base = carpeta + "/";
    auto fallo = [&](const std::string& ruta) {
        ficheros.clear();
        if (!existia) fs::remove(carpeta, ec);  // only when left empty
        return Mensaje::Tabla(msg::kNoCreadoFichero, ruta);
    };
    auto escribir = [&](const std::string& ruta, const void* datos, std::size_t bytes) {
        ficheros.push_back(std::make_unique<FicheroSeguro>(ruta));
        return ficheros.back()->Escribir(datos, bytes);
    };
    std::vector<CImagen*> imagenes;
    for (auto& b : e.bandas) imagenes.push_back(&b);
    imagenes.push_back(&e.verdad);
    for (CImagen* im : imagenes) {
        const std::string ruta = base + im->titulo + ".ozm";
        if (!escribir(ruta, im->pixeles.Datos(), im->pixeles.Bytes())) return fallo(ruta);
        im->rutaRaster = ruta;
        const std::string inf = TextoCabecera(*im);
        if (!escribir(CambiarExtension(ruta, ".inf"), inf.data(), inf.size())) return fallo(CambiarExtension(ruta, ".inf"));
    }
    const std::string leyenda = RutaLeyenda(base + "verdad.ozm");
    const std::string textoLeyenda = Utf8ACp1252(TextoLeyenda(e.clases));
    if (!escribir(leyenda, textoLeyenda.data(), textoLeyenda.size())) return fallo(leyenda);
    // The exercises of the corrections: a distorted band with its control
    // points and a metadata file, in the same commit.
    if (auto m = EscribirEscenaCorrecciones(e, base, ficheros)) {
        ficheros.clear();
        if (!existia) fs::remove(carpeta, ec);
        return m;
    }
    std::vector<FicheroSeguro*> grupo;
    for (auto& f : ficheros) grupo.push_back(f.get());
    if (const auto i = FicheroSeguro::ConfirmarGrupo(grupo)) return fallo(grupo[*i]->Destino());
    return std::nullopt;
}

}  // namespace orvela::escena
