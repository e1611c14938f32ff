#include "game/shell/guide_arrow.h"

#include <cmath>

#include "game/art/icon_models.h"

namespace tilm {

namespace {

constexpr float NEAR = 1.7f; // over the tile the arrow only hides what the tile says

} // namespace

void GuideArrow::build(Node *parent) {
    node = IconModels::ground_arrow(Color::html("ffb300"));
    node->set_name("GuideArrow");
    node->hide();
    parent->add_child(node);
}

void GuideArrow::aim(bool has_target, const Vector3 &at) {
    wanted = has_target;
    target = at;
}

void GuideArrow::step(const Vector3 &player, double delta) {
    Vector3 way = target - player;
    way.y = 0;
    float distance = way.length();
    bool shown = wanted && distance > NEAR;
    if (node->is_visible() != shown) {
        node->set_visible(shown);
    }
    if (!shown) {
        return;
    }
    clock = std::fmod(clock + static_cast<float>(delta), 1000.0f);
    way /= distance;
    float pulse = 0.14f * std::sin(clock * 6.0f);
    node->set_position(player + way * (1.35f + pulse) + Vector3(0, 0.06f, 0));
    node->set_rotation(Vector3(0, std::atan2(-way.x, -way.z), 0));
}

} // namespace tilm
