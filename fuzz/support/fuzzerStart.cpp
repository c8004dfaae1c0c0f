// The start of a target under libFuzzer, which brings its own main().

#include "FuzzApplication.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    // Never deleted: libFuzzer ends a process without unwinding it.
    static const FuzzApplication* const application = new FuzzApplication;
    Q_UNUSED(application)
    return 0;
}
