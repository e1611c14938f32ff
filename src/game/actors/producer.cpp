#include "game/actors/producer.h"

#include <algorithm>

#include <godot_cpp/variant/utility_functions.hpp>

#include "farm_items/goods_ledger.h"
#include "farm_items/pile_core.h"
#include "game/actors/item.h"
#include "game/actors/producer_animals.h"
#include "game/data/farm_data.h"
#include "game/ports/farm.h"
#include "game/sound/sfx.h"
#include "names.h"

namespace tilm {

namespace {

constexpr double label_reach = 14.0; // of the level label, from the player
constexpr double label_pause = 0.25;

String text(std::string_view s) {
    return String::utf8(s.data(), static_cast<int>(s.size()));
}

std::string plain(const String &s) {
    return std::string(s.utf8().get_data());
}

float between(double a, double b) {
    return static_cast<float>(UtilityFunctions::randf_range(a, b));
}

Vector3 jitter(double reach) {
    return Vector3(between(-reach, reach), between(-reach, reach), between(-reach, reach));
}

} // namespace

Producer::Producer() = default;
Producer::~Producer() = default;

Producer *Producer::build(const Dictionary &entry) {
    const String product = entry.get(TM_NAME("product"), String());
    if (rules::producer_kind(plain(product)) == nullptr) {
        ERR_PRINT("TILMARCH producer " + static_cast<String>(entry.get(TM_NAME("id"), String())) +
                  ": unknown product \"" + product + "\"");
        return nullptr;
    }
    if (entry.get(TM_NAME("pos"), Variant()).get_type() != Variant::VECTOR2) {
        ERR_PRINT("TILMARCH producer " + static_cast<String>(entry.get(TM_NAME("id"), String())) + ": no place");
        return nullptr;
    }
    Producer *p = memnew(Producer);
    p->id = entry.get(TM_NAME("id"), String());
    p->product = product;
    p->region = entry.get(TM_NAME("region"), "eggs");
    const Vector2 at = entry.get(TM_NAME("pos"), Vector2());
    p->set_position(Vector3(at.x, 0, at.y));
    return p;
}

void Producer::_ready() {
    if (in_editor() || animals != nullptr) {
        return;
    }
    row = rules::producer_kind(plain(product));
    if (row == nullptr) {
        ERR_PRINT("TILMARCH producer " + id + ": unknown product \"" + product + "\"");
        return;
    }
    assemble();
}

int Producer::give_start_feed() {
    PileCore *pile = get_trough();
    if (pile == nullptr) {
        return 0;
    }
    const int n = std::min(rules::start_feed_items, rules::trough_room - pile->count());
    for (int i = 0; i < n; ++i) {
        const GoodsVerb verb("given");
        pile->add(Item::spawn(feed_kind(), pile->slot_global(pile->count())), 0.05);
    }
    return std::max(0, n);
}

int Producer::animal_count() const {
    return row == nullptr ? 0 : rules::animal_count(*row, level);
}

int Producer::visible_animals() const {
    return row == nullptr ? 0 : rules::visible_animals(*row, level);
}

double Producer::interval() const {
    if (row == nullptr) {
        return 1.0;
    }
    const Farm *farm = Farm::current();
    if (farm == nullptr) {
        return rules::unit_seconds(*row, level, 0, 1, 1);
    }
    return rules::unit_seconds(*row, level, farm->feed_level(), farm->animal_multiplier(),
                               rules::season_factor(row->product, farm->season()));
}

String Producer::feed_kind() const {
    return row == nullptr ? String() : text(row->feed);
}

String Producer::animals_word() const {
    const rules::ProducerKind *kind = rules::producer_kind(plain(product));
    return kind == nullptr ? String() : text(kind->plural);
}

bool Producer::_eat() {
    PileCore *pile = get_trough();
    if (pile == nullptr) {
        if (trough_lost() && !told_no_trough) {
            told_no_trough = true;
            ERR_PRINT("TILMARCH producer " + id + ": its trough is gone");
        }
        return !trough_lost();
    }
    if (fed >= 1) {
        fed -= 1;
        return true;
    }
    ItemCore *meal = pile->take(feed_kind());
    if (meal == nullptr) {
        return false;
    }
    GoodsLedger::leave(meal, "eaten");
    fed = row == nullptr ? 0 : std::max(0, row->meals - 1);
    return true;
}

bool Producer::_bought_feed() const {
    return region != "eggs" && region != "dairy";
}

bool Producer::_feed_late() const {
    const Farm *farm = Farm::current();
    return farm != nullptr && farm->level_of(feed_kind() + "_feeder") >= 1;
}

void Producer::_buy_feed() {
    PileCore *pile = get_trough();
    Farm *farm = Farm::current();
    if (pile == nullptr || farm == nullptr) {
        return;
    }
    const int need = rules::feed_to_buy(pile->count());
    const String feed = feed_kind();
    if (need <= 0 || !farm->spend_quiet(FarmData::price_of(feed, 2) * need)) {
        return;
    }
    farm->stat_add("bought:" + feed, need);
    for (int i = 0; i < need; ++i) {
        const GoodsVerb verb("bought");
        pile->add(Item::spawn(feed, pile->slot_global(pile->count()) + Vector3(0, 1.5f, 0)), 0.25);
    }
    Sfx::sound_at(TM_NAME("grain_pour"), get_instance_id(), pile->get_global_position());
}

bool Producer::services_ready() const {
    const Farm *farm = Farm::current();
    return farm != nullptr && farm->services() != nullptr;
}

bool Producer::sicken_hunger() {
    const Farm *farm = Farm::current();
    Node *services = farm == nullptr ? nullptr : farm->services();
    return services != nullptr && static_cast<bool>(services->call(TM_NAME("sick"), this, "hunger"));
}

double Producer::overwork() {
    const Farm *farm = Farm::current();
    Node *services = farm == nullptr ? nullptr : farm->services();
    if (services != nullptr && UtilityFunctions::randf() < rules::overwork_chance(level)) {
        services->call(TM_NAME("sick"), this, "work");
    }
    return UtilityFunctions::randf_range(300, 480);
}

void Producer::lose_level() {
    if (level >= 2) {
        set_level(level - 1);
    }
}

void Producer::set_level(int l) {
    level = std::clamp(l, 1, rules::top_level);
    forget_interval();
    if (animals == nullptr) {
        return; // not assembled yet: _ready takes the level
    }
    level_label->set_text(text(row->title) + " LV" + String::num_int64(level));
    animals->set_count(visible_animals());
    if (PileCore *tray = get_tray()) {
        tray->set_max_items(rules::tray_room(level));
    }
}

void Producer::animate(double dt) {
    if (animals == nullptr) {
        return;
    }
    animals->step(dt);
    label_t -= dt;
    if (label_t <= 0) {
        label_t = label_pause;
        show_level();
    }
}

void Producer::show_level() {
    Farm *farm = Farm::current();
    Node3D *player = farm == nullptr ? nullptr : farm->player_node();
    const bool near =
        player == nullptr || player->get_global_position().distance_to(get_global_position()) < label_reach;
    if (level_label->is_visible() != near) {
        level_label->set_visible(near);
    }
}

void Producer::regrow_tick(double dt) {
    if (animals != nullptr) {
        animals->regrow(dt);
    }
}

void Producer::spawn_on_tray(const Vector3 &from, double flight) {
    if (PileCore *tray = get_tray()) {
        const GoodsVerb verb("produced");
        tray->add(Item::spawn(product, from), flight);
    }
}

void Producer::made() {
    if (row == nullptr || animals == nullptr) {
        return;
    }
    if (hand && row->hand == rules::HandWork::bring) {
        catch_pending += 1;
        return;
    }
    const int i = animals->random();
    const Vector3 at = i < 0 ? get_position() : animals->place_of(i);
    spawn_on_tray(at + Vector3(0, 0.5f, 0), 0.45);
    const StringName &event = product == "milk"                      ? TM_NAME("lay_milk")
                              : product == "egg" || product == "hen" ? TM_NAME("lay_egg")
                                                                     : TM_NAME("worker_pick");
    Sfx::sound_at(event, get_instance_id(), at);
    if (i >= 0) {
        animals->hop(i);
    }
}

void Producer::deliver_catch(const Vector3 &from) {
    if (get_tray() == nullptr) {
        return; // nowhere to put it: it stays in the hand
    }
    const int n = catch_pending;
    catch_pending = 0;
    catch_wait = 0;
    if (n <= 0) {
        return;
    }
    for (int i = 0; i < n; ++i) {
        spawn_on_tray(from + jitter(0.15), 0.35 + i * 0.05);
    }
    Sfx::sound_at(TM_NAME("worker_pick"), get_instance_id(), from);
}

Dictionary Producer::hold_animal(const Vector3 &near, double sec) {
    return animals == nullptr ? Dictionary() : animals->hold(near, sec);
}

void Producer::shear(const Dictionary &d) {
    if (animals != nullptr) {
        animals->shear(d);
    }
}

Array Producer::get_animals() const {
    return animals == nullptr ? Array() : animals->views();
}

} // namespace tilm
