#include "rules/picture_crop.h"

#include <algorithm>
#include <cmath>

namespace tilm::rules {
namespace {

constexpr int faint = 12; // opacity that is no part of a shape yet

struct Box {
    int left, top, right, bottom; // right and bottom are past the last pixel
    bool empty() const { return right <= left || bottom <= top; }
};

Box painted_box(const uint8_t *painted, int size) {
    Box box{size, size, 0, 0};
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            if (painted[(y * size + x) * 4 + 3] > faint) {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       std::max(box.bottom, y + 1)};
            }
        }
    }
    return box;
}

// How much of pixel `i` lies within from .. to.
double share(int i, double from, double to) {
    return std::max(0.0, std::min(to, i + 1.0) - std::max(from, static_cast<double>(i)));
}

} // namespace

std::vector<uint8_t> crop_picture(const uint8_t *painted, int size, int out, double margin) {
    if (painted == nullptr || size <= 0 || out <= 0) {
        return {};
    }
    const Box box = painted_box(painted, size);
    if (box.empty()) {
        return {};
    }
    const double longer = std::max(box.right - box.left, box.bottom - box.top);
    const double side = longer / (1.0 - 2.0 * std::clamp(margin, 0.0, 0.4));
    const double left = 0.5 * (box.left + box.right - side);
    const double top = 0.5 * (box.top + box.bottom - side);
    const double step = side / out;

    std::vector<uint8_t> result(static_cast<size_t>(out) * static_cast<size_t>(out) * 4, 0);
    for (int oy = 0; oy < out; ++oy) {
        const double y0 = top + oy * step;
        const double y1 = y0 + step;
        for (int ox = 0; ox < out; ++ox) {
            const double x0 = left + ox * step;
            const double x1 = x0 + step;
            double sum[4] = {};
            for (int y = std::max(0, static_cast<int>(std::floor(y0))); y < std::min<double>(size, y1); ++y) {
                for (int x = std::max(0, static_cast<int>(std::floor(x0))); x < std::min<double>(size, x1); ++x) {
                    const double weight = share(y, y0, y1) * share(x, x0, x1);
                    const uint8_t *from = painted + (y * size + x) * 4;
                    for (int c = 0; c < 4; ++c) {
                        sum[c] += weight * from[c];
                    }
                }
            }
            uint8_t *to = result.data() + (static_cast<size_t>(oy) * static_cast<size_t>(out) + ox) * 4;
            for (int c = 0; c < 3 && sum[3] > 0.0; ++c) {
                to[c] = static_cast<uint8_t>(std::lround(std::min(255.0, sum[c] * 255.0 / sum[3])));
            }
            to[3] = static_cast<uint8_t>(std::lround(std::min(255.0, sum[3] / (step * step))));
        }
    }
    return result;
}

void rim_picture(std::vector<uint8_t> &picture, int side, const Rim &rim) {
    if (side <= 0 || picture.size() != static_cast<size_t>(side) * static_cast<size_t>(side) * 4) {
        return;
    }
    struct Tap {
        int x, y;
        double weight;
    };
    std::vector<Tap> taps;
    const int far = static_cast<int>(std::ceil(rim.reach));
    for (int y = -far; y <= far; ++y) {
        for (int x = -far; x <= far; ++x) {
            const double weight = 1.0 - std::hypot(x, y) / (rim.reach + 1.0);
            if (weight > 0.0) {
                taps.push_back({x, y, weight});
            }
        }
    }
    const std::vector<uint8_t> shape = picture;
    const uint8_t paint[3] = {rim.red, rim.green, rim.blue};
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            uint8_t *to = picture.data() + (y * side + x) * 4;
            if (to[3] == 255) {
                continue;
            }
            double near = 0.0;
            for (const Tap &tap : taps) {
                const int sx = x + tap.x;
                const int sy = y + tap.y;
                if (sx >= 0 && sy >= 0 && sx < side && sy < side) {
                    near = std::max(near, tap.weight * shape[static_cast<size_t>((sy * side + sx) * 4 + 3)]);
                }
            }
            const double own = to[3] / 255.0;
            const double under = rim.strength * near / 255.0 * (1.0 - own);
            const double whole = own + under;
            if (under <= 0.0) {
                continue;
            }
            for (int c = 0; c < 3; ++c) {
                to[c] = static_cast<uint8_t>(std::lround((to[c] * own + paint[c] * under) / whole));
            }
            to[3] = static_cast<uint8_t>(std::lround(255.0 * whole));
        }
    }
}

} // namespace tilm::rules
