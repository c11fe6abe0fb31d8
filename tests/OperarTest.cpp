// Arithmetic, scalar and logical operations and functions: values per data
// type worked by hand, the deliberate quirks, checks and their messages,
// titles, the command line, and a few results on the Landsat bands.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <tuple>

#include "AritmeticaPrueba.h"
#include "operations/DosImagenes.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

enum { kSuma, kResta, kProducto, kCociente, kNormalizada, kSuperposicion };

double Referencia(int op, double valor) {
    volatile double x = valor;
    switch (op) {
        case 0: return x * x;
        case 1: return std::sqrt(x);
        case 2: return std::log(x);
        case 3: return std::exp(x);
        case 4: return std::sin(x);
        case 5: return std::cos(x);
        case 6: return std::tan(x);
        default: return std::fabs(x);
    }
}

std::vector<double> Aritmetica(int op, const CImagen& a, const CImagen& b) {
    Resultado r = Operar("aritmetica", {&a, &b}, Con({{Clave::Operacion, op}}));
    EXPECT_FALSE(r.error) << (r.error ? r.error->Texto() : "");
    if (r.imagenes.empty()) return {};
    EXPECT_EQ(r.imagenes[0].tipoDato, kDouble);
    return Muestrario(r.imagenes[0]);
}

}  // namespace

TEST(Aritmetica, DosImagenesDe200Y100EnCadaTipo) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        CImagen a = Imagen(codigo, 1, 2, {200, 0}, "b3");
        CImagen b = Imagen(codigo, 1, 2, {100, 100}, "b4");
        EXPECT_EQ(Aritmetica(kSuma, a, b), (std::vector<double>{300, 100}));
        EXPECT_EQ(Aritmetica(kResta, a, b), (std::vector<double>{100, -100}));
        EXPECT_EQ(Aritmetica(kProducto, a, b), (std::vector<double>{20000, 0}));
        EXPECT_EQ(Aritmetica(kCociente, a, b), (std::vector<double>{2, 0}));
        EXPECT_EQ(Aritmetica(kNormalizada, a, b), (std::vector<double>{100.0 / 300.0, -1}));
        EXPECT_EQ(Aritmetica(kSuperposicion, a, b), (std::vector<double>{200, 100}));

        Resultado r = Operar("aritmetica", {&a, &b}, Con({{Clave::Operacion, kNormalizada}}));
        ASSERT_EQ(r.imagenes.size(), 1u);
        EXPECT_EQ(r.imagenes[0].titulo, "b3_Suma_Entre_Diferencia_Con_b4");
    }
    const char* titulos[] = {"b3_Sumada_Con_b4",       "b3_Menos_b4",
                             "b3_Multiplicada_Por_b4", "b3_Dividida_Entre_b4",
                             "b3_Suma_Entre_Diferencia_Con_b4", "b3_Superpuesta_A_b4"};
    CImagen a = Imagen(kByte, 1, 1, {1}, "b3"), b = Imagen(kByte, 1, 1, {1}, "b4");
    for (int op = 0; op < 6; ++op)
        EXPECT_EQ(Operar("aritmetica", {&a, &b}, Con({{Clave::Operacion, op}})).imagenes.at(0).titulo, titulos[op]);
}

