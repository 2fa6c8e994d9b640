#pragma once
// The dictionary behind spell checking of commit messages: hunspell with the system's
// dictionary for the user's language (en_US when there is none for it). Loaded on
// first use, on the main thread only. Without hunspell or a dictionary every word
// counts as correct and isAvailable() says so.
#include <QString>
#include <QStringList>
#include <memory>

class SpellChecker {
 public:
  static SpellChecker& shared();
  ~SpellChecker();

  bool isAvailable();
  bool isCorrect(const QString& word);
  QStringList suggestions(const QString& word, int limit = 6);
  // The dictionary's name, such as "en_US"; empty when none was found.
  QString dictionary();

 private:
  SpellChecker() = default;
  void load();

  struct Backend;
  std::unique_ptr<Backend> backend_;
  bool loaded_ = false;
  QString dictionary_;
};
