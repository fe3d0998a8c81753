#include "platform/PortRights.h"

#include <algorithm>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace vek {

namespace {

constexpr unsigned permissionBits = 0777;
constexpr gid_t rootGroup = 0;

std::string UserName(uid_t user) {
    const passwd* entry = ::getpwuid(user);
    return entry != nullptr ? entry->pw_name : std::to_string(user);
}

std::string GroupName(gid_t group) {
    const ::group* entry = ::getgrgid(group);
    return entry != nullptr ? entry->gr_name : std::to_string(group);
}

/// In this session; what the user joined after logging in does not count yet.
bool IsMember(gid_t group) {
    std::vector<gid_t> groups(static_cast<std::size_t>(std::max(::getgroups(0, nullptr), 0)));
    const int count = ::getgroups(static_cast<int>(groups.size()), groups.data());
    return ::getegid() == group ||
           std::find(groups.begin(), groups.begin() + std::max(count, 0), group) != groups.end();
}

bool IsListedAsMember(gid_t group) {
    const std::string user = UserName(::geteuid());
    const ::group* entry = ::getgrgid(group);
    for (char** member = entry != nullptr ? entry->gr_mem : nullptr; member != nullptr && *member != nullptr;
         ++member) {
        if (user == *member)
            return true;
    }
    return false;
}

} // namespace

PortRights RightsOf(const std::string& device) {
    PortRights rights;
    struct stat status = {};
    if (::stat(device.c_str(), &status) != 0)
        return rights;
    rights.Owner = UserName(status.st_uid);
    rights.Group = GroupName(status.st_gid);
    rights.Mode = status.st_mode & permissionBits;
    rights.Allowed = ::access(device.c_str(), R_OK | W_OK) == 0;
    constexpr unsigned groupMayUse = S_IRGRP | S_IWGRP;
    // Nobody is told to join the administrator's own group.
    if (!rights.Allowed && status.st_gid != rootGroup && (status.st_mode & groupMayUse) == groupMayUse &&
        !IsMember(status.st_gid)) {
        rights.GroupToJoin = rights.Group;
        rights.JoinedSinceLogin = IsListedAsMember(status.st_gid);
    }
    return rights;
}

} // namespace vek
