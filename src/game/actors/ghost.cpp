#include "game/actors/ghost.h"

#include <algorithm>
#include <cmath>

#include "farm_items/goods_ledger.h"
#include "farm_items/world_place.h"
#include "game/actors/item.h"
#include "game/actors/person_look.h"
#include "game/actors/pet.h"
#include "game/actors/stack_carrier.h"
#include "game/art/models.h"
#include "game/ports/outfits.h"
#include "names.h"
#include "rules/carry_text.h"
#include "rules/pets.h"
#include "safe_read.h"

namespace tilm {

namespace {

constexpr size_t samples_kept = 32;
constexpr double jump_beyond = 6.0;
constexpr int64_t arms_room = 14;
constexpr int64_t room_max = 1000;
constexpr int64_t key_length = 64; // keys of honest records are far shorter
constexpr int64_t text_length = 8192;
constexpr float stale_alpha = 0.45f;

std::vector<std::pair<std::string_view, int>> carry_of(const CharString &text) {
    return rules::parse_carry(std::string_view(text.get_data(), static_cast<size_t>(text.length())));
}

String text_of(std::string_view text) {
    return String::utf8(text.data(), static_cast<int>(text.size()));
}

} // namespace

void Ghost::_ready() {
    if (in_editor()) {
        set_process(false);
        return;
    }
    if (get_model() == nullptr) {
        wear(String(), String());
    }
    speed = 6.0;
}

void Ghost::_notification(int what) {
    // Goods stand under the farm's root, not under who carries them.
    if (what == NOTIFICATION_PREDELETE && tower != nullptr) {
        while (ItemCore *good = tower->take(String())) {
            GoodsLedger::leave(good, "pictured");
        }
    }
}

void Ghost::_process(double dt) {
    // Whoever has the samples' clock calls follow(); this only moves the limbs.
    animate(dt);
}

void Ghost::wear(const String &outfit, const String &avatar) {
    if (dressed && outfit == worn_outfit && avatar == worn_avatar) {
        return;
    }
    dressed = true;
    worn_outfit = outfit;
    worn_avatar = avatar;
    Dictionary look;
    if (const Outfits *wardrobe = Outfits::current()) {
        look = wardrobe->look_of(outfit, avatar);
    }
    if (look.is_empty()) {
        look = PersonLook::of_role("farmer", "f1c27d");
    }
    const bool first = tower == nullptr;
    build(look);
    if (first) {
        tower->set_capacity(static_cast<int>(arms_room));
        tower->set_show_limit(8);
    }
}

void Ghost::set_info(const Dictionary &m) {
    wear(read_text(m, "o", "farmer").left(key_length), read_text(m, "av").left(key_length));
    tower->set_capacity(static_cast<int>(std::clamp<int64_t>(read_whole(m, "cap", arms_room), 1, room_max)));
    std::vector<String> kinds;
    auto want = [&](const String &kind) {
        if (rules::find_pet(kind.utf8().get_data()) != nullptr &&
            std::find(kinds.begin(), kinds.end(), kind) == kinds.end()) {
            kinds.push_back(kind);
        }
    };
    const Array listed = read_list(m, "pets");
    for (int64_t i = 0; i < std::min<int64_t>(listed.size(), key_length); ++i) {
        const Variant &v = listed[i];
        if (v.get_type() == Variant::STRING || v.get_type() == Variant::STRING_NAME) {
            want(as<String>(v).left(key_length));
        }
    }
    if (read_flag(m, "horse") || read_whole(m, "horse") > 0) {
        want("horse");
    }
    keep_pets(kinds, read_whole(m, "hl", 1), read_whole(m, "cl", 0));
    reconcile(read_text(m, "c"));
}

void Ghost::keep_pets(const std::vector<String> &kinds, int64_t horse_lv, int64_t cart_lv) {
    for (size_t i = pets.size(); i-- > 0;) {
        Pet *pet = pets[i].get();
        if (pet == nullptr || std::find(kinds.begin(), kinds.end(), pet->get_kind()) == kinds.end()) {
            if (pet != nullptr) {
                remove_child(pet);
                pet->queue_free();
            }
            pets.erase(pets.begin() + static_cast<std::ptrdiff_t>(i));
        }
    }
    for (const String &kind : kinds) {
        Pet *pet = nullptr;
        for (const LiveRef<Pet> &known : pets) {
            pet = known && known.get()->get_kind() == kind ? known.get() : pet;
        }
        if (pet == nullptr) {
            pet = memnew(Pet);
            pet->set_remote(true);
            pet->setup(kind, nullptr, this);
            pet->set_as_top_level(true); // it lives and goes with the ghost, but walks by itself
            add_child(pet);
            pet->place();
            pets.emplace_back(pet);
        }
        pet->set_gear(horse_lv, cart_lv);
    }
}

Array Ghost::get_pets() const {
    Array out;
    for (const LiveRef<Pet> &pet : pets) {
        if (pet) {
            out.push_back(pet.get());
        }
    }
    return out;
}

Dictionary Ghost::parse_carry(const String &text) const {
    Dictionary out;
    const CharString bytes = text.left(text_length).utf8();
    for (const auto &[kind, n] : carry_of(bytes)) {
        out[text_of(kind)] = n;
    }
    return out;
}

void Ghost::reconcile(const String &text) {
    const String known = text.left(text_length);
    if (known == carried || Item::items_root() == nullptr) {
        return;
    }
    carried = known;
    const CharString bytes = known.utf8();
    std::vector<std::pair<String, int>> wanted;
    int left = rules::carry_max;
    for (const auto &[kind, n] : carry_of(bytes)) {
        wanted.emplace_back(text_of(kind), std::min(n, left));
        left -= wanted.back().second;
    }
    auto wish = [&](const String &kind) {
        for (const auto &[k, n] : wanted) {
            if (k == kind) {
                return n;
            }
        }
        return 0;
    };
    for (int i = tower->list().size() - 1; i >= 0; --i) {
        const String kind = tower->list()[i]->get_kind();
        if (tower->count_kind(kind) > wish(kind)) {
            GoodsLedger::leave(tower->take(kind), "pictured"); // the newest of its kind, which lies at i
        }
    }
    const Vector3 from = world_position(this) + Vector3(0, 1.2f, 0);
    for (const auto &[kind, n] : wanted) {
        for (int have = tower->count_kind(kind); have < n; ++have) {
            const GoodsVerb verb("pictured");
            tower->add(Item::spawn(kind, from));
        }
    }
}

void Ghost::add_sample(double t, const Vector2 &pos, double heading, const Vector2 &vel) {
    const bool sane = std::isfinite(t) && pos.is_finite() && std::isfinite(heading) && vel.is_finite();
    if (!sane || (!samples.empty() && t <= samples.back().t)) {
        return;
    }
    if (samples.size() >= samples_kept) {
        samples.erase(samples.begin());
    }
    samples.push_back({t, pos.x, pos.y, heading, vel.x, vel.y});
}

void Ghost::follow(double now, double dt) {
    if (samples.empty() || get_model() == nullptr) {
        return;
    }
    const rules::GhostPlace to = rules::ghost_place(samples, now);
    const Vector3 from = get_position();
    const Vector3 target(static_cast<real_t>(to.x), from.y, static_cast<real_t>(to.z));
    Vector3 rotation = get_model()->get_rotation();
    if (from.distance_to(target) > jump_beyond) {
        set_position(target);
        rotation.y = static_cast<real_t>(to.heading);
        get_model()->set_rotation(rotation);
        velocity = Vector3();
        for (const LiveRef<Pet> &pet : pets) {
            if (pet) {
                pet.get()->place();
            }
        }
        return;
    }
    const Vector3 p = from.lerp(target, static_cast<real_t>(eased(22.0, dt)));
    set_position(p);
    rotation.y += static_cast<real_t>(angle_between(rotation.y, to.heading) * eased(14.0, dt));
    get_model()->set_rotation(rotation);
    if (dt > 0.0) {
        velocity = velocity.lerp((p - from) / static_cast<real_t>(dt), static_cast<real_t>(eased(12.0, dt)));
    }
}

void Ghost::show_name(const String &text) {
    if (plate == nullptr) {
        plate = Models::label3d(String(), 44, Color(1, 1, 1), Vector3(0, 2.55f, 0), this);
    }
    plate->set_text(text.left(key_length));
}

void Ghost::set_stale(bool on) {
    if (plate != nullptr) {
        Color c = plate->get_modulate();
        c.a = on ? stale_alpha : 1.0f;
        plate->set_modulate(c);
    }
}

void Ghost::_bind_methods() {
    ClassDB::bind_method(D_METHOD("set_info", "m"), &Ghost::set_info);
    ClassDB::bind_method(D_METHOD("parse_carry", "text"), &Ghost::parse_carry);
    ClassDB::bind_method(D_METHOD("add_sample", "t", "pos", "heading", "vel"), &Ghost::add_sample);
    ClassDB::bind_method(D_METHOD("follow", "now", "dt"), &Ghost::follow);
    ClassDB::bind_method(D_METHOD("sample_count"), &Ghost::sample_count);
    ClassDB::bind_method(D_METHOD("show_name", "text"), &Ghost::show_name);
    ClassDB::bind_method(D_METHOD("set_stale", "on"), &Ghost::set_stale);
    ClassDB::bind_method(D_METHOD("get_pets"), &Ghost::get_pets);
}

} // namespace tilm
