#include "rules/items.h"

namespace tilm::rules {

namespace {

struct Height {
    std::string_view kind;
    float metres;
};

// clang-format off
constexpr Height GOODS_HEIGHTS[] = {
    {"meat", 0.2F}, {"grilled_fish", 0.2F}, {"steak", 0.2F}, {"medicine", 0.2F},
    {"drumstick", 0.22F}, {"breakfast", 0.22F},
    {"cookies", 0.24F},
    {"donut", 0.26F}, {"choco", 0.26F}, {"fish", 0.26F},
    {"egg", 0.3F}, {"bread", 0.3F}, {"sunflower", 0.3F}, {"cheese", 0.3F}, {"potato", 0.3F}, {"blanket", 0.3F},
    {"tomato", 0.32F}, {"grilled_chicken", 0.32F}, {"apple", 0.32F}, {"orange", 0.32F}, {"coffee", 0.32F},
    {"wheat", 0.34F}, {"icecream", 0.34F}, {"berry", 0.34F}, {"cocoa", 0.34F}, {"lettuce", 0.34F}, {"honey", 0.34F},
    {"flour", 0.36F}, {"mayo", 0.36F}, {"burger", 0.36F}, {"corn", 0.36F}, {"hay", 0.36F}, {"wool", 0.36F},
    {"cake", 0.4F}, {"juice", 0.4F}, {"apple_juice", 0.4F}, {"orange_juice", 0.4F},
    {"milk", 0.42F}, {"oil", 0.42F}, {"water", 0.42F},
    {"bean", 0.44F},
    {"hen", 0.5F},
    {"calf", 0.62F},
};
constexpr Height MONEY_HEIGHTS[] = {{"bill", 0.07F}, {"gold", 0.1F}, {"case", 0.16F}};
// clang-format on

constexpr float PLAIN_HEIGHT = 0.3F;

} // namespace

float item_height(std::string_view kind) {
    for (const Height &h : MONEY_HEIGHTS) {
        if (h.kind == kind) {
            return h.metres;
        }
    }
    for (const Height &h : GOODS_HEIGHTS) {
        if (h.kind == kind) {
            return h.metres;
        }
    }
    return PLAIN_HEIGHT;
}

bool is_money_item(std::string_view kind) {
    for (const Height &h : MONEY_HEIGHTS) {
        if (h.kind == kind) {
            return true;
        }
    }
    return false;
}

} // namespace tilm::rules
