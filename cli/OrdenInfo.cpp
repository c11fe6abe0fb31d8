// orvela-cli info IMAGEN: the header fields and the sample range.
#include <charconv>

#include "cli/Cli.h"
#include "image/CImagen.h"
#include "image/Estadisticas.h"
#include "operations/Curso.h"

namespace orvela::cli {

namespace {

// "%.10g" with a point whatever the locale.
std::string Numero(double v) {
    char b[64];
    const auto r = std::to_chars(b, b + sizeof b, v, std::chars_format::general, 10);
    return std::string(b, r.ptr);
}

std::string Georreferencia(float v, bool conocida) {
    return conocida && v != SinDato ? Numero(static_cast<double>(v)) : std::string("unknown");
}

int Info(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    auto a = Separar(args, {});
    if (!a) return Uso(err, "info");
    if (a->posicionales.size() != 1) return Uso(err, "info", "número de argumentos incorrecto");
    const std::string& ruta = a->posicionales[0];
    Cabecera cab;
    if (auto e = ComprobarFicheroEntrada(ruta, cab)) {
        ImprimirMensaje(err, *e);
        return kRechazo;
    }
    CImagen im;
    std::optional<Mensaje> e = ComprobarRaster(ruta, cab);
    if (!e) e = im.Cargar(cab, ruta, 0, true);
    if (e) {
        ImprimirMensaje(err, *e);
        return e->id == 0 ? kFallo : kRechazo;
    }
    double mn = 0, mx = 0;
    MinimoMaximo(im.pixeles, mn, mx);
    // Without a reference system the header's georeference lines are bare
    // and what reads back from them means nothing.
    const bool geo = im.sistemaReferencia != "unknown";
    const char* tipo = NombreDeCodigo(im.tipoDato);
    out << "Título: " << im.titulo << "\n"
        << "Tipo de dato: " << (tipo ? tipo : "") << "\n"
        << "Filas: " << Numero(im.filas) << "\n"
        << "Columnas: " << Numero(im.columnas) << "\n"
        << "Sistema de referencia: " << im.sistemaReferencia << "\n"
        << "Unidades: " << (geo ? im.unidades : std::string("unknown")) << "\n"
        << "X mínima: " << Georreferencia(im.geo.minX, geo) << "\n"
        << "X máxima: " << Georreferencia(im.geo.maxX, geo) << "\n"
        << "Y mínima: " << Georreferencia(im.geo.minY, geo) << "\n"
        << "Y máxima: " << Georreferencia(im.geo.maxY, geo) << "\n"
        << "Resolución: " << Georreferencia(im.geo.resolucion, geo) << "\n"
        << "Valor mínimo: " << Numero(mn) << "\n"
        << "Valor máximo: " << Numero(mx) << "\n";
    return kExito;
}

const RegistroOrden registro({"info", "Muestra los datos de la cabecera y el rango de valores de una imagen.",
                              "IMAGEN", Info});

}  // namespace

}  // namespace orvela::cli
