#include "cli/ProgresoTerminal.h"

#include <atomic>
#include <csignal>
#include <unistd.h>

namespace orvela::cli {

namespace {

std::atomic<Progreso*> interrumpible{nullptr};

extern "C" void AlInterrumpir(int) {
    if (Progreso* p = interrumpible.load()) p->Cancelar();
}

void Escribir(int fd, const std::string& s) {
    std::size_t hecho = 0;
    while (hecho < s.size()) {
        const ssize_t n = ::write(fd, s.data() + hecho, s.size() - hecho);
        if (n <= 0) return;
        hecho += static_cast<std::size_t>(n);
    }
}

}  // namespace

ProgresoTerminal::ProgresoTerminal(int fd, bool activo) : fd_(fd), activo_(activo) {}

ProgresoTerminal::~ProgresoTerminal() { AlTerminar(); }

void ProgresoTerminal::AlInformar(double fraccion, const std::string& texto) {
    if (!activo_) return;
    const int por100 = static_cast<int>(fraccion * 100.0);
    if (por100 == ultimo_ && texto == ultimoTexto_) return;
    ultimo_ = por100;
    ultimoTexto_ = texto;
    std::string linea = "\r\x1b[K" + std::to_string(por100) + " %";
    if (!texto.empty()) linea += "  " + texto;
    Escribir(fd_, linea);
    mostrado_ = true;
}

void ProgresoTerminal::AlTerminar() {
    if (mostrado_) Escribir(fd_, "\r\x1b[K");
    mostrado_ = false;
}

CancelarConInterrupcion::CancelarConInterrupcion(Progreso& p) {
    interrumpible.store(&p);
    struct sigaction sa {};
    sa.sa_handler = AlInterrumpir;
    sigemptyset(&sa.sa_mask);
    ::sigaction(SIGINT, &sa, nullptr);
}

CancelarConInterrupcion::~CancelarConInterrupcion() {
    ::signal(SIGINT, SIG_DFL);
    interrumpible.store(nullptr);
}

}  // namespace orvela::cli
