// Life of a property object, and what belongs to all of them.
#include "korvantide/script_object.h"

#include <algorithm>
#include <cassert>
#include <memory>
#include <mutex>
#include <unordered_set>
#include <utility>

#include "host/engine/script_string.h"
#include "object/script/object_access.h"

using korvant::ObjectAccess;
using korvant::ObjectModel;
using korvant::orRaise;

const std::int32_t ScriptObject::BU_ABORT_RETRY_IGNORE;
const std::int32_t ScriptObject::BU_CANCEL_TRY_CONTINUE;
const std::int32_t ScriptObject::BU_CONTINUE_ABORT;
const std::int32_t ScriptObject::BU_IGNORE_ALL_CANCEL;
const std::int32_t ScriptObject::BU_RETRY_CANCEL;
const std::int32_t ScriptObject::BU_SKIP_ALL_CANCEL;
const std::int32_t ScriptObject::BU_YES_NO;
const std::int32_t ScriptObject::BU_YES_NO_CANCEL;
const std::int32_t ScriptObject::BU_YES_NO_ALL;
const std::int32_t ScriptObject::BU_YES_NO_ALL_CANCEL;
const std::int32_t ScriptObject::BU_YES_ALL_NO;
const std::int32_t ScriptObject::BU_YES_ALL_NO_CANCEL;
const std::int32_t ScriptObject::BU_YES_ALL_NO_ALL;
const std::int32_t ScriptObject::BU_YES_ALL_NO_ALL_CANCEL;
const std::int32_t ScriptObject::BU_OK;
const std::int32_t ScriptObject::BU_OK_CANCEL;
const std::int32_t ScriptObject::IC_WARNING;
const std::int32_t ScriptObject::IC_ERROR;
const std::int32_t ScriptObject::IC_INFORMATION;
const std::int32_t ScriptObject::IC_QUESTION;
const std::int32_t ScriptObject::ID_ABORT;
const std::int32_t ScriptObject::ID_CANCEL;
const std::int32_t ScriptObject::ID_CLOSE;
const std::int32_t ScriptObject::ID_CONTINUE;
const std::int32_t ScriptObject::ID_IGNORE;
const std::int32_t ScriptObject::ID_IGNOREALL;
const std::int32_t ScriptObject::ID_NO;
const std::int32_t ScriptObject::ID_NOTOALL;
const std::int32_t ScriptObject::ID_OK;
const std::int32_t ScriptObject::ID_RETRY;
const std::int32_t ScriptObject::ID_SKIP;
const std::int32_t ScriptObject::ID_SKIPALL;
const std::int32_t ScriptObject::ID_TRYAGAIN;
const std::int32_t ScriptObject::ID_YES;
const std::int32_t ScriptObject::ID_YESTOALL;

std::int32_t ScriptObject::m_locale = 0;
ScriptObject::Hook ScriptObject::m_before = nullptr;
ScriptObject::Hook ScriptObject::m_after = nullptr;

namespace {

/// All objects that live, so that one of somebody else's making can be told from ours without its
/// run-time type, which a host may have compiled without.
struct LiveObjects {
    std::mutex lock;
    std::unordered_set<const KorStamp*> all;
};

/// Never destroyed: objects of a host may outlive everything else.
LiveObjects& liveObjects() {
    static auto* const objects = new LiveObjects;
    return *objects;
}

void noteBorn(const KorStamp* object) {
    LiveObjects& live = liveObjects();
    const std::lock_guard<std::mutex> guard(live.lock);
    live.all.insert(object);
}

void noteGone(const KorStamp* object) noexcept {
    LiveObjects& live = liveObjects();
    const std::lock_guard<std::mutex> guard(live.lock);
    live.all.erase(object);
}

}  // namespace

ScriptObject* ObjectAccess::from(KorStamp& object) {
    LiveObjects& live = liveObjects();
    const std::lock_guard<std::mutex> guard(live.lock);
    return live.all.count(&object) != 0 ? static_cast<ScriptObject*>(&object) : nullptr;
}

ScriptObject::ScriptObject() : impl_(nullptr) {
    auto made = std::make_unique<Impl>();
    noteBorn(this);
    impl_ = made.release();
}

ScriptObject::ScriptObject(const ScriptObject& other) : KorStamp(other), impl_(nullptr) {
    auto made = std::make_unique<Impl>();
    made->model = other.impl_->model;
    // The count that the copy reports is its own: so many releases let it go.
    made->owning = std::max(0, made->model.reportedCount);
    noteBorn(this);
    impl_ = made.release();
}

bool ScriptObject::ranOutOfMemory() {
    return std::exchange(korvant::objectMemoryRefused, false);
}

ScriptObject& ScriptObject::operator=(const ScriptObject& other) {
    if (this != &other) orRaise([&] { ObjectAccess::assign(*this, other.impl_->model); });
    return *this;
}

void ObjectAccess::assign(ScriptObject& object, const ObjectModel& content) {
    ScriptObject::Impl& impl = *object.impl_;
    ObjectModel copy = content;
    // Deliberate: the count of the source comes along, as hosts expect, but never to an object
    // that scripts hold.
    if (impl.heldByScript) copy.reportedCount = impl.model.reportedCount;
    // References that somebody has to this object stay what they are.
    if (!impl.heldByScript && impl.owning <= 0) impl.owning = std::max(0, copy.reportedCount);
    impl.model = std::move(copy);
}

ScriptObject::~ScriptObject() {
    noteGone(this);
    delete impl_;
}

void ScriptObject::addRef() {
    ++impl_->owning;
    ++impl_->model.reportedCount;
}

void ScriptObject::release() {
    assert(!impl_->heldByScript || impl_->owning > 0);
    --impl_->model.reportedCount;
    if (impl_->owning-- != 1) return;
    impl_->orphaned = true;
    if (impl_->holds == 0) delete this;
}

std::int32_t ScriptObject::referenceCount() const {
    return impl_->model.reportedCount;
}

ScriptObject* ObjectAccess::makeForScript() noexcept {
    return orRaise<ScriptObject*>(nullptr, [] {
        auto* object = new ScriptObject;
        giveToScript(*object);
        return object;
    });
}

ScriptObject* ObjectAccess::copyForScript(const ScriptObject& other) noexcept {
    return orRaise<ScriptObject*>(nullptr, [&other] {
        auto* object = new ScriptObject(other);
        giveToScript(*object);
        return object;
    });
}

void ObjectAccess::giveToScript(ScriptObject& object) noexcept {
    object.impl_->owning = 1;
    object.impl_->model.reportedCount = 1;
    object.impl_->heldByScript = true;
}

void ScriptObject::clear() {
    impl_->model.clear();
}

void ScriptObject::setTitle(std::string title) {
    _setTitle(title);
}

void ScriptObject::_setTitle(std::string& title) {
    orRaise([&] { impl_->model.title.set(title); });
}

std::string ScriptObject::getTitle() {
    return orRaise(std::string(), [&] { return impl_->model.title.text(); });
}

std::string* ScriptObject::_getTitle() {
    return orRaise<std::string*>(nullptr, [&] { return impl_->model.title.own(); });
}

korvant::ScriptString* ObjectAccess::title(ScriptObject& object) {
    ScriptString* const title = object.impl_->model.title.string();
    title->addRef();
    return title;
}

bool ScriptObject::addListener(std::string name, KorStampListener* listener) {
    const std::int32_t index = impl_->model.find(name);
    if (index == ObjectModel::kUnknown) return false;
    impl_->model.listeners[static_cast<std::size_t>(index)] = listener;
    return true;
}