TEST(Aritmetica, PeculiaridadesDeCadaTipo) {
    // Integer quotients for byte and integer, floating point for the others.
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        const bool entero = codigo == kByte || codigo == kInteger;
        CImagen a = Imagen(codigo, 1, 2, {7, 1}), b = Imagen(codigo, 1, 2, {2, 3});
        EXPECT_EQ(Aritmetica(kCociente, a, b), (entero ? std::vector<double>{3, 0} : std::vector<double>{3.5, 1.0 / 3.0}));
        // Normalised difference: integer numerator and denominator, the
        // division in floating point.
        EXPECT_EQ(Aritmetica(kNormalizada, a, b), (std::vector<double>{5.0 / 9.0, -0.5}));
    }
    // Integer: the sum alone reads the samples as signed 16-bit numbers.
    CImagen x = Imagen(kInteger, 1, 2, {0xFFFF, 40000}), uno = Imagen(kInteger, 1, 2, {1, 1});
    EXPECT_EQ(Aritmetica(kSuma, x, uno), (std::vector<double>{0, 40000.0 - 65536.0 + 1}));
    EXPECT_EQ(Aritmetica(kResta, x, uno), (std::vector<double>{65534, 39999}));
    EXPECT_EQ(Aritmetica(kCociente, x, uno), (std::vector<double>{65535, 40000}));
    // The 32-bit product wraps to negative values from 2^31 on.
    CImagen p = Imagen(kInteger, 1, 3, {50000, 65535, 46341}), q = Imagen(kInteger, 1, 3, {50000, 65535, 46340});
    EXPECT_EQ(Aritmetica(kProducto, p, q), (std::vector<double>{-1794967296.0, -131071.0, 2147441940.0}));
    // Superposition: a real -0.0 counts as zero; B comes through exactly.
    CImagen r = Imagen(kReal, 1, 3, {-0.0, 0.0, 0.1}), s = Imagen(kReal, 1, 3, {2.5, -7.25, 9});
    EXPECT_EQ(Aritmetica(kSuperposicion, r, s), (std::vector<double>{2.5, -7.25, static_cast<double>(0.1f)}));
    // A real sum is formed in double, not in float.
    CImagen f = Imagen(kReal, 1, 1, {16777216}), g = Imagen(kReal, 1, 1, {1});
    EXPECT_EQ(Aritmetica(kSuma, f, g), (std::vector<double>{16777217}));
}

TEST(Aritmetica, UnSoloCeroDetieneElCocienteEntero) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        // The zero sits in the last sample, after a long run of good ones.
        std::vector<double> va(5000, 9), vb(5000, 3), vc(5000, 1);
        vb.back() = 0;
        va.back() = 0;
        vc.back() = 0;
        CImagen a = Imagen(codigo, 50, 100, va), b = Imagen(codigo, 50, 100, vb), c = Imagen(codigo, 50, 100, vc);
        for (auto [op, x, y] : {std::tuple{kCociente, &a, &b}, std::tuple{kNormalizada, &a, &c}}) {
            Resultado fichero = Operar("aritmetica", {x, y}, Con({{Clave::Operacion, op}}), Destino::Fichero);
            EXPECT_EQ(fichero.error, Mensaje::Tabla(msg::kDivisionCeroFichero));
            EXPECT_TRUE(fichero.imagenes.empty());
            Resultado ventana = Operar("aritmetica", {x, y}, Con({{Clave::Operacion, op}}), Destino::Ventana);
            EXPECT_EQ(ventana.error, Mensaje::Tabla(msg::kDivisionCeroVentana));
            EXPECT_EQ(ventana.entradaEnVentana, 1);
            EXPECT_TRUE(ventana.imagenes.empty());
        }
    }
    // A real denominator of -0.0, or A + B adding up to zero, stops too.
    CImagen a = Imagen(kReal, 1, 2, {1, 0.5}), b = Imagen(kReal, 1, 2, {-0.0, 1});
    EXPECT_EQ(Operar("aritmetica", {&a, &b}, Con({{Clave::Operacion, kCociente}})).error,
              Mensaje::Tabla(msg::kDivisionCeroFichero));
    CImagen c = Imagen(kDouble, 1, 2, {1, 0.5}), d = Imagen(kDouble, 1, 2, {2, -0.5});
    EXPECT_EQ(Operar("aritmetica", {&c, &d}, Con({{Clave::Operacion, kNormalizada}})).error,
              Mensaje::Tabla(msg::kDivisionCeroFichero));
}

