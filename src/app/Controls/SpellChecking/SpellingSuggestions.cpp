#include "Controls/SpellChecking/SpellingSuggestions.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>

#include "Controls/SpellChecking/SpellChecker.h"

void insertSpellingSuggestions(QMenu& menu, const QString& word, const std::function<void(const QString&)>& replace) {
  QAction* first = menu.actions().value(0);
  const QStringList suggestions = SpellChecker::shared().suggestions(word);
  for (const QString& suggestion : suggestions) {
    auto* action = new QAction(suggestion, &menu);
    QObject::connect(action, &QAction::triggered, &menu, [replace, suggestion] { replace(suggestion); });
    menu.insertAction(first, action);
  }
  if (suggestions.isEmpty()) {
    auto* none = new QAction(QCoreApplication::translate("SpellingSuggestions", "No Guesses Found"), &menu);
    none->setEnabled(false);
    menu.insertAction(first, none);
  }
  menu.insertSeparator(first);
}
