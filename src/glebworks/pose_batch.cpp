#include "glebworks/pose_batch.h"

#include <unordered_map>
#include <vector>

#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/transform3d.hpp>

#include "glebworks/live_ref.h"
#include "statics.h"

namespace tilm {

namespace {

constexpr int max_limbs = 4;
constexpr int full_visit_every = 10; // calls of sync_poses()

struct Pose {
    uint64_t root_id = 0; // 0: a free place
    LiveRef<Node3D> body;
    LiveRef<Node3D> limbs[max_limbs];
    Ref<MultiMesh> mesh;
    Transform3D transform;
    Color angles;
    bool fresh = true; // not yet written
    bool marked = false;
};

// Places are never moved, so that a walker can keep the number of its pose.
struct Batch {
    std::vector<Pose> poses;
    std::vector<int> free_places;
    std::vector<int> moved;
    std::unordered_map<uint64_t, int> by_root;
    int calls = 0;
    int written = 0;
};

Batch *batch = nullptr;

Batch &the_batch() {
    if (batch == nullptr) {
        batch = new Batch;
        Statics::on_release([] {
            delete batch;
            batch = nullptr;
        });
    }
    return *batch;
}

void drop(Batch &b, int place) {
    Pose &pose = b.poses[static_cast<size_t>(place)];
    b.by_root.erase(pose.root_id);
    pose = Pose();
    b.free_places.push_back(place);
}

// False when the model is gone.
bool sync(Batch &b, Pose &pose) {
    Node3D *body = pose.body.get();
    if (body == nullptr) {
        return false;
    }
    const Transform3D transform = body->get_transform();
    float angles[max_limbs] = {};
    for (int i = 0; i < max_limbs; ++i) {
        if (const Node3D *limb = pose.limbs[i].get()) {
            angles[i] = static_cast<float>(limb->get_rotation().x);
        }
    }
    const Color packed(angles[0], angles[1], angles[2], angles[3]);
    const bool turned = pose.fresh || packed != pose.angles;
    const bool moved = pose.fresh || transform != pose.transform;
    if (turned) {
        pose.angles = packed;
        pose.mesh->set_instance_custom_data(0, packed);
    }
    if (moved) {
        pose.transform = transform;
        pose.mesh->set_instance_transform(0, transform);
    }
    pose.fresh = false;
    b.written += turned || moved ? 1 : 0;
    return true;
}

} // namespace

void PoseBatch::pose_add(Node3D *root, Node3D *body, const Array &limbs, const Ref<MultiMesh> &mm) {
    if (root == nullptr || body == nullptr || mm.is_null() || mm->get_instance_count() < 1) {
        ERR_PRINT("TILMARCH pose_add: needs a root, a body and a mesh with an instance");
        return;
    }
    Batch &b = the_batch();
    const uint64_t id = static_cast<uint64_t>(root->get_instance_id());
    int place = find(root);
    if (place < 0) {
        if (b.free_places.empty()) {
            place = static_cast<int>(b.poses.size());
            b.poses.emplace_back();
        } else {
            place = b.free_places.back();
            b.free_places.pop_back();
        }
        b.by_root[id] = place;
    }
    Pose pose;
    pose.root_id = id;
    pose.body.set(body);
    pose.mesh = mm;
    for (int i = 0; i < max_limbs && i < limbs.size(); ++i) {
        const Variant &limb = limbs[i];
        pose.limbs[i].set(Object::cast_to<Node3D>(limb.get_validated_object()));
    }
    b.poses[static_cast<size_t>(place)] = pose;
    mark_moved(place);
}

void PoseBatch::sync_poses() {
    Batch &b = the_batch();
    b.written = 0;
    const bool all = b.calls++ % full_visit_every == 0;
    if (all) {
        for (size_t i = 0; i < b.poses.size(); ++i) {
            b.poses[i].marked = false;
            if (b.poses[i].root_id != 0 && !sync(b, b.poses[i])) {
                drop(b, static_cast<int>(i));
            }
        }
    } else {
        for (int place : b.moved) {
            Pose &pose = b.poses[static_cast<size_t>(place)];
            if (pose.marked && pose.root_id != 0 && !sync(b, pose)) {
                drop(b, place);
            }
            pose.marked = false;
        }
    }
    b.moved.clear();
}

void PoseBatch::push_moving(const Ref<MultiMesh> &mm, const Array &owners) {
    if (mm.is_null()) {
        return;
    }
    const int64_t room = mm->get_instance_count();
    int64_t n = 0;
    for (int64_t i = 0; i < owners.size() && n < room; ++i) {
        const Variant &owner = owners[i];
        Node3D *node = Object::cast_to<Node3D>(owner.get_validated_object());
        if (node != nullptr && node->is_inside_tree()) {
            mm->set_instance_transform(static_cast<int32_t>(n++), node->get_global_transform());
        }
    }
    mm->set_visible_instance_count(static_cast<int32_t>(n));
}

int PoseBatch::find(const Node3D *root) {
    if (root == nullptr) {
        return -1;
    }
    Batch &b = the_batch();
    auto it = b.by_root.find(static_cast<uint64_t>(root->get_instance_id()));
    return it == b.by_root.end() ? -1 : it->second;
}

void PoseBatch::mark_moved(int place) {
    if (place < 0) {
        return;
    }
    Batch &b = the_batch();
    if (static_cast<size_t>(place) >= b.poses.size() || b.poses[static_cast<size_t>(place)].marked) {
        return;
    }
    b.poses[static_cast<size_t>(place)].marked = true;
    b.moved.push_back(place);
}

int PoseBatch::count() {
    return static_cast<int>(the_batch().by_root.size());
}

int PoseBatch::written() {
    return the_batch().written;
}

} // namespace tilm
