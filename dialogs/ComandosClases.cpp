#include "dialogs/ComandosClases.h"

#include <memory>

#include "dialogs/CDecisionDlg.h"
#include "dialogs/CEstablecerClaseDlg.h"
#include "dialogs/CFaseEntrenamientoDlg.h"
#include "dialogs/COperacionDlg.h"
#include "dialogs/Espacio.h"
#include "dialogs/Ficheros.h"
#include "dialogs/Interfaz.h"
#include "doc/CBrimarDoc.h"
#include "doc/CBrimarView.h"
#include "image/Codificacion.h"
#include "image/FicheroSeguro.h"
#include "operations/ClasificacionesHechas.h"
#include "operations/Curso.h"

using orvela::Mensaje;
namespace msg = orvela::msg;
namespace relleno = orvela::relleno;
namespace texto = orvela::texto;

namespace {

// The sampling of one class: the points tool under its own name, so that a
// new "Establecer clase" on the same view replaces it.
class HerramientaClase : public vista::HerramientaPuntos {
public:
    using HerramientaPuntos::HerramientaPuntos;
    const char* Nombre() const override { return "clase"; }
};

// The inspector: every inspected pixel stays marked.
class HerramientaDecision : public vista::HerramientaPuntos {
public:
    using HerramientaPuntos::HerramientaPuntos;
    const char* Nombre() const override { return "decision"; }
};

vista::HerramientaPuntos::Marca MarcaDe(orvela::ModoMuestreo m) {
    switch (m) {
        case orvela::ModoMuestreo::Cruces: return vista::HerramientaPuntos::Marca::Cruz;
        case orvela::ModoMuestreo::Rectangulos: return vista::HerramientaPuntos::Marca::Rectangulo;
        default: return vista::HerramientaPuntos::Marca::Punto;
    }
}

// Takes off a tool of this name armed on the view (a sampling or an
// inspection left running).
void Retirar(CBrimarView& v, const char* nombre) {
    if (v.NombreHerramienta() == QLatin1String(nombre)) v.CancelarHerramienta();
}

// Writes the class file of the clicked points: the samples of every group,
// then every training band read from its file.
void EscribirClase(const orvela::Entrenamiento& e, orvela::ModoMuestreo modo, int alto, int ancho,
                   const std::string& stem, const std::vector<vista::PuntoImagen>& puntos, Espacio& espacio,
                   Interfaz& ui) {
    EsperaCursor espera(ui);
    std::vector<orvela::Posicion> muestras;
    for (const auto& p : puntos)
        for (const auto& m : orvela::GrupoMuestras(modo, p.filaPixel, p.columnaPixel, alto, ancho)) muestras.push_back(m);
    std::vector<orvela::CImagen> bandas(e.bandas.size());
    std::vector<const orvela::CImagen*> punteros;
    std::vector<std::string> nombres;
    for (std::size_t i = 0; i < e.bandas.size(); ++i) {
        if (auto error = bandas[i].Cargar(e.bandas[i].ruta)) {
            ui.Mostrar(*error);
            return;
        }
        punteros.push_back(&bandas[i]);
        nombres.push_back(e.bandas[i].nombre);
    }
    const std::string ruta = stem + ".txt";
    const std::string contenido = orvela::TextoFicheroClase(orvela::CalcularClase(punteros, nombres, muestras));
    if (!orvela::EscribirFicheroSeguro(ruta, orvela::Utf8ACp1252(contenido))) {
        ui.Mostrar(Mensaje::Tabla(msg::kNoCreadoFichero, ruta));
        return;
    }
    RecordarCarpeta(QString::fromStdString(ruta));
    espacio.Confirmar(TextoGuardado({ruta}));
}

// What the inspector needs of a classification.
struct Inspeccion {
    orvela::ClasificacionHecha c;
    std::vector<std::string> nombresClase;
};

// Asks for the bands, the class files and the rule of a classification
// opened from a file, with the dialog of the supervised classifiers
// without an output. nullopt when the user gives up or a file is refused.
std::optional<orvela::ClasificacionHecha> PedirClasificacion(const orvela::CImagen& clasificada, Interfaz& ui,
                                                             QWidget* padre) {
    const orvela::Declaracion* base = orvela::BuscarPorOrden("supervisada");
    if (!base) return std::nullopt;
    static const orvela::Declaracion pedir = [&] {
        orvela::Declaracion d;
        d.titulo = "Inspector de decisión";
        d.paginaAyuda = "decision";
        d.grupoEntrada = "Bandas de la clasificación";
        d.entradas = base->entradas;
        d.campos = base->campos;
        d.alElegir = base->alElegir;
        d.alAceptar = base->alAceptar;
        d.conSalida = false;
        return d;
    }();
    COperacionDlg dlg(pedir, ui, std::nullopt, padre);
    if (!ui.Ejecutar(dlg) || dlg.result() != QDialog::Accepted) return std::nullopt;
    orvela::ClasificacionHecha c;
    const orvela::Valores& v = dlg.Valores();
    c.regla = static_cast<orvela::ReglaSupervisada>(v.Entero(orvela::ClaveDe(pedir, "regla")));
    if (c.regla == orvela::ReglaSupervisada::Paralelepipedos)
        c.multiplicador = v.Entero(orvela::ClaveDe(pedir, "multiplicador"));
    for (const auto& e : dlg.Entradas()[0].elecciones) {
        const std::string ruta = e.ruta.empty() && e.abierta ? e.abierta->rutaRaster : e.ruta;
        if (e.cabecera.filas != clasificada.Filas() || e.cabecera.columnas != clasificada.Columnas()) {
            ui.Mostrar(Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kImagenes));
            return std::nullopt;
        }
        c.bandas.push_back({ruta, e.titulo, orvela::CodigoDeNombre(e.cabecera.nombreTipo), e.cabecera.filas,
                            e.cabecera.columnas});
    }
    const int n = static_cast<int>(c.bandas.size());
    const orvela::Elegidas elegidas = dlg.Elegidas();
    for (const auto& ruta : elegidas.ficheros[1]) {
        auto leida = orvela::LeerFicheroClase(ruta, n, c.regla == orvela::ReglaSupervisada::Paralelepipedos,
                                              c.regla == orvela::ReglaSupervisada::Probabilidad);
        if (!leida) {
            ui.Mostrar(Mensaje::Libre(texto::kFicheroClaseIlegible + ruta));
            return std::nullopt;
        }
        c.clases.push_back(std::move(*leida));
        c.ficherosClase.push_back(ruta);
    }
    return c;
}

