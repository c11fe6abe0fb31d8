// Arithmetic, scalar and logical operations and functions: values per data
// type worked by hand, the deliberate quirks, checks and their messages,
// titles, the command line, and the lookup and quotient shortcuts against
// the plain computation.
#include "tests/Prueba.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

enum { kSuma, kResta, kProducto, kCociente, kNormalizada, kSuperposicion };

Resultado Dos(const char* orden, int op, const CImagen& a, const CImagen& b, Destino d = Destino::Fichero) {
    return Operar(orden, {&a, &b}, Con(orden, {{"operacion", op}}), d);
}
std::vector<double> Aritmetica(int op, const CImagen& a, const CImagen& b) {
    const Resultado r = Dos("aritmetica", op, a, b);
    EXPECT_EQ(r.imagenes.empty() ? 0 : r.imagenes[0].tipoDato, kDouble);
    return Resultante(r);
}
Resultado Funcion(const CImagen& a, int op) { return Operar("funcion", {&a}, Con("funcion", {{"operacion", op}})); }
// The header of a 3-row image as a file picker reads it.
Cabecera Cab(const char* tipo, int columnas = 3) { return {"a", tipo, "binary", columnas, 3, "UTM-30N", "m", {}}; }
const std::optional<Cabecera> nada;

}  // namespace

TEST(Aritmetica, ValoresTitulosYPeculiaridadesDeCadaTipo) {
    const char* sufijos[] = {"_Sumada_Con_",    "_Menos_", "_Multiplicada_Por_", "_Dividida_Entre_",
                             "_Suma_Entre_Diferencia_Con_", "_Superpuesta_A_"};
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        const bool entero = codigo == kByte || codigo == kInteger;
        const CImagen a = Imagen(codigo, 1, 4, {200, 0, 7, 1}, "b3"), b = Imagen(codigo, 1, 4, {100, 100, 2, 3}, "b4");
        const std::vector<std::vector<double>> esperado = {
            {300, 100, 9, 4}, {100, -100, 5, -2}, {20000, 0, 14, 3},
            entero ? std::vector<double>{2, 0, 3, 0} : std::vector<double>{2, 0, 3.5, 1.0 / 3.0},
            // integer numerator and denominator, the division in floating point
            {100.0 / 300.0, -1, 5.0 / 9.0, -0.5}, {200, 100, 7, 1}};
        for (int op = 0; op < 6; ++op) {
            EXPECT_EQ(Aritmetica(op, a, b), esperado[op]) << op;
            EXPECT_EQ(Dos("aritmetica", op, a, b).imagenes.at(0).titulo, std::string("b3") + sufijos[op] + "b4");
        }
    }
    // Integer: the sum alone reads the samples as signed 16-bit numbers.
    const CImagen x = Imagen(kInteger, 1, 2, {0xFFFF, 40000}), uno = Imagen(kInteger, 1, 2, {1, 1});
    EXPECT_EQ(Aritmetica(kSuma, x, uno), (std::vector<double>{0, 40000.0 - 65536.0 + 1}));
    EXPECT_EQ(Aritmetica(kResta, x, uno), (std::vector<double>{65534, 39999}));
    EXPECT_EQ(Aritmetica(kCociente, x, uno), (std::vector<double>{65535, 40000}));
    // The 32-bit product wraps to negative values from 2^31 on.
    const CImagen p = Imagen(kInteger, 1, 3, {50000, 65535, 46341}), q = Imagen(kInteger, 1, 3, {50000, 65535, 46340});
    EXPECT_EQ(Aritmetica(kProducto, p, q), (std::vector<double>{-1794967296.0, -131071.0, 2147441940.0}));
    // Superposition: a real -0.0 counts as zero; B comes through exactly.
    const CImagen r = Imagen(kReal, 1, 3, {-0.0, 0.0, 0.1}), s = Imagen(kReal, 1, 3, {2.5, -7.25, 9});
    EXPECT_EQ(Aritmetica(kSuperposicion, r, s), (std::vector<double>{2.5, -7.25, static_cast<double>(0.1f)}));
    // A real sum is formed in double, not in float.
    EXPECT_EQ(Aritmetica(kSuma, Imagen(kReal, 1, 1, {16777216}), Imagen(kReal, 1, 1, {1})), std::vector<double>{16777217});
}

