// The engines that were configured, and the contexts made for them.
#pragma once

#include <string>
#include <vector>

#include "host/engine/engine_compat.h"

namespace korvant {

/// One configured engine. Nothing in it is counted: both go when the host lets go of them, and the
/// engine says so.
struct EngineRecord {
    asIScriptEngine* engine = nullptr;
    asIScriptContext* context = nullptr;  ///< null when the host has destroyed it
    bool released = false;                ///< the host said that it needs it no more
    bool broken = false;                  ///< its compiler was left in the middle
    std::vector<std::string> complaints;  ///< what the engine said about the registrations
};

/// Told when the engine destroys something that is kept without a count.
class EngineObserver {
  public:
    virtual ~EngineObserver() = default;
    virtual void onEngineGone(asIScriptEngine* engine) = 0;
    virtual void onContextGone(asIScriptContext* context) = 0;
};

/// Makes the engine tell `observer` of its own end and of the end of watched contexts.
void observeEngine(asIScriptEngine* engine, EngineObserver& observer);
void observeContext(asIScriptContext* context, EngineObserver& observer);
/// Ends that; for an observer that goes first.
void forgetObserver(asIScriptEngine* engine);
void forgetObserver(asIScriptContext* context);

}  // namespace korvant
