// Image tools: composition with and without reference, window, concatenation,
// contraction, expansion, reclassification, statistics (continuous and by
// class), regression and area per category, over the four data types, with
// values worked by hand, the checks in their order and the reports written
// out in full.
#include "tests/LeerPng.h"
#include "tests/Prueba.h"
#include "tools/AreaCategorias.h"
#include "tools/Componer.h"
#include "tools/ComposicionColor.h"
#include "tools/EstadisticasImagen.h"
#include "tools/Reclasificar.h"
#include "tools/Regresion.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

// Runs an operation whose inputs are lists or optional: `porEntrada` by
// declared input.
Resultado OperarListas(const char* orden, std::vector<std::vector<const CImagen*>> porEntrada, const Valores& v,
                       Destino d = Destino::Fichero) {
    const Declaracion* decl = BuscarPorOrden(orden);
    EntradasCargadas e;
    e.imagenes = std::move(porEntrada);
    e.ficheros.resize(e.imagenes.size());
    return Calcular(*decl, e, v, d);
}

std::optional<Mensaje> Aceptar(const char* orden, const Valores& v, std::vector<std::vector<Cabecera>> cab) {
    Elegidas e;
    e.cabeceras = std::move(cab);
    e.ficheros.resize(e.cabeceras.size());
    return ComprobarAceptar(*BuscarPorOrden(orden), v, e);
}

std::vector<double> Serie(int desde, int n) {
    std::vector<double> v(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) v[static_cast<std::size_t>(i)] = desde + i;
    return v;
}

}  // namespace

TEST(Componer, MaximoMinimoYReferencias) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        const CImagen a = Imagen(codigo, 1, 4, {10, 20, 5, 7}, "a");
        const CImagen b = Imagen(codigo, 1, 4, {20, 10, 5, 9}, "b");
        const CImagen c = Imagen(codigo, 1, 4, {15, 15, 6, 1}, "c");
        auto sin = [&](int criterio) {
            return OperarListas("componer", {{&a, &b, &c}, {}}, Con("componer", {{"criterio", criterio}}));
        };
        EXPECT_EQ(Resultante(sin(0)), (std::vector<double>{20, 20, 6, 9}));
        EXPECT_EQ(Resultante(sin(1)), (std::vector<double>{10, 10, 5, 1}));
        EXPECT_EQ(sin(0).imagenes.at(0).titulo, "Compuesta_Sin_Referencia");
        EXPECT_EQ(sin(0).imagenes.at(0).tipoDato, codigo);

        // References: equal at pixel 0 (the first image wins), b's larger at
        // pixel 1, c's larger at 2, a's at 3.
        const CImagen ra = Imagen(codigo, 1, 4, {3, 1, 1, 9});
        const CImagen rb = Imagen(codigo, 1, 4, {3, 5, 2, 2});
        const CImagen rc = Imagen(codigo, 1, 4, {3, 4, 8, 0});
        const Resultado con = OperarListas("componer", {{&a, &b, &c}, {&ra, &rb, &rc}},
                                           Con("componer", {{"criterio", 0}}));
        EXPECT_EQ(Resultante(con), (std::vector<double>{10, 10, 6, 7}));
        EXPECT_EQ(con.imagenes.at(0).titulo, "Compuesta_Con_Referencia");
        // Minimum of the references: a at 0 (tie), a at 1 (1 < 5, 4), a at 2, c at 3.
        EXPECT_EQ(Resultante(OperarListas("componer-con-referencia", {{&a, &b, &c}, {&ra, &rb, &rc}},
                                          Con("componer-con-referencia", {{"criterio", 1}}))),
                  (std::vector<double>{10, 20, 5, 1}));
    }
    // Integer samples compare unsigned; NaN never wins.
    const CImagen g = Imagen(kInteger, 1, 1, {65535}), h = Imagen(kInteger, 1, 1, {1});
    EXPECT_EQ(Resultante(OperarListas("componer", {{&h, &g}, {}}, Con("componer", {{"criterio", 0}}))),
              (std::vector<double>{65535}));

    // One image: 61227, in "Aceptar" and in the computation; references that
    // do not pair with the images: 61219.
    const CImagen a = Imagen(kByte, 1, 1, {1}), b = Imagen(kByte, 1, 1, {2});
    const Valores v = Con("componer", {{"criterio", 0}});
    EXPECT_EQ(Aceptar("componer", v, {{a.ComoCabecera()}, {}}), Mensaje::Tabla(msg::kNumeroImagenesComponer));
    EXPECT_EQ(*OperarListas("componer", {{&a}, {}}, v).Error(), Mensaje::Tabla(msg::kNumeroImagenesComponer));
    EXPECT_EQ(Aceptar("componer", v, {{a.ComoCabecera(), b.ComoCabecera()}, {a.ComoCabecera()}})->id,
              msg::kNoSeleccionadaEntrada);
    // Georeferences that differ: "unknown".
    CImagen otra = Imagen(kByte, 1, 1, {2});
    otra.geo.resolucion = 10;
    EXPECT_EQ(OperarListas("componer", {{&a, &b}, {}}, v).imagenes.at(0).sistemaReferencia, "UTM-30N");
    EXPECT_EQ(OperarListas("componer", {{&a, &otra}, {}}, v).imagenes.at(0).sistemaReferencia, "unknown");
}

