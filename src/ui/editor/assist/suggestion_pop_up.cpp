#include "ui/editor/assist/suggestion_pop_up.h"

#include <algorithm>

#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kRow = 24, kRowsSeen = 8, kPad = 4, kFooter = 28, kIconX = 12, kNameX = 32,
              kIcon = 14, kListWidth = 264, kCardWidth = 384, kRight = 20, kInset = 3, kBar = 4,
              kGap = 12;

Icon iconOf(Suggestion::Kind kind) {
    using Kind = Suggestion::Kind;
    switch (kind) {
        case Kind::function:
        case Kind::method:
            return Icon::function;
        case Kind::classType:
        case Kind::interfaceType:
            return Icon::classIcon;
        case Kind::enumType:
        case Kind::enumValue:
            return Icon::enumIcon;
        case Kind::field:
            return Icon::field;
        case Kind::nameSpace:
            return Icon::object;
        case Kind::keyword:
            return Icon::text;
        case Kind::snippet:
            return Icon::copy;
        default:
            return Icon::variable;
    }
}

}  // namespace

/// The list at the left, with a line below it that tells the keys.
class SuggestionRows : public PaintedWindow {
  public:
    SuggestionRows(wxWindow* parent, const Look& look, std::function<void(std::size_t)> taken)
        : PaintedWindow(parent, look, false) {
        Bind(wxEVT_LEFT_DOWN, [this, taken](wxMouseEvent& event) {
            const int row = (event.GetY() - dip(kPad)) / dip(kRow);
            if (list_ && event.GetY() >= dip(kPad) && row < kRowsSeen)
                taken(first_ + static_cast<std::size_t>(row));
        });
        Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) {
            if (list_) scroll(event.GetWheelRotation() < 0 ? 3 : -3);
        });
        native::setAccessibleRole(*this, native::AccessibleRole::list);
    }

    void show(const SuggestionList& list) {
        list_ = &list;
        const std::size_t chosen = list.chosen();
        first_ = std::min(first_, last());
        if (chosen < first_) first_ = chosen;
        if (chosen >= first_ + kRowsSeen) first_ = chosen - kRowsSeen + 1;
        if (const SuggestionList::Row* row = list.chosenRow())
            setAccessibleName("Completion: " +
                              fromUtf8(row->suggestion.label + ", " + row->suggestion.detail));
        Refresh();
    }
    void forget() { list_ = nullptr; }
    int wantedHeight() const {
        const auto rows = std::min<int>(static_cast<int>(list_->count()), kRowsSeen);
        return rows * dip(kRow) + 2 * dip(kPad) + dip(kFooter) + 2;
    }

  private:
    std::size_t last() const { return list_->count() > kRowsSeen ? list_->count() - kRowsSeen : 0; }
    void scroll(int rows) {
        const auto wanted = static_cast<int>(first_) + rows;
        first_ = static_cast<std::size_t>(std::clamp(wanted, 0, static_cast<int>(last())));
        Refresh();
    }

    void paintName(wxGraphicsContext& context, const SuggestionList::Row& row, int y, int limit) {
        const wxString name = fromUtf8(row.suggestion.label);
        const auto strong = [&](std::size_t at) {
            const auto& letters = row.match.letters;
            return std::find(letters.begin(), letters.end(), at) != letters.end();
        };
        int x = dip(kNameX);
        for (std::size_t at = 0; at < name.length();) {
            std::size_t end = at + 1;
            while (end < name.length() && strong(end) == strong(at)) ++end;
            const wxFont& font = strong(at) ? look().codeStrong : look().code;
            const wxString part = shortened(*this, name.Mid(at, end - at), font, limit - x);
            text(context, part, font, strong(at) ? look()->accent : look()->text, x, y, dip(kRow));
            x += textWidth(*this, part, font);
            at = end;
        }
    }

    void paintRow(wxGraphicsContext& context, std::size_t index, int y) {
        const SuggestionList::Row& row = list_->row(index);
        const wxSize size = GetClientSize();
        const bool chosen = index == list_->chosen();
        if (chosen)
            rounded(context, {dip(kInset), y, size.x - dip(kInset + 9), dip(kRow)}, dip(4),
                    look()->selected);
        paintIcon(context, iconOf(row.suggestion.kind), dip(kIconX), y + dip((kRow - kIcon) / 2),
                  dip(kIcon), colourOf(look()->secondText));
        const bool snippet = row.suggestion.snippet;
        wxString right = fromUtf8(snippet ? row.suggestion.detail : row.parts.type);
        right = shortened(*this, right, look().small, size.x / 2 - dip(kRight));
        const int x = size.x - dip(kRight) - textWidth(*this, right, look().small);
        paintName(context, row, y, x - dip(kGap));
        text(context, right, look().small, chosen ? look()->secondOnSelected : look()->secondText,
             x, y, dip(kRow));
    }

    void paint(wxGraphicsContext& context) override {
        const wxSize size = GetClientSize();
        fill(context, wxRect(size), look()->popUpEdge);
        fill(context, wxRect(size).Deflate(1), look()->popUp);
        if (!list_) return;
        int y = dip(kPad) + 1;
        for (std::size_t i = first_; i < list_->count() && i < first_ + kRowsSeen; ++i) {
            paintRow(context, i, y);
            y += dip(kRow);
        }
        const int footer = size.y - dip(kFooter) - 1;
        fill(context, {1, footer, size.x - 2, 1}, look()->hair);
        text(context, words(list_->enterTakes() ? "Enter or Tab takes it" : "Tab takes it"),
             look().small, look()->secondText, dip(kIconX), footer, dip(kFooter));
        text(context, "Esc", look().small, look()->secondText,
             size.x - dip(14) - textWidth(*this, "Esc", look().small), footer, dip(kFooter));
        if (list_->count() <= kRowsSeen) return;
        const int track = kRowsSeen * dip(kRow);
        const auto count = static_cast<int>(list_->count());
        const int height = std::max(track * kRowsSeen / count, dip(20));
        const int top = dip(kPad) + (track - height) * static_cast<int>(first_) /
                                        std::max(static_cast<int>(last()), 1);
        rounded(context, {size.x - dip(kBar + 4), top, dip(kBar), height}, dip(kBar) / 2.0,
                look()->pressed);
    }

    const SuggestionList* list_ = nullptr;
    std::size_t first_ = 0;
};

