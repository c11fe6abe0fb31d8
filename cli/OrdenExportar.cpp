// orvela-cli exportar: the samples as text, or the picture drawn through a
// palette as a BMP or PNG file.
#include <climits>
#include <unistd.h>

#include "cli/Cli.h"
#include "image/CImagen.h"
#include "image/Paleta.h"
#include "operations/Curso.h"
#include "tools/Exportar.h"

namespace orvela::cli {

namespace {

// Folder of the running program, where its "Paletas" folder is.
std::string CarpetaPrograma() {
    char b[PATH_MAX];
    const ssize_t n = ::readlink("/proc/self/exe", b, sizeof b - 1);
    if (n <= 0) return ".";
    const std::string ruta(b, static_cast<std::size_t>(n));
    const auto barra = ruta.find_last_of('/');
    return barra == std::string::npos ? std::string(".") : ruta.substr(0, barra);
}

int Exportar(const std::vector<std::string>& args, std::ostream&, std::ostream& err) {
    auto a = Separar(args, {"--formato", "--paleta", "--paleta-fichero"});
    if (!a) return Uso(err, "exportar");
    if (a->posicionales.size() != 2) return Uso(err, "exportar", "número de argumentos incorrecto");
    const auto& op = a->opciones;
    if (!op.count("--formato")) return Uso(err, "exportar", "falta --formato");
    const std::string formato = op.at("--formato");
    if (formato != "ascii" && formato != "bmp" && formato != "png")
        return Uso(err, "exportar", "valor no válido para --formato");
    if (op.count("--paleta") && op.count("--paleta-fichero"))
        return Uso(err, "exportar", "--paleta y --paleta-fichero no pueden darse juntas");
    int codigo = 2;  // "Grises 256"
    if (op.count("--paleta")) {
        const auto v = LeerEntero(op.at("--paleta"));
        if (!v || *v < 0 || *v > 5) return Uso(err, "exportar", "--paleta debe ser un número de 0 a 5");
        codigo = static_cast<int>(*v);
    }

    const std::string& entrada = a->posicionales[0];
    const std::string& salida = a->posicionales[1];
    Cabecera cab;
    std::optional<Mensaje> e = ComprobarFicheroEntrada(entrada, cab);
    if (e) {
        ImprimirMensaje(err, *e);
        return kRechazo;
    }
    CImagen im;
    e = ComprobarRaster(entrada, cab);
    if (!e) e = im.Cargar(cab, entrada, 0, true);
    if (e) {
        ImprimirMensaje(err, *e);
        return e->id == 0 ? kFallo : kRechazo;
    }

    if (formato == "ascii") {
        e = ExportarAscii(im, salida);
    } else {
        Paleta p;
        const int cargada = op.count("--paleta-fichero")
                                ? CargarPaletaFichero(op.at("--paleta-fichero"), p)
                                : CargarPaleta(codigo, CarpetaPrograma(), "", p);
        if (cargada < 0) {
            ImprimirMensaje(err, Mensaje::Tabla(msg::kPaletaNoEncontrada));
            return kRechazo;
        }
        e = ExportarImagen(im, p, salida, formato == "bmp" ? FormatoImagen::Bmp : FormatoImagen::Png);
    }
    if (e) {
        ImprimirMensaje(err, *e);
        const bool fichero = e->id == msg::kNoCreadoFichero || e->id == msg::kNoCreadoBmp;
        if (fichero && e->id == msg::kNoCreadoBmp) err << "No se ha podido crear el fichero " << salida << ".\n";
        // A free sentence is a failure of the system (memory exhausted).
        return fichero || e->id == 0 ? kFallo : kRechazo;
    }
    return kExito;
}

const RegistroOrden registro({"exportar",
                              "Exporta la imagen como texto, o dibujada con una paleta como imagen BMP o PNG.",
                              "--formato ascii|bmp|png [--paleta 0..5 | --paleta-fichero F.pal] ENTRADA FICHERO",
                              Exportar});

}  // namespace

}  // namespace orvela::cli
