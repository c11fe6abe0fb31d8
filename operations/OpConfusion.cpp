// "Matriz de confusión": a sample mask, a ground truth and a classified
// image; the report of the confusion matrix and the kappa index. The class
// table is the classified image's legend (the truth's when the classified
// image has none).
#include "classification/Confusion.h"
#include "classification/FicheroClase.h"
#include "operations/Operacion.h"

namespace orvela {

namespace {

const Clave kInforme{"informe"};

DeclEntrada Entrada(const char* boton, const char* opcion, const char* etiqueta, const char* ayuda) {
    DeclEntrada e;
    e.boton = boton;
    e.opcionCli = opcion;
    e.etiquetaCli = etiqueta;
    e.ayudaCli = ayuda;
    return e;
}

std::string NombreImagen(const CImagen& im) {
    const std::string t = TituloClase(im.rutaRaster);
    return t.empty() ? im.titulo : t;
}

const Declaracion kConfusion = [] {
    Declaracion d;
    d.idComando = 32857;
    d.orden = "confusion";
    d.titulo = "Matriz de confusión";
    d.resumen = "Compara la verdad terreno con la imagen clasificada en las muestras: matriz de confusión y kappa.";
    d.paginaAyuda = "confusion";
    d.grupoEntrada = "Imágenes de Entrada";
    d.entradas = {Entrada("Máscara con las muestras:", "--mascara", "M", "máscara de muestras (no 0: se compara)"),
                  Entrada("Verdad terreno:", "--verdad", "T", "verdad terreno (byte o integer)"),
                  Entrada("Imagen clasificada:", "--clasificada", "C", "imagen clasificada con su leyenda")};
    d.campos = {{.clave = &kInforme,
                 .tipo = TipoCampo::Texto,
                 .grupo = "Información del índice kappa",
                 .etiqueta = "Guardar el informe en",
                 .opcionCli = "--informe",
                 .ayudaCli = "también escribe el informe en este fichero"}};
    d.conSalida = false;
    d.alElegir = [](int indice, const Cabecera& elegida,
                    const std::vector<std::optional<Cabecera>>& previas) -> std::optional<Mensaje> {
        if (indice == 0 || previas.empty() || !previas[0]) return std::nullopt;
        if (elegida.filas != previas[0]->filas || elegida.columnas != previas[0]->columnas)
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kImagenes);
        return std::nullopt;
    };
    d.calcular = [](const Contexto& c) {
        Resultado r;
        const CImagen& mascara = *c.entradas[0];
        const CImagen& verdad = *c.entradas[1];
        const CImagen& clasificada = *c.entradas[2];
        auto leyenda = LeerLeyendaConfusion(clasificada.rutaRaster);
        if (!leyenda) leyenda = LeerLeyendaConfusion(verdad.rutaRaster);
        if (!leyenda) {
            r.Rechazar(Mensaje::Tabla(msg::kLeyendaNoAbierta));
            return r;
        }
        MatrizConfusion m;
        if (auto e = CalcularConfusion(mascara, verdad, clasificada, *leyenda, m)) {
            r.Rechazar(*e);
            return r;
        }
        const std::string nv = NombreImagen(verdad), nc = NombreImagen(clasificada);
        const std::string informe = InformeConfusion(m, nv, nc);
        r.consola = informe;
        const std::string ruta = c.valores.Tiene(kInforme) ? c.valores.Texto(kInforme) : std::string();
        if (c.destino == Destino::Ventana) {
            // The window's copy of the report, with the matrix as a table
            // beside it; "Guardar como" writes the file's copy.
            r.informes.push_back({.contenido = InformeConfusion(m, nv, nc, true),
                                  .titulo = "Información índice kappa",
                                  .ruta = ruta,
                                  .guardado = informe,
                                  .confusion = std::make_shared<const MatrizConfusion>(std::move(m))});
        } else if (!ruta.empty()) {
            r.informes.push_back({"", informe, "Información índice kappa", ruta});
        }
        return r;
    };
    d.sufijo = SufijoFijo("");
    return d;
}();

const Registro registro(kConfusion);

}  // namespace

}  // namespace orvela
