#pragma once
// A small picture room off the screen: poses one model at a time and takes its picture with a clear background.

#include <cstdint>

#include <godot_cpp/classes/camera3d.hpp>
#include <godot_cpp/classes/image.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/sub_viewport.hpp>
#include <godot_cpp/variant/string.hpp>

#include "glebworks/live_ref.h"

namespace tilm {
using namespace godot;

class IconStudio {
public:
    explicit IconStudio(Node *home); // which must be in the tree
    ~IconStudio();
    IconStudio(const IconStudio &) = delete;
    IconStudio &operator=(const IconStudio &) = delete;

    // Takes `model` over and asks for one picture of it, drawn with the coming frame. `key` chooses the angle.
    void pose(const String &key, Node3D *model);
    bool drawn() const; // the frame is over
    // The picture, `side` pixels square; null when nothing was painted. Reads it back from the renderer.
    Ref<Image> take(int side) const;

private:
    void aim(float yaw, float pitch);

    SubViewport *room = nullptr;
    LiveRef<SubViewport> live_room; // null when its home was freed first, and its children with it
    Camera3D *camera = nullptr;
    Node3D *model = nullptr;
    int64_t asked_at = 0; // frames drawn by then
};

} // namespace tilm
