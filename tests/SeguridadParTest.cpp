// Saves that nothing can half-do: a pair replaced by a program killed at any
// instant, two programs writing one stem, dead writers' temporaries, and the
// refusals of targets a careful program does not overwrite. The programs
// are real orvela-cli processes.
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "image/FicheroSeguro.h"
#include "tests/Prueba.h"
#include "tools/EscenaPractica.h"

extern char** environ;

namespace orvela::prueba {
namespace {

const std::string kCli = std::string(ORVELA_BIN) + "/orvela-cli";

// Starts orvela-cli with `args`, its output thrown away (standard error to
// `errores` when given).
pid_t Lanzar(const std::vector<std::string>& args, const std::string& errores = "/dev/null") {
    std::vector<std::string> todo = {kCli};
    todo.insert(todo.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (auto& a : todo) argv.push_back(a.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t acciones;
    posix_spawn_file_actions_init(&acciones);
    posix_spawn_file_actions_addopen(&acciones, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&acciones, 2, errores.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t pid = -1;
    if (posix_spawn(&pid, kCli.c_str(), &acciones, nullptr, argv.data(), environ) != 0) pid = -1;
    posix_spawn_file_actions_destroy(&acciones);
    return pid;
}

// Waits for a process; its exit status, or 128 + the signal that ended it.
int Esperar(pid_t pid) {
    int st = 0;
    while (::waitpid(pid, &st, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(st) ? WEXITSTATUS(st) : 128 + WTERMSIG(st);
}

std::vector<std::string> Iniciar(double valor, const std::string& stem, int lado = 2000) {
    char titulo[32];
    std::snprintf(titulo, sizeof titulo, "v%g", valor);
    return {"iniciar", "--filas", std::to_string(lado), "--columnas", std::to_string(lado), "--tipo", "double",
            "--valor", std::to_string(valor), "--titulo", titulo, stem};
}

// The pair reads back whole: its title names the one value all its samples
// hold. Returns that value (NaN when the pair is not whole).
double ValorDelPar(const std::string& raster) {
    CImagen im;
    if (auto e = im.Cargar(raster)) {
        ADD_FAILURE() << "el par no se lee: " << e->Texto();
        return std::nan("");
    }
    const auto m = im.pixeles.Como<double>();
    const double v = m.empty() ? std::nan("") : m[0];
    if (!std::all_of(m.begin(), m.end(), [&](double x) { return x == v; })) {
        ADD_FAILURE() << "muestras mezcladas";
        return std::nan("");
    }
    char titulo[32];
    std::snprintf(titulo, sizeof titulo, "v%g", v);
    EXPECT_EQ(im.titulo, titulo) << "cabecera de un par y ráster de otro";
    return v;
}

class SeguridadPar : public ::testing::Test {
protected:
    void SetUp() override {
        if (::access(kCli.c_str(), X_OK) != 0) GTEST_SKIP() << "falta " << kCli;
    }
    CarpetaPrueba dir;
};

// 200 kills at random instants of a program replacing a 2000 x 2000 double
// pair: afterwards the pair is the old or the new one, whole, and the next
// reading leaves no temporary file.
TEST_F(SeguridadPar, MatarMientrasSeSustituyeElPar) {
    const std::string stem = dir / "p";
    ASSERT_EQ(Esperar(Lanzar(Iniciar(0, stem))), 0);
    const auto t0 = std::chrono::steady_clock::now();
    ASSERT_EQ(Esperar(Lanzar(Iniciar(1, stem))), 0);
    const auto completo = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - t0);
    const unsigned semilla = 20261124;
    std::mt19937 azar(semilla);
    std::uniform_int_distribution<long> instante(0, completo.count() * 6 / 5);
    double anterior = 1;
    int viejos = 0, nuevos = 0;
    for (int prueba = 0; prueba < 200; ++prueba) {
        SCOPED_TRACE("semilla " + std::to_string(semilla) + ", prueba " + std::to_string(prueba));
        const double nuevo = prueba + 2;
        const pid_t pid = Lanzar(Iniciar(nuevo, stem));
        ASSERT_GT(pid, 0);
        std::this_thread::sleep_for(std::chrono::microseconds(instante(azar)));
        ::kill(pid, SIGKILL);
        const int rc = Esperar(pid);
        ASSERT_TRUE(rc == 0 || rc == 128 + SIGKILL) << rc;
        const double v = ValorDelPar(stem + ".ozm");
        ASSERT_TRUE(v == anterior || v == nuevo) << v << " no es " << anterior << " ni " << nuevo;
        (v == nuevo ? nuevos : viejos)++;
        anterior = v;
        ASSERT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"p.inf", "p.ozm"}));
    }
    // The instants fell both before and after the commit.
    EXPECT_GT(viejos, 0);
    EXPECT_GT(nuevos, 0);
}

// Two programs writing one stem at once: both finish, and the pair is the
// whole pair of one of them.
TEST_F(SeguridadPar, DosEscritoresDeUnStem) {
    const std::string stem = dir / "c";
    for (int prueba = 0; prueba < 4; ++prueba) {
        const pid_t a = Lanzar(Iniciar(10 + prueba, stem, 1500));
        const pid_t b = Lanzar(Iniciar(20 + prueba, stem, 1500));
        EXPECT_EQ(Esperar(a), 0);
        EXPECT_EQ(Esperar(b), 0);
        const double v = ValorDelPar(stem + ".ozm");
        EXPECT_TRUE(v == 10 + prueba || v == 20 + prueba) << v;
        EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"c.inf", "c.ozm"}));
    }
}

