#include "apps/tessarine/files/AudioReader.h"

#include <fmt/format.h>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/files/InputFile.h"
#include "dsp/chain/TransformBase.h"
#include "dsp/kernels/Kernels.h"

namespace App {

namespace fs = std::filesystem;

AudioReader::AudioReader(const fs::path &file) : path(file)
{
    requirePlainFile(path, "an audio file");
    if (const uint64_t missing = missingAudioBytes(path))
        throw Failure(
            fmt::format("{} is truncated: {} bytes of the audio announced in its header are missing; "
                        "copy it again from its source",
                        path.string(), missing));
    handle.reset(sf_open(path.c_str(), SFM_READ, &soundInfo));
    if (!handle)
        throw Failure(fmt::format("{} is not a readable audio file: {} Use WAV, FLAC, AIFF or Ogg",
                                  path.string(), sf_strerror(nullptr)));
    if (soundInfo.channels < 1 || soundInfo.channels > 2)
        throw Failure(fmt::format(
            "{} has {} channels, but the effect processes 1 or 2; split or downmix the file first",
            path.string(), soundInfo.channels));
    if (soundInfo.frames <= 0)
        throw Failure(fmt::format("{} contains no audio (0 frames); choose another file", path.string()));
}

uint32_t AudioReader::read(float *interleaved, uint32_t count)
{
    const uint64_t expected = std::min<uint64_t>(count, frames() - position);
    const sf_count_t got = sf_readf_float(handle.get(), interleaved, static_cast<sf_count_t>(expected));
    if (got < static_cast<sf_count_t>(expected)) {
        const uint64_t end = position + static_cast<uint64_t>(std::max<sf_count_t>(got, 0));
        const bool isLengthKnown = soundInfo.frames != SF_COUNT_MAX; // unknown for a truncated Ogg file
        throw Failure(fmt::format(
            "{} is damaged or truncated: the audio ends after {} frames; copy it again "
            "from its source",
            path.string(), isLengthKnown ? fmt::format("{} of {}", end, frames()) : fmt::format("{}", end)));
    }
    position += expected;
    const auto samples = static_cast<uint32_t>(expected) * channels();
    zeroed +=
        DSP::Kernels::active().block.silenceGarbage(interleaved, DSP::TransformBase::kLoudestSample, samples);
    return static_cast<uint32_t>(expected);
}

void AudioReader::seek(uint64_t frame)
{
    if (frame == position) return;
    if (soundInfo.seekable && sf_seek(handle.get(), static_cast<sf_count_t>(frame), SEEK_SET) >= 0) {
        position = frame;
        return;
    }
    if (frame < position) *this = AudioReader(path); // some codecs cannot seek
    constexpr uint32_t kPiece = 4096;
    std::vector<float> skipped(size_t{kPiece} * channels());
    while (position < frame) {
        stopIfInterrupted();
        read(skipped.data(), static_cast<uint32_t>(std::min<uint64_t>(kPiece, frame - position)));
    }
}

} // namespace App
