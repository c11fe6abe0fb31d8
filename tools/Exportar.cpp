#include "tools/Exportar.h"

#include <array>
#include <charconv>
#include <cstring>
#include <limits>
#include <new>
#include <vector>

#include "image/FicheroSeguro.h"

namespace orvela {

namespace {

// Whether the record holds rows x columns samples of its type.
bool TieneMuestras(const CImagen& im) {
    return CodigoValido(im.tipoDato) && im.pixeles.Codigo() == im.tipoDato && im.pixeles.Cantidad() > 0 &&
           im.pixeles.Cantidad() == ContarMuestras(im.filas, im.columnas, im.tipoDato);
}

// ----- PNG pieces: CRC-32 of the chunks, Adler-32 of the zlib stream.

const std::array<uint32_t, 256>& TablaCrc() {
    static const std::array<uint32_t, 256> t = [] {
        std::array<uint32_t, 256> r{};
        for (uint32_t n = 0; n < 256; ++n) {
            uint32_t c = n;
            for (int k = 0; k < 8; ++k) c = (c & 1u) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            r[n] = c;
        }
        return r;
    }();
    return t;
}

uint32_t Crc32(uint32_t crc, const uint8_t* d, std::size_t n) {
    const auto& t = TablaCrc();
    crc = ~crc;
    for (std::size_t i = 0; i < n; ++i) crc = t[(crc ^ d[i]) & 0xFFu] ^ (crc >> 8);
    return ~crc;
}

class Adler32 {
public:
    void Anadir(const uint8_t* d, std::size_t n) {
        while (n > 0) {
            // 5552 bytes is the most that can be summed before b overflows.
            const std::size_t tramo = n < 5552 ? n : 5552;
            for (std::size_t i = 0; i < tramo; ++i) {
                a_ += d[i];
                b_ += a_;
            }
            a_ %= 65521u;
            b_ %= 65521u;
            d += tramo;
            n -= tramo;
        }
    }
    uint32_t Valor() const { return (b_ << 16) | a_; }

private:
    uint32_t a_ = 1, b_ = 0;
};

void BigEndian32(std::vector<uint8_t>& v, uint32_t x) {
    v.push_back(static_cast<uint8_t>(x >> 24));
    v.push_back(static_cast<uint8_t>(x >> 16));
    v.push_back(static_cast<uint8_t>(x >> 8));
    v.push_back(static_cast<uint8_t>(x));
}

void LittleEndian(std::vector<uint8_t>& v, uint32_t x, int bytes) {
    for (int i = 0; i < bytes; ++i) v.push_back(static_cast<uint8_t>(x >> (8 * i)));
}

// Writes PNG chunks to the file.
bool Trozo(FicheroSeguro& f, const char tipo[4], const std::vector<uint8_t>& datos) {
    std::vector<uint8_t> cab;
    BigEndian32(cab, static_cast<uint32_t>(datos.size()));
    cab.insert(cab.end(), tipo, tipo + 4);
    uint32_t crc = Crc32(0, reinterpret_cast<const uint8_t*>(tipo), 4);
    crc = Crc32(crc, datos.data(), datos.size());
    std::vector<uint8_t> pie;
    BigEndian32(pie, crc);
    return f.Escribir(cab.data(), cab.size()) && f.Escribir(datos.data(), datos.size()) &&
           f.Escribir(pie.data(), pie.size());
}

// The zlib stream of the picture, made of stored (uncompressed) deflate
// blocks and cut into IDAT chunks as it grows.
class FlujoZlib {
public:
    explicit FlujoZlib(FicheroSeguro& f) : f_(f) {
        salida_ = {0x78, 0x01};  // deflate, 32 KiB window, no dictionary
    }
    bool Anadir(const uint8_t* d, std::size_t n) {
        adler_.Anadir(d, n);
        while (n > 0) {
            const std::size_t cabe = kBloque - pendiente_.size();
            const std::size_t tramo = n < cabe ? n : cabe;
            pendiente_.insert(pendiente_.end(), d, d + tramo);
            d += tramo;
            n -= tramo;
            if (pendiente_.size() == kBloque && !Bloque(false)) return false;
        }
        return true;
    }
    bool Terminar() {
        if (!Bloque(true)) return false;
        BigEndian32(salida_, adler_.Valor());
        return Volcar();
    }

private:
    static constexpr std::size_t kBloque = 65535;
    static constexpr std::size_t kTrozo = 1u << 20;

