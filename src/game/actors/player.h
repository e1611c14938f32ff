#pragma once
// The farmer that the joystick moves: slides round solids, stays on the land that is bought, carries goods and money.

#include <memory>
#include <vector>

#include <godot_cpp/classes/cpu_particles3d.hpp>
#include <godot_cpp/classes/label3d.hpp>
#include <godot_cpp/variant/rect2.hpp>

#include "game/actors/walker.h"
#include "glebworks/live_ref.h"

namespace tilm {
using namespace godot;

class MoneyStack;
class PlayerGear;

class Player : public Walker {
    GDCLASS(Player, Walker)

public:
    Player();
    ~Player() override;

    TM_FIELD(Vector3, input, Vector3()) // wished direction and strength, length 0..1
    TM_FIELD(double, speed_mult, 1.0)
    TM_FIELD(Rect2, first_area, Rect2(-1e6, -1e6, 2e6, 2e6)) // x and z
    TM_FIELD(Rect2, second_area, Rect2())                    // width 0: none
    TM_FIELD(double, free_roam, 0.0)                         // above 0: may leave the areas
    TM_FIELD(bool, max_muted, false)                         // the MAX! label stays away

    void _ready() override;
    void _process(double dt) override;
    // One step of `dt` seconds, as _process runs it.
    void step(double dt);

    // `chair` null stands up. `seat_y` is the seat's height above the ground.
    void sit_on(Node3D *chair, double seat_y);
    bool is_sitting() const { return chair.id() != 0; }
    // Is `p` on own land? Edges count. An infinite p asks for the position now.
    bool at_home(const Vector3 &p) const;
    Vector3 home_point() const;
    // `p` itself on own land, else the nearest place on the land of the home point.
    Vector3 nearest_land(const Vector3 &p) const;
    void set_look(const Dictionary &look);
    // Boost ids whose gear is worn from now on; others are taken off.
    void wear_boosts(const Array &ids);
    Array worn() const;
    // Boost id -> Array of the nodes that are worn for it.
    Dictionary get_gear() const;
    CPUParticles3D *get_trail() const;
    double get_gear_clock() const;
    double get_max_clock() const { return max_clock; }
    Node3D *get_chair() const { return chair.get(); }
    double get_seat_height() const { return seat_height; }

    void set_solids(const Array &rects);
    Array get_solids() const;
    void add_solid(const Rect2 &r) { solids.push_back(r); }
    void set_far_solids(const Array &rects);
    Array get_far_solids() const;

    MoneyStack *money_stack() const { return money; }

protected:
    static void _bind_methods();

private:
    void step_towers(double dt);
    bool step_chair(double dt);
    void stand_up(bool move_off);
    Vector3 keep_inside(const Vector3 &to) const;
    static Vector3 push_out(const Vector3 &p, const Rect2 &solid);
    void step_max(double dt);
    bool inside(const Vector3 &p) const;

    std::vector<Rect2> solids;
    std::vector<Rect2> far_solids;
    Vector3 home;
    bool has_home = false;
    double max_clock = 0.0;
    LiveRef<Node3D> chair;
    double seat_height = 0.0;
    std::unique_ptr<PlayerGear> gear;
    MoneyStack *money = nullptr;
    Label3D *max_label = nullptr;
    double tower_x = 0.0; // how far the two towers stand aside now
    double money_x = 0.0;
};

} // namespace tilm