TEST(Aritmetica, UnSoloCeroDetieneElCociente) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        // The zero sits in the last sample, after a long run of good ones.
        std::vector<double> va(5000, 9), vb(5000, 3), vc(5000, 1);
        va.back() = vb.back() = vc.back() = 0;
        const CImagen a = Imagen(codigo, 50, 100, va), b = Imagen(codigo, 50, 100, vb), c = Imagen(codigo, 50, 100, vc);
        for (auto [op, y] : {std::pair{kCociente, &b}, {kNormalizada, &c}}) {
            const Resultado fichero = Dos("aritmetica", op, a, *y);
            EXPECT_EQ(fichero.Motivo(), Mensaje::Tabla(msg::kDivisionCeroFichero));
            EXPECT_TRUE(fichero.imagenes.empty());
            const Resultado ventana = Dos("aritmetica", op, a, *y, Destino::Ventana);
            EXPECT_EQ(ventana.Motivo(), Mensaje::Tabla(msg::kDivisionCeroVentana));
            EXPECT_EQ(ventana.entradaEnVentana, 1);
            EXPECT_TRUE(ventana.imagenes.empty());
        }
    }
    // A real denominator of -0.0, or A + B adding up to zero, stops too.
    EXPECT_EQ(Dos("aritmetica", kCociente, Imagen(kReal, 1, 2, {1, 0.5}), Imagen(kReal, 1, 2, {-0.0, 1})).Motivo(),
              Mensaje::Tabla(msg::kDivisionCeroFichero));
    EXPECT_EQ(Dos("aritmetica", kNormalizada, Imagen(kDouble, 1, 2, {1, 0.5}), Imagen(kDouble, 1, 2, {2, -0.5})).Motivo(),
              Mensaje::Tabla(msg::kDivisionCeroFichero));
}

TEST(Aritmetica, CocienteEnteroIgualALaDivisionEntera) {
    // The integer quotient goes through a double division; it must give the
    // truncated quotient for every pair of 16-bit samples.
    std::mt19937 azar(7);
    std::vector<double> va = {65535, 65535, 65534, 1, 65535}, vb = {1, 65535, 65535, 65535, 2};
    for (int i = 0; i < 20000; ++i) {
        va.push_back(azar() % 65536);
        vb.push_back(1 + azar() % (i % 2 ? 65535 : 300));
    }
    std::vector<double> esperado;
    for (std::size_t i = 0; i < va.size(); ++i)
        esperado.push_back(static_cast<double>(static_cast<uint32_t>(va[i]) / static_cast<uint32_t>(vb[i])));
    const long n = static_cast<long>(va.size());
    EXPECT_EQ(Aritmetica(kCociente, Imagen(kInteger, 1, n, va), Imagen(kInteger, 1, n, vb)), esperado);
}

TEST(Aritmetica, EleccionDeLaSegundaImagenYGeorreferencia) {
    const Mensaje tipo = Mensaje::Tabla(msg::kNoCoincide, "El tipo de dato", "imágenes"),
                  dimensiones = Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "imágenes");
    const Declaracion& d = *BuscarPorOrden("aritmetica");
    EXPECT_EQ(d.alElegir(1, Cab("byte"), {nada, nada}), Mensaje::Tabla(msg::kSeleccionarAntes, "la primera imagen"));
    EXPECT_EQ(d.alElegir(1, Cab("real", 4), {Cab("byte"), nada}), tipo);  // the type is told first
    EXPECT_EQ(d.alElegir(1, Cab("byte", 4), {Cab("byte"), nada}), dimensiones);
    EXPECT_EQ(d.alElegir(1, Cab("byte"), {Cab("byte"), nada}), std::nullopt);
    EXPECT_EQ(d.alElegir(0, Cab("real"), {nada, nada}), std::nullopt);
    // A first image picked again must still agree with the second.
    EXPECT_EQ(d.alElegir(0, Cab("byte", 4), {Cab("byte"), Cab("byte")}), dimensiones);
    // Images that disagree never reach the kernel, whatever the course.
    CImagen a = Imagen(kByte, 1, 1, {1}), b = Imagen(kByte, 1, 1, {2});
    EXPECT_EQ(Dos("aritmetica", kSuma, a, Imagen(kByte, 1, 2, {1, 2})).Motivo(), dimensiones);

    // The result keeps the first image's reference system only when both
    // georeferences agree exactly.
    auto sistema = [&] { return Dos("aritmetica", kSuma, a, b).imagenes.at(0).sistemaReferencia; };
    EXPECT_EQ(sistema(), "UTM-30N");
    b.geo.resolucion = 28.5f;
    EXPECT_EQ(sistema(), "unknown");
    b.geo = a.geo;
    b.unidades = "km";
    EXPECT_EQ(sistema(), "unknown");
    b.unidades = a.unidades;
    b.sistemaReferencia = "UTM-31N";
    EXPECT_EQ(sistema(), "unknown");
}

