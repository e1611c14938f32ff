#include "rules/options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

using namespace tilm::rules;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

Options parsed(std::vector<std::string> words) {
    return parse_options(words);
}

TEST(Options, OnlyPlayAndLevelSkipTheMenu) {
    EXPECT_FALSE(parsed({}).start);
    EXPECT_FALSE(parsed({}).given);
    EXPECT_TRUE(parsed({"--play"}).start);
    EXPECT_TRUE(parsed({"--level=anything"}).start);
    EXPECT_TRUE(parsed({"--level="}).start);
    const Options fresh = parsed({"--fresh", "--maxfarm", "--stage=3", "--shots=out", "--nohud", "--autoplay"});
    EXPECT_FALSE(fresh.start);
    EXPECT_TRUE(fresh.given);
    EXPECT_FALSE(parsed({"--player", "--level", "play", "--Play"}).start);
}

TEST(Options, ALaterWordOverridesAnEarlierOne) {
    const Options o = parsed({"--quality=1", "--night", "--quality=3", "--whistle", "--zoom=2", "--zoom=3.5"});
    EXPECT_EQ(o.quality, 3);
    EXPECT_EQ(o.day_clock, 149.0);
    EXPECT_EQ(o.zoom, 3.5);
    // A bad later value leaves the earlier one standing.
    EXPECT_EQ(parsed({"--quality=1", "--quality=best"}).quality, 1);
}

TEST(Options, FarmStepsKeepTheirOrder) {
    EXPECT_THAT(parsed({"--fresh", "--maxfarm"}).farm_steps, ElementsAre(FarmStep::Clear, FarmStep::MaxFarm));
    EXPECT_THAT(parsed({"--maxfarm", "--fresh"}).farm_steps, ElementsAre(FarmStep::MaxFarm, FarmStep::Clear));
    EXPECT_TRUE(parsed({"--maxfarm", "--fresh"}).max_farm);
}

TEST(Options, ValuesAreReadWhole) {
    const Options o = parsed({"--at=-12.5", "--atz=4", "--every=0.5", "--shotsize=1280x720", "--timescale=8",
                              "--money=2500000000", "--away=3600", "--horse=2,1", "--pet=dog,cat",
                              "--noproc=Walker,,Hauler", "--season=winter", "--scale3d=0.5", "--perfx=a,b"});
    EXPECT_THAT(o.problems, IsEmpty());
    EXPECT_EQ(o.at_x, -12.5);
    EXPECT_EQ(o.at_z, 4.0);
    EXPECT_EQ(o.every, 0.5);
    EXPECT_EQ(o.shot_width, 1280);
    EXPECT_EQ(o.shot_height, 720);
    EXPECT_EQ(o.time_scale, 8.0);
    EXPECT_EQ(o.money, 2500000000);
    EXPECT_EQ(o.away, 3600);
    EXPECT_EQ(o.horse, 2);
    EXPECT_EQ(o.cart, 1);
    EXPECT_THAT(o.pets, ElementsAre("dog", "cat"));
    EXPECT_THAT(o.frozen_classes, ElementsAre("Walker", "Hauler"));
    EXPECT_EQ(o.season, "WINTER");
    EXPECT_EQ(o.scale_3d, 0.5);
    EXPECT_TRUE(o.perfx);
    EXPECT_THAT(o.feature_groups, ElementsAre("a", "b"));
}

TEST(Options, AnOptionalValueMayBeLeftOut) {
    EXPECT_EQ(parsed({"--allcash"}).all_cash_at, 14.0);
    EXPECT_EQ(parsed({"--allcash=3"}).all_cash_at, 3.0);
    EXPECT_TRUE(parsed({"--allcash"}).all_cash);
    EXPECT_GT(parsed({"--walk"}).walk, 0.0);
    EXPECT_EQ(parsed({"--walk=7"}).walk, 7.0);
    EXPECT_EQ(parsed({}).walk, 0.0);
}

// Each bad word: one line that names it, and the default.
TEST(Options, BadWordsAreToldAndLeaveTheDefault) {
    for (const char *word :
         {"--at=", "--at", "--at=left", "--at=1e999", "--at=nan", "--at=inf", "--at=3m", "--at= 3"}) {
        const Options o = parsed({word});
        EXPECT_TRUE(std::isinf(o.at_x)) << word;
        ASSERT_EQ(o.problems.size(), 1u) << word;
        EXPECT_THAT(o.problems[0], HasSubstr("--at")) << word;
    }
    for (const char *word :
         {"--shotsize=720", "--shotsize=0x0", "--shotsize=x", "--shotsize=99999x20", "--shotsize=axb"}) {
        const Options o = parsed({word});
        EXPECT_EQ(o.shot_width, 720) << word;
        EXPECT_EQ(o.shot_height, 1560) << word;
        EXPECT_EQ(o.problems.size(), 1u) << word;
    }
    for (const char *word : {"--hour=24", "--hour=-1", "--hour=noon"}) {
        EXPECT_EQ(parsed({word}).day_clock, -1.0) << word;
    }
    EXPECT_FALSE(parsed({"--fresh=1"}).problems.empty());
    EXPECT_THAT(parsed({"--fresh=1"}).farm_steps, IsEmpty());
    EXPECT_THAT(parsed({"--money=much"}).money, std::nullopt);
    EXPECT_THAT(parsed({"rubbish", "", "=", "--"}).problems, testing::SizeIs(4));
}

TEST(Options, NumbersOutsideTheirRangeMoveToItsBound) {
    EXPECT_EQ(parsed({"--zoom=0.2"}).zoom, 1.0);
    EXPECT_EQ(parsed({"--quality=9"}).quality, 3);
    EXPECT_EQ(parsed({"--money=-5"}).money, 0);
    EXPECT_EQ(parsed({"--timescale=0"}).time_scale, 0.01);
    EXPECT_EQ(parsed({"--stage=1e300"}).stage, 10000);
    EXPECT_EQ(parsed({"--zoom=0.2"}).problems.size(), 1u);
}

TEST(Options, DiagnosticsWaitForAFarm) {
    const Options o = parsed({"--tapat=100,200", "--notify", "--tapat="});
    EXPECT_THAT(o.after_build, ElementsAre(testing::Pair("--tapat", "100,200"), testing::Pair("--notify", "")));
    EXPECT_EQ(o.problems.size(), 1u);
}

TEST(Options, WhatHasNoSystemYetIsNamedOnce) {
    const Options o = parsed({"--wolves=3", "--thief", "--wolves=4", "--play", "--save=a", "--lang=ar", "--sound"});
    EXPECT_THAT(o.idle, ElementsAre("--wolves", "--thief"));
    EXPECT_THAT(o.problems, IsEmpty());
}

TEST(Options, DayClockOfAnHour) {
    EXPECT_DOUBLE_EQ(clock_of_hour(6), 0.0);
    EXPECT_DOUBLE_EQ(clock_of_hour(12.5), 165.0);
    EXPECT_DOUBLE_EQ(clock_of_hour(19), 330.0);
    EXPECT_DOUBLE_EQ(clock_of_hour(2), 330.0 + 7.0 / 11.0 * 150.0);
    // Continuous over the day, 480 units long.
    EXPECT_NEAR(clock_of_hour(18.9999), 330.0, 0.01);
    EXPECT_NEAR(clock_of_hour(5.9999), 480.0, 0.01);
    EXPECT_NEAR(clock_of_hour(23.9999), clock_of_hour(0), 0.01);
}

} // namespace
