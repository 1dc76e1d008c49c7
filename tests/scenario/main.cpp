// ambrisor-scenario: runs scenario files against the component. docs/scenarios.md has the language.
#include <iostream>
#include <vector>

#include "tests/scenario/script.h"

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    return scenario::RunProgram(arguments, std::cout, std::cerr);
}
