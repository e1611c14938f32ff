#pragma once
// A shopper: stands in line with a mood over its head and an order in its bubble, takes its goods and walks out.

#include <godot_cpp/classes/label3d.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/tween.hpp>

#include "farm_items/item_core.h"
#include "farm_shop/customer_brain.h"
#include "game/actors/walker.h"

namespace tilm {
using namespace godot;

class Customer : public Walker {
    GDCLASS(Customer, Walker)

public:
    static constexpr int pool_limit = 8;

    // `amount` units, 2 more for a VIP. Makes the model; once in a life.
    void setup(const String &product, int64_t amount, bool is_vip);
    // A pooled customer comes again.
    void reuse(int64_t amount, bool as_vip);
    void change_order(const String &k);
    double mood_mult() const;
    void pop_text(const String &t);
    void show_bubble(bool on);
    void receive(ItemCore *it);
    void mood_changed(double m);
    void lift_face(bool up);
    void gone();

    // Where it goes when it is done; the Array is shared with the counter. Without one it frees itself.
    void set_pool(const Array &p);
    void clear_pool();
    Ref<CustomerBrain> mind() const { return customer_brain; }

    // Makes the fixed set of outfits.
    static void setup_statics();
    // Bakes what customers wear and carry over their heads.
    static void warm();

protected:
    static void _bind_methods();

private:
    void make_bubble();
    void show_number();
    void show_crown(bool on);
    void pulse(double seconds);
    void stop_tweens();

    Ref<CustomerBrain> customer_brain;
    Array pool;
    bool pooled = false;
    bool order_done = false; // as the bubble's colour tells
    Label3D *mood_label = nullptr;
    Node3D *bubble = nullptr;
    MeshInstance3D *cloud = nullptr;
    MeshInstance3D *icon = nullptr;
    Label3D *number = nullptr;
    MeshInstance3D *crown = nullptr;
    Ref<Tween> text_tween;
    Ref<Tween> pulse_tween;
};

} // namespace tilm
