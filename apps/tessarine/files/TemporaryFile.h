#pragma once
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string_view>

namespace App {

/// Writes a file atomically: under a hidden name in the target's folder, renamed by commit. The target is always either
/// the old or the complete new file, and keeps the mode and, if permitted, the owner of the old one. If the old file has
/// several hard links, commit copies the content into it instead, which is not atomic.
/// The destructor removes a file that was not committed. The constructor removes those of killed processes.
/// Errors  Failure from the constructor, write, commit and check; put and seek only store the error
class TemporaryFile {
public:
    /// Follows links, also those to a missing file. An existing target must be a regular file that may be written.
    explicit TemporaryFile(const std::filesystem::path &target);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    void write(std::string_view bytes);
    /// Closes the file. Several files are finished before the first is committed, so that a full disk affects none.
    void finish();
    /// Modification time that the file gets from commit (default: now).
    void setModified(std::filesystem::file_time_type time) { modified = time; }
    void commit();
    const std::filesystem::path &temporaryPath() const { return temporary; }

    // For the virtual I/O of libsndfile and TagLib. `put` and `get` return the number of bytes, `seek` the position.
    int64_t put(const void *bytes, int64_t count);
    int64_t get(void *bytes, int64_t count);
    int64_t seek(int64_t offset, int whence);
    int64_t position() const;
    int64_t length() const { return end; }
    /// Replaces `removed` bytes at a position by `bytes` and moves the rest of the file.
    void replace(int64_t at, int64_t removed, std::string_view bytes);
    bool failed() const { return error != 0; }
    /// Throws Failure if an earlier put or seek failed.
    void check() const;

private:
    void noteError();
    void copy(int64_t from, int64_t to, int64_t count);
    void keepModified(const std::filesystem::path &path) const;
    void keepAttributes();
    /// Copies the content into the existing file and so keeps its hard links.
    void overwriteTarget();

    std::filesystem::path shown, target, temporary;
    std::FILE *file = nullptr;
    int locked = -1; // descriptor that keeps the file locked until the destructor
    int64_t end = 0; // bytes
    int error = 0;   // errno of the first failure, or 0
    std::optional<std::filesystem::file_time_type> modified;
};

} // namespace App
