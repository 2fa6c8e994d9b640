#pragma once
// One issue-tracker rule: text that the expression finds becomes a link to urlString,
// where "$1", "$2", ... stand for the groups of the match.
#include <QRegularExpression>
#include <QString>
#include <memory>

class BugtrackerLinkDefinition {
 public:
  enum class Level { system, local, shared };

  // Nothing when the expression does not compile (logged).
  static std::shared_ptr<const BugtrackerLinkDefinition> make(const QString& name, Level level, const QString& regexString,
                                                              const QString& urlString);

  static QString word(Level level);  // "system", "local", "shared"
  // urlString with every "$n" replaced by the text of group n of the match.
  QString url(const QRegularExpressionMatch& match) const;

  const QString name;
  const QRegularExpression regex;
  const QString regexString;
  const QString urlString;
  const Level level;

 private:
  BugtrackerLinkDefinition(QString name, QRegularExpression regex, QString regexString, QString urlString, Level level)
      : name(std::move(name)), regex(std::move(regex)), regexString(std::move(regexString)), urlString(std::move(urlString)),
        level(level) {}
};

using BugtrackerLinkDefinitionPtr = std::shared_ptr<const BugtrackerLinkDefinition>;
