#pragma once
// Small numbers for the names of goods and of zones' groups, so that lists of them are searched without comparing
// texts.

#include <cstdint>

#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

using KindId = int32_t;

namespace item_kinds {

constexpr KindId none = 0; // the empty name: "any kind" where a kind is asked for
constexpr KindId unknown = -1;

// The number of a name, made on first use. Numbers live as long as the process.
KindId intern(const String &kind);
// The number of a name that some item or rule already carries, otherwise `unknown`.
KindId find(const String &kind);

// The name behind a number, empty for `none` and `unknown`.
String name_of(KindId id);

} // namespace item_kinds
} // namespace tilm
