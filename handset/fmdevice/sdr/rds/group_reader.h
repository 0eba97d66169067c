// Reads what groups say of the station. Portable.
#pragma once

#include <array>
#include <cstdint>

#include "handset/fmdevice/sdr/rds/alternatives_reader.h"
#include "handset/fmdevice/sdr/rds/clock_reader.h"
#include "handset/fmdevice/sdr/rds/confirmed.h"
#include "handset/fmdevice/sdr/rds/group.h"
#include "handset/fmdevice/sdr/rds/other_networks.h"
#include "handset/fmdevice/sdr/rds/radio_text_plus.h"
#include "handset/fmdevice/sdr/rds/station.h"
#include "handset/fmdevice/sdr/rds/text_voter.h"

namespace sdr::rds {

class CGroupReader {
  public:
    void Restart();
    // A block as soon as it is decided: the PI code is known before its group is whole.
    void TakeBlock(std::size_t place, const Block& block, double now_s);
    void TakeGroup(const Group& group, double now_s);
    const Station& Current() const { return station_; }

  private:
    using Reader = void (CGroupReader::*)(const Group&);
    // A name with all its blanks, a text without those at its end, or UTF-8.
    enum class Form { kName, kText, kUtf8 };
    // By type times two, plus one for version B.
    static const std::array<Reader, kGroupKinds> kReaders;

    void TakePi(std::uint16_t pi, bool certain);
    void ReadTuning(const Group& group);
    void ReadTuningB(const Group& group);
    void ReadLabels(const Group& group);
    void ReadRadioText(const Group& group);
    void ReadRadioTextB(const Group& group);
    void ReadApplication(const Group& group);
    void ReadClock(const Group& group);
    void ReadTypeName(const Group& group);
    void ReadOthers(const Group& group);
    void ReadOthersB(const Group& group);
    void ReadLongName(const Group& group);
    void ReadFastTuning(const Group& group);
    void ReadNothing(const Group&) {}

    void ReadBasics(const Block& second);
    void ReadSwitches(std::uint16_t bits, bool certain);
    void ReadPlus(const Group& group);
    void TakeRadioTextFlag(bool flag, bool certain);
    void TakePairs(CTextVoter& voter, const Group& group, std::size_t firstPair, std::size_t firstBlock,
                   Text& text, Form form);
    [[nodiscard]] static std::optional<std::string> Shown(const std::string& codes, Form form);
    void Show(const CTextVoter& voter, bool whole, Text& text, Form form) const;
    void LoseTexts();

    Station station_;
    CConfirmedValue<std::uint16_t> pi_;
    CConfirmedValue<int> type_;
    CConfirmedValue<bool> trafficProgramme_, trafficAnnouncement_, music_;
    std::array<CConfirmedValue<bool>, 4> identification_;
    CConfirmedValue<std::uint16_t> country_, language_;
    CConfirmedValue<bool> textFlag_, typeNameFlag_;
    std::array<CConfirmedValue<std::uint16_t>, kGroupKinds> applications_;
    CTextVoter name_{4, CTextVoter::Length::kFixed, 3};
    CTextVoter text_{32, CTextVoter::Length::kUpToEnd};
    CTextVoter typeName_{4, CTextVoter::Length::kFixed};
    CTextVoter longName_{16, CTextVoter::Length::kUpToEnd};
    CAlternativesReader alternatives_;
    CClockReader clock_;
    CRadioTextPlus plus_;
    COtherNetworks others_;
    double now_s_ = 0.0;
};

}  // namespace sdr::rds
