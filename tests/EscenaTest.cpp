// The practice scene: a landscape that behaves like a TM scene, with the
// defects it announces and a ground truth that reads back.
#include <gtest/gtest.h>

#include <cstring>

#include "image/Leyenda.h"
#include "tests/CarpetaPrueba.h"
#include "tools/EscenaPractica.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

const escena::Escena& Escena() {
    static const escena::Escena e = [] {
        escena::Escena r;
        EXPECT_FALSE(escena::CrearEscena(r));
        return r;
    }();
    return e;
}

int Indice(int banda) {
    for (int i = 0; i < 6; ++i)
        if (escena::kBandas[i] == banda) return i;
    return -1;
}

std::span<const uint8_t> Banda(int banda) { return Escena().bandas[Indice(banda)].pixeles.Como<uint8_t>(); }

// Mean of a band over the pixels of one class of the ground truth.
double MediaClase(int banda, uint8_t clase) {
    const auto v = Escena().verdad.pixeles.Como<uint8_t>();
    const auto b = Banda(banda);
    double s = 0;
    long n = 0;
    for (std::size_t i = 0; i < v.size(); ++i)
        if (v[i] == clase) {
            s += b[i];
            ++n;
        }
    return n ? s / n : 0;
}

double MediaLineas(int banda, int detector) {
    const auto b = Banda(banda);
    double s = 0;
    long n = 0;
    for (int f = detector; f < escena::kLado; f += 16)
        for (int c = 0; c < escena::kLado; ++c, ++n) s += b[static_cast<std::size_t>(f) * escena::kLado + c];
    return s / n;
}

}  // namespace

TEST(Escena, FirmasEspectralesYVerdadTerreno) {
    const auto& e = Escena();
    ASSERT_EQ(e.bandas.size(), 6u);
    for (const auto& b : e.bandas) {
        EXPECT_EQ(b.tipoDato, kByte);
        EXPECT_EQ(b.Filas(), escena::kLado);
        EXPECT_EQ(b.Columnas(), escena::kLado);
    }
    // Every class is there in a fair share.
    long cuenta[256] = {};
    for (uint8_t v : e.verdad.pixeles.Como<uint8_t>()) ++cuenta[v];
    for (int clase = escena::kAgua; clase <= escena::kUrbano; ++clase)
        EXPECT_GT(cuenta[clase], escena::kLado * escena::kLado / 30) << clase;
    EXPECT_EQ(cuenta[escena::kAgua] + cuenta[escena::kVegetacion] + cuenta[escena::kSuelo] + cuenta[escena::kUrbano],
              escena::kLado * escena::kLado);

    // Water is dark in the near and middle infrared, vegetation bright in
    // band 4, soil brighter than vegetation in bands 5 and 7 and in red.
    EXPECT_LT(MediaClase(4, escena::kAgua) + 40, MediaClase(4, escena::kVegetacion));
    EXPECT_LT(MediaClase(5, escena::kAgua) + 40, MediaClase(5, escena::kSuelo));
    EXPECT_LT(MediaClase(5, escena::kVegetacion) + 20, MediaClase(5, escena::kSuelo));
    EXPECT_LT(MediaClase(7, escena::kVegetacion) + 20, MediaClase(7, escena::kSuelo));
    EXPECT_LT(MediaClase(3, escena::kVegetacion) + 20, MediaClase(3, escena::kSuelo));
    EXPECT_GT(MediaClase(4, escena::kVegetacion), MediaClase(3, escena::kVegetacion) * 3);
    EXPECT_GT(MediaClase(1, escena::kUrbano), MediaClase(1, escena::kVegetacion));

    // Deterministic: a second build gives the same bytes.
    escena::Escena otra;
    ASSERT_FALSE(escena::CrearEscena(otra));
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(std::memcmp(otra.bandas[i].pixeles.Datos(), e.bandas[i].pixeles.Datos(), e.bandas[i].pixeles.Bytes()), 0);
    EXPECT_EQ(std::memcmp(otra.verdad.pixeles.Datos(), e.verdad.pixeles.Datos(), e.verdad.pixeles.Bytes()), 0);
}

