#include <gtest/gtest.h>

#include <godot_cpp/classes/image_texture.hpp>

#include "engine_test.h"
#include "fake_store.h"
#include "find_control.h"
#include "game/art/icons.h"
#include "game/data/farm_data.h"
#include "game/interface/decor_panel.h"
#include "game/interface/hud.h"
#include "game/interface/star_badge.h"
#include "game/shell/offer_desk.h"
#include "rules/garden.h"

using namespace tilm;

// What a renderer paints is looked at by tests/scenario/icons.sh; here nothing draws.

namespace {

Ref<Image> plain(const Color &color) {
    const Ref<Image> image = Image::create(Icons::side, Icons::side, false, Image::FORMAT_RGBA8);
    image->fill(color);
    return image;
}

} // namespace

TEST(IconsHeadless, AnswersWithAQuietSpotAndWakesNobody) {
    const Ref<Texture2D> egg = Icons::good("egg");
    ASSERT_TRUE(egg.is_valid());
    EXPECT_EQ(egg->get_width(), Icons::side);
    EXPECT_EQ(Icons::thing("stall", "egg"), egg) << "one spot for all";
    const Ref<Image> seen = egg->get_image();
    EXPECT_GT(seen->get_pixel(Icons::side / 2, Icons::side / 2).a, 0.1f);
    EXPECT_EQ(seen->get_pixel(0, 0).a, 0.0f);
    step(3);
    EXPECT_EQ(Icons::waiting(), 0);
    EXPECT_EQ(Icons::current(), nullptr);
    EXPECT_FALSE(Icons::ready("item_egg"));
    TextureRect *rect = Icons::rect("item_egg", 64);
    EXPECT_EQ(rect->get_texture(), egg);
    EXPECT_EQ(rect->get_custom_minimum_size(), Vector2(64, 64));
    memdelete(rect);
}

TEST(IconsHeadless, UnknownKeysGetTheCrateAndOneLineEach) {
    expect_engine_error("TILMARCH no picture of item_unicorn");
    expect_engine_error("TILMARCH no picture of icon_castle_egg");
    const Ref<Texture2D> crate = Icons::of("icon_crate");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Icons::of("item_unicorn"), crate);
        EXPECT_EQ(Icons::of("icon_castle_egg"), crate);
    }
    // A flood of them, as from a bad save, neither fills the log nor the memory.
    expect_engine_error("TILMARCH no picture of flood_", 62);
    for (int i = 0; i < 300; ++i) {
        EXPECT_TRUE(Icons::of("flood_" + String::num_int64(i)).is_valid());
    }
}

TEST(IconsHeadless, EveryGoodAndEveryPlannedThingHasAModel) {
    const Array kinds = FarmData::prices().keys();
    EXPECT_GT(kinds.size(), 30);
    for (int64_t i = 0; i < kinds.size(); ++i) {
        EXPECT_TRUE(Icons::knows("item_" + String(kinds[i]))) << String(kinds[i]);
    }
    const Array plan = FarmData::plan();
    for (int64_t i = 0; i < plan.size(); ++i) {
        const Dictionary entry = plan[i];
        const String key = Icons::thing_key(entry.get("kind", ""), entry.get("product", ""));
        EXPECT_TRUE(Icons::knows(key)) << key;
        const String good = good_of_entry(entry);
        EXPECT_TRUE(good.is_empty() || Icons::knows("item_" + good)) << good;
    }
    for (const rules::DecorRow &row : rules::decor_rows()) {
        EXPECT_TRUE(Icons::knows(decor_picture_key(String(std::string(row.type).c_str())))) << row.type;
    }
    EXPECT_FALSE(Icons::knows(""));
    EXPECT_FALSE(Icons::knows("item_"));
    EXPECT_FALSE(Icons::knows("icon_"));
}

TEST(IconsHeadless, OffersTellTheirGood) {
    const std::pair<const char *, const char *> wanted[] = {{"coop_a", "egg"},
                                                            {"field_corn", "corn"},
                                                            {"corn_workers", "corn"},
                                                            {"wheat_harvester", "wheat"},
                                                            {"corn_feeder", "corn"},
                                                            {"bread_factory_belt", "bread"},
                                                            {"truck", ""},
                                                            {"truck_loader", ""},
                                                            {"bread_factory_crew", "bread"},
                                                            {"food_depot", ""},
                                                            {"land_mill", ""},
                                                            {"stall_hay", "hay"}};
    for (const auto &[id, good] : wanted) {
        const Dictionary entry = FarmData::entry_by_id(id);
        ASSERT_FALSE(entry.is_empty()) << id;
        EXPECT_EQ(good_of_entry(entry), String(good)) << id;
    }
    Dictionary odd;
    odd["kinds"] = 7;
    odd["product"] = "unicorn";
    odd["field"] = "nowhere";
    EXPECT_EQ(good_of_entry(odd), String());
}

TEST(IconsHeadless, AKeptPictureIsServedFromThenOn) {
    EXPECT_FALSE(Icons::ready("item_wheat"));
    Icons::keep("item_wheat", Ref<Image>());
    EXPECT_FALSE(Icons::ready("item_wheat")) << "no picture is not kept";
    Icons::keep("item_wheat", plain(Color(1, 0, 0)));
    EXPECT_TRUE(Icons::ready("item_wheat"));
    const Ref<Texture2D> wheat = Icons::good("wheat");
    EXPECT_EQ(wheat->get_image()->get_pixel(3, 3), Color(1, 0, 0));
    EXPECT_EQ(Icons::of("item_wheat"), wheat);
    EXPECT_NE(Icons::of("item_egg"), wheat);
}

TEST(StarBadge, DrawsAtEverySizeShareAndNumber) {
    Hud::StarBadge *star = add<Hud::StarBadge>();
    for (const float side : {0.0f, 3.0f, 24.0f, 48.0f, 300.0f}) {
        star->set_size(Vector2(side, side * 0.8f));
        for (int lit = 0; lit <= 20; ++lit) {
            star->set_lit(lit / 20.0);
            star->set_number(lit % 3 == 0 ? -1 : int64_t(1) << (lit * 3));
            step();
        }
    }
    star->set_lit(NAN);
    EXPECT_EQ(star->get_lit(), 0.0);
    star->set_lit(7.0);
    EXPECT_EQ(star->get_lit(), 1.0);
    star->set_lit(-7.0);
    EXPECT_EQ(star->get_lit(), 0.0);
    star->jump();
    step_seconds(0.5);
    EXPECT_EQ(star->get_scale(), Vector2(1, 1)) << "back on its feet";
}

TEST(StarBadge, LeapsWhenTheLevelRises) {
    root()->set_content_scale_size(Vector2i(720, 1560));
    FakeStore store;
    Hud *hud = add<Hud>();
    step(2);
    hud->set_level_line(4, 10);
    step(2);
    const std::vector<Hud::StarBadge *> stars = all_of<Hud::StarBadge>(hud);
    ASSERT_EQ(stars.size(), 1u);
    EXPECT_EQ(stars[0]->get_scale(), Vector2(1, 1)) << "the first level is no rise";
    hud->set_level_line(4, 11);
    EXPECT_EQ(stars[0]->get_scale(), Vector2(1, 1));
    hud->set_level_line(5, 12);
    EXPECT_LT(stars[0]->get_scale().x, 0.9f);
    step_seconds(0.5);
    EXPECT_EQ(stars[0]->get_scale(), Vector2(1, 1));
}
