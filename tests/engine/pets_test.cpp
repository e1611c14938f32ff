// Pets: heel spots, wandering, the horse's back and cart, the cat's cash, and how a farm keeps them.

#include <cmath>
#include <limits>

#include <godot_cpp/classes/mesh_instance3d.hpp>

#include "game/actors/cash_tile.h"
#include "game/actors/pet.h"
#include "game/actors/player.h"
#include "game/art/mesh_baker.h"
#include "game/art/pet_models.h"
#include "game/ports/pet_yard.h"
#include "game/shell/pet_house.h"
#include "rules/pets.h"
#include "staff_kit.h"
#include "world_kit.h"

using namespace godot;

namespace tilm {
namespace {

constexpr double FRAME = 1.0 / 60.0;

// A farm that pets can ask.
class Kennel : public Node3D, public PetYard {
    GDCLASS(Kennel, Node3D)
public:
    bool pet_is_home(const String &kind) const override { return home.has(kind); }
    const Array &pet_cash_tiles() const override { return tiles; }
    void collect_bill(Object *bill) override {
        Item *item = Object::cast_to<Item>(bill);
        ASSERT_NE(item, nullptr);
        money += item->get_value();
        bills++;
        item->queue_free();
    }
    Array home, tiles;
    int64_t money = 0;
    int bills = 0;

protected:
    static void _bind_methods() {}
};
const test::RegisterClasses probes([] { GDREGISTER_CLASS(Kennel); });

class Quarry : public PetQuarry {
public:
    Quarry() { set_current(this); }
    ~Quarry() override { set_current(nullptr); }
    bool fox(Vector3 &at) const override {
        at = Vector3(5, 0, 0);
        return fox_here;
    }
    void chase_fox(const String &who) override { said += who + ";"; }
    bool golden_egg(Vector3 &at) const override {
        at = Vector3(-5, 0, 0);
        return egg_here;
    }
    void collect_egg(const String &who) override { said += "egg " + who + ";"; }
    bool puddle(const Vector3 &from, double reach, Vector3 &at) const override {
        at = Vector3(0, 0, 6);
        return from.distance_to(at) <= reach;
    }
    void dig_puddle(const Vector3 &at, const String &) override { dug = at; }

    bool fox_here = false, egg_here = false;
    String said;
    Vector3 dug;
};

class PetTest : public testing::Test {
protected:
    void SetUp() override {
        kennel = place.put<Kennel>();
        player = place.put<Player>();
        player->set_process(false);
        player->set_first_area(Rect2(-11.4f, -31, 22.8f, 36.2f));
    }

    Pet *own(const char *kind, const Vector3 &at = Vector3()) {
        Pet *pet = memnew(Pet);
        EXPECT_TRUE(pet->setup(kind, kennel, player));
        place.farm.ground->add_child(pet);
        pet->set_process(false);
        pet->set_global_position(at);
        return pet;
    }
    static void run(Pet *pet, double seconds) {
        for (int i = static_cast<int>(std::lround(seconds / FRAME)); i > 0; --i) {
            pet->core_step(FRAME);
        }
    }
    CashTile *cash(const Vector3 &at, int bills) {
        CashTile *tile = place.put<CashTile>(at);
        tile->set_max_bills(100000);
        tile->add_money(bills * 7, 7, at);
        kennel->tiles.push_back(tile);
        return tile;
    }
    static void expect_spot(const Vector3 &p, const Vector3 &wanted) {
        EXPECT_TRUE(near(p, wanted, 1e-3)) << p.x << " " << p.z;
    }
    static bool near(const Vector3 &a, const Vector3 &b, double by) { return std::hypot(a.x - b.x, a.z - b.z) <= by; }

