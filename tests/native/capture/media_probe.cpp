// The bytes go through a file of this process, and the answers through pipes.
#include "tests/native/capture/media_probe.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

namespace test {
namespace {

class CTemporaryFile {
  public:
    explicit CTemporaryFile(const std::vector<std::uint8_t>& bytes = {}) {
        static int number = 0;
        path_ = std::filesystem::temp_directory_path() /
                ("capture-test-" + std::to_string(getpid()) + "-" + std::to_string(++number));
        std::ofstream(path_, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    ~CTemporaryFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    std::string Name() const { return path_.string(); }
    std::string Content() const {
        std::stringstream content;
        content << std::ifstream(path_, std::ios::binary).rdbuf();
        return content.str();
    }

  private:
    std::filesystem::path path_;
};

std::string Output(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    char piece[65536];
    for (std::size_t read = 0; (read = fread(piece, 1, sizeof piece, pipe.get())) > 0;)
        output.append(piece, read);
    return output;
}

}  // namespace

SoundFile Probe(const std::vector<std::uint8_t>& bytes) {
    const CTemporaryFile file(bytes);
    return ReadProbe(Output(kProbeCommand + file.Name() + " 2>/dev/null"));
}

std::map<std::string, std::string> ProbeTags(const std::vector<std::uint8_t>& bytes) {
    const CTemporaryFile file(bytes);
    std::istringstream answer(Output("ffprobe -v error -of default=nw=1 -show_entries format_tags " +
                                     file.Name() + " 2>/dev/null"));
    std::map<std::string, std::string> tags;
    for (std::string line; std::getline(answer, line);) {
        const std::size_t equals = line.find('=');
        if (line.rfind("TAG:", 0) == 0 && equals != std::string::npos)
            tags[line.substr(4, equals - 4)] = line.substr(equals + 1);
    }
    return tags;
}

std::vector<std::int16_t> Decode(const std::vector<std::uint8_t>& bytes, std::string* complaints) {
    const CTemporaryFile file(bytes);
    const CTemporaryFile errors;
    const std::string sound =
        Output("ffmpeg -v error -i " + file.Name() + " -f s16le - 2>" + errors.Name() + " </dev/null");
    *complaints = errors.Content();
    return SamplesOf(sound);
}

}  // namespace test
