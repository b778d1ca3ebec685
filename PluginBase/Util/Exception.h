#pragma once
#include <cstdint>

#include "PluginBase/Util/String.h"

namespace Exception {

/// Base class of this library's exceptions: a name, the source location and the system's error number.
class Base {
public:
    static constexpr int32_t kNoLine = -1;
    static constexpr uint32_t kNoError = 0xFFFFFFFF;

    explicit Base(const String &name);
    Base(const Base &) = default;
    virtual ~Base() = default;
    /// Several lines for a log.
    virtual String report() const;
    /// Records where it was thrown, and the value of Platform::lastError() at that time.
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
    /// Adds a line with the path, or `detail` if the path is empty, and the kind of error.
    String report() const override;

    String detail;
    String path;
    FileErrorKind kind;
};

} // namespace Exception
} // namespace Util
