// Walks a DLGTEMPLATE: words, strings, and items on 4-byte boundaries.
#include "tests/unit/resources/dialog_template.h"

#include <cstring>

#include "tests/unit/resources/resource_bytes.h"

namespace {

class Reader {
  public:
    explicit Reader(ResourceBytes bytes) : bytes_(bytes) {}
    template <class Value>
    Value Read() {
        Value value{};
        if (at_ + sizeof value <= bytes_.size) std::memcpy(&value, bytes_.data + at_, sizeof value);
        at_ += sizeof value;
        return value;
    }
    std::wstring Text() {
        std::wstring text;
        for (WCHAR next = Read<WCHAR>(); next != 0; next = Read<WCHAR>()) text += next;
        return text;
    }
    // A name, or 0xFFFF and a number, which is given back; 0 for a name.
    WORD NameOrNumber(std::wstring& name) {
        const std::size_t start = at_;
        if (Read<WORD>() == 0xFFFF) return Read<WORD>();
        at_ = start;
        name = Text();
        return 0;
    }
    void Align() { at_ = (at_ + 3) / 4 * 4; }
    void Skip(std::size_t count) { at_ += count; }

  private:
    ResourceBytes bytes_;
    std::size_t at_ = 0;
};

std::wstring PredefinedClass(WORD number) {
    static const WCHAR* const kNames[] = {L"button",  L"edit",      L"static",
                                          L"listbox", L"scrollbar", L"combobox"};
    return number >= 0x80 && number < 0x80 + ARRAYSIZE(kNames) ? kNames[number - 0x80] : L"";
}

DialogItem ReadItem(Reader& reader) {
    reader.Align();
    const auto head = reader.Read<DLGITEMTEMPLATE>();
    DialogItem item{head.style, head.x, head.y, head.cx, head.cy, head.id, L"", L""};
    if (const WORD number = reader.NameOrNumber(item.className)) item.className = PredefinedClass(number);
    reader.NameOrNumber(item.text);
    reader.Skip(reader.Read<WORD>());  // creation data
    return item;
}

}  // namespace

const DialogItem* DialogTemplate::Find(int id) const {
    for (const DialogItem& item : items)
        if (item.id == id) return &item;
    return nullptr;
}

DialogTemplate LoadDialogTemplate(unsigned id) {
    const ResourceBytes bytes = FindBytes(RT_DIALOG, id);
    if (bytes.data == nullptr) return {};
    Reader reader(bytes);
    const auto head = reader.Read<DLGTEMPLATE>();
    if (HIWORD(head.style) == 0xFFFF) return {};  // the extended form
    DialogTemplate dialog;
    dialog.style = head.style;
    dialog.cx = head.cx;
    dialog.cy = head.cy;
    std::wstring unused;
    reader.NameOrNumber(unused);  // menu
    reader.NameOrNumber(unused);  // class
    dialog.caption = reader.Text();
    if (head.style & DS_SETFONT) {
        dialog.points = reader.Read<WORD>();
        dialog.font = reader.Text();
    }
    for (WORD item = 0; item < head.cdit; ++item) dialog.items.push_back(ReadItem(reader));
    return dialog;
}
