// What the channel volume holds, read without the store that wrote it.
#pragma once

#include <windows.h>

#include <cedb.h>

#include <ostream>
#include <string>
#include <vector>

namespace test {

// The database calls take texts that they do not change through pointers that could.
LPWSTR Mutable(const wchar_t* text);
// For messages: letters of ASCII as they are.
std::string Narrow(const std::wstring& text);

// The volume, mounted for a scope.
class MountedVolume {
  public:
    MountedVolume();
    ~MountedVolume();
    MountedVolume(const MountedVolume&) = delete;
    MountedVolume& operator=(const MountedVolume&) = delete;
    CEGUID* Guid() { return &m_guid; }

  private:
    CEGUID m_guid = {};
};

// One database of it, in the order in which its records were made.
class OpenDatabase {
  public:
    OpenDatabase(MountedVolume& volume, const wchar_t* name);
    ~OpenDatabase();
    OpenDatabase(const OpenDatabase&) = delete;
    OpenDatabase& operator=(const OpenDatabase&) = delete;
    HANDLE get() const { return m_handle; }
    bool Opened() const { return m_handle != INVALID_HANDLE_VALUE; }

  private:
    HANDLE m_handle;
};

struct StoredChannel {
    std::wstring group, name;
    DWORD value;
    std::wstring guide;
    bool operator==(const StoredChannel& other) const {
        return group == other.group && name == other.name && value == other.value && guide == other.guide;
    }
};
std::ostream& operator<<(std::ostream& out, const StoredChannel& channel);

// All of them, in the order in which they were made; empty when there is no such database.
std::vector<StoredChannel> StoredChannels();
std::vector<std::wstring> StoredGroups();

}  // namespace test
