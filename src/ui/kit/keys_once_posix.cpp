#include "ui/kit/keys_once.h"

namespace korvant::ui {

/// Keys leave the queue before anybody hears of them.
void hearKeysOnce() {}

}  // namespace korvant::ui
