#pragma once
// An ordered list of goods: a flat array for the frame step, an engine Array for scripts. A good lies in one list at a
// time; freeing it takes it out of its list, so no list ever holds a dead pointer.

#include <cstddef>
#include <vector>

#include <godot_cpp/variant/array.hpp>

namespace tilm {
using namespace godot;

class ItemCore;

class ItemList {
public:
    // Called when an item left the list by itself: it was freed, or added to another list.
    using Lost = void (*)(void *owner, ItemCore *it);

    // An index list only notes goods that another list holds, as a cash tile notes the bills of its pile.
    enum class Role { holder = 0, index = 1 };

    explicit ItemList(void *owner_ = nullptr, Lost lost_ = nullptr, Role role_ = Role::holder)
        : owner(owner_), lost(lost_), role(role_) {}
    ~ItemList() { clear(); }
    ItemList(const ItemList &) = delete;
    ItemList &operator=(const ItemList &) = delete;

    int size() const { return (int)items.size(); }
    bool empty() const { return items.empty(); }
    ItemCore *operator[](int i) const { return items[(size_t)i]; }
    ItemCore *back() const { return items.back(); }
    const std::vector<ItemCore *> &flat() const { return items; }
    auto begin() const { return items.begin(); }
    auto end() const { return items.end(); }

    bool has(const ItemCore *it) const;
    // False, with a log line, for a null or an item that is already in this list.
    bool push(ItemCore *it);
    ItemCore *remove_at(int i);
    bool remove(ItemCore *it);
    void clear();

    Array to_array() const;
    // Takes the live items of an array, in its order; anything else in it is skipped with one log line.
    void assign(const Array &from);

private:
    friend class ItemCore;
    void forget(ItemCore *it);

    std::vector<ItemCore *> items;
    void *owner = nullptr;
    Lost lost = nullptr;
    Role role = Role::holder;
};

} // namespace tilm
