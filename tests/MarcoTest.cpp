// The operation framework: the rows of a kernel on every core with the
// samples of one core, cancel, values that a declaration does not give,
// band lists and file inputs through the run sequence and the command line,
// several results, and nothing left on disk by a failed or cancelled run.
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <regex>

#include "Prueba.h"
#include "tools/Aritmetica.h"
#include "tools/Contraste.h"
#include "tools/FiltroMedia.h"
#include "tools/FiltroPersonalizado.h"
#include "tools/FiltrosRango.h"

using namespace orvela;
using namespace orvela::prueba;

namespace {

// Cores for one scope.
struct Nucleos {
    explicit Nucleos(int n) { FijarNucleos(n); }
    ~Nucleos() { FijarNucleos(0); }
};

// A progress that cancels itself after `n` reports.
class CancelarTras : public Progreso {
public:
    explicit CancelarTras(int n) : quedan_(n) {}
    int informes = 0;

protected:
    void AlInformar(double, const std::string&) override {
        ++informes;
        if (--quedan_ <= 0) Cancelar();
    }

private:
    int quedan_;
};

std::vector<double> Azar(std::size_t n, int codigo, unsigned semilla) {
    std::mt19937 g(semilla);
    std::uniform_real_distribution<double> u(0, codigo == kByte ? 255 : 4000);
    std::vector<double> v(n);
    for (auto& x : v) x = std::floor(u(g));
    if (EsReal(codigo)) {
        for (std::size_t i = 0; i < n; i += 7) v[i] += 0.375;
    }
    return v;
}

}  // namespace

TEST(Marco, FilasYBloquesCubrenCadaFilaUnaVezEnCualquierNumeroDeNucleos) {
    for (int nucleos : {1, 2, 5}) {
        Nucleos n(nucleos);
        for (long filas : {0L, 1L, 7L, 255L, 256L, 1000L, 7001L}) {
            std::vector<std::atomic<int>> vistas(static_cast<std::size_t>(filas));
            EXPECT_TRUE(PorFilas(SinProgreso(), filas, [&](long a, long b) {
                for (long f = a; f < b; ++f) ++vistas[static_cast<std::size_t>(f)];
            }));
            for (long f = 0; f < filas; ++f) ASSERT_EQ(vistas[static_cast<std::size_t>(f)], 1) << filas << " " << f;
        }
        // Partial figures come back in block order whatever the cores.
        const auto partes = PorBloques<long>(SinProgreso(), 1000, 64, [](long a, long b) { return a * 10000 + b; });
        ASSERT_TRUE(partes);
        ASSERT_EQ(partes->size(), 16u);
        for (std::size_t b = 0; b < partes->size(); ++b) {
            const long desde = static_cast<long>(b) * 64;
            EXPECT_EQ((*partes)[b], desde * 10000 + std::min(1000L, desde + 64));
        }
    }
}

TEST(Marco, CancelarDetieneLasFilasYSeInformaElAvance) {
    Nucleos n(1);
    CancelarTras p(3);
    long hechas = 0;
    EXPECT_FALSE(PorFilas(p, 1000, [&](long a, long b) { hechas += b - a; }, 10));
    EXPECT_EQ(hechas, 30);
    EXPECT_EQ(p.informes, 3);
    CancelarTras nunca(1 << 30);
    EXPECT_TRUE(PorFilas(nunca, 1000, [](long, long) {}, 10));
    EXPECT_EQ(nunca.informes, 100);
    EXPECT_FALSE(PorBloques<int>(p, 100, 10, [](long, long) { return 1; }));
}