// One click of the inspector: the band values read from the files, the
// rule's figures, the window filled.
void Inspeccionar(const orvela::ClasificacionHecha& c, CBrimarView& v, const vista::PuntoImagen& p, Interfaz& ui,
                  QWidget* padre) {
    std::vector<double> x;
    std::vector<std::string> bandas, clases;
    for (const auto& b : c.bandas) {
        const auto valor = orvela::LeerMuestraRaster(b.ruta, b.codigo, b.columnas, p.filaPixel, p.columnaPixel);
        if (!valor) {
            ui.Mostrar(Mensaje::Libre(orvela::Sustituir(texto::kMuestraIlegible, b.nombre)));
            return;
        }
        x.push_back(*valor);
        bandas.push_back(b.nombre);
    }
    for (const auto& k : c.clases) clases.push_back(k.nombre);
    const orvela::Decision d = orvela::Decidir(c.regla, c.clases, c.multiplicador, x);
    const double etiqueta = v.Documento().Imagen().ValorPixel(p.filaPixel, p.columnaPixel);
    CDecisionDlg* w = VentanaDecision(padre);
    if (!w) {
        w = new CDecisionDlg(padre);
        w->setAttribute(Qt::WA_DeleteOnClose);
        w->setWindowFlag(Qt::Tool);
    }
    w->Mostrar(p.filaPixel, p.columnaPixel, etiqueta, bandas, x, c.regla, clases, d);
    w->show();
    w->raise();
}

}  // namespace

