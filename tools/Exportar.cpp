#include "tools/Exportar.h"

#include <array>
#include <cctype>
#include <charconv>
#include <cstring>
#include <limits>
#include <new>
#include <vector>

#include "image/FicheroSeguro.h"
#include "image/Png.h"

namespace orvela {

namespace {

// Whether the record holds rows x columns samples of its type.
bool TieneMuestras(const CImagen& im) {
    return CodigoValido(im.tipoDato) && im.pixeles.Codigo() == im.tipoDato && im.pixeles.Cantidad() > 0 &&
           im.pixeles.Cantidad() == ContarMuestras(im.filas, im.columnas, im.tipoDato);
}

void LittleEndian(std::vector<uint8_t>& v, uint32_t x, int bytes) {
    for (int i = 0; i < bytes; ++i) v.push_back(static_cast<uint8_t>(x >> (8 * i)));
}

// BMP stays written here: an uncompressed 24-bit file is a header and the
// rows, and no Debian library the core already uses writes one.
// `pixel(x, y, bgr)` gives the colour of one pixel, blue first.
template <class F> bool EscribirBmp(FicheroSeguro& f, uint32_t ancho, uint32_t alto, F pixel) {
    const uint64_t paso = (3ull * ancho + 3ull) & ~3ull;
    const uint64_t imagen = paso * alto;
    if (54 + imagen > std::numeric_limits<uint32_t>::max()) return false;
    std::vector<uint8_t> cab;
    cab.push_back('B');
    cab.push_back('M');
    LittleEndian(cab, static_cast<uint32_t>(54 + imagen), 4);
    LittleEndian(cab, 0, 4);
    LittleEndian(cab, 54, 4);
    LittleEndian(cab, 40, 4);       // BITMAPINFOHEADER
    LittleEndian(cab, ancho, 4);
    LittleEndian(cab, alto, 4);     // positive height: bottom-up rows
    LittleEndian(cab, 1, 2);        // planes
    LittleEndian(cab, 24, 2);       // bits per pixel
    LittleEndian(cab, 0, 4);        // no compression
    LittleEndian(cab, static_cast<uint32_t>(imagen), 4);
    LittleEndian(cab, 2835, 4);     // 72 dots per inch
    LittleEndian(cab, 2835, 4);
    LittleEndian(cab, 0, 4);
    LittleEndian(cab, 0, 4);
    if (!f.Escribir(cab.data(), cab.size())) return false;
    std::vector<uint8_t> fila(static_cast<std::size_t>(paso), 0);
    for (uint32_t k = 0; k < alto; ++k) {
        const uint32_t y = alto - 1 - k;
        for (uint32_t x = 0; x < ancho; ++x) pixel(x, y, &fila[3 * x]);
        if (!f.Escribir(fila.data(), fila.size())) return false;
    }
    return true;
}

bool EscribirBmp(FicheroSeguro& f, const std::vector<uint8_t>& indices, const Paleta& p, uint32_t ancho,
                 uint32_t alto) {
    return EscribirBmp(f, ancho, alto, [&](uint32_t x, uint32_t y, uint8_t* bgr) {
        const uint8_t i = indices[static_cast<std::size_t>(y) * ancho + x];
        bgr[0] = p.azul[i];
        bgr[1] = p.verde[i];
        bgr[2] = p.rojo[i];
    });
}

}  // namespace

std::optional<Mensaje> ExportarAscii(const CImagen& im, const std::string& ruta) {
    if (!CodigoValido(im.tipoDato)) return Mensaje::Tabla(msg::kTipoNoReconocido);
    if (!TieneMuestras(im)) return Mensaje::Tabla(msg::kSinImagen);
    FicheroSeguro f(ruta);
    const auto columnas = static_cast<std::size_t>(im.columnas);
    bool ok = f.Abierto();
    ConTipo(im.tipoDato, [&]<class T>(Muestra<T>) {
        const auto d = im.pixeles.Como<T>();
        std::string linea;
        char num[64];
        for (std::size_t ini = 0; ok && ini < d.size(); ini += columnas) {
            linea.clear();
            for (std::size_t c = 0; c < columnas; ++c) {
                if (c) linea += ' ';
                std::to_chars_result r;
                if constexpr (std::is_integral_v<T>)
                    r = std::to_chars(num, num + sizeof num, static_cast<unsigned>(d[ini + c]));
                else  // "%.10g" with a point whatever the locale
                    r = std::to_chars(num, num + sizeof num, static_cast<double>(d[ini + c]),
                                      std::chars_format::general, 10);
                linea.append(num, r.ptr);
            }
            linea += '\n';
            ok = f.Escribir(linea);
        }
    });
    if (!ok || !f.Confirmar()) return Mensaje::Tabla(msg::kNoCreadoFichero, ruta);
    return std::nullopt;
}

std::optional<Mensaje> ExportarImagen(const CImagen& im, const Paleta& p, const std::string& ruta, FormatoImagen formato) {
    if (!CodigoValido(im.tipoDato)) return Mensaje::Tabla(msg::kTipoNoReconocido);
    if (!TieneMuestras(im)) return Mensaje::Tabla(msg::kSinImagen);
    const Mensaje fallo = formato == FormatoImagen::Bmp ? Mensaje::Tabla(msg::kNoCreadoBmp)
                                                        : Mensaje::Tabla(msg::kNoCreadoFichero, ruta);
    if (im.columnas > 0x7FFFFFFF || im.filas > 0x7FFFFFFF) return fallo;
    const auto ancho = static_cast<uint32_t>(im.columnas);
    const auto alto = static_cast<uint32_t>(im.filas);
    // Every buffer here grows with the image: when memory runs out the
    // export is refused and a temporary file goes with the unwinding.
    try {
        const std::vector<uint8_t> indices = IndicesPaleta(im.pixeles);
        if (formato == FormatoImagen::Png) {
            // An indexed PNG: the palette once, one byte per pixel.
            std::array<std::array<uint8_t, 3>, 256> colores;
            for (int i = 0; i < 256; ++i) colores[i] = {p.rojo[i], p.verde[i], p.azul[i]};
            const bool ok = EscribirPngIndexado(ruta, ancho, alto, colores, [&](uint32_t y) {
                return indices.data() + static_cast<std::size_t>(y) * ancho;
            });
            return ok ? std::nullopt : std::optional<Mensaje>(fallo);
        }
        FicheroSeguro f(ruta);
        if (!f.Abierto() || !EscribirBmp(f, indices, p, ancho, alto) || !f.Confirmar()) return fallo;
    } catch (const std::bad_alloc&) {
        return MensajeMemoria(im.filas, im.columnas);
    }
    return std::nullopt;
}

std::optional<Mensaje> ExportarComposicion(const ComposicionColor& c, const std::string& ruta, FormatoImagen formato) {
    if (!c.Valida()) return Mensaje::Tabla(msg::kSinImagen);
    const Mensaje fallo = formato == FormatoImagen::Bmp ? Mensaje::Tabla(msg::kNoCreadoBmp)
                                                        : Mensaje::Tabla(msg::kNoCreadoFichero, ruta);
    if (c.columnas > 0x7FFFFFFF || c.filas > 0x7FFFFFFF) return fallo;
    const auto ancho = static_cast<uint32_t>(c.columnas);
    const auto alto = static_cast<uint32_t>(c.filas);
    try {
        if (formato == FormatoImagen::Png) {
            std::vector<uint8_t> fila(3 * static_cast<std::size_t>(ancho));
            const bool ok = EscribirPngRgb(ruta, ancho, alto, [&](uint32_t y) {
                const std::size_t k0 = static_cast<std::size_t>(y) * ancho;
                for (uint32_t x = 0; x < ancho; ++x) {
                    fila[3 * x] = c.rojo[k0 + x];
                    fila[3 * x + 1] = c.verde[k0 + x];
                    fila[3 * x + 2] = c.azul[k0 + x];
                }
                return static_cast<const uint8_t*>(fila.data());
            });
            return ok ? std::nullopt : std::optional<Mensaje>(fallo);
        }
        FicheroSeguro f(ruta);
        const bool ok = f.Abierto() && EscribirBmp(f, ancho, alto, [&](uint32_t x, uint32_t y, uint8_t* bgr) {
            const std::size_t k = static_cast<std::size_t>(y) * ancho + x;
            bgr[0] = c.azul[k];
            bgr[1] = c.verde[k];
            bgr[2] = c.rojo[k];
        });
        if (!ok || !f.Confirmar()) return fallo;
    } catch (const std::bad_alloc&) {
        return MensajeMemoria(static_cast<double>(c.filas), static_cast<double>(c.columnas));
    }
    return std::nullopt;
}

// A path ending in ".png" (any case) names a PNG picture; anything else a BMP.
FormatoImagen FormatoDeRuta(const std::string& ruta) {
    if (ruta.size() < 4) return FormatoImagen::Bmp;
    std::string e = ruta.substr(ruta.size() - 4);
    for (char& ch : e) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    return e == ".png" ? FormatoImagen::Png : FormatoImagen::Bmp;
}

}  // namespace orvela