TEST(Aritmetica, EleccionDeLaSegundaImagenYGeorreferencia) {
    Cabecera byte33{"a", "byte", "binary", 3, 3, "UTM-30N", "m", {}};
    Cabecera real33 = byte33, byte34 = byte33, real34 = byte33;
    real33.nombreTipo = "real";
    byte34.columnas = 4;
    real34.nombreTipo = "real";
    real34.columnas = 4;
    const Declaracion& d = *BuscarPorOrden("aritmetica");
    EXPECT_EQ(d.alElegir(1, byte33, {std::nullopt, std::nullopt}),
              Mensaje::Tabla(msg::kSeleccionarAntes, "la primera imagen"));
    EXPECT_EQ(d.alElegir(1, real34, {byte33, std::nullopt}),
              Mensaje::Tabla(msg::kNoCoincide, "El tipo de dato", "imágenes"));
    EXPECT_EQ(d.alElegir(1, byte34, {byte33, std::nullopt}),
              Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "imágenes"));
    EXPECT_EQ(d.alElegir(1, byte33, {byte33, std::nullopt}), std::nullopt);
    EXPECT_EQ(d.alElegir(0, real33, {std::nullopt, std::nullopt}), std::nullopt);
    // A first image picked again must still agree with the second.
    EXPECT_EQ(d.alElegir(0, byte34, {byte33, byte33}), Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "imágenes"));

    CImagen a = Imagen(kByte, 1, 1, {1}), b = Imagen(kByte, 1, 1, {2});
    auto sistema = [&] {
        return Operar("aritmetica", {&a, &b}, Con({{Clave::Operacion, kSuma}})).imagenes.at(0).sistemaReferencia;
    };
    EXPECT_EQ(sistema(), "UTM-30N");
    b.geo.resolucion = 28.5f;
    EXPECT_EQ(sistema(), "unknown");
    b.geo = a.geo;
    b.unidades = "km";
    EXPECT_EQ(sistema(), "unknown");
    b.unidades = a.unidades;
    b.sistemaReferencia = "UTM-31N";
    EXPECT_EQ(sistema(), "unknown");
    // Images that disagree never reach the kernel, whatever the course.
    CImagen c = Imagen(kByte, 1, 2, {1, 2});
    EXPECT_EQ(Operar("aritmetica", {&a, &c}, Con({{Clave::Operacion, kSuma}})).error,
              Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "imágenes"));
}

TEST(Escalar, CuatroOperacionesYEscalarNoPositivo) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        const double alto = codigo == kByte ? 255 : 65535;
        CImagen a = Imagen(codigo, 1, 3, {10, 0, alto}, "tm2");
        const std::vector<std::vector<double>> esperado = {
            {14, 4, alto + 4}, {6, -4, alto - 4}, {40, 0, alto * 4}, {2.5, 0, alto / 4}};
        for (int op = 0; op < 4; ++op) {
            Resultado r = Operar("escalar", {&a}, Con({{Clave::Operacion, op}, {Clave::Escalar, 4}}));
            ASSERT_EQ(r.imagenes.size(), 1u);
            EXPECT_EQ(r.imagenes[0].tipoDato, kDouble);
            EXPECT_EQ(Muestrario(r.imagenes[0]), esperado[op]);
            EXPECT_EQ(r.imagenes[0].titulo, "tm2");  // no suffix
        }
    }
    const Declaracion& d = *BuscarPorOrden("escalar");
    const Mensaje rechazo = Mensaje::Tabla(msg::kNoSeleccionadaEntrada, "un valor correcto para el escalar", "un valor >0");
    EXPECT_EQ(rechazo.Texto(),
              "No se ha seleccionado un valor correcto para el escalar de entrada.\n\nElija un valor >0 para realizar "
              "la operación.");
    for (int op = 0; op < 4; ++op) {
        EXPECT_EQ(d.alAceptar(Con({{Clave::Operacion, op}, {Clave::Escalar, 0}})), rechazo);
        EXPECT_EQ(d.alAceptar(Con({{Clave::Operacion, op}, {Clave::Escalar, -2.5}})), rechazo);
        EXPECT_EQ(d.alAceptar(Con({{Clave::Operacion, op}, {Clave::Escalar, 1e-9}})), std::nullopt);
    }
}

