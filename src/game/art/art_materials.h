#pragma once
// Names of the shader-backed materials that models share; the accessors themselves are on Models.

namespace tilm::art_shader {

inline constexpr const char *FARM = "farm";
inline constexpr const char *TREE = "tree";
inline constexpr const char *PERSON = "person";
inline constexpr const char *ANIMAL = "animal";
inline constexpr const char *GROUND = "ground";
inline constexpr const char *GROUND_WET = "ground_wet";
inline constexpr const char *TUFT = "tuft";
inline constexpr const char *WATER = "water";
inline constexpr const char *LAKE = "lake";
inline constexpr const char *GLOW_POOL = "glow_pool";
inline constexpr const char *COVER = "cover";

} // namespace tilm::art_shader
