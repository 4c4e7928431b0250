#include "target.h"

#include <cstddef>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    check(std::string(data, data + size));
    return 0;
}
