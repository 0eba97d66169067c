// Channel lists as JSON: the library parses, and each object learns the line on which it begins.
#include "handset/lists/json_lists.h"

#include <iterator>
#include <nlohmann/json.hpp>
#include <set>

#include "handset/base/utf8.h"

namespace lists {
namespace {

using Json = nlohmann::ordered_json;

constexpr char kFormat[] = "kora-channel-lists";
constexpr int kVersion = 1;
// Put into every object that was read; a member that a file has under this name is lost to it.
constexpr char kLine[] = "\x01line";

// Counts the lines as the parser takes the bytes.
class CLineCountingInput {
  public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CLineCountingInput(const char* at, std::size_t* line) : at_(at), line_(line) {}
    reference operator*() const { return *at_; }
    CLineCountingInput& operator++() {
        *line_ += *at_ == '\n' ? 1 : 0;
        ++at_;
        return *this;
    }
    bool operator==(const CLineCountingInput& other) const { return at_ == other.at_; }
    bool operator!=(const CLineCountingInput& other) const { return at_ != other.at_; }

  private:
    const char* at_;
    std::size_t* line_;
};

// What the parser tells on its way: where objects begin, and names that stand twice in one.
class CObjectWatch {
  public:
    explicit CObjectWatch(const std::size_t* line) : line_(line) {}

    bool operator()(int, Json::parse_event_t event, Json& parsed) {
        if (event == Json::parse_event_t::object_start) {
            open_.push_back({*line_, {}});
        } else if (event == Json::parse_event_t::key) {
            const auto& name = parsed.get_ref<const std::string&>();
            if (!open_.back().names.insert(name).second && fault_.empty()) {
                fault_ = "line " + std::to_string(*line_) + ": the name \"" + name +
                         "\" stands twice in one object";
            }
        } else if (event == Json::parse_event_t::object_end) {
            parsed[kLine] = open_.back().line;
            open_.pop_back();
        }
        return true;
    }
    const std::string& Fault() const { return fault_; }

  private:
    struct Object {
        std::size_t line;
        std::set<std::string> names;
    };
    const std::size_t* line_;
    std::vector<Object> open_;
    std::string fault_;
};

// The library's text without the number of its kind of error: "parse error at line 3, column 5: …".
std::string PlainText(const std::exception& error) {
    const std::string text = error.what();
    const std::size_t bracket = text.find("] ");
    return bracket == std::string::npos ? text : text.substr(bracket + 2);
}

const Json* Member(const Json& object, const char* name) {
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

std::size_t LineOf(const Json& value, std::size_t around) {
    const Json* line = value.is_object() ? Member(value, kLine) : nullptr;
    return line == nullptr ? around : line->get<std::size_t>();
}

// The member's text; false when it is there and is none.
bool TakeText(const Json& object, const char* name, std::u16string* text) {
    const Json* member = Member(object, name);
    if (member == nullptr) return true;
    if (!member->is_string()) return false;
    *text = handset::Utf16(member->get_ref<const std::string&>()).value_or(u"");
    return true;
}

class CListReader {
  public:
    explicit CListReader(ListFile& file) : file_(file) {}

    void TakeDocument(const Json& document) {
        if (!document.is_object()) return Fail("the file is no JSON object");
        const Json* format = Member(document, "format");
        if (format == nullptr || *format != kFormat) {
            return Fail(std::string("its \"format\" is not \"") + kFormat + "\"");
        }
        const Json* version = Member(document, "version");
        if (version == nullptr || *version != kVersion) {
            return Fail("its \"version\" is not " + std::to_string(kVersion));
        }
        const Json* lists = Member(document, "lists");
        if (lists == nullptr || !lists->is_array()) return Fail("it has no array \"lists\"");
        for (const Json& list : *lists) TakeList(list, LineOf(document, 1));
    }

  private:
    void Fail(const std::string& why) { file_.fault = why; }
    void Refuse(std::size_t line, const std::string& why) { file_.refused.push_back({line, why}); }

    void TakeList(const Json& value, std::size_t around) {
        ChannelList list;
        list.line = LineOf(value, around);
        if (!value.is_object()) return Refuse(list.line, "a list that is no object");
        if (Member(value, "name") == nullptr || !TakeText(value, "name", &list.name)) {
            return Refuse(list.line, "a list without a text \"name\"");
        }
        const Json* channels = Member(value, "channels");
        if (channels != nullptr && !channels->is_array()) {
            return Refuse(list.line, "the list " + Quoted(list.name) + ": its \"channels\" are no array");
        }
        if (channels != nullptr) {
            for (const Json& channel : *channels) TakeChannel(channel, list);
        }
        file_.lists.push_back(std::move(list));
    }

    void TakeChannel(const Json& value, ChannelList& list) {
        Channel channel;
        channel.line = LineOf(value, list.line);
        if (!value.is_object()) return Refuse(channel.line, "a channel that is no object");
        if (Member(value, "name") == nullptr || !TakeText(value, "name", &channel.name)) {
            return Refuse(channel.line, "a channel without a text \"name\"");
        }
        const Json* frequency = Member(value, "frequency");
        if (frequency == nullptr || !frequency->is_number()) {
            return Refuse(channel.line, Quoted(channel.name) + ": no \"frequency\" in MHz");
        }
        if (!TakeText(value, "guide", &channel.guide)) {
            return Refuse(channel.line, Quoted(channel.name) + ": its \"guide\" is no text");
        }
        channel.frequency_10kHz = FrequencyOfHertz(frequency->get<double>() * 1e6);
        list.channels.push_back(std::move(channel));
    }

    ListFile& file_;
};

}  // namespace

ListFile ReadJson(const std::string& bytes) {
    ListFile file;
    std::size_t line = 1;
    CObjectWatch watch(&line);
    try {
        const Json document =
            Json::parse(CLineCountingInput(bytes.data(), &line),
                        CLineCountingInput(bytes.data() + bytes.size(), &line), std::ref(watch));
        file.fault = watch.Fault();
        if (file.fault.empty()) CListReader(file).TakeDocument(document);
    } catch (const Json::exception& error) {
        file.fault = PlainText(error);
    }
    return file;
}

std::string WriteJson(const std::vector<ChannelList>& lists) {
    Json array = Json::array();
    for (const ChannelList& list : lists) {
        Json channels = Json::array();
        for (const Channel& channel : list.channels) {
            channels.push_back({{"name", handset::Utf8(channel.name)},
                                {"frequency", channel.frequency_10kHz / 100.0},
                                {"guide", handset::Utf8(channel.guide)}});
        }
        array.push_back({{"name", handset::Utf8(list.name)}, {"channels", std::move(channels)}});
    }
    const Json document = {{"format", kFormat}, {"version", kVersion}, {"lists", std::move(array)}};
    return document.dump(2) + "\n";
}

}  // namespace lists
