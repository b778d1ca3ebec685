#include "apps/tessarine/files/TemporaryFile.h"

#include <cerrno>
#include <cstring>
#include <fmt/format.h>
#include <unistd.h>

#include "apps/tessarine/console/Failure.h"

namespace App {

namespace fs = std::filesystem;

namespace {

/// Resolves links, so that the file that a link points to is replaced, not the link.
/// Errors  Failure if the target cannot be written
fs::path resolve(const fs::path &wanted)
{
    std::error_code ignored, problem;
    if (fs::status(wanted, problem).type() == fs::file_type::none) // for example a name that is too long
        throw Failure(
            fmt::format("{} cannot be written: {}; choose another name", wanted.string(), problem.message()));
    if (fs::is_directory(wanted, ignored))
        throw Failure(fmt::format("{} is a folder; name a file in it", wanted.string()));
    if (fs::exists(wanted, ignored) && !fs::is_regular_file(wanted, ignored))
        throw Failure(fmt::format("{} is not a regular file; choose another name", wanted.string()));
    fs::path target = fs::weakly_canonical(fs::absolute(wanted, ignored), ignored);
    const fs::path folder = target.parent_path();
    if (!fs::is_directory(folder, ignored))
        throw Failure(
            fmt::format("the folder {} does not exist; create it or choose another", folder.string()));
    return target;
}

} // namespace

TemporaryFile::TemporaryFile(const fs::path &wanted) : shown(wanted), target(resolve(wanted))
{
    static int serial = 0;
    temporary = target.parent_path() / fmt::format(".tessarine-{}-{}.part", getpid(), ++serial);
    file = std::fopen(temporary.c_str(), "w+bx");
    if (!file) throw Failure(fmt::format("{} cannot be written: {}", shown.string(), std::strerror(errno)));
}

TemporaryFile::~TemporaryFile()
{
    if (file) std::fclose(file);
    std::error_code ignored;
    fs::remove(temporary, ignored); // fails after a commit, which is harmless
}

void TemporaryFile::noteError()
{
    if (error == 0) error = errno != 0 ? errno : EIO;
}

int64_t TemporaryFile::put(const void *bytes, int64_t count)
{
    errno = 0;
    const auto done = static_cast<int64_t>(std::fwrite(bytes, 1, static_cast<size_t>(count), file));
    if (done != count) noteError();
    end = std::max(end, position());
    return done;
}

int64_t TemporaryFile::get(void *bytes, int64_t count)
{
    return static_cast<int64_t>(std::fread(bytes, 1, static_cast<size_t>(count), file));
}

int64_t TemporaryFile::seek(int64_t offset, int whence)
{
    errno = 0;
    if (fseeko(file, offset, whence) != 0) noteError(); // fseeko flushes, so it also fails on a full disk
    return position();
}

int64_t TemporaryFile::position() const { return ftello(file); }

void TemporaryFile::check() const
{
    if (error == ENOSPC || error == EDQUOT)
        throw Failure(fmt::format(
            "the disk is full: {} was not written; free some space or choose another disk", shown.string()));
    if (error != 0)
        throw Failure(fmt::format("{} was not written: {}", shown.string(), std::strerror(error)));
}

void TemporaryFile::write(std::string_view bytes)
{
    put(bytes.data(), static_cast<int64_t>(bytes.size()));
    check();
}

void TemporaryFile::commit()
{
    errno = 0;
    if (std::fclose(file) != 0) noteError();
    file = nullptr;
    check();
    std::error_code problem;
    fs::rename(temporary, target, problem);
    if (problem) throw Failure(fmt::format("{} was not written: {}", shown.string(), problem.message()));
}

} // namespace App
