// A Windows CE program as a loader reads it. Written apart from what makes the program, so that an error of
// one cannot hide in the other.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace device {

struct FileSection {
    std::string name;
    std::uint32_t rva = 0, size = 0, fileSize = 0, flags = 0;
};

struct UnwindRow {
    std::uint32_t begin = 0;               // address, at the image's own base
    std::uint32_t prolog = 0, length = 0;  // in instructions
    bool arm = false, handler = false;
};

struct ImportSlot {
    std::string dll, function;
    std::uint32_t rva = 0;
};

class ProgramFile {
  public:
    // Throws std::runtime_error with what is wrong.
    explicit ProgramFile(const std::string& path);

    std::uint16_t machine = 0, characteristics = 0, subsystem = 0, osMajor = 0, osMinor = 0,
                  subsystemMajor = 0, subsystemMinor = 0;
    std::uint32_t entry = 0, base = 0, imageSize = 0, stack = 0;
    std::vector<FileSection> sections;
    std::vector<ImportSlot> imports;    // in the order of the file
    std::vector<std::uint32_t> fixups;  // RVAs of words that hold an address
    std::vector<UnwindRow> functions;
    // Type and number of each resource, with where its data lies; named resources are left out.
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::pair<std::uint32_t, std::uint32_t>> resources;

    // The image as it lies in memory at `at`, fixups applied, import slots as the file has them.
    [[nodiscard]] std::vector<std::uint8_t> LoadedAt(std::uint32_t at) const;
    [[nodiscard]] std::uint32_t Word(std::uint32_t rva) const;
    // Whether there is a resource of a type with this name and with this number.
    [[nodiscard]] bool HasNamed(const std::string& type, std::uint32_t id) const;
    [[nodiscard]] const FileSection& Section(const std::string& name) const;

  private:
    void ReadHeaders();
    void ReadImports(std::uint32_t rva);
    void ReadFixups(std::uint32_t rva, std::uint32_t size);
    void ReadFunctions(std::uint32_t rva, std::uint32_t size);
    void ReadResources(std::uint32_t rva);

    std::vector<std::uint8_t> file_, image_;
    std::uint32_t resourceRva_ = 0;
};

}  // namespace device
