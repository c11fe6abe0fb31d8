#include "image/Png.h"

#include <png.h>

#include <csetjmp>

#include "image/FicheroSeguro.h"

namespace orvela {

RasterRgb::RasterRgb(uint32_t ancho_, uint32_t alto_, std::array<uint8_t, 3> fondo)
    : ancho(ancho_), alto(alto_), rgb(3 * static_cast<std::size_t>(ancho_) * alto_) {
    for (std::size_t i = 0; i < rgb.size(); i += 3) {
        rgb[i] = fondo[0];
        rgb[i + 1] = fondo[1];
        rgb[i + 2] = fondo[2];
    }
}

namespace {

struct Destino {
    FicheroSeguro* f;
};

void Escribir(png_structp png, png_bytep datos, png_size_t n) {
    auto* d = static_cast<Destino*>(png_get_io_ptr(png));
    if (!d->f->Escribir(datos, n)) png_error(png, "escritura");
}
void Vaciar(png_structp) {}
// libpng's messages are not for the user: a failure is reported as false.
void Error(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void Aviso(png_structp, png_const_charp) {}

// The libpng calls, kept apart from every object with a destructor so that
// the jump back from an error skips none.
bool Volcar(png_structp png, png_infop info, Destino* destino, uint32_t ancho, uint32_t alto, int tipoColor,
            const png_color* paleta, const FilaPng* fila) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_write_fn(png, destino, Escribir, Vaciar);
    png_set_IHDR(png, info, ancho, alto, 8, tipoColor, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (paleta) png_set_PLTE(png, info, paleta, 256);
    png_write_info(png, info);
    for (uint32_t y = 0; y < alto; ++y) {
        const uint8_t* r = (*fila)(y);
        if (!r) png_error(png, "fila");
        png_write_row(png, r);
    }
    png_write_end(png, nullptr);
    return true;
}

bool EscribirEn(FicheroSeguro& f, uint32_t ancho, uint32_t alto, int tipoColor, const png_color* paleta,
                const FilaPng& fila) {
    if (ancho == 0 || alto == 0 || ancho > 0x7FFFFFFFu || alto > 0x7FFFFFFFu) return false;
    if (!f.Abierto()) return false;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, Error, Aviso);
    if (!png) return false;
    png_infop info = png_create_info_struct(png);
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        return false;
    }
    png_set_user_limits(png, 0x7FFFFFFFu, 0x7FFFFFFFu);
    Destino destino{&f};
    const bool ok = Volcar(png, info, &destino, ancho, alto, tipoColor, paleta, &fila);
    png_destroy_write_struct(&png, &info);
    return ok;
}

bool EscribirComo(const std::string& ruta, uint32_t ancho, uint32_t alto, int tipoColor, const png_color* paleta,
                  const FilaPng& fila) {
    if (ancho == 0 || alto == 0 || ancho > 0x7FFFFFFFu || alto > 0x7FFFFFFFu) return false;
    FicheroSeguro f(ruta);
    return EscribirEn(f, ancho, alto, tipoColor, paleta, fila) && f.Confirmar();
}

}  // namespace

bool EscribirPngRgb(const std::string& ruta, uint32_t ancho, uint32_t alto, const FilaPng& fila) {
    return EscribirComo(ruta, ancho, alto, PNG_COLOR_TYPE_RGB, nullptr, fila);
}

bool EscribirPng(const std::string& ruta, const RasterRgb& r) {
    if (r.rgb.size() != 3 * static_cast<std::size_t>(r.ancho) * r.alto) return false;
    return EscribirPngRgb(ruta, r.ancho, r.alto, [&](uint32_t y) { return r.Pixel(0, y); });
}

bool EscribirPng(FicheroSeguro& f, const RasterRgb& r) {
    if (r.rgb.size() != 3 * static_cast<std::size_t>(r.ancho) * r.alto) return false;
    return EscribirEn(f, r.ancho, r.alto, PNG_COLOR_TYPE_RGB, nullptr, [&](uint32_t y) { return r.Pixel(0, y); });
}

bool EscribirPngIndexado(const std::string& ruta, uint32_t ancho, uint32_t alto,
                         const std::array<std::array<uint8_t, 3>, 256>& paleta, const FilaPng& fila) {
    png_color p[256];
    for (int i = 0; i < 256; ++i) p[i] = {paleta[i][0], paleta[i][1], paleta[i][2]};
    return EscribirComo(ruta, ancho, alto, PNG_COLOR_TYPE_PALETTE, p, fila);
}

}  // namespace orvela
