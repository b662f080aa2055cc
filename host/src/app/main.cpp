#include "app/Options.h"
#include "app/Program.h"

#include <iostream>

int main(int argc, char** argv) {
    host::Options options;
    try {
        options = host::Options::parse({argv + 1, argv + argc});
    } catch (const host::UsageError& error) {
        std::cerr << "vellum-host: " << error.message << "\n\n" << host::Options::usage();
        return 2;
    }
    if (options.help) {
        std::cout << host::Options::usage();
        return 0;
    }
    // Qt gets the program's name only: the other arguments are not for it.
    int programOnly = 1;
    return host::Program(std::move(options)).run(programOnly, argv);
}
