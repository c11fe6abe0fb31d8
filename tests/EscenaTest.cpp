// The practice scene: a landscape that behaves like a TM scene, with the
// defects it announces and a ground truth that reads back.
#include "tests/Prueba.h"
#include "tools/EscenaPractica.h"
#include "transforms/MediasClase.h"

using namespace orvela;
using namespace orvela::prueba;
using namespace orvela::escena;

namespace {

const Escena& LaEscena() {
    static const Escena e = [] {
        Escena r;
        EXPECT_FALSE(CrearEscena(r));
        return r;
    }();
    return e;
}

std::span<const uint8_t> Banda(int banda) {
    const int i = static_cast<int>(std::find(kBandas, kBandas + 6, banda) - kBandas);
    return LaEscena().bandas.at(i).pixeles.Como<uint8_t>();
}

// Mean of a band over the pixels of one class of the ground truth, or over
// the lines of one detector.
double MediaClase(int banda, uint8_t clase) {
    const auto v = LaEscena().verdad.pixeles.Como<uint8_t>();
    double s = 0, n = 0;
    for (std::size_t i = 0; i < v.size(); ++i)
        if (v[i] == clase) s += Banda(banda)[i], ++n;
    return s / n;
}
double MediaLineas(int banda, int detector) {
    double s = 0, n = 0;
    for (std::size_t i = 0; i < Banda(banda).size(); ++i)
        if (static_cast<int>(i / kLado) % 16 == detector) s += Banda(banda)[i], ++n;
    return s / n;
}

}  // namespace

TEST(Escena, FirmasEspectralesYVerdadTerreno) {
    const auto& e = LaEscena();
    ASSERT_EQ(e.bandas.size(), 6u);
    for (const auto& b : e.bandas) EXPECT_EQ(std::make_tuple(b.tipoDato, b.Filas(), b.Columnas()),
                                             std::make_tuple(kByte, long{kLado}, long{kLado}));
    // Every class is there in a fair share, and nothing else.
    long cuenta[256] = {};
    for (uint8_t v : e.verdad.pixeles.Como<uint8_t>()) ++cuenta[v];
    for (int clase = kAgua; clase <= kUrbano; ++clase) EXPECT_GT(cuenta[clase], kLado * kLado / 30) << clase;
    EXPECT_EQ(cuenta[kAgua] + cuenta[kVegetacion] + cuenta[kSuelo] + cuenta[kUrbano], kLado * kLado);

    // Water is dark in the near and middle infrared, vegetation bright in
    // band 4, soil brighter than vegetation in bands 5 and 7 and in red.
    EXPECT_LT(MediaClase(4, kAgua) + 40, MediaClase(4, kVegetacion));
    EXPECT_LT(MediaClase(5, kAgua) + 40, MediaClase(5, kSuelo));
    EXPECT_LT(MediaClase(5, kVegetacion) + 20, MediaClase(5, kSuelo));
    EXPECT_LT(MediaClase(7, kVegetacion) + 20, MediaClase(7, kSuelo));
    EXPECT_LT(MediaClase(3, kVegetacion) + 20, MediaClase(3, kSuelo));
    EXPECT_GT(MediaClase(4, kVegetacion), MediaClase(3, kVegetacion) * 3);
    EXPECT_GT(MediaClase(1, kUrbano), MediaClase(1, kVegetacion));

    // Deterministic: a second build gives the same bytes.
    Escena otra;
    ASSERT_FALSE(CrearEscena(otra));
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(std::memcmp(otra.bandas[i].pixeles.Datos(), e.bandas[i].pixeles.Datos(), e.bandas[i].pixeles.Bytes()), 0);
    EXPECT_EQ(std::memcmp(otra.verdad.pixeles.Datos(), e.verdad.pixeles.Datos(), e.verdad.pixeles.Bytes()), 0);
}