TEST(Componer, EleccionComparadaConLaPrimera) {
    CarpetaPrueba dir;
    CImagen a = Imagen(kByte, 2, 2, {1, 2, 3, 4}), b = Imagen(kReal, 2, 2, {1, 2, 3, 4}),
            c = Imagen(kByte, 1, 4, {1, 2, 3, 4}), d = Imagen(kByte, 2, 2, {4, 3, 2, 1});
    const std::string pa = Escribir(a, dir / "a"), pb = Escribir(b, dir / "b"), pc = Escribir(c, dir / "c"),
                      pd = Escribir(d, dir / "d");
    Espera({"componer", "--criterio", "maximo", pa, pb, dir / "s"}, 2,
           Rechazo(Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, relleno::kImagenes)));
    Espera({"componer", "--criterio", "maximo", pa, pc, dir / "s"}, 2,
           Rechazo(Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kImagenes)));
    Espera({"componer", "--criterio", "maximo", pa, dir / "s"}, 2, Rechazo(Mensaje::Tabla(msg::kNumeroImagenesComponer)));
    Espera({"componer", "--criterio", "minimo", "--referencia", pd, "--referencia", pa, pa, pd, dir / "s"}, 0);
    CImagen s;
    ASSERT_FALSE(s.Cargar(dir / "s.ozm"));
    // a with reference d (4, 3, 2, 1), d with reference a (1, 2, 3, 4): the
    // smaller reference picks d at pixels 0 and 1, a at pixels 2 and 3.
    EXPECT_EQ(Muestrario(s), (std::vector<double>{4, 3, 3, 4}));
    EXPECT_EQ(s.titulo, "Compuesta_Con_Referencia");
}

TEST(Reformar, EnventanarContraerExpandir) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        const CImagen im = Imagen(codigo, 10, 10, Serie(0, 100), "im");
        // (0, 0) to (10, 10): the whole 10 x 10; (2, 3) to (4, 6): rows 2-3, columns 3-5.
        const auto ventana = [&](double r1, double c1, double r2, double c2) {
            return Operar("enventanar", {&im},
                          Con("enventanar", {{"fila_sup", r1}, {"columna_sup", c1}, {"fila_inf", r2}, {"columna_inf", c2}}));
        };
        EXPECT_EQ(Resultante(ventana(0, 0, 10, 10)), Serie(0, 100));
        const Resultado w = ventana(2, 3, 4, 6);
        EXPECT_EQ(Resultante(w), (std::vector<double>{23, 24, 25, 33, 34, 35}));
        EXPECT_EQ(w.imagenes.at(0).filas, 2);
        EXPECT_EQ(w.imagenes.at(0).columnas, 3);
        EXPECT_EQ(w.imagenes.at(0).titulo, "im_Enventanada");
        EXPECT_EQ(*ventana(0, 0, 11, 5).Error(), Mensaje::Tabla(msg::kPosicionesFuera));

        // Contraction by 3 x 3 keeps rows and columns 2, 5 and 8.
        const Resultado k = Operar("contraer", {&im}, Con("contraer", {{"factor_filas", 3}, {"factor_columnas", 3}}));
        EXPECT_EQ(Resultante(k), (std::vector<double>{22, 25, 28, 52, 55, 58, 82, 85, 88}));
        EXPECT_EQ(k.imagenes.at(0).titulo, "im_Contraída");
        // 4 x 1: rows 3 and 7, every column of them.
        const auto k2 = Resultante(Operar("contraer", {&im}, Con("contraer", {{"factor_filas", 4}, {"factor_columnas", 1}})));
        EXPECT_EQ(std::vector<double>(k2.begin(), k2.begin() + 10), Serie(30, 10));
        EXPECT_EQ(std::vector<double>(k2.begin() + 10, k2.end()), Serie(70, 10));
        EXPECT_EQ(*Operar("contraer", {&im}, Con("contraer", {{"factor_filas", 10}, {"factor_columnas", 2}})).Error(),
                  Mensaje::Tabla(msg::kContraccionFilas));
        EXPECT_EQ(*Operar("contraer", {&im}, Con("contraer", {{"factor_filas", 2}, {"factor_columnas", 10}})).Error(),
                  Mensaje::Tabla(msg::kContraccionColumnas));

        // Expansion of 2 x 2 by 2 x 3: 4 x 6 in blocks.
        const CImagen p = Imagen(codigo, 2, 2, {1, 2, 3, 4}, "p");
        const Resultado e = Operar("expandir", {&p}, Con("expandir", {{"factor_filas", 2}, {"factor_columnas", 3}}));
        EXPECT_EQ(Resultante(e), (std::vector<double>{1, 1, 1, 2, 2, 2, 1, 1, 1, 2, 2, 2,
                                                      3, 3, 3, 4, 4, 4, 3, 3, 3, 4, 4, 4}));
        EXPECT_EQ(e.imagenes.at(0).filas * e.imagenes.at(0).columnas, 24);
        EXPECT_EQ(e.imagenes.at(0).titulo, "p_Expandida");
    }
    // Samples copied bit for bit: a NaN and a negative zero survive.
    const CImagen n = Imagen(kReal, 1, 2, {std::nan(""), -0.0});
    const Resultado e = Operar("expandir", {&n}, Con("expandir", {{"factor_filas", 1}, {"factor_columnas", 2}}));
    ASSERT_FALSE(e.fallo);
    EXPECT_TRUE(std::isnan(e.imagenes[0].pixeles.Valor(1)));
    EXPECT_TRUE(std::signbit(e.imagenes[0].pixeles.Valor(3)));
}

