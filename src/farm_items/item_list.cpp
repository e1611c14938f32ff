#include "farm_items/item_list.h"

#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/core/object.hpp>

#include "farm_items/item_core.h"

namespace tilm {

bool ItemList::has(const ItemCore *it) const {
    return it && it->lists[(int)role] == this;
}

bool ItemList::push(ItemCore *it) {
    if (!it) {
        ERR_PRINT("An item list was given no item.");
        return false;
    }
    ItemList *&place = it->lists[(int)role];
    if (place == this) {
        ERR_PRINT("An item list was given an item that it already holds.");
        return false;
    }
    if (place) {
        place->forget(it);
    }
    place = this;
    items.push_back(it);
    return true;
}

ItemCore *ItemList::remove_at(int i) {
    ItemCore *it = items[(size_t)i];
    items.erase(items.begin() + i);
    it->lists[(int)role] = nullptr;
    return it;
}

bool ItemList::remove(ItemCore *it) {
    if (!has(it)) {
        return false;
    }
    // Most leave from the top.
    for (size_t i = items.size(); i-- > 0;) {
        if (items[i] == it) {
            remove_at((int)i);
            return true;
        }
    }
    return false;
}

void ItemList::clear() {
    for (ItemCore *it : items) {
        it->lists[(int)role] = nullptr;
    }
    items.clear();
}

void ItemList::forget(ItemCore *it) {
    if (remove(it) && lost) {
        lost(owner, it);
    }
}

Array ItemList::to_array() const {
    Array out;
    out.resize((int64_t)items.size());
    for (size_t i = 0; i < items.size(); i++) {
        out[(int64_t)i] = items[i];
    }
    return out;
}

void ItemList::assign(const Array &from) {
    clear();
    bool all = true;
    for (int64_t i = 0; i < from.size(); i++) {
        ItemCore *it = Object::cast_to<ItemCore>(from[i].get_validated_object());
        if (!it || has(it)) {
            all = false;
            continue;
        }
        push(it);
    }
    if (!all) {
        WARN_PRINT("Entries that are no items, or are there twice, were left out of an item list.");
    }
}

} // namespace tilm
