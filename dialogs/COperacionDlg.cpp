#include "dialogs/FilaBotones.h"
#include "dialogs/COperacionDlg.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QRegularExpression>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>

#include "dialogs/Interfaz.h"
#include "dialogs/ComandosEspacio.h"
#include "operations/Curso.h"

using namespace orvela;

namespace {

const QStringList& FiltrosImagen() {
    static const QStringList f = {QStringLiteral("Imágenes (*.ozm)"), QStringLiteral("Todos Los Archivos (*.*)")};
    return f;
}

QString Q(const char* s) { return QString::fromUtf8(s ? s : ""); }

// The operation's own checks of "Aceptar"; the first that fails is shown.
bool PasaComprobaciones(const Declaracion& d, Interfaz& ui, const Valores& v, const Elegidas& elegidas) {
    if (!d.alAceptar) return true;
    if (auto m = d.alAceptar(v, elegidas)) {
        ui.Mostrar(*m);
        return false;
    }
    return true;
}

// A number typed by the user: a decimal comma is taken as a point.
std::optional<double> LeerNumero(QString t, bool entero) {
    t = t.trimmed();
    if (!t.contains(QLatin1Char('.'))) t.replace(QLatin1Char(','), QLatin1Char('.'));
    bool ok = false;
    if (entero) {
        const qlonglong n = QLocale::c().toLongLong(t, &ok);
        if (!ok) return std::nullopt;
        return static_cast<double>(n);
    }
    const double x = QLocale::c().toDouble(t, &ok);
    if (!ok || !std::isfinite(x)) return std::nullopt;
    return x;
}

QString TextoNumero(double x, bool entero) {
    if (entero) return QString::number(static_cast<qlonglong>(x));
    return QLocale::c().toString(x, 'g', 10);
}

// Name of a field in a sentence: its label, else its group.
QString NombreCampo(const Campo& c) {
    QString n = Q(c.etiqueta).trimmed();
    if (n.isEmpty()) n = Q(c.grupo).trimmed();
    if (n.isEmpty() && c.subdialogo) n = Q(c.subdialogo);
    n.remove(QLatin1Char('&'));
    if (n.endsWith(QLatin1Char(':'))) n.chop(1);
    return n;
}

QString NombreCampoObjeto(const Campo& c) { return QStringLiteral("campo_") + Q(c.clave->nombre); }

}  // namespace

// ---------------------------------------------------------------- fields

