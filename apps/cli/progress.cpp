#include <apps/cli/progress.h>

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <utility>

namespace nodeline::cli {

Progress::Progress(std::string what) : what_(std::move(what)) {
    if (isatty(STDERR_FILENO) != 0) thread_ = std::thread(&Progress::show_until_done, this);
}

Progress::~Progress() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        is_done_ = true;
    }
    done_.notify_one();
    thread_.join();
}

void Progress::show_until_done() {
    int seconds = 0;
    std::unique_lock lock(mutex_);
    while (!done_.wait_for(lock, std::chrono::seconds(1), [this] { return is_done_; })) {
        ++seconds;
        std::fprintf(stderr, "\r%s ... %d s", what_.c_str(), seconds);
        std::fflush(stderr);
    }
    if (seconds > 0) std::fprintf(stderr, "\r\033[K");
}

}  // namespace nodeline::cli
