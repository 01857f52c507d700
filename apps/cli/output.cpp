#include <apps/cli/commands.h>

#ifdef NODELINE_WITH_CAIRO
#include <backends/cairo/file_writer.h>
#else
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#endif

#include <iostream>

namespace nodeline::cli {

namespace {

#ifdef NODELINE_WITH_CAIRO

bool write_file(const std::string& path, std::string_view bytes, std::string& error) {
    return cairo::WriteFile(path, bytes, &error);
}

#else

bool write_file(const std::string& path, std::string_view bytes, std::string& error) {
    const std::string temporary = path + ".tmp";
    errno = 0;
    std::ofstream file(temporary, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (file && std::rename(temporary.c_str(), path.c_str()) == 0) return true;
    error = "cannot write " + path + ": " + std::strerror(errno);
    std::remove(temporary.c_str());
    return false;
}

#endif

}  // namespace

void WriteOutput(const std::string& path, std::string_view bytes) {
    if (path == "-") {
        std::cout << bytes;
        FinishOutput();
        return;
    }
    std::string error;
    if (!write_file(path, bytes, error)) throw Failure(kBadInput, error);
}

void FinishOutput() {
    if (!std::cout.flush()) throw Failure(kBadInput, "standard output cannot be written");
}

}  // namespace nodeline::cli
