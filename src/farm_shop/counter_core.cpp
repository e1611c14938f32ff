#include "farm_shop/counter_core.h"

#include <algorithm>

#include <godot_cpp/variant/utility_functions.hpp>

#include "farm_items/goods_ledger.h"
#include "glebworks/glebworks.h"
#include "names.h"
#include "rules/shop.h"

namespace tilm {

namespace {
constexpr double slot_gap = 1.15;
constexpr double first_slot = 1.6;
constexpr double far_interval = 0.3; // seconds between steps out of sight
constexpr double pay_pause = 0.45;   // between two customers out of sight
constexpr double exit_side = 2.3;    // the way out runs beside the stall
} // namespace

bool CounterCore::rush = false;
double CounterCore::spawn_mult = 1.0;

void CounterCore::show_ghosts() {}
void CounterCore::settle_cash() {}

void CounterCore::slow_join() {
    Glebworks::slow_add(this);
}

void CounterCore::set_product(const String &k) {
    product = k;
    if (products.size() <= 1) {
        products.assign({k});
    }
}

void CounterCore::set_products(const Array &k) {
    products.clear();
    for (int64_t i = 0; i < k.size(); ++i) {
        const Variant &kind = k[i];
        const bool text = kind.get_type() == Variant::STRING || kind.get_type() == Variant::STRING_NAME;
        if (!text || String(kind).is_empty()) {
            ERR_PRINT("TILMARCH counter of " + product + ": a product that is no kind is left out");
            continue;
        }
        products.push_back(kind);
    }
    if (products.empty()) {
        products.push_back(product);
    }
}

Array CounterCore::get_products() const {
    Array out;
    for (const String &k : products) {
        out.push_back(k);
    }
    return out;
}

void CounterCore::set_queue(const Array &customers) {
    queue.clear();
    for (int64_t i = 0; i < customers.size(); ++i) {
        join_queue(Object::cast_to<WalkerCore>(customers[i]));
    }
}

Array CounterCore::get_queue() {
    drop_dead();
    Array out;
    for (const LiveRef<WalkerCore> &c : queue) {
        out.push_back(c.get());
    }
    return out;
}

void CounterCore::join_queue(WalkerCore *customer) {
    if (mind(customer) == nullptr) {
        ERR_PRINT("TILMARCH counter queue: only a walker with a CustomerBrain can stand in line");
        return;
    }
    queue.emplace_back(customer);
}

void CounterCore::leave_queue(WalkerCore *customer) {
    queue.erase(
        std::remove_if(queue.begin(), queue.end(), [&](const LiveRef<WalkerCore> &c) { return c.get() == customer; }),
        queue.end());
    for (size_t i = 0; i < queue.size(); ++i) {
        if (WalkerCore *c = queue[i].get()) {
            c->go(slot(static_cast<int64_t>(i)));
        }
    }
}

void CounterCore::drop_dead() {
    const size_t before = queue.size();
    queue.erase(std::remove_if(queue.begin(), queue.end(), [](const LiveRef<WalkerCore> &c) { return !c; }),
                queue.end());
    if (queue.size() != before) {
        leave_queue(nullptr);
    }
}

CustomerBrain *CounterCore::mind(const WalkerCore *customer) {
    return customer == nullptr ? nullptr : Object::cast_to<CustomerBrain>(customer->get_brain().ptr());
}

Vector3 CounterCore::slot(int64_t i) const {
    Vector3 p = get_position();
    p.z += first_slot + static_cast<double>(i) * slot_gap;
    return p;
}

int64_t CounterCore::stock_of(const String &kind) const {
    const PileCore *pile = stock.get();
    return pile == nullptr ? 0 : pile->count_kind(kind);
}

int64_t CounterCore::stocked() const {
    int64_t sum = 0;
    for (const String &k : products) {
        sum += stock_of(k);
    }
    return sum;
}

int64_t CounterCore::waiting() const {
    return static_cast<int64_t>(queue.size()) + ghost_count();
}

Dictionary CounterCore::peek_ghost() const {
    Dictionary out;
    if (!ghosts.empty()) {
        const GhostRecord &g = ghosts.front();
        out["kind"] = g.kind;
        out["n"] = g.n;
        out["vip"] = g.vip;
        out["wait"] = g.wait;
        out["walk"] = g.walk;
    }
    return out;
}

void CounterCore::pop_ghost() {
    if (!ghosts.empty()) {
        ghosts.pop_front();
    }
}

void CounterCore::add_ghost(const String &kind, int64_t n, bool vip, double wait, bool walk) {
    ghosts.push_back({kind, n, vip, wait, walk});
}

String CounterCore::first_stocked() const {
    for (const String &k : products) {
        if (stock_of(k) > 0) {
            return k;
        }
    }
    return String();
}

bool CounterCore::is_near() const {
    const Vector3 p = get_position();
    return Glebworks::in_view(p, 12.0) || Glebworks::in_view(Vector3(p.x, 0, spawn_z), 4.0);
}

void CounterCore::_process(double dt) {
    double d = dt + slow_clock;
    if (!Glebworks::in_view(get_position(), 8.0) && d < far_interval) {
        slow_clock = d;
        return;
    }
    slow_clock = 0.0;
    clock += d;
    const bool near = is_near();
    drop_dead();
    calm_line(d);
    step_spawn(d, near);
    if (near) {
        pay_clock = 0.0;
        if (!ghosts.empty()) {
            show_ghosts();
        }
        if (settle_pending) {
            settle_cash();
        }
    } else if (queue.empty()) {
        step_ghosts(d);
    }
    if (!queue.empty()) {
        step_head(d);
    }
}

void CounterCore::calm_line(double d) {
    for (const LiveRef<WalkerCore> &c : queue) {
        CustomerBrain *m = mind(c.get());
        if (m != nullptr && stock_of(m->kind) > 0) {
            m->wait = std::max(0.0, m->wait - d);
        }
    }
}

void CounterCore::step_spawn(double d, bool near) {
    spawn_clock -= d;
    if (waiting() >= rules::queue_limit || spawn_clock > 0.0) {
        return;
    }
    double gap = rules::spawn_gap(rush, spawn_mult, stocked());
    if (!near) {
        gap += std::max(spawn_clock, -0.3);
    }
    spawn_clock = gap;
    new_ghost(near);
}

void CounterCore::new_ghost(bool near) {
    GhostRecord g;
    g.kind = product;
    if (products.size() >= 2) {
        g.kind = products[static_cast<size_t>(UtilityFunctions::randi_range(0, (int64_t)products.size() - 1))];
    }
    g.n = UtilityFunctions::randi_range(2, 4) + rules::order_bonus(stocked());
    g.vip = UtilityFunctions::randf() < rules::vip_share;
    g.walk = near;
    ghosts.push_back(g);
}

void CounterCore::step_head(double d) {
    WalkerCore *front = queue.front().get();
    CustomerBrain *m = mind(front);
    if (m == nullptr) {
        leave_queue(front);
        return;
    }
    m->show_bubble(!m->leaving && front->arrived());
    if (!front->arrived()) {
        return;
    }
    front->face(Vector3(0, 0, -1), d);
    if (m->gives_up()) {
        give_up(front, m);
        return;
    }
    step_swap(front, m, d);
    if (m->got >= m->want) {
        serve_clock = 0.0;
        call(TM_NAME("serve"), front);
        return;
    }
    serve_clock += d;
    if (serve_clock >= rules::serving_delay(level) && stock_of(m->kind) > 0) {
        serve_clock = 0.0;
        call(TM_NAME("give"), front);
    }
}

void CounterCore::step_swap(WalkerCore *front, CustomerBrain *m, double d) {
    if (products.size() < 2 || m->got > 0 || stock_of(m->kind) > 0 || stocked() == 0) {
        swap_clock = 0.0;
        return;
    }
    swap_clock += d;
    if (swap_clock > rules::swap_seconds) {
        swap_clock = 0.0;
        front->call(TM_NAME("change_order"), first_stocked());
    }
}

void CounterCore::give_up(WalkerCore *front, CustomerBrain *m) {
    m->want = m->got;
    if (m->got >= 1) {
        call(TM_NAME("serve"), front);
        return;
    }
    call(TM_NAME("_pay"), m->kind, 0, m->vip, m->mood(), false);
    send_away(front);
}

void CounterCore::send_away(WalkerCore *front) {
    CustomerBrain *m = mind(front);
    if (m == nullptr) {
        return;
    }
    m->leaving = true;
    m->show_bubble(false);
    const double x = get_position().x + exit_side;
    front->go(Vector3(x, 0, front->get_position().z + 0.6), Vector3(x, 0, spawn_z + 2.0));
    leave_queue(front);
}

void CounterCore::step_ghosts(double d) {
    for (GhostRecord &g : ghosts) {
        if (stock_of(g.kind) < g.n) {
            g.wait += d;
        }
    }
    if (ghosts.empty()) {
        return;
    }
    GhostRecord &head = ghosts.front();
    int64_t need = head.n + (head.vip ? rules::vip_extra : 0);
    if (products.size() >= 2 && stock_of(head.kind) == 0 && stocked() > 0) {
        swap_clock += d;
        if (swap_clock > rules::swap_seconds) {
            swap_clock = 0.0;
            head.wait += rules::swap_penalty;
            head.kind = first_stocked();
        }
        return;
    }
    swap_clock = 0.0;
    pay_clock += d;
    const double t = rules::serving_delay(level) * static_cast<double>(need) + pay_pause;
    if (pay_clock < t) {
        return;
    }
    const int64_t have = stock_of(head.kind);
    const double patience = CustomerBrain::get_patience();
    if (have < need) {
        if (!rules::gives_up(head.wait, patience)) {
            return;
        }
        need = have;
    }
    pay_clock -= t;
    const GhostRecord sold = head; // _pay may be a script's
    if (need > 0) {
        const GoodsVerb verb("sold");
        stock.get()->drop(sold.kind, static_cast<int>(need));
    }
    call(TM_NAME("_pay"), sold.kind, need, sold.vip, rules::mood_after(sold.wait, patience), true);
    pop_ghost();
}

void CounterCore::_bind_methods() {
    TM_BIND_FIELD(CounterCore, Variant::STRING, product);
    TM_BIND_FIELD(CounterCore, Variant::ARRAY, products);
    TM_BIND_FIELD(CounterCore, Variant::OBJECT, stock);
    TM_BIND_FIELD(CounterCore, Variant::ARRAY, queue);
    TM_BIND_FIELD(CounterCore, Variant::FLOAT, spawn_z);
    TM_BIND_FIELD(CounterCore, Variant::BOOL, settle_pending);
    TM_BIND_FIELD(CounterCore, Variant::FLOAT, clock);
    TM_BIND_FIELD(CounterCore, Variant::FLOAT, spawn_clock);
    TM_BIND_FIELD(CounterCore, Variant::FLOAT, serve_clock);
    TM_BIND_FIELD(CounterCore, Variant::FLOAT, swap_clock);
    TM_BIND_FIELD(CounterCore, Variant::FLOAT, pay_clock);
    TM_BIND_FIELD(CounterCore, Variant::FLOAT, slow_clock);
    ClassDB::bind_method(D_METHOD("set_level_raw", "l"), &CounterCore::set_level_raw);
    ClassDB::bind_method(D_METHOD("get_level"), &CounterCore::get_level);
    ClassDB::bind_method(D_METHOD("slow_join"), &CounterCore::slow_join);
    ClassDB::bind_method(D_METHOD("slot", "i"), &CounterCore::slot);
    ClassDB::bind_method(D_METHOD("stocked"), &CounterCore::stocked);
    ClassDB::bind_method(D_METHOD("waiting"), &CounterCore::waiting);
    ClassDB::bind_method(D_METHOD("ghost_count"), &CounterCore::ghost_count);
    ClassDB::bind_method(D_METHOD("peek_ghost"), &CounterCore::peek_ghost);
    ClassDB::bind_method(D_METHOD("pop_ghost"), &CounterCore::pop_ghost);
    ClassDB::bind_method(D_METHOD("add_ghost", "kind", "n", "vip", "wait", "walk"), &CounterCore::add_ghost);
    ClassDB::bind_method(D_METHOD("join_queue", "customer"), &CounterCore::join_queue);
    ClassDB::bind_method(D_METHOD("leave_queue", "customer"), &CounterCore::leave_queue);
    ClassDB::bind_static_method("CounterCore", D_METHOD("set_rush", "v"), &CounterCore::set_rush);
    ClassDB::bind_static_method("CounterCore", D_METHOD("get_rush"), &CounterCore::get_rush);
    ClassDB::bind_static_method("CounterCore", D_METHOD("set_spawn_mult", "v"), &CounterCore::set_spawn_mult);
    ClassDB::bind_static_method("CounterCore", D_METHOD("get_spawn_mult"), &CounterCore::get_spawn_mult);
}

} // namespace tilm
