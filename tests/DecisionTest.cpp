// The training selection, the decision inspector's figures (hand-worked,
// and always agreeing with the classified image), reading one sample of a
// raster, and the session's record of classifications.
#include <cmath>
#include <random>

#include "Prueba.h"
#include "classification/Decision.h"
#include "classification/Entrenamiento.h"
#include "classification/Supervisada.h"
#include "operations/ClasificacionesHechas.h"

namespace orvela::prueba {
namespace {

ClaseLeida Clase(const char* nombre, std::vector<double> media, std::vector<double> desviacion,
                 std::vector<std::vector<double>> covarianza) {
    ClaseLeida c;
    c.nombre = nombre;
    c.media = std::move(media);
    c.desviacion = std::move(desviacion);
    c.covarianza = std::move(covarianza);
    return c;
}

TEST(Entrenamiento, GeorreferenciaDistintaYNombreExacto) {
    Cabecera a;
    a.titulo = "tm3";
    a.sistema = "UTM-30N";
    a.unidades = "m";
    a.geo = Georreferencia{0, 0, 100, 100, SinDato, 30, 1};
    Cabecera b = a;
    b.titulo = "tm4";
    Entrenamiento e = FijarEntrenamiento({{"/d/tm3.ozm", "tm3", a}, {"/d/tm4.ozm", "tm4", b}});
    EXPECT_TRUE(e.hecho);
    EXPECT_FALSE(e.georreferenciasDistintas);
    EXPECT_EQ(e.cabecera.sistema, "UTM-30N");
    EXPECT_EQ(e.BandaDeNombre("tm4"), 1);
    EXPECT_EQ(e.BandaDeNombre("TM4"), -1);  // letter case counts
    EXPECT_EQ(e.BandaDeNombre("tm"), -1);
    // Any of the two texts or seven numbers sets "unknown".
    for (int cambio = 0; cambio < 3; ++cambio) {
        Cabecera c = b;
        if (cambio == 0) c.unidades = "km";
        if (cambio == 1) c.geo.resolucion = 28.5f;
        if (cambio == 2) c.geo.errorPosicion = 0;
        e = FijarEntrenamiento({{"/d/tm3.ozm", "tm3", a}, {"/d/tm4.ozm", "tm4", c}});
        EXPECT_TRUE(e.georreferenciasDistintas) << cambio;
        EXPECT_EQ(e.cabecera.sistema, "unknown") << cambio;
    }
    EXPECT_FALSE(FijarEntrenamiento({}).hecho);
}

// One band; classes A (mean 10, deviation 2, variance 4), B (20, 5, 25) and
// C with A's statistics.
TEST(Decision, CasosTrabajadosAMano) {
    const std::vector<ClaseLeida> clases = {Clase("A", {10}, {2}, {{4}}), Clase("B", {20}, {5}, {{25}}),
                                            Clase("C", {10}, {2}, {{4}})};
    // 15 lies 5 from every mean: the first class wins, the next one is the
    // runner-up.
    Decision d = Decidir(ReglaSupervisada::Distancia, clases, 1, {15});
    EXPECT_EQ(d.clases[0].valor, 5);
    EXPECT_EQ(d.clases[1].valor, 5);
    EXPECT_EQ(d.ganadora, 0);
    EXPECT_EQ(d.segunda, 1);
    EXPECT_EQ(d.etiqueta, 10);
    d = Decidir(ReglaSupervisada::Distancia, clases, 1, {19});
    EXPECT_EQ(d.ganadora, 1);
    EXPECT_EQ(d.segunda, 0);  // A and C tie at 9: the earlier
    // Boxes [8, 12], [15, 25], [8, 12]: 12 is on the bound of A and C and the
    // later box wins; A, also inside, comes next.
    d = Decidir(ReglaSupervisada::Paralelepipedos, clases, 1, {12});
    EXPECT_EQ(d.ganadora, 2);
    EXPECT_EQ(d.segunda, 0);
    EXPECT_TRUE(d.clases[0].dentro);
    EXPECT_FALSE(d.clases[1].dentro);
    // 14 is in no box at multiplier 1 (0 in the image). At multiplier 2 the
    // boxes are [6, 14], [10, 30], [6, 14]: all hold it, the last wins and
    // the runner-up is the later of the others.
    d = Decidir(ReglaSupervisada::Paralelepipedos, clases, 1, {14});
    EXPECT_EQ(d.ganadora, -1);
    EXPECT_EQ(d.etiqueta, 0);
    d = Decidir(ReglaSupervisada::Paralelepipedos, clases, 2, {14});
    EXPECT_EQ(d.ganadora, 2);
    EXPECT_EQ(d.segunda, 1);
    // g = -ln(var) - (x - mean)^2 / var at 14: A -ln 4 - 4 = -5.386294,
    // B -ln 25 - 1.44 = -4.658876.
    d = Decidir(ReglaSupervisada::Probabilidad, clases, 1, {14});
    EXPECT_NEAR(d.clases[0].valor, -5.386294361, 1e-9);
    EXPECT_NEAR(d.clases[1].valor, -4.658875825, 1e-9);
    EXPECT_EQ(d.ganadora, 1);
    EXPECT_EQ(d.segunda, 0);
    EXPECT_EQ(d.etiqueta, 20);
    // An ND of 300 is stored as 44.
    d = Decidir(ReglaSupervisada::Distancia, {Clase("X", {300}, {1}, {{1}})}, 1, {0});
    EXPECT_EQ(d.clases[0].nd, 300);
    EXPECT_EQ(d.etiqueta, 44);
    EXPECT_EQ(d.segunda, -1);
}

// Whatever the data, the winner's ND is the label the classifiers give:
// equal means, overlapping boxes and a singular matrix included.
TEST(Decision, LaGanadoraEsLaEtiquetaDeLaImagen) {
    std::mt19937 azar(13);
    const long filas = 23, cols = 31;
    std::vector<CImagen> bandas;
    for (int b = 0; b < 3; ++b) {
        std::vector<double> v(filas * cols);
        for (double& x : v) x = std::uniform_int_distribution<int>(0, 50)(azar);
        bandas.push_back(Imagen(kByte, filas, cols, v));
    }
    std::vector<ClaseLeida> clases;
    for (int k = 0; k < 5; ++k) {
        std::vector<double> media, desv;
        std::vector<std::vector<double>> cov(3, std::vector<double>(3));
        for (int b = 0; b < 3; ++b) {
            media.push_back(std::uniform_real_distribution<double>(0, 50)(azar));
            desv.push_back(std::uniform_real_distribution<double>(2, 20)(azar));
            for (int e = 0; e < 3; ++e) cov[b][e] = b == e ? 30.0 + 7 * k : 2.0 - b + e;
        }
        clases.push_back(Clase("k", media, desv, cov));
    }
    clases[4].media = clases[2].media;
    clases[1].covarianza.assign(3, std::vector<double>(3, 2.0));
    BandasClasificar bc{{&bandas[0].pixeles, &bandas[1].pixeles, &bandas[2].pixeles}, filas, cols};
    for (auto regla : {ReglaSupervisada::Distancia, ReglaSupervisada::Paralelepipedos, ReglaSupervisada::Probabilidad}) {
        std::vector<uint8_t> s(filas * cols);
        ASSERT_TRUE(regla == ReglaSupervisada::Distancia         ? ClasificarMinimaDistancia(bc, clases, s)
                    : regla == ReglaSupervisada::Paralelepipedos ? ClasificarParalelepipedos(bc, clases, 1, s)
                                                                 : ClasificarMaximaProbabilidad(bc, clases, s));
        int dentro = 0;
        for (long i = 0; i < filas * cols; ++i) {
            std::vector<double> x;
            for (const auto& b : bandas) x.push_back(b.pixeles.Valor(static_cast<std::size_t>(i)));
            const Decision d = Decidir(regla, clases, 1, x);
            ASSERT_EQ(d.etiqueta, s[i]) << static_cast<int>(regla) << " " << i;
            ASSERT_NE(d.ganadora, d.segunda);
            dentro += d.ganadora >= 0;
        }
        EXPECT_GT(dentro, 0);
    }
}

TEST(Decision, UnaMuestraDelFicheroEnLosCuatroTipos) {
    for (int codigo : kTipos) {
        CarpetaPrueba dir;
        CImagen im = Imagen(codigo, 3, 4, {0, 1, 2, 3, 10, 11, 12, 13, 200, 201, 202, 250});
        const std::string ruta = Escribir(im, dir / "b");
        for (long f = 0; f < 3; ++f)
            for (long c = 0; c < 4; ++c) EXPECT_EQ(LeerMuestraRaster(ruta, codigo, 4, f, c), im.ValorPixel(f, c));
        EXPECT_FALSE(LeerMuestraRaster(ruta, codigo, 4, 3, 0));
        EXPECT_FALSE(LeerMuestraRaster(ruta, codigo, 4, 0, 4));
        EXPECT_FALSE(LeerMuestraRaster(ruta, 7, 4, 0, 0));
        EXPECT_FALSE(LeerMuestraRaster(dir / "no.ozm", codigo, 4, 0, 0));
    }
}

// The desktop turns the record on; a result is found by its samples alone,
// and no longer once one of them changes.
TEST(Decision, RegistroDeLasClasificacionesDeLaSesion) {
    CarpetaPrueba dir;
    CImagen b1 = Imagen(kByte, 2, 2, {10, 20, 30, 40}, "b1");
    const std::string r1 = Escribir(b1, dir / "b1");
    EscribirFichero(dir / "a.txt", "\n\nb1\nND Máximo:1\nND Mínimo:1\nValor Medio:12\nDesviación Típica:3\n\n"
                                   "Matriz De Covarianza:\n9 \n");
    EscribirFichero(dir / "b.txt", "\n\nb1\nND Máximo:1\nND Mínimo:1\nValor Medio:35\nDesviación Típica:5\n\n"
                                   "Matriz De Covarianza:\n25 \n");
    OlvidarClasificaciones();
    const Declaracion* d = BuscarPorOrden("supervisada");
    Valores v = Con("supervisada", {{"regla", 1}, {"multiplicador", 2}});
    auto correr = [&] {
        EntradasCargadas e;
        e.imagenes = {{&b1}, {}};
        e.ficheros = {{}, {dir / "a.txt", dir / "b.txt"}};
        b1.rutaRaster = r1;
        return Calcular(*d, e, Completar(*d, v), Destino::Fichero);
    };
    ActivarRegistroClasificaciones(false);
    Resultado r = correr();
    ASSERT_FALSE(r.fallo);
    EXPECT_FALSE(BuscarClasificacion(r.imagenes[0]));
    ActivarRegistroClasificaciones(true);
    r = correr();
    ActivarRegistroClasificaciones(false);
    // Boxes [6, 18] and [25, 45]: 10 -> 12, 20 -> 0, 30 and 40 -> 35.
    EXPECT_EQ(Muestrario(r.imagenes[0]), (std::vector<double>{12, 0, 35, 35}));
    const auto h = BuscarClasificacion(r.imagenes[0]);
    ASSERT_TRUE(h);
    EXPECT_EQ(h->regla, ReglaSupervisada::Paralelepipedos);
    EXPECT_EQ(h->multiplicador, 2);
    ASSERT_EQ(h->bandas.size(), 1u);
    EXPECT_EQ(h->bandas[0].ruta, r1);
    EXPECT_EQ(h->bandas[0].nombre, "b1");
    ASSERT_EQ(h->clases.size(), 2u);
    EXPECT_EQ(h->clases[1].media, (std::vector<double>{35}));
    EXPECT_EQ(h->clases[1].desviacion, (std::vector<double>{5}));
    r.imagenes[0].pixeles.Como<uint8_t>()[1] = 7;
    EXPECT_FALSE(BuscarClasificacion(r.imagenes[0]));
    OlvidarClasificaciones();
}

}  // namespace
}  // namespace orvela::prueba
