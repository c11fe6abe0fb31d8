// "Reflectividad aparente (Landsat)": a TM band's digital numbers to top of
// atmosphere reflectance (0 to 1) as a real image, with the calibration
// read from the scene's metadata file or typed, and optionally the dark
// object subtracted.
#include <cstdio>

#include "corrections/Reflectancia.h"
#include "operations/Operacion.h"

namespace orvela {

namespace {

const Clave kBanda{"banda"};
const Clave kGanancia{"ganancia"};
const Clave kSesgo{"sesgo"};
const Clave kElevacion{"elevacion_solar"};
const Clave kFecha{"fecha"};
const Clave kOscuro{"objeto_oscuro"};

constexpr int kBandasTM[] = {1, 2, 3, 4, 5, 7};
constexpr const char* kGrupoCalibracion = "Calibración (sin fichero de metadatos)";

bool ConMetadatos(const Elegidas& e) { return e.ficheros.size() > 1 && !e.ficheros[1].empty(); }

std::optional<Mensaje> ComprobarTecleados(const Valores& v) {
    CalibracionTM c;
    if (v.Numero(kGanancia) == 0) return Mensaje::Libre(texto::kReflectanciaSinCalibracion);
    if (v.Texto(kFecha).empty()) return Mensaje::Libre(texto::kReflectanciaSinCalibracion);
    if (!LeerFecha(v.Texto(kFecha), c)) return Mensaje::Libre(Sustituir(texto::kReflectanciaFecha, v.Texto(kFecha)));
    const double e = v.Numero(kElevacion);
    if (!(e > 0 && e <= 90)) return Mensaje::Libre(texto::kReflectanciaElevacion);
    return std::nullopt;
}

std::string Cifra(double v) {
    char b[64];
    std::snprintf(b, sizeof b, "%.6f", v);
    return b;
}

const Declaracion kReflectancia = [] {
    Declaracion d;
    d.idComando = 32870;
    d.orden = "reflectancia";
    d.titulo = "Reflectividad aparente (Landsat)";
    d.resumen = "Convierte los ND de una banda Landsat 5 TM en reflectividad en el techo de la atmósfera (0 a 1).";
    d.paginaAyuda = "reflectancia";
    DeclEntrada metadatos{"S&eleccionar", "el fichero de metadatos", false, ClaseEntrada::Fichero};
    metadatos.minimo = 0;
    metadatos.filtro = "Metadatos Landsat (*_MTL.txt *.txt)";
    metadatos.extensiones = {"txt"};
    metadatos.opcionCli = "--metadatos";
    metadatos.etiquetaCli = "FICHERO_MTL.txt";
    metadatos.ayudaCli = "fichero de metadatos de la escena (ganancia, sesgo, elevación solar y fecha)";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}, metadatos};
    d.campos = {{.clave = &kBanda,
                 .tipo = TipoCampo::Eleccion,
                 .grupo = "Banda TM",
                 .opcionCli = "--banda",
                 .opciones = {{"TM1", "1"}, {"TM2", "2"}, {"TM3", "3"}, {"TM4", "4"}, {"TM5", "5"}, {"TM7", "7"}},
                 .porDefecto = 3,
                 .obligatorio = true,
                 .ayudaCli = "banda del Thematic Mapper de Landsat 5"},
                {.clave = &kGanancia,
                 .tipo = TipoCampo::Real,
                 .grupo = kGrupoCalibracion,
                 .etiqueta = "Ganancia",
                 .opcionCli = "--ganancia",
                 .ayudaCli = "ganancia de la banda, W/(m² sr µm) por ND (sin --metadatos)"},
                {.clave = &kSesgo,
                 .tipo = TipoCampo::Real,
                 .grupo = kGrupoCalibracion,
                 .etiqueta = "Sesgo",
                 .opcionCli = "--sesgo",
                 .ayudaCli = "sesgo de la banda, W/(m² sr µm) (sin --metadatos)"},
                {.clave = &kElevacion,
                 .tipo = TipoCampo::Real,
                 .grupo = kGrupoCalibracion,
                 .etiqueta = "Elevación solar (grados)",
                 .opcionCli = "--elevacion-solar",
                 .ayudaCli = "elevación del sol en grados (sin --metadatos)"},
                {.clave = &kFecha,
                 .tipo = TipoCampo::Texto,
                 .grupo = kGrupoCalibracion,
                 .etiqueta = "Fecha (AAAA-MM-DD)",
                 .opcionCli = "--fecha",
                 .ayudaCli = "fecha de adquisición AAAA-MM-DD (sin --metadatos)"},
                {.clave = &kOscuro,
                 .tipo = TipoCampo::Casilla,
                 .etiqueta = "Restar el objeto oscuro",
                 .opcionCli = "--objeto-oscuro",
                 .ayudaCli = "resta antes la radiancia del objeto oscuro"}};
    d.alAceptar = [](const Valores& v, const Elegidas& e) -> std::optional<Mensaje> {
        if (ConMetadatos(e)) return std::nullopt;
        return ComprobarTecleados(v);
    };
    d.calcular = [](const Contexto& c) {
        Resultado r;
        const int i = c.valores.Entero(kBanda);
        CalibracionTM cal;
        if (c.ficheros.size() > 1 && !c.ficheros[1].empty()) {
            std::string error;
            const auto leida = LeerMetadatosTM(c.ficheros[1][0], kBandasTM[i], &error);
            if (!leida) {
                r.Rechazar(Mensaje::Libre(error));
                return r;
            }
            cal = *leida;
        } else {
            if (auto m = ComprobarTecleados(c.valores)) {
                r.Rechazar(*m);
                return r;
            }
            cal.banda = kBandasTM[i];
            cal.ganancia = c.valores.Numero(kGanancia);
            cal.sesgo = c.valores.Numero(kSesgo);
            cal.elevacionSolar = c.valores.Numero(kElevacion);
            LeerFecha(c.valores.Texto(kFecha), cal);
        }
        const bool oscuro = c.valores.Marcada(kOscuro);
        std::optional<FigurasReflectancia> f;
        r = UnaSalida(c, kReal, [&](CImagen& salida) {
            f = Reflectancia(c.entradas[0]->pixeles, cal, oscuro, salida.pixeles, c.progreso);
            return f.has_value() || c.progreso.Cancelado();
        });
        if (r.fallo || !f) return r;
        std::string t = "Banda TM: " + std::to_string(cal.banda) + "\n";
        t += "Ganancia: " + Cifra(cal.ganancia) + "\n";
        t += "Sesgo: " + Cifra(cal.sesgo) + "\n";
        t += "ESUN: " + Cifra(f->esun) + "\n";
        t += "Día del año: " + std::to_string(DiaDelAnio(cal.anio, cal.mes, cal.dia)) + "\n";
        t += "Distancia Tierra-Sol: " + Cifra(f->distancia) + "\n";
        t += "Ángulo cenital solar: " + Cifra(f->cenit) + "\n";
        if (oscuro) t += "ND del objeto oscuro: " + Cifra(f->ndOscuro) + "\n";
        r.consola = t;
        return r;
    };
    d.sufijo = [](const Valores& v) {
        return std::string(v.Marcada(kOscuro) ? "_Reflectividad_Aparente_Objeto_Oscuro" : "_Reflectividad_Aparente");
    };
    return d;
}();

const Registro registro(kReflectancia);

}  // namespace

}  // namespace orvela
