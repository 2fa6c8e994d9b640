#include "Models/Bugtracker/BugtrackerLinkDefinition.h"

#include "Logging/AdvancedLogger.h"

BugtrackerLinkDefinitionPtr BugtrackerLinkDefinition::make(const QString& name, Level level, const QString& regexString,
                                                           const QString& urlString) {
  QRegularExpression regex(regexString, QRegularExpression::UseUnicodePropertiesOption);
  if (!regex.isValid()) {
    LOG_WARNING(QStringLiteral("Invalid issue tracker expression '%1' of '%2': %3").arg(regexString, name, regex.errorString()));
    return nullptr;
  }
  regex.optimize();  // compiled once; matching is then read-only from any thread
  return BugtrackerLinkDefinitionPtr(new BugtrackerLinkDefinition(name, std::move(regex), regexString, urlString, level));
}

QString BugtrackerLinkDefinition::word(Level level) {
  switch (level) {
    case Level::system: return QStringLiteral("system");
    case Level::local: return QStringLiteral("local");
    case Level::shared: return QStringLiteral("shared");
  }
  return {};
}

QString BugtrackerLinkDefinition::url(const QRegularExpressionMatch& match) const {
  QString result = urlString;
  // Highest group first, so "$1" does not eat the start of "$12".
  for (int group = match.lastCapturedIndex(); group >= 1; --group) {
    result.replace(QLatin1Char('$') + QString::number(group), match.captured(group));
  }
  return result;
}
