#include "game/actors/sell_counter.h"

#include <algorithm>

#include <godot_cpp/classes/engine.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/actors/cash_tile.h"
#include "game/actors/customer.h"
#include "game/actors/pile.h"
#include "game/actors/zone.h"
#include "game/art/buildings.h"
#include "game/art/models.h"
#include "game/art/scenery.h"
#include "game/data/farm_data.h"
#include "game/kit/ui.h"
#include "game/sound/sfx.h"
#include "names.h"
#include "rules/items.h"
#include "rules/rounding.h"
#include "rules/shop.h"
#include "safe_read.h"
#include "statics.h"

namespace tilm {

namespace {

constexpr double row_z = 4.6;
constexpr double table_z = 0.95; // the table stands on the solid, behind the give zone
constexpr int new_customers_a_frame = 2;
constexpr double alarm_seconds = 20.0;
constexpr size_t alarm_losses = 3;
const Color lime(0.773f, 0.961f, 0.259f); // c5f542

Dictionary *mults = nullptr; // kind -> what it pays more

Color color_of(const Variant &v, const Color &otherwise) {
    if (v.get_type() == Variant::COLOR) {
        return v;
    }
    return v.get_type() == Variant::STRING ? Color::html(v) : otherwise;
}

bool lies_flat(const String &kind) {
    return kind == "calf" || kind == "hen";
}

bool is_good(const String &kind) {
    return FarmData::price_of(kind, -1) >= 0;
}

Array known_goods(const String &stall, const Array &kinds) {
    Array known;
    for (int64_t i = 0; i < kinds.size(); ++i) {
        const String kind = kinds[i];
        if (is_good(kind)) {
            known.push_back(kind);
        } else {
            ERR_PRINT("TILMARCH stall " + stall + ": no good is called \"" + kind + "\", it is not sold there");
        }
    }
    return known;
}

} // namespace

double SellCounter::price_factor = 1.0;

void SellCounter::setup_statics() {
    if (mults == nullptr) {
        mults = new Dictionary;
        Statics::on_release([] {
            delete mults;
            mults = nullptr;
        });
    }
}

Dictionary SellCounter::price_mults() {
    setup_statics();
    return *mults;
}

SellCounter::~SellCounter() {
    for (LiveRef<Customer> &c : customers) {
        Customer *customer = c.get();
        if (customer == nullptr) {
            continue;
        }
        customer->clear_pool();
        if (!customer->mind()->leaving) {
            customer->mind()->leaving = true;
            customer->go(Vector3(get_position().x, 0, spawn_z + 2.0));
        }
    }
    for (int64_t i = 0; i < pool.size(); ++i) {
        Object *spare = pool[i].get_validated_object();
        if (spare != nullptr) {
            memdelete(spare);
        }
    }
    pool.clear();
}

Farm *SellCounter::farm() const {
    Farm *running = Farm::current();
    Node3D *node = world.get();
    return running != nullptr && node != nullptr && running->root() == node ? running : nullptr;
}

void SellCounter::set_cash_tile(CashTile *t) {
    tile.set(t);
}

void SellCounter::set_goods(const String &main_kind, const Array &kinds) {
    set_product(main_kind);
    set_products(kinds);
    base_price = FarmData::price_of(main_kind, 4);
}

bool SellCounter::build(const Dictionary &entry, Farm *owner) {
    const String id = read_text(entry, "id", "stall");
    if (owner == nullptr || owner->root() == nullptr || get_parent() != nullptr) {
        ERR_PRINT("TILMARCH stall " + id + ": needs a farm, and not to stand yet");
        return false;
    }
    const String kind = read_text(entry, "product", "egg");
    if (!is_good(kind)) {
        ERR_PRINT("TILMARCH stall " + id + ": no good is called \"" + kind + "\", it is left out");
        return false;
    }
    const Vector2 at = entry.get("pos", Vector2());
    const Array several = known_goods(id, read_list(entry, "products"));
    color = color_of(entry.get("color", Variant()), color);
    set_goods(kind, several);
    world.set(owner->root());
    set_name(id);
    set_position(Vector3(at.x, 0, row_z));
    owner->root()->add_child(this);

    Node3D *table = Buildings::stall(color);
    table->set_name("Table");
    table->set_position(Vector3(0, 0, table_z));
    add_child(table);

    Pile *goods = memnew(Pile);
    goods->set_name("Stock");
    const bool flat = lies_flat(kind);
    goods->set_cols(flat ? 2 : 4);
    goods->set_rows(2);
    goods->set_spacing(flat ? Vector2(0.9, 0.5) : Vector2(0.62, 0.48));
    goods->set_flat(flat);
    goods->set_show_limit(flat ? 4 : 8);
    goods->set_layer_h(rules::item_height(kind.utf8().get_data()));
    goods->set_sign_height(2.5);
    goods->set_position(Vector3(0.35, 1.02, -0.05));
    table->add_child(goods);
    set_stock(goods);

    const Vector2 zone_size(3.0, 1.8);
    const String group = entry.has("products") ? id : "stall_" + kind;
    give_zone = Zone::make("give", goods, Vector3(at.x, 0, row_z), zone_size, group);
    Dictionary accepts;
    for (const String &k : products) {
        accepts[k] = rules::stock_share(static_cast<int64_t>(products.size()));
    }
    give_zone->set_accepts(accepts);
    set_meta("zone", give_zone);
    Array zones = owner->zone_list();
    zones.push_back(give_zone);
    add_child(Scenery::zone_plate(zone_size, "SELL"));

    Node3D *strip = Scenery::path_strip(Vector2(2.0, 15.5));
    strip->set_position(Vector3(0, 0.022, 14.35 - row_z));
    add_child(strip);
    owner->add_solid(Rect2(at.x - 1.6, 5.25, 3.2, 1.2));

    CashTile *cash = memnew(CashTile);
    cash->set_name(String(get_name()) + "_cash");
    cash->set_position(Vector3(at.x + 2.6, 0, row_z));
    owner->root()->add_child(cash);
    tile.set(cash);
    // Over the awning, well above the head's bubble on the screen; the roof must not hide it.
    price_label = Models::label3d("", 56, lime, Vector3(0, 2.2, 0.3), this);
    price_label->set_draw_flag(Label3D::FLAG_DISABLE_DEPTH_TEST, true);
    set_level(level);
    slow_join();
    return true;
}

int64_t SellCounter::unit_price() const {
    return rules::unit_price(level, base_price);
}

void SellCounter::set_level(int64_t l) {
    set_level_raw(l);
    if (price_label != nullptr) {
        price_label->set_text("$" + String::num_int64(unit_price()));
    }
}

void SellCounter::give(WalkerCore *front) {
    Customer *customer = Object::cast_to<Customer>(front);
    PileCore *pile = stock.get();
    if (customer == nullptr || pile == nullptr || customer->mind().is_null()) {
        return;
    }
    ItemCore *item = pile->take(customer->mind()->kind);
    if (item == nullptr) {
        return;
    }
    customer->receive(item);
    Sfx::sound_at(TM_NAME("item_give"), static_cast<uint64_t>(get_instance_id()), get_position());
}

void SellCounter::serve(WalkerCore *front) {
    Customer *customer = Object::cast_to<Customer>(front);
    CustomerBrain *m = CounterCore::mind(front);
    if (customer == nullptr || m == nullptr) {
        return;
    }
    const int64_t money = _pay(m->kind, m->want, m->vip, customer->mood_mult(), false);
    customer->pop_text("+$" + String::num_int64(money));
    Sfx::sound_at(TM_NAME("sale"), static_cast<uint64_t>(get_instance_id()), get_position());
    send_away(front);
}

void SellCounter::settle_cash() {
    CashTile *cash = tile.get();
    if (cash != nullptr) {
        cash->settle();
    }
    settle_pending = cash != nullptr && cash->has_quiet();
}

int64_t SellCounter::_pay(const String &k, int64_t n, bool is_vip, double m, bool quiet) {
    const double unit = static_cast<double>(unit_price()) * price_factor;
    const int64_t each = rules::price_each(unit, price_mults().get(k, 1.0), is_vip, m);
    const int64_t money = each * std::max<int64_t>(0, n);
    CashTile *cash = tile.get();
    Farm *f = farm();
    if (money > 0 && cash == nullptr && f != nullptr) {
        f->gain(money, get_position());
    } else if (money > 0 && cash != nullptr) {
        if (quiet) {
            cash->add_quiet(money, each);
            settle_pending = true;
        } else {
            cash->add_money(money, each, get_position() + Vector3(-0.9, 1.3, 0));
        }
    }
    if (f != nullptr) {
        f->note_mood(m, "stall");
        f->mission_event("sell", k, n);
        f->stat_add("sold:" + k, n);
        if (m >= 1.0) {
            f->mission_event("happy", "", 1);
        }
    }
    if (m < 0.5) {
        _lost();
    }
    return money;
}

void SellCounter::_lost() {
    losses.push_back(clock);
    losses.erase(std::remove_if(losses.begin(), losses.end(), [&](double t) { return clock - t > alarm_seconds; }),
                 losses.end());
    if (losses.size() >= alarm_losses) {
        losses.clear();
        Sfx::sound(TM_NAME("stall_losing"));
    }
}

Customer *SellCounter::free_customer(const String &kind) {
    for (int64_t i = pool.size() - 1; i >= 0; --i) {
        Customer *customer = Object::cast_to<Customer>(pool[i].get_validated_object());
        if (customer == nullptr) {
            pool.remove_at(i);
        } else if (customer->mind()->kind == kind) {
            pool.remove_at(i);
            return customer;
        }
    }
    return nullptr;
}

void SellCounter::show_ghosts() {
    // Shared by all counters: how many customers this frame has made.
    static uint64_t frame = 0;
    static int made = 0;
    const uint64_t now = Engine::get_singleton()->get_process_frames();
    if (now != frame) {
        frame = now;
        made = 0;
    }
    Node *parent = world.get() != nullptr ? world.get() : get_parent();
    if (parent == nullptr) {
        return;
    }
    while (!ghosts.empty()) {
        const GhostRecord record = ghosts.front();
        Customer *customer = free_customer(record.kind);
        if (customer != nullptr) {
            ghosts.pop_front();
            customer->reuse(record.n, record.vip);
        } else {
            if (made >= new_customers_a_frame) {
                return;
            }
            ++made;
            ghosts.pop_front();
            customer = memnew(Customer);
            customer->setup(record.kind, record.n, record.vip);
            customer->set_pool(pool);
            customers.erase(
                std::remove_if(customers.begin(), customers.end(), [](const LiveRef<Customer> &c) { return !c; }),
                customers.end());
            customers.emplace_back(customer);
        }
        customer->mind()->wait = record.wait;
        parent->add_child(customer);
        join_queue(customer);
        const Vector3 place = slot(static_cast<int64_t>(queue.size()) - 1);
        if (record.walk) {
            customer->set_position(Vector3(get_position().x, 0, spawn_z));
            customer->go(place);
        } else {
            customer->set_position(place);
        }
    }
}

void SellCounter::_bind_methods() {
    TM_BIND_FIELD(SellCounter, Variant::INT, base_price);
    TM_BIND_FIELD(SellCounter, Variant::COLOR, color);
    ClassDB::bind_method(D_METHOD("unit_price"), &SellCounter::unit_price);
    ClassDB::bind_method(D_METHOD("set_level", "l"), &SellCounter::set_level);
    ClassDB::bind_method(D_METHOD("give", "front"), &SellCounter::give);
    ClassDB::bind_method(D_METHOD("serve", "front"), &SellCounter::serve);
    ClassDB::bind_method(D_METHOD("settle_cash"), &SellCounter::settle_cash);
    ClassDB::bind_method(D_METHOD("_pay", "k", "n", "vip", "m", "quiet"), &SellCounter::_pay);
    ClassDB::bind_method(D_METHOD("_lost"), &SellCounter::_lost);
    ClassDB::bind_method(D_METHOD("show_ghosts"), &SellCounter::show_ghosts);
    ClassDB::bind_method(D_METHOD("set_world", "node"), &SellCounter::set_world);
    ClassDB::bind_method(D_METHOD("get_world"), &SellCounter::get_world);
    ClassDB::bind_method(D_METHOD("set_cash_tile", "tile"), &SellCounter::set_cash_tile);
    ClassDB::bind_method(D_METHOD("cash_tile"), &SellCounter::cash_tile);
    ClassDB::bind_method(D_METHOD("set_goods", "main_kind", "kinds"), &SellCounter::set_goods);
    ClassDB::bind_static_method("SellCounter", D_METHOD("set_price_factor", "v"), &SellCounter::set_price_factor);
    ClassDB::bind_static_method("SellCounter", D_METHOD("get_price_factor"), &SellCounter::get_price_factor);
    ClassDB::bind_static_method("SellCounter", D_METHOD("price_mults"), &SellCounter::price_mults);
    ClassDB::bind_method(D_METHOD("recent_losses"), &SellCounter::recent_losses);
}

} // namespace tilm
