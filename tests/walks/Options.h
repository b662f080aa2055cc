// What the program of the walks was told.
#pragma once

namespace vellum::test {

struct WalkOptions {
    int steps = 150;    ///< altogether; the tests of a build take but a few
    bool trace = false; ///< tells each step before it is done, for the one that ends the program
};

WalkOptions& walkOptions();

} // namespace vellum::test
