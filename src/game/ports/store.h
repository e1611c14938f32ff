#pragma once
// Settings and the active farm's document as lower rooms see them. Save implements it.

#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/packed_string_array.hpp>
#include <godot_cpp/variant/string_name.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace tilm {
using namespace godot;

class Store {
public:
    virtual ~Store() = default;

    static Store *current() { return slot(); }
    static void set_current(Store *store) { slot() = store; }

    // A top-level setting such as "sound_on"; put() keeps it in memory, write() makes it last.
    virtual Variant setting(const StringName &key) const = 0;
    virtual void put_setting(const StringName &key, const Variant &value) = 0;
    virtual void write() = 0;
    virtual Dictionary farm_doc() const = 0;
    virtual PackedStringArray arguments() const = 0; // command line and debug words

private:
    static Store *&slot() {
        static Store *store = nullptr;
        return store;
    }
};

} // namespace tilm
