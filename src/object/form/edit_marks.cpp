// What fails in elements that are not looked at.
#include <algorithm>

#include "object/form/edit_state.h"

namespace korvant {

namespace {

/// Collects the marks during a walk, which makes one element after the other current.
class MarkCollector {
  public:
    MarkCollector(const EditState& session, ElementMarks& marks)
        : session_(session), marks_(marks) {
        for (int group = 0; group < session.desk.count(); ++group)
            current_.push_back(session.desk.group(group).content.current);
    }

    void operator()(const std::vector<std::int32_t>& rows, const ElementPath& path) {
        if (path.stops.empty()) return;
        Severity worst = Severity::none;
        for (const std::int32_t row : rows) {
            const Severity severity = session_.severity(row);
            worst = std::max(worst, severity);
            Severity& page = marks_.pages[static_cast<std::size_t>(
                session_.layout.pageOfRow[static_cast<std::size_t>(row)])];
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

    const EditState& session_;
    ElementMarks& marks_;
    std::vector<std::int32_t> current_;
};

}  // namespace

/// The others read nothing that changed: one group without inner ones, and only its rows differ.
bool EditState::staysInElement(const EditStep& step) const {
    if (desk.count() != 1 || !step.groups.empty() || !desk.group(0).content.hasCurrent())
        return false;
    const int page = desk.group(0).page;
    const auto member = [this, page](const ValueChange& one) {
        return desk.groupOfRow(one.property) == 0 && layout.pageOfRow[at(one.property)] == page;
    };
    return std::all_of(step.values.begin(), step.values.end(), member);
}

void EditState::refreshMarks(const EditStep& step) {
    if (!staysInElement(step)) return refreshMarks();
    const EditGroup& group = desk.group(0);
    std::vector<Severity>& marked = marks.elements.front();
    marked.resize(at(group.content.size()), Severity::none);
    Severity& current = marked[at(group.content.current)];
    current = Severity::none;
    for (const std::int32_t row : group.members) current = std::max(current, severity(row));
    marks.pages[at(group.page)] = *std::max_element(marked.begin(), marked.end());
    noteBar(0);
}

void EditState::refreshMarks() {
    ElementMarks found;
    found.elements.resize(static_cast<std::size_t>(desk.count()));
    found.pages.resize(layout.pages.size(), Severity::none);
    if (desk.count() > 0 && rules.checksAnything()) {
        MarkCollector collect(*this, found);
        FormWalk(*this).run(std::ref(collect), false);
    }
    for (int group = 0; group < desk.count(); ++group) {
        const auto number = static_cast<std::size_t>(group);
        if (marks.elements.size() <= number || marks.elements[number] != found.elements[number])
            noteBar(group);
    }
    marks = std::move(found);
}

}  // namespace korvant