TEST(Escena, DefectosDelSensor) {
    // Striping: one detector's lines stand out from their neighbours'.
    const double bandeado = MediaLineas(escena::kBandaBandeada, escena::kDetectorBandeado);
    EXPECT_GT(bandeado - MediaLineas(escena::kBandaBandeada, escena::kDetectorBandeado - 1), 6);
    EXPECT_GT(bandeado - MediaLineas(escena::kBandaBandeada, escena::kDetectorBandeado + 1), 6);
    EXPECT_LT(std::abs(MediaLineas(2, escena::kDetectorBandeado) - MediaLineas(2, escena::kDetectorBandeado - 1)), 2);

    // The lost line is all 0; nothing else in any band is 0 or 255 except
    // the isolated lost pixels.
    for (int banda : escena::kBandas) {
        const auto b = Banda(banda);
        long extremos = 0;
        for (std::size_t i = 0; i < b.size(); ++i) {
            const bool enLinea = banda == escena::kBandaLineaPerdida &&
                                 static_cast<int>(i / escena::kLado) == escena::kLineaPerdida;
            if (enLinea) {
                EXPECT_EQ(b[i], 0);
            } else if (b[i] == 0 || b[i] == 255) {
                ++extremos;
                const long f = static_cast<long>(i) / escena::kLado, c = static_cast<long>(i) % escena::kLado;
                EXPECT_TRUE(f > 0 && c > 0 && f < escena::kLado - 1 && c < escena::kLado - 1);
                for (long df = -1; df <= 1; ++df)
                    for (long dc = -1; dc <= 1; ++dc) {
                        const uint8_t vecino = b[static_cast<std::size_t>((f + df) * escena::kLado + c + dc)];
                        if (df != 0 || dc != 0) {
                            EXPECT_TRUE(vecino != 0 && vecino != 255);  // isolated
                        }
                    }
            }
        }
        EXPECT_EQ(extremos, banda == escena::kBandaPixelesPerdidos ? escena::kPixelesPerdidos : 0) << banda;
    }
}

TEST(Escena, ParesEscritosYLeyenda) {
    CarpetaPrueba dir;
    const std::string carpeta = dir / "a/b";
    ASSERT_FALSE(escena::EscribirEscena(carpeta));
    for (const char* nombre : {"tm1", "tm2", "tm3", "tm4", "tm5", "tm7", "verdad"}) {
        CImagen im;
        ASSERT_FALSE(im.Cargar(carpeta + "/" + nombre + ".ozm")) << nombre;
        EXPECT_EQ(im.titulo, nombre);
        EXPECT_EQ(im.tipoDato, kByte);
        EXPECT_EQ(im.sistemaReferencia, "UTM-30N");
        EXPECT_EQ(im.geo.resolucion, 30.0f);
        EXPECT_EQ(im.geo.maxX - im.geo.minX, 30.0f * escena::kLado);
        EXPECT_EQ(im.geo.maxY - im.geo.minY, 30.0f * escena::kLado);
        double x = 0, y = 0;
        im.ValorPixel(1, 1, &x, &y);
        EXPECT_EQ(x, escena::kMinX + 30);
        EXPECT_EQ(y, escena::kMaxY - 30);
    }
    CImagen tm4;
    ASSERT_FALSE(tm4.Cargar(carpeta + "/tm4.ozm"));
    EXPECT_EQ(std::memcmp(tm4.pixeles.Datos(), Escena().bandas[Indice(4)].pixeles.Datos(), tm4.pixeles.Bytes()), 0);

    const std::vector<std::pair<std::string, double>> esperadas = {
        {"Agua", escena::kAgua}, {"Vegetacion", escena::kVegetacion}, {"Suelo", escena::kSuelo}, {"Urbano", escena::kUrbano}};
    for (const auto& leida : {LeerLeyendaVentana(carpeta + "/verdad.ozm"), LeerLeyendaConfusion(carpeta + "/verdad.ozm")}) {
        ASSERT_TRUE(leida);
        ASSERT_EQ(leida->size(), esperadas.size());
        for (std::size_t i = 0; i < esperadas.size(); ++i) {
            EXPECT_EQ((*leida)[i].nombre, esperadas[i].first);
            EXPECT_EQ((*leida)[i].nd, esperadas[i].second);
        }
    }

    // Written again over itself, the scene is the same.
    const std::string antes = LeerFichero(carpeta + "/tm5.ozm");
    ASSERT_FALSE(escena::EscribirEscena(carpeta));
    EXPECT_EQ(LeerFichero(carpeta + "/tm5.ozm"), antes);
    EXPECT_EQ(Contenido(carpeta).size(), 15u);
}

TEST(Escena, CarpetaImposibleNoDejaNada) {
    CarpetaPrueba dir;
    EscribirFichero(dir / "fichero", "x");
    EXPECT_TRUE(escena::EscribirEscena(dir / "fichero/escena"));
    // A folder where one of the files cannot be put: what was written is taken back.
    std::filesystem::create_directories(dir / "e/verdad.inf");
    EXPECT_TRUE(escena::EscribirEscena(dir / "e"));
    EXPECT_EQ(Contenido(dir / "e"), (std::set<std::string>{"verdad.inf"}));
}
