#pragma once
// Cuts what a renderer painted over clear black out of its square picture and lays it, smaller, into another square.

#include <cstdint>
#include <vector>

namespace tilm::rules {

// `painted`: size x size pixels of 4 bytes, colours weighed by their opacity as a renderer leaves them at soft edges.
// The result: out x out pixels with plain colours; what was painted stands in the middle, and its longer side leaves
// `margin` (a share of the side, 0 .. 0.4) free at both ends. Empty when nothing was painted or the sizes do not fit.
std::vector<uint8_t> crop_picture(const uint8_t *painted, int size, int out, double margin);

// Lays a rim of one colour round what a side x side picture with plain colours shows, fading out over `reach` pixels.
struct Rim {
    uint8_t red, green, blue;
    double strength; // opacity right at the shape, 0 .. 1
    double reach;
};
void rim_picture(std::vector<uint8_t> &picture, int side, const Rim &rim);

} // namespace tilm::rules
