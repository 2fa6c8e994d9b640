#include "Models/RepositoryData.h"

bool sameCustomCommands(const CustomCommandList& a, const CustomCommandList& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] && (!a[i] || !b[i] || !(*a[i] == *b[i]))) return false;
  }
  return true;
}
