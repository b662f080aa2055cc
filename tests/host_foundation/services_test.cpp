// Messages and idle work.
#include "foundation/Idle.h"
#include "foundation/Report.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using host::report::Level;

TEST(Report, TellsListenersTheBareTextInOrder) {
    std::vector<std::string> heard;
    int second = 0;
    const int first = host::report::addListener([&](Level level, const std::string& text) {
        heard.push_back("1" + text);
        EXPECT_EQ(Level::Error, level);
        host::report::removeListener(second); // one that goes before its turn hears nothing
    });
    second = host::report::addListener(
        [&](Level, const std::string& text) { heard.push_back("2" + text); });
    host::report::error("oh");
    host::report::removeListener(first);
    host::report::error("again");
    EXPECT_EQ((std::vector<std::string>{"1oh"}), heard);
}

TEST(Idle, WorkPostedByWorkWaitsForTheNextRound) {
    host::idle::clear();
    std::string order;
    int wakeUps = 0;
    host::idle::setWakeUp([&] { ++wakeUps; });
    host::idle::post([&] {
        order += "a";
        host::idle::post([&] { order += "c"; });
    });
    host::idle::post([&] { order += "b"; });
    EXPECT_EQ(1, wakeUps); // once for a queue that was empty
    EXPECT_TRUE(host::idle::drain());
    EXPECT_EQ("ab", order);
    EXPECT_EQ(2, wakeUps);
    host::idle::drainAll();
    EXPECT_EQ("abc", order);
    EXPECT_FALSE(host::idle::drain());
    host::idle::setWakeUp({});
}

TEST(Idle, WorkThatWaitsInAnEventLoopHoldsNothingUp) {
    host::idle::clear();
    std::string order;
    int wakeUps = 0;
    host::idle::setWakeUp([&] { ++wakeUps; });
    host::idle::post([&] {
        order += "a";
        host::idle::post([&] { order += "c"; });
        EXPECT_EQ(2, wakeUps) << "somebody is to go on with the rest";
        host::idle::drain(); // as the event loop of a dialog does
        order += "z";
    });
    host::idle::post([&] { order += "b"; });
    host::idle::drain();
    EXPECT_EQ("abcz", order);
    EXPECT_FALSE(host::idle::pending());
    host::idle::setWakeUp({});
}

TEST(Idle, WorkThatNeverEndsDoesNotHang) {
    host::idle::clear();
    int rounds = 0;
    std::function<void()> again = [&] {
        ++rounds;
        host::idle::post(again);
    };
    host::idle::post(again);
    host::idle::drainAll(50);
    EXPECT_EQ(50, rounds);
    host::idle::clear();
    EXPECT_FALSE(host::idle::pending());
}

} // namespace