TEST(Reformar, ComprobacionesEnSuOrden) {
    const Cabecera cab = Imagen(kByte, 10, 10, Serie(0, 100)).ComoCabecera();
    auto ventana = [&](double r1, double c1, double r2, double c2) {
        return Aceptar("enventanar",
                       Con("enventanar", {{"fila_sup", r1}, {"columna_sup", c1}, {"fila_inf", r2}, {"columna_inf", c2}}),
                       {{cab}});
    };
    EXPECT_EQ(ventana(0, 0, 10, 10), std::nullopt);
    EXPECT_EQ(ventana(-1, 0, 5, 5), Mensaje::Tabla(msg::kPosicionesNegativas));
    EXPECT_EQ(ventana(5, 7, 5, 3), Mensaje::Tabla(msg::kExtremoSuperior, "fila"));
    EXPECT_EQ(ventana(2, 7, 5, 3), Mensaje::Tabla(msg::kExtremoSuperior, "columna"));
    EXPECT_EQ(ventana(0, 0, 10, 11), Mensaje::Tabla(msg::kEnventanarFuera));
    EXPECT_EQ(Aceptar("contraer", Con("contraer", {{"factor_filas", 0}, {"factor_columnas", 2}}), {{cab}}),
              Mensaje::Tabla(msg::kValoresIncorrectos, "Los factores"));
    EXPECT_EQ(Aceptar("contraer", Con("contraer", {{"factor_filas", 10}, {"factor_columnas", 2}}), {{cab}}),
              Mensaje::Tabla(msg::kContraccionFilas));
    EXPECT_EQ(Aceptar("expandir", Con("expandir", {{"factor_filas", 2}, {"factor_columnas", -1}}), {{cab}}),
              Mensaje::Tabla(msg::kValoresIncorrectos, "Los factores"));
}

TEST(Reformar, Concatenar) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        const CImagen m = Imagen(codigo, 10, 10, std::vector<double>(100, 7), "m");
        const CImagen s = Imagen(codigo, 5, 5, std::vector<double>(25, 9), "s");
        const Resultado r = Operar("concatenar", {&m, &s}, Con("concatenar", {{"derecha", 1}, {"debajo", 0}}));
        const auto v = Resultante(r);
        ASSERT_EQ(v.size(), 150u);
        EXPECT_EQ(r.imagenes[0].columnas, 15);
        EXPECT_EQ(r.imagenes[0].titulo, "m_Concatenada_a_s");
        for (int f = 0; f < 10; ++f)
            for (int c = 0; c < 15; ++c)
                EXPECT_EQ(v[static_cast<std::size_t>(f * 15 + c)], c < 10 ? 7 : f < 5 ? 9 : 0) << f << "," << c;
        // Below: 15 x 10. At (8, 8): 13 x 13, s over m where they overlap.
        EXPECT_EQ(Operar("concatenar", {&m, &s}, Con("concatenar", {{"derecha", 0}, {"debajo", 1}})).imagenes.at(0).filas, 15);
        const Resultado p = Operar("concatenar", {&m, &s}, Con("concatenar", {{"derecha", 0}, {"debajo", 0}, {"fila", 8}, {"columna", 8}}));
        const auto q = Resultante(p);
        ASSERT_EQ(q.size(), 169u);
        EXPECT_EQ(q[0], 7);
        EXPECT_EQ(q[8 * 13 + 8], 9);
        EXPECT_EQ(q[12 * 13 + 0], 0);
        EXPECT_EQ(q[9 * 13 + 7], 7);
        EXPECT_EQ(*Operar("concatenar", {&m, &s}, Con("concatenar", {{"derecha", 0}, {"debajo", 0}, {"fila", 10}, {"columna", 0}})).Error(),
                  Mensaje::Tabla(msg::kConcatenarFuera));
    }
    // Georeference: 10 columns of 10 m from x = 0; 15 columns reach 150 in
    // the window, and the saved header keeps the main image's.
    CImagen m = Imagen(kByte, 10, 10, std::vector<double>(100, 1));
    m.geo = Georreferencia{0, 0, 100, 100, SinDato, 10, 1};
    const CImagen s = Imagen(kByte, 5, 5, std::vector<double>(25, 2));
    const Valores derecha = Con("concatenar", {{"derecha", 1}, {"debajo", 0}});
    const Resultado vent = Operar("concatenar", {&m, &s}, derecha, Destino::Ventana);
    EXPECT_EQ(vent.imagenes.at(0).geo.maxX, 150);
    EXPECT_EQ(vent.imagenes.at(0).geo.minY, 0);
    EXPECT_EQ(Operar("concatenar", {&m, &s}, derecha).imagenes.at(0).geo.maxX, 100);
    m.geo.minX = SinDato;
    EXPECT_EQ(Operar("concatenar", {&m, &s}, derecha).imagenes.at(0).sistemaReferencia, "unknown");
    const CImagen otra = Imagen(kInteger, 5, 5, std::vector<double>(25, 2));
    EXPECT_EQ(Operar("concatenar", {&m, &otra}, derecha).Error()->f1, relleno::kElTipoDeDato);
}

