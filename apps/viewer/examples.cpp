#include <apps/viewer/examples.h>

namespace nodeline::app {

namespace {

Example Make(const char* title, const char* description, const char* file) {
    return {QString::fromUtf8(title), QString::fromUtf8(description),
            QStringLiteral(":/examples/") + QLatin1String(file)};
}

}  // namespace

std::vector<Example> BuiltInExamples() {
    return {
        Make("HTTP parser", "A state machine with self-loops: 48 states", "http-parser.txt"),
        Make("Calls in zlib", "Who calls whom: 151 functions in 15 files", "zlib-calls.txt"),
        Make("systemd units", "Which unit wants which: 259 units of 9 kinds", "systemd-units.txt"),
        Make("Blocks of inflate", "One loop with hundreds of ways back: 317 basic blocks",
             "inflate-blocks.txt"),
        Make("TeX Live packages", "What a full installation depends on: 566 packages",
             "texlive-packages.txt"),
        Make("Calls in Lua", "Who calls whom: 1,070 functions in 31 files", "lua-calls.txt"),
        Make("Blocks of zlib", "All its functions: 2,115 basic blocks, nested twice",
             "zlib-blocks.txt"),
    };
}

}  // namespace nodeline::app
