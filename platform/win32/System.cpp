#include "platform/System.h"

#include <direct.h>
#include <io.h>
#include <windows.h>

namespace Platform {
namespace {

constexpr DWORD kModulePathRoom = 4096; // 4095 characters and the zero
constexpr int kAccessExistence = 0;

/// The library or program that contains this code, not the host.
HMODULE thisModule()
{
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCSTR>(&thisModule), &module);
    return module;
}

/// 64-bit Windows needs the predefined 32-bit root keys sign-extended.
HKEY rootKey(RegistryRoot root)
{
    return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(root)));
}

struct CloseKey {
    void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseKey>;

} // namespace

uint32_t tickCount() { return GetTickCount(); }

char pathSeparator() { return '\\'; }

std::string modulePath()
{
    std::string path(kModulePathRoom, '\0');
    const DWORD length = GetModuleFileNameA(thisModule(), path.data(), kModulePathRoom);
    path.resize(length < kModulePathRoom ? length : 0); // a truncated path is useless
    return path;
}

bool pathExists(const std::string &path) { return _access(path.c_str(), kAccessExistence) == 0; }

bool makeDirectory(const std::string &path) { return _mkdir(path.c_str()) == 0; }

std::string longPathName(const std::string &path)
{
    const DWORD needed = GetLongPathNameA(path.c_str(), nullptr, 0);
    if (needed == 0) return {};
    std::string longName(needed + 1, '\0');
    const DWORD length = GetLongPathNameA(path.c_str(), longName.data(), needed + 1);
    longName.resize(length <= needed ? length : 0); // longer if renamed meanwhile
    return longName;
}

uint32_t lastError() { return GetLastError(); }

std::optional<RegistryValue> readRegistry(RegistryRoot root, const std::string &path, const std::string &name)
{
    HKEY opened = nullptr;
    if (RegOpenKeyExA(rootKey(root), path.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return {};
    const Key key(opened);
    DWORD type = 0, size = 0;
    if (RegQueryValueExA(opened, name.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS) return {};
    RegistryValue value{type, std::string(size, '\0')};
    if (size == 0) return value;
    auto *bytes = reinterpret_cast<BYTE *>(value.bytes.data());
    if (RegQueryValueExA(opened, name.c_str(), nullptr, &type, bytes, &size) != ERROR_SUCCESS) return {};
    value.type = type;
    value.bytes.resize(size);
    return value;
}

} // namespace Platform
