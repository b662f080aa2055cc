// What a test goes on with: where it is missing, the test has failed and ends; the program and its
// other tests go on.
#pragma once

#include <gtest/gtest.h>
#include <stdexcept>

namespace support {

/// The place of the call; the test framework shows it and catches what is thrown.
[[noreturn]] inline void endTest(const char* file, int line) {
    ADD_FAILURE_AT(file, line) << "what the test goes on with is not there";
    throw std::runtime_error("nothing to go on with");
}

/// The thing that is pointed to.
template <typename Pointer>
auto& sure(const Pointer& pointer, const char* file = __builtin_FILE(),
           int line = __builtin_LINE()) {
    if (!pointer)
        endTest(file, line);
    return *pointer;
}

/// A copy of the first and of the last thing of several.
template <typename Things>
typename Things::value_type firstOf(const Things& things, const char* file = __builtin_FILE(),
                                    int line = __builtin_LINE()) {
    if (things.empty())
        endTest(file, line);
    return things.front();
}
template <typename Things>
typename Things::value_type lastOf(const Things& things, const char* file = __builtin_FILE(),
                                   int line = __builtin_LINE()) {
    if (things.empty())
        endTest(file, line);
    return things.back();
}

} // namespace support