CamposDialogo::CamposDialogo(QWidget* padre, const std::vector<const Campo*>& campos, const Valores& base)
    : base_(base) {
    auto* layout = qobject_cast<QBoxLayout*>(padre->layout());
    std::map<std::string, QGroupBox*> grupos;
    // Values of the fields before each one, at their defaults: a list of
    // numbers is sized by them.
    Valores previos = base_;
    for (const Campo* campo : campos) {
        Control c{campo};
        const std::string titulo = campo->grupo ? campo->grupo : "";
        QGroupBox* grupo = nullptr;
        if (!titulo.empty()) {
            auto it = grupos.find(titulo);
            if (it != grupos.end()) grupo = it->second;
        }
        if (!grupo) {
            grupo = new QGroupBox(Q(campo->grupo), padre);
            new QVBoxLayout(grupo);
            if (layout) layout->addWidget(grupo);
            if (!titulo.empty()) grupos[titulo] = grupo;
        }
        c.grupo = grupo;
        auto* interior = static_cast<QVBoxLayout*>(grupo->layout());
        const QString nombre = NombreCampoObjeto(*campo);
        switch (campo->tipo) {
            case TipoCampo::Eleccion: {
                auto* botones = new QButtonGroup(grupo);
                for (std::size_t k = 0; k < campo->opciones.size(); ++k) {
                    auto* r = new QRadioButton(Q(campo->opciones[k].etiqueta), grupo);
                    r->setObjectName(nombre + QStringLiteral("_%1").arg(k));
                    botones->addButton(r, static_cast<int>(k));
                    interior->addWidget(r);
                    c.radios.push_back(r);
                }
                if (!c.radios.empty()) {
                    const auto k = static_cast<std::size_t>(std::max(0.0, campo->porDefecto));
                    c.radios[k < c.radios.size() ? k : 0]->setChecked(true);
                }
                break;
            }
            case TipoCampo::Entero:
            case TipoCampo::Real:
            case TipoCampo::Texto: {
                auto* fila = new QHBoxLayout;
                auto* etiqueta = new QLabel(Q(campo->etiqueta), grupo);
                auto* edit = new QLineEdit(grupo);
                edit->setObjectName(nombre);
                etiqueta->setBuddy(edit);
                if (campo->tipo == TipoCampo::Texto)
                    edit->setText(Q(campo->textoPorDefecto));
                else
                    edit->setText(TextoNumero(campo->porDefecto, campo->tipo == TipoCampo::Entero));
                if (!Q(campo->etiqueta).isEmpty()) fila->addWidget(etiqueta);
                else etiqueta->hide();
                fila->addWidget(edit);
                interior->addLayout(fila);
                c.edits.push_back(edit);
                c.etiquetas.push_back(etiqueta);
                break;
            }
            case TipoCampo::Casilla: {
                auto* casilla = new QCheckBox(Q(campo->etiqueta), grupo);
                casilla->setObjectName(nombre);
                casilla->setChecked(campo->porDefecto != 0);
                interior->addWidget(casilla);
                c.casilla = casilla;
                break;
            }
            case TipoCampo::Tabla: {
                QStringList titulos;
                for (const char* t : campo->columnas) titulos << Q(t);
                auto* etiqueta = new QLabel(Q(campo->etiqueta) + (titulos.isEmpty() ? QString() : QStringLiteral(" (") + titulos.join(QStringLiteral(", ")) + QStringLiteral(")")), grupo);
                auto* tabla = new QPlainTextEdit(grupo);
                tabla->setObjectName(nombre);
                tabla->setPlaceholderText(QStringLiteral("Una fila por línea; valores separados por blancos o punto y coma"));
                interior->addWidget(etiqueta);
                interior->addWidget(tabla);
                c.etiquetas.push_back(etiqueta);
                c.tabla = tabla;
                break;
            }
            case TipoCampo::ListaReales: {
                if (!Q(campo->etiqueta).isEmpty()) {
                    auto* etiqueta = new QLabel(Q(campo->etiqueta), grupo);
                    interior->addWidget(etiqueta);
                    c.etiquetas.push_back(etiqueta);
                }
                const int n = campo->cantidad ? std::max(0, campo->cantidad(previos)) : 0;
                const int lado = std::max(1, static_cast<int>(std::ceil(std::sqrt(static_cast<double>(n)))));
                auto* rejilla = new QGridLayout;
                for (int k = 0; k < n; ++k) {
                    auto* edit = new QLineEdit(grupo);
                    edit->setObjectName(nombre + QStringLiteral("_%1").arg(k));
                    edit->setText(TextoNumero(campo->porDefecto, false));
                    edit->setMaximumWidth(70);
                    rejilla->addWidget(edit, k / lado, k % lado);
                    c.edits.push_back(edit);
                }
                interior->addLayout(rejilla);
                break;
            }
        }
        if (campo->Aplica(previos)) {
            QString ignorado;
            LeerUno(c, previos, ignorado);
        }
        controles_.push_back(std::move(c));
    }
    for (auto& c : controles_) {
        for (auto* r : c.radios)
            conexiones_.push_back(QObject::connect(r, &QRadioButton::toggled, padre, [this] { Actualizar(); }));
        for (auto* e : c.edits)
            conexiones_.push_back(QObject::connect(e, &QLineEdit::textChanged, padre, [this] { Actualizar(); }));
        if (c.casilla)
            conexiones_.push_back(QObject::connect(c.casilla, &QCheckBox::toggled, padre, [this] { Actualizar(); }));
    }
    Actualizar();
}

