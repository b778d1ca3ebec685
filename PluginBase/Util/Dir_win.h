#pragma once
#include "PluginBase/Util/String.h"

/// Directories and path syntax. The native separator is '\\' on Windows and '/' elsewhere.
namespace Util {

/// True if a directory or file of that name exists; false for an empty path.
bool directoryExists(const String &path);

/// Creates a directory; it may already exist. With parents it creates every missing directory that a
/// separator follows, so end the path with a separator to create the last part too. The part before the first
/// separator must exist. Throws Util::Exception::FileIO, kind write.
void makeDirectory(const String &path, bool withParents);

/// Replaces every '/' with the native separator.
String nativeSeparators(const String &path);

/// Returns the path with native separators, without trailing separators and with short (8.3) names expanded.
/// Returns `path` unchanged if it does not exist or consists of separators only.
String longPath(const String &path);

/// Appends a '/' unless the path is empty or ends in '/' or '\\'.
String withTrailingSlash(const String &path);

/// Folder of the library or program that contains this code, with a trailing separator; empty if unknown.
String moduleDirectory();

} // namespace Util
