#include <apps/cli/commands.h>
#include <apps/cli/input.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace nodeline::cli {

namespace {

constexpr const char* kViewer = "nodeline-viewer";

// The viewer says what is wrong with a file in its window. What can be said without one is said
// here, to scripts as well.
void check_file(const std::string& path) {
    const auto fail = [&](int error) {
        throw Failure(kBadInput,
                      Message(path, 0, std::string("cannot be opened: ") + std::strerror(error)));
    };
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) fail(EISDIR);
    errno = 0;
    const std::ifstream file(path, std::ios::binary);
    if (!file) fail(errno);
}

// Empty where the system does not tell.
std::filesystem::path own_folder() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path() : program.parent_path();
}

}  // namespace

void RunView(const ViewOptions& options) {
    check_file(options.input);
    // A full name has no first character that means something to the viewer.
    std::string file = std::filesystem::absolute(options.input).string();
    std::string viewer = kViewer;
    std::string option = "--layout";
    std::string layout = options.layout;
    const std::array<char*, 5> arguments{viewer.data(), option.data(), layout.data(), file.data(),
                                         nullptr};
    const std::filesystem::path folder = own_folder();
    if (!folder.empty()) ::execv((folder / kViewer).c_str(), arguments.data());
    ::execvp(kViewer, arguments.data());
    const int error = errno;
    if (error == ENOENT) {
        throw Failure(kBadInput,
                      "nodeline: there is no nodeline-viewer beside this program or in PATH");
    }
    throw Failure(kBadInput, std::string("nodeline: nodeline-viewer cannot be started: ") +
                                 std::strerror(error));
}

}  // namespace nodeline::cli
