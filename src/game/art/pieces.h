#pragma once
// Models told as rows: each piece is a chunky shape with a size, a place and a paint, so that a prop is a table.

#include <span>

#include "game/art/shapes.h"

namespace tilm {
using namespace godot;

namespace pieces {

enum class Form {
    box,   // bevelled block; `k` scales its upper face
    ball,  // few-faceted ellipsoid, its place is its middle
    rod,   // round post from its foot up, `k` the upper radius as a share of the lower one
    post,  // the same with a square section
    cone,  // as rod, ending in a point
    disc,  // wheel whose axle is the x axis, its place is its middle; size y is the thickness
    gable, // triangular prism
};

struct Vec {
    float x = 0, y = 0, z = 0;
};

// Sizes are full sizes in metres. The place is the middle of the foot, before the turn (degrees).
struct Piece {
    Form form;
    uint32_t paint;
    Vec size, at, turn;
    float k = 1;
};

void put_piece(Node3D *parent, const Piece &piece);
void put_all(Node3D *parent, std::span<const Piece> rows);
// A loose tree of these rows.
Node3D *tree_of(std::span<const Piece> rows);

} // namespace pieces
} // namespace tilm
