#include "image/Codificacion.h"

#include <cstdint>
#include <locale>
#include <sstream>

namespace orvela {

namespace {

// Code points of 0x80..0x9F in Windows-1252 (0 where the code is unassigned).
constexpr char32_t kAltos[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void AnadirUtf8(std::string& s, char32_t c) {
    if (c < 0x80) {
        s += static_cast<char>(c);
    } else if (c < 0x800) {
        s += static_cast<char>(0xC0 | (c >> 6));
        s += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        s += static_cast<char>(0xE0 | (c >> 12));
        s += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        s += static_cast<char>(0x80 | (c & 0x3F));
    }
}

}  // namespace

std::string Cp1252AUtf8(std::string_view cp1252) {
    std::string r;
    r.reserve(cp1252.size() + cp1252.size() / 8);
    for (unsigned char b : cp1252) {
        char32_t c = b;
        if (b >= 0x80 && b < 0xA0 && kAltos[b - 0x80] != 0) c = kAltos[b - 0x80];
        AnadirUtf8(r, c);
    }
    return r;
}

std::string Utf8ACp1252(std::string_view s) {
    std::string r;
    r.reserve(s.size());
    for (std::size_t i = 0; i < s.size();) {
        const auto b = static_cast<unsigned char>(s[i]);
        char32_t c;
        std::size_t n;
        if (b < 0x80) { c = b; n = 1; }
        else if ((b & 0xE0) == 0xC0) { c = b & 0x1F; n = 2; }
        else if ((b & 0xF0) == 0xE0) { c = b & 0x0F; n = 3; }
        else if ((b & 0xF8) == 0xF0) { c = b & 0x07; n = 4; }
        else { r += '?'; ++i; continue; }
        if (i + n > s.size()) { r += '?'; break; }
        bool ok = true;
        for (std::size_t k = 1; k < n; ++k) {
            const auto t = static_cast<unsigned char>(s[i + k]);
            if ((t & 0xC0) != 0x80) { ok = false; break; }
            c = (c << 6) | (t & 0x3F);
        }
        if (!ok) { r += '?'; ++i; continue; }
        i += n;
        if (c < 0x80 || (c >= 0xA0 && c <= 0xFF) || (c >= 0x80 && c < 0xA0 && kAltos[c - 0x80] == 0)) {
            r += static_cast<char>(c);
            continue;
        }
        char sustituto = '?';
        for (int k = 0; k < 32; ++k)
            if (kAltos[k] == c) sustituto = static_cast<char>(0x80 + k);
        r += sustituto;
    }
    return r;
}

std::string FormatoFlujo(double v) {
    std::ostringstream os;
    os.imbue(std::locale::classic());
    os << v;
    return os.str();
}

}  // namespace orvela
