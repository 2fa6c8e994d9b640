#pragma once
// A list of the quick launch: its rows for the typed text, with group headers. Every
// provider ranks the same way: rows whose text matches, best score first, rows of equal
// score in their given order; a group without rows is left out with its header.
#include <QString>
#include <algorithm>
#include <vector>

#include "QuickLaunch/CommandProviderItem.h"
#include "QuickLaunch/FuzzyMatch.h"

class CommandProvider {
 public:
  virtual ~CommandProvider() = default;

  const std::vector<CommandProviderItem>& items() const { return items_; }
  virtual void refresh(const QString& text) = 0;

  // The rows of `all` that match `text`, best first; all of them, as given, for no text.
  template <typename T>
  static std::vector<T> ranked(const std::vector<T>& all, const QString& text) {
    if (text.isEmpty()) return all;
    std::vector<std::pair<double, const T*>> scored;
    for (const T& row : all) {
      const QString candidate = CommandProviderItems::matchText(CommandProviderItem(row));
      if (FuzzyMatch::matches(text, candidate)) scored.emplace_back(FuzzyMatch::score(text, candidate), &row);
    }
    std::stable_sort(scored.begin(), scored.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    std::vector<T> rows;
    rows.reserve(scored.size());
    for (const auto& [score, row] : scored) rows.push_back(*row);
    return rows;
  }

 protected:
  template <typename T>
  void addSection(const QString& header, const std::vector<T>& rows) {
    if (rows.empty()) return;
    items_.push_back(HeaderCommandProviderItem{header});
    items_.insert(items_.end(), rows.begin(), rows.end());
  }

  std::vector<CommandProviderItem> items_;
};
