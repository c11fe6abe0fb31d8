// Small images built in memory and on disk for the tests of the arithmetic,
// logical, function and contrast operations.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "cli/Cli.h"
#include "image/CImagen.h"
#include "operations/Curso.h"
#include "operations/Operacion.h"

namespace orvela::prueba {

inline constexpr int kTipos[] = {kByte, kInteger, kReal, kDouble};

// An image of `codigo` holding `v` row after row.
inline CImagen Imagen(int codigo, long filas, long columnas, const std::vector<double>& v,
                      const std::string& titulo = "a") {
    CImagen im;
    im.pixeles = Muestras::Crear(codigo, static_cast<std::size_t>(filas * columnas));
    im.tipoDato = codigo;
    im.filas = static_cast<double>(filas);
    im.columnas = static_cast<double>(columnas);
    im.titulo = titulo;
    im.tipoFichero = "binary";
    im.sistemaReferencia = "UTM-30N";
    im.geo = Georreferencia{0, 0, 100, 100, SinDato, 30, 1};
    im.tieneImagen = true;
    ConTipo(codigo, [&]<class T>(Muestra<T>) {
        auto d = im.pixeles.Como<T>();
        for (std::size_t i = 0; i < d.size(); ++i) d[i] = static_cast<T>(v.at(i));
    });
    return im;
}

// Every sample widened to double.
inline std::vector<double> Muestrario(const CImagen& im) {
    std::vector<double> v(im.pixeles.Cantidad());
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = im.pixeles.Valor(i);
    return v;
}

inline Valores Con(std::initializer_list<std::pair<Clave, double>> l) {
    Valores v;
    for (const auto& [c, x] : l) v.Poner(c, x);
    return v;
}

// The operation of CLI order `orden` on images in memory.
inline Resultado Operar(const char* orden, std::vector<const CImagen*> e, const Valores& v,
                        Destino d = Destino::Fichero) {
    const Declaracion* decl = BuscarPorOrden(orden);
    EXPECT_NE(decl, nullptr) << orden;
    return Calcular(*decl, e, v, d);
}

// A fresh folder for files of one test.
inline std::string Carpeta(const std::string& nombre) {
    const auto p = std::filesystem::path(::testing::TempDir()) / ("orvela_" + nombre);
    std::filesystem::remove_all(p);
    std::filesystem::create_directories(p);
    return p.string();
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

// "ID: TEXT" as orvela-cli prints a refusal.
inline std::string Rechazo(const Mensaje& m) { return std::to_string(m.id) + ": " + m.Texto() + "\n"; }

inline std::string Datos(const std::string& banda) {
    return std::string(ORVELA_DATOS_COMPARTIDOS) + "/landsat-tm/" + banda + ".ozm";
}

}  // namespace orvela::prueba
