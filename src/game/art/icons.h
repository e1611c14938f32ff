#pragma once
// Goods and things as pictures for the interface, rendered once each from their own models and kept for the run.
// A picture is asked for by a model's key, such as "item_egg" or "icon_stall_egg". What comes back is the picture if it
// is there, else a texture that shows a soft spot now and turns into the picture by itself, a frame or a few later.

#include <cstdint>
#include <memory>

#include <godot_cpp/classes/image.hpp>
#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/classes/texture2d.hpp>
#include <godot_cpp/classes/texture_rect.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class IconStudio;

class Icons : public Node {
    GDCLASS(Icons, Node)

public:
    static constexpr int side = 128; // pixels of a picture

    Icons();
    ~Icons() override;
    static void setup_statics();

    // Never null after setup_statics. A key that no model has gives the picture of a crate and one log line.
    static Ref<Texture2D> of(const String &key);
    static Ref<Texture2D> good(const String &kind); // "egg", "wheat" ...
    // What a plan entry builds; `product` may be empty. The same shape as on its price tile.
    static Ref<Texture2D> thing(const String &kind, const String &product);
    static String thing_key(const String &kind, const String &product);
    // A control of `size` units that shows the picture of `key`.
    static TextureRect *rect(const String &key, double size);

    static bool knows(const String &key); // a model has it
    static bool ready(const String &key); // its picture is taken
    static int64_t waiting();             // pictures asked for and not taken yet
    static Icons *current();              // the picture taker, null while none lives
    // Puts a picture under its key, as the studio does; textures handed out before show it too.
    static void keep(const String &key, const Ref<Image> &picture);

    void _process(double delta) override;

protected:
    static void _bind_methods();

private:
    static void wake();
    void develop();
    bool pose_next();

    std::unique_ptr<IconStudio> studio; // only while pictures are waited for
    String posed;                       // the key before the camera, "" for none
};

} // namespace tilm
