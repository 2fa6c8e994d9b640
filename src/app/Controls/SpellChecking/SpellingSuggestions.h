#pragma once
// The dictionary's suggestions for a misspelt word at the top of a text field's context
// menu, shared by the one-line and the many-line message fields.
#include <QString>
#include <functional>

class QMenu;

// Puts the suggestions (or a disabled "No Guesses Found") and a separator before the
// menu's first entry; picking one calls `replace` with it.
void insertSpellingSuggestions(QMenu& menu, const QString& word, const std::function<void(const QString&)>& replace);
