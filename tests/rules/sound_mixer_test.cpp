#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "rules/sound_events.h"
#include "rules/sound_mixer.h"

using namespace tilm::rules;

namespace {

// A mixer with a clock and voices that last a given time.
struct Desk {
    SoundMixer mixer{7};
    double now = 10.0;
    double length = 0.2;
    int next_id = 0;

    SoundAsk make(const char *name) {
        SoundAsk ask;
        ask.event = find_sound_event(name);
        EXPECT_NE(ask.event, nullptr) << name;
        ask.now = now;
        return ask;
    }
    SoundGo play(SoundAsk ask) {
        ask.now = now;
        const SoundGo go = mixer.ask(ask);
        if (go.plays()) {
            mixer.started(next_id++, ask, length);
        }
        return go;
    }
    SoundGo play(const char *name) { return play(make(name)); }
};

// As the node asks for a positioned sound.
SoundGo play_at(Desk &desk, const char *name, float distance, uint64_t source = 0) {
    SoundAsk ask = desk.make(name);
    const RangeGo range = range_rule(*ask.event, true, distance);
    if (range.drop != Drop::none) {
        SoundGo go;
        go.drop = range.drop;
        return go;
    }
    ask.far = range.far;
    ask.positioned = range.positioned;
    ask.vol_db = range.vol_db;
    ask.source = range.far ? 0 : source;
    return desk.play(ask);
}

} // namespace

TEST(SoundEvents, TableIsWholeAndSound) {
    EXPECT_EQ(sound_events().size(), 88u);
    std::set<std::string_view> names;
    for (const SoundEvent &e : sound_events()) {
        SCOPED_TRACE(std::string(e.name));
        EXPECT_TRUE(names.insert(e.name).second);
        EXPECT_EQ(find_sound_event(e.name), &e);
        EXPECT_FALSE(sound_stems(e).empty());
        EXPECT_GT(e.pitch, 0.0f);
        EXPECT_GE(e.voices, 1);
        EXPECT_TRUE(e.prio >= 0 && e.prio <= 2);
        EXPECT_GE(e.reach(), e.near) << "full level beyond what is heard";
        EXPECT_LE(e.duck, 0.0f);
        EXPECT_GE(e.rand, 0.0f);
        EXPECT_LT(e.rand, 0.5f);
        EXPECT_EQ(e.is_jingle(), e.bus == Bus::jingles);
        EXPECT_FALSE(e.loop && e.loop3d);
        EXPECT_EQ(e.far_db < 0.0f, e.has_far());
        EXPECT_GT(buses()[static_cast<size_t>(e.bus)].voices, 0);
    }
    EXPECT_EQ(find_sound_event("no_such_sound"), nullptr);
    EXPECT_EQ(sound_stems(*find_sound_event("cow_moo")),
              (std::vector<std::string>{"cow_moo_1", "cow_moo_2", "cow_moo_3"}));
    EXPECT_EQ(sound_stems(*find_sound_event("sit")), std::vector<std::string>{"sit"});
}

TEST(SoundEvents, StemsFromAListOfFiles) {
    SoundEvent e;
    e.name = "x";
    e.files = "one two";
    e.n = 9;
    EXPECT_EQ(sound_stems(e), (std::vector<std::string>{"one", "two"}));
}

TEST(SoundMixer, CooldownOfEventAndOfSource) {
    Desk desk;
    EXPECT_TRUE(desk.play("item_pick").plays());
    desk.now += 0.08;
    EXPECT_EQ(desk.play("item_pick").drop, Drop::cooldown);
    desk.now += 0.02;
    EXPECT_TRUE(desk.play("item_pick").plays());

    SoundAsk one = desk.make("sale");
    one.source = 1;
    SoundAsk two = desk.make("sale");
    two.source = 2;
    EXPECT_TRUE(desk.play(one).plays());
    desk.now += 0.1;
    EXPECT_EQ(desk.play(one).drop, Drop::source);
    EXPECT_TRUE(desk.play(two).plays()) << "another stall may sound";
    desk.now += 0.3;
    EXPECT_TRUE(desk.play(one).plays());
    EXPECT_EQ(desk.mixer.drops_named("cd"), 2u);
}

