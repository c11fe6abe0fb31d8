// "Iniciar": a new image of the given size and type, every sample set to
// one value. It has no input image.
#include "operations/Operacion.h"

namespace orvela {

namespace {

const Clave kColumnas{"columnas"};
const Clave kFilas{"filas"};
const Clave kTipoDestino{"tipo_destino"};
const Clave kTitulo{"titulo"};
const Clave kValor{"valor"};

const std::vector<Opcion> kTipos = {{"byte", "byte"}, {"integer", "integer"}, {"real", "real"}, {"double", "double"}};

int CodigoElegido(const Valores& v) {
    const auto i = static_cast<std::size_t>(v.Entero(kTipoDestino));
    return CodigoDeNombre(i < kTipos.size() ? kTipos[i].palabra : "");
}

std::string TituloElegido(const Valores& v) {
    const std::string& t = v.Texto(kTitulo);
    // An empty title would leave the header's first line without a value.
    return t.find_first_not_of(" \t") == std::string::npos ? std::string("Iniciada") : t;
}

const Declaracion kIniciar = [] {
    Declaracion d;
    d.idComando = 32854;
    d.orden = "iniciar";
    d.titulo = "Iniciar";
    d.resumen = "Crea una imagen nueva con todos sus píxeles iguales a un valor.";
    d.paginaAyuda = "iniciar";
    d.campos = {
        {.clave = &kFilas, .tipo = TipoCampo::Entero, .grupo = "Dimensiones de la imagen",
         .etiqueta = "Filas", .opcionCli = "--filas", .porDefecto = 512, .obligatorio = true,
         .ayudaCli = "número de filas"},
        {.clave = &kColumnas, .tipo = TipoCampo::Entero, .grupo = "Dimensiones de la imagen",
         .etiqueta = "Columnas", .opcionCli = "--columnas", .porDefecto = 512, .obligatorio = true,
         .ayudaCli = "número de columnas"},
        {.clave = &kTipoDestino, .tipo = TipoCampo::Eleccion, .grupo = "Tipo de dato", .opcionCli = "--tipo",
         .opciones = kTipos, .obligatorio = true, .ayudaCli = "tipo de dato de la imagen"},
        {.clave = &kValor, .tipo = TipoCampo::Real, .grupo = "Valor de los píxeles", .etiqueta = "ND",
         .opcionCli = "--valor", .obligatorio = true, .ayudaCli = "valor de todos los píxeles"},
        {.clave = &kTitulo, .tipo = TipoCampo::Texto, .grupo = "Título de la imagen", .etiqueta = "Título",
         .opcionCli = "--titulo", .textoPorDefecto = "Iniciada", .ayudaCli = "título de la imagen (Iniciada)"},
    };
    d.alAceptar = SoloValores([](const Valores& v) -> std::optional<Mensaje> {
        if (!(v.Numero(kFilas) >= 1) || !(v.Numero(kColumnas) >= 1))
            return Mensaje::Tabla(msg::kValoresIncorrectos, relleno::kFilasColumnas);
        const double valor = v.Numero(kValor);
        const int codigo = CodigoElegido(v);
        if (codigo == kByte && !(valor >= 0 && valor <= 255)) return Mensaje::Tabla(msg::kNdByte);
        if (codigo == kInteger && !(valor >= 0 && valor <= 65535)) return Mensaje::Tabla(msg::kNdInteger);
        // The header holds the title on one line.
        if (v.Texto(kTitulo).find_first_of("\r\n") != std::string::npos) return Mensaje::Libre(texto::kTituloConSaltos);
        return std::nullopt;
    });
    d.calcular = [](const Contexto& c) {
        Resultado r;
        const double filas = c.valores.Numero(kFilas), columnas = c.valores.Numero(kColumnas);
        CImagen im;
        if (filas > 4294967295.0 || columnas > 4294967295.0) {
            r.FallarSistema(MensajeMemoria(filas, columnas));
            return r;
        }
        if (auto e = im.Iniciar("", "", TituloElegido(c.valores), static_cast<uint32_t>(filas),
                                static_cast<uint32_t>(columnas), NombreDeCodigo(CodigoElegido(c.valores)),
                                c.valores.Numero(kValor), 0, "unknown", "m", Georreferencia{})) {
            r.FallarSistema(*e);
            return r;
        }
        r.imagenes.push_back(std::move(im));
        r.titulosPropios = true;
        return r;
    };
    d.sufijo = SufijoFijo("");
    return d;
}();

const Registro registro(kIniciar);

}  // namespace

}  // namespace orvela
