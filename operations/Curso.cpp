#include "operations/Curso.h"

#include <cstdio>
#include <memory>
#include <new>
#include <sys/stat.h>

#include "image/Codificacion.h"
#include "image/FicheroSeguro.h"
#include "tools/DibujarGrafico.h"
#include "tools/Exportar.h"

namespace orvela {

namespace {

std::string Extension(const std::string& ruta) {
    const auto punto = ruta.find_last_of('.');
    const auto barra = ruta.find_last_of('/');
    if (punto == std::string::npos || (barra != std::string::npos && punto < barra)) return {};
    return ruta.substr(punto + 1);
}

EscritorGrafico& Escritor() {
    // The core's renderer, a 640 x 480 PNG, unless a front end sets another.
    static EscritorGrafico f = [](const Grafico& g, FicheroSeguro& fichero) { return EscribirGraficoPng(g, fichero); };
    return f;
}

}  // namespace

std::optional<Mensaje> ComprobarFicheroEntrada(const std::string& ruta, Cabecera& cab) {
    const std::string ext = Extension(ruta);
    if (ext != relleno::kOzm && ext != relleno::kOzmMayusculas)
        return Mensaje::Tabla(msg::kExtensionInadecuada, relleno::kOzm, relleno::kOzmMayusculas);
    if (!CabeceraLegible(ruta, &cab)) return Mensaje::Tabla(msg::kCabeceraNoEncontrada, relleno::kInf);
    return std::nullopt;
}

std::optional<Mensaje> ComprobarRaster(const std::string& ruta, const Cabecera& cab) {
    const int codigo = CodigoDeNombre(cab.nombreTipo);
    const std::size_t n = ContarMuestras(cab.filas, cab.columnas, codigo);
    struct stat st {};
    if (::stat(ruta.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return Mensaje::Tabla(msg::kArchivoNoExiste);
    if (n == 0) return MensajeMemoria(cab.filas, cab.columnas);
    if (static_cast<unsigned long long>(st.st_size) < n * AnchoMuestra(codigo))
        return Mensaje::Tabla(msg::kArchivoNoExiste);
    return std::nullopt;
}

std::optional<Mensaje> ComprobarEleccion(const Declaracion& d, int indice, const std::string& ruta, Cabecera& cab,
                                         const std::vector<std::optional<Cabecera>>& previas) {
    if (auto e = ComprobarFicheroEntrada(ruta, cab)) return e;
    if (d.alElegir) return d.alElegir(indice, cab, previas);
    return std::nullopt;
}

std::optional<Mensaje> ComprobarFicheroDatos(const DeclEntrada& e, const std::string& ruta) {
    if (!e.extensiones.empty()) {
        const std::string ext = Extension(ruta);
        bool buena = false;
        for (const char* x : e.extensiones) buena = buena || ext == x;
        if (!buena)
            return Mensaje::Tabla(msg::kExtensionInadecuada, e.extensiones[0],
                                  e.extensiones.size() > 1 ? e.extensiones[1] : e.extensiones[0]);
    }
    if (e.leer) return e.leer(ruta);
    return std::nullopt;
}

std::optional<Mensaje> ComprobarAceptar(const Declaracion& d, const Valores& v, const Elegidas& elegidas) {
    for (std::size_t i = 0; i < d.entradas.size(); ++i) {
        const DeclEntrada& e = d.entradas[i];
        const std::size_t n = e.clase == ClaseEntrada::Fichero
                                  ? (i < elegidas.ficheros.size() ? elegidas.ficheros[i].size() : 0)
                                  : (i < elegidas.cabeceras.size() ? elegidas.cabeceras[i].size() : 0);
        if (n < static_cast<std::size_t>(e.minimo))
            return Mensaje::Tabla(msg::kNoSeleccionadaEntrada, e.nombre,
                                  e.clase == ClaseEntrada::Fichero ? relleno::kUnArchivo : relleno::kUnaImagen);
        if (n > static_cast<std::size_t>(e.maximo)) return Mensaje::Tabla(msg::kNumeroBandas);
    }
    if (d.alAceptar) return d.alAceptar(v, elegidas);
    return std::nullopt;
}

std::optional<Fallo> CargarEntrada(const std::string& ruta, const Cabecera& cab, CImagen& destino) {
    if (auto e = ComprobarRaster(ruta, cab))
        return Fallo{e->id == msg::kArchivoNoExiste ? ClaseFallo::Rechazo : ClaseFallo::Sistema, *e};
    if (auto e = destino.Cargar(cab, ruta, 0, true))
        return Fallo{e->id == msg::kArchivoNoExiste ? ClaseFallo::Rechazo : ClaseFallo::Sistema, *e};
    return std::nullopt;
}

std::string QuitarExtensionGuardar(const std::string& ruta) {
    const auto barra = ruta.find_last_of('/');
    const auto punto = ruta.find_last_of('.');
    if (punto == std::string::npos || (barra != std::string::npos && punto < barra)) return ruta;
    return ruta.substr(0, ruta.size() >= 4 ? ruta.size() - 4 : 0);
}

std::string TituloFichero(const std::string& ruta) {
    const auto barra = ruta.find_last_of('/');
    std::string nombre = barra == std::string::npos ? ruta : ruta.substr(barra + 1);
    const auto punto = nombre.find_last_of('.');
    if (punto != std::string::npos && punto > 0) nombre.resize(punto);
    return nombre;
}

std::string TituloResultado(const Declaracion& d, const std::vector<const CImagen*>& e, const Valores& v) {
    std::string t = e.empty() ? std::string() : e[0]->titulo;
    if (d.sufijo) t += d.sufijo(v);
    if (d.tituloConSegunda && e.size() > 1) t += e[1]->titulo;
    return t;
}

std::vector<const CImagen*> EntradasCargadas::Todas() const {
    std::vector<const CImagen*> t;
    for (const auto& l : imagenes) t.insert(t.end(), l.begin(), l.end());
    return t;
}

Resultado Calcular(const Declaracion& d, const EntradasCargadas& entradas, const Valores& v, Destino destino,
                   Progreso& progreso) {
    Resultado r;
    const std::vector<const CImagen*> todas = entradas.Todas();
    try {
        if (d.antesDeCalcular) {
            if (auto e = d.antesDeCalcular(todas, v)) {
                r.Rechazar(*e);
                return r;
            }
        }
        Contexto ctx{todas, entradas.imagenes, entradas.ficheros, v, destino, progreso};
        r = d.calcular(ctx);
    } catch (const std::bad_alloc&) {
        r = Resultado{};
        r.FallarSistema(Mensaje::Libre(texto::kSinMemoriaOperacion));
        return r;
    } catch (const std::exception& e) {
        r = Resultado{};
        r.FallarSistema(Mensaje::Libre(std::string(texto::kOperacionFallida) + e.what()));
        return r;
    }
    if (!r.fallo && progreso.Cancelado()) r.Cancelar();
    if (r.fallo) return r;
    if (!r.titulosPropios && !r.imagenes.empty()) r.imagenes[0].titulo = TituloResultado(d, todas, v);
    return r;
}

Resultado Calcular(const Declaracion& d, const std::vector<const CImagen*>& entradas, const Valores& v,
                   Destino destino, Progreso& progreso) {
    EntradasCargadas e;
    for (const auto* im : entradas) e.imagenes.push_back({im});
    e.ficheros.resize(e.imagenes.size());
    return Calcular(d, e, v, destino, progreso);
}

std::string RutaImagen(const Resultado& r, std::size_t i, const std::string& stem) {
    const std::string final =
        i < r.finales.size() ? r.finales[i] : (i == 0 ? std::string() : "_" + std::to_string(i + 1));
    return stem + final + ".ozm";
}

std::string RutaInforme(const InformeTexto& inf, const std::string& stem) {
    return inf.ruta.empty() ? stem + inf.final : inf.ruta;
}

std::string RutaGrafico(const Grafico& g, const std::string& stem) { return g.ruta.empty() ? stem + g.final : g.ruta; }

void FijarEscritorGrafico(EscritorGrafico f) { Escritor() = f; }

std::optional<Mensaje> EscribirResultado(Resultado& r, const std::string& stem, std::vector<std::string>* escritos) {
    // Every file is written aside first and all of them replace what was on
    // disk in one commit: a failure (or a kill) at any point leaves every
    // earlier file of those names as it was.
    std::vector<std::unique_ptr<FicheroSeguro>> ficheros;
    std::vector<std::string> rutas;
    for (std::size_t i = 0; i < r.imagenes.size(); ++i) {
        const std::string ruta = RutaImagen(r, i, stem);
        std::unique_ptr<FicheroSeguro> raster, inf;
        if (auto e = r.imagenes[i].EscribirAparte(ruta, raster, inf)) return e;
        rutas.push_back(ruta);
        rutas.push_back(CambiarExtension(ruta, ".inf"));
        ficheros.push_back(std::move(raster));
        ficheros.push_back(std::move(inf));
    }
    for (const auto& inf : r.informes) {
        const std::string ruta = RutaInforme(inf, stem);
        auto f = std::make_unique<FicheroSeguro>(ruta);
        if (!f->Escribir(Utf8ACp1252(inf.contenido))) return Mensaje::Tabla(msg::kNoCreadoFichero, ruta);
        rutas.push_back(ruta);
        ficheros.push_back(std::move(f));
    }
    for (const auto& g : r.graficos) {
        const std::string ruta = RutaGrafico(g, stem);
        auto f = std::make_unique<FicheroSeguro>(ruta);
        if (!Escritor() || !Escritor()(g, *f)) return Mensaje::Tabla(msg::kNoCreadoFichero, ruta);
        rutas.push_back(ruta);
        ficheros.push_back(std::move(f));
    }
    if (r.composicion && !r.composicion->ruta.empty()) {
        // The composite's picture is written (aside, then renamed) before the
        // group commit: when it cannot be written nothing else is replaced.
        const std::string& ruta = r.composicion->ruta;
        if (auto e = ExportarComposicion(r.composicion->planos, ruta, FormatoDeRuta(ruta))) return e;
    }
    std::vector<FicheroSeguro*> grupo;
    for (const auto& f : ficheros) grupo.push_back(f.get());
    if (const auto fallo = FicheroSeguro::ConfirmarGrupo(grupo)) return Mensaje::Tabla(msg::kNoCreadoFichero, rutas[*fallo]);
    for (std::size_t i = 0; i < r.imagenes.size(); ++i) r.imagenes[i].rutaRaster = rutas[2 * i];
    if (escritos) {
        *escritos = rutas;
        if (r.composicion && !r.composicion->ruta.empty()) escritos->push_back(r.composicion->ruta);
    }
    return std::nullopt;
}

Ejecucion EjecutarAFichero(const Declaracion& d, const std::vector<std::vector<std::string>>& rutas,
                           const std::vector<std::vector<std::string>>& ficheros, const Valores& v,
                           const std::string& stem, Progreso& progreso) {
    Ejecucion ej;
    auto rechazo = [&](Mensaje m) {
        ej.fallo = Fallo{ClaseFallo::Rechazo, std::move(m)};
        return ej;
    };
    // Step 1, in declared order: images against those picked before them,
    // files through their readers.
    Elegidas elegidas;
    elegidas.cabeceras.resize(d.entradas.size());
    elegidas.ficheros.resize(d.entradas.size());
    std::vector<std::optional<Cabecera>> previas;
    std::vector<std::vector<std::string>> rutasImagen(d.entradas.size());
    for (std::size_t i = 0; i < d.entradas.size(); ++i) {
        const DeclEntrada& e = d.entradas[i];
        if (e.clase == ClaseEntrada::Fichero) {
            if (i < ficheros.size())
                for (const auto& f : ficheros[i]) {
                    if (auto m = ComprobarFicheroDatos(e, f)) return rechazo(*m);
                    elegidas.ficheros[i].push_back(f);
                }
            continue;
        }
        if (i >= rutas.size()) continue;
        for (const auto& ruta : rutas[i]) {
            Cabecera cab;
            if (auto m = ComprobarEleccion(d, static_cast<int>(previas.size()), ruta, cab, previas)) return rechazo(*m);
            previas.push_back(cab);
            elegidas.cabeceras[i].push_back(cab);
            rutasImagen[i].push_back(ruta);
        }
    }
    // Step 2.
    if (auto m = ComprobarAceptar(d, v, elegidas)) return rechazo(*m);
    // Step 3.
    std::vector<std::vector<CImagen>> locales(d.entradas.size());
    EntradasCargadas cargadas;
    cargadas.imagenes.resize(d.entradas.size());
    cargadas.ficheros = elegidas.ficheros;
    for (std::size_t i = 0; i < d.entradas.size(); ++i) {
        locales[i].resize(rutasImagen[i].size());
        for (std::size_t k = 0; k < rutasImagen[i].size(); ++k) {
            if (auto f = CargarEntrada(rutasImagen[i][k], elegidas.cabeceras[i][k], locales[i][k])) {
                ej.fallo = f;
                return ej;
            }
            cargadas.imagenes[i].push_back(&locales[i][k]);
        }
    }
    // Step 4.
    Resultado r = Calcular(d, cargadas, v, Destino::Fichero, progreso);
    ej.avisos = r.avisos;
    if (r.fallo) {
        ej.fallo = r.fallo;
        return ej;
    }
    ej.consola = r.consola;
    // Step 5.
    if (auto e = EscribirResultado(r, stem, &ej.escritos)) ej.fallo = Fallo{ClaseFallo::Sistema, *e};
    return ej;
}

Ejecucion EjecutarAFichero(const Declaracion& d, const std::vector<std::string>& entradas, const Valores& v,
                           const std::string& stem, Progreso& progreso) {
    std::vector<std::vector<std::string>> rutas;
    for (const auto& e : entradas) rutas.push_back({e});
    rutas.resize(d.entradas.size());
    return EjecutarAFichero(d, rutas, std::vector<std::vector<std::string>>(d.entradas.size()), v, stem, progreso);
}

}  // namespace orvela
