// Where random tests take their numbers from.
#pragma once

#include <cstdlib>

namespace support {

/// The seed of this run: the same every time unless VELLUM_TEST_SEED names another, so that a
/// failure can be repeated and a long search can walk through many.
inline unsigned seed() {
    const char* chosen = std::getenv("VELLUM_TEST_SEED");
    return chosen ? static_cast<unsigned>(std::strtoul(chosen, nullptr, 10)) : 20240u;
}

} // namespace support
