// The transformations run from the menu with a scripted user: principal
// components (a band list filled, a wrong number refused, the components in
// the window and in new windows, the report in a window of its own), both
// spectral unmixing entries end to end, and the per-band groups of the
// vegetation index dialog.
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>

#include "Entorno.h"
#include "classification/FicheroClase.h"
#include "dialogs/VentanasResultado.h"
#include "image/Codificacion.h"

using namespace orvela;
using namespace prueba;

namespace {

QStringList Filas(QDialog& d, int i) {
    QStringList r;
    if (auto* l = d.findChild<QListWidget*>(QStringLiteral("entrada%1_lista").arg(i)))
        for (int k = 0; k < l->count(); ++k) r << l->item(k)->text();
    return r;
}

std::vector<double> Absolutos(const CImagen& im) {
    std::vector<double> r = ValoresDe(im);
    for (double& v : r) v = std::round(std::abs(v) * 1e4) / 1e4;
    return r;
}

// A class file whose band means are `medias`.
std::string Clase(const Entorno& e, const std::string& nombre, const std::vector<double>& medias) {
    EstadisticasClase s;
    for (std::size_t b = 0; b < medias.size(); ++b) s.bandas.push_back({"b" + std::to_string(b), 0, 0, medias[b], 0});
    s.covarianza.assign(medias.size(), std::vector<double>(medias.size(), 0.0));
    const std::string ruta = e.Ruta(nombre);
    std::ofstream(ruta, std::ios::binary) << Utf8ACp1252(TextoFicheroClase(s));
    return ruta;
}

}  // namespace

class TransformacionesEscritorioTest : public QObject {
    Q_OBJECT
    Entorno entorno_;
    std::unique_ptr<Escritorio> e_;

private slots:
    void initTestCase() { QApplication::setQuitOnLastWindowClosed(false); }
    void init() { e_ = std::make_unique<Escritorio>(); }
    void cleanup() { e_.reset(); }

