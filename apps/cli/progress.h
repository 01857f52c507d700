// A line on the terminal that tells that something goes on.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace nodeline::cli {

// While it exists, and from the first second on, standard error shows what goes on and for how long
// already. The line is gone afterwards. Where standard error is no terminal, nothing is shown.
class Progress {
public:
    explicit Progress(std::string what);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    void show_until_done();

    std::string what_;
    std::mutex mutex_;
    std::condition_variable done_;
    bool is_done_ = false;
    std::thread thread_;
};

}  // namespace nodeline::cli
