#include "tools/EscenaCorrecciones.h"

#include <cmath>
#include <cstdio>
#include <numbers>

namespace orvela::escena {

namespace {

constexpr double kCentro = kLado / 2.0;

// Map offsets from the centre in pixels (u east, v south) to the distorted
// image's column and line.
void Directa(double u, double v, double& columna, double& linea) {
    const double t = kGiroDistorsion * std::numbers::pi / 180.0;
    columna = kCentro + kEscalaDistorsion * (std::cos(t) * u - std::sin(t) * v);
    linea = kCentro + kEscalaDistorsion * (std::sin(t) * u + std::cos(t) * v);
}

bool EscribirTexto(std::vector<std::unique_ptr<FicheroSeguro>>& ficheros, const std::string& ruta,
                   const std::string& texto) {
    ficheros.push_back(std::make_unique<FicheroSeguro>(ruta));
    return ficheros.back()->Escribir(texto) && ficheros.back()->Cerrar();
}

const char* const kMetadatos =
    "GROUP = L1_METADATA_FILE\n"
    "  GROUP = PRODUCT_METADATA\n"
    "    SPACECRAFT_ID = \"LANDSAT_5\"\n"
    "    SENSOR_ID = \"TM\"\n"
    "    DATE_ACQUIRED = 1988-08-14\n"
    "  END_GROUP = PRODUCT_METADATA\n"
    "  GROUP = IMAGE_ATTRIBUTES\n"
    "    SUN_ELEVATION = 49.75588889\n"
    "  END_GROUP = IMAGE_ATTRIBUTES\n"
    "  GROUP = RADIOMETRIC_RESCALING\n"
    "    RADIANCE_MULT_BAND_1 = 0.671\n"
    "    RADIANCE_MULT_BAND_2 = 1.322\n"
    "    RADIANCE_MULT_BAND_3 = 1.044\n"
    "    RADIANCE_MULT_BAND_4 = 0.876\n"
    "    RADIANCE_MULT_BAND_5 = 0.120\n"
    "    RADIANCE_MULT_BAND_7 = 0.066\n"
    "    RADIANCE_ADD_BAND_1 = -2.19134\n"
    "    RADIANCE_ADD_BAND_2 = -4.16220\n"
    "    RADIANCE_ADD_BAND_3 = -2.21398\n"
    "    RADIANCE_ADD_BAND_4 = -2.38602\n"
    "    RADIANCE_ADD_BAND_5 = -0.49035\n"
    "    RADIANCE_ADD_BAND_7 = -0.21555\n"
    "  END_GROUP = RADIOMETRIC_RESCALING\n"
    "END_GROUP = L1_METADATA_FILE\n"
    "END\n";

}  // namespace

std::optional<Mensaje> EscribirEscenaCorrecciones(const Escena& e, const std::string& base,
                                                  std::vector<std::unique_ptr<FicheroSeguro>>& ficheros) {
    const std::string imagen = base + "tm4_distorsionada.ozm";
    const std::string puntos = base + "puntos_tm4_distorsionada.txt";
    const std::string metadatos = base + "escena_MTL.txt";

    const CImagen& tm4 = e.bandas[3];
    CImagen d;
    if (auto m = d.CopiarCabecera(tm4)) return m;
    d.titulo = "tm4_distorsionada";
    // Each distorted pixel shows the map point the inverse rotation gives.
    const double t = kGiroDistorsion * std::numbers::pi / 180.0;
    const auto origen = tm4.pixeles.Como<uint8_t>();
    auto destino = d.pixeles.Como<uint8_t>();
    for (int l = 0; l < kLado; ++l) {
        for (int c = 0; c < kLado; ++c) {
            const double a = (c - kCentro) / kEscalaDistorsion, b = (l - kCentro) / kEscalaDistorsion;
            const double u = std::cos(t) * a + std::sin(t) * b, v = -std::sin(t) * a + std::cos(t) * b;
            const long fila = std::lround(kCentro + v), columna = std::lround(kCentro + u);
            if (fila < 0 || fila >= kLado || columna < 0 || columna >= kLado) continue;
            destino[static_cast<std::size_t>(l) * kLado + c] = origen[static_cast<std::size_t>(fila) * kLado + columna];
        }
    }
    std::unique_ptr<FicheroSeguro> raster, inf;
    if (auto m = d.EscribirAparte(imagen, raster, inf)) return m;
    ficheros.push_back(std::move(raster));
    ficheros.push_back(std::move(inf));

    // Points on a 4 x 3 grid of the map; their lines are counted from the
    // image's last line up, as the control-point files count them.
    std::string texto = std::to_string(kPuntosControl) + "\n";
    int k = 0;
    for (double v : {-150.0, 0.0, 150.0}) {
        for (double u : {-150.0, -50.0, 50.0, 150.0}) {
            ++k;
            double columna, linea;
            Directa(u, v, columna, linea);
            linea += 0.3 * std::sin(k * 1.7) + (k == kPuntoErroneo ? 6.0 : 0.0);
            columna += 0.3 * std::cos(k * 2.3);
            const double x = kMinX + (kCentro + u) * kResolucion, y = kMaxY - (kCentro + v) * kResolucion;
            char b[160];
            std::snprintf(b, sizeof b, "%.2f %.2f %.1f %.1f\n", kLado - linea, columna, x, y);
            texto += b;
        }
    }
    if (!EscribirTexto(ficheros, puntos, texto)) return Mensaje::Tabla(msg::kNoCreadoFichero, puntos);
    if (!EscribirTexto(ficheros, metadatos, kMetadatos)) return Mensaje::Tabla(msg::kNoCreadoFichero, metadatos);
    return std::nullopt;
}

}  // namespace orvela::escena
