#include "handset/fmdevice/sdr/rds/other_networks.h"

#include <algorithm>

#include "handset/fmdevice/sdr/rds/characters.h"

namespace sdr::rds {
namespace {

constexpr std::size_t kMostMapped = 25;  // as many as a list of method A has (3.2.1.6.3)

}  // namespace

// The variants of group 14A (3.1.5.19, figure 32).
const std::array<COtherNetworks::Variant, 16> COtherNetworks::kVariants = {
    TakeName,         TakeName,   TakeName,   TakeName,    // 0 to 3: PS, two letters each
    TakeAlternatives,                                      // 4: AF by method A
    TakeMapped,       TakeMapped, TakeMapped, TakeMapped,  // 5 to 8: a tuned and a mapped frequency
    Ignore,                                                // 9: mapped on long or medium wave
    Ignore,           Ignore,                              // 10, 11: not allocated
    TakeLinkage,                                           // 12
    TakeType,                                              // 13: PTY and TA
    TakeItem,                                              // 14: PIN
    Ignore,                                                // 15: for the broadcasters' own use
};

void COtherNetworks::Restart() {
    networks_.clear();
    uses_ = 0;
}

void COtherNetworks::Lost() {
    for (Network& network : networks_) network.name.Lost();
}

COtherNetworks::Network& COtherNetworks::Of(std::uint16_t pi, bool certain) {
    ++uses_;
    const auto known = std::find_if(networks_.begin(), networks_.end(),
                                    [pi](const Network& network) { return network.pi == pi; });
    if (known != networks_.end()) {
        known->believed = true;
        known->used = uses_;
        return *known;
    }
    if (networks_.size() == kMost) {
        networks_.erase(std::min_element(networks_.begin(), networks_.end(),
                                         [](const Network& a, const Network& b) { return a.used < b.used; }));
    }
    networks_.emplace_back();
    networks_.back().pi = pi;
    networks_.back().believed = certain;
    networks_.back().used = uses_;
    return networks_.back();
}

void COtherNetworks::TakeName(Network& network, std::size_t variant, std::uint16_t word, bool certain) {
    network.name.Take(variant, word, certain);
}

void COtherNetworks::TakeAlternatives(Network& network, std::size_t, std::uint16_t word, bool certain) {
    network.alternatives.Take(word, certain);
}

void COtherNetworks::TakeMapped(Network& network, std::size_t, std::uint16_t word, bool certain) {
    const auto tuned = FrequencyOfCode(static_cast<std::uint8_t>(word >> 8));
    const auto other = FrequencyOfCode(static_cast<std::uint8_t>(word & 0xFF));
    if (!tuned || !other || !network.mappedSeen.Note(word, certain)) return;
    const MappedFrequency mapped{*tuned, *other};
    if (std::find(network.mapped.begin(), network.mapped.end(), mapped) != network.mapped.end()) return;
    if (network.mapped.size() < kMostMapped) network.mapped.push_back(mapped);
}

void COtherNetworks::TakeLinkage(Network& network, std::size_t, std::uint16_t word, bool certain) {
    network.linkage.Offer(word, certain);
}

// Five bits of PTY, and the announcement in the lowest one (3.1.5.19).
void COtherNetworks::TakeType(Network& network, std::size_t, std::uint16_t word, bool certain) {
    network.programmeType.Offer(word >> 11, certain);
    network.trafficAnnouncement.Offer((word & 1) != 0, certain);
}

void COtherNetworks::TakeItem(Network& network, std::size_t, std::uint16_t word, bool certain) {
    network.itemNumber.Offer(word, certain);
}

void COtherNetworks::Ignore(Network&, std::size_t, std::uint16_t, bool) {}

void COtherNetworks::TakeA(const Group& group) {
    const Block& second = group.blocks[1];
    const Block& third = group.blocks[2];
    const Block& fourth = group.blocks[3];
    if (!third.Received() || !fourth.Received()) return Lost();
    const bool certain = second.Certain() && third.Certain() && fourth.Certain();
    Network& network = Of(fourth.information, second.Certain() && fourth.Certain());
    network.trafficProgramme.Offer((second.information & 0x10) != 0, certain);
    const std::size_t variant = second.information & 0xFu;
    kVariants[variant](network, variant, third.information, certain);
}

// Group 14B says that the other network begins or ends a traffic announcement (3.1.5.19).
void COtherNetworks::TakeB(const Group& group) {
    const Block& second = group.blocks[1];
    const Block& fourth = group.blocks[3];
    if (!fourth.Received()) return;
    const bool certain = second.Certain() && fourth.Certain();
    Network& network = Of(fourth.information, certain);
    network.trafficProgramme.Offer((second.information & 0x10) != 0, certain);
    network.trafficAnnouncement.Offer((second.information & 0x08) != 0, certain);
}

std::vector<OtherNetwork> COtherNetworks::List() const {
    std::vector<OtherNetwork> list;
    for (const Network& network : networks_) {
        if (!network.believed) continue;
        OtherNetwork other;
        other.pi = network.pi;
        if (network.name.Whole()) other.serviceName = LettersOf(*network.name.Whole());
        other.alternatives = network.alternatives.List();
        other.mapped = network.mapped;
        other.trafficProgramme = network.trafficProgramme.Value();
        other.trafficAnnouncement = network.trafficAnnouncement.Value();
        other.programmeType = network.programmeType.Value();
        other.itemNumber = network.itemNumber.Value();
        other.linkage = network.linkage.Value();
        list.push_back(std::move(other));
    }
    return list;
}

}  // namespace sdr::rds
