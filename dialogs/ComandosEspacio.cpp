#include "dialogs/ComandosEspacio.h"

#include <QApplication>
#include <QDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "dialogs/Espacio.h"
#include "dialogs/Interfaz.h"
#include "dialogs/CAyudaDlg.h"
#include "dialogs/CHistogramaDlg.h"
#include "dialogs/Ficheros.h"
#include "doc/CBrimarDoc.h"
#include "image/Estadisticas.h"
#include "image/Leyenda.h"
#include "image/Paleta.h"
#include "tools/Exportar.h"

using namespace orvela;

namespace {

// The active document with an image; nullptr after showing why not.
// `composicionVale`: a colour composite is accepted (only the picture
// export takes one).
CBrimarDoc* DocumentoConImagen(Espacio& espacio, Interfaz& ui, bool composicionVale) {
    CBrimarDoc* doc = espacio.DocumentoActivo();
    if (!doc) {
        ui.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
        return nullptr;
    }
    if (!doc->TieneImagen()) {
        ui.Mostrar(Mensaje::Tabla(msg::kSinImagen));
        return nullptr;
    }
    if (!composicionVale && doc->EsComposicion()) {
        ui.Mostrar(Mensaje::Tabla(msg::kComposicionColor));
        return nullptr;
    }
    return doc;
}

bool TieneExtension(const std::string& ruta) {
    const auto barra = ruta.find_last_of('/');
    const auto punto = ruta.find_last_of('.');
    return punto != std::string::npos && (barra == std::string::npos || punto > barra + 1);
}

std::string Extension(const std::string& ruta) {
    if (!TieneExtension(ruta)) return {};
    return QString::fromStdString(ruta.substr(ruta.find_last_of('.') + 1)).toLower().toStdString();
}

QString Numero(double x) { return QString::number(x, 'g', 10); }

QString TextoGeo(float x) {
    return x == SinDato ? QStringLiteral("desconocido") : Numero(static_cast<double>(x));
}

}  // namespace

void ComandoHistograma(Espacio& espacio, Interfaz& ui, QWidget* padre) {
    CBrimarDoc* doc = DocumentoConImagen(espacio, ui, false);
    if (!doc) return;
    CHistogramaDlg* dlg = nullptr;
    {
        EsperaCursor espera(ui);
        dlg = new CHistogramaDlg(doc->Imagen(), doc->Nombre(), padre, doc->Realce());
    }
    dlg->show();
    dlg->raise();
}

void ComandoInformacion(Espacio& espacio, Interfaz& ui, QWidget* padre) {
    CBrimarDoc* doc = DocumentoConImagen(espacio, ui, true);
    if (!doc) return;
    const CImagen& im = doc->Imagen();
    QDialog dlg(padre);
    dlg.setWindowTitle(QStringLiteral("Información de la imagen"));
    auto* layout = new QVBoxLayout(&dlg);
    auto* formulario = new QFormLayout;
    auto fila = [&](const QString& etiqueta, const QString& valor, const char* objeto) {
        auto* v = new QLabel(valor, &dlg);
        v->setObjectName(QStringLiteral("valor_") + QString::fromLatin1(objeto));
        v->setTextInteractionFlags(Qt::TextSelectableByMouse);
        formulario->addRow(etiqueta, v);
    };
    double minimo = 0, maximo = 0;
    const bool conExtremos = MinimoMaximo(im.pixeles, minimo, maximo);
    const char* tipo = NombreDeCodigo(im.tipoDato);
    fila(QStringLiteral("Título:"), QString::fromStdString(im.titulo), "titulo");
    fila(QStringLiteral("Ventana:"), doc->Nombre(), "ventana");
    fila(QStringLiteral("Fichero:"), QString::fromStdString(im.rutaRaster), "fichero");
    fila(QStringLiteral("Tipo de dato:"), tipo ? QString::fromLatin1(tipo) : QStringLiteral("desconocido"), "tipo");
    fila(QStringLiteral("Tipo de fichero:"), QString::fromStdString(im.tipoFichero), "tipo_fichero");
    fila(QStringLiteral("Filas:"), Numero(im.filas), "filas");
    fila(QStringLiteral("Columnas:"), Numero(im.columnas), "columnas");
    fila(QStringLiteral("Sistema de referencia:"),
         im.sistemaReferencia.empty() || im.sistemaReferencia == "unknown" ? QStringLiteral("desconocido")
                                                                           : QString::fromStdString(im.sistemaReferencia),
         "sistema");
    fila(QStringLiteral("Unidades:"), QString::fromStdString(im.unidades), "unidades");
    fila(QStringLiteral("X mínima:"), TextoGeo(im.geo.minX), "x_minima");
    fila(QStringLiteral("X máxima:"), TextoGeo(im.geo.maxX), "x_maxima");
    fila(QStringLiteral("Y mínima:"), TextoGeo(im.geo.minY), "y_minima");
    fila(QStringLiteral("Y máxima:"), TextoGeo(im.geo.maxY), "y_maxima");
    fila(QStringLiteral("Error de posición:"), TextoGeo(im.geo.errorPosicion), "error_posicion");
    fila(QStringLiteral("Resolución:"), TextoGeo(im.geo.resolucion), "resolucion");
    fila(QStringLiteral("Distancia unidad:"), TextoGeo(im.geo.distanciaUnidad), "distancia_unidad");
    fila(QStringLiteral("Valor mínimo:"), conExtremos ? Numero(minimo) : QStringLiteral("-"), "minimo");
    fila(QStringLiteral("Valor máximo:"), conExtremos ? Numero(maximo) : QStringLiteral("-"), "maximo");
    if (im.composicionColor) fila(QStringLiteral("Composición en color:"), QStringLiteral("sí"), "composicion");
    layout->addLayout(formulario);
    auto* aceptar = new QPushButton(QStringLiteral("&Aceptar"), &dlg);
    aceptar->setObjectName(QStringLiteral("aceptar"));
    aceptar->setDefault(true);
    QObject::connect(aceptar, &QPushButton::clicked, &dlg, &QDialog::accept);
    auto* botones = new QHBoxLayout;
    botones->addStretch(1);
    botones->addWidget(aceptar);
    layout->addLayout(botones);
    ui.Ejecutar(dlg);
}

