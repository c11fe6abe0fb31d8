// The image store: header and raster files, the image record, whole-image
// figures, the display conversion, the store rules and the message table.
#include <unistd.h>

#include <span>
#include <tuple>

#include "image/Estadisticas.h"
#include "image/Visualizacion.h"
#include "tests/Prueba.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

const Georreferencia kGeoUtm{619395, -419505, 628005, -410205, SinDato, 30, 1};

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

Cabecera Leida(const std::string& ruta, Cabecera c = {}) {
    EXPECT_TRUE(LeerInf(ruta, c));
    return c;
}

}  // namespace

// ---------------------------------------------------------------------------
// Header file

TEST(Cabecera, LandsatSeReescribeByteAByte) {
    const std::string datos = Landsat();
    if (datos.empty()) GTEST_SKIP() << "sin datos Landsat compartidos";
    CImagen im;
    ASSERT_FALSE(im.Cargar(datos + "/tm1.ozm"));
    CarpetaPrueba dir;
    ASSERT_FALSE(im.Guardar(dir / "tm1", 1));
    EXPECT_EQ(LeerFichero(dir / "tm1.inf"), LeerFichero(datos + "/tm1.inf"));
    EXPECT_EQ(LeerFichero(dir / "tm1.ozm"), LeerFichero(datos + "/tm1.ozm"));
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"tm1.inf", "tm1.ozm"}));
}

TEST(Cabecera, LasDosDisposicionesYSusPeculiaridades) {
    CarpetaPrueba dir;
    CImagen utm;
    ASSERT_FALSE(utm.Iniciar(dir / "a.ozm", "", "Banda 4 TM", 2, 3, "integer", 7, 0, "UTM-30N", "m", kGeoUtm));
    utm.pixeles.Como<uint16_t>()[1] = 65535;
    utm.pixeles.Como<uint16_t>()[4] = 0;
    ASSERT_FALSE(utm.Guardar(dir / "a", 1));
    EXPECT_EQ(LeerFichero(dir / "a.inf"), kInfUtm);

    // Only exactly -1 is "unknown"; other values use six significant digits.
    utm.geo.errorPosicion = -2.5f;
    utm.geo.resolucion = 1234567.0f;
    ASSERT_FALSE(utm.EscribirInf());
    const std::string t = LeerFichero(dir / "a.inf");
    EXPECT_NE(t.find("pos\"n error   : -2.5\nresolution    : 1.23457e+06\n"), std::string::npos);

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
    EXPECT_EQ(sin.Guardar(dir / "c", 1).value_or(Mensaje{}).id, msg::kTipoNoReconocido);
    EXPECT_FALSE(Existe(dir / "c.ozm"));
}

TEST(Cabecera, Lectura) {
    CarpetaPrueba dir;
    std::string crlf;  // line ends of a Windows editor read the same
    for (const char ch : std::string(kInfUtm)) crlf += ch == '\n' ? std::string("\r\n") : std::string(1, ch);
    EscribirFichero(dir / "a.inf", kInfUtm);
    EscribirFichero(dir / "w.inf", crlf);
    for (const char* nombre : {"a.ozm", "w.ozm"}) {
        const Cabecera c = Leida(dir / nombre);
        EXPECT_EQ(c.titulo, "Banda");  // one token: the first word only
        EXPECT_EQ((std::vector{c.nombreTipo, c.tipoFichero, c.sistema, c.unidades}),
                  (std::vector<std::string>{"integer", "binary", "UTM-30N", "m"}));
        EXPECT_EQ(std::make_pair(c.columnas, c.filas), std::make_pair(3, 2));
        EXPECT_EQ(c.geo, kGeoUtm);
    }

    // Tokens that are not numbers.
    std::string t = kInfUtm;
    t.replace(t.find("619395"), 6, "abc");
    t.replace(t.find("628005"), 6, "12abc");
    t.replace(t.find("columns       : 3"), 17, "columns       : 1e+06");
    EscribirFichero(dir / "n.inf", t);
    Cabecera previa;
    previa.geo.minX = 7;
    previa.columnas = 99;
    const Cabecera n = Leida(dir / "n.ozm", previa);
    EXPECT_EQ(n.geo.minX, 7.0f);   // left as it was
    EXPECT_EQ(n.geo.maxX, 12.0f);  // the numeric prefix, as "%f" reads it
    EXPECT_EQ(n.columnas, 99);     // a million in exponent form does not read back
    EXPECT_EQ(n.geo.minY, -419505.0f);

    // "unknown": what comes before the bare labels is exact, then the scan
    // takes the next line's first word and runs on.
    EscribirFichero(dir / "b.inf", kInfUnknown);
    previa.geo = Georreferencia{111, 112, 113, 114, 115, 116, 117};
    const Cabecera u = Leida(dir / "b.ozm", previa);
    EXPECT_EQ((std::vector{u.titulo, u.nombreTipo, u.sistema, u.unidades}),
              (std::vector<std::string>{"t", "real", "unknown", "unit"}));
    EXPECT_EQ(std::make_pair(u.columnas, u.filas), std::make_pair(2, 1));
    EXPECT_EQ(u.geo, (Georreferencia{111, 5.5f, 113, 9.25f, 115, 116, 117}));
}

