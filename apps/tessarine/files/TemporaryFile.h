#pragma once
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string_view>

namespace App {

/// A file on its way: written under a hidden name in the target's folder and renamed when it is complete, so
/// that the target is at every moment the old file or the whole new one. Removed unless committed.
/// Errors  Failure from the constructor, write and commit; put and seek say so by their results
class TemporaryFile {
public:
    /// The target may exist if it is a plain file; a link is followed.
    explicit TemporaryFile(const std::filesystem::path &target);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    void write(std::string_view bytes);
    void commit();

    // For libraries that do their own writing: bytes done; the first system error is kept.
    int64_t put(const void *bytes, int64_t count);
    int64_t get(void *bytes, int64_t count);
    int64_t seek(int64_t offset, int whence);
    int64_t position() const;
    int64_t length() const { return end; }
    bool failed() const { return error != 0; }
    /// Throws what went wrong, if something did.
    void check() const;

private:
    void noteError();

    std::filesystem::path shown, target, temporary;
    std::FILE *file = nullptr;
    int64_t end = 0; // bytes
    int error = 0;   // errno of the first failure
};

} // namespace App