TEST(Escalar, CuatroOperacionesYEscalarNoPositivo) {
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        const double alto = codigo == kByte ? 255 : 65535;
        const CImagen a = Imagen(codigo, 1, 3, {10, 0, alto}, "tm2");
        const std::vector<std::vector<double>> esperado = {
            {14, 4, alto + 4}, {6, -4, alto - 4}, {40, 0, alto * 4}, {2.5, 0, alto / 4}};
        for (int op = 0; op < 4; ++op) {
            const Resultado r = Operar("escalar", {&a}, Con("escalar", {{"operacion", op}, {"escalar", 4}}));
            EXPECT_EQ(Resultante(r), esperado[op]);
            EXPECT_EQ(r.imagenes.at(0).tipoDato, kDouble);
            EXPECT_EQ(r.imagenes.at(0).titulo, "tm2");  // no suffix
        }
    }
    const Declaracion& d = *BuscarPorOrden("escalar");
    const Mensaje rechazo = Mensaje::Tabla(msg::kNoSeleccionadaEntrada, "un valor correcto para el escalar", "un valor >0");
    for (int op = 0; op < 4; ++op) {
        EXPECT_EQ(d.alAceptar(Con("escalar", {{"operacion", op}, {"escalar", 0}}), {}), rechazo);
        EXPECT_EQ(d.alAceptar(Con("escalar", {{"operacion", op}, {"escalar", -2.5}}), {}), rechazo);
        EXPECT_EQ(d.alAceptar(Con("escalar", {{"operacion", op}, {"escalar", 1e-9}}), {}), std::nullopt);
    }
}

TEST(Logica, AndOrXorEnByteEInteger) {
    for (int codigo : {kByte, kInteger}) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        auto segun = [codigo](double byte, double integer) { return codigo == kByte ? byte : integer; };
        const CImagen a = Imagen(codigo, 1, 3, {0x0C, segun(0xF0, 0xF00F), 0}, "p"),
                      b = Imagen(codigo, 1, 3, {0x0A, 0x3C, 0}, "q");
        const std::vector<std::vector<double>> esperado = {
            {0x08, segun(0x30, 0x0C), 0}, {0x0E, segun(0xFC, 0xF03F), 0}, {0x06, segun(0xCC, 0xF033), 0}};
        const char* titulos[] = {"p_And_q", "p_Or_q", "p_Xor_q"};
        for (int op = 0; op < 3; ++op) {
            const Resultado r = Dos("logica", op, a, b);
            EXPECT_EQ(Resultante(r), esperado[op]);
            EXPECT_EQ(r.imagenes.at(0).tipoDato, codigo);
            EXPECT_EQ(r.imagenes.at(0).titulo, titulos[op]);
        }
        const Resultado x = Dos("logica", 2, a, a);
        EXPECT_EQ(Resultante(x), (std::vector<double>{0, 0, 0}));
        EXPECT_EQ(x.imagenes.at(0).tipoDato, codigo);
    }
    // Real and double images are refused when picked first; should one
    // reach the kernel all the same, its type is not recognised.
    const Declaracion& d = *BuscarPorOrden("logica");
    for (const char* tipo : {"real", "double"})
        EXPECT_EQ(d.alElegir(0, Cab(tipo), {nada, nada}), Mensaje::Tabla(msg::kTipoNoByteInteger));
    EXPECT_EQ(d.alElegir(1, Cab("integer"), {Cab("byte"), nada}),
              Mensaje::Tabla(msg::kNoCoincide, "El tipo de dato", "imágenes"));
    const CImagen r = Imagen(kReal, 1, 1, {1});
    EXPECT_EQ(Dos("logica", 0, r, r).Motivo(), Mensaje::Tabla(msg::kTipoNoReconocido));
}

