#include "game/actors/crop_field.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/multi_mesh_instance3d.hpp>

#include "game/actors/pile.h"
#include "game/actors/zone.h"
#include "game/art/buildings.h"
#include "game/art/models.h"
#include "game/art/scenery.h"
#include "game/data/farm_data.h"
#include "game/ports/farm.h"
#include "names.h"
#include "rules/field_rules.h"

namespace tilm {

namespace {

constexpr int pallet_room = 45;

bool framed(const String &crop) {
    return crop == "wheat" || crop == "sunflower";
}

Node3D *soil_bed(const String &crop, const Vector2 &size) {
    return Buildings::field_bed(size, FarmData::bed_colors().get(crop, Color(0.55f, 0.4f, 0.25f)), framed(crop));
}

void fence_off(Node3D *field, const Vector2 &size) {
    // The front stays open for people and machines.
    const Vector2 half = size * 0.5f + Vector2(0.45f, 0.45f);
    Node3D *back = Scenery::rail_fence(half.x * 2);
    back->set_position(Vector3(0, 0, -half.y));
    field->add_child(back);
    for (const float side : {-1.0f, 1.0f}) {
        Node3D *flank = Scenery::rail_fence(half.y * 2);
        flank->set_position(Vector3(side * half.x, 0, 0));
        flank->set_rotation(Vector3(0, 1.5708f, 0));
        field->add_child(flank);
    }
}

// A price tile that reaches under the pallet must keep its price in sight, so the pallet gives way a little in its
// zone.
float step_aside(const Vector2 &at) {
    constexpr float apart_x = 2.45f, apart_z = 2.4f, most = 0.45f;
    const Array plan = FarmData::plan();
    for (int64_t i = 0; i < plan.size(); i++) {
        const Dictionary other = plan[i];
        const Vector2 way = at - static_cast<Vector2>(other.get(TM_NAME("pos"), Vector2(INFINITY, INFINITY)));
        if (std::abs(way.x) < apart_x && std::abs(way.y) < apart_z) {
            return std::copysign(std::min(most, apart_x - std::abs(way.x)), way.x);
        }
    }
    return 0;
}

} // namespace

CropField *CropField::build(const Dictionary &entry) {
    const Rect2 r = entry.get(TM_NAME("rect"), Rect2());
    const String crop = entry.get(TM_NAME("crop"), String());
    if (crop.is_empty() || !(r.size.x >= rules::cell_spacing && r.size.y >= rules::cell_spacing)) {
        ERR_PRINT("TILMARCH field " + static_cast<String>(entry.get(TM_NAME("id"), String())) +
                  ": no crop or no ground");
        return nullptr;
    }
    CropField *field = memnew(CropField);
    field->id = entry.get(TM_NAME("id"), String());
    field->entry = entry;
    const Vector2 middle = r.get_center();
    field->set_position(Vector3(middle.x, 0, middle.y));
    field->crop = crop;
    return field;
}

void CropField::warm(const Dictionary &entry) {
    const Rect2 r = entry.get(TM_NAME("rect"), Rect2());
    const String k = entry.get(TM_NAME("crop"), String());
    Node3D *frame = memnew(Node3D);
    fence_off(frame, r.size);
    frame->add_child(soil_bed(k, r.size));
    memdelete(frame);
}

void CropField::_ready() {
    if (in_editor() || entry.is_empty()) {
        return;
    }
    const Dictionary e = entry;
    entry = Dictionary();
    const Rect2 r = e.get(TM_NAME("rect"), Rect2());
    fence_off(this, r.size);
    setup(crop, r);
    build_pallet(e.get(TM_NAME("pallet"), Vector2(r.position.x, r.position.y + r.size.y + 2)));
}

void CropField::setup(const String &k, const Rect2 &r) {
    crop = k;
    for (LiveRef<Node> *old : {&bed, &plants}) {
        if (Node *node = old->get()) {
            node->queue_free();
        }
    }
    Node3D *soil = soil_bed(k, r.size);
    const Vector2 middle = r.get_center();
    soil->set_position(Vector3(middle.x, 0, middle.y) - get_position());
    add_child(soil);
    bed.set(soil);
    Ref<MultiMesh> mm;
    mm.instantiate();
    mm->set_transform_format(MultiMesh::TRANSFORM_3D);
    mm->set_mesh(Models::crop_mesh(k));
    // Without a box of its own the engine would measure all plants again at each cut.
    mm->set_custom_aabb(
        AABB(Vector3(r.position.x - 1, -0.2f, r.position.y - 1), Vector3(r.size.x + 2, 2.4f, r.size.y + 2)));
    MultiMeshInstance3D *rows = memnew(MultiMeshInstance3D);
    rows->set_multimesh(mm);
    rows->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    // Plants are placed on the world's ground, whatever the field's own position.
    rows->set_as_top_level(true);
    add_child(rows);
    plants.set(rows);
    core_build(mm, r, 0.08, k == "wheat");
}

void CropField::build_pallet(const Vector2 &at) {
    const Vector3 spot(at.x, 0, at.y);
    const Vector3 local = spot - get_position() + Vector3(step_aside(at), 0, 0);
    Node3D *slab = Buildings::pallet();
    slab->set_position(local);
    add_child(slab);
    Pile *pile = memnew(Pile);
    pile->set_cols(4);
    pile->set_rows(4);
    pile->set_spacing(Vector2(0.54f, 0.54f));
    pile->set_layer_h(FarmData::item_height(crop));
    pile->set_max_items(pallet_room);
    pile->set_show_limit(32);
    pile->set_position(local + Vector3(0, 0.16f, 0));
    add_child(pile);
    pallet.set(pile);
    take_zone = Zone::make("take", pile, spot, Vector2(3.2f, 3.2f), id);
    take_zone->set_makes(crop);
    if (Farm *farm = Farm::current()) {
        farm->zone_list().push_back(take_zone);
    }
}

Vector3 CropField::centre() const {
    const Vector2 middle = get_rect().get_center();
    return Vector3(middle.x, 0, middle.y);
}

Vector3 CropField::drop_spot(int i, int n) const {
    const PileCore *pile = pallet.get();
    const Vector3 base = pile != nullptr ? pile->get_global_position() : centre();
    return Vector3(base.x + 0.4f * static_cast<float>(i) - 0.6f + 0.15f * static_cast<float>(n), 0, base.z - 1.6f);
}

void CropField::_bind_methods() {
    ClassDB::bind_method(D_METHOD("setup", "k", "r"), &CropField::setup);
    ClassDB::bind_static_method("CropField", D_METHOD("build", "entry"), &CropField::build);
    ClassDB::bind_method(D_METHOD("get_crop"), &CropField::get_crop);
    ClassDB::bind_method(D_METHOD("get_id"), &CropField::get_id);
    ClassDB::bind_method(D_METHOD("get_pallet"), &CropField::get_pallet);
    ClassDB::bind_method(D_METHOD("get_take_zone"), &CropField::get_take_zone);
    ClassDB::bind_method(D_METHOD("get_cells"), &CropField::get_cells);
    ClassDB::bind_method(D_METHOD("centre"), &CropField::centre);
    ClassDB::bind_method(D_METHOD("drop_spot", "i", "n"), &CropField::drop_spot);
}

} // namespace tilm
