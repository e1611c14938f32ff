#include "game/art/avatar_models.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/variant/packed_vector2_array.hpp>

#include "game/art/models.h"
#include "game/art/palette.h"

namespace tilm {
namespace {

struct Row {
    const char *id;
    bool girl;
    const char *skin, *hair, *style, *shirt, *hat, *acc;
};

// clang-format off
constexpr Row ROWS[] = {
    {"ben",   false, "f2c29b", "6b3b1f", "short",    "e5533d", "straw",  ""},
    {"sam",   false, "e0ac69", "2b2630", "spiky",    "3f8fe0", "",       ""},
    {"omar",  false, "c68642", "212121", "curly",    "53c14b", "",       "glasses"},
    {"jack",  false, "ffdbac", "d98c3a", "side",     "8e5bd0", "",       "freckles"},
    {"ali",   false, "8d5524", "1a1418", "buzz",     "ffd23f", "",       ""},
    {"tom",   false, "f1c27d", "a1662f", "short",    "2fb5a8", "cowboy", ""},
    {"max",   false, "e0ac69", "3e2723", "bald",     "ff8f3a", "",       "glasses"},
    {"mona",  true,  "f2c29b", "6b3b1f", "pigtails", "ff8fb1", "",       "flower"},
    {"lily",  true,  "ffdbac", "e8b84a", "ponytail", "8fd3f4", "",       ""},
    {"sara",  true,  "e0ac69", "8e5bd0", "hijab",    "fbeed5", "",       ""},
    {"nour",  true,  "c68642", "2fb5a8", "scarf",    "e5484d", "",       ""},
    {"zoe",   true,  "8d5524", "1a1418", "puffs",    "ffd23f", "",       ""},
    {"emma",  true,  "f1c27d", "c0502a", "long",     "53c14b", "",       "freckles"},
    {"hana",  true,  "f2c29b", "2b2630", "bun",      "e5533d", "straw",  ""},
};
// clang-format on

Color paint(const Dictionary &look, const char *key, const char *fallback) {
    return Color::from_string(look.get(key, fallback), Color::from_string(fallback, Color(1, 1, 1)));
}

// Draws in units of the face: the middle of the head is the origin, its radius 1.
struct Brush {
    Control *on;
    Vector2 middle;
    float unit;

