#include <fuzz/read_and_write.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return nodeline::fuzz::ReadAndWrite(nodeline::formats::Format::kDot, data, size);
}
