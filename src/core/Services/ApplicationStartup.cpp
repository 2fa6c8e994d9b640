#include "Services/ApplicationStartup.h"

#include <QDir>

#include "Logging/AdvancedLogger.h"
#include "Models/ApplicationUrl.h"
#include "Services/Preferences.h"

namespace {
const QString importedOldTabsKey = QStringLiteral("importedOldTabs");
}

LaunchPlan ApplicationStartup::plan(const Preferences& preferences, const QStringList& arguments) {
  LaunchPlan plan;
  plan.restoredWindows = savedWindows(preferences);
  for (const QString& argument : arguments) {
    if (argument.trimmed().isEmpty()) continue;
    if (ApplicationUrl::hasApplicationScheme(argument)) {
      plan.urls << argument;
    } else {
      plan.folders << argument;
    }
  }
  plan.openUntitled = plan.restoredWindows.empty() && plan.folders.isEmpty() && plan.urls.isEmpty();
  return plan;
}

QStringList ApplicationStartup::absoluteArguments(const QStringList& arguments, const QString& workingDirectory) {
  QStringList result;
  for (const QString& argument : arguments) {
    const bool isUrl = ApplicationUrl::hasApplicationScheme(argument) || argument.startsWith(QStringLiteral("file:"));
    if (isUrl || argument.trimmed().isEmpty()) {
      result << argument;
    } else {
      result << QDir::cleanPath(QDir(workingDirectory).absoluteFilePath(argument));
    }
  }
  return result;
}

UntitledFileDecision ApplicationStartup::applicationShouldOpenUntitledFile(Preferences& preferences, bool applicationActive) {
  if (!applicationActive) return {};
  if (!preferences.defaultSourceFolder()) return {UntitledFileDecision::Kind::welcome, {}};
  if (preferences.boolean(importedOldTabsKey)) return {UntitledFileDecision::Kind::repositoryManager, {}};

  QStringList paths;
  int selected = -1;
  for (const RepositorySession& session : preferences.repositorySessions()) {
    int index = int(paths.indexOf(session.repositoryPath));
    if (index < 0) {
      index = int(paths.size());
      paths << session.repositoryPath;
    }
    if (session.selected) selected = index;
  }
  preferences.setValue(importedOldTabsKey, true);
  if (paths.isEmpty()) return {UntitledFileDecision::Kind::repositoryManager, {}};
  LOG_INFO(QStringLiteral("Importing %1 tabs of an older version").arg(paths.size()));
  return {UntitledFileDecision::Kind::importedTabs, paths, selected};
}

void ApplicationStartup::saveWindows(Preferences& preferences, const std::vector<WindowSession>& windows) {
  preferences.setValue(WindowSession::preferenceKey(), QString::fromUtf8(WindowSession::encode(windows)));
}

std::vector<WindowSession> ApplicationStartup::savedWindows(const Preferences& preferences) {
  return WindowSession::decode(preferences.string(WindowSession::preferenceKey()).toUtf8());
}
