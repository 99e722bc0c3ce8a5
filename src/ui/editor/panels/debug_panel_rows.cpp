// How stack, values, watches and breakpoints look as rows.
#include "ui/editor/panels/debug_panel.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

bool isOneOf(const std::string& type, std::initializer_list<const char*> names) {
    for (const char* name : names)
        if (type == name) return true;
    return false;
}

Icon iconOf(const DebugValue& value) {
    std::string type = value.type;
    if (type.rfind("const ", 0) == 0) type.erase(0, 6);
    if (type == "string" || type == "text") return Icon::text;
    if (!type.empty() && type.back() == ']') return Icon::array;
    if (type == "Object" || type == "Object@") return Icon::object;
    if (isOneOf(type, {"int", "int8", "int16", "int32", "int64", "uint", "uint8", "uint16",
                       "uint32", "uint64", "float", "double", "bool"}))
        return Icon::number;
    return value.node != 0 ? Icon::classIcon : Icon::enumIcon;
}

}  // namespace

Icon iconOf(BreakpointRow::Kind kind) {
    static constexpr Icon kIcons[] = {Icon::breakpoint, Icon::breakpointCondition,
                                      Icon::breakpointPrints, Icon::breakpointOff,
                                      Icon::breakpointUnverified};
    return kIcons[static_cast<int>(kind)];
}

wxString DebugPanel::lineWords(const ScriptPlace& place) {
    return place.line > 0 ? wxString::Format(words("line %d"), place.line) : wxString();
}

ListRow DebugPanel::stackRow(int index) const {
    const DebugFrame& frame = stack_[static_cast<std::size_t>(index)];
    ListRow row;
    row.name = fromUtf8(frame.name);
    row.nameStrong = index == 0;
    row.right = lineWords(frame.place);
    const std::string file = actions_.fileOf(frame.place);
    if (!file.empty()) row.right = fromUtf8(file) + ", " + row.right;
    if (frame.native) row.nameColour = &ThemeTable::secondText;
    if (index == 0) {
        const bool failed = inspection_.isException();
        row.icon = failed ? Icon::bolt : Icon::stopArrow;
        row.iconColour = failed ? &ThemeTable::error : &ThemeTable::stopMark;
    } else if (static_cast<unsigned>(index) == inspection_.frame()) {
        row.icon = Icon::callerArrow;
    }
    return row;
}

ListRow DebugPanel::variableRow(int index) const {
    const ValueRow& value = valueAt(index);
    ListRow row;
    row.depth = value.depth;
    if (value.more > 0) {
        row.icon = Icon::more;
        row.name =
            wxString::Format(words("%llu more"), static_cast<unsigned long long>(value.more));
        return row;
    }
    if (value.hasChildren()) row.fold = value.open ? ListRow::Fold::open : ListRow::Fold::closed;
    row.name = fromUtf8(value.value.name);
    if (value.value.heading) {
        row.heading = true;
        row.nameStrong = true;
        row.nameColour = &ThemeTable::secondText;
        return row;
    }
    row.icon = iconOf(value.value);
    if (value.value.changed) row.iconColour = &ThemeTable::accent;
    row.changed = value.value.changed;
    row.value = fromUtf8(value.summary.empty() ? value.value.value : value.summary);
    // An array says what its elements are.
    const bool element = !row.name.empty() && row.name[0] == '[' && value.hasChildren();
    if (!element) row.right = fromUtf8(value.value.type);
    return row;
}

ListRow DebugPanel::watchRow(int index) const {
    const auto& watches = inspection_.watches();
    ListRow row;
    if (static_cast<std::size_t>(index) >= watches.size()) {
        row.icon = Icon::plus;
        row.name = watches.empty() ? words("Add an expression to see its value at every stop.")
                                   : words("Add an expression...");
        row.nameColour = &ThemeTable::secondText;
        return row;
    }
    const Watch& watch = watches[static_cast<std::size_t>(index)];
    row.name = fromUtf8(watch.expression);
    row.nameCode = true;
    if (!inspection_.canLook()) return row;
    if (!watch.error.empty()) {
        const bool unknown = watch.error.find("No matching symbol") != std::string::npos;
        row.value = unknown ? words("not known in this function") : fromUtf8(watch.error);
        row.valueCode = false;
        row.valueColour = unknown ? &ThemeTable::secondText : &ThemeTable::error;
        return row;
    }
    row.value = fromUtf8(watch.value.value);
    row.changed = !watch.was.empty();
    if (row.changed) row.remark = words("was ") + fromUtf8(watch.was);
    return row;
}

ListRow DebugPanel::breakpointRow(int index) const {
    const BreakpointRow& breakpoint = breakpoints_[static_cast<std::size_t>(index)];
    ListRow row;
    row.check = breakpoint.enabled;
    row.icon = iconOf(breakpoint.kind);
    row.iconColour = breakpoint.kind == BreakpointRow::Kind::unverified ? &ThemeTable::unverified
                                                                        : &ThemeTable::breakpoint;
    row.name = wxString::Format(words("line %d"), breakpoint.line);
    if (!breakpoint.enabled) row.nameColour = &ThemeTable::secondText;
    row.remark = fromUtf8(breakpoint.remark);
    return row;
}

}  // namespace korvant::ui
