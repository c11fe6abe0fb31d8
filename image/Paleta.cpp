#include "image/Paleta.h"

#include <cstdio>
#include <memory>

#include "image/FicheroTexto.h"

namespace orvela {

namespace {

constexpr const char* kFicheros[6] = {"Color256.PAL", "Qualital256.PAL", "Gris256.PAL",
                                      "Color16.PAL",  "Qualital16.PAL",  "Gris16.PAL"};
constexpr const char* kNombres[7] = {"Cuantitativa 256", "Cualitativa 256", "Grises 256",          "Cuantitativa 16",
                                     "Cualitativa 16",   "Grises 16",       "Paleta personalizada"};

struct CerrarFichero {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

bool EsBlanco(int c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f'; }

// One "%d" conversion: blanks skipped, an optional sign, at least one
// digit. Only the low 8 bits of the number matter to a palette, so the
// value is kept modulo 2^32 (no overflow, whatever the length).
bool LeerEntero(std::FILE* f, uint32_t& v) {
    int c;
    while ((c = std::getc(f)) != EOF && EsBlanco(c)) {
    }
    bool negativo = false;
    if (c == '+' || c == '-') {
        negativo = c == '-';
        c = std::getc(f);
    }
    if (c == EOF || c < '0' || c > '9') {
        if (c != EOF) std::ungetc(c, f);
        return false;
    }
    uint32_t n = 0;
    while (c != EOF && c >= '0' && c <= '9') {
        n = n * 10u + static_cast<uint32_t>(c - '0');
        c = std::getc(f);
    }
    if (c != EOF) std::ungetc(c, f);
    v = negativo ? 0u - n : n;
    return true;
}

}  // namespace

const std::array<std::array<uint8_t, 3>, 16> kColoresCrearPaleta = {{
    {128, 0, 0}, {255, 0, 0}, {128, 128, 0}, {255, 255, 0}, {0, 128, 0},  {0, 255, 0},   {0, 128, 128},   {0, 255, 255},
    {0, 0, 128}, {0, 0, 0},   {128, 0, 128}, {255, 0, 255}, {0, 0, 0},    {255, 255, 255}, {128, 128, 128}, {192, 192, 192},
}};

const char* FicheroPaleta(int codigo) { return codigo >= 0 && codigo < 6 ? kFicheros[codigo] : nullptr; }

const char* NombreOpcionPaleta(int codigo) { return codigo >= 0 && codigo <= 6 ? kNombres[codigo] : ""; }

int CargarPaletaFichero(const std::string& ruta, Paleta& p) {
    // A palette is a small regular file; anything else (a FIFO, a device,
    // a huge file) is refused before a byte is scanned.
    auto texto = LeerTextoAcotado(ruta, kMaxPaleta);
    return texto ? LeerPaletaTexto(std::move(*texto), p) : -1;
}

int LeerPaletaTexto(std::string texto, Paleta& p) {
    if (texto.empty()) return -1;
    std::unique_ptr<std::FILE, CerrarFichero> f(::fmemopen(texto.data(), texto.size(), "rb"));
    if (!f) return -1;
    // Groups of four numbers, "%d %d %d %d\n": level (ignored), red, green,
    // blue, taken in file order until a group does not read whole. Entries
    // past the 256th are not read.
    Paleta nueva;
    int entradas = 0;
    while (entradas < 256) {
        uint32_t n[4];
        bool completo = true;
        for (auto& x : n)
            if (!(completo = LeerEntero(f.get(), x))) break;
        if (!completo) break;
        nueva.rojo[entradas] = static_cast<uint8_t>(n[1] & 0xFFu);
        nueva.verde[entradas] = static_cast<uint8_t>(n[2] & 0xFFu);
        nueva.azul[entradas] = static_cast<uint8_t>(n[3] & 0xFFu);
        ++entradas;
    }
    // A file with no entry at all (an image, a text) is not a palette.
    if (entradas == 0) return -1;
    p = nueva;
    return kPaletaPersonalizada;
}

int CargarPaleta(int codigo, const std::string& carpetaAplicacion, const std::string& rutaPersonalizada, Paleta& p) {
    std::string ruta;
    if (const char* nombre = FicheroPaleta(codigo))
        ruta = carpetaAplicacion + "/Paletas/" + nombre;
    else if (codigo == kPaletaPersonalizada)
        ruta = rutaPersonalizada;
    else
        return -1;
    return CargarPaletaFichero(ruta, p) < 0 ? -1 : codigo;
}

std::optional<Mensaje> ComprobarNivelesPaleta(const std::array<int, 16>& n) {
    for (std::size_t i = 0; i < n.size(); ++i)
        for (std::size_t j = i + 1; j < n.size(); ++j)
            if (n[i] != -1 && n[i] == n[j]) return Mensaje::Tabla(msg::kMismoNdColores);
    bool alguno = false, defecto = false;
    for (const int x : n) {
        if (x != -1 && x != 256) alguno = true;
        if (x == 256) defecto = true;
    }
    if (!alguno) return Mensaje::Tabla(msg::kColoresSinNd);
    if (!defecto) return Mensaje::Tabla(msg::kSinColorDefecto);
    return std::nullopt;
}

std::string TextoPaletaCreada(const std::array<int, 16>& n) {
    int defecto = -1;
    for (int i = 0; i < 16 && defecto < 0; ++i)
        if (n[i] == 256) defecto = i;
    std::string s;
    s.reserve(256 * 16);
    for (int nivel = 0; nivel < 256; ++nivel) {
        int color = defecto;
        for (int i = 0; i < 16; ++i)
            if (n[i] == nivel) {
                color = i;
                break;
            }
        const std::array<uint8_t, 3> rgb = color >= 0 ? kColoresCrearPaleta[color] : std::array<uint8_t, 3>{0, 0, 0};
        char linea[32];
        std::snprintf(linea, sizeof linea, "%d %d %d %d\n", nivel, rgb[0], rgb[1], rgb[2]);
        s += linea;
    }
    return s;
}

}  // namespace orvela
