#include "tests/screens/screen_item.h"

#include <sstream>

namespace screens {
namespace {

// Parts of a line, and lines, are held apart by what no text of them has.
std::string WithoutBreaks(std::string text) {
    for (char& character : text) {
        if (character == '\t' || character == '\n' || character == '\r') character = ' ';
    }
    return text;
}

std::ostream& operator<<(std::ostream& out, const RECT& box) {
    return out << box.left << '\t' << box.top << '\t' << box.right << '\t' << box.bottom;
}
std::istream& operator>>(std::istream& in, RECT& box) {
    return in >> box.left >> box.top >> box.right >> box.bottom;
}

}  // namespace

std::string ToUtf8(const std::wstring& text) {
    std::string bytes(text.size() * 3, '\0');
    bytes.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr)));
    return bytes;
}

std::string ToLine(const Item& item) {
    std::ostringstream line;
    line << static_cast<int>(item.kind) << '\t' << item.window << '\t' << item.parent << '\t' << item.id
         << '\t' << item.style << '\t' << item.place << '\t' << item.room << '\t' << item.need.cx << '\t'
         << item.need.cy << '\t' << item.ink << '\t' << item.ground.cx << '\t' << item.ground.cy << '\t'
         << item.lost << '\t' << WithoutBreaks(item.className) << '\t' << WithoutBreaks(item.text) << '\n';
    return line.str();
}

Item FromLine(const std::string& line) {
    std::istringstream in(line);
    Item item;
    int kind = 0;
    in >> kind >> item.window >> item.parent >> item.id >> item.style >> item.place >> item.room >>
        item.need.cx >> item.need.cy >> item.ink >> item.ground.cx >> item.ground.cy >> item.lost;
    item.kind = static_cast<Kind>(kind);
    in.ignore();
    std::getline(in, item.className, '\t');
    std::getline(in, item.text);
    return item;
}

}  // namespace screens
