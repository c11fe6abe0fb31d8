// Text files are Windows-1252; everything inside the program is UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace orvela {

// Characters with no Windows-1252 form become '?'.
std::string Utf8ACp1252(std::string_view utf8);
// Bytes with no character in Windows-1252 (0x81, 0x8D, 0x8F, 0x90, 0x9D)
// are kept as the control characters of the same code.
std::string Cp1252AUtf8(std::string_view cp1252);

// Number in the C++ stream default format (six significant digits, point
// as decimal separator whatever the locale).
std::string FormatoFlujo(double v);

}  // namespace orvela
