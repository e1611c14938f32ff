#include "game/art/prim_store.h"

#include <godot_cpp/core/class_db.hpp>

namespace tilm {

void PrimStore::_bind_methods() {
    ClassDB::bind_method(D_METHOD("set_shapes", "shapes"), &PrimStore::set_shapes);
    ClassDB::bind_method(D_METHOD("get_shapes"), &PrimStore::get_shapes);
    ADD_PROPERTY(PropertyInfo(Variant::DICTIONARY, "shapes"), "set_shapes", "get_shapes");
}

} // namespace tilm
