// The image store: header and raster files, the image record, whole-image
// figures, the display conversion and the store rules.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <random>
#include <set>
#include <unistd.h>

#include "image/CImagen.h"
#include "image/Conversion.h"
#include "image/Estadisticas.h"
#include "image/Visualizacion.h"
#include "tests/CarpetaPrueba.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

const Georreferencia kGeoUtm{619395, -419505, 628005, -410205, SinDato, 30, 1};

// A 2 x 3 integer image holding 0 and 65535 among other samples.
CImagen ImagenUtm(const std::string& ruta) {
    CImagen im;
    EXPECT_FALSE(im.Iniciar(ruta, "", "Banda 4 TM", 2, 3, "integer", 7, 0, "UTM-30N", "m", kGeoUtm));
    auto d = im.pixeles.Como<uint16_t>();
    d[1] = 65535;
    d[4] = 0;
    return im;
}

const char* const kInfUtm =
    "file title    : Banda 4 TM\n"
    "data type     : integer \n"
    "file type     : binary\n"
    "columns       : 3\n"
    "rows          : 2\n"
    "ref. system   : UTM-30N\n"
    "ref. units    : m\n"
    "unit dist.    : 1\n"
    "min. X        : 619395\n"
    "max. X        : 628005\n"
    "min. Y        : -419505\n"
    "max. Y        : -410205\n"
    "pos\"n error   : unknown\n"
    "resolution    : 30\n"
    "min. value    : 0\n"
    "max. value    : 65535\n"
    "value units   : \n"
    "value error   : \n"
    "flag value    : \n"
    "flag def\"n    : \n"
    "legend cats   : \n";

const char* const kInfUnknown =
    "file title    : t\n"
    "data type     : real \n"
    "file type     : binary\n"
    "columns       : 2\n"
    "rows          : 1\n"
    "ref. system   : unknown\n"
    "ref. units    :\n"
    "unit dist.    :\n"
    "min. X        :\n"
    "max. X        :\n"
    "min. Y        :\n"
    "max. Y        :\n"
    "pos\"n error   :\n"
    "resolution    :\n"
    "min. value    : 5.5\n"
    "max. value    : 9.25\n"
    "value units   : \n"
    "value error   : \n"
    "flag value    : \n"
    "flag def\"n    : \n"
    "legend cats   : \n";

}  // namespace

// ---------------------------------------------------------------------------
// Header file

TEST(Cabecera, LandsatSeReescribeByteAByte) {
    const std::string datos = DatosLandsat();
    if (datos.empty()) GTEST_SKIP() << "sin datos Landsat compartidos";
    CImagen im;
    ASSERT_FALSE(im.Cargar(datos + "/tm1.ozm"));
    EXPECT_EQ(im.titulo, "tm1");
    EXPECT_EQ(im.tipoDato, kByte);
    EXPECT_EQ(im.Filas(), 310);
    EXPECT_EQ(im.Columnas(), 287);
    EXPECT_EQ(im.sistemaReferencia, "UTM-22N");
    EXPECT_EQ(im.geo.errorPosicion, SinDato);
    EXPECT_EQ(im.geo.minY, -419505.0f);

    CarpetaPrueba dir;
    ASSERT_FALSE(im.Guardar(dir / "tm1", 1));
    EXPECT_EQ(LeerFichero(dir / "tm1.inf"), LeerFichero(datos + "/tm1.inf"));
    EXPECT_EQ(LeerFichero(dir / "tm1.ozm"), LeerFichero(datos + "/tm1.ozm"));
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"tm1.inf", "tm1.ozm"}));
}

