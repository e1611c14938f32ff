#include "farm_items/stack_core.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/core/error_macros.hpp>

#include "farm_items/world_place.h"
#include "rules/stacking.h"

namespace tilm {

namespace {

constexpr double column_gap = 0.62;
constexpr double cart_gap = 0.46;
constexpr double fly_seconds = 0.25;
constexpr double helper_fly_seconds = 0.3;
constexpr int helper_limit = 8;
constexpr int cart_limit = 12;
constexpr double helper_back = 0.95; // height of a helper's back, and of a cart's bed
constexpr double cart_bed = 0.55;

} // namespace

StackCore::StackCore() : items(this, &StackCore::lost_item) {}
StackCore::~StackCore() = default;

void StackCore::_bind_methods() {
    ClassDB::bind_method(D_METHOD("count"), &StackCore::count);
    ClassDB::bind_method(D_METHOD("total_cap"), &StackCore::total_cap);
    ClassDB::bind_method(D_METHOD("is_full"), &StackCore::is_full);
    ClassDB::bind_method(D_METHOD("space"), &StackCore::space);
    ClassDB::bind_method(D_METHOD("count_kind", "k"), &StackCore::count_kind);
    ClassDB::bind_method(D_METHOD("has_kind", "k"), &StackCore::has_kind);
    ClassDB::bind_method(D_METHOD("set_side", "x"), &StackCore::set_side);
    ClassDB::bind_method(D_METHOD("cols"), &StackCore::cols);
    ClassDB::bind_method(D_METHOD("goods_count"), &StackCore::goods_count);
    ClassDB::bind_method(D_METHOD("top_height"), &StackCore::top_height);
    ClassDB::bind_method(D_METHOD("top_global"), &StackCore::top_global);
    ClassDB::bind_method(D_METHOD("add", "it"), &StackCore::add);
    ClassDB::bind_method(D_METHOD("take", "k"), &StackCore::take);
    ClassDB::bind_method(D_METHOD("_count_sign"), &StackCore::_count_sign);
    ClassDB::bind_method(D_METHOD("_animal_sign", "animals"), &StackCore::_animal_sign);
    ClassDB::bind_method(D_METHOD("get_sway"), &StackCore::get_sway);

    TM_BIND_FIELD(StackCore, Variant::ARRAY, items);
    TM_BIND_FIELD(StackCore, Variant::INT, capacity);
    TM_BIND_FIELD(StackCore, Variant::OBJECT, helper);
    TM_BIND_FIELD(StackCore, Variant::OBJECT, cart);
    TM_BIND_FIELD(StackCore, Variant::INT, cart_cap);
    TM_BIND_FIELD(StackCore, Variant::VECTOR2I, cart_grid);
    TM_BIND_FIELD(StackCore, Variant::INT, max_cols);
    TM_BIND_FIELD(StackCore, Variant::INT, show_limit);
    TM_BIND_FIELD(StackCore, Variant::BOOL, no_sign);
    TM_BIND_FIELD(StackCore, Variant::INT, animal_limit);
    TM_BIND_FIELD(StackCore, Variant::VECTOR3, base);
    ADD_PROPERTY(PropertyInfo(Variant::VECTOR3, "sway"), "", "get_sway");
}

void StackCore::_ready() {
    if (items.empty()) {
        set_process(false);
    }
}

void StackCore::lost_item(void *self, ItemCore *) {
    static_cast<StackCore *>(self)->seen_count = -1;
}

void StackCore::touch() {
    seen_valid = false;
    seen_count = -1;
    if (!items.empty() && is_inside_tree()) {
        set_process(true);
    }
}

void StackCore::set_items(const Array &from) {
    items.assign(from);
    touch();
    _count_sign();
}

void StackCore::set_helper(Object *node) {
    Node3D *n = Object::cast_to<Node3D>(node);
    const uint64_t id = n ? n->get_instance_id() : 0;
    if (id != helper_id) {
        helper_id = id;
        touch();
    }
}

void StackCore::set_cart(Object *node) {
    Node3D *n = Object::cast_to<Node3D>(node);
    const uint64_t id = n ? n->get_instance_id() : 0;
    if (id != cart_id) {
        cart_id = id;
        touch();
    }
}

Node3D *StackCore::get_helper() const {
    return helper_id ? Object::cast_to<Node3D>(ObjectDB::get_instance(helper_id)) : nullptr;
}

Node3D *StackCore::get_cart() const {
    return cart_id ? Object::cast_to<Node3D>(ObjectDB::get_instance(cart_id)) : nullptr;
}

int StackCore::total_cap() const {
    if (!get_helper()) {
        return capacity;
    }
    return 2 * capacity + (get_cart() ? cart_cap : 0);
}

int StackCore::count_kind(const String &k) const {
    const KindId id = item_kinds::find(k);
    int n = 0;
    for (const ItemCore *it : items) {
        n += it->kind_id == id ? 1 : 0;
    }
    return n;
}

bool StackCore::has_kind(const String &k) const {
    const KindId id = item_kinds::find(k);
    return std::any_of(items.begin(), items.end(), [id](const ItemCore *it) { return it->kind_id == id; });
}

void StackCore::set_side(double x) {
    if (nearly(x, base.x)) {
        return;
    }
    base.x = (real_t)x;
    touch();
}

int StackCore::cols() const {
    return rules::tower_columns(capacity, max_cols);
}

int StackCore::goods_count() const {
    return (int)std::count_if(items.begin(), items.end(), [](const ItemCore *it) { return !it->animal; });
}

double StackCore::top_height() const {
    const int columns = cols();
    int limit = capacity;
    if (show_limit > 0) {
        limit = std::min(limit, show_limit);
    }
    double heights[3] = {0.0, 0.0, 0.0};
    int good = 0;
    for (const ItemCore *it : items) {
        if (it->animal) {
            continue;
        }
        if (good >= limit) {
            break;
        }
        heights[good % columns] += it->height;
        good++;
    }
    return std::max({heights[0], heights[1], heights[2]});
}

Vector3 StackCore::top_global() const {
    return world_transform(this).xform(base + Vector3(0, (real_t)top_height(), 0));
}

// Local place of a good in the tower, with what stands below it in its column.
Vector3 StackCore::tower_slot(int good, double stacked) const {
    const int columns = cols();
    return Vector3((real_t)((good % columns - (columns - 1) / 2.0) * column_gap + base.x), (real_t)(base.y + stacked),
                   base.z);
}

int StackCore::shown_in_helper() const {
    if (show_limit == 0) {
        return INT32_MAX;
    }
    return get_cart() ? std::clamp(helper_cells(), 1, cart_limit) : helper_limit;
}

int StackCore::helper_cells() const {
    return get_cart() ? std::max(1, cart_grid.x * cart_grid.y) : 4;
}

int StackCore::helper_cell(int i) const {
    return i % helper_cells();
}

Vector3 StackCore::helper_slot(int i, double stacked) const {
    const int cell = helper_cell(i);
    if (const Node3D *bed = get_cart()) {
        const int wide = std::max(1, cart_grid.x);
        const int deep = std::max(1, cart_grid.y);
        const Vector3 at((real_t)((cell % wide - (wide - 1) / 2.0) * cart_gap), (real_t)(cart_bed + stacked),
                         (real_t)((cell / wide - (deep - 1) / 2.0) * cart_gap));
        return world_transform(bed).xform(at);
    }
    const Vector3 at(cell % 2 == 0 ? -0.31f : 0.31f, (real_t)(helper_back + stacked), cell < 2 ? -0.3f : 0.3f);
    const Node3D *helper = get_helper();
    return helper ? world_transform(helper).xform(at) : world_transform(this).xform(at);
}

// Heights of the goods that lie under overflow good `i`.
double StackCore::overflow_under(int i) const {
    double under = 0.0;
    int good = 0;
    for (const ItemCore *it : items) {
        if (it->animal) {
            continue;
        }
        const int over = good - capacity;
        if (over >= i) {
            break;
        }
        if (over >= 0 && helper_cell(over) == helper_cell(i)) {
            under += it->height;
        }
        good++;
    }
    return under;
}

void StackCore::add(ItemCore *it) {
    if (!items.push(it)) {
        return;
    }
    if (is_inside_tree() && !is_processing()) {
        set_process(true);
        last_pos = get_global_position();
    }
    if (it->animal) {
        add_animal(it);
        return;
    }
    const int n = goods_count();
    if (n > capacity && get_helper()) {
        const int i = n - capacity - 1;
        const int shown = shown_in_helper();
        const int at = std::min(i, shown - 1);
        it->hide_on_arrival = i >= shown;
        it->fly_to(helper_slot(at, overflow_under(at)), helper_fly_seconds);
        _count_sign();
        return;
    }
    const int last = (show_limit > 0 ? std::min(n, show_limit) : n) - 1;
    it->hide_on_arrival = show_limit > 0 && n > show_limit;
    const int columns = cols();
    double under = 0.0;
    int good = 0;
    for (const ItemCore *other : items) {
        if (other->animal) {
            continue;
        }
        if (good >= last) {
            break;
        }
        if (good % columns == last % columns) {
            under += other->height;
        }
        good++;
    }
    it->fly_to(world_transform(this).xform(tower_slot(last, under)), fly_seconds);
    _count_sign();
}

void StackCore::add_animal(ItemCore *it) {
    it->hide_on_arrival = false;
    it->fly_to(world_transform(this).xform(herd_slot(animal_count() - 1)), fly_seconds);
    seen_count = -1;
}

ItemCore *StackCore::take(const String &k) {
    const bool any = k.is_empty();
    const KindId id = item_kinds::find(k);
    for (int i = items.size() - 1; i >= 0; i--) {
        ItemCore *it = items[i];
        if (!any && it->kind_id != id) {
            continue;
        }
        items.remove_at(i);
        it->hide_on_arrival = false;
        if (!it->is_visible()) {
            it->place(it->animal ? world_position(this) : top_global());
            it->set_visible(true);
        }
        seen_count = -1;
        _count_sign();
        return it;
    }
    return nullptr;
}

} // namespace tilm
