#pragma once
// Short scenes with the camera: the first look over a new farm, and the opening of a bought land. Any step or key of
// the player ends them; the farm goes on beneath.

#include <godot_cpp/classes/canvas_layer.hpp>
#include <godot_cpp/classes/color_rect.hpp>
#include <godot_cpp/classes/control.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class FarmCamera;

// Signal ended(region): region is empty after the first look.
class Cinematic : public Node {
    GDCLASS(Cinematic, Node)

public:
    void setup(FarmCamera *camera) { eye = camera; }
    // The opening of the land titled `title` whose middle is `at`.
    void play_land(const String &region, const String &title, const Vector3 &at);
    // From far above down to the player, who stands at `at`.
    void play_intro(const Vector3 &at);
    bool is_playing() const { return left > 0; }
    String get_region() const { return region; }
    // Ends the scene that plays; its first moments cannot be skipped, so that a step just taken does not end it.
    void skip();

    void _process(double delta) override;

protected:
    static void _bind_methods();

private:
    void start(double seconds, const String &title);
    void show_bars(const String &title);
    void lay_bars();
    void end();

    FarmCamera *eye = nullptr;
    CanvasLayer *layer = nullptr;
    ColorRect *top = nullptr;
    ColorRect *bottom = nullptr;
    Label *label = nullptr;
    String region;
    double total = 0;
    double left = 0;
};

} // namespace tilm
