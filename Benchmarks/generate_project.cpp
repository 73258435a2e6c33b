#include "Benchmarks/GeneratedProject.h"

#include <cstdlib>
#include <iostream>

/// generate_project FOLDER COUNT: writes a project with COUNT installed packages, to measure whole programs on.
int main(int count, char** arguments) {
    if (count != 3) {
        std::cerr << "usage: generate_project FOLDER COUNT\n";
        return 2;
    }
    GeneratedProject::write(arguments[1], std::strtoul(arguments[2], nullptr, 10));
}
