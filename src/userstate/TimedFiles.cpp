#include "userstate/TimedFiles.h"

#include "base/Errors.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace vek {

namespace fs = std::filesystem;

namespace {

constexpr mode_t forUserOnly = 0600;
constexpr int mostAttempts = 1000;

} // namespace

std::string TimeInName(std::int64_t time) {
    const auto seconds = static_cast<std::time_t>(time);
    std::tm parts = {};
    ::gmtime_r(&seconds, &parts);
    char text[32];
    return {text, std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &parts)};
}

bool IsTimedName(std::string_view name) {
    constexpr std::string_view form = "00000000-000000-0";
    const auto alike = [](char digit, char character) {
        return digit == '0' ? character >= '0' && character <= '9' : character == digit;
    };
    return name.size() >= form.size() && std::ranges::equal(form, name.substr(0, form.size()), alike) &&
           name.find_first_not_of("0123456789-") == std::string_view::npos;
}

TimedFile CreateTimedFile(const std::string& folder, const char* suffix) {
    std::error_code error;
    if (fs::create_directories(folder, error))
        fs::permissions(folder, fs::perms::owner_all, error);
    const std::string first =
        folder + '/' + TimeInName(std::time(nullptr)) + '-' + std::to_string(::getpid());
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        std::string stem = attempt == 0 ? first : first + '-' + std::to_string(attempt);
        Descriptor file(::open((stem + suffix).c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, forUserOnly));
        if (file.Open())
            return {std::move(stem), std::move(file)};
        if (errno != EEXIST)
            throw FileError(folder, std::strerror(errno));
    }
    throw FileError(folder, "no free name");
}

} // namespace vek