TEST(SoundMixer, AskedGapRulesButNeverBelowTheLeast) {
    Desk desk;
    SoundAsk ask = desk.make("stack_full");
    ask.min_gap = 0.0f;
    EXPECT_TRUE(desk.play(ask).plays());
    desk.now += 0.02;
    EXPECT_EQ(desk.play(ask).drop, Drop::cooldown);
    desk.now += 0.02;
    EXPECT_TRUE(desk.play(ask).plays());
}

TEST(SoundMixer, MissingFileOrRowIsCounted) {
    Desk desk;
    SoundAsk ask = desk.make("sale");
    ask.has_file = false;
    EXPECT_EQ(desk.play(ask).drop, Drop::missing);
    SoundAsk nothing;
    EXPECT_EQ(desk.play(nothing).drop, Drop::missing);
    EXPECT_EQ(desk.mixer.drops(Drop::missing), 2u);
    EXPECT_EQ(desk.mixer.plays(), 0u);
    ask.has_file = true;
    EXPECT_TRUE(desk.play(ask).plays()) << "a drop leaves no cooldown";
}

TEST(SoundMixer, NinthLowPlayWithinASecondIsCapped) {
    Desk desk;
    desk.length = 0.01;
    const char *low[] = {"worker_pick", "worker_drop", "lay_egg",    "lay_milk",     "fish_splash",
                         "grain_pour",  "chop",        "crate_thud", "scissors_snip"};
    for (int i = 0; i < 8; ++i) {
        EXPECT_TRUE(desk.play(low[i]).plays()) << low[i];
        desk.now += 0.05;
    }
    EXPECT_EQ(desk.play(low[8]).drop, Drop::cap);
    EXPECT_TRUE(desk.play("item_pick").plays()) << "normal priority has room for twelve";
    EXPECT_TRUE(desk.play("fox_steal").plays()) << "high priority has no limit";
    EXPECT_TRUE(desk.play("ui_tap").plays()) << "the interface's bus is not capped";
    desk.now += 1.5;
    EXPECT_TRUE(desk.play(low[8]).plays());
}

TEST(SoundMixer, SixteenVoicesAndStealing) {
    Desk desk;
    desk.length = 100.0;
    int filled = 0;
    for (const SoundEvent &e : sound_events()) {
        if (e.is_jingle() || e.alert || e.prio == 2 || e.loop || e.loop3d) {
            continue;
        }
        SoundAsk ask;
        ask.event = &e;
        filled += desk.play(ask).plays() ? 1 : 0;
        desk.now += 0.3;
        if (filled == SoundMixer::max_voices) {
            break;
        }
    }
    ASSERT_EQ(desk.mixer.sounding(), 16);
    desk.now += 2.0;
    EXPECT_EQ(desk.play("item_give").drop, Drop::voices);
    const SoundGo high = desk.play("fox_steal");
    EXPECT_TRUE(high.plays());
    EXPECT_EQ(high.steal, 0) << "the oldest voice gives way";
    EXPECT_EQ(desk.mixer.sounding(), 16);
}

TEST(SoundMixer, EventKeepsToItsOwnVoices) {
    Desk desk;
    desk.length = 5.0;
    const SoundEvent *pick = find_sound_event("item_pick");
    for (int i = 0; i < 6; ++i) {
        EXPECT_TRUE(desk.play("item_pick").plays());
        EXPECT_LE(desk.mixer.sounding_of(pick), pick->voices);
        desk.now += 0.5;
    }
    EXPECT_EQ(desk.mixer.sounding_of(pick), 2);
}

TEST(SoundMixer, AlertsKeepTheirDistance) {
    Desk desk;
    EXPECT_TRUE(desk.play("alert_soft").plays());
    desk.now += 3.0;
    EXPECT_EQ(desk.play("alert_loss").drop, Drop::alert);
    desk.now += 1.0;
    EXPECT_TRUE(desk.play("alert_loss").plays());
}