// Every kernel of the first family gives, on several cores, the samples it
// gives on one, in every type: bands and pieces never change a sample.
TEST(Marco, NucleosDanLasMismasMuestrasQueUnNucleo) {
    const long filas = 301, columnas = 97;
    for (int codigo : kTipos) {
        const Muestras a = MuestrasDe(codigo, Azar(filas * columnas, codigo, 1));
        const Muestras b = MuestrasDe(codigo, Azar(filas * columnas, codigo, 2));
        auto correr = [&](int nucleos) {
            Nucleos n(nucleos);
            std::vector<std::vector<double>> r;
            auto una = [&](const std::function<bool(Muestras&)>& f, int tipo) {
                Muestras s = Muestras::Crear(tipo, a.Cantidad());
                EXPECT_TRUE(f(s));
                r.push_back(Muestrario(s));
            };
            for (int k : {3, 5, 7}) {
                una([&](Muestras& s) { return FiltroMediana(a, filas, columnas, k, s); }, codigo);
                una([&](Muestras& s) { return FiltroModa(a, filas, columnas, k, s); }, codigo);
                una([&](Muestras& s) { return FiltroMaximo(a, filas, columnas, k, s); }, codigo);
                una([&](Muestras& s) { return FiltroMedia(a, filas, columnas, k, s); }, codigo);
            }
            una([&](Muestras& s) {
                return FiltroPersonalizado(a, filas, columnas, 3, {1, -2, 1, 0.5, 3, 0.5, -1, 2, -1}, s);
            }, codigo);
            una([&](Muestras& s) { return OperarAritmetica(OperacionAritmetica::DiferenciaNormalizada, a, b, s).has_value(); },
                kDouble);
            ParametrosContraste p;
            p.metodo = MetodoContraste::Ecualizacion;
            una([&](Muestras& s) { return ExpandirContraste(a, s, p); }, codigo);
            return r;
        };
        const auto uno = correr(1);
        const auto varios = correr(4);
        ASSERT_EQ(uno.size(), varios.size());
        for (std::size_t i = 0; i < uno.size(); ++i) {
            // Compared bit for bit: NaN results must match as well.
            ASSERT_EQ(uno[i].size(), varios[i].size());
            EXPECT_EQ(std::memcmp(uno[i].data(), varios[i].data(), uno[i].size() * sizeof(double)), 0)
                << NombreDeCodigo(codigo) << " kernel " << i;
        }
    }
}

TEST(Marco, ValorNoDadoEsUnFalloDelPrograma) {
    const Clave a{"a"}, b{"b"};
    Valores v;
    v.Poner(a, 2.0);
    EXPECT_EQ(v.Entero(a), 2);
    EXPECT_THROW(v.Numero(b), ValorNoDeclarado);
    EXPECT_THROW(v.Texto(a), ValorNoDeclarado);  // a number read as text
    EXPECT_THROW(ClaveDe(*BuscarPorOrden("filtro"), "no_existe"), ValorNoDeclarado);
}

// Every declared operation, with every choice of every radio group and the
// defaults of the rest, reads only values its declaration gives.
TEST(Marco, CadaDeclaracionLeeSoloLoQueDeclara) {
    for (const Declaracion* d : Catalogo()) {
        if (std::any_of(d->entradas.begin(), d->entradas.end(),
                        [](const DeclEntrada& e) { return e.clase == ClaseEntrada::Fichero; }))
            continue;  // needs real files; its own tests run it
        std::vector<CImagen> imagenes;
        for (const auto& e : d->entradas)
            for (int k = 0; k < std::max(1, e.minimo); ++k)
                imagenes.push_back(Imagen(kByte, 9, 8, Azar(72, kByte, static_cast<unsigned>(k + 3))));
        std::vector<const CImagen*> punteros;
        for (const auto& im : imagenes) punteros.push_back(&im);
        std::vector<Valores> casos = {ValoresPorDefecto(*d)};
        for (const auto& c : d->campos)
            if (c.tipo == TipoCampo::Eleccion)
                for (std::size_t k = 0; k < c.opciones.size(); ++k) {
                    Valores v;
                    v.Poner(*c.clave, static_cast<double>(k));
                    casos.push_back(Completar(*d, v));
                }
        for (const Valores& v : casos) {
            Contexto ctx{punteros, {}, {}, v, Destino::Fichero, SinProgreso()};
            for (const auto& e : d->entradas) {
                (void)e;
                ctx.porEntrada.push_back({});
                ctx.ficheros.push_back({});
            }
            std::size_t k = 0;
            for (std::size_t i = 0; i < d->entradas.size(); ++i)
                for (int j = 0; j < std::max(1, d->entradas[i].minimo); ++j) ctx.porEntrada[i].push_back(punteros[k++]);
            try {
                if (d->alAceptar) (void)d->alAceptar(v, {});
                (void)d->calcular(ctx);
                if (d->sufijo) (void)d->sufijo(v);
            } catch (const ValorNoDeclarado& e) {
                ADD_FAILURE() << d->orden << ": " << e.what();
            } catch (const std::exception&) {
            }
        }
    }
}

