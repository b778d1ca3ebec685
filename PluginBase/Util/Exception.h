#pragma once
#include <cstdint>

#include "PluginBase/Util/String.h"

namespace Exception {

/// Root of what this code throws: a name, where it was thrown, and what the system had to say.
class Base {
public:
    static constexpr int32_t kNoLine = -1;
    static constexpr uint32_t kNoError = 0xFFFFFFFF;

    explicit Base(const String &name);
    Base(const Base &) = default;
    virtual ~Base() = default;
    /// Several lines for the reader of a log.
    virtual String report() const;
    /// Says where it was thrown, and Platform::lastError() at that moment.
    void setOrigin(const String &file, int32_t line, uint32_t lastError);

    String name;
    String file;
    int32_t line = kNoLine;
    uint32_t lastError = kNoError;
};

} // namespace Exception

namespace Util {

enum class FileErrorKind : uint32_t {
    notFound,
    open,
    read,
    write,
    deletion,
    remove,
    rename,
    unexpected,
};

namespace Exception {

/// A file or directory could not be used.
class FileIO : public ::Exception::Base {
public:
    FileIO(const String &name, const String &path, FileErrorKind kind);
    /// The base's lines, and the path (without one the detail) with the text of the kind.
    String report() const override;

    String detail;
    String path;
    FileErrorKind kind;
};

} // namespace Exception
} // namespace Util