CamposDialogo::~CamposDialogo() {
    for (const auto& c : conexiones_) QObject::disconnect(c);
}

bool CamposDialogo::LeerUno(const Control& c, Valores& v, QString& error) const {
    const Campo& campo = *c.campo;
    switch (campo.tipo) {
        case TipoCampo::Eleccion: {
            double indice = campo.porDefecto;
            for (std::size_t k = 0; k < c.radios.size(); ++k)
                if (c.radios[k]->isChecked()) indice = static_cast<double>(k);
            v.Poner(*campo.clave, indice);
            return true;
        }
        case TipoCampo::Texto: v.Poner(*campo.clave, c.edits[0]->text().toStdString()); return true;
        case TipoCampo::Entero:
        case TipoCampo::Real: {
            const bool entero = campo.tipo == TipoCampo::Entero;
            const auto x = LeerNumero(c.edits[0]->text(), entero);
            if (!x) {
                error = entero ? QStringLiteral("El valor de «%1» debe ser un número entero.").arg(NombreCampo(campo))
                               : QStringLiteral("El valor de «%1» debe ser un número.").arg(NombreCampo(campo));
                return false;
            }
            v.Poner(*campo.clave, *x);
            return true;
        }
        case TipoCampo::Casilla: v.Poner(*campo.clave, c.casilla->isChecked() ? 1.0 : 0.0); return true;
        case TipoCampo::Tabla: {
            TablaNumeros filas;
            const int n = campo.cantidad ? campo.cantidad(v) : -1;
            const QStringList lineas = c.tabla->toPlainText().split(QLatin1Char('\n'));
            for (int k = 0; k < lineas.size(); ++k) {
                const QStringList partes =
                    lineas[k].split(QRegularExpression(QStringLiteral("[\\s;]+")), Qt::SkipEmptyParts);
                if (partes.isEmpty()) continue;
                std::vector<double> fila;
                for (const QString& p : partes) {
                    const auto x = LeerNumero(p, false);
                    if (!x) {
                        error = QStringLiteral("La fila %1 de «%2» debe tener solo números.").arg(k + 1).arg(NombreCampo(campo));
                        return false;
                    }
                    fila.push_back(*x);
                }
                if (n >= 0 && static_cast<int>(fila.size()) != n) {
                    error = QStringLiteral("La fila %1 de «%2» debe tener %3 valores.").arg(k + 1).arg(NombreCampo(campo)).arg(n);
                    return false;
                }
                filas.push_back(std::move(fila));
            }
            v.Poner(*campo.clave, std::move(filas));
            return true;
        }
        case TipoCampo::ListaReales: {
            std::vector<double> lista;
            for (std::size_t k = 0; k < c.edits.size(); ++k) {
                const auto x = LeerNumero(c.edits[k]->text(), false);
                if (!x) {
                    error = QStringLiteral("El valor %1 de «%2» debe ser un número.").arg(k + 1).arg(NombreCampo(campo));
                    return false;
                }
                lista.push_back(*x);
            }
            v.Poner(*campo.clave, std::move(lista));
            return true;
        }
    }
    return false;
}

bool CamposDialogo::Leer(Valores& v, QString& error) const {
    for (const auto& c : controles_) {
        if (!c.campo->Aplica(v)) continue;
        if (!LeerUno(c, v, error)) return false;
    }
    return true;
}

void CamposDialogo::Actualizar() {
    Valores v = base_;
    std::map<QGroupBox*, bool> activos;
    for (const auto& c : controles_) {
        const bool aplica = c.campo->Aplica(v);
        for (auto* r : c.radios) r->setEnabled(aplica);
        for (auto* e : c.edits) e->setEnabled(aplica);
        for (auto* w : c.etiquetas) w->setEnabled(aplica);
        if (c.casilla) c.casilla->setEnabled(aplica);
        if (c.tabla) c.tabla->setEnabled(aplica);
        activos[c.grupo] = activos[c.grupo] || aplica;
        if (aplica) {
            QString ignorado;
            LeerUno(c, v, ignorado);
        }
    }
    for (auto [grupo, activo] : activos) grupo->setEnabled(activo);
}

