#include "PluginBase/Util/Exception.h"

#include <array>

namespace Exception {

Base::Base(const String &givenName) : name(givenName) {}

String Base::report() const
{
    const String origin = String("%1 (%2): Thrown, GetLastError(): %3\n").arg(file).arg(line).arg(lastError);
    return String("Base:\n\t") + name + "\n\t" + origin;
}

void Base::setOrigin(const String &givenFile, int32_t givenLine, uint32_t givenError)
{
    file = givenFile;
    line = givenLine;
    lastError = givenError;
}

} // namespace Exception

namespace Util::Exception {
namespace {

const char *textOf(FileErrorKind kind)
{
    static constexpr std::array kTexts{"File not found", "Open error",   "Read error",   "Write error",
                                       "Delete error",   "Remove error", "Rename error", "Unexpected error"};
    const auto index = static_cast<uint32_t>(kind);
    return index < kTexts.size() ? kTexts[index] : " Unknown error";
}

} // namespace

FileIO::FileIO(const String &givenName, const String &givenPath, FileErrorKind givenKind)
    : Base(givenName), path(givenPath), kind(givenKind)
{
}

String FileIO::report() const
{
    return Base::report() + "\nFileIO:\n" + (path.isEmpty() ? detail : path) + ": " + textOf(kind);
}

} // namespace Util::Exception
