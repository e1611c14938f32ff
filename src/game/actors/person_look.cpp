#include "game/actors/person_look.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "statics.h"

namespace tilm {

namespace {

constexpr const char *staff_skins[] = {"f1c27d", "c68642", "e0ac69"};
constexpr const char *customer_skins[] = {"f1c27d", "e0ac69", "c68642", "ffdbac", "8d5524"};

struct Outfit {
    const char *shirt;
    const char *pants;
    const char *hair;
    const char *style;
};
constexpr Outfit outfits[] = {
    {"e57373", "37474f", "3e2723", "short"}, {"64b5f6", "4e342e", "6b3b1f", "long"},
    {"81c784", "3d5a80", "212121", "short"}, {"ffb74d", "455a64", "a1662f", "bun"},
    {"ba68c8", "263238", "3e2723", "long"},  {"4db6ac", "5d4037", "6b3b1f", "short"},
    {"f06292", "424242", "212121", "bun"},   {"fff176", "3d6fb6", "8d6e63", "bald"},
    {"90a4ae", "2e3b4e", "3e2723", "short"}, {"aed581", "4e342e", "d7a15b", "long"},
};
constexpr Outfit vip_outfit = {"6a1b9a", "2b2140", "3e2723", "short"};

struct RoleLook {
    const char *role;
    const char *shirt;
    const char *pants;
    const char *extra; // one clothing key, set to true, or a hat's name
    const char *hat;
};
constexpr RoleLook roles[] = {
    {"farmer", "e5533d", "2f5fa8", "overalls", "straw"}, {"worker", "7cb342", "6d4c41", "overalls", "straw"},
    {"feed", "fbc02d", "5d4037", "overalls", "cap"},     {"loader", "fb8c00", "37474f", "", "helmet"},
    {"seller", "eceff1", "455a64", "apron", "cap"},      {"machine", "5c8fd6", "37474f", "overalls", "cap"},
};

Array *pool = nullptr; // ordinary outfits, then as many of VIPs
constexpr int pool_size = 10;

Dictionary dress(const Outfit &o, const char *skin) {
    Dictionary look;
    look["skin"] = skin;
    look["shirt"] = o.shirt;
    look["pants"] = o.pants;
    look["hair"] = o.hair;
    look["style"] = o.style;
    return look;
}

Array &the_pool() {
    if (pool == nullptr) {
        pool = new Array;
        Statics::on_release([] {
            delete pool;
            pool = nullptr;
        });
    }
    if (pool->is_empty()) {
        const int skins = static_cast<int>(std::size(customer_skins));
        for (int i = 0; i < pool_size; ++i) {
            pool->push_back(dress(outfits[static_cast<size_t>(i)], customer_skins[i % skins]));
        }
        for (int i = 0; i < skins; ++i) {
            pool->push_back(dress(vip_outfit, customer_skins[i]));
        }
    }
    return *pool;
}

void bend(Node3D *root, const char *path, double x) {
    Node3D *part = Object::cast_to<Node3D>(root->get_node_or_null(NodePath(path)));
    if (part != nullptr) {
        Vector3 r = part->get_rotation();
        r.x = x;
        part->set_rotation(r);
    }
}

} // namespace

void PersonLook::setup_statics() {
    the_pool();
}

Array PersonLook::staff_skin_list() {
    Array list;
    for (const char *skin : staff_skins) {
        list.push_back(String(skin));
    }
    return list;
}

Array PersonLook::customer_looks() {
    return the_pool();
}

String PersonLook::random_staff_skin() {
    return staff_skins[UtilityFunctions::randi_range(0, static_cast<int64_t>(std::size(staff_skins)) - 1)];
}

Dictionary PersonLook::of_role(const String &role, const String &skin) {
    const RoleLook *found = &roles[0];
    for (const RoleLook &row : roles) {
        if (role == row.role) {
            found = &row;
        }
    }
    Dictionary look;
    look["skin"] = skin.is_empty() ? random_staff_skin() : skin;
    look["shirt"] = found->shirt;
    look["pants"] = found->pants;
    look["hair"] = "6b3b1f";
    look["style"] = "short";
    if (found->extra[0] != '\0') {
        look[found->extra] = true;
    }
    if (String(found->hat) == "cap") {
        look["cap"] = found->shirt;
    } else {
        look["hat"] = found->hat;
    }
    return look;
}

String PersonLook::hauler_role(const String &dst) {
    if (dst == "@feed") {
        return "feed";
    }
    if (dst.begins_with("truck") || dst.begins_with("dock_")) {
        return "loader";
    }
    return dst.begins_with("stall") ? "seller" : "machine";
}

Dictionary PersonLook::random_customer(bool vip) {
    const Array &looks = the_pool();
    const int64_t first = vip ? pool_size : 0;
    const int64_t last = vip ? looks.size() - 1 : pool_size - 1;
    return looks[UtilityFunctions::randi_range(first, last)];
}

bool PersonLook::has_joints(Node3D *model) {
    // A rigged model keeps its joints as bare nodes beside the one mesh that draws it.
    return model != nullptr && model->get_node_or_null(NodePath("Mesh")) == nullptr &&
           model->get_node_or_null(NodePath("Body/LegL/Knee")) != nullptr;
}

void PersonLook::pose_full(Node3D *model, double phase, double s01, bool carrying) {
    const double swing = std::sin(phase) * 0.62 * s01;
    bend(model, "Body/LegL", swing);
    bend(model, "Body/LegR", -swing);
    // A knee bends while its leg comes forward.
    bend(model, "Body/LegL/Knee", -std::max(0.0, std::cos(phase)) * 0.95 * s01);
    bend(model, "Body/LegR/Knee", -std::max(0.0, -std::cos(phase)) * 0.95 * s01);
    bend(model, "Body/ArmL", carrying ? 1.0 : -swing * 0.9);
    bend(model, "Body/ArmR", carrying ? 1.0 : swing * 0.9);
    const double elbow = carrying ? 0.55 : 0.25 * s01;
    bend(model, "Body/ArmL/Elbow", elbow);
    bend(model, "Body/ArmR/Elbow", elbow);
    Node3D *body = Object::cast_to<Node3D>(model->get_node_or_null(NodePath("Body")));
    if (body != nullptr) {
        Vector3 at = body->get_position();
        at.y = (std::abs(std::sin(phase)) - 0.4) * 0.05 * s01;
        body->set_position(at);
        body->set_rotation(Vector3(-0.09 * s01 * (carrying ? 0.6 : 1.0), 0, std::sin(phase) * 0.035 * s01));
    }
}

} // namespace tilm