TEST(Cabecera, NombreDeTipoACodigo) {
    const std::pair<const char*, int> casos[] = {{"byte", kByte},  {"double", kDouble}, {"integer", kInteger},
                                                 {"real", kReal},  {"Byte", kReal},     {"entero", kReal}};
    for (const auto& [nombre, codigo] : casos) EXPECT_EQ(CodigoDeNombre(nombre), codigo) << nombre;
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
    EXPECT_EQ(LeerFichero(dir / "x.ozm"), std::string("\0\0\0\0\x34\x12\0\0\0\0\0\0", 12));
    CImagen leida;
    ASSERT_FALSE(leida.Cargar(dir / "x.ozm"));
    EXPECT_EQ(leida.ValorPixel(1, 0), 0x1234);
}

TEST(Raster, IniciarConvierteElValor) {
    const std::pair<const char*, double> casos[] = {{"byte", 44}, {"integer", 300}, {"real", 300.7f}, {"double", 300.7}};
    for (const auto& [tipo, esperado] : casos) {
        CImagen im;
        ASSERT_FALSE(im.Iniciar("/b.ozm", "", "b", 2, 2, tipo, 300.7, 0xFFFFFFFFu, "unknown", "m", {}));
        EXPECT_EQ(im.pixeles.Valor(3), esperado) << tipo;
        EXPECT_EQ(im.indicePaleta, 0u);  // all ones is kept as 0
    }
    // A zero size is refused and the record stays as it was.
    CImagen b = Imagen(kByte, 1, 1, {7}, "b");
    EXPECT_EQ(b.Iniciar("/z.ozm", "", "z", 0, 4, "byte", 1, 0, "unknown", "m", {}).value_or(Mensaje{}).id,
              msg::kValoresIncorrectos);
    EXPECT_EQ(std::make_pair(b.titulo, Muestrario(b)), std::make_pair(std::string("b"), std::vector<double>{7}));
}

TEST(Raster, ValorPixelYCoordenadas) {
    CImagen im;
    ASSERT_FALSE(im.Iniciar("/v.ozm", "", "v", 4, 5, "real", 0, 0, "utm-30N", "m",
                            Georreferencia{1000, 2000, 1500, 2400, SinDato, 100, 1}));
    im.pixeles.Como<float>()[2 * 5 + 3] = 2.5f;
    double x = 0, y = 0;
    EXPECT_EQ(im.ValorPixel(2, 3, &x, &y), 2.5);
    EXPECT_EQ(std::make_pair(x, y), std::make_pair(1300.0, 2200.0));  // upper-left corner of the pixel
    im.sistemaReferencia = "unknown";
    EXPECT_EQ(im.ValorPixel(2, 3, &x, &y), 2.5);
    EXPECT_EQ(std::make_pair(x, y), std::make_pair(-1.0, -1.0));
    // The row and column counts themselves are outside the image.
    for (auto [f, c] : {std::pair{4L, 0L}, {0L, 5L}, {-1L, 0L}, {0L, -1L}}) {
        std::optional<Mensaje> error;
        EXPECT_EQ(im.ValorPixel(f, c, nullptr, nullptr, &error), -1.0);
        EXPECT_EQ(error.value_or(Mensaje{}).id, msg::kFueraDeImagen);
    }
}

