// The values of an object while they are edited.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "object/model/object_model.h"

namespace korvant {

/// A value of one of the four kinds that a property has a slot for.
using SlotValue = std::variant<std::string, std::int32_t, double, bool>;

/// One property's four slots.
struct ValueSlots {
    std::string text;
    std::int32_t integer = 0;
    double real = 0.0;
    bool boolean = false;
};

/// The same bits: a not-a-number equals itself, and zero is not minus zero.
bool sameReal(double a, double b) noexcept;
bool sameSlots(const ValueSlots& a, const ValueSlots& b) noexcept;
ValueSlots slotsOf(const ObjectModel& object, const PropertyRecord& property);

struct ValueChange {
    std::int32_t property = 0;
    SlotValue before;
    SlotValue after;
};
using ValueJournal = std::vector<ValueChange>;

/// Four sequences of values by property index. Every change is noted for whoever follows them,
/// and in the journal while there is one.
class WorkingCopy {
  public:
    explicit WorkingCopy(const ObjectModel& object);

    std::int32_t count() const noexcept { return static_cast<std::int32_t>(reals_.size()); }
    const std::string& text(std::int32_t property) const { return texts_[at(property)]; }
    std::int32_t integer(std::int32_t property) const { return integers_[at(property)]; }
    double real(std::int32_t property) const { return reals_[at(property)]; }
    bool boolean(std::int32_t property) const { return booleans_[at(property)] != 0; }
    ValueSlots slots(std::int32_t property) const;

    // False when the value is there already.
    bool setText(std::int32_t property, const std::string& value);
    bool setInteger(std::int32_t property, std::int32_t value);
    bool setReal(std::int32_t property, double value);
    bool setBoolean(std::int32_t property, bool value);
    bool set(std::int32_t property, const SlotValue& value);
    void setSlots(std::int32_t property, const ValueSlots& values);

    /// Null for none. The journal must outlive its use here.
    void setJournal(ValueJournal* journal) noexcept { journal_ = journal; }

    /// Properties that changed since the last clearChanged(); one may be named several times.
    const std::vector<std::int32_t>& changed() const noexcept { return changed_; }
    void clearChanged() noexcept { changed_.clear(); }

  private:
    static std::size_t at(std::int32_t property) { return static_cast<std::size_t>(property); }
    template <class Value>
    void note(std::int32_t property, const Value& before, const Value& after);

    std::vector<std::string> texts_;
    std::vector<std::int32_t> integers_;
    std::vector<double> reals_;
    std::vector<unsigned char> booleans_;
    std::vector<std::int32_t> changed_;
    ValueJournal* journal_ = nullptr;
};

}  // namespace korvant
