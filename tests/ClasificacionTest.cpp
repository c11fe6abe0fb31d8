// Class files, the three supervised classifiers, the unsupervised
// classification, random sampling and the confusion matrix, with values
// worked by hand.
#include "Prueba.h"
#include "classification/Confusion.h"
#include "classification/FicheroClase.h"
#include "classification/Muestreo.h"
#include "classification/NoSupervisada.h"
#include "classification/Supervisada.h"
#include "image/Codificacion.h"

namespace orvela::prueba {
namespace {

// Two 2 x 2 bands b1, b2 of `codigo` on disk; returns their raster paths.
std::vector<std::string> DosBandas(const CarpetaPrueba& dir, int codigo) {
    CImagen b1 = Imagen(codigo, 2, 2, {10, 20, 30, 40}, "b1");
    CImagen b2 = Imagen(codigo, 2, 2, {1, 2, 3, 5}, "b2");
    return {Escribir(b1, dir / "b1"), Escribir(b2, dir / "b2")};
}

TEST(FicheroClase, GruposDeMuestrasSinRecortar) {
    EXPECT_EQ(GrupoMuestras(ModoMuestreo::Puntos, 3, 4), (std::vector<Posicion>{{3, 4}}));
    // A cross at the corner reaches outside the image.
    EXPECT_EQ(GrupoMuestras(ModoMuestreo::Cruces, 0, 0),
              (std::vector<Posicion>{{0, 0}, {-1, 0}, {0, -1}, {1, 0}, {0, 1}}));
    const auto r = GrupoMuestras(ModoMuestreo::Rectangulos, 5, 5, 1, 2);
    ASSERT_EQ(r.size(), 15u);
    EXPECT_EQ(r.front(), (Posicion{4, 3}));
    EXPECT_EQ(r[5], (Posicion{5, 3}));
    EXPECT_EQ(r.back(), (Posicion{6, 7}));
}

// Samples at (0,0), (0,1), (1,1): b1 10, 20, 40 and b2 1, 2, 5. Deviation
// with divisor 3, covariance with divisor 2, six significant digits.
TEST(FicheroClase, FicheroByteAByteEnLosCuatroTipos) {
    const std::string esperado = Utf8ACp1252(
        "\n\nb1\nND Máximo:40\nND Mínimo:10\nValor Medio:23.3333\nDesviación Típica:12.4722\n\n"
        "b2\nND Máximo:5\nND Mínimo:1\nValor Medio:2.66667\nDesviación Típica:1.69967\n\n"
        "Matriz De Covarianza:\n233.333 31.6667 \n31.6667 4.33333 \n");
    for (int codigo : kTipos) {
        CarpetaPrueba dir;
        const auto b = DosBandas(dir, codigo);
        Espera({"clase", "--modo", "puntos", "--punto", "0,0", "--punto", "0,1", "--punto", "1,1", b[0], b[1],
                dir / "agua"},
               0);
        EXPECT_EQ(LeerFichero(dir / "agua.txt"), esperado) << codigo;
    }
}

TEST(FicheroClase, PuntoFueraAvisaYSigue) {
    CarpetaPrueba dir;
    const auto b = DosBandas(dir, kByte);
    const auto s = Espera({"clase", "--modo", "puntos", "--punto", "2,0", "--punto", "0,0", b[0], dir / "c"}, 0,
                          Rechazo(Mensaje::Tabla(msg::kFueraDeImagen)));
    EXPECT_EQ(LeerFichero(dir / "c.txt"), Utf8ACp1252("\n\nb1\nND Máximo:10\nND Mínimo:10\nValor Medio:10\n"
                                                      "Desviación Típica:0\n\nMatriz De Covarianza:\n-nan \n"));
    Espera({"clase", "--modo", "rectangulos", "--altura", "0", "--anchura", "1", b[0], dir / "d"}, 2,
           Rechazo(Mensaje::Tabla(msg::kRectangulo)));
    EXPECT_FALSE(Existe(dir / "d.txt"));
}

TEST(FicheroClase, CerosYUnaMuestraYCruzEnElBorde) {
    CImagen b1 = Imagen(kByte, 2, 2, {10, 20, 30, 40});
    // No sample: non-finite statistics, same shape.
    auto cero = CalcularClase({&b1}, {"b1"}, {});
    EXPECT_TRUE(std::isnan(cero.bandas[0].media));
    // The covariance divides an empty sum by n - 1 = -1.
    EXPECT_EQ(cero.covarianza[0][0], 0);
    EXPECT_TRUE(std::signbit(cero.covarianza[0][0]));
    EXPECT_NE(TextoFicheroClase(cero).find("ND Máximo:-inf\nND Mínimo:inf\nValor Medio:-nan\n"), std::string::npos);
    // A cross at (0, 0) takes -1 for the two samples outside.
    auto cruz = CalcularClase({&b1}, {"b1"}, GrupoMuestras(ModoMuestreo::Cruces, 0, 0));
    EXPECT_EQ(cruz.bandas[0].minimo, -1);
    EXPECT_EQ(cruz.bandas[0].maximo, 30);
    EXPECT_DOUBLE_EQ(cruz.bandas[0].media, (10 - 1 - 1 + 30 + 20) / 5.0);
    // One band: the 1 x 1 matrix is the variance over n - 1, not std^2.
    EXPECT_DOUBLE_EQ(cruz.covarianza[0][0], cruz.bandas[0].desviacion * cruz.bandas[0].desviacion * 5 / 4);
}

TEST(FicheroClase, LecturaConSaltosDeCienCaracteres) {
    CarpetaPrueba dir;
    EstadisticasClase e;
    e.bandas = {{"b1", 40, 10, 23.5, 2}, {"b2", 5, 1, 2.25, 0.5}};
    e.covarianza = {{4, 1}, {1, 0.25}};
    EscribirFichero(dir / "agua.txt", Utf8ACp1252(TextoFicheroClase(e)));
    auto c = LeerFicheroClase(dir / "agua.txt", 2, true, true);
    ASSERT_TRUE(c);
    EXPECT_EQ(c->nombre, "agua");
    EXPECT_EQ(c->media, (std::vector<double>{23.5, 2.25}));
    EXPECT_EQ(c->desviacion, (std::vector<double>{2, 0.5}));
    EXPECT_EQ(c->covarianza, (std::vector<std::vector<double>>{{4, 1}, {1, 0.25}}));
    // A band name of 150 characters is skipped as two lines: every later
    // line is read one early, so the minimum is taken for the mean.
    e.bandas[0].nombre = std::string(150, 'x');
    EscribirFichero(dir / "largo.txt", TextoFicheroClase(e));
    c = LeerFicheroClase(dir / "largo.txt", 2, false, false);
    ASSERT_TRUE(c);
    EXPECT_EQ(c->media[0], 10);
    EXPECT_FALSE(LeerFicheroClase(dir / "no.txt", 2, false, false));
    EXPECT_FALSE(LeerFicheroClase(dir / "agua.txt", 3, false, true));
}

// A class file with these means, deviations and covariance.
std::string Clase(const CarpetaPrueba& dir, const std::string& nombre, std::vector<double> media,
                  std::vector<double> desviacion = {}, std::vector<std::vector<double>> cov = {}) {
    EstadisticasClase e;
    for (std::size_t b = 0; b < media.size(); ++b)
        e.bandas.push_back({"b" + std::to_string(b + 1), 0, 0, media[b], b < desviacion.size() ? desviacion[b] : 0});
    e.covarianza = cov.empty() ? std::vector<std::vector<double>>(media.size(), std::vector<double>(media.size(), 1))
                               : cov;
    const std::string ruta = dir / (nombre + ".txt");
    EscribirFichero(ruta, Utf8ACp1252(TextoFicheroClase(e)));
    return ruta;
}

std::vector<double> Clasificar(const CarpetaPrueba& dir, int codigo, const std::vector<double>& v,
                               const std::vector<std::string>& opciones) {
    CImagen b = Imagen(codigo, 1, static_cast<long>(v.size()), v, "b");
    std::vector<std::string> args = {"supervisada"};
    args.insert(args.end(), opciones.begin(), opciones.end());
    args.push_back(Escribir(b, dir / ("b" + std::to_string(codigo))));
    args.push_back(dir / "r");
    Espera(args, 0);
    CImagen r;
    EXPECT_FALSE(r.Cargar(dir / "r.ozm"));
    EXPECT_EQ(r.tipoDato, kByte);
    return Muestrario(r);
}

TEST(Supervisada, MinimaDistanciaEmpateAlPrimero) {
    for (int codigo : kTipos) {
        CarpetaPrueba dir;
        const auto a = Clase(dir, "a", {10}), b = Clase(dir, "b", {20});
        EXPECT_EQ(Clasificar(dir, codigo, {15, 16, 0, 100},
                             {"--regla", "distancia", "--clase", a, "--clase", b}),
                  (std::vector<double>{10, 20, 10, 20}))
            << codigo;
        EXPECT_EQ(LeerFichero(dir / "rLeyenda.txt"), "2\na\nND Clase:10\n\nb\nND Clase:20\n\n");
    }
}

TEST(Supervisada, ParalelepipedosGanaLaUltimaCaja) {
    for (int codigo : kTipos) {
        CarpetaPrueba dir;
        // a: [5, 15], b: [12, 16], c: only 30 (deviation 0).
        const auto a = Clase(dir, "a", {10}, {5}), b = Clase(dir, "b", {14}, {2}), c = Clase(dir, "c", {30}, {0});
        EXPECT_EQ(Clasificar(dir, codigo, {13, 5, 15, 17, 30, 31},
                             {"--regla", "paralelepipedos", "--multiplicador", "1", "--clase", a, "--clase", b,
                              "--clase", c}),
                  (std::vector<double>{14, 10, 14, 0, 30, 0}))
            << codigo;
    }
    CarpetaPrueba dir;
    const auto a = Clase(dir, "a", {10}, {5}), b = Clase(dir, "b", {14}, {2});
    // Multiplier 2: b is [10, 18].
    EXPECT_EQ(Clasificar(dir, kByte, {17, 19, 0}, {"--regla", "paralelepipedos", "--multiplicador", "2", "--clase", a,
                                                  "--clase", b}),
              (std::vector<double>{14, 10, 10}));
    CImagen im = Imagen(kByte, 1, 1, {1});
    const std::string banda = Escribir(im, dir / "x");
    Espera({"supervisada", "--regla", "paralelepipedos", "--multiplicador", "0", "--clase", a, "--clase", b, banda,
            dir / "s"},
           2, Rechazo(Mensaje::Tabla(msg::kMultiplicador)));
    Espera({"supervisada", "--regla", "distancia", "--clase", a, banda, dir / "s"}, 2,
           Rechazo(Mensaje::Tabla(msg::kNumeroClases)));
    EXPECT_FALSE(Existe(dir / "s.ozm"));
}

TEST(Supervisada, DeterminanteEInversa) {
    EXPECT_EQ(DeterminanteEliminacion({{2, 1}, {1, 3}}), 5);
    EXPECT_EQ(DeterminanteEliminacion({{4, 1, 2}, {1, 3, 0}, {2, 0, 5}}), 43);
    EXPECT_EQ(InversaCofactores({{2, 1}, {1, 3}}, 5), (std::vector<std::vector<double>>{{3 / 5.0, -1 / 5.0},
                                                                                         {-1 / 5.0, 2 / 5.0}}));
    EXPECT_EQ(InversaCofactores({{4}}, 4), (std::vector<std::vector<double>>{{0.25}}));
    // No row exchange: a zero first pivot leaves a regular matrix without a
    // finite determinant.
    EXPECT_TRUE(std::isnan(DeterminanteEliminacion({{0, 1, 0}, {1, 0, 0}, {0, 0, 1}})));
    // The inverse times the matrix is the identity (cofactors of a 3 x 3).
    const std::vector<std::vector<double>> a = {{4, 1, 2}, {1, 3, 0}, {2, 0, 5}};
    const auto inv = InversaCofactores(a, 43);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            double s = 0;
            for (int k = 0; k < 3; ++k) s += inv[i][k] * a[k][j];
            EXPECT_NEAR(s, i == j ? 1 : 0, 1e-15);
        }
}

// One band: g = -ln(var) - (x - mean)^2 / var. a (10, var 4), b (20, var
// 100): at 12 ga = -2.386 > gb = -5.245; at 14 ga = -5.386 < gb = -4.965.
TEST(Supervisada, MaximaProbabilidadUnaBanda) {
    for (int codigo : kTipos) {
        CarpetaPrueba dir;
        const auto a = Clase(dir, "a", {10}, {}, {{4}}), b = Clase(dir, "b", {20}, {}, {{100}});
        EXPECT_EQ(Clasificar(dir, codigo, {12, 14, 10, 40}, {"--regla", "probabilidad", "--clase", a, "--clase", b}),
                  (std::vector<double>{10, 20, 10, 20}))
            << codigo;
    }
    ClaseLeida a{"a", {10}, {}, {{4}}};
    const double x = 14;
    EXPECT_DOUBLE_EQ(LogVerosimilitud(PrepararModelo(a), &x), -std::log(4.0) - 4);
}

TEST(Supervisada, NdCompartidoYNdQueDaLaVuelta) {
    CarpetaPrueba dir;
    // Means 300 and 300.5 give ND 300 and 300 (shared); stored as 44.
    const auto a = Clase(dir, "a", {300, 300}), b = Clase(dir, "b", {300, 301});
    CImagen b1 = Imagen(kInteger, 1, 2, {0, 400}, "b1"), b2 = Imagen(kInteger, 1, 2, {0, 400}, "b2");
    Espera({"supervisada", "--regla", "distancia", "--clase", a, "--clase", b, Escribir(b1, dir / "b1"),
            Escribir(b2, dir / "b2"), dir / "r"},
           0);
    CImagen r;
    ASSERT_FALSE(r.Cargar(dir / "r.ozm"));
    EXPECT_EQ(Muestrario(r), (std::vector<double>{44, 44}));
    EXPECT_EQ(r.titulo, "Clasificación_Supervisada_Dist_Mínima");
    EXPECT_EQ(LeerFichero(dir / "rLeyenda.txt"), "2\na\nND Clase:300\n\nb\nND Clase:300\n\n");
}

// The row-wise kernels against the per-pixel definition, sample for
// sample, on random bands of each type, on one core and on all.
TEST(Supervisada, IgualQueLaDefinicionPixelAPixel) {
    std::mt19937 azar(5);
    for (int codigo : kTipos) {
        const long filas = 37, cols = 53;
        std::vector<CImagen> bandas;
        for (int b = 0; b < 3; ++b) {
            std::vector<double> v(filas * cols);
            for (double& x : v) x = std::uniform_int_distribution<int>(0, 60)(azar) + (EsReal(codigo) ? 0.25 : 0);
            bandas.push_back(Imagen(codigo, filas, cols, v));
        }
        std::vector<ClaseLeida> clases;
        for (int k = 0; k < 5; ++k) {
            ClaseLeida c;
            std::vector<std::vector<double>> cov(3, std::vector<double>(3));
            for (int b = 0; b < 3; ++b) {
                c.media.push_back(std::uniform_real_distribution<double>(0, 60)(azar));
                c.desviacion.push_back(std::uniform_real_distribution<double>(1, 15)(azar));
                for (int e = 0; e < 3; ++e) cov[b][e] = b == e ? 20.0 + 10 * k : 3.0 - b - e;
            }
            c.covarianza = cov;
            clases.push_back(c);
        }
        clases[3].media = clases[1].media;  // equal distances: the earlier wins
        clases[2].covarianza.assign(3, std::vector<double>(3, 1.0));  // singular
        BandasClasificar bc{{&bandas[0].pixeles, &bandas[1].pixeles, &bandas[2].pixeles}, filas, cols};
        std::vector<uint8_t> md(filas * cols), pp(filas * cols), mp(filas * cols);
        FijarNucleos(1);
        ASSERT_TRUE(ClasificarMinimaDistancia(bc, clases, md));
        ASSERT_TRUE(ClasificarParalelepipedos(bc, clases, 1, pp));
        FijarNucleos(0);
        ASSERT_TRUE(ClasificarMaximaProbabilidad(bc, clases, mp));
        std::vector<ModeloGaussiano> modelos;
        for (const auto& c : clases) modelos.push_back(PrepararModelo(c));
        for (long i = 0; i < filas * cols; ++i) {
            double x[3];
            for (int b = 0; b < 3; ++b) x[b] = bandas[b].pixeles.Valor(static_cast<std::size_t>(i));
            std::size_t mejorD = 0, mejorG = 0;
            double dMin = 0, gMax = 0;
            uint8_t caja = 0;
            for (std::size_t k = 0; k < clases.size(); ++k) {
                double s = 0;
                int dentro = 0;
                for (int b = 0; b < 3; ++b) {
                    s += (x[b] - clases[k].media[b]) * (x[b] - clases[k].media[b]);
                    const double lo = clases[k].media[b] - 1.0 * clases[k].desviacion[b];
                    const double hi = clases[k].media[b] + 1.0 * clases[k].desviacion[b];
                    dentro += lo <= x[b] && x[b] <= hi;
                }
                const double d = std::sqrt(s), g = LogVerosimilitud(modelos[k], x);
                if (k == 0 || d < dMin) dMin = d, mejorD = k;
                if (k == 0 || g > gMax) gMax = g, mejorG = k;
                if (dentro == 3) caja = static_cast<uint8_t>(NdClase(clases[k]));
            }
            ASSERT_EQ(md[i], static_cast<uint8_t>(NdClase(clases[mejorD]))) << codigo << " " << i;
            ASSERT_EQ(mp[i], static_cast<uint8_t>(NdClase(clases[mejorG]))) << codigo << " " << i;
            ASSERT_EQ(pp[i], caja) << codigo << " " << i;
        }
    }
}

ResultadoNoSupervisada Agrupar(int codigo, const std::vector<double>& v, int k, std::vector<double>& salida,
                               int max = 0) {
    CImagen b = Imagen(codigo, 1, static_cast<long>(v.size()), v);
    BandasClasificar bc{{&b.pixeles}, 1, static_cast<long>(v.size())};
    std::vector<uint8_t> s(v.size());
    auto r = ClasificarNoSupervisada(bc, k, s, max);
    salida.assign(s.begin(), s.end());
    return r;
}

TEST(NoSupervisada, CasosTrabajadosEnLosCuatroTipos) {
    for (int codigo : kTipos) {
        std::vector<double> s;
        // Seeds 0 and 10; 5 is as far from both: the first wins. Centres 2.5
        // and 10, then the same: labels 2 and 10.
        auto r = Agrupar(codigo, {0, 5, 10}, 2, s);
        EXPECT_EQ(s, (std::vector<double>{2, 2, 10})) << codigo;
        EXPECT_EQ(r.pasadas, 2);
        // The centre moves by exactly 0.5 (0 -> 0.5): converged at once.
        r = Agrupar(codigo, {0, 1, 10}, 2, s);
        EXPECT_EQ(r.pasadas, 1);
        EXPECT_EQ(s, (std::vector<double>{0, 0, 10}));
        // Three seeds at one point: the first takes all, the others go to
        // the origin and stay empty.
        r = Agrupar(codigo, {5, 5, 5}, 3, s);
        EXPECT_EQ(s, (std::vector<double>{5, 5, 5}));
        EXPECT_EQ(r.pasadas, 2);
        EXPECT_EQ(r.centros, (std::vector<std::vector<double>>{{5}, {0}, {0}}));
    }
    std::vector<double> s;
    // A centre mean of 300 is written as 44.
    Agrupar(kInteger, {0, 300}, 2, s);
    EXPECT_EQ(s, (std::vector<double>{0, 44}));
    // The guard on passes stops after one pass with the labels of that pass.
    auto r = Agrupar(kByte, {0, 5, 10}, 2, s, 1);
    EXPECT_FALSE(r.convergido);
    EXPECT_EQ(s, (std::vector<double>{2, 2, 10}));
}

TEST(NoSupervisada, OrdenYUnNucleoIgualQueTodos) {
    CarpetaPrueba dir;
    std::vector<double> v1, v2;
    for (int i = 0; i < 64 * 40; ++i) {
        v1.push_back((i * 37) % 251);
        v2.push_back((i * 11) % 97 + 0.25 * (i % 3));
    }
    CImagen b1 = Imagen(kByte, 64, 40, v1, "b1"), b2 = Imagen(kReal, 64, 40, v2, "b2");
    Espera({"no-supervisada", "--clases", "1", Escribir(b1, dir / "b1"), dir / "r"}, 2,
           Rechazo(Mensaje::Tabla(msg::kNumeroClases)));
    BandasClasificar bc{{&b1.pixeles, &b2.pixeles}, 64, 40};
    std::vector<uint8_t> uno(64 * 40), todos(64 * 40);
    FijarNucleos(1);
    ClasificarNoSupervisada(bc, 5, uno);
    FijarNucleos(0);
    ClasificarNoSupervisada(bc, 5, todos);
    EXPECT_EQ(uno, todos);
}

TEST(Muestreo, GeneradorDeLaPlataformaOriginal) {
    GeneradorC g;
    g.Sembrar(1);
    EXPECT_EQ(g.Siguiente(), 41);
    EXPECT_EQ(g.Siguiente(), 18467);
    EXPECT_EQ(g.Siguiente(), 6334);
    EXPECT_EQ(g.Siguiente(), 26500);
    EXPECT_EQ(g.Siguiente(), 19169);
}

TEST(Muestreo, MascaraDistintaRepetibleYGuardada) {
    std::vector<uint8_t> m(12), otra(12);
    // S = R x C fills the mask.
    ASSERT_TRUE(MuestreoAleatorio(3, 4, 12, 7, m));
    EXPECT_EQ(std::count(m.begin(), m.end(), 1), 12);
    std::vector<uint8_t> g(7000), h(7000);
    ASSERT_TRUE(MuestreoAleatorio(70, 100, 500, 99, g));
    ASSERT_TRUE(MuestreoAleatorio(70, 100, 500, 99, h));
    EXPECT_EQ(std::count(g.begin(), g.end(), 1), 500);
    EXPECT_EQ(g, h);
    // This seed makes the first draw 32767: row 1 of a one-row image, which
    // is drawn again instead of being written past the end.
    GeneradorC c;
    c.Sembrar(4028364353u);
    ASSERT_EQ(c.Siguiente(), 32767);
    std::vector<uint8_t> uno(1);
    ASSERT_TRUE(MuestreoAleatorio(1, 1, 1, 4028364353u, uno));
    EXPECT_EQ(uno[0], 1);

    CarpetaPrueba dir;
    CImagen ref = Imagen(kReal, 3, 4, std::vector<double>(12, 0.5), "ref");
    const std::string r = Escribir(ref, dir / "ref");
    Espera({"muestreo", "--muestras", "0", r, dir / "m"}, 2,
           Rechazo(Mensaje::Tabla(msg::kValorIncorrecto, "El número de muestras")));
    Espera({"muestreo", "--muestras", "13", r, dir / "m"}, 2);
    Espera({"muestreo", "--muestras", "5", "--semilla", "3", r, dir / "m"}, 0);
    CImagen mascara;
    ASSERT_FALSE(mascara.Cargar(dir / "m.ozm"));
    EXPECT_EQ(mascara.tipoDato, kByte);
    std::vector<uint8_t> esperado(12);
    MuestreoAleatorio(3, 4, 5, 3, esperado);
    EXPECT_EQ(Muestrario(mascara), std::vector<double>(esperado.begin(), esperado.end()));
}

struct Verificacion {
    CarpetaPrueba dir;
    std::string mascara, verdad, clasificada;
    Verificacion(int codigo, std::vector<double> m, std::vector<double> t, std::vector<double> c,
                 const std::vector<ClaseLeyenda>& leyenda) {
        const long n = static_cast<long>(m.size());
        CImagen im = Imagen(kByte, 1, n, m), vt = Imagen(codigo, 1, n, t), cl = Imagen(codigo, 1, n, c);
        mascara = Escribir(im, dir / "mascara");
        verdad = Escribir(vt, dir / "verdad");
        clasificada = Escribir(cl, dir / "clasif");
        EscribirLeyenda(clasificada, leyenda);
    }
    SalidaCli Cli(int rc, const std::string& err = "") {
        return Espera({"confusion", "--mascara", mascara, "--verdad", verdad, "--clasificada", clasificada,
                       "--informe", dir / "kappa.txt"},
                      rc, err);
    }
};

TEST(Confusion, InformeByteAByte) {
    const std::string esperado =
        "\n\nEste fichero muestra la matriz de confusión así como el índice kappa resultante de un proceso de "
        "verificación.\n\n"
        "Las imágenes que han intervenido son:\n"
        "\tverdad\tVerdad terreno,\t\tmapeada en las columnas.\n"
        "\tclasif\tImagen clasificada,\tmapeada en las filas.\n\n\n"
        "Los niveles digitales que representan cada clase son:\n"
        "\t1\tagua\n\t2\tsuelo\n"
        "\n\nLa matriz de confusión es la siguiente:\n\n"
        "\t1\t2\tTotal\tError de comis.\tExact. de usuario\n" +
        std::string(45 + 15, '-') +
        "\n"
        "1\t|1\t0\t1\t0.0000\t\t1.0000\t\n"
        "2\t|1\t2\t3\t0.3333\t\t0.6667\t\n"
        "\nTotal\t|2\t2\t4\t\nError\t|0.5000\t0.0000\t\nde omisión\nExact\t|0.5000\t1.0000\t\nde productor"
        "\n\n\n\tEl índice kappa es:\n\t\t\t0.500000";
    for (int codigo : {kByte, kInteger}) {
        // The fifth pixel is outside the mask.
        Verificacion v(codigo, {1, 1, 1, 1, 0}, {1, 1, 2, 2, 9}, {1, 2, 2, 2, 9}, {{"agua", 1}, {"suelo", 2}});
        const auto s = v.Cli(0);
        EXPECT_EQ(s.out, esperado);
        EXPECT_EQ(LeerFichero(v.dir / "kappa.txt"), Utf8ACp1252(esperado));
    }
}

TEST(Confusion, KappaUnoCeroClaseSinMuestrasYValorFueraDeLeyenda) {
    MatrizConfusion m;
    const std::vector<ClaseLeyenda> leyenda = {{"a", 1}, {"b", 2}, {"c", 3}};
    CImagen mk = Imagen(kByte, 1, 2, {1, 1});
    CImagen t = Imagen(kByte, 1, 2, {1, 2}), c = Imagen(kByte, 1, 2, {1, 2});
    ASSERT_FALSE(CalcularConfusion(mk, t, c, leyenda, m));
    EXPECT_EQ(m.kappa, 1);
    // "c" never sampled: totals 0 and -1 for its error and accuracy.
    EXPECT_EQ(m(2, 3), 0);
    EXPECT_EQ(m(2, 4), -1);
    EXPECT_EQ(m(2, 5), -1);
    EXPECT_EQ(m(5, 2), -1);
    EXPECT_EQ(m(3, 3), 2);
    // n * d = p: kappa 0.
    CImagen c0 = Imagen(kByte, 1, 2, {1, 1});
    ASSERT_FALSE(CalcularConfusion(mk, t, c0, leyenda, m));
    EXPECT_EQ(m.kappa, 0);
    // A real image leaves the counts at zero.
    CImagen tr = Imagen(kReal, 1, 2, {1, 2});
    ASSERT_FALSE(CalcularConfusion(mk, tr, c, leyenda, m));
    EXPECT_EQ(m(3, 3), 0);
    Verificacion v(kByte, {1, 1}, {1, 4}, {1, 1}, leyenda);
    v.Cli(2, Rechazo(Mensaje::Tabla(msg::kNdClasesDistintos)));
    EXPECT_FALSE(Existe(v.dir / "kappa.txt"));
    // The masked-out value 4 does not matter.
    Verificacion w(kByte, {1, 0}, {1, 4}, {1, 1}, leyenda);
    w.Cli(0);
}

}  // namespace
}  // namespace orvela::prueba