TEST(Raster, FigurasDeLaImagenYConversionAPaleta) {
    double mn = -5, mx = -5;
    ASSERT_TRUE(MinimoMaximo(MuestrasDe(kInteger, {1, 65535, 3, 0}), mn, mx));
    EXPECT_EQ(std::make_pair(mn, mx), std::make_pair(0.0, 65535.0));  // read unsigned
    ASSERT_TRUE(MinimoMaximo(MuestrasDe(kReal, {-3.5}), mn, mx));
    EXPECT_EQ(std::make_pair(mn, mx), std::make_pair(-3.5, -3.5));
    EXPECT_FALSE(MinimoMaximo(Muestras(), mn, mx));

    const Muestras b = MuestrasDe(kByte, {1, 2, 3, 4});
    EXPECT_DOUBLE_EQ(ImageMean(b), 2.5);
    EXPECT_DOUBLE_EQ(ImageStdDev(b, 2.5), std::sqrt(1.25));  // population form
    // Under a mask only the counted samples are summed, over the full count.
    const uint8_t mascara[4] = {1, 1, 0, 0};
    EXPECT_DOUBLE_EQ(ImageMean(b, mascara), 0.75);
    EXPECT_DOUBLE_EQ(ImageStdDev(b, 0.75, mascara), std::sqrt((0.25 * 0.25 + 1.25 * 1.25) / 4));

    // 256 steps over the range, the last shown with entry 255; a byte
    // sample is its own entry; a constant image is all entry 0.
    EXPECT_EQ(IndicesPaleta(MuestrasDe(kInteger, {0, 65535, 32768})), (std::vector<uint8_t>{0, 255, 128}));
    EXPECT_EQ(IndicesPaleta(MuestrasDe(kByte, {17, 200})), (std::vector<uint8_t>{17, 200}));
    EXPECT_EQ(IndicesPaleta(MuestrasDe(kReal, {3, 3, 3})), (std::vector<uint8_t>{0, 0, 0}));
    Paleta p;
    p.rojo[200] = 1;
    p.verde[200] = 2;
    p.azul[200] = 3;
    EXPECT_EQ(ColoresPaleta({200}, p)[0], 0xFF010203u);
}

TEST(Raster, ReglasDeAlmacenamiento) {
    // Truncated toward zero to 32 bits, then the low bits; out of range and
    // NaN give -2147483648, whose low bits are 0.
    const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
    const std::vector<std::tuple<double, double, double, double>> casos = {
        // value, byte, integer, real
        {-1, 255, 65535, -1},         {256, 0, 256, 256},       {300.7, 44, 300, 300.7f},
        {-0.9, 0, 0, -0.9f},          {70000.9, 112, 4464, 70000.9f}, {1e300, 0, 0, inf},
        {-1e300, 0, 0, -inf},         {2147483648.0 + 65537.0, 0, 0, 2147549184.0f}, {0.1, 0, 0, 0.1f},
    };
    for (const auto& [v, b, i, r] : casos) {
        EXPECT_EQ(Almacenar<uint8_t>(v), b) << v;
        EXPECT_EQ(Almacenar<uint16_t>(v), i) << v;
        EXPECT_EQ(Almacenar<float>(v), static_cast<float>(r)) << v;
    }
    EXPECT_EQ(Almacenar<uint16_t>(nan), 0);
    EXPECT_TRUE(std::isnan(Almacenar<float>(nan)));
    for (double v : {1e300, -1e300, nan, -2147483648.9}) EXPECT_EQ(TruncarA32(v), std::numeric_limits<int32_t>::min());
    EXPECT_EQ(TruncarA32(2147483647.9), 2147483647);
}

// ---------------------------------------------------------------------------
// Bad input: nothing crashes, the record and the files stay as they were.

