#pragma once
// Texts built into the module: the files below lang/, as bytes.

#include <string_view>

namespace tilm {

// The bytes of a file below lang/, such as "ar/exact.tsv"; empty if there is none of that name. Lives for ever.
std::string_view embedded_text(std::string_view name);

} // namespace tilm