TEST(Reclasificar, RangoSemiabiertoPorTipo) {
    auto reclasificar = [](const CImagen& im, double a, double b, double v) {
        return Resultante(Operar("reclasificar", {&im}, Con("reclasificar", {{"desde", a}, {"hasta", b}, {"nd_salida", v}})));
    };
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        const CImagen im = Imagen(codigo, 1, 5, {9, 10, 15, 19, 20}, "k");
        EXPECT_EQ(reclasificar(im, 10, 20, 0), (std::vector<double>{9, 0, 0, 0, 20}));
        EXPECT_EQ(reclasificar(im, 15, 15, 0), (std::vector<double>{9, 10, 15, 19, 20}));
        EXPECT_EQ(reclasificar(im, 20, 10, 0), (std::vector<double>{9, 10, 15, 19, 20}));
        EXPECT_EQ(Operar("reclasificar", {&im}, Con("reclasificar", {{"desde", 0}, {"hasta", 1}, {"nd_salida", 1}}))
                      .imagenes.at(0).titulo,
                  "k_Reclasificada");
    }
    // Byte: 256 acts as 0, 300 as 44, -1 as 255, 10.9 as 10; no message.
    const CImagen b = Imagen(kByte, 1, 4, {0, 44, 45, 255});
    EXPECT_EQ(reclasificar(b, 0, 1, 256), (std::vector<double>{0, 44, 45, 255}));
    EXPECT_EQ(reclasificar(b, 300, 45.9, 7), (std::vector<double>{0, 7, 45, 255}));
    EXPECT_EQ(reclasificar(b, -1, 0, 3), (std::vector<double>{0, 44, 45, 255}));
    // 511 acts as 255, which the half-open range leaves out.
    EXPECT_EQ(reclasificar(b, 45, 256 + 255, -2), (std::vector<double>{0, 44, 254, 255}));
    // Integer: 16 bits, unsigned.
    const CImagen e = Imagen(kInteger, 1, 3, {1, 65535, 5});
    EXPECT_EQ(reclasificar(e, 65536 + 1, -1, 65536 + 9), (std::vector<double>{9, 65535, 9}));
    // Double and real compare with decimals; a real takes the value narrowed.
    const CImagen d = Imagen(kDouble, 1, 3, {0.5, 1.0, 1.5});
    EXPECT_EQ(reclasificar(d, 0.5, 1.5, 7.25), (std::vector<double>{7.25, 7.25, 1.5}));
    const CImagen r = Imagen(kReal, 1, 3, {0.5, 1.0, 1.5});
    EXPECT_EQ(reclasificar(r, 0.5, 1.5, 0.1), (std::vector<double>{0.1f, 0.1f, 1.5}));
    // The reduced parameters never exceed the limits.
    EXPECT_EQ(ReducirParametros(kByte, 300, 256, -1).desde, 44);
    EXPECT_EQ(ReducirParametros(kByte, 300, 256, -1).salida, 255);
    EXPECT_EQ(ReducirParametros(kInteger, 70000, 0, 0).desde, 70000 - 65536);
}

TEST(Estadisticas, Continua) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        const CImagen dos = Imagen(codigo, 1, 2, {2, 4});
        const Resultado r = OperarListas("estadisticas", {{&dos}, {}, {}}, Valores{});
        ASSERT_FALSE(r.fallo);
        EXPECT_EQ(r.consola, "Media: 3\nMáximo: 4\nMínimo: 2\nVarianza: 1\nDesviación típica: 1\nRango: 2\n");
        const CImagen igual = Imagen(codigo, 2, 2, {7, 7, 7, 7});
        EXPECT_EQ(OperarListas("estadisticas", {{&igual}, {}, {}}, Valores{}).consola,
                  "Media: 7\nMáximo: 7\nMínimo: 7\nVarianza: 0\nDesviación típica: 0\nRango: 0\n");
    }
}

namespace {

// Classified 2 x 3 with classes 1 and 2 (and 9, in no class), source first
// pixel 50 in class 1, class 2 all 80..90.
struct Clasificacion {
    CarpetaPrueba dir;
    std::string k, s;
    Clasificacion(int codigo) {
        CImagen clas = Imagen(kByte, 2, 3, {1, 2, 2, 1, 9, 2}, "verdad");
        CImagen fuente = Imagen(codigo, 2, 3, {50, 80, 90, 60, 200, 85}, "tm4");
        k = Escribir(clas, dir / "verdad");
        s = Escribir(fuente, dir / "tm4");
        EXPECT_TRUE(EscribirLeyenda(k, {{"Agua", 1}, {"Vegetacion", 2}, {"Urbano", 3}}));
    }
};

}  // namespace