    bool Bloque(bool ultimo) {
        const auto n = static_cast<uint32_t>(pendiente_.size());
        salida_.push_back(ultimo ? 1 : 0);  // BFINAL, BTYPE 00, padding to the byte
        LittleEndian(salida_, n, 2);
        LittleEndian(salida_, ~n & 0xFFFFu, 2);
        salida_.insert(salida_.end(), pendiente_.begin(), pendiente_.end());
        pendiente_.clear();
        return salida_.size() < kTrozo || Volcar();
    }
    bool Volcar() {
        if (salida_.empty()) return true;
        const bool ok = Trozo(f_, "IDAT", salida_);
        salida_.clear();
        return ok;
    }

    FicheroSeguro& f_;
    Adler32 adler_;
    std::vector<uint8_t> pendiente_, salida_;
};

bool EscribirPng(FicheroSeguro& f, const std::vector<uint8_t>& indices, const Paleta& p, uint32_t ancho,
                 uint32_t alto) {
    static const uint8_t kFirma[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    if (!f.Escribir(kFirma, sizeof kFirma)) return false;
    std::vector<uint8_t> ihdr;
    BigEndian32(ihdr, ancho);
    BigEndian32(ihdr, alto);
    ihdr.insert(ihdr.end(), {8, 2, 0, 0, 0});  // 8 bits, RGB, deflate, no filter choice, no interlace
    if (!Trozo(f, "IHDR", ihdr)) return false;
    FlujoZlib z(f);
    std::vector<uint8_t> fila(1 + 3 * static_cast<std::size_t>(ancho));
    for (uint32_t y = 0; y < alto; ++y) {
        fila[0] = 0;  // filter "None"
        const uint8_t* in = indices.data() + static_cast<std::size_t>(y) * ancho;
        for (uint32_t x = 0; x < ancho; ++x) {
            fila[1 + 3 * x] = p.rojo[in[x]];
            fila[2 + 3 * x] = p.verde[in[x]];
            fila[3 + 3 * x] = p.azul[in[x]];
        }
        if (!z.Anadir(fila.data(), fila.size())) return false;
    }
    return z.Terminar() && Trozo(f, "IEND", {});
}

bool EscribirBmp(FicheroSeguro& f, const std::vector<uint8_t>& indices, const Paleta& p, uint32_t ancho,
                 uint32_t alto) {
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
        const uint8_t* in = indices.data() + static_cast<std::size_t>(y) * ancho;
        for (uint32_t x = 0; x < ancho; ++x) {
            fila[3 * x] = p.azul[in[x]];
            fila[3 * x + 1] = p.verde[in[x]];
            fila[3 * x + 2] = p.rojo[in[x]];
        }
        if (!f.Escribir(fila.data(), fila.size())) return false;
    }
    return true;
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
    // export is refused and the temporary file goes with the unwinding.
    try {
        const std::vector<uint8_t> indices = IndicesPaleta(im.pixeles);
        FicheroSeguro f(ruta);
        if (!f.Abierto()) return fallo;
        const bool ok = formato == FormatoImagen::Bmp ? EscribirBmp(f, indices, p, ancho, alto)
                                                      : EscribirPng(f, indices, p, ancho, alto);
        if (!ok || !f.Confirmar()) return fallo;
    } catch (const std::bad_alloc&) {
        return MensajeMemoria(im.filas, im.columnas);
    }
    return std::nullopt;
}

}  // namespace orvela
