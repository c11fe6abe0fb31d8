#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QMainWindow w;
    w.setWindowTitle(QStringLiteral("Orvela"));
    w.show();
    return app.exec();
}
