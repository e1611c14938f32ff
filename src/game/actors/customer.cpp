#include "game/actors/customer.h"

#include <algorithm>

#include <godot_cpp/classes/property_tweener.hpp>

#include "farm_items/goods_ledger.h"
#include "game/actors/person_look.h"
#include "game/actors/stack_carrier.h"
#include "game/art/models.h"
#include "names.h"

namespace tilm {

namespace {

constexpr double face_low = 2.25;
constexpr double face_high = 2.85;         // above the bubble
const Color happy(0.239f, 0.863f, 0.518f); // 3ddc84
const Color so_so(0.949f, 0.718f, 0.227f); // f2b73a
const Color angry(0.949f, 0.435f, 0.435f); // f26f6f
const Color ordered(0.16f, 0.2f, 0.3f);
const Color done_tint(0.68f, 0.93f, 0.72f);

Node3D *bubble_model(const Color &color) {
    Node3D *root = memnew(Node3D);
    Models::sphere(0.42f, color, Vector3(0, 0, -0.1), root, Vector3(1.25, 0.85, 0.16));
    Models::cyl(0.0f, 0.12f, 0.22f, color, Vector3(0, -0.4, -0.1), root, 8)->set_rotation(Vector3(Math_PI, 0, 0));
    return root;
}

Ref<ArrayMesh> bubble_mesh(bool done) {
    return Models::baked_mesh(done ? "order_bubble_done" : "order_bubble",
                              Models::builder([done] { return bubble_model(done ? done_tint : Color(1, 1, 1)); }));
}

Node3D *crown_model() {
    Node3D *root = memnew(Node3D);
    const Color gold(1.0f, 0.79f, 0.16f);
    Models::cyl(0.24f, 0.22f, 0.12f, gold, Vector3(0, 0.06, 0), root, 10);
    for (int i = 0; i < 5; ++i) {
        const double a = i * 2.0 * Math_PI / 5.0;
        Models::cyl(0.0f, 0.07f, 0.16f, gold, Vector3(std::sin(a) * 0.2, 0.18, std::cos(a) * 0.2), root, 6);
    }
    return root;
}

MeshInstance3D *crown_node() {
    return Models::bake("crown", Models::fn_node(&crown_model), false, true);
}

} // namespace

void Customer::warm() {
    bubble_mesh(false);
    bubble_mesh(true);
    memdelete(crown_node());
}

void Customer::setup_statics() {
    PersonLook::setup_statics();
}

void Customer::setup(const String &product, int64_t amount, bool is_vip) {
    if (customer_brain.is_valid()) {
        ERR_PRINT("TILMARCH customer set up twice: reuse() is for the second time");
        return;
    }
    customer_brain.instantiate();
    customer_brain->kind = product;
    customer_brain->vip = is_vip;
    customer_brain->want = amount + (is_vip ? 2 : 0);
    speed = 3.3;
    build(PersonLook::random_customer(is_vip));
    tower->set_capacity(99);
    tower->set_max_cols(1);
    tower->set_show_limit(4);
    mood_label = Models::label3d(":)", 34, happy, Vector3(0, face_low, 0), this);
    make_bubble();
    show_crown(is_vip);
    set_brain(customer_brain);
}

void Customer::reuse(int64_t amount, bool as_vip) {
    if (customer_brain.is_null()) {
        ERR_PRINT("TILMARCH customer reused before its setup");
        return;
    }
    stop_tweens();
    customer_brain->vip = as_vip;
    customer_brain->want = amount + (as_vip ? 2 : 0);
    customer_brain->reset();
    show_crown(as_vip);
    mood_label->set_text(":)");
    mood_label->set_font_size(56);
    mood_label->set_modulate(happy);
    mood_label->set_scale(Vector3(1, 1, 1));
    mood_label->set_position(Vector3(0, face_low, 0));
    bubble->set_scale(Vector3(1, 1, 1));
    show_number();
    show_bubble(false);
    clear_path();
    velocity = Vector3();
    idle = false;
    asleep = false;
    set_process(true);
}

void Customer::make_bubble() {
    bubble = memnew(Node3D);
    bubble->set_name("Bubble");
    bubble->set_position(Vector3(0, 2.24, 0));  // under the face at its raised height
    bubble->set_rotation(Vector3(-0.72, 0, 0)); // towards the camera, which looks down on it
    add_child(bubble);
    cloud = memnew(MeshInstance3D);
    cloud->set_name("Cloud");
    cloud->set_mesh(bubble_mesh(false));
    cloud->set_material_override(Models::vertex_material());
    cloud->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    bubble->add_child(cloud);
    icon = memnew(MeshInstance3D);
    icon->set_mesh(Models::item_mesh("item_" + customer_brain->kind));
    icon->set_material_override(Models::farm_material());
    icon->set_cast_shadows_setting(GeometryInstance3D::SHADOW_CASTING_SETTING_OFF);
    icon->set_position(Vector3(-0.22, -0.14, 0.05));
    icon->set_scale(Vector3(0.8, 0.8, 0.8));
    bubble->add_child(icon);
    number = Models::label3d("", 40, ordered, Vector3(0.24, 0, 0.06), bubble, true, 0);
    bubble->set_visible(false);
    customer_brain->set_bubble(bubble);
    show_number();
}

void Customer::show_number() {
    const int64_t left = std::max<int64_t>(0, customer_brain->want - customer_brain->got);
    number->set_text(String::num_int64(left));
    if (order_done != (left == 0)) {
        order_done = left == 0;
        cloud->set_mesh(bubble_mesh(order_done));
    }
}

void Customer::show_crown(bool on) {
    if (crown == nullptr && on) {
        crown = crown_node();
        Node *head = get_model()->get_node_or_null(NodePath("Body/Head"));
        if (head == nullptr) {
            head = get_model()->get_node_or_null(NodePath("Body"));
            crown->set_position(Vector3(0, 1.8, 0));
        } else {
            crown->set_position(Vector3(0, 0.62, 0));
        }
        crown->set_scale(Vector3(1.35, 1.35, 1.35));
        (head != nullptr ? head : get_model())->add_child(crown);
    }
    if (crown != nullptr) {
        crown->set_visible(on);
    }
}

void Customer::change_order(const String &k) {
    if (customer_brain.is_null()) {
        return;
    }
    customer_brain->kind = k;
    customer_brain->wait += 6.0;
    icon->set_mesh(Models::item_mesh("item_" + k));
    pulse(0.2);
}

double Customer::mood_mult() const {
    return customer_brain.is_null() ? 1.0 : customer_brain->mood();
}

void Customer::pop_text(const String &t) {
    if (mood_label == nullptr) {
        return;
    }
    if (text_tween.is_valid()) {
        text_tween->kill();
    }
    mood_label->set_text(t);
    mood_label->set_font_size(64);
    mood_label->set_scale(Vector3(1, 1, 1));
    if (!is_inside_tree()) {
        return;
    }
    text_tween = create_tween();
    text_tween->set_parallel(true);
    text_tween->tween_property(mood_label, NodePath("position:y"), mood_label->get_position().y + 1.2, 0.9);
    // The last 0.4 of the 0.9 seconds, so that the sum can be read first.
    text_tween->tween_property(mood_label, NodePath("scale"), Vector3(0.01, 0.01, 0.01), 0.4)->set_delay(0.5);
}

void Customer::show_bubble(bool on) {
    if (customer_brain.is_valid()) {
        customer_brain->show_bubble(on);
    }
}

void Customer::receive(ItemCore *it) {
    if (it == nullptr || customer_brain.is_null()) {
        return;
    }
    customer_brain->got += 1;
    tower->add(it);
    show_number();
    pulse(0.15);
}

void Customer::pulse(double seconds) {
    if (!is_inside_tree()) {
        return;
    }
    if (pulse_tween.is_valid()) {
        pulse_tween->kill();
    }
    bubble->set_scale(Vector3(1.25, 1.25, 1.25));
    pulse_tween = create_tween();
    pulse_tween->tween_property(bubble, NodePath("scale"), Vector3(1, 1, 1), seconds);
}

void Customer::mood_changed(double m) {
    if (mood_label == nullptr) {
        return;
    }
    const bool fine = m >= 1.0;
    const bool fair = m >= 0.7;
    mood_label->set_text(fine ? ":)" : fair ? ":|" : ":(");
    mood_label->set_modulate(fine ? happy : fair ? so_so : angry);
}

void Customer::lift_face(bool up) {
    if (mood_label != nullptr) {
        mood_label->set_position(Vector3(0, up ? face_high : face_low, 0));
    }
}

void Customer::set_pool(const Array &p) {
    pool = p;
    pooled = true;
}

void Customer::clear_pool() {
    pool = Array();
    pooled = false;
}

void Customer::stop_tweens() {
    for (Ref<Tween> *tween : {&text_tween, &pulse_tween}) {
        if (tween->is_valid()) {
            (*tween)->kill();
            tween->unref();
        }
    }
}

void Customer::gone() {
    if (is_queued_for_deletion() || pool.has(this)) {
        return;
    }
    while (tower != nullptr && tower->count() > 0) {
        GoodsLedger::leave(tower->take(String()), "sold");
    }
    if (pooled && pool.size() < pool_limit) {
        stop_tweens();
        clear_path();
        if (get_parent() != nullptr) {
            get_parent()->remove_child(this);
        }
        pool.push_back(this);
    } else {
        queue_free();
    }
}

void Customer::_bind_methods() {
    ClassDB::bind_method(D_METHOD("setup", "product", "amount", "is_vip"), &Customer::setup);
    ClassDB::bind_method(D_METHOD("reuse", "amount", "as_vip"), &Customer::reuse);
    ClassDB::bind_method(D_METHOD("change_order", "k"), &Customer::change_order);
    ClassDB::bind_method(D_METHOD("mood_mult"), &Customer::mood_mult);
    ClassDB::bind_method(D_METHOD("pop_text", "t"), &Customer::pop_text);
    ClassDB::bind_method(D_METHOD("show_bubble", "on"), &Customer::show_bubble);
    ClassDB::bind_method(D_METHOD("receive", "it"), &Customer::receive);
    ClassDB::bind_method(D_METHOD("mood_changed", "m"), &Customer::mood_changed);
    ClassDB::bind_method(D_METHOD("lift_face", "up"), &Customer::lift_face);
    ClassDB::bind_method(D_METHOD("gone"), &Customer::gone);
    ClassDB::bind_method(D_METHOD("set_pool", "p"), &Customer::set_pool);
}

} // namespace tilm
