#include "game/shell/purse.h"

#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/scene_tree_timer.hpp>

#include "game/actors/item.h"
#include "game/actors/money_stack.h"
#include "game/actors/player.h"
#include "game/actors/stack_carrier.h"
#include "game/ports/notices.h"
#include "game/shell/world.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/rounding.h"

namespace tilm {

namespace {

constexpr int64_t DISPLAY_MAX = 2147483647;
constexpr double PAY_FLIGHT = 0.22;

} // namespace

void Purse::display(Item *from, const Vector3 *to) {
    MoneyStack *stack = world.farmer()->money_stack();
    int64_t shown = CLAMP(world.money, int64_t(0), DISPLAY_MAX);
    stack->show_money(shown, from, to ? Variant(*to) : Variant());
}

void Purse::show() {
    display(nullptr, nullptr);
}

// Richer money on the back is worth a word: bills turned to bars, or bars to cases.
void Purse::note_tier(int before) {
    int tier = world.farmer()->money_stack()->get_tier();
    if (tier <= before) {
        return;
    }
    Notices::say(tier == 1 ? String("GOLD BARS!") : String("CASH CASES!"), ToastLevel::good);
    world.buzz(120);
}

void Purse::change(int64_t by) {
    world.money += by;
    accounted += by;
}

void Purse::rebase() {
    accounted = world.money;
}

int64_t Purse::unaccounted() const {
    return world.money - accounted;
}

void Purse::pay(int64_t amount, const Vector3 &to) {
    change(-amount);
    MoneyStack *stack = world.farmer()->money_stack();
    int before = stack->count();
    display(nullptr, &to);
    if (stack->count() < before || world.is_building()) {
        return;
    }
    // The stack looks the same: a single bill shows the payment.
    Item *bill = Item::spawn("bill", world.farmer()->carrier()->top_global());
    bill->fly_to(to, PAY_FLIGHT);
    Ref<SceneTreeTimer> timer = world.get_tree()->create_timer(PAY_FLIGHT, false);
    timer->connect("timeout", Callable(bill, "queue_free"));
}

void Purse::gain(int64_t amount, const Vector3 &from) {
    if (amount <= 0) {
        return;
    }
    int tier = world.farmer()->money_stack()->get_tier();
    change(amount);
    other += amount;
    display(Item::spawn("bill", from), nullptr);
    note_tier(tier);
}

bool Purse::spend_quiet(int64_t amount) {
    if (amount < 0 || world.money < amount || world.is_visiting()) {
        return false;
    }
    change(-amount);
    show();
    return true;
}

void Purse::collect(Item *bill) {
    int64_t amount = bill->get_value();
    int64_t bonus = rules::round_half_away((cash_multiplier - 1.0) * static_cast<double>(amount));
    int64_t total = amount + bonus;
    int tier = world.farmer()->money_stack()->get_tier();
    change(total);
    sales += total;
    world.mission_event("earn", "", total);
    world.tutorial_event("cash");
    display(bill, nullptr);
    note_tier(tier);
    Sfx::sound(TM_NAME("coin_pick"));
}

} // namespace tilm
