#include "support/TestProgram.h"
#include "walks/Options.h"

#include <cstdlib>
#include <string>

namespace {

int steps = 150;

} // namespace

int vellum::test::walkSteps() {
    return steps;
}

int main(int argc, char** argv) {
    for (int i = 1; i + 1 < argc; ++i) {
        if (argv[i] == std::string("--steps"))
            steps = std::atoi(argv[i + 1]);
        if (argv[i] == std::string("--seed"))
            setenv("VELLUM_TEST_SEED", argv[i + 1], 1);
    }
    return support::runTests(argc, argv, support::Windows::OnPrivateDisplay);
}
