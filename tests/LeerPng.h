// PNG files read back through libpng itself (its simplified interface), so
// that the tests check what any reader sees, not what a reader of ours
// believes.
#pragma once

#include <png.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace orvela::prueba {

struct PngLeido {
    bool ok = false;
    uint32_t ancho = 0, alto = 0;
    bool indexado = false;     // stored with a palette
    std::vector<uint8_t> rgb;  // expanded to red, green, blue
    std::array<uint8_t, 3> Color(uint32_t x, uint32_t y) const {
        const std::size_t i = 3 * (static_cast<std::size_t>(y) * ancho + x);
        return {rgb[i], rgb[i + 1], rgb[i + 2]};
    }
};

inline PngLeido LeerPngLibpng(const std::string& ruta) {
    PngLeido r;
    png_image im{};
    im.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&im, ruta.c_str())) return r;
    r.indexado = (im.format & PNG_FORMAT_FLAG_COLORMAP) != 0;
    im.format = PNG_FORMAT_RGB;
    r.ancho = im.width;
    r.alto = im.height;
    r.rgb.resize(PNG_IMAGE_SIZE(im));
    r.ok = png_image_finish_read(&im, nullptr, r.rgb.data(), 0, nullptr) != 0;
    png_image_free(&im);
    return r;
}

}  // namespace orvela::prueba