TEST(Estadisticas, PorClaseInformeYTexto) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        Clasificacion c(codigo);
        const std::string informe = c.dir / "informe.txt";
        const SalidaCli s = Espera({"estadisticas", "--clasificada", c.k, "--original", c.s, "--informe", informe}, 0);
        // Class 1: 50, 60 -> mean 55, deviation 5. Class 2: 80, 90, 85 ->
        // mean 85, deviation sqrt(50/3); its minimum is the first pixel's 50.
        // Class 3 has no pixels: total 0, mean and deviation printed as 0.
        EXPECT_EQ(s.out,
                  "Resumen de las estadísticas de las siguientes imágenes clasificadas:\n\n"
                  "\tImagen clasificada:\n\t\tverdad\n\tImagen original:\n\t\ttm4\n\n"
                  "Clase 0:\n\tND asociado\t\t1\n\tNombre de la clase\t\tAgua\n\tMínimo\t\t\t50.00\n"
                  "\tMáximo\t\t\t60.00\n\tTotal\t\t\t2.00\n\tMedia\t\t\t55.0000\n\tRango\t\t\t10.00\n"
                  "\tDesviación Típica\t\t\t5.0000\n\n"
                  "Clase 1:\n\tND asociado\t\t2\n\tNombre de la clase\t\tVegetacion\n\tMínimo\t\t\t50.00\n"
                  "\tMáximo\t\t\t90.00\n\tTotal\t\t\t3.00\n\tMedia\t\t\t85.0000\n\tRango\t\t\t40.00\n"
                  "\tDesviación Típica\t\t\t4.0825\n\n"
                  "Clase 2:\n\tND asociado\t\t3\n\tNombre de la clase\t\tUrbano\n\tMínimo\t\t\t50.00\n"
                  "\tMáximo\t\t\t50.00\n\tTotal\t\t\t0.00\n\tMedia\t\t\t0.0000\n\tRango\t\t\t0.00\n"
                  "\tDesviación Típica\t\t\t0.0000\n\n");
        EXPECT_EQ(LeerFichero(informe),
                  "\n\nResumen de las estad\xEDsticas de las siguientes im\xE1genes clasificadas:\n\n"
                  "\tImagen clasificada:\n\t\tverdad\n\tImagen original:\n\t\ttm4\n\n"
                  "Clase 0:\n\tND asociado\t\t1\n\tNombre de la clase\tAgua\n\tM\xEDnimo\t\t\t50.000000\n"
                  "\tM\xE1ximo\t\t\t60.000000\n\tTotal\t\t\t2.000000\n\tMedia\t\t\t55.000000\n"
                  "\tRango\t\t\t10.000000\n\tDesviaci\xF3n T\xEDpica\t5.000000\n\n"
                  "Clase 1:\n\tND asociado\t\t2\n\tNombre de la clase\tVegetacion\n\tM\xEDnimo\t\t\t50.000000\n"
                  "\tM\xE1ximo\t\t\t90.000000\n\tTotal\t\t\t3.000000\n\tMedia\t\t\t85.000000\n"
                  "\tRango\t\t\t40.000000\n\tDesviaci\xF3n T\xEDpica\t4.082483\n\n"
                  "Clase 2:\n\tND asociado\t\t3\n\tNombre de la clase\tUrbano\n\tM\xEDnimo\t\t\t50.000000\n"
                  "\tM\xE1ximo\t\t\t50.000000\n\tTotal\t\t\t0.000000\n\tMedia\t\t\t0.000000\n"
                  "\tRango\t\t\t0.000000\n\tDesviaci\xF3n T\xEDpica\t0.000000\n\n");
    }
    // The window's text joins its lines with CR LF.
    const std::vector<EstadisticaClase> una = {{1, "Agua", 1, 2, 3, 4, 5, 6}};
    const std::string texto = TextoEstadisticasClases(una, "k", "s");
    const std::string inicio = "Resumen de las estadísticas de las siguientes imágenes clasificadas:\r\n\r\n\tImagen";
    const std::string fin = "\tDesviación Típica\t\t\t6.0000\r\n";
    EXPECT_EQ(texto.substr(0, inicio.size()), inicio);
    EXPECT_EQ(texto.substr(texto.size() - fin.size()), fin);
}

TEST(Estadisticas, ComprobacionesDelCasoClasificado) {
    Clasificacion c(kByte);
    CarpetaPrueba dir;
    CImagen real = Imagen(kReal, 2, 3, std::vector<double>(6, 1));
    CImagen chica = Imagen(kByte, 1, 3, std::vector<double>(3, 1));
    CImagen sinLeyenda = Imagen(kByte, 2, 3, std::vector<double>(6, 1));
    const std::string pr = Escribir(real, dir / "r"), pc = Escribir(chica, dir / "c"),
                      ps = Escribir(sinLeyenda, dir / "s");
    Espera({"estadisticas", "--original", c.s}, 2, Rechazo(Mensaje::Tabla(msg::kSeleccionarAntes, "la imagen clasificada")));
    Espera({"estadisticas", "--clasificada", pr, "--original", c.s}, 2, Rechazo(Mensaje::Tabla(msg::kClasificadaNoByte)));
    Espera({"estadisticas", "--clasificada", c.k}, 2,
           Rechazo(Mensaje::Tabla(msg::kNoSeleccionadaEntrada, "la imagen original", "una imagen")));
    Espera({"estadisticas", "--clasificada", c.k, "--original", pc}, 2,
           Rechazo(Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "imágenes clasificada y original")));
    Espera({"estadisticas", "--clasificada", ps, "--original", c.s}, 2, Rechazo(Mensaje::Tabla(msg::kLeyendaNoAbierta)));
    Espera({"estadisticas"}, 2, Rechazo(Mensaje::Tabla(msg::kNoSeleccionadaEntrada, "ninguna imagen", "una imagen")));
    Espera({"estadisticas", c.s}, 0);
}

TEST(Regresion, RectaCorrelacionYMascara) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        // Mean 2 and deviation 1 keep every figure exact.
        const CImagen x = Imagen(codigo, 2, 2, {1, 3, 1, 3}, "x");
        const CImagen y2 = Imagen(codigo, 2, 2, {5, 9, 5, 9}, "y");
        // Y identical to X; Y = 2 X + 3.
        const Resultado r1 = Operar("regresion", {&x, &x}, Valores{});
        EXPECT_EQ(r1.consola, "r: 1\na: 1\nb: 0\nR2: 1\nn: 4\n");
        const Resultado r2 = Operar("regresion", {&x, &y2}, Valores{});
        EXPECT_EQ(r2.consola, "r: 1\na: 2\nb: 3\nR2: 1\nn: 4\n");
        EXPECT_TRUE(r2.graficos.empty());
        // Mask on the first two pixels (1, 3) and (2, 1), whole means 2.5 and
        // 2: sums over the masked half, divisors the full N = 4.
        const CImagen xm = Imagen(codigo, 2, 2, {1, 2, 4, 5});
        const CImagen ym = Imagen(codigo, 2, 2, {3, 1, 2, 2});
        const CImagen m = Imagen(kByte, 2, 2, {1, 1, 0, 0});
        const auto f = CalcularRegresion(xm.pixeles, ym.pixeles, m.pixeles.Como<uint8_t>().data(), 2);
        ASSERT_TRUE(f);
        // Means with the mask: (1 + 2) / 4 = 0.75 and (3 + 1) / 4 = 1.
        EXPECT_EQ(f->mediaX, 0.75);
        EXPECT_EQ(f->mediaY, 1);
        // cov = ((0.25)(2) + (1.25)(0)) / 4 = 0.125.
        EXPECT_EQ(f->covarianza, 0.125);
        EXPECT_EQ(f->muestra, 2u);
        EXPECT_EQ(f->a, f->covarianza / (f->desvX * f->desvX));
    }
}

