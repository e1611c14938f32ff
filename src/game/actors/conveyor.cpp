#include "game/actors/conveyor.h"

#include "game/art/truck_models.h"
#include "game/sound/sfx.h"
#include "names.h"

namespace tilm {

Conveyor *Conveyor::build(const Array &path, const Array &kinds, PileCore *from, const Ref<ZoneCore> &to) {
    Conveyor *belt = memnew(Conveyor);
    belt->points = path;
    belt->set_kinds(kinds);
    belt->set_src(from);
    belt->set_dst(to);
    return belt;
}

void Conveyor::_ready() {
    if (in_editor()) {
        return;
    }
    set_as_top_level(true);
    set_global_transform(Transform3D());
    if (points.size() < 2) {
        return; // joined by hand, without looks
    }
    core_join(points, Sfx::get());
    draw();
}

void Conveyor::draw() {
    for (int64_t i = 0; i + 1 < points.size(); i++) {
        if (points[i].get_type() != Variant::VECTOR3 || points[i + 1].get_type() != Variant::VECTOR3) {
            continue;
        }
        const Vector3 a = points[i];
        const Vector3 b = points[i + 1];
        const float length = (float)a.distance_to(b);
        if (!(length > 0.01f) || !(length < 1000.0f)) {
            continue;
        }
        Node3D *piece = truck_models::belt_piece(length, (float)height);
        add_child(piece);
        // A piece lies along -z.
        piece->set_position(a.lerp(b, 0.5f));
        piece->set_rotation(Vector3(0, std::atan2(-(b.x - a.x), -(b.z - a.z)), 0));
        strips.push_back(piece->get_node_or_null(NodePath("Strip")));
    }
    set_belt_speed(speed);
}

void Conveyor::set_belt_speed(double v) {
    set_speed(v);
    for (int64_t i = 0; i < strips.size(); i++) {
        if (MeshInstance3D *strip = Object::cast_to<MeshInstance3D>(strips[i].get_validated_object())) {
            strip->set_material_override(truck_models::belt_material(v));
        }
    }
}

void Conveyor::_bind_methods() {
    ClassDB::bind_static_method("Conveyor", D_METHOD("build", "path", "kinds", "from", "to"), &Conveyor::build);
    ClassDB::bind_method(D_METHOD("set_belt_speed", "v"), &Conveyor::set_belt_speed);
    TM_BIND_FIELD(Conveyor, Variant::ARRAY, points);
}

} // namespace tilm
