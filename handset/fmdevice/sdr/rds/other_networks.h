// What the tuned network says of others: EON, groups 14A and 14B (IEC 62106, 3.2.1.8 and 3.1.5.19). Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "handset/fmdevice/sdr/rds/alternatives_reader.h"
#include "handset/fmdevice/sdr/rds/confirmed.h"
#include "handset/fmdevice/sdr/rds/group.h"
#include "handset/fmdevice/sdr/rds/station.h"
#include "handset/fmdevice/sdr/rds/text_voter.h"

namespace sdr::rds {

class COtherNetworks {
  public:
    void Restart();
    // Groups whose blocks 2, 3 and 4, or 2 and 4, were received.
    void TakeA(const Group& group);
    void TakeB(const Group& group);
    // Something was lost that may have been a part of any name.
    void Lost();
    [[nodiscard]] std::vector<OtherNetwork> List() const;

  private:
    static constexpr std::size_t kMost = 32;

    struct Network {
        std::uint16_t pi = 0;
        bool believed = false;  // the PI code came beyond doubt, or twice
        std::uint64_t used = 0;
        CTextVoter name{4, CTextVoter::Length::kFixed, 3};
        CAlternativesReader alternatives;
        CPairsSeen mappedSeen;
        std::vector<MappedFrequency> mapped;
        CConfirmedValue<bool> trafficProgramme, trafficAnnouncement;
        CConfirmedValue<int> programmeType;
        CConfirmedValue<std::uint16_t> itemNumber, linkage;
    };
    using Variant = void (*)(Network& network, std::size_t variant, std::uint16_t word, bool certain);
    static const std::array<Variant, 16> kVariants;

    static void TakeName(Network& network, std::size_t variant, std::uint16_t word, bool certain);
    static void TakeAlternatives(Network& network, std::size_t variant, std::uint16_t word, bool certain);
    static void TakeMapped(Network& network, std::size_t variant, std::uint16_t word, bool certain);
    static void TakeLinkage(Network& network, std::size_t variant, std::uint16_t word, bool certain);
    static void TakeType(Network& network, std::size_t variant, std::uint16_t word, bool certain);
    static void TakeItem(Network& network, std::size_t variant, std::uint16_t word, bool certain);
    static void Ignore(Network& network, std::size_t variant, std::uint16_t word, bool certain);

    Network& Of(std::uint16_t pi, bool certain);

    std::vector<Network> networks_;
    std::uint64_t uses_ = 0;
};

}  // namespace sdr::rds
