// A fresh folder under /tmp for one test, removed with what it holds.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace orvela::prueba {

class CarpetaPrueba {
public:
    CarpetaPrueba() {
        std::string plantilla = (std::filesystem::temp_directory_path() / "orvela-XXXXXX").string();
        if (::mkdtemp(plantilla.data())) ruta_ = plantilla;
    }
    ~CarpetaPrueba() {
        std::error_code ec;
        std::filesystem::permissions(ruta_, std::filesystem::perms::owner_all, ec);
        std::filesystem::remove_all(ruta_, ec);
    }
    CarpetaPrueba(const CarpetaPrueba&) = delete;
    CarpetaPrueba& operator=(const CarpetaPrueba&) = delete;

    std::string operator/(const std::string& nombre) const { return ruta_ + "/" + nombre; }
    const std::string& Ruta() const { return ruta_; }

private:
    std::string ruta_;
};

inline std::string LeerFichero(const std::string& ruta) {
    std::ifstream in(ruta, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void EscribirFichero(const std::string& ruta, const std::string& contenido) {
    std::ofstream(ruta, std::ios::binary) << contenido;
}

inline bool Existe(const std::string& ruta) { return std::filesystem::exists(ruta); }

// Names of what a folder holds (temporary files included).
inline std::set<std::string> Contenido(const std::string& carpeta) {
    std::set<std::string> s;
    std::error_code ec;
    for (const auto& e : std::filesystem::directory_iterator(carpeta, ec)) s.insert(e.path().filename().string());
    return s;
}

// Landsat data of the shared folder; empty when absent.
inline std::string DatosLandsat() {
    const std::string d = std::string(ORVELA_DATOS_COMPARTIDOS) + "/landsat-tm";
    return std::filesystem::exists(d + "/tm1.ozm") ? d : std::string();
}

}  // namespace orvela::prueba