TEST(Cabecera, DisposicionesDeLaGeorreferencia) {
    CarpetaPrueba dir;
    CImagen utm = ImagenUtm(dir / "a.ozm");
    ASSERT_FALSE(utm.Guardar(dir / "a", 1));
    EXPECT_EQ(LeerFichero(dir / "a.inf"), kInfUtm);

    // Only exactly -1 is "unknown"; other values use six significant digits.
    utm.geo.errorPosicion = -2.5f;
    utm.geo.resolucion = 1234567.0f;
    ASSERT_FALSE(utm.EscribirInf());
    const std::string t = LeerFichero(dir / "a.inf");
    EXPECT_NE(t.find("pos\"n error   : -2.5\n"), std::string::npos);
    EXPECT_NE(t.find("resolution    : 1.23457e+06\n"), std::string::npos);

    CImagen sin;
    ASSERT_FALSE(sin.Iniciar(dir / "b.ozm", "", "t", 1, 2, "real", 5.5, 0, "unknown", "m", kGeoUtm));
    sin.pixeles.Como<float>()[1] = 9.25f;
    ASSERT_FALSE(sin.Guardar(dir / "b", 1));
    EXPECT_EQ(LeerFichero(dir / "b.inf"), kInfUnknown);

    // An unknown type code: the header goes on without its data-type line,
    // and the pair is refused with 61250.
    sin.tipoDato = 9;
    ASSERT_FALSE(sin.EscribirInf());
    std::string sinTipo = kInfUnknown;
    sinTipo.erase(sinTipo.find("data type"), std::string("data type     : real \n").size());
    EXPECT_EQ(LeerFichero(dir / "b.inf"), sinTipo);
    auto e = sin.Guardar(dir / "c", 1);
    ASSERT_TRUE(e);
    EXPECT_EQ(e->id, msg::kTipoNoReconocido);
    EXPECT_FALSE(Existe(dir / "c.ozm"));
}

TEST(Cabecera, LecturaDeCampos) {
    CarpetaPrueba dir;
    EscribirFichero(dir / "a.inf", kInfUtm);
    Cabecera c;
    ASSERT_TRUE(LeerInf(dir / "a.ozm", c));
    EXPECT_EQ(c.titulo, "Banda");  // one token: the first word only
    EXPECT_EQ(c.nombreTipo, "integer");
    EXPECT_EQ(c.tipoFichero, "binary");
    EXPECT_EQ(c.columnas, 3);
    EXPECT_EQ(c.filas, 2);
    EXPECT_EQ(c.sistema, "UTM-30N");
    EXPECT_EQ(c.unidades, "m");
    EXPECT_EQ(c.geo, kGeoUtm);

    // Line ends written by a Windows editor read the same.
    std::string crlf;
    for (const char ch : std::string(kInfUtm)) crlf += ch == '\n' ? std::string("\r\n") : std::string(1, ch);
    EscribirFichero(dir / "w.inf", crlf);
    Cabecera w;
    ASSERT_TRUE(LeerInf(dir / "w.ozm", w));
    EXPECT_EQ(w.titulo, c.titulo);
    EXPECT_EQ(w.nombreTipo, c.nombreTipo);
    EXPECT_EQ(w.filas, 2);
    EXPECT_EQ(w.unidades, "m");
    EXPECT_EQ(w.geo, kGeoUtm);
}

TEST(Cabecera, TokensQueNoSonNumeros) {
    CarpetaPrueba dir;
    std::string t = kInfUtm;
    t.replace(t.find("619395"), 6, "abc");
    t.replace(t.find("628005"), 6, "12abc");
    t.replace(t.find("columns       : 3"), 17, "columns       : 1e+06");
    EscribirFichero(dir / "a.inf", t);
    Cabecera c;
    c.geo.minX = 7;
    c.columnas = 99;
    ASSERT_TRUE(LeerInf(dir / "a.ozm", c));
    EXPECT_EQ(c.geo.minX, 7.0f);    // left as it was
    EXPECT_EQ(c.geo.maxX, 12.0f);   // the numeric prefix, as "%f" reads it
    EXPECT_EQ(c.columnas, 99);      // a million in exponent form does not read back
    EXPECT_EQ(c.filas, 2);
    EXPECT_EQ(c.geo.minY, -419505.0f);
}

