#include "game/art/icon_studio.h"

#include <algorithm>

#include <godot_cpp/classes/directional_light3d.hpp>
#include <godot_cpp/classes/engine.hpp>
#include <godot_cpp/classes/environment.hpp>
#include <godot_cpp/classes/geometry_instance3d.hpp>
#include <godot_cpp/classes/shader_material.hpp>
#include <godot_cpp/classes/viewport_texture.hpp>
#include <godot_cpp/classes/world_environment.hpp>

#include "game/art/models.h"
#include "names.h"
#include "rules/picture_crop.h"

namespace tilm {
namespace {

constexpr int drawn_side = 256; // twice what is kept: the picture is made smaller, which smooths it
constexpr double margin = 0.055;
constexpr rules::Rim outline = {72, 48, 36, 0.55, 2.5}; // white goods stand out from light cards by it

struct Angle {
    const char *start; // of the keys that it is for
    float yaw;         // degrees, of the camera round the model
    float pitch;
};

// What is flat is seen from higher up, what faces -z from its other side. The last row is for all else.
constexpr Angle angles[] = {
    {"item_sunflower", 20, 58}, {"item_grilled_", 24, 48}, {"item_steak", 24, 48},      {"item_breakfast", 24, 50},
    {"item_fish", 232, 52},     {"item_calf", 212, 20},    {"item_hen", 212, 18},       {"item_choco", 26, 40},
    {"item_blanket", 26, 26},   {"money_bill", 24, 46},    {"animal_", 206, 22},        {"pet_", 206, 22},
    {"wolf", 206, 22},          {"fox", 206, 22},          {"crow", 206, 22},           {"look_", 202, 14},
    {"truck_", 214, 24},        {"supply_", 206, 22},      {"icon_restaurant", 26, 40}, {"", 26, 28}};

const Angle &angle_of(const String &key) {
    for (const Angle &row : angles) {
        if (key.begins_with(row.start)) {
            return row;
        }
    }
    return angles[std::size(angles) - 1];
}

// Paint alone decides the colours: what the hour does to the farm's own materials stays out.
void wear_studio_paint(Node *node) {
    if (auto *part = Object::cast_to<GeometryInstance3D>(node)) {
        const Ref<Material> worn = part->get_material_override();
        for (const Ref<ShaderMaterial> &lit :
             {Models::farm_material(false), Models::farm_material(true), Models::person_material(),
              Models::animal_material(), Models::tree_material()}) {
            if (worn == lit) {
                part->set_material_override(Models::shader_material("icon"));
                break;
            }
        }
    }
    for (int32_t i = 0; i < node->get_child_count(); ++i) {
        wear_studio_paint(node->get_child(i));
    }
}

// Everything that is drawn below `node`, seen from `to_camera`.
void grow(AABB &box, bool &any, Node *node, const Transform3D &to_camera) {
    if (auto *part = Object::cast_to<VisualInstance3D>(node)) {
        const AABB own = part->get_aabb();
        if (own.size != Vector3() && part->is_visible() && Object::cast_to<Light3D>(node) == nullptr) {
            const Transform3D place = to_camera * part->get_global_transform();
            for (int i = 0; i < 8; ++i) {
                const Vector3 corner = place.xform(own.get_endpoint(i));
                if (any) {
                    box.expand_to(corner);
                } else {
                    box = AABB(corner, Vector3());
                    any = true;
                }
            }
        }
    }
    for (int32_t i = 0; i < node->get_child_count(); ++i) {
        grow(box, any, node->get_child(i), to_camera);
    }
}

void add_lamp(Node *at, const Vector3 &turn, const Color &color, float energy) {
    DirectionalLight3D *lamp = memnew(DirectionalLight3D);
    lamp->set_rotation_degrees(turn);
    lamp->set_color(color);
    lamp->set_param(Light3D::PARAM_ENERGY, energy);
    at->add_child(lamp);
}

} // namespace

IconStudio::IconStudio(Node *home) {
    room = memnew(SubViewport);
    live_room.set(room);
    room->set_name("IconStudio");
    room->set_size(Vector2i(drawn_side, drawn_side));
    room->set_use_own_world_3d(true);
    room->set_transparent_background(true);
    room->set_disable_input(true);
    room->set_msaa_3d(Viewport::MSAA_4X);
    room->set_update_mode(SubViewport::UPDATE_DISABLED);
    Ref<Environment> air;
    air.instantiate();
    air->set_background(Environment::BG_COLOR);
    air->set_bg_color(Color(0, 0, 0)); // clear: crop_picture reckons with black under soft edges
    air->set_ambient_source(Environment::AMBIENT_SOURCE_COLOR);
    air->set_ambient_light_color(Color::html("b7c0e6"));
    air->set_ambient_light_energy(0.46f);
    WorldEnvironment *world = memnew(WorldEnvironment);
    world->set_environment(air);
    room->add_child(world);
    camera = memnew(Camera3D);
    camera->set_projection(Camera3D::PROJECTION_ORTHOGONAL);
    room->add_child(camera);
    // The lamps hang on the camera: every picture is lit from the same side.
    add_lamp(camera, Vector3(-38, -32, 0), Color::html("fff3df"), 0.72f);
    add_lamp(camera, Vector3(-6, 62, 0), Color::html("cfd8ff"), 0.18f);
    home->add_child(room);
    camera->make_current();
}

IconStudio::~IconStudio() {
    if (live_room) {
        room->queue_free();
    }
}

void IconStudio::pose(const String &key, Node3D *node) {
    if (model != nullptr) {
        model->queue_free();
        model->set_visible(false);
    }
    model = node;
    room->add_child(model);
    wear_studio_paint(model);
    const Angle &angle = angle_of(key);
    aim(angle.yaw, angle.pitch);
    room->set_update_mode(SubViewport::UPDATE_ONCE);
    asked_at = Engine::get_singleton()->get_frames_drawn();
}

void IconStudio::aim(float yaw, float pitch) {
    camera->set_rotation_degrees(Vector3(-pitch, yaw, 0));
    camera->set_position(Vector3());
    AABB seen;
    bool any = false;
    const Transform3D place = camera->get_global_transform();
    grow(seen, any, model, place.affine_inverse());
    if (!any) {
        seen = AABB(Vector3(-0.5f, -0.5f, -0.5f), Vector3(1, 1, 1));
    }
    const float side = std::max({seen.size.x, seen.size.y, 0.05f});
    const Vector3 middle = seen.get_center();
    camera->set_size(side * 1.04f);
    camera->set_near(0.05f);
    camera->set_far(seen.size.z + 2.0f);
    camera->set_position(place.basis.xform(Vector3(middle.x, middle.y, seen.position.z + seen.size.z + 1.0f)));
}

bool IconStudio::drawn() const {
    return Engine::get_singleton()->get_frames_drawn() > asked_at;
}

Ref<Image> IconStudio::take(int side) const {
    const Ref<Image> painted = room->get_texture()->get_image();
    if (painted.is_null() || painted->is_empty()) {
        return Ref<Image>();
    }
    painted->convert(Image::FORMAT_RGBA8);
    const PackedByteArray bytes = painted->get_data();
    const int size = painted->get_width();
    if (bytes.size() != static_cast<int64_t>(size) * size * 4) {
        return Ref<Image>();
    }
    std::vector<uint8_t> kept = rules::crop_picture(bytes.ptr(), size, side, margin);
    if (kept.empty()) {
        return Ref<Image>();
    }
    rules::rim_picture(kept, side, outline);
    PackedByteArray out;
    out.resize(static_cast<int64_t>(kept.size()));
    std::copy(kept.begin(), kept.end(), out.ptrw());
    const Ref<Image> picture = Image::create_from_data(side, side, false, Image::FORMAT_RGBA8, out);
    picture->fix_alpha_edges();
    picture->generate_mipmaps();
    return picture;
}

} // namespace tilm
