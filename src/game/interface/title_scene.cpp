#include "game/interface/title_scene.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/camera3d.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/multi_mesh.hpp>
#include <godot_cpp/classes/multi_mesh_instance3d.hpp>
#include <godot_cpp/classes/plane_mesh.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/surface_tool.hpp>
#include <godot_cpp/classes/viewport_texture.hpp>
#include <godot_cpp/classes/window.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/core/object.hpp>

#include "game/art/buildings.h"
#include "game/art/models.h"
#include "game/art/palette.h"
#include "game/art/scenery.h"
#include "game/kit/ui.h"
#include "names.h"

namespace tilm {
namespace {

constexpr int tuft_count = 900;

void place(Node3D *parent, Node3D *node, const Vector3 &pos, float turn = 0.0f, float size = 1.0f) {
    if (node == nullptr) {
        return;
    }
    node->set_position(pos);
    node->set_rotation(Vector3(0, turn, 0));
    node->set_scale(Vector3(size, size, size));
    parent->add_child(node);
}

// Three crossed blades with dark feet.
Ref<ArrayMesh> tuft_mesh() {
    Ref<SurfaceTool> st;
    st.instantiate();
    st->begin(Mesh::PRIMITIVE_TRIANGLES);
    const Color foot = pal::tone(pal::GRASS_DEEP, -0.1f);
    const Color tip = pal::tone(pal::GRASS, 0.15f);
    for (int i = 0; i < 3; ++i) {
        const float a = static_cast<float>(i) * 2.1f;
        const Vector3 side(std::cos(a) * 0.05f, 0, std::sin(a) * 0.05f);
        const Vector3 lean(std::cos(a + 1.2f) * 0.1f, 0.34f, std::sin(a + 1.2f) * 0.1f);
        st->set_normal(Vector3(0, 1, 0));
        st->set_color(foot);
        st->add_vertex(side);
        st->set_color(foot);
        st->add_vertex(side * -1.0f);
        st->set_color(tip);
        st->add_vertex(lean);
    }
    return st->commit();
}

} // namespace

uint64_t TitleScene::s_instance = 0;
float TitleScene::s_lean = 0.0f;

void TitleScene::_bind_methods() {
    ClassDB::bind_method(D_METHOD("_fit"), &TitleScene::_fit);
}

TitleScene *TitleScene::current() {
    return s_instance != 0 ? Object::cast_to<TitleScene>(ObjectDB::get_instance(s_instance)) : nullptr;
}

TextureRect *TitleScene::backdrop() {
    TextureRect *picture = memnew(TextureRect);
    picture->set_name("Backdrop");
    picture->set_anchors_and_offsets_preset(Control::PRESET_FULL_RECT);
    picture->set_expand_mode(TextureRect::EXPAND_IGNORE_SIZE);
    picture->set_stretch_mode(TextureRect::STRETCH_KEEP_ASPECT_COVERED);
    picture->set_mouse_filter(Control::MOUSE_FILTER_IGNORE);
    picture->connect(TM_NAME("ready"), UI::callback(picture, [picture] { attach(picture); }));
    return picture;
}

// The scene hangs under the window, not under the picture: it outlives the menu while the loading screen shows it.
void TitleScene::attach(TextureRect *picture) {
    TitleScene *scene = current();
    if (scene == nullptr || scene->is_queued_for_deletion()) {
        scene = memnew(TitleScene);
        s_instance = scene->get_instance_id();
        picture->get_tree()->get_root()->call_deferred(TM_NAME("add_child"), scene);
    }
    picture->set_texture(scene->get_texture());
    const auto fit = [picture] {
        if (TitleScene *live = current()) {
            live->fit_to(picture->get_size());
        }
    };
    picture->connect(TM_NAME("resized"), UI::callback(picture, fit));
    fit();
}

void TitleScene::release() {
    if (TitleScene *scene = current()) {
        scene->queue_free();
    }
    s_instance = 0;
}

void TitleScene::lean(float share) {
    if (s_lean == share) {
        return;
    }
    s_lean = share;
    if (TitleScene *live = current()) {
        live->_fit();
    }
}

void TitleScene::fit_to(const Vector2 &size) {
    if (size.x < 8.0f || size.y < 8.0f) {
        return;
    }
    wanted = size;
    // No more pixels than the window has: the interface's own units are more on a small one.
    const Vector2 window = is_inside_tree() ? Vector2(get_tree()->get_root()->get_size()) : size;
    const float pixels = std::max(0.25f, static_cast<float>(std::max(window.x / size.x, window.y / size.y)));
    const float k = std::min({1.0f, 1600.0f / std::max(size.x, size.y), pixels});
    set_size(Vector2i(static_cast<int>(size.x * k), static_cast<int>(size.y * k)));
    if (camera != nullptr) {
        const bool wide = size.x > size.y;
        // Tall: the farm shows between the logo and the card. Wide: on both sides of them.
        camera->set_fov(wide ? 44.0f : 56.0f);
        camera->look_at_from_position(wide ? Vector3(0, 6.6f, 18.0f) : Vector3(0, 7.0f, 22.0f),
                                      wide ? Vector3(0, 2.4f, 0) : Vector3(0, 4.2f, 3.0f));
        // Sideways without turning: as far as the middle of the farm, 20 away, needs for this share.
        const float half_width = 20.0f * std::tan(0.5f * camera->get_fov() * 0.0174533f) * size.x / size.y;
        camera->set_h_offset(s_lean * half_width);
    }
}

void TitleScene::_fit() {
    fit_to(wanted.x > 0.0f ? wanted : Vector2(get_size()));
}

void TitleScene::_ready() {
    if (in_editor()) {
        return;
    }
    set_use_own_world_3d(true);
    set_update_mode(UPDATE_ALWAYS);
    set_disable_input(true);
    set_process_mode(PROCESS_MODE_ALWAYS);
    set_msaa_3d(MSAA_2X);

    Scenery::light(this);
    camera = memnew(Camera3D);
    camera->set_far(500.0f);
    add_child(camera);
    camera->make_current();

    stage = memnew(Node3D);
    add_child(stage);
    build_ground();
    build_farm();
    _fit();
}

float TitleScene::random() {
    seed = seed * 1664525u + 1013904223u;
    return static_cast<float>(seed >> 8) / 16777216.0f;
}

void TitleScene::build_ground() {
    Ref<PlaneMesh> plane;
    plane.instantiate();
    plane->set_size(Vector2(320, 120));
    Models::mesh_instance(plane, pal::col(0x5fb043), Vector3(0, 0, -30), stage, false);
    // Rolling hills close the view.
    for (int i = 0; i < 9; ++i) {
        const float x = -48.0f + 12.0f * static_cast<float>(i) + (random() - 0.5f) * 5.0f;
        const float size = 7.0f + random() * 5.0f;
        Models::sphere(size, pal::tone(pal::GRASS_DEEP, random() * 0.12f),
                       Vector3(x, -size * 0.45f, -30.0f - random() * 8.0f), stage, Vector3(1.7f, 0.8f, 1.0f), 16);
    }
    // Higher ones behind them hide where the ground ends.
    for (int i = 0; i < 8; ++i) {
        const float x = -77.0f + 22.0f * static_cast<float>(i) + (random() - 0.5f) * 8.0f;
        const float height = 10.0f + random() * 4.0f;
        Models::sphere(20.0f, pal::tone(0x3f7f4a, random() * 0.1f), Vector3(x, height - 16.0f, -62.0f), stage,
                       Vector3(1.4f, 0.8f, 0.6f), 18);
    }
    Models::mesh_instance(round_plane(2.9f), pal::col(0xd8c08a), Vector3(5.6f, 0.02f, 3.4f), stage, false)
        ->set_scale(Vector3(1.12f, 1, 0.74f));
    MeshInstance3D *pond =
        Models::mesh_instance(round_plane(2.6f), pal::col(0x3fa7d6), Vector3(5.6f, 0.05f, 3.4f), stage, false);
    pond->set_scale(Vector3(1.1f, 1, 0.7f));
    pond->set_material_override(Models::shader_material("water"));

    Ref<MultiMesh> tufts;
    tufts.instantiate();
    tufts->set_transform_format(MultiMesh::TRANSFORM_3D);
    tufts->set_mesh(tuft_mesh());
    tufts->set_instance_count(tuft_count);
    for (int i = 0; i < tuft_count; ++i) {
        float x = (random() - 0.5f) * 34.0f;
        float z = 9.0f - random() * 22.0f;
        const float dx = (x - 5.6f) / 3.1f;
        const float dz = (z - 3.4f) / 2.1f;
        if (dx * dx + dz * dz < 1.0f) {
            x -= 7.0f;
        }
        const float size = 0.7f + random() * 0.9f;
        const Basis basis = Basis(Vector3(0, 1, 0), random() * 6.28f).scaled(Vector3(size, size, size));
        tufts->set_instance_transform(i, Transform3D(basis, Vector3(x, 0, z)));
    }
    MultiMeshInstance3D *grass = memnew(MultiMeshInstance3D);
    grass->set_multimesh(tufts);
    grass->set_material_override(Models::shader_material("tuft"));
    grass->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    stage->add_child(grass);
}

Ref<Mesh> TitleScene::round_plane(float radius) {
    Ref<SurfaceTool> st;
    st.instantiate();
    st->begin(Mesh::PRIMITIVE_TRIANGLES);
    constexpr int sides = 28;
    for (int i = 0; i < sides; ++i) {
        const float a = 6.2832f * static_cast<float>(i) / sides;
        const float b = 6.2832f * static_cast<float>(i + 1) / sides;
        for (const Vector3 &v :
             {Vector3(), Vector3(std::cos(a), 0, std::sin(a)), Vector3(std::cos(b), 0, std::sin(b))}) {
            st->set_normal(Vector3(0, 1, 0));
            st->set_color(Color(1, 1, 1));
            st->add_vertex(v * radius);
        }
    }
    return st->commit();
}

void TitleScene::build_farm() {
    place(stage, Buildings::house("milk"), Vector3(-4.6f, 0, -4.0f), 0.25f, 1.25f);
    place(stage, Buildings::house("egg"), Vector3(4.4f, 0, -2.6f), -0.3f, 1.15f);
    Node3D *mill = memnew(Node3D);
    place(stage, mill, Vector3(0.4f, 0, -7.5f), 0.0f, 1.45f);
    place(mill, Buildings::mill(), Vector3());
    sails = Buildings::anim("flour");
    if (sails != nullptr) {
        mill->add_child(sails);
    }
    place(stage, Scenery::farmhouse(), Vector3(9.5f, 0, -8.5f), -0.45f);
    for (int i = 0; i < 16; ++i) {
        const float side = i % 2 == 0 ? -1.0f : 1.0f;
        const float x = side * (6.0f + random() * 16.0f);
        const float z = -9.0f - random() * 12.0f;
        place(stage, Models::any_tree(random()), Vector3(x, 0, z), random() * 6.28f, 1.0f + random() * 0.5f);
    }
    place(stage, Models::any_tree(0.1f), Vector3(-8.8f, 0, 0.5f), 1.0f, 1.2f);
    place(stage, Models::any_tree(0.7f), Vector3(9.6f, 0, -1.0f), 2.0f, 1.2f);
    place(stage, Scenery::rail_fence(6.0f), Vector3(-5.2f, 0, 2.6f), 0.05f);

    Dictionary look;
    look["shirt"] = "e5484d";
    look["pants"] = "3f6fc0";
    look["overalls"] = "3d6fb6";
    look["hat"] = "f2c94c";
    Node3D *farmer = Models::person(look);
    place(stage, farmer, Vector3(0.3f, 0, 1.6f), 2.6f, 1.25f);
    bobbing = farmer;

    struct Herd {
        const char *product;
        float x;
        float z;
        int count;
        float size;
        float speed;
    };
    for (const Herd &herd : {Herd{"milk", -4.2f, 0.4f, 3, 1.0f, 0.45f}, Herd{"egg", 2.0f, 0.8f, 6, 1.0f, 0.6f}}) {
        for (int i = 0; i < herd.count; ++i) {
            Node3D *animal = Models::animal(herd.product);
            if (animal == nullptr) {
                continue;
            }
            Wanderer w;
            w.node = animal;
            w.home_x = herd.x + (random() - 0.5f) * 2.0f;
            w.home_z = herd.z + (random() - 0.5f) * 1.6f;
            w.range = herd.count > 4 ? 1.9f : 2.4f;
            w.speed = herd.speed;
            w.heading = random() * 6.28f;
            w.rest = random() * 3.0f;
            w.phase = random() * 6.28f;
            place(stage, animal, Vector3(w.home_x, 0, w.home_z), w.heading, herd.size);
            wanderers.push_back(w);
        }
    }
}

void TitleScene::wander(Wanderer &w, float delta) {
    Vector3 pos = w.node->get_position();
    if (w.rest > 0.0f) {
        w.rest -= delta;
        // Pecking and grazing: a slow nod while it stands.
        w.node->set_rotation(Vector3(0.06f * std::sin(w.phase + static_cast<float>(time) * 2.2f), w.heading, 0));
        return;
    }
    w.turn_in -= delta;
    const float dx = w.home_x - pos.x;
    const float dz = w.home_z - pos.z;
    if (dx * dx + dz * dz > w.range * w.range) {
        w.heading = std::atan2(-dx, -dz); // they face -z at yaw 0
        w.turn_in = 1.5f;
    } else if (w.turn_in <= 0.0f) {
        w.turn_in = 1.0f + random() * 2.5f;
        w.heading += (random() - 0.5f) * 2.2f;
        if (random() < 0.45f) {
            w.rest = 1.0f + random() * 3.5f;
        }
    }
    pos.x -= std::sin(w.heading) * w.speed * delta;
    pos.z -= std::cos(w.heading) * w.speed * delta;
    pos.y = std::abs(std::sin(w.phase + static_cast<float>(time) * 7.0f)) * 0.04f;
    w.node->set_position(pos);
    w.node->set_rotation(Vector3(0, w.heading, 0.05f * std::sin(w.phase + static_cast<float>(time) * 7.0f)));
}

void TitleScene::_process(double delta) {
    if (stage == nullptr) {
        return;
    }
    const float step = static_cast<float>(std::min(delta, 0.1));
    time += step;
    if (sails != nullptr) {
        sails->rotate_object_local(Vector3(0, 0, 1), 0.6f * step);
    }
    if (bobbing != nullptr) {
        bobbing->set_rotation(Vector3(0, 2.6f + 0.25f * std::sin(static_cast<float>(time) * 0.7f), 0));
    }
    for (Wanderer &w : wanderers) {
        wander(w, step);
    }
}

} // namespace tilm
