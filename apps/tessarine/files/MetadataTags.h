#pragma once
#include <string>
#include <string_view>
#include <vector>

#include <taglib/tpropertymap.h>

namespace App {

/// Text tags and pictures in a form that fits all formats. The names are those of TagLib's property maps: "TITLE".
struct MetadataTags {
    TagLib::PropertyMap text;
    std::vector<std::string> pictures; // each the content of a FLAC picture block

    bool isEmpty() const { return text.isEmpty() && pictures.empty(); }
    /// Adds the tags of `other` whose names are new.
    void addMissing(const MetadataTags &other);
    /// Turns the description into the comment if there is none. Some programs write comments of FLAC and Ogg files so.
    void useDescription();
    /// Removes loudness tags and encoder data, which are wrong for processed audio.
    void removeStale();
    /// Replaces the line of an earlier rendering in the comment by `line`.
    void setSettings(const std::string &line);
};

/// True for names of loudness tags and encoder data.
bool isStaleTag(const TagLib::String &name);

/// UTF-8 if the bytes are valid UTF-8, else Latin-1.
TagLib::String toTagString(std::string_view bytes);
TagLib::ByteVector toByteVector(std::string_view bytes);
std::string toBytes(const TagLib::ByteVector &bytes);

/// Lines of a comment without those that a rendering wrote.
std::string withoutSettings(std::string_view comment);
/// The comment with the line of an earlier rendering replaced by `line`.
std::string withSettings(std::string_view comment, const std::string &line);

} // namespace App
