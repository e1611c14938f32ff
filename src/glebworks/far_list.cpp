#include "glebworks/far_list.h"

#include <algorithm>
#include <cmath>

#include <godot_cpp/classes/time.hpp>

#include "glebworks/glebworks.h"
#include "glebworks/walker_core.h"

namespace tilm {

namespace {
constexpr double visit_every = 0.3;     // seconds
constexpr uint64_t frame_budget = 2500; // microseconds
constexpr double wake_margin = 10.0;
} // namespace

std::vector<FarList::Member> FarList::members;
std::size_t FarList::cursor = 0;
double FarList::list_clock = 0.0;
int FarList::visits_done = 0;

int FarList::visits_for(double dt, int n) {
    return std::min(n, static_cast<int>(std::ceil(dt * n / visit_every)) + 1);
}

void FarList::join(WalkerCore *walker) {
    members.push_back({static_cast<uint64_t>(walker->get_instance_id()), walker});
}

void FarList::tick(double dt) {
    visits_done = 0;
    if (dt <= 0.0) {
        return;
    }
    list_clock += dt;
    Time *time = Time::get_singleton();
    const uint64_t begin = time->get_ticks_usec();
    const int visits = visits_for(dt, size());
    for (int i = 0; i < visits && !members.empty(); ++i) {
        if (time->get_ticks_usec() - begin >= frame_budget) {
            break;
        }
        ++visits_done;
        if (cursor >= members.size()) {
            cursor = 0;
        }
        const Member member = members[cursor];
        const auto here = members.begin() + static_cast<std::ptrdiff_t>(cursor);
        if (ObjectDB::get_instance(member.id) == nullptr) {
            members.erase(here);
            continue;
        }
        WalkerCore *w = member.walker;
        if (!w->asleep || !w->is_inside_tree()) {
            w->listed = false;
            members.erase(here);
            continue;
        }
        const double elapsed = list_clock - w->stamp;
        w->stamp = list_clock;
        if (!w->can_process()) {
            ++cursor;
            continue;
        }
        if (Glebworks::in_view(w->get_global_position(), wake_margin)) {
            w->asleep = false;
            w->listed = false;
            members.erase(here);
            w->set_process(true);
        } else {
            ++cursor;
        }
        if (elapsed > 0.0 && !w->far_skip) {
            // The brain may free the walker or drop itself: hold it, and look again afterwards.
            Ref<WalkerBrain> brain = w->brain;
            w->ticking = true;
            if (brain.is_valid()) {
                brain->tick(elapsed);
            } else {
                w->far_frame(elapsed);
            }
            if (ObjectDB::get_instance(member.id) != nullptr) {
                w->ticking = false;
            }
        }
    }
}

} // namespace tilm
