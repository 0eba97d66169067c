// A media type with its format block, owned.
#pragma once

#include <vector>

#include "handset/capture/graph/com_reference.h"
#include "handset/capture/graph/direct_show.h"

namespace capture {

// AMR narrow band as a stream: the subtype of its registered format tag, WAVE_FORMAT_AMR_NB.
inline constexpr WORD kWaveFormatAmr = 0x7361;
inline constexpr GUID kSubtypeAmr = {
    kWaveFormatAmr, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xaa, 0x00, 0x38, 0x9b, 0x71}};

class CMediaType {
  public:
    CMediaType() = default;
    // Copies the format block too.
    explicit CMediaType(const AM_MEDIA_TYPE& type);
    // Sound whose format is a WAVEFORMATEX without anything behind it.
    CMediaType(const GUID& subtype, const WAVEFORMATEX& format);

    // As a call takes it; valid while this object lives and is not changed.
    AM_MEDIA_TYPE View() const;
    const GUID& Major() const { return type_.majortype; }
    const GUID& Subtype() const { return type_.subtype; }
    const GUID& FormatType() const { return type_.formattype; }
    // The wave format; null when the type has none.
    const WAVEFORMATEX* Wave() const;

    // A copy for a caller, its format block from CoTaskMemAlloc. E_OUTOFMEMORY leaves *out empty.
    HRESULT CopyTo(AM_MEDIA_TYPE* out) const;
    HRESULT NewCopy(AM_MEDIA_TYPE** out) const;

    bool operator==(const CMediaType& other) const;
    // True when `partial` leaves open or says the same for the major type, subtype and format.
    bool Fits(const AM_MEDIA_TYPE& partial) const;

  private:
    AM_MEDIA_TYPE type_{};  // its format pointer is not used
    std::vector<BYTE> format_;
    CRef<IUnknown> object_;
};

// Gives back what CopyTo gave.
void ClearMediaType(AM_MEDIA_TYPE* type);

}  // namespace capture
