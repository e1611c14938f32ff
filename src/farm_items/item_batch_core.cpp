#include "farm_items/item_batch_core.h"

#include <cmath>

#include <godot_cpp/classes/mesh.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/variant/aabb.hpp>

#include "farm_items/item_core.h"
#include "fields.h"

namespace tilm {

namespace {

constexpr int first_room = 8;

ItemBatchCore *current_batch = nullptr;
double band_min = -31.0;
double band_max = 5.2;

Transform3D instance_transform(const ItemCore *it) {
    return it->get_global_transform();
}

} // namespace

ItemBatchCore::ItemBatchCore() = default;

ItemBatchCore::~ItemBatchCore() {
    // Leaving the tree has emptied it.
    if (current_batch == this) {
        current_batch = nullptr;
    }
}

void ItemBatchCore::_bind_methods() {
    ClassDB::bind_static_method("ItemBatchCore", D_METHOD("configure", "zmin", "zmax"), &ItemBatchCore::configure);
    ClassDB::bind_static_method("ItemBatchCore", D_METHOD("add_self", "it"), &ItemBatchCore::add_self);
    ClassDB::bind_method(D_METHOD("push"), &ItemBatchCore::push);
    ClassDB::bind_method(D_METHOD("stats"), &ItemBatchCore::stats);
    TM_BIND_FIELD(ItemBatchCore, Variant::OBJECT, mat);
}

ItemBatchCore *ItemBatchCore::current() {
    return current_batch;
}

void ItemBatchCore::configure(double zmin, double zmax) {
    if (!(zmin <= zmax) || !std::isfinite(zmin) || !std::isfinite(zmax)) {
        ERR_PRINT("ItemBatchCore: a band whose ends are no numbers in order was ignored.");
        return;
    }
    band_min = zmin;
    band_max = zmax;
}

void ItemBatchCore::_notification(int what) {
    switch (what) {
    case NOTIFICATION_ENTER_TREE:
        if (current_batch && current_batch != this) {
            WARN_PRINT("ItemBatchCore: a second batch takes over from the first.");
            current_batch->drop_all();
        }
        current_batch = this;
        break;
    case NOTIFICATION_EXIT_TREE:
        drop_all();
        if (current_batch == this) {
            current_batch = nullptr;
        }
        break;
    default:
        break;
    }
}

void ItemBatchCore::set_mat(const Ref<Material> &m) {
    mat = m;
    for (auto &[key, chunk] : resting) {
        chunk->node->set_material_override(mat);
    }
    for (auto &[key, chunk] : moving) {
        chunk->node->set_material_override(mat);
    }
}

ItemChunk *ItemBatchCore::chunk_of(ItemCore *it, bool moves, double x) {
    MeshInstance3D *shape = it->get_mesh_node();
    if (!shape) {
        return nullptr;
    }
    const Ref<Mesh> mesh = shape->get_mesh();
    if (mesh.is_null()) {
        return nullptr;
    }
    const int32_t column = moves ? 0 : (int32_t)std::floor(x / column_width);
    const uint64_t mesh_id = mesh->get_instance_id();
    std::unique_ptr<ItemChunk> &slot = moves ? moving[mesh_id] : resting[ChunkKey{mesh_id, column}];
    if (slot) {
        return slot.get();
    }
    slot = std::make_unique<ItemChunk>();
    ItemChunk &chunk = *slot;
    chunk.moving = moves;
    chunk.buffer.instantiate();
    chunk.buffer->set_transform_format(MultiMesh::TRANSFORM_3D);
    chunk.buffer->set_mesh(mesh);
    const real_t z0 = (real_t)band_min;
    const real_t depth = (real_t)(band_max - band_min);
    const AABB box =
        moves ? AABB(Vector3(-800, -5, z0 - 30), Vector3(1600, 60, depth + 60))
              : AABB(Vector3((real_t)(column * column_width - 3.0), -1, z0 - 6), Vector3(18, 24, depth + 26));
    chunk.buffer->set_custom_aabb(box);
    chunk.node = memnew(MultiMeshInstance3D);
    chunk.node->set_as_top_level(true);
    chunk.node->set_multimesh(chunk.buffer);
    chunk.node->set_custom_aabb(box);
    chunk.node->set_material_override(mat);
    chunk.node->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    chunk.node->set_visible(false);
    add_child(chunk.node, false, INTERNAL_MODE_BACK);
    return slot.get();
}

int ItemBatchCore::join(ItemChunk &chunk, ItemCore *it) {
    const int index = (int)chunk.members.size();
    const Transform3D at = instance_transform(it);
    if (index == chunk.room) {
        chunk.room = chunk.room == 0 ? first_room : chunk.room * 2;
        chunk.buffer->set_instance_count(chunk.room);
        for (int i = 0; i < index; i++) {
            chunk.buffer->set_instance_transform(i, chunk.written[(size_t)i]);
        }
    }
    chunk.members.push_back(it);
    chunk.written.push_back(at);
    chunk.buffer->set_instance_transform(index, at);
    chunk.buffer->set_visible_instance_count(index + 1);
    if (index == 0) {
        chunk.node->set_visible(true);
    }
    return index;
}

void ItemBatchCore::leave(ItemChunk &chunk, int index) {
    const int last = (int)chunk.members.size() - 1;
    if (index != last) {
        ItemCore *moved = chunk.members[(size_t)last];
        chunk.members[(size_t)index] = moved;
        chunk.written[(size_t)index] = chunk.written[(size_t)last];
        (chunk.moving ? moved->fly_index : moved->rest_index) = index;
        chunk.buffer->set_instance_transform(index, chunk.written[(size_t)index]);
    }
    chunk.members.pop_back();
    chunk.written.pop_back();
    chunk.buffer->set_visible_instance_count(last);
    if (last == 0) {
        chunk.node->set_visible(false);
    }
}

void ItemBatchCore::add_self(ItemCore *it) {
    if (!it) {
        ERR_PRINT("ItemBatchCore.add_self was given no item.");
        return;
    }
    if (!current_batch || it->rest_chunk || it->rig_is_shown || !it->is_inside_tree() || !it->is_visible_in_tree()) {
        return;
    }
    remove_moving(it);
    ItemChunk *chunk = current_batch->chunk_of(it, false, it->get_global_position().x);
    if (chunk) {
        it->rest_index = join(*chunk, it);
        it->rest_chunk = chunk;
    }
    it->refresh_mesh();
}

void ItemBatchCore::add_moving(ItemCore *it) {
    if (!current_batch || it->fly_chunk || it->rig_is_shown) {
        return;
    }
    remove_rest(it);
    ItemChunk *chunk = current_batch->chunk_of(it, true, 0.0);
    if (chunk) {
        it->fly_index = join(*chunk, it);
        it->fly_chunk = chunk;
    }
    it->refresh_mesh();
}

void ItemBatchCore::remove_rest(ItemCore *it) {
    if (it->rest_chunk) {
        leave(*it->rest_chunk, it->rest_index);
        it->rest_chunk = nullptr;
        it->rest_index = -1;
    }
}

void ItemBatchCore::remove_moving(ItemCore *it) {
    if (it->fly_chunk) {
        leave(*it->fly_chunk, it->fly_index);
        it->fly_chunk = nullptr;
        it->fly_index = -1;
    }
}

void ItemBatchCore::push() {
    for (auto &[mesh, chunk] : moving) {
        const size_t n = chunk->members.size();
        for (size_t i = 0; i < n; i++) {
            const Transform3D at = instance_transform(chunk->members[i]);
            if (at != chunk->written[i]) {
                chunk->written[i] = at;
                chunk->buffer->set_instance_transform((int32_t)i, at);
            }
        }
    }
}

int64_t ItemBatchCore::stats() const {
    int64_t instances = 0;
    int64_t chunks = 0;
    const auto count = [&](const ItemChunk &chunk) {
        instances += (int64_t)chunk.members.size();
        chunks += chunk.members.empty() ? 0 : 1;
    };
    for (const auto &[key, chunk] : resting) {
        count(*chunk);
    }
    for (const auto &[key, chunk] : moving) {
        count(*chunk);
    }
    return (chunks << 32) | instances;
}

Transform3D ItemBatchCore::written_transform(const ItemCore *it) const {
    if (it && it->rest_chunk) {
        return it->rest_chunk->written[(size_t)it->rest_index];
    }
    return it && it->fly_chunk ? it->fly_chunk->written[(size_t)it->fly_index] : Transform3D();
}

void ItemBatchCore::drop_all() {
    const auto drop = [](ItemChunk &chunk) {
        for (ItemCore *it : chunk.members) {
            (chunk.moving ? it->fly_chunk : it->rest_chunk) = nullptr;
            (chunk.moving ? it->fly_index : it->rest_index) = -1;
            it->refresh_mesh();
        }
    };
    const auto empty = [&](auto &chunks) {
        for (auto &[key, chunk] : chunks) {
            drop(*chunk);
            chunk->node->queue_free();
        }
        chunks.clear();
    };
    empty(resting);
    empty(moving);
}

} // namespace tilm
