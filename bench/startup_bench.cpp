// How long a program takes until its window is painted, and the memory of that, as ratios to another one.
// Each is linked with FirstPaint.cpp. They run in turn, so that whatever else the machine does meets both
// alike.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

struct Figures {
    std::vector<double> Milliseconds;
    std::vector<double> Megabytes;
};

void Start(const std::string& program, Figures& figures) {
    const auto start = std::chrono::steady_clock::now();
    std::FILE* output = ::popen(("exec " + program).c_str(), "r");
    long kilobytes = 0;
    const bool told = output && std::fscanf(output, "%ld", &kilobytes) == 1;
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    if (!told || ::pclose(output) != 0) {
        std::fprintf(stderr, "%s painted no window\n", program.c_str());
        std::exit(1);
    }
    figures.Milliseconds.push_back(taken.count());
    figures.Megabytes.push_back(static_cast<double>(kilobytes) / 1024);
}

double Median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void Print(const char* what, std::vector<double>& yardstick, std::vector<double>& program) {
    const double base = Median(yardstick);
    const double value = Median(program);
    std::printf("%s: yardstick %.1f, program %.1f, ratio %.2f\n", what, base, value, value / base);
}

} // namespace

int main(int argc, char** argv) {
    constexpr int runs = 40;
    if (argc != 3) {
        std::fputs("usage: startup_bench YARDSTICK PROGRAM\n", stderr);
        return 2;
    }
    Figures yardstick;
    Figures program;
    Figures warmUp;
    Start(argv[1], warmUp);
    Start(argv[2], warmUp);
    for (int run = 0; run < runs; ++run) {
        Start(argv[1], yardstick);
        Start(argv[2], program);
    }
    std::printf("medians of %d runs\n", runs);
    Print("first paint, ms", yardstick.Milliseconds, program.Milliseconds);
    Print("peak memory, MB", yardstick.Megabytes, program.Megabytes);
    return 0;
}