TEST(Funcion, OchoFuncionesEnCadaTipo) {
    const char* sufijos[] = {"_^2", "_sqrt", "_ln", "_exp", "_seno", "_coseno", "_tangente", "_valor_absoluto"};
    const std::vector<double> esperado[] = {
        {1, 16, 40000},
        {1, 2, 14.142135623730951},
        {0, 1.3862943611198906, 5.298317366548036},
        {2.718281828459045, 54.598150033144236, 7.225973768125749e+86},
        {0.8414709848078965, -0.7568024953079282, -0.8732972972139946},
        {0.5403023058681398, -0.6536436208636119, 0.4871876750070059},
        {1.5574077246549023, 1.1578212823495775, -1.7925274837903817},
        {1, 4, 200}};
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        const CImagen a = Imagen(codigo, 1, 3, {1, 4, 200}, "tm5");
        for (int op = 0; op < 8; ++op) {
            const Resultado r = Funcion(a, op);
            const auto v = Resultante(r);
            ASSERT_EQ(v.size(), 3u) << op;
            for (int i = 0; i < 3; ++i) EXPECT_DOUBLE_EQ(v[i], esperado[op][i]) << op;
            EXPECT_EQ(r.imagenes[0].tipoDato, kDouble);
            EXPECT_EQ(r.imagenes[0].titulo, std::string("tm5") + sufijos[op]);
        }
    }
    // Signed samples: absolute value and square; overflow kept as it comes.
    const CImagen d = Imagen(kDouble, 1, 3, {-3, -0.5, 1000});
    EXPECT_EQ(Resultante(Funcion(d, 7)), (std::vector<double>{3, 0.5, 1000}));
    EXPECT_EQ(Resultante(Funcion(d, 0)), (std::vector<double>{9, 0.25, 1e6}));
    EXPECT_EQ(Resultante(Funcion(d, 3))[2], std::numeric_limits<double>::infinity());
}

TEST(Funcion, TablaDeValoresIgualAlCalculoPorMuestra) {
    // Byte and integer images large enough to hold every value are computed
    // through a table; the two halves of the image, each too small for it,
    // are computed sample by sample.
    for (int codigo : {kByte, kInteger}) {
        const long n = codigo == kByte ? 256 : 65536;
        for (int op = 0; op < 8; ++op) {
            std::vector<double> v(n);
            for (long i = 0; i < n; ++i) v[i] = i == 0 && op == 2 ? 1 : i;  // ln needs no 0
            const std::vector<double> v1(v.begin(), v.begin() + n / 2), v2(v.begin() + n / 2, v.end());
            auto partes = Resultante(Funcion(Imagen(codigo, 1, n / 2, v1), op));
            const auto resto = Resultante(Funcion(Imagen(codigo, 1, n / 2, v2), op));
            partes.insert(partes.end(), resto.begin(), resto.end());
            EXPECT_EQ(Resultante(Funcion(Imagen(codigo, 1, n, v), op)), partes) << codigo << " " << op;
        }
    }
}

TEST(Funcion, DominioDeRaizYLogaritmoConElMinimo) {
    const Mensaje raiz = Mensaje::Tabla(msg::kRaizNegativos), ln = Mensaje::Tabla(msg::kLogaritmoPositivos);
    auto error = [](const CImagen& a, int op) { return Funcion(a, op).Motivo(); };
    // ln of any image holding a 0, whatever its type.
    for (int codigo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(codigo));
        const CImagen cero = Imagen(codigo, 2, 2, {5, 9, 0, 7});
        EXPECT_EQ(error(cero, 2), ln);
        EXPECT_EQ(error(cero, 1), std::nullopt);  // the square root of 0 is fine
        EXPECT_EQ(error(Imagen(codigo, 2, 2, {5, 9, 1, 7}), 2), std::nullopt);
    }
    // Negative samples: only real and double images can hold them.
    for (int codigo : {kReal, kDouble}) {
        const CImagen neg = Imagen(codigo, 1, 3, {4, -0.25, 9});
        EXPECT_EQ(error(neg, 1), raiz);
        EXPECT_EQ(error(neg, 2), ln);
        EXPECT_EQ(error(neg, 7), std::nullopt);
        EXPECT_EQ(error(Imagen(codigo, 1, 2, {-0.0, 4}), 1), std::nullopt);
    }
    // The square root of an integer image is always allowed.
    EXPECT_EQ(Resultante(Funcion(Imagen(kInteger, 1, 2, {65535, 0}), 1)), (std::vector<double>{std::sqrt(65535.0), 0}));
}