// A temporary of a writer that is alive (its lock held, as another process
// or another PID namespace holds it) is never touched; one whose writer is
// dead goes at the next access of its stem, and so does an interrupted
// commit being undone.
TEST_F(SeguridadPar, TemporalesVivosMuertosYDiarioDeshecho) {
    CImagen a = Imagen(kByte, 1, 2, {1, 2}, "a");
    ASSERT_FALSE(a.Guardar(dir / "t", 1));
    EscribirFichero(dir / ".t.ozm.orvela-muerto", "restos");
    EscribirFichero(dir / ".t.inf.orvela-vivo", "de otro");
    const int fd = ::open((dir / ".t.inf.orvela-vivo").c_str(), O_RDONLY);
    ASSERT_EQ(::flock(fd, LOCK_EX), 0);
    EscribirFichero(dir / ".otro.ozm.orvela-muerto", "de otra imagen");
    Cabecera c;
    ASSERT_TRUE(LeerInf(dir / "t.ozm", c));
    EXPECT_EQ(Contenido(dir.Ruta()),
              (std::set<std::string>{"t.inf", "t.ozm", ".t.inf.orvela-vivo", ".otro.ozm.orvela-muerto"}));
    ::close(fd);

    // A commit of a new pair killed while it was being undone: the raster
    // had been replaced, the header not. The old pair comes back.
    const std::string d = dir.Ruta();
    const std::string ozmViejo = LeerFichero(dir / "t.ozm"), infViejo = LeerFichero(dir / "t.inf");
    ASSERT_EQ(::link((d + "/t.ozm").c_str(), (d + "/.t.ozm.orvela-x.ant").c_str()), 0);
    EscribirFichero(dir / "t.ozm.nuevo", "RASTER NUEVO");
    ASSERT_EQ(::rename((d + "/t.ozm.nuevo").c_str(), (d + "/t.ozm").c_str()), 0);
    EscribirFichero(dir / ".t.inf.orvela-y", "cabecera nueva");
    std::string diario = "ORVELA-DIARIO 1\nD\n";
    for (const std::string& s : {d + "/.t.ozm.orvela-x", d + "/t.ozm", d + "/.t.ozm.orvela-x.ant", std::string("1"),
                                 d + "/.t.inf.orvela-y", d + "/t.inf", std::string(), std::string("1")})
        diario += s + '\0';
    EscribirFichero(dir / kDiario, diario);
    CImagen leida;
    ASSERT_FALSE(leida.Cargar(dir / "t.ozm"));
    EXPECT_EQ(LeerFichero(dir / "t.ozm"), ozmViejo);
    EXPECT_EQ(LeerFichero(dir / "t.inf"), infViejo);
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"t.inf", "t.ozm", ".otro.ozm.orvela-muerto"}));
}

