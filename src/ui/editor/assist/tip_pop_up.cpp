#include "ui/editor/assist/tip_pop_up.h"

#include <algorithm>

#include "ui/kit/text_conversion.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kWidest = 560, kWidestCall = 760, kMargin = 12, kTop = 6, kRow = 22, kLine = 20;
constexpr std::size_t kMostRows = 8, kMostLines = 3;

}  // namespace

/// All forms of a function; the parameter that is being written is bold.
class SignatureCard : public PaintedWindow {
  public:
    SignatureCard(wxWindow* parent, const Look& look) : PaintedWindow(parent, look, false) {}

    void setContent(const Signatures& signatures) {
        content_ = signatures;
        const std::size_t count = content_.all.size();
        content_.active = std::min(content_.active, count - 1);
        first_ = content_.active >= kMostRows ? content_.active - kMostRows + 1 : 0;
        const HelpText help = helpTextOf(active().documentation);
        help_ = help.paragraphs.empty() ? wxString() : fromUtf8(help.paragraphs[0]);
        setAccessibleName(words("Parameters") + ": " + fromUtf8(active().label));
        Refresh();
    }
    wxSize wantedSize() {
        int width = 0;
        for (const SignatureText& one : content_.all)
            width = std::max(width, textWidth(*this, fromUtf8(one.label), look().codeStrong));
        width = std::min(std::max(width, textWidth(*this, help_, look().plain)),
                         dip(kWidestCall - 2 * kMargin));
        lines_ = wrappedLines(*this, help_, look().plain, width, kMostLines);
        const auto rows = static_cast<int>(shownRows() + (hidden() > 0 ? 1 : 0));
        const int help =
            lines_.empty() ? 0 : static_cast<int>(lines_.size()) * dip(kLine) + 2 * dip(kTop) + 1;
        return {width + 2 * dip(kMargin) + 2, rows * dip(kRow) + 2 * dip(kTop) + help};
    }

  private:
    const SignatureText& active() const { return content_.all[content_.active]; }
    std::size_t shownRows() const { return std::min(content_.all.size() - first_, kMostRows); }
    std::size_t hidden() const { return content_.all.size() - shownRows(); }

    void paintCall(wxGraphicsContext& context, const SignatureText& one, bool isActive, int y) {
        ByteRange strong;
        if (isActive && content_.parameter < one.parameters.size())
            strong = one.parameters[content_.parameter];
        int x = dip(kMargin);
        const int limit = GetClientSize().x - dip(kMargin);
        const auto piece = [&](std::size_t begin, std::size_t end, bool bold) {
            const wxFont& font = bold ? look().codeStrong : look().code;
            const wxString shown =
                shortened(*this, fromUtf8(one.label.substr(begin, end - begin)), font, limit - x);
            const Rgb colour = bold ? look()->accent : isActive ? look()->text : look()->secondText;
            text(context, shown, font, colour, x, y, dip(kRow));
            x += textWidth(*this, shown, font);
        };
        const std::size_t end = std::min(strong.end, one.label.size());
        piece(0, std::min(strong.begin, end), false);
        piece(std::min(strong.begin, end), end, true);
        piece(end, one.label.size(), false);
    }

    void paint(wxGraphicsContext& context) override {
        const wxSize size = GetClientSize();
        fill(context, wxRect(size), look()->popUpEdge);
        fill(context, wxRect(size).Deflate(1), look()->popUp);
        if (content_.all.empty()) return;
        int y = dip(kTop);
        for (std::size_t i = first_; i < first_ + shownRows(); ++i, y += dip(kRow))
            paintCall(context, content_.all[i], i == content_.active, y);
        if (hidden() > 0) {
            text(context, wxString::Format(words("%zu more"), hidden()), look().small,
                 look()->secondText, dip(kMargin), y, dip(kRow));
            y += dip(kRow);
        }
        y += dip(kTop);
        if (lines_.empty()) return;
        fill(context, {1, y, size.x - 2, 1}, look()->hair);
        y += dip(kTop) + 1;
        for (const wxString& line : lines_) {
            text(context, line, look().plain, look()->text, dip(kMargin), y, dip(kLine));
            y += dip(kLine);
        }
    }

    Signatures content_;
    std::size_t first_ = 0;
    wxString help_;
    std::vector<wxString> lines_;
};

TipPopUp::TipPopUp(wxWindow* parent, const Look& look)
    : PopUp(parent), card_(new HelpCard(this, look)), signatures_(new SignatureCard(this, look)) {}

void TipPopUp::showCard(const wxRect& line) {
    signatures_->Hide();
    card_->Show();
    const int width = card_->widthFor(FromDIP(kWidest));
    const wxSize size(width, card_->heightFor(width) + 2);
    card_->SetSize(wxRect(size));
    showBeside(line, size);
}

void TipPopUp::showHelp(const HoverText& help, const wxRect& line) {
    HelpContent content;
    const std::size_t bracket = help.declaration.find('(');
    // The name is the word before the bracket, or the last one.
    std::string name = help.declaration.substr(0, bracket);
    if (const auto value = name.find(" = "); value != std::string::npos) name.resize(value);
    while (!name.empty() && name.back() == ' ') name.pop_back();
    const std::size_t begin = name.find_last_of(" :&@");
    if (begin != std::string::npos) name.erase(0, begin + 1);
    content.head = partsOf(help.declaration, name);
    content.help = helpTextOf(help.documentation);
    card_->setContent(std::move(content));
    showCard(line);
}

void TipPopUp::say(const std::string& sentence, const wxRect& line) {
    HelpContent content;
    content.help.paragraphs.push_back(sentence);
    card_->setContent(std::move(content));
    showCard(line);
}

void TipPopUp::showSignatures(const Signatures& signatures, const wxRect& line) {
    card_->Hide();
    signatures_->Show();
    signatures_->setContent(signatures);
    const wxSize size = signatures_->wantedSize();
    signatures_->SetSize(wxRect(size));
    showBeside(line, size, true);
}

wxString TipPopUp::words() const {
    if (!IsShown()) return {};
    return card_->IsShown() ? card_->accessibleName() : signatures_->accessibleName();
}

}  // namespace korvant::ui