namespace {

const Clave kRecuento{"recuento"};

// An operation of every new shape: a list of 2 to 4 bands, a file input,
// one image per band (their sum and the plain copies), a report and a chart,
// progress, and a refusal of the table when the file holds "no".
Declaracion Ejemplo() {
    Declaracion d;
    d.orden = "ejemplo";
    d.titulo = "Ejemplo";
    d.entradas = {{.boton = "&Añadir", .nombre = relleno::kNingunaImagen, .clase = ClaseEntrada::Bandas,
                   .minimo = 2, .maximo = 4},
                  {.boton = "&Fichero", .nombre = "ningún fichero", .clase = ClaseEntrada::Fichero, .filtro = "Textos (*.txt)",
                   .extensiones = {"txt", "TXT"},
                   .leer = [](const std::string& ruta) -> std::optional<Mensaje> {
                       if (!Existe(ruta)) return Mensaje::Tabla(msg::kArchivoNoExiste);
                       return std::nullopt;
                   },
                   .opcionCli = "--fichero"}};
    d.campos = {{.clave = &kRecuento, .tipo = TipoCampo::Casilla, .etiqueta = "Contar", .opcionCli = "--contar"}};
    d.salidaPrefijo = true;
    d.alElegir = [](int indice, const Cabecera& cab, const std::vector<std::optional<Cabecera>>& previas)
        -> std::optional<Mensaje> {
        if (indice > 0 && previas[0] && previas[0]->filas != cab.filas)
            return Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kBandas);
        return std::nullopt;
    };
    d.calcular = [](const Contexto& c) {
        Resultado r;
        if (LeerFichero(c.ficheros[1].at(0)) == "no") {
            r.Rechazar(Mensaje::Tabla(msg::kValoresIncorrectos, "Los valores"));
            return r;
        }
        const auto& bandas = c.porEntrada[0];
        CImagen suma;
        suma.CopiarCabecera(*bandas[0], kDouble);
        PorFilas(c.progreso, bandas[0]->Filas(), [&](long a, long b) {
            const std::size_t n = static_cast<std::size_t>(bandas[0]->Columnas());
            std::vector<double> fila(n);
            for (long f = a; f < b; ++f)
                for (const CImagen* im : bandas) {
                    LeerComoDouble(im->pixeles, static_cast<std::size_t>(f) * n, n, fila.data());
                    for (std::size_t j = 0; j < n; ++j) suma.pixeles.Como<double>()[static_cast<std::size_t>(f) * n + j] += fila[j];
                }
        });
        r.imagenes.push_back(std::move(suma));
        r.finales.push_back("_Suma");
        for (std::size_t i = 0; i < bandas.size(); ++i) {
            CImagen copia;
            copia.CopiarCabecera(*bandas[i]);
            copia.pixeles = bandas[i]->pixeles.Copia();
            r.imagenes.push_back(std::move(copia));
            r.finales.push_back("_B" + std::to_string(i + 1));
        }
        std::string informe = "Bandas: " + std::to_string(bandas.size()) + "\n";
        if (c.valores.Marcada(kRecuento)) informe += "Píxeles: " + std::to_string(bandas[0]->NumeroPixeles()) + "\n";
        r.informes.push_back({"_Informe.txt", informe, "Informe", ""});
        r.consola = informe;
        return r;
    };
    d.sufijo = SufijoFijo("_Ejemplo");
    return d;
}

}  // namespace

