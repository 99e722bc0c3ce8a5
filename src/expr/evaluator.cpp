#include "expr/evaluator.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "expr/expression_reader.h"
#include "expr/name_table.h"
#include "expr/program.h"
#include "expr/program_builder.h"
#include "expr/reading_cache.h"

namespace korvant {
namespace {

using namespace expr;

constexpr std::uint64_t kVersionUnknown = 0;
constexpr std::uint64_t kNeverRead = 1;
constexpr std::size_t kLongText = 4096;

/// Versions are unique among all evaluators of the process, so that one number tells whether
/// a rule was read by this evaluator with these names.
std::uint64_t nextVersion() {
    static std::atomic<std::uint64_t> last{kNeverRead};
    return ++last;
}

}  // namespace

struct ExpressionEvaluator::Rule::Reading {
    SplitRecord splits;
    Steps steps;
    std::vector<Slot> slots;
    std::uint32_t result = 0;
    bool reads = false;
    bool isProgram = false;  ///< steps are a program; else they are as read
};

struct ExpressionEvaluator::State {
    explicit State(const ExpressionLimits& given)
        : limits(given), cache(given.cacheEntries, given.cacheBytes), reader(names) {}

    void forgetReadings();
    std::uint64_t currentVersion();
    ExpressionReader::Bounds bounds() const;
    double runRead(const Steps& steps, std::uint32_t result, std::size_t& failed);
    void readAndRun(std::string_view text, bool keep, ExpressionResult& result);
    void keepReading(std::string_view text);
    bool readAgain(const std::string& text, SplitRecord& splits);
    void readRule(Rule& rule);
    bool runRule(Rule& rule, double& value);
    void releaseBuffersOf(std::string_view text);

