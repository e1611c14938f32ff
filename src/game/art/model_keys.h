#pragma once
// The one list of every model key: what class it is of, what it is used for, and which builder serves it. Models::model
// looks a key up here.

#include <span>
#include <string_view>
#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

enum class ModelClass { good, money, person, animal, building, prop, scenery, icon };

// Keys that share a builder: `prefix` followed by each word of `names`.
struct ModelFamily {
    std::string_view prefix;
    std::string_view names;
    ModelClass group;
    std::string_view used;           // where it is met
    Node3D *(*make)(const String &); // gets what follows the prefix
};

struct ModelKey {
    String key, name;
    const ModelFamily *family;
};

std::span<const ModelFamily> model_families();
// All keys, family by family.
std::vector<ModelKey> model_keys();
// How a class is called in listings, "goods", "people" and so on.
const char *model_class_name(ModelClass group);

// What a class allows: triangles, and the bounds of the whole model's size in metres.
struct ModelLimits {
    ModelClass group;
    int triangles;
    float lowest, highest; // height
    float widest;          // larger ground side
};
const ModelLimits &limits_of(ModelClass group);

} // namespace tilm
