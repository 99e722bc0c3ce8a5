#include "ui/editor/assist/value_pop_up.h"

#include <algorithm>

#include "ui/kit/clipboard.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kHeading = 36, kFooter = 31, kRow = 24, kRowsFirst = 3, kRowsSeen = 8, kPad = 4,
              kLeft = 12, kBefore = 8, kNarrowest = 240, kWidest = 460, kTreeWidth = 344;

ListMetrics metrics() {
    ListMetrics places;
    places.foldX = 7;
    places.nameX = 25;
    places.iconX = 25;
    places.valueGap = 14;
    places.chevrons = true;
    places.quietBar = true;
    places.back = &ThemeTable::popUp;
    places.top = kPad;
    return places;
}

/// It lies in a window that takes no keys.
class StillList : public RowList {
  public:
    using RowList::RowList;
    void SetFocus() override {}
    bool AcceptsFocus() const override { return false; }
};

}  // namespace

/// What is behind the rows: the name, its type, and the lines between the parts.
class ValueCard : public PaintedWindow {
  public:
    ValueCard(wxWindow* parent, const Look& look) : PaintedWindow(parent, look, false) {}

    void setContent(const wxString& name, const wxString& remark, const wxString& value) {
        name_ = name;
        remark_ = remark;
        value_ = value;
        setAccessibleName(name + " = " + (value.empty() ? remark : value));
        Refresh();
    }
    int wantedWidth() const {
        const int behind = std::max(textWidth(*this, value_, look().code),
                                    textWidth(*this, remark_, look().small));
        return textWidth(*this, name_, look().codeStrong) + behind + dip(2 * kLeft + 12);
    }
    void setHasRows(bool rows) { rows_ = rows; }

  private:
    void paint(wxGraphicsContext& context) override {
        const wxSize size = GetClientSize();
        fill(context, wxRect(size), look()->popUpEdge);
        fill(context, wxRect(size).Deflate(1), look()->popUp);
        int x = dip(kLeft);
        const wxString name = shortened(*this, name_, look().codeStrong, size.x / 2);
        text(context, name, look().codeStrong, look()->text, x, 0, dip(kHeading));
        x += textWidth(*this, name, look().codeStrong) + dip(12);
        const bool valued = !value_.empty();
        text(context,
             shortened(*this, valued ? value_ : remark_, valued ? look().code : look().plain,
                       size.x - x - dip(kLeft)),
             valued ? look().code : look().plain, valued ? look()->text : look()->secondText, x, 0,
             dip(kHeading));
        if (rows_) fill(context, {1, dip(kHeading) - 1, size.x - 2, 1}, look()->hair);
        fill(context, {1, size.y - dip(kFooter) - 1, size.x - 2, 1}, look()->hair);
    }

    wxString name_, remark_, value_;
    bool rows_ = false;
};

ValuePopUp::ValuePopUp(wxWindow* parent, const Look& look, Inspection& inspection)
    : PopUp(parent),
      inspection_(inspection),
      rows_(inspection.session()),
      card_(new ValueCard(this, look)),
      list_(new StillList(card_, look, metrics(), "Value")) {
    list_->count = [this] { return std::max(static_cast<int>(rows_.rows().size()) - 1, 0); };
    list_->row = [this](int index) { return rowOf(index); };
    list_->onFold = [this](int index) {
        rows_.toggle(static_cast<std::size_t>(index) + 1);
        mostRows_ = kRowsSeen;
        list_->rowsChanged();
        layOut(line_);
    };
    list_->onSelected = [this](int index) {
        if (rows_.rows()[static_cast<std::size_t>(index) + 1].more > 0) list_->onFold(index);
    };
    using Kind = PaintedButton::Kind;
    watch_ =
        new PaintedButton(card_, look, Kind::link, {Icon::eye, words("Watch"), {}, {}}, [this] {
            inspection_.addWatch(expression_);
            Hide();
        });
    copy_ = new PaintedButton(card_, look, Kind::link, {Icon::copy, words("Copy"), {}, {}}, [this] {
        copyToClipboard(fromUtf8(rows_.copyText(0)));
        Hide();
    });
    for (PaintedButton* link : {watch_, copy_}) {
        link->setBack(&ThemeTable::popUp);
        link->setIconPlace(14, 6);
        link->setTabStop(false);
        link->SetCanFocus(false);
    }
}

ListRow ValuePopUp::rowOf(int index) const {
    const ValueRow& value = rows_.rows()[static_cast<std::size_t>(index) + 1];
    ListRow row;
    row.depth = value.depth - 1;
    if (value.more > 0) {
        row.name =
            wxString::Format(words("%llu more"), static_cast<unsigned long long>(value.more));
        return row;
    }
    if (value.hasChildren()) row.fold = value.open ? ListRow::Fold::open : ListRow::Fold::closed;
    row.name = fromUtf8(value.value.name);
    row.nameCode = true;
    row.nameColour = &ThemeTable::secondText;
    row.value = fromUtf8(value.summary.empty() ? value.value.value : value.summary);
    row.changed = value.value.changed;
    return row;
}

bool ValuePopUp::show(const std::string& expression, const wxRect& line) {
    expression_ = expression;
    if (!rows_.readOne(inspection_.frame(), expression)) return false;
    const ValueRow& root = rows_.rows().front();
    wxString remark = fromUtf8(root.value.type);
    if (!root.summary.empty() && root.summary != root.value.type)
        remark += ", " + fromUtf8(root.summary);
    card_->setContent(fromUtf8(expression), remark,
                      root.hasChildren() ? wxString() : fromUtf8(root.value.value));
    list_->select(-1);
    mostRows_ = kRowsFirst;
    layOut(line);
    return true;
}

void ValuePopUp::layOut(const wxRect& line) {
    line_ = line;
    const int rows = std::min(list_->count(), mostRows_);
    card_->setHasRows(rows > 0);
    const int width = std::clamp(card_->wantedWidth(), FromDIP(rows > 0 ? kTreeWidth : kNarrowest),
                                 FromDIP(kWidest));
    const int listHeight = rows > 0 ? rows * FromDIP(kRow) + FromDIP(2 * kPad) : 0;
    const wxSize size(width, FromDIP(kHeading + kFooter) + listHeight + 1);
    card_->SetSize(wxRect(size));
    list_->Show(rows > 0);
    list_->SetSize(1, FromDIP(kHeading), width - 2, listHeight);
    const int footer = size.y - FromDIP(kFooter);
    int x = FromDIP(kLeft);
    for (PaintedButton* link : {watch_, copy_}) {
        link->SetSize(x, footer + FromDIP(1), link->wantedWidth(), FromDIP(kFooter - 3));
        x += link->wantedWidth() + FromDIP(20);
    }
    showBeside({line.x - FromDIP(kBefore), line.y, line.width, line.height + 1}, size);
}

}  // namespace korvant::ui