    ExpressionLimits limits;
    NameTable names;
    ReadingCache cache;
    ExpressionReader reader;
    ProgramBuilder builder;
    std::vector<double> values;
    std::uint64_t version = kVersionUnknown;
};

/// Readings hold slots; a change in the set of names makes them worthless.
void ExpressionEvaluator::State::forgetReadings() {
    version = kVersionUnknown;
    cache.clear();
}

std::uint64_t ExpressionEvaluator::State::currentVersion() {
    if (version == kVersionUnknown) version = nextVersion();
    return version;
}

ExpressionReader::Bounds ExpressionEvaluator::State::bounds() const {
    // Positions in a text are kept in 32 bits.
    constexpr std::size_t mostBytes = std::size_t{1} << 30;
    return {std::min(limits.textBytes, mostBytes),
            static_cast<std::uint32_t>(std::max(limits.depth, 0))};
}

/// The value of steps as they were read; `failed` is the step that divides by zero, if any.
double ExpressionEvaluator::State::runRead(const Steps& steps, std::uint32_t result,
                                           std::size_t& failed) {
    if (values.size() < steps.size()) values.resize(steps.size());
    failed = runAsRead(steps.data(), steps.size(), names.cells(), values.data());
    return failed == kNoStep ? values[result] : 0.0;
}

/// The one way by which messages come about: everything in the order of the text, so that the
/// failure that is met first is told.
void ExpressionEvaluator::State::readAndRun(std::string_view text, bool keep,
                                            ExpressionResult& result) {
    const bool read = reader.read(text, bounds());
    const StepList& steps = reader.steps();
    std::size_t failed = kNoStep;
    if (read || steps.mayFail())
        result.value = runRead(steps.steps(), read ? reader.result() : 0, failed);
    if (failed != kNoStep)
        result.error = reader.message(reader.divisionByZero(failed));
    else if (!read)
        result.error = reader.message(reader.failure());
    else if (keep)
        keepReading(text);
    releaseBuffersOf(text);
}

void ExpressionEvaluator::State::keepReading(std::string_view text) {
    StepList& steps = reader.steps();
    // A program has about as many steps as were read.
    if (!cache.canKeep(text.size(), steps.steps().size())) return;
    if (steps.mayFail())
        cache.keep(text, steps.steps(), false, reader.result());
    else if (builder.build(steps.steps(), reader.result()))
        cache.keep(text, builder.program(), true, 0);
}

/// Reads a rule's text by its recorded splits where they are still good.
bool ExpressionEvaluator::State::readAgain(const std::string& text, SplitRecord& splits) {
    const ExpressionReader::Replay replay = reader.replay(text, bounds(), splits);
    if (replay == ExpressionReader::Replay::Mismatch) return reader.read(text, bounds(), &splits);
    return replay == ExpressionReader::Replay::Read;
}

void ExpressionEvaluator::State::readRule(Rule& rule) {
    if (!rule.reading_) rule.reading_ = std::make_unique<Rule::Reading>();
    Rule::Reading& reading = *rule.reading_;
    rule.namesVersion_ = kNeverRead;
    reading.slots.clear();
    reading.isProgram = false;
    reading.reads = readAgain(rule.text_, reading.splits);
    if (reading.reads) {
        StepList& steps = reader.steps();
        reading.steps = steps.steps();
        reading.result = reader.result();
        for (const Step& step : reading.steps)
            if (step.read.kind == StepKind::Name)
                reading.slots.push_back(static_cast<Slot>(step.a));
        std::sort(reading.slots.begin(), reading.slots.end());
        reading.slots.erase(std::unique(reading.slots.begin(), reading.slots.end()),
                            reading.slots.end());
        reading.isProgram = !steps.mayFail() && builder.build(steps.steps(), reading.result);
        if (reading.isProgram) reading.steps = builder.program();
    }
    rule.namesVersion_ = currentVersion();
    releaseBuffersOf(rule.text_);
}

bool ExpressionEvaluator::State::runRule(Rule& rule, double& value) {
    if (rule.namesVersion_ != version) readRule(rule);
    const Rule::Reading& reading = *rule.reading_;
    if (!reading.reads) return false;
    if (reading.isProgram) {
        value = runProgram(reading.steps.data(), names.cells());
        return true;
    }
    std::size_t failed = kNoStep;
    value = runRead(reading.steps, reading.result, failed);
    return failed == kNoStep;
}

/// Gives memory back that only a very long text needed.
void ExpressionEvaluator::State::releaseBuffersOf(std::string_view text) {
    if (text.size() <= kLongText) return;
    reader.releaseLargeBuffers();
    builder.releaseLargeBuffers();
    values = {};
}

ExpressionEvaluator::ExpressionEvaluator(const ExpressionLimits& limits)
    : state_(std::make_unique<State>(limits)) {}

ExpressionEvaluator::~ExpressionEvaluator() = default;

ExpressionEvaluator::ExpressionEvaluator(const ExpressionEvaluator& other)
    : ExpressionEvaluator(other.state_->limits) {
    state_->names = other.state_->names;
}

ExpressionEvaluator& ExpressionEvaluator::operator=(const ExpressionEvaluator& other) {
    if (this != &other) state_ = std::move(ExpressionEvaluator(other).state_);
    return *this;
}

ExpressionResult ExpressionEvaluator::evaluate(std::string_view text) {
    ExpressionResult result;
    State& state = *state_;
    const KeptReading* kept = state.cache.find(text);
    if (kept && kept->isProgram) [[likely]] {
        result.value = runProgram(kept->steps(), state.names.cells());
        return result;
    }
    state.readAndRun(text, !kept, result);
    return result;
}

ExpressionEvaluator::Slot ExpressionEvaluator::setValue(std::string_view name, double value) {
    NameTable& names = state_->names;
    const std::size_t before = names.size();
    const Slot slot = names.findOrAdd(name);
    names.cells()[slot] = value;
    if (names.size() != before) state_->forgetReadings();
    return slot;
}

ExpressionEvaluator::Slot ExpressionEvaluator::findSlot(std::string_view name) const {
    return state_->names.find(name);
}

void ExpressionEvaluator::setSlotValue(Slot slot, double value) noexcept {
    if (slot < state_->names.slotCount()) state_->names.cells()[slot] = value;
}

double ExpressionEvaluator::slotValue(Slot slot) const noexcept {
    return slot < state_->names.slotCount() ? state_->names.cells()[slot] : 0.0;
}

bool ExpressionEvaluator::removeValue(std::string_view name) {
    if (!state_->names.remove(name)) return false;
    state_->forgetReadings();
    return true;
}

void ExpressionEvaluator::clearValues() {
    if (state_->names.size() == 0) return;
    state_->names.clear();
    state_->forgetReadings();
}

std::size_t ExpressionEvaluator::valueCount() const noexcept {
    return state_->names.size();
}

void ExpressionEvaluator::setCacheEntries(std::size_t entries) {
    state_->limits.cacheEntries = entries;
    state_->cache.setEntries(entries);
}

ExpressionResult ExpressionEvaluator::evaluate(Rule& rule) {
    ExpressionResult result;
    if (!state_->runRule(rule, result.value)) state_->readAndRun(rule.text_, false, result);
    return result;
}

bool ExpressionEvaluator::evaluateValue(Rule& rule, double& value) {
    return state_->runRule(rule, value);
}

std::span<const ExpressionEvaluator::Slot> ExpressionEvaluator::slotsRead(Rule& rule) {
    if (rule.namesVersion_ != state_->currentVersion()) state_->readRule(rule);
    return rule.reading_->slots;
}

ExpressionEvaluator::Rule::Rule() : namesVersion_(kNeverRead) {}

ExpressionEvaluator::Rule::Rule(std::string text)
    : text_(std::move(text)), namesVersion_(kNeverRead) {}

ExpressionEvaluator::Rule::~Rule() = default;

ExpressionEvaluator::Rule::Rule(const Rule& other) : Rule(other.text_) {}

ExpressionEvaluator::Rule& ExpressionEvaluator::Rule::operator=(const Rule& other) {
    if (this != &other) *this = Rule(other.text_);
    return *this;
}

ExpressionEvaluator::Rule::Rule(Rule&& other) noexcept
    : text_(std::move(other.text_)),
      reading_(std::move(other.reading_)),
      namesVersion_(std::exchange(other.namesVersion_, kNeverRead)) {}

ExpressionEvaluator::Rule& ExpressionEvaluator::Rule::operator=(Rule&& other) noexcept {
    text_ = std::move(other.text_);
    reading_ = std::move(other.reading_);
    namesVersion_ = std::exchange(other.namesVersion_, kNeverRead);
    return *this;
}

}  // namespace korvant
