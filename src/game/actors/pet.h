#pragma once
// A companion with a job: the dog chases foxes, the cat fetches cash, the pig digs, the horse carries.

#include <godot_cpp/variant/string.hpp>

#include "farm_animals/pet_core.h"

namespace tilm {
using namespace godot;

class PetYard;
class StackCore;
class Walker;

class Pet : public PetCore {
    GDCLASS(Pet, PetCore)

public:
    void _notification(int what);

    // It follows a friend's picture: neither works nor stays home.
    TM_FIELD(bool, remote, false)
    TM_FIELD(Vector3, wander_goal, Vector3())
    TM_FIELD(double, wander_timer, 0.0) // seconds to the next spot
    TM_FIELD(double, cash_clock, 0.0)   // the cat's share of a bill

    ~Pet() override;

    // Makes the model of a kind (see rules/pets.h); once, before it enters the tree or after. False for an unknown
    // kind.
    bool setup(const String &pet_kind, Object *farm, Object *leader);
    String get_kind() const { return kind; }
    void set_world(Object *farm);
    Object *get_world() const { return world.get(); }
    Node3D *get_model() const { return model; }

    // Horse only: its size, its cart and what the cart adds to the lead's stack.
    void set_gear(int64_t horse_lv, int64_t cart_lv);
    int64_t get_horse_lv() const { return horse_level; }
    int64_t get_cart_lv() const { return cart_level; }
    Node3D *get_cart() const { return cart.get(); }
    // Stands near the lead from now on.
    void place();
    void think(double dt);
    void horse_tick();
    void _work(const Vector3 &at, double dt);
    // Where it would work now; false without any such place.
    bool work_goal(Vector3 &at) const;

protected:
    static void _bind_methods();

private:
    Walker *leader() const;
    StackCore *lead_stack() const;
    bool is_home() const;
    void heel();
    void wander(double dt);
    Vector3 into_land(const Vector3 &p) const;
    bool cash_goal(Vector3 &at) const;
    void fetch_cash(const Vector3 &at, double dt);
    void build_cart();
    void join();

    String kind;
    int row = -1; // in rules::pets()
    LiveRef<Object> world;
    PetYard *yard = nullptr; // of `world`, valid while that lives
    Node3D *model = nullptr;
    LiveRef<Node3D> cart;
    int horse_level = 1;
    int cart_level = 0;
};

} // namespace tilm
