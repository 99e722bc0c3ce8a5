#include "ui/editor/panels/debug_panel.h"

#include <wx/textctrl.h>

#include <algorithm>

#include "ui/kit/clipboard.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kFirstHeading = 36, kHeading = 32, kMostRows = 6, kLeastVariables = 72;
constexpr int kRow = 24, kFrameRow = 40;
constexpr const char* kTitles[] = {"Call stack", "Variables", "Watches", "Breakpoints"};

ListMetrics metricsOf(int section) {
    ListMetrics metrics;
    if (section == DebugPanel::kVariables) {
        metrics.iconX = 20;
        metrics.foldX = 4;
        metrics.iconSize = 14;
        metrics.nameX = 40;
        metrics.valueShare = 0.444;
        metrics.rightMargin = 8;
    } else if (section == DebugPanel::kWatches) {
        metrics.valueShare = 0.452;
        metrics.iconX = 6;
        metrics.iconSize = 14;
        metrics.top = 2;
    } else if (section == DebugPanel::kBreakpoints) {
        metrics.iconX = 28;
        metrics.nameX = 50;
        metrics.top = 2;
    } else {
        metrics.iconX = 6;
        metrics.iconSize = 14;
    }
    return metrics;
}

}  // namespace

DebugPanel::DebugPanel(wxWindow* parent, const Look& look, Inspection& inspection,
                       DebugPanelActions actions)
    : PaintedWindow(parent, look, false),
      inspection_(inspection),
      actions_(std::move(actions)),
      values_(inspection.session()) {
    makeSections();
    connectStack();
    connectVariables();
    connectWatches();
    connectBreakpoints();
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        place();
        event.Skip();
    });
    setAccessibleName(words("Debug panel"));
}

void DebugPanel::makeSections() {
    tabs_ = new PaneHeading(this, look(), PaneHeading::Style::underlined,
                            {{words("Variables"), {}},
                             {words("Stack"), {}},
                             {words("Watches"), {}},
                             {words("Breakpoints"), {}}});
    tabs_->setTitlePlace(14, 20);
    tabs_->setTopLine(false);
    tabs_->setStrongEnd();
    tabs_->onChosen = [this](int tab) {
        tabs_->choose(tab);
        place();
    };
    tabs_->Hide();
    frame_ = new FrameChooser(this, look());
    frame_->onChosen = [this](int index) { chooseFrame(index); };
    frame_->Hide();
    for (int section = kStack; section <= kBreakpoints; ++section) {
        Part part;
        const wxString title = words(kTitles[section]);
        part.heading = new PaneHeading(this, look(), PaneHeading::Style::folding, {{title, {}}});
        part.heading->setTopLine(section != kStack);
        part.heading->onFolded = [this](bool) { place(); };
        part.list = new RowList(this, look(), metricsOf(section), title);
        sections_.push_back(part);
    }
    sections_[kStack].heading->addButton(Icon::close, words("Close"),
                                         [this] { actions_.closed(); });
    sections_[kVariables].heading->addButton(Icon::find, words("Find a variable"),
                                             [this] { openFilter(); });
    sections_[kVariables].heading->addButton(Icon::more, words("More"), [this] {
        const wxRect heading = sections_[kVariables].heading->GetRect();
        openVariableMenu({heading.GetRight() - dip(kHeading), heading.GetBottom()});
    });
    sections_[kWatches].heading->addButton(Icon::plus, words("Add an expression"), [this] {
        editWatch(static_cast<int>(inspection_.watches().size()));
    });
    sections_[kWatches].heading->addButton(Icon::trash, words("Remove all expressions"), [this] {
        watchField_->close();
        inspection_.removeWatches();
    });
    sections_[kBreakpoints].heading->addButton(Icon::breakpointOff, words("Switch all on or off"),
                                               [this] { actions_.switchBreakpoints(); });
    sections_[kBreakpoints].heading->addButton(Icon::trash, words("Delete all breakpoints"),
                                               [this] { actions_.removeBreakpoints(); });
    sections_[kBreakpoints].list->setEmptyText(words("Click beside a line number to stop there."));
    makeFilter();
}

void DebugPanel::connectStack() {
    RowList& list = *sections_[kStack].list;
    list.count = [this] { return static_cast<int>(stack_.size()); };
    list.row = [this](int index) { return stackRow(index); };
    list.onSelected = [this](int index) { chooseFrame(index); };
    list.onActivated = [this](int index) { chooseFrame(index, true); };
}

