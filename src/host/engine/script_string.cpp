#include "host/engine/script_string.h"

#include <functional>
#include <new>
#include <utility>

#include "host/engine/memory_budget.h"
#include "host/engine/native_call.h"

namespace korvant {

namespace {

/// What one object takes beside the text's own buffer.
constexpr std::size_t kObjectBytes = sizeof(ScriptString);
/// Objects in the free list keep buffers up to this size, so that a loop over short lines
/// allocates nothing.
constexpr std::size_t kKeptBuffer = 256;
constexpr std::size_t kPooled = 512;
/// The result string is emptied at the end of a run when it holds more.
constexpr std::size_t kKeptResult = std::size_t{64} << 10;

}  // namespace

/// A bounded list of objects that nobody uses. Never destroyed, because scripts' strings may be
/// released while the process ends.
class StringPool {
  public:
    ScriptString* take() noexcept {
        if (!memoryBudget.charge(kObjectBytes)) return nullptr;
        if (free_ == 0) return makeNew();
        ScriptString* string = objects_[--free_];
        string->count_ = 1;
        return string;
    }

    void give(ScriptString* string) noexcept {
        memoryBudget.release(kObjectBytes + string->charged_);
        string->charged_ = 0;
        if (free_ == kPooled || string->text.capacity() > kKeptBuffer) {
            delete string;
            return;
        }
        string->text.clear();
        objects_[free_++] = string;
    }

  private:
    ScriptString* makeNew() noexcept {
        auto* string = new (std::nothrow) ScriptString;
        if (string == nullptr) memoryBudget.release(kObjectBytes);
        return string;
    }

    ScriptString* objects_[kPooled] = {};
    std::size_t free_ = 0;
};

namespace {

StringPool pool;

}  // namespace

// What comes from the pool is empty, so that appending does, which is the least that can be called.

ScriptString* ScriptString::create(std::string_view bytes) noexcept {
    ScriptString* string = pool.take();
    if (string == nullptr) return nullptr;
    if (string->makeRoom(bytes.size())) {
        string->text.append(bytes);
        return string;
    }
    pool.give(string);
    return nullptr;
}

ScriptString* ScriptString::join(std::string_view first, std::string_view second) noexcept {
    ScriptString* string = pool.take();
    if (string == nullptr) return nullptr;
    if (string->makeRoom(first.size() + second.size())) {
        string->text.append(first).append(second);
        return string;
    }
    pool.give(string);
    return nullptr;
}

ScriptString* ScriptString::createConstant(std::string_view bytes) noexcept {
    auto* string = new (std::nothrow) ScriptString;
    if (string == nullptr) return nullptr;
    string->count_ = kImmortal;
    string->constant_ = true;
    try {
        string->text.assign(bytes);
    } catch (...) {
        destroyConstant(string);
        return nullptr;
    }
    return string;
}

void ScriptString::giveBack() noexcept {
    pool.give(this);
}

bool ScriptString::assign(std::string_view bytes) noexcept {
    if (bytes.size() > text.capacity()) {
        // What is assigned may lie in the buffer that growing would free.
        try {
            return adopt(std::string(bytes));
        } catch (...) {
            return false;
        }
    }
    text.assign(bytes);
    settle();
    return true;
}

bool ScriptString::append(std::string_view bytes) noexcept {
    const std::less_equal<const char*> before;
    const char* const own = text.data();
    const bool inside = before(own, bytes.data()) && before(bytes.data(), own + text.size());
    const std::size_t offset = inside ? static_cast<std::size_t>(bytes.data() - own) : 0;
    if (!makeRoom(text.size() + bytes.size())) return false;
    text.append(inside ? text.data() + offset : bytes.data(), bytes.size());
    return true;
}

bool ScriptString::resize(std::size_t bytes) noexcept {
    if (!makeRoom(bytes)) return false;
    text.resize(bytes);
    return true;
}

bool ScriptString::adopt(std::string&& bytes) noexcept {
    if (bytes.size() > memoryBudget.stringLimit) return false;
    const std::size_t heap = heapBytes(bytes);
    if (heap > charged_ && !memoryBudget.charge(heap - charged_)) return false;
    if (heap < charged_) memoryBudget.release(charged_ - heap);
    charged_ = heap;
    text.swap(bytes);  // a plain assignment may keep the old buffer
    return true;
}

bool ScriptString::grow(std::size_t bytes) noexcept {
    const std::size_t limit = memoryBudget.stringLimit;
    if (bytes > limit) return false;
    const std::size_t doubled = text.capacity() > limit / 2 ? limit : text.capacity() * 2;
    const std::size_t wanted = (text.empty() || bytes > doubled ? bytes : doubled) + 1;
    if (!memoryBudget.charge(wanted)) return false;
    try {
        text.reserve(wanted - 1);
    } catch (...) {
        memoryBudget.release(wanted);
        return false;
    }
    memoryBudget.release(charged_);
    charged_ = wanted;
    settle();
    return true;
}

void ScriptString::countAnew() noexcept {
    const std::size_t heap = heapBytes(text);
    memoryBudget.used += heap;
    memoryBudget.release(charged_);
    charged_ = heap;
}

namespace {

ScriptString* resultString() noexcept {
    static ScriptString* const string = ScriptString::create();
    return string;
}

}  // namespace

ScriptString* returnResultString(std::string bytes) noexcept {
    ScriptString* const string = resultString();
    if (string == nullptr || !string->adopt(std::move(bytes))) {
        // An object that comes with an exception is left lying in the engine.
        raiseInScript("Out of memory");
        return nullptr;
    }
    string->addRef();
    return string;
}

void trimResultString() noexcept {
    ScriptString* const string = resultString();
    if (string == nullptr || string->count() > 1 || string->text.capacity() <= kKeptResult) return;
    string->adopt(std::string());
}

}  // namespace korvant