    Vector2 at(float x, float y) const { return middle + Vector2(x, y) * unit; }
    void disc(float x, float y, float r, const Color &c) const { on->draw_circle(at(x, y), r * unit, c); }
    // An ellipse, or its upper part down to the share `until` of its height.
    void oval(float x, float y, float rx, float ry, const Color &c, float until = 1) const {
        PackedVector2Array line;
        const float low = until * 2 - 1; // of the unit circle, downwards
        for (int i = 0; i < 28; i++) {
            const float a = float(i) * 0.2244f;
            line.push_back(at(x + rx * std::cos(a), y + ry * std::min(std::sin(a), low)));
        }
        on->draw_colored_polygon(line, c);
    }
    void bar(float x, float y, float w, float h, const Color &c) const {
        on->draw_rect(Rect2(at(x - w / 2, y - h / 2), Vector2(w, h) * unit), c);
    }
};

void draw_hair_behind(const Brush &b, const String &style, const Color &hair) {
    if (style == String("long") || style == String("ponytail")) {
        b.oval(0, 0.25f, 1.12f, 1.25f, hair);
    } else if (style == String("pigtails") || style == String("puffs")) {
        for (const float side : {-1.0f, 1.0f}) {
            b.disc(side * 1.12f, style == String("puffs") ? -0.55f : 0.15f, 0.42f, hair);
        }
    } else if (style == String("bun")) {
        b.disc(0, -1.2f, 0.4f, hair);
    } else if (style == String("hijab") || style == String("scarf")) {
        b.oval(0, 0.2f, 1.2f, 1.4f, hair);
    }
}

void draw_hair(const Brush &b, const String &style, const Color &hair) {
    if (style == String("bald")) {
        return;
    }
    if (style == String("hijab") || style == String("scarf")) {
        b.oval(0, -0.1f, 1.1f, 1.12f, hair, 0.30f);
        return;
    }
    b.oval(0, -0.08f, 1.06f, 1.06f, hair, style == String("buzz") ? 0.22f : 0.33f);
    if (style == String("spiky")) {
        for (int i = -2; i <= 2; i++) {
            PackedVector2Array spike;
            const float x = float(i) * 0.36f, up = 1.55f - 0.12f * float(i * i);
            spike.push_back(b.at(x - 0.26f, -0.75f));
            spike.push_back(b.at(x + 0.26f, -0.75f));
            spike.push_back(b.at(x * 1.25f, -up));
            b.on->draw_colored_polygon(spike, hair);
        }
    } else if (style == String("curly")) {
        for (int i = 0; i < 7; i++) {
            const float a = 3.3f + float(i) * 0.47f;
            b.disc(std::cos(a) * 0.95f, std::sin(a) * 0.95f, 0.32f, hair);
        }
    } else if (style == String("side")) {
        b.oval(-0.42f, -0.62f, 0.7f, 0.34f, hair);
    }
}

void draw_hat(const Brush &b, const String &hat) {
    if (hat == String("straw") || hat == String("cowboy")) {
        const Color straw = pal::col(hat == String("cowboy") ? pal::WOOD_DARK : pal::STRAW);
        b.oval(0, -0.62f, 1.45f, 0.24f, straw);
        b.oval(0, -0.68f, 0.82f, 0.72f, pal::tone(straw, 0.08f), 0.5f);
        b.bar(0, -0.76f, 1.6f, 0.16f, pal::col(hat == String("cowboy") ? pal::CREAM : pal::RED));
    } else if (hat == String("chef")) {
        b.disc(-0.4f, -1.2f, 0.45f, pal::col(pal::WHITE));
        b.disc(0.4f, -1.2f, 0.45f, pal::col(pal::WHITE));
        b.bar(0, -0.85f, 1.3f, 0.5f, pal::col(pal::WHITE));
    } else if (hat == String("tophat")) {
        b.bar(0, -1.2f, 1.1f, 0.95f, pal::col(pal::INK));
        b.bar(0, -0.78f, 1.8f, 0.14f, pal::col(pal::INK));
    } else if (hat == String("crown")) {
        PackedVector2Array line;
        for (const Vector2 &p :
             {Vector2(-0.8f, -0.7f), Vector2(-0.8f, -1.35f), Vector2(-0.4f, -1.0f), Vector2(0, -1.45f),
              Vector2(0.4f, -1.0f), Vector2(0.8f, -1.35f), Vector2(0.8f, -0.7f)}) {
            line.push_back(b.at(float(p.x), float(p.y)));
        }
        b.on->draw_colored_polygon(line, pal::col(pal::YELLOW));
    } else if (hat == String("helmet")) {
        b.oval(0, -0.25f, 1.16f, 1.05f, pal::col(pal::YELLOW), 0.34f);
    }
}

} // namespace

PackedStringArray AvatarModels::ids() {
    PackedStringArray out;
    for (const Row &row : ROWS) {
        out.push_back(row.id);
    }
    return out;
}

Dictionary AvatarModels::look_of(const String &id) {
    const Row *found = &ROWS[0];
    for (const Row &row : ROWS) {
        if (id == String(row.id)) {
            found = &row;
        }
    }
    Dictionary look;
    look["id"] = found->id;
    look["girl"] = found->girl;
    look["skin"] = found->skin;
    look["hair"] = found->hair;
    look["style"] = found->style;
    look["shirt"] = found->shirt;
    look["overalls"] = true;
    if (found->hat[0] != '\0') {
        look["hat"] = found->hat;
    }
    if (found->acc[0] != '\0') {
        look["acc"] = found->acc;
    }
    return look;
}

Node3D *AvatarModels::build(const String &id) {
    return Models::person(look_of(id));
}

void AvatarModels::draw_face(Control *on, const Dictionary &look) {
    const Vector2 size = on->get_size();
    const float unit = float(std::min(size.x, size.y)) / 3.6f;
    const Brush b{on, size * 0.5f + Vector2(0, unit * 0.15f), unit};
    const Color skin = paint(look, "skin", "f2c29b"), hair = paint(look, "hair", "6b3b1f");
    const Color ink = pal::col(pal::INK);
    const String style = look.get("style", "short"), acc = look.get("acc", "");
    draw_hair_behind(b, style, hair);
    b.oval(0, 1.75f, 1.15f, 0.75f, paint(look, "shirt", "ffffff"), 0.46f);
    b.bar(0, 1.05f, 0.5f, 0.4f, pal::tone(skin, -0.12f));
    for (const float side : {-1.0f, 1.0f}) {
        if (style != String("hijab") && style != String("scarf")) {
            b.disc(side * 1.0f, 0.1f, 0.18f, pal::tone(skin, -0.08f));
        }
    }
    b.oval(0, 0.05f, 0.98f, 1.05f, skin);
    for (const float side : {-1.0f, 1.0f}) {
        b.oval(side * 0.36f, 0.0f, 0.12f, 0.17f, ink);
        b.disc(side * 0.36f + 0.04f, -0.06f, 0.045f, Color(1, 1, 1));
        b.disc(side * 0.58f, 0.38f, 0.16f, Color(skin.lerp(pal::col(pal::PINK), 0.5f)));
        if (bool(look.get("girl", false))) {
            on->draw_line(b.at(side * 0.42f, -0.02f), b.at(side * 0.60f, -0.06f), ink, unit * 0.06f);
            on->draw_line(b.at(side * 0.42f, -0.10f), b.at(side * 0.56f, -0.20f), ink, unit * 0.06f);
        }
    }
    on->draw_arc(b.at(0, 0.38f), unit * 0.3f, 0.35f, 2.79f, 12, ink, unit * 0.08f);
    if (acc == String("freckles")) {
        for (int i = 0; i < 6; i++) {
            b.disc((i < 3 ? -0.66f : 0.42f) + 0.12f * float(i % 3), 0.3f + 0.07f * float(i % 2), 0.04f,
                   pal::tone(skin, -0.35f));
        }
    }
    draw_hair(b, style, hair);
    draw_hat(b, look.get("hat", ""));
    if (acc == String("glasses")) {
        for (const float side : {-1.0f, 1.0f}) {
            on->draw_arc(b.at(side * 0.36f, 0.0f), unit * 0.28f, 0, 6.283f, 20, ink, unit * 0.08f);
        }
        b.bar(0, -0.02f, 0.2f, 0.07f, ink);
    } else if (acc == String("flower")) {
        b.disc(0.75f, -0.7f, 0.26f, pal::col(pal::PINK));
        b.disc(0.75f, -0.7f, 0.11f, pal::col(pal::YELLOW));
    }
}

} // namespace tilm
