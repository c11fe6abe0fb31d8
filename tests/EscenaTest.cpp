// The practice scene: a landscape that behaves like a TM scene, with the
// defects it announces and a ground truth that reads back.
#include "tests/Prueba.h"
#include "tools/EscenaPractica.h"

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
    EXPECT_EQ(Contenido(carpeta).size(), 19u);

    // A path through a file, and a folder where one of the files cannot be
    // put: what was written is taken back.
    EscribirFichero(dir / "fichero", "x");
    EXPECT_TRUE(EscribirEscena(dir / "fichero/escena"));
    std::filesystem::create_directories(dir / "e/verdad.inf");
    EXPECT_TRUE(EscribirEscena(dir / "e"));
    EXPECT_EQ(Contenido(dir / "e"), (std::set<std::string>{"verdad.inf"}));
}
