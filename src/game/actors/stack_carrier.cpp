#include "game/actors/stack_carrier.h"

#include <algorithm>
#include <cmath>

#include "farm_items/world_place.h"
#include "game/art/models.h"

namespace tilm {

namespace {

constexpr int sign_size = 40;
constexpr float rope_radius = 0.02f;
constexpr uint32_t rope_color = 0xb08850ff;

String shown_text(const Label3D *label) {
    return label && label->is_visible() ? label->get_text() : String();
}

// Labels ride on the carrier: their place is local.
Label3D *make_sign(Node *parent) {
    Label3D *label = Models::label3d(String(), sign_size, Color(1, 1, 1), Vector3(), parent);
    label->set_visible(false);
    return label;
}

} // namespace

void StackCarrier::_bind_methods() {
    ClassDB::bind_method(D_METHOD("_rope", "i", "a", "b"), &StackCarrier::_rope);
    ClassDB::bind_method(D_METHOD("_ropes", "n"), &StackCarrier::_ropes);
    ClassDB::bind_method(D_METHOD("get_rope_count"), &StackCarrier::get_rope_count);
    ClassDB::bind_method(D_METHOD("get_sign_text"), &StackCarrier::get_sign_text);
    ClassDB::bind_method(D_METHOD("get_animal_sign_text"), &StackCarrier::get_animal_sign_text);
}

String StackCarrier::get_sign_text() const {
    return shown_text(sign);
}

String StackCarrier::get_animal_sign_text() const {
    return shown_text(animal_label);
}

void StackCarrier::_count_sign() {
    const int goods = goods_count();
    const bool on = show_limit > 0 && goods > show_limit && !no_sign;
    if (!on) {
        if (sign && shown_count >= 0) {
            sign->set_visible(false);
        }
        shown_count = -1;
        return;
    }
    if (!sign) {
        sign = make_sign(this);
    }
    sign->set_position(base + Vector3(0, (real_t)(top_height() + 0.35), 0));
    if (shown_count != goods) {
        shown_count = goods;
        sign->set_text(String::num_int64(goods));
        sign->set_visible(true);
    }
}

void StackCarrier::_animal_sign(int animals) {
    if (animals <= animal_limit) {
        if (animal_label && shown_animals >= 0) {
            animal_label->set_visible(false);
        }
        shown_animals = -1;
        return;
    }
    if (!animal_label) {
        animal_label = make_sign(this);
    }
    animal_label->set_position(herd_slot(1) + Vector3(0, 1.3f, 0));
    if (shown_animals != animals) {
        shown_animals = animals;
        animal_label->set_text(String::num_int64(animals));
        animal_label->set_visible(true);
    }
}

void StackCarrier::_rope(int i, const Vector3 &a, const Vector3 &b) {
    if (i < 0 || i > 64) {
        return;
    }
    while ((int)ropes.size() <= i) {
        MeshInstance3D *rope = Models::cyl(rope_radius, rope_radius, 1.0f, Color::hex(rope_color), Vector3(), this, 5);
        rope->set_as_top_level(true);
        rope->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
        ropes.push_back(rope);
    }
    MeshInstance3D *rope = ropes[(size_t)i];
    const Vector3 along = b - a;
    const real_t length = along.length();
    if (length < 0.001f) {
        rope->set_visible(false);
        return;
    }
    // A unit cylinder stands along y: turn y to the rope's direction and stretch it.
    const Vector3 up = along / length;
    const Vector3 other = std::fabs(up.y) < 0.99f ? Vector3(0, 1, 0) : Vector3(1, 0, 0);
    const Vector3 side = other.cross(up).normalized();
    Basis turn;
    turn.set_column(0, side);
    turn.set_column(1, along);
    turn.set_column(2, side.cross(up));
    rope->set_global_transform(Transform3D(turn, (a + b) * 0.5f));
    rope->set_visible(true);
}

void StackCarrier::_ropes(int n) {
    for (size_t i = (size_t)std::max(0, n); i < ropes.size(); i++) {
        ropes[i]->set_visible(false);
    }
}

int StackCarrier::get_rope_count() const {
    int n = 0;
    for (const MeshInstance3D *rope : ropes) {
        n += rope->is_visible() ? 1 : 0;
    }
    return n;
}

} // namespace tilm
