#pragma once
// Looks over the bytes of a serialised table of mesh surfaces before the engine decodes them.

#include <cstddef>
#include <cstdint>
#include <span>

namespace tilm::rules {

// Whether the bytes are one whole Dictionary of Strings to Arrays of thirteen slots, each empty or a packed array of
// 32-bit values, in the engine's binary form, and nothing more.
bool is_surface_table(std::span<const uint8_t> bytes);

} // namespace tilm::rules