TEST(Cabecera, SistemaUnknownDesincronizaLaGeorreferencia) {
    CarpetaPrueba dir;
    EscribirFichero(dir / "b.inf", kInfUnknown);
    Cabecera c;
    c.geo = Georreferencia{111, 112, 113, 114, 115, 116, 117};
    ASSERT_TRUE(LeerInf(dir / "b.ozm", c));
    // What comes before the bare labels is exact...
    EXPECT_EQ(c.titulo, "t");
    EXPECT_EQ(c.nombreTipo, "real");
    EXPECT_EQ(c.columnas, 2);
    EXPECT_EQ(c.filas, 1);
    EXPECT_EQ(c.sistema, "unknown");
    // ...then the scan takes the next line's first word and runs on.
    EXPECT_EQ(c.unidades, "unit");
    EXPECT_EQ(c.geo.distanciaUnidad, 117.0f);
    EXPECT_EQ(c.geo.minX, 111.0f);
    EXPECT_EQ(c.geo.maxX, 113.0f);
    EXPECT_EQ(c.geo.minY, 5.5f);   // from "min. value"
    EXPECT_EQ(c.geo.maxY, 9.25f);  // from "max. value"
    EXPECT_EQ(c.geo.errorPosicion, 115.0f);
    EXPECT_EQ(c.geo.resolucion, 116.0f);
}

TEST(Cabecera, NombreDeTipoACodigo) {
    EXPECT_EQ(CodigoDeNombre("byte"), kByte);
    EXPECT_EQ(CodigoDeNombre("double"), kDouble);
    EXPECT_EQ(CodigoDeNombre("integer"), kInteger);
    EXPECT_EQ(CodigoDeNombre("real"), kReal);
    EXPECT_EQ(CodigoDeNombre("Byte"), kReal);
    EXPECT_EQ(CodigoDeNombre("entero"), kReal);

    // An empty name keeps the code the record has.
    CImagen im;
    ASSERT_FALSE(im.Iniciar("/nada.ozm", "", "t", 1, 1, "integer", 1, 0, "unknown", "m", {}));
    Cabecera c = im.ComoCabecera();
    c.nombreTipo = "";
    ASSERT_FALSE(im.Cargar(c, "/nada.ozm", 0, false));
    EXPECT_EQ(im.tipoDato, kInteger);
}

// ---------------------------------------------------------------------------
// Raster file and record

TEST(Raster, DisposicionDeBytes) {
    CarpetaPrueba dir;
    CImagen im;
    ASSERT_FALSE(im.Iniciar(dir / "x.ozm", "", "x", 3, 2, "integer", 0, 0, "unknown", "m", {}));
    im.pixeles.Como<uint16_t>()[2] = 0x1234;  // row 1, column 0
    ASSERT_FALSE(im.Guardar(dir / "x", 1));
    const std::string b = LeerFichero(dir / "x.ozm");
    ASSERT_EQ(b.size(), 12u);
    EXPECT_EQ(static_cast<unsigned char>(b[4]), 0x34);
    EXPECT_EQ(static_cast<unsigned char>(b[5]), 0x12);

    CImagen leida;
    ASSERT_FALSE(leida.Cargar(dir / "x.ozm"));
    EXPECT_EQ(leida.ValorPixel(1, 0), 0x1234);
    EXPECT_TRUE(leida.tieneImagen);
}

TEST(Raster, IniciarConvierteElValor) {
    CImagen b, i, r, d;
    ASSERT_FALSE(b.Iniciar("/b.ozm", "", "b", 2, 2, "byte", 300.7, 0, "unknown", "m", {}));
    ASSERT_FALSE(i.Iniciar("/i.ozm", "", "i", 2, 2, "integer", 300.7, 0, "unknown", "m", {}));
    ASSERT_FALSE(r.Iniciar("/r.ozm", "", "r", 2, 2, "real", 300.7, 0xFFFFFFFFu, "unknown", "m", {}));
    ASSERT_FALSE(d.Iniciar("/d.ozm", "", "d", 2, 2, "double", 300.7, 3, "unknown", "m", {}));
    EXPECT_EQ(b.pixeles.Como<uint8_t>()[3], 44);
    EXPECT_EQ(i.pixeles.Como<uint16_t>()[3], 300);
    EXPECT_EQ(r.pixeles.Como<float>()[3], 300.7f);
    EXPECT_EQ(d.pixeles.Como<double>()[3], 300.7);
    EXPECT_EQ(b.tipoFichero, "binary");
    EXPECT_EQ(r.indicePaleta, 0u);  // all ones is kept as 0
    EXPECT_EQ(d.indicePaleta, 3u);

    auto e = b.Iniciar("/z.ozm", "", "z", 0, 4, "byte", 1, 0, "unknown", "m", {});
    ASSERT_TRUE(e);
    EXPECT_EQ(e->id, msg::kValoresIncorrectos);
    EXPECT_EQ(b.titulo, "b");
}

