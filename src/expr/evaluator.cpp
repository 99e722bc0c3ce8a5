#include "expr/evaluator.h"

#include <algorithm>
#include <atomic>
#include <utility>
#include <vector>

#include "expr/expression_reader.h"
#include "expr/grouping.h"
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
    std::vector<Step> steps;
    std::vector<Slot> slots;
    std::uint32_t result = 0;
    std::uint64_t namesVersion = kNeverRead;
    bool reads = false;      ///< the text has no fault
    bool isProgram = false;  ///< steps are a program; else they are as read
};

struct ExpressionEvaluator::State {
    explicit State(const ExpressionLimits& given)
        : cache(given.cacheEntries, given.cacheBytes, shared.recalled),
          limits(given),
          reader(names) {
        run.cells = names.cells();
    }

    void forgetReadings();
    std::uint64_t currentVersion();
    ExpressionReader::Bounds bounds() const;
    double runRead(const Step* steps, std::size_t count, std::uint32_t result, std::size_t& failed);
    ExpressionResult evaluateText(std::string_view text);
    void evaluateFresh(std::string_view text, std::uint32_t hash, ExpressionResult& result);
    bool keepAndRun(std::string_view text, std::uint32_t hash, double& value);
    void runKept(KeptReading& kept, std::string_view text, ExpressionResult& result);
    void explain(std::string_view text, ExpressionResult& result);
    void tellFailure(bool read, ExpressionResult& result);
    Rule::Reading& readRule(Rule& rule);
    void keepInRule(Rule& rule, Rule::Reading& reading);
    bool runRule(Rule& rule, double& value);
    void releaseBuffersOf(std::string_view text);

    Shared shared;
    ProgramRun& run = shared.run;
    NameTable names;
    ReadingCache cache;
    ExpressionLimits limits;
    ExpressionReader reader;
    ProgramBuilder builder;
    Scratch<double> values;
};

/// Readings hold slots; a change in the set of names makes them worthless.
void ExpressionEvaluator::State::forgetReadings() {
    run.namesVersion = kVersionUnknown;
    run.cells = names.cells();
    cache.clear();
}

std::uint64_t ExpressionEvaluator::State::currentVersion() {
    if (run.namesVersion == kVersionUnknown) run.namesVersion = nextVersion();
    return run.namesVersion;
}

ExpressionReader::Bounds ExpressionEvaluator::State::bounds() const {
    // Positions in a text are kept in 32 bits.
    constexpr std::size_t mostBytes = std::size_t{1} << 30;
    return {std::min(limits.textBytes, mostBytes),
            static_cast<std::uint32_t>(std::max(limits.depth, 0))};
}

/// The value of steps as they were read; `failed` is the step that divides by zero, if any.
double ExpressionEvaluator::State::runRead(const Step* steps, std::size_t count,
                                           std::uint32_t result, std::size_t& failed) {
    values.reserve(count);
    failed = runAsRead(steps, count, names.cells(), values.data());
    return failed == kNoStep ? values[result] : 0.0;
}

ExpressionResult ExpressionEvaluator::State::evaluateText(std::string_view text) {
    ExpressionResult result;
    const auto hash = static_cast<std::uint32_t>(hashText(text));
    KeptReading* kept = cache.find(text, hash);
    if (!kept) {
        evaluateFresh(text, hash, result);
    } else if (kept->isProgram) {
        shared.recalled.remember(text, *kept);
        result.value = runProgram(kept->steps(text.size()), run);
    } else {
        runKept(*kept, text, result);
    }
    return result;
}

/// Reads, runs and keeps a text that is not in the cache.
void ExpressionEvaluator::State::evaluateFresh(std::string_view text, std::uint32_t hash,
                                               ExpressionResult& result) {
    if (!reader.read(text, bounds()))
        tellFailure(false, result);
    else if (!keepAndRun(text, hash, result.value))
        explain(text, result);
    releaseBuffersOf(text);
}

/// Keeps what was read and gives its value; false when it is to be explained.
bool ExpressionEvaluator::State::keepAndRun(std::string_view text, std::uint32_t hash,
                                            double& value) {
    const StepList& list = reader.steps();
    Steps& steps = reader.steps().steps();
    const std::uint32_t result = reader.result();
    // A program has about as many steps as were read.
    if (!list.mayFail() && cache.canKeep(text.size(), steps.size())) {
        if (!builder.build(steps, result)) return false;
        value = runProgram(builder.program().data(), run);
        cache.keep(text, hash, builder.program(), true, 0);
        return true;
    }
    std::size_t failed = kNoStep;
    value = runRead(steps.data(), steps.size(), result, failed);
    if (failed == kNoStep) cache.keep(text, hash, steps, false, result);
    return failed == kNoStep;
}

/// Runs a kept text that can divide by zero.
void ExpressionEvaluator::State::runKept(KeptReading& kept, std::string_view text,
                                         ExpressionResult& result) {
    std::size_t failed = kNoStep;
    result.value = runRead(kept.steps(text.size()), kept.stepCount, kept.result, failed);
    if (failed != kNoStep) explain(text, result);
}

/// Reads a text once more and runs all of it in its order, to tell what fails.
void ExpressionEvaluator::State::explain(std::string_view text, ExpressionResult& result) {
    const bool read = reader.read(text, bounds());
    tellFailure(read, result);
    releaseBuffersOf(text);
}

/// The value of the reading that has just been made, or what failed first: a step of it, or
/// else the reading itself. Messages come about here only.
void ExpressionEvaluator::State::tellFailure(bool read, ExpressionResult& result) {
    const StepList& list = reader.steps();
    std::size_t failed = kNoStep;
    if (read || list.mayFail())
        result.value =
            runRead(list.steps().data(), list.steps().size(), read ? reader.result() : 0, failed);
    if (failed != kNoStep)
        result.error = reader.message(reader.divisionByZero(failed));
    else if (!read)
        result.error = reader.message(reader.failure());
}

