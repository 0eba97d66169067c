// Prints what the device's channel volume holds, a line each: "G name" and "C group|name|value|guide".
#include <windows.h>

#include <cstdio>

#include "tests/support/stored_channels.h"

int main() {
    for (const std::wstring& group : test::StoredGroups()) std::printf("G %ls\n", group.c_str());
    for (const test::StoredChannel& channel : test::StoredChannels()) {
        std::printf("C %ls|%ls|%lu|%ls\n", channel.group.c_str(), channel.name.c_str(), channel.value,
                    channel.guide.c_str());
    }
    return 0;
}
