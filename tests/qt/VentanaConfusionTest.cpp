// The confusion matrix window: the report as the window writes it, the
// matrix as a table shaded by count with totals, per-class producer's and
// user's accuracies (a dash for a class never sampled), the overall
// accuracy and kappa; opened by the workspace for a report that carries a
// matrix, and by the "Matriz de confusión" command from the menu.
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QTableWidget>

#include "Entorno.h"
#include "classification/Confusion.h"
#include "dialogs/CVentanaConfusion.h"
#include "dialogs/VentanasResultado.h"
#include "image/Leyenda.h"

using namespace prueba;

namespace {

// Five samples: truth agua agua agua bosque bosque, classified agua agua
// bosque bosque bosque; suelo is in the legend but never sampled.
// Rows (classified): agua 2 0 0 | 2; bosque 1 2 0 | 3; suelo 0 0 0 | 0.
// n = 5, d = 4, p = 2*3 + 3*2 = 12, kappa = (20 - 12) / (25 - 12) = 8/13.
const std::vector<double> kVerdad = {10, 10, 10, 20, 20}, kClasificada = {10, 10, 20, 20, 20};
const std::vector<orvela::ClaseLeyenda> kLeyenda = {{"agua", 10}, {"bosque", 20}, {"suelo", 30}};

QString Celda(QTableWidget& t, int i, int j) { return t.item(i, j) ? t.item(i, j)->text() : QStringLiteral("<nada>"); }
int Claridad(QTableWidget& t, int i, int j) { return t.item(i, j)->background().color().lightness(); }

}  // namespace

class VentanaConfusionTest : public QObject {
    Q_OBJECT
    Entorno entorno_;
    std::unique_ptr<Escritorio> e_;

    void Comprobar(CVentanaConfusion& v, const std::string& textoEsperado) {
        auto* caja = v.findChild<QPlainTextEdit*>(QStringLiteral("texto"));
        QVERIFY(caja);
        QCOMPARE(caja->toPlainText().toStdString(), textoEsperado);
        QTableWidget& t = v.Tabla();
        QCOMPARE(t.rowCount(), 5);
        QCOMPARE(t.columnCount(), 5);
        QCOMPARE(t.verticalHeaderItem(1)->text(), QStringLiteral("bosque (20)"));
        QCOMPARE(t.horizontalHeaderItem(4)->text(), QStringLiteral("Exact. de usuario"));
        const QStringList fila0 = {Celda(t, 0, 0), Celda(t, 0, 1), Celda(t, 0, 2), Celda(t, 0, 3), Celda(t, 0, 4)};
        QCOMPARE(fila0, QStringList({"2", "0", "0", "2", "100.0 %"}));
        QCOMPARE(Celda(t, 1, 0), QStringLiteral("1"));
        QCOMPARE(Celda(t, 1, 4), QStringLiteral("66.7 %"));
        QCOMPARE(Celda(t, 2, 4), QStringLiteral("—"));
        QCOMPARE(Celda(t, 3, 0), QStringLiteral("3"));
        QCOMPARE(Celda(t, 3, 3), QStringLiteral("5"));
        QCOMPARE(Celda(t, 4, 0), QStringLiteral("66.7 %"));
        QCOMPARE(Celda(t, 4, 1), QStringLiteral("100.0 %"));
        QCOMPARE(Celda(t, 4, 2), QStringLiteral("—"));
        // Shading by count: the largest count darkest, an empty cell white;
        // agreement green, confusion red.
        QVERIFY(Claridad(t, 0, 0) < Claridad(t, 1, 0));
        QCOMPARE(Claridad(t, 1, 1), Claridad(t, 0, 0));
        QCOMPARE(t.item(0, 1)->background().color(), QColor(Qt::white));
        const QColor acierto = t.item(0, 0)->background().color(), fallo = t.item(1, 0)->background().color();
        QVERIFY(acierto.green() > acierto.red());
        QVERIFY(fallo.red() > fallo.green());
        QCOMPARE(v.findChild<QLabel*>(QStringLiteral("exactitudGlobal"))->text(),
                 QStringLiteral("Exactitud global: 80.0 % (4 de 5 muestras)"));
        QCOMPARE(v.findChild<QLabel*>(QStringLiteral("kappa"))->text(),
                 QStringLiteral("Índice kappa: %1").arg(8.0 / 13.0, 0, 'f', 4));
    }

private slots:
    void init() { e_ = std::make_unique<Escritorio>(); }
    void cleanup() { e_.reset(); }