// Targets a careful program does not overwrite, and links written through.
TEST_F(SeguridadPar, DestinosProtegidosYEnlaces) {
    CImagen a = Imagen(kByte, 1, 2, {1, 2}, "a");
    ASSERT_FALSE(a.Guardar(dir / "r", 1));
    const std::string inf = LeerFichero(dir / "r.inf");
    // Only the header is read-only: the message names it, nothing changes.
    std::filesystem::permissions(dir / "r.inf", std::filesystem::perms::owner_read);
    CImagen b = Imagen(kByte, 1, 2, {7, 7}, "b");
    EXPECT_EQ(b.Guardar(dir / "r", 1), Mensaje::Tabla(msg::kNoCreadoFichero, dir / "r.inf"));
    EXPECT_EQ(LeerFichero(dir / "r.ozm"), std::string("\1\2", 2));
    EXPECT_EQ(LeerFichero(dir / "r.inf"), inf);
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"r.inf", "r.ozm"}));

    // A pair of links: the files they point to are replaced, the links stay.
    std::filesystem::create_directory(dir / "datos");
    ASSERT_FALSE(a.Guardar(dir / "datos/real", 1));
    std::filesystem::create_symlink("datos/real.ozm", dir / "e.ozm");
    std::filesystem::create_symlink(dir / "datos/real.inf", dir / "e.inf");
    ASSERT_FALSE(b.Guardar(dir / "e", 1));
    EXPECT_TRUE(std::filesystem::is_symlink(dir / "e.ozm"));
    EXPECT_TRUE(std::filesystem::is_symlink(dir / "e.inf"));
    EXPECT_EQ(LeerFichero(dir / "datos/real.ozm"), std::string("\7\7", 2));
    CImagen leida;
    ASSERT_FALSE(leida.Cargar(dir / "e.ozm"));
    EXPECT_EQ(leida.titulo, "b");

    // Names that name no file.
    for (const std::string& nombre : {std::string(""), dir / "", dir / "sub/", std::string("/")}) {
        const auto e = b.Guardar(nombre, 1);
        ASSERT_TRUE(e) << nombre;
        EXPECT_EQ(e->Texto(), "El nombre de la imagen \"" + nombre + ".ozm\" no es válido: falta el nombre del fichero.");
    }
    EXPECT_FALSE(Existe(dir / ".ozm") || Existe(dir / ".inf"));
}

// The files of one result (images, reports, charts) and of the practice
// scene (bands, legend and the correction labs' files) replace what was on
// disk together: one that cannot be written leaves every other as it was.
TEST_F(SeguridadPar, ResultadoYEscenaEnterosONada) {
    CImagen viejo = Imagen(kByte, 1, 2, {1, 2}, "viejo");
    ASSERT_FALSE(viejo.Guardar(dir / "p", 1));
    ASSERT_FALSE(viejo.Guardar(dir / "p_2", 1));
    const std::string ozm = LeerFichero(dir / "p.ozm"), inf = LeerFichero(dir / "p.inf");
    auto resultado = [] {
        Resultado r;
        r.imagenes.push_back(Imagen(kByte, 1, 2, {7, 8}, "nuevo"));
        r.imagenes.push_back(Imagen(kReal, 1, 1, {0.5}, "segundo"));
        r.informes.push_back({"_Informe.txt", "Año\n", "Informe", ""});
        Grafico g;
        g.final = "_Grafico.png";
        r.graficos.push_back(g);
        return r;
    };
    // The chart's name taken by a folder: the images already written aside
    // never reach their names.
    std::filesystem::create_directory(dir / "p_Grafico.png");
    Resultado r = resultado();
    EXPECT_EQ(EscribirResultado(r, dir / "p"), Mensaje::Tabla(msg::kNoCreadoFichero, dir / "p_Grafico.png"));
    EXPECT_EQ(LeerFichero(dir / "p.ozm"), ozm);
    EXPECT_EQ(LeerFichero(dir / "p.inf"), inf);
    EXPECT_EQ(LeerFichero(dir / "p_2.inf"), inf);
    EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"p.ozm", "p.inf", "p_2.ozm", "p_2.inf", "p_Grafico.png"}));
    // Once it can be written, every file is there, under the names it reports.
    std::filesystem::remove(dir / "p_Grafico.png");
    r = resultado();
    std::vector<std::string> escritos;
    ASSERT_FALSE(EscribirResultado(r, dir / "p", &escritos));
    EXPECT_EQ(escritos, (std::vector<std::string>{dir / "p.ozm", dir / "p.inf", dir / "p_2.ozm", dir / "p_2.inf",
                                                  dir / "p_Informe.txt", dir / "p_Grafico.png"}));
    EXPECT_EQ(r.imagenes[1].rutaRaster, dir / "p_2.ozm");
    EXPECT_EQ(LeerFichero(dir / "p.ozm"), std::string("\7\10", 2));
    EXPECT_EQ(LeerFichero(dir / "p_Informe.txt"), "A\xF1o\n");
    EXPECT_EQ(Contenido(dir.Ruta()).size(), 6u);

    // A scene whose metadata file's name is taken: its bands stay as they were.
    const std::string escena = dir / "escena";
    ASSERT_FALSE(escena::EscribirEscena(escena));
    ASSERT_FALSE(viejo.Guardar(escena + "/tm5", 1));
    std::filesystem::remove(escena + "/escena_MTL.txt");
    std::filesystem::create_directory(escena + "/escena_MTL.txt");
    const auto antes = Contenido(escena);
    EXPECT_EQ(escena::EscribirEscena(escena), Mensaje::Tabla(msg::kNoCreadoFichero, escena + "/escena_MTL.txt"));
    EXPECT_EQ(LeerFichero(escena + "/tm5.ozm"), ozm);
    EXPECT_EQ(Contenido(escena), antes);
    std::filesystem::remove(escena + "/escena_MTL.txt");
    ASSERT_FALSE(escena::EscribirEscena(escena));
    EXPECT_EQ(LeerFichero(escena + "/tm5.ozm").size(), std::size_t{escena::kLado} * escena::kLado);
    EXPECT_TRUE(std::filesystem::is_regular_file(escena + "/escena_MTL.txt"));
}

}  // namespace
}  // namespace orvela::prueba

