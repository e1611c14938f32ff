#pragma once
// One running farm: money and levels, every system of the farm as a child, the frame tick, and the verbs through which
// all others touch money and progress. A facade over plain helpers: assembly, land, purchases, camera, purse, document.

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>

#include "fields.h"
#include "game/actors/pickup.h"
#include "game/ports/climate.h"
#include "game/ports/farm.h"
#include "game/ports/pet_yard.h"
#include "game/shell/decorations.h"
#include "game/shell/farm_camera.h"
#include "game/shell/farm_report.h"
#include "game/shell/guide_arrow.h"
#include "game/shell/land.h"
#include "game/shell/pet_house.h"
#include "game/shell/purchases.h"

namespace tilm {
using namespace godot;

class Assembly;
class BotActions;
class CashTile;
class Cinematic;
class ShadowCull;
class CropField;
class FarmDocument;
class Hud;
class Item;
class ItemBatch;
class Logistics;
class OfferDesk;
class Player;
class Producer;
class Purse;
class SellCounter;
class UnlockTile;

class World : public Node3D, public Farm, public PurchaseHost, public PetYard {
    GDCLASS(World, Node3D)

public:
    World();
    ~World() override;

    static void setup_statics();
    // The world whose staged build runs, null otherwise.
    static World *under_construction();

    // Levels. Total levels at which level n ends, and the level that a total gives.
    static int64_t level_threshold(int64_t n);
    static int64_t level_for(int64_t total);
    int64_t total_levels() const;

    void _ready() override;
    void _process(double delta) override;
    void _notification(int what);

    // The staged build, sliced by Loading: true when it is done.
    bool build_step();
    double build_progress() const; // 0 .. 0.92
    String build_note() const;     // what the next build step starts with: an entry's id or the stage
    bool is_built() const { return !building_now; }

    // Saves the farm's document; nothing while building or on a visit.
    void _save();
    void save_now() { _save(); }

    // Money verbs.
    int64_t money_now() const override;
    void pay(int64_t amount, const Vector3 &to) override;
    void gain(int64_t amount, const Vector3 &from) override;
    bool spend_quiet(int64_t amount) override;
    // Takes over a bill from a cash tile; it must be an Item.
    void _collect(Object *bill);
    void collect_bill(Object *bill) override { _collect(bill); }

    // Events.
    void mission_event(const String &type, const String &kind, int64_t n) override;
    void note_mood(double mood, const String &src) override;
    void stat_add(const String &key, int64_t n) override { report.flow.add(key, n); }
    void tutorial_event(const String &) override {}
    void order_done(Object *dock, int64_t reward, double mult) override;

    // Purchases.
    void _on_tile_done(Object *tile);
    void _refresh_tiles();
    String buy_now(const String &id);
    String buy_guard();
    // A garden decoration near the player: "" or why not.
    String buy_decor(const String &type) { return garden.buy(type); }
    // Why no land is free for what is to be built; see land_hint.h.
    String no_land_hint(bool jump);
    Object *next_tile();
    int64_t price(const String &id) const; // of the next level, -1 without one
    bool unlocked(const String &id) const;
    bool region_open(const String &id) const { return land.is_open(id); }
    // Session total of a flow counter such as "sold:egg".
    int64_t flow_total(const String &key) const { return report.flow.total(key); }
    int64_t level() const;
    // Session totals of income: from customers and trucks, and from everything else.
    int64_t get_sales() const;
    int64_t get_other_income() const;
    int64_t get_mission_income() const;
    void rebase_books();               // from now on the sums are right as they are
    int64_t unaccounted_money() const; // beyond what the money verbs account for
    int64_t item_count() const;        // goods and bills that are nodes of their own
    int64_t batched_items() const;     // goods that lie in the batch

    // Looks.
    void _burst(const Vector3 &pos, const Color &color);
    void _focus(const Vector3 &pos, double seconds);
    void _fit_cam();
    void _on_tap(const Vector2 &screen_pos);
    void leave_visit();
    // The map takes the player to an open region, or to a point of the farm with `text` as what it says. While he
    // stays there no purchase elsewhere pulls the camera away.
    void travel_region(const String &id);
    void travel_to(const Vector3 &point, const String &text);
    // Diagnostics walk the player: a forced wish (length 0..1) wins over all input until it is zero.
    void force_input(const Vector2 &wish) { forced_input = wish; }

    // Farm port.
    Node3D *root() override { return this; }
    Node3D *player_node() override;
    Array zone_list() override { return zones; }
    Array stall_list() override { return stalls; }
    Array truck_list() override;
    int level_of(const String &entry_id) const override;
    Node *node_of(const String &entry_id) const override;
    Dictionary staff_table() override { return staff; }
    void add_solid(const Rect2 &rect) override;
    int feed_level() const override { return level_of("feed"); }
    double animal_multiplier() const override { return animal_mult; }
    int season() const override { return Climate::season_now(); }
    bool is_building() const override { return building_now; }
    bool is_visiting() const override { return visiting; }
    Node *services() const override { return nullptr; }
    bool has_perk(const String &) const override { return false; }
    bool is_night() const override { return night; }

    // PetYard.
    bool pet_is_home(const String &kind) const override { return pets.is_home(kind); }
    const Array &pet_cash_tiles() const override { return cash_array; }

    // PurchaseHost.
    Farm &farm() override { return *this; }
    Node3D *tile_parent() override { return this; }
    Callable tile_done_call() override;
    Array plan() override;
    Dictionary levels() override { return levels_by_id; }
    int farm_level() override { return static_cast<int>(level()); }
    int gate_of(const String &entry_id) override;
    bool can_build(const String &kind) override;
    void apply_level(const Dictionary &entry, int level, bool quiet) override;
    bool building() override { return building_now; }
    Vector3 player_pos() override;
    void burst(const Vector3 &at) override;
    void recalc() override;
    void level_up() override;
    void buzz(int ms) override;
    void announce(const String &text, int type) override;
    void log_line(const String &line) override;
    double elapsed() override { return play_time; }
    void progress() override;
    void save() override { _save(); }
    void after(double sec, const Callable &then) override;
    Callable refresh_call() override;

