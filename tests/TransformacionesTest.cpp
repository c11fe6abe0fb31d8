// Vegetation indices, tasseled cap, normalization and spectral unmixing over
// the four data types, with hand-worked values and the messages in order.
#include "Prueba.h"
#include "transforms/Desmezcla.h"
#include "transforms/IndiceVegetacion.h"
#include "transforms/MediasClase.h"

namespace orvela::prueba {
namespace {

// Real results are compared to the hand-worked value within rounding.
void Cerca(const std::vector<double>& obtenido, const std::vector<double>& esperado, double tol) {
    ASSERT_EQ(obtenido.size(), esperado.size());
    for (std::size_t i = 0; i < esperado.size(); ++i) EXPECT_NEAR(obtenido[i], esperado[i], tol) << i;
}

TEST(Indice, CocienteYNdviConCeros) {
    for (int tipo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(tipo));
        const CImagen r = Imagen(tipo, 1, 4, {0, 0, 50, 20}, "r"), n = Imagen(tipo, 1, 4, {0, 50, 50, 60}, "n");
        const Resultado c = Operar("indice", {&r, &n}, Con("indice", {{"tipo", 0}}));
        // A zero red pixel is read as 1: 0 / 1 and 50 / 1.
        EXPECT_EQ(Resultante(c), (std::vector<double>{0, 50, 1, 3}));
        EXPECT_EQ(c.imagenes[0].tipoDato, kReal);
        EXPECT_EQ(c.imagenes[0].titulo, "r_Indice_De_Vegetación_Cociente");
        // The red band of the window keeps its zeros.
        EXPECT_EQ(Muestrario(r), (std::vector<double>{0, 0, 50, 20}));
        const Resultado d = Operar("indice", {&r, &n}, Con("indice", {{"tipo", 1}}));
        EXPECT_EQ(Resultante(d), (std::vector<double>{0, 1, 0, 0.5}));
        EXPECT_EQ(d.imagenes[0].titulo, "r_Indice_De_Vegetación_NDVI");
        // The kernel itself writes 1 over the zeros of the red buffer it is given.
        Muestras rojo = r.pixeles.Copia(), salida = Muestras::Crear(kReal, 4);
        ASSERT_TRUE(CocienteVegetacion(rojo, n.pixeles, 1, 4, salida));
        EXPECT_EQ(Muestrario(rojo), (std::vector<double>{1, 1, 50, 20}));
    }
    // Real bands: a pair that sums to zero but is not both zero is divided as it stands.
    const CImagen r = Imagen(kReal, 1, 2, {-1, 2}), n = Imagen(kReal, 1, 2, {1, -2});
    const auto v = Resultante(Operar("indice", {&r, &n}, Con("indice", {{"tipo", 1}})));
    EXPECT_TRUE(std::isinf(v[0]));
    EXPECT_TRUE(std::isinf(v[1]));
}

TEST(Indice, BandasQueNoCoinciden) {
    CarpetaPrueba dir;
    CImagen r = Imagen(kByte, 1, 2, {1, 2}), n = Imagen(kInteger, 1, 2, {1, 2}), m = Imagen(kByte, 2, 1, {1, 2});
    const std::string rr = Escribir(r, dir / "r"), rn = Escribir(n, dir / "n"), rm = Escribir(m, dir / "m");
    Espera({"indice", "--tipo", "ndvi", rr, rn, dir / "s"}, cli::kRechazo,
           Rechazo(Mensaje::Tabla(msg::kNoCoincide, "El tipo de dato", "bandas R e IR")));
    Espera({"indice", "--tipo", "ndvi", rr, rm, dir / "s"}, cli::kRechazo,
           Rechazo(Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "bandas R e IR")));
    Espera({"indice", "--tipo", "cociente", rr, rr, dir / "s"}, cli::kExito);
    EXPECT_TRUE(Existe(dir / "s.ozm"));
}