// ---------------------------------------------------------------- main dialog

const COperacionDlg::Eleccion& COperacionDlg::Entrada::Unica() const {
    static const Eleccion vacia;
    return elecciones.empty() ? vacia : elecciones.front();
}

COperacionDlg::COperacionDlg(const Declaracion& d, Interfaz& ui, std::optional<Cabecera> cabeceraVentana,
                             QWidget* padre, std::vector<Abierta> abiertas)
    : QDialog(padre), d_(d), ui_(ui), cabeceraVentana_(std::move(cabeceraVentana)), abiertas_(std::move(abiertas)) {
    setWindowTitle(Q(d.titulo));
    auto* layout = new QVBoxLayout(this);

    entradas_.resize(d.entradas.size());
    radiosVentana_.assign(d.entradas.size(), nullptr);
    nombresEntrada_.assign(d.entradas.size(), nullptr);
    listas_.assign(d.entradas.size(), nullptr);
    if (!d.entradas.empty()) {
        auto* grupo = new QGroupBox(Q(d.grupoEntrada), this);
        grupo->setObjectName(QStringLiteral("grupo_entrada0"));
        auto* interior = new QVBoxLayout(grupo);
        for (std::size_t i = 0; i < d.entradas.size(); ++i) {
            const DeclEntrada& e = d.entradas[i];
            // An input with a group title of its own closes the group
            // before it and opens its own.
            if (e.grupo && i > 0) {
                layout->addWidget(grupo);
                grupo = new QGroupBox(Q(e.grupo), this);
                grupo->setObjectName(QStringLiteral("grupo_entrada%1").arg(i));
                interior = new QVBoxLayout(grupo);
            }
            const bool lista = e.maximo > 1;
            const bool imagen = e.clase != ClaseEntrada::Fichero;
            const QString base = QStringLiteral("entrada%1_").arg(i);
            auto* fila = new QHBoxLayout;
            QRadioButton* fichero = nullptr;
            if (e.admiteVentanaActiva && !lista) {
                auto* botones = new QButtonGroup(grupo);
                auto* ventana = new QRadioButton(QStringLiteral("Imagen de la ventana activa"), grupo);
                ventana->setObjectName(base + QStringLiteral("activa"));
                fichero = new QRadioButton(grupo);
                fichero->setObjectName(base + QStringLiteral("fichero"));
                botones->addButton(ventana);
                botones->addButton(fichero);
                ventana->setChecked(true);
                interior->addWidget(ventana);
                fila->addWidget(fichero);
                radiosVentana_[i] = ventana;
            }
            auto* boton = new QPushButton(Q(e.boton), grupo);
            boton->setObjectName(base + QStringLiteral("seleccionar"));
            boton->setAutoDefault(false);
            fila->addWidget(boton);
            if (!lista) {
                auto* nombre = new QLineEdit(grupo);
                nombre->setObjectName(base + QStringLiteral("nombre"));
                nombre->setReadOnly(true);
                fila->addWidget(nombre, 1);
                nombresEntrada_[i] = nombre;
            }
            // The images already open can be picked as they are in memory.
            if (imagen && !abiertas_.empty()) {
                auto* abiertasCombo = new QComboBox(grupo);
                abiertasCombo->setObjectName(base + QStringLiteral("abiertas"));
                abiertasCombo->addItem(QStringLiteral("Imágenes abiertas..."));
                for (const auto& a : abiertas_) abiertasCombo->addItem(QString::fromStdString(a.nombre));
                fila->addWidget(abiertasCombo);
                connect(abiertasCombo, QOverload<int>::of(&QComboBox::activated), this, [this, i, abiertasCombo](int k) {
                    if (k <= 0) return;
                    ElegirAbierta(static_cast<int>(i), k - 1);
                    abiertasCombo->setCurrentIndex(0);
                });
            }
            interior->addLayout(fila);
            if (lista) {
                auto* l = new QListWidget(grupo);
                l->setObjectName(base + QStringLiteral("lista"));
                l->setMinimumHeight(90);
                auto* botonesLista = new QHBoxLayout;
                const std::pair<const char*, const char*> acciones[] = {
                    {"quitar", "&Quitar"}, {"subir", "S&ubir"}, {"bajar", "&Bajar"}};
                for (const auto& [clave, texto] : acciones) {
                    auto* b = new QPushButton(Q(texto), grupo);
                    b->setObjectName(base + Q(clave));
                    b->setAutoDefault(false);
                    botonesLista->addWidget(b);
                    const std::string que = clave;
                    connect(b, &QPushButton::clicked, this, [this, i, que] {
                        if (que == "quitar") Quitar(static_cast<int>(i));
                        else Mover(static_cast<int>(i), que == "subir" ? -1 : 1);
                    });
                }
                botonesLista->addStretch(1);
                interior->addWidget(l);
                interior->addLayout(botonesLista);
                listas_[i] = l;
            }
            connect(boton, &QPushButton::clicked, this, [this, i] { ElegirEntrada(static_cast<int>(i)); });
        }
        layout->addWidget(grupo);
    }

    std::vector<const Campo*> principales;
    for (const auto& c : d.campos)
        if (!c.subdialogo) principales.push_back(&c);
    campos_.emplace(this, principales, orvela::Valores{});

    if (d.conSalida) {
        auto* grupo = new QGroupBox(Q(d.grupoSalida), this);
        auto* interior = new QVBoxLayout(grupo);
        auto* botones = new QButtonGroup(grupo);
        salidaVentana_ = new QRadioButton(QStringLiteral("Visualizar en la ventana actual"), grupo);
        salidaVentana_->setObjectName(QStringLiteral("salida_ventana"));
        salidaFichero_ = new QRadioButton(grupo);
        salidaFichero_->setObjectName(QStringLiteral("salida_fichero"));
        botones->addButton(salidaVentana_);
        botones->addButton(salidaFichero_);
        salidaVentana_->setChecked(true);
        auto* guardar = new QPushButton(Q(d.botonGuardar), grupo);
        guardar->setObjectName(QStringLiteral("salida_guardar"));
        guardar->setAutoDefault(false);
        nombreSalida_ = new QLineEdit(grupo);
        nombreSalida_->setObjectName(QStringLiteral("salida_nombre"));
        nombreSalida_->setReadOnly(true);
        interior->addWidget(salidaVentana_);
        auto* fila = new QHBoxLayout;
        fila->addWidget(salidaFichero_);
        fila->addWidget(guardar);
        fila->addWidget(nombreSalida_, 1);
        interior->addLayout(fila);
        layout->addWidget(grupo);
        connect(guardar, &QPushButton::clicked, this, &COperacionDlg::ElegirSalida);
    }

    const FilaBotones botones(this, QStringLiteral("&Aceptar"), QStringLiteral("&Cancelar"), QStringLiteral("Ayuda"));
    layout->addLayout(botones.fila);
    auto* ayuda = botones.ayuda;
    connect(botones.aceptar, &QPushButton::clicked, this, &COperacionDlg::Aceptar);
    const char* pagina = d.paginaAyuda;
    connect(ayuda, &QPushButton::clicked, this, [this, pagina] { MostrarAyuda(pagina, this); });
}

