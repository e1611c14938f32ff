#pragma once
// A square price tile on the ground: drains money while the player stands on it and sends `completed` when it is full.

#include <godot_cpp/classes/label3d.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/variant/dictionary.hpp>

#include "rules/tiles.h"

namespace tilm {
using namespace godot;

class Farm;

class UnlockTile : public Node3D {
    GDCLASS(UnlockTile, Node3D)

public:
    // Signal completed(tile): emitted at once when the price is paid, the tile shrinks away afterwards.

    // `d` plan entry, `already_paid` money in the tile, `t` label, `c` price, `lvl` level being bought from 0.
    void setup(const Dictionary &d, int64_t already_paid, const String &t, int64_t c, int lvl);
    // The still parts of an entry's tile, in one baked model.
    static Node3D *plate_model(const String &id, const String &kind, const String &product);
    // Half side of the square the player must stand in.
    double half() const { return rules::tile_half(sign_scale); }
    int64_t remaining() const { return drain.remaining(); }
    // The player stands here: `world` is the farm's node (or the C++ port).
    void on_stand(Object *world, double dt);
    void stand(Farm &farm, double dt);
    void on_leave();
    // Everything is paid: ends the tile.
    void finish();
    // Fills the tile without draining, the money having been paid by the caller, and ends it.
    void fill();
    void redraw();

    Dictionary get_data() const { return data; }
    String entry_id() const { return entry_key; }
    String entry_kind() const { return entry_type; }
    String product() const { return data.get("product", String()); }
    int64_t get_total() const { return drain.total; }
    int64_t get_paid() const { return drain.paid; }
    void set_paid(int64_t v) { drain.paid = rules::paid_at_setup(v, drain.total); }
    bool is_done() const { return done; }
    int get_level() const { return level; }
    String get_title() const { return title; }
    void set_title(const String &t);
    double get_sign_scale() const { return sign_scale; }
    double get_stand_time() const { return drain.stand_time; }
    double get_drain_acc() const { return drain.drain_acc; }

    void _ready() override;

protected:
    static void _bind_methods();

private:
    void build_plate();
    void trickle(bool on);

    Dictionary data;
    String entry_key;
    String entry_type;
    rules::TileDrain drain;
    bool done = false;
    bool trickling = false;
    int level = 0;
    String title;
    double sign_scale = 1;
    MeshInstance3D *fill_plate = nullptr;
    Label3D *title_label = nullptr;
    Label3D *price_label = nullptr;
};

} // namespace tilm
