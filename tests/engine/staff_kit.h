#pragma once
// A place to work: a fake farm, zones with piles, hired people, and a clock that steps all walkers at 60 Hz.

#include <cmath>
#include <functional>
#include <initializer_list>

#include <gtest/gtest.h>

#include "engine_test.h"
#include "fake_farm.h"
#include "farm_shop/hauler_brain.h"
#include "game/actors/hauler.h"
#include "game/actors/item.h"
#include "game/actors/pile.h"
#include "game/actors/stack_carrier.h"
#include "game/actors/zone.h"
#include "glebworks/glebworks.h"
#include "glebworks/walker_core.h"

namespace tilm {

class Workplace {
public:
    Workplace() : farm(tilm_test::root()) {
        Glebworks::see_everything();
        HaulerBrain::clear_hens();
    }
    ~Workplace() { Glebworks::see_everything(); }
    Workplace(const Workplace &) = delete;

    template <class T>
    T *put(const Vector3 &pos = Vector3()) {
        T *node = memnew(T);
        node->set_position(pos);
        farm.ground->add_child(node);
        return node;
    }

    static void fill(PileCore *pile, const char *kind, int n) {
        for (int i = 0; i < n; ++i) {
            pile->add(Item::spawn(kind, pile->get_global_position()), 0.0);
        }
    }

    Ref<Zone> take(const char *kind, int n, const Vector3 &pos) {
        Pile *pile = put<Pile>(pos);
        fill(pile, kind, n);
        Ref<Zone> zone = Zone::make("take", pile, pos, Vector2(2.4f, 1.8f), "source");
        zone->set_makes(kind);
        farm.zones.push_back(zone);
        return zone;
    }

    Ref<Zone> give(const char *group, const char *kind, int level, const Vector3 &pos) {
        Ref<Zone> zone = Zone::make("give", put<Pile>(pos), pos, Vector2(2.4f, 1.8f), group);
        Dictionary accepts;
        if (kind[0] != '\0') {
            accepts[kind] = level;
        }
        zone->set_accepts(accepts);
        farm.zones.push_back(zone);
        return zone;
    }

    Hauler *hire(std::initializer_list<const char *> kinds, const char *dst, const Vector3 &pos = Vector3()) {
        Array list;
        for (const char *kind : kinds) {
            list.push_back(kind);
        }
        Hauler *hauler = memnew(Hauler);
        hauler->setup("helper#" + String::num_int64(++hired), list, dst, pos, farm.zones);
        farm.ground->add_child(hauler);
        return hauler;
    }

    void run(double seconds, const std::function<void()> &each_step = {}) {
        for (int n = static_cast<int>(std::lround(seconds * 60.0)); n > 0; --n) {
            for (int i = 0; i < farm.ground->get_child_count(); ++i) {
                WalkerCore *walker = Object::cast_to<WalkerCore>(farm.ground->get_child(i));
                if (walker != nullptr && walker->is_processing() && !walker->is_queued_for_deletion()) {
                    walker->_process(1.0 / 60.0);
                }
            }
            if (each_step) {
                each_step();
            }
        }
    }

    static int held(const Ref<Zone> &zone, const char *kind) { return zone->get_pile()->count_kind(kind); }
    static int carried(const Hauler *hauler) { return hauler->get_stack()->count(); }

    FakeFarm farm;
    int hired = 0;
};

} // namespace tilm
