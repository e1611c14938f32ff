#include "game/actors/player_gear.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/box_mesh.hpp>

#include "game/actors/walker.h"
#include "game/art/gear_models.h"
#include "game/art/models.h"

namespace tilm {

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
            hang(piece, gear_models::build(String("shoe_") + side), part.get_data(),
                 Vector3(0, knee ? -0.3 : -0.58, -0.02), 1.22);
        }
    } else if (boost == "bag") {
        hang(piece, gear_models::build("bag"), "Body", Vector3(0, 0.86, 0.32), 1.1);
    } else if (boost == "cash" || boost == "animals") {
        Node3D *sign = nullptr;
        if (boost == "cash") {
            sign = Models::label3d("$", 90, Color(0.18f, 0.49f, 0.196f), Vector3(), wearer, false); // 2e7d32
            sign->set_rotation(Vector3());
        } else {
            sign = gear_models::build("paw");
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