    Workplace place;
    Kennel *kennel = nullptr;
    Player *player = nullptr;
};

TEST_F(PetTest, EachKindHasItsHeelSpotBesideAndBehind) {
    player->get_model()->set_rotation(Vector3()); // faces -z, its right is +x
    const struct {
        const char *kind;
        Vector3 spot;
        double top;
    } rows[] = {{"horse", {0.9f, 0, 2.3f}, 7.5},
                {"dog", {-1, 0, 2}, 7.5},
                {"pig", {0.4f, 0, 3.2f}, 7.5},
                {"cat", {-0.8f, 0, 1.1f}, 7.5}};
    for (const auto &row : rows) {
        Pet *pet = own(row.kind, Vector3(6, 0, -3));
        pet->set_remote(row.kind[0] == 'd' || row.kind[0] == 'p'); // at home these two roam
        run(pet, 5.0);
        EXPECT_TRUE(pet->get_heel_mode());
        EXPECT_TRUE(near(pet->get_global_position(), row.spot, 0.081)) << row.kind;
        EXPECT_LT(pet->get_speed(), 0.01) << row.kind;
        EXPECT_EQ(pet->get_top(), row.top) << row.kind;
        EXPECT_NEAR(pet->get_rotation().y, 0, 0.02) << row.kind; // looks where its lead looks
    }
    Pet *cat = own("cat");
    player->get_model()->set_rotation(Vector3(0, static_cast<real_t>(-Math_PI / 2), 0)); // faces +x
    run(cat, 4.0);
    EXPECT_TRUE(near(cat->get_global_position(), Vector3(-1.1f, 0, -0.8f), 0.081));
    Pet *horse = own("horse");
    player->set_velocity(Vector3(9, 0, 0)); // faster than its own speed
    horse->think(FRAME);
    EXPECT_NEAR(horse->get_top(), 10.5, 1e-6);
}

TEST_F(PetTest, SlowsNearItsSpotRunsWhenItIsLeftBehindAndStopsWithoutALead) {
    Pet *cat = own("cat", Vector3(0, 0, 8));
    player->get_model()->set_rotation(Vector3());
    run(cat, 0.5);
    EXPECT_TRUE(cat->is_running());
    EXPECT_NEAR(cat->get_speed(), 7.5 * (1 - std::exp(-4.0)), 1e-6); // all the way: the ease alone
    run(cat, 1.0);
    EXPECT_FALSE(cat->is_running() && near(cat->get_global_position(), cat->target(), 0.4));
    PetCore *plain = place.put<PetCore>(Vector3(0, 0, 1.25f)); // no decisions of its own
    plain->set_process(false);
    plain->core_set(Variant(), false, false, 4.0, Vector3());
    plain->core_step(FRAME);
    EXPECT_NEAR(plain->get_speed(), 4.0 * 0.5 * (1 - std::exp(-8.0 * FRAME)), 1e-6);
    plain->core_join(true, nullptr, Array());
    plain->set_speed(0);
    plain->set_position(Vector3(0, 0, 1.5f));
    plain->core_step(FRAME);
    EXPECT_NEAR(plain->get_speed(), 4.0 * 0.5 * (1 - std::exp(-8.0 * FRAME)), 1e-6);
    const Vector3 at = cat->get_global_position();
    memdelete(player);
    run(cat, 1.0);
    EXPECT_EQ(cat->get_global_position(), at);
    EXPECT_EQ(cat->get_speed(), 0.0);
}

TEST_F(PetTest, DogsAndPigsWanderOnTheLand) {
    player->set_position(Vector3(9, 0, 0));
    for (const char *kind : {"dog", "pig"}) {
        Pet *pet = own(kind, Vector3(9, 0, 1));
        Vector3 goal = pet->get_wander_goal();
        int spots = 0;
        double low = 99, high = -99;
        for (int i = 0; i < 60 * 60; ++i) {
            pet->core_step(FRAME);
            if (pet->get_wander_goal() != goal) {
                goal = pet->get_wander_goal();
                spots++;
                low = std::min<double>(low, goal.x);
                high = std::max<double>(high, goal.x);
                ASSERT_TRUE(goal.z >= -1.0 && goal.z <= 3.2) << goal.z;
                ASSERT_TRUE(player->at_home(goal)) << goal.x;
            }
            ASSERT_LE(pet->get_speed(), 2.2);
            ASSERT_TRUE(player->at_home(pet->get_global_position()));
        }
        EXPECT_TRUE(spots >= 15 && spots <= 200) << kind << " " << spots;
        EXPECT_GE(low, -5.0);
        EXPECT_LE(high, 11.4 + 1e-3);
        EXPECT_FALSE(pet->get_working());
    }
}

TEST_F(PetTest, GoesHomeAndStays) {
    kennel->home.push_back("dog");
    Pet *dog = own("dog", Vector3(8.6f, 0, -9.2f));
    const rules::Pet *row = rules::find_pet("dog");
    run(dog, 0.5);
    EXPECT_TRUE(dog->get_at_home());
    EXPECT_EQ(dog->get_top(), 3.52);
    run(dog, 6.0);
    EXPECT_TRUE(near(dog->get_global_position(), Vector3(float(row->home_x), 0, float(row->home_z)), 0.081));
    dog->set_remote(true); // a friend's dog knows no home here
    dog->think(FRAME);
    EXPECT_TRUE(dog->get_heel_mode());
    EXPECT_FALSE(dog->get_at_home());
}

TEST_F(PetTest, TheHorseDoublesWhatItsLeadCarriesAndTheCartAddsToIt) {
    StackCore *stack = player->get_stack();
    EXPECT_EQ(stack->total_cap(), 14);
    Pet *horse = own("horse");
    run(horse, FRAME);
    EXPECT_EQ(stack->get_helper(), horse);
    EXPECT_EQ(stack->total_cap(), 28);
    horse->set_gear(3, 2);
    EXPECT_EQ(stack->get_cart_cap(), 60);
    EXPECT_EQ(stack->total_cap(), 88);
    EXPECT_NEAR(horse->get_model()->get_scale().x, 1.1, 1e-6);
    Node3D *cart = horse->get_cart();
    ASSERT_NE(cart, nullptr);
    EXPECT_EQ(stack->get_cart(), cart);
    horse->set_gear(4, 2);
    EXPECT_EQ(horse->get_cart(), cart); // not built again
    EXPECT_EQ(stack->total_cap(), 108);
    run(horse, 3.0);
    EXPECT_TRUE(near(cart->get_global_position(), horse->get_global_position(), PetCore::hitch + 1e-3));
    EXPECT_FALSE(near(cart->get_global_position(), horse->get_global_position(), 1.2)); // never into the horse
    const Vector3 way = cart->get_global_position() - horse->get_global_position();
    EXPECT_LT(way.normalized().dot(-horse->get_global_transform().basis.get_column(2)), -0.8); // but behind it
    for (int i = 0; i < 40; ++i) {
        stack->add(Item::spawn("egg", Vector3()));
    }
    kennel->home.push_back("horse");
    run(horse, FRAME);
    EXPECT_EQ(stack->total_cap(), 14);
    EXPECT_EQ(stack->count(), 40); // nothing is lost by it
    EXPECT_TRUE(stack->is_full());
    kennel->home.clear();
    run(horse, FRAME);
    EXPECT_EQ(stack->total_cap(), 108);
    horse->set_gear(4, 0);
    EXPECT_EQ(stack->total_cap(), 28);
    EXPECT_EQ(horse->get_cart(), nullptr);
    horse->set_gear(99, 99); // out of a damaged save
    EXPECT_EQ(stack->total_cap(), 28 + 150);
    memdelete(horse);
    EXPECT_EQ(stack->total_cap(), 14);
    EXPECT_EQ(stack->count(), 40);
    Pet *dog = own("dog");
    dog->set_gear(5, 3);
    dog->horse_tick();
    EXPECT_EQ(dog->get_cart(), nullptr);
    EXPECT_EQ(stack->total_cap(), 14);
}

TEST_F(PetTest, TheCatFetchesThirtyBillsASecondAndNoneTwice) {
    Pet *cat = own("cat");
    CashTile *tile = cash(Vector3(5, 0, 0), 100);
    cat->_work(Vector3(5.2f, 0, 0), 1.0); // 0.2 away is too far
    EXPECT_EQ(kennel->bills, 0);
    cat->set_cash_clock(0);
    cat->_work(Vector3(5.19f, 0, 0), 1.0);
    EXPECT_EQ(kennel->bills, 30);
    EXPECT_EQ(tile->total() + kennel->money, 700);
    for (int i = 0; i < 60; ++i) {
        cat->_work(Vector3(5, 0, 0), FRAME);
    }
    EXPECT_NEAR(kennel->bills, 60, 1);
    cat->_work(Vector3(5, 0, 0), 100.0);
    EXPECT_EQ(kennel->bills, 100);
    EXPECT_EQ(kennel->money, 700);
    EXPECT_EQ(tile->total(), 0);
    EXPECT_LT(cat->get_cash_clock(), 1.0); // and nothing saved up for the next
}

TEST_F(PetTest, TheCatGoesToTheNearestTileOutOfThePlayersReach) {
    Pet *cat = own("cat");
    const auto goal = [&] {
        Vector3 at;
        return cat->work_goal(at) ? at.x : real_t(-1);
    };
    cash(Vector3(1.5f, 0, 0), 1); // the player takes that one
    cash(Vector3(9.5f, 0, 0), 1);
    EXPECT_EQ(goal(), -1);
    CashTile *far_tile = cash(Vector3(8.5f, 0, 0), 4);
    EXPECT_EQ(goal(), 8.5f);
    CashTile *tile = cash(Vector3(4, 0, 0), 2);
    CashTile *empty = cash(Vector3(3, 0, 0), 0);
    EXPECT_EQ(goal(), 4);
    tile->set_visible(false);
    EXPECT_EQ(goal(), 8.5f);
    tile->set_visible(true);
    tile->set_process_mode(Node::PROCESS_MODE_DISABLED);
    EXPECT_EQ(goal(), 8.5f);
    tile->set_process_mode(Node::PROCESS_MODE_INHERIT);
    run(cat, 6.0); // there, and on to the next
    EXPECT_EQ(tile->total() + far_tile->total() + empty->total(), 0);
    EXPECT_EQ(kennel->bills, 6);
    EXPECT_EQ(kennel->money, 42);
    EXPECT_TRUE(cat->get_heel_mode());
}

TEST_F(PetTest, DogAndPigWorkWhereTheQuarryIs) {
    Pet *dog = own("dog"), *pig = own("pig");
    Vector3 at;
    EXPECT_FALSE(dog->work_goal(at) || pig->work_goal(at));
    Quarry quarry;
    EXPECT_FALSE(dog->work_goal(at));
    quarry.fox_here = quarry.egg_here = true;
    dog->think(FRAME);
    EXPECT_EQ(dog->get_top(), 7.5);
    EXPECT_EQ(dog->get_goal(), Vector3(5, 0, 0));
    dog->_work(dog->get_goal(), FRAME);
    EXPECT_EQ(quarry.said, String("dog;"));
    pig->set_global_position(Vector3(-5.2f, 0, 0)); // 0.2 from the egg: not yet, it digs
    pig->_work(Vector3(-5, 0, 0), FRAME);
    EXPECT_EQ(quarry.dug, Vector3(-5, 0, 0));
    pig->set_global_position(Vector3(-5.1f, 0, 0));
    pig->_work(Vector3(-5, 0, 0), FRAME);
    EXPECT_EQ(quarry.said, String("dog;egg pig;"));
    quarry.egg_here = false;
    EXPECT_TRUE(pig->work_goal(at));
    EXPECT_EQ(at, Vector3(0, 0, 6));
    pig->set_global_position(Vector3(0, 0, 76.5f));
    EXPECT_FALSE(pig->work_goal(at)); // more than 70 away
    dog->set_remote(true);
    dog->think(FRAME);
    EXPECT_TRUE(dog->get_heel_mode());
}

TEST_F(PetTest, StandsByThePlayerWhenItIsPlaced) {
    player->set_position(Vector3(3, 0, 0));
    player->get_model()->set_rotation(Vector3());
    Pet *horse = own("horse"), *dog = own("dog");
    horse->set_gear(1, 1);
    horse->place();
    expect_spot(horse->get_global_position(), Vector3(3.9f, 0, 1.5f));
    expect_spot(horse->get_cart()->get_global_position(), Vector3(3.9f, 0, 1.5f + float(PetCore::hitch)));
    for (int i = 0; i < 40; ++i) {
        dog->place();
        const Vector3 p = dog->get_global_position() - player->get_position();
        EXPECT_TRUE(std::abs(p.x) <= 4 && p.z >= -4 && p.z <= 1) << p.x << " " << p.z;
    }
    expect_engine_error("TILMARCH no such pet: hen");
    Pet *none = memnew(Pet);
    EXPECT_FALSE(none->setup("hen", kennel, player));
    memdelete(none);
}

TEST_F(PetTest, AnswersScriptsByName) {
    Pet *pet = own("horse");
    for (const char *name : {"core_join", "core_rig", "core_set", "core_heel", "get_speed", "set_speed", "set_gear",
                             "place", "think", "horse_tick", "_work", "get_kind", "get_cart"}) {
        EXPECT_TRUE(pet->has_method(name)) << name;
    }
    for (const char *name : {"sit_on", "at_home", "home_point", "set_look", "wear_boosts", "set_solids", "get_chair"}) {
        EXPECT_TRUE(player->has_method(name)) << name;
    }
    pet->call("core_set", player, true, false, 2.5, Vector3(1, 0, 2));
    EXPECT_EQ(static_cast<uint64_t>(static_cast<int64_t>(pet->get("lead"))), player->get_instance_id());
    EXPECT_EQ(pet->get("goal"), Variant(Vector3(1, 0, 2)));
    EXPECT_EQ(pet->get("top"), Variant(2.5));
    EXPECT_EQ(pet->get("at_home"), Variant(true));
    pet->call("core_heel", player->get_instance_id(), Vector2(1, 2), -1.0);
    EXPECT_EQ(pet->get("heel_mode"), Variant(true));
    EXPECT_EQ(pet->get("at_home"), Variant(false));
    EXPECT_EQ(pet->get("side"), Variant(-1.0));
    pet->call("set_speed", 3.0);
    EXPECT_EQ(pet->get("_speed"), Variant(3.0));
    pet->call("set_gear", 2, 1);
    EXPECT_EQ(pet->get("cart_lv"), Variant(1));
    pet->call("set_lead", Variant());
    EXPECT_EQ(pet->get("lead"), Variant(0));
}

TEST(PetModels, HaveTheJointsThatTheCoreTurns) {
    Node3D *all = memnew(Node3D);
    for (const rules::Pet &pet : rules::pets()) {
        const String kind = String::utf8(pet.key.data(), static_cast<int>(pet.key.size()));
        Node3D *model = PetModels::pet(kind);
        all->add_child(model);
        for (const char *joint : {"Body", "Body/LegFL/Low", "Body/LegFR/Low", "Body/LegBL/Low", "Body/LegBR/Low",
                                  "Body/Tail", "Body/Neck/Head/Jaw"}) {
            EXPECT_NE(model->get_node_or_null(NodePath(joint)), nullptr) << kind << " " << joint;
        }
        AABB box;
        for (MeshInstance3D *mesh : mesh_baker::meshes_below(model)) {
            box = box.merge(mesh_baker::local_to(mesh, model).xform(mesh->get_aabb()));
        }
        EXPECT_NEAR(box.position.y, 0, 0.04) << kind; // stands on the ground
        EXPECT_GT(-box.position.z, box.get_end().z * 0.9) << kind;
        EXPECT_LE(mesh_baker::meshes_below(model).size(), 14u) << kind;
    }
    for (int lv = 1; lv <= 3; ++lv) {
        Node3D *cart = PetModels::cart(lv);
        all->add_child(cart);
        for (const char *part : {"Bed", "WheelL", "WheelR"}) {
            EXPECT_NE(cart->get_node_or_null(NodePath(part)), nullptr) << lv << part;
        }
    }
    memdelete(all);
}

// A farm keeps its pets.
class PetWorld : public FarmTest {};

TEST_F(PetWorld, SavesPetsAndFindsThemAgainWithWhatTheHorseCarries) {
    open();
    Array kinds;
    for (const char *kind : {"dog", "horse", "dog", "unicorn"}) {
        kinds.push_back(kind);
    }
    expect_engine_error("unknown pet unicorn", 2); // now, and when the farm is opened again
    world->set("pets", kinds);
    world->set("horse_lv", 2);
    world->set("cart_lv", 1);
    Array at_home;
    at_home.push_back("dog");
    world->set("pets_home", at_home);
    StackCore *stack = world->farmer()->get_stack();
    ASSERT_EQ(stack->total_cap(), 48);
    for (int i = 0; i < 45; ++i) {
        stack->add(Item::spawn("egg", Vector3()));
    }
    step(30);
    EXPECT_TRUE(world->pet_house().find("dog")->get_at_home());
    EXPECT_TRUE(world->pet_house().find("horse")->get_heel_mode());
    world->_save();
    close();
    save->read();
    open();
    stack = world->farmer()->get_stack();
    EXPECT_EQ(stack->count(), 45);
    EXPECT_EQ(stack->total_cap(), 48);
    kinds.remove_at(2);
    EXPECT_EQ(world->get_pets(), kinds); // one that this build does not know is kept
    EXPECT_EQ(world->get_pets_home(), at_home);
    EXPECT_EQ(world->get_horse_lv(), 2);
    EXPECT_EQ(world->get_cart_lv(), 1);
    ASSERT_NE(world->pet_house().find("dog"), nullptr);
    EXPECT_EQ(world->pet_house().find("unicorn"), nullptr);
    const Vector3 apart =
        world->pet_house().find("horse")->get_global_position() - world->farmer()->get_global_position();
    EXPECT_LT(apart.length(), 3.0); // placed by the player
    world->set("pets", Array());
    EXPECT_EQ(stack->total_cap(), 14);
    EXPECT_EQ(stack->count(), 45);
    step(5);
}

TEST_F(PetWorld, ReadsADamagedDocument) {
    Dictionary doc;
    doc["money"] = 5;
    Array kinds;
    kinds.push_back(7);
    kinds.push_back("cat");
    doc["pets"] = kinds;
    doc["pets_home"] = "dog";
    doc["horse_lv"] = 1e300;
    doc["cart_lv"] = -4;
    save->data = doc;
    expect_engine_error("an entry is not a name");
    open();
    EXPECT_EQ(world->get_pets().size(), 1);
    EXPECT_NE(world->pet_house().find("cat"), nullptr);
    EXPECT_EQ(world->get_pets_home().size(), 0);
    EXPECT_EQ(world->get_horse_lv(), 5);
    EXPECT_EQ(world->get_cart_lv(), 0);
    WorldOptions::get().visit_peer = 2;
    close();
    open();
    EXPECT_EQ(world->pet_house().find("cat"), nullptr); // a friend's pets are the friend's
}

} // namespace
} // namespace tilm