TEST(TasseledCap, CerosSaturadosYUnos) {
    for (int tipo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(tipo));
        // Pixels: all six bands 0, all 255.
        std::vector<CImagen> tm;
        for (int b = 0; b < 6; ++b) tm.push_back(Imagen(tipo, 1, 2, {0, 255}, "tm" + std::to_string(b + 1)));
        std::vector<const CImagen*> e;
        for (const auto& im : tm) e.push_back(&im);
        const Resultado r = Operar("tasseled-cap", e, Valores{});
        ASSERT_FALSE(r.fallo);
        ASSERT_EQ(r.imagenes.size(), 3u);
        // 255 x 2.3103 + 32 = 621.1265; 255 x -0.4436 + 32 = -81.118; 255 x -0.1517 + 32 = -6.6835.
        const double brillo = 621.1265, verdor = -81.118, humedad = -6.6835;
        if (EsReal(tipo)) {
            Cerca(Muestrario(r.imagenes[0]), {32, brillo}, 1e-4);
            Cerca(Muestrario(r.imagenes[1]), {32, verdor}, 1e-4);
            Cerca(Muestrario(r.imagenes[2]), {32, humedad}, 1e-4);
        } else {
            // Truncated, then wrapped: 621 -> 109, -81 -> 175, -6 -> 250 in a byte.
            EXPECT_EQ(Muestrario(r.imagenes[0]), Guardados(tipo, {32, 621}));
            EXPECT_EQ(Muestrario(r.imagenes[1]), Guardados(tipo, {32, -81}));
            EXPECT_EQ(Muestrario(r.imagenes[2]), Guardados(tipo, {32, -6}));
        }
        for (const auto& im : r.imagenes) EXPECT_EQ(im.tipoDato, tipo);
        EXPECT_EQ(r.imagenes[0].titulo, "tm1_Transformada_Con_TTC_brillo");
        EXPECT_EQ(r.imagenes[1].titulo, "tm1_Transformada_Con_TTC_verdor");
        EXPECT_EQ(r.imagenes[2].titulo, "tm1_Transformada_Con_TTC_humedad");
        EXPECT_EQ(r.finales, (std::vector<std::string>{"_Brillo", "_Verdor", "_Humedad"}));
    }
    EXPECT_EQ(Guardado(kByte, 621), 109);
    EXPECT_EQ(Guardado(kByte, -6), 250);
    // Double bands keep the fraction: all six 1.0 gives 34.3103.
    std::vector<CImagen> tm;
    for (int b = 0; b < 6; ++b) tm.push_back(Imagen(kDouble, 1, 1, {1.0}));
    const Resultado r = Operar("tasseled-cap", {&tm[0], &tm[1], &tm[2], &tm[3], &tm[4], &tm[5]}, Valores{});
    EXPECT_NEAR(Muestrario(r.imagenes[0])[0], 34.3103, 1e-12);
}

TEST(TasseledCap, CadaBandaConLaUno) {
    CarpetaPrueba dir;
    CImagen b = Imagen(kByte, 1, 2, {1, 2}, "b"), i = Imagen(kInteger, 1, 2, {1, 2}, "i"),
            m = Imagen(kByte, 2, 1, {1, 2}, "m");
    const std::string rb = Escribir(b, dir / "b"), ri = Escribir(i, dir / "i"), rm = Escribir(m, dir / "m");
    Espera({"tasseled-cap", rb, rb, ri, rb, rb, rb, dir / "p"}, cli::kRechazo,
           Rechazo(Mensaje::Tabla(msg::kNoCoincide, "El tipo de dato", "bandas uno y tres")));
    Espera({"tasseled-cap", rb, rb, rb, rb, rb, rm, dir / "p"}, cli::kRechazo,
           Rechazo(Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "bandas uno y siete")));
    Espera({"tasseled-cap", rb, rb, rb, rb, rb, rb, dir / "p"}, cli::kExito);
    for (const char* f : {"p_Brillo.ozm", "p_Verdor.ozm", "p_Humedad.inf"}) EXPECT_TRUE(Existe(dir / f)) << f;
}

TEST(Normalizacion, LosCasosDeLaSombra) {
    // Shade 50 and 100: no shade; 150: half the pixel in shade; 180: 450
    // does not fit a byte (194); 200 and more: both 100.
    const std::vector<double> sombra = {50, 100, 150, 180, 200, 250};
    const std::vector<double> veg = {130, 150, 125, 170, 160, 190};
    const std::vector<double> suelo = {120, 120, 110, 102, 130, 105};
    const std::vector<double> vegNormal = {130, 150, 150, 450, 100, 100};
    const std::vector<double> sueloNormal = {120, 120, 120, 110, 100, 100};
    for (int tipo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(tipo));
        const CImagen u = Imagen(tipo, 2, 3, suelo, "u"), s = Imagen(tipo, 2, 3, sombra, "s"),
                      v = Imagen(tipo, 2, 3, veg, "v");
        const Resultado r = Operar("normalizacion", {&u, &s, &v}, Valores{});
        ASSERT_FALSE(r.fallo);
        ASSERT_EQ(r.imagenes.size(), 2u);
        EXPECT_EQ(Muestrario(r.imagenes[0]), Guardados(tipo, vegNormal));
        EXPECT_EQ(Muestrario(r.imagenes[1]), Guardados(tipo, sueloNormal));
        EXPECT_EQ(r.imagenes[0].titulo, "u_Normalizada_(VEGETACIÓN_NORMALIZADA)");
        EXPECT_EQ(r.imagenes[1].titulo, "u_Normalizada_(SUELO_NORMALIZADO)");
        EXPECT_EQ(r.finales, (std::vector<std::string>{"_VG_NORMAL", "_SL_NORMAL"}));
    }
    EXPECT_EQ(Guardado(kByte, 450), 194);
}

