#include "game/actors/pile.h"

#include <algorithm>

#include "game/art/models.h"

namespace tilm {

namespace {

constexpr int sign_size = 44;
constexpr double flat_sign_height = 1.0;

} // namespace

void Pile::_bind_methods() {
    ClassDB::bind_method(D_METHOD("get_sign_text"), &Pile::get_sign_text);
}

String Pile::get_sign_text() const {
    return sign && sign->is_visible() ? sign->get_text() : String();
}

void Pile::_count_sign() {
    if (show_limit <= 0 && !flat) {
        return;
    }
    const int per_layer = std::max(1, cols * rows);
    const int capacity = show_limit > 0 ? show_limit : per_layer;
    const int n = count();
    if (no_sign || n <= capacity) {
        if (shown >= 0) {
            shown = -1;
            sign->set_visible(false);
        }
        return;
    }
    if (!sign) {
        sign = Models::label3d(String(), sign_size, Color(1, 1, 1), Vector3(), this);
    }
    const double h = flat ? flat_sign_height : (show_limit - 1) / per_layer * layer_h + sign_height;
    const Vector3 at(0, (real_t)h, 0);
    if (sign->get_position() != at) {
        sign->set_position(at);
    }
    if (shown != n) {
        if (shown < 0) {
            sign->set_visible(true);
        }
        shown = n;
        sign->set_text(String::num_int64(n));
    }
}

} // namespace tilm
