// The volume's file is found and made as the device's own calls do it.
#include "handset/command/channel_volume.h"

#include <windows.h>

#include "handset/base/rows.h"
#include "handset/controls/encoding.h"
#include "handset/coredll/cedb/errors.h"
#include "handset/coredll/cedb/volume_file.h"

namespace panel {
namespace {

struct FaultRow {
    DWORD error;
    const wchar_t* text;
};

// clang-format off
constexpr FaultRow kFaults[] = {
    {ERROR_FILE_NOT_FOUND,    L"the phone has no channel lists yet; \"handset favourites\" makes the first ones"},
    {ERROR_PATH_NOT_FOUND,    L"the phone is not set up; \"handset install\" does that"},
    {ERROR_BAD_FORMAT,        L"the phone's \\KORA.vol is something else than its channel lists"},
    {ERROR_FILE_CORRUPT,      L"the phone's \\KORA.vol is damaged"},
    {ERROR_DISK_FULL,         L"there is no room left"},
    {ERROR_SHARING_VIOLATION, L"another program is busy with the channel lists; try again"},
    {ERROR_ACCESS_DENIED,     L"the phone's \\KORA.vol cannot be written"},
};
// clang-format on

std::wstring FaultText(DWORD error) {
    const FaultRow* const row = handset::RowWith(kFaults, &FaultRow::error, error);
    if (row != nullptr) return row->text;
    return L"the phone's \\KORA.vol cannot be used (error " + std::to_wstring(error) + L")";
}

}  // namespace

std::wstring CChannelVolume::Open(When when) {
    std::wstring path;
    const std::wstring name(std::begin(lists::kVolume), std::end(lists::kVolume) - 1);
    const bool make = when == When::kMissingIsMade;
    DWORD error = cedb::FindVolumeFile(name.c_str(), &path);
    if (error == ERROR_SUCCESS)
        error = cedb::PrepareVolumeFile(path, make ? OPEN_ALWAYS : OPEN_EXISTING, collator_);
    if (error == ERROR_SUCCESS && make && !cedb::MayWrite(path)) error = ERROR_DISK_FULL;
    if (error == ERROR_SUCCESS) error = cedb::ErrorOf(volume_.Open(Utf8(path)), ERROR_FILE_NOT_FOUND);
    open_ = error == ERROR_SUCCESS;
    return open_ ? L"" : FaultText(error);
}

CChannelVolume::~CChannelVolume() {
    if (open_) volume_.Settle();
}

std::wstring StoreFault(cedb::Status status) {
    return status == cedb::Status::Ok ? L"" : FaultText(cedb::ErrorOf(status, ERROR_FILE_CORRUPT));
}

}  // namespace panel