class Robustez : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(previa.Iniciar(dir / "previa.ozm", "", "previa", 2, 2, "byte", 9, 0, "unknown", "m", {}));
    }
    // Loading stem.ozm, written with `inf` and `ozm`, is refused and leaves
    // the record as it was.
    Mensaje Rechazada(const std::string& stem, const std::string& inf, const std::string& ozm = "abcd") {
        EscribirFichero(dir / (stem + ".inf"), inf);
        EscribirFichero(dir / (stem + ".ozm"), ozm);
        auto e = previa.Cargar(dir / (stem + ".ozm"));
        EXPECT_TRUE(e) << stem;
        // The same pair from memory gets the same answer.
        EXPECT_EQ(previa.CargarDeMemoria(inf, std::as_bytes(std::span(ozm)), "m.ozm"), e)
            << stem;
        EXPECT_EQ(previa.titulo, "previa");
        EXPECT_EQ(Muestrario(previa), (std::vector<double>{9, 9, 9, 9}));
        return e.value_or(Mensaje{});
    }
    CarpetaPrueba dir;
    CImagen previa;
};

TEST_F(Robustez, CabecerasQueNoLoSonYRasterCorto) {
    std::mt19937 azar(20240611);
    std::string binario(64 * 1024, '\0');
    for (char& ch : binario) ch = static_cast<char>(azar() & 0xFF);
    const std::string t = kInfUtm;
    EXPECT_EQ(Rechazada("basura", "esto no es una cabecera\n: : :\n\n::::").id, msg::kCabeceraNoEncontrada);
    Rechazada("binario", binario, binario);
    EXPECT_EQ(Rechazada("enorme", std::string(30u << 20, 'x')).id, msg::kCabeceraNoEncontrada);
    EXPECT_EQ(Rechazada("truncada", t.substr(0, t.find("columns") + 4), std::string(12, '\0')).id,
              msg::kCabeceraNoEncontrada);
    EXPECT_EQ(Rechazada("vacia", "").id, msg::kCabeceraNoEncontrada);
    std::filesystem::remove(dir / "vacia.inf");
    EXPECT_EQ(previa.Cargar(dir / "vacia.ozm").value_or(Mensaje{}).id, msg::kCabeceraNoEncontrada);
    // A 2 x 3 integer image needs 12 bytes.
    EXPECT_EQ(Rechazada("corto", t, std::string(11, '\1')).id, msg::kArchivoNoExiste);
    EXPECT_EQ(Rechazada("largo", t, std::string(13, '\1')).id, msg::kArchivoNoExiste);

    // A long title is cut and the rest still reads.
    std::string larga = t;
    larga.replace(larga.find("Banda 4 TM"), 10, std::string(512u << 10, 'T'));
    EscribirFichero(dir / "larga.inf", larga);
    Cabecera c;
    ASSERT_TRUE(CabeceraLegible(dir / "larga.ozm", &c));
    EXPECT_LT(c.titulo.size(), 512u << 10);
    EXPECT_EQ(c.geo, kGeoUtm);
}

// A pair read from memory is the record that the files give.
TEST_F(Robustez, ParDesdeMemoriaIgualQueDesdeDisco) {
    const std::string ozm = {1, 0, 2, 0, -1, -1, 0, 1, 5, 0, 6, 0};  // 2 x 3 unsigned 16-bit, little-endian
    EscribirFichero(dir / "p.inf", kInfUtm);
    EscribirFichero(dir / "p.ozm", ozm);
    CImagen disco, memoria;
    ASSERT_FALSE(disco.Cargar(dir / "p.ozm", 3));
    ASSERT_FALSE(memoria.CargarDeMemoria(kInfUtm, std::as_bytes(std::span(ozm)), dir / "p.ozm", 3));
    EXPECT_EQ(Muestrario(memoria), (std::vector<double>{1, 2, 65535, 256, 5, 6}));
    EXPECT_EQ(Muestrario(memoria), Muestrario(disco));
    EXPECT_EQ(memoria.ComoCabecera().titulo, disco.ComoCabecera().titulo);
    EXPECT_EQ(memoria.geo, disco.geo);
    EXPECT_EQ(std::make_tuple(memoria.tipoDato, memoria.filas, memoria.columnas, memoria.indicePaleta, memoria.rutaRaster),
              std::make_tuple(disco.tipoDato, disco.filas, disco.columnas, disco.indicePaleta, disco.rutaRaster));
}

