#include "game/actors/unlock_tile.h"

#include <algorithm>

#include <godot_cpp/classes/box_mesh.hpp>
#include <godot_cpp/classes/standard_material3d.hpp>
#include <godot_cpp/classes/tween.hpp>

#include "game/art/icon_models.h"
#include "game/art/models.h"
#include "game/kit/ui.h"
#include "game/ports/farm.h"
#include "game/sound/sfx.h"
#include "names.h"

namespace tilm {

namespace {

constexpr float plate = static_cast<float>(rules::tile_width);
constexpr float least_fill = 0.001f;
constexpr float trickle_hold = 0.12f; // seconds that the sound outlives a payment

Node3D *still_parts(const String &kind, const String &product) {
    Node3D *tree = memnew(Node3D);
    Models::box(Vector3(2.6f, 0.06f, 2.6f), Color::html("fafafa"), Vector3(0, 0.03f, 0), tree);
    Models::box(Vector3(plate, 0.08f, plate), Color::html("8fcf73"), Vector3(0, 0.04f, 0), tree);
    if (Node3D *icon = IconModels::tile_icon(kind, product)) {
        icon->set_position(Vector3(0, 0.1f, -0.25f));
        tree->add_child(icon);
    }
    // The badge: a small note with a coin on it.
    const Vector3 at(-0.62f, 0.1f, 0.78f);
    Models::box(Vector3(0.5f, 0.05f, 0.32f), Color::html("43a047"), at + Vector3(0, 0.03f, 0), tree);
    Models::box(Vector3(0.4f, 0.055f, 0.22f), Color::html("66bb6a"), at + Vector3(0, 0.032f, 0), tree);
    Models::cyl(0.09f, 0.09f, 0.07f, Color::html("c8e6c9"), at + Vector3(0, 0.035f, 0), tree, 10);
    return tree;
}

} // namespace

void UnlockTile::setup(const Dictionary &d, int64_t already_paid, const String &t, int64_t c, int lvl) {
    data = d;
    entry_key = d.get(TM_NAME("id"), String());
    entry_type = d.get(TM_NAME("kind"), String());
    level = std::max(0, lvl);
    sign_scale = rules::tile_scale(entry_type == "land" && level == 0);
    drain = rules::TileDrain();
    drain.total = std::max<int64_t>(1, c);
    drain.paid = rules::paid_at_setup(already_paid, drain.total);
    title = t;
    done = false;
    if (title_label != nullptr) {
        title_label->set_text(title);
        redraw();
    }
}

void UnlockTile::_ready() {
    if (in_editor() || title_label != nullptr) {
        return;
    }
    build_plate();
    redraw();
}

Node3D *UnlockTile::plate_model(const String &id, const String &kind, const String &product) {
    return Models::bake("tileplate_" + id + "_" + kind,
                        Models::builder([kind, product]() { return still_parts(kind, product); }), false);
}

void UnlockTile::build_plate() {
    set_scale(Vector3(1, 1, 1) * static_cast<float>(sign_scale));
    add_child(plate_model(entry_key, entry_type, data.get(TM_NAME("product"), String())));

    Ref<BoxMesh> box;
    box.instantiate();
    box->set_size(Vector3(plate, 0.09f, plate));
    Color water = Color::html("4dd0e1");
    water.a = 0.5f;
    fill_plate = Models::mesh_instance(box, water, Vector3(0, 0.05f, 0), this, false);

    const Color ink = Color::html(level == 0 ? "fff59d" : "c5f542");
    title_label = Models::label3d(title, 48, ink, Vector3(0, 1.42f, -0.35f), this);
    if (level > 0) {
        Models::label3d("UP", 38, ink, Vector3(0.88f, 0.14f, 0.05f), this, false);
    }
    price_label = Models::label3d("", 64, Color(1, 1, 1), Vector3(0.3f, 0.16f, 0.78f), this, false);
    // Both are see-through: without an order of its own the water would be drawn over the price.
    price_label->set_render_priority(3);
    price_label->set_outline_render_priority(2);
}

void UnlockTile::redraw() {
    if (price_label == nullptr) {
        return;
    }
    const float p = static_cast<float>(drain.share());
    fill_plate->set_visible(p > 0);
    fill_plate->set_scale(Vector3(1, 1, std::max(least_fill, p)));
    // Grows from the edge that faces the player.
    fill_plate->set_position(Vector3(0, 0.05f, -plate * p * 0.5f + plate * 0.5f));
    const String price = UI::money(drain.remaining());
    price_label->set_text(price);
    const float size = static_cast<float>(rules::price_label_scale(static_cast<size_t>(price.length())));
    price_label->set_scale(Vector3(size, size, size));
}

void UnlockTile::set_title(const String &t) {
    if (t == title) {
        return;
    }
    title = t;
    if (title_label != nullptr) {
        title_label->set_text(title);
    }
}

void UnlockTile::on_stand(Object *world, double dt) {
    if (Farm *farm = Farm::of(world)) {
        stand(*farm, dt);
    }
}

void UnlockTile::stand(Farm &farm, double dt) {
    if (done) {
        return;
    }
    drain.stand_time += dt;
    if (drain.stand_time < rules::tile_wait || farm.money_now() <= 0) {
        return;
    }
    drain.drain_acc += dt;
    bool paid_any = false;
    while (drain.drain_acc >= rules::tile_slice) {
        const int64_t chunk = drain.slice(farm.money_now());
        if (chunk <= 0) {
            break;
        }
        drain.drain_acc -= rules::tile_slice;
        drain.paid += chunk;
        paid_any = true;
        farm.pay(chunk, get_position() + Vector3(0, 0.1f, 0));
    }
    if (paid_any) {
        trickle(true);
        redraw();
    }
    if (drain.full()) {
        finish();
    }
}

void UnlockTile::trickle(bool on) {
    if (on) {
        Sfx::sound_hold(TM_NAME("build_trickle"), trickle_hold, static_cast<float>(drain.share() * 0.25 + 0.9));
    } else if (trickling) {
        Sfx::sound_stop(TM_NAME("build_trickle"));
    }
    trickling = on;
}

void UnlockTile::on_leave() {
    if (drain.stand_time > 0) {
        trickle(false);
    }
    drain.leave();
}

void UnlockTile::fill() {
    if (done) {
        return;
    }
    drain.paid = drain.total;
    redraw();
    finish();
}

void UnlockTile::finish() {
    if (done) {
        return;
    }
    done = true;
    trickle(false);
    if (is_inside_tree()) {
        Ref<Tween> tween = create_tween();
        tween->tween_property(this, NodePath("scale"), Vector3(1, 1, 1) * static_cast<float>(1.2 * sign_scale), 0.12);
        tween->tween_property(this, NodePath("scale"), Vector3(0.01f, 0.01f, 0.01f), 0.25);
        tween->tween_callback(callable_mp(static_cast<Node *>(this), &Node::queue_free));
    } else {
        queue_free();
    }
    emit_signal(TM_NAME("completed"), this);
}

void UnlockTile::_bind_methods() {
    ClassDB::bind_method(D_METHOD("setup", "d", "already_paid", "t", "c", "lvl"), &UnlockTile::setup);
    ClassDB::bind_method(D_METHOD("half"), &UnlockTile::half);
    ClassDB::bind_method(D_METHOD("remaining"), &UnlockTile::remaining);
    ClassDB::bind_method(D_METHOD("on_stand", "world", "dt"), &UnlockTile::on_stand);
    ClassDB::bind_method(D_METHOD("on_leave"), &UnlockTile::on_leave);
    ClassDB::bind_method(D_METHOD("redraw"), &UnlockTile::redraw);
    ClassDB::bind_method(D_METHOD("get_data"), &UnlockTile::get_data);
    ClassDB::bind_method(D_METHOD("get_total"), &UnlockTile::get_total);
    ClassDB::bind_method(D_METHOD("get_paid"), &UnlockTile::get_paid);
    ClassDB::bind_method(D_METHOD("is_done"), &UnlockTile::is_done);
    ClassDB::bind_method(D_METHOD("get_level"), &UnlockTile::get_level);
    ClassDB::bind_method(D_METHOD("get_title"), &UnlockTile::get_title);
    ClassDB::bind_method(D_METHOD("set_title", "t"), &UnlockTile::set_title);
    ClassDB::bind_method(D_METHOD("get_sign_scale"), &UnlockTile::get_sign_scale);
    ClassDB::bind_method(D_METHOD("get_stand_time"), &UnlockTile::get_stand_time);
    ClassDB::bind_method(D_METHOD("get_drain_acc"), &UnlockTile::get_drain_acc);
    ADD_PROPERTY(PropertyInfo(Variant::DICTIONARY, "data"), "", "get_data");
    ADD_PROPERTY(PropertyInfo(Variant::INT, "total"), "", "get_total");
    ADD_PROPERTY(PropertyInfo(Variant::INT, "paid"), "", "get_paid");
    ADD_PROPERTY(PropertyInfo(Variant::BOOL, "done"), "", "is_done");
    ADD_PROPERTY(PropertyInfo(Variant::INT, "level"), "", "get_level");
    ADD_PROPERTY(PropertyInfo(Variant::STRING, "title"), "set_title", "get_title");
    ADD_PROPERTY(PropertyInfo(Variant::FLOAT, "sign_scale"), "", "get_sign_scale");
    ADD_PROPERTY(PropertyInfo(Variant::FLOAT, "stand_time"), "", "get_stand_time");
    ADD_PROPERTY(PropertyInfo(Variant::FLOAT, "drain_acc"), "", "get_drain_acc");
    ADD_SIGNAL(MethodInfo("completed", PropertyInfo(Variant::OBJECT, "tile")));
}

} // namespace tilm
