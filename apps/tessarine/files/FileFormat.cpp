#include "apps/tessarine/files/FileFormat.h"

#include <fmt/format.h>
#include <vector>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/console/Text.h"

namespace App {

namespace {

struct Ending {
    const char *text;
    int container;
};
constexpr Ending kEndings[] = {
    {".wav", SF_FORMAT_WAV},   {".wave", SF_FORMAT_WAV}, {".w64", SF_FORMAT_W64},   {".rf64", SF_FORMAT_RF64},
    {".flac", SF_FORMAT_FLAC}, {".aif", SF_FORMAT_AIFF}, {".aiff", SF_FORMAT_AIFF}, {".ogg", SF_FORMAT_OGG},
    {".oga", SF_FORMAT_OGG},   {".caf", SF_FORMAT_CAF},  {".au", SF_FORMAT_AU},     {".mp3", SF_FORMAT_MPEG},
    {".opus", SF_FORMAT_OGG},
};

/// Maximum size of the audio data in WAV and AIFF, which store 32-bit lengths. Leaves space for the header.
constexpr double kLargestShortFile = 4.29e9; // bytes

int containerOf(const std::filesystem::path &out)
{
    for (const Ending &known : kEndings) {
        if (sameName(out.extension().string(), known.text)) return known.container;
    }
    throw Failure(
        fmt::format("{} does not have the extension of an audio format; use .wav, .flac, .aiff, .ogg, .mp3, "
                    ".opus, .w64, .caf or .au",
                    out.string()));
}

bool isOpusRate(int rate)
{
    return rate == 8000 || rate == 12000 || rate == 16000 || rate == 24000 || rate == 48000;
}

/// Sample formats to try for `out`, best first.
std::vector<int> sampleFormats(const std::filesystem::path &out, int container, int ofInput)
{
    if (container == SF_FORMAT_MPEG) return {SF_FORMAT_MPEG_LAYER_III};
    if (sameName(out.extension().string(), ".opus")) return {SF_FORMAT_OPUS};
    std::vector<int> choices;
    // libsndfile's check accepts MP3 in WAV, which it cannot write
    const bool isMpeg = ofInput >= SF_FORMAT_MPEG_LAYER_I && ofInput <= SF_FORMAT_MPEG_LAYER_III;
    if (!isMpeg) choices.push_back(ofInput);
    switch (ofInput) {
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_U8: choices.insert(choices.end(), {SF_FORMAT_PCM_U8, SF_FORMAT_PCM_S8}); break;
    case SF_FORMAT_DOUBLE: choices.push_back(SF_FORMAT_FLOAT); break;
    default: break;
    }
    choices.insert(choices.end(), {SF_FORMAT_PCM_24, SF_FORMAT_VORBIS});
    return choices;
}

int sampleFormat(const std::filesystem::path &out, int container, SF_INFO format)
{
    for (const int choice : sampleFormats(out, container, format.format & SF_FORMAT_SUBMASK)) {
        format.format = container | choice;
        if (choice == SF_FORMAT_OPUS && !isOpusRate(format.samplerate)) continue;
        if (sf_format_check(&format)) return choice;
    }
    throw Failure(
        fmt::format("{} does not support {} Hz; convert the sample rate first or choose another file "
                    "extension",
                    out.string(), format.samplerate));
}

int sampleFormat(const std::filesystem::path &out, int container, const std::string &bits, SF_INFO format)
{
    constexpr std::pair<const char *, int> kNames[] = {{"16", SF_FORMAT_PCM_16},
                                                       {"24", SF_FORMAT_PCM_24},
                                                       {"32", SF_FORMAT_PCM_32},
                                                       {"float", SF_FORMAT_FLOAT}};
    std::string supported;
    for (const auto &[name, samples] : kNames) {
        format.format = container | samples;
        if (!sf_format_check(&format)) continue;
        if (bits == name) return samples;
        supported += (supported.empty() ? "" : ", ") + std::string(name);
    }
    throw Failure(fmt::format("{} cannot have '{}' bits; {}", out.string(), bits,
                              supported.empty() ? "its format is lossy, so leave out --bits"
                                                : "give --bits with one of " + supported));
}

int bytesPerSample(int samples)
{
    if (samples == SF_FORMAT_DOUBLE) return 8;
    const int bits = integerBits(samples);
    return bits == 0 ? 4 : (bits + 7) / 8;
}

std::string nameOf(int command, int format)
{
    SF_FORMAT_INFO info{};
    info.format = format;
    sf_command(nullptr, command, &info, sizeof info);
    return info.name ? info.name : "unknown";
}

} // namespace

SF_INFO outputFormat(const std::filesystem::path &out, const SF_INFO &input, const std::string &bits)
{
    SF_INFO format{};
    format.channels = input.channels;
    format.samplerate = input.samplerate;
    int container = containerOf(out);
    format.format = input.format;
    const int samples =
        bits.empty() ? sampleFormat(out, container, format) : sampleFormat(out, container, bits, format);
    const double bytes = static_cast<double>(input.frames) * input.channels * bytesPerSample(samples);
    if (bytes > kLargestShortFile) {
        if (container == SF_FORMAT_WAV) container = SF_FORMAT_RF64; // WAV with 64-bit lengths
        if (container == SF_FORMAT_AIFF || container == SF_FORMAT_AU)
            throw Failure(
                fmt::format("{} would need {:.1f} GB, more than its format allows; use .wav, .flac or .w64",
                            out.string(), bytes / 1e9));
    }
    format.format = container | samples;
    return format;
}

int integerBits(int format)
{
    switch (format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_FLOAT:
    case SF_FORMAT_DOUBLE:
    case SF_FORMAT_VORBIS:
    case SF_FORMAT_OPUS:
    case SF_FORMAT_MPEG_LAYER_III: return 0;
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_U8: return 8;
    case SF_FORMAT_ALAC_20: return 20;
    case SF_FORMAT_PCM_24:
    case SF_FORMAT_ALAC_24: return 24;
    case SF_FORMAT_PCM_32:
    case SF_FORMAT_ALAC_32: return 32;
    default: return 16; // includes companding formats, which are encoded from 16 bits
    }
}

bool isLossy(int format)
{
    const int samples = format & SF_FORMAT_SUBMASK;
    return samples == SF_FORMAT_VORBIS || samples == SF_FORMAT_OPUS || samples == SF_FORMAT_MPEG_LAYER_III;
}

std::string describeFormat(int format)
{
    const std::string container = nameOf(SFC_GET_FORMAT_INFO, format & SF_FORMAT_TYPEMASK);
    const int samples = format & SF_FORMAT_SUBMASK;
    return samples == 0 ? container : container + ", " + nameOf(SFC_GET_FORMAT_INFO, samples);
}

} // namespace App