TEST_F(Robustez, DimensionesSinMemoria) {
    std::string t = kInfUtm;
    t.replace(t.find("columns       : 3"), 17, "columns       : 2000000000");
    t.replace(t.find("rows          : 2"), 17, "rows          : 2000000000");
    const Mensaje m = Rechazada("gigante", t);
    EXPECT_EQ(m.id, 0);
    EXPECT_NE(m.Texto().find("memoria"), std::string::npos);

    auto e = previa.Iniciar(dir / "g.ozm", "", "g", 1000000, 1000000, "double", 0, 0, "unknown", "m", {});
    EXPECT_NE(e.value_or(Mensaje{}).Texto().find("No hay memoria suficiente"), std::string::npos);
    EXPECT_EQ(previa.titulo, "previa");
    CImagen falsa;
    falsa.tipoDato = kDouble;
    falsa.filas = falsa.columnas = 3e6;
    EXPECT_TRUE(previa.CopiarCabecera(falsa));
    EXPECT_EQ(previa.NumeroPixeles(), 4u);
}

TEST_F(Robustez, GuardarSobreAlgoQueNoEsUnFichero) {
    EscribirFichero(dir / "d.ozm", "antiguo");
    std::filesystem::create_directory(dir / "d.inf");
    EXPECT_TRUE(previa.Guardar(dir / "d", 1));
    EXPECT_EQ(LeerFichero(dir / "d.ozm"), "antiguo");
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"d.inf", "d.ozm"}));
    // A record whose samples were never read has nothing to save.
    CImagen cabecera;
    ASSERT_FALSE(cabecera.Cargar(previa.ComoCabecera(), dir / "h.ozm", 0, false));
    EXPECT_TRUE(cabecera.Guardar(dir / "h", 1));
    EXPECT_FALSE(Existe(dir / "h.ozm") || Existe(dir / "h.inf"));
}

TEST_F(Robustez, GuardarSinPoderEscribirConservaElParAnterior) {
    ASSERT_FALSE(previa.Guardar(dir / "par", 1));
    const std::string ozm = LeerFichero(dir / "par.ozm"), inf = LeerFichero(dir / "par.inf");
    CImagen nueva;
    ASSERT_FALSE(nueva.Iniciar(dir / "par.ozm", "", "nueva", 3, 3, "real", 1, 0, "unknown", "m", {}));
    std::filesystem::permissions(dir.Ruta(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    if (::access(dir.Ruta().c_str(), W_OK) == 0) GTEST_SKIP() << "la carpeta sigue siendo escribible (superusuario)";
    EXPECT_EQ(nueva.Guardar(dir / "par", 1).value_or(Mensaje{}).id, msg::kNoCreadoFichero);
    EXPECT_EQ(LeerFichero(dir / "par.ozm"), ozm);
    EXPECT_EQ(LeerFichero(dir / "par.inf"), inf);
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"par.inf", "par.ozm"}));
}

// ---------------------------------------------------------------------------
// Message table

TEST(Mensajes, TablaCompletaYTextosExactos) {
    ASSERT_EQ(IdsMensajes().size(), 73u);
    for (int id = 61216; id <= 61288; ++id) EXPECT_NE(TextoMensaje(id), nullptr) << id;
    EXPECT_EQ(TextoMensaje(61215), nullptr);
    EXPECT_EQ(TextoMensaje(61289), nullptr);
    const std::pair<int, const char*> textos[] = {
        {61267, "Imposible visualizar la imagen porque no se ha encontrado la paleta seleccionada.\n\n"
                "Compruebe que los archvos *.pal estén correctamente."},
        {61274, "Se ha superado el númeo máximo de zooms consecutivos."},
    };
    for (const auto& [id, texto] : textos) EXPECT_STREQ(TextoMensaje(id), texto) << id;

    EXPECT_EQ(Mensaje::Tabla(61222, relleno::kLasDimensiones, relleno::kBandas).Texto(),
              "Las dimensiones de las bandas de entrada seleccionadas no coincide.\n\n"
              "Elija bandas donde sí lo haga para realizar la operación.");
    EXPECT_EQ(Mensaje::Libre("Frase.").Texto(), "Frase.");
}
