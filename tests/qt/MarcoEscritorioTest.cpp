// The framework's new shapes on the desktop, with a scripted user: a band
// list filled, reordered and trimmed in the dialog, a file input, an open
// image used from memory, several results (the first in the window, the
// others in new windows, the report in a window of its own), and a run
// cancelled from the progress window that leaves the window and the disk as
// they were.
#include <QApplication>
#include <QComboBox>
#include <QListWidget>
#include <QDir>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QThread>
#include <QTimer>
#include <atomic>

#include "Entorno.h"
#include "dialogs/CursoDialogo.h"
#include "doc/CBrimarDoc.h"

using namespace orvela;
using namespace prueba;

namespace {

struct Visto {
    std::vector<std::string> titulos;
    std::vector<std::string> ficheros;
    int llamadas = 0;
};
Visto visto;

// Bands 2 to 4 and a text file; one image per band and a report.
Declaracion Bandas() {
    Declaracion d;
    d.titulo = "Bandas de prueba";
    d.entradas = {{.boton = "&Añadir banda", .clase = ClaseEntrada::Bandas, .minimo = 2, .maximo = 4},
                  {.boton = "&Fichero", .nombre = "ningún fichero", .clase = ClaseEntrada::Fichero,
                   .filtro = "Textos (*.txt)", .extensiones = {"txt"}}};
    d.calcular = [](const Contexto& c) {
        ++visto.llamadas;
        Resultado r;
        for (const CImagen* im : c.porEntrada[0]) {
            visto.titulos.push_back(im->titulo);
            CImagen copia;
            copia.CopiarCabecera(*im);
            copia.pixeles = im->pixeles.Copia();
            r.imagenes.push_back(std::move(copia));
        }
        visto.ficheros = c.ficheros[1];
        r.informes.push_back({"_Informe.txt", "Bandas: " + std::to_string(c.porEntrada[0].size()) + "\n", "Informe", ""});
        return r;
    };
    d.sufijo = SufijoFijo("_Bandas");
    return d;
}

// One image that admits the window, computed until it is cancelled (or ten
// seconds pass).
Declaracion Larga() {
    Declaracion d;
    d.titulo = "Larga";
    d.entradas = {{"&Seleccionar", relleno::kNingunaImagen, true}};
    d.calcular = [](const Contexto& c) {
        ++visto.llamadas;
        for (int i = 0; i < 1000 && !c.progreso.Cancelado(); ++i) {
            c.progreso.Informar(i / 1000.0, "Pasada " + std::to_string(i + 1));
            QThread::msleep(10);
        }
        return UnaSalida(c, 0, [](CImagen&) { return true; });
    };
    d.sufijo = SufijoFijo("_Larga");
    return d;
}

QListWidget* Lista(QDialog& d, int i) { return d.findChild<QListWidget*>(QStringLiteral("entrada%1_lista").arg(i)); }

}  // namespace

class MarcoEscritorioTest : public QObject {
    Q_OBJECT
    Entorno entorno_;
    std::unique_ptr<Escritorio> e_;

private slots:
    void init() {
        visto = Visto{};
        e_ = std::make_unique<Escritorio>();
    }
    void cleanup() { e_.reset(); }

    void listaDeBandasRellenadaPorGuion() {
        const std::string a = entorno_.Imagen("a", 2, 2, "byte", {1, 2, 3, 4});
        const std::string b = entorno_.Imagen("b", 2, 2, "byte", {5, 6, 7, 8});
        const std::string c = entorno_.Imagen("c", 2, 2, "byte", {9, 9, 9, 9});
        const std::string texto = entorno_.Ruta("clases.txt");
        QFile f(QString::fromStdString(texto));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.close();
        // An open image that was never saved is offered from memory.
        CBrimarDoc& abierta = e_->Ventana(entorno_.Imagen("abierta", 2, 2, "byte", {0, 0, 0, 1}));
        abierta.Imagen().pixeles.Como<uint8_t>()[0] = 200;
        e_->Ventana(a);
        e_->ui.ficherosAbrir = {a, entorno_.Ruta("mal.ozmx"), b, c, texto};
        QStringList filas;
        e_->ui.dialogos.push_back([&](QDialog& d) {
            Pulsar(d, "entrada0_seleccionar");                   // a
            Pulsar(d, "entrada0_seleccionar");                   // refused: 61217
            Pulsar(d, "entrada0_seleccionar");                   // b
            Pulsar(d, "entrada0_seleccionar");                   // c
            auto* abiertas = d.findChild<QComboBox*>("entrada0_abiertas");
            if (!abiertas) return false;
            const int k = abiertas->findText(QString::fromStdString(abierta.Nombre().toStdString()));
            QMetaObject::invokeMethod(abiertas, "activated", Q_ARG(int, k));  // the open image, 4th
            Lista(d, 0)->setCurrentRow(2);
            Pulsar(d, "entrada0_subir");                         // a, c, b, abierta
            Lista(d, 0)->setCurrentRow(0);
            Pulsar(d, "entrada0_quitar");                        // c, b, abierta
            for (int i = 0; i < Lista(d, 0)->count(); ++i) filas << Lista(d, 0)->item(i)->text();
            Pulsar(d, "entrada1_seleccionar");
            return Aceptar(d);
        });
        e_->ui.dialogos.push_back([](QDialog& d) { return Aceptar(d); });  // AVISO: " No."
        const int ventanas = static_cast<int>(e_->marco.Documentos().size());
        EjecutarOperacion(Bandas(), e_->marco, e_->ui);
        QCOMPARE(e_->ui.Ids(), (std::vector<int>{msg::kExtensionInadecuada}));
        QCOMPARE(filas, (QStringList{"Banda 1:  c", "Banda 2:  b", "Banda 3:  abierta"}));
        QCOMPARE(visto.titulos, (std::vector<std::string>{"c", "b", "abierta"}));
        QCOMPARE(visto.ficheros, (std::vector<std::string>{texto}));
        // The first result in the active window, the other two in new ones.
        QCOMPARE(static_cast<int>(e_->marco.Documentos().size()), ventanas + 2);
        QCOMPARE(e_->marco.DocumentoActivo() != nullptr, true);
        const auto docs = e_->marco.Documentos();
        QCOMPARE(ValoresDe(docs[1]->Imagen()), (std::vector<double>{9, 9, 9, 9}));
        QCOMPARE(ValoresDe(docs.back()->Imagen()), (std::vector<double>{200, 0, 0, 1}));
    }

