#include "game/shell/farm_report.h"

#include <algorithm>

#include <godot_cpp/classes/os.hpp>
#include <godot_cpp/classes/performance.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "farm_items/goods_ledger.h"
#include "game/actors/cash_tile.h"
#include "game/actors/hauler.h"
#include "game/actors/worker.h"
#include "game/shell/world.h"

namespace tilm {

namespace {

constexpr double FRAME_LINE_SECONDS = 5.0;
constexpr int LINES_PER_MINUTE = 12;
constexpr int LINES_PER_BUSY = 24;
constexpr double LONG_FRAME = 0.05;

} // namespace

void FarmReport::step(double delta, bool bot) {
    if (bot && delta > LONG_FRAME) {
        long_frames++;
        longest = std::max(longest, delta);
    }
    clock += delta;
    if (clock < FRAME_LINE_SECONDS) {
        return;
    }
    clock = 0;
    count++;
    const bool debug = OS::get_singleton()->is_debug_build();
    if (debug) {
        frame_line();
    }
    if (debug && count % LINES_PER_BUSY == 0) {
        busy_line();
    }
    if (count % LINES_PER_MINUTE == 0) {
        flow.flush();
        if (debug) {
            check_books();
        }
        if (bot) {
            money_lines();
        }
    }
}

void FarmReport::frame_line() const {
    Performance *monitor = Performance::get_singleton();
    UtilityFunctions::print(vformat(
        "TILMARCH fps=%d items=%d money=%d draws=%d objs=%d proc_ms=%.2f nodes=%d batched=%d",
        static_cast<int64_t>(monitor->get_monitor(Performance::TIME_FPS)), world.item_count(), world.money_now(),
        static_cast<int64_t>(monitor->get_monitor(Performance::RENDER_TOTAL_DRAW_CALLS_IN_FRAME)),
        static_cast<int64_t>(monitor->get_monitor(Performance::OBJECT_COUNT)),
        monitor->get_monitor(Performance::TIME_PROCESS) * 1000.0,
        static_cast<int64_t>(monitor->get_monitor(Performance::OBJECT_NODE_COUNT)), world.batched_items()));
}

void FarmReport::busy_line() const {
    int haulers = 0;
    int carrying = 0;
    int workers = 0;
    int cutting = 0;
    for (int i = 0; i < world.get_child_count(); i++) {
        Node *child = world.get_child(i);
        if (Hauler *hauler = Object::cast_to<Hauler>(child)) {
            haulers++;
            const int64_t state = hauler->mind()->get_state();
            carrying += state != HaulerBrain::choose && state != HaulerBrain::resting;
        } else if (Worker *worker = Object::cast_to<Worker>(child)) {
            workers++;
            cutting += worker->mind()->get_state() != WorkerBrain::to_field;
        }
    }
    UtilityFunctions::print(vformat("TILMARCH busy haulers=%d/%d workers=%d/%d", carrying, haulers, cutting, workers));
}

// Proves that no good and no dollar came or went outside the verbs. A fault is told once, with what it is about.
void FarmReport::check_books() {
    const GoodsLedger::Faults faults = GoodsLedger::take_faults();
    for (const auto &[kind, n] : faults.came) {
        ERR_PRINT(vformat("TILMARCH ledger: %d %s came from nowhere", n, String(kind.c_str())));
    }
    for (const auto &[kind, n] : faults.went) {
        ERR_PRINT(vformat("TILMARCH ledger: %d %s went nowhere", n, String(kind.c_str())));
    }
    int64_t lying = 0;
    int64_t off = 0;
    for (const CashTile *tile : world.cash_list()) {
        lying += tile->total();
        off += tile->total() - tile->get_booked();
    }
    if (off != 0 || world.unaccounted_money() != 0) {
        ERR_PRINT(vformat("TILMARCH ledger: %d dollars too many on the cash tiles, %d in the purse", off,
                          world.unaccounted_money()));
        world.rebase_books();
    }
    UtilityFunctions::print(vformat("TILMARCH ledger goods in=%d out=%d here=%d money lying=%d purse=%d",
                                    GoodsLedger::came(), GoodsLedger::went(), GoodsLedger::here(), lying,
                                    world.money_now()));
}

void FarmReport::money_lines() {
    UtilityFunctions::print(vformat("TILMARCH money sales=%d missions=%d other=%d", world.get_sales(),
                                    world.get_mission_income(), world.get_other_income()));
    UtilityFunctions::print(vformat("TILMARCH rpt money=%d level=%d regions=%d long_frames=%d longest_ms=%d",
                                    world.money_now(), world.level(), world.get_regions().size(), long_frames,
                                    static_cast<int64_t>(longest * 1000.0)));
    long_frames = 0;
    longest = 0;
}

} // namespace tilm
