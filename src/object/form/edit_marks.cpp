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
