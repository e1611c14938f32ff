#include "game/actors/player_gear.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/box_mesh.hpp>

#include "game/actors/walker.h"
#include "game/art/models.h"
#include "game/art/shapes.h"

namespace tilm {

namespace {

Node3D *shoe_model() {
    Node3D *root = memnew(Node3D);
    shapes::put(root, shapes::bevel_box(Vector3(0.23f, 0.06f, 0.36f), 0.025f), pal::WHITE, Vector3(0, 0.0f, -0.05f));
    shapes::put(root,
                shapes::loft({{-0.2f, 0.06f, 0.045f, 0, -0.02f},
                              {-0.1f, 0.105f, 0.07f},
                              {0.06f, 0.11f, 0.075f},
                              {0.16f, 0.07f, 0.05f, 0, -0.02f}},
                             8, 0.4f),
                pal::RED, Vector3(0, 0.08f, -0.06f), Vector3(-90, 0, 0));
    shapes::put(root, shapes::loft({{0.0f, 0.1f, 0.1f}, {0.12f, 0.085f, 0.085f}}, 8), pal::RED,
                Vector3(0, 0.08f, 0.03f));
    for (const float side : {-1.0f, 1.0f}) { // a little wing at each heel
        shapes::put(root, shapes::ball(Vector3(0.02f, 0.05f, 0.1f), 6, 3), pal::YELLOW,
                    Vector3(side * 0.115f, 0.13f, 0.08f), Vector3(28, side * 22, 0));
    }
    return root;
}

Node3D *bag_model() {
    Node3D *root = memnew(Node3D);
    const Color canvas(0.55f, 0.4f, 0.22f);
    shapes::put(root, shapes::bevel_box(Vector3(0.46f, 0.5f, 0.26f), 0.07f, 0.9f), canvas, Vector3());
    shapes::put(root, shapes::bevel_box(Vector3(0.46f, 0.18f, 0.29f), 0.06f, 0.92f), pal::tone(canvas, -0.25f),
                Vector3(0, 0.19f, 0.01f));
    shapes::put(root, shapes::bevel_box(Vector3(0.3f, 0.2f, 0.12f), 0.04f), pal::tone(canvas, 0.14f),
                Vector3(0, -0.09f, 0.15f));
    shapes::put(root, shapes::bevel_box(Vector3(0.08f, 0.07f, 0.03f), 0.012f), pal::YELLOW, Vector3(0, 0.1f, 0.16f));
    shapes::put(
        root,
        shapes::loft(
            {{-0.27f, 0.075f, 0.075f}, {-0.22f, 0.095f, 0.095f}, {0.22f, 0.095f, 0.095f}, {0.27f, 0.075f, 0.075f}}, 8),
        pal::TEAL, Vector3(0, 0.35f, 0), Vector3(0, 0, 90));
    return root;
}

Node3D *paw_model() {
    Node3D *root = memnew(Node3D);
    const Color pink(1.0f, 0.31f, 0.506f); // ff4f81
    Models::sphere(0.16f, pink, Vector3(0, -0.06, 0), root, Vector3(1.1, 0.9, 0.4), 8);
    for (int i = 0; i < 4; ++i) {
        const double a = (i - 1.5) * 0.55;
        Models::sphere(0.07f, pink, Vector3(std::sin(a) * 0.24, std::cos(a) * 0.2, 0), root, Vector3(1, 1.2, 0.4), 8);
    }
    return root;
}

} // namespace

void PlayerGear::wear(const Array &ids) {
    for (size_t i = pieces.size(); i-- > 0;) {
        if (ids.has(pieces[i].boost)) {
            continue;
        }
        for (const LiveRef<Node3D> &node : pieces[i].nodes) {
            if (Node3D *n = node.get()) {
                n->queue_free();
            }
        }
        pieces.erase(pieces.begin() + static_cast<std::ptrdiff_t>(i));
    }
    for (int64_t i = 0; i < ids.size(); ++i) {
        const Variant &id = ids[i];
        if (id.get_type() != Variant::STRING && id.get_type() != Variant::STRING_NAME) {
            ERR_PRINT("TILMARCH boost to wear: not a name, left out");
            continue;
        }
        const String boost = id;
        const bool on = std::any_of(pieces.begin(), pieces.end(), [&](const Piece &p) { return p.boost == boost; });
        if (!on) {
            put_on(boost);
        }
    }
}

Array PlayerGear::worn() const {
    Array out;
    for (const Piece &piece : pieces) {
        out.push_back(piece.boost);
    }
    return out;
}

Dictionary PlayerGear::nodes() const {
    Dictionary out;
    for (const Piece &piece : pieces) {
        Array list;
        for (const LiveRef<Node3D> &node : piece.nodes) {
            if (node) {
                list.push_back(node.get());
            }
        }
        out[piece.boost] = list;
    }
    return out;
}

void PlayerGear::hang(Piece &piece, Node3D *node, const char *part, const Vector3 &pos, double scale) {
    Node *parent = wearer->get_model()->get_node_or_null(NodePath(part));
    if (parent == nullptr) {
        parent = wearer->get_model();
    }
    node->set_name("gear_" + piece.boost);
    node->set_position(pos);
    node->set_scale(Vector3(scale, scale, scale));
    parent->add_child(node);
    piece.nodes.emplace_back(node);
}

void PlayerGear::put_on(const String &boost) {
    Piece piece;
    piece.boost = boost;
    if (boost == "turbo") {
        for (const char *side : {"L", "R"}) {
            const String leg = String("Body/Leg") + side;
            const bool knee = wearer->get_model()->get_node_or_null(NodePath(leg + "/Knee")) != nullptr;
            const CharString part = (knee ? leg + "/Knee" : leg).utf8();
            hang(piece, Models::bake(String("gear_shoe_") + side, Models::fn_node(&shoe_model)), part.get_data(),
                 Vector3(0, knee ? -0.3 : -0.58, -0.02), 1.22);
        }
    } else if (boost == "bag") {
        hang(piece, Models::bake("gear_bag", Models::fn_node(&bag_model)), "Body", Vector3(0, 0.86, 0.32), 1.1);
    } else if (boost == "cash" || boost == "animals") {
        Node3D *sign = nullptr;
        if (boost == "cash") {
            sign = Models::label3d("$", 90, Color(0.18f, 0.49f, 0.196f), Vector3(), wearer, false); // 2e7d32
            sign->set_rotation(Vector3());
        } else {
            sign = Models::bake("gear_paw", Models::fn_node(&paw_model), false, true);
            wearer->add_child(sign);
        }
        piece.nodes.emplace_back(sign);
        piece.floats = true;
    }
    // Other boosts show nothing but the trail.
    pieces.push_back(piece);
}

void PlayerGear::make_trail() {
    Ref<BoxMesh> bit;
    bit.instantiate();
    bit->set_size(Vector3(0.12, 0.12, 0.12));
    bit->set_material(Models::color_material(Color(1.0f, 0.95f, 0.7f), 0.85f, true));
    CPUParticles3D *dust = memnew(CPUParticles3D);
    dust->set_name("Trail");
    dust->set_emitting(false);
    dust->set_amount(14);
    dust->set_lifetime(0.6);
    dust->set_mesh(bit);
    dust->set_direction(Vector3(0, 1, 0));
    dust->set_spread(50);
    dust->set_param_min(CPUParticles3D::PARAM_INITIAL_LINEAR_VELOCITY, 0.4);
    dust->set_param_max(CPUParticles3D::PARAM_INITIAL_LINEAR_VELOCITY, 1.0);
    dust->set_gravity(Vector3(0, 0.6, 0));
    dust->set_position(Vector3(0, 0.15, 0));
    wearer->add_child(dust);
    trail.set(dust);
}

void PlayerGear::step(double dt, double v, bool sitting) {
    clock += dt;
    int n = 0;
    for (const Piece &piece : pieces) {
        n += piece.floats ? 1 : 0;
    }
    int i = 0;
    for (const Piece &piece : pieces) {
        Node3D *sign = piece.floats ? piece.nodes.front().get() : nullptr;
        if (sign == nullptr) {
            continue;
        }
        sign->set_position(Vector3((i - (n - 1) / 2.0) * 0.5, 2.75 + 0.07 * std::sin(3.0 * clock + i), 0));
        sign->set_rotation(piece.boost == "cash" ? Vector3(0, 2.5 * clock, 0)
                                                 : Vector3(0, 0, 0.4 * std::sin(2.0 * clock)));
        ++i;
    }
    const bool run = !pieces.empty() && v > 2.0 && !sitting;
    CPUParticles3D *dust = trail.get();
    if (dust == nullptr && run) {
        make_trail();
        dust = trail.get();
    }
    if (dust != nullptr && dust->is_emitting() != run) {
        dust->set_emitting(run);
    }
}

} // namespace tilm
