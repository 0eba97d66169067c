// Volume files for tests.
#include "tests/native/cedb/volume_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>

std::string PlainCollator::TextKey(std::uint32_t lcid, std::uint32_t flags,
                                   const std::u16string& text) const {
    std::string key;
    for (char16_t unit : text) {
        const bool upper = unit >= u'A' && unit <= u'Z';
        if (upper && (flags & cedb::kSortCaseInsensitive) != 0) unit = static_cast<char16_t>(unit + 32);
        if (lcid % 2 == 1) unit = static_cast<char16_t>(~unit);
        key.push_back(static_cast<char>(unit >> 8));
        key.push_back(static_cast<char>(unit & 0xFF));
    }
    return key;
}

VolumeFile::VolumeFile() {
    static int count = 0;
    const bool inMemory = access("/dev/shm", W_OK) == 0;
    path_ = (inMemory ? "/dev/shm/" : testing::TempDir()) + "kora-cedb-" + std::to_string(getpid()) + "-" +
            std::to_string(++count) + ".vol";
}

VolumeFile::~VolumeFile() {
    std::remove(path_.c_str());
    std::remove((path_ + "-journal").c_str());
}

std::string VolumeFile::Contents() const {
    std::ostringstream out;
    out << std::ifstream(path_, std::ios::binary).rdbuf();
    return out.str();
}

void VolumeFile::SetContents(const std::string& contents) const {
    std::ofstream(path_, std::ios::binary | std::ios::trunc) << contents;
}

cedb::PropertyChange Set(cedb::PropertyId id, std::uint64_t number) {
    cedb::PropertyChange change;
    change.property.id = id;
    change.property.number = number;
    return change;
}

cedb::PropertyChange Set(cedb::PropertyId id, const std::u16string& text) {
    cedb::PropertyChange change;
    change.property.id = id;
    change.property.text = text;
    return change;
}