bool COperacionDlg::SalidaVentana() const { return salidaVentana_ && salidaVentana_->isChecked(); }

std::vector<std::optional<Cabecera>> COperacionDlg::Previas(int i) const {
    std::vector<std::optional<Cabecera>> previas;
    for (std::size_t j = 0; j < entradas_.size(); ++j) {
        if (d_.entradas[j].clase == ClaseEntrada::Fichero) continue;
        const bool lista = d_.entradas[j].maximo > 1;
        if (!lista && static_cast<int>(j) == i) {
            previas.emplace_back();  // the pick being replaced
            continue;
        }
        if (radiosVentana_[j] && radiosVentana_[j]->isChecked()) {
            previas.push_back(cabeceraVentana_);
            continue;
        }
        if (!lista) {
            previas.push_back(entradas_[j].aceptado ? std::optional<Cabecera>(entradas_[j].Unica().cabecera)
                                                    : std::nullopt);
            continue;
        }
        for (const auto& e : entradas_[j].elecciones) previas.push_back(e.cabecera);
    }
    return previas;
}

bool COperacionDlg::Tomar(int i, Eleccion e) {
    const auto k = static_cast<std::size_t>(i);
    const DeclEntrada& decl = d_.entradas[k];
    const bool lista = decl.maximo > 1;
    Entrada& entrada = entradas_[k];
    if (!lista) {
        entrada.elegido = true;
        entrada.aceptado = false;
        entrada.elecciones.clear();
        nombresEntrada_[k]->setText(QString::fromStdString(e.titulo));
    }
    auto rechazar = [&](const Mensaje& m) {
        ui_.Mostrar(m);
        if (!lista) nombresEntrada_[k]->clear();
        return false;
    };
    if (lista && entrada.elecciones.size() >= static_cast<std::size_t>(decl.maximo))
        return rechazar(Mensaje::Tabla(msg::kNumeroBandas));
    if (decl.clase == ClaseEntrada::Fichero) {
        if (auto m = ComprobarFicheroDatos(decl, e.ruta)) return rechazar(*m);
        if (revisarFichero && !revisarFichero(i, e.ruta)) {
            if (!lista) nombresEntrada_[k]->clear();
            return false;
        }
    } else {
        std::vector<std::optional<Cabecera>> previas = Previas(i);
        // The index the checks give this pick: its place among the images.
        int indice = 0;
        for (std::size_t j = 0; j < k; ++j) {
            if (d_.entradas[j].clase == ClaseEntrada::Fichero) continue;
            indice += d_.entradas[j].maximo > 1 ? static_cast<int>(entradas_[j].elecciones.size()) : 1;
        }
        if (lista) indice += static_cast<int>(entrada.elecciones.size());
        if (!e.abierta) {
            if (auto m = ComprobarFicheroEntrada(e.ruta, e.cabecera)) return rechazar(*m);
        }
        if (d_.alElegir) {
            if (!lista && static_cast<std::size_t>(indice) < previas.size()) previas[static_cast<std::size_t>(indice)].reset();
            if (auto m = d_.alElegir(indice, e.cabecera, previas)) return rechazar(*m);
        }
    }
    entrada.elecciones.push_back(std::move(e));
    if (!lista) entrada.aceptado = true;
    else RellenarLista(i);
    return true;
}