    void tablaSombreadaConExactitudesYKappa() {
        orvela::CImagen mascara, verdad, clasificada;
        for (auto [im, v] : {std::pair{&mascara, std::vector<double>(5, 1)}, {&verdad, kVerdad}, {&clasificada, kClasificada}}) {
            im->pixeles = orvela::Muestras::Crear(orvela::kByte, 5);
            for (std::size_t i = 0; i < 5; ++i) im->pixeles.Como<uint8_t>()[i] = static_cast<uint8_t>(v[i]);
            im->tipoDato = orvela::kByte;
            im->filas = 1;
            im->columnas = 5;
        }
        auto m = std::make_shared<orvela::MatrizConfusion>();
        QVERIFY(!orvela::CalcularConfusion(mascara, verdad, clasificada, kLeyenda, *m));
        const std::string texto = orvela::InformeConfusion(*m, "verdad", "clasificada", true);
        const int antes = static_cast<int>(e_->marco.Area()->subWindowList().size());
        Espacio& espacio = e_->marco;
        espacio.AbrirInforme({.contenido = texto, .titulo = "Información índice kappa", .confusion = m});
        QCOMPARE(e_->marco.Area()->subWindowList().size(), antes + 1);
        auto* v = qobject_cast<CVentanaConfusion*>(e_->marco.Area()->activeSubWindow()->widget());
        QVERIFY(v);
        QCOMPARE(v->windowTitle(), QStringLiteral("Información índice kappa"));
        Comprobar(*v, texto);
        // "Guardar como" writes the report with ".txt" added.
        e_->ui.ficherosGuardar.push_back(entorno_.Ruta("kappa"));
        QVERIFY(v->Informe().GuardarComo());
        QVERIFY(Existe(entorno_.Ruta("kappa.txt")));
        // A report without a matrix keeps its plain window.
        espacio.AbrirInforme({.contenido = "x", .titulo = "Otro"});
        QVERIFY(qobject_cast<CVentanaInforme*>(e_->marco.Area()->activeSubWindow()->widget()));
    }

    void desdeElMenuConTresImagenes() {
        const std::string mascara = entorno_.Imagen("mascara", 1, 5, "byte", {1});
        const std::string verdad = entorno_.Imagen("verdad", 1, 5, "byte", kVerdad);
        const std::string clasificada = entorno_.Imagen("clasificada", 1, 5, "byte", kClasificada);
        QVERIFY(orvela::EscribirLeyenda(clasificada, kLeyenda));
        e_->ui.ficherosAbrir = {mascara, verdad, clasificada};
        e_->ui.dialogos.push_back([](QDialog& d) {
            for (const char* b : {"entrada0_seleccionar", "entrada1_seleccionar", "entrada2_seleccionar"}) Pulsar(d, b);
            return Aceptar(d);
        });
        e_->Ventana();
        e_->Ejecutar({32857});
        QVERIFY(e_->ui.mensajes.empty());
        QVERIFY(e_->ui.textos.empty());
        auto* v = qobject_cast<CVentanaConfusion*>(e_->marco.Area()->activeSubWindow()->widget());
        QVERIFY(v);
        orvela::MatrizConfusion m;
        orvela::CImagen a, b, c;
        QVERIFY(!a.Cargar(mascara) && !b.Cargar(verdad) && !c.Cargar(clasificada));
        QVERIFY(!orvela::CalcularConfusion(a, b, c, kLeyenda, m));
        Comprobar(*v, orvela::InformeConfusion(m, "verdad", "clasificada", true));
    }
};

QTEST_MAIN(VentanaConfusionTest)
#include "VentanaConfusionTest.moc"
