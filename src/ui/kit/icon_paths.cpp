#include "ui/kit/icon_paths.h"

#include <array>
#include <charconv>
#include <iterator>

namespace korvant::ui {
namespace {

/// In the order of Icon.
// clang-format off
constexpr const char* kIcons[] = {
    // newFile
    "stroke 1.3: M4 1.75 H9.25 L12.75 5.25 V14.25 H4 Z M9.25 1.75 V5.25 H12.75",
    // open
    "stroke 1.3: M2 12.75 V3.25 H6 L7.5 5 H13 V7 M2 12.75 L4.25 7 H15 L12.75 12.75 Z",
    // save
    "stroke 1.3: M2.5 2.5 H11 L13.5 5 V13.5 H2.5 Z M5.25 2.5 V6 H10 V2.5 M5 13.5 V9.25 "
    "H11 V13.5",
    // undo
    "stroke 1.4: M5.5 3 L2.5 6 L5.5 9 M2.5 6 H9.5 C14.8 6 14.8 13 9.5 13 H6",
    // redo
    "stroke 1.4: M10.5 3 L13.5 6 L10.5 9 M13.5 6 H6.5 C1.2 6 1.2 13 6.5 13 H10",
    // run
    "fill: M4 2.5 L13.5 8 L4 13.5 Z",
    // goOn
    "fill: M2.5 3 H4.5 V13 H2.5 Z M6.5 3 L14.5 8 L6.5 13 Z",
    // pause
    "fill: M4 3 H6.5 V13 H4 Z M9.5 3 H12 V13 H9.5 Z",
    // stop
    "fill: R 3.5 3.5 9 9 1.5",
    // stepOver
    "stroke 1.4: M2 8.5 C2 2 12 1.5 13.2 7.2 M10 5.2 L13.4 7.6 L14.9 3.7; fill: O 7.5 12 "
    "1.8",
    // stepInto
    "stroke 1.4: M8 1.5 V9 M4.8 6 L8 9.2 L11.2 6; fill: O 8 13 1.8",
    // stepOut
    "stroke 1.4: M8 9.5 V2 M4.8 5 L8 1.8 L11.2 5; fill: O 8 13 1.8",
    // restart
    "stroke 1.4: M13 8 C13 14.5 3 14.5 3 8 C3 2.5 9.5 1.2 12.2 5 M12.6 1.8 V5.2 H9.2",
    // check
    "stroke 1.6: M2.5 8.5 L6 12 L13.5 4",
    // find
    "stroke 1.4: O 7 7 4.4 M10.3 10.3 L14 14",
    // outline
    "stroke 1.4: M6 3.5 H14 M6 8 H14 M6 12.5 H14; fill: O 2.8 3.5 1.1 O 2.8 8 1.1 O 2.8 "
    "12.5 1.1",
    // panelRight
    "stroke 1.3: R 1.75 2.75 12.5 10.5 1.5; fill 2nd: M10 3.25 H13.75 V12.75 H10 Z",
    // panelBottom
    "stroke 1.3: R 1.75 2.75 12.5 10.5 1.5; fill 2nd: M2.25 9 H13.75 V12.75 H2.25 Z",
    // panelLeft
    "stroke 1.3: R 1.75 2.75 12.5 10.5 1.5; fill 2nd: M2.25 3.25 H6 V12.75 H2.25 Z",
    // help
    "stroke 1.3: O 8 8 6.25 M6 6.4 C6 3.6 10.2 3.8 10.1 6.4 C10 8 8 8 8 9.6; fill: O 8 "
    "11.6 0.9",
    // close
    "stroke 1.3: M4 4 L12 12 M12 4 L4 12",
    // down
    "stroke 1.4: M4.5 6.25 L8 9.75 L11.5 6.25",
    // right
    "stroke 1.4: M6.25 4.5 L9.75 8 L6.25 11.5",
    // up
    "stroke 1.4: M4.5 9.75 L8 6.25 L11.5 9.75",
    // plus
    "stroke 1.4: M8 3 V13 M3 8 H13",
    // trash
    "stroke 1.3: M3 4.5 H13 M6 4.5 V2.5 H10 V4.5 M4.2 4.5 L4.8 13.5 H11.2 L11.8 4.5",
    // eye
    "stroke 1.3: M1.5 8 C4.5 2.6 11.5 2.6 14.5 8 C11.5 13.4 4.5 13.4 1.5 8 Z O 8 8 2",
    // more
    "fill: O 3.5 8 1.3 O 8 8 1.3 O 12.5 8 1.3",
    // breakpoint
    "fill: O 8 8 5",
    // breakpointCondition
    "fill: O 8 8 5; stroke 1.3 2nd: M5.8 6.7 H10.2 M5.8 9.3 H10.2",
    // breakpointPrints
    "fill: M8 2 L14 8 L8 14 L2 8 Z; stroke 1.2 2nd: M6 7 H10 M6 9.3 H9",
    // breakpointOff
    "stroke 1.4: O 8 8 4.4",
    // breakpointUnverified
    "stroke 1.4: O 8 8 4.6 M4.9 11.1 L11.1 4.9",
    // stopArrow
    "fill: M2 5.5 H8 V2.5 L14 8 L8 13.5 V10.5 H2 Z",
    // callerArrow
    "stroke 1.2: M2.5 6 H8.5 V3.2 L13.4 8 L8.5 12.8 V10 H2.5 Z",
    // error
    "fill: O 8 8 6.25; stroke 1.4 2nd: M5.7 5.7 L10.3 10.3 M10.3 5.7 L5.7 10.3",
    // warning
    "fill: M8 1.8 L14.8 13.8 H1.2 Z; stroke 1.5 2nd: M8 6 V9.5; fill 2nd: O 8 11.7 0.9",
    // note
    "fill: O 8 8 6.25; stroke 1.6 2nd: M8 7.3 V11.2; fill 2nd: O 8 4.9 1",
    // question
    "fill: O 8 8 6.25; stroke 1.5 2nd: M6.1 6.5 C6.1 3.9 10 4.1 9.9 6.4 C9.8 7.9 8 7.9 8 9.4; fill "
    "2nd: O 8 11.5 0.9",
    // bolt
    "fill: M9.5 1 L3.5 9 H7.3 L6.3 15 L12.5 6.6 H8.7 Z",
    // function
    "stroke 1.4: M11.5 2.6 C8.2 2 8.6 4.5 8.2 7 C7.8 10 7.8 13.8 4.2 13.4 M5.4 7 H10.8",
    // classIcon
    "stroke 1.3: R 2.5 2.5 11 11 2 M5.5 6 H10.5 M5.5 9.5 H8.5",
    // field
    "stroke 1.3: R 3.2 5.2 9.6 5.6 1.4",
    // variable
    "stroke 1.2: M8 2 L13.5 5 V11 L8 14 L2.5 11 V5 Z M2.5 5 L8 8 L13.5 5 M8 8 V14",
    // enumIcon
    "stroke 1.4: M3 3.5 H5 M3 8 H5 M3 12.5 H5 M7.5 3.5 H13 M7.5 8 H13 M7.5 12.5 H13",
    // array
    "stroke 1.4: M5 2.5 H3 V13.5 H5 M11 2.5 H13 V13.5 H11; fill: O 6 8 1 O 10 8 1",
    // object
    "stroke 1.3: R 2.5 3 11 10 1.5 M2.5 6.3 H13.5 M6.5 6.3 V13",
    // number
    "stroke 1.2: M6.2 3 L5 13 M11 3 L9.8 13 M3.2 6.3 H13 M2.8 9.8 H12.6",
    // text
    "stroke 1.3: M3.5 4.8 V3.2 H12.5 V4.8 M8 3.2 V13 M6.2 13 H9.8",
    // pin
    "stroke 1.2: M5.5 2.5 H10.5 L10 7.5 L12.5 10 H3.5 L6 7.5 Z M8 10 V14.5",
    // gear
    "stroke 1.3: O 8 8 2.4 M8 1.5 V3.8 M8 12.2 V14.5 M1.5 8 H3.8 M12.2 8 H14.5 M3.4 3.4 "
    "L5 5 M11 11 L12.6 12.6 M12.6 3.4 L11 5 M5 11 L3.4 12.6",
    // copy
    "stroke 1.2: R 5.5 5.5 8 8 1.2 M10.5 5.5 V3.7 C10.5 3 10 2.5 9.3 2.5 H3.7 C3 2.5 2.5 "
    "3 2.5 3.7 V9.3 C2.5 10 3 10.5 3.7 10.5 H5.5",
    // book
    "stroke 1.2: M8 4 C6.5 2.6 4 2.5 2 3 V12.8 C4 12.3 6.5 12.5 8 13.8 C9.5 12.5 12 12.3 "
    "14 12.8 V3 C12 2.5 9.5 2.6 8 4 Z M8 4 V13.8",
    // clock
    "stroke 1.3: O 8 8 6 M8 4.5 V8 L10.6 9.6",
};
// clang-format on
static_assert(std::size(kIcons) == static_cast<std::size_t>(Icon::count_));

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    std::vector<IconStep> steps() {
        std::vector<IconStep> steps;
        for (; skipBlanks();) {
            if (isLetter(text_[at_])) letter_ = text_[at_++];
            if (!read(steps)) break;
        }
        return steps;
    }

