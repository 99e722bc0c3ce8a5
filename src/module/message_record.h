// A message of the compiler as hosts in C read it.
#pragma once

#include "host/run/build_messages.h"
#include "korvantide/host_interface.h"

namespace korvant {

/// The text belongs to `message`, and lives as long as that one does.
inline KorvantBuildMessage toRecord(const BuildMessage& message) {
    KorvantBuildMessage record{};
    record.size = sizeof record;
    record.kind = static_cast<std::int32_t>(message.kind);
    record.row = message.row;
    record.column = message.column;
    record.text = message.plain.c_str();
    return record;
}

}  // namespace korvant
