// The way in for libFuzzer. FUZZ_TARGET is the routine of the target.
#include "fuzz/target.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string complaint = fuzz::FUZZ_TARGET({data, size});
    if (complaint.empty())
        return 0;
    std::fprintf(stderr, "%s\n", complaint.c_str());
    std::abort();
}
