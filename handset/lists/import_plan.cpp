// Lists are found by what the store takes for the same name, channels by their frequency.
#include "handset/lists/import_plan.h"

#include <algorithm>
#include <map>

namespace lists {
namespace {

// Why a text cannot be stored; empty when it can.
std::string FaultOf(const std::u16string& text, std::size_t longest, const char* what) {
    if (text.find(u'\0') != std::u16string::npos) return std::string(what) + " holds a character of number 0";
    if (text.size() <= longest) return {};
    return std::string(what) + " has " + std::to_string(text.size()) + " characters, more than " +
           std::to_string(longest);
}

std::string FaultOf(const Channel& channel) {
    if (channel.frequency_10kHz < kBandBottom_10kHz || channel.frequency_10kHz > kBandTop_10kHz) {
        return FrequencyText(channel.frequency_10kHz) + " is outside 87.5 to 108 MHz";
    }
    const std::string fault = FaultOf(channel.name, kLongestText, "its name");
    return fault.empty() ? FaultOf(channel.guide, kLongestText, "its guide") : fault;
}

class CPlanner {
  public:
    CPlanner(const std::vector<ChannelList>& stored, const NameKey& key) : key_(key) {
        for (const ChannelList& list : stored) {
            Entry& entry = Find(list);
            entry.isNew = !list.listed && entry.isNew;
            for (const Channel& channel : list.channels)
                entry.known.emplace(channel.frequency_10kHz, &channel);
        }
    }

    ImportPlan Plan(const ListFile& file) {
        plan_.refused = file.refused;
        for (const ChannelList& list : file.lists) TakeList(list);
        for (Entry* entry : order_) Add(*entry);
        std::stable_sort(plan_.refused.begin(), plan_.refused.end(),
                         [](const Refusal& one, const Refusal& other) { return one.line < other.line; });
        return std::move(plan_);
    }

  private:
    struct Entry {
        std::u16string name;
        bool isNew = true;
        bool named = false;  // by the file
        std::multimap<std::uint32_t, const Channel*> known;
        std::vector<Channel> added;
    };

    Entry& Find(const ChannelList& list) {
        const auto [at, made] = entries_.try_emplace(key_(list.name));
        if (made) at->second.name = list.name;
        return at->second;
    }

    void Refuse(std::size_t line, const std::string& why) { plan_.refused.push_back({line, why}); }

    void TakeList(const ChannelList& list) {
        const std::string fault = FaultOf(list.name, kLongestListName, "its name");
        if (!fault.empty()) return Refuse(list.line, "the list " + Quoted(list.name) + ": " + fault);
        Entry& entry = Find(list);
        if (entry.name != list.name) {
            return Refuse(list.line, "the list " + Quoted(list.name) + ": the phone cannot tell it from " +
                                         Quoted(entry.name));
        }
        if (!entry.named) order_.push_back(&entry);
        entry.named = true;
        for (const Channel& channel : list.channels) TakeChannel(channel, entry);
    }

    void TakeChannel(const Channel& channel, Entry& entry) {
        const std::string fault = FaultOf(channel);
        if (!fault.empty()) return Refuse(channel.line, Quoted(channel.name) + ": " + fault);
        const auto [first, last] = entry.known.equal_range(channel.frequency_10kHz);
        if (first == last) {
            entry.known.emplace(channel.frequency_10kHz, &channel);
            entry.added.push_back(channel);
            return;
        }
        const bool same = std::any_of(first, last, [&](const auto& row) {
            return row.second->name == channel.name && row.second->guide == channel.guide;
        });
        if (same) {
            ++plan_.present;
            return;
        }
        Refuse(channel.line, Quoted(channel.name) + ": " + FrequencyText(channel.frequency_10kHz) +
                                 " is in the list " + Quoted(entry.name) + " already, as " +
                                 Quoted(first->second->name));
    }

    void Add(Entry& entry) {
        if (!entry.isNew && entry.added.empty()) return;
        plan_.newLists += entry.isNew ? 1 : 0;
        plan_.newChannels += entry.added.size();
        plan_.lists.push_back({{entry.name, std::move(entry.added), 0, true}, entry.isNew});
    }

    const NameKey& key_;
    std::map<std::string, Entry> entries_;
    std::vector<Entry*> order_;  // in which the file names them
    ImportPlan plan_;
};

}  // namespace

ImportPlan PlanImport(const std::vector<ChannelList>& stored, const ListFile& file, const NameKey& key) {
    return CPlanner(stored, key).Plan(file);
}

}  // namespace lists
