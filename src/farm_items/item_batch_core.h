#pragma once
// Draws resting goods (one buffer a mesh and 12-unit column of the world) and moving goods (one buffer a mesh).

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include <godot_cpp/classes/material.hpp>
#include <godot_cpp/classes/multi_mesh.hpp>
#include <godot_cpp/classes/multi_mesh_instance3d.hpp>
#include <godot_cpp/classes/node3d.hpp>

namespace tilm {
using namespace godot;

class ItemCore;
class ItemBatchCore;

// One MultiMesh and who is drawn in it; instance i belongs to member i.
struct ItemChunk {
    ItemBatchCore *owner = nullptr;
    MultiMeshInstance3D *node = nullptr;
    Ref<MultiMesh> buffer;
    std::vector<ItemCore *> members;
    std::vector<Transform3D> written; // what the buffer holds, moving chunks only compare with it
    int room = 0;
    bool moving = false;
};

class ItemBatchCore : public Node3D {
    GDCLASS(ItemBatchCore, Node3D)

public:
    static constexpr double column_width = 12.0;

    ItemBatchCore();
    ~ItemBatchCore() override;

    // The batch that is in the tree, null without one.
    static ItemBatchCore *current();

    // The band of world z that goods may lie in.
    static void configure(double zmin, double zmax);
    // Puts an item at rest into its chunk; does nothing without a batch.
    static void add_self(ItemCore *it);
    static void add_moving(ItemCore *it);
    // Takes the item out of its resting or moving chunk.
    static void remove_rest(ItemCore *it);
    static void remove_moving(ItemCore *it);

    // Writes the transforms of moving goods that changed. Once a frame, after the goods have stepped.
    void push();
    // Instances in the low 32 bits, non-empty chunks in the high 32.
    int64_t stats() const;

    void set_mat(const Ref<Material> &m);
    Ref<Material> get_mat() const { return mat; }

    // What a buffer was given for instance `i` of the item's chunk; for checks.
    Transform3D written_transform(const ItemCore *it) const;

protected:
    static void _bind_methods();
    void _notification(int what);

private:
    struct ChunkKey {
        uint64_t mesh = 0;
        int32_t column = 0;
        bool operator==(const ChunkKey &o) const { return mesh == o.mesh && column == o.column; }
    };
    struct ChunkHash {
        size_t operator()(const ChunkKey &k) const {
            return (size_t)(k.mesh * 0x9E3779B97F4A7C15ULL) ^ ((size_t)(uint32_t)k.column * 0x85EBCA6BU);
        }
    };

    ItemChunk *chunk_of(ItemCore *it, bool moving, double x);
    static int join(ItemChunk &chunk, ItemCore *it);
    static void leave(ItemChunk &chunk, int index);
    void drop_all();

    Ref<Material> mat;
    std::unordered_map<ChunkKey, std::unique_ptr<ItemChunk>, ChunkHash> resting;
    std::unordered_map<uint64_t, std::unique_ptr<ItemChunk>> moving;
};

} // namespace tilm
