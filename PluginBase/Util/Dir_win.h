#pragma once
#include "PluginBase/Util/String.h"

/// Directories and the writing of paths. The native separator is the system's own ('\\' or '/'); both marks
/// end a path wherever the two may meet.
namespace Util {

/// True if anything of that name exists; false for an empty path.
bool directoryExists(const String &path);

/// Makes a directory, which may exist already. With parents it makes every missing directory that ends in a
/// separator, so the last part too only if a separator follows it; a path with one separator makes nothing.
/// Throws Util::Exception::FileIO, kind write.
void makeDirectory(const String &path, bool withParents);

/// Every '/' as the native separator.
String nativeSeparators(const String &path);

/// Native writing without separators at the end and with shortened names in full. The path as it was given if
/// the system does not know it or nothing but separators is in it.
String longPath(const String &path);

/// Ends in a separator: an empty path stays, and so does one that ends in '/' or '\\'; others get a '/'.
String withTrailingSlash(const String &path);

/// Folder of the library or program this code is in, with the separator at its end; empty if unknown.
String moduleDirectory();

} // namespace Util
