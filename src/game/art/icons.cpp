#include "game/art/icons.h"

#include <algorithm>

#include <godot_cpp/classes/display_server.hpp>
#include <godot_cpp/classes/engine.hpp>
#include <godot_cpp/classes/image_texture.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/window.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/core/object.hpp>

#include "game/art/icon_models.h"
#include "game/art/icon_studio.h"
#include "game/art/model_keys.h"
#include "game/art/models.h"
#include "game/kit/ui.h"
#include "names.h"
#include "statics.h"

namespace tilm {
namespace {

const char *const things = "icon_";
const char *const crate = "icon_crate"; // for keys that no model has
constexpr int64_t most_told = 64;       // unknown keys that get a log line

struct Shelf {
    Dictionary taken;   // key -> Texture2D with the picture
    Dictionary asked;   // key -> ImageTexture that still shows the spot, in the order of asking
    Dictionary unknown; // key -> true
    Ref<Image> spot;
    Ref<Texture2D> blank;
};

Shelf *shelf = nullptr;
uint64_t instance = 0;

void release() {
    delete shelf;
    shelf = nullptr;
}

// A soft round spot: quiet on light cards and on dark ones, and as large as a picture.
Ref<Image> spot() {
    if (shelf->spot.is_null()) {
        const Ref<Image> image = Image::create(Icons::side, Icons::side, false, Image::FORMAT_RGBA8);
        constexpr float middle = 0.5f * (Icons::side - 1);
        for (int y = 0; y < Icons::side; ++y) {
            for (int x = 0; x < Icons::side; ++x) {
                const float away = Vector2(static_cast<float>(x) - middle, static_cast<float>(y) - middle).length();
                const float inside = std::clamp((0.78f * middle - away) / (0.3f * middle), 0.0f, 1.0f);
                image->set_pixel(x, y, Color(0.55f, 0.43f, 0.39f, 0.28f * inside));
            }
        }
        image->generate_mipmaps();
        shelf->spot = image;
    }
    return shelf->spot;
}

Ref<Texture2D> blank() {
    if (shelf->blank.is_null()) {
        shelf->blank = ImageTexture::create_from_image(spot());
    }
    return shelf->blank;
}

bool draws() {
    return DisplayServer::get_singleton()->get_name() != String("headless");
}

String kind_of(const String &key) {
    return key.trim_prefix(things).get_slice("_", 0);
}

Node3D *model_of(const String &key) {
    if (!key.begins_with(things)) {
        return Models::model(key);
    }
    const String kind = kind_of(key);
    const String product = key.trim_prefix(things).trim_prefix(kind).trim_prefix("_");
    return Models::bake(key, Models::builder([kind, product] { return IconModels::tile_icon(kind, product); }));
}

} // namespace

Icons::Icons() {
    set_name("Icons");
    set_process_mode(PROCESS_MODE_ALWAYS);
}

Icons::~Icons() = default;

void Icons::setup_statics() {
    if (shelf == nullptr) {
        shelf = new Shelf;
    }
    Statics::on_release(&release);
}

void Icons::_bind_methods() {
    ClassDB::bind_static_method("Icons", D_METHOD("of", "key"), &Icons::of);
    ClassDB::bind_static_method("Icons", D_METHOD("good", "kind"), &Icons::good);
    ClassDB::bind_static_method("Icons", D_METHOD("thing", "kind", "product"), &Icons::thing);
    ClassDB::bind_static_method("Icons", D_METHOD("thing_key", "kind", "product"), &Icons::thing_key);
    ClassDB::bind_static_method("Icons", D_METHOD("rect", "key", "size"), &Icons::rect);
    ClassDB::bind_static_method("Icons", D_METHOD("knows", "key"), &Icons::knows);
    ClassDB::bind_static_method("Icons", D_METHOD("ready", "key"), &Icons::ready);
    ClassDB::bind_static_method("Icons", D_METHOD("waiting"), &Icons::waiting);
    ClassDB::bind_static_method("Icons", D_METHOD("current"), &Icons::current);
}

Icons *Icons::current() {
    Icons *live = instance != 0 ? Object::cast_to<Icons>(ObjectDB::get_instance(instance)) : nullptr;
    return live != nullptr && !live->is_queued_for_deletion() ? live : nullptr;
}

bool Icons::knows(const String &key) {
    if (key.begins_with(things)) {
        return key == String(crate) || IconModels::knows(kind_of(key));
    }
    const std::vector<ModelKey> rows = model_keys();
    return std::any_of(rows.begin(), rows.end(),
                       [&](const ModelKey &row) { return row.key == key && row.family->make != nullptr; });
}

bool Icons::ready(const String &key) {
    return shelf != nullptr && shelf->taken.has(key);
}

int64_t Icons::waiting() {
    return shelf != nullptr ? shelf->asked.size() : 0;
}

Ref<Texture2D> Icons::of(const String &key) {
    if (shelf == nullptr) {
        return Ref<Texture2D>();
    }
    for (const Dictionary &known : {shelf->taken, shelf->asked}) {
        if (known.has(key)) {
            return known[key];
        }
    }
    if (shelf->unknown.has(key) || !knows(key)) {
        if (!shelf->unknown.has(key) && shelf->unknown.size() < most_told) {
            shelf->unknown[key] = true;
            WARN_PRINT("TILMARCH no picture of " + key.left(60));
        }
        return of(crate);
    }
    if (!draws() || in_editor()) {
        return blank();
    }
    const Ref<ImageTexture> texture = ImageTexture::create_from_image(spot());
    shelf->asked[key] = texture;
    wake();
    return texture;
}

Ref<Texture2D> Icons::good(const String &kind) {
    return of("item_" + kind);
}

Ref<Texture2D> Icons::thing(const String &kind, const String &product) {
    return of(thing_key(kind, product));
}

String Icons::thing_key(const String &kind, const String &product) {
    return things + kind + (product.is_empty() ? String() : "_" + product);
}

TextureRect *Icons::rect(const String &key, double size) {
    return UI::picture(of(key), size);
}

// The taker hangs under the window, beside the scenes: a farm that is loaded anew finds it where it was.
void Icons::wake() {
    Icons *live = current();
    if (live == nullptr) {
        const SceneTree *tree = Object::cast_to<SceneTree>(Engine::get_singleton()->get_main_loop());
        if (tree == nullptr) {
            return; // too early: the next request wakes it
        }
        live = memnew(Icons);
        instance = live->get_instance_id();
        tree->get_root()->call_deferred(TM_NAME("add_child"), live);
    }
    live->set_process(true);
}

void Icons::keep(const String &key, const Ref<Image> &picture) {
    if (shelf == nullptr || picture.is_null()) {
        return;
    }
    Ref<ImageTexture> texture = shelf->asked.get(key, Variant());
    if (texture.is_valid()) {
        texture->set_image(picture);
        shelf->asked.erase(key);
    } else {
        texture = ImageTexture::create_from_image(picture);
    }
    shelf->taken[key] = texture;
}

void Icons::_process(double) {
    if (in_editor() || shelf == nullptr) {
        return;
    }
    if (!posed.is_empty()) {
        if (!studio->drawn()) {
            return; // the window is away, or the renderer rests
        }
        develop();
    }
    if (!pose_next()) {
        studio.reset();
        set_process(false);
    }
}

void Icons::develop() {
    const String key = posed;
    posed = String();
    const Ref<Image> picture = studio->take(side);
    if (picture.is_valid()) {
        keep(key, picture);
    } else {
        WARN_PRINT("TILMARCH the picture of " + key + " came out empty");
        keep(key, spot()); // asked for once: it would come out empty again
    }
}

bool Icons::pose_next() {
    while (!shelf->asked.is_empty()) {
        const String key = shelf->asked.keys()[0];
        if (Node3D *model = model_of(key)) {
            if (!studio) {
                studio = std::make_unique<IconStudio>(this);
            }
            studio->pose(key, model);
            posed = key;
            return true;
        }
        WARN_PRINT("TILMARCH no picture of " + key);
        keep(key, spot());
    }
    return false;
}

} // namespace tilm
