#include "image/CImagen.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <memory>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "image/Codificacion.h"
#include "image/Conversion.h"
#include "image/Estadisticas.h"
#include "image/FicheroSeguro.h"
#include "image/FicheroTexto.h"

static_assert(std::endian::native == std::endian::little,
              "the raster files are little-endian and are read as they stand");

namespace orvela {

namespace {

// Header labels, 15 characters each; two carry a double quote where one
// would expect an apostrophe, and are written so.
constexpr const char* kEtiquetas[21] = {
    "file title    :", "data type     :", "file type     :", "columns       :",
    "rows          :", "ref. system   :", "ref. units    :", "unit dist.    :",
    "min. X        :", "max. X        :", "min. Y        :", "max. Y        :",
    "pos\"n error   :", "resolution    :", "min. value    :", "max. value    :",
    "value units   :", "value error   :", "flag value    :", "flag def\"n    :",
    "legend cats   :"};

constexpr std::size_t kMaxToken = 4096;

bool EsBlanco(int c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f'; }

// One whitespace-delimited token; a token longer than kMaxToken is cut.
std::string LeerToken(std::istream& in) {
    int c;
    while ((c = in.get()) != EOF && EsBlanco(c)) {
    }
    std::string t;
    while (c != EOF && !EsBlanco(c)) {
        if (t.size() < kMaxToken) t += static_cast<char>(c);
        c = in.get();
    }
    if (c != EOF) in.unget();
    return t;
}

// The whole token must be a whole number that fits: "1e+06" (a count of a
// million printed in the default format) does not read back.
void LeerEntero(const std::string& t, int& destino) {
    if (t.empty()) return;
    const char* p = t.data();
    if (*p == '+') ++p;
    int v = 0;
    auto r = std::from_chars(p, t.data() + t.size(), v);
    if (r.ec == std::errc() && r.ptr != p && r.ptr == t.data() + t.size()) destino = v;
}

// "%f"-style reading: the longest numeric prefix of the token.
void LeerFloat(const std::string& t, float& destino) {
    if (t == "unknown") {
        destino = SinDato;
        return;
    }
    if (t.empty()) return;
    const char* p = t.data();
    const char* fin = t.data() + t.size();
    bool negativo = false;
    if (*p == '+' || *p == '-') {
        negativo = *p == '-';
        ++p;
    }
    if (p < fin && *p == '-') return;
    float v = 0;
    auto r = std::from_chars(p, fin, v, std::chars_format::general);
    if (r.ptr == p) return;
    if (r.ec == std::errc::result_out_of_range) return;
    destino = negativo ? -v : v;
}

std::string Linea(int i, const std::string& valor) { return std::string(kEtiquetas[i]) + " " + valor + "\n"; }

// A text field on its header line: Windows-1252, and a line break inside
// it (which would shift every later field) written as a blank.
std::string Campo(const std::string& utf8) {
    std::string s = Utf8ACp1252(utf8);
    for (char& c : s)
        if (c == '\n' || c == '\r') c = ' ';
    return s;
}

std::string NumeroOUnknown(float v) { return v == SinDato ? "unknown" : FormatoFlujo(static_cast<double>(v)); }

}  // namespace

std::string TextoCabecera(const CImagen& im) {
    std::string s;
    s += Linea(0, Campo(im.titulo));
    if (const char* n = NombreDeCodigo(im.tipoDato)) s += std::string(kEtiquetas[1]) + " " + n + " \n";
    s += Linea(2, Campo(im.tipoFichero));
    s += Linea(3, FormatoFlujo(im.columnas));
    s += Linea(4, FormatoFlujo(im.filas));
    if (im.sistemaReferencia != "unknown") {
        const auto& g = im.geo;
        s += Linea(5, Campo(im.sistemaReferencia));
        s += Linea(6, Campo(im.unidades));
        s += Linea(7, NumeroOUnknown(g.distanciaUnidad));
        s += Linea(8, NumeroOUnknown(g.minX));
        s += Linea(9, NumeroOUnknown(g.maxX));
        s += Linea(10, NumeroOUnknown(g.minY));
        s += Linea(11, NumeroOUnknown(g.maxY));
        s += Linea(12, NumeroOUnknown(g.errorPosicion));
        s += Linea(13, NumeroOUnknown(g.resolucion));
    } else {
        s += Linea(5, "unknown");
        for (int i = 6; i <= 13; ++i) s += std::string(kEtiquetas[i]) + "\n";
    }
    double mn = 0, mx = 0;
    MinimoMaximo(im.pixeles, mn, mx);
    s += Linea(14, FormatoFlujo(mn));
    s += Linea(15, FormatoFlujo(mx));
    for (int i = 16; i <= 20; ++i) s += Linea(i, "");
    return s;
}

namespace {

Mensaje NoSePudoEscribir(const std::string& ruta) { return Mensaje::Tabla(msg::kNoCreadoFichero, ruta); }

std::optional<Mensaje> LeerCuerpo(int codigo, std::size_t cantidad, const std::string& ruta, Muestras& salida) {
    const std::size_t bytes = cantidad * AnchoMuestra(codigo);
    // A raster is a regular file of exactly the header's size: a short one
    // would leave samples unread, a long one belongs to another header (a
    // pair half replaced, a header edited by hand). Opened without waiting,
    // so that a FIFO in its place is refused, not waited on.
    const int fd = ::open(ruta.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) return Mensaje::Tabla(msg::kArchivoNoExiste);
    struct Cerrar {
        int fd;
        ~Cerrar() { ::close(fd); }
    } cerrar{fd};
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || static_cast<unsigned long long>(st.st_size) != bytes)
        return Mensaje::Tabla(msg::kArchivoNoExiste);
    Muestras m = Muestras::Crear(codigo, cantidad);
    if (!m.Valido()) return Mensaje::Libre("No hay memoria suficiente para leer la imagen " + ruta + ".");
    std::size_t leidos = 0;
    while (leidos < bytes) {
        const ssize_t r = ::read(fd, m.Datos() + leidos, std::min<std::size_t>(bytes - leidos, std::size_t{1} << 30));
        if (r < 0 && errno == EINTR) continue;
        if (r <= 0) return Mensaje::Tabla(msg::kArchivoNoExiste);
        leidos += static_cast<std::size_t>(r);
    }
    salida = std::move(m);
    return std::nullopt;
}

}  // namespace

std::optional<Mensaje> ComprobarNombreImagen(const std::string& rutaRaster) {
    const auto barra = rutaRaster.find_last_of('/');
    const std::string nombre = barra == std::string::npos ? rutaRaster : rutaRaster.substr(barra + 1);
    // "x.ozm" with an empty stem would make the hidden files ".ozm" and ".inf".
    if (nombre.size() <= 4)
        return Mensaje::Libre("El nombre de la imagen \"" + rutaRaster +
                              "\" no es válido: falta el nombre del fichero.");
    return std::nullopt;
}

std::string CambiarExtension(const std::string& ruta, const std::string& extension) {
    return ruta.substr(0, ruta.size() >= 4 ? ruta.size() - 4 : 0) + extension;
}

namespace {

// The readings below run while the caller holds the pair's LecturaSegura.
bool LeerInfBloqueado(const std::string& rutaRaster, Cabecera& cab) {
    const auto texto = LeerTextoAcotado(CambiarExtension(rutaRaster, ".inf"), kMaxCabecera);
    if (!texto) return false;
    LeerInfTexto(*texto, cab);
    return true;
}

bool CabeceraLegibleBloqueada(const std::string& rutaRaster, Cabecera* salida) {
    Cabecera c;
    if (!LeerInfBloqueado(rutaRaster, c) || c.filas <= 0 || c.columnas <= 0) return false;
    if (salida) *salida = std::move(c);
    return true;
}

// The samples a header promises: a known type, at least one row and one
// column, and a count that memory could hold.
std::optional<Mensaje> MedirRaster(int codigo, double filas, double columnas, std::size_t& cantidad) {
    if (!CodigoValido(codigo)) return Mensaje::Tabla(msg::kTipoNoReconocido);
    if (!(filas >= 1.0) || !(columnas >= 1.0)) return Mensaje::Tabla(msg::kCabeceraNoEncontrada, relleno::kInf);
    cantidad = ContarMuestras(filas, columnas, codigo);
    if (cantidad == 0) return MensajeMemoria(filas, columnas);
    return std::nullopt;
}

std::optional<Mensaje> LeerRasterBloqueado(int codigo, double filas, double columnas, const std::string& ruta,
                                           Muestras& salida) {
    std::size_t n = 0;
    if (auto e = MedirRaster(codigo, filas, columnas, n)) return e;
    return LeerCuerpo(codigo, n, ruta, salida);
}

// Every reading of a pair first sees to an interrupted replacement of it.
LecturaSegura LecturaPar(const std::string& rutaRaster) {
    return LecturaSegura({rutaRaster, CambiarExtension(rutaRaster, ".inf")});
}

}  // namespace

bool LeerInf(const std::string& rutaRaster, Cabecera& cab) {
    const LecturaSegura lectura = LecturaPar(rutaRaster);
    return lectura.Valida() && LeerInfBloqueado(rutaRaster, cab);
}

void LeerInfTexto(const std::string& texto, Cabecera& cab) {
    std::istringstream in(texto);
    for (int campo = 0; campo < 14 && in; ++campo) {
        in.ignore(200, ':');
        const std::string t = LeerToken(in);
        in.ignore(200, '\n');
        if (t.empty() && !in) break;
        switch (campo) {
            case 0: cab.titulo = Cp1252AUtf8(t); break;
            case 1: cab.nombreTipo = Cp1252AUtf8(t); break;
            case 2: cab.tipoFichero = Cp1252AUtf8(t); break;
            case 3: LeerEntero(t, cab.columnas); break;
            case 4: LeerEntero(t, cab.filas); break;
            case 5: cab.sistema = Cp1252AUtf8(t); break;
            case 6: cab.unidades = Cp1252AUtf8(t); break;
            case 7: LeerFloat(t, cab.geo.distanciaUnidad); break;
            case 8: LeerFloat(t, cab.geo.minX); break;
            case 9: LeerFloat(t, cab.geo.maxX); break;
            case 10: LeerFloat(t, cab.geo.minY); break;
            case 11: LeerFloat(t, cab.geo.maxY); break;
            case 12: LeerFloat(t, cab.geo.errorPosicion); break;
            case 13: LeerFloat(t, cab.geo.resolucion); break;
        }
    }
}

bool CabeceraLegible(const std::string& rutaRaster, Cabecera* salida) {
    const LecturaSegura lectura = LecturaPar(rutaRaster);
    return lectura.Valida() && CabeceraLegibleBloqueada(rutaRaster, salida);
}

Mensaje MensajeMemoria(double filas, double columnas) {
    auto cifra = [](double v) {
        char b[64];
        const auto r = std::to_chars(b, b + sizeof b, v, std::chars_format::general, 15);
        return std::string(b, r.ptr);
    };
    return Mensaje::Libre("No hay memoria suficiente para una imagen de " + cifra(filas) + " filas y " +
                          cifra(columnas) + " columnas.");
}

std::optional<Mensaje> LeerRaster(int codigo, double filas, double columnas, const std::string& ruta,
                                  Muestras& salida) {
    const LecturaSegura lectura = LecturaPar(ruta);
    if (!lectura.Valida()) return Mensaje::Tabla(msg::kArchivoNoExiste);
    return LeerRasterBloqueado(codigo, filas, columnas, ruta, salida);
}

std::optional<Mensaje> CImagen::EscribirRaster() const {
    if (!CodigoValido(tipoDato)) return Mensaje::Tabla(msg::kTipoNoReconocido);
    if (!EscribirFicheroSeguro(rutaRaster, {reinterpret_cast<const char*>(pixeles.Datos()), pixeles.Bytes()}))
        return NoSePudoEscribir(rutaRaster);
    return std::nullopt;
}

std::optional<Mensaje> CImagen::EscribirInf() const {
    const std::string ruta = CambiarExtension(rutaRaster, ".inf");
    if (!EscribirFicheroSeguro(ruta, TextoCabecera(*this))) return NoSePudoEscribir(ruta);
    return std::nullopt;
}

std::optional<Mensaje> CImagen::Guardar(const std::string& nombre, int modo) {
    if (modo != 0 && modo != 1) return std::nullopt;
    const std::string ruta = modo == 1 ? nombre + ".ozm" : rutaRaster;
    // Both files are written aside first; the pair replaces the old one only
    // when both are complete, and the old pair stays whole otherwise. A
    // failure names the file that could not be written.
    std::unique_ptr<FicheroSeguro> raster, inf;
    if (auto e = EscribirAparte(ruta, raster, inf)) return e;
    FicheroSeguro* par[] = {raster.get(), inf.get()};
    if (const auto fallo = FicheroSeguro::ConfirmarGrupo(par))
        return NoSePudoEscribir(*fallo == 0 ? ruta : inf->Destino());
    rutaRaster = ruta;
    return std::nullopt;
}

std::optional<Mensaje> CImagen::EscribirAparte(const std::string& ruta, std::unique_ptr<FicheroSeguro>& raster,
                                               std::unique_ptr<FicheroSeguro>& inf) const {
    if (!CodigoValido(tipoDato)) return Mensaje::Tabla(msg::kTipoNoReconocido);
    // A record whose buffer does not hold rows x columns samples of its type
    // would make a pair whose header lies about its raster.
    if (pixeles.Codigo() != tipoDato || pixeles.Cantidad() == 0 ||
        pixeles.Cantidad() != ContarMuestras(filas, columnas, tipoDato))
        return Mensaje::Libre("La imagen \"" + titulo + "\" no tiene muestras que guardar.");
    if (auto e = ComprobarNombreImagen(ruta)) return e;
    const std::string rutaInf = CambiarExtension(ruta, ".inf");
    raster = std::make_unique<FicheroSeguro>(ruta);
    if (!raster->Escribir(pixeles.Datos(), pixeles.Bytes()) || !raster->Cerrar()) return NoSePudoEscribir(ruta);
    inf = std::make_unique<FicheroSeguro>(rutaInf);
    if (!inf->Escribir(TextoCabecera(*this)) || !inf->Cerrar()) return NoSePudoEscribir(rutaInf);
    return std::nullopt;
}

std::optional<Mensaje> CImagen::Cargar(const Cabecera& cab, const std::string& ruta, uint32_t indice, bool leer) {
    const int codigo = cab.nombreTipo.empty() ? tipoDato : CodigoDeNombre(cab.nombreTipo);
    Muestras nuevas;
    if (leer) {
        if (auto e = LeerRaster(codigo, cab.filas, cab.columnas, ruta, nuevas)) return e;
    }
    return Adoptar(cab, ruta, indice, leer, codigo, std::move(nuevas));
}

std::optional<Mensaje> CImagen::Adoptar(const Cabecera& cab, const std::string& ruta, uint32_t indice, bool leer,
                                        int codigo, Muestras nuevas) {
    filas = cab.filas;
    columnas = cab.columnas;
    rutaRaster = ruta;
    titulo = cab.titulo;
    indicePaleta = indice == 0xFFFFFFFFu ? 0 : indice;
    tipoDato = codigo;
    pixeles = std::move(nuevas);
    tipoFichero = cab.tipoFichero;
    sistemaReferencia = cab.sistema;
    unidades = cab.unidades;
    geo = cab.geo;
    tieneImagen = leer;
    return std::nullopt;
}

std::optional<Mensaje> CImagen::Cargar(const std::string& ruta, uint32_t indice) {
    // Header and raster read under one lock: the pair as one writer left it.
    const LecturaSegura lectura = LecturaPar(ruta);
    Cabecera cab;
    if (!lectura.Valida() || !CabeceraLegibleBloqueada(ruta, &cab))
        return Mensaje::Tabla(msg::kCabeceraNoEncontrada, relleno::kInf);
    const int codigo = cab.nombreTipo.empty() ? tipoDato : CodigoDeNombre(cab.nombreTipo);
    Muestras nuevas;
    if (auto e = LeerRasterBloqueado(codigo, cab.filas, cab.columnas, ruta, nuevas)) return e;
    return Adoptar(cab, ruta, indice, true, codigo, std::move(nuevas));
}

std::optional<Mensaje> CImagen::CargarDeMemoria(const std::string& textoInf, std::span<const std::byte> raster,
                                                const std::string& ruta, uint32_t indice) {
    Cabecera cab;
    LeerInfTexto(textoInf, cab);
    if (cab.filas <= 0 || cab.columnas <= 0) return Mensaje::Tabla(msg::kCabeceraNoEncontrada, relleno::kInf);
    const int codigo = cab.nombreTipo.empty() ? tipoDato : CodigoDeNombre(cab.nombreTipo);
    std::size_t n = 0;
    if (auto e = MedirRaster(codigo, cab.filas, cab.columnas, n)) return e;
    // Exactly the header's bytes, as a raster file must hold.
    if (raster.size() != n * AnchoMuestra(codigo)) return Mensaje::Tabla(msg::kArchivoNoExiste);
    Muestras m = Muestras::Crear(codigo, n);
    if (!m.Valido()) return Mensaje::Libre("No hay memoria suficiente para leer la imagen " + ruta + ".");
    std::memcpy(m.Datos(), raster.data(), raster.size());
    return Adoptar(cab, ruta, indice, true, codigo, std::move(m));
}

std::optional<Mensaje> CImagen::Iniciar(const std::string& ruta, const std::string& ruta2, const std::string& tit,
                                        uint32_t nf, uint32_t nc, const std::string& nombreTipo, double valor,
                                        uint32_t indice, const std::string& sistema, const std::string& uni,
                                        const Georreferencia& g) {
    const int codigo = CodigoDeNombre(nombreTipo);
    if (nf == 0 || nc == 0) return Mensaje::Tabla(msg::kValoresIncorrectos, relleno::kFilasColumnas);
    const std::size_t n = ContarMuestras(nf, nc, codigo);
    Muestras m = n ? Muestras::Crear(codigo, n) : Muestras();
    if (!m.Valido() || n == 0) return MensajeMemoria(nf, nc);
    ConTipo(codigo, [&]<class T>(Muestra<T>) { std::ranges::fill(m.Como<T>(), Almacenar<T>(valor)); });
    rutaRaster = ruta;
    rutaSecundaria = ruta2;
    titulo = tit;
    filas = nf;
    columnas = nc;
    tipoFichero = "binary";
    tipoDato = codigo;
    pixeles = std::move(m);
    indicePaleta = indice == 0xFFFFFFFFu ? 0 : indice;
    sistemaReferencia = sistema;
    unidades = uni;
    geo = g;
    tieneImagen = true;
    return std::nullopt;
}

double CImagen::ValorPixel(long fila, long columna, double* x, double* y, std::optional<Mensaje>* error) const {
    if (fila < 0 || columna < 0 || fila >= Filas() || columna >= Columnas() || !pixeles.Valido()) {
        if (error) *error = Mensaje::Tabla(msg::kFueraDeImagen);
        return -1.0;
    }
    const auto k = static_cast<std::size_t>(static_cast<double>(fila) * columnas + static_cast<double>(columna));
    if (k >= pixeles.Cantidad()) {
        if (error) *error = Mensaje::Tabla(msg::kFueraDeImagen);
        return -1.0;
    }
    const double v = pixeles.Valor(k);
    if (x && y) {
        const std::string pre = sistemaReferencia.substr(0, 3);
        if (pre == "Utm" || pre == "UTM" || pre == "utm") {
            const float anchoX = geo.maxX - geo.minX;
            const float altoY = geo.maxY - geo.minY;
            *x = static_cast<double>(geo.minX) + anchoX / columnas * static_cast<double>(columna);
            *y = static_cast<double>(geo.maxY) - altoY / filas * static_cast<double>(fila);
        } else {
            *x = *y = -1.0;
        }
    }
    return v;
}

std::optional<Mensaje> CImagen::CopiarCabecera(const CImagen& o, int codigo) {
    const int c = codigo ? codigo : o.tipoDato;
    const std::size_t n = ContarMuestras(o.filas, o.columnas, c);
    Muestras m = n ? Muestras::Crear(c, n) : Muestras();
    if (!m.Valido() || n == 0) return MensajeMemoria(o.filas, o.columnas);
    pixeles = std::move(m);
    tipoDato = c;
    filas = o.filas;
    columnas = o.columnas;
    indicePaleta = o.indicePaleta;
    rutaSecundaria = o.rutaSecundaria;
    rutaRaster = o.rutaRaster;
    titulo = o.titulo;
    tipoFichero = o.tipoFichero;
    sistemaReferencia = o.sistemaReferencia;
    unidades = o.unidades;
    geo = o.geo;
    tieneImagen = true;
    return std::nullopt;
}

Cabecera CImagen::ComoCabecera() const {
    Cabecera c;
    c.titulo = titulo;
    c.nombreTipo = NombreDeCodigo(tipoDato) ? NombreDeCodigo(tipoDato) : "";
    c.tipoFichero = tipoFichero;
    c.columnas = static_cast<int>(columnas);
    c.filas = static_cast<int>(filas);
    c.sistema = sistemaReferencia;
    c.unidades = unidades;
    c.geo = geo;
    return c;
}

}  // namespace orvela
