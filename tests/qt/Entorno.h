// What the desktop tests share: a private settings store and application
// folder with grey palettes, image pairs written on the fly, the main window
// with a scripted user, and the steps of that user on a dialog's controls,
// found by object name.
#pragma once

#include <QAbstractButton>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QRadioButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "InterfazGuion.h"
#include "app/CChildFrame.h"
#include "app/CMainFrame.h"
#include "dialogs/TablaComandos.h"
#include "doc/CBrimarView.h"
#include "doc/CBrimarDoc.h"
#include "doc/ComandosDocumento.h"
#include "image/CImagen.h"
#include "image/Conversion.h"
#include "operations/Curso.h"

namespace prueba {

// A temporary folder whose "app" subfolder is the application folder
// ("Path"), with the six palettes in "Paletas": grey levels in each.
class Entorno {
public:
    Entorno() {
        for (auto f : {QSettings::NativeFormat, QSettings::IniFormat})
            QSettings::setPath(f, QSettings::UserScope, dir_.path() + QStringLiteral("/ajustes"));
        QDir(dir_.path()).mkpath(QStringLiteral("app/Paletas"));
        for (const char* f : {"Color256", "Qualital256", "Gris256", "Color16", "Qualital16", "Gris16"})
            EscribirPaletaGris(Carpeta() + "/Paletas/" + f + ".PAL");
        PonerPath(QString::fromStdString(Carpeta()));
    }
    std::string Carpeta() const { return Ruta("app"); }

    // Writes the pair `nombre`.ozm / .inf in the folder, titled after the
    // file; `valores` fill the samples in row order (repeated), by the store
    // rule. Returns the raster.
    std::string Imagen(const std::string& nombre, long filas, long columnas, const char* tipo,
                       const std::vector<double>& valores, const std::string& sistema = "unknown",
                       const orvela::Georreferencia& geo = {}) const {
        orvela::CImagen im;
        if (im.Iniciar(Ruta(nombre) + ".ozm", "", nombre, static_cast<uint32_t>(filas), static_cast<uint32_t>(columnas),
                       tipo, 0, 0, sistema, "m", geo))
            return {};
        orvela::ConTipo(im.tipoDato, [&]<class T>(orvela::Muestra<T>) {
            auto d = im.pixeles.Como<T>();
            for (std::size_t k = 0; k < d.size() && !valores.empty(); ++k)
                d[k] = orvela::Almacenar<T>(valores[k % valores.size()]);
        });
        return im.Guardar(Ruta(nombre), 1) ? std::string() : Ruta(nombre) + ".ozm";
    }
    std::string Ruta(const std::string& nombre) const { return dir_.path().toStdString() + "/" + nombre; }

    // A null folder removes the setting.
    static void PonerPath(const QString& carpeta) {
        QSettings s(QStringLiteral("Orvela"), QStringLiteral("Orvela"));
        carpeta.isNull() ? s.remove(QStringLiteral("Path")) : s.setValue(QStringLiteral("Path"), carpeta);
        s.sync();
    }
    static void EscribirPaletaGris(const std::string& ruta) {
        std::ofstream f(ruta);
        for (int i = 0; i < 256; ++i) f << i << ' ' << i << ' ' << i << ' ' << i << '\n';
    }

private:
    QTemporaryDir dir_;
};

// The main window with a scripted user, made afresh for each test; the wait
// cursor must be restored on every way out.
struct Escritorio {
    InterfazGuion ui;
    CMainFrame marco{&ui};

    ~Escritorio() { QCOMPARE(ui.esperas, 0); }
    // A new active window, showing that pair in grey levels ("": empty).
    CBrimarDoc& Ventana(const std::string& ruta = {}) {
        CBrimarDoc& doc = marco.NuevaVentana()->Documento();
        if (!ruta.empty()) AbrirImagen(doc, ruta, 2, {}, ui);
        return doc;
    }
    void Ejecutar(std::initializer_list<int> ids) {
        for (int id : ids) marco.EjecutarComando(id);
    }
};

inline std::vector<double> ValoresDe(const orvela::CImagen& im) {
    std::vector<double> r;
    for (std::size_t k = 0; k < im.pixeles.Cantidad(); ++k) r.push_back(im.pixeles.Valor(k));
    return r;
}

inline std::string LeerFichero(const std::string& ruta) {
    std::ifstream f(ruta, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(f), {});
}
inline bool Existe(const std::string& ruta) { return QFileInfo::exists(QString::fromStdString(ruta)); }

inline void Pulsar(QDialog& d, const QString& nombre) {
    auto* b = d.findChild<QAbstractButton*>(nombre);
    QVERIFY2(b, qPrintable(nombre));
    b->click();
}
// "Aceptar" pressed: the dialog's checks run; true when it closed accepted.
inline bool Aceptar(QDialog& d) {
    d.setResult(QDialog::Rejected);
    Pulsar(d, QStringLiteral("aceptar"));
    return d.result() == QDialog::Accepted;
}
// A dialog script: presses these buttons (radio buttons too) in order,
// then "Aceptar".
inline std::function<bool(QDialog&)> Pulsando(const QStringList& botones) {
    return [botones](QDialog& d) {
        for (const QString& b : botones) Pulsar(d, b);
        return Aceptar(d);
    };
}
inline void Escribir(QDialog& d, const QString& nombre, const QString& texto) {
    auto* e = d.findChild<QLineEdit*>(nombre);
    QVERIFY2(e, qPrintable(nombre));
    e->setText(texto);
}
inline QString Texto(QDialog& d, const QString& nombre) {
    auto* e = d.findChild<QLineEdit*>(nombre);
    return e ? e->text() : QStringLiteral("<no existe>");
}

// Mouse events on a view sent as they stand (QTest would take the point
// (0, 0) for the centre of the widget).
inline void Raton(CBrimarView& v, QEvent::Type tipo, QPoint p, Qt::MouseButtons botones) {
    QMouseEvent e(tipo, QPointF(p), v.viewport()->mapToGlobal(QPointF(p)),
                  tipo == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, botones, Qt::NoModifier);
    QCoreApplication::sendEvent(v.viewport(), &e);
}
inline void Arrastrar(CBrimarView& v, QPoint a, QPoint b) {
    Raton(v, QEvent::MouseButtonPress, a, Qt::LeftButton);
    Raton(v, QEvent::MouseMove, (a + b) / 2, Qt::LeftButton);
    Raton(v, QEvent::MouseMove, b, Qt::LeftButton);
    Raton(v, QEvent::MouseButtonRelease, b, Qt::NoButton);
}
inline void Pulsar(CBrimarView& v, QPoint p) { Arrastrar(v, p, p); }

}  // namespace prueba
