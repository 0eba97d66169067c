// The properties of a pin, asked of the pin itself.
#include "handset/capture/graph/pin_search.h"

#include "handset/capture/graph/media_type.h"

namespace capture {
namespace {

// Pins that do not tell are neither.
bool HasCategory(IPin* pin, const GUID& category) {
    const auto properties = Query<IKsPropertySet>(pin, IID_IKsPropertySet);
    GUID own{};
    DWORD returned = 0;
    return properties &&
           SUCCEEDED(properties->Get(AMPROPSETID_Pin, AMPROPERTY_PIN_CATEGORY, nullptr, 0, &own, sizeof own,
                                     &returned)) &&
           own == category;
}

bool OffersMajorType(IPin* pin, const GUID& major) {
    CRef<IEnumMediaTypes> list;
    if (FAILED(pin->EnumMediaTypes(list.Put()))) return false;
    bool found = false;
    for (AM_MEDIA_TYPE* type = nullptr; !found && list->Next(1, &type, nullptr) == S_OK;) {
        found = type->majortype == major;
        ClearMediaType(type);
        CoTaskMemFree(type);
    }
    return found;
}

}  // namespace

bool PinFits(IPin* pin, const PinQuery& query) {
    PIN_DIRECTION direction = PINDIR_INPUT;
    if (FAILED(pin->QueryDirection(&direction)) || direction != query.direction) return false;
    CRef<IPin> peer;
    if (query.unconnected && pin->ConnectedTo(peer.Put()) == S_OK) return false;
    if (query.category != nullptr && !HasCategory(pin, *query.category)) return false;
    return query.majorType == nullptr || OffersMajorType(pin, *query.majorType);
}

std::vector<CRef<IPin>> FindPins(IBaseFilter* filter, const PinQuery& query) {
    std::vector<CRef<IPin>> found;
    CRef<IEnumPins> list;
    if (filter == nullptr || FAILED(filter->EnumPins(list.Put()))) return found;
    for (CRef<IPin> pin; list->Next(1, pin.Put(), nullptr) == S_OK;) {
        if (PinFits(pin.Get(), query)) found.push_back(pin);
    }
    return found;
}

}  // namespace capture
