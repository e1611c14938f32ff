#include "rules/picture_crop.h"

#include <gtest/gtest.h>

using namespace tilm::rules;

namespace {

struct Canvas {
    explicit Canvas(int size) : size(size), bytes(static_cast<size_t>(size * size) * 4, 0) {}
    void fill(int left, int top, int right, int bottom, std::vector<uint8_t> color) {
        for (int y = top; y < bottom; ++y) {
            for (int x = left; x < right; ++x) {
                std::copy(color.begin(), color.end(), bytes.begin() + (y * size + x) * 4);
            }
        }
    }
    int size;
    std::vector<uint8_t> bytes;
};

int at(const std::vector<uint8_t> &picture, int size, int x, int y, int channel) {
    return picture[static_cast<size_t>((y * size + x) * 4 + channel)];
}

} // namespace

TEST(PictureCrop, StandsInTheMiddleWithTheSameMarginWhereverItWasPainted) {
    for (const int shift : {0, 9}) {
        Canvas c(40);
        c.fill(2 + shift, 4 + shift, 18 + shift, 12 + shift, {200, 100, 50, 255}); // 16 x 8
        const std::vector<uint8_t> p = crop_picture(c.bytes.data(), c.size, 20, 0.1);
        ASSERT_EQ(p.size(), 20u * 20u * 4u);
        // 16 pixels become 80 % of 20: the shape keeps its size, 2 .. 18 across and 6 .. 14 down.
        for (int y = 0; y < 20; ++y) {
            for (int x = 0; x < 20; ++x) {
                const bool inside = x >= 2 && x < 18 && y >= 6 && y < 14;
                ASSERT_EQ(at(p, 20, x, y, 3), inside ? 255 : 0) << x << " " << y;
                ASSERT_EQ(at(p, 20, x, y, 0), inside ? 200 : 0) << x << " " << y;
            }
        }
    }
}

TEST(PictureCrop, SoftEdgesKeepTheirColour) {
    Canvas c(32);
    c.fill(4, 4, 28, 28, {200, 100, 40, 255});
    c.fill(4, 4, 5, 28, {100, 50, 20, 128}); // half covered, as a renderer leaves it over black
    const std::vector<uint8_t> p = crop_picture(c.bytes.data(), c.size, 12, 0.0);
    EXPECT_NEAR(at(p, 12, 0, 6, 3), 191, 1) << "half a pixel of two is half there";
    EXPECT_NEAR(at(p, 12, 0, 6, 0), 200, 1) << "no dark rim";
    EXPECT_NEAR(at(p, 12, 0, 6, 2), 40, 1);
    EXPECT_EQ(at(p, 12, 6, 6, 0), 200);
}

TEST(PictureCrop, NothingPaintedGivesNothing) {
    Canvas c(16);
    EXPECT_TRUE(crop_picture(c.bytes.data(), c.size, 8, 0.1).empty());
    c.fill(3, 3, 9, 9, {1, 1, 1, 4});
    EXPECT_TRUE(crop_picture(c.bytes.data(), c.size, 8, 0.1).empty()) << "a breath of opacity is no shape";
    c.fill(3, 3, 4, 4, {9, 9, 9, 255});
    EXPECT_FALSE(crop_picture(c.bytes.data(), c.size, 8, 0.9).empty()) << "a margin out of range is bounded";
    EXPECT_TRUE(crop_picture(c.bytes.data(), 0, 8, 0.1).empty());
    EXPECT_TRUE(crop_picture(nullptr, 16, 8, 0.1).empty());
}

TEST(PictureCrop, TheRimLiesUnderTheShapeAndFades) {
    Canvas c(16);
    c.fill(6, 6, 10, 10, {250, 240, 230, 255});
    c.fill(6, 6, 10, 7, {250, 240, 230, 128});
    std::vector<uint8_t> p = c.bytes;
    rim_picture(p, 16, {40, 30, 20, 0.5, 2.0});
    EXPECT_EQ(at(p, 16, 8, 8, 0), 250) << "the shape stays as it is";
    EXPECT_EQ(at(p, 16, 10, 8, 0), 40);
    EXPECT_NEAR(at(p, 16, 10, 8, 3), 85, 1) << "a third of the way out: two thirds of a half";
    EXPECT_NEAR(at(p, 16, 11, 8, 3), 42, 1);
    EXPECT_EQ(at(p, 16, 12, 8, 3), 0);
    EXPECT_GT(at(p, 16, 8, 6, 3), 128) << "soft edges stand on the rim";
    EXPECT_LT(at(p, 16, 8, 6, 0), 250);
    std::vector<uint8_t> wrong(7, 1);
    rim_picture(wrong, 16, {40, 30, 20, 0.5, 2.0});
    EXPECT_EQ(wrong, std::vector<uint8_t>(7, 1));
}
