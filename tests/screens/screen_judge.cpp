#include "tests/screens/screen_judge.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "tests/screens/shown_fields.h"

namespace screens {
namespace {

constexpr char kBarClass[] = "HHTaskBar";
constexpr char kBoxClass[] = "#32770", kArrowsClass[] = "msctls_updown32";
constexpr int kFieldFrame = 2;
const std::string kOwnModules[] = {"UI.exe", "COREDLL.dll", "AYGSHELL.dll"};
constexpr UINT kDots = DT_END_ELLIPSIS | DT_WORD_ELLIPSIS;

LONG Width(const RECT& box) {
    return box.right - box.left;
}
LONG Height(const RECT& box) {
    return box.bottom - box.top;
}
bool Meet(const RECT& a, const RECT& b) {
    RECT both = {};
    return IntersectRect(&both, &a, &b) != FALSE;
}
bool Holds(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

std::string Words(const RECT& box) {
    std::ostringstream words;
    words << box.left << "," << box.top << " " << Width(box) << "x" << Height(box);
    return words.str();
}
std::string Name(const Item& item) {
    std::ostringstream name;
    name << item.className;
    if (item.id > 0) name << " " << item.id;
    if (!item.text.empty()) name << " \"" << item.text << "\"";
    return name.str();
}

class Judge {
  public:
    Judge(const std::vector<Item>& now, const std::vector<Item>& drawn, const Display& display,
          const char* dots)
        : now_(now), drawn_(drawn), display_(display), dots_(dots == nullptr ? "" : dots) {}

    std::vector<std::string> Faults() {
        for (const Item& item : now_) {
            if (item.kind == Kind::kText) LookForRoom(item);
            if (item.kind == Kind::kRows) LookAtRows(item);
            if (item.kind == Kind::kWindow) LookAtPlace(item);
        }
        for (const Item& item : drawn_) {
            LookForRoom(item);
            LookForLoss(item);
        }
        LookAtNeighbours();
        LookAtFields();
        return faults_;
    }

  private:
    void Say(const std::string& fault) {
        if (std::find(faults_.begin(), faults_.end(), fault) == faults_.end()) faults_.push_back(fault);
    }

    bool MayEndInDots(const Item& item) const {
        return (item.style & kDots) != 0 && !dots_.empty() && item.text == dots_;
    }

    void LookForRoom(const Item& item) {
        const bool wide = item.need.cx > Width(item.room) && !MayEndInDots(item);
        if (!wide && item.need.cy <= Height(item.room)) return;
        std::ostringstream fault;
        fault << Name(item) << " takes " << item.need.cx << "x" << item.need.cy << " and has "
              << Width(item.room) << "x" << Height(item.room);
        Say(fault.str());
    }

    // A control of the host's may lay the soft edge of a letter beside its place.
    void LookForLoss(const Item& item) {
        const bool own = std::find(std::begin(kOwnModules), std::end(kOwnModules), item.className) !=
                         std::end(kOwnModules);
        if (item.lost > (own ? 0 : 1))
            Say(Name(item) + " loses " + std::to_string(item.lost) + " columns of its letters");
    }

    const Item* WindowOf(std::uint64_t handle) const {
        for (const Item& item : now_) {
            if (item.kind == Kind::kWindow && item.window == handle) return &item;
        }
        return nullptr;
    }

    // The main screen's list shows whole rows. The lists of dialogs scroll as they are.
    void LookAtRows(const Item& item) {
        const Item* const list = WindowOf(item.window);
        const Item* const parent = list == nullptr ? nullptr : WindowOf(list->parent);
        if (parent == nullptr || parent->className != kMainClass || item.need.cy <= Height(item.room)) return;
        Say(Name(item) + ": its last row ends at " + std::to_string(item.need.cy) + ", the list at " +
            std::to_string(Height(item.room)));
    }

    // A window on its own stays in the display and leaves the shell's bar free; a control stays in its
    // window. What a control of the system has within itself is its own affair.
    void LookAtPlace(const Item& item) {
        const Item* const parent = WindowOf(item.parent);
        RECT room = display_.all;
        if (parent != nullptr) {
            if (!HasControls(*parent)) return;
            room = parent->room;
        } else if (item.className != kBarClass) {
            room.top += display_.barRows;
        }
        if (!Holds(room, item.place))
            Say(Name(item) + " at " + Words(item.place) + " leaves its room " + Words(room));
    }

    static bool HasControls(const Item& window) {
        return window.className == kMainClass || window.className == kBoxClass;
    }
    // Arrows at a field stand on the field's frame.
    static RECT Covered(const Item& item) {
        RECT place = item.place;
        if (item.className == kArrowsClass) InflateRect(&place, -kFieldFrame, 0);
        return place;
    }

    static bool IsFrame(const Item& item) {
        return item.className == "Button" && (item.style & BS_TYPEMASK) == BS_GROUPBOX;
    }

    void LookAtNeighbours() {
        for (auto one = now_.begin(); one != now_.end(); ++one) {
            if (one->kind != Kind::kWindow || WindowOf(one->parent) == nullptr || IsFrame(*one)) continue;
            for (auto other = one + 1; other != now_.end(); ++other) {
                if (other->kind != Kind::kWindow || other->parent != one->parent || IsFrame(*other)) continue;
                if (Meet(Covered(*one), Covered(*other)))
                    Say(Name(*one) + " at " + Words(one->place) + " and " + Name(*other) + " at " +
                        Words(other->place) + " cover one another");
            }
        }
    }

    // The fields of the main screen, each as it was drawn last since the window has its size: no text stands
    // on another one or under a control. That a field's ground covers a neighbour's text for a moment is no
    // fault: the monitor paints it again.
    void LookAtFields() {
        const Item* const main = MainWindow(now_);
        if (main == nullptr) return;
        const std::vector<const Item*> fields = ShownFields(*main, drawn_);
        for (const Item* field : fields) {
            if (field->text.empty()) continue;
            LookAtControlsOver(*field, *main);
            for (const Item* other : fields) {
                if (other == field || !Meet(other->ink, field->ink)) continue;
                Say(Name(*other) + " at " + Words(other->ink) + " stands on " + Name(*field) + " at " +
                    Words(field->ink));
            }
        }
    }

    void LookAtControlsOver(const Item& field, const Item& main) {
        for (const Item& control : now_) {
            if (control.kind != Kind::kWindow || control.parent != main.window) continue;
            RECT place = control.place;
            OffsetRect(&place, -main.room.left, -main.room.top);
            if (Meet(place, field.ink))
                Say(Name(control) + " at " + Words(place) + " covers " + Name(field) + " at " +
                    Words(field.ink));
        }
    }

    const std::vector<Item>& now_;
    const std::vector<Item>& drawn_;
    const Display& display_;
    std::string dots_;
    std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> FaultsOf(const std::vector<Item>& now, const std::vector<Item>& drawn,
                                  const Display& display, const char* mayEndInDots) {
    return Judge(now, drawn, display, mayEndInDots).Faults();
}

}  // namespace screens
