#pragma once
// A stall on a fake farm, with its clock, its shelves and its line in the test's hands.

#include "game/actors/cash_tile.h"
#include "game/actors/customer.h"
#include "game/actors/sell_counter.h"
#include "staff_kit.h"

namespace tilm {

inline constexpr double FRAME = 1.0 / 60.0;
inline const Rect2 ELSEWHERE(500, -5, 10, 10);
inline const Rect2 HERE(-20, -20, 60, 60);

class Shop {
public:
    explicit Shop(std::initializer_list<const char *> products = {"egg"}) {
        Dictionary entry;
        Array kinds;
        for (const char *k : products) {
            kinds.push_back(k);
        }
        entry["id"] = "stall_x";
        entry["pos"] = Vector2(10, 4.6f);
        entry["product"] = kinds[0];
        if (products.size() > 1) {
            entry["products"] = kinds;
        }
        stall = memnew(SellCounter);
        stall->build(entry, &place.farm);
        Glebworks::slow_remove(stall);
        stall->set_base_price(4);
        stall->set_spawn_clock(1e9); // nobody comes by himself
        Glebworks::set_view(ELSEWHERE);
    }
    ~Shop() {
        CustomerBrain::set_patience(1.0);
        CounterCore::set_rush(false);
        SellCounter::price_mults().clear();
        SellCounter::set_price_factor(1.0);
    }

    void stock(const char *kind, int n) { Workplace::fill(stall->get_stock(), kind, n); }
    int left(const char *kind) { return stall->get_stock()->count_kind(kind); }
    int64_t cash() { return stall->cash_tile()->total(); }
    void run(double seconds) {
        place.run(seconds, [&] { stall->_process(FRAME); });
    }
    // Only the counter, so that nobody grows impatient on the way.
    void trade(double seconds) {
        for (int i = static_cast<int>(std::lround(seconds / FRAME)); i > 0; --i) {
            stall->_process(FRAME);
        }
    }
    Customer *head() {
        const Array line = stall->get_queue();
        return line.is_empty() ? nullptr : Object::cast_to<Customer>(line[0]);
    }
    Customer *seat(const char *kind, int64_t n, bool vip = false, double wait = 0) {
        stall->add_ghost(kind, n, vip, wait, false);
        Glebworks::set_view(HERE);
        step(1); // the limit of new customers counts by engine frames
        stall->show_ghosts();
        return Object::cast_to<Customer>(stall->get_queue()[stall->get_queue().size() - 1]);
    }

    Workplace place;
    SellCounter *stall;
};

} // namespace tilm
