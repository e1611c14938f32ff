// The catalogue as engine scripts and actors see it.

#include "game/data/farm_data.h"

#include <algorithm>
#include <map>
#include <string>

#include <godot_cpp/variant/color.hpp>
#include <godot_cpp/variant/rect2.hpp>
#include <godot_cpp/variant/vector2.hpp>

#include "engine_test.h"
#include "plan_table.h"
#include "safe_read.h"
#include "statics.h"

namespace tilm {
namespace {

std::string plain(const String &text) {
    return text.utf8().get_data();
}

std::string number(double v) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", v);
    return text;
}

// A value in the words of the table; a wrong type gives words that match nothing.
std::string words(const Variant &v) {
    const auto f = [](double d) { return number(static_cast<double>(static_cast<float>(d))); };
    switch (v.get_type()) {
    case Variant::STRING:
        return plain(as<String>(v));
    case Variant::BOOL:
        return as<bool>(v) ? "true" : "false";
    case Variant::INT:
        return std::to_string(as<int64_t>(v));
    case Variant::COLOR:
        return plain(as<Color>(v).to_html(false));
    case Variant::VECTOR2: {
        const Vector2 p = as<Vector2>(v);
        return f(p.x) + "," + f(p.y);
    }
    case Variant::RECT2: {
        const Rect2 r = as<Rect2>(v);
        return f(r.position.x) + "," + f(r.position.y) + "," + f(r.size.x) + "," + f(r.size.y);
    }
    case Variant::ARRAY: {
        std::string out;
        const Array list = as<Array>(v);
        for (int64_t i = 0; i < list.size(); ++i) {
            out += (i == 0 ? "" : ",") + words(list[i]);
        }
        return out;
    }
    case Variant::DICTIONARY: {
        std::string out;
        const Dictionary table = as<Dictionary>(v);
        const Array keys = table.keys();
        for (int64_t i = 0; i < keys.size(); ++i) {
            const Variant value = table[keys[i]];
            const std::string text = words(value);
            out += (i == 0 ? "" : ",") + words(keys[i]);
            out += value.get_type() == Variant::INT ? ":" + text : "(" + text + ")";
        }
        return out;
    }
    default:
        return "a value of type " + std::to_string(static_cast<int>(v.get_type()));
    }
}

std::string spaced(const Variant &list) {
    std::string text = as<Array>(list).is_empty() ? "-" : words(list);
    for (char &c : text) {
        c = c == ',' ? ' ' : c;
    }
    return text;
}

// The entry as a line of the table.
std::string line_of(const Dictionary &e) {
    const std::string basic[] = {"id", "kind", "title", "region", "pos", "pad", "costs", "base", "req"};
    std::map<std::string, std::string> more;
    const Array keys = e.keys();
    for (int64_t i = 0; i < keys.size(); ++i) {
        const std::string key = words(keys[i]);
        if (std::find(std::begin(basic), std::end(basic), key) == std::end(basic)) {
            more[key] = words(e[keys[i]]);
        }
    }
    std::string further;
    for (const auto &[key, value] : more) {
        further += (further.empty() ? "" : ";") + key + "=" + value;
    }
    return words(e["id"]) + "\t" + words(e["kind"]) + "\t" + words(e["title"]) + "\t" + words(e["region"]) + "\t" +
           words(e["pos"]) + "\t" + (e.has("pad") ? words(e["pad"]) : "-") + "\t" + spaced(e["costs"]) + "\t" +
           words(e["base"]) + "\t" + spaced(e["req"]) + "\t" + (further.empty() ? "-" : further);
}

Dictionary extra(const char *type, const char *region, int slot, int n) {
    Dictionary e;
    e["type"] = type;
    e["region"] = region;
    e["slot"] = slot;
    e["n"] = n;
    return e;
}

Array row_of(std::initializer_list<const char *> columns) {
    Array row;
    for (const char *column : columns) {
        row.append(String(column));
    }
    return row;
}

// Leaves the plan as it was found.
class FarmDataExtras : public testing::Test {
protected:
    void SetUp() override { written = FarmData::plan().size(); }
    void TearDown() override {
        FarmData::strip_extras();
        EXPECT_EQ(FarmData::plan().size(), written);
    }
    int64_t written = 0;
};

TEST(FarmData, WholePlanIsAsInTheTable) {
    const std::vector<std::string> table = read_plan_table(TILMARCH_TEST_DATA "/plan.tsv");
    ASSERT_EQ(table.size(), 222U);
    const Array plan = FarmData::plan();
    ASSERT_EQ(plan.size(), 222);
    for (int64_t i = 0; i < plan.size(); ++i) {
        const Dictionary entry = plan[i];
        EXPECT_EQ(line_of(entry), table[static_cast<size_t>(i)]);
        EXPECT_EQ(FarmData::entry_by_id(read_text(entry, "id")), entry);
    }
    EXPECT_TRUE(FarmData::entry_by_id("no_such_thing").is_empty());
    EXPECT_TRUE(FarmData::entry_by_id("").is_empty());
}

TEST(FarmData, ValuesAreSharedAndComeAgainAfterARelease) {
    Array plan = FarmData::plan();
    Dictionary entry = plan[5];
    entry["mark"] = true;
    EXPECT_TRUE(FarmData::entry_by_id(read_text(entry, "id")).has("mark"));
    entry.erase("mark");
    Statics::release_all();
    EXPECT_EQ(FarmData::plan().size(), 222);
    EXPECT_EQ(FarmData::price_of("egg"), 4);
}

TEST(FarmData, GoodsTables) {
    EXPECT_EQ(FarmData::prices().size(), 38);
    EXPECT_EQ(as<String>(FarmData::prices().keys()[0]), "egg");
    EXPECT_EQ(FarmData::prices()["burger"].get_type(), Variant::INT);
    EXPECT_EQ(FarmData::price_of("burger"), 340);
    EXPECT_EQ(FarmData::price_of("unicorn", 5), 5);
    EXPECT_EQ(FarmData::title_of("fish"), "FISH");
    EXPECT_EQ(FarmData::title_of("magic_bean"), "MAGIC BEAN");
    EXPECT_EQ(FarmData::album_groups().size(), 3);
    EXPECT_EQ(FarmData::market_goods().size(), 37);
    EXPECT_EQ(FarmData::levelled_kinds().size(), 7);
    EXPECT_EQ(words(FarmData::bed_colors()["potato"]), "6b4a2e");
    EXPECT_DOUBLE_EQ(read_real(FarmData::region_scale(), "sweets"), 0.6);
    EXPECT_FALSE(FarmData::region_scale().has("service"));
    EXPECT_NEAR(FarmData::item_height("case"), 0.16, 1e-6);
}

TEST(FarmData, Land) {
    EXPECT_EQ(FarmData::regions().size(), 25);
    EXPECT_EQ(FarmData::region_by_id("mill")["x"].get_type(), Variant::FLOAT);
    EXPECT_EQ(read_text(FarmData::region_by_id("ext6"), "title"), "NEW LAND 6");
    EXPECT_TRUE(FarmData::region_by_id("moon").is_empty());
    EXPECT_EQ(FarmData::unlock_level("land_coffee"), 27);
    EXPECT_EQ(FarmData::unlock_level("coop_a"), 0);
    int counted = 0;
    const Array plan = FarmData::plan();
    for (int64_t i = 0; i < plan.size(); ++i) {
        const Dictionary e = plan[i];
        if (read_text(e, "kind") == "land" && FarmData::entry_in_region(e, "dairy")) {
            EXPECT_EQ(read_text(e, "id"), "land_dairy");
            ++counted;
        }
    }
    EXPECT_EQ(counted, 1);
    EXPECT_FALSE(FarmData::entry_in_region(FarmData::entry_by_id("land_dairy"), "eggs"));
    EXPECT_TRUE(FarmData::entry_in_region(FarmData::entry_by_id("barn_a"), "dairy"));
}

TEST(FarmData, Lots) {
    EXPECT_EQ(FarmData::lot_count("ext3"), 4);
    EXPECT_EQ(FarmData::lot_count("mill"), 2);
    EXPECT_DOUBLE_EQ(FarmData::lot_x("ext1", 2), 378);
    EXPECT_DOUBLE_EQ(FarmData::lot_x("ext1", 3), 390);
    EXPECT_DOUBLE_EQ(FarmData::lot_row(0), -26);
    EXPECT_DOUBLE_EQ(FarmData::lot_row(3), -10.5);
    EXPECT_TRUE(FarmData::lot_blocked("eggs", 0));   // the workers' homes
    EXPECT_TRUE(FarmData::lot_blocked("eggs", 1));   // the farmhouse
    EXPECT_TRUE(FarmData::lot_blocked("coffee", 0)); // the coffee house
    EXPECT_TRUE(FarmData::lot_blocked("coffee", 1));
    EXPECT_FALSE(FarmData::lot_blocked("mill", 0)); // no bed reaches so far back
    EXPECT_FALSE(FarmData::lot_blocked("fish", 1));
    EXPECT_TRUE(FarmData::lot_blocked("dairy", 0)); // the hay field reaches under the price tile
    for (int slot = 0; slot < 4; ++slot) {
        EXPECT_FALSE(FarmData::lot_blocked("ext1", slot));
    }
    EXPECT_TRUE(FarmData::lot_blocked("moon", 0));
}

TEST_F(FarmDataExtras, ProducerFieldAndMachine) {
    const Array coops = FarmData::extra_nodes(extra("coop", "ext1", 3, 7));
    ASSERT_EQ(coops.size(), 1);
    const Dictionary coop = coops[0];
    EXPECT_EQ(
        line_of(coop), "x_coop_7\tproducer\tCOOP\text1\t390,-10.5\t390,-4.7\t" + [] {
            const Array costs = as<Array>(FarmData::entry_by_id("coop_c")["costs"]).duplicate();
            Array free = costs;
            free[0] = 0;
            return spaced(free);
        }() + "\t0\t-\textra=true;product=egg");
    EXPECT_EQ(FarmData::entry_by_id("x_coop_7"), coop);
    EXPECT_EQ(read_list(FarmData::entry_by_id("coop_c"), "costs")[0], Variant(380)); // the original keeps its price

    const Array field = FarmData::extra_nodes(extra("tomato", "mill", 0, 2));
    ASSERT_EQ(field.size(), 2);
    EXPECT_EQ(line_of(field[0]), "x_tomato_2\tfield\tTOMATO FIELD\tmill\t18,-26\t-\t0\t0\t-\t"
                                 "bed=8d6e4a;crop=tomato;extra=true;pallet=16.6,-20.8;rect=14.7,-30.8,6.6,7.6");
    EXPECT_EQ(line_of(field[1]), "x_tomato_2_w\tworkers\tWORKERS\tmill\t20,-20.7\t-\t0 168000 294000\t0\tx_tomato_2\t"
                                 "extra=true;field=x_tomato_2");

    const Dictionary press = FarmData::extra_nodes(extra("juice", "orchard", 1, 1))[0];
    EXPECT_EQ(words(press["flavors"]), "apple_juice(apple:2),orange_juice(orange:2)");
    EXPECT_EQ(words(press["feed_kinds"]), "apple,orange");
    EXPECT_EQ(words(press["out_kinds"]), "apple_juice,orange_juice");
    EXPECT_EQ(words(press["carry_to"]), "stall_juice");
    EXPECT_EQ(words(press["alias"]), "juice_plant");
    EXPECT_EQ(words(press["yield"]), "2");
    const Dictionary bakery = FarmData::extra_nodes(extra("burgers", "burger", 1, 1))[0];
    EXPECT_EQ(words(bakery["kind"]), "machine");
    EXPECT_EQ(words(bakery["out_kinds"]), "burger");
    EXPECT_EQ(words(bakery["yield"]), "1");
    // Its recipe is a copy.
    as<Dictionary>(bakery["recipe"])["meat"] = 99;
    EXPECT_EQ(words(as<Dictionary>(FarmData::entry_by_id("burger_joint")["recipe"])["meat"]), "1");
}

TEST_F(FarmDataExtras, EveryTypeMakesEntries) {
    const Array types = FarmData::extra_types().keys();
    ASSERT_EQ(types.size(), 35);
    for (int64_t i = 0; i < types.size(); ++i) {
        const String type = types[i];
        const Array made = FarmData::extra_nodes(extra(type.utf8().get_data(), "ext2", 1, static_cast<int>(i)));
        ASSERT_FALSE(made.is_empty()) << type;
        const Dictionary e = made[0];
        EXPECT_EQ(read_list(e, "costs")[0], Variant(0)) << type;
        EXPECT_EQ(read_whole(e, "base", -1), 0) << type;
    }
}

TEST_F(FarmDataExtras, AnnexesAndHelpers) {
    Dictionary e = extra("canteen", "ext1", 0, 4);
    e["k"] = 2.0; // as it comes from a file
    const Dictionary second = FarmData::annex_nodes(e)[0];
    EXPECT_EQ(words(read_list(second, "costs")[0]), "28000");
    EXPECT_EQ(words(read_list(second, "costs")[1]), "9000");
    EXPECT_EQ(words(second["title"]), "ANOTHER CANTEEN");
    EXPECT_EQ(words(second["at"]), "378,-26");
    EXPECT_EQ(words(second["pos"]), "378,-20.2");
    EXPECT_EQ(words(second["req"]), "canteen");
    e.erase("k");
    EXPECT_EQ(words(read_list(FarmData::annex_nodes(e)[0], "costs")[0]), "21000");
    EXPECT_EQ(words(as<Dictionary>(FarmData::annex_nodes(extra("homes", "ext1", 1, 1))[0])["id"]), "x_homes_1");

    Dictionary h;
    h["type"] = "helper";
    h["of"] = "egg_hauler";
    h["n"] = 3;
    const Dictionary helper = FarmData::helper_node(h)[0];
    EXPECT_EQ(line_of(helper), "x_helper_3\thauler\tEGG HELPER\teggs\t9.5,1.2\t-\t0\t0\t-\t"
                               "dst=stall_egg;extra=true;kinds=egg");
    EXPECT_EQ(words(FarmData::entry_by_id("egg_hauler")["costs"]), "300,700,1400");
}

TEST_F(FarmDataExtras, BadRowsGiveOneErrorAndNothingElse) {
    expect_engine_error("TILMARCH unknown extra type spaceship: skipped");
    EXPECT_TRUE(FarmData::extra_nodes(extra("spaceship", "eggs", 0, 1)).is_empty());
    expect_engine_error("TILMARCH extra coop: no region \"moon\": skipped");
    EXPECT_TRUE(FarmData::extra_nodes(extra("coop", "moon", 0, 1)).is_empty());
    Dictionary types = FarmData::extra_types();
    types["short"] = row_of({"SHORT", "producer"});
    types["lost"] = row_of({"LOST", "producer", "egg", "eggs", "gone_with_the_wind"});
    expect_engine_error("TILMARCH extra short: bad template");
    EXPECT_TRUE(FarmData::extra_nodes(extra("short", "eggs", 0, 1)).is_empty());
    expect_engine_error("TILMARCH extra lost: template node gone_with_the_wind missing");
    EXPECT_TRUE(FarmData::extra_nodes(extra("lost", "eggs", 0, 1)).is_empty());
    types.erase("short");
    types.erase("lost");
    expect_engine_error("TILMARCH extra helper: template node nobody missing");
    Dictionary h;
    h["of"] = "nobody";
    EXPECT_TRUE(FarmData::helper_node(h).is_empty());
    expect_engine_error("TILMARCH unknown extra type : skipped");
    EXPECT_TRUE(FarmData::annex_nodes(Dictionary()).is_empty());
    EXPECT_EQ(FarmData::plan().size(), written);
}

TEST_F(FarmDataExtras, StripLeavesNothingOfTheFormerFarm) {
    FarmData::extra_nodes(extra("coop", "ext1", 0, 1));
    FarmData::extra_nodes(extra("hay", "ext1", 1, 2));
    EXPECT_EQ(FarmData::plan().size(), written + 3);
    // An extra field keeps no ground: another farm's bed must not block a lot.
    EXPECT_FALSE(FarmData::lot_blocked("ext1", 1));
    FarmData::strip_extras();
    EXPECT_EQ(FarmData::plan().size(), written);
    EXPECT_TRUE(FarmData::entry_by_id("x_coop_1").is_empty());
    EXPECT_TRUE(FarmData::entry_by_id("x_hay_2_w").is_empty());
    EXPECT_FALSE(FarmData::entry_by_id("guards").is_empty());
}

} // namespace
} // namespace tilm
