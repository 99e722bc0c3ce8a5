// What fails in elements that are not looked at.
#include "object/form/edit_marks.h"

#include <algorithm>

#include "object/form/form_walk.h"

namespace korvant {

namespace {

/// Collects the marks during a walk, which makes one element after the other current.
class MarkCollector {
  public:
    MarkCollector(const EditCore& core, ElementMarks& marks) : core_(core), marks_(marks) {
        for (int group = 0; group < core.desk.count(); ++group)
            current_.push_back(core.desk.group(group).content.current);
    }

    void operator()(const std::vector<std::int32_t>& rows, const ElementPath& path) {
        if (path.stops.empty()) return;
        Severity worst = Severity::none;
        for (const std::int32_t row : rows) {
            const Severity severity = core_.severity(row);
            worst = std::max(worst, severity);
            Severity& page = marks_.pages[static_cast<std::size_t>(
                core_.layout.pageOfRow[static_cast<std::size_t>(row)])];
            page = std::max(page, severity);
        }
        if (worst != Severity::none) mark(path, worst);
    }

  private:
    /// An outer element is as bad as what is inside it. The list of an inner group shows the
    /// elements of the outer one that is current.
    void mark(const ElementPath& path, Severity worst) {
        for (const ElementPath::Stop& stop : path.stops) {
            const auto group = static_cast<std::size_t>(stop.group);
            std::vector<Severity>& marked = marks_.elements[group];
            const auto element = static_cast<std::size_t>(stop.element);
            if (marked.size() <= element) marked.resize(element + 1, Severity::none);
            marked[element] = std::max(marked[element], worst);
            if (stop.element != current_[group]) return;
        }
    }

    const EditCore& core_;
    ElementMarks& marks_;
    std::vector<std::int32_t> current_;
};

}  // namespace

Severity EditMarks::ofPage(int page) const {
    const EditPage& shown = core_.layout.pages[EditCore::at(page)];
    Severity worst = marks_.pages[EditCore::at(page)];
    for (std::int32_t row = shown.first; row <= shown.last && worst != Severity::error; ++row)
        worst = std::max(worst, core_.severity(row));
    return worst;
}

Severity EditMarks::ofElement(int group, std::int32_t element) const {
    const std::vector<Severity>& marked = marks_.elements[EditCore::at(group)];
    return EditCore::at(element) < marked.size() ? marked[EditCore::at(element)] : Severity::none;
}

/// Takes the pages that look different, which are then as shown.
std::vector<int> EditMarks::takePages() {
    std::vector<int> pages;
    for (int page = 0; page < static_cast<int>(core_.layout.pages.size()); ++page) {
        const Severity now = ofPage(page);
        Severity& shown = shown_[EditCore::at(page)];
        if (now != shown || core_.dirtyBars[EditCore::at(page)]) pages.push_back(page);
        shown = now;
        core_.dirtyBars[EditCore::at(page)] = false;
    }
    return pages;
}

/// The others read nothing that changed: one group without inner ones, and only its rows differ.
bool EditMarks::staysInElement(const EditStep& step) const {
    if (core_.desk.count() != 1 || !step.groups.empty() ||
        !core_.desk.group(0).content.hasCurrent())
        return false;
    const int page = core_.desk.group(0).page;
    const auto member = [this, page](const ValueChange& one) {
        return core_.desk.groupOfRow(one.property) == 0 &&
               core_.layout.pageOfRow[EditCore::at(one.property)] == page;
    };
    return std::all_of(step.values.begin(), step.values.end(), member);
}

void EditMarks::refresh(const EditStep& step) {
    if (!staysInElement(step)) return refresh();
    const EditGroup& group = core_.desk.group(0);
    std::vector<Severity>& marked = marks_.elements.front();
    marked.resize(EditCore::at(group.content.size()), Severity::none);
    Severity& current = marked[EditCore::at(group.content.current)];
    current = Severity::none;
    for (const std::int32_t row : group.members) current = std::max(current, core_.severity(row));
    marks_.pages[EditCore::at(group.page)] = *std::max_element(marked.begin(), marked.end());
    core_.noteBar(0);
}

void EditMarks::refresh() {
    ElementMarks found;
    found.elements.resize(static_cast<std::size_t>(core_.desk.count()));
    found.pages.resize(core_.layout.pages.size(), Severity::none);
    if (core_.desk.count() > 0 && core_.rules.checksAnything()) {
        MarkCollector collect(core_, found);
        FormWalk(core_).run(std::ref(collect), false);
    }
    for (int group = 0; group < core_.desk.count(); ++group) {
        const auto number = static_cast<std::size_t>(group);
        if (marks_.elements.size() <= number || marks_.elements[number] != found.elements[number])
            core_.noteBar(group);
    }
    marks_ = std::move(found);
}

}  // namespace korvant
