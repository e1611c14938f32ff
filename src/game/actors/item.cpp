#include "game/actors/item.h"

#include <godot_cpp/core/error_macros.hpp>

#include "farm_items/goods_ledger.h"
#include "game/art/models.h"
#include "game/ports/farm.h"
#include "glebworks/live_ref.h"
#include "names.h"
#include "rules/items.h"

namespace tilm {

namespace {

struct AnimalGait {
    const char *kind;
    double scale, speed, swing, rate;
};

constexpr AnimalGait gaits[] = {
    {"calf", 0.36, 2.4, 11.0, 0.45},
    {"hen", 0.58, 2.2, 18.0, 0.7},
};

LiveRef<Node3D> &root_ref() {
    static LiveRef<Node3D> root;
    return root;
}

const AnimalGait *gait_of(const String &kind) {
    for (const AnimalGait &g : gaits) {
        if (kind == g.kind) {
            return &g;
        }
    }
    return nullptr;
}

} // namespace

void Item::_bind_methods() {
    ClassDB::bind_static_method("Item", D_METHOD("create", "kind"), &Item::create);
    ClassDB::bind_static_method("Item", D_METHOD("spawn", "kind", "pos"), &Item::spawn);
    ClassDB::bind_static_method("Item", D_METHOD("set_items_root", "root"), &Item::set_items_root);
    ClassDB::bind_method(D_METHOD("_show_rig", "on"), &Item::_show_rig);
}

void Item::set_items_root(Node3D *root) {
    root_ref().set(root);
}

Node3D *Item::items_root() {
    return root_ref().get();
}

bool Item::is_money(const String &kind) {
    return rules::is_money_item(kind.utf8().get_data());
}

Item *Item::create(const String &kind) {
    Item *it = memnew(Item);
    it->set_kind(kind);
    it->set_height(rules::item_height(kind.utf8().get_data()));
    MeshInstance3D *mesh = memnew(MeshInstance3D);
    mesh->set_mesh(Models::item_mesh((is_money(kind) ? "money_" : "item_") + kind));
    mesh->set_material_override(Models::farm_material());
    mesh->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    it->add_child(mesh);
    it->set_mesh_node(mesh);
    it->set_as_top_level(true);
    if (const AnimalGait *g = gait_of(kind)) {
        it->set_animal(true);
        it->core_gait(g->speed, g->swing, g->rate);
    }
    return it;
}

Item *Item::spawn(const String &kind, const Vector3 &pos) {
    Item *it = create(kind);
    Node3D *root = items_root();
    if (!root) {
        ERR_PRINT("Item::spawn with no World items root");
        it->place(pos);
        return it;
    }
    root->add_child(it);
    it->place(pos);
    if (!is_money(kind)) {
        GoodsLedger::born(it);
        if (Farm *farm = Farm::current()) {
            farm->stat_add("made:" + kind, 1);
        }
    }
    return it;
}

void Item::_show_rig(bool on) {
    const AnimalGait *gait = gait_of(kind);
    if (!gait) {
        return;
    }
    if (on && !rig) {
        rig = Models::animal(kind);
        if (!rig) {
            return;
        }
        rig->set_scale(Vector3(1, 1, 1) * (real_t)gait->scale);
        add_child(rig);
        Array rig_legs;
        if (Node *body = rig->get_node_or_null(NodePath("Body"))) {
            for (int i = 0; i < body->get_child_count(); i++) {
                Node3D *limb = Object::cast_to<Node3D>(body->get_child(i));
                if (limb && String(limb->get_name()).begins_with("Leg")) {
                    rig_legs.push_back(limb);
                }
            }
        }
        core_legs(rig_legs);
    }
    if (rig) {
        rig->set_visible(on);
    }
    rig_shown(on && rig);
}

} // namespace tilm