void COperacionDlg::ElegirEntrada(int i) {
    const auto k = static_cast<std::size_t>(i);
    const DeclEntrada& decl = d_.entradas[k];
    if (radiosVentana_[k]) {
        if (auto* fichero = findChild<QRadioButton*>(QStringLiteral("entrada%1_fichero").arg(i)))
            fichero->setChecked(true);
    }
    QStringList filtros = FiltrosImagen();
    if (decl.clase == ClaseEntrada::Fichero)
        filtros = {Q(decl.filtro), QStringLiteral("Todos Los Archivos (*.*)")};
    const QString titulo = decl.maximo > 1 ? QStringLiteral("Fichero %1").arg(entradas_[k].elecciones.size() + 1)
                                           : QStringLiteral("Abrir");
    const auto ruta = ui_.FicheroAbrir(titulo, filtros);
    if (!ruta) return;
    Eleccion e;
    e.ruta = *ruta;
    e.titulo = TituloFichero(*ruta);
    Tomar(i, std::move(e));
}

void COperacionDlg::ElegirAbierta(int i, int k) {
    if (k < 0 || static_cast<std::size_t>(k) >= abiertas_.size()) return;
    const auto& a = abiertas_[static_cast<std::size_t>(k)];
    if (radiosVentana_[static_cast<std::size_t>(i)]) {
        if (auto* fichero = findChild<QRadioButton*>(QStringLiteral("entrada%1_fichero").arg(i)))
            fichero->setChecked(true);
    }
    Eleccion e;
    e.titulo = a.nombre;
    e.abierta = a.imagen;
    e.cabecera = a.imagen->ComoCabecera();
    Tomar(i, std::move(e));
}