TEST(Escena, DefectosDelSensor) {
    // Striping: one detector's lines stand out from their neighbours'.
    const double bandeado = MediaLineas(kBandaBandeada, kDetectorBandeado);
    EXPECT_GT(bandeado - MediaLineas(kBandaBandeada, kDetectorBandeado - 1), 6);
    EXPECT_GT(bandeado - MediaLineas(kBandaBandeada, kDetectorBandeado + 1), 6);
    EXPECT_LT(std::abs(MediaLineas(2, kDetectorBandeado) - MediaLineas(2, kDetectorBandeado - 1)), 2);

    // The lost line is all 0; nothing else in any band is 0 or 255 but the
    // isolated interior lost pixels.
    auto extremo = [](uint8_t v) { return v == 0 || v == 255; };
    for (int banda : kBandas) {
        const auto b = Banda(banda);
        long extremos = 0;
        for (long f = 0; f < kLado; ++f)
            for (long c = 0; c < kLado; ++c) {
                const uint8_t v = b[f * kLado + c];
                if (banda == kBandaLineaPerdida && f == kLineaPerdida) {
                    EXPECT_EQ(v, 0);
                    continue;
                }
                if (!extremo(v)) continue;
                ++extremos;
                ASSERT_TRUE(f > 0 && c > 0 && f < kLado - 1 && c < kLado - 1);
                int vecinos = 0;
                for (long df = -1; df <= 1; ++df)
                    for (long dc = -1; dc <= 1; ++dc) vecinos += extremo(b[(f + df) * kLado + c + dc]);
                EXPECT_EQ(vecinos, 1) << f << " " << c;
            }
        EXPECT_EQ(extremos, banda == kBandaPixelesPerdidos ? kPixelesPerdidos : 0) << banda;
    }
}

TEST(Escena, ParesEscritosYLeyenda) {
    CarpetaPrueba dir;
    const std::string carpeta = dir / "a/b";
    ASSERT_FALSE(EscribirEscena(carpeta));
    const float x0 = kMinX, y1 = kMaxY, lado = 30.0f * kLado;
    for (int i = 0; i < 7; ++i) {
        const CImagen& esperada = i < 6 ? LaEscena().bandas[i] : LaEscena().verdad;
        const std::string nombre = i < 6 ? "tm" + std::to_string(kBandas[i]) : "verdad";
        CImagen im;
        ASSERT_FALSE(im.Cargar(carpeta + "/" + nombre + ".ozm")) << nombre;
        EXPECT_EQ(im.titulo, nombre);
        EXPECT_EQ(std::make_pair(im.tipoDato, im.sistemaReferencia), std::make_pair(int{kByte}, std::string("UTM-30N")));
        EXPECT_EQ(im.geo, (Georreferencia{x0, y1 - lado, x0 + lado, y1, SinDato, 30, 1}));
        EXPECT_EQ(Muestrario(im), Muestrario(esperada.pixeles));
    }
    const Clases esperadas = {{"Agua", kAgua}, {"Vegetacion", kVegetacion}, {"Suelo", kSuelo}, {"Urbano", kUrbano}};
    EXPECT_EQ(Pares(LeerLeyendaVentana(carpeta + "/verdad.ozm")), esperadas);
    EXPECT_EQ(Pares(LeerLeyendaConfusion(carpeta + "/verdad.ozm")), esperadas);

    // Written again over itself, the scene is the same.
    const std::string antes = LeerFichero(carpeta + "/tm5.ozm");
    ASSERT_FALSE(EscribirEscena(carpeta));
    EXPECT_EQ(LeerFichero(carpeta + "/tm5.ozm"), antes);
    EXPECT_EQ(Contenido(carpeta).size(), 25u);

    // A path through a file, and a folder where one of the files cannot be
    // put: what was written is taken back.
    EscribirFichero(dir / "fichero", "x");
    EXPECT_TRUE(EscribirEscena(dir / "fichero/escena"));
    std::filesystem::create_directories(dir / "e/verdad.inf");
    EXPECT_TRUE(EscribirEscena(dir / "e"));
    EXPECT_EQ(Contenido(dir / "e"), (std::set<std::string>{"verdad.inf"}));
}