TEST(Normalizacion, SombraComparadaConSueloYVegetacion) {
    CarpetaPrueba dir;
    CImagen b = Imagen(kByte, 1, 2, {1, 2}), i = Imagen(kInteger, 1, 2, {1, 2}), m = Imagen(kByte, 2, 1, {1, 2});
    const std::string rb = Escribir(b, dir / "b"), ri = Escribir(i, dir / "i"), rm = Escribir(m, dir / "m");
    Espera({"normalizacion", "--suelo", ri, "--sombra", rb, "--vegetacion", rb, dir / "p"}, cli::kRechazo,
           Rechazo(Mensaje::Tabla(msg::kNoCoincide, "El tipo de dato", "bandas sombra y suelo")));
    Espera({"normalizacion", "--suelo", rb, "--sombra", rb, "--vegetacion", rm, dir / "p"}, cli::kRechazo,
           Rechazo(Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "bandas sombra y vegetación")));
    Espera({"normalizacion", "--suelo", rb, "--sombra", rb, "--vegetacion", rb, dir / "p"}, cli::kExito);
    EXPECT_TRUE(Existe(dir / "p_VG_NORMAL.ozm"));
    EXPECT_TRUE(Existe(dir / "p_SL_NORMAL.ozm"));
}

// A class file as "Establecer clase" writes it, with these band means.
std::string FicheroClase(const std::vector<double>& medias) {
    std::ostringstream s;
    s << "\n\n";
    for (std::size_t b = 0; b < medias.size(); ++b)
        s << "B" << b + 1 << "\nND Máximo:" << medias[b] + 1 << "\nND Mínimo:" << medias[b] - 1
          << "\nValor Medio:" << medias[b] << "\nDesviación Típica:0.5\n\n";
    s << "Matriz De Covarianza:\n";
    for (std::size_t i = 0; i < medias.size(); ++i) {
        for (std::size_t j = 0; j < medias.size(); ++j) s << (i == j ? 0.25 : 0) << " ";
        s << "\n";
    }
    return s.str();
}

const std::vector<double> kVeg = {10, 20, 90, 100}, kSombra = {4, 4, 4, 4}, kSuelo = {60, 72, 80, 92};

TEST(Desmezcla, MezclasHechasAManoYFueraDelTriangulo) {
    // Pixels: 0.5 V + 0.25 S + 0.25 U; pure soil; 0.5 V + 0.5 S; 1.5 V - 0.5 S.
    const std::vector<std::vector<double>> bandas = {
        {21, 60, 7, 13}, {29, 72, 12, 28}, {66, 80, 47, 133}, {74, 92, 52, 148}};
    CarpetaPrueba dir;
    EscribirFichero(dir / "v.txt", FicheroClase(kVeg));
    EscribirFichero(dir / "s.txt", FicheroClase(kSombra));
    EscribirFichero(dir / "u.txt", FicheroClase(kSuelo));
    EXPECT_EQ(LeerMediasClase(dir / "v.txt"), kVeg);
    for (int tipo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(tipo));
        std::vector<std::string> args = {"desmezcla", "--vegetacion", dir / "v.txt", "--sombra", dir / "s.txt",
                                         "--suelo", dir / "u.txt"};
        for (int b = 0; b < 4; ++b) {
            CImagen im = Imagen(tipo, 1, 4, bandas[b]);
            args.push_back(Escribir(im, dir / ("b" + std::to_string(b))));
        }
        for (bool restringida : {false, true}) {
            std::vector<std::string> a = args;
            if (restringida) a.insert(a.begin() + 1, "--restringida");
            a.push_back(dir / "p");
            Espera(a, cli::kExito);
            auto leer = [&](const char* final) {
                CImagen im;
                EXPECT_FALSE(im.Cargar(dir / (std::string("p") + final + ".ozm")));
                EXPECT_EQ(im.tipoDato, kReal);
                return Muestrario(im);
            };
            // The fourth pixel lies beyond the vegetation corner: unconstrained it
            // is 150 % vegetation and -50 % shade with no error; constrained it
            // is pure vegetation, at half the distance from shade to vegetation.
            const double fueraV = restringida ? 200 : 250, fueraS = restringida ? 100 : 50;
            EXPECT_EQ(leer("_Vegetacion"), (std::vector<double>{150, 100, 150, fueraV}));
            EXPECT_EQ(leer("_Sombra"), (std::vector<double>{125, 100, 150, fueraS}));
            EXPECT_EQ(leer("_Suelo"), (std::vector<double>{125, 200, 100, 100}));
            Cerca(leer("_Error"), {0, 0, 0, restringida ? std::sqrt(0.25 * 16904 / 4) : 0}, 1e-4);
        }
    }
}