void DebugPanel::chooseFrame(int index, bool entered) {
    inspection_.chooseFrame(static_cast<unsigned>(index));
    actions_.frameChosen(static_cast<unsigned>(index), entered);
}

void DebugPanel::refreshFrame() {
    std::vector<FrameChooser::Frame> frames;
    for (std::size_t i = 0; i < stack_.size(); ++i) {
        const ScriptPlace& place = stack_[i].place;
        const ListRow row = stackRow(static_cast<int>(i));
        frames.push_back({row.name, place.source.empty() ? lineWords(place) : row.right});
    }
    frame_->setFrames(std::move(frames), inspection_.frame(), inspection_.isException());
}

void DebugPanel::connectVariables() {
    RowList& list = *sections_[kVariables].list;
    list.count = [this] { return static_cast<int>(valueRows_.size()); };
    list.row = [this](int index) { return variableRow(index); };
    list.onFold = [this](int index) {
        values_.toggle(placeOf(index));
        readVariables();
    };
    list.onActivated = [this, &list](int index) {
        const ValueRow& row = valueAt(index);
        if (row.more > 0 || (row.hasChildren() && !row.value.settable))
            list.onFold(index);
        else
            editVariable(index);
    };
    list.onEdit = [this](int index) { editVariable(index); };
    variableField_ = std::make_unique<RowField>(list, look(), &RowList::valueRect);
    list.onCopy = [this](int index) {
        copyToClipboard(fromUtf8(values_.copyText(placeOf(index))));
    };
    list.onMenu = [this, &list](int, wxPoint place) {
        openVariableMenu(ScreenToClient(list.ClientToScreen(place)));
    };
}

void DebugPanel::connectWatches() {
    RowList& list = *sections_[kWatches].list;
    list.count = [this] { return static_cast<int>(inspection_.watches().size()) + 1; };
    list.row = [this](int index) { return watchRow(index); };
    list.onActivated = [this](int index) { editWatch(index); };
    list.onEdit = [this](int index) { editWatch(index); };
    // The last row is there to be written into.
    list.onClicked = [this](int index) {
        if (static_cast<std::size_t>(index) >= inspection_.watches().size()) editWatch(index);
    };
    watchField_ = std::make_unique<RowField>(list, look(), &RowList::nameRect);
    list.onRemove = [this](int index) {
        watchField_->close();
        inspection_.removeWatch(static_cast<std::size_t>(index));
        place();
    };
    list.onCopy = [this](int index) {
        const auto& watches = inspection_.watches();
        if (static_cast<std::size_t>(index) >= watches.size()) return;
        const Watch& watch = watches[static_cast<std::size_t>(index)];
        copyToClipboard(fromUtf8(watch.expression + " = " + watch.value.value));
    };
}

void DebugPanel::connectBreakpoints() {
    RowList& list = *sections_[kBreakpoints].list;
    list.count = [this] { return static_cast<int>(breakpoints_.size()); };
    list.row = [this](int index) { return breakpointRow(index); };
    const auto told = [this](const std::function<void(int)>& action) {
        return [this, action](int index) {
            if (action) action(breakpoints_[static_cast<std::size_t>(index)].line);
        };
    };
    list.onActivated = told(actions_.gotoLine);
    list.onRemove = told(actions_.removeBreakpoint);
    list.onCheck = told(actions_.switchBreakpoint);
    list.onEdit = told(actions_.editBreakpoint);
}

void DebugPanel::editWatch(int index) {
    const auto& watches = inspection_.watches();
    const auto at = static_cast<std::size_t>(index);
    const std::string text = at < watches.size() ? watches[at].expression : std::string();
    watchField_->open(index, fromUtf8(text), [this, at](const wxString& typed) {
        const std::string expression = toUtf8(typed);
        if (at < inspection_.watches().size())
            inspection_.changeWatch(at, expression);
        else
            inspection_.addWatch(expression);
        place();
        return wxString();
    });
}

void DebugPanel::addWatch(const std::string& expression) {
    inspection_.addWatch(expression);
    place();
}

void DebugPanel::refresh(const std::vector<BreakpointRow>& breakpoints) {
    const bool changed = inspection_.generation() != shown_ || breakpoints != breakpoints_;
    if (!changed) return;
    shown_ = inspection_.generation();
    breakpoints_ = breakpoints;
    stack_ = inspection_.stack();
    if (inspection_.canLook())
        values_.read(inspection_.frame());
    else
        values_.clear();
    readVariables();
    sections_[kStack].list->select(stack_.empty() ? -1 : static_cast<int>(inspection_.frame()));
    const wxString function =
        stack_.empty() ? wxString() : fromUtf8(stack_[inspection_.frame()].name);
    sections_[kVariables].heading->setRemark(function);
    sections_[kBreakpoints].heading->setRemark(
        breakpoints_.empty() ? wxString() : wxString::Format("%zu", breakpoints_.size()));
    for (const Part& part : sections_) part.list->rowsChanged();
    refreshFrame();
    place();
}