    // Bands a and b equal and c uncorrelated with them: eigenvalues 2, 1
    // and 0; the first component is (a + b) / sqrt(2), the second c, both
    // up to sign and not centred.
    void componentesDesdeElMenu() {
        const std::string a = entorno_.Imagen("a", 2, 2, "byte", {0, 0, 2, 2});
        const std::string b = entorno_.Imagen("b", 2, 2, "byte", {0, 0, 2, 2});
        const std::string c = entorno_.Imagen("c", 2, 2, "byte", {1, 3, 1, 3});
        CBrimarDoc& ventana = e_->Ventana(a);
        const auto antes = e_->marco.Area()->subWindowList().size();
        e_->ui.ficherosAbrir = {a, b, c};
        QStringList filas;
        bool rechazadoSinCerrar = false;
        e_->ui.dialogos.push_back([&](QDialog& d) {
            for (int k = 0; k < 3; ++k) Pulsar(d, "entrada0_seleccionar");
            filas = Filas(d, 0);
            Escribir(d, "campo_numero", "4");
            rechazadoSinCerrar = !Aceptar(d);  // 61226: more components than bands
            Escribir(d, "campo_numero", "2");
            return Aceptar(d);
        });
        e_->ui.dialogos.push_back([](QDialog& d) { return Aceptar(d); });  // AVISO: not saved
        e_->marco.EjecutarComando(32861);

        QCOMPARE(e_->ui.titulosDialogos.front(), QStringLiteral("Componentes principales"));
        QCOMPARE(filas, (QStringList{"Banda 1:  a", "Banda 2:  b", "Banda 3:  c"}));
        QVERIFY(rechazadoSinCerrar);
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{msg::kNumeroComponentes}));
        // The first component in the window, the second in a new one, the
        // report in a third.
        const auto l = e_->marco.Area()->subWindowList();
        QCOMPARE(l.size(), antes + 2);
        QCOMPARE(ventana.Imagen().titulo, std::string("Componentes_Principales_a_CP1"));
        QCOMPARE(ventana.Imagen().tipoDato, int{kDouble});
        QCOMPARE(Absolutos(ventana.Imagen()), (std::vector<double>{0, 0, 2.8284, 2.8284}));
        const auto docs = e_->marco.Documentos();
        QCOMPARE(docs.back()->Imagen().titulo, std::string("Componentes_Principales_a_CP2"));
        QCOMPARE(Absolutos(docs.back()->Imagen()), (std::vector<double>{1, 3, 1, 3}));
        CVentanaInforme* informe = nullptr;
        for (auto* s : l)
            if (auto* v = qobject_cast<CVentanaInforme*>(s->widget())) informe = v;
        QVERIFY(informe);
        const std::string& t = informe->Texto();
        QVERIFY(t.starts_with("\n\nAnálisis de las componentes principales"));
        QVERIFY(t.find("\tComponentes_Principales_a_CP2\n") != std::string::npos);
        QVERIFY(t.find("\n\n% varianza\t   66.67\t   33.33\t") != std::string::npos);
        QVERIFY(t.find("\n\nautovalores\t   2.000\t   1.000\t") != std::string::npos);
    }

    // "Descomposición espectral > NOAA" (two bands, written as files) and
    // "> Landsat" (four bands, into the window and new windows), on pixels
    // mixed by hand: 0.5 V + 0.25 S + 0.25 U and pure soil.
    void desmezclaDesdeLosDosMenus_data() {
        QTest::addColumn<int>("comando");
        QTest::addColumn<int>("bandas");
        QTest::addColumn<bool>("aVentana");
        QTest::addRow("NOAA") << 32793 << 2 << false;
        QTest::addRow("Landsat") << 32794 << 4 << true;
    }
    void desmezclaDesdeLosDosMenus() {
        QFETCH(int, comando);
        QFETCH(int, bandas);
        QFETCH(bool, aVentana);
        const std::vector<double> veg = {10, 20, 90, 100}, sombra = {4, 4, 4, 4}, suelo = {60, 72, 80, 92};
        const std::vector<double> mezcla = {21, 29, 66, 74};
        std::vector<std::string> rutas;
        for (int k = 0; k < bandas; ++k)
            rutas.push_back(entorno_.Imagen("banda" + std::to_string(k), 1, 2, "byte",
                                            {mezcla[static_cast<std::size_t>(k)], suelo[static_cast<std::size_t>(k)]}));
        auto primeras = [&](const std::vector<double>& v) {
            return std::vector<double>(v.begin(), v.begin() + bandas);
        };
        const std::string cv = Clase(entorno_, "veg.txt", primeras(veg));
        const std::string cs = Clase(entorno_, "sombra.txt", primeras(sombra));
        const std::string cu = Clase(entorno_, "suelo.txt", primeras(suelo));
        CBrimarDoc& ventana = e_->Ventana(rutas[0]);
        e_->ui.ficherosAbrir.assign(rutas.begin(), rutas.end());
        e_->ui.ficherosAbrir.insert(e_->ui.ficherosAbrir.end(), {cv, cs, cu});
        const std::string prefijo = entorno_.Ruta("mez" + std::to_string(comando));
        e_->ui.ficherosGuardar = {prefijo};
        QStringList grupos;
        e_->ui.dialogos.push_back([&](QDialog& d) {
            for (int k = 0; k < bandas; ++k) Pulsar(d, "entrada0_seleccionar");
            for (int k = 1; k <= 3; ++k) Pulsar(d, QStringLiteral("entrada%1_seleccionar").arg(k));
            for (auto* g : d.findChildren<QGroupBox*>()) grupos << g->title();
            if (!aVentana) Pulsar(d, "salida_guardar");
            return Aceptar(d);
        });
        e_->ui.dialogos.push_back([](QDialog& d) { return Aceptar(d); });  // AVISO: not saved
        const auto antes = e_->marco.Area()->subWindowList().size();
        e_->marco.EjecutarComando(comando);
        QCOMPARE(e_->ui.Ids(), std::vector<int>{});
        QVERIFY(grupos.contains(QStringLiteral("Bandas de entrada")));
        QVERIFY(grupos.contains(QStringLiteral("Clases puras (extremos de la mezcla)")));

        const std::vector<std::vector<double>> esperadas = {{150, 100}, {125, 100}, {125, 200}};
        if (aVentana) {
            QCOMPARE(e_->marco.Area()->subWindowList().size(), antes + 3);
            QCOMPARE(ventana.Imagen().titulo, std::string("banda0_Descomposición_Espectral_vegetación"));
            QCOMPARE(ValoresDe(ventana.Imagen()), esperadas[0]);
            const auto docs = e_->marco.Documentos();
            const std::size_t n = docs.size();
            QCOMPARE(docs[n - 3]->Imagen().titulo, std::string("banda0_Descomposición_Espectral_sombra"));
            QCOMPARE(ValoresDe(docs[n - 3]->Imagen()), esperadas[1]);
            QCOMPARE(ValoresDe(docs[n - 2]->Imagen()), esperadas[2]);
            QCOMPARE(docs[n - 1]->Imagen().titulo, std::string("banda0_Descomposición_Espectral_error"));
            for (double v : ValoresDe(docs[n - 1]->Imagen())) QVERIFY(std::abs(v) < 1e-4);
        } else {
            // Written as files; the window keeps its band.
            QCOMPARE(ventana.Imagen().titulo, std::string("banda0"));
            const char* finales[3] = {"_Vegetacion", "_Sombra", "_Suelo"};
            for (int k = 0; k < 3; ++k) {
                CImagen im;
                QVERIFY(!im.Cargar(prefijo + finales[k] + ".ozm"));
                QCOMPARE(im.tipoDato, int{kReal});
                QCOMPARE(ValoresDe(im), esperadas[static_cast<std::size_t>(k)]);
            }
            QVERIFY(Existe(prefijo + "_Error.ozm"));
        }
    }

    // The Landsat entry takes exactly four bands: with three, 61219 at
    // "Aceptar" and nothing computed.
    void landsatPideCuatroBandas() {
        std::vector<std::string> rutas;
        for (int k = 0; k < 3; ++k) rutas.push_back(entorno_.Imagen("b" + std::to_string(k), 1, 1, "byte", {1}));
        e_->ui.ficherosAbrir.assign(rutas.begin(), rutas.end());
        bool cerrado = true;
        e_->ui.dialogos.push_back([&](QDialog& d) {
            for (int k = 0; k < 3; ++k) Pulsar(d, "entrada0_seleccionar");
            cerrado = Aceptar(d);
            return false;
        });
        e_->Ventana(rutas[0]);
        e_->marco.EjecutarComando(32794);
        QVERIFY(!cerrado);
        QCOMPARE(e_->ui.mensajes.size(), std::size_t{1});
        QCOMPARE(e_->ui.mensajes[0].id, int{msg::kNoSeleccionadaEntrada});
    }

    // "Índices de vegetación": the red and the infrared band each in a group
    // of its own, the index kind in a third.
    void gruposDelIndiceDeVegetacion() {
        QStringList titulos;
        QString grupoIr;
        e_->ui.dialogos.push_back([&](QDialog& d) {
            for (auto* g : d.findChildren<QGroupBox*>()) titulos << g->title();
            auto* boton = d.findChild<QAbstractButton*>("entrada1_seleccionar");
            if (auto* g = boton ? qobject_cast<QGroupBox*>(boton->parentWidget()) : nullptr) grupoIr = g->title();
            return false;
        });
        e_->Ventana(entorno_.Imagen("r", 1, 1, "byte", {1}));
        e_->marco.EjecutarComando(32825);
        QCOMPARE(grupoIr, QStringLiteral("Nombre de la Banda del Infrarrojo Cercano (IR)"));
        QVERIFY(titulos.contains(QStringLiteral("Nombre de la Banda Roja (R)")));
        QVERIFY(titulos.contains(QStringLiteral("Tipo de Índice de Vegetación")));
    }
};

QTEST_MAIN(TransformacionesEscritorioTest)
#include "TransformacionesEscritorioTest.moc"
