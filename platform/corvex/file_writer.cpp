#include <corvex/file_writer.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <system_error>

namespace corvex {
namespace {

constexpr mode_t kUsualMode = 0666;
constexpr mode_t kPermissions = 07777;
constexpr int kMaxTemporaryNames = 100;

// A descriptor that is closed at the end of its scope, with the outcome of the calls on it: false
// with `errno` set, as the calls themselves have it.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] bool IsOpen() const { return number_ >= 0; }

    [[nodiscard]] bool Write(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t written = ::write(number_, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        return true;
    }

    [[nodiscard]] bool SetMode(mode_t mode) const { return ::fchmod(number_, mode) == 0; }

    bool Close() {
        if (number_ < 0) return true;
        const int number = number_;
        number_ = -1;
        return ::close(number) == 0;
    }

private:
    int number_;
};

// Where the file really is, if there is one.
std::string Resolve(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr),
                                                               &std::free);
    return resolved != nullptr ? std::string(resolved.get()) : path;
}

// Opens a new file beside `path` and stores its name.
int OpenTemporary(const std::string& path, std::string& name) {
    for (int n = 0; n < kMaxTemporaryNames; ++n) {
        name = path + "." + std::to_string(::getpid()) + "-" + std::to_string(n) + ".tmp";
        const int number =
            ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kUsualMode);
        if (number >= 0 || errno != EEXIST) return number;
    }
    return -1;
}

bool WriteInPlace(const std::string& path, std::string_view bytes) {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    return file.IsOpen() && file.Write(bytes) && file.Close();
}

bool Replace(const std::string& path, std::string_view bytes, std::optional<mode_t> mode) {
    std::string name;
    Descriptor file(OpenTemporary(path, name));
    if (!file.IsOpen()) return false;
    const bool done = file.Write(bytes) && (!mode || file.SetMode(*mode)) && file.Close() &&
                      ::rename(name.c_str(), path.c_str()) == 0;
    if (done) return true;
    const int reason = errno;
    static_cast<void>(::unlink(name.c_str()));
    errno = reason;
    return false;
}

}  // namespace

bool WriteFile(const std::string& path, std::string_view bytes, std::string* error) {
    const std::string target = Resolve(path);
    struct stat former {};
    const bool exists = ::stat(target.c_str(), &former) == 0;
    bool done = false;
    if (exists && S_ISDIR(former.st_mode)) {
        errno = EISDIR;
    } else if (exists && !S_ISREG(former.st_mode)) {
        done = WriteInPlace(target, bytes);
    } else if (exists) {
        done = Replace(target, bytes, former.st_mode & kPermissions);
    } else {
        done = Replace(target, bytes, std::nullopt);
    }
    if (!done && error != nullptr) {
        *error = "cannot write " + path + ": " + std::generic_category().message(errno);
    }
    return done;
}

}  // namespace corvex
