#include "operations/Curso.h"

#include <cstdio>
#include <sys/stat.h>

#include "image/Codificacion.h"
#include "image/FicheroSeguro.h"

namespace orvela {

std::optional<Mensaje> ComprobarFicheroEntrada(const std::string& ruta, Cabecera& cab) {
    const auto punto = ruta.find_last_of('.');
    const auto barra = ruta.find_last_of('/');
    const std::string ext =
        (punto == std::string::npos || (barra != std::string::npos && punto < barra)) ? "" : ruta.substr(punto + 1);
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

Resultado Calcular(const Declaracion& d, const std::vector<const CImagen*>& entradas, const Valores& v,
                   Destino destino, std::function<void(double)> progreso) {
    Resultado r;
    if (d.antesDeCalcular) {
        if (auto e = d.antesDeCalcular(entradas, v)) {
            r.error = e;
            return r;
        }
    }
    Contexto ctx{entradas, v, destino, std::move(progreso)};
    r = d.calcular(ctx);
    if (r.error) return r;
    if (!r.titulosPropios && !r.imagenes.empty()) r.imagenes[0].titulo = TituloResultado(d, entradas, v);
    return r;
}

std::optional<Mensaje> EscribirResultado(Resultado& r, const std::string& stem, std::vector<std::string>* escritos) {
    std::vector<std::string> hechos;
    auto deshacer = [&] {
        for (const auto& f : hechos) std::remove(f.c_str());
    };
    for (std::size_t i = 0; i < r.imagenes.size(); ++i) {
        const std::string final = i == 0 ? "" : (i - 1 < r.finales.size() ? r.finales[i - 1] : "_" + std::to_string(i));
        if (auto e = r.imagenes[i].Guardar(stem + final, 1)) {
            deshacer();
            return e;
        }
        hechos.push_back(r.imagenes[i].rutaRaster);
        hechos.push_back(CambiarExtension(r.imagenes[i].rutaRaster, ".inf"));
    }
    for (const auto& inf : r.informes) {
        const std::string ruta = stem + inf.final;
        if (!EscribirFicheroSeguro(ruta, Utf8ACp1252(inf.contenido))) {
            deshacer();
            return Mensaje::Tabla(msg::kNoCreadoFichero, ruta);
        }
        hechos.push_back(ruta);
    }
    if (escritos) *escritos = hechos;
    return std::nullopt;
}

Ejecucion EjecutarAFichero(const Declaracion& d, const std::vector<std::string>& rutas, const Valores& v,
                           const std::string& stem) {
    Ejecucion ej;
    std::vector<std::optional<Cabecera>> cabeceras(rutas.size());
    for (std::size_t i = 0; i < rutas.size(); ++i) {
        Cabecera cab;
        if (auto e = ComprobarFicheroEntrada(rutas[i], cab)) {
            ej.error = e;
            return ej;
        }
        if (d.alElegir) {
            if (auto e = d.alElegir(static_cast<int>(i), cab, cabeceras)) {
                ej.error = e;
                return ej;
            }
        }
        cabeceras[i] = cab;
    }
    if (d.alAceptar) {
        if (auto e = d.alAceptar(v)) {
            ej.error = e;
            return ej;
        }
    }
    std::vector<CImagen> imagenes(rutas.size());
    std::vector<const CImagen*> punteros;
    for (std::size_t i = 0; i < rutas.size(); ++i) {
        if (auto e = ComprobarRaster(rutas[i], *cabeceras[i])) {
            ej.error = e;
            ej.falloSistema = e->id == 0;
            return ej;
        }
        if (auto e = imagenes[i].Cargar(*cabeceras[i], rutas[i], 0, true)) {
            ej.error = e;
            ej.falloSistema = e->id == 0;
            return ej;
        }
        punteros.push_back(&imagenes[i]);
    }
    Resultado r = Calcular(d, punteros, v, Destino::Fichero);
    ej.avisos = r.avisos;
    ej.consola = r.consola;
    if (r.error) {
        ej.error = r.error;
        // A plain sentence (memory that cannot be had) is a failure of the
        // system, not a refusal of the table.
        ej.falloSistema = r.error->id == 0;
        return ej;
    }
    if (auto e = EscribirResultado(r, stem, &ej.escritos)) {
        ej.error = e;
        ej.falloSistema = true;
    }
    return ej;
}

}  // namespace orvela
