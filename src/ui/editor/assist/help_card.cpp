#include "ui/editor/assist/help_card.h"

#include <algorithm>

#include "ui/kit/text_conversion.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kMargin = 16, kTop = 12, kHeadLine = 20, kBelowHead = 8, kLine = 20, kSmallLine = 18,
              kParagraphGap = 8, kCodePad = 6, kCodeInset = 10, kFooter = 28;
constexpr std::size_t kMostLines = 14, kMostHeadLines = 4;

}  // namespace

void HelpCard::setContent(HelpContent content) {
    content_ = std::move(content);
    laidOutFor_ = -1;
    setAccessibleName(words("Documentation") + ": " +
                      fromUtf8(content_.head.type + " " + content_.head.name + content_.head.rest) +
                      (content_.help.paragraphs.empty()
                           ? wxString()
                           : ". " + fromUtf8(content_.help.paragraphs[0])));
    Refresh();
}

void HelpCard::layOut(int width) {
    if (laidOutFor_ == width) return;
    laidOutFor_ = width;
    lines_.clear();
    const int inner = width - 2 * dip(kMargin);
    headLines_ =
        wrappedLines(*this,
                     fromUtf8(content_.head.name.empty() ? content_.head.type
                                                         : content_.head.name + content_.head.rest),
                     look().codeStrong, inner, kMostHeadLines);
    const auto paragraph = [&](const std::string& text, Line::Kind kind) {
        const bool small = kind == Line::Kind::small;
        const wxFont& font = small ? look().small : look().plain;
        if (!lines_.empty()) lines_.push_back({{}, kParagraphGap, kind});
        for (const wxString& line : wrappedLines(*this, fromUtf8(text), font, inner, kMostLines))
            lines_.push_back({line, small ? kSmallLine : kLine, kind});
    };
    const auto& paragraphs = content_.help.paragraphs;
    if (!paragraphs.empty()) paragraph(paragraphs[0], Line::Kind::plain);
    for (const std::string& code : content_.help.code) {
        if (!lines_.empty()) lines_.push_back({{}, kParagraphGap, Line::Kind::plain});
        const std::size_t first = lines_.size();
        for (const wxString& line : wxSplit(fromUtf8(code), '\n', '\0'))
            lines_.push_back({shortened(*this, line, look().code, inner - 2 * dip(kCodeInset)),
                              kLine, Line::Kind::code});
        lines_[first].firstOfCode = lines_.back().lastOfCode = true;
    }
    for (std::size_t i = 1; i < paragraphs.size(); ++i) paragraph(paragraphs[i], Line::Kind::small);
}

int HelpCard::headHeight() const {
    const auto lines = static_cast<int>(headLines_.size()) + (hasGives() ? 1 : 0);
    return lines == 0 ? 0 : dip(kTop + kBelowHead) + lines * dip(kHeadLine);
}

int HelpCard::heightFor(int width, int least) {
    layOut(width);
    int height = headHeight();
    for (const Line& line : lines_)
        height +=
            dip(line.height + (line.firstOfCode ? kCodePad : 0) + (line.lastOfCode ? kCodePad : 0));
    if (!lines_.empty()) height += 2 * dip(kTop - 2);
    if (!content_.footer.empty()) height += dip(kFooter);
    return std::max(height, least);
}

int HelpCard::widthFor(int most) const {
    int width = 0;
    const auto need = [&](const std::string& text, const wxFont& font, int pad) {
        width = std::max(width, textWidth(*this, fromUtf8(text), font) + pad);
    };
    need(content_.head.name + content_.head.rest, look().codeStrong, 0);
    if (content_.head.name.empty()) need(content_.head.type, look().codeStrong, 0);
    for (const std::string& text : content_.help.paragraphs) need(text, look().plain, 0);
    for (const std::string& code : content_.help.code)
        for (const wxString& line : wxSplit(fromUtf8(code), '\n', '\0'))
            need(toUtf8(line), look().code, 2 * dip(kCodeInset));
    return std::min(width + 2 * dip(kMargin) + dip(2), most);
}

/// The name in bold, in the colour of what it is; what it gives below.
int HelpCard::paintHead(wxGraphicsContext& context) {
    if (headLines_.empty()) return 0;
    const int x = dip(kMargin);
    int y = dip(kTop);
    auto name = static_cast<std::size_t>(fromUtf8(content_.head.name).length());
    for (const wxString& line : headLines_) {
        const wxString strong = line.Left(name);
        name -= strong.length();
        text(context, strong, look().codeStrong,
             isCall() ? look()->code.library : look()->code.plain, x, y, dip(kHeadLine));
        text(context, line.Mid(strong.length()), look().code, look()->text,
             x + textWidth(*this, strong, look().codeStrong), y, dip(kHeadLine));
        y += dip(kHeadLine);
    }
    if (!hasGives()) return headHeight();
    const wxString word = isCall() ? words("gives") : wxString();
    text(context, word, look().small, look()->secondText, x, y, dip(kHeadLine));
    const int typeX = x + (isCall() ? textWidth(*this, word, look().small) + dip(7) : 0);
    text(context,
         shortened(*this, fromUtf8(content_.head.type), look().code,
                   GetClientSize().x - dip(kMargin) - typeX),
         look().code, look()->code.type, typeX, y, dip(kHeadLine));
    return headHeight();
}

void HelpCard::paintCode(wxGraphicsContext& context, const Line& line, int y) {
    const std::size_t remark = line.text.find("//");
    const wxString code = line.text.Left(remark);
    const int x = dip(kMargin + kCodeInset);
    text(context, code, look().code, look()->text, x, y, dip(line.height));
    if (remark != wxString::npos)
        text(context, line.text.Mid(remark), look().code, look()->code.comment,
             x + textWidth(*this, code, look().code), y, dip(line.height));
}

void HelpCard::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    layOut(size.x);
    fill(context, wxRect(size), bare_ ? look()->popUp : look()->popUpEdge);
    if (!bare_) fill(context, wxRect(size).Deflate(1), look()->popUp);
    int y = paintHead(context);
    if (y > 0 && !lines_.empty()) fill(context, {1, y, size.x - 2, 1}, look()->hair);
    y += dip(kTop - 2);
    int codeHeight = 0;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const Line& line = lines_[i];
        if (line.firstOfCode) {
            codeHeight = 2 * dip(kCodePad);
            for (std::size_t j = i; j < lines_.size() && lines_[j].kind == Line::Kind::code; ++j)
                codeHeight += dip(kLine);
            rounded(context, {dip(kMargin), y, size.x - 2 * dip(kMargin), codeHeight}, dip(6),
                    look()->chrome);
            y += dip(kCodePad);
        }
        if (line.kind == Line::Kind::code)
            paintCode(context, line, y);
        else
            text(context, line.text, line.kind == Line::Kind::small ? look().small : look().plain,
                 line.kind == Line::Kind::small ? look()->secondText : look()->text, dip(kMargin),
                 y, dip(line.height));
        y += dip(line.height) + (line.lastOfCode ? dip(kCodePad) : 0);
    }
    if (content_.footer.empty()) return;
    const int footer = size.y - dip(kFooter) - 1;
    fill(context, {1, footer, size.x - 2, 1}, look()->hair);
    text(context, content_.footer, look().small, look()->secondText, dip(kMargin), footer,
         dip(kFooter));
}

}  // namespace korvant::ui
