// Principal components: the Jacobi decomposition, the tie rule of the sort,
// the uncentred components and the report, over the four data types.
#include "Prueba.h"
#include "transforms/ComponentesPrincipales.h"

namespace orvela::prueba {
namespace {

// Two uncorrelated bands with large means: variances 1 and 4, so the second
// band is the first component, taken raw (not centred), with no rotation.
const std::vector<double> kA = {100, 102, 100, 102};
const std::vector<double> kB = {200, 200, 204, 204};

const char* const kInformeDiagonal =
    "\n\nAnálisis de las componentes principales para las siguientes imágenes de entrada:\n\n"
    "\ta\n\tb\n"
    "\nComo resultado obtenemos los siguientes componentes:\n\n"
    "\tComponentes_Principales_a_CP1\n\tComponentes_Principales_a_CP2\n"
    "\n\nMatriz de varianza-covarianza.\n"
    "\t    1.00\t    0.00\n"
    "\t    0.00\t    4.00\n"
    "\n\nMatriz de correlación.\n"
    "\t1.000000\t0.000000\n"
    "\t0.000000\t1.000000\n"
    "\n\nCOMPONENTES PRINCIPALES."
    "\n\n% varianza\t   80.00\t   20.00"
    "\n\nautovalores\t   4.000\t   1.000"
    "\n\nautovectores"
    "\n\t\t 0.00000\t 1.00000"
    "\n\t\t 1.00000\t 0.00000"
    "\n\t*Nota:\tLos autovectores están en filas.\n\t\tLa fila n corresponde al autovalor n.";

TEST(Componentes, CovarianzaDiagonalSinGiroYComponentesSinCentrar) {
    for (int tipo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(tipo));
        const CImagen a = Imagen(tipo, 2, 2, kA, "a"), b = Imagen(tipo, 2, 2, kB, "b");
        const Resultado r = Operar("componentes", {&a, &b}, Con("componentes", {{"numero", 2}}));
        ASSERT_FALSE(r.fallo);
        ASSERT_EQ(r.imagenes.size(), 2u);
        EXPECT_EQ(r.imagenes[0].tipoDato, kDouble);
        EXPECT_EQ(Muestrario(r.imagenes[0]), kB);
        EXPECT_EQ(Muestrario(r.imagenes[1]), kA);
        EXPECT_EQ(r.imagenes[1].titulo, "Componentes_Principales_a_CP2");
        EXPECT_EQ(r.finales, (std::vector<std::string>{"_CP1", "_CP2"}));
        ASSERT_EQ(r.informes.size(), 1u);
        EXPECT_EQ(r.informes[0].final, "_Texto_CP.txt");
        EXPECT_EQ(r.informes[0].contenido, kInformeDiagonal);
    }
}

TEST(Componentes, DosBandasIguales) {
    for (int tipo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(tipo));
        const std::vector<double> x = {1, 2, 3, 4};
        const CImagen a = Imagen(tipo, 2, 2, x), b = Imagen(tipo, 2, 2, x);
        std::vector<const Muestras*> m = {&a.pixeles, &b.pixeles};
        const auto an = AnalizarComponentes(m, 2, 2);
        ASSERT_TRUE(an);
        // sigma^2 = 1.25: eigenvalues 2.5 and 0, first eigenvector (1, 1) / sqrt 2.
        EXPECT_NEAR(an->autovalores[0], 2.5, 1e-12);
        EXPECT_NEAR(an->autovalores[1], 0.0, 1e-12);
        EXPECT_NEAR(an->porcentajes[0], 100.0, 1e-9);
        EXPECT_NEAR(std::fabs(an->autovectores[0][0]), std::sqrt(0.5), 1e-12);
        EXPECT_NEAR(an->autovectores[0][0], an->autovectores[0][1], 1e-12);
        Muestras c = Muestras::Crear(kDouble, 4);
        std::vector<Muestras*> s = {&c};
        ASSERT_TRUE(ProyectarComponentes(m, 2, 2, *an, s));
        for (int i = 0; i < 4; ++i) EXPECT_NEAR(std::fabs(c.Valor(i)), std::sqrt(2.0) * x[i], 1e-12);
    }
}