/// Reads a rule's text unless that was done with these names.
ExpressionEvaluator::Rule::Reading& ExpressionEvaluator::State::readRule(Rule& rule) {
    if (!rule.reading_) rule.reading_ = std::make_unique<Rule::Reading>();
    Rule::Reading& reading = *rule.reading_;
    if (reading.namesVersion == currentVersion()) return reading;
    reading.namesVersion = rule.programVersion_ = kNeverRead;
    reading.slots.clear();
    reading.reads = reader.read(rule.text_, bounds());
    if (reading.reads) keepInRule(rule, reading);
    reading.namesVersion = run.namesVersion;
    if (reading.reads && reading.isProgram) rule.programVersion_ = run.namesVersion;
    releaseBuffersOf(rule.text_);
    return reading;
}

void ExpressionEvaluator::State::keepInRule(Rule& rule, Rule::Reading& reading) {
    Steps& steps = reader.steps().steps();
    reading.steps.assign(steps.begin(), steps.end());
    reading.result = reader.result();
    for (const Step& step : reading.steps)
        if (step.read.kind == StepKind::Name) reading.slots.push_back(static_cast<Slot>(step.a));
    std::sort(reading.slots.begin(), reading.slots.end());
    reading.slots.erase(std::unique(reading.slots.begin(), reading.slots.end()),
                        reading.slots.end());
    reading.isProgram = !reader.steps().mayFail() && builder.build(steps, reading.result);
    if (reading.isProgram) reading.steps.assign(builder.program().begin(), builder.program().end());
    rule.program_ = reading.steps.data();
}

bool ExpressionEvaluator::State::runRule(Rule& rule, double& value) {
    const Rule::Reading& reading = readRule(rule);
    if (!reading.reads) return false;
    std::size_t failed = kNoStep;
    if (reading.isProgram)
        value = runProgram(reading.steps.data(), run);
    else
        value = runRead(reading.steps.data(), reading.steps.size(), reading.result, failed);
    return failed == kNoStep;
}

/// Gives memory back that only a very long text needed.
void ExpressionEvaluator::State::releaseBuffersOf(std::string_view text) {
    if (text.size() <= kLongText) return;
    reader.releaseLargeBuffers();
    builder.releaseLargeBuffers();
    values.releaseIfLarge();
}

ExpressionEvaluator::ExpressionEvaluator(const ExpressionLimits& limits)
    : state_(std::make_unique<State>(limits)), shared_(&state_->shared) {}

ExpressionEvaluator::~ExpressionEvaluator() = default;

ExpressionEvaluator::ExpressionEvaluator(const ExpressionEvaluator& other)
    : ExpressionEvaluator(other.state_->limits) {
    state_->names = other.state_->names;
    state_->forgetReadings();
}

ExpressionEvaluator& ExpressionEvaluator::operator=(const ExpressionEvaluator& other) {
    if (this == &other) return *this;
    state_ = std::move(ExpressionEvaluator(other).state_);
    shared_ = &state_->shared;
    return *this;
}

ExpressionResult ExpressionEvaluator::evaluateOther(std::string_view text) {
    return state_->evaluateText(text);
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

ExpressionEvaluator::Grouping ExpressionEvaluator::grouping(std::string_view text) {
    Grouping grouping;
    State& state = *state_;
    SplitRecorder recorder;
    if (state.reader.read(text, state.bounds(), &recorder)) {
        SplitRecord record = recorder.record();
        writeGrouped(state.reader.text(), state.names, record, grouping.text);
    } else {
        grouping.error = state.reader.message(state.reader.failure());
    }
    state.releaseBuffersOf(text);
    return grouping;
}

void ExpressionEvaluator::setCacheEntries(std::size_t entries) {
    state_->limits.cacheEntries = entries;
    state_->cache.setEntries(entries);
}

ExpressionResult ExpressionEvaluator::evaluate(Rule& rule) {
    ExpressionResult result;
    if (!evaluateValue(rule, result.value)) state_->explain(rule.text_, result);
    return result;
}

bool ExpressionEvaluator::evaluateOther(Rule& rule, double& value) {
    return state_->runRule(rule, value);
}

std::span<const ExpressionEvaluator::Slot> ExpressionEvaluator::slotsRead(Rule& rule) {
    return state_->readRule(rule).slots;
}

ExpressionEvaluator::Rule::Rule() : programVersion_(kNeverRead) {}

ExpressionEvaluator::Rule::Rule(std::string text)
    : text_(std::move(text)), programVersion_(kNeverRead) {}

ExpressionEvaluator::Rule::~Rule() = default;

ExpressionEvaluator::Rule::Rule(const Rule& other) : Rule(other.text_) {}

ExpressionEvaluator::Rule& ExpressionEvaluator::Rule::operator=(const Rule& other) {
    if (this != &other) *this = Rule(other.text_);
    return *this;
}

ExpressionEvaluator::Rule::Rule(Rule&& other) noexcept
    : text_(std::move(other.text_)),
      reading_(std::move(other.reading_)),
      program_(other.program_),
      programVersion_(std::exchange(other.programVersion_, kNeverRead)) {}

ExpressionEvaluator::Rule& ExpressionEvaluator::Rule::operator=(Rule&& other) noexcept {
    text_ = std::move(other.text_);
    reading_ = std::move(other.reading_);
    program_ = other.program_;
    programVersion_ = std::exchange(other.programVersion_, kNeverRead);
    return *this;
}

}  // namespace korvant
