// A value that is believed when it was received beyond doubt, or several times alike. Portable.
#pragma once

#include <optional>

namespace sdr::rds {

template <typename T>
class CConfirmedValue {
  public:
    // `needed`: how many sights in a row are enough when none is beyond doubt.
    explicit CConfirmedValue(int needed = 2) : needed_(needed) {}
    void Restart() {
        value_.reset();
        candidate_.reset();
    }
    // True when the value has changed by this.
    bool Offer(const T& value, bool certain) {
        if (value_ && *value_ == value) {
            candidate_.reset();
            return false;
        }
        seen_ = candidate_ && *candidate_ == value ? seen_ + 1 : 1;
        candidate_ = value;
        if (!certain && seen_ < needed_) return false;
        value_ = value;
        candidate_.reset();
        return true;
    }
    const std::optional<T>& Value() const { return value_; }

  private:
    int needed_;
    int seen_ = 0;
    std::optional<T> value_, candidate_;
};

}  // namespace sdr::rds
