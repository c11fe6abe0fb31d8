#include "app/CAcercaDeDlg.h"

#include <QApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

CAcercaDeDlg::CAcercaDeDlg(QWidget* padre) : QDialog(padre) {
    setWindowTitle(QStringLiteral("Acerca de Orvela"));
    setObjectName(QStringLiteral("acercaDe"));

    auto* imagen = new QLabel(this);
    imagen->setObjectName(QStringLiteral("imagen"));
    imagen->setPixmap(QApplication::windowIcon().pixmap(48, 48));
    imagen->setAlignment(Qt::AlignTop | Qt::AlignHCenter);

    auto* grupo = new QGroupBox(QStringLiteral("Información"), this);
    auto* g = new QVBoxLayout(grupo);
    auto etiqueta = [&](const QString& t, bool negrita = false) {
        auto* l = new QLabel(t, grupo);
        if (negrita) {
            QFont f = l->font();
            f.setBold(true);
            l->setFont(f);
        }
        g->addWidget(l);
    };
    etiqueta(QStringLiteral("Orvela 1.0 para Windows"), true);
    g->addSpacing(6);
    etiqueta(QStringLiteral("Desarrollo y programación:"), true);
    etiqueta(QStringLiteral("    Equipo Orvela"));
    etiqueta(QStringLiteral("Dirección científica y coordinación:"), true);
    etiqueta(QStringLiteral("    Equipo Orvela"));
    g->addSpacing(6);
    etiqueta(QStringLiteral("Programa para la enseñanza del tratamiento digital de imágenes de satélite."));

    auto* aceptar = new QPushButton(QStringLiteral("&Aceptar"), this);
    aceptar->setObjectName(QStringLiteral("aceptar"));
    aceptar->setDefault(true);
    connect(aceptar, &QPushButton::clicked, this, &QDialog::accept);

    auto* arriba = new QHBoxLayout;
    arriba->addWidget(imagen);
    arriba->addWidget(grupo, 1);
    auto* botones = new QHBoxLayout;
    botones->addStretch();
    botones->addWidget(aceptar);
    auto* v = new QVBoxLayout(this);
    v->addLayout(arriba);
    v->addLayout(botones);
}
