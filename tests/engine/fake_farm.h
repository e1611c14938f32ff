#pragma once
// A farm without a world: keeps the sums and the shared lists that actors ask for.

#include <map>
#include <string>

#include <godot_cpp/classes/node3d.hpp>

#include "game/actors/item.h"
#include "game/ports/farm.h"

namespace tilm {

// Lives for one test: is the current farm and the root of items while it does.
class FakeFarm : public Farm {
public:
    explicit FakeFarm(Node *parent) : before(Farm::current()), items_before(Item::items_root()) {
        ground = memnew(Node3D);
        parent->add_child(ground);
        Farm::set_current(this);
        Item::set_items_root(ground);
    }
    ~FakeFarm() override {
        Farm::set_current(before);
        Item::set_items_root(items_before);
        ground->get_parent()->remove_child(ground);
        memdelete(ground);
    }

    int64_t money_now() const override { return money; }
    void pay(int64_t amount, const Vector3 &) override { money -= amount; }
    void gain(int64_t amount, const Vector3 &) override { money += amount; }
    bool spend_quiet(int64_t amount) override {
        if (money < amount) {
            return false;
        }
        money -= amount;
        return true;
    }
    void mission_event(const String &type, const String &, int64_t n) override { events[key(type)] += n; }
    void note_mood(double, const String &) override {}
    void stat_add(const String &name, int64_t n) override { stats[key(name)] += n; }
    void tutorial_event(const String &step) override { events["tutorial " + key(step)] += 1; }
    Node3D *root() override { return ground; }
    Node3D *player_node() override { return nullptr; }
    Array zone_list() override { return zones; }
    int level_of(const String &entry_id) const override {
        return static_cast<int>(static_cast<int64_t>(levels.get(entry_id, 0)));
    }
    Node *node_of(const String &) const override { return nullptr; }
    Dictionary staff_table() override { return staff; }
    void add_solid(const Rect2 &rect) override { solids.push_back(rect); }
    int feed_level() const override { return feed; }
    double animal_multiplier() const override { return animals; }
    int season() const override { return season_index; }
    bool is_building() const override { return false; }
    bool is_visiting() const override { return visit; }
    Node *services() const override { return service_node; }
    bool has_perk(const String &) const override { return false; }

    static std::string key(const String &s) { return std::string(s.utf8().get_data()); }

    int64_t money = 0;
    std::map<std::string, int64_t> events;
    std::map<std::string, int64_t> stats;
    Dictionary levels;
    Dictionary staff;
    Array zones;
    Array solids;
    Node3D *ground = nullptr;
    Node *service_node = nullptr;
    int feed = 0;
    double animals = 1;
    int season_index = 0;
    bool visit = false;

private:
    Farm *before;
    Node3D *items_before;
};

} // namespace tilm
