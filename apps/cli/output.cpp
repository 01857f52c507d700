#include <apps/cli/commands.h>
#include <corvex/file_writer.h>

#include <iostream>

namespace nodeline::cli {

void WriteOutput(const std::string& path, std::string_view bytes) {
    if (path == "-") {
        std::cout << bytes;
        FinishOutput();
        return;
    }
    std::string error;
    if (!corvex::WriteFile(path, bytes, &error)) throw Failure(kBadInput, error);
}

void FinishOutput() {
    if (!std::cout.flush()) throw Failure(kBadInput, "standard output cannot be written");
}

}  // namespace nodeline::cli
