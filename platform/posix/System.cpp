#include "platform/System.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Platform {
namespace {

constexpr mode_t kDirectoryMode = 0777; // before the user's umask

std::string resolved(const char *path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path, nullptr), &std::free);
    return real ? real.get() : std::string();
}

} // namespace

uint32_t tickCount()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<uint32_t>(now.tv_sec) * 1000u + static_cast<uint32_t>(now.tv_nsec / 1000000);
}

char pathSeparator() { return '/'; }

namespace {
std::string findModule()
{
    Dl_info found{};
    if (dladdr(reinterpret_cast<const void *>(&modulePath), &found) == 0 || !found.dli_fname) return {};
    std::string path = found.dli_fname;
    if (path.starts_with('/')) return path;
    // For a program that the shell found on its PATH, dladdr returns the bare name.
    return path.find('/') == std::string::npos ? resolved("/proc/self/exe") : resolved(path.c_str());
}

// Resolved at load time: the path may be relative, and the host may change the working directory later.
const std::string kModulePath = findModule();
} // namespace

std::string modulePath() { return kModulePath; }

bool pathExists(const std::string &path) { return access(path.c_str(), F_OK) == 0; }

bool makeDirectory(const std::string &path) { return mkdir(path.c_str(), kDirectoryMode) == 0; }

std::string longPathName(const std::string &path) { return pathExists(path) ? path : std::string(); }

uint32_t lastError() { return static_cast<uint32_t>(errno); }

std::optional<RegistryValue> readRegistry(RegistryRoot, const std::string &, const std::string &)
{
    return std::nullopt;
}

} // namespace Platform
