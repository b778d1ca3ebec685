#include "tests/apps/Sandbox.h"

#include <fstream>
#include <unistd.h>

namespace fs = std::filesystem;

static fs::path makeFolder()
{
    std::string pattern = fs::temp_directory_path() / "tessarine-test-XXXXXX";
    return mkdtemp(pattern.data());
}

Sandbox::Sandbox() : folder(makeFolder()) {}

Sandbox::~Sandbox() { fs::remove_all(folder); }

std::string Sandbox::succeed(const std::string &line) const
{
    const Program::Outcome outcome = run(line);
    EXPECT_EQ(0, outcome.exitCode) << line;
    EXPECT_EQ("", outcome.err) << line;
    return outcome.out;
}

void Sandbox::write(const std::string &name, int format, int rate, const Audio &audio) const
{
    std::vector<float> samples;
    for (size_t i = 0; i < audio.left.size(); ++i) {
        samples.push_back(audio.left[i]);
        if (audio.stereo()) samples.push_back(audio.right[i]);
    }
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = audio.stereo() ? 2 : 1;
    info.format = format;
    SNDFILE *const file = sf_open(pathOf(name).c_str(), SFM_WRITE, &info);
    ASSERT_NE(nullptr, file) << sf_strerror(nullptr);
    sf_write_float(file, samples.data(), static_cast<sf_count_t>(samples.size()));
    sf_close(file);
}

void Sandbox::writeText(const std::string &name, const std::string &text) const
{
    std::ofstream(pathOf(name)) << text;
}

Sound Sandbox::read(const std::string &name) const
{
    Sound sound;
    SNDFILE *const file = sf_open(pathOf(name).c_str(), SFM_READ, &sound.info);
    EXPECT_NE(nullptr, file) << name;
    sound.samples.resize(static_cast<size_t>(sound.info.frames * sound.info.channels));
    EXPECT_EQ(sound.info.frames, sf_readf_float(file, sound.samples.data(), sound.info.frames));
    sf_close(file);
    return sound;
}

std::string Sandbox::readBytes(const std::string &name) const { return bytesOf(pathOf(name)); }

std::set<std::string> Sandbox::contents() const
{
    std::set<std::string> names;
    for (const auto &entry : fs::directory_iterator(folder)) names.insert(entry.path().filename());
    return names;
}
