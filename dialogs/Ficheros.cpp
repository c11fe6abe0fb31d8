#include "dialogs/Ficheros.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace {

QSettings Ajustes() { return QSettings(QStringLiteral("Orvela"), QStringLiteral("Orvela")); }

const QString kCarpeta = QStringLiteral("UltimaCarpeta");
const QString kRecientes = QStringLiteral("FicherosRecientes");

}  // namespace

QString CarpetaInicial() {
    const QString c = Ajustes().value(kCarpeta).toString();
    return !c.isEmpty() && QDir(c).exists() ? c : QDir::homePath();
}

void RecordarCarpeta(const QString& ruta) {
    if (ruta.isEmpty()) return;
    const QFileInfo fi(ruta);
    Ajustes().setValue(kCarpeta, fi.isDir() ? fi.absoluteFilePath() : fi.absolutePath());
}

QStringList FicherosRecientes() {
    QStringList r = Ajustes().value(kRecientes).toStringList();
    r.removeAll(QString());
    while (r.size() > kMaximoRecientes) r.removeLast();
    return r;
}

void AnadirReciente(const QString& ruta) {
    if (ruta.isEmpty()) return;
    const QString absoluta = QFileInfo(ruta).absoluteFilePath();
    QStringList r = FicherosRecientes();
    r.removeAll(absoluta);
    r.prepend(absoluta);
    while (r.size() > kMaximoRecientes) r.removeLast();
    Ajustes().setValue(kRecientes, r);
    RecordarCarpeta(absoluta);
}

void QuitarReciente(const QString& ruta) {
    QStringList r = FicherosRecientes();
    r.removeAll(QFileInfo(ruta).absoluteFilePath());
    Ajustes().setValue(kRecientes, r);
}

std::string TextoGuardado(const std::vector<std::string>& escritos) {
    QStringList nombres;
    for (const std::string& e : escritos) {
        const QFileInfo fi(QString::fromStdString(e));
        if (fi.suffix().compare(QLatin1String("inf"), Qt::CaseInsensitive) == 0) continue;
        nombres << fi.fileName();
    }
    if (nombres.isEmpty()) return {};
    return ((nombres.size() == 1 ? QStringLiteral("Guardado: ") : QStringLiteral("Guardados: ")) +
            nombres.join(QStringLiteral(", ")))
        .toStdString();
}
