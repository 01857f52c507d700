#include <apps/cli/input.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>

namespace nodeline::cli {

namespace {

struct Close {
    void operator()(std::FILE* file) const {
        if (file != stdin) std::fclose(file);
    }
};

[[noreturn]] void fail(const std::string& path, const char* what) {
    throw Failure(kBadInput, Message(path, 0, std::string(what) + ": " + std::strerror(errno)));
}

}  // namespace

std::string DisplayName(const std::string& path) { return path == "-" ? "standard input" : path; }

std::string Message(const std::string& path, int line, const std::string& reason) {
    return formats::Message(DisplayName(path), line, reason);
}

std::string ReadInput(const std::string& path) {
    errno = 0;
    const std::unique_ptr<std::FILE, Close> file(path == "-" ? stdin
                                                             : std::fopen(path.c_str(), "rb"));
    if (!file) fail(path, "cannot be opened");
    std::string text;
    std::array<char, 65536> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file.get())) {
        text.append(block.data(), count);
    }
    if (std::ferror(file.get()) != 0) fail(path, "cannot be read");
    return text;
}

formats::ReadReport ReadGraph(const graph_ptr2<Graph>& graph, const std::string& path,
                              const formats::ReadOptions& options) {
    try {
        formats::ReadReport report =
            formats::ReadGraph(graph, DisplayName(path), ReadInput(path), options);
        for (const std::string& warning : report.warnings) std::cerr << warning << '\n';
        return report;
    } catch (const formats::ReadError& error) {
        throw Failure(kBadInput, error.what());
    }
}

}  // namespace nodeline::cli
