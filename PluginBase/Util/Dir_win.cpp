#include "PluginBase/Util/Dir_win.h"
#include "PluginBase/Util/Exception.h"
#include "platform/System.h"

namespace Util {
namespace {

void makeOne(const String &path, const String &wanted, const char *file = __builtin_FILE(),
             int32_t line = __builtin_LINE()) // clang 14 has no std::source_location
{
    if (Platform::makeDirectory(path.c_str())) return;
    const uint32_t error = Platform::lastError(); // before another call replaces it
    Exception::FileIO failure("_mkdir() failed", wanted, FileErrorKind::write);
    failure.setOrigin(file, line, error);
    throw failure;
}

void makeWithParents(const String &path)
{
    const char separator = Platform::pathSeparator();
    const String native = nativeSeparators(path);
    const OptionalIndex root = native.find(separator);
    if (!root) return;
    for (auto end = native.find(separator, root.value + 1); end;
         end = native.find(separator, end.value + 1)) {
        const String part = withTrailingSlash(native.left(end.value));
        if (!directoryExists(part)) makeOne(part, path);
    }
}

} // namespace

bool directoryExists(const String &path)
{
    return !path.isEmpty() && Platform::pathExists(longPath(path).c_str());
}

void makeDirectory(const String &path, bool withParents)
{
    if (directoryExists(path)) return;
    if (withParents)
        makeWithParents(path);
    else
        makeOne(longPath(path), path);
}

String nativeSeparators(const String &path) { return path.replace('/', Platform::pathSeparator()); }

String longPath(const String &path)
{
    String native = nativeSeparators(path);
    while (!native.isEmpty() && native.at(native.length() - 1) == Platform::pathSeparator())
        native.truncate(native.length() - 1);
    if (native.isEmpty()) return path;
    const std::string found = Platform::longPathName(native.c_str());
    return found.empty() ? path : String(found);
}

String withTrailingSlash(const String &path)
{
    if (path.isEmpty()) return "";
    const char last = path.at(path.length() - 1);
    return last == '/' || last == '\\' ? path : path + "/";
}

String moduleDirectory()
{
    const String path(Platform::modulePath());
    const OptionalIndex separator = path.findLast(Platform::pathSeparator());
    return separator ? path.left(separator.value + 1) : String("");
}

} // namespace Util
