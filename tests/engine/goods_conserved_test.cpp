// No good is ever lost or made twice, whatever hands it goes through.

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>

#include "game/actors/cash_tile.h"
#include "game/actors/pickup.h"
#include "game/actors/pile.h"
#include "game/actors/stack_carrier.h"
#include "game/actors/zone.h"
#include "goods_kit.h"

using namespace godot;

namespace tilm {
namespace {

constexpr const char *kinds[] = {"egg", "milk", "corn", "calf", "hen", "wheat"};

TEST(Goods, AreConservedOverTwentyThousandRandomSteps) {
    const char *given = std::getenv("TILMARCH_SEED");
    const uint64_t seed = given ? std::strtoull(given, nullptr, 10) : std::random_device{}();
    std::printf("seed %" PRIu64 " (TILMARCH_SEED repeats it)\n", seed);
    RecordProperty("seed", std::to_string(seed));
    std::mt19937_64 rng(seed);
    const auto pick = [&](int n) { return (int)(rng() % (uint64_t)n); };

    Yard yard;
    std::vector<Pile *> piles;
    std::vector<StackCarrier *> stacks;
    std::vector<Node3D *> haulers;
    Array zones;
    for (int i = 0; i < 6; i++) {
        Pile *pile = yard.put<Pile>(Vector3((float)i * 3, 0, 0));
        pile->set_show_limit(i % 2 == 0 ? 0 : 4 + i);
        pile->set_flat(i == 4);
        piles.push_back(pile);
        Ref<Zone> zone = Zone::make(i < 3 ? "take" : "give", pile, Vector3(), Vector2(4, 4));
        Dictionary accepts;
        for (const char *kind : kinds) {
            accepts[kind] = pick(12);
        }
        zone->set_accepts(accepts);
        zones.push_back(zone);
    }
    for (int i = 0; i < 4; i++) {
        StackCarrier *stack = yard.put<StackCarrier>(Vector3((float)i, 0, 5));
        stack->set_capacity(6 + 9 * i);
        stack->set_show_limit(i == 0 ? 0 : 4);
        stacks.push_back(stack);
        haulers.push_back(yard.put<Node3D>());
    }
    Node3D *helper = nullptr;
    std::map<std::string, int> made;
    Pickup hand;
    const auto check = [&](int step) {
        test::step(2); // what was dropped is freed at the end of a frame
        std::map<std::string, int> held;
        std::map<const ItemCore *, int> seen;
        for (Pile *pile : piles) {
            std::map<std::string, int> own;
            for (const ItemCore *it : pile->list()) {
                own[it->get_kind().utf8().get_data()]++;
                seen[it]++;
            }
            for (const char *kind : kinds) {
                ASSERT_EQ(pile->count_kind(kind), own[kind]) << kind << " at step " << step;
                held[kind] += own[kind];
            }
        }
        for (StackCarrier *stack : stacks) {
            for (const ItemCore *it : stack->list()) {
                held[it->get_kind().utf8().get_data()]++;
                seen[it]++;
            }
        }
        for (const char *kind : kinds) {
            ASSERT_EQ(held[kind], made[kind]) << kind << " at step " << step;
        }
        for (const auto &[it, times] : seen) {
            ASSERT_EQ(times, 1) << "a good lies in two places at step " << step;
        }
        ASSERT_EQ(yard.items->get_child_count(), (int)seen.size()) << "at step " << step;
        ASSERT_LE(yard.instances(), (int)seen.size());
    };

    for (int step = 0; step < 20000; step++) {
        Pile *pile = piles[(size_t)pick(6)];
        StackCarrier *stack = stacks[(size_t)pick(4)];
        const char *kind = kinds[pick(6)];
        Ref<Zone> zone = zones[pick(6)];
        Node3D *&hauler = haulers[(size_t)pick(4)];
        switch (pick(14)) {
        case 0:
        case 1:
            if (pile->count() < 60) {
                pile->add(Item::spawn(kind, Vector3()), pick(3) * 0.1);
                made[kind]++;
            }
            break;
        case 2:
            if (!stack->is_full()) {
                stack->add(Item::spawn(kind, Vector3()));
                made[kind]++;
            }
            break;
        case 3:
            if (ItemCore *it = pile->take(pick(2) ? String(kind) : String())) {
                stack->add(it);
            }
            break;
        case 4:
        case 5:
            if (ItemCore *it = stack->take(pick(2) ? String(kind) : String())) {
                pile->add(it, 0.2);
            }
            break;
        case 6: {
            const int n = pick(4);
            made[kind] -= std::min(n, pile->count_kind(kind));
            pile->drop(kind, n);
            break;
        }
        case 7:
            hand.zone_step(zones, Vector3(), stack);
            break;
        case 8: {
            zone->claim(hauler->get_instance_id(), kind, 1 + pick(5));
            const int others = zone->claimed(kind, hauler->get_instance_id());
            ASSERT_GE(zone->claimed(kind, 0), others + 1);
            break;
        }
        case 9:
            zone->release(hauler->get_instance_id());
            break;
        case 10: // a hauler is dismissed with its claims, another comes
            if (pick(10) == 0) {
                const uint64_t gone = hauler->get_instance_id();
                memdelete(hauler);
                hauler = yard.put<Node3D>();
                for (int i = 0; i < zones.size(); i++) {
                    Ref<Zone> z = zones[i];
                    const int now = z->claimed(kind, 0);
                    ASSERT_EQ(z->claimed(kind, gone), now);
                }
            }
            break;
        case 11: // a good is destroyed where it lies
            if (pile->count() > 0) {
                ItemCore *it = pile->list()[pick(pile->count())];
                made[it->get_kind().utf8().get_data()]--;
                memdelete(it);
            }
            break;
        case 12: // a helper comes or goes
            if (helper) {
                memdelete(helper);
                helper = nullptr;
            } else {
                helper = yard.put<Node3D>(Vector3(3, 0, 7));
                for (StackCarrier *s : stacks) {
                    s->set_helper(helper);
                }
            }
            break;
        default:
            stack->set_global_position(Vector3((float)pick(12), 0, (float)pick(12)));
            pile->set_show_limit(pick(3) == 0 ? 0 : 3 + pick(9));
            pile->_reflow();
            yard.run(1.0 / 60.0);
            break;
        }
        if (step % 50 == 0) {
            check(step);
            if (HasFatalFailure()) {
                return;
            }
        }
    }
    check(20000);
    yard.run(5.0);
    for (StackCarrier *stack : stacks) {
        for (const ItemCore *it : stack->list()) {
            EXPECT_FALSE(it->is_flying());
        }
    }
}

TEST(Goods, MoneyIsConservedOnCashTiles) {
    const uint64_t seed = std::random_device{}();
    std::printf("seed %" PRIu64 "\n", seed);
    std::mt19937_64 rng(seed);
    Yard yard;
    CashTile *tile = yard.put<CashTile>();
    int64_t put_in = 0;
    int64_t taken = 0;
    for (int step = 0; step < 4000; step++) {
        const int64_t amount = (int64_t)(rng() % 500);
        const int64_t unit = (int64_t)(rng() % 40);
        switch (rng() % 4) {
        case 0:
            tile->add_money(amount, unit, Vector3(0, 1, 0));
            put_in += amount;
            break;
        case 1:
            tile->add_quiet(amount, unit);
            put_in += amount;
            break;
        case 2:
            tile->settle();
            break;
        default:
            if (Item *bill = tile->take_bill()) {
                taken += bill->get_value();
                memdelete(bill);
            }
            break;
        }
        ASSERT_EQ(tile->total() + taken, put_in) << "step " << step;
        ASSERT_LE(tile->bill_list().size(), 6);
        ASSERT_EQ(tile->bill_list().size(), tile->get_pile()->count());
    }
}

} // namespace
} // namespace tilm
