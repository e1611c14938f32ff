// The frame step of a stack: sway, the herd behind the carrier, the tower and what the helper carries.

#include <algorithm>
#include <cmath>

#include "farm_items/stack_core.h"
#include "farm_items/world_place.h"
#include "glebworks/glebworks.h"
#include "names.h"

namespace tilm {

namespace {

constexpr double view_margin = 8.0;

} // namespace

StackCore::Herd StackCore::herd_shape() const {
    static const KindId calf = item_kinds::intern("calf");
    const bool calves =
        std::any_of(items.begin(), items.end(), [](const ItemCore *it) { return it->animal && it->kind_id == calf; });
    return calves ? Herd{3, 0.62, 0.78, 0.95} : Herd{4, 0.34, 0.38, 0.7};
}

Vector3 StackCore::herd_slot(int index) const {
    const Herd herd = herd_shape();
    const int row = index / herd.per_row;
    const int col = index % herd.per_row;
    const double shift = row % 2 == 1 ? 0.3 * herd.spacing : 0.0;
    return Vector3((real_t)((col - (herd.per_row - 1) / 2.0) * herd.spacing + shift), 0,
                   (real_t)(herd.first + row * herd.row_gap));
}

void StackCore::rest_sway() {
    sway = Vector3();
    velocity = Vector3();
}

void StackCore::call_ropes(int n) {
    if (ropes_out != n) {
        ropes_out = n;
        if (has_method(TM_NAME("_ropes"))) {
            call(TM_NAME("_ropes"), n);
        }
    }
}

void StackCore::_process(double dt) {
    const Vector3 pos = get_global_position();
    if (items.empty()) {
        call_ropes(0);
        if (herd_shown > 0) {
            herd_shown = 0;
            _animal_sign(0);
        }
        rest_sway();
        set_process(false);
        return;
    }
    if (!Glebworks::in_view(pos, view_margin)) {
        seen_valid = false;
        rest_sway();
        last_pos = pos;
        return;
    }
    if (dt > 0.0) {
        velocity += ((pos - last_pos) / (real_t)dt - velocity) * (real_t)eased(8.0, dt);
        sway += (velocity * (real_t)-0.035 - sway) * (real_t)eased(6.0, dt);
    }
    last_pos = pos;
    const Transform3D xf = get_global_transform();
    const bool same = seen_valid && xf == seen_transform && count() == seen_count;
    const bool over = goods_count() > capacity && get_helper();
    if (same && sway.length_squared() < 0.0001 && !over && !herd_walks && !items.back()->is_flying()) {
        return;
    }
    seen_transform = xf;
    seen_valid = true;
    seen_count = count();
    const double yaw = yaw_of(xf);
    lay_herd(xf, yaw);
    lay_goods(xf, yaw);
}

namespace {

// An item that is shown again stands where it belongs at once: its last place may be far behind.
void show_at(ItemCore *it, const Vector3 &at) {
    it->hide_on_arrival = false;
    if (!it->is_visible()) {
        it->place(at);
        it->set_visible(true);
    }
}

void aim(ItemCore *it, const Vector3 &at, double yaw) {
    if (it->target != at) {
        it->set_target(at);
    }
    if (it->target_yaw != yaw) {
        it->set_target_yaw(yaw);
    }
}

void hide_landed(ItemCore *it) {
    if (!it->is_flying() && it->is_visible()) {
        it->hide_on_arrival = false;
        it->set_visible(false);
    }
}

} // namespace

void StackCore::lay_herd(const Transform3D &xf, double yaw) {
    static const KindId calf = item_kinds::intern("calf");
    int index = 0;
    int ropes = 0;
    herd_walks = false;
    for (ItemCore *it : items) {
        if (!it->animal) {
            continue;
        }
        if (index < animal_limit) {
            const Vector3 at = xf.xform(herd_slot(index));
            show_at(it, at);
            aim(it, at, yaw);
            if (it->kind_id == calf) {
                const Vector3 hand = xf.xform(Vector3(0.28f, 0.85f, 0.1f));
                const Vector3 neck = world_transform(it).xform(Vector3(0, 0.36f, -0.3f)); // calves face -z
                if (has_method(TM_NAME("_rope"))) {
                    call(TM_NAME("_rope"), ropes, hand, neck);
                }
                ropes++;
            }
            herd_walks = herd_walks || it->is_processing();
        } else if (it->is_visible()) {
            it->set_visible(false);
        }
        index++;
    }
    call_ropes(ropes);
    if (index > 0 || herd_shown > 0) {
        herd_shown = index;
        _animal_sign(index);
    }
}

void StackCore::lay_goods(const Transform3D &xf, double yaw) {
    const int columns = cols();
    const bool helped = get_helper() != nullptr;
    const bool on_cart = helped && get_cart();
    const int helper_shown = helped ? shown_in_helper() : 0;
    const double helper_yaw = helped ? yaw_of(world_transform(on_cart ? get_cart() : get_helper())) : yaw;
    column_heights.assign((size_t)columns, 0.0);
    cell_heights.assign((size_t)helper_cells(), 0.0);
    int good = 0;
    for (ItemCore *it : items) {
        if (it->animal) {
            continue;
        }
        const int i = good++;
        if (helped && i >= capacity) {
            const int over = i - capacity;
            if (over >= helper_shown) {
                hide_landed(it);
                continue;
            }
            double &stacked = cell_heights[(size_t)helper_cell(over)];
            const Vector3 at = helper_slot(over, stacked);
            stacked += it->height;
            show_at(it, at);
            aim(it, at, helper_yaw);
            it->follow_speed = 26.0;
            continue;
        }
        if (show_limit > 0 && i >= show_limit) {
            hide_landed(it);
            continue;
        }
        double &stacked = column_heights[(size_t)(i % columns)];
        const int row = i / columns;
        const double lean = row * 0.125;
        const Vector3 at = xf.xform(tower_slot(i, stacked)) + sway * (real_t)(lean * lean * 0.6);
        stacked += it->height;
        show_at(it, at);
        aim(it, at, yaw);
        it->follow_speed = 30.0 - std::min(18.0, row * 0.8);
    }
}

} // namespace tilm