// The unmixing lab of the help page: tm2 ... tm5 with the class files written
// beside the scene. Pure areas come out pure, the scrubland gives back the
// fractions it was mixed from, and the ground truth of the pure areas reads
// back with its legend.
TEST(Escena, DesmezclaConLosExtremosDeLaEscena) {
    CarpetaPrueba dir;
    ASSERT_FALSE(EscribirEscena(dir.Ruta()));
    const char* const ficheros[3] = {"vegetacion.txt", "sombra.txt", "suelo.txt"};
    const double* const firmas[3] = {kFirmaVegetacionPura, kFirmaSombra, kFirmaSueloPuro};
    for (int k = 0; k < 3; ++k) {
        const auto medias = LeerMediasClase(dir / ficheros[k]);
        ASSERT_TRUE(medias) << ficheros[k];
        ASSERT_EQ(medias->size(), 4u);
        // Bands 2 to 5 are file bands 1 to 4; 196 samples with noise of 1.2.
        for (int b = 0; b < 4; ++b) EXPECT_NEAR((*medias)[b], firmas[k][b + 1], 0.5) << ficheros[k] << " " << b;
    }
    // Each is what "Establecer clase" writes for the rectangles the help page gives.
    const int columnas[3] = {kColumnaVegetacionPura, kColumnaSombra, kColumnaSueloPuro};
    for (int k = 0; k < 3; ++k) {
        std::vector<std::string> args = {"clase", "--modo", "rectangulos", "--altura", "3", "--anchura", "3"};
        for (const auto& centro : kCentrosMuestra)
            args.insert(args.end(), {"--punto", std::to_string(kFilaPuras + centro[0]) + "," +
                                                    std::to_string(columnas[k] + centro[1])});
        for (int b : kBandasDesmezcla) args.push_back(dir / ("tm" + std::to_string(b) + ".ozm"));
        args.push_back(dir / "repetida");
        Espera(args, cli::kExito);
        EXPECT_EQ(LeerFichero(dir / "repetida.txt"), LeerFichero(dir / ficheros[k])) << ficheros[k];
    }
    Espera({"desmezcla-landsat", "--vegetacion", dir / "vegetacion.txt", "--sombra", dir / "sombra.txt", "--suelo",
            dir / "suelo.txt", dir / "tm2.ozm", dir / "tm3.ozm", dir / "tm4.ozm", dir / "tm5.ozm", dir / "mez"},
           cli::kExito);
    std::vector<double> fraccion[3], error;
    const char* const finales[3] = {"_Vegetacion", "_Sombra", "_Suelo"};
    for (int k = 0; k < 3; ++k) {
        CImagen im;
        ASSERT_FALSE(im.Cargar(dir / (std::string("mez") + finales[k] + ".ozm")));
        fraccion[k] = Muestrario(im);
    }
    CImagen e;
    ASSERT_FALSE(e.Cargar(dir / "mez_Error.ozm"));
    error = Muestrario(e);
    CImagen extremos;
    ASSERT_FALSE(extremos.Cargar(dir / "extremos.ozm"));
    const auto puras = Muestrario(extremos);

    double suma[3][3] = {}, n[3] = {}, desvio = 0, errorMatorral = 0, matorral = 0;
    for (int f = 0; f < kLado; ++f)
        for (int c = 0; c < kLado; ++c) {
            const std::size_t i = static_cast<std::size_t>(f) * kLado + c;
            double fr[3];
            if (FraccionesMatorral(f, c, fr)) {
                for (int k = 0; k < 3; ++k) desvio += std::abs(fraccion[k][i] - (100 + 100 * fr[k]));
                errorMatorral += error[i];
                ++matorral;
            }
            if (puras[i] == 0) continue;
            const int k = static_cast<int>(puras[i]) - 1;
            for (int j = 0; j < 3; ++j) suma[k][j] += fraccion[j][i];
            ++n[k];
        }
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(n[k], kLadoPuro * kLadoPuro) << k;
        for (int j = 0; j < 3; ++j) EXPECT_NEAR(suma[k][j] / n[k], j == k ? 200 : 100, 2.0) << k << " " << j;
    }
    EXPECT_EQ(matorral, kAltoMatorral * (kColumnaSueloPuro + kLadoPuro - kColumnaVegetacionPura));
    EXPECT_LT(desvio / (3 * matorral), 3.0);         // within 3 % of the fractions it was mixed from
    EXPECT_LT(errorMatorral / matorral, 1.5);        // the noise, not a missing endmember
    EXPECT_EQ(Pares(LeerLeyendaVentana(dir / "extremos.ozm")),
              (Clases{{"Vegetacion_pura", kExtremoVegetacion}, {"Sombra", kExtremoSombra}, {"Suelo_desnudo", kExtremoSuelo}}));
}