TEST(Logica, AndOrXorEnByteEInteger) {
    for (int codigo : {kByte, kInteger}) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        const double alto = codigo == kByte ? 0xF0 : 0xF00F;
        CImagen a = Imagen(codigo, 1, 3, {0x0C, alto, 0}, "p"), b = Imagen(codigo, 1, 3, {0x0A, 0x3C, 0}, "q");
        const double bajo = codigo == kByte ? 0x30 : 0x0C;
        const std::vector<std::vector<double>> esperado = {
            {0x08, bajo, 0}, {0x0E, codigo == kByte ? 0xFC : 0xF03F * 1.0, 0}, {0x06, codigo == kByte ? 0xCC : 0xF033 * 1.0, 0}};
        const char* sufijos[] = {"p_And_q", "p_Or_q", "p_Xor_q"};
        for (int op = 0; op < 3; ++op) {
            Resultado r = Operar("logica", {&a, &b}, Con({{Clave::Operacion, op}}));
            ASSERT_EQ(r.imagenes.size(), 1u);
            EXPECT_EQ(r.imagenes[0].tipoDato, codigo);
            EXPECT_EQ(Muestrario(r.imagenes[0]), esperado[op]);
            EXPECT_EQ(r.imagenes[0].titulo, sufijos[op]);
        }
        Resultado x = Operar("logica", {&a, &a}, Con({{Clave::Operacion, 2}}));
        EXPECT_EQ(x.imagenes.at(0).tipoDato, codigo);
        EXPECT_EQ(Muestrario(x.imagenes.at(0)), (std::vector<double>{0, 0, 0}));
    }
    // Real and double images are refused when picked first; should one
    // reach the kernel all the same, its type is not recognised.
    const Declaracion& d = *BuscarPorOrden("logica");
    for (const char* tipo : {"real", "double"}) {
        Cabecera c{"a", tipo, "binary", 2, 2, "", "m", {}};
        EXPECT_EQ(d.alElegir(0, c, {std::nullopt, std::nullopt}), Mensaje::Tabla(msg::kTipoNoByteInteger));
    }
    Cabecera bc{"a", "byte", "binary", 2, 2, "", "m", {}}, ic = bc;
    ic.nombreTipo = "integer";
    EXPECT_EQ(d.alElegir(1, ic, {bc, std::nullopt}), Mensaje::Tabla(msg::kNoCoincide, "El tipo de dato", "imágenes"));
    CImagen r = Imagen(kReal, 1, 1, {1});
    EXPECT_EQ(Operar("logica", {&r, &r}, Con({{Clave::Operacion, 0}})).error, Mensaje::Tabla(msg::kTipoNoReconocido));
}

