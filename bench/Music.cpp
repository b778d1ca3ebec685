#include <cstdio>
#include <cstdlib>
#include <sndfile.h>

#include "bench/Load.h"

// tessarine_music FILE SECONDS: writes the music of the benchmarks as a WAV file, stereo, 16 bit, 44100 Hz.

int main(int argc, char **argv) // NOLINT(bugprone-exception-escape): ends with a message
{
    const auto frames = argc == 3 ? static_cast<uint32_t>(std::atof(argv[2]) * Bench::kRate) : 0;
    if (frames == 0) {
        std::fputs("usage: tessarine_music FILE SECONDS\n", stderr);
        return 2;
    }
    const Audio music = Bench::music(frames);
    std::vector<float> interleaved;
    for (uint32_t i = 0; i < frames; ++i)
        interleaved.insert(interleaved.end(), {music.left[i], music.right[i]});
    SF_INFO format{};
    format.samplerate = Bench::kRate;
    format.channels = 2;
    format.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE *const file = sf_open(argv[1], SFM_WRITE, &format);
    if (!file) {
        std::fprintf(stderr, "tessarine_music: %s cannot be written: %s\n", argv[1], sf_strerror(nullptr));
        return 1;
    }
    sf_command(file, SFC_SET_CLIPPING, nullptr, SF_TRUE);
    const bool isComplete = sf_writef_float(file, interleaved.data(), frames) == frames;
    return sf_close(file) == 0 && isComplete ? 0 : 1;
}