TEST(Marco, ListaDeBandasFicheroVariosResultadosEInformeDesdeLaLineaDeOrdenes) {
    const Declaracion d = Ejemplo();
    CarpetaPrueba dir;
    CImagen a = Imagen(kByte, 2, 3, {1, 2, 3, 4, 5, 6}, "a"), b = Imagen(kReal, 2, 3, {0.5, 0, 0, 0, 0, 1}, "b"),
            c = Imagen(kByte, 3, 2, {1, 1, 1, 1, 1, 1}, "c");
    const std::string ra = Escribir(a, dir / "a"), rb = Escribir(b, dir / "b"), rc = Escribir(c, dir / "c");
    EscribirFichero(dir / "si.txt", "si");
    EscribirFichero(dir / "no.txt", "no");
    auto correr = [&](std::vector<std::string> args) {
        std::ostringstream out, err;
        const int rc = cli::EjecutarDeclaracion(d, args, out, err);
        return SalidaCli{rc, out.str(), err.str()};
    };

    const SalidaCli s = correr({"--contar", "--fichero", dir / "si.txt", ra, rb, ra, dir / "p"});
    ASSERT_EQ(s.rc, 0) << s.err;
    EXPECT_EQ(s.out, "Bandas: 3\nPíxeles: 6\n");
    CImagen suma;
    ASSERT_FALSE(suma.Cargar(dir / "p_Suma.ozm"));
    EXPECT_EQ(Muestrario(suma), (std::vector<double>{2.5, 4, 6, 8, 10, 13}));
    EXPECT_EQ(suma.titulo, "a_Ejemplo");
    EXPECT_EQ(suma.tipoDato, kDouble);
    for (const char* f : {"p_B1.ozm", "p_B2.ozm", "p_B3.ozm", "p_B3.inf"}) EXPECT_TRUE(Existe(dir / f)) << f;
    EXPECT_EQ(LeerFichero(dir / "p_Informe.txt"), "Bandas: 3\nP\xEDxeles: 6\n");  // Windows-1252

    // The list's bounds, the file's extension and reader, a picked band
    // against the first, the operation's refusal: each stops with its
    // message and writes nothing.
    CarpetaPrueba otra;
    auto nada = [&](std::vector<std::string> args, int rc, const std::string& err) {
        args.push_back(otra / "q");
        const SalidaCli r = correr(args);
        EXPECT_EQ(r.rc, rc) << r.err;
        EXPECT_EQ(r.err.substr(0, err.size()), err);
        EXPECT_TRUE(Contenido(otra.Ruta()).empty());
    };
    nada({"--fichero", dir / "si.txt", ra}, 2,
         Rechazo(Mensaje::Tabla(msg::kNoSeleccionadaEntrada, relleno::kNingunaImagen, relleno::kUnaImagen)));
    nada({"--fichero", dir / "si.txt", ra, ra, ra, ra, ra}, 2, Rechazo(Mensaje::Tabla(msg::kNumeroBandas)));
    nada({ra, rb}, 64, "Uso:");
    nada({"--fichero", dir / "a.ozm", ra, rb}, 2, Rechazo(Mensaje::Tabla(msg::kExtensionInadecuada, "txt", "TXT")));
    nada({"--fichero", dir / "falta.txt", ra, rb}, 2, Rechazo(Mensaje::Tabla(msg::kArchivoNoExiste)));
    nada({"--fichero", dir / "si.txt", ra, rc}, 2,
         Rechazo(Mensaje::Tabla(msg::kNoCoincide, relleno::kLasDimensiones, relleno::kBandas)));
    nada({"--fichero", dir / "no.txt", ra, rb}, 2, Rechazo(Mensaje::Tabla(msg::kValoresIncorrectos, "Los valores")));
}

