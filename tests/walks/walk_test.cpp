// The walks: many of a few hundred steps each, every one with a seed of its own, so that what is
// found is a seed and a step, and soon found again:
//   test_walks --steps 100000          as many walks as it takes, from the usual seed on
//   test_walks --steps 120 --seed 7    the first 120 steps of walk 7; --trace tells each
#include "support/Seed.h"
#include "walks/Options.h"
#include "walks/Walk.h"

#include <algorithm>
#include <cstdio>

namespace vellum::test {
namespace {

constexpr int kLongest = 250;
constexpr int kMostFaults = 5; ///< more tell little more, and each takes a minute

TEST_F(Walk, TheSavedSceneIsTheSameAtBothEnds) {
    int walks = 0, faults = 0;
    for (int left = walkOptions().steps; left > 0 && faults < kMostFaults;
         left -= kLongest, ++walks) {
        const unsigned seed = support::seed() + static_cast<unsigned>(walks);
        const bool returns = seed % 3 == 0;
        std::vector<Action> actions = plan(seed, std::min(left, kLongest));
        if (const auto fault = walk(actions, returns)) {
            ++faults;
            actions.resize(std::min(actions.size(), fault->step + 1));
            ADD_FAILURE() << "--seed " << seed << " --steps " << actions.size()
                          << (returns ? " (undoReturnsToFrame)" : "") << ": " << fault->what
                          << shortestWay(actions, returns);
        }
    }
    std::printf("%d steps in %d walks from seed %u, %d with a fault\n",
                std::min(walkOptions().steps, walks * kLongest), walks, support::seed(), faults);
}

} // namespace
} // namespace vellum::test
