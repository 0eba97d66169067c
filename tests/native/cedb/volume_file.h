// A volume file for one test, in memory where the machine has such a folder, and a language that sorts in an
// easily foreseen way.
#pragma once

#include <string>
#include <vector>

#include "handset/coredll/cedb/engine/volume.h"

// Sorts by UTF-16 unit; with an odd locale identifier the other way round. Knows 1 to 1000.
class PlainCollator : public cedb::CCollator {
  public:
    std::string TextKey(std::uint32_t lcid, std::uint32_t flags, const std::u16string& text) const override;
    bool Knows(std::uint32_t lcid) const override { return lcid >= 1 && lcid <= 1000; }
};

class VolumeFile {
  public:
    VolumeFile();
    ~VolumeFile();
    VolumeFile(const VolumeFile&) = delete;
    VolumeFile& operator=(const VolumeFile&) = delete;
    const std::string& Path() const { return path_; }
    std::string Contents() const;
    void SetContents(const std::string& contents) const;

  private:
    std::string path_;
};

// Property identifiers, and properties by type.
constexpr cedb::PropertyId Id(unsigned number, std::uint16_t type) {
    return number << 16 | type;
}
cedb::PropertyChange Set(cedb::PropertyId id, std::uint64_t number);
cedb::PropertyChange Set(cedb::PropertyId id, const std::u16string& text);
