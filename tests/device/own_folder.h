// A folder of a test's own, which goes with it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace device {

class CFolder {
  public:
    CFolder() {
        char name[] = "/tmp/kora-device-XXXXXX";
        if (mkdtemp(name) == nullptr) throw std::runtime_error("no folder could be made");
        path_ = name;
    }
    ~CFolder() { std::filesystem::remove_all(path_); }
    CFolder(const CFolder&) = delete;
    CFolder& operator=(const CFolder&) = delete;

    [[nodiscard]] std::string Path() const { return path_.string(); }
    [[nodiscard]] std::string Path(const char* name) const { return (path_ / name).string(); }

  private:
    std::filesystem::path path_;
};

}  // namespace device
