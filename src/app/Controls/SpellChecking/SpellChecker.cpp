#include "Controls/SpellChecking/SpellChecker.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include "Logging/AdvancedLogger.h"

#ifdef JELV_HAVE_HUNSPELL
#include <hunspell.hxx>
#endif

struct SpellChecker::Backend {
#ifdef JELV_HAVE_HUNSPELL
  std::unique_ptr<Hunspell> hunspell;
  bool utf8 = true;

  std::string encode(const QString& word) const {
    return utf8 ? word.toStdString() : word.toLatin1().toStdString();
  }
  QString decode(const std::string& word) const {
    return utf8 ? QString::fromStdString(word) : QString::fromLatin1(word.data(), static_cast<qsizetype>(word.size()));
  }
#endif
};

SpellChecker& SpellChecker::shared() {
  static SpellChecker checker;
  return checker;
}

SpellChecker::~SpellChecker() = default;

void SpellChecker::load() {
  if (loaded_) return;
  loaded_ = true;
#ifdef JELV_HAVE_HUNSPELL
  const QStringList folders{QStringLiteral("/usr/share/hunspell"), QStringLiteral("/usr/share/myspell/dicts")};
  QStringList names{QLocale::system().name(), QStringLiteral("en_US")};
  for (const QString& name : names) {
    for (const QString& folder : folders) {
      const QString base = QDir(folder).filePath(name);
      if (!QFileInfo::exists(base + QStringLiteral(".aff")) || !QFileInfo::exists(base + QStringLiteral(".dic"))) continue;
      backend_ = std::make_unique<Backend>();
      backend_->hunspell = std::make_unique<Hunspell>(QFile::encodeName(base + QStringLiteral(".aff")).constData(),
                                                      QFile::encodeName(base + QStringLiteral(".dic")).constData());
      backend_->utf8 = QString::fromLatin1(backend_->hunspell->get_dict_encoding().c_str()).compare(
                           QStringLiteral("UTF-8"), Qt::CaseInsensitive) == 0;
      dictionary_ = name;
      return;
    }
  }
  LOG_INFO(QStringLiteral("No spelling dictionary for '%1'").arg(QLocale::system().name()));
#endif
}

bool SpellChecker::isAvailable() {
  load();
  return backend_ != nullptr;
}

QString SpellChecker::dictionary() {
  load();
  return dictionary_;
}

bool SpellChecker::isCorrect(const QString& word) {
  load();
#ifdef JELV_HAVE_HUNSPELL
  if (backend_) return backend_->hunspell->spell(backend_->encode(word));
#endif
  return true;
}

QStringList SpellChecker::suggestions(const QString& word, int limit) {
  load();
  QStringList list;
#ifdef JELV_HAVE_HUNSPELL
  if (!backend_) return list;
  for (const std::string& suggestion : backend_->hunspell->suggest(backend_->encode(word))) {
    if (list.size() >= limit) break;
    list << backend_->decode(suggestion);
  }
#endif
  return list;
}
