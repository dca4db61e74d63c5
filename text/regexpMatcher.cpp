#include "text/regexpEngine.h"
#include "text/regexpProgram.h"
#include "text/regexpWalker.h"

#include <cstdio>
#include <cstring>

RegexpOutcome regexec(regexp* prog, char const* string, std::uint64_t stepLimit)
{
    if (!prog || !string) {
        regerror("NULL parameter");
        return RegexpOutcome::noMatch;
    }
    if (static_cast<unsigned char>(prog->program[0]) != zk::regexpMagic) {
        regerror("corrupted program");
        return RegexpOutcome::noMatch;
    }
    RegexpOutcome const outcome =
        zk::RegexpWalker(*prog, zk::regexpSizeLimit, stepLimit).search(const_cast<char*>(string));
    if (outcome == RegexpOutcome::outOfSteps) {
        std::memset(prog->startp, 0, sizeof prog->startp);
        std::memset(prog->endp, 0, sizeof prog->endp);
    }
    return outcome;
}

int regexec(regexp* prog, char const* string)
{
    return regexec(prog, string, UINT64_MAX) == RegexpOutcome::match ? 1 : 0;
}

void regerror(char const* message)
{
    std::fprintf(stderr, "regerror: %s\n", message);
}