void DebugPanel::setAsTabs(bool asTabs) {
    if (std::exchange(asTabs_, asTabs) != asTabs) place();
}

void DebugPanel::setFolded(int bits) {
    for (std::size_t i = 0; i < sections_.size(); ++i)
        sections_[i].heading->setFolded((bits >> i & 1) != 0);
    place();
}

int DebugPanel::folded() const {
    int bits = 0;
    for (std::size_t i = 0; i < sections_.size(); ++i)
        if (sections_[i].heading->folded()) bits |= 1 << i;
    return bits;
}

void DebugPanel::showSection(int section) {
    static constexpr int kTabOf[] = {1, 0, 2, 3};
    if (asTabs_)
        tabs_->choose(kTabOf[section]);
    else
        sections_[static_cast<std::size_t>(section)].heading->setFolded(false);
    place();
}

int DebugPanel::wantedHeight(int section) const {
    const Part& part = sections_[static_cast<std::size_t>(section)];
    if (part.heading->folded()) return 0;
    const int rows = part.list->wantedHeight();
    const int beyond = section == kStack ? 0 : section == kWatches ? 2 : 4;
    return std::clamp(rows + dip(beyond), dip(kRow + beyond), dip(kRow * kMostRows + 2 + beyond));
}

void DebugPanel::placeSections(int left, int width, int height) {
    int fixed = 0;
    for (const int section : {kStack, kWatches, kBreakpoints}) fixed += wantedHeight(section);
    const int headings = dip(kFirstHeading + 3 * kHeading);
    const int variables = sections_[kVariables].heading->folded()
                              ? 0
                              : std::max(height - headings - fixed, dip(kLeastVariables));
    int y = 0;
    for (int section = kStack; section <= kBreakpoints; ++section) {
        const Part& part = sections_[static_cast<std::size_t>(section)];
        const int heading = dip(section == kStack ? kFirstHeading : kHeading);
        const int rows = section == kVariables ? variables : wantedHeight(section);
        part.heading->Show();
        part.heading->SetSize(left, y, width, heading);
        y += heading;
        const int field = section == kVariables ? placeFilter(left, y, width, rows > 0) : 0;
        part.list->Show(rows > 0);
        part.list->SetSize(left, y + field, width, std::max(rows - field, 0));
        y += rows;
    }
}

void DebugPanel::place() {
    const wxSize size = GetClientSize();
    const int left = 1, width = std::max(size.x - left, 0);
    tabs_->Show(asTabs_);
    static constexpr int kSectionOf[] = {kVariables, kStack, kWatches, kBreakpoints};
    const bool choosesFrame =
        asTabs_ && !stack_.empty() && kSectionOf[tabs_->chosen()] == kVariables;
    frame_->Show(choosesFrame);
    if (!asTabs_) return placeSections(left, width, size.y);
    tabs_->SetSize(left, 0, width, dip(kFirstHeading));
    frame_->SetSize(left, dip(kFirstHeading), width, dip(kFrameRow));
    const int top = dip(kFirstHeading + (choosesFrame ? kFrameRow : 0));
    for (int section = kStack; section <= kBreakpoints; ++section) {
        const Part& part = sections_[static_cast<std::size_t>(section)];
        part.heading->Hide();
        const bool shown = section == kSectionOf[tabs_->chosen()];
        part.list->Show(shown);
        const bool variables = section == kVariables;
        const int field = variables ? placeFilter(left, top, width, shown) : 0;
        if (shown) part.list->SetSize(left, top + field, width, std::max(size.y - top - field, 0));
    }
}

std::vector<wxWindow*> DebugPanel::focusOrder() const {
    std::vector<wxWindow*> order;
    if (frame_->IsShown()) order.push_back(frame_);
    for (const Part& part : sections_)
        if (part.list->IsShown()) order.push_back(part.list);
    return order;
}

void DebugPanel::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->panel);
    fill(context, {0, 0, 1, size.y}, look()->border);
    if (filter_->IsShown()) fieldBox(context, filterBox_, filter_->HasFocus());
}

}  // namespace korvant::ui
