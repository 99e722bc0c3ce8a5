// The instruction at which a context stands.
#pragma once

#include <cstddef>

#include "host/engine/engine_compat.h"

namespace korvant {

namespace detail {
/// Bytes from a context to its registers; negative: not known.
extern std::ptrdiff_t registersInContext;
}  // namespace detail

/// Finds where contexts of this library keep their registers, which the engine shows to translators
/// to machine code alone: an engine of its own runs an empty function under one. True when
/// programPosition() answers from here on.
bool findRegisters();

namespace detail {
inline asSVMRegisters* registersOf(asIScriptContext& context) noexcept {
    if (registersInContext < 0) return nullptr;
    auto* const registers =
        reinterpret_cast<asSVMRegisters*>(reinterpret_cast<char*>(&context) + registersInContext);
    return registers->ctx == &context ? registers : nullptr;
}
}  // namespace detail

/// Many times faster than the line of the statement; null: unknown. At a statement it points into
/// the code of the function that runs.
inline const asDWORD* programPosition(asIScriptContext& context) noexcept {
    const asSVMRegisters* const registers = detail::registersOf(context);
    return registers != nullptr ? registers->programPointer : nullptr;
}

/// Whether the engine asks there for its line callback.
inline bool asksAt(const asDWORD* position) noexcept {
    return *reinterpret_cast<const asBYTE*>(position) == asBC_SUSPEND;
}

/// Of the instruction at a place, at least 1.
inline asUINT codeSizeAt(const asDWORD* code) noexcept {
    const auto operation = static_cast<asEBCInstr>(*reinterpret_cast<const asBYTE*>(code));
    const auto size = static_cast<asUINT>(asBCTypeSize[asBCInfo[operation].type]);
    return size > 0 ? size : 1;
}

/// Whether `context`, which the engine asks about, stands where the function that runs begins. The
/// engine asks there for the function, and then again for its first statement. False where the
/// place in the code is not known.
bool atEntry(asIScriptContext& context) noexcept;
/// Whether something in the function that runs leads back to the place at which `context` stands.
bool isLoop(asIScriptContext& context) noexcept;

/// Loops ask once more in each pass, and no statement begins there: in `while` at its own line, in
/// `for` and `do` at that of whatever stands before in the code. True where `context`, which the
/// engine asks about, stands at one of the latter.
bool asksInVain(asIScriptContext& context) noexcept;

}  // namespace korvant