namespace orvela::prueba {
namespace {

// The table of boxes against every class tried in order, on byte and
// integer bands over their whole range, with 64 classes (the table's
// limit) and 65 (the direct rule), NaN bounds and empty boxes included.
TEST(Supervisada, ParalelepipedosPorTablaIgualQueDirecto) {
    std::mt19937 azar(11);
    for (int codigo : {kByte, kInteger}) {
        const double tope = codigo == kByte ? 255 : 65535;
        const long filas = 23, cols = 41;
        std::vector<CImagen> bandas;
        for (int b = 0; b < 3; ++b) {
            std::vector<double> v(filas * cols);
            for (double& x : v) x = std::floor(std::uniform_real_distribution<double>(0, tope + 1)(azar));
            v[0] = 0;
            v[1] = tope;
            bandas.push_back(Imagen(codigo, filas, cols, v));
        }
        BandasClasificar bc{{&bandas[0].pixeles, &bandas[1].pixeles, &bandas[2].pixeles}, filas, cols};
        for (std::size_t k : {64u, 65u}) {
            std::vector<ClaseLeida> clases(k);
            for (auto& c : clases)
                for (int b = 0; b < 3; ++b) {
                    c.media.push_back(std::uniform_real_distribution<double>(0, tope)(azar));
                    c.desviacion.push_back(std::uniform_real_distribution<double>(0, tope / 3)(azar));
                }
            clases[5].desviacion[1] = NAN;
            clases[6].desviacion[0] = -1;  // an empty box
            clases[7].media = {0, tope, 0};
            clases[7].desviacion = {0, 0, 0};
            std::vector<double> bajo, alto;
            std::vector<uint8_t> nd;
            for (const auto& c : clases) {
                nd.push_back(static_cast<uint8_t>(NdClase(c)));
                for (int b = 0; b < 3; ++b) {
                    bajo.push_back(c.media[b] - 2.0 * c.desviacion[b]);
                    alto.push_back(c.media[b] + 2.0 * c.desviacion[b]);
                }
            }
            std::vector<uint8_t> tabla(filas * cols), directo(filas * cols);
            ASSERT_TRUE(ClasificarParalelepipedos(bc, clases, 2, tabla));
            ASSERT_TRUE(ParalelepipedosDirecto(bc, bajo, alto, nd, directo));
            EXPECT_EQ(tabla, directo) << codigo << " " << k;
        }
    }
}

}  // namespace
}  // namespace orvela::prueba

