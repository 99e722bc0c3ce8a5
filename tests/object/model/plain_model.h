// A property object written down in the plainest way, to compare the real one with.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace korvant::test {

struct PlainProperty {
    std::string name, label, unit, text;
    double real = 0.0;
    std::int32_t integer = 0;
    bool boolean = false;
    bool flag = false;
    char letter = '?';
    std::int32_t radio = -1;
    std::vector<std::string> options;
    std::vector<std::pair<std::string, std::string>> errors, warnings;
    std::vector<std::string> enables;
    std::string hint, computation;
    bool operator==(const PlainProperty&) const = default;
};

/// Parallel sequences and maps, searched from the front; merging replays how the other object came
/// to be.
class PlainModel {
  public:
    struct Group {
        std::shared_ptr<const PlainModel> layout;
        bool flags[4] = {};
        std::vector<PlainModel> elements;
        bool listed = false;
        std::int32_t current = 0;
    };

    bool add(PlainProperty property);
    bool addOptionProperty(PlainProperty property);
    bool addInteger(PlainProperty property);
    void addClass(const std::string& name, bool value);
    void addCategory(const std::string& name);
    void addGroup(const std::string& name, const PlainModel& layout, const bool (&flags)[4]);
    void addElement(const PlainModel& element);
    void append(const PlainModel& other);
    void addTranslation(std::int32_t locale, const std::string& source, const std::string& text);
    void addHint(const std::string& name, const std::string& text);
    PlainProperty* find(const std::string& name);
    void clear();

    bool nextClass(std::string& name, bool& value);
    bool nextCategory(std::string& name);
    bool nextProperty(std::string& name, std::int32_t& index);
    void resetIterators();

    std::vector<PlainProperty> properties;
    std::map<std::string, std::size_t> aliases;
    std::vector<std::string> pending;
    std::vector<std::string> classNames;
    std::vector<bool> classSkips, classValues;
    std::vector<std::int32_t> classLasts;
    std::vector<std::string> categoryNames;
    std::vector<std::int32_t> categoryFirsts;
    std::map<std::string, Group> groups;
    std::string currentGroup;
    std::vector<std::map<std::string, std::string>> dictionaries;
    std::string title;

  private:
    struct Step {
        char what = ' ';  // c class, k category, g group, p property
        std::string name;
        bool value = false;
        bool flags[4] = {};
        std::shared_ptr<const PlainModel> layout;
    };

    bool taken(const std::string& name) const;
    void replayGroup(const Step& step, const PlainModel& other);

    std::vector<Step> history_;
    std::size_t classCursor_ = 0, categoryCursor_ = 0, propertyCursor_ = 0;
    std::int32_t classLimit_ = 999999, categoryLimit_ = 999999;
    std::int32_t lastClassStart_ = 0;
};

}  // namespace korvant::test
