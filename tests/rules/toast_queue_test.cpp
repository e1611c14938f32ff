#include <gtest/gtest.h>

#include <string>

#include "rules/toast_queue.h"

using namespace tilm::rules;
using Change = ToastQueue::Change;

namespace {

Change add(ToastQueue &q, const std::string &text, int level = 0) {
    return q.add(text, level, text.size());
}

ToastQueue wide() {
    ToastQueue q;
    q.set_limits(3, 6);
    return q;
}

} // namespace

TEST(ToastQueue, TimesAndRefusals) {
    EXPECT_DOUBLE_EQ(toast_seconds(10, 0), 2.4);
    EXPECT_DOUBLE_EQ(toast_seconds(500, 1), 4.0);
    EXPECT_DOUBLE_EQ(toast_seconds(10, 3), 3.4);
    EXPECT_TRUE(is_refusal("NOT ENOUGH MONEY"));
    EXPECT_TRUE(is_refusal("NEEDS 5 EGGS"));
    EXPECT_FALSE(is_refusal("NEEDSOMETHING"));
    EXPECT_FALSE(is_refusal("GAME SAVED!"));
}

TEST(ToastQueue, RepeatsAreCountedInOneRow) {
    ToastQueue q = wide();
    EXPECT_EQ(add(q, "GAME SAVED!"), Change::shown);
    q.step(1.0);
    EXPECT_EQ(add(q, "GAME SAVED!"), Change::counted);
    EXPECT_EQ(add(q, "GAME SAVED!"), Change::counted);
    ASSERT_EQ(q.lane().size(), 1u);
    EXPECT_EQ(q.lane()[0].count, 3);
    EXPECT_DOUBLE_EQ(q.lane()[0].left, toast_seconds(11, 0)) << "a repeat starts the time anew";
}

TEST(ToastQueue, FullLaneQueuesAndHandsOn) {
    ToastQueue q = wide();
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(add(q, "TOAST " + std::to_string(i), 1), i < 3 ? Change::shown : Change::queued);
    }
    EXPECT_EQ(q.waiting(), 6u);
    EXPECT_EQ(add(q, "TOAST 5", 1), Change::dropped) << "it waits already";
    EXPECT_EQ(add(q, "TOAST 9", 1), Change::queued) << "the oldest waiting one goes";
    EXPECT_FALSE(q.is_waiting("TOAST 3"));
    EXPECT_EQ(q.waiting(), 6u);

    const std::vector<int> over = q.step(10.0);
    ASSERT_EQ(over.size(), 3u);
    EXPECT_TRUE(q.step(1.0).empty()) << "each leaves once";
    EXPECT_TRUE(q.gone(over[0]));
    EXPECT_EQ(q.lane().back().text, "TOAST 4");
    EXPECT_EQ(add(q, "TOAST 1", 1), Change::queued) << "a leaving row is not revived, and holds its place";
}

TEST(ToastQueue, PlainToastsGiveWayFirst) {
    ToastQueue q;
    q.set_limits(1, 3);
    add(q, "UP");
    add(q, "WARN 1", 2);
    add(q, "PLAIN 1", 0);
    add(q, "PLAIN 2", 0);
    EXPECT_EQ(add(q, "PLAIN 3", 0), Change::queued) << "replaces the oldest plain one";
    EXPECT_FALSE(q.is_waiting("PLAIN 1"));
    EXPECT_TRUE(q.is_waiting("WARN 1"));
    add(q, "WARN 2", 2);
    add(q, "WARN 3", 3);
    EXPECT_TRUE(q.is_waiting("WARN 1") && q.is_waiting("WARN 2") && q.is_waiting("WARN 3"));
    EXPECT_EQ(add(q, "PLAIN 4", 0), Change::dropped) << "no plain one left to replace";
    EXPECT_EQ(add(q, "WARN 4", 2), Change::queued);
    EXPECT_FALSE(q.is_waiting("WARN 1"));
}
