// modelgen: generates C++ from class diagrams. See docs/modelgen.md.
#include "examples/modelgen/host.h"
#include "examples/modelgen/run.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv)
{
    try {
        modelgen::Options options;
        modelgen::readOptions(argc - 1, argv + 1, options);
        modelgen::Host const host(options.profile);
        return modelgen::run(options, std::cout, std::cerr);
    } catch (std::exception const& failure) {  // out of memory, above all
        std::cerr << "modelgen: " << failure.what() << '\n';
        return 1;
    }
}
