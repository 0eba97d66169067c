// One reader for each type and version of group (IEC 62106, 3.1.3 and 3.1.5).
#include "handset/fmdevice/sdr/rds/group_reader.h"

#include <algorithm>
#include <utility>

#include "handset/base/utf8.h"
#include "handset/fmdevice/sdr/rds/characters.h"

namespace sdr::rds {
namespace {

constexpr std::size_t kSecond = 1;
constexpr std::size_t kThird = 2;
constexpr std::size_t kFourth = 3;
constexpr std::size_t kPairsOfTextA = 32;  // 64 letters (3.1.5.3)
constexpr std::size_t kPairsOfTextB = 16;  // 32 letters: block 3 repeats the PI code (3.1.5.3)
constexpr float kRateMemory = 1.0f / 48.0f;

std::size_t KindOf(const Block& second) {
    return second.information >> 11;
}

bool Flag(std::uint16_t bits, unsigned place) {
    return (bits >> place & 1u) != 0;
}

}  // namespace

// clang-format off
const std::array<CGroupReader::Reader, kGroupKinds> CGroupReader::kReaders = {
    // version A                       version B
    &CGroupReader::ReadTuning,          &CGroupReader::ReadTuningB,      // 0: basic tuning and switching
    &CGroupReader::ReadLabels,          &CGroupReader::ReadNothing,      // 1: programme item, slow labelling
    &CGroupReader::ReadRadioText,       &CGroupReader::ReadRadioTextB,   // 2: radio text
    &CGroupReader::ReadApplication,     &CGroupReader::ReadNothing,      // 3: identification of applications
    &CGroupReader::ReadClock,           &CGroupReader::ReadNothing,      // 4: clock time
    &CGroupReader::ReadNothing,         &CGroupReader::ReadNothing,      // 5: transparent data channels
    &CGroupReader::ReadNothing,         &CGroupReader::ReadNothing,      // 6: the broadcasters' own
    &CGroupReader::ReadNothing,         &CGroupReader::ReadNothing,      // 7: paging
    &CGroupReader::ReadNothing,         &CGroupReader::ReadNothing,      // 8: traffic messages
    &CGroupReader::ReadNothing,         &CGroupReader::ReadNothing,      // 9: emergency warning
    &CGroupReader::ReadTypeName,        &CGroupReader::ReadNothing,      // 10: programme type name
    &CGroupReader::ReadNothing,         &CGroupReader::ReadNothing,      // 11: applications
    &CGroupReader::ReadNothing,         &CGroupReader::ReadNothing,      // 12: applications
    &CGroupReader::ReadNothing,         &CGroupReader::ReadNothing,      // 13: enhanced paging
    &CGroupReader::ReadOthers,          &CGroupReader::ReadOthersB,      // 14: other networks
    &CGroupReader::ReadLongName,        &CGroupReader::ReadFastTuning,   // 15: long name; fast tuning
};
// clang-format on

void CGroupReader::Restart() {
    *this = CGroupReader();
}

// The PI code tells the station (3.2.1.1). A first code may be wrong; a change of a code that is known is
// doubted more: the station stays itself through a burst of noise or a moment of a neighbour.
void CGroupReader::TakePi(std::uint16_t pi, bool certain) {
    const bool another = pi_.Value().has_value();
    if (!pi_.Offer(pi, certain && !another)) return;
    if (another) {
        const CConfirmedValue<std::uint16_t> kept = pi_;
        const Station old = station_;
        const double now_s = now_s_;
        Restart();
        pi_ = kept;
        now_s_ = station_.now_s = now_s;
        station_.blocks = old.blocks;
        station_.blocksReceived = old.blocksReceived;
        station_.groups = old.groups;
        station_.kinds = old.kinds;
        station_.blockErrorRate = old.blockErrorRate;
    }
    station_.pi = pi;
}

void CGroupReader::TakeBlock(std::size_t place, const Block& block, double now_s) {
    now_s_ = station_.now_s = now_s;
    ++station_.blocks;
    if (block.Received()) ++station_.blocksReceived;
    station_.blockErrorRate += ((block.Received() ? 0.0f : 1.0f) - station_.blockErrorRate) * kRateMemory;
    if (!block.Received()) return;
    // Block 1 of every group holds the code, and block 3 of version B (3.1.3).
    if (place == 0) TakePi(block.information, block.Certain());
    if (place == kThird && block.offset == Offset::kCPrime) TakePi(block.information, block.Certain());
}

void CGroupReader::TakeGroup(const Group& group, double now_s) {
    now_s_ = station_.now_s = now_s;
    const Block& first = group.blocks[0];
    const Block& second = group.blocks[kSecond];
    // What comes under another station's code is another station's.
    if (first.Received() && pi_.Value() && first.information != *pi_.Value()) return LoseTexts();
    if (!second.Received()) return LoseTexts();
    ++station_.groups;
    ++station_.kinds[KindOf(second)];
    station_.lastGroup_s = now_s;
    ReadBasics(second);
    if (applications_[KindOf(second)].Value() == kRadioTextPlusId) return ReadPlus(group);
    (this->*kReaders[KindOf(second)])(group);
}

// A group that is lost may have carried a part of any text.
void CGroupReader::LoseTexts() {
    for (CTextVoter* voter : {&name_, &text_, &typeName_, &longName_}) voter->Lost();
    others_.Lost();
}

// TP and PTY stand in every block 2 (3.1.3).
void CGroupReader::ReadBasics(const Block& second) {
    trafficProgramme_.Offer(Flag(second.information, 10), second.Certain());
    type_.Offer(second.information >> 5 & 0x1F, second.Certain());
    station_.trafficProgramme = trafficProgramme_.Value();
    station_.programmeType = type_.Value();
}

// TA, M/S and one bit of the decoder identification (3.1.5.1, 3.2.1.3 to 3.2.1.5).
void CGroupReader::ReadSwitches(std::uint16_t bits, bool certain) {
    trafficAnnouncement_.Offer(Flag(bits, 4), certain);
    music_.Offer(Flag(bits, 3), certain);
    identification_[bits & 3u].Offer(Flag(bits, 2), certain);
    station_.trafficAnnouncement = trafficAnnouncement_.Value();
    station_.music = music_.Value();
    // The highest bit comes first.
    station_.dynamicType = identification_[0].Value();
    station_.compressed = identification_[1].Value();
    station_.artificialHead = identification_[2].Value();
    station_.stereo = identification_[3].Value();
}

// A text in the form in which it is shown; nothing when it is no text of that form.
std::optional<std::string> CGroupReader::Shown(const std::string& codes, Form form) {
    if (form == Form::kUtf8) {
        if (!handset::IsUtf8(codes)) return std::nullopt;
        std::string text = codes;
        // Encoders fill up with zeros as well as with blanks.
        std::replace(text.begin(), text.end(), '\0', ' ');
        return WithoutTrailingBlanks(text);
    }
    return form == Form::kText ? WithoutTrailingBlanks(LettersOf(codes)) : LettersOf(codes);
}

void CGroupReader::Show(const CTextVoter& voter, bool whole, Text& text, Form form) const {
    text.letters = Shown(voter.Letters(), form).value_or("");
    if (!whole || !voter.Whole()) return;
    std::optional<std::string> now = Shown(*voter.Whole(), form);
    if (!now) return;
    text.whole_s = now_s_;
    if (*now == text.whole && text.changed_s >= 0.0) return;
    text.whole = std::move(*now);
    text.changed_s = now_s_;
}

void CGroupReader::TakePairs(CTextVoter& voter, const Group& group, std::size_t firstPair,
                             std::size_t firstBlock, Text& text, Form form) {
    bool whole = false;
    for (std::size_t i = firstBlock; i <= kFourth; ++i) {
        const Block& block = group.blocks[i];
        const bool certain = block.Certain() && group.blocks[kSecond].Certain();
        if (!block.Received()) {
            voter.Lost();
        } else if (voter.Take(firstPair + i - firstBlock, block.information, certain)) {
            whole = true;
        }
    }
    Show(voter, whole, text, form);
}

// Type 0: two letters of the name, a bit of the identification, and in version A a pair of alternative
// frequencies (3.1.5.1).
void CGroupReader::ReadTuning(const Group& group) {
    const Block& third = group.blocks[kThird];
    ReadTuningB(group);
    if (!third.Received()) return;
    alternatives_.Take(third.information, third.Certain() && group.blocks[kSecond].Certain());
    station_.alternatives = alternatives_.List();
}

void CGroupReader::ReadTuningB(const Group& group) {
    const Block& second = group.blocks[kSecond];
    ReadSwitches(second.information, second.Certain());
    TakePairs(name_, group, second.information & 3u, kFourth, station_.serviceName, Form::kName);
}

// Variant 0 of the slow labelling codes is the extended country code, 3 the language (3.1.5.2, figure 14).
void CGroupReader::ReadLabels(const Group& group) {
    const Block& third = group.blocks[kThird];
    if (!third.Received()) return;
    const bool certain = third.Certain() && group.blocks[kSecond].Certain();
    const auto code = static_cast<std::uint16_t>(third.information & 0xFFu);
    const int variant = third.information >> 12 & 7;
    if (variant == 0 && country_.Offer(code, certain)) station_.extendedCountry = country_.Value();
    if (variant == 3 && language_.Offer(code, certain)) station_.language = language_.Value();
}

// A change of the flag is a new text: what is shown of the old one is cleared (3.1.5.3).
void CGroupReader::TakeRadioTextFlag(bool flag, bool certain) {
    const bool another = textFlag_.Value().has_value();
    if (!textFlag_.Offer(flag, certain)) return;
    station_.radioTextFlag = flag;
    if (!another) return;
    text_.Restart();
    plus_.Restart();  // its places were those of the old text
    station_.radioText = Text{};
    station_.tags.clear();
}

// Four letters a group in version A, two in version B; the text has 64 or 32 (3.1.5.3).
void CGroupReader::ReadRadioText(const Group& group) {
    const Block& second = group.blocks[kSecond];
    const bool flag = Flag(second.information, 4);
    TakeRadioTextFlag(flag, second.Certain());
    // Parts of a text whose flag is not believed yet would mix with the other's.
    if (textFlag_.Value() && *textFlag_.Value() != flag) return;
    text_.SetPairs(kPairsOfTextA);
    TakePairs(text_, group, std::size_t{2} * (second.information & 0xFu), kThird, station_.radioText,
              Form::kText);
    if (text_.Whole()) station_.tags = plus_.TagsOf(*text_.Whole());
}

void CGroupReader::ReadRadioTextB(const Group& group) {
    const Block& second = group.blocks[kSecond];
    const bool flag = Flag(second.information, 4);
    TakeRadioTextFlag(flag, second.Certain());
    if (textFlag_.Value() && *textFlag_.Value() != flag) return;
    text_.SetPairs(kPairsOfTextB);
    TakePairs(text_, group, second.information & 0xFu, kFourth, station_.radioText, Form::kText);
}

// Which application another type of group carries (3.1.5.4).
void CGroupReader::ReadApplication(const Group& group) {
    const Block& fourth = group.blocks[kFourth];
    if (!fourth.Received()) return;
    const std::size_t kind = group.blocks[kSecond].information & 0x1Fu;
    const bool certain = fourth.Certain() && group.blocks[kSecond].Certain();
    if (!applications_[kind].Offer(fourth.information, certain)) return;
    station_.applications[kind] = fourth.information;
}

// RT+, in the type of group that 3A announced for it (annex P).
void CGroupReader::ReadPlus(const Group& group) {
    if (!plus_.Take(group)) return;
    station_.itemRunning = plus_.Running();
    if (text_.Whole()) station_.tags = plus_.TagsOf(*text_.Whole());
}

// Group 4A (3.1.5.6).
void CGroupReader::ReadClock(const Group& group) {
    const Block& second = group.blocks[kSecond];
    const Block& third = group.blocks[kThird];
    const Block& fourth = group.blocks[kFourth];
    if (!third.Received() || !fourth.Received()) return;
    const bool certain = second.Certain() && third.Certain() && fourth.Certain();
    if (clock_.Take(second.information, third.information, fourth.information, certain, now_s_)) {
        station_.clock = clock_.Time();
    }
}

// A change of the flag is a new name here, too (3.1.5.14).
void CGroupReader::ReadTypeName(const Group& group) {
    const Block& second = group.blocks[kSecond];
    const bool flag = Flag(second.information, 4);
    const bool another = typeNameFlag_.Value().has_value();
    if (typeNameFlag_.Offer(flag, second.Certain()) && another) {
        typeName_.Restart();
        station_.programTypeName = Text{};
    }
    if (typeNameFlag_.Value() && *typeNameFlag_.Value() != flag) return;
    TakePairs(typeName_, group, std::size_t{2} * (second.information & 1u), kThird, station_.programTypeName,
              Form::kName);
}

// Type 14 (3.1.5.19).
void CGroupReader::ReadOthers(const Group& group) {
    others_.TakeA(group);
    station_.others = others_.List();
}

void CGroupReader::ReadOthersB(const Group& group) {
    others_.TakeB(group);
    station_.others = others_.List();
}

// 32 bytes of UTF-8, four a group (IEC 62106-2, group type 15A).
void CGroupReader::ReadLongName(const Group& group) {
    TakePairs(longName_, group, std::size_t{2} * (group.blocks[kSecond].information & 7u), kThird,
              station_.longServiceName, Form::kUtf8);
}

// Block 4 repeats block 2 (3.1.5.21).
void CGroupReader::ReadFastTuning(const Group& group) {
    const Block& second = group.blocks[kSecond];
    ReadSwitches(second.information, second.Certain());
}

}  // namespace sdr::rds