TEST(Desmezcla, LaFilaDaLoMismoQuePixelAPixel) {
    Extremos e;
    e.espectro = {kVeg, kSombra, kSuelo};
    const auto d = Desmezclador::Crear(e);
    ASSERT_TRUE(d);
    std::mt19937 g(3);
    const std::size_t n = 500;
    std::vector<std::vector<double>> x(4, std::vector<double>(n));
    for (auto& b : x)
        for (double& v : b) v = static_cast<double>(g() % 200);
    const double* filas[4] = {x[0].data(), x[1].data(), x[2].data(), x[3].data()};
    for (bool restringida : {false, true}) {
        std::vector<std::vector<float>> o(4, std::vector<float>(n));
        float* const out[4] = {o[0].data(), o[1].data(), o[2].data(), o[3].data()};
        d->Fila(filas, n, restringida, out);
        for (std::size_t c = 0; c < n; ++c) {
            const double px[4] = {x[0][c], x[1][c], x[2][c], x[3][c]};
            double f[3];
            const double err = d->Pixel(px, restringida, f);
            for (int k = 0; k < 3; ++k) ASSERT_EQ(o[k][c], Almacenar<float>(100.0 + 100.0 * f[k])) << c;
            ASSERT_EQ(o[3][c], Almacenar<float>(err)) << c;
        }
    }
}

TEST(Desmezcla, FicherosDeClaseIncorrectos) {
    CarpetaPrueba dir;
    EscribirFichero(dir / "v.txt", FicheroClase({10, 20}));
    EscribirFichero(dir / "s.txt", FicheroClase({4, 4}));
    EscribirFichero(dir / "u.txt", FicheroClase({60, 72}));
    EscribirFichero(dir / "tres.txt", FicheroClase({1, 2, 3}));
    EscribirFichero(dir / "otro.txt", "esto no es una clase\n");
    EscribirFichero(dir / "paralela.txt", FicheroClase({35, 46}));  // on the line from vegetation to soil
    CImagen a = Imagen(kByte, 1, 1, {10}), b = Imagen(kByte, 1, 1, {20});
    const std::string ra = Escribir(a, dir / "a"), rb = Escribir(b, dir / "b");
    auto orden = [&](const char* v, const char* s, const char* u) {
        return std::vector<std::string>{"desmezcla", "--vegetacion", dir / v, "--sombra", dir / s, "--suelo",
                                        dir / u, ra, rb, dir / "p"};
    };
    Espera(orden("v.txt", "otro.txt", "u.txt"), cli::kRechazo,
           Rechazo(Mensaje::Tabla(msg::kNoEsArchivoDe, "clase")));
    Espera(orden("v.txt", "s.txt", "tres.txt"), cli::kRechazo, std::string(texto::kBandasFicheroClase) + "\n");
    Espera(orden("v.txt", "paralela.txt", "u.txt"), cli::kRechazo,
           std::string(texto::kEspectrosDependientes) + "\n");
    EXPECT_FALSE(Existe(dir / "p_Vegetacion.ozm"));
    // Two bands: three endmembers and the sum to one fit exactly.
    Espera(orden("v.txt", "s.txt", "u.txt"), cli::kExito);
    CImagen e;
    ASSERT_FALSE(e.Cargar(dir / "p_Error.ozm"));
    EXPECT_NEAR(e.pixeles.Valor(0), 0, 1e-4);
}

}  // namespace
}  // namespace orvela::prueba
