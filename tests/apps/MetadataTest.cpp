#include "tests/apps/Sandbox.h"

#include <filesystem>
#include <map>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/opusfile.h>
#include <taglib/tpropertymap.h>
#include <taglib/vorbisfile.h>
#include <taglib/xiphcomment.h>

#include "apps/tessarine/files/Chunks.h"
#include "apps/tessarine/files/MetadataBext.h"
#include "apps/tessarine/files/MetadataTags.h"
#include "plugin/Version.h"

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::HasSubstr;
using testing::MatchesRegex;

namespace {

using Chunks = std::vector<std::pair<std::string, std::string>>;

std::string packed(const std::string &name, const std::string &bytes, bool bigEndian = false)
{
    return name + App::fromNumber(bytes.size(), 4, bigEndian) + bytes + std::string(bytes.size() % 2, '\0');
}

std::string bext(int version)
{
    std::string bytes(602, '\0');
    bytes.replace(0, 11, "Description");
    bytes.replace(338, 8, App::fromNumber(0x1'0000'0010, 8, false)); // time reference
    bytes.replace(346, 2, App::fromNumber(static_cast<uint64_t>(version), 2, false));
    for (size_t i = 0; i < 5; ++i)
        bytes.replace(412 + 2 * i, 2, App::fromNumber(i == 1 ? 0x7FFF : 1234, 2, false));
    return bytes + "A=PCM,F=48000,W=16\r\n";
}

std::string info(const std::string &comment)
{
    return "INFO" + packed("INAM", "Title\0"s) + packed("ICMT", comment + "\0"s) + packed("Iodd", "x");
}

class MetadataOfFiles : public Sandbox {
protected:
    /// Writes an audio file with these chunks at its end.
    void writeChunks(const std::string &name, int format, const Chunks &chunks) const
    {
        write(name, format, 44100, Signals::noise(2, 4410, -20.0));
        std::string bytes = readBytes(name);
        const bool bigEndian = bytes.starts_with("FORM");
        for (const auto &[chunk, content] : chunks) bytes += packed(chunk, content, bigEndian);
        writeText(name, bytes.replace(4, 4, App::fromNumber(bytes.size() - 8, 4, bigEndian)));
    }

    /// The chunks after the audio. Expects that the length in the header is that of the file.
    Chunks chunksOf(const std::string &name) const
    {
        App::FileBytes file(pathOf(name));
        const bool bigEndian = file.read(0, 4) == "FORM", is64Bit = file.read(0, 4) == "RF64";
        EXPECT_EQ(file.size() - 8, is64Bit ? file.number(20, 8, false) : file.number(4, 4, bigEndian))
            << name;
        Chunks chunks;
        App::ChunkWalker walker(file);
        for (bool afterAudio = false; const auto chunk = walker.next();) {
            if (afterAudio) chunks.emplace_back(chunk->name, file.read(chunk->begin, chunk->length));
            afterAudio |= chunk->isAudio;
        }
        return chunks;
    }

