#include "app/Arranque.h"

#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QTranslator>

void NombrarAplicacion() {
    QApplication::setOrganizationName(QStringLiteral("Orvela"));
    QApplication::setApplicationName(QStringLiteral("Orvela"));
}

bool CargarTraducciones(QCoreApplication& app, const QString& carpeta) {
    QStringList carpetas;
    if (!carpeta.isEmpty()) carpetas << carpeta;
    else carpetas << QLibraryInfo::path(QLibraryInfo::TranslationsPath) << QStringLiteral("/usr/share/qt6/translations");
    for (const QString& c : carpetas) {
        for (const char* nombre : {"qt_es", "qtbase_es"}) {
            auto* t = new QTranslator(&app);
            if (t->load(QString::fromLatin1(nombre), c) && QCoreApplication::installTranslator(t)) return true;
            delete t;
        }
    }
    return false;
}
