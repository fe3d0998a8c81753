#include "platform/PortHolders.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <unistd.h>

namespace vek {

namespace {

namespace fs = std::filesystem;

/// As the system names them.
constexpr std::string_view knownGrabbers[] = {"ModemManager", "brltty", "gpsd", "ser2net", "pppd", "lircd"};

/// From which pseudo-terminals are made.
constexpr std::string_view pseudoTerminalMaker = "ptmx";

int NumberOf(const fs::path& process) {
    const std::string name = process.filename().string();
    int number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    return error == std::errc() && end == name.data() + name.size() ? number : 0;
}

std::string ProgramOf(const fs::path& process) {
    std::ifstream file(process / "comm");
    std::string name;
    std::getline(file, name);
    return name;
}

/// Processes come and go while they are looked at: what cannot be read any more is left out.
template <typename Wanted>
std::vector<PortHolder> Processes(const std::string& folder, Wanted wanted) {
    std::vector<PortHolder> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const int pid = NumberOf(entry->path());
        if (pid != 0 && pid != ::getpid() && wanted(entry->path()))
            found.push_back({ProgramOf(entry->path()), pid});
    }
    std::ranges::sort(found, {}, &PortHolder::Pid);
    return found;
}

bool Holds(const fs::path& process, const std::string& device) {
    bool open = false;
    std::error_code error;
    for (fs::directory_iterator entry(process / "fd", error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code gone;
        const fs::path target = fs::read_symlink(entry->path(), gone);
        if (target.filename() == pseudoTerminalMaker && device.starts_with("/dev/pts/"))
            return false;
        open = open || target == device;
    }
    return open;
}

} // namespace

std::vector<PortHolder> HoldersOf(const std::string& device, const std::string& processes) {
    return Processes(processes, [&](const fs::path& process) { return Holds(process, device); });
}

std::vector<PortHolder> RunningGrabbers(const std::string& processes) {
    return Processes(processes, [](const fs::path& process) {
        return std::ranges::find(knownGrabbers, ProgramOf(process)) != std::end(knownGrabbers);
    });
}

} // namespace vek
