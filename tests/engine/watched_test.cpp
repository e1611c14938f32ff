// The same farm with the camera on it and with the camera far away must earn the same: staff and haulers do all the
// work, the player stands aside. A few minutes of one seed here; tests/scenario/watched.sh runs the long comparison.

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <map>
#include <string>
#include <vector>

#include <godot_cpp/variant/utility_functions.hpp>

#include "engine_test.h"
#include "farm_items/pile_core.h"
#include "farm_items/zone_core.h"
#include "game/actors/cash_tile.h"
#include "game/actors/player.h"
#include "game/actors/stack_carrier.h"
#include "game/data/farm_data.h"
#include "game/shell/save.h"
#include "game/shell/world.h"
#include "game/shell/world_options.h"
#include "glebworks/glebworks.h"

namespace tilm {
namespace {

const Vector3 in_the_middle(0, 0, 4.9f); // between two stalls, off every zone, tile and cash tile
const Vector3 far_off(-72, 0, 4.9f);

int from_environment(const char *name, int otherwise) {
    const char *text = std::getenv(name);
    return text == nullptr ? otherwise : std::max(1, std::atoi(text));
}

struct Totals {
    std::map<std::string, double> made; // by good: what left its maker, by stock-taking
    double goods = 0;
    double sold = 0;
    double money = 0;
    double seconds = 0; // of the processor
    Totals &operator+=(const Totals &o) {
        for (const auto &[kind, n] : o.made) {
            made[kind] += n;
        }
        goods += o.goods;
        sold += o.sold;
        money += o.money;
        seconds += o.seconds;
        return *this;
    }
};

class Watched : public testing::Test {
protected:
    void SetUp() override {
        save = memnew(Save);
        save->path = "user://watched.json";
    }
    void TearDown() override {
        memdelete(save);
        WorldOptions::get() = WorldOptions();
        Glebworks::see_everything();
    }

    // Everything of the first three lands that can be built, at its last written level.
    static Dictionary levels(World *world) {
        Dictionary out;
        const Array plan = FarmData::plan();
        for (int i = 0; i < plan.size(); ++i) {
            const Dictionary e = plan[i];
            const String region = e["region"];
            const String kind = e["kind"];
            const bool here = region == "eggs" || region == "dairy" || region == "mill";
            const bool onward = kind == "land" && String(e["target"]) == "food";
            if (here && !onward && kind != "magnet" && kind != "waterman" && world->can_build(kind)) {
                out[e["id"]] = e.get("base", 1);
            }
        }
        return out;
    }

    World *open(bool watched) {
        WorldOptions::get() = WorldOptions();
        WorldOptions::get().zoom = watched ? 5.0 : 1.0;
        if (wanted.is_empty()) {
            World *probe = memnew(World);
            wanted = levels(probe);
            memdelete(probe);
        }
        Dictionary doc;
        doc["levels"] = wanted.duplicate();
        save->data = doc;
        World *world = add<World>();
        for (int i = 0; i < 2000 && !world->build_step(); ++i) {
            step();
        }
        world->farmer()->set_position(watched ? in_the_middle : far_off);
        step(120); // the camera follows
        return world;
    }

    void expect_seen(World *world, bool watched) const {
        const Dictionary nodes = world->get_nodes();
        const Array ids = nodes.keys();
        int seen = 0;
        int all = 0;
        for (int i = 0; i < ids.size(); ++i) {
            const Node3D *node = Object::cast_to<Node3D>(static_cast<Object *>(nodes[ids[i]]));
            // What stands still in these lands; trucks come and go.
            if (node != nullptr && wanted.has(ids[i]) &&
                (node->is_class("Producer") || node->is_class("SellCounter") || node->is_class("CropField"))) {
                ++all;
                seen += Glebworks::in_view(node->get_global_position(), watched ? 0.0 : 14.0);
            }
        }
        EXPECT_GT(all, 10);
        EXPECT_EQ(seen, watched ? all : 0);
    }

    static void count_stock(World *world, std::map<std::string, double> &stock) {
        const Array kinds = FarmData::prices().keys();
        const Array zones = world->zone_list();
        for (int i = 0; i < zones.size(); ++i) {
            const ZoneCore *zone = Object::cast_to<ZoneCore>(static_cast<Object *>(zones[i]));
            for (int k = 0; k < kinds.size(); ++k) {
                const String kind = kinds[k];
                stock[kind.utf8().get_data()] += zone->get_pile()->count_kind(kind);
            }
        }
    }

    Totals run(bool watched, int64_t seed, int seconds) {
        UtilityFunctions::seed(seed);
        World *world = open(watched);
        expect_seen(world, watched);
        const std::clock_t began = std::clock();
        step_seconds(seconds);
        Totals t;
        t.seconds = static_cast<double>(std::clock() - began) / CLOCKS_PER_SEC;
        expect_seen(world, watched);
        EXPECT_EQ(world->farmer()->carrier()->count(), 0) << "the player stands aside";
        const Array kinds = FarmData::prices().keys();
        count_stock(world, t.made);
        for (int k = 0; k < kinds.size(); ++k) {
            const String kind = kinds[k];
            const double sold = static_cast<double>(world->flow_total("sold:" + kind));
            t.made[kind.utf8().get_data()] += sold;
            t.sold += sold;
        }
        for (const auto &[kind, n] : t.made) {
            t.goods += n;
        }
        t.money = static_cast<double>(world->money);
        for (const CashTile *tile : world->cash_list()) {
            t.money += static_cast<double>(tile->total());
        }
        world->queue_free();
        step(2);
        return t;
    }

    Save *save = nullptr;
    Dictionary wanted;
};

double apart(double a, double b) {
    return std::abs(a - b) / std::max(1.0, std::max(a, b));
}

TEST_F(Watched, EarnsTheSameAsUnwatched) {
    const int seeds = from_environment("TILMARCH_WATCH_SEEDS", 1);
    const int minutes = from_environment("TILMARCH_WATCH_MINUTES", 3);
    Totals near;
    Totals far;
    std::printf("WATCHED %d seeds of %d minutes\n", seeds, minutes);
    for (int seed = 1; seed <= seeds; ++seed) {
        const Totals a = run(true, seed, minutes * 60);
        const Totals b = run(false, seed, minutes * 60);
        std::printf(
            "WATCHED seed %d  goods %6.0f / %6.0f  sold %6.0f / %6.0f  money %7.0f / %7.0f  cpu %4.1f / %4.1f s\n",
            seed, a.goods, b.goods, a.sold, b.sold, a.money, b.money, a.seconds, b.seconds);
        near += a;
        far += b;
    }
    for (const auto &[kind, n] : near.made) {
        if (n + far.made[kind] > 0) {
            std::printf("WATCHED made %-10s %6.0f / %6.0f  %5.2f %%\n", kind.c_str(), n, far.made[kind],
                        100 * apart(n, far.made[kind]));
        }
    }
    std::printf("WATCHED apart  goods %.2f %%  sold %.2f %%  money %.2f %%\n", 100 * apart(near.goods, far.goods),
                100 * apart(near.sold, far.sold), 100 * apart(near.money, far.money));
    EXPECT_GT(near.goods, 1000);
    EXPECT_GT(near.money, 1000);
    EXPECT_LT(apart(near.goods, far.goods), 0.05);
    EXPECT_LT(apart(near.sold, far.sold), 0.05);
    // A few hundred customers hold too few VIPs for money to be as steady as goods.
    EXPECT_LT(apart(near.money, far.money), seeds * minutes >= 100 ? 0.05 : 0.3);
}

} // namespace
} // namespace tilm