TEST(Regresion, DiagramaYComprobaciones) {
    // Byte bands from 0 to 255: each value is its own cell.
    const CImagen x = Imagen(kByte, 1, 4, {0, 0, 255, 10});
    const CImagen y = Imagen(kByte, 1, 4, {0, 0, 255, 20});
    const auto g = RejillaDispersion(x.pixeles, y.pixeles, nullptr, 0, 255, 0, 255);
    ASSERT_TRUE(g);
    EXPECT_EQ((*g)[0], 2u);
    EXPECT_EQ((*g)[255 * 256 + 255], 1u);
    EXPECT_EQ((*g)[20 * 256 + 10], 1u);
    // Scaled from each band's range: 10 in 0..20 is cell 127; a constant band cell 0.
    EXPECT_EQ(CeldaDiagrama(10, 0, 20), 127);
    EXPECT_EQ(CeldaDiagrama(20, 0, 20), 255);
    EXPECT_EQ(CeldaDiagrama(5, 5, 5), 0);
    const CImagen xr = Imagen(kReal, 1, 3, {0, 10, 20});
    const auto gr = RejillaDispersion(xr.pixeles, xr.pixeles, nullptr, 0, 20, 0, 20);
    EXPECT_EQ((*gr)[127 * 256 + 127], 1u);
    const Grafico d = DiagramaRegresion(*g, 0, 255, 0, 255, 1, 0, "x", "y");
    ASSERT_EQ(d.series.size(), 2u);
    EXPECT_EQ(d.series[0].puntos.size(), 3u);
    EXPECT_EQ(d.series[0].puntos[0].cuenta, 2u);
    EXPECT_EQ(d.series[0].color, 0x640000u);
    EXPECT_EQ(d.series[1].puntos[1].y, 255);
    // The window shows the chart; the CLI only with --diagrama.
    EXPECT_EQ(Operar("regresion", {&x, &y}, Valores{}, Destino::Ventana).graficos.size(), 1u);

    CarpetaPrueba dir;
    CImagen a = Imagen(kByte, 2, 2, {1, 2, 3, 4}), b = Imagen(kInteger, 2, 2, {1, 2, 3, 4}),
            c = Imagen(kByte, 1, 4, {1, 2, 3, 4}), mr = Imagen(kReal, 2, 2, {1, 1, 1, 1});
    const std::string pa = Escribir(a, dir / "a"), pb = Escribir(b, dir / "b"), pc = Escribir(c, dir / "c"),
                      pm = Escribir(mr, dir / "m");
    Espera({"regresion", pa, pb}, 2, Rechazo(Mensaje::Tabla(msg::kNoCoincide, "El tipo de dato", "bandas del eje OY y OX")));
    Espera({"regresion", pa, pc}, 2, Rechazo(Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "bandas del eje OY y OX")));
    Espera({"regresion", "--mascara", pm, pa, pa}, 2, Rechazo(Mensaje::Tabla(msg::kMascaraNoByte)));
    Espera({"regresion", "--mascara", pc, pa, pa}, 2,
           Rechazo(Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "bandas y la máscara")));
    EXPECT_EQ(Espera({"regresion", "--mascara", pa, pa, pa}, 0).out.substr(0, 5), "r: 1\n");
    Cabecera cab;
    EXPECT_EQ(ComprobarEleccion(*BuscarPorOrden("regresion"), 1, pa, cab, {std::nullopt}),
              Mensaje::Tabla(msg::kSeleccionarAntes, "la imagen del eje OX"));
}

