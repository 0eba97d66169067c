// ffprobe's answer has a line "name=value" for each property.
#include "tests/support/sound_file.h"

#include <cstdlib>

namespace test {
namespace {

std::string ValueOf(const std::string& answer, const std::string& name) {
    const std::size_t begin = ("\n" + answer).find("\n" + name + "=");
    if (begin == std::string::npos) return "";
    const std::size_t value = begin + name.size() + 1;
    return answer.substr(value, answer.find_first_of("\r\n", value) - value);
}

}  // namespace

SoundFile ReadProbe(const std::string& answer) {
    SoundFile sound;
    sound.container = ValueOf(answer, "format_name");
    sound.container = sound.container.substr(0, sound.container.find(','));
    sound.codec = ValueOf(answer, "codec_name");
    sound.rate_Hz = std::atoi(ValueOf(answer, "sample_rate").c_str());
    sound.channels = std::atoi(ValueOf(answer, "channels").c_str());
    sound.length_s = std::atof(ValueOf(answer, "duration").c_str());
    return sound;
}

std::vector<std::int16_t> SamplesOf(const std::string& bytes) {
    std::vector<std::int16_t> samples(bytes.size() / 2);
    bytes.copy(reinterpret_cast<char*>(samples.data()), samples.size() * 2);
    return samples;
}

}  // namespace test