TEST(SoundMixer, JinglesQueueByRank) {
    Desk desk;
    desk.length = 2.0;
    EXPECT_TRUE(desk.play("jingle_small").plays());
    desk.now += 0.2;
    const SoundGo better = desk.play("build_done");
    EXPECT_TRUE(better.plays()) << "a young jingle gives way to a better one";
    EXPECT_TRUE(better.stop_jingle);
    desk.now += 0.5;
    const SoundGo late = desk.play("jingle_big");
    EXPECT_TRUE(late.queued) << "an older one is heard to its end";
    EXPECT_EQ(desk.play("jingle_mission").drop, Drop::queue);
    EXPECT_EQ(desk.play("land_open").drop, Drop::queue) << "equal rank does not replace";
    EXPECT_TRUE(desk.play("jingle_victory").queued) << "higher rank does";
    EXPECT_EQ(desk.mixer.waiting_jingle()->name, "jingle_victory");

    desk.now = 10.2 + 2.0 + 0.3;
    EXPECT_EQ(desk.mixer.due_jingle(desk.now), nullptr);
    desk.now += 0.2;
    const SoundEvent *due = desk.mixer.due_jingle(desk.now);
    ASSERT_NE(due, nullptr);
    SoundAsk ask;
    ask.event = due;
    EXPECT_TRUE(desk.play(ask).plays());
    EXPECT_EQ(desk.mixer.due_jingle(desk.now + 100.0), nullptr);
}

TEST(SoundMixer, StreakRisesAndFallsSilent) {
    Desk desk;
    SoundAsk ask = desk.make("coin_pick");
    ask.jitter = 0.0f;
    float pitch = 0.0f;
    float db = 1.0f;
    for (int i = 0; i < 12; ++i) {
        const SoundGo go = desk.play(ask);
        ASSERT_TRUE(go.plays());
        if (i < find_sound_event("coin_pick")->streak_steps()) {
            EXPECT_GT(go.pitch, pitch);
        } else {
            EXPECT_FLOAT_EQ(go.pitch, pitch);
        }
        EXPECT_LE(go.db, db);
        pitch = go.pitch;
        db = go.db;
        desk.now += 0.15;
    }
    desk.now += 1.0;
    const SoundGo fresh = desk.play(ask);
    EXPECT_FLOAT_EQ(fresh.pitch, 1.0f);
    EXPECT_FLOAT_EQ(fresh.db, 0.0f);
}

TEST(SoundMixer, FarRules) {
    const SoundEvent *sale = find_sound_event("sale");
    const SoundEvent *moo = find_sound_event("cow_moo");
    EXPECT_FALSE(range_rule(*sale, false, 1000.0f).positioned) << "no listener yet: plain";
    EXPECT_EQ(range_rule(*moo, true, 2.9f).vol_db, 0.0f);
    EXPECT_NEAR(range_rule(*moo, true, 10.5f).vol_db, -7.0f, 1e-4) << "half way out, half of 14 dB";
    EXPECT_EQ(range_rule(*moo, true, 18.0f).drop, Drop::far);

    Desk desk;
    desk.length = 0.1;
    const SoundGo near_sale = play_at(desk, "sale", 8.0f, 5);
    EXPECT_TRUE(near_sale.positioned);
    const SoundGo far_sale = play_at(desk, "sale", 14.0f, 5);
    EXPECT_TRUE(far_sale.plays()) << "the far version has a cooldown of its own and no source";
    EXPECT_FALSE(far_sale.positioned);
    EXPECT_FLOAT_EQ(far_sale.db, -15.0f);
    desk.now += 1.2;
    EXPECT_EQ(play_at(desk, "sale", 14.0f, 6).drop, Drop::cooldown);
    desk.now += 0.06;
    EXPECT_TRUE(play_at(desk, "sale", 14.0f, 6).plays());

    SoundEvent banded = *sale;
    banded.maxd = 20.0f;
    EXPECT_TRUE(range_rule(banded, true, 13.0f).positioned) << "a band up to 1.5 x near";
    EXPECT_TRUE(range_rule(banded, true, 14.0f).far);
}

TEST(SoundMixer, RandomPitchStaysInItsRange) {
    Desk desk;
    const SoundEvent *step = find_sound_event("worker_pick");
    float least = 9.0f;
    float most = 0.0f;
    for (int i = 0; i < 200; ++i) {
        desk.now += 2.0;
        const SoundGo go = desk.play("worker_pick");
        ASSERT_TRUE(go.plays());
        least = std::min(least, go.pitch);
        most = std::max(most, go.pitch);
    }
    EXPECT_GE(least, 1.0f - step->rand);
    EXPECT_LE(most, 1.0f + step->rand);
    EXPECT_GT(most - least, step->rand) << "it does vary";
}