SuggestionPopUp::SuggestionPopUp(wxWindow* parent, const Look& look,
                                 std::function<void(std::size_t)> taken)
    : PopUp(parent),
      look_(look),
      rows_(new SuggestionRows(this, look, std::move(taken))),
      card_(new HelpCard(this, look)) {
    Bind(wxEVT_SHOW, [this](wxShowEvent& event) {
        if (!event.IsShown()) rows_->forget();
        event.Skip();
    });
}

void SuggestionPopUp::show(const SuggestionList& list, const wxRect& line) {
    rows_->show(list);
    const int rowsHeight = rows_->wantedHeight();
    HelpContent content;
    if (const SuggestionList::Row* row = list.chosenRow()) {
        content.head = row->parts;
        content.help = helpTextOf(row->suggestion.documentation);
        if (row->forms > 1)
            content.help.paragraphs.push_back(toUtf8(
                wxString::Format(words("There are %zu functions of this name."), row->forms)));
        if (!content.help.code.empty())
            content.footer = words("F1 opens the manual at this function");
    }
    described_ = fromUtf8(content.head.name);
    const bool described = !content.head.rest.empty() || !content.help.empty();
    int width = FromDIP(kListWidth), height = rowsHeight;
    if (described) {
        card_->setContent(std::move(content));
        height = std::max(rowsHeight, card_->heightFor(FromDIP(kCardWidth)) + 2);
        card_->SetSize(width - 1, 0, FromDIP(kCardWidth), height);
        width += FromDIP(kCardWidth) - 1;
    }
    card_->Show(described);
    rows_->SetSize(0, 0, FromDIP(kListWidth), height);
    wxRect place = line;
    place.x -= FromDIP(kNameX);
    showBeside(place, {width, height});
}

}  // namespace korvant::ui
