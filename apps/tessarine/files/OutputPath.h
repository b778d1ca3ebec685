#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace App {

/// True if both paths lead to the same file, also through links. Files that do not exist are compared by path.
bool isSameFile(const std::filesystem::path &a, const std::filesystem::path &b);

/// A file of a command. The path is empty if the command does not use it.
struct NamedFile {
    const char *role; // for error messages: "report"
    std::filesystem::path path;
};
/// Throws Failure if an output is also an input or another output.
void requireDistinct(const std::vector<NamedFile> &inputs, const std::vector<NamedFile> &outputs);

/// Error message for a picture whose name does not end in .png; else empty.
std::string checkPictureName(const std::string &path);

} // namespace App
