// What the program of the walks was told.
#pragma once

namespace vellum::test {

/// How many steps are walked altogether; the tests of a build take but a few.
int walkSteps();

} // namespace vellum::test