TEST(Operar, OrdenesDeLaLineaDeOrdenes) {
    CarpetaPrueba dir;
    CImagen a = Imagen(kByte, 2, 2, {7, 200, 9, 0}, "uno"), b = Imagen(kByte, 2, 2, {2, 100, 0, 5}, "dos");
    CImagen c = Imagen(kByte, 2, 2, {2, 100, 1, 5}, "tres"), r = Imagen(kReal, 2, 2, {1, 2, 3, 4}, "real");
    CImagen e = Imagen(kByte, 2, 3, {1, 2, 3, 4, 5, 6}, "ancha");
    const std::string pa = Escribir(a, dir / "uno"), pb = Escribir(b, dir / "dos"), pc = Escribir(c, dir / "tres");
    const std::string pr = Escribir(r, dir / "real"), pe = Escribir(e, dir / "ancha"), x = dir / "x";

    // Each order with its option names; the result is a file pair.
    const std::pair<std::vector<std::string>, std::vector<double>> bien[] = {
        {{"aritmetica", "--op", "cociente", pa, pc, dir / "q.ozm"}, {3, 2, 9, 0}},
        {{"logica", "--op", "xor", pa, pc, dir / "q"}, {5, 172, 8, 5}},
        {{"escalar", "--op", "cociente", "--escalar", "0.5", pa, dir / "q"}, {14, 400, 18, 0}},
        {{"funcion", "--op", "cuadrado", pa, dir / "q"}, {49, 40000, 81, 0}},
    };
    CImagen q;
    for (const auto& [args, valores] : bien) {
        Espera(args, 0);
        EXPECT_FALSE(q.Cargar(dir / "q.ozm"));
        EXPECT_EQ(Muestrario(q), valores) << args[0];
    }
    EXPECT_EQ(q.titulo, "uno_^2");

    // Refusals: "ID: TEXT" on standard error, status 2, nothing written;
    // the type is checked before the dimensions.
    const Mensaje escalar = Mensaje::Tabla(msg::kNoSeleccionadaEntrada, "un valor correcto para el escalar", "un valor >0");
    const std::pair<std::vector<std::string>, Mensaje> rechazos[] = {
        {{"aritmetica", "--op", "cociente", pa, pb, x}, Mensaje::Tabla(msg::kDivisionCeroFichero)},
        {{"aritmetica", "--op", "suma", pe, pr, x}, Mensaje::Tabla(msg::kNoCoincide, "El tipo de dato", "imágenes")},
        {{"logica", "--op", "or", pa, pe, x}, Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "imágenes")},
        {{"logica", "--op", "and", pr, pr, x}, Mensaje::Tabla(msg::kTipoNoByteInteger)},
        {{"escalar", "--op", "suma", "--escalar", "0", pa, x}, escalar},
        {{"escalar", "--op", "producto", "--escalar", "-1", pa, x}, escalar},
        {{"funcion", "--op", "ln", pa, x}, Mensaje::Tabla(msg::kLogaritmoPositivos)},
    };
    for (const auto& [args, m] : rechazos) Espera(args, 2, Rechazo(m));
    EXPECT_EQ(Rechazo(escalar), "61219: No se ha seleccionado un valor correcto para el escalar de entrada."
                                "\n\nElija un valor >0 para realizar la operación.\n");
    Espera({"aritmetica", "--op", "potencia", pa, pb, x}, 64, "Uso: orvela-cli aritmetica");
    Espera({"escalar", "--op", "suma", "--escalar", "dos", pa, x}, 64, "Uso: orvela-cli escalar");
    Espera({"funcion", "--op", "raiz", pa}, 64, "Uso: orvela-cli funcion");
    EXPECT_FALSE(Existe(x + ".ozm") || Existe(x + ".inf"));
}

TEST(Operar, Declaraciones) {
    // The menu command and the command-line order reach the same declaration.
    const std::pair<int, const char*> esperadas[] = {{32780, "aritmetica"}, {32781, "escalar"}, {32779, "logica"},
                                                     {32860, "funcion"},    {32824, "contraste"}, {32849, "filtro"}};
    for (const auto& [id, orden] : esperadas) EXPECT_TRUE(BuscarPorComando(id) && BuscarPorComando(id) == BuscarPorOrden(orden)) << id;
    // Two-image dialogs name what is missing, one by one.
    for (const char* orden : {"aritmetica", "logica"}) EXPECT_STREQ(BuscarPorOrden(orden)->entradas.at(1).nombre, "la segunda imagen");
}
