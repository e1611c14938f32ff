#include "game/art/pieces.h"

#include <algorithm>

namespace tilm::pieces {
namespace {

Vector3 vec(const Vec &v) {
    return Vector3(v.x, v.y, v.z);
}

// Facets of about the same size everywhere: more of them on what is larger.
int segments_for(float width) {
    return width < 0.12f ? 5 : width < 0.5f ? 7 : width < 1.6f ? 9 : 12;
}

} // namespace

void put_piece(Node3D *parent, const Piece &p) {
    const Vector3 size = vec(p.size), at = vec(p.at), turn = vec(p.turn);
    const int around = segments_for(std::max(p.size.x, p.size.z));
    const float rx = p.size.x / 2, rz = p.size.z / 2;
    switch (p.form) {
    case Form::box: {
        const float small = std::min({p.size.x, p.size.y, p.size.z});
        const Vector3 middle = at + Vector3(0, size.y / 2, 0);
        shapes::put(parent, shapes::bevel_box(size, std::min(0.06f, small * 0.22f), p.k), p.paint, middle, turn);
        break;
    }
    case Form::ball:
        shapes::put(parent, shapes::ball(size / 2, around, around > 7 ? 5 : 3), p.paint, at, turn);
        break;
    case Form::rod:
        shapes::put(parent, shapes::loft({{0, rx, rz}, {p.size.y, rx * p.k, rz * p.k}}, around), p.paint, at, turn);
        break;
    case Form::post:
        shapes::put(parent, shapes::loft({{0, rx, rz}, {p.size.y, rx * p.k, rz * p.k}}, 8, 0.8f), p.paint, at, turn);
        break;
    case Form::cone:
        shapes::put(parent, shapes::loft({{0, rx, rz}, {p.size.y, 0, 0}}, around), p.paint, at, turn);
        break;
    case Form::disc:
        shapes::put(parent,
                    shapes::loft({{-p.size.y / 2, rx, rz}, {p.size.y / 2, rx, rz}},
                                 segments_for(std::max(p.size.x, p.size.z) * 1.5f)),
                    p.paint, at, turn + Vector3(0, 0, 90));
        break;
    case Form::gable:
        shapes::put(parent, shapes::gable(p.size.x, p.size.y, p.size.z), p.paint, at, turn);
        break;
    }
}

void put_all(Node3D *parent, std::span<const Piece> rows) {
    for (const Piece &row : rows) {
        put_piece(parent, row);
    }
}

Node3D *tree_of(std::span<const Piece> rows) {
    Node3D *root = memnew(Node3D);
    put_all(root, rows);
    return root;
}

} // namespace tilm::pieces
