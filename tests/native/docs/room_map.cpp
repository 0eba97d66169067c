#include "tests/native/docs/room_map.h"

#include <algorithm>
#include <regex>

namespace test {
namespace {

// Everything that can be reached from a room, itself only by a circle.
std::set<std::string> ReachedFrom(const Rooms& rooms, const std::string& from) {
    std::set<std::string> reached;
    std::vector<std::string> open = {from};
    while (!open.empty()) {
        const auto room = rooms.find(open.back());
        open.pop_back();
        if (room == rooms.end()) continue;
        for (const std::string& next : room->second) {
            if (reached.insert(next).second) open.push_back(next);
        }
    }
    return reached;
}

}  // namespace

std::vector<std::string> IncludedBy(const std::string& source) {
    const std::string bare = LinesWith(WithoutComments(source), {"#"});
    static const std::regex kInclude(R"((?:^|\n)\s*#\s*include\s*["<]([^">\n]+)[">])");
    std::vector<std::string> included;
    for (std::sregex_iterator match(bare.begin(), bare.end(), kInclude), end; match != end; ++match)
        included.push_back((*match)[1]);
    return included;
}

Rooms RoomsOf(const std::filesystem::path& root, const std::set<std::string>& folders,
              const std::set<std::string>& platform) {
    Rooms rooms;
    for (const auto& file : CppFiles(root, folders)) {
        const std::filesystem::path folder = std::filesystem::relative(file, root).parent_path();
        std::set<std::string>& arrows = rooms[folder.generic_string()];
        for (const std::string& name : IncludedBy(ReadSource(file))) {
            if (std::filesystem::exists(root / name)) {
                arrows.insert(std::filesystem::path(name).parent_path().generic_string());
                continue;
            }
            const auto has = [&](const std::string& one) {
                return std::filesystem::exists(root / one / name);
            };
            const auto found = std::find_if(platform.begin(), platform.end(), has);
            if (found != platform.end()) arrows.insert(*found);
        }
        arrows.erase(folder.generic_string());
    }
    return rooms;
}

std::set<std::set<std::string>> CirclesIn(const Rooms& rooms) {
    std::map<std::string, std::set<std::string>> reached;
    for (const auto& [room, arrows] : rooms) reached[room] = ReachedFrom(rooms, room);
    std::set<std::set<std::string>> circles;
    for (const auto& [room, beyond] : reached) {
        if (beyond.count(room) == 0) continue;
        std::set<std::string> circle;
        for (const std::string& other : beyond) {
            if (reached[other].count(room) != 0) circle.insert(other);
        }
        circles.insert(circle);
    }
    return circles;
}

}  // namespace test