TEST(Funcion, OchoFuncionesEnCadaTipo) {
    const char* sufijos[] = {"_^2", "_sqrt", "_ln", "_exp", "_seno", "_coseno", "_tangente", "_valor_absoluto"};
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        CImagen a = Imagen(codigo, 1, 3, {4, 1, 200}, "tm5");
        for (int op = 0; op < 8; ++op) {
            Resultado r = Operar("funcion", {&a}, Con({{Clave::Operacion, op}}));
            ASSERT_EQ(r.imagenes.size(), 1u) << op;
            EXPECT_EQ(r.imagenes[0].tipoDato, kDouble);
            EXPECT_EQ(r.imagenes[0].titulo, std::string("tm5") + sufijos[op]);
            // The library's functions at run time, on values it cannot fold.
            const auto v = Muestrario(r.imagenes[0]);
            EXPECT_EQ(v, (std::vector<double>{Referencia(op, 4), Referencia(op, 1), Referencia(op, 200)}));
            switch (op) {
                case 0: EXPECT_EQ(v, (std::vector<double>{16, 1, 40000})); break;
                case 1: EXPECT_EQ(v[0], 2); break;
                case 2: EXPECT_EQ(v[1], 0); break;
                case 7: EXPECT_EQ(v, (std::vector<double>{4, 1, 200})); break;
            }
        }
    }
    // Signed samples: absolute value, square and overflow kept as it comes.
    CImagen d = Imagen(kDouble, 1, 3, {-3, -0.5, 1000});
    EXPECT_EQ(Muestrario(Operar("funcion", {&d}, Con({{Clave::Operacion, 7}})).imagenes.at(0)),
              (std::vector<double>{3, 0.5, 1000}));
    EXPECT_EQ(Muestrario(Operar("funcion", {&d}, Con({{Clave::Operacion, 0}})).imagenes.at(0)),
              (std::vector<double>{9, 0.25, 1e6}));
    EXPECT_EQ(Muestrario(Operar("funcion", {&d}, Con({{Clave::Operacion, 3}})).imagenes.at(0))[2],
              std::numeric_limits<double>::infinity());
}

TEST(Funcion, DominioDeRaizYLogaritmoConElMinimo) {
    const Mensaje raiz = Mensaje::Tabla(msg::kRaizNegativos), ln = Mensaje::Tabla(msg::kLogaritmoPositivos);
    auto error = [](const CImagen& a, int op) { return Operar("funcion", {&a}, Con({{Clave::Operacion, op}})).error; };
    // ln of any image holding a 0, whatever its type.
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        CImagen cero = Imagen(codigo, 2, 2, {5, 9, 0, 7});
        EXPECT_EQ(error(cero, 2), ln);
        EXPECT_EQ(error(cero, 1), std::nullopt);  // the square root of 0 is fine
        CImagen positiva = Imagen(codigo, 2, 2, {5, 9, 1, 7});
        EXPECT_EQ(error(positiva, 2), std::nullopt);
    }
    // Negative samples: only real and double images can hold them.
    for (int codigo : {kReal, kDouble}) {
        CImagen neg = Imagen(codigo, 1, 3, {4, -0.25, 9});
        EXPECT_EQ(error(neg, 1), raiz);
        EXPECT_EQ(error(neg, 2), ln);
        EXPECT_EQ(error(neg, 7), std::nullopt);
        CImagen menosCero = Imagen(codigo, 1, 2, {-0.0, 4});
        EXPECT_EQ(error(menosCero, 1), std::nullopt);
    }
    // The square root of an integer image is always allowed.
    CImagen entero = Imagen(kInteger, 1, 2, {65535, 0});
    Resultado r = Operar("funcion", {&entero}, Con({{Clave::Operacion, 1}}));
    EXPECT_EQ(Muestrario(r.imagenes.at(0)), (std::vector<double>{std::sqrt(65535.0), 0}));
}

