// A property object of somebody else's making.
#pragma once

#include <memory>

#include "korvant/kor_stamp.h"

namespace korvant::test {

/// It keeps texts, integers and reals, and is compiled without run-time type information. Empty at
/// first.
[[gnu::visibility("default")]] std::unique_ptr<KorStamp> makeForeignStamp();

}  // namespace korvant::test
