#include "corrections/Reflectancia.h"
#include "image/FicheroTexto.h"

#include <cmath>
#include <sstream>
#include <cstdio>
#include <fstream>
#include <string_view>
#include <utility>
#include <numbers>
#include <vector>

#include "base/Mensajes.h"
#include "image/Conversion.h"

namespace orvela {

double EsunTM(int banda) {
    // Landsat 5 TM, Chander, Markham and Helder (2009), table 4.
    switch (banda) {
        case 1: return 1983.0;
        case 2: return 1796.0;
        case 3: return 1536.0;
        case 4: return 1031.0;
        case 5: return 220.0;
        case 7: return 83.44;
        default: return 0.0;
    }
}

int DiaDelAnio(int anio, int mes, int dia) {
    static const int kDias[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool bisiesto = (anio % 4 == 0 && anio % 100 != 0) || anio % 400 == 0;
    if (anio < 1 || mes < 1 || mes > 12 || dia < 1) return 0;
    const int enMes = kDias[mes - 1] + (mes == 2 && bisiesto ? 1 : 0);
    if (dia > enMes) return 0;
    int n = dia;
    for (int m = 1; m < mes; ++m) n += kDias[m - 1] + (m == 2 && bisiesto ? 1 : 0);
    return n;
}

double DistanciaTierraSol(int diaDelAnio) {
    const double grados = 0.9856 * (diaDelAnio - 4);
    return 1.0 - 0.01672 * std::cos(grados * std::numbers::pi / 180.0);
}

bool LeerFecha(const std::string& texto, CalibracionTM& c) {
    int a = 0, m = 0, d = 0;
    char resto = 0;
    if (std::sscanf(texto.c_str(), "%4d-%2d-%2d%c", &a, &m, &d, &resto) != 3) return false;
    if (DiaDelAnio(a, m, d) == 0) return false;
    c.anio = a;
    c.mes = m;
    c.dia = d;
    return true;
}

namespace {

// "NAME = value" pairs of a metadata file, blanks and quotes around each
// part removed, in file order; a name given twice counts with its last
// value. Views into the text, which must outlive them.
class Pares {
public:
    explicit Pares(std::string_view texto) {
        std::size_t leidas = 0, i = 0;
        while (i < texto.size() && ++leidas < 100000) {
            auto fin = texto.find('\n', i);
            if (fin == std::string_view::npos) fin = texto.size();
            const std::string_view linea = texto.substr(i, fin - i);
            i = fin + 1;
            const auto igual = linea.find('=');
            if (igual == std::string_view::npos) continue;
            pares_.emplace_back(Limpiar(linea.substr(0, igual)), Limpiar(linea.substr(igual + 1)));
        }
    }
    std::optional<std::string> Valor(std::string_view clave) const {
        for (auto it = pares_.rbegin(); it != pares_.rend(); ++it)
            if (it->first == clave) return std::string(it->second);
        return std::nullopt;
    }
    std::optional<double> Numero(std::string_view clave) const {
        const auto v = Valor(clave);
        if (!v) return std::nullopt;
        char* fin = nullptr;
        const double x = std::strtod(v->c_str(), &fin);
        if (fin == v->c_str() || !std::isfinite(x)) return std::nullopt;
        return x;
    }

private:
    static std::string_view Limpiar(std::string_view s) {
        const auto a = s.find_first_not_of(" \t\r\"");
        if (a == std::string_view::npos) return {};
        const auto b = s.find_last_not_of(" \t\r\"");
        return s.substr(a, b - a + 1);
    }
    std::vector<std::pair<std::string_view, std::string_view>> pares_;
};

}  // namespace

std::optional<CalibracionTM> LeerMetadatosTM(const std::string& ruta, int banda, std::string* error) {
    const auto contenido = LeerTextoAcotado(ruta, kMaxTexto);
    if (!contenido) {
        if (error) *error = Sustituir(texto::kMetadatosNoLegible, ruta);
        return std::nullopt;
    }
    return AnalizarMetadatosTM(*contenido, ruta, banda, error);
}

std::optional<CalibracionTM> AnalizarMetadatosTM(const std::string& texto, const std::string& ruta, int banda,
                                                 std::string* error) {
    const Pares p(texto);
    auto falta = [&](const char* que) -> std::optional<CalibracionTM> {
        if (error) *error = Sustituir(texto::kMetadatosIncompletos, ruta, que);
        return std::nullopt;
    };
    CalibracionTM c;
    c.banda = banda;
    const std::string b = std::to_string(banda);
    const auto mult = p.Numero("RADIANCE_MULT_BAND_" + b), suma = p.Numero("RADIANCE_ADD_BAND_" + b);
    if (mult && suma) {
        c.ganancia = *mult;
        c.sesgo = *suma;
    } else {
        auto lmax = p.Numero("RADIANCE_MAXIMUM_BAND_" + b), lmin = p.Numero("RADIANCE_MINIMUM_BAND_" + b);
        auto qmax = p.Numero("QUANTIZE_CAL_MAX_BAND_" + b), qmin = p.Numero("QUANTIZE_CAL_MIN_BAND_" + b);
        if (!lmax) lmax = p.Numero("LMAX_BAND" + b);
        if (!lmin) lmin = p.Numero("LMIN_BAND" + b);
        if (!qmax) qmax = p.Numero("QCALMAX_BAND" + b);
        if (!qmin) qmin = p.Numero("QCALMIN_BAND" + b);
        if (!lmax || !lmin || !qmax || !qmin || *qmax == *qmin) return falta("la ganancia y el sesgo");
        c.ganancia = (*lmax - *lmin) / (*qmax - *qmin);
        c.sesgo = *lmin - c.ganancia * *qmin;
    }
    const auto elevacion = p.Numero("SUN_ELEVATION");
    if (!elevacion) return falta("la elevación solar");
    c.elevacionSolar = *elevacion;
    auto fecha = p.Valor("DATE_ACQUIRED");
    if (!fecha) fecha = p.Valor("ACQUISITION_DATE");
    if (!fecha || !LeerFecha(*fecha, c)) return falta("la fecha de adquisición");
    return c;
}

double ObjetoOscuro(const Muestras& m, Progreso& progreso) {
    std::vector<uint64_t> cuentas(65536, 0);
    uint64_t positivas = 0;
    const bool conocido = ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
        const auto d = m.Como<T>();
        for (std::size_t i = 0; i < d.size(); ++i) {
            const double v = static_cast<double>(d[i]);
            if (!(v >= 1.0) || v >= 65536.0) continue;
            ++cuentas[static_cast<std::size_t>(v)];
            ++positivas;
            if ((i & 0xFFFFF) == 0 && progreso.Cancelado()) return;
        }
    });
    if (!conocido || positivas == 0) return -1;
    const uint64_t minimo = positivas / 10000 > 0 ? (positivas + 9999) / 10000 : 1;
    for (std::size_t k = 1; k < cuentas.size(); ++k)
        if (cuentas[k] >= minimo) return static_cast<double>(k);
    return -1;
}