    std::string render(const std::string &arguments) const
    {
        const Program::Outcome outcome = run("render " + arguments);
        EXPECT_EQ(0, outcome.exitCode) << arguments << outcome.err;
        return outcome.err;
    }
};

TEST_F(MetadataOfFiles, KeepEveryChunkButTheComment)
{
    const Chunks chunks = {{"bext", bext(1)},
                           {"cue ", std::string(28, '\1')},
                           {"iXML", "<?xml version=\"1.0\"?><BWFXML/>"},
                           {"cart", std::string(2048, 'c')},
                           {"LIST", info("Mine\nTessarine 1.0.1: Gain=1")},
                           {"LIST", "adtl" + packed("labl", "\1\0\0\0A\0"s)},
                           {"odd ", "abc"},
                           {"PEAK", std::string(24, '\0')}};
    Chunks wanted = chunks;
    wanted.pop_back(); // peaks of the input
    wanted[4].second = info("Mine\nTessarine " TESSARINE_VERSION_TEXT ": Band 2 Gain=6");
    writeChunks("in.wav", kWav16, chunks);
    for (const char *out : {"out.wav", "out.rf64"}) {
        EXPECT_THAT(render(fmt::format("in.wav {} --dry dry.wav --set 'Band 2 Gain=6'", out)),
                    testing::Not(HasSubstr("not kept")));
        EXPECT_EQ(chunksOf(out), wanted) << out;
        EXPECT_EQ(read(out).info.frames, 4410);
    }
    wanted[4] = chunks[4]; // the dry file is not processed
    EXPECT_EQ(chunksOf("dry.wav"), wanted);

    const Chunks aiff = {
        {"NAME", "Title"}, {"ANNO", "Mine"}, {"ANNO", "Tessarine 1.0.1: Gain=1"}, {"MARK", "\0\0"s}};
    writeChunks("in.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_24, aiff);
    EXPECT_EQ("", render("in.aiff out.aiff"));
    EXPECT_EQ(
        chunksOf("out.aiff"),
        (Chunks{
            aiff[0], aiff[1], aiff[3], {"ANNO", "Tessarine " TESSARINE_VERSION_TEXT ": default settings"}}));
}

TEST_F(MetadataOfFiles, HaveACommentWithTheSettings)
{
    write("in.wav", kWav16, 44100, Signals::noise(2, 44100, -20.0));
    const auto comment = [this](const std::string &arguments) {
        EXPECT_EQ("", render("in.wav out.wav " + arguments));
        return chunksOf("out.wav").at(0).second.substr(4);
    };
    const std::string start = "Tessarine " TESSARINE_VERSION_TEXT ": ";
    EXPECT_EQ(comment("--mix 50"), packed("ICMT", start + "default settings, mix 50 %\0"s));
    succeed("chunk a.chunk --set 'Band 1 Ratio=3:1'");
    EXPECT_THAT(comment("--chunk a.chunk --loudness -14"),
                testing::AllOf(HasSubstr(start + "Gain="), HasSubstr(", Band 1 Ratio=3")));
}

TEST_F(MetadataOfFiles, KeepTheirTime)
{
    write("in.wav", kWav16, 44100, Signals::silence(1000));
    const fs::file_time_type time = fs::last_write_time(pathOf("in.wav")) - std::chrono::hours(10000);
    fs::last_write_time(pathOf("in.wav"), time);
    const std::vector<std::string> outputs = {"out.wav", "dry.flac", "delta.ogg", "linked.wav"};
    writeText("linked.wav", "old");
    fs::create_hard_link(pathOf("linked.wav"), pathOf("link.wav"));
    render("in.wav out.wav --dry dry.flac --delta delta.ogg");
    render("in.wav linked.wav");
    for (const std::string &name : outputs) EXPECT_EQ(fs::last_write_time(pathOf(name)), time) << name;
}

TEST_F(MetadataOfFiles, KeepTagsAndPicturesAcrossFormats)
{
    write("in.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 48000, Signals::noise(2, 9600, -20.0));
    TagLib::PropertyMap wanted;
    for (const char *name : {"TITLE", "ARTIST", "ALBUM", "ISRC", "COMPOSER", "GENRE", "MYOWN", "DATE"})
        wanted.insert(name,
                      TagLib::String(std::string(name) + " \xC3\xBC\xE2\x82\xAC", TagLib::String::UTF8));
    wanted.replace("DATE", TagLib::String("1999"));
    const TagLib::ByteVector pixels(70'000, 'p');
    {
        TagLib::FLAC::File file(pathOf("in.flac").c_str(), false);
        TagLib::PropertyMap all = wanted;
        for (const char *stale :
             {"REPLAYGAIN_TRACK_GAIN", "replaygain_album_peak", "R128_TRACK_GAIN", "ITUNNORM"})
            all.insert(stale, TagLib::String("1"));
        file.setProperties(all);
        auto *const picture = new TagLib::FLAC::Picture;
        picture->setType(TagLib::FLAC::Picture::FrontCover);
        picture->setMimeType("image/png");
        picture->setDescription(TagLib::String("\xC3\xBC", TagLib::String::UTF8));
        picture->setWidth(123);
        picture->setData(pixels);
        file.addPicture(picture);
        file.save();
    }
    const auto check = [&](const std::string &name, TagLib::PropertyMap found,
                           const TagLib::ByteVector &picture) {
        SCOPED_TRACE(name);
        EXPECT_THAT(found["COMMENT"].toString().to8Bit(), HasSubstr("default settings"));
        found.erase("COMMENT").erase("ENCODER");
        EXPECT_EQ(found.toString().to8Bit(true), wanted.toString().to8Bit(true));
        EXPECT_EQ(picture, pixels);
    };
    std::string in = "in.flac";
    for (int i = 0; const char *ending : {"flac", "wav", "ogg", "aiff", "mp3", "opus", "wav", "flac"}) {
        const std::string out = fmt::format("{}.{}", i++, ending);
        EXPECT_EQ("", render(in + " " + out));
        in = out;
        if (out.ends_with("flac")) {
            TagLib::FLAC::File file(pathOf(out).c_str(), false);
            check(out, file.properties(), file.pictureList().front()->data());
        } else if (out.ends_with("ogg")) {
            TagLib::Ogg::Vorbis::File file(pathOf(out).c_str(), false);
            check(out, file.properties(), file.tag()->pictureList().front()->data());
        } else if (out.ends_with("opus")) {
            TagLib::Ogg::Opus::File file(pathOf(out).c_str(), false);
            check(out, file.properties(), file.tag()->pictureList().front()->data());
        }
    }
    const auto pictureBlock = [this](const std::string &name) {
        const std::string bytes = readBytes(name);
        return bytes.substr(bytes.find("image/png") - 8, 70'000);
    };
    EXPECT_EQ(pictureBlock("0.flac"), pictureBlock("in.flac"));
    EXPECT_EQ(read("7.flac").info.frames, 9600);
}

TEST_F(MetadataOfFiles, ReplaceLoudnessAndTimeOfBext)
{
    writeChunks("in.wav", kWav24, {{"bext", bext(2)}, {"cue ", std::string(28, '\1')}});
    const auto remark = render("in.wav out.wav --start 0.05 --delta delta.wav");
    EXPECT_THAT(remark, MatchesRegex("tessarine: cue was not kept, because [^\n]*\n"));
    const std::string old = bext(2), out = chunksOf("out.wav").at(0).second,
                      delta = chunksOf("delta.wav").at(0).second;
    EXPECT_EQ(App::toNumber(out.substr(338, 8), false), 0x1'0000'0010 + 2205u);
    EXPECT_EQ(out.substr(0, 338) + out.substr(422), old.substr(0, 338) + old.substr(422));
    EXPECT_NE(out.substr(416, 2), old.substr(416, 2)); // true peak
    EXPECT_EQ(out.substr(414, 2), old.substr(414, 2)); // not set
    EXPECT_EQ(delta.substr(412, 10), "\xFF\x7F\xFF\x7F\xFF\x7F\xFF\x7F\xFF\x7F");
}

TEST(Bext, ContainsTheMeasuredLoudness)
{
    App::MetadataChanges changes;
    changes.loudness = {-23.456, 5.0, -1.0, -INFINITY, -20.0};
    const std::string changed = App::changedBext(bext(2), changes);
    const auto field = [&](size_t i) {
        return static_cast<int16_t>(App::toNumber(changed.substr(412 + 2 * i, 2), false));
    };
    EXPECT_THAT((std::vector<int>{field(0), field(1), field(2), field(3), field(4)}),
                testing::ElementsAre(-2346, 0x7FFF, -100, 0x7FFF, -2000));
    for (const std::string &old :
         {bext(0), bext(1), bext(2).replace(412, 10, std::string(10, '\0')), "short"s})
        EXPECT_EQ(App::changedBext(old, changes), old);
}

TEST(Ixml, HasTheTimeOfTheExcerpt)
{
    const auto xml = [](const char *high, const char *low) {
        return fmt::format("<A>1</A><BWF_TIME_REFERENCE_LOW>{}</BWF_TIME_REFERENCE_LOW>"
                           "<BWF_TIME_REFERENCE_HIGH>{}</BWF_TIME_REFERENCE_HIGH><B>2</B>",
                           low, high);
    };
    EXPECT_EQ(App::changedIxml(xml("1", "4294967290"), 10), xml("2", "4"));
    EXPECT_EQ(App::changedIxml(xml("x", "1"), 10), xml("x", "1"));
    EXPECT_EQ(App::changedIxml("<BWF_TIME_REFERENCE_LOW>1", 10), "<BWF_TIME_REFERENCE_LOW>1");
}

TEST_F(MetadataOfFiles, ThatCannotBeKeptAreNamedInOneRemark)
{
    writeChunks("in.wav", kWav16, {{"bext", bext(1)}, {"cue ", std::string(28, '\1')}, {"LIST", info("a")}});
    EXPECT_EQ(render("in.wav out.flac"),
              "tessarine: bext and cue were not kept, because .flac files have no place for "
              "them; write a .wav file to keep them\n");
    EXPECT_THAT(render("in.wav out.w64"),
                MatchesRegex("tessarine: bext, cue and text tags were not kept[^\n]*\n"));
    EXPECT_EQ("", render("out.flac out.mp3"));
}

TEST_F(MetadataOfFiles, MayBeDamagedOrHuge)
{
    const auto remark = [this](const Chunks &chunks, const std::string &end, const std::string &out) {
        writeChunks("in.wav", kWav16, chunks);
        writeText("in.wav", readBytes("in.wav") + end);
        return render("in.wav " + out);
    };
    const std::string id3 = "ID3\4\0\0\x7F\x7F\x7F\x7FTIT2\xFF\xFF\xFF\xFF\0\0"s;
    for (const char *out : {"out.wav", "out.flac", "out.mp3", "out.ogg"}) {
        EXPECT_THAT(remark({}, "cue \xFF\xFF\xFF\x7F"s, out), HasSubstr("cue was not kept")) << out;
        EXPECT_THAT(remark({}, "\1\2\3\4\5\6\7\x8", out), HasSubstr("damaged")) << out;
        EXPECT_EQ("",
                  remark({{"id3 ", id3}, {"LIST", "INFOICMT\xFF\xFF\xFF\xFF"s}, {"LIST", "IN"}, {"bext", ""}},
                         "", "out.wav"));
        remark({{"id3 ", id3}, {"LIST", "INFOICMT\xFF\xFF\xFF\xFF"s}}, "", out);
        EXPECT_EQ(read(out).info.channels, 2);
    }
    const uint64_t limit = 64 << 20;
    writeChunks("in.wav", kWav16, {{"bext", bext(1)}});
    writeText("in.wav", readBytes("in.wav") + "big " + App::fromNumber(limit, 4, false));
    fs::resize_file(pathOf("in.wav"), fs::file_size(pathOf("in.wav")) + limit);
    EXPECT_THAT(render("in.wav out.wav"), HasSubstr("big was not kept, because so much"));
    EXPECT_EQ(chunksOf("out.wav").at(0).second, bext(1));
}

TEST_F(MetadataOfFiles, AreNotWrittenToAFullDisk)
{
    writeChunks("in.wav", kWav16, {{"LIST", info(std::string(100'000, 'a'))}});
    for (const char *out : {"out.wav", "out.flac", "out.mp3", "out.ogg"}) {
        EXPECT_EQ(1, Program(folder, std::string("render in.wav ") + out, 100'000).wait().exitCode) << out;
        EXPECT_EQ(1u, contents().size()) << out;
    }
}

TEST_F(MetadataOfFiles, AreTheSameInEveryRun)
{
    writeChunks("in.wav", kWav16, {{"bext", bext(2)}, {"LIST", info("a")}});
    for (const char *ending : {"wav", "flac", "aiff", "mp3"}) {
        for (const char *name : {"a", "b"}) render(fmt::format("in.wav {}.{}", name, ending));
        EXPECT_EQ(readBytes("a."s + ending), readBytes("b."s + ending)) << ending;
    }
}

TEST(SettingsLine, ReplacesThatOfAnEarlierRendering)
{
    EXPECT_EQ(App::withSettings("", "new"), "new");
    EXPECT_EQ(App::withSettings("a\nTessarine 1.0.1: x\nTessarine is good\nb", "new"),
              "a\nTessarine is good\nb\nnew");
}

} // namespace
