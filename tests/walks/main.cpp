#include "support/TestProgram.h"
#include "walks/Options.h"

#include <cstdlib>
#include <string>

vellum::test::WalkOptions& vellum::test::walkOptions() {
    static WalkOptions options;
    return options;
}

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        const char* const value = i + 1 < argc ? argv[i + 1] : "";
        if (word == "--steps")
            vellum::test::walkOptions().steps = std::atoi(value);
        else if (word == "--seed")
            setenv("VELLUM_TEST_SEED", value, 1);
        else if (word == "--trace")
            vellum::test::walkOptions().trace = true;
    }
    return support::runTests(argc, argv, support::Windows::OnPrivateDisplay);
}
