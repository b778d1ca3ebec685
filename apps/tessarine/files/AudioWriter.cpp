#include "apps/tessarine/files/AudioWriter.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

#include "apps/tessarine/console/Failure.h"

namespace App {

namespace {

constexpr double kLossyQuality = 0.7; // range 0 to 1; Vorbis: about 220 kbit/s in stereo

TemporaryFile &fileOf(void *user) { return *static_cast<TemporaryFile *>(user); }

// Some of libsndfile's codecs ignore failed writes, so TemporaryFile stores the first error.
SF_VIRTUAL_IO virtualFile()
{
    SF_VIRTUAL_IO io{};
    io.get_filelen = [](void *user) -> sf_count_t { return fileOf(user).length(); };
    io.seek = [](sf_count_t offset, int whence, void *user) -> sf_count_t {
        return fileOf(user).seek(offset, whence);
    };
    io.read = [](void *bytes, sf_count_t count, void *user) -> sf_count_t {
        return fileOf(user).get(bytes, count);
    };
    io.write = [](const void *bytes, sf_count_t count, void *user) -> sf_count_t {
        return fileOf(user).put(bytes, count);
    };
    io.tell = [](void *user) -> sf_count_t { return fileOf(user).position(); };
    return io;
}

} // namespace

AudioWriter::AudioWriter(const std::filesystem::path &target, const AudioReader &input,
                         const SampleFormat &samples)
    : AudioWriter(target, outputFormat(target, input.info(), samples.bits), samples.dither)
{
}

AudioWriter::AudioWriter(const std::filesystem::path &target, const SF_INFO &wanted, bool dithers)
    : path(target), soundInfo(wanted), file(target), bits(integerBits(wanted.format)), dither(dithers)
{
    SF_VIRTUAL_IO io = virtualFile();
    handle.reset(sf_open_virtual(&io, SFM_WRITE, &soundInfo, &file));
    if (!handle) {
        file.check();
        throw Failure(fmt::format("{} cannot be written as {}: {}", path.string(),
                                  describeFormat(wanted.format), sf_strerror(nullptr)));
    }
    // its time stamp would make identical renderings differ
    sf_command(handle.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    double quality = kLossyQuality;
    sf_command(handle.get(), SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
}

void AudioWriter::fail()
{
    file.check();
    throw Failure(fmt::format("{} was not written: {}", path.string(), sf_strerror(handle.get())));
}

// libsndfile's own conversion either scales by one step less than full scale or truncates instead of rounding. This
// conversion is bit-exact for samples that were read from an integer format.
void AudioWriter::quantise(float *samples, size_t count)
{
    const double fullScale = std::ldexp(1.0, bits - 1), step = std::ldexp(1.0, 1 - bits);
    const int unusedBits = 32 - bits;
    quantised.resize(count);
    for (size_t i = 0; i < count; ++i) clipped += std::abs(samples[i]) > 1.0f;
    dither.round(samples, fullScale, count);
    for (size_t i = 0; i < count; ++i) {
        const double rounded = std::clamp(dither.rounded()[i], -fullScale, fullScale - 1.0);
        quantised[i] =
            static_cast<int32_t>(static_cast<uint32_t>(static_cast<int32_t>(rounded)) << unusedBits);
        samples[i] = static_cast<float>(rounded * step);
    }
}

void AudioWriter::write(float *interleaved, uint32_t frames)
{
    sf_count_t done = 0;
    if (bits != 0) {
        quantise(interleaved, size_t{frames} * static_cast<size_t>(soundInfo.channels));
        done = sf_writef_int(handle.get(), quantised.data(), frames);
    } else {
        done = sf_writef_float(handle.get(), interleaved, frames);
    }
    if (done != static_cast<sf_count_t>(frames) || file.failed()) fail();
}

MetadataLoss AudioWriter::finish(const Metadata &metadata, const MetadataChanges &changes)
{
    if (sf_close(handle.release()) != 0) {
        file.check();
        throw Failure(fmt::format("{} was not written: closing it failed", path.string()));
    }
    MetadataLoss loss;
    metadata.addTo(file, soundInfo.format, changes, loss);
    file.finish();
    return loss;
}

} // namespace App