void COperacionDlg::RellenarLista(int i) {
    QListWidget* l = listas_[static_cast<std::size_t>(i)];
    if (!l) return;
    const int actual = l->currentRow();
    l->clear();
    const auto& elecciones = entradas_[static_cast<std::size_t>(i)].elecciones;
    for (std::size_t k = 0; k < elecciones.size(); ++k)
        l->addItem(QStringLiteral("Banda %1:  %2").arg(k + 1).arg(QString::fromStdString(elecciones[k].titulo)));
    l->setCurrentRow(std::min(actual, l->count() - 1));
}

void COperacionDlg::Quitar(int i) {
    QListWidget* l = listas_[static_cast<std::size_t>(i)];
    auto& elecciones = entradas_[static_cast<std::size_t>(i)].elecciones;
    const int f = l ? l->currentRow() : -1;
    if (f < 0 || static_cast<std::size_t>(f) >= elecciones.size()) return;
    elecciones.erase(elecciones.begin() + f);
    RellenarLista(i);
}

void COperacionDlg::Mover(int i, int paso) {
    QListWidget* l = listas_[static_cast<std::size_t>(i)];
    auto& elecciones = entradas_[static_cast<std::size_t>(i)].elecciones;
    const int f = l ? l->currentRow() : -1;
    const int g = f + paso;
    if (f < 0 || g < 0 || static_cast<std::size_t>(g) >= elecciones.size()) return;
    std::swap(elecciones[static_cast<std::size_t>(f)], elecciones[static_cast<std::size_t>(g)]);
    RellenarLista(i);
    l->setCurrentRow(g);
}

orvela::Elegidas COperacionDlg::Elegidas() const {
    orvela::Elegidas r;
    r.cabeceras.resize(entradas_.size());
    r.ficheros.resize(entradas_.size());
    r.ventana.assign(entradas_.size(), false);
    for (std::size_t i = 0; i < entradas_.size(); ++i) {
        r.ventana[i] = radiosVentana_[i] && radiosVentana_[i]->isChecked();
        if (d_.entradas[i].clase == ClaseEntrada::Fichero) {
            for (const auto& e : entradas_[i].elecciones) r.ficheros[i].push_back(e.ruta);
        } else if (radiosVentana_[i] && radiosVentana_[i]->isChecked()) {
            if (cabeceraVentana_) r.cabeceras[i].push_back(*cabeceraVentana_);
        } else {
            for (const auto& e : entradas_[i].elecciones) r.cabeceras[i].push_back(e.cabecera);
        }
    }
    return r;
}

void COperacionDlg::ElegirSalida() {
    salidaFichero_->setChecked(true);
    const auto ruta = ui_.FicheroGuardar(QStringLiteral("Guardar como"), FiltrosImagen());
    if (!ruta) return;
    stem_ = QuitarExtensionGuardar(*ruta);
    salidaElegida_ = !stem_.empty();
    nombreSalida_->setText(QString::fromStdString(TituloFichero(*ruta)));
}

