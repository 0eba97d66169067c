#include "channels/channel_record.h"

CEPROPVAL TextProperty(CEPROPID id, const WCHAR* text) {
    CEPROPVAL property = {};
    property.propid = id;
    property.val.lpwstr = const_cast<WCHAR*>(text);
    return property;
}

CEPROPVAL NumberProperty(CEPROPID id, DWORD value) {
    CEPROPVAL property = {};
    property.propid = id;
    property.val.ulVal = value;
    return property;
}

void ChannelProperties(const PropRecord& record, CEPROPVAL (&properties)[kChannelPropertyCount]) {
    properties[0] = TextProperty(kPropGroupName, record.szCountryName);
    properties[1] = TextProperty(kPropChannelName, record.szPropRecord_ChannelName);
    properties[2] = NumberProperty(kPropChannelValue, record.dwPropRecord_ChannelValue);
    properties[3] = TextProperty(kPropChannelPGuide, record.szPropRecord_ChannelPGuide);
}
