#include "farm_items/item_kinds.h"

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tilm::item_kinds {

namespace {

// Plain C++ texts: the table outlives the engine's strings.
struct Table {
    std::deque<std::u32string> names;
    std::unordered_map<std::u32string_view, KindId> ids;
};

Table &table() {
    static Table t;
    return t;
}

std::u32string_view text_of(const String &kind) {
    const int64_t length = kind.length();
    return length == 0 ? std::u32string_view() : std::u32string_view(kind.ptr(), (size_t)length);
}

} // namespace

KindId find(const String &kind) {
    const std::u32string_view text = text_of(kind);
    if (text.empty()) {
        return none;
    }
    const auto it = table().ids.find(text);
    return it == table().ids.end() ? unknown : it->second;
}

KindId intern(const String &kind) {
    const KindId known = find(kind);
    if (known != unknown) {
        return known;
    }
    Table &t = table();
    t.names.emplace_back(text_of(kind));
    const KindId id = (KindId)t.names.size();
    t.ids.emplace(t.names.back(), id);
    return id;
}

String name_of(KindId id) {
    const auto &names = table().names;
    return id >= 1 && static_cast<size_t>(id) <= names.size() ? String(names[static_cast<size_t>(id) - 1].c_str())
                                                              : String();
}

} // namespace tilm::item_kinds