TEST(Area, CategoriasCuentasYHectareas) {
    for (int codigo : {kByte, kInteger}) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        // 255, 0, 255, 0, 0, 255 at 30 m: two categories of 3 pixels, 0.27 ha each.
        const CImagen im = Imagen(codigo, 2, 3, {255, 0, 255, 0, 0, 255}, "verdad");
        const Resultado r = Operar("area", {&im}, Valores{});
        const std::string parte = codigo == kByte ? "50.00" : "0.00";
        EXPECT_EQ(r.consola,
                  "\n\nEste fichero muestra el área correspondiente a cada categoría  de la imagen:\n\n\tverdad"
                  "\n\n\n\tCategoría\tNúmero de píxeles\tHectáreas\t% del total\n\n"
                  "\t0\t\t3\t\t\t0.27\t\t" + parte + "\n"
                  "\t255\t\t3\t\t\t0.27\t\t" + parte + "\n");
        // A uniform image: one category with 100 % in both forms.
        const CImagen u = Imagen(codigo, 2, 2, {7, 7, 7, 7}, "u");
        CImagen km = Imagen(codigo, 2, 2, {7, 7, 7, 7}, "u");
        km.unidades = "km";
        EXPECT_EQ(Operar("area", {&km}, Valores{}).consola,
                  "\n\nEste fichero muestra el área correspondiente a cada categoría  de la imagen:\n\n\tu"
                  "\n\n\n\tCategoría\tNúmero de píxeles\t% del total\n\n\t7\t\t4\t\t100.00\n");
        const auto a = CalcularAreaCategorias(u.pixeles, "UTM-30N", "m", 30);
        ASSERT_TRUE(a);
        EXPECT_EQ(a->areas, (std::vector<float>{3600.0f}));
        EXPECT_FALSE(CalcularAreaCategorias(u.pixeles, "unknown", "m", 30)->conArea);
        EXPECT_FALSE(CalcularAreaCategorias(u.pixeles, "UTM-30N", "m", -1)->conArea);
    }
    // Integer categories past 255, ascending, and the whole-number share.
    const CImagen e = Imagen(kInteger, 1, 4, {40000, 3, 300, 3});
    const auto a = CalcularAreaCategorias(e.pixeles, "unknown", "m", 30);
    EXPECT_EQ(a->categorias, (std::vector<uint32_t>{3, 300, 40000}));
    EXPECT_EQ(a->cuentas, (std::vector<uint32_t>{2, 1, 1}));
    // Real and double are refused with 61251.
    for (int codigo : {kReal, kDouble}) {
        const CImagen r = Imagen(codigo, 1, 1, {1});
        EXPECT_EQ(*Operar("area", {&r}, Valores{}).Error(), Mensaje::Tabla(msg::kTipoNoByteInteger));
    }
    CarpetaPrueba dir;
    CImagen b = Imagen(kByte, 1, 2, {1, 2}, "b");
    const std::string pb = Escribir(b, dir / "b");
    const SalidaCli s = Espera({"area", "--informe", dir / "area.txt", pb}, 0);
    EXPECT_EQ(LeerFichero(dir / "area.txt"),
              "\n\nEste fichero muestra el \xE1rea correspondiente a cada categor\xED" "a  de la imagen:\n\n\tb"
              "\n\n\n\tCategor\xED" "a\tN\xFAmero de p\xEDxeles\tHect\xE1reas\t% del total\n\n"
              "\t1\t\t1\t\t\t0.09\t\t50.00\n\t2\t\t1\t\t\t0.09\t\t50.00\n");
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"area.txt", "b.inf", "b.ozm"}));
}

TEST(ComposicionColor, PlanosEscaladosPorBanda) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        // 100 samples 0..99: 2 % at position floor(1.98) = 1, 98 % at
        // ceil(97.02) = 98; 50 -> (49 / 97) x 255 = 128.8 -> 128.
        const CImagen b = Imagen(codigo, 10, 10, Serie(0, 100));
        const auto l = LimitesEscalado(b.pixeles, EscaladoColor::Lineal2);
        ASSERT_TRUE(l);
        EXPECT_EQ(l->bajo, 1);
        EXPECT_EQ(l->alto, 98);
        const auto mm = LimitesEscalado(b.pixeles, EscaladoColor::MinimoMaximo);
        EXPECT_EQ(mm->alto, 99);
        // Three bands: blue 0..99, green constant 5, red 99..0.
        std::vector<double> inversa = Serie(0, 100);
        std::reverse(inversa.begin(), inversa.end());
        const CImagen g = Imagen(codigo, 10, 10, std::vector<double>(100, 5)), r = Imagen(codigo, 10, 10, inversa);
        const auto p = ComponerColor(b.pixeles, g.pixeles, r.pixeles, 10, EscaladoColor::Lineal2);
        ASSERT_TRUE(p);
        EXPECT_EQ(p->azul[0], 0);
        EXPECT_EQ(p->azul[1], 0);
        EXPECT_EQ(p->azul[50], 128);
        EXPECT_EQ(p->azul[98], 255);
        EXPECT_EQ(p->verde[50], 0);
        EXPECT_EQ(p->Rgb(0), 0xFF0000u);
        EXPECT_EQ(p->Rgb(99), 0x0000FFu);
        const auto q = ComponerColor(b.pixeles, g.pixeles, r.pixeles, 10, EscaladoColor::MinimoMaximo);
        // 50 of 0..99: 50 / 99 x 255 = 128.8 -> 128; 1 -> 2.57 -> 2.
        EXPECT_EQ(q->azul[50], 128);
        EXPECT_EQ(q->azul[1], 2);
        EXPECT_EQ(q->Rgb(99), 0x0000FFu);
    }
    EXPECT_EQ(EscalarValor(std::nan(""), {0, 10}), 0);
    const CImagen a = Imagen(kByte, 1, 2, {1, 2}), d = Imagen(kReal, 1, 2, {1, 2});
    EXPECT_FALSE(ComponerColor(a.pixeles, a.pixeles, d.pixeles, 1, EscaladoColor::Lineal2));
}