TEST(Raster, ValorPixelYCoordenadas) {
    CImagen im;
    ASSERT_FALSE(im.Iniciar("/v.ozm", "", "v", 4, 5, "real", 0, 0, "utm-30N", "m",
                            Georreferencia{1000, 2000, 1500, 2400, SinDato, 100, 1}));
    im.pixeles.Como<float>()[2 * 5 + 3] = 2.5f;
    double x = 0, y = 0;
    EXPECT_EQ(im.ValorPixel(2, 3, &x, &y), 2.5);
    EXPECT_EQ(x, 1300.0);  // upper-left corner of the pixel
    EXPECT_EQ(y, 2200.0);

    im.sistemaReferencia = "unknown";
    EXPECT_EQ(im.ValorPixel(2, 3, &x, &y), 2.5);
    EXPECT_EQ(x, -1.0);
    EXPECT_EQ(y, -1.0);

    // The row and column counts themselves are outside the image.
    for (auto [f, c] : {std::pair{4L, 0L}, {0L, 5L}, {-1L, 0L}, {0L, -1L}}) {
        std::optional<Mensaje> error;
        EXPECT_EQ(im.ValorPixel(f, c, nullptr, nullptr, &error), -1.0);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->id, msg::kFueraDeImagen);
    }
}

TEST(Raster, MinimoMaximoMediaYDesviacion) {
    Muestras m = Muestras::Crear(kInteger, 4);
    auto d = m.Como<uint16_t>();
    d[0] = 1; d[1] = 65535; d[2] = 3; d[3] = 0;
    double mn = -5, mx = -5;
    ASSERT_TRUE(MinimoMaximo(m, mn, mx));
    EXPECT_EQ(mn, 0);
    EXPECT_EQ(mx, 65535);  // read unsigned

    Muestras uno = Muestras::Crear(kReal, 1);
    uno.Como<float>()[0] = -3.5f;
    ASSERT_TRUE(MinimoMaximo(uno, mn, mx));
    EXPECT_EQ(mn, -3.5);
    EXPECT_EQ(mx, -3.5);
    EXPECT_FALSE(MinimoMaximo(Muestras(), mn, mx));

    Muestras b = Muestras::Crear(kByte, 4);
    auto v = b.Como<uint8_t>();
    v[0] = 1; v[1] = 2; v[2] = 3; v[3] = 4;
    EXPECT_DOUBLE_EQ(ImageMean(b), 2.5);
    EXPECT_DOUBLE_EQ(ImageStdDev(b, 2.5), std::sqrt(1.25));  // population form
    // Under a mask only the counted samples are summed, over the full count.
    const uint8_t mascara[4] = {1, 1, 0, 0};
    EXPECT_DOUBLE_EQ(ImageMean(b, mascara), 0.75);
    EXPECT_DOUBLE_EQ(ImageStdDev(b, 0.75, mascara), std::sqrt((0.25 * 0.25 + 1.25 * 1.25) / 4));
}