TEST(OperarCli, OrdenesDeImagenesEnFicheros) {
    const std::string dir = Carpeta("operar_cli");
    CImagen a = Imagen(kByte, 2, 2, {7, 200, 9, 0}, "uno"), b = Imagen(kByte, 2, 2, {2, 100, 0, 5}, "dos");
    CImagen c = Imagen(kByte, 2, 2, {2, 100, 1, 5}, "tres"), r = Imagen(kReal, 2, 2, {1, 2, 3, 4}, "real");
    CImagen e = Imagen(kByte, 2, 3, {1, 2, 3, 4, 5, 6}, "ancha");
    const std::string pa = Escribir(a, dir + "/uno"), pb = Escribir(b, dir + "/dos"), pc = Escribir(c, dir + "/tres");
    const std::string pr = Escribir(r, dir + "/real"), pe = Escribir(e, dir + "/ancha");

    auto s = Cli({"aritmetica", "--op", "cociente", pa, pc, dir + "/q.ozm"});
    EXPECT_EQ(s.rc, 0) << s.err;
    CImagen q;
    ASSERT_FALSE(q.Cargar(dir + "/q.ozm"));
    EXPECT_EQ(q.tipoDato, kDouble);
    EXPECT_EQ(q.titulo, "uno_Dividida_Entre_tres");
    EXPECT_EQ(Muestrario(q), (std::vector<double>{3, 2, 9, 0}));

    // A zero denominator: refused, nothing written.
    s = Cli({"aritmetica", "--op", "cociente", pa, pb, dir + "/z"});
    EXPECT_EQ(s.rc, 2);
    EXPECT_EQ(s.err, Rechazo(Mensaje::Tabla(msg::kDivisionCeroFichero)));
    EXPECT_FALSE(std::filesystem::exists(dir + "/z.ozm"));
    EXPECT_FALSE(std::filesystem::exists(dir + "/z.inf"));

    // Type is checked before dimensions.
    s = Cli({"aritmetica", "--op", "suma", pe, pr, dir + "/x"});
    EXPECT_EQ(s.rc, 2);
    EXPECT_EQ(s.err, Rechazo(Mensaje::Tabla(msg::kNoCoincide, "El tipo de dato", "imágenes")));
    s = Cli({"logica", "--op", "or", pa, pe, dir + "/x"});
    EXPECT_EQ(s.err, Rechazo(Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "imágenes")));
    s = Cli({"logica", "--op", "and", pr, pr, dir + "/x"});
    EXPECT_EQ(s.rc, 2);
    EXPECT_EQ(s.err, Rechazo(Mensaje::Tabla(msg::kTipoNoByteInteger)));

    s = Cli({"logica", "--op", "xor", pa, pa, dir + "/l"});
    EXPECT_EQ(s.rc, 0) << s.err;
    CImagen l;
    ASSERT_FALSE(l.Cargar(dir + "/l.ozm"));
    EXPECT_EQ(l.tipoDato, kByte);
    EXPECT_EQ(l.titulo, "uno_Xor_uno");

    s = Cli({"escalar", "--op", "suma", "--escalar", "0", pa, dir + "/x"});
    EXPECT_EQ(s.rc, 2);
    EXPECT_EQ(s.err, "61219: No se ha seleccionado un valor correcto para el escalar de entrada.\n\n"
                     "Elija un valor >0 para realizar la operación.\n");
    s = Cli({"escalar", "--op", "producto", "--escalar", "-1", pa, dir + "/x"});
    EXPECT_EQ(s.rc, 2);
    s = Cli({"escalar", "--op", "cociente", "--escalar", "0.5", pa, dir + "/e"});
    EXPECT_EQ(s.rc, 0) << s.err;

    s = Cli({"funcion", "--op", "ln", pa, dir + "/x"});
    EXPECT_EQ(s.rc, 2);
    EXPECT_EQ(s.err, Rechazo(Mensaje::Tabla(msg::kLogaritmoPositivos)));
    s = Cli({"funcion", "--op", "cuadrado", pa, dir + "/f"});
    EXPECT_EQ(s.rc, 0) << s.err;
    CImagen f;
    ASSERT_FALSE(f.Cargar(dir + "/f.ozm"));
    EXPECT_EQ(f.titulo, "uno_^2");

    EXPECT_EQ(Cli({"aritmetica", "--op", "potencia", pa, pb, dir + "/x"}).rc, 64);
    EXPECT_EQ(Cli({"escalar", "--op", "suma", "--escalar", "dos", pa, dir + "/x"}).rc, 64);
    EXPECT_EQ(Cli({"funcion", "--op", "raiz", pa}).rc, 64);
    EXPECT_FALSE(std::filesystem::exists(dir + "/x.ozm"));
}