void ComandoFaseEntrenamiento(orvela::Entrenamiento& e, Interfaz& ui, QWidget* padre) {
    CFaseEntrenamientoDlg dlg(ui, padre);
    if (!ui.Ejecutar(dlg) || dlg.result() != QDialog::Accepted) return;
    EsperaCursor espera(ui);
    e = orvela::FijarEntrenamiento(dlg.Bandas());
}

void ComandoEstablecerClase(const orvela::Entrenamiento& e, Espacio& espacio, CBrimarView* activa, Interfaz& ui,
                            QWidget* padre) {
    if (!e.hecho) return ui.Mostrar(Mensaje::Tabla(msg::kFaseEntrenamiento));
    if (!activa) return ui.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    CBrimarDoc& doc = activa->Documento();
    if (!doc.TieneImagen()) return ui.Mostrar(Mensaje::Tabla(msg::kSinImagen));
    if (e.BandaDeNombre(doc.Nombre().toStdString()) < 0) return ui.Mostrar(Mensaje::Tabla(msg::kBandaEntrenamiento));
    CEstablecerClaseDlg dlg(ui, padre);
    if (!ui.Ejecutar(dlg) || dlg.result() != QDialog::Accepted) return;
    Retirar(*activa, "clase");
    const orvela::ModoMuestreo modo = dlg.Modo();
    const bool rectangulos = modo == orvela::ModoMuestreo::Rectangulos;
    const int alto = rectangulos ? dlg.Altura() : 1, ancho = rectangulos ? dlg.Anchura() : 1;
    // The selection is copied: sampling goes on with the bands it began with
    // even if the training is done again meanwhile.
    activa->ArmarHerramienta(std::make_unique<HerramientaClase>(
        MarcaDe(modo), alto, ancho,
        [e, modo, alto, ancho, stem = dlg.Stem(), &espacio, &ui](CBrimarView&, const std::vector<vista::PuntoImagen>& p) {
            EscribirClase(e, modo, alto, ancho, stem, p, espacio, ui);
        },
        [&ui](CBrimarView&, const vista::PuntoImagen& p) {
            if (p.dentro) return true;
            ui.Mostrar(Mensaje::Tabla(msg::kFueraDeImagen));
            return false;
        }));
}

void ComandoInspeccionarDecision(Espacio& espacio, CBrimarView* activa, Interfaz& ui, QWidget* padre) {
    (void)espacio;
    if (!activa) return ui.Mostrar(Mensaje::Tabla(msg::kNoHayVentanaActiva));
    CBrimarDoc& doc = activa->Documento();
    if (!doc.TieneImagen()) return ui.Mostrar(Mensaje::Tabla(msg::kSinImagen));
    if (doc.EsComposicion()) return ui.Mostrar(Mensaje::Tabla(msg::kComposicionColor));
    if (doc.Imagen().tipoDato != orvela::kByte) return ui.Mostrar(Mensaje::Libre(texto::kInspectorNoByte));
    std::optional<orvela::ClasificacionHecha> c;
    {
        EsperaCursor espera(ui);
        c = orvela::BuscarClasificacion(doc.Imagen());
    }
    if (!c) c = PedirClasificacion(doc.Imagen(), ui, padre);
    if (!c) return;
    Retirar(*activa, "decision");
    activa->ArmarHerramienta(std::make_unique<HerramientaDecision>(
        vista::HerramientaPuntos::Marca::Punto, 1, 1, nullptr,
        [c = std::move(*c), &ui, padre](CBrimarView& v, const vista::PuntoImagen& p) {
            if (!p.dentro) {
                ui.Mostrar(Mensaje::Tabla(msg::kFueraDeImagen));
                return false;
            }
            Inspeccionar(c, v, p, ui, padre);
            return true;
        }));
}

CDecisionDlg* VentanaDecision(QWidget* padre) {
    return padre ? padre->findChild<CDecisionDlg*>(QStringLiteral("decision"), Qt::FindDirectChildrenOnly) : nullptr;
}
