// "Componentes principales": N bands in, the first NC components out as
// double images, and the "_Texto_CP.txt" report.
#include <cstdio>

#include "operations/Operacion.h"
#include "operations/Transformaciones.h"
#include "transforms/ComponentesPrincipales.h"

namespace orvela {

namespace {

const Clave kNumero{"numero"};

const Declaracion kComponentes = [] {
    Declaracion d;
    d.idComando = 32861;
    d.orden = "componentes";
    d.titulo = "Componentes principales";
    d.resumen = "Componentes principales de un conjunto de bandas, con su informe de autovalores y autovectores.";
    d.paginaAyuda = "componentes";
    d.grupoEntrada = "Bandas de entrada";
    d.entradas = {{.boton = "&Añadir banda",
                   .nombre = relleno::kNingunaBanda,
                   .clase = ClaseEntrada::Bandas,
                   .minimo = 1,
                   .maximo = 256,
                   .etiquetaCli = "BANDA",
                   .ayudaCli = "bandas de la escena, todas del mismo tipo y tamaño"}};
    d.campos = {{.clave = &kNumero,
                 .tipo = TipoCampo::Entero,
                 .grupo = "Número de componentes",
                 .etiqueta = "Componentes",
                 .opcionCli = "--numero",
                 .porDefecto = 1,
                 .obligatorio = true,
                 .ayudaCli = "número de componentes que se calculan (de 1 al número de bandas)"}};
    d.grupoSalida = "Nombre de las Imágenes de Salida";
    d.alElegir = ComprobarBandaConPrimera;
    d.antesDeCalcular = [](const std::vector<const CImagen*>& e, const Valores&) { return ComprobarBandasCargadas(e); };
    d.alAceptar = [](const Valores& v, const Elegidas& e) -> std::optional<Mensaje> {
        std::size_t nb = 0;
        for (const auto& l : e.cabeceras) nb += l.size();
        const double nc = v.Numero(kNumero);
        if (nc <= 0 || nc > static_cast<double>(nb)) return Mensaje::Tabla(msg::kNumeroComponentes);
        return std::nullopt;
    };
    d.calcular = [](const Contexto& c) {
        Resultado r;
        // The list is the only image input: every image is a band.
        const auto& bandas = c.entradas;
        const int nc = c.valores.Entero(kNumero);
        if (nc <= 0 || nc > static_cast<int>(bandas.size())) {
            r.Rechazar(Mensaje::Tabla(msg::kNumeroComponentes));
            return r;
        }
        const CImagen& primera = *bandas[0];
        std::vector<const Muestras*> muestras;
        for (const auto* b : bandas) muestras.push_back(&b->pixeles);
        const auto analisis = AnalizarComponentes(muestras, primera.Filas(), primera.Columnas(), c.progreso);
        if (!analisis) {
            if (!c.progreso.Cancelado()) r.Rechazar(Mensaje::Tabla(msg::kTipoNoReconocido));
            return r;
        }
        std::vector<Muestras*> salidas;
        r.imagenes.resize(static_cast<std::size_t>(nc));
        std::vector<std::string> nombres;
        for (int k = 0; k < nc; ++k) {
            CImagen& im = r.imagenes[static_cast<std::size_t>(k)];
            if (auto e = im.CopiarCabecera(primera, kDouble)) {
                r = Resultado{};
                r.FallarSistema(*e);
                return r;
            }
            char numero[16];
            std::snprintf(numero, sizeof numero, "%d", k + 1);
            im.titulo = "Componentes_Principales_" + primera.titulo + "_CP" + numero;
            nombres.push_back(im.titulo);
            r.finales.push_back(std::string("_CP") + numero);
            salidas.push_back(&im.pixeles);
        }
        r.titulosPropios = true;
        if (!ProyectarComponentes(muestras, primera.Filas(), primera.Columnas(), *analisis, salidas, c.progreso)) {
            r = Resultado{};
            r.Cancelar();
            return r;
        }
        std::vector<std::string> entradas;
        for (const auto* b : bandas) entradas.push_back(b->titulo);
        r.informes.push_back(InformeTexto{"_Texto_CP.txt", InformeComponentes(*analisis, entradas, nombres),
                                          "Componentes principales", ""});
        return r;
    };
    d.sufijo = SufijoFijo("");
    return d;
}();

const Registro registro(kComponentes);

}  // namespace

}  // namespace orvela