TEST(Raster, ConversionAPaleta) {
    Muestras i = Muestras::Crear(kInteger, 3);
    auto d = i.Como<uint16_t>();
    d[0] = 0; d[1] = 65535; d[2] = 32768;
    auto idx = IndicesPaleta(i);
    EXPECT_EQ(idx[0], 0);
    EXPECT_EQ(idx[1], 255);  // 256 is shown with the last entry
    EXPECT_EQ(idx[2], 128);

    Muestras constante = Muestras::Crear(kReal, 5);
    for (float& f : constante.Como<float>()) f = 3.0f;
    for (uint8_t e : IndicesPaleta(constante)) EXPECT_EQ(e, 0);

    Muestras b = Muestras::Crear(kByte, 2);
    b.Como<uint8_t>()[0] = 17;
    b.Como<uint8_t>()[1] = 200;
    EXPECT_EQ(IndicesPaleta(b), (std::vector<uint8_t>{17, 200}));  // the sample is the entry

    Paleta p;
    p.rojo[200] = 1; p.verde[200] = 2; p.azul[200] = 3;
    EXPECT_EQ(ColoresPaleta({200}, p)[0], 0xFF010203u);
}

TEST(Raster, ReglasDeAlmacenamiento) {
    EXPECT_EQ(Almacenar<uint8_t>(-1), 255);
    EXPECT_EQ(Almacenar<uint8_t>(256), 0);
    EXPECT_EQ(Almacenar<uint8_t>(300.7), 44);
    EXPECT_EQ(Almacenar<uint8_t>(-0.9), 0);
    EXPECT_EQ(Almacenar<uint16_t>(-1), 65535);
    EXPECT_EQ(Almacenar<uint16_t>(70000.9), 4464);
    // Out of the 32-bit range and NaN truncate to -2147483648, whose low bits are 0.
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(TruncarA32(1e300), std::numeric_limits<int32_t>::min());
    EXPECT_EQ(TruncarA32(-1e300), std::numeric_limits<int32_t>::min());
    EXPECT_EQ(TruncarA32(nan), std::numeric_limits<int32_t>::min());
    EXPECT_EQ(TruncarA32(2147483647.9), 2147483647);
    EXPECT_EQ(TruncarA32(-2147483648.9), std::numeric_limits<int32_t>::min());
    EXPECT_EQ(Almacenar<uint8_t>(1e300), 0);
    EXPECT_EQ(Almacenar<uint16_t>(nan), 0);
    EXPECT_EQ(Almacenar<uint16_t>(2147483648.0 + 65537.0), 0);
    EXPECT_EQ(Almacenar<float>(1e39), std::numeric_limits<float>::infinity());
    EXPECT_EQ(Almacenar<float>(-1e300), -std::numeric_limits<float>::infinity());
    EXPECT_EQ(Almacenar<float>(0.1), 0.1f);
    EXPECT_TRUE(std::isnan(Almacenar<float>(nan)));
}

// ---------------------------------------------------------------------------
// Bad input: nothing crashes, the record and the files stay as they were.

class Robustez : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(previa.Iniciar(dir / "previa.ozm", "", "previa", 2, 2, "byte", 9, 0, "unknown", "m", {}));
    }
    // Loading `nombre` is refused and leaves the record as it was.
    Mensaje Rechazada(const std::string& nombre) {
        auto e = previa.Cargar(dir / nombre);
        EXPECT_TRUE(e) << nombre;
        EXPECT_EQ(previa.titulo, "previa");
        EXPECT_EQ(previa.NumeroPixeles(), 4u);
        EXPECT_EQ(previa.pixeles.Como<uint8_t>()[0], 9);
        return e.value_or(Mensaje{});
    }
    CarpetaPrueba dir;
    CImagen previa;
};

