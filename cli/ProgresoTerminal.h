// Progress of orvela-cli: a percentage on standard error when it is a
// terminal, nothing when it is a file or a pipe (scripts read clean output).
// Ctrl+C cancels the operation: nothing is written and the status is 1.
#pragma once

#include <cstdio>
#include <string>

#include "base/Progreso.h"

namespace orvela::cli {

class ProgresoTerminal : public Progreso {
public:
    // `fd`: the descriptor written to; `activo` whether it shows anything.
    ProgresoTerminal(int fd, bool activo);
    ~ProgresoTerminal() override;
    ProgresoTerminal(const ProgresoTerminal&) = delete;
    ProgresoTerminal& operator=(const ProgresoTerminal&) = delete;

protected:
    // The line is wiped (when something was shown).
    void AlTerminar() override;
    void AlInformar(double fraccion, const std::string& texto) override;

private:
    int fd_;
    bool activo_;
    int ultimo_ = -1;
    std::string ultimoTexto_;
    bool mostrado_ = false;
};

// Ctrl+C (SIGINT) cancels `p` while this object lives.
class CancelarConInterrupcion {
public:
    explicit CancelarConInterrupcion(Progreso& p);
    ~CancelarConInterrupcion();
    CancelarConInterrupcion(const CancelarConInterrupcion&) = delete;
    CancelarConInterrupcion& operator=(const CancelarConInterrupcion&) = delete;
};

}  // namespace orvela::cli
