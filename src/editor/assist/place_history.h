// Where the user has come from, to go back there.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace korvant {

/// Positions in bytes; they move with the text.
class PlaceHistory {
  public:
    /// The user goes from here to somewhere else. Forgets what lay ahead.
    void leave(std::size_t position);
    /// `position` is where the user is now.
    std::optional<std::size_t> back(std::size_t position);
    std::optional<std::size_t> forward(std::size_t position);
    /// `removed` bytes behind `begin` have become `added` ones.
    void changed(std::size_t begin, std::size_t removed, std::size_t added);
    void clear();

  private:
    std::vector<std::size_t> behind_, ahead_;
};

}  // namespace korvant