std::optional<FigurasReflectancia> Reflectancia(const Muestras& entrada, const CalibracionTM& c, bool objetoOscuro,
                                                Muestras& salida, Progreso& progreso) {
    FigurasReflectancia f;
    f.esun = EsunTM(c.banda);
    if (f.esun == 0 || salida.Codigo() != kReal || salida.Cantidad() != entrada.Cantidad()) return std::nullopt;
    f.distancia = DistanciaTierraSol(DiaDelAnio(c.anio, c.mes, c.dia));
    f.cenit = 90.0 - c.elevacionSolar;
    if (objetoOscuro) {
        f.ndOscuro = ObjetoOscuro(entrada, progreso);
        if (f.ndOscuro >= 0) f.radianciaOscura = c.ganancia * f.ndOscuro + c.sesgo;
    }
    const double factor =
        std::numbers::pi * f.distancia * f.distancia / (f.esun * std::cos(f.cenit * std::numbers::pi / 180.0));
    const double oscura = f.radianciaOscura;
    float* q = salida.Como<float>().data();
    bool hecho = false;
    const bool conocido = ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        const T* p = entrada.Como<T>().data();
        const long n = static_cast<long>(entrada.Cantidad());
        constexpr long kBloque = 1 << 16;
        hecho = PorFilas(progreso, (n + kBloque - 1) / kBloque, [&](long b0, long b1) {
            for (long i = b0 * kBloque; i < b1 * kBloque && i < n; ++i) {
                const double nd = static_cast<double>(p[i]);
                q[i] = nd == 0 ? 0.0f : Almacenar<float>((c.ganancia * nd + c.sesgo - oscura) * factor);
            }
        });
    });
    if (!conocido || !hecho) return std::nullopt;
    return f;
}

}  // namespace orvela