namespace orvela::prueba {
namespace {

// Every order run with less address space than it needs: status 1 and a
// sentence, never a signal, and nothing written.
TEST_F(SeguridadPar, SinMemoriaSuficiente) {
#if defined(__SANITIZE_ADDRESS__)
    // The address sanitizer reserves terabytes of shadow memory at start-up:
    // under an address-space limit no program of that build can start.
    GTEST_SKIP() << "sin sentido con AddressSanitizer";
#endif
    if (::access("/usr/bin/prlimit", X_OK) != 0) GTEST_SKIP() << "falta prlimit";
    // A 72 MiB double image for the filters, a 61 MiB byte image for the
    // pictures (whose entries take as much again).
    const std::string e = dir / "e.ozm", b = dir / "b.ozm";
    ASSERT_EQ(Esperar(Lanzar({"iniciar", "--filas", "3000", "--columnas", "3000", "--tipo", "double", "--valor",
                              "3", e})),
              0);
    ASSERT_EQ(Esperar(Lanzar({"iniciar", "--filas", "8000", "--columnas", "8000", "--tipo", "byte", "--valor",
                              "3", b})),
              0);
    const std::vector<std::vector<std::string>> ordenes = {
        {"filtro", "--tipo", "mediana", "--tamano", "5", e, dir / "s"},
        {"filtro", "--tipo", "mediana", "--tamano", "7", e, dir / "s"},
        {"exportar", "--formato", "bmp", b, dir / "s.bmp"},
        {"exportar", "--formato", "png", b, dir / "s.png"},
        {"contraste", "--metodo", "lineal", e, dir / "s"},
        {"iniciar", "--filas", "20000", "--columnas", "20000", "--tipo", "double", "--valor", "1", dir / "s"},
    };
    // Below what reading the input takes, below what the result takes.
    for (const long mib : {60L, 100L}) {
        for (const auto& o : ordenes) {
            SCOPED_TRACE(o[0] + " " + o[2] + " con " + std::to_string(mib) + " MiB");
            std::vector<std::string> args = {"--as=" + std::to_string(mib << 20), "--", kCli};
            args.insert(args.end(), o.begin(), o.end());
            std::vector<char*> argv;
            std::string prlimit = "/usr/bin/prlimit";
            argv.push_back(prlimit.data());
            for (auto& a : args) argv.push_back(a.data());
            argv.push_back(nullptr);
            posix_spawn_file_actions_t acciones;
            posix_spawn_file_actions_init(&acciones);
            posix_spawn_file_actions_addopen(&acciones, 1, "/dev/null", O_WRONLY, 0);
            posix_spawn_file_actions_addopen(&acciones, 2, (dir / "err.txt").c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                             0600);
            pid_t pid = -1;
            ASSERT_EQ(posix_spawn(&pid, argv[0], &acciones, nullptr, argv.data(), environ), 0);
            posix_spawn_file_actions_destroy(&acciones);
            const int rc = Esperar(pid);
            const std::string err = LeerFichero(dir / "err.txt");
            std::filesystem::remove(dir / "err.txt");
            EXPECT_EQ(rc, 1) << err;
            EXPECT_NE(err.find("No hay memoria suficiente"), std::string::npos) << err;
            EXPECT_EQ(Contenido(dir.Ruta()), (std::set<std::string>{"b.inf", "b.ozm", "e.inf", "e.ozm"}));
        }
    }
}

}  // namespace
}  // namespace orvela::prueba
