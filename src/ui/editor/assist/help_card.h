// What is said about one name: its declaration, sentences, an example.
#pragma once

#include "editor/assist/help_text.h"
#include "editor/assist/suggestion_list.h"
#include "ui/editor/assist/pop_up.h"

namespace korvant::ui {

struct HelpContent {
    DeclarationParts head;
    HelpText help;
    wxString footer;
};

class HelpCard : public PaintedWindow {
  public:
    HelpCard(wxWindow* parent, const Look& look) : PaintedWindow(parent, look, false) {
        setAccessibleName("Documentation");
    }

    void setContent(HelpContent content);
    const HelpContent& content() const { return content_; }
    /// In pixels, for so wide a card; at least `least`.
    int heightFor(int width, int least = 0);
    /// The width that the content would like, no more than `most`.
    int widthFor(int most) const;
    /// The line around it is somebody else's.
    void setBare(bool bare) { bare_ = bare; }

  private:
    struct Line {
        wxString text;
        int height = 20;
        enum class Kind { plain, small, code } kind = Kind::plain;
        bool firstOfCode = false, lastOfCode = false;
    };

    void layOut(int width);
    void paint(wxGraphicsContext& context) override;
    int paintHead(wxGraphicsContext& context);
    void paintCode(wxGraphicsContext& context, const Line& line, int y);
    bool isCall() const { return content_.head.rest.starts_with("("); }
    bool hasGives() const { return !content_.head.name.empty() && !content_.head.type.empty(); }
    int headHeight() const;

    HelpContent content_;
    std::vector<wxString> headLines_;
    std::vector<Line> lines_;
    int laidOutFor_ = -1;
    bool bare_ = false;
};

}  // namespace korvant::ui
