#include "apps/tessarine/files/TemporaryFile.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <fstream>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "apps/tessarine/console/Failure.h"

namespace App {

namespace fs = std::filesystem;

namespace {

constexpr int kMostLinks = 40; // in a chain

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
    fs::path target = fs::absolute(wanted, ignored);
    for (int links = 0; fs::is_symlink(target, ignored) && !fs::exists(target, ignored) && links < kMostLinks;
         ++links)
        target = target.parent_path() /
                 fs::read_symlink(target, ignored); // weakly_canonical keeps a dangling link
    target = fs::weakly_canonical(target, ignored);
    const fs::path folder = target.parent_path();
    if (!fs::is_directory(folder, ignored))
        throw Failure(
            fmt::format("the folder {} does not exist; create it or choose another", folder.string()));
    constexpr fs::perms kWritable = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    const bool isProtected = (fs::status(target, ignored).permissions() & kWritable) == fs::perms::none;
    if (fs::exists(target, ignored) && (isProtected || access(target.c_str(), W_OK) != 0))
        throw Failure(fmt::format(
            "{} is write-protected; choose another name or permit writing with: chmod u+w", wanted.string()));
    return target;
}

std::string temporaryName(pid_t process, int serial)
{
    return fmt::format(".tessarine-{}-{}.part", process, serial);
}

/// True unless a process still writes the file. Another process may by now have the number of a killed one, and a
/// process of another container seems not to run, so the lock decides. It is taken just after the file is created.
bool isAbandoned(const fs::path &file, pid_t process)
{
    const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return false;
    const bool isLocked = flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    close(descriptor);
    std::error_code ignored;
    const bool isOld =
        fs::file_time_type::clock::now() - fs::last_write_time(file, ignored) > std::chrono::minutes(1);
    return !isLocked && (isOld || (kill(process, 0) != 0 && errno == ESRCH));
}

/// Removes the temporary files of killed processes.
void removeStaleFiles(const fs::path &folder)
{
    std::error_code ignored;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder, ignored)) {
        int process = 0, serial = 0;
        const std::string name = entry.path().filename().string();
        if (std::sscanf(name.c_str(), ".tessarine-%d-%d.part", &process, &serial) != 2 ||
            name != temporaryName(process, serial))
            continue;
        if (isAbandoned(entry.path(), process)) fs::remove(entry.path(), ignored);
    }
}

} // namespace

TemporaryFile::TemporaryFile(const fs::path &wanted) : shown(wanted), target(resolve(wanted))
{
    static int serial = 0;
    removeStaleFiles(target.parent_path());
    temporary = target.parent_path() / temporaryName(getpid(), ++serial);
    file = std::fopen(temporary.c_str(), "w+bx");
    if (!file) throw Failure(fmt::format("{} cannot be written: {}", shown.string(), std::strerror(errno)));
    locked = dup(fileno(file));
    flock(locked, LOCK_EX | LOCK_NB); // fails on some network file systems, where only the process counts
}

TemporaryFile::~TemporaryFile()
{
    if (file) std::fclose(file);
    std::error_code ignored;
    fs::remove(temporary, ignored); // fails after a commit, which is harmless
    close(locked);
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

void TemporaryFile::copy(int64_t from, int64_t to, int64_t count)
{
    std::vector<char> bytes(static_cast<size_t>(count));
    seek(from, SEEK_SET);
    get(bytes.data(), count);
    seek(to, SEEK_SET);
    put(bytes.data(), count);
}

void TemporaryFile::replace(int64_t at, int64_t removed, std::string_view bytes)
{
    constexpr int64_t kPiece = 1 << 20;
    const int64_t oldEnd = end, tail = at + removed, shift = static_cast<int64_t>(bytes.size()) - removed;
    if (shift > 0) { // from the end, so that no byte is overwritten before it is read
        for (int64_t left = oldEnd - tail; left > 0 && !failed();) {
            const int64_t count = std::min(left, kPiece);
            left -= count;
            copy(tail + left, tail + left + shift, count);
        }
    } else if (shift < 0) {
        for (int64_t done = 0; done < oldEnd - tail && !failed(); done += kPiece)
            copy(tail + done, tail + done + shift, std::min(oldEnd - tail - done, kPiece));
    }
    seek(at, SEEK_SET);
    put(bytes.data(), static_cast<int64_t>(bytes.size()));
    if (shift >= 0) return;
    seek(0, SEEK_END); // writes the buffered bytes
    end = oldEnd + shift;
    if (ftruncate(fileno(file), end) != 0) noteError();
}

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

void TemporaryFile::keepAttributes()
{
    struct stat old = {};
    if (stat(target.c_str(), &old) != 0) return;
    // Only root may give a file away; others keep the group if they are its members. chown clears mode bits.
    if (chown(temporary.c_str(), old.st_uid, old.st_gid) != 0 &&
        chown(temporary.c_str(), static_cast<uid_t>(-1), old.st_gid) != 0)
        errno = 0;
    if (chmod(temporary.c_str(), old.st_mode & 07777) != 0) errno = 0;
}

void TemporaryFile::keepModified(const fs::path &path) const
{
    std::error_code ignored; // some file systems do not store it
    if (modified) fs::last_write_time(path, *modified, ignored);
}

void TemporaryFile::overwriteTarget()
{
    std::ifstream from(temporary, std::ios::binary);
    std::ofstream to(target, std::ios::binary | std::ios::trunc);
    to << from.rdbuf();
    to.close();
    if (!from || !to)
        throw Failure(fmt::format("{} was not written completely: {}", shown.string(), std::strerror(errno)));
    keepModified(target);
}

void TemporaryFile::finish()
{
    errno = 0;
    if (file && std::fclose(file) != 0) noteError();
    file = nullptr;
    check();
}

void TemporaryFile::commit()
{
    finish();
    std::error_code problem;
    if (fs::exists(target, problem)) {
        if (fs::hard_link_count(target, problem) > 1) return overwriteTarget();
        keepAttributes();
    }
    keepModified(temporary);
    fs::rename(temporary, target, problem);
    if (problem) throw Failure(fmt::format("{} was not written: {}", shown.string(), problem.message()));
}

} // namespace App
