#include "tests/bench/reception/peer_decoder.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace bench {
namespace {

bool CanRun(const std::string& program) {
    return access(program.c_str(), X_OK) == 0;
}

// A file of its own that is gone with the object.
class CScratchFile {
  public:
    CScratchFile() : name_(Pattern()), file_(mkstemp(name_.data())) {}
    ~CScratchFile() {
        close(file_);
        unlink(name_.c_str());
    }
    CScratchFile(const CScratchFile&) = delete;
    CScratchFile& operator=(const CScratchFile&) = delete;
    const std::string& Name() const { return name_; }
    int Descriptor() const { return file_; }

  private:
    static std::string Pattern() {
        const char* folder = std::getenv("TMPDIR");
        return std::string(folder != nullptr ? folder : "/tmp") + "/kora-bench-XXXXXX";
    }
    std::string name_;
    int file_;
};

// "D301 0408 ---- 4B4F" into a group; other lines are none.
bool ReadGroup(const std::string& line, GivenGroup* group) {
    std::istringstream words(line);
    std::string word;
    for (auto& block : *group) {
        if (!(words >> word) || word.size() != 4) return false;
        block.reset();
        if (word == "----") continue;
        if (word.find_first_not_of("0123456789ABCDEFabcdef") != std::string::npos) return false;
        block = static_cast<std::uint16_t>(std::stoul(word, nullptr, 16));
    }
    return true;
}

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

// Runs it to its end; its processor time, or nothing when it failed.
std::optional<double> Run(const std::vector<std::string>& command, const CScratchFile& input,
                          const CScratchFile& output) {
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        const int from = open(input.Name().c_str(), O_RDONLY);
        const int quiet = open("/dev/null", O_WRONLY);
        dup2(from, 0);
        dup2(output.Descriptor(), 1);
        dup2(quiet, 2);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child) return std::nullopt;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return std::nullopt;
    return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

}  // namespace

std::string FindRedsea() {
    if (const char* named = std::getenv("REDSEA")) return CanRun(named) ? named : "";
    const char* path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (CanRun(folder + "/redsea")) return folder + "/redsea";
    }
    return "";
}

std::optional<PeerResult> RunRedsea(const std::string& program, const std::vector<std::int16_t>& multiplex) {
    const CScratchFile input, output;
    std::ofstream(input.Name(), std::ios::binary)
        .write(reinterpret_cast<const char*>(multiplex.data()),
               static_cast<std::streamsize>(multiplex.size() * sizeof multiplex[0]));
    const std::optional<double> processor_s = Run({program, "-r", "171000", "-x"}, input, output);
    if (!processor_s) {
        std::fprintf(stderr, "   %s failed\n", program.c_str());
        return std::nullopt;
    }
    PeerResult result;
    result.processor_s = *processor_s;
    std::ifstream lines(output.Name());
    for (std::string line; std::getline(lines, line);) {
        GivenGroup group;
        if (ReadGroup(line, &group)) result.groups.push_back(group);
    }
    return result;
}

}  // namespace bench