// The order writes the composite's picture (PNG or BMP by the name) in the
// bands' own scaling and prints each band's limits; a band of another type
// is refused when picked.
TEST(ComposicionColor, OrdenConSuImagen) {
    CarpetaPrueba dir;
    CImagen ia = Imagen(kByte, 1, 2, {0, 255}, "a"), iv = Imagen(kByte, 1, 2, {40, 30}, "v"),
            ir = Imagen(kByte, 1, 2, {10, 20}, "r"), ix = Imagen(kReal, 1, 2, {10, 20}, "x");
    const std::string a = Escribir(ia, dir / "a"), v = Escribir(iv, dir / "v"), r = Escribir(ir, dir / "r"),
                      x = Escribir(ix, dir / "x");
    const SalidaCli s = Espera({"composicion-color", "--escalado", "minmax", "--imagen", dir / "c.png", a, v, r}, 0);
    EXPECT_EQ(s.out, "Rojo (r): 10 - 20\nVerde (v): 30 - 40\nAzul (a): 0 - 255\n");
    const PngLeido png = LeerPngLibpng(dir / "c.png");
    ASSERT_TRUE(png.ok);
    EXPECT_EQ(png.ancho, 2u);
    EXPECT_EQ(png.Color(0, 0), (std::array<uint8_t, 3>{0, 255, 0}));
    EXPECT_EQ(png.Color(1, 0), (std::array<uint8_t, 3>{255, 0, 255}));
    // BMP: 54 bytes of header, then the row padded to 8 bytes, blue first.
    Espera({"composicion-color", "--imagen", dir / "c.bmp", a, v, r}, 0);
    const std::string bmp = LeerFichero(dir / "c.bmp");
    ASSERT_EQ(bmp.size(), 62u);
    EXPECT_EQ(bmp.substr(54, 6), std::string("\x00\xff\x00\xff\x00\xff", 6));
    Espera({"composicion-color", a, v, x}, 2,
           Rechazo(Mensaje::Tabla(msg::kNoCoincide, relleno::kElTipoDeDato, relleno::kBandas)));
    // The mouse cannot choose a window outside the desktop.
    Espera({"enventanar", "--seleccion", "raton", a, dir / "w"}, 2, Rechazo(Mensaje::Tabla(msg::kEnventanarRaton)));
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"a.inf", "a.ozm", "v.inf", "v.ozm", "r.inf", "r.ozm", "x.inf",
                                                           "x.ozm", "c.png", "c.bmp"}));
}

TEST(Reformar, OrdenesDeLaLineaDeOrdenes) {
    CarpetaPrueba dir;
    CImagen m = Imagen(kInteger, 3, 3, Serie(1, 9), "m"), s = Imagen(kInteger, 1, 2, {70000 - 65536, 9}, "s");
    const std::string pm = Escribir(m, dir / "m"), ps = Escribir(s, dir / "s");
    Espera({"concatenar", "--debajo", pm, ps, dir / "c"}, 0);
    CImagen c;
    ASSERT_FALSE(c.Cargar(dir / "c.ozm"));
    EXPECT_EQ(Muestrario(c), (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9, 4464, 9, 0}));
    EXPECT_EQ(c.titulo, "m_Concatenada_a_s");
    Espera({"concatenar", "--derecha", "--debajo", pm, ps, dir / "d"}, 2, std::string(texto::kConcatenarUnaPosicion) + "\n");
    Espera({"concatenar", pm, ps, dir / "d"}, 64, "Uso: orvela-cli concatenar");
    Espera({"concatenar", "--fila", "1", "--columna", "3", pm, ps, dir / "d"}, 2,
           Rechazo(Mensaje::Tabla(msg::kConcatenarFuera)));
    Espera({"contraer", "--filas", "3", "--columnas", "1", pm, dir / "d"}, 2, Rechazo(Mensaje::Tabla(msg::kContraccionFilas)));
    Espera({"enventanar", "--fila-sup", "1", "--columna-sup", "1", "--fila-inf", "3", "--columna-inf", "4", pm, dir / "d"},
           2, Rechazo(Mensaje::Tabla(msg::kEnventanarFuera)));
    Espera({"enventanar", "--fila-sup", "1", "--columna-sup", "1", "--fila-inf", "3", "--columna-inf", "3", pm, dir / "w"}, 0);
    CImagen w;
    ASSERT_FALSE(w.Cargar(dir / "w.ozm"));
    EXPECT_EQ(Muestrario(w), (std::vector<double>{5, 6, 8, 9}));
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"c.inf", "c.ozm", "m.inf", "m.ozm", "s.inf", "s.ozm", "w.inf", "w.ozm"}));
}

TEST(Regresion, SumasPorParesDeValoresComoPorPixeles) {
    // The byte path sums over the counts of each pair of values; on a band
    // whose figures are not exact it agrees with the sums over the pixels
    // (the same figures through the integer type) to the last few bits.
    std::vector<double> vx(4000), vy(4000);
    std::vector<double> vm(4000);
    for (std::size_t i = 0; i < vx.size(); ++i) {
        vx[i] = static_cast<double>((i * 37) % 251);
        vy[i] = static_cast<double>((i * 11 + (i * i) % 97) % 256);
        vm[i] = (i % 3) != 0;
    }
    const CImagen bx = Imagen(kByte, 40, 100, vx), by = Imagen(kByte, 40, 100, vy);
    const CImagen ix = Imagen(kInteger, 40, 100, vx), iy = Imagen(kInteger, 40, 100, vy);
    const CImagen m = Imagen(kByte, 40, 100, vm);
    for (const uint8_t* mascara : {static_cast<const uint8_t*>(nullptr), m.pixeles.Como<uint8_t>().data()}) {
        const auto b = CalcularRegresion(bx.pixeles, by.pixeles, mascara, 40);
        const auto e = CalcularRegresion(ix.pixeles, iy.pixeles, mascara, 40);
        ASSERT_TRUE(b && e);
        EXPECT_EQ(b->mediaX, e->mediaX);
        EXPECT_EQ(b->muestra, e->muestra);
        EXPECT_NEAR(b->desvX, e->desvX, 1e-12 * e->desvX);
        EXPECT_NEAR(b->r, e->r, 1e-12);
        EXPECT_NEAR(b->a, e->a, 1e-12);
        EXPECT_NEAR(b->b, e->b, 1e-10);
        EXPECT_NEAR(b->r2, e->r2, 1e-6);
    }
}
