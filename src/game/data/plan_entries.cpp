#include "game/data/plan_entries.h"

#include <godot_cpp/variant/array.hpp>

namespace tilm {

namespace {

template <class List>
Array to_array(const List &list) {
    Array out;
    for (const auto &v : list) {
        out.append(to_string(v));
    }
    return out;
}

template <class List>
Dictionary recipe_dictionary(const List &recipe) {
    Dictionary out;
    for (const rules::Need &need : recipe) {
        out[to_string(need.kind)] = need.units;
    }
    return out;
}

// Keys that are only there when they mean something, as readers ask with has().
void put_text(Dictionary &d, const char *key, std::string_view text) {
    if (!text.empty()) {
        d[key] = to_string(text);
    }
}

} // namespace

String to_string(std::string_view text) {
    return String::utf8(text.data(), static_cast<int>(text.size()));
}

Vector2 to_vector(rules::Vec2 v) {
    return Vector2(v.x, v.y);
}

Rect2 to_rect(const rules::Rect &r) {
    return Rect2(r.x, r.y, r.w, r.h);
}

Color to_color(uint32_t rgb) {
    constexpr float FULL = 255.0F;
    return Color(static_cast<float>((rgb >> 16U) & 0xFFU) / FULL, static_cast<float>((rgb >> 8U) & 0xFFU) / FULL,
                 static_cast<float>(rgb & 0xFFU) / FULL);
}

Dictionary entry_dictionary(const rules::PlanEntry &entry) {
    Dictionary d;
    d["id"] = to_string(entry.id);
    d["kind"] = to_string(entry.kind);
    d["title"] = to_string(entry.title);
    d["region"] = to_string(entry.region);
    d["pos"] = to_vector(entry.pos);
    Array costs;
    for (const int64_t cost : entry.costs) {
        costs.append(cost);
    }
    d["costs"] = costs;
    d["req"] = to_array(entry.req);
    d["base"] = entry.base;
    if (entry.pad) {
        d["pad"] = to_vector(*entry.pad);
    }
    put_text(d, "product", entry.product);
    put_text(d, "dst", entry.dst);
    put_text(d, "field", entry.field);
    put_text(d, "crop", entry.crop);
    put_text(d, "target", entry.target);
    put_text(d, "factory", entry.factory);
    put_text(d, "depot", entry.depot);
    put_text(d, "trade", entry.trade);
    if (!entry.products.empty()) {
        d["products"] = to_array(entry.products);
    }
    if (!entry.recipe.empty()) {
        d["recipe"] = recipe_dictionary(entry.recipe);
    }
    if (entry.yield) {
        d["yield"] = *entry.yield;
    }
    if (!entry.flavors.empty()) {
        Dictionary flavors;
        for (const rules::Flavor &f : entry.flavors) {
            flavors[to_string(f.kind)] = recipe_dictionary(f.recipe);
        }
        d["flavors"] = flavors;
    }
    if (entry.kinds) {
        d["kinds"] = to_array(*entry.kinds);
    }
    if (entry.roof) {
        d["roof"] = to_color(*entry.roof);
    }
    if (entry.bed) {
        d["bed"] = to_color(*entry.bed);
    }
    if (entry.color) {
        d["color"] = to_color(*entry.color);
    }
    if (entry.rect) {
        d["rect"] = to_rect(*entry.rect);
    }
    if (entry.block) {
        d["block"] = to_rect(*entry.block);
    }
    if (entry.pallet) {
        d["pallet"] = to_vector(*entry.pallet);
    }
    if (entry.feed_only) {
        d["feed_only"] = true;
    }
    if (!entry.machines.empty()) {
        Dictionary machines;
        for (const rules::Supply &s : entry.machines) {
            machines[to_string(s.machine)] = to_array(s.kinds);
        }
        d["machines"] = machines;
    }
    return d;
}

} // namespace tilm
