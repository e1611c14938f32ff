#include "game/shell/land.h"

#include <godot_cpp/classes/property_tweener.hpp>
#include <godot_cpp/classes/tween.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/callable_method_pointer.hpp>

#include "game/art/scenery.h"
#include "game/data/farm_data.h"
#include "names.h"

namespace tilm {

namespace {

constexpr float HALF_REGION = 12.0f;
constexpr int WORDS_A_FRAME = 3; // lands; big glyphs are slow to lay out
constexpr float WALK_BACK = -31.0f;
constexpr float WALK_DEPTH = 36.2f;
constexpr float EDGE = 0.6f;
constexpr float FENCE_LENGTH = 37.2f;
constexpr float FENCE_Z = -12.9f;
// How covers and fences sink away, seconds; while the land is shown they wait for the camera.
constexpr double COVER_DEPTH = 0.6;
constexpr double COVER_WAIT = 0.75;
constexpr double COVER_SECONDS = 0.8;
constexpr double FENCE_DEPTH = 1.8;
constexpr double FENCE_WAIT = 0.9;
constexpr double FENCE_SECONDS = 0.6;

} // namespace

void Land::build(Node3D *in_world) {
    world = in_world;
    Array rows = FarmData::regions();
    for (int i = 0; i < rows.size(); i++) {
        Dictionary row = rows[i];
        String id = row["id"];
        Node3D *sign = Scenery::region_sign();
        sign->set_position(Vector3(static_cast<double>(row["x"]) + 9.2, 0, 6.6));
        world->add_child(sign);
        signs.push_back(sign->get_instance_id());
        if (id == "eggs") {
            continue;
        }
        Node3D *cover = Scenery::cover(row["x"]);
        world->add_child(cover);
        covers[id] = cover;
    }
    refresh_fences(true, false);
}

bool Land::write_words() {
    Array rows = FarmData::regions();
    for (int i = 0; i < WORDS_A_FRAME && next_words < rows.size(); i++, next_words++) {
        Dictionary row = rows[next_words];
        if (Node3D *sign = Object::cast_to<Node3D>(ObjectDB::get_instance(signs[static_cast<size_t>(next_words)]))) {
            Scenery::sign_words(sign, row["title"]);
        }
        if (covers.has(row["id"])) {
            Scenery::cover_words(Object::cast_to<Node3D>(covers[row["id"]]), row["title"], row["x"]);
        }
    }
    return next_words >= rows.size();
}

void Land::open(const String &region, bool quiet, bool shown) {
    if (FarmData::region_by_id(region).is_empty()) {
        ERR_PRINT("TILMARCH unknown region " + region + ": not opened");
        return;
    }
    regions[region] = true;
    if (covers.has(region)) {
        Node3D *cover = Object::cast_to<Node3D>(covers[region]);
        covers.erase(region);
        if (cover && quiet) {
            cover->queue_free();
        } else if (cover) {
            sink(cover, COVER_DEPTH, shown ? COVER_WAIT : 0.0, COVER_SECONDS);
        }
    }
    refresh_fences(quiet, shown);
    work_out_areas();
}

// A fence runs along each edge between an open and a closed region.
void Land::refresh_fences(bool quiet, bool shown) {
    Array rows = FarmData::regions();
    for (int i = 0; i + 1 < rows.size(); i++) {
        Dictionary left = rows[i];
        Dictionary right = rows[i + 1];
        double x = (static_cast<double>(left["x"]) + static_cast<double>(right["x"])) / 2.0;
        bool wanted = regions.has(left["id"]) != regions.has(right["id"]);
        bool stands = fences.has(x);
        if (wanted && !stands) {
            Node3D *fence = Scenery::fence(FENCE_LENGTH);
            fence->set_position(Vector3(x, 0, FENCE_Z));
            world->add_child(fence);
            fences[x] = fence;
        } else if (!wanted && stands) {
            Node3D *fence = Object::cast_to<Node3D>(fences[x]);
            fences.erase(x);
            if (fence && quiet) {
                fence->queue_free();
            } else if (fence) {
                sink(fence, FENCE_DEPTH, shown ? FENCE_WAIT : 0.0, FENCE_SECONDS);
            }
        }
    }
}

void Land::sink(Node3D *node, double depth, double wait, double seconds) const {
    Ref<Tween> tween = node->create_tween();
    if (wait > 0) {
        tween->tween_interval(wait);
    }
    tween->tween_property(node, NodePath("position:y"), node->get_position().y - depth, seconds);
    tween->tween_callback(Callable(node, "queue_free"));
}

void Land::work_out_areas() {
    Rect2 service;
    bool service_open = false;
    bool any = false;
    float left = 0;
    float right = 0;
    Array rows = FarmData::regions();
    for (int i = 0; i < rows.size(); i++) {
        Dictionary row = rows[i];
        String id = row["id"];
        if (!regions.has(id)) {
            continue;
        }
        float x = row["x"];
        if (id == "service") {
            service_open = true;
            service = Rect2(x - HALF_REGION, 0, 2 * HALF_REGION, 0);
            continue;
        }
        left = any ? MIN(left, x - HALF_REGION) : x - HALF_REGION;
        right = any ? MAX(right, x + HALF_REGION) : x + HALF_REGION;
        any = true;
    }
    second = Rect2();
    if (service_open && any && service.get_end().x + 0.1f >= left) {
        left = service.position.x;
    } else if (service_open) {
        second = Rect2(service.position.x + EDGE, WALK_BACK, service.size.x - 2 * EDGE, WALK_DEPTH);
    }
    if (any) {
        first = Rect2(left + EDGE, WALK_BACK, right - left - 2 * EDGE, WALK_DEPTH);
    }
}

} // namespace tilm
