#include "FuzzTarget.h"

#include <cstdio>
#include <cstdlib>

void fail(const char* requirement, const char* file, int line)
{
    std::fprintf(stderr, "%s:%d: not fulfilled: %s\n", file, line, requirement);
    std::fflush(stderr);
    std::abort();
}
