// What the tests share: a temporary folder, files, images of any type in
// memory and on disk, the operations by their command-line order and the
// command line itself.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "cli/Cli.h"
#include "image/CImagen.h"
#include "image/Conversion.h"
#include "image/Leyenda.h"
#include "image/Paleta.h"
#include "operations/Curso.h"
#include "operations/Operacion.h"

namespace orvela::prueba {

inline constexpr int kTipos[] = {kByte, kInteger, kReal, kDouble};

// A fresh folder under /tmp, removed with what it holds.
class CarpetaPrueba {
public:
    CarpetaPrueba() {
        std::string plantilla = (std::filesystem::temp_directory_path() / "orvela-XXXXXX").string();
        if (::mkdtemp(plantilla.data())) ruta_ = plantilla;
    }
    ~CarpetaPrueba() {
        std::error_code ec;
        std::filesystem::permissions(ruta_, std::filesystem::perms::owner_all, ec);
        std::filesystem::remove_all(ruta_, ec);
    }
    CarpetaPrueba(const CarpetaPrueba&) = delete;
    CarpetaPrueba& operator=(const CarpetaPrueba&) = delete;
    std::string operator/(const std::string& nombre) const { return ruta_ + "/" + nombre; }
    const std::string& Ruta() const { return ruta_; }

private:
    std::string ruta_;
};

inline std::string LeerFichero(const std::string& ruta) {
    std::ifstream in(ruta, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}
inline void EscribirFichero(const std::string& ruta, const std::string& contenido) {
    std::ofstream(ruta, std::ios::binary) << contenido;
}
inline bool Existe(const std::string& ruta) { return std::filesystem::exists(ruta); }

// Names of what a folder holds (temporary files included).
inline std::set<std::string> Contenido(const std::string& carpeta) {
    std::set<std::string> s;
    std::error_code ec;
    for (const auto& e : std::filesystem::directory_iterator(carpeta, ec)) s.insert(e.path().filename().string());
    return s;
}

// Folder of the shared Landsat bands; empty when absent.
inline std::string Landsat() {
    const std::string d = std::string(ORVELA_DATOS_COMPARTIDOS) + "/landsat-tm";
    return Existe(d + "/tm1.ozm") ? d : std::string();
}

// Samples of `codigo` holding `v`.
inline Muestras MuestrasDe(int codigo, const std::vector<double>& v) {
    Muestras m = Muestras::Crear(codigo, v.size());
    ConTipo(codigo, [&]<class T>(Muestra<T>) {
        for (std::size_t i = 0; i < v.size(); ++i) m.Como<T>()[i] = static_cast<T>(v[i]);
    });
    return m;
}

// A georeferenced image of `codigo` holding `v` row after row.
inline CImagen Imagen(int codigo, long filas, long columnas, const std::vector<double>& v,
                      const std::string& titulo = "a") {
    CImagen im;
    im.pixeles = MuestrasDe(codigo, v);
    EXPECT_EQ(v.size(), static_cast<std::size_t>(filas * columnas));
    im.tipoDato = codigo;
    im.filas = static_cast<double>(filas);
    im.columnas = static_cast<double>(columnas);
    im.titulo = titulo;
    im.tipoFichero = "binary";
    im.sistemaReferencia = "UTM-30N";
    im.geo = Georreferencia{0, 0, 100, 100, SinDato, 30, 1};
    im.tieneImagen = true;
    return im;
}

// Every sample widened to double.
inline std::vector<double> Muestrario(const Muestras& m) {
    std::vector<double> v(m.Cantidad());
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = m.Valor(i);
    return v;
}
inline std::vector<double> Muestrario(const CImagen& im) { return Muestrario(im.pixeles); }

// What a sample of `codigo` keeps of a computed value.
inline double Guardado(int codigo, double v) {
    double r = 0;
    ConTipo(codigo, [&]<class T>(Muestra<T>) { r = static_cast<double>(Almacenar<T>(v)); });
    return r;
}
inline std::vector<double> Guardados(int codigo, std::vector<double> v) {
    for (double& x : v) x = Guardado(codigo, x);
    return v;
}

// Values of the operation of order `orden`, by field name.
inline Valores Con(const char* orden, std::initializer_list<std::pair<const char*, double>> l) {
    const Declaracion* d = BuscarPorOrden(orden);
    Valores v;
    for (const auto& [c, x] : l) v.Poner(ClaveDe(*d, c), x);
    return v;
}

// The operation of command-line order `orden` on images in memory.
inline Resultado Operar(const char* orden, std::vector<const CImagen*> e, const Valores& v,
                        Destino d = Destino::Fichero) {
    const Declaracion* decl = BuscarPorOrden(orden);
    EXPECT_NE(decl, nullptr) << orden;
    return Calcular(*decl, e, v, d);
}

// The samples of the one result of an operation; empty on a refusal.
inline std::vector<double> Resultante(const Resultado& r) {
    EXPECT_FALSE(r.fallo) << r.fallo->mensaje.Texto();
    return r.imagenes.size() == 1 ? Muestrario(r.imagenes[0]) : std::vector<double>{};
}

// Writes `im` as stem.ozm / stem.inf and returns the raster path.
inline std::string Escribir(CImagen& im, const std::string& stem) {
    EXPECT_FALSE(im.Guardar(stem, 1).has_value());
    return stem + ".ozm";
}

struct SalidaCli {
    int rc;
    std::string out, err;
};
inline SalidaCli Cli(const std::vector<std::string>& args) {
    std::ostringstream out, err;
    const int rc = cli::Ejecutar(args, out, err);
    return {rc, out.str(), err.str()};
}

// A legend as (name, ND) pairs; "?" when it cannot be read.
using Clases = std::vector<std::pair<std::string, double>>;
inline Clases Pares(const std::optional<std::vector<ClaseLeyenda>>& l) {
    if (!l) return {{"?", 0}};
    Clases v;
    for (const auto& c : *l) v.emplace_back(c.nombre, c.nd);
    return v;
}

// Runs a command line: the status must be `rc`, and standard error must
// begin with `err` (be all of it when `err` ends a line).
inline SalidaCli Espera(const std::vector<std::string>& args, int rc, const std::string& err = "") {
    SalidaCli s = Cli(args);
    EXPECT_EQ(s.rc, rc) << (args.empty() ? "" : args[0]) << ": " << s.err;
    const bool entero = !err.empty() && err.back() == '\n';
    EXPECT_EQ(entero ? s.err : s.err.substr(0, err.size()), err);
    return s;
}

// "ID: TEXT" as orvela-cli prints a refusal.
inline std::string Rechazo(const Mensaje& m) { return std::to_string(m.id) + ": " + m.Texto() + "\n"; }

}  // namespace orvela::prueba
