// What the main functions of all test programs have in common.
#pragma once

namespace support {

enum class Windows { None, OnPrivateDisplay };

/// Runs the tests with Qt set up as in the host; an unexpected Qt warning fails the test it
/// happens in. Returns what main returns.
int runTests(int argc, char** argv, Windows windows);

} // namespace support
