// Pages and rows of a form: what never changes while it is open.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "object/form/edit_session.h"
#include "object/model/object_model.h"

namespace korvant {

/// How an object is laid out as a form, with its texts in one language.
class FormLayout {
  public:
    FormLayout(const ObjectModel& object, std::int32_t locale);

    FormKind kind = FormKind::dialog;
    std::string title;
    std::int32_t locale = 0;
    std::vector<EditPage> pages;
    std::vector<std::string> groupOfPage;  ///< name of the page's group; empty for a plain page
    std::vector<EditRow> rows;
    std::vector<bool> flags;     ///< by row: the script lets it be edited
    std::vector<int> pageOfRow;  ///< -1: on none
    std::vector<std::string> categories;
    std::vector<std::optional<std::string>> hints;  ///< by row

    std::int32_t count() const noexcept { return static_cast<std::int32_t>(rows.size()); }
    bool holds(std::int32_t row) const noexcept { return row >= 0 && row < count(); }
    bool holdsPage(int page) const noexcept {
        return page >= 0 && static_cast<std::size_t>(page) < pages.size();
    }

  private:
    void makePages(const ObjectModel& object);
    void makePage(const ObjectModel& object, const std::string& caption, std::size_t classIndex,
                  std::int32_t first, std::int32_t last);
    void makeRows(const ObjectModel& object);
    EditRow makeRow(const ObjectModel& object, std::int32_t index) const;
};

}  // namespace korvant