  private:
    static bool isLetter(char sign) { return sign >= 'A' && sign <= 'Z'; }

    bool skipBlanks() {
        while (at_ < text_.size() && text_[at_] == ' ') ++at_;
        return at_ < text_.size();
    }

    bool numbers(double* values, int count) {
        for (int i = 0; i < count; ++i) {
            if (!skipBlanks()) return false;
            const char* end = text_.data() + text_.size();
            const auto read = std::from_chars(text_.data() + at_, end, values[i]);
            if (read.ec != std::errc()) return false;
            at_ = static_cast<std::size_t>(read.ptr - text_.data());
        }
        return true;
    }

    bool add(std::vector<IconStep>& steps, IconStep::Kind kind, int count) {
        IconStep step;
        step.kind = kind;
        if (!numbers(step.values, count)) return false;
        if (count == 2 || count == 6) {
            x_ = step.values[count - 2];
            y_ = step.values[count - 1];
        }
        steps.push_back(step);
        return true;
    }

    bool addStraight(std::vector<IconStep>& steps, double& moved) {
        if (!numbers(&moved, 1)) return false;
        steps.push_back({IconStep::Kind::line, {x_, y_}});
        return true;
    }

    bool read(std::vector<IconStep>& steps) {
        using Kind = IconStep::Kind;
        switch (letter_) {
            case 'M':
                return add(steps, Kind::move, 2);
            case 'L':
                return add(steps, Kind::line, 2);
            case 'H':
                return addStraight(steps, x_);
            case 'V':
                return addStraight(steps, y_);
            case 'C':
                return add(steps, Kind::curve, 6);
            case 'O':
                return add(steps, Kind::circle, 3);
            case 'R':
                return add(steps, Kind::roundedBox, 5);
            case 'Z':
                letter_ = 0;
                steps.push_back({Kind::close, {}});
                return true;
            default:
                return false;
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
    char letter_ = 0;
    double x_ = 0, y_ = 0;
};

/// "stroke 1.3 2nd" or "fill".
IconLayer readHead(std::string_view head) {
    constexpr std::string_view kStroke = "stroke ";
    IconLayer layer;
    layer.secondColour = head.find("2nd") != std::string_view::npos;
    const auto stroke = head.find(kStroke);
    if (stroke != std::string_view::npos)
        std::from_chars(head.data() + stroke + kStroke.size(), head.data() + head.size(),
                        layer.strokeWidth);
    return layer;
}

}  // namespace

std::vector<IconLayer> readIcon(std::string_view text) {
    std::vector<IconLayer> layers;
    while (!text.empty()) {
        const std::string_view part = text.substr(0, text.find(';'));
        const auto colon = part.find(':');
        if (colon != std::string_view::npos) {
            IconLayer layer = readHead(part.substr(0, colon));
            layer.steps = Reader(part.substr(colon + 1)).steps();
            layers.push_back(std::move(layer));
        }
        text.remove_prefix(part.size() == text.size() ? text.size() : part.size() + 1);
    }
    return layers;
}

const std::vector<IconLayer>& iconLayers(Icon icon) {
    static auto* const all = [] {
        auto* read = new std::array<std::vector<IconLayer>, std::size(kIcons)>;
        for (std::size_t i = 0; i < read->size(); ++i) (*read)[i] = readIcon(kIcons[i]);
        return read;
    }();
    return (*all)[static_cast<std::size_t>(icon)];
}

}  // namespace korvant::ui
