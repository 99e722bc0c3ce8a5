#include "object/script/foreign_stamp.h"

#include <variant>
#include <vector>

namespace korvant::test {
namespace {

struct Property {
    std::string name;
    std::variant<long, double, bool, std::string> value;  // by the numbers of getPropertyType
};

class ForeignStamp final : public KorStamp {
  public:
    void clear() override { all_.clear(); }
    bool addProperty(std::string name, std::string, bool value, bool, long) override {
        return add(name, value);
    }
    bool addProperty(std::string name, std::string, float value, std::string, bool) override {
        return add(name, static_cast<double>(value));
    }
    bool addProperty(std::string name, std::string, double value, std::string, bool) override {
        return add(name, value);
    }
    bool addProperty(std::string name, std::string, int value, std::string, bool) override {
        return add(name, static_cast<long>(value));
    }
    bool addProperty(std::string name, std::string, long value, std::string, bool) override {
        return add(name, value);
    }
    bool addProperty(std::string name, std::string, const char* value, const char*, bool,
                     bool) override {
        return add(name, std::string(value));
    }
    bool addProperty(std::string name, std::string, const char* value, bool, bool) override {
        return add(name, std::string(value));
    }
    void addOption(std::string) override {}
    bool addOptionProperty(std::string name, std::string, int value, bool) override {
        return add(name, static_cast<long>(value));
    }
    bool addOptionProperty(std::string name, std::string, long value, bool) override {
        return add(name, value);
    }
    int getPropertiesCount() override { return static_cast<int>(all_.size()); }
    std::string getPropertyName(int index) override {
        return all_.at(static_cast<std::size_t>(index)).name;
    }
    int getPropertyType(int index) override {
        return static_cast<int>(all_.at(static_cast<std::size_t>(index)).value.index());
    }
    int getPropertyTypeByName(std::string name) override {
        const Property* const property = find(name);
        return property ? static_cast<int>(property->value.index()) : -1;
    }
    bool getProperty(std::string name, bool* value) override { return get(name, value); }
    bool getProperty(std::string, float*) override { return false; }
    bool getProperty(std::string name, double* value) override { return get(name, value); }
    bool getProperty(std::string name, int* value) override {
        long wide = 0;
        if (!get(name, &wide)) return false;
        *value = static_cast<int>(wide);
        return true;
    }
    bool getProperty(std::string name, long* value) override { return get(name, value); }
    bool getProperty(std::string name, std::string* value) override { return get(name, value); }
    bool setProperty(std::string name, bool value) override { return set(name, value); }
    bool setProperty(std::string name, float value) override {
        return set(name, static_cast<double>(value));
    }
    bool setProperty(std::string name, double value) override { return set(name, value); }
    bool setProperty(std::string name, int value) override {
        return set(name, static_cast<long>(value));
    }
    bool setProperty(std::string name, long value) override { return set(name, value); }
    bool setProperty(std::string name, std::string value) override { return set(name, value); }
    bool addListener(std::string, KorStampListener*) override { return false; }
    bool edit() override { return false; }
    void setTitle(std::string) override {}
    void addCategory(std::string) override {}
    bool append(KorStamp&) override { return false; }
    void resetIterators() override {
        next_ = 0;
        category_ = false;
    }
    bool getNextCategory(std::string* name) override {
        *name = "All";
        return !std::exchange(category_, true);
    }
    bool getNextProperty(std::string* name, int* index) override {
        if (next_ >= all_.size()) return false;
        *index = static_cast<int>(next_);
        *name = all_[next_++].name;
        return true;
    }
    void addTranslation(long, std::string, std::string) override {}
    void addErrorConstraint(std::string, std::string, std::string) override {}
    void addWarningConstraint(std::string, std::string, std::string) override {}
    void addEnableConstraint(std::string, std::string) override {}
    void addHint(std::string, std::string) override {}
    void addComputation(std::string, std::string) override {}
    void addClass(std::string, bool) override {}

  private:
    Property* find(const std::string& name) {
        for (Property& property : all_)
            if (property.name == name) return &property;
        return nullptr;
    }
    template <class Value>
    bool add(const std::string& name, Value value) {
        if (find(name)) return false;
        all_.push_back({name, value});
        return true;
    }
    template <class Value>
    bool set(const std::string& name, Value value) {
        Property* const property = find(name);
        if (!property) return false;
        property->value = value;
        return true;
    }
    template <class Value>
    bool get(const std::string& name, Value* value) {
        Property* const property = find(name);
        Value* const held = property ? std::get_if<Value>(&property->value) : nullptr;
        if (held) *value = *held;
        return held != nullptr;
    }

    std::vector<Property> all_;
    std::size_t next_ = 0;
    bool category_ = false;
};

}  // namespace

std::unique_ptr<KorStamp> makeForeignStamp() {
    return std::make_unique<ForeignStamp>();
}

}  // namespace korvant::test
