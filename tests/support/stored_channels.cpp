#include "tests/support/stored_channels.h"

#include "channels/channel_db.h"
#include "channels/record_reader.h"

namespace test {
namespace {

const CEPROPVAL* Find(const RecordReader& reader, CEPROPID id) {
    for (const CEPROPVAL& property : reader) {
        if (property.propid == id) return &property;
    }
    return nullptr;
}

std::wstring TextOf(const RecordReader& reader, CEPROPID id) {
    const CEPROPVAL* property = Find(reader, id);
    return property == nullptr ? L"(none)" : property->val.lpwstr;
}

}  // namespace

LPWSTR Mutable(const wchar_t* text) {
    return const_cast<LPWSTR>(text);
}

std::string Narrow(const std::wstring& text) {
    return {text.begin(), text.end()};
}

MountedVolume::MountedVolume() {
    CeMountDBVol(&m_guid, Mutable(L"KORA.vol"), EDB_MOUNT_FLAG | OPEN_ALWAYS);
}
MountedVolume::~MountedVolume() {
    CeUnmountDBVol(&m_guid);
}

OpenDatabase::OpenDatabase(MountedVolume& volume, const wchar_t* name) {
    CEOID oid = 0;
    m_handle = CeOpenDatabaseEx2(volume.Guid(), &oid, Mutable(name), nullptr, CEDB_AUTOINCREMENT, nullptr);
}
OpenDatabase::~OpenDatabase() {
    if (Opened()) CloseHandle(m_handle);
}

std::ostream& operator<<(std::ostream& out, const StoredChannel& channel) {
    return out << Narrow(channel.group) << '/' << Narrow(channel.name) << '/' << channel.value << '/'
               << Narrow(channel.guide);
}

std::vector<StoredChannel> StoredChannels() {
    std::vector<StoredChannel> channels;
    MountedVolume volume;
    OpenDatabase open(volume, kChannelDatabase);
    if (!open.Opened()) return channels;
    RecordReader reader(open.get());
    while (reader.Read() != 0) {
        const CEPROPVAL* value = Find(reader, kPropChannelValue);
        channels.push_back({TextOf(reader, kPropGroupName), TextOf(reader, kPropChannelName),
                            value == nullptr ? 0 : value->val.ulVal, TextOf(reader, kPropChannelPGuide)});
    }
    return channels;
}

std::vector<std::wstring> StoredGroups() {
    std::vector<std::wstring> groups;
    MountedVolume volume;
    OpenDatabase open(volume, kGroupDatabase);
    if (!open.Opened()) return groups;
    RecordReader reader(open.get());
    while (reader.Read() != 0) groups.push_back(TextOf(reader, kPropGroupName));
    return groups;
}

}  // namespace test
