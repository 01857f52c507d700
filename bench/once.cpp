// Lays one graph out and tells what that took, as a line of JSON.
//
//   bench-once calls 100000
//   (ulimit -s 1024; bench-once chain 1000000)
//
// The memory is that of the first graph: `resident_bytes` is how much more the process holds after
// the layout than before the graph was built, `peak_bytes` the most it ever held above that. Times
// are the processor time of `Make` alone, in the program and in the kernel. With --samples N the
// median of so many samples is told, each the mean over as many fresh graphs as it takes to measure
// it well.
#include <bench/built_graph.h>
#include <bench/stopwatch.h>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace nodeline::bench {

namespace {

struct Request {
    const Family* family = nullptr;
    int nodes = 0;
    int samples = 1;
};

bool read_number(std::string_view text, int least, int& number) {
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && number >= least;
}

bool read_request(const std::vector<std::string_view>& words, Request& request) {
    if (words.size() != 2 && words.size() != 4) return false;
    request.family = FindFamily(words[0]);
    if (request.family == nullptr || !read_number(words[1], 10, request.nodes)) return false;
    return words.size() == 2 ||
           (words[2] == "--samples" && read_number(words[3], 1, request.samples));
}

long long resident_bytes() {
    std::ifstream statm("/proc/self/statm");
    long long total = 0;
    long long resident = 0;
    statm >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

long long peak_bytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return 1024LL * usage.ru_maxrss;
}

long long stack_limit() {
    rlimit limit{};
    getrlimit(RLIMIT_STACK, &limit);
    return limit.rlim_cur == RLIM_INFINITY ? -1 : static_cast<long long>(limit.rlim_cur);
}

double seconds_of_make(const BuiltGraph& built) {
    const Stopwatch watch;
    built.layout->Make(built.graph->GetRoot());
    return watch.Seconds();
}

// The mean over fresh graphs.
double take_sample(const GraphPlan& plan) {
    constexpr double kLongEnough = 0.05;
    double seconds = 0.0;
    int count = 0;
    while (seconds < kLongEnough) {
        seconds += seconds_of_make(Build(plan));
        ++count;
    }
    return seconds / count;
}

void run(const Request& request) {
    const GraphPlan plan = request.family->plan(request.nodes);
    const long long before = resident_bytes();
    double make = 0.0;
    Elements elements;
    long long resident = 0;
    long long peak = 0;
    {
        const BuiltGraph built = Build(plan);
        make = seconds_of_make(built);
        resident = resident_bytes() - before;
        peak = peak_bytes() - before;
        elements = CountElements(built);
    }
    if (request.samples > 1) {
        std::vector<double> samples(static_cast<std::size_t>(request.samples));
        for (double& sample : samples) sample = take_sample(plan);
        const auto middle = samples.begin() + request.samples / 2;
        std::nth_element(samples.begin(), middle, samples.end());
        make = *middle;
    }
    std::printf(
        "{\"family\": \"%s\", \"nodes\": %lld, \"edges\": %lld, \"breaks\": %lld, "
        "\"make_ms\": %.6g, \"resident_bytes\": %lld, \"peak_bytes\": %lld, "
        "\"stack_limit\": %lld}\n",
        std::string(request.family->name).c_str(), elements.nodes, elements.edges, elements.breaks,
        1e3 * make, resident, peak, stack_limit());
}

void print_usage() {
    std::fprintf(stderr, "usage: bench-once FAMILY NODES [--samples N]\n\nfamilies:\n");
    for (const Family& family : Families()) {
        std::fprintf(stderr, "    %-12s %s\n", std::string(family.name).c_str(),
                     std::string(family.title).c_str());
    }
}

int answer(const std::vector<std::string_view>& words) {
    Request request;
    if (!read_request(words, request)) {
        print_usage();
        return 2;
    }
    run(request);
    return 0;
}

}  // namespace

}  // namespace nodeline::bench

int main(int argc, char** argv) { return nodeline::bench::answer({argv + 1, argv + argc}); }