TEST(OperarLandsat, CoincideConElCalculoDirecto) {
    if (!std::filesystem::exists(Datos("tm3"))) GTEST_SKIP() << "sin datos Landsat";
    CImagen b3, b4;
    ASSERT_FALSE(b3.Cargar(Datos("tm3")));
    ASSERT_FALSE(b4.Cargar(Datos("tm4")));
    const auto r3 = b3.pixeles.Como<uint8_t>(), r4 = b4.pixeles.Como<uint8_t>();

    // Normalised difference of the near infrared and the red band.
    Resultado nd = Operar("aritmetica", {&b4, &b3}, Con({{Clave::Operacion, kNormalizada}}));
    ASSERT_EQ(nd.imagenes.size(), 1u);
    EXPECT_EQ(nd.imagenes[0].titulo, "tm4_Suma_Entre_Diferencia_Con_tm3");
    EXPECT_EQ(nd.imagenes[0].sistemaReferencia, "UTM-22N");
    const auto v = nd.imagenes[0].pixeles.Como<double>();
    std::size_t distintos = 0;
    for (std::size_t i = 0; i < v.size(); ++i) {
        const int num = int{r4[i]} - int{r3[i]}, den = int{r4[i]} + int{r3[i]};
        if (v[i] != static_cast<double>(num) / den) ++distintos;
    }
    EXPECT_EQ(distintos, 0u);

    // Integer quotient and product.
    Resultado q = Operar("aritmetica", {&b4, &b3}, Con({{Clave::Operacion, kCociente}}));
    Resultado p = Operar("aritmetica", {&b4, &b3}, Con({{Clave::Operacion, kProducto}}));
    const auto vq = q.imagenes.at(0).pixeles.Como<double>(), vp = p.imagenes.at(0).pixeles.Como<double>();
    distintos = 0;
    for (std::size_t i = 0; i < vq.size(); ++i)
        if (vq[i] != r4[i] / r3[i] || vp[i] != r4[i] * r3[i]) ++distintos;
    EXPECT_EQ(distintos, 0u);

    // Natural logarithm of a band without zeros, looked up per value.
    Resultado ln = Operar("funcion", {&b3}, Con({{Clave::Operacion, 2}}));
    const auto vl = ln.imagenes.at(0).pixeles.Como<double>();
    distintos = 0;
    for (std::size_t i = 0; i < vl.size(); ++i)
        if (vl[i] != std::log(static_cast<double>(r3[i]))) ++distintos;
    EXPECT_EQ(distintos, 0u);
}

TEST(OperarDeclaraciones, ComandosTitulosYOpciones) {
    struct Esperado {
        int id;
        const char* orden;
        const char* titulo;
        std::size_t entradas, opciones;
    };
    for (const Esperado& e : {Esperado{32780, "aritmetica", "Operaciones aritméticas", 2, 6},
                              Esperado{32781, "escalar", "Operaciones escalares", 1, 4},
                              Esperado{32779, "logica", "Operaciones lógicas", 2, 3},
                              Esperado{32860, "funcion", "Funciones", 1, 8},
                              Esperado{32824, "contraste", "Expansión del contraste", 1, 3}}) {
        const Declaracion* d = BuscarPorComando(e.id);
        ASSERT_NE(d, nullptr) << e.id;
        EXPECT_EQ(d, BuscarPorOrden(e.orden));
        EXPECT_STREQ(d->titulo, e.titulo);
        EXPECT_EQ(d->entradas.size(), e.entradas);
        std::size_t opciones = 0;
        for (const Campo& c : d->campos) opciones += c.opciones.size();
        EXPECT_EQ(opciones, e.opciones) << e.orden;
        EXPECT_EQ(d->tituloConSegunda, e.entradas == 2);
    }
    // Two-image dialogs name what is missing, one by one.
    const Declaracion& a = *BuscarPorOrden("aritmetica");
    EXPECT_STREQ(a.entradas[0].nombre, "la primera imagen");
    EXPECT_STREQ(a.entradas[1].nombre, "la segunda imagen");
    EXPECT_FALSE(a.entradas[0].admiteVentanaActiva);
}
