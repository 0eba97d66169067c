#include "tests/native/lists/sample_lists.h"

#include <algorithm>

#include "handset/lists/import_plan.h"

using lists::Channel;
using lists::ChannelList;

namespace {

bool SameChannel(const Channel& one, const Channel& other) {
    return one.name == other.name && one.frequency_10kHz == other.frequency_10kHz && one.guide == other.guide;
}

std::u16string RandomText(std::mt19937& random, std::size_t longest) {
    static constexpr const char16_t* kPieces[] = {
        u"a",  u"\"", u",", u";",      u"\r",         u"\n",     u"\r\n", u" ",      u"\t", u"\u00E4",
        u"\\", u"#",  u"=", u"\u4E2D", u"\U0001F4FB", u"\u0301", u"\x01", u"\u2028", u"'",  u"\uFEFF"};
    std::u16string text;
    for (std::size_t pieces = random() % 8; pieces > 0; --pieces)
        text += kPieces[random() % std::size(kPieces)];
    return text.size() <= longest ? text : u"";
}

}  // namespace

bool SameLists(const std::vector<ChannelList>& one, const std::vector<ChannelList>& other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const ChannelList& left, const ChannelList& right) {
                          return left.name == right.name &&
                                 std::equal(left.channels.begin(), left.channels.end(),
                                            right.channels.begin(), right.channels.end(), SameChannel);
                      });
}

std::vector<ChannelList> AwkwardLists() {
    const std::u16string longest(lists::kLongestText, u'\u00DF');
    ChannelList first{u"Ada's \"best\", and; more", {}, 0, true};
    first.channels = {{u"Z\u00FCri Jazz", 10370, u"one line\nand another\r\nand the last\r", 0},
                      {u"", 8750, u"", 0},
                      {u" blanks around ", 10800, u"\t", 0},
                      {u"#1", 9855, u"\U0001F4FB \u4E2D\u6587 \\ \"\"", 0},
                      {longest, 9000, longest, 0}};
    return {first,
            {std::u16string(lists::kLongestListName, u'x'), {}, 0, true},
            {u"", {{u"of the list without a name", 9100, u"", 0}}, 0, true},
            {u"line\nbreak", {{u"=1+1", 9200, u"", 0}}, 0, true}};
}

std::vector<ChannelList> RandomLists(std::mt19937& random) {
    std::vector<ChannelList> made;
    for (std::size_t i = 0; i < random() % 5; ++i) {
        // A number makes each name its own.
        ChannelList list{RandomText(random, 50) + static_cast<char16_t>(u'0' + i), {}, 0, true};
        const auto channels = static_cast<std::uint32_t>(random() % 6);
        for (std::uint32_t at = 0; at < channels; ++at) {
            list.channels.push_back(
                {RandomText(random, 200),
                 lists::kBandBottom_10kHz + at * 400 + static_cast<std::uint32_t>(random() % 50),
                 RandomText(random, 200), 0});
        }
        made.push_back(std::move(list));
    }
    return made;
}
