// The benchmarks run on every core by default; --nucleos=1 runs them on one
// (the samples are the same either way). With several cores, read the wall
// time ("Time") rather than the processor time of the main thread.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "base/Progreso.h"

int main(int argc, char** argv) {
    std::vector<char*> resto;
    for (int i = 0; i < argc; ++i) {
        if (std::strncmp(argv[i], "--nucleos=", 10) == 0)
            orvela::FijarNucleos(std::atoi(argv[i] + 10));
        else
            resto.push_back(argv[i]);
    }
    int n = static_cast<int>(resto.size());
    benchmark::Initialize(&n, resto.data());
    if (benchmark::ReportUnrecognizedArguments(n, resto.data())) return 1;
    benchmark::SetDefaultTimeUnit(benchmark::kMillisecond);
    benchmark::AddCustomContext("nucleos", std::to_string(orvela::NucleosEnUso()));
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