TEST_F(Robustez, CabecerasQueNoLoSon) {
    EscribirFichero(dir / "basura.inf", "esto no es una cabecera\n: : :\n\n::::");
    EscribirFichero(dir / "basura.ozm", "abcd");
    EXPECT_EQ(Rechazada("basura.ozm").id, msg::kCabeceraNoEncontrada);

    std::mt19937 azar(20240611);
    std::string binario(64 * 1024, '\0');
    for (char& ch : binario) ch = static_cast<char>(azar() & 0xFF);
    EscribirFichero(dir / "binario.inf", binario);
    EscribirFichero(dir / "binario.ozm", binario);
    Rechazada("binario.ozm");

    EscribirFichero(dir / "enorme.inf", std::string(30u << 20, 'x'));
    EscribirFichero(dir / "enorme.ozm", "abcd");
    EXPECT_EQ(Rechazada("enorme.ozm").id, msg::kCabeceraNoEncontrada);

    std::string t = kInfUtm;
    EscribirFichero(dir / "truncada.inf", t.substr(0, t.find("columns") + 4));
    EscribirFichero(dir / "truncada.ozm", std::string(12, '\0'));
    EXPECT_EQ(Rechazada("truncada.ozm").id, msg::kCabeceraNoEncontrada);

    EscribirFichero(dir / "vacia.inf", "");
    EscribirFichero(dir / "vacia.ozm", "abcd");
    EXPECT_EQ(Rechazada("vacia.ozm").id, msg::kCabeceraNoEncontrada);
    EXPECT_EQ(Rechazada("sin_cabecera.ozm").id, msg::kCabeceraNoEncontrada);
}

TEST_F(Robustez, TituloEnormeSeCortaYElRestoSeLee) {
    std::string t = kInfUtm;
    t.replace(t.find("Banda 4 TM"), 10, std::string(20u << 20, 'T'));
    EscribirFichero(dir / "larga.inf", t);
    Cabecera c;
    ASSERT_TRUE(CabeceraLegible(dir / "larga.ozm", &c));
    EXPECT_LT(c.titulo.size(), 1u << 20);
    EXPECT_EQ(c.filas, 2);
    EXPECT_EQ(c.geo, kGeoUtm);
}

TEST_F(Robustez, RasterMasCortoQueSuCabecera) {
    EscribirFichero(dir / "corto.inf", kInfUtm);
    EscribirFichero(dir / "corto.ozm", std::string(11, '\1'));  // 2 x 3 integer needs 12
    EXPECT_EQ(Rechazada("corto.ozm").id, msg::kArchivoNoExiste);
}

TEST_F(Robustez, DimensionesSinMemoria) {
    std::string t = kInfUtm;
    t.replace(t.find("columns       : 3"), 17, "columns       : 2000000000");
    t.replace(t.find("rows          : 2"), 17, "rows          : 2000000000");
    EscribirFichero(dir / "gigante.inf", t);
    EscribirFichero(dir / "gigante.ozm", "abcd");
    const Mensaje m = Rechazada("gigante.ozm");
    EXPECT_EQ(m.id, 0);
    EXPECT_NE(m.Texto().find("memoria"), std::string::npos);

    auto e = previa.Iniciar(dir / "g.ozm", "", "g", 1000000, 1000000, "double", 0, 0, "unknown", "m", {});
    ASSERT_TRUE(e);
    EXPECT_NE(e->Texto().find("No hay memoria suficiente"), std::string::npos);
    EXPECT_EQ(previa.titulo, "previa");

    CImagen falsa;
    falsa.tipoDato = kDouble;
    falsa.filas = 3e6;
    falsa.columnas = 3e6;
    EXPECT_TRUE(previa.CopiarCabecera(falsa));
    EXPECT_EQ(previa.NumeroPixeles(), 4u);
}

TEST_F(Robustez, GuardarSinPoderEscribirConservaElParAnterior) {
    ASSERT_FALSE(previa.Guardar(dir / "par", 1));
    const std::string ozm = LeerFichero(dir / "par.ozm"), inf = LeerFichero(dir / "par.inf");
    CImagen nueva;
    ASSERT_FALSE(nueva.Iniciar(dir / "par.ozm", "", "nueva", 3, 3, "real", 1, 0, "unknown", "m", {}));

    std::filesystem::permissions(dir.Ruta(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    if (::access(dir.Ruta().c_str(), W_OK) == 0) GTEST_SKIP() << "la carpeta sigue siendo escribible (superusuario)";
    auto e = nueva.Guardar(dir / "par", 1);
    ASSERT_TRUE(e);
    EXPECT_EQ(e->id, msg::kNoCreadoFichero);
    EXPECT_EQ(LeerFichero(dir / "par.ozm"), ozm);
    EXPECT_EQ(LeerFichero(dir / "par.inf"), inf);
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"par.inf", "par.ozm"}));
}

