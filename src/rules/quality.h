#pragma once
// The four levels of graphics quality, 0 best, and when a device steps down.

#include <algorithm>
#include <cstdint>

namespace tilm::rules {

struct QualityLevel {
    bool msaa;        // the project's own setting; off otherwise
    int shadow_atlas; // pixels a side
    float scale_3d;
    bool sun_shadow;
};

inline constexpr QualityLevel QUALITY_LEVELS[] = {
    {true, 2048, 1.0f, true},
    {false, 1024, 1.0f, true},
    {false, 1024, 0.8f, true},
    {false, 1024, 0.8f, false},
};
inline constexpr int QUALITY_WORST = 3;

inline constexpr double QUALITY_MEASURE_SEC = 5.0;
inline constexpr double QUALITY_LOW_FPS = 47.0;
inline constexpr double QUALITY_HICCUP_SEC = 0.5; // a longer frame is no measure of speed
inline constexpr double QUALITY_HICCUP_WAIT = 1.0;
inline constexpr double QUALITY_START_WAIT = 12.0;
inline constexpr double QUALITY_STEP_WAIT = 6.0; // after a step down

inline int quality_level(int64_t wanted) {
    return static_cast<int>(std::clamp<int64_t>(wanted, 0, QUALITY_WORST));
}

} // namespace tilm::rules