TEST(Componentes, JacobiYOrdenConEmpates) {
    // [[2,1,0],[1,2,0],[0,0,3]]: one rotation of (0,1) leaves the diagonal 3, 1, 3.
    std::vector<double> a = {2, 1, 2, 0, 0, 3};
    std::vector<std::vector<double>> v;
    JacobiUmbral(a, 3, v);
    std::vector<double> l = {a[0], a[2], a[5]};
    EXPECT_NEAR(l[0], 3, 1e-14);
    EXPECT_NEAR(l[1], 1, 1e-14);
    EXPECT_EQ(l[2], 3);
    EXPECT_NEAR(v[0][0], std::sqrt(0.5), 1e-15);
    EXPECT_NEAR(v[0][1], std::sqrt(0.5), 1e-15);
    // Equal eigenvalues keep their order: the earlier 3 stays first.
    std::vector<std::vector<double>> marcas = {{0}, {1}, {2}};
    std::vector<double> valores = {3, 1, 3};
    OrdenarAutovalores(valores, marcas);
    EXPECT_EQ(valores, (std::vector<double>{3, 3, 1}));
    EXPECT_EQ(marcas, (std::vector<std::vector<double>>{{0}, {2}, {1}}));
}

TEST(Componentes, MasCarasQueEnUnNucleo) {
    // Exact integer sums and block-ordered real sums give the same figures on
    // one core and on every core.
    std::mt19937 g(7);
    std::vector<std::vector<double>> v(3, std::vector<double>(300 * 70));
    for (auto& b : v)
        for (double& x : b) x = static_cast<double>(g() % 256);
    for (int tipo : kTipos) {
        SCOPED_TRACE(NombreDeCodigo(tipo));
        const CImagen a = Imagen(tipo, 300, 70, v[0], "a"), b = Imagen(tipo, 300, 70, v[1], "b"),
                      c = Imagen(tipo, 300, 70, v[2], "c");
        FijarNucleos(1);
        const Resultado r1 = Operar("componentes", {&a, &b, &c}, Con("componentes", {{"numero", 3}}));
        FijarNucleos(0);
        const Resultado rn = Operar("componentes", {&a, &b, &c}, Con("componentes", {{"numero", 3}}));
        ASSERT_FALSE(r1.fallo);
        ASSERT_FALSE(rn.fallo);
        EXPECT_EQ(r1.informes[0].contenido, rn.informes[0].contenido);
        for (int k = 0; k < 3; ++k) EXPECT_EQ(Muestrario(r1.imagenes[k]), Muestrario(rn.imagenes[k]));
    }
}

TEST(Componentes, OrdenCli) {
    CarpetaPrueba dir;
    CImagen a = Imagen(kByte, 2, 2, kA, "a"), b = Imagen(kByte, 2, 2, kB, "b");
    CImagen c = Imagen(kInteger, 2, 2, kA, "c"), d = Imagen(kByte, 1, 4, kA, "d");
    const std::string ra = Escribir(a, dir / "a"), rb = Escribir(b, dir / "b");
    const std::string rc = Escribir(c, dir / "c"), rd = Escribir(d, dir / "d");
    Espera({"componentes", "--numero", "3", ra, rb, dir / "s"}, cli::kRechazo,
           Rechazo(Mensaje::Tabla(msg::kNumeroComponentes)));
    Espera({"componentes", "--numero", "0", ra, rb, dir / "s"}, cli::kRechazo,
           Rechazo(Mensaje::Tabla(msg::kNumeroComponentes)));
    Espera({"componentes", "--numero", "1", ra, rc, dir / "s"}, cli::kRechazo,
           Rechazo(Mensaje::Tabla(msg::kNoCoincide, "El tipo de dato", "bandas")));
    Espera({"componentes", "--numero", "1", ra, rd, dir / "s"}, cli::kRechazo,
           Rechazo(Mensaje::Tabla(msg::kNoCoincide, "Las dimensiones", "bandas")));
    EXPECT_EQ(Contenido(dir.Ruta()).count("s_CP1.ozm"), 0u);
    Espera({"componentes", "--numero", "2", ra, rb, dir / "s"}, cli::kExito);
    for (const char* f : {"s_CP1.ozm", "s_CP1.inf", "s_CP2.ozm", "s_CP2.inf", "s_Texto_CP.txt"})
        EXPECT_TRUE(Existe(dir / f)) << f;
    CImagen cp1;
    ASSERT_FALSE(cp1.Cargar(dir / "s_CP1.ozm"));
    EXPECT_EQ(Muestrario(cp1), kB);
    // The report is written in Windows-1252.
    const std::string informe = LeerFichero(dir / "s_Texto_CP.txt");
    EXPECT_NE(informe.find("Matriz de correlaci\xf3n."), std::string::npos);
    EXPECT_NE(informe.find("\ta\n\tb\n"), std::string::npos);
}

}  // namespace
}  // namespace orvela::prueba