namespace orvela::prueba {
namespace {

// The clustering as documented, pixel by pixel: seeds on the diagonal of
// the band ranges, the nearest centre with strict ties, member means in
// pixel order, empty clusters to the origin, the 0.5 test, labels from the
// truncated centre mean in 8 bits.
std::vector<uint8_t> KMediasDirectas(const std::vector<std::vector<double>>& x, std::size_t k) {
    const std::size_t n = x.size(), p = x[0].size();
    std::vector<std::vector<double>> c(k, std::vector<double>(n));
    for (std::size_t b = 0; b < n; ++b) {
        const double lo = *std::min_element(x[b].begin(), x[b].end());
        const double hi = *std::max_element(x[b].begin(), x[b].end());
        for (std::size_t i = 0; i < k; ++i) c[i][b] = i == 0 ? lo : c[i - 1][b] + (hi - lo) / (k - 1);
    }
    std::vector<std::size_t> miembro(p);
    for (;;) {
        for (std::size_t q = 0; q < p; ++q) {
            double mejor = 0;
            for (std::size_t i = 0; i < k; ++i) {
                double s = 0;
                for (std::size_t b = 0; b < n; ++b) s += std::pow(x[b][q] - c[i][b], 2.0);
                const double d = std::sqrt(s);
                if (i == 0 || d < mejor) mejor = d, miembro[q] = i;
            }
        }
        std::vector<std::vector<double>> nuevo(k, std::vector<double>(n, 0.0));
        std::vector<double> cuenta(k, 0.0);
        for (std::size_t q = 0; q < p; ++q) {
            cuenta[miembro[q]] += 1;
            for (std::size_t b = 0; b < n; ++b) nuevo[miembro[q]][b] += x[b][q];
        }
        bool quieto = true;
        for (std::size_t i = 0; i < k; ++i)
            for (std::size_t b = 0; b < n; ++b) {
                nuevo[i][b] = cuenta[i] > 0 ? nuevo[i][b] / cuenta[i] : 0.0;
                if (std::fabs(nuevo[i][b] - c[i][b]) > 0.5) quieto = false;
            }
        c = nuevo;
        if (quieto) break;
    }
    std::vector<uint8_t> r(p);
    for (std::size_t q = 0; q < p; ++q) {
        double s = 0;
        for (std::size_t b = 0; b < n; ++b) s += c[miembro[q]][b];
        r[q] = Almacenar<uint8_t>(s / static_cast<double>(n));
    }
    return r;
}

TEST(NoSupervisada, IgualQueLaDefinicionEnLosCuatroTipos) {
    std::mt19937 azar(3);
    for (int codigo : kTipos) {
        const long filas = 150, cols = 29;  // more than one block of rows
        std::vector<CImagen> bandas;
        std::vector<std::vector<double>> x;
        for (int b = 0; b < 3; ++b) {
            std::vector<double> v(filas * cols);
            for (double& e : v)
                e = std::uniform_int_distribution<int>(0, 200)(azar) + (EsReal(codigo) ? 0.25 : 0);
            bandas.push_back(Imagen(codigo, filas, cols, v));
            x.push_back(Muestrario(bandas.back()));
        }
        BandasClasificar bc{{&bandas[0].pixeles, &bandas[1].pixeles, &bandas[2].pixeles}, filas, cols};
        for (int k : {2, 7, 300}) {
            std::vector<uint8_t> s(filas * cols);
            const auto r = ClasificarNoSupervisada(bc, k, s);
            ASSERT_TRUE(r.convergido);
            EXPECT_EQ(s, KMediasDirectas(x, static_cast<std::size_t>(k))) << codigo << " " << k;
        }
    }
}

}  // namespace
}  // namespace orvela::prueba
