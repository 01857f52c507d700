// The processor time of this process since a moment: what others do on the machine counts little.
#pragma once

#include <ctime>

namespace nodeline::bench {

class Stopwatch {
public:
    Stopwatch() : start_(now()) {}

    // Time of all threads, in the program and in the kernel on its behalf.
    [[nodiscard]] double Seconds() const { return now() - start_; }

private:
    static double now() {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
    }

    double start_;
};

}  // namespace nodeline::bench
