// Programs of the machine around Wine, to open recordings with what is not ours: ffprobe and ffmpeg.
#pragma once

#include <string>
#include <vector>

namespace test {

// True when such programs can be run here: under Wine.
bool HostToolsAvailable();

// Runs a line of the machine's shell and gives what it wrote; {0}, {1} … stand for files by their paths here.
std::string RunOnHost(const std::string& line, const std::vector<std::wstring>& files);

struct MediaFacts {
    std::string container;
    std::string codec;
    int rate_Hz = 0;
    int channels = 0;
    double duration_s = 0;
};
// What ffprobe says of a file, and what ffmpeg decodes from it: 16-bit samples. `complaints` receives its
// errors.
MediaFacts Probe(const std::wstring& hostPath);
std::vector<short> Decode(const std::wstring& hostPath, std::string* complaints);

}  // namespace test
