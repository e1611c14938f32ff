#pragma once
// Settings without a file: what is put is what is read, and writes are counted.

#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/packed_string_array.hpp>

#include "game/ports/store.h"

namespace tilm {

// Lives for one test and is the current store while it does.
class FakeStore : public Store {
public:
    FakeStore() : before(Store::current()) { Store::set_current(this); }
    ~FakeStore() override { Store::set_current(before); }

    Variant setting(const StringName &key) const override { return values.get(key, Variant()); }
    void put_setting(const StringName &key, const Variant &value) override { values[key] = value; }
    void write() override { ++writes; }
    Dictionary farm_doc() const override { return farm; }
    PackedStringArray arguments() const override { return words; }

    Dictionary values;
    Dictionary farm;
    PackedStringArray words;
    int writes = 0;

private:
    Store *before;
};

} // namespace tilm