TEST_F(Robustez, GuardarSobreAlgoQueNoEsUnFichero) {
    EscribirFichero(dir / "d.ozm", "antiguo");
    std::filesystem::create_directory(dir / "d.inf");
    auto e = previa.Guardar(dir / "d", 1);
    ASSERT_TRUE(e);
    EXPECT_EQ(LeerFichero(dir / "d.ozm"), "antiguo");
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"d.inf", "d.ozm"}));

    // A record whose samples were never read has nothing to save.
    CImagen cabecera;
    ASSERT_FALSE(cabecera.Cargar(previa.ComoCabecera(), dir / "h.ozm", 0, false));
    EXPECT_TRUE(cabecera.Guardar(dir / "h", 1));
    EXPECT_FALSE(Existe(dir / "h.ozm"));
    EXPECT_FALSE(Existe(dir / "h.inf"));
}

// ---------------------------------------------------------------------------
// Message table

TEST(Mensajes, TablaCompletaYTextosExactos) {
    const auto ids = IdsMensajes();
    ASSERT_EQ(ids.size(), 73u);
    for (int id = 61216; id <= 61288; ++id) EXPECT_NE(TextoMensaje(id), nullptr) << id;
    EXPECT_EQ(TextoMensaje(61215), nullptr);
    EXPECT_EQ(TextoMensaje(61289), nullptr);

    EXPECT_STREQ(TextoMensaje(61267),
                 "Imposible visualizar la imagen porque no se ha encontrado la paleta seleccionada.\n\n"
                 "Compruebe que los archvos *.pal estén correctamente.");
    EXPECT_STREQ(TextoMensaje(61274), "Se ha superado el númeo máximo de zooms consecutivos.");
    EXPECT_STREQ(TextoMensaje(61229),
                 "El identificador tiene que estar comprendido entre 0 255.\n\nSe usará el identificador automático.");
    EXPECT_STREQ(TextoMensaje(61268),
                 "El valor del factor de contracción de las filas es incorrectos.\n\n"
                 "Elija un valor inferior al del número de filas de la imagen.");
    EXPECT_STREQ(TextoMensaje(61287), "No se pueden construir ficheros vectoriales mientras se visualiza un mapa. ");
    EXPECT_STREQ(TextoMensaje(61288), "La visualización ya se encuentra en pantalla completa");
    EXPECT_STREQ(TextoMensaje(61258), "Error en las coordenadas del ND.\n\nEl punto indicado está fuera de la imagen.");
    EXPECT_STREQ(TextoMensaje(61262), "No se ha podido crear el archivo *.bmp.");

    EXPECT_EQ(Mensaje::Tabla(61217, relleno::kOzm, relleno::kOzmMayusculas).Texto(),
              "El archivo seleccionado no posee una extensión adecuada.\n\nElija uno con extensión \"*.ozm\" o \"*.OZM\".");
    EXPECT_EQ(Mensaje::Tabla(61222, relleno::kLasDimensiones, relleno::kBandas).Texto(),
              "Las dimensiones de las bandas de entrada seleccionadas no coincide.\n\n"
              "Elija bandas donde sí lo haga para realizar la operación.");
    EXPECT_EQ(Mensaje::Tabla(61243, "fila").Texto(),
              "La fila del extremo superior izquierdo debe ser menor que\n\nla fila del extremo inferior derecho.");
    EXPECT_EQ(Mensaje::Tabla(61218, relleno::kInf).Texto(),
              "No se ha encontrado el archivo \"*.inf\" o puede estar corrupto.\n\nCompruébelo para realizar la operación.");
    EXPECT_EQ(Mensaje::Libre("Frase.").Texto(), "Frase.");
}