void ComandoExportarAscii(Espacio& espacio, Interfaz& ui) {
    CBrimarDoc* doc = DocumentoConImagen(espacio, ui, false);
    if (!doc) return;
    auto ruta = ui.FicheroGuardar(QStringLiteral("Exportar a ASCII"),
                                  {QStringLiteral("Texto (*.txt)"), QStringLiteral("Todos Los Archivos (*.*)")});
    if (!ruta || ruta->empty()) return;
    if (!TieneExtension(*ruta)) *ruta += ".txt";
    EsperaCursor espera(ui);
    if (auto m = ExportarAscii(doc->Imagen(), *ruta)) return ui.Mostrar(*m);
    espacio.Confirmar(TextoGuardado({*ruta}));
}

void ComandoExportarBmp(Espacio& espacio, Interfaz& ui) {
    CBrimarDoc* doc = DocumentoConImagen(espacio, ui, true);
    if (!doc) return;
    auto ruta = ui.FicheroGuardar(QStringLiteral("Exportar a .bmp"),
                                  {QStringLiteral("Mapa de bits (*.bmp)"), QStringLiteral("Imagen PNG (*.png)")});
    if (!ruta || ruta->empty()) return;
    if (!TieneExtension(*ruta)) *ruta += ".bmp";
    const FormatoImagen formato = Extension(*ruta) == "png" ? FormatoImagen::Png : FormatoImagen::Bmp;
    EsperaCursor espera(ui);
    const CImagen& im = doc->Imagen();
    // A colour composite is written in its own colours.
    if (const ComposicionColor* c = doc->Composicion()) {
        if (auto m = ExportarComposicion(*c, *ruta, formato)) return ui.Mostrar(*m);
        return espacio.Confirmar(TextoGuardado({*ruta}));
    }
    // The picture is drawn through the palette the window shows.
    Paleta paleta;
    const int codigo = CargarPaleta(static_cast<int>(im.indicePaleta), espacio.CarpetaAplicacion(),
                                    im.rutaPaletaPersonalizada, paleta);
    if (codigo < 0 && !im.composicionColor) {
        ui.Mostrar(Mensaje::Tabla(msg::kPaletaNoEncontrada));
        return;
    }
    // The classes of a classified image in the colours the window shows.
    if (auto clases = LeerLeyendaVentana(im.rutaRaster); clases && !im.composicionColor) {
        std::vector<uint8_t> entradas;
        for (const auto& c : *clases) entradas.push_back(EntradaDeValor(im.pixeles, c.nd));
        DistinguirClases(paleta, entradas);
    }
    if (auto m = ExportarImagen(im, paleta, *ruta, formato)) return ui.Mostrar(*m);
    espacio.Confirmar(TextoGuardado({*ruta}));
}

namespace {

// The outermost window above `w`: the main window, for every window of the
// program; `w` itself when it hangs from nothing.
QWidget* Raiz(QWidget* w) {
    while (w && w->parentWidget()) w = w->parentWidget();
    return w;
}

bool Desciende(const QWidget* w, const QWidget* de) {
    for (; w; w = w->parentWidget())
        if (w == de) return true;
    return false;
}

}  // namespace

void MostrarAyuda(const char* pagina, QWidget* padre) {
    static QPointer<CAyudaDlg> ayuda;
    if (!ayuda) {
        ayuda = new CAyudaDlg(CAyudaDlg::CarpetaPorDefecto());
        QObject::connect(qApp, &QCoreApplication::aboutToQuit, ayuda, &QObject::deleteLater);
    }
    // The help window hangs from the main window. A modal dialog blocks
    // every other window: while one is open, the help window belongs to it,
    // and goes back to the main window when the dialog ends. A dialog that
    // hangs from the help window itself (it should not) never takes it: the
    // two would each become the other's parent.
    QWidget* raiz = Raiz(padre);
    if (raiz == ayuda || Desciende(raiz, ayuda)) raiz = nullptr;
    auto* dialogo = padre ? qobject_cast<QDialog*>(padre->window()) : nullptr;
    if (dialogo && Desciende(dialogo, ayuda)) dialogo = nullptr;
    auto colgar = [](CAyudaDlg* a, QWidget* de) {
        if (a->parentWidget() == de) return;
        const QRect marco = a->geometry();
        const bool visible = a->isVisible();
        a->setParent(de, Qt::Window);
        a->setGeometry(marco);
        if (visible) a->show();
    };
    if (dialogo && dialogo->isModal()) {
        if (ayuda->parentWidget() != dialogo) {
            colgar(ayuda, dialogo);
            QPointer<CAyudaDlg> a = ayuda;
            QPointer<QWidget> principal = Raiz(dialogo) == dialogo ? nullptr : Raiz(dialogo);
            QObject::connect(
                dialogo, &QDialog::finished, ayuda,
                [a, principal, colgar] {
                    if (a) colgar(a, principal);
                },
                Qt::SingleShotConnection);
        }
    } else if (raiz && ayuda->parentWidget() != raiz && !qobject_cast<QDialog*>(raiz)) {
        colgar(ayuda, raiz);
    }
    ayuda->MostrarPagina(QString::fromUtf8(pagina ? pagina : ""));
    ayuda->show();
    ayuda->raise();
    ayuda->activateWindow();
}
