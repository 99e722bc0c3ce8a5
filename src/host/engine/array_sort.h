// A stable sort that may be stopped.
#pragma once

#include <algorithm>
#include <cstddef>

namespace korvant {

/// Merges halves of halves. `before(a, b)` says whether a stands before b; an order that
/// contradicts itself gives some order of the same items. `stop()` is asked every `kChunk`
/// comparisons and once for every merge; when it is true the items are left in some order.
/// `spare` has room for half of the items.
template <class Item, std::size_t kInserted, std::size_t kChunk, class Before, class Stop>
class MergeSort {
  public:
    MergeSort(Item* spare, Before before, Stop stop)
        : spare_(spare), before_(before), stop_(stop) {}

    void sort(Item* items, std::size_t count) {
        if (count <= kInserted) return insertEach(items, count);
        const std::size_t half = count / 2;
        sort(items, half);
        sort(items + half, count - half);
        if (!stop_() && before_(items[half], items[half - 1])) merge(items, half, count);
    }

  private:
    void insertEach(Item* items, std::size_t count) {
        for (std::size_t i = 1; i < count; ++i) {
            const Item item = items[i];
            std::size_t at = i;
            for (; at > 0 && before_(item, items[at - 1]); --at) items[at] = items[at - 1];
            items[at] = item;
        }
    }

    void merge(Item* items, std::size_t half, std::size_t count) {
        Item* left = spare_;
        Item* const leftEnd = std::copy(items, items + half, spare_);
        const Item* right = items + half;
        const Item* const rightEnd = items + count;
        Item* out = items;
        while (left != leftEnd && right != rightEnd) {
            std::size_t steps = std::min(static_cast<std::size_t>(leftEnd - left),
                                         static_cast<std::size_t>(rightEnd - right));
            for (steps = std::min(steps, kChunk); steps != 0; --steps) {
                const bool fromRight = before_(*right, *left);
                *out++ = fromRight ? *right : *left;
                right += fromRight;
                left += !fromRight;
            }
            if (stop_()) break;
        }
        std::copy(left, leftEnd, out);
    }

    Item* spare_;
    Before before_;
    Stop stop_;
};

template <class Item, std::size_t kInserted, std::size_t kChunk, class Before, class Stop>
void mergeSort(Item* items, std::size_t count, Item* spare, Before before, Stop stop) {
    MergeSort<Item, kInserted, kChunk, Before, Stop>(spare, before, stop).sort(items, count);
}

}  // namespace korvant
