// "Revisar clases": the separability of classes worked by hand, the samples
// read back from a class file, and each warning of the report through the
// command line.
#include "Prueba.h"
#include "classification/FicheroClase.h"
#include "classification/RevisarClases.h"
#include "image/Codificacion.h"

namespace orvela::prueba {
namespace {

using Mat = std::vector<std::vector<double>>;

TEST(RevisarClases, JeffriesMatusitaTrabajadaAMano) {
    // One band, means 0 and 2, variances 1: C = 1, B = 4/8 = 0.5.
    EXPECT_NEAR(DistanciaJeffriesMatusita({0}, {{1}}, {2}, {{1}}), 2 * (1 - std::exp(-0.5)), 1e-12);
    // Same mean, variances 1 and 4: C = 2.5, B = 1/2 ln(2.5 / sqrt(4)).
    EXPECT_NEAR(DistanciaJeffriesMatusita({5}, {{1}}, {5}, {{4}}), 2 * (1 - std::exp(-0.5 * std::log(1.25))), 1e-12);
    // Two bands: C1 = diag(1, 4), C2 = diag(3, 4), C = diag(2, 4), d = (-1, -2):
    // d'C^-1 d = 1/2 + 4/4 = 1.5; ln(det C / sqrt(det C1 det C2)) = ln(8 / sqrt(48)).
    const double b = 1.5 / 8 + 0.5 * std::log(8 / std::sqrt(48.0));
    const Mat c1 = {{1, 0}, {0, 4}}, c2 = {{3, 0}, {0, 4}};
    EXPECT_NEAR(DistanciaJeffriesMatusita({0, 0}, c1, {1, 2}, c2), 2 * (1 - std::exp(-b)), 1e-12);
    EXPECT_NEAR(DistanciaJeffriesMatusita({1, 2}, c2, {0, 0}, c1), 2 * (1 - std::exp(-b)), 1e-12);
    // A correlated pair: C = [[2, 1], [1, 2]] for both, d = (3, 0):
    // C^-1 = 1/3 [[2, -1], [-1, 2]], d'C^-1 d = 9 * 2/3 = 6, B = 0.75.
    const Mat c = {{2, 1}, {1, 2}};
    EXPECT_NEAR(DistanciaJeffriesMatusita({3, 0}, c, {0, 0}, c), 2 * (1 - std::exp(-0.75)), 1e-12);
    // The same class: 0; far apart: close to 2.
    EXPECT_NEAR(DistanciaJeffriesMatusita({1, 2}, c, {1, 2}, c), 0.0, 1e-15);
    EXPECT_NEAR(DistanciaJeffriesMatusita({0, 0}, c1, {100, 100}, c1), 2.0, 1e-9);
    // A singular or non-finite covariance gives no figure.
    EXPECT_TRUE(std::isnan(DistanciaJeffriesMatusita({0, 0}, {{1, 1}, {1, 1}}, {1, 2}, c1)));
    EXPECT_TRUE(std::isnan(DistanciaJeffriesMatusita({0}, {{NAN}}, {2}, {{1}})));
}

// Two real bands 2 x 3, b2 not a multiple of b1.
std::vector<CImagen> Bandas() {
    std::vector<CImagen> b;
    b.push_back(Imagen(kReal, 2, 3, {1, 2, 3, 4, 5, 6}, "b1"));
    b.push_back(Imagen(kReal, 2, 3, {2, 1, 4, 3, 6, 8}, "b2"));
    return b;
}

std::string FicheroDe(const CarpetaPrueba& dir, const std::string& nombre, const std::vector<Posicion>& p) {
    const auto b = Bandas();
    const auto e = CalcularClase({&b[0], &b[1]}, {"b1", "b2"}, p);
    const std::string ruta = dir / (nombre + ".txt");
    EscribirFichero(ruta, Utf8ACp1252(TextoFicheroClase(e)));
    return ruta;
}

// A class file of diagonal covariance `var` as n samples would give it.
std::string Diagonal(const CarpetaPrueba& dir, const std::string& nombre, std::vector<double> media, double var,
                     double n = 30) {
    EstadisticasClase e;
    for (std::size_t b = 0; b < media.size(); ++b)
        e.bandas.push_back({"b" + std::to_string(b + 1), 0, 0, media[b], std::sqrt(var * (n - 1) / n)});
    e.covarianza.assign(media.size(), std::vector<double>(media.size(), 0.0));
    for (std::size_t b = 0; b < media.size(); ++b) e.covarianza[b][b] = var;
    const std::string ruta = dir / (nombre + ".txt");
    EscribirFichero(ruta, Utf8ACp1252(TextoFicheroClase(e)));
    return ruta;
}

TEST(RevisarClases, MuestrasYCovarianzaLeidasDelFichero) {
    CarpetaPrueba dir;
    const std::vector<Posicion> cinco = {{0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 1}};
    const std::vector<Posicion> dos = {{0, 0}, {0, 1}};
    std::vector<ClaseLeida> c;
    for (const auto& [nombre, p] : std::vector<std::pair<std::string, std::vector<Posicion>>>{
             {"cinco", cinco}, {"dos", dos}, {"una", {{0, 0}}}, {"ninguna", {}}}) {
        auto l = LeerFicheroClase(FicheroDe(dir, nombre, p), 2, true, true);
        ASSERT_TRUE(l) << nombre;
        c.push_back(*l);
    }
    // Nearly singular: eigenvalues about 2 and 5e-7.
    ClaseLeida casi = c[0];
    casi.covarianza = {{1, 1}, {1, 1.000001}};
    c.push_back(casi);
    const RevisionClases r = RevisarClases(c, 2);
    ASSERT_EQ(r.clases.size(), 5u);
    EXPECT_EQ(r.clases[0].muestras, 5);
    EXPECT_EQ(r.clases[0].estado, EstadoCovarianza::Buena);
    // Two samples in two bands: the file says 2 (0.5 / (0.5 - 0.25)), and
    // the covariance [[0.5, -0.5], [-0.5, 0.5]] is singular.
    EXPECT_EQ(r.clases[1].muestras, 2);
    EXPECT_EQ(r.clases[1].estado, EstadoCovarianza::Singular);
    EXPECT_TRUE(r.clases[2].menosDeDos);
    EXPECT_FALSE(r.clases[2].sinMuestras);
    EXPECT_EQ(r.clases[2].estado, EstadoCovarianza::NoFinita);
    EXPECT_TRUE(r.clases[3].sinMuestras);
    EXPECT_EQ(r.clases[4].estado, EstadoCovarianza::CasiSingular);
    EXPECT_NEAR(r.clases[4].condicion, 2.5e-7, 1e-9);
    // Pairs with a class that has no finite or regular covariance get none.
    EXPECT_TRUE(std::isfinite(r.Jm(0, 4)));
    EXPECT_TRUE(std::isnan(r.Jm(0, 1)));
    EXPECT_TRUE(std::isnan(r.Jm(2, 0)));
    EXPECT_EQ(r.Jm(0, 4), r.Jm(4, 0));
}

TEST(RevisarClases, CadaAvisoEnElInformeDeLaOrden) {
    CarpetaPrueba dir;
    auto b = Bandas();
    const std::string b1 = Escribir(b[0], dir / "b1"), b2 = Escribir(b[1], dir / "b2");
    const std::vector<std::string> clases = {
        FicheroDe(dir, "dos", {{0, 0}, {0, 1}}),
        FicheroDe(dir, "una", {{1, 2}}),
        Diagonal(dir, "agua", {10, 20}, 4),
        Diagonal(dir, "bosque", {20, 10}, 4),      // ND 15 as agua; JM about 2
        Diagonal(dir, "suelo", {300, 301}, 4),     // ND 300: 44 in a byte
        Diagonal(dir, "roca", {44, 45}, 4, 8),     // ND 44, 8 samples < 10 x 2
        Diagonal(dir, "arena", {301, 301.5}, 4),   // close to suelo: confused
    };
    EscribirFichero(dir / "vacio.txt", "");
    std::vector<std::string> args = {"revisar-clases"};
    for (const auto& c : clases) args.insert(args.end(), {"--clase", c});
    args.insert(args.end(), {"--clase", dir / "vacio.txt", "--informe", dir / "revision.txt", b1, b2});
    const std::string out = Espera(args, cli::kExito).out;
    EXPECT_EQ(Cp1252AUtf8(LeerFichero(dir / "revision.txt")), out);
    auto tiene = [&](const std::string& s) { EXPECT_NE(out.find(s), std::string::npos) << s << "\n" << out; };
    tiene("Bandas: 2 (b1, b2)");
    tiene("dos: unas 2 muestras para 2 bandas: pocas.");
    tiene("dos: la matriz de covarianza es singular");
    tiene("una: la clase tiene una sola muestra");
    tiene("roca: unas 8 muestras para 2 bandas: la covarianza se estima con poca seguridad");
    tiene("agua y bosque comparten el ND 15:");
    tiene("suelo y roca comparten el ND 44, una vez guardado en un byte:");
    tiene("Pares que se confundirán (JM menor que 1.0):\n  suelo - arena (");
    tiene("  dos - agua\n");  // no figure for a singular covariance
    tiene("Estos ficheros de clase no se han podido leer");
    tiene(dir / "vacio.txt");
    EXPECT_EQ(out.find("agua: "), std::string::npos) << "agua has nothing to warn of";
    // The figure of suelo - arena in the table is the hand formula's:
    // C = diag(4, 4), d = (-1, -0.5): B = (1 + 0.25) / 4 / 8.
    char jm[16];
    std::snprintf(jm, sizeof jm, "%.4f", 2 * (1 - std::exp(-1.25 / 32)));
    tiene(std::string("suelo - arena (") + jm + ")");
}

}  // namespace
}  // namespace orvela::prueba
