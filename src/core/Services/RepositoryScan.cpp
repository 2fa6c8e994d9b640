#include "Services/RepositoryScan.h"

#include <QDir>
#include <QThread>
#include <QThreadPool>
#include <algorithm>
#include <mutex>
#include <filesystem>
#include <system_error>

#include "Logging/AdvancedLogger.h"
#include "Models/AppSettings.h"

namespace fs = std::filesystem;

void RepositoryScan::findGitRepositories(const QString& folder, QStringList& result, int level) {
  if (level == 0) return;

  std::error_code error;
  fs::directory_iterator entries(fs::path(folder.toStdString()), error);
  if (error) {
    LOG_WARNING(QStringLiteral("Cannot read '%1': %2").arg(folder, QString::fromStdString(error.message())));
    return;
  }
  std::vector<fs::directory_entry> sorted;
  for (const auto& entry : entries) sorted.push_back(entry);
  // A stable order makes the categories of a scan come out the same each time.
  std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.path().filename() < b.path().filename(); });

  QStringList walk;
  for (const auto& entry : sorted) {
    const QString name = QString::fromStdString(entry.path().filename().string());
    std::error_code statusError;
    if (entry.is_symlink(statusError)) {
      // is_directory follows the link.
      if (entry.is_directory(statusError)) walk << folder + QLatin1Char('/') + name;
      continue;
    }
    if (!entry.is_directory(statusError)) continue;
    if (name == QStringLiteral(".git")) {
      result << folder;
      return;
    }
    walk << folder + QLatin1Char('/') + name;
  }
  for (const QString& directory : walk) findGitRepositories(directory, result, level - 1);
}

int RepositoryScan::rescanRepositories(AppSettings& settings, const std::optional<QString>& sourceFolder, const Progress& progress) {
  if (!sourceFolder || sourceFolder->trimmed().isEmpty()) return 0;
  const QString folder = QDir::cleanPath(sourceFolder->trimmed());

  QStringList found;
  findGitRepositories(folder, found, startLevel);

  // Validation runs git once per repository and is done in parallel. The additions are
  // made one by one afterwards, in the order found: two repositories of the same new
  // folder must not both create its category.
  std::vector<char> valid(size_t(found.size()), 0);  // not vector<bool>: written from several threads
  const int total = int(found.size());
  int done = 0;
  std::mutex progressLock;  // so that the counts are reported in order
  if (progress) progress(0, total);
  QThreadPool pool;
  pool.setMaxThreadCount(std::max(2, QThread::idealThreadCount() * 2));
  for (qsizetype i = 0; i < found.size(); ++i) {
    pool.start([&valid, &found, &done, &progressLock, &progress, total, i] {
      valid[size_t(i)] = std::holds_alternative<GitModule>(RepositoryValidation::validate(found[i]));
      const std::lock_guard<std::mutex> guard(progressLock);
      ++done;
      if (progress) progress(done, total);
    });
  }
  pool.waitForDone();

  // The old rows go only now, in the same transaction as the new ones: a quit during
  // the walk or the checks leaves the registry as it was.
  QStringList accepted;
  for (qsizetype i = 0; i < found.size(); ++i) {
    if (valid[size_t(i)]) accepted << found[i];
  }
  settings.replaceAllRepositories(accepted, folder);
  const int added = int(accepted.size());
  LOG_INFO(QStringLiteral("Rescan of '%1' found %2 repositories").arg(folder).arg(added));
  return added;
}

std::vector<RepositoryScan::Refused> RepositoryScan::addRepositories(AppSettings& settings, const QStringList& paths,
                                                                      const std::optional<QString>& sourceFolder) {
  std::vector<Refused> refused;
  for (const QString& path : paths) {
    const auto validation = RepositoryValidation::validate(path);
    if (const auto* refusal = std::get_if<RepositoryRefusal>(&validation)) {
      refused.push_back({path.trimmed(), *refusal});
      continue;
    }
    const GitModule& module = std::get<GitModule>(validation);
    std::optional<QString> root;
    if (sourceFolder && !sourceFolder->trimmed().isEmpty()) root = QDir::cleanPath(sourceFolder->trimmed());
    settings.addRepository(module.repositoryPath, root);
  }
  return refused;
}
