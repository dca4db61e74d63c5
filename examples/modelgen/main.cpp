// modelgen: generates C++ from class diagrams. See docs/modelgen.md.
#include "examples/modelgen/run.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv)
{
    try {
        return modelgen::run(argc - 1, argv + 1, std::cout, std::cerr);
    } catch (std::exception const& failure) {  // out of memory, above all
        std::cerr << "modelgen: " << failure.what() << '\n';
        return 1;
    }
}
