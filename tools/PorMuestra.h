// A function applied to every sample, widened to double, into a double result.
#pragma once

#include <cstddef>
#include <span>

namespace orvela {

template <class T, class F> void PorMuestra(std::span<const T> a, std::span<double> r, F f) {
    const T* pa = a.data();
    double* pr = r.data();
    for (std::size_t i = 0; i < r.size(); ++i) pr[i] = f(static_cast<double>(pa[i]));
}

}  // namespace orvela