TEST(Marco, EjecucionCanceladaOFallidaNoDejaNada) {
    const Declaracion d = Ejemplo();
    CarpetaPrueba dir;
    CImagen a = Imagen(kByte, 600, 3, std::vector<double>(1800, 7), "a");
    const std::string ra = Escribir(a, dir / "a");
    EscribirFichero(dir / "si.txt", "si");
    const auto antes = Contenido(dir.Ruta());

    CancelarTras p(1);
    const Ejecucion ej = EjecutarAFichero(d, {{ra, ra}, {}}, {{}, {dir / "si.txt"}}, Completar(d, {}), dir / "p", p);
    ASSERT_TRUE(ej.fallo);
    EXPECT_EQ(ej.fallo->clase, ClaseFallo::Cancelado);
    EXPECT_EQ(Contenido(dir.Ruta()), antes);

    std::ostringstream out, err;
    CancelarTras q(1);
    EXPECT_EQ(cli::EjecutarDeclaracion(d, {"--fichero", dir / "si.txt", ra, ra, dir / "p"}, out, err, q), cli::kFallo);
    EXPECT_EQ(err.str(), std::string(texto::kOperacionCancelada) + "\n");
    EXPECT_EQ(Contenido(dir.Ruta()), antes);

    // A stem in a folder that does not exist: a failure of the system.
    const Ejecucion sin = EjecutarAFichero(d, {{ra, ra}, {}}, {{}, {dir / "si.txt"}}, Completar(d, {}), dir / "no/p");
    ASSERT_TRUE(sin.fallo);
    EXPECT_EQ(sin.fallo->clase, ClaseFallo::Sistema);
    EXPECT_EQ(Contenido(dir.Ruta()), antes);
}

// orvela-cli shows its progress on a terminal and nothing when standard
// error is a pipe.
TEST(Marco, ProgresoSoloEnUnTerminal) {
    CarpetaPrueba dir;
    CImagen a = Imagen(kByte, 400, 300, Azar(120000, kByte, 9), "a");
    const std::string ra = Escribir(a, dir / "a");
    const std::string cli = std::string(ORVELA_BIN) + "/orvela-cli";
    auto correr = [&](bool terminal) {
        std::vector<std::string> args = {cli, "filtro", "--tipo", "mediana", "--tamano", "5", ra, dir / "m"};
        std::vector<char*> argv;
        for (auto& s : args) argv.push_back(s.data());
        argv.push_back(nullptr);
        int fd = -1;
        pid_t pid;
        if (terminal) {
            pid = forkpty(&fd, nullptr, nullptr, nullptr);
        } else {
            int tubo[2];
            if (pipe(tubo) != 0) return std::string("?");
            pid = fork();
            if (pid == 0) {
                dup2(tubo[1], 1);
                dup2(tubo[1], 2);
                close(tubo[0]);
            }
            close(tubo[1]);
            fd = tubo[0];
        }
        if (pid == 0) {
            execv(argv[0], argv.data());
            _exit(127);
        }
        std::string salida;
        char buf[4096];
        for (;;) {
            const ssize_t n = read(fd, buf, sizeof buf);
            if (n <= 0) break;
            salida.append(buf, static_cast<std::size_t>(n));
        }
        int estado = 0;
        waitpid(pid, &estado, 0);
        close(fd);
        EXPECT_TRUE(WIFEXITED(estado) && WEXITSTATUS(estado) == 0) << salida;
        return salida;
    };
    const std::string enTerminal = correr(true);
    EXPECT_TRUE(std::regex_search(enTerminal, std::regex("\\r\\x1b\\[K[0-9]+ %"))) << enTerminal;
    EXPECT_NE(enTerminal.find("100 %"), std::string::npos);
    EXPECT_EQ(correr(false), "");
}
