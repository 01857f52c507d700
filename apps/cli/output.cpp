#include <apps/cli/commands.h>

#include <iostream>

namespace nodeline::cli {

void FinishOutput() {
    if (!std::cout.flush()) throw Failure(kBadInput, "standard output cannot be written");
}

}  // namespace nodeline::cli