void COperacionDlg::Aceptar() {
    orvela::Valores v;
    QString error;
    if (!campos_->Leer(v, error)) {
        ui_.MostrarTexto(error);
        return;
    }
    for (std::size_t i = 0; i < entradas_.size(); ++i) {
        Entrada& e = entradas_[i];
        const DeclEntrada& decl = d_.entradas[i];
        e.ventana = radiosVentana_[i] && radiosVentana_[i]->isChecked();
        if (e.ventana) continue;
        const bool lista = decl.maximo > 1;
        if (!lista && !e.elegido && decl.minimo == 0) continue;  // an optional image (a mask)
        if ((lista && e.elecciones.size() < static_cast<std::size_t>(decl.minimo)) || (!lista && !e.elegido)) {
            ui_.Mostrar(Mensaje::Tabla(msg::kNoSeleccionadaEntrada, decl.nombre,
                                       decl.clase == ClaseEntrada::Fichero ? relleno::kUnArchivo : relleno::kUnaImagen));
            return;
        }
        if (!lista && !e.aceptado) return;
    }
    if (d_.conSalida && !SalidaVentana() && !salidaElegida_) {
        // Several results under one prefix name the prefix, not an image.
        ui_.Mostrar(d_.salidaPrefijo
                        ? Mensaje::Tabla(msg::kNoSeleccionadaSalida, relleno::kNingunPrefijo, relleno::kUnPrefijo)
                        : Mensaje::Tabla(msg::kNoSeleccionadaSalida, relleno::kNingunaImagen, relleno::kUnaImagen));
        return;
    }
    Declaracion sinPropias = d_;
    sinPropias.alAceptar = nullptr;
    if (auto m = ComprobarAceptar(sinPropias, v, Elegidas())) {
        ui_.Mostrar(*m);
        return;
    }
    if (!PasaComprobaciones(d_, ui_, v, Elegidas())) return;
    valores_ = std::move(v);
    accept();
}

// ---------------------------------------------------------------- parameter dialogs

namespace {

class CParametrosDlg : public QDialog {
public:
    CParametrosDlg(const Declaracion& d, Interfaz& ui, const std::vector<const Campo*>& campos, const Valores& base,
                   orvela::Elegidas elegidas, QWidget* padre)
        : QDialog(padre), d_(d), ui_(ui), base_(base), elegidas_(std::move(elegidas)) {
        setWindowTitle(Q(campos.front()->subdialogo));
        auto* layout = new QVBoxLayout(this);
        campos_.emplace(this, campos, base);
        const FilaBotones botones(this, QStringLiteral("&Aceptar"), QStringLiteral("&Cancelar"));
        layout->addLayout(botones.fila);
        connect(botones.aceptar, &QPushButton::clicked, this, [this] { Aceptar(); });
    }

    const Valores& Resultado() const { return valores_; }

private:
    const Declaracion& d_;
    Interfaz& ui_;
    Valores base_, valores_;
    orvela::Elegidas elegidas_;
    std::optional<CamposDialogo> campos_;

    void Aceptar() {
        Valores v = base_;
        QString error;
        if (!campos_->Leer(v, error)) {
            ui_.MostrarTexto(error);
            return;
        }
        if (!PasaComprobaciones(d_, ui_, v, elegidas_)) return;
        valores_ = std::move(v);
        accept();
    }
};

}  // namespace

bool EjecutarSubdialogos(const Declaracion& d, Interfaz& ui, Valores& v, const orvela::Elegidas& elegidas,
                         QWidget* padre) {
    const auto& campos = d.campos;
    for (std::size_t i = 0; i < campos.size();) {
        if (!campos[i].subdialogo) {
            ++i;
            continue;
        }
        std::size_t j = i;
        std::vector<const Campo*> grupo;
        while (j < campos.size() && campos[j].subdialogo && std::strcmp(campos[j].subdialogo, campos[i].subdialogo) == 0)
            grupo.push_back(&campos[j++]);
        i = j;
        // A dialog none of whose fields takes part is not shown.
        if (std::none_of(grupo.begin(), grupo.end(), [&](const Campo* c) { return c->Aplica(v); })) continue;
        CParametrosDlg dlg(d, ui, grupo, v, elegidas, padre);
        if (!ui.Ejecutar(dlg) || dlg.result() != QDialog::Accepted) return false;
        v = dlg.Resultado();
    }
    return true;
}
