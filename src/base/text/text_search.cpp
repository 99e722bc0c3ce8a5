#include "base/text/text_search.h"

#include <algorithm>

namespace korvant {

namespace {

/// Up to this length the plain search costs at most a few steps per byte.
constexpr std::size_t kShort = 32;

struct Forward {
    std::string_view text;
    unsigned char operator[](std::size_t i) const { return static_cast<unsigned char>(text[i]); }
    std::size_t size() const { return text.size(); }
};

struct Backward {
    std::string_view text;
    unsigned char operator[](std::size_t i) const {
        return static_cast<unsigned char>(text[text.size() - 1 - i]);
    }
    std::size_t size() const { return text.size(); }
};

/// Where the largest suffix begins, minus one, and its period.
struct Suffix {
    std::size_t before;
    std::size_t period;
};

template <class Text>
Suffix largestSuffix(const Text& wanted, bool reversedOrder) {
    std::size_t before = std::size_t{} - 1, j = 0, k = 1, period = 1;
    while (j + k < wanted.size()) {
        const unsigned char a = wanted[j + k], b = wanted[before + k];
        if (reversedOrder ? a > b : a < b) {
            j += k;
            k = 1;
            period = j - before;
        } else if (a == b) {
            const bool whole = k == period;
            j += whole ? period : 0;
            k = whole ? 1 : k + 1;
        } else {
            before = j++;
            k = period = 1;
        }
    }
    return {before, period};
}

/// The two-way algorithm. Source: M. Crochemore and D. Perrin, Two-way string-matching, Journal of
/// the ACM 38 (1991).
template <class Text>
class TwoWay {
  public:
    explicit TwoWay(const Text& wanted) : wanted_(wanted) {
        const Suffix one = largestSuffix(wanted, false), other = largestSuffix(wanted, true);
        const Suffix& longer = one.before + 1 > other.before + 1 ? one : other;
        critical_ = longer.before + 1;
        period_ = longer.period;
        periodic_ = repeats();
        if (!periodic_) period_ = std::max(critical_, wanted.size() - critical_) + 1;
    }

    std::size_t in(const Text& text) const {
        std::size_t position = 0, known = 0;
        while (position + wanted_.size() <= text.size()) {
            std::size_t i = std::max(critical_, known);
            while (i < wanted_.size() && wanted_[i] == text[position + i]) ++i;
            if (i < wanted_.size()) {
                position += i - critical_ + 1;
                known = 0;
                continue;
            }
            i = critical_;
            while (i > known && wanted_[i - 1] == text[position + i - 1]) --i;
            if (i <= known) return position;
            position += period_;
            known = periodic_ ? wanted_.size() - period_ : 0;
        }
        return std::string_view::npos;
    }

  private:
    bool repeats() const {
        if (critical_ + period_ > wanted_.size()) return false;
        for (std::size_t i = 0; i < critical_; ++i)
            if (wanted_[i] != wanted_[i + period_]) return false;
        return true;
    }

    const Text& wanted_;
    std::size_t critical_ = 0;
    std::size_t period_ = 0;
    bool periodic_ = false;
};

}  // namespace

std::size_t searchForward(std::string_view text, std::string_view wanted) {
    if (wanted.size() <= kShort) return text.find(wanted);
    const Forward pattern{wanted};
    return TwoWay(pattern).in(Forward{text});
}

std::size_t searchBackward(std::string_view text, std::string_view wanted) {
    if (wanted.size() <= kShort) return text.rfind(wanted);
    const Backward pattern{wanted};
    const std::size_t found = TwoWay(pattern).in(Backward{text});
    return found == std::string_view::npos ? found : text.size() - found - wanted.size();
}

}  // namespace korvant