    // Fewer bands than the list needs: 61219, and nothing is computed.
    void listaCortaSeRechaza() {
        e_->ui.ficherosAbrir = {entorno_.Imagen("a", 2, 2, "byte", {1, 2, 3, 4})};
        e_->ui.dialogos.push_back([](QDialog& d) {
            Pulsar(d, "entrada0_seleccionar");
            const bool aceptado = Aceptar(d);
            return aceptado;
        });
        e_->Ventana();
        EjecutarOperacion(Bandas(), e_->marco, e_->ui);
        QCOMPARE(e_->ui.mensajes, (std::vector<Mensaje>{Mensaje::Tabla(msg::kNoSeleccionadaEntrada, relleno::kNingunaImagen,
                                                                      relleno::kUnaImagen)}));
        QCOMPARE(visto.llamadas, 0);
    }

    // The menu entries of the parallelepiped and maximum likelihood rules
    // open the supervised classification with their rule chosen.
    void reglasDeClasificacionDesdeElMenu() {
        for (auto [id, regla] : {std::pair{32821, 0}, std::pair{32823, 1}, std::pair{32828, 2}}) {
            bool marcada = false;
            e_->ui.dialogos.push_back([&, regla = regla](QDialog& d) {
                auto* r = d.findChild<QRadioButton*>(QStringLiteral("campo_regla_%1").arg(regla));
                marcada = r && r->isChecked();
                return false;
            });
            QVERIFY(CMainFrame::Manejado(id));
            e_->marco.EjecutarComando(id);
            QVERIFY2(marcada, qPrintable(QString::number(id)));
        }
    }

    // "Cancelar" in the progress window: the window keeps its image, the
    // disk is as it was, and the user is told.
    void cancelarDejaVentanaYDiscoComoEstaban() {
        const std::string a = entorno_.Imagen("larga", 3, 3, "byte", {1, 2, 3, 4, 5, 6, 7, 8, 9});
        CBrimarDoc& doc = e_->Ventana(a);
        const QStringList antes = QDir(QString::fromStdString(entorno_.Ruta(""))).entryList(QDir::Files);
        bool visible = false;
        QTimer cancelar;
        QObject::connect(&cancelar, &QTimer::timeout, [&] {
            for (QWidget* w : QApplication::topLevelWidgets())
                if (auto* p = qobject_cast<QProgressDialog*>(w); p && p->isVisible()) {
                    visible = true;
                    if (auto* b = p->findChild<QPushButton*>()) b->click();
                    cancelar.stop();
                }
        });
        cancelar.start(50);
        e_->ui.ficherosGuardar = {entorno_.Ruta("larga_salida.ozm")};
        e_->ui.dialogos.push_back(Pulsando({"salida_guardar"}));
        EjecutarOperacion(Larga(), e_->marco, e_->ui);
        QVERIFY(visible);
        QCOMPARE(visto.llamadas, 1);
        QCOMPARE(e_->ui.mensajes.size(), std::size_t{1});
        QCOMPARE(e_->ui.mensajes[0].Texto(), std::string(texto::kOperacionCancelada));
        QCOMPARE(QDir(QString::fromStdString(entorno_.Ruta(""))).entryList(QDir::Files), antes);
        // To the window: the window's image stays.
        e_->ui.mensajes.clear();
        cancelar.start(50);
        e_->ui.dialogos.push_back(Pulsando({}));
        EjecutarOperacion(Larga(), e_->marco, e_->ui);
        QCOMPARE(ValoresDe(doc.Imagen()), (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
        QCOMPARE(doc.Imagen().titulo, std::string("larga"));
        QCOMPARE(e_->ui.mensajes.size(), std::size_t{1});
    }
};

QTEST_MAIN(MarcoEscritorioTest)
#include "MarcoEscritorioTest.moc"
