// "Muestreo aleatorio": a byte mask of the reference's size with 1 at S
// distinct pixels drawn at random.
#include <ctime>

#include "classification/Muestreo.h"
#include "operations/Operacion.h"

namespace orvela {

namespace {

const Clave kMuestras{"muestras"};
const Clave kSemilla{"semilla"};

const Declaracion kMuestreo = [] {
    Declaracion d;
    d.idComando = 32856;
    d.orden = "muestreo";
    d.titulo = "Muestreo aleatorio";
    d.resumen = "Crea una máscara tomando muestras.";
    d.paginaAyuda = "muestreo";
    d.grupoEntrada = "Imagen de Referencia";
    d.grupoSalida = "Imagen de Salida";
    DeclEntrada ref;
    ref.nombre = "ninguna imagen de referencia";
    ref.etiquetaCli = "REFERENCIA";
    ref.ayudaCli = "imagen cuyo tamaño tiene la máscara";
    d.entradas = {ref};
    d.campos = {{.clave = &kMuestras,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Tipo de Muestreo",
                 .etiqueta = "Número de muestras:",
                 .opcionCli = "--muestras",
                 .porDefecto = 100,
                 .obligatorio = true,
                 .ayudaCli = "número de píxeles distintos de la muestra (1 a filas x columnas)"},
                {.clave = &kSemilla,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Tipo de Muestreo",
                 .etiqueta = "Semilla (-1: el reloj)",
                 .opcionCli = "--semilla",
                 .porDefecto = -1,
                 .ayudaCli = "semilla del generador (0 a 4294967295): la misma semilla repite el sorteo; sin ella, el reloj"}};
    d.alAceptar = SoloValores([](const Valores& v) -> std::optional<Mensaje> {
        if (v.Numero(kMuestras) < 1) return Mensaje::Tabla(msg::kValorIncorrecto, "El número de muestras");
        return std::nullopt;
    });
    d.calcular = [](const Contexto& c) {
        const CImagen& ref = *c.entradas[0];
        const long s = static_cast<long>(c.valores.Numero(kMuestras));
        Resultado r;
        // More samples than pixels would never end: refused as a wrong number.
        if (static_cast<double>(s) > ref.filas * ref.columnas) {
            r.Rechazar(Mensaje::Tabla(msg::kValorIncorrecto, "El número de muestras"));
            return r;
        }
        const double semilla = c.valores.Numero(kSemilla);
        const auto siembra =
            semilla < 0 ? static_cast<uint32_t>(std::time(nullptr)) : static_cast<uint32_t>(static_cast<int64_t>(semilla));
        r = UnaSalida(c, kByte, [&](CImagen& salida) {
            return MuestreoAleatorio(ref.Filas(), ref.Columnas(), s, siembra, salida.pixeles.Como<uint8_t>(),
                                     c.progreso) ||
                   c.progreso.Cancelado();
        });
        return r;
    };
    d.sufijo = SufijoFijo("_Muestreo_Aleatorio");
    return d;
}();

const Registro registro(kMuestreo);

}  // namespace

}  // namespace orvela
