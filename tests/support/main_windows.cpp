#include "support/TestProgram.h"

int main(int argc, char** argv) {
    return support::runTests(argc, argv, support::Windows::OnPrivateDisplay);
}