    // Fields of the farm document.
    int64_t money = 0; // changed by the money verbs; set_money() is for tests and diagnostics
    int64_t get_money() const { return money; }
    void set_money(int64_t sum);
    TM_FIELD(int64_t, gold_eggs, 0)
    TM_FIELD(Dictionary, tools, Dictionary())
    TM_FIELD(bool, won, false)
    TM_FIELD(double, earn_rate, 0.0) // dollars a second, fast average of cash collected
    TM_FIELD(double, earn_slow, 0.0)
    TM_FIELD(bool, magnet, false) // the MONEY MAGNET is bought
    TM_FIELD(double, charm, 0.0)  // sum of the decorations', for prices and patience
    TM_FIELD(bool, night, false)  // customers are few and pay more
    Array get_pets() const { return pets.get_owned(); }
    void set_pets(const Array &kinds) { pets.set_owned(kinds); }
    Array get_pets_home() const { return pets.get_home(); }
    void set_pets_home(const Array &kinds) { pets.set_home(kinds); }
    int64_t get_horse_lv() const { return pets.get_horse_lv(); }
    void set_horse_lv(int64_t lv) { pets.set_horse_lv(lv); }
    int64_t get_cart_lv() const { return pets.get_cart_lv(); }
    void set_cart_lv(int64_t lv) { pets.set_cart_lv(lv); }
    Array get_decor() const { return garden.get_placed(); }
    void set_decor(const Array &rows) { garden.set_placed(rows); }
    Dictionary get_levels() const { return levels_by_id; }
    Dictionary get_paid();
    Dictionary get_tiles() const;
    Dictionary get_nodes() const;
    Dictionary get_regions() const { return land.table(); }
    Dictionary get_fences() const { return land.fence_table(); }
    int get_progress_percent() const { return progress_percent; }

    Hud *hud() const { return hud_node; }
    Player *farmer() const { return player; }
    Purchases &tile_office() { return purchases; }
    const std::vector<CashTile *> &cash_list() const { return cash_tiles; }
    const std::vector<CropField *> &field_list() const { return fields; }
    void add_cash_tile(CashTile *tile);
    void add_stall(SellCounter *stall);
    Logistics &trucking() { return *logistics; }
    void add_field(CropField *field) { fields.push_back(field); }
    void open_region(const String &id, bool quiet);
    // The scene of a bought land; its end is told by land_cinematic_done.
    void show_land(const String &id);
    bool land_scene() const; // a bought land is being shown
    void start_feed(const String &id, Producer *producer);
    void keep_node(const String &entry_id, Node *node) { nodes[entry_id] = node; }
    Land &land_office() { return land; }
    PetHouse &pet_house() { return pets; }
    Decorations &decorations() { return garden; }

protected:
    static void _bind_methods();

private:
    friend class FarmDocument;

    static void set_under_construction(World *world);
    void build_scene();
    bool raise_levels();
    void buy_cheapest(int n);
    void go_to_menu();
    void save_on_request();
    void zoom_to(int step);
    Object *player_object() const;
    Object *hud_object() const;
    void finish_ready();
    // Runs `then` after `sec` of real time; while a bought land is shown, that long after its end.
    void _after_cine(double sec, const Callable &then);
    void _on_cine_ended(const String &region);
    // Pays for the time since the last save, once, and tells it a moment later.
    void _offline_check(const Dictionary &doc);
    void read_input(double delta);
    void cut_crops();
    void step_camera(double delta);
    void step_meters(double delta);
    void show_bars();

    bool visiting = false;
    bool building_now = true;
    bool just_built = false;
    bool first_run = false;
    int stage = 0;
    int entry_index = 0;
    bool garden_laid = false;
    bool state_laid = false;

    Dictionary levels_by_id; // entry id -> level
    Dictionary saved_levels; // as read, for the staged build
    Dictionary nodes;        // entry id -> main node
    Dictionary staff;        // staff id -> experience
    Array zones;
    Array stalls; // SellCounters
    Array cash_array;
    std::vector<CashTile *> cash_tiles;
    std::vector<CropField *> fields;
    Dictionary crop_tally; // field instance id -> cells cut and not yet made a good

    Player *player = nullptr;
    Hud *hud_node = nullptr;
    Node3D *items = nullptr;
    ItemBatch *batch = nullptr;
    Cinematic *cinema = nullptr;
    ShadowCull *shadow_cull = nullptr;
    BotActions *bot = nullptr;

    Land land;
    FarmCamera camera;
    GuideArrow arrow;
    FarmReport report;
    Pickup pickup;
    Purchases purchases;
    PetHouse pets{*this};
    Decorations garden{*this};
    std::unique_ptr<Assembly> assembly;
    std::unique_ptr<Purse> purse;
    std::unique_ptr<Logistics> logistics;
    std::unique_ptr<OfferDesk> offers;
    std::unique_ptr<FarmDocument> document;

    Vector2 forced_input;
    std::optional<Vector3> travel_target;
    double play_time = 0;
    double animal_mult = 1.0; // 2 under the boost of animals
    double rate_timer = 2.0;
    int64_t rate_counter = 0;
    double autosave_timer = 0;
    double guide_timer = 0;
    int64_t shown_money = -1;
    int progress_percent = 0;
    bool moved_told = false;
    std::vector<double> moods; // the last 30
};

} // namespace tilm
